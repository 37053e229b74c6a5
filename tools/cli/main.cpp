// versewick-cli: the command-line companion. Every command prints JSON or exact text on
// standard output and one sentence on standard error when it fails.

#include "CliSupport.h"
#include "LrcCommand.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

const cli::Help kTopHelp{
    QStringLiteral("COMMAND ..."),
    QStringLiteral("The command-line companion of the Versewick lyrics companion.\n\n"
                   "Commands:\n"
                   "  lrc       read LRC files through the lyric model (dump, at, readable, "
                   "offset)\n\n"
                   "Run 'versewick-cli COMMAND --help' for a command's usage.\n"
                   "Exit status: 0 success, 1 input that cannot be read, 2 wrong usage.")};

int run(const QStringList& args) {
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
    if (command == QLatin1String("lrc"))
        return cli::runLrcCommand(args.mid(1));
    cli::usageError(
        QStringLiteral("Unknown command \"%1\"; try 'versewick-cli --help'.").arg(command));
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("versewick-cli"));
    try {
        const int status = run(QCoreApplication::arguments().mid(1));
        std::fflush(stdout);
        return status;
    } catch (const cli::Failure& failure) {
        std::fflush(stdout);
        std::fprintf(stderr, "versewick-cli: %s\n", failure.what());
        return failure.code;
    }
}
