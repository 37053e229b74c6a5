// The player sources against the simulator, on a session bus:
//   dbus-run-session -- build/bin/sources_bench
// SOURCES_BENCH_SECONDS shortens the CPU measurement (default 60 s).
#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"
#include "core/sources/JukoraControl.h"
#include "core/sources/MusicSourceQQMusic.h"
#include "core/sources/iTunesControl.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QTcpServer>
#include <QTimer>

#include <ctime>

namespace {

quint16 freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

// The simulator playing the demo playlist as the given players.
class Simulator {
public:
    Simulator(const QString& players, quint16 port)
    {
        m_process.start(QStringLiteral(VERSEWICK_PLAYER),
                        {"--as", players, "--qqmusic-port", QString::number(port)});
        m_process.waitForStarted();
        QElapsedTimer timer;
        timer.start();
        while (!m_process.readAllStandardOutput().contains("\"ready\"") && timer.elapsed() < 5000)
            m_process.waitForReadyRead(100);
        m_process.write("play\n");
        m_process.waitForBytesWritten();
        m_process.waitForReadyRead(1000);
    }
    ~Simulator()
    {
        m_process.write("exit\n");
        m_process.waitForFinished(3000);
    }

private:
    QProcess m_process;
};

double processCpuSeconds()
{
    timespec ts{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
    return double(ts.tv_sec) + double(ts.tv_nsec) / 1e9;
}

void BM_QQMusicPositionRead(benchmark::State& state)
{
    const quint16 port = freePort();
    qputenv("VERSEWICK_QQMUSIC_PORT", QByteArray::number(port));
    Simulator simulator(QStringLiteral("qqmusic"), port);
    MusicSourceQQMusic qq(Workspace::sharedWorkspace(),
                          DistributedNotificationCenter::defaultCenter());
    qq.setCallBack(nullptr, {}, {});
    if (!qq.isRunning()) {
        state.SkipWithError("the simulated QQMusic is not running");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(qq.location());
}
BENCHMARK(BM_QQMusicPositionRead)
    ->Unit(benchmark::kMicrosecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

// The update loop's work on the sources: five times a second, the active source (QQMusic, the
// first by priority) is asked for its song and position. Reported: CPU seconds this process
// used over the whole run, and per minute.
void BM_SourcesCpuWhilePlaying(benchmark::State& state)
{
    const double seconds = qEnvironmentVariableIsSet("SOURCES_BENCH_SECONDS")
                               ? qEnvironmentVariable("SOURCES_BENCH_SECONDS").toDouble()
                               : 60.0;
    const quint16 port = freePort();
    qputenv("VERSEWICK_QQMUSIC_PORT", QByteArray::number(port));
    Simulator simulator(QStringLiteral("qqmusic,jukora,itunes"), port);
    MusicSourceQQMusic qq(Workspace::sharedWorkspace(),
                          DistributedNotificationCenter::defaultCenter());
    JukoraControl jukora(Workspace::sharedWorkspace(),
                         DistributedNotificationCenter::defaultCenter());
    iTunesControl itunes(Workspace::sharedWorkspace(),
                         DistributedNotificationCenter::defaultCenter());
    qq.setCallBack(nullptr, {}, {});
    jukora.setCallBack(nullptr, {}, {});
    itunes.updateAppLifeState();
    for (auto _ : state) {
        const double cpuBefore = processCpuSeconds();
        QTimer tick;
        int ticks = 0;
        QObject::connect(&tick, &QTimer::timeout, [&] {
            if (TrackItem* track = qq.track())
                benchmark::DoNotOptimize(track->title());
            benchmark::DoNotOptimize(qq.location());
            ++ticks;
        });
        tick.start(200);
        // A real event loop, idle between ticks as the application's is.
        QEventLoop loop;
        QTimer::singleShot(int(seconds * 1000), &loop, &QEventLoop::quit);
        loop.exec();
        const double cpu = processCpuSeconds() - cpuBefore;
        state.counters["cpu_seconds"] = cpu;
        state.counters["cpu_seconds_per_minute"] = cpu * 60.0 / seconds;
        state.counters["cpu_percent"] = 100.0 * cpu / seconds;
        state.counters["ticks"] = ticks;
    }
}
BENCHMARK(BM_SourcesCpuWhilePlaying)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
