// The versewick executable beside hostile players and files: a flood of song changes, pipes
// where lyrics should be. It keeps answering its service, stays small, and quits on SIGTERM.
#include "core/app/AppDBusService.h"

#include "support/PlayerProcess.h"
#include "support/TempHome.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QUrl>

#include <csignal>
#include <sys/stat.h>

#include <gtest/gtest.h>

namespace {

class HostilePlayer : public ::testing::Test {
protected:
    TempHome home;
    QDBusConnection bus = QDBusConnection::sessionBus();
    QProcess app;
    std::unique_ptr<PlayerProcess> player;
    qint64 slowestMs = 0;

    void SetUp() override
    {
        ASSERT_TRUE(bus.isConnected());
        QDir().mkpath(home.filePath("data/Versewick/lyrics.lrcs"));
        QDir().mkpath(home.filePath("music"));
    }
    void TearDown() override
    {
        if (app.state() != QProcess::NotRunning) {
            app.kill();
            app.waitForFinished(5000);
        }
    }
    void startPlayer(const QString& title, const QString& audioPath)
    {
        const QJsonObject song{{"artist", "Ann"},
                               {"title", title},
                               {"duration", 60},
                               {"url", QUrl::fromLocalFile(audioPath).toString()}};
        const QString list = home.write("playlist.json", QJsonDocument(QJsonArray{song}).toJson());
        player = std::make_unique<PlayerProcess>(
            QStringList{"--as", "mpris", "--mpris-name", "hostile", "--playlist", list});
        player->send("play");
        ASSERT_TRUE(player->waitEvent("play"));
    }
    void startApp()
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("HOME", home.path());
        env.insert("XDG_CONFIG_HOME", home.filePath("config"));
        env.insert("XDG_DATA_HOME", home.filePath("data"));
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("VERSEWICK_QQMUSIC_PORT", "9");
        app.setProcessEnvironment(env);
        app.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        app.start(QStringLiteral(VERSEWICK_APP), {});
        ASSERT_TRUE(waitFor(
            [&] {
                return bus.interface()->isServiceRegistered(AppDBusService::kServiceName).value();
            },
            20000));
    }
    // A property of the service, timed: the slowest answer is kept.
    QVariant ask(const char* property)
    {
        QElapsedTimer clock;
        clock.start();
        QDBusInterface service(AppDBusService::kServiceName, AppDBusService::kObjectPath,
                               AppDBusService::kInterface, bus);
        service.setTimeout(5000);
        const QVariant value = service.property(property);
        slowestMs = std::max(slowestMs, clock.elapsed());
        return value;
    }
    qint64 rssKiB() const
    {
        QFile status(QStringLiteral("/proc/%1/status").arg(app.processId()));
        if (!status.open(QIODevice::ReadOnly))
            return 0;
        for (const QByteArray& line : status.readAll().split('\n')) {
            if (line.startsWith("VmRSS:"))
                return line.mid(6).trimmed().split(' ').first().toLongLong();
        }
        return 0;
    }
    // SIGTERM ends it within 2 s, whatever it is doing.
    void terminateInTime()
    {
        QElapsedTimer clock;
        clock.start();
        ::kill(pid_t(app.processId()), SIGTERM);
        EXPECT_TRUE(app.waitForFinished(5000));
        EXPECT_LT(clock.elapsed(), 2000);
    }
};

TEST_F(HostilePlayer, AFloodOfSongChangesLeavesItAnsweringSmallAndShowingTheLastSong)
{
    startPlayer("Rain", home.filePath("music/none.flac"));
    startApp();
    ASSERT_TRUE(waitFor([&] { return ask("Title").toString() == "Rain"; }, 10000));
    player->send("mpris-flood 10000 5");
    qint64 peakKiB = 0;
    QString last;
    QElapsedTimer flood;
    flood.start();
    while (last.isEmpty() && flood.elapsed() < 30000) {
        ask("Title");
        peakKiB = std::max(peakKiB, rssKiB());
        if (player->waitEvent("flood-done", {}, 200))
            last = player->events().constLast().value("title").toString();
    }
    ASSERT_FALSE(last.isEmpty()) << "the flood did not end";
    EXPECT_TRUE(waitFor([&] { return ask("Title").toString() == last; }, 5000));
    EXPECT_LT(slowestMs, 1000);
#if !defined(__SANITIZE_ADDRESS__)
    // AddressSanitizer's shadow memory and quarantine make the resident size meaningless.
    EXPECT_LT(peakKiB, 80 * 1024);
#endif
    std::cerr << "flood: slowest answer " << slowestMs << " ms, peak RSS " << peakKiB / 1024
              << " MiB\n";
    player->send("mpris-flood 10000 5");
    waitFor([] { return false; }, 500);
    terminateInTime();
}

// A lyric near the size bound (4 MiB): read and parsed off the main thread, then shown.
// Disabled: the scrolling view still measures every row on the main thread when it is handed
// the lyric (about 200,000 rows here: seconds), which is the display's to bound.
TEST_F(HostilePlayer, ALargeLyricIsReadWithoutHoldingTheApplication)
{
    QByteArray text;
    for (int i = 0; text.size() < 3900 * 1024; ++i)
        text += QStringLiteral("[%1:%2.00]line %3\n").arg(i / 60 % 100).arg(i % 60).arg(i).toUtf8();
    home.write("data/Versewick/lyrics.lrcs/Ann--Rain.lrc", text);
    startPlayer("Rain", home.filePath("music/none.flac"));
    startApp();
    EXPECT_TRUE(waitFor([&] { return ask("LyricOrigin").toInt() == 0; }, 15000));
    EXPECT_LT(slowestMs, 1000);
    std::cerr << "large lyric: slowest answer " << slowestMs << " ms\n";
    terminateInTime();
}

struct PipeCase {
    const char* name;
    const char* where; // the pipe's path under the home folder
};

class LyricPipe : public HostilePlayer, public ::testing::WithParamInterface<PipeCase> {};

TEST_P(LyricPipe, IsNoLyricAndHoldsNothingUp)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(home.filePath(GetParam().where)).constData(), 0600), 0);
    startPlayer("Rain", home.filePath("music/song.flac"));
    startApp();
    EXPECT_TRUE(
        waitFor([&] { return ask("Status").toString() == "lyric is not available"; }, 15000));
    EXPECT_LT(slowestMs, 1000);
    EXPECT_EQ(ask("LyricOrigin").toInt(), -1);
    terminateInTime();
}

INSTANTIATE_TEST_SUITE_P(Places, LyricPipe,
                         ::testing::Values(PipeCase{"Beside", "music/song.lrc"},
                                           PipeCase{"Folder",
                                                    "data/Versewick/lyrics.lrcs/Ann--Rain.lrc"}),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
