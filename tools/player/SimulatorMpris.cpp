// The simulator's MPRIS2 player: its object, its commands and the signals it sends.
#include "Simulator.h"

#include <algorithm>

void Simulator::launchMpris(Player& player)
{
    auto service = std::make_unique<MprisService>(
        m_playback, m_mprisFaults, m_options.mprisIdentity, *player.bus, [this](const QString& c) {
            QMetaObject::invokeMethod(
                this, [this, c] { execute(c); }, Qt::QueuedConnection);
        });
    player.bus->registerVirtualObject(QLatin1String(MprisService::kPath), service.get());
    m_mpris = service.get();
    player.objects.push_back(std::move(service));
}

bool Simulator::mprisCommand(const QString& command, const QString& rest)
{
    if (command == QLatin1String("rate")) {
        m_playback.setRate(rest.toDouble());
        mprisChanged({QStringLiteral("Rate")});
        return true;
    }
    if (command == QLatin1String("mpris-fault"))
        return m_mprisFaults.set(rest.section(u' ', 0, 0),
                                 rest.section(u' ', 1, 1) != QLatin1String("off"));
    if (command == QLatin1String("mpris-flood") && m_playback.current()) {
        mprisFlood(rest.section(u' ', 0, 0).toInt(), rest.section(u' ', 1, 1).toDouble());
        return true;
    }
    if (command != QLatin1String("mpris-meta") || !m_playback.current())
        return false;
    Song& song = m_playback.playlist[m_playback.index()];
    const QString key = rest.section(u' ', 0, 0);
    const QString value = rest.section(u' ', 1);
    QString* field = key == QLatin1String("title")     ? &song.title
                     : key == QLatin1String("artist")  ? &song.artist
                     : key == QLatin1String("album")   ? &song.album
                     : key == QLatin1String("url")     ? &song.url
                     : key == QLatin1String("trackid") ? &song.trackId
                                                       : nullptr;
    if (!field)
        return false;
    *field = value;
    mprisChanged({QStringLiteral("Metadata")});
    return true;
}

void Simulator::mprisChanged(const QStringList& properties)
{
    if (m_mpris)
        m_mpris->propertiesChanged(properties);
}

void Simulator::mprisSeeked()
{
    if (m_mpris)
        m_mpris->seeked();
}

// A hostile player: `rate` song changes a second (titles "Flood 1", "Flood 2", ...) for
// `seconds`, sent in bursts every 10 ms; "flood-done" names the last title sent.
void Simulator::mprisFlood(int rate, double seconds)
{
    const int perBurst = std::max(1, rate / 100);
    const int bursts = std::max(1, int(seconds * 100));
    auto* timer = new QTimer(this);
    auto sent = std::make_shared<int>(0);
    auto burst = std::make_shared<int>(0);
    connect(timer, &QTimer::timeout, this, [this, timer, sent, burst, perBurst, bursts] {
        Song& song = m_playback.playlist[m_playback.index()];
        for (int i = 0; i < perBurst; ++i) {
            song.title = QStringLiteral("Flood %1").arg(++*sent);
            mprisChanged({QStringLiteral("Metadata")});
        }
        if (++*burst < bursts)
            return;
        timer->deleteLater();
        emitEvent(QStringLiteral("flood-done"), {{"title", song.title}});
    });
    timer->start(10);
}
