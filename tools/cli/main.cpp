// versewick-cli: the command-line companion. Every command prints JSON or exact text on
// standard output and one sentence on standard error when it fails.

#include "AudioCommand.h"
#include "CliSupport.h"
#include "FollowCommand.h"
#include "LrcCommand.h"
#include "OnlineCommands.h"
#include "PublishCommand.h"
#include "SourcesCommand.h"
#include "StoreCommand.h"

#include <QGuiApplication>

#include <cstdio>

namespace {

const cli::Help kTopHelp{
    QStringLiteral("COMMAND ..."),
    QStringLiteral("The command-line companion of the Versewick lyrics companion.\n\n"
                   "Commands:\n"
                   "  lrc       read LRC files through the lyric model (dump, at, readable, "
                   "offset)\n"
                   "  store     the lyrics folder (path, list, read, write)\n"
                   "  audio     the lyrics in music files (read, write, import, export)\n"
                   "  tag       the lyric block of a track's lyrics tag (embed, extract)\n"
                   "  settings  the application's settings (show)\n"
                   "  server    the online lyric server (search-url, download-url, code, parse,\n"
                   "            search, download)\n"
                   "  zh        Chinese script conversion (simplified, traditional, mars)\n"
                   "  translate the translation service (url, parse)\n"
                   "  sources   the music players (watch, status)\n"
                   "  follow    the application without a display: print the lit lines\n"
                   "  now       the running application's state as JSON\n"
                   "  publish   a synced lyric to LRCLIB\n\n"
                   "Run 'versewick-cli COMMAND --help' for a command's usage.\n"
                   "Exit status: 0 success, 1 input that cannot be read, 2 wrong usage.")};

int run(const QStringList& args)
{
    if (args.isEmpty()) {
        cli::printHelp(kTopHelp);
        return cli::UsageError;
    }
    const QString& command = args[0];
    if (command == QLatin1String("--help") || command == QLatin1String("-h") ||
        command == QLatin1String("help")) {
        cli::printHelp(kTopHelp);
        return cli::Ok;
    }
    static const struct {
        const char* name;
        int (*run)(const QStringList&);
    } commands[] = {{"lrc", cli::runLrcCommand},
                    {"store", cli::runStoreCommand},
                    {"tag", cli::runTagCommand},
                    {"audio", cli::runAudioCommand},
                    {"settings", cli::runSettingsCommand},
                    {"server", cli::runServerCommand},
                    {"zh", cli::runZhCommand},
                    {"translate", cli::runTranslateCommand},
                    {"sources", cli::runSourcesCommand},
                    {"follow", cli::runFollowCommand},
                    {"now", cli::runNowCommand},
                    {"publish", cli::runPublishCommand}};
    for (const auto& c : commands) {
        if (command == QLatin1String(c.name))
            return c.run(args.mid(1));
    }
    cli::usageError(
        QStringLiteral("Unknown command \"%1\"; try 'versewick-cli --help'.").arg(command));
}

// Standard error carries one sentence when a command fails; Qt's warnings and the system
// log's diagnostics are shown only when VERSEWICK_LOG is set.
void quietMessages(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("VERSEWICK_LOG"))
        qInstallMessageHandler(quietMessages);
    // Fonts need the GUI module; the companion never shows a window.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("versewick-cli"));
    QGuiApplication::setApplicationVersion(QStringLiteral(VERSEWICK_VERSION));
    try {
        const int status = run(QGuiApplication::arguments().mid(1));
        std::fflush(stdout);
        return status;
    } catch (const cli::Failure& failure) {
        std::fflush(stdout);
        std::fprintf(stderr, "versewick-cli: %s\n", failure.what());
        return failure.code;
    }
}
