// versewick-cli follow --json (the real binary) beside a real player: mpv with Debian's MPRIS
// plug-in, on the test's private bus. When a line lights is judged on mpv's own clock, read
// over its IPC socket, so a loaded machine slows the test but does not fail it.
#include "MpvProcess.h"

#include "support/PlayerProcess.h"
#include "support/TempHome.h"

#include <QDir>
#include <QJsonDocument>
#include <QProcess>

#include <gtest/gtest.h>

namespace {

constexpr int kWait = 20000;   // generous: mpv and the follower start slowly under load
constexpr double kBound = 0.3; // seconds between a line's LRC time and its lighting

// A timed LRC text: one line every `step` seconds from 0, named "<name> <seconds>".
QByteArray lrc(const char* name, int lines, double step)
{
    QByteArray text;
    for (int i = 0; i < lines; ++i) {
        const double t = i * step;
        text += QStringLiteral("[%1:%2]%3 %4\n")
                    .arg(int(t) / 60, 2, 10, QChar(u'0'))
                    .arg(t - int(t) / 60 * 60, 5, 'f', 2, QChar(u'0'))
                    .arg(QString::fromUtf8(name))
                    .arg(t)
                    .toUtf8();
    }
    return text;
}

struct Event {
    QJsonObject json;
    qint64 arrivedNs; // on the test's clock
};

class MpvEndToEnd : public ::testing::Test {
protected:
    TempHome home;
    QElapsedTimer clock;
    std::unique_ptr<MpvProcess> mpv;
    QProcess follow;
    QByteArray pending;
    QList<Event> events;
    qsizetype seen = 0;

    void SetUp() override
    {
        if (MpvProcess::mprisPlugin().isEmpty())
            GTEST_SKIP() << "needs mpv and Debian's mpv-mpris plug-in (mpris.so)";
        clock.start();
        QDir().mkpath(home.filePath("music"));
    }
    void TearDown() override
    {
        follow.terminate();
        follow.waitForFinished(5000);
    }
    // A tone of the given length, tagged; `lyric` goes into the file's LYRICS comment.
    QString song(const QString& name, int seconds, const char* artist, const char* title,
                 const QByteArray& lyric = {})
    {
        const QString path = home.filePath("music/" + name + ".flac");
        QStringList args{"-hide_banner",
                         "-loglevel",
                         "error",
                         "-f",
                         "lavfi",
                         "-i",
                         QStringLiteral("sine=frequency=440:duration=%1").arg(seconds),
                         "-metadata",
                         QStringLiteral("artist=") + artist,
                         "-metadata",
                         QStringLiteral("title=") + title};
        if (!lyric.isEmpty())
            args << "-metadata"
                 << "LYRICS=" + QString::fromUtf8(lyric);
        return QProcess::execute("ffmpeg", args << path) == 0 ? path : QString();
    }
    void startFollowing()
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("HOME", home.path());
        env.insert("XDG_CONFIG_HOME", home.filePath("config"));
        env.insert("XDG_DATA_HOME", home.filePath("data"));
        env.insert("XDG_DATA_DIRS", home.filePath("none"));
        env.insert("VERSEWICK_QQMUSIC_PORT", "1");
        follow.setProcessEnvironment(env);
        follow.start(QStringLiteral(VERSEWICK_CLI), {"follow", "--json"});
        ASSERT_TRUE(follow.waitForStarted());
    }
    // The next printed event that matches, after those already looked at.
    std::optional<Event> next(const std::function<bool(const QJsonObject&)>& wanted, int ms = kWait)
    {
        QElapsedTimer waited;
        waited.start();
        while (true) {
            for (; seen < events.size(); ++seen) {
                if (wanted(events[seen].json))
                    return events[seen++];
            }
            if (waited.elapsed() >= ms)
                return std::nullopt;
            follow.waitForReadyRead(50);
            pending += follow.readAllStandardOutput();
            const qint64 now = clock.nsecsElapsed();
            for (qsizetype end; (end = pending.indexOf('\n')) >= 0; pending.remove(0, end + 1))
                events.append({QJsonDocument::fromJson(pending.left(end)).object(), now});
        }
    }
    std::optional<Event> line(const QString& text, int ms = kWait)
    {
        return next([&](const QJsonObject& e) { return e["event"] == "line" && e["text"] == text; },
                    ms);
    }
    bool songShown(const char* artist, const char* title)
    {
        return next([&](const QJsonObject& e) {
                   return e["event"] == "song" && e["source"] == "mpris" && e["artist"] == artist &&
                          e["title"] == title;
               })
            .has_value();
    }
    // Where mpv was, on its own clock, when the line reached the test: its position read now,
    // taken back by the time since. Playing at rate 1 in between.
    double mpvPositionWhenShown(const Event& shown)
    {
        const auto reading = mpv->position(clock);
        return reading ? reading->position - double(reading->atNs - shown.arrivedNs) / 1e9 : -1;
    }
    void expectLitOnTime(const QString& text, double lrcTime)
    {
        const auto shown = line(text);
        ASSERT_TRUE(shown) << "\"" << text.toStdString() << "\" never lit";
        EXPECT_NEAR(mpvPositionWhenShown(*shown), lrcTime, kBound) << text.toStdString();
    }
};

TEST_F(MpvEndToEnd, FollowsPlaySeekPauseTheNextSongAndQuitting)
{
    // The first song's lyric is in its tag; the second's lies beside it.
    const QString one = song("one", 60, "Ann", "One", lrc("first", 30, 2));
    const QString two = song("two", 30, "Bo", "Two");
    ASSERT_FALSE(one.isEmpty() || two.isEmpty()) << "ffmpeg could not make the songs";
    home.write("music/two.lrc", lrc("second", 20, 1.5));
    mpv = std::make_unique<MpvProcess>(home.filePath("mpv.socket"), QStringList{one, two},
                                       QStringList{"--pause"});
    ASSERT_TRUE(mpv->isConnected()) << "mpv did not open its IPC socket";
    startFollowing();
    ASSERT_TRUE(songShown("Ann", "One"));
    ASSERT_TRUE(line("first 0")) << "the lyric from the file's tag";

    ASSERT_TRUE(mpv->setPaused(false));
    expectLitOnTime("first 2", 2);
    expectLitOnTime("first 4", 4);

    // Paused just after the seek: the display stays, whatever the wall clock does.
    ASSERT_EQ(mpv->command({"seek", 20, "absolute"})["error"], "success");
    expectLitOnTime("first 20", 20); // from mpv's Seeked signal, not the 2 s re-read
    ASSERT_TRUE(mpv->setPaused(true));
    const auto pausedAt = mpv->position(clock);
    ASSERT_TRUE(pausedAt && pausedAt->position < 21.8) << "mpv reached the next line first";
    EXPECT_FALSE(next([](const QJsonObject& e) { return e["event"] == "line"; }, 3000))
        << "a line advanced while paused";
    ASSERT_TRUE(mpv->setPaused(false));
    expectLitOnTime("first 22", 22);
    expectLitOnTime("first 24", 24);

    ASSERT_EQ(mpv->command({"playlist-next"})["error"], "success");
    ASSERT_TRUE(songShown("Bo", "Two"));
    expectLitOnTime("second 1.5", 1.5);
    expectLitOnTime("second 3", 3);

    ASSERT_EQ(mpv->command({"quit"})["error"], "success");
    ASSERT_TRUE(mpv->waitForExit(kWait));
    EXPECT_TRUE(next([](const QJsonObject& e) {
        return e["event"] == "status" && e["text"] == "iTunes is not running";
    })) << "no source is left";
}

// Two mpv instances (org.mpris.MediaPlayer2.mpv and ...mpv.instance<pid>): the one playing is
// followed, and following moves when the other starts.
TEST_F(MpvEndToEnd, OfTwoInstancesTheOnePlayingIsFollowed)
{
    const QString one = song("one", 60, "Ann", "One");
    const QString two = song("two", 60, "Bo", "Two");
    ASSERT_FALSE(one.isEmpty() || two.isEmpty()) << "ffmpeg could not make the songs";
    home.write("music/one.lrc", "[00:00.00]alpha line\n");
    home.write("music/two.lrc", "[00:00.00]beta line\n");
    mpv = std::make_unique<MpvProcess>(home.filePath("one.socket"), QStringList{one});
    MpvProcess other(home.filePath("two.socket"), {two}, {"--pause"});
    ASSERT_TRUE(mpv->isConnected() && other.isConnected());
    startFollowing();
    ASSERT_TRUE(songShown("Ann", "One"));
    ASSERT_TRUE(line("alpha line"));

    ASSERT_TRUE(other.setPaused(false));
    ASSERT_TRUE(songShown("Bo", "Two")) << "the most recent to start playing";
    ASSERT_TRUE(line("beta line"));
    ASSERT_TRUE(other.setPaused(true));
    ASSERT_TRUE(songShown("Ann", "One")) << "playing beats paused";
    ASSERT_TRUE(line("alpha line"));
}

} // namespace
