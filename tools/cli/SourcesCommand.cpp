#include "SourcesCommand.h"

#include "CliSupport.h"

#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"
#include "core/sources/JukoraControl.h"
#include "core/sources/MusicSourceKind.h"
#include "core/sources/MusicSourceQQMusic.h"
#include "core/sources/iTunesControl.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

namespace cli {
namespace {

// The three sources, each with its callbacks, printing one JSON line per callback.
class Watcher : public QObject, public iTunesControlDelegate {
    Q_OBJECT
public:
    Watcher()
        : m_qq(Workspace::sharedWorkspace(), DistributedNotificationCenter::defaultCenter())
        , m_jukora(Workspace::sharedWorkspace(), DistributedNotificationCenter::defaultCenter())
        , m_itunes(Workspace::sharedWorkspace(), DistributedNotificationCenter::defaultCenter())
    {
    }

    void start(bool print)
    {
        m_print = print;
        m_itunes.setDelegate(this);
        m_itunes.updateAppLifeState();
        m_qq.setCallBack(this, "qqSongChanged", "qqAppStateChanged");
        m_jukora.setCallBack(this, "djSongChanged", "djAppStateChanged");
    }

    JsonObject snapshotITunes(const char* event)
    {
        const auto track = m_itunes.currentTrack();
        const bool running = m_itunes.app().isRunning();
        return base("itunes", MusicSourceKindITunes, event, running)
            .add("artist", track && track->exists() ? QJsonValue(track->artist()) : QJsonValue())
            .add("title", track && track->exists() ? QJsonValue(track->name()) : QJsonValue())
            .add("position", double(m_itunes.playerPosition()));
    }
    JsonObject snapshotQQ(const char* event)
    {
        const bool running = m_qq.isRunning();
        TrackItem* track = m_qq.track();
        return base("qqmusic", MusicSourceKindQQMusic, event, running)
            .add("artist", track ? QJsonValue(track->artist()) : QJsonValue())
            .add("title", track ? QJsonValue(track->title()) : QJsonValue())
            .add("position", double(m_qq.location()));
    }
    JsonObject snapshotJukora(const char* event)
    {
        const auto item = m_jukora.item();
        return base("jukora", MusicSourceKindJukora, event, m_jukora.isRunning())
            .add("artist", item ? QJsonValue(item->artist()) : QJsonValue())
            .add("title", item ? QJsonValue(item->title()) : QJsonValue())
            .add("position", double(m_jukora.location()));
    }

    void iTunesCB_AppLifeCycleChanged(bool alive) override
    {
        if (m_print)
            report(snapshotITunes("appStateChanged").add("alive", alive));
    }
    void iTunesCB_TrackDidChange(const std::optional<itunes::Track>& track) override
    {
        if (!m_print)
            return;
        JsonObject json = snapshotITunes("songChanged");
        json.add("track", track && track->exists() ? QJsonValue(track->path()) : QJsonValue());
        report(json);
    }

public Q_SLOTS:
    void qqSongChanged() { report(snapshotQQ("songChanged")); }
    void qqAppStateChanged() { report(snapshotQQ("appStateChanged")); }
    void djSongChanged() { report(snapshotJukora("songChanged")); }
    void djAppStateChanged() { report(snapshotJukora("appStateChanged")); }

private:
    static JsonObject base(const char* source, int kind, const char* event, bool running)
    {
        return JsonObject()
            .add("source", QLatin1String(source))
            .add("kind", kind)
            .add("event", QLatin1String(event))
            .add("running", running);
    }
    // Each line goes out at once: a reader at the other end of a pipe sees it live.
    void report(const JsonObject& json)
    {
        if (!m_print)
            return;
        writeJsonLine(json.bytes());
        std::fflush(stdout);
    }

    bool m_print = false;
    MusicSourceQQMusic m_qq;
    JukoraControl m_jukora;
    iTunesControl m_itunes;
};

int signalPipe[2] = {-1, -1};
void onSignal(int)
{
    const char c = 1;
    [[maybe_unused]] const auto n = ::write(signalPipe[1], &c, 1);
}

int watch(QStringList args)
{
    double seconds = -1;
    if (args.size() == 2 && args[0] == QLatin1String("--for"))
        seconds = parseNumber(args[1], QStringLiteral("--for"));
    else if (!args.isEmpty())
        usageError(QStringLiteral("sources watch takes only --for SECONDS."));
    // Interrupts end the watch through the event loop, so output is flushed and sources close.
    // They are caught before the sources start: an interrupt while a player is read waits for
    // that read (one call limit at most) and then ends the watch.
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) == 0) {
        std::signal(SIGINT, onSignal);
        std::signal(SIGTERM, onSignal);
    }
    QSocketNotifier notifier(signalPipe[0], QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
    Watcher watcher;
    watcher.start(true);
    if (seconds >= 0)
        QTimer::singleShot(int(seconds * 1000), qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
    std::fflush(stdout);
    return Ok;
}

int status(QStringList args)
{
    if (!args.isEmpty())
        usageError(QStringLiteral("sources status takes no arguments."));
    Watcher watcher;
    watcher.start(false);
    writeJsonLine(toJson({watcher.snapshotQQ("status"), watcher.snapshotJukora("status"),
                          watcher.snapshotITunes("status")}));
    return Ok;
}

const Help kSourcesHelp{
    QStringLiteral("sources watch [--for SECONDS] | sources status"),
    QStringLiteral(
        "The player sources as the application creates them (QQMusic, Jukora, iTunes), on the\n"
        "session bus.\n\n"
        "  watch    one JSON object per callback until interrupted (or for SECONDS):\n"
        "           {\"source\", \"kind\", \"event\", \"running\", \"artist\", \"title\", "
        "\"position\"}\n"
        "           event is appStateChanged or songChanged; registering reports each source's\n"
        "           state once. Positions include each source's lead.\n"
        "  status   one JSON array with a snapshot of the three sources\n"
        "QQMusic's service is looked for on port 18715, or on VERSEWICK_QQMUSIC_PORT.")};

} // namespace

int runSourcesCommand(const QStringList& args)
{
    static const SubCommand subs[] = {{"watch", kSourcesHelp, watch},
                                      {"status", kSourcesHelp, status}};
    return dispatch(QStringLiteral("sources"), kSourcesHelp, subs, args);
}

} // namespace cli

#include "SourcesCommand.moc"
