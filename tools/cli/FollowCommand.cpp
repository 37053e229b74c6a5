#include "FollowCommand.h"

#include "CliSupport.h"
#include "StatusLine.h"
#include "TerminalPrinter.h"

#include "core/app/AppDBusService.h"
#include "core/app/AppDelegate.h"
#include "core/app/HeadlessApplication.h"
#include "core/app/PlayerSource.h"
#include "core/settings/Settings.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QSocketNotifier>
#include <QTimer>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace cli {
namespace {

int gSignalPipe[2] = {-1, -1};
void onSignal(int)
{
    const char c = 1;
    [[maybe_unused]] const auto n = ::write(gSignalPipe[1], &c, 1);
}

const Help kFollowHelp{
    QStringLiteral("follow [--json | --format TEMPLATE] [--for SECONDS]"),
    QStringLiteral(
        "Runs the application without a display: it follows the player that is running\n"
        "(QQMusic, Jukora, iTunes, then any MPRIS player), finds the lyric of the song\n"
        "(track tag or audio file, lyrics folder, plug-in) and prints each lit line as it changes, "
        "until interrupted (or for\n"
        "SECONDS). With --json, one object per line:\n"
        "  {\"event\":\"line\",\"index\",\"text\",\"position\"}\n"
        "  {\"event\":\"status\",\"text\"}            text null when the status is cleared\n"
        "  {\"event\":\"song\",\"source\",\"artist\",\"title\"}\n"
        "Plain output prints the lines, \"(status)\" and \"== artist - title ==\".\n"
        "With --format, one line for a status bar each time it changes, an empty line while\n"
        "nothing plays. TEMPLATE holds text and the fields {line}, {next}, {artist}, {title},\n"
        "{album}, {offset} (milliseconds) and {origin} (folder, tag, online, chosen, beside);\n"
        "{{ and }} are braces. An unknown field is a usage error (exit 2).\n"
        "When the name com.morvane.Versewick is free it is owned meanwhile, so 'versewick-cli\n"
        "now' and status-bar modules can read the state; window actions do nothing here.")};

const Help kNowHelp{
    QStringLiteral("now"),
    QStringLiteral("Prints the running application's state (the properties of\n"
                   "com.morvane.Versewick.Lyrics) as one JSON object. Exit status 1 when no\n"
                   "application runs.")};

int follow(const QStringList& args)
{
    if (wantsHelp(args)) {
        printHelp(kFollowHelp);
        return Ok;
    }
    bool json = false;
    double seconds = -1;
    std::optional<StatusTemplate> format;
    for (qsizetype i = 0; i < args.size(); ++i) {
        if (args[i] == QLatin1String("--json")) {
            json = true;
        } else if (args[i] == QLatin1String("--for") && i + 1 < args.size()) {
            seconds = parseNumber(args[++i], QStringLiteral("--for"));
        } else if (args[i] == QLatin1String("--format") && i + 1 < args.size()) {
            QString error;
            format = StatusTemplate::parse(args[++i], &error);
            if (!format)
                usageError(error);
        } else {
            usageError(QStringLiteral(
                "follow takes only --json or --format TEMPLATE, and --for SECONDS."));
        }
    }
    if (json && format)
        usageError(QStringLiteral("follow takes --json or --format, not both."));

    TerminalPrinter printer(json);
    // The user's settings are read, never written: the desktop application owns them.
    HeadlessApplication root;
    AppDelegate& app = root.build({});
    std::unique_ptr<StatusLinePrinter> statusLine;
    if (format) {
        statusLine = std::make_unique<StatusLinePrinter>(*format, app, [&app]() -> QString {
            PlayerSource* player = app.activePlayer();
            return player ? player->searchDetails().album : QString();
        });
    } else {
        printer.watch(app.state());
    }
    root.publish(); // without a bus the terminal still follows

    // Interrupts end the loop, so the last lines are flushed and the bus name is released.
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, gSignalPipe) == 0) {
        std::signal(SIGINT, onSignal);
        std::signal(SIGTERM, onSignal);
    }
    QSocketNotifier notifier(gSignalPipe[0], QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
    if (seconds >= 0)
        QTimer::singleShot(int(seconds * 1000), qApp, &QCoreApplication::quit);

    root.launch();
    QCoreApplication::exec();
    std::fflush(stdout);
    return Ok;
}

int now(const QStringList& args)
{
    if (wantsHelp(args)) {
        printHelp(kNowHelp);
        return Ok;
    }
    if (!args.isEmpty())
        usageError(QStringLiteral("now takes no arguments."));
    QDBusConnection bus = QDBusConnection::sessionBus();
    const QString service = QLatin1String(AppDBusService::kServiceName);
    if (!bus.isConnected() || !bus.interface() ||
        !bus.interface()->isServiceRegistered(service).value())
        inputError(QStringLiteral("No Versewick application is running on the session bus."));
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, QLatin1String(AppDBusService::kObjectPath),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
    call << QLatin1String(AppDBusService::kInterface);
    const QDBusMessage reply = bus.call(call, QDBus::Block, 5000);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        inputError(QStringLiteral("The running Versewick application did not answer."));
    const QVariantMap values = qdbus_cast<QVariantMap>(reply.arguments().first());
    static const char* const keys[] = {
        "SourceKind",         "SourceName",  "Artist",    "Title", "PanelTitle", "Status",
        "LyricLoaded",        "LyricOrigin", "LineIndex", "Line",  "Position",   "Mode",
        "LyricWindowVisible", "PluginInfo"};
    JsonObject json;
    for (const char* key : keys)
        json.add(QLatin1String(key), QJsonValue::fromVariant(values.value(QLatin1String(key))));
    writeJsonLine(json.bytes());
    return Ok;
}

} // namespace

int runFollowCommand(const QStringList& args)
{
    return follow(args);
}

int runNowCommand(const QStringList& args)
{
    return now(args);
}

} // namespace cli
