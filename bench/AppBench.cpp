// The application controller against the simulator, on a session bus:
//   dbus-run-session -- build/bin/app_bench
// The follower's CPU over a minute is measured by bench/follow_cpu.sh.
#include "core/app/AppDelegate.h"
#include "core/app/AppState.h"
#include "core/app/UpdateTimer.h"
#include "core/lyric/Lyric.h"
#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"
#include "core/settings/ServiceAddresses.h"
#include "core/settings/Settings.h"
#include "core/sources/JukoraControl.h"
#include "core/sources/iTunesControl.h"
#include "core/store/LyricControl.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QSettings>
#include <QTcpServer>
#include <QTemporaryDir>

namespace {

// A timer that never fires: the benchmark calls update() itself.
class IdleTimer : public UpdateTimer {
public:
    void start(int, std::function<void()>) override { m_active = true; }
    void stop() override { m_active = false; }
    bool isActive() const override { return m_active; }

private:
    bool m_active = false;
};

// Jukora playing "Ann - Rain" (the simulator's second demo song), whose lyric is in a
// temporary lyrics folder; the controller headless, with no display ports.
class Fixture {
public:
    Fixture()
    {
        qputenv("XDG_DATA_HOME", m_home.filePath("data").toUtf8());
        qputenv("XDG_CONFIG_HOME", m_home.filePath("config").toUtf8());
        QTcpServer probe;
        probe.listen(QHostAddress::LocalHost, 0);
        qputenv("VERSEWICK_QQMUSIC_PORT", QByteArray::number(probe.serverPort()));
        QDir().mkpath(LyricControl::_pathLrcs());
        QFile file(LyricControl::_pathLrcs() + QStringLiteral("/Ann--Rain.lrc"));
        file.open(QIODevice::WriteOnly);
        for (int i = 0; i < 60; ++i)
            file.write(QStringLiteral("[%1:%2.00]line %3 of the song\n")
                           .arg(i * 3 / 60, 2, 10, QChar(u'0'))
                           .arg(i * 3 % 60, 2, 10, QChar(u'0'))
                           .arg(i)
                           .toUtf8());
        file.close();
        m_player.start(QStringLiteral(VERSEWICK_PLAYER), {"--as", "jukora"});
        m_player.waitForStarted();
        QElapsedTimer timer;
        timer.start();
        while (!m_player.readAllStandardOutput().contains("\"ready\"") && timer.elapsed() < 5000)
            m_player.waitForReadyRead(100);
        m_player.write("next\nplay\n");
        m_player.waitForBytesWritten();
        m_player.waitForReadyRead(1000);

        m_settings = Settings::launch(
            std::make_unique<QSettings>(m_home.filePath("s.ini"), QSettings::IniFormat));
        m_addresses = std::make_unique<ServiceAddresses>(
            std::make_unique<QSettings>(m_home.filePath("a.ini"), QSettings::IniFormat));
        m_itunes = std::make_unique<iTunesControl>(Workspace::sharedWorkspace(),
                                                   DistributedNotificationCenter::defaultCenter());
        AppEnvironment env{*m_settings, *m_addresses, Workspace::sharedWorkspace(),
                           DistributedNotificationCenter::defaultCenter(), *m_itunes};
        env.timers = [] { return std::make_unique<IdleTimer>(); };
        env.bundles = [] { return QStringList(); };
        app = std::make_unique<AppDelegate>(std::move(env), AppPorts{});
        app->awakeFromNib();
        app->applicationDidFinishLaunching();
    }
    ~Fixture()
    {
        app.reset();
        m_player.write("exit\n");
        m_player.waitForFinished(3000);
    }
    bool ready() const { return app->lrcAvailable() && app->musicSource() == 2; }

    std::unique_ptr<AppDelegate> app;

private:
    QTemporaryDir m_home;
    QProcess m_player;
    std::unique_ptr<Settings> m_settings;
    std::unique_ptr<ServiceAddresses> m_addresses;
    std::unique_ptr<iTunesControl> m_itunes;
};

// Jukora's song-change notice on the bus to the lyric installed from the folder: the
// notice's delivery, the song's names read from the player, the file read and parsed.
void BM_SongChangeToLyricInstalled(benchmark::State& state)
{
    Fixture f;
    if (!f.ready()) {
        state.SkipWithError("the simulated Jukora song was not found in the folder");
        return;
    }
    // The lyric is cleared when the notice arrives and installed again in the same turn of
    // the event loop: watch the published state for the installation.
    bool installed = false;
    QObject::connect(&f.app->state(), &AppState::changed,
                     [&](const QString& name, const QVariant& value) {
                         if (name == QLatin1String("LyricLoaded") && value.toBool())
                             installed = true;
                     });
    for (auto _ : state) {
        installed = false;
        DistributedNotificationCenter::defaultCenter().post(
            QStringLiteral("com.morvane.Jukora.songchanged"), QStringLiteral("com.morvane.Jukora"));
        QElapsedTimer limit;
        limit.start();
        while (!installed && limit.elapsed() < 5000)
            QGuiApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents,
                                           5);
        if (!installed) {
            state.SkipWithError("the lyric was not installed within 5 s");
            break;
        }
    }
}
BENCHMARK(BM_SongChangeToLyricInstalled)->Unit(benchmark::kMillisecond)->UseRealTime();

// One update tick with a lyric installed, Jukora active: the panel title, one position read
// from the player, the lit line and its fan-out.
void BM_TickJukora(benchmark::State& state)
{
    Fixture f;
    if (!f.ready()) {
        state.SkipWithError("the simulated Jukora song was not found in the folder");
        return;
    }
    for (auto _ : state)
        f.app->update();
    state.counters["line"] = f.app->state().lineIndex();
}
BENCHMARK(BM_TickJukora)->Unit(benchmark::kMicrosecond);

// The part of a tick that is the player's: one position read over the bus.
void BM_JukoraPositionRead(benchmark::State& state)
{
    Fixture f;
    for (auto _ : state)
        benchmark::DoNotOptimize(f.app->djControl()->location());
}
BENCHMARK(BM_JukoraPositionRead)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    // The settings read fonts, which need the GUI module; nothing is shown.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
