// versewick: the desktop application. Builds the windows, the status menu and the desktop
// behind the controller's ports, owns com.morvane.Versewick, and runs until Quit.
#include "core/foundation/Translations.h"
#include "gui/app/DesktopApplication.h"
#include "gui/app/PlatformChoice.h"
#include "gui/app/SingleInstance.h"
#include "gui/tray/AppIcon.h"

#include "QuitOnSignal.h"
#include "SelfTest.h"

#include <QApplication>
#include <QTextStream>

#include <optional>
#include <string_view>

namespace {

// --help and --version are answered before any display or bus is touched, so they work on a
// console, over ssh and while another instance runs. Qt's own options (-platform, -style...)
// are left for QApplication.
std::optional<int> answerCommandLine(int argc, char** argv)
{
    bool help = false;
    bool version = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg(argv[i]);
        help = help || arg == "--help" || arg == "-h" || arg == "-?";
        version = version || arg == "--version" || arg == "-v";
        if (arg == "--self-test")
            return runSelfTest(argc, argv);
    }
    if (!help && !version)
        return std::nullopt;
    QCoreApplication console(argc, argv); // needs no display
    foundation::installTranslations(console, QLocale::system());
    QTextStream out(stdout);
    if (help) {
        out << QCoreApplication::translate("main", "Usage: %1 [options]").arg("versewick") << "\n\n"
            << QCoreApplication::translate(
                   "main", "Shows the lyrics of the song playing in any MPRIS player (mpv, VLC,\n"
                           "Rhythmbox, Spotify...), in time with the music.")
            << "\n\n"
            << QCoreApplication::translate("main", "Options:") << "\n"
            << "  -h, --help     "
            << QCoreApplication::translate("main", "Show this help and exit.") << "\n"
            << "  -v, --version  "
            << QCoreApplication::translate("main", "Show the version and exit.") << "\n"
            << "  --self-test    "
            << QCoreApplication::translate(
                   "main", "Check that the lyric plug-in and the translations are found.")
            << "\n\n"
            << QCoreApplication::translate(
                   "main", "A second start shows the running instance's lyric panel and exits.")
            << "\n";
    } else {
        out << "versewick " << VERSEWICK_VERSION << "\n";
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (const std::optional<int> answered = answerCommandLine(argc, argv))
        return *answered;
    PlatformChoice::apply();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("versewick"));
    QApplication::setApplicationDisplayName(QStringLiteral("Versewick"));
    QApplication::setApplicationVersion(QStringLiteral(VERSEWICK_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("com.morvane.Versewick"));
    QApplication::setWindowIcon(AppIcon::icon());
    // Hidden panels and a closed about box are no reason to leave: only Quit ends the program.
    QApplication::setQuitOnLastWindowClosed(false);
    foundation::installTranslations(application, QLocale::system());

    if (SingleInstance::showRunningInstance())
        return 0;

    DesktopApplication app;
    app.publish(); // without a bus, all but the service works
    QuitOnSignal quitOnSignal;
    app.launch();
    return QApplication::exec();
}
