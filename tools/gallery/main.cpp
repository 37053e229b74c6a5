// versewick-gallery: every display with a sample lyric and a simulated clock, for screenshots
// and measurements. Uses a settings file of its own in a temporary folder.
//   versewick-gallery [--mode all|scroll|strip|notification|hud|preferences] [--panel INDEX]
//                     [--plain] [--start SECONDS]
//                     [--backdrop split|light|dark|none] [--quit-after SECONDS]
//                     [--lyric FILE.lrc] [--generate LINES] [--notification-stays]
//                     [--reading none|translation|romanization]
//                     [--script original|simplified|traditional]
#include "Backdrop.h"
#include "SampleLyric.h"
#include "core/app/DesktopPort.h"
#include "core/lyric/Lyric.h"
#include "core/reading/LyricReading.h"
#include "core/reading/ShownLine.h"
#include "core/settings/ServiceAddresses.h"
#include "core/settings/Settings.h"
#include "gui/display/AppController.h"
#include "gui/display/HUDWindow.h"
#include "gui/display/NotificationWindowController.h"
#include "gui/display/SingleLineModeController.h"
#include "gui/preferences/PreferenceController.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QScreen>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("Shows the lyric displays"));
    options.addHelpOption();
    const QCommandLineOption mode(QStringLiteral("mode"), QStringLiteral("Displays to show"),
                                  QStringLiteral("mode"), QStringLiteral("all"));
    const QCommandLineOption plain(QStringLiteral("plain"), QStringLiteral("Strip without plate"));
    const QCommandLineOption start(QStringLiteral("start"), QStringLiteral("Start time"),
                                   QStringLiteral("seconds"), QStringLiteral("0"));
    const QCommandLineOption backdrop(QStringLiteral("backdrop"), QStringLiteral("Desktop"),
                                      QStringLiteral("kind"), QStringLiteral("split"));
    const QCommandLineOption quitAfter(QStringLiteral("quit-after"), QStringLiteral("Quit"),
                                       QStringLiteral("seconds"), QStringLiteral("0"));
    const QCommandLineOption lyricFile(QStringLiteral("lyric"), QStringLiteral("LRC file"),
                                       QStringLiteral("file"));
    const QCommandLineOption generate(QStringLiteral("generate"), QStringLiteral("Lines"),
                                      QStringLiteral("lines"), QStringLiteral("0"));
    const QCommandLineOption stays(QStringLiteral("notification-stays"),
                                   QStringLiteral("Keep the notification up"));
    const QCommandLineOption panelIndex(QStringLiteral("panel"),
                                        QStringLiteral("Preferences panel"),
                                        QStringLiteral("index"), QStringLiteral("0"));
    const QCommandLineOption reading(QStringLiteral("reading"), QStringLiteral("Line under"),
                                     QStringLiteral("kind"), QStringLiteral("translation"));
    const QCommandLineOption script(QStringLiteral("script"), QStringLiteral("Chinese script"),
                                    QStringLiteral("script"), QStringLiteral("original"));
    options.addOptions({mode, plain, start, backdrop, quitAfter, lyricFile, generate, stays,
                        panelIndex, reading, script});
    options.process(app);
    const QString shown = options.value(mode);
    const auto wants = [&](const char* name) {
        return shown == QLatin1String("all") || shown == QLatin1String(name);
    };

    QTemporaryDir folder;
    auto settings = Settings::launch(std::make_unique<QSettings>(
        folder.filePath(QStringLiteral("gallery.ini")), QSettings::IniFormat));
    settings->setIsShowSingleLineBG(!options.isSet(plain));

    LyricReading::shared().setOptions({ReadingOptions::secondaryFromName(options.value(reading)),
                                       ReadingOptions::scriptFromName(options.value(script))});
    Lyric lyric;
    if (options.isSet(lyricFile))
        lyric.parseLRCfile(options.value(lyricFile));
    else if (options.value(generate).toInt() > 0)
        lyric.parseLRCcontent(generatedLyric(options.value(generate).toInt(), 3.5));
    else
        lyric.parseLRCcontent(sampleLyric());

    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    std::unique_ptr<Backdrop> desktop;
    const QString kind = options.value(backdrop);
    if (kind != QLatin1String("none")) {
        desktop =
            std::make_unique<Backdrop>(kind == QLatin1String("light")  ? Backdrop::Kind::Light
                                       : kind == QLatin1String("dark") ? Backdrop::Kind::Dark
                                                                       : Backdrop::Kind::Split);
        desktop->setGeometry(screen);
        desktop->show();
    }

    // The lyric panel: a HUD panel hosting the scrolling view under its title strip.
    std::unique_ptr<HUDWindow> panel;
    AppController scrolling(settings.get());
    if (wants("scroll") || wants("hud")) {
        panel = std::make_unique<HUDWindow>();
        panel->setGeometry(screen.x() + screen.width() / 24, screen.y() + screen.height() / 10,
                           std::max(320, screen.width() / 4), std::max(360, screen.height() / 2));
        panel->setTitle(QStringLiteral("Lanterns on the River - The Quiet Ferries"));
        panel->addCloseWidget();
        auto* layout = new QVBoxLayout(panel.get());
        layout->setContentsMargins(8, 19 + 6, 8, 8);
        auto* host = new QWidget(panel.get());
        layout->addWidget(host);
        scrolling.applicationDidFinishLaunching(host);
        scrolling.setParser(&lyric);
        panel->show();
    }

    SingleLineModeController strip(settings.get());
    if (wants("strip"))
        strip.window()->show();

    NotificationWindowController notification;
    if (wants("notification")) {
        notification.setTrack({QStringLiteral("Lanterns on the River"),
                               QStringLiteral("The Quiet Ferries"),
                               QStringLiteral("Songs for the Night Crossing 河流"), 187});
        notification.resize();
        notification.setPositionCorner(2);
        notification.showWindow();
        if (options.isSet(stays))
            notification.hideTimer()->stop();
    }

    // The preferences window alone, on the panel asked for; its buttons open nothing.
    struct NoDesktop : DesktopPort {
        void openUrl(const QUrl&) override {}
        void revealFile(const QString&) override {}
        void openInTextEditor(const QString&) override {}
    } noDesktop;
    const ServiceAddresses addresses(std::make_unique<QSettings>(
        folder.filePath(QStringLiteral("gallery.ini")), QSettings::IniFormat));
    std::unique_ptr<PreferenceController> preferences;
    if (shown == QLatin1String("preferences")) {
        settings->setLrcPluginInfo(QStringLiteral("LRCLIB v(1)"));
        preferences = std::make_unique<PreferenceController>(*settings, addresses, noDesktop);
        preferences->selectPanelAtIndex(options.value(panelIndex).toInt());
        preferences->centerAndShow();
    }

    // The simulated player: the position advances in real time, read five times a second.
    const double startAt = options.value(start).toDouble();
    QElapsedTimer clock;
    clock.start();
    QTimer tick;
    const auto update = [&] {
        const LRCItem* last = lyric.lrcItemAtIndex(lyric.lines() - 1);
        const double length = (last ? last->startTime() : 0) + 4;
        double t = startAt + clock.elapsed() / 1000.0;
        if (t > length)
            t = std::fmod(t, length);
        if (panel)
            scrolling.updateTime(float(t));
        if (strip.isWindowLoaded()) {
            const LRCItem* item = lyric.lrcItemAtTime(t);
            const ShownLine line =
                shownLine(&lyric, item, item ? int(lyric.indexOfItem(item)) : -1);
            strip.setContent(item ? line.text : lyric.lyricsAtTime(t));
            if (strip.view())
                strip.view()->setSecondary(line.secondary);
        }
    };
    QObject::connect(&tick, &QTimer::timeout, &app, update);
    tick.start(200);
    update();

    if (const double seconds = options.value(quitAfter).toDouble(); seconds > 0)
        QTimer::singleShot(int(seconds * 1000), &app, &QCoreApplication::quit);
    return app.exec();
}
