#include "FetcherRecorder.h"
#include "PluginTestHome.h"

#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"
#include "support/TempHome.h"

#include <QDir>
#include <QPluginLoader>
#include <QTcpSocket>
#include <QUrl>

#include <gtest/gtest.h>

namespace {

[[maybe_unused]] const auto* const kHome = ::testing::AddGlobalTestEnvironment(new PluginTestHome(
    "lrclibUrl", [](const RawHttpServer& server) { return server.url(QStringLiteral("/")); }));

// A fake LRCLIB on 127.0.0.1, named in the settings file of a temporary home for the whole
// process (Qt reads the settings folder once per process).
class Lrclib : public ::testing::Test {
protected:
    void SetUp() override
    {
        fetcher = loadFetcher(LRCLIB_BUNDLE, recorder, 2000);
        ASSERT_TRUE(fetcher.fetcher);
        first = server->requests().size();
    }
    void search(const QString& artist, const QString& song, const QString& album = {},
                double duration = 0)
    {
        QMetaObject::invokeMethod(fetcher.fetcher.get(), "lyricsListForArtist",
                                  Q_ARG(QString, artist), Q_ARG(QString, song),
                                  Q_ARG(QString, album), Q_ARG(double, duration));
    }
    QList<RawHttpServer::Request> requests() const { return server->requests().mid(first); }

    RawHttpServer* const server = &PluginTestHome::server();
    FetcherRecorder recorder;
    LyricPluginLoader::Loaded fetcher;
    qsizetype first = 0;
};

QByteArray track(int id, const char* artist, const char* title, double duration, const char* synced)
{
    return QStringLiteral(R"({"id":%1,"name":"%3","trackName":"%3","artistName":"%2",)"
                          R"("albumName":"Album","duration":%4,"instrumental":false,)"
                          R"("plainLyrics":"words","syncedLyrics":%5})")
        .arg(id)
        .arg(QString::fromUtf8(artist), QString::fromUtf8(title))
        .arg(duration)
        .arg(synced ? QStringLiteral("\"%1\"").arg(QString::fromUtf8(synced))
                    : QStringLiteral("null"))
        .toUtf8();
}

TEST_F(Lrclib, IsABuiltInPlugInOfTheContract)
{
    EXPECT_EQ(fetcher.info, QStringLiteral("LRCLIB v(1)"));
    const QString library = LyricPluginLoader::libraryInBundle(LRCLIB_BUNDLE);
    EXPECT_EQ(QPluginLoader(library).metaData().value("IID").toString(),
              QLatin1String(lrcfetcher::kPluginIid));
    EXPECT_TRUE(LyricPluginLoader::allBundles(LyricPluginLoader::searchFolders())
                    .contains(QDir::cleanPath(LRCLIB_BUNDLE)));
    auto fresh = LyricPluginLoader::loadLyricPlugin({LRCLIB_BUNDLE});
    EXPECT_EQ(fresh.fetcher->property("requestTimeout").toInt(), 10000);
    EXPECT_TRUE(lrcfetcher::answers(fresh.fetcher.get(), lrcfetcher::kListForArtistSong));
    EXPECT_TRUE(
        lrcfetcher::answers(fresh.fetcher.get(), lrcfetcher::kListForArtistSongAlbumDuration));
}

struct Query {
    const char* label;
    const char* artist;
    const char* song;
    const char* album;
    double duration;
    const char* path;
    QMap<QString, QString> parameters;
};

class LrclibQuery : public Lrclib, public ::testing::WithParamInterface<Query> {};

TEST_P(LrclibQuery, AsksTheRightEndPointWithEveryValueIntact)
{
    const Query& q = GetParam();
    server->route(q.path, RawHttpServer::status(200, track(1, "A", "T", 1, "[00:01]x")));
    search(QString::fromUtf8(q.artist), QString::fromUtf8(q.song), QString::fromUtf8(q.album),
           q.duration);
    EXPECT_EQ(recorder.next().what, "list");
    ASSERT_EQ(requests().size(), 1);
    const RawHttpServer::Request request = requests().first();
    const QList<QByteArray> pathAndQuery = request.path.split('?');
    EXPECT_EQ(pathAndQuery.value(0), QByteArray(q.path));
    QMap<QString, QString> parameters; // decoded as a web server does, "+" being a blank
    for (QByteArray pair : pathAndQuery.value(1).split('&')) {
        const qsizetype equals = pair.indexOf('=');
        parameters.insert(QString::fromUtf8(pair.left(equals)),
                          QUrl::fromPercentEncoding(pair.mid(equals + 1).replace('+', ' ')));
    }
    EXPECT_EQ(parameters, q.parameters);
    EXPECT_EQ(request.headers.value("user-agent"),
              "Versewick/" VERSEWICK_VERSION " (https://versewick.net)");
}

using Parameters = QMap<QString, QString>;

INSTANTIATE_TEST_SUITE_P(
    Queries, LrclibQuery,
    ::testing::Values(
        Query{"AlbumAndDurationKnown", "Daft Punk", "One More Time", "Discovery", 320.6, "/api/get",
              Parameters{{"track_name", "One More Time"},
                         {"artist_name", "Daft Punk"},
                         {"album_name", "Discovery"},
                         {"duration", "321"}}},
        Query{"ReservedCharacters", "AC/DC & Friends", "1+1=2 #?", "", 0, "/api/search",
              Parameters{{"track_name", "1+1=2 #?"}, {"artist_name", "AC/DC & Friends"}}},
        Query{"NoDuration", "Björk", "Jóga", "Homogenic", 0, "/api/search",
              Parameters{{"track_name", "Jóga"}, {"artist_name", "Björk"}}},
        Query{"NoAlbum", "王菲", "红豆", "", 215, "/api/search",
              Parameters{{"track_name", "红豆"}, {"artist_name", "王菲"}}}),
    [](const auto& info) { return std::string(info.param.label); });

struct Answer {
    const char* label;
    const char* path;
    RawHttpServer::Handler handler;
    RawHttpServer::Handler searchHandler; // /api/search after /api/get
    double duration;                      // of the query; an album is given when asking /api/get
    const char* what;
    QStringList titles; // of the items, in order
};

class LrclibAnswer : public Lrclib, public ::testing::WithParamInterface<Answer> {};

TEST_P(LrclibAnswer, ReportsWhatTheServiceAnswered)
{
    const Answer& a = GetParam();
    server->route(a.path, a.handler);
    if (a.searchHandler)
        server->route("/api/search", a.searchHandler);
    search("Sigur Rós", "Hoppípolla", a.path == QByteArray("/api/get") ? "Takk..." : "",
           a.duration);
    EXPECT_TRUE(recorder.answers.isEmpty()) << "answers come from the event loop";
    const FetcherRecorder::Answer answer = recorder.next();
    EXPECT_EQ(answer.what, a.what) << answer.text.toStdString();
    EXPECT_EQ(titlesOf(answer.items), a.titles);
}

const QByteArray kSearchAnswer = "[" + track(8, "Nobody", "Remix", 100, "[00:01.00]remix") + "," +
                                 track(1, "Sigur Ros", "Hoppipolla (live)", 268, "[00:01.00]live") +
                                 "," + track(2, "Someone", "Hoppipolla", 268, "[00:01.00]cover") +
                                 "," + track(3, "Sigur Rós", "Hoppípolla", 300, "[00:01.00]far") +
                                 "," +
                                 track(4, "SIGUR ROS", "hoppipolla", 269.5, "[00:01.00]exact") +
                                 "," + track(5, "Sigur Rós", "Hoppípolla", 268, nullptr) + "," +
                                 track(6, "Sigur Rós", "Hoppípolla", 268, "  ") + ",7]";

const QByteArray kNotFound =
    R"({"code":404,"name":"TrackNotFound","message":"Failed to find specified track"})";

// A search of no duration that fails.
Answer failing(const char* label, RawHttpServer::Handler handler)
{
    return {label, "/api/search", std::move(handler), nullptr, 0, "listFailed", {}};
}

INSTANTIATE_TEST_SUITE_P(
    Answers, LrclibAnswer,
    ::testing::Values(
        Answer{"GetHit", "/api/get",
               RawHttpServer::status(200, track(9, "Sigur Rós", "Hoppípolla", 268, "[00:01]a")),
               nullptr, 268, "list", QStringList{"Hoppípolla"}},
        Answer{
            "GetPlainOnlyThenSearchFindsSynced", "/api/get",
            RawHttpServer::status(200, track(9, "Sigur Rós", "Hoppípolla", 268, nullptr)),
            RawHttpServer::status(
                200, "[" + track(3, "Sigur Rós", "Hoppípolla (Remastered)", 269, "[00:01]r") + "]"),
            268, "list", QStringList{"Hoppípolla (Remastered)", "Hoppípolla"}},
        Answer{"GetPlainOnlySearchFails", "/api/get",
               RawHttpServer::status(200, track(9, "Sigur Rós", "Hoppípolla", 268, nullptr)),
               RawHttpServer::status(500), 268, "list", QStringList{"Hoppípolla"}},
        Answer{"NotFoundThenSearch", "/api/get", RawHttpServer::status(404, kNotFound),
               RawHttpServer::status(
                   200, "[" + track(4, "Sigur Ros", "Hoppipolla - Live", 275, "[00:01]live") + "," +
                            track(5, "Sigur Rós", "Hoppípolla", 268.4, nullptr) + "]"),
               268, "list", QStringList{"Hoppipolla - Live", "Hoppípolla"}},
        Answer{"NotFoundAnywhere", "/api/get", RawHttpServer::status(404, kNotFound),
               RawHttpServer::status(200, "[]"), 268, "list", QStringList{}},
        Answer{"NotFoundSearchFails", "/api/get", RawHttpServer::status(404, kNotFound),
               RawHttpServer::status(503), 268, "listFailed", QStringList{}},
        Answer{"SearchOrderedAndDropped", "/api/search", RawHttpServer::status(200, kSearchAnswer),
               nullptr, 268, "list",
               QStringList{"hoppipolla", "Hoppipolla (live)", "Hoppípolla", "Hoppípolla",
                           "Hoppipolla", "Hoppípolla", "Remix"}},
        failing("ServerError", RawHttpServer::status(500, "[]")),
        failing("MalformedJson", RawHttpServer::status(200, "[{\"id\":1,")),
        failing("JsonOfTheWrongShape", RawHttpServer::status(200, "\"text\"")),
        failing("HugeJson", RawHttpServer::huge(64 * 1024 * 1024)),
        failing("NeverAnswers", RawHttpServer::silent())),
    [](const auto& info) { return std::string(info.param.label); });

TEST_F(Lrclib, TheDurationOrdersSearchResultsOnlyWhenKnown)
{
    server->route("/api/search", RawHttpServer::status(200, kSearchAnswer));
    search("Sigur Rós", "Hoppípolla");
    // Without a duration the far one fits, and the exact title leads the live version.
    EXPECT_EQ(titlesOf(recorder.next().items),
              (QStringList{"Hoppípolla", "hoppipolla", "Hoppipolla (live)", "Hoppípolla",
                           "Hoppípolla", "Hoppipolla", "Remix"}));
}

TEST_F(Lrclib, AnItemsTextIsItsSyncedLyricsHandedOverFromTheEventLoop)
{
    server->route("/api/search", RawHttpServer::status(200, kSearchAnswer));
    search("Sigur Rós", "Hoppípolla", "", 268);
    const QVariantList items = recorder.next().items;
    ASSERT_FALSE(items.isEmpty());
    EXPECT_EQ(items.first().toMap().value("artist"), "SIGUR ROS");
    QMetaObject::invokeMethod(fetcher.fetcher.get(), "lyricsContents",
                              Q_ARG(QVariant, items.first()));
    EXPECT_EQ(recorder.answers.size(), 1) << "not answered from inside the call";
    const FetcherRecorder::Answer content = recorder.next();
    EXPECT_EQ(content.what, "content");
    EXPECT_EQ(content.text, "[00:01.00]exact");
    EXPECT_EQ(content.item, items.first());

    // An unsynced item carries its plain text and has no synced text to download.
    const QVariantMap plain = items.at(2).toMap();
    EXPECT_EQ(plain.value("synced"), false);
    EXPECT_EQ(plain.value("match"), true);
    EXPECT_EQ(plain.value("plainLyrics"), "words");
    EXPECT_EQ(items.first().toMap().value("synced"), true);
    EXPECT_EQ(items.last().toMap().value("match"), false) << "another artist's remix";
    QMetaObject::invokeMethod(fetcher.fetcher.get(), "lyricsContents", Q_ARG(QVariant, plain));
    EXPECT_EQ(recorder.next().what, "contentFailed");

    const QVariant foreign = QVariantMap{{"artist", "A"}, {"title", "T"}};
    QMetaObject::invokeMethod(fetcher.fetcher.get(), "lyricsContents", Q_ARG(QVariant, foreign));
    EXPECT_EQ(recorder.next().what, "contentFailed");
}

TEST_F(Lrclib, ANewSearchReplacesTheOneInFlightWhichAnswersNothing)
{
    server->route("/api/search", RawHttpServer::silent());
    search("A", "first");
    ASSERT_TRUE(waitFor([&] { return requests().size() == 1; }));
    server->route("/api/search", RawHttpServer::status(200, "[]"));
    search("A", "second");
    EXPECT_EQ(recorder.next().what, "list");
    EXPECT_EQ(recorder.next(2500).what, "none") << "the first search stays silent";
}

} // namespace
