// Faults from outside: a plug-in that answers twice, never or with garbage, a player that
// hangs, a lyrics folder that cannot be written. Each is survived and named once in the log.
#include "support/app/AppFixture.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>

#include <csignal>
#include <sys/resource.h>

namespace {

const QByteArray kOnline = "[00:01.00]online one\n[00:02.00]online two\n";

class Faults : public AppFixture {
protected:
    RawHttpServer plugin;
    RawHttpServer sharing;
    std::unique_ptr<PlayerProcess> player;
    std::unique_ptr<MessageCapture> messages;

    void SetUp() override
    {
        AppFixture::SetUp();
        qputenv("VERSEWICK_FAKE_PLUGIN_URL", plugin.url("").toUtf8());
        bundles = {QStringLiteral(VERSEWICK_FAKE_BUNDLE)};
        sharing.route("/lyrics", RawHttpServer::status(200));
        setService(ServiceAddresses::kLyricSharingKey, sharing.host());
        settings->setIsSaveLRCtoDisk(true);
        messages = std::make_unique<MessageCapture>();
    }
    void TearDown() override
    {
        AppFixture::TearDown();
        player.reset();
        messages.reset();
    }
    void startJukora(const QStringList& titles, QStringList more = {})
    {
        QJsonArray songs;
        for (const QString& t : titles)
            songs.append(QJsonObject{{"artist", "Ann"}, {"title", t}, {"duration", 60}});
        const QString playlist = home.write("playlist.json", QJsonDocument(songs).toJson());
        player =
            std::make_unique<PlayerProcess>(QStringList{"--as", "jukora", "--playlist", playlist,
                                                        "--qqmusic-port", QString::number(qqPort)} +
                                            more);
    }
    int logged(const QString& text) const { return messages->lines().filter(text).size(); }
    void answer(const QByteArray& items, const QByteArray& content, const QByteArray& times = {})
    {
        plugin.route("/list", RawHttpServer::status(200, "{\"items\":" + items + "}"));
        plugin.route("/content", RawHttpServer::status(200, content, times));
    }
};

const QByteArray kItem = R"([{"artist":"Ann","title":"Rain","id":"1"}])";

TEST_F(Faults, APluginAnsweringTwiceIsTakenOnce)
{
    answer(kItem, kOnline, "X-Times: 2\r\n");
    startJukora({"Rain"});
    launch();
    // Jukora song changes are not de-duplicated, so launch may search more than once. Each
    // download is answered twice: never more uploads than downloads, at least one answer
    // refused per download.
    const auto downloads = [&] {
        qsizetype n = 0;
        for (const auto& r : plugin.requests())
            n += r.path.startsWith("/content") ? 1 : 0;
        return n;
    };
    ASSERT_TRUE(waitFor([&] { return logged("a download that was not asked for") >= 1; }));
    EXPECT_TRUE(app->lrcAvailable());
    ASSERT_TRUE(waitFor([&] { return !sharing.requests().isEmpty(); }));
    ASSERT_TRUE(waitFor([] { return PLHttpConfig::s().connections() == 0; }));
    EXPECT_LE(sharing.requests().size(), downloads());
    EXPECT_GE(logged("a download that was not asked for"), downloads());
}

TEST_F(Faults, APluginThatNeverAnswersBlocksNothing)
{
    plugin.route("/list", RawHttpServer::silent());
    writeStored("Ann--Snow", kOnline);
    startJukora({"Rain", "Snow"});
    launch();
    ASSERT_TRUE(waitFor([&] { return !plugin.requests().isEmpty(); }));
    EXPECT_EQ(status(), "fetching lyrics...");
    player->send("next");
    EXPECT_TRUE(waitFor([&] { return app->lrcAvailable(); }));
    EXPECT_EQ(app->state().lyricOrigin(), AppState::Folder);
}

struct Garbage {
    const char* name;
    QByteArray items;
    QByteArray content;
    const char* logged;
};
void PrintTo(const Garbage& g, std::ostream* os)
{
    *os << g.name;
}

class PluginGarbage : public Faults, public ::testing::WithParamInterface<Garbage> {};

TEST_P(PluginGarbage, IsNamedAndNeverSavedOrShown)
{
    answer(GetParam().items, GetParam().content);
    startJukora({"Rain"});
    launch();
    ASSERT_TRUE(waitFor([&] { return status() == "lyric is not available"; }));
    EXPECT_EQ(logged(QString::fromLatin1(GetParam().logged)), 1);
    EXPECT_FALSE(app->lrcAvailable());
    EXPECT_EQ(readFile(lyricsFolder() + "/Ann--Rain.lrc"), "<missing>");
    EXPECT_TRUE(sharing.requests().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, PluginGarbage,
    ::testing::Values(Garbage{"NumbersForResults", "[42, \"x\"]", kOnline, "not a map"},
                      Garbage{"BinaryText", kItem, QByteArray("\x00\xff<html>\x01", 9),
                              "without any timed line"},
                      Garbage{"EmptyText", kItem, "", "without any timed line"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(Faults, AHungPlayerHoldsATickNoLongerThanItsOwnLimit)
{
    writeStored("Ann--Rain", kOnline);
    QJsonArray songs{QJsonObject{{"artist", "Ann"}, {"title", "Rain"}, {"duration", 60}}};
    player = std::make_unique<PlayerProcess>(QStringList{
        "--as", "qqmusic", "--playlist", home.write("playlist.json", QJsonDocument(songs).toJson()),
        "--qqmusic-port", QString::number(qqPort)});
    player->send("play");
    launch();
    player->send("post com.tencent.QQMusicMac.songchanged com.tencent.QQMusicMac");
    ASSERT_TRUE(waitFor([&] { return app->lrcAvailable(); }));
    player->send("qq-silent on");
    ASSERT_TRUE(player->waitEvent("qq-silent"));
    QElapsedTimer clock;
    clock.start();
    timers.fire();
    EXPECT_LT(clock.elapsed(), 5000 + 2000); // the source's own 5 s limit, and a margin
    EXPECT_EQ(logged("the update tick waited"), 1);
}

TEST_F(Faults, AnUnwritableFolderFailsQuietlyAndIsNamed)
{
    // Even root cannot create files in /proc: the folder stands for a read-only one.
    QDir().mkpath(LyricControl::_pathAppDatas());
    ASSERT_TRUE(QFile::link("/proc/1", lyricsFolder()));
    answer(kItem, kOnline);
    startJukora({"Rain"});
    launch();
    ASSERT_TRUE(waitFor([&] { return app->lrcAvailable(); }));
    EXPECT_EQ(app->lyric()->contents(), QString::fromUtf8(kOnline));
    // Jukora song changes are not de-duplicated: a second search may save (and fail) again.
    EXPECT_GE(logged("could not save the lyric of \"Ann--Rain\""), 1);
}

// A full disk: writes beyond 16 bytes fail (a file-size limit, SIGXFSZ ignored). The online
// lyric is to replace a file the folder cannot read (it is not UTF-8).
class FullFolder : public Faults {
protected:
    const QByteArray old = "[00:01]\xff old\n";
    QString path;

    void saveOnAFullDisk()
    {
        path = writeStored("Ann--Rain", old);
        answer(kItem, kOnline);
        startJukora({"Rain"});
        rlimit saved{};
        getrlimit(RLIMIT_FSIZE, &saved);
        const auto previous = std::signal(SIGXFSZ, SIG_IGN);
        rlimit tiny = saved;
        tiny.rlim_cur = 16;
        setrlimit(RLIMIT_FSIZE, &tiny);
        launch();
        const bool installed = waitFor([&] { return app->lrcAvailable(); });
        setrlimit(RLIMIT_FSIZE, &saved);
        std::signal(SIGXFSZ, previous);
        ASSERT_TRUE(installed);
    }
};

TEST_F(FullFolder, IsNamedAndTheLyricStillShown)
{
    saveOnAFullDisk();
    EXPECT_EQ(app->lyric()->contents(), QString::fromUtf8(kOnline));
    // Jukora song changes are not de-duplicated: a second search may save (and fail) again.
    EXPECT_GE(logged("could not save the lyric of \"Ann--Rain\""), 1);
}

// A short write must never replace the stored file with a truncated one.
TEST_F(FullFolder, KeepsTheOldFileWhole)
{
    saveOnAFullDisk();
    EXPECT_EQ(readFile(path), old);
    EXPECT_EQ(QDir(lyricsFolder()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

} // namespace
