#include "Simulator.h"

#include "PlayerObjects.h"

#include "core/platform/DistributedNotificationCenter.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <QJsonArray>
#include <QJsonDocument>

#include <cstdio>

namespace {
const QString kITunesInfo = QStringLiteral("com.apple.iTunes.playerInfo");
const QString kITunesSender = QStringLiteral("com.apple.iTunes.player");
const QString kQQBus = QStringLiteral("com.tencent.QQMusicMac");
const QString kJukoraBus = QStringLiteral("com.morvane.Jukora");

QString busNameOf(const QString& kind)
{
    if (kind == QLatin1String("itunes"))
        return QStringLiteral("com.apple.iTunes");
    if (kind == QLatin1String("qqmusic"))
        return kQQBus;
    return kJukoraBus;
}

void post(const QString& name, const QString& sender, const QVariantMap& info = {})
{
    DistributedNotificationCenter::defaultCenter().post(name, sender, info);
}
} // namespace

Simulator::Simulator(SimulatorOptions options, QList<Song> playlist)
    : m_options(std::move(options))
{
    qDBusRegisterMetaType<QByteArrayList>();
    m_playback.playlist = std::move(playlist);
    for (const QString& kind : m_options.players) {
        const QString bus = kind == QLatin1String("mpris")
                                ? QStringLiteral("org.mpris.MediaPlayer2.") + m_options.mprisName
                                : busNameOf(kind);
        m_players.push_back(Player{kind, bus, nullptr, {}, false});
    }
    m_waitTimer.setSingleShot(true);
    connect(&m_waitTimer, &QTimer::timeout, this, &Simulator::runQueue);
    m_ticker.setInterval(100);
    connect(&m_ticker, &QTimer::timeout, this, &Simulator::tick);
}

Simulator::~Simulator()
{
    for (Player& p : m_players) {
        if (p.running)
            quit(p, QStringLiteral("exit"));
    }
}

QString Simulator::commandHelp()
{
    return QStringLiteral(
        "Commands (one per line, from standard input or --script; # starts a comment):\n"
        "  play | pause | stop | next | previous   control playback (all players share it)\n"
        "  seek SECONDS                            move within the current song\n"
        "  launch [PLAYER] | quit [PLAYER]         start or quit one player (default: all)\n"
        "  add ARTIST | TITLE | ALBUM | SECONDS [| URL]   append a song to the playlist\n"
        "  lyrics TEXT                             set the current song's iTunes lyrics tag "
        "(\\n for line breaks)\n"
        "  qq-all TEXT | qq-all-reset              make QQMusic's /all answer TEXT, or the "
        "real state again\n"
        "  qq-silent on|off                        QQMusic's service accepts and never answers\n"
        "  post NAME SENDER                        post any notification\n"
        "  rate R                                  playback rate (MPRIS Rate)\n"
        "  mpris-meta title|artist|album|url|trackid VALUE   change the current song's MPRIS "
        "metadata\n"
        "  mpris-fault silent|millis|stuck|no-rate|wrong-types|huge on|off   MPRIS faults\n"
        "  status                                  print the state\n"
        "  wait SECONDS                            pause the command list (scripts)\n"
        "  exit                                    quit all players and end\n"
        "PLAYER is itunes, qqmusic, jukora or mpris. Every command is echoed as a JSON event:\n"
        "  {\"event\", \"players\", \"state\", \"index\", \"artist\", \"title\", \"album\", "
        "\"position\", ...}");
}

void Simulator::start()
{
    if (m_options.autoLaunch) {
        for (Player& p : m_players)
            launch(p);
    }
    m_ticker.start();
    emitEvent(QStringLiteral("ready"));
    runQueue();
}

void Simulator::enqueue(const QString& line)
{
    m_queue.append(line);
    if (!m_waitTimer.isActive())
        runQueue();
}

void Simulator::endOfInput()
{
    m_inputEnded = true;
    if (!m_waitTimer.isActive() && m_queue.isEmpty())
        execute(QStringLiteral("exit"));
}

void Simulator::runQueue()
{
    while (!m_queue.isEmpty() && !m_waitTimer.isActive())
        execute(m_queue.takeFirst().trimmed());
    if (m_queue.isEmpty() && m_inputEnded && !m_waitTimer.isActive())
        execute(QStringLiteral("exit"));
}

Simulator::Player* Simulator::find(const QString& kind)
{
    for (Player& p : m_players) {
        if (p.kind == kind)
            return &p;
    }
    return nullptr;
}

void Simulator::execute(const QString& line)
{
    if (m_exited || line.isEmpty() || line.startsWith(u'#'))
        return;
    const QString command = line.section(u' ', 0, 0);
    const QString rest = line.section(u' ', 1).trimmed();
    const auto players = [&]() -> std::vector<Player*> {
        std::vector<Player*> out;
        for (Player& p : m_players) {
            if (rest.isEmpty() || p.kind == rest)
                out.push_back(&p);
        }
        return out;
    };

    if (command == QLatin1String("play")) {
        m_playback.play();
        stateChanged();
    } else if (command == QLatin1String("pause") || command == QLatin1String("playpause")) {
        if (command == QLatin1String("playpause") && m_playback.state() != Playback::Playing)
            m_playback.play();
        else
            m_playback.pause();
        stateChanged();
    } else if (command == QLatin1String("stop")) {
        m_playback.stop();
        stateChanged();
    } else if (command == QLatin1String("next") || command == QLatin1String("previous")) {
        if (command == QLatin1String("next") ? m_playback.next() : m_playback.previous())
            songChanged();
    } else if (command == QLatin1String("seek")) {
        m_playback.seek(rest.toDouble());
        mprisSeeked();
    } else if (command == QLatin1String("launch")) {
        for (Player* p : players())
            launch(*p);
    } else if (command == QLatin1String("quit")) {
        for (Player* p : players())
            quit(*p, QStringLiteral("command"));
    } else if (command == QLatin1String("add")) {
        const QStringList f = rest.split(u'|');
        m_playback.playlist.append(Song{f.value(0).trimmed(),
                                        f.value(1).trimmed(),
                                        f.value(2).trimmed(),
                                        f.value(3).trimmed().toDouble(),
                                        {},
                                        f.value(4).trimmed(),
                                        {}});
    } else if (command == QLatin1String("lyrics")) {
        if (m_playback.current())
            m_playback.playlist[m_playback.index()].lyrics =
                QString(rest).replace(QLatin1String("\\n"), QLatin1String("\n"));
    } else if (command == QLatin1String("qq-all")) {
        if (m_qqService)
            m_qqService->fixedAll = rest;
    } else if (command == QLatin1String("qq-all-reset")) {
        if (m_qqService)
            m_qqService->fixedAll = QString();
    } else if (command == QLatin1String("qq-silent")) {
        if (m_qqService)
            m_qqService->silent = rest == QLatin1String("on");
    } else if (command == QLatin1String("post")) {
        post(rest.section(u' ', 0, 0), rest.section(u' ', 1, 1));
    } else if (command == QLatin1String("wait")) {
        m_waitTimer.start(int(rest.toDouble() * 1000));
    } else if (command == QLatin1String("exit")) {
        for (Player& p : m_players) {
            if (p.running)
                quit(p, QStringLiteral("exit"));
        }
        emitEvent(QStringLiteral("exit"));
        m_exited = true;
        m_queue.clear();
        Q_EMIT finished();
        return;
    } else if (command != QLatin1String("status") && !mprisCommand(command, rest)) {
        emitEvent(QStringLiteral("error"),
                  {{"message", QStringLiteral("unknown command: %1").arg(line)}});
        return;
    }
    emitEvent(command, {{"command", line}});
}

void Simulator::launch(Player& player)
{
    if (player.running)
        return;
    // Each player has a connection of its own: the objects of two players may share a path.
    player.bus = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(
        QDBusConnection::SessionBus, QStringLiteral("player-%1").arg(++m_connectionCount)));
    const auto exportAll = QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSlots;
    if (player.kind == QLatin1String("itunes")) {
        auto app = std::make_unique<ITunesApplicationObject>(
            m_playback, m_options.itunesVersion, [this](const QString& c) {
                QMetaObject::invokeMethod(
                    this, [this, c] { execute(c); }, Qt::QueuedConnection);
            });
        player.bus->registerObject(QStringLiteral("/"), app.get(), exportAll);
        player.objects.push_back(std::move(app));
        for (qsizetype i = 0; i < m_playback.playlist.size(); ++i) {
            auto track = std::make_unique<ITunesTrackObject>(m_playback.playlist[i], i + 1);
            player.bus->registerObject(QStringLiteral("/Tracks/%1").arg(i + 1), track.get(),
                                       exportAll);
            player.objects.push_back(std::move(track));
        }
    } else if (player.kind == QLatin1String("jukora")) {
        auto app = std::make_unique<JukoraApplicationObject>(m_playback);
        player.bus->registerObject(QStringLiteral("/"), app.get(), exportAll);
        player.objects.push_back(std::move(app));
        for (qsizetype i = 0; i < m_playback.playlist.size(); ++i) {
            auto song = std::make_unique<JukoraSongObject>(m_playback.playlist[i]);
            player.bus->registerObject(QStringLiteral("/Songs/%1").arg(i + 1), song.get(),
                                       exportAll);
            player.objects.push_back(std::move(song));
        }
    } else if (player.kind == QLatin1String("mpris")) {
        launchMpris(player);
    } else {
        if (!m_qqService)
            m_qqService = std::make_unique<QQMusicService>(m_playback, m_options.qqmusicPort,
                                                           m_options.qqmusicNamesVersewick);
        if (!m_qqService->start())
            emitEvent(QStringLiteral("error"),
                      {{"message", QStringLiteral("port %1 is taken").arg(m_options.qqmusicPort)}});
    }
    player.bus->registerService(player.busName);
    player.running = true;
    if (player.kind == QLatin1String("qqmusic"))
        post(QStringLiteral("com.tencent.QQMusicMac.ready"), kQQBus);
    emitEvent(QStringLiteral("launched"), {{"player", player.kind}});
}

void Simulator::quit(Player& player, const QString& why)
{
    if (!player.running)
        return;
    if (player.kind == QLatin1String("jukora"))
        post(QStringLiteral("com.morvane.Jukora.willTerminate"), kJukoraBus);
    if (player.kind == QLatin1String("qqmusic") && m_qqService)
        m_qqService->stop();
    player.bus->unregisterService(player.busName);
    player.bus->unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    if (player.kind == QLatin1String("mpris"))
        m_mpris = nullptr;
    QDBusConnection::disconnectFromBus(player.bus->name());
    player.bus.reset();
    player.objects.clear();
    player.running = false;
    emitEvent(QStringLiteral("quit"), {{"player", player.kind}, {"by", why}});
}

void Simulator::stateChanged()
{
    mprisChanged({QStringLiteral("PlaybackStatus"), QStringLiteral("Metadata")});
    const Song* song = m_playback.current();
    if (find(QStringLiteral("itunes")) && find(QStringLiteral("itunes"))->running) {
        QVariantMap info{
            {"Player State", QString::fromLatin1(Playback::stateName(m_playback.state()))}};
        if (song && m_playback.state() != Playback::Stopped)
            info.insert({{"Name", song->title}, {"Artist", song->artist}, {"Album", song->album}});
        post(kITunesInfo, kITunesSender, info);
    }
}

void Simulator::songChanged()
{
    stateChanged();
    if (Player* p = find(QStringLiteral("qqmusic")); p && p->running)
        post(QStringLiteral("com.tencent.QQMusicMac.songchanged"), kQQBus);
    if (Player* p = find(QStringLiteral("jukora")); p && p->running)
        post(QStringLiteral("com.morvane.Jukora.songchanged"), kJukoraBus);
}

void Simulator::tick()
{
    if (m_playback.advanceIfFinished()) {
        songChanged();
        emitEvent(m_playback.state() == Playback::Stopped ? QStringLiteral("ended")
                                                          : QStringLiteral("advanced"));
    }
}

QJsonObject Simulator::state() const
{
    QJsonArray running;
    for (const Player& p : m_players) {
        if (p.running)
            running.append(p.kind);
    }
    const Song* song = m_playback.current();
    return {{"players", running},
            {"state", QString::fromLatin1(Playback::stateName(m_playback.state()))},
            {"index", m_playback.index()},
            {"artist", song ? song->artist : QString()},
            {"title", song ? song->title : QString()},
            {"album", song ? song->album : QString()},
            {"position", m_playback.position()}};
}

void Simulator::emitEvent(const QString& name, QJsonObject extra)
{
    QJsonObject event = state();
    event.insert("event", name);
    for (auto it = extra.begin(); it != extra.end(); ++it)
        event.insert(it.key(), it.value());
    std::fputs(QJsonDocument(event).toJson(QJsonDocument::Compact).append('\n').constData(),
               stdout);
    std::fflush(stdout);
}
