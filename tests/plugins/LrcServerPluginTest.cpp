#include "FetcherRecorder.h"
#include "PluginTestHome.h"

#include "core/online/QQFetchHelper.h"

#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"
#include "support/TempHome.h"

#include <QDir>
#include <QTcpSocket>

#include <gtest/gtest.h>

namespace {

[[maybe_unused]] const auto* const kHome = ::testing::AddGlobalTestEnvironment(new PluginTestHome(
    "lyricServerHost", [](const RawHttpServer& server) { return server.host(); }));

const QByteArray kSearchAnswer = R"(<?xml version="1.0" encoding="UTF-8"?>
<result><lrc id="7" artist="Artist" title="Title"></lrc>
<group><lrc id="-3" artist="王菲" title="红豆"></lrc></group></result>)";

// A fake lyric server on 127.0.0.1, named in the settings file of a temporary home for the
// whole process (Qt reads the settings folder once per process). Searches answer
// kSearchAnswer; a download of id 7 answers its lyric, any other id 404.
class LrcServer : public ::testing::Test {
protected:
    void SetUp() override
    {
        server->route("/dll/lyricsvr.dll", [](const RawHttpServer::Request& r, QTcpSocket& s) {
            if (r.path.contains("?sh?"))
                RawHttpServer::status(200, kSearchAnswer)(r, s);
            else if (r.path.contains("?dl?Id=7&"))
                RawHttpServer::status(200, "[00:01.00]歌词\n")(r, s);
            else
                RawHttpServer::status(404, "no such lyric")(r, s);
        });
        fetcher = loadFetcher(LRCSERVER_BUNDLE, recorder, 2000);
        ASSERT_TRUE(fetcher.fetcher);
        first = server->requests().size();
    }
    void search(const QString& artist, const QString& song)
    {
        QMetaObject::invokeMethod(fetcher.fetcher.get(), "lyricsListForArtist",
                                  Q_ARG(QString, artist), Q_ARG(QString, song));
    }
    void download(const QVariant& item)
    {
        QMetaObject::invokeMethod(fetcher.fetcher.get(), "lyricsContents", Q_ARG(QVariant, item));
    }
    QByteArray lastPath() const { return server->requests().last().path; }

    RawHttpServer* const server = &PluginTestHome::server();
    FetcherRecorder recorder;
    LyricPluginLoader::Loaded fetcher;
    qsizetype first = 0;
};

TEST_F(LrcServer, SearchesAndDownloadsThroughTheProtocol)
{
    EXPECT_EQ(fetcher.info, "Lyric server v(1)");
    search("Some Artist", "Some Title");
    EXPECT_TRUE(recorder.answers.isEmpty()) << "answers come from the event loop";
    const FetcherRecorder::Answer list = recorder.next();
    ASSERT_EQ(list.what, "list");
    const QUrl searchUrl =
        QQFetchHelper::urlForLRCsearching("Some Artist", "Some Title", server->host());
    EXPECT_EQ(lastPath(), searchUrl.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority));
    ASSERT_EQ(list.items.size(), 2);
    EXPECT_EQ(list.items[1].toMap(),
              (QVariantMap{{"artist", "王菲"}, {"title", "红豆"}, {"id", qint64(-3)}}));

    download(list.items[0]);
    const FetcherRecorder::Answer content = recorder.next();
    EXPECT_EQ(content.what, "content");
    EXPECT_EQ(content.text, "[00:01.00]歌词\n");
    EXPECT_EQ(content.item, list.items[0]);
    EXPECT_EQ(lastPath(), "/dll/lyricsvr.dll?dl?Id=7&Code=" +
                              QByteArray::number(qlonglong(
                                  QQFetchHelper::encryptedCodeFromID(7, "Artist", "Title"))));
}

struct Failure {
    const char* label;
    RawHttpServer::Handler handler; // null: the fake server's usual answers
    bool download;                  // of the second result (id -3, unknown to the server)
    const char* what;
    int items;
};

class LrcServerFailure : public LrcServer, public ::testing::WithParamInterface<Failure> {};

TEST_P(LrcServerFailure, AnswersAsTheProtocolHasIt)
{
    const Failure& f = GetParam();
    if (f.handler)
        server->route("/dll/lyricsvr.dll", f.handler);
    if (f.download)
        download(QVariantMap{{"artist", "王菲"}, {"title", "红豆"}, {"id", qint64(-3)}});
    else
        search("A", "B");
    const FetcherRecorder::Answer answer = recorder.next();
    EXPECT_EQ(answer.what, f.what) << answer.text.toStdString();
    EXPECT_EQ(answer.items.size(), f.items);
}

INSTANTIATE_TEST_SUITE_P(
    Failures, LrcServerFailure,
    ::testing::Values(
        Failure{"SearchNeverAnswered", RawHttpServer::silent(), false, "listFailed", 0},
        Failure{"SearchAnswerNotXml", RawHttpServer::status(200, "<html"), false, "list", 0},
        Failure{"SearchServerError", RawHttpServer::status(500, "oops"), false, "list", 0},
        Failure{"DownloadUnknown", nullptr, true, "contentFailed", 0},
        Failure{"DownloadEmpty", RawHttpServer::status(200, ""), true, "contentFailed", 0},
        Failure{"DownloadNotUtf8", RawHttpServer::status(200, "\xff\xfe\x00"), true,
                "contentFailed", 0},
        Failure{"DownloadNeverAnswered", RawHttpServer::silent(), true, "contentFailed", 0}),
    [](const auto& info) { return std::string(info.param.label); });

TEST_F(LrcServer, CopiedIntoTheUsersFolderItIsFoundLastAndUsed)
{
    const QString target =
        PluginTestHome::folders().dataHome() + "/Versewick/PlugIns/lrcserver.bundle";
    ASSERT_TRUE(QDir().mkpath(target));
    for (const QString& name : QDir(LRCSERVER_BUNDLE).entryList(QDir::Files))
        ASSERT_TRUE(QFile::copy(QStringLiteral(LRCSERVER_BUNDLE "/") + name, target + u'/' + name));
    const QStringList bundles = LyricPluginLoader::allBundles(LyricPluginLoader::searchFolders());
    ASSERT_GE(bundles.size(), 2) << "the built-in LRCLIB comes first";
    EXPECT_EQ(bundles.last(), target);
    const auto loaded = LyricPluginLoader::loadLyricPlugin(bundles);
    EXPECT_EQ(loaded.info, "Lyric server v(1)");
    EXPECT_FALSE(
        LyricPluginLoader::searchFolders().contains(QDir::cleanPath(LRCSERVER_BUNDLE "/..")))
        << "the optional folder is never searched";
}

} // namespace
