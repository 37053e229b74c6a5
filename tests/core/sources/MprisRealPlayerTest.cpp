// The MPRIS source against a real player (mpv with its MPRIS plug-in), and the cost of
// following a player. Both are skipped when what they need is missing; the measurement runs
// only when asked (--gtest_also_run_disabled_tests).
#include "core/platform/Workspace.h"
#include "core/sources/MusicSourceMpris.h"

#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/TempHome.h"

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QTimer>

#include <sys/resource.h>

#include <cstdio>

#include <gtest/gtest.h>

namespace {

const char* const kMprisPlugins[] = {"/usr/lib/mpv-mpris/mpris.so", "/etc/mpv/scripts/mpris.so"};

double cpuSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

TEST(MprisRealPlayer, FollowsMpv)
{
    QString plugin;
    for (const char* p : kMprisPlugins) {
        if (QFile::exists(QString::fromUtf8(p)))
            plugin = QString::fromUtf8(p);
    }
    if (QStandardPaths::findExecutable("mpv").isEmpty() || plugin.isEmpty() ||
        QStandardPaths::findExecutable("ffmpeg").isEmpty())
        GTEST_SKIP() << "needs mpv, mpv-mpris and ffmpeg";
    TempHome home;
    const QString song = home.filePath("tone.flac");
    ASSERT_EQ(
        QProcess::execute("ffmpeg", {"-hide_banner", "-loglevel", "error", "-f", "lavfi", "-i",
                                     "sine=frequency=440:duration=60", "-metadata", "title=Tone",
                                     "-metadata", "artist=Sine", "-metadata", "album=Tests", song}),
        0);
    QSettings settings(home.filePath("settings.ini"), QSettings::IniFormat);
    MusicSourceMpris source(Workspace::sharedWorkspace(), settings);
    QProcess mpv;
    mpv.start("mpv", {"--no-config", "--ao=null", "--no-video", "--really-quiet",
                      "--script=" + plugin, "--start=20", song});
    ASSERT_TRUE(mpv.waitForStarted());
    // mpv names the file first and its tags once it has read them.
    const bool found = waitFor(
        [&] { return source.track() != nullptr && source.track()->artist() == "Sine"; }, 15000);
    if (found) {
        std::printf("mpv: name \"%s\", bus %s, title \"%s\", artist \"%s\", length %lld s, "
                    "url %s, position %.2f\n",
                    qPrintable(source.name()), qPrintable(source.busName()),
                    qPrintable(source.track()->title()), qPrintable(source.track()->artist()),
                    static_cast<long long>(source.track()->length()), qPrintable(source.song().url),
                    double(source.location()));
        EXPECT_EQ(source.track()->title(), "Tone");
        EXPECT_EQ(source.track()->artist(), "Sine");
        EXPECT_EQ(source.song().localFilePath(), song);
        waitFor([] { return false; }, 2500); // time must pass for the position to move
        EXPECT_NEAR(source.location(), 22.65, 1.5);
    }
    mpv.kill();
    mpv.waitForFinished(3000);
    ASSERT_TRUE(found) << "mpv did not show up as an MPRIS player";
    EXPECT_TRUE(waitFor([&] { return !source.isRunning(); }));
}

// Follows a playing simulator for 60 s, reading the position five times a second as the
// application's tick does, and prints the CPU time this process spent.
TEST(MprisRealPlayer, DISABLED_CpuOfFollowingForAMinute)
{
    PlayerProcess player({"--as", "mpris"});
    TempHome home;
    QSettings settings(home.filePath("settings.ini"), QSettings::IniFormat);
    MusicSourceMpris source(Workspace::sharedWorkspace(), settings);
    player.send("play");
    ASSERT_TRUE(waitFor([&] { return source.track() != nullptr; }));
    const double before = cpuSeconds();
    QElapsedTimer clock;
    clock.start();
    float last = 0;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [&] {
        last = source.location();
        (void)source.track();
    });
    tick.start(200);
    QEventLoop loop;
    QTimer::singleShot(60000, &loop, &QEventLoop::quit);
    loop.exec();
    const double spent = cpuSeconds() - before;
    std::printf("following for %.1f s: %.3f s CPU (%.2f%%), last position %.2f\n",
                double(clock.elapsed()) / 1000.0, spent, spent / 60.0 * 100.0, double(last));
}

} // namespace
