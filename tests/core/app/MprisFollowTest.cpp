// versewick-cli follow beside an MPRIS player (versewick-player --as mpris) on a private bus.
#include "../audiofile/AudioFixtures.h"
#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"
#include "support/TempHome.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <gtest/gtest.h>

namespace {

class MprisFollow : public ::testing::Test {
protected:
    TempHome home;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    std::unique_ptr<QProcess> follow;
    QByteArray out;

    void SetUp() override
    {
        env.insert("HOME", home.path());
        env.insert("XDG_CONFIG_HOME", home.filePath("config"));
        env.insert("XDG_DATA_HOME", home.filePath("data"));
        env.insert("XDG_DATA_DIRS", home.filePath("none"));
        env.insert("VERSEWICK_QQMUSIC_PORT", QString::number(closedPort()));
        QDir().mkpath(home.filePath("data/Versewick/lyrics.lrcs"));
        home.write("data/Versewick/lyrics.lrcs/Ann--Rain.lrc",
                   "[00:00.00]folder line\n[00:30.00]later\n");
        QDir().mkpath(home.filePath("music"));
    }
    void TearDown() override
    {
        if (follow) {
            follow->terminate();
            follow->waitForFinished(5000);
        }
    }
    QString playlist(const QString& audioPath)
    {
        return home.write("playlist.json",
                          QJsonDocument(QJsonArray{QJsonObject{
                                            {"artist", "Ann"},
                                            {"title", "Rain"},
                                            {"duration", 60},
                                            {"url", QUrl::fromLocalFile(audioPath).toString()}}})
                              .toJson());
    }
    std::unique_ptr<PlayerProcess> mpris(const QString& audioPath)
    {
        auto player = std::make_unique<PlayerProcess>(
            QStringList{"--as", "mpris", "--mpris-name", "tester", "--mpris-identity",
                        "Tester Player", "--playlist", playlist(audioPath)});
        player->send("play");
        return player;
    }
    void startFollowing()
    {
        follow = std::make_unique<QProcess>();
        follow->setProcessEnvironment(env);
        follow->start(QStringLiteral(VERSEWICK_CLI), {"follow", "--json"});
        ASSERT_TRUE(follow->waitForStarted());
    }
    bool printed(const QByteArray& text)
    {
        return waitFor([&] {
            out += follow->readAllStandardOutput();
            return out.contains(text);
        });
    }
    QJsonObject now()
    {
        QProcess process;
        process.setProcessEnvironment(env);
        process.start(QStringLiteral(VERSEWICK_CLI), {"now"});
        process.waitForFinished(10000);
        return QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    }
    // Polls the application's state until the key has the value.
    bool nowHas(const char* key, const QJsonValue& value)
    {
        return waitFor([&] { return now()[QLatin1String(key)] == value; }, 15000);
    }
};

struct Where {
    const char* name;
    bool tag;    // the lyric is in the audio file's tag
    bool beside; // an .lrc file lies beside the audio file
    const char* line;
    int origin;
};

class MprisLyricOrigin : public MprisFollow, public ::testing::WithParamInterface<Where> {};

// Each case also holds every lower-priority lyric, so the order is what is tested.
TEST_P(MprisLyricOrigin, TheAudioFileComesBeforeTheFolder)
{
    const Where where = GetParam();
    const AudioFormat& mp3 = audioFormats().front();
    const QString audio = makeAudioFile(mp3, home.filePath("music"), "song");
    ASSERT_FALSE(audio.isEmpty()) << "ffmpeg could not make the audio file";
    if (where.tag) {
        ASSERT_TRUE(mp3.tagLyrics(audio, "[00:00.00]tag line\n[00:30.00]later\n"));
    }
    if (where.beside)
        home.write("music/song.lrc", "[00:00.00]beside line\n[00:30.00]later\n");
    auto player = mpris(audio);
    startFollowing();
    ASSERT_TRUE(printed(where.line)) << out.constData();
    EXPECT_FALSE(out.contains("fetching lyrics") && where.origin != 0) << "no search was needed";
    const QJsonObject state = now();
    EXPECT_EQ(state["SourceKind"].toInt(), 4);
    EXPECT_EQ(state["SourceName"].toString(), "Tester Player");
    EXPECT_EQ(state["Artist"].toString(), "Ann");
    EXPECT_EQ(state["Title"].toString(), "Rain");
    EXPECT_EQ(state["LyricOrigin"].toInt(), where.origin);
    EXPECT_TRUE(out.contains(R"("source":"mpris")"));
}

INSTANTIATE_TEST_SUITE_P(Origins, MprisLyricOrigin,
                         ::testing::Values(Where{"Tag", true, true, "tag line", 1},
                                           Where{"Beside", false, true, "beside line", 4},
                                           Where{"Folder", false, false, "folder line", 0}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(MprisFollow, ComesLastAndLeavesNoSourceWhenThePlayerQuits)
{
    auto player = mpris(home.filePath("music/none.mp3"));
    const QString jukoraList = home.write("jukora.json", R"([{"artist":"Bo","title":"Sun"}])");
    auto jukora = std::make_unique<PlayerProcess>(QStringList{"--as", "jukora", "--playlist",
                                                              jukoraList, "--qqmusic-port",
                                                              env.value("VERSEWICK_QQMUSIC_PORT")});
    jukora->send("play");
    startFollowing();
    ASSERT_TRUE(nowHas("SourceKind", 2)) << "Jukora beats any MPRIS player";
    EXPECT_EQ(now()["Title"].toString(), "Sun");

    jukora.reset();
    ASSERT_TRUE(nowHas("SourceKind", 4));
    EXPECT_EQ(now()["SourceName"].toString(), "Tester Player");
    ASSERT_TRUE(printed("folder line"));

    player.reset();
    ASSERT_TRUE(nowHas("SourceName", "No Music Source"));
    EXPECT_EQ(now()["SourceKind"].toInt(), 0);
}

// mpv with its MPRIS plug-in, under the test's bus: the song's .lrc beside it, the lit line
// at the position mpv started from.
TEST_F(MprisFollow, FollowsMpv)
{
    QString plugin;
    for (const char* p : {"/usr/lib/mpv-mpris/mpris.so", "/etc/mpv/scripts/mpris.so"}) {
        if (QFile::exists(QString::fromUtf8(p)))
            plugin = QString::fromUtf8(p);
    }
    if (QStandardPaths::findExecutable("mpv").isEmpty() || plugin.isEmpty() ||
        QStandardPaths::findExecutable("ffmpeg").isEmpty())
        GTEST_SKIP() << "needs mpv, mpv-mpris (its mpris.so) and ffmpeg";
    const QString song = home.filePath("music/tone.flac");
    ASSERT_EQ(QProcess::execute("ffmpeg", {"-hide_banner", "-loglevel", "error", "-f", "lavfi",
                                           "-i", "sine=frequency=440:duration=60", "-metadata",
                                           "title=Tone", "-metadata", "artist=Sine", song}),
              0);
    home.write("music/tone.lrc", "[00:00.00]opening\n[00:19.00]nineteen\n[00:50.00]fifty\n");
    QProcess mpv;
    mpv.start("mpv", {"--no-config", "--ao=null", "--no-video", "--really-quiet",
                      "--script=" + plugin, "--start=20", song});
    ASSERT_TRUE(mpv.waitForStarted());
    startFollowing();
    // mpv names the file first and its tags once it has read them.
    const bool lit = printed(R"("text":"nineteen")");
    printed(R"("title":"Tone")"); // the tags' song change may come after the line is lit
    const QJsonObject state = now();
    mpv.kill();
    mpv.waitForFinished(3000);
    ASSERT_TRUE(lit) << out.constData();
    EXPECT_TRUE(out.contains(R"("artist":"Sine")") && out.contains(R"("title":"Tone")"));
    EXPECT_EQ(state["SourceKind"].toInt(), 4);
    EXPECT_EQ(state["LyricOrigin"].toInt(), 4);
}

} // namespace
