#include "core/sources/MprisPlayerTracker.h"

#include "core/platform/Clock.h"
#include "core/sources/MprisValues.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {
quint64 gSequence = 0;

quint64 nextSequence()
{
    return ++gSequence;
}

MprisPlayerTracker::Status statusFrom(const QVariant& value)
{
    const QString s = mpris::string(value);
    if (s == QLatin1String("Playing"))
        return MprisPlayerTracker::Playing;
    if (s == QLatin1String("Paused"))
        return MprisPlayerTracker::Paused;
    return MprisPlayerTracker::Stopped;
}

const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
} // namespace

MprisPlayerTracker::MprisPlayerTracker(const QString& busName, QObject* parent)
    : QObject(parent)
    , m_busName(busName)
    , m_bus(QDBusConnection::sessionBus())
    , m_seenSince(nextSequence())
{
    const QString path = QLatin1String(mpris::kObjectPath);
    // QtDBus connects signals by signature string; a signal of another signature (a player
    // sending the wrong types) never reaches the slot.
    m_bus.connect(m_busName, path, kProperties, QStringLiteral("PropertiesChanged"), this,
                  SLOT(onPropertiesChanged(QString, QVariantMap, QStringList)));
    m_bus.connect(m_busName, path, QLatin1String(mpris::kPlayerInterface), QStringLiteral("Seeked"),
                  this, SLOT(onSeeked(qlonglong)));
    getAll(mpris::kRootInterface);
    getAll(mpris::kPlayerInterface);
    m_reread.setInterval(kRereadIntervalMs);
    connect(&m_reread, &QTimer::timeout, this, &MprisPlayerTracker::readPosition);
    m_reread.start();
}

QString MprisPlayerTracker::suffix() const
{
    return m_busName.mid(qsizetype(sizeof mpris::kBusPrefix - 1));
}

void MprisPlayerTracker::getAll(const char* interface)
{
    QDBusMessage call = QDBusMessage::createMethodCall(m_busName, QLatin1String(mpris::kObjectPath),
                                                       kProperties, QStringLiteral("GetAll"));
    call << QString::fromLatin1(interface);
    const bool root = qstrcmp(interface, mpris::kRootInterface) == 0;
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, kCallTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, root](QDBusPendingCallWatcher* w) { onGetAll(w, root); });
}

void MprisPlayerTracker::onGetAll(QDBusPendingCallWatcher* watcher, bool root)
{
    watcher->deleteLater();
    const QDBusMessage reply = watcher->reply();
    QVariantMap properties;
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
        properties = mpris::dictionary(reply.arguments().constFirst());
    const bool first = m_pendingFirstReads > 0;
    if (first)
        --m_pendingFirstReads;
    if (root)
        applyRoot(properties);
    else
        applyPlayer(properties);
    if (first && isReady())
        Q_EMIT changed();
}

void MprisPlayerTracker::applyRoot(const QVariantMap& properties)
{
    const auto it = properties.find(QStringLiteral("Identity"));
    if (it == properties.end())
        return;
    const QString identity = mpris::string(*it);
    if (identity == m_identity)
        return;
    m_identity = identity;
    if (isReady())
        Q_EMIT changed();
}

void MprisPlayerTracker::applyPlayer(const QVariantMap& p)
{
    const double now = platform::now();
    bool notify = false;
    bool reread = false;
    if (p.contains(QStringLiteral("Rate")))
        m_position.setRate(mpris::rate(p.value(QStringLiteral("Rate"))), now);
    if (p.contains(QStringLiteral("Metadata"))) {
        const MprisSong song = MprisSong::fromMetadata(p.value(QStringLiteral("Metadata")));
        if (song.isOtherSongThan(m_song)) {
            m_position.restart(now);
            notify = reread = true;
        } else if (song.album != m_song.album ||
                   song.lengthMicroseconds != m_song.lengthMicroseconds) {
            notify = true; // the same song, better described
        }
        m_song = song;
    }
    if (p.contains(QStringLiteral("PlaybackStatus"))) {
        const Status status = statusFrom(p.value(QStringLiteral("PlaybackStatus")));
        if (status != m_status) {
            m_status = status;
            if (status == Playing)
                m_playingSince = nextSequence();
            else if (status == Paused)
                m_pausedSince = nextSequence();
            m_position.setPlaying(status == Playing, now);
            if (status == Stopped)
                m_position.restart(now);
            notify = reread = true;
        }
    }
    if (const auto position = mpris::microseconds(p.value(QStringLiteral("Position")));
        position && !reread)
        m_position.read(*position, now);
    if (reread) {
        ++m_epoch;
        readPosition();
    }
    if (notify && isReady())
        Q_EMIT changed();
}

void MprisPlayerTracker::onPropertiesChanged(const QString& interface, const QVariantMap& changed,
                                             const QStringList& invalidated)
{
    if (interface == QLatin1String(mpris::kRootInterface)) {
        applyRoot(changed);
        if (!invalidated.isEmpty())
            getAll(mpris::kRootInterface);
    } else if (interface == QLatin1String(mpris::kPlayerInterface)) {
        applyPlayer(changed);
        if (!invalidated.isEmpty())
            getAll(mpris::kPlayerInterface);
    }
}

void MprisPlayerTracker::onSeeked(qlonglong position)
{
    if (const auto us = mpris::microseconds(QVariant::fromValue(position))) {
        ++m_epoch;
        m_position.seeked(*us, platform::now());
    }
}

void MprisPlayerTracker::readPosition()
{
    if (m_positionInFlight) {
        m_positionWanted = true;
        return;
    }
    m_positionInFlight = true;
    m_positionWanted = false;
    // All of the Player's properties, not only Position: a player that fails to signal a
    // change of status or song is caught up with as well.
    QDBusMessage call = QDBusMessage::createMethodCall(m_busName, QLatin1String(mpris::kObjectPath),
                                                       kProperties, QStringLiteral("GetAll"));
    call << QLatin1String(mpris::kPlayerInterface);
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, kCallTimeoutMs), this);
    const quint64 epoch = m_epoch;
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, epoch](QDBusPendingCallWatcher* w) { onPosition(w, epoch); });
}

void MprisPlayerTracker::onPosition(QDBusPendingCallWatcher* watcher, quint64 epoch)
{
    watcher->deleteLater();
    m_positionInFlight = false;
    const QDBusMessage reply = watcher->reply();
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
        QVariantMap properties = mpris::dictionary(reply.arguments().constFirst());
        const QVariant position = properties.take(QStringLiteral("Position"));
        applyPlayer(properties); // a change found here makes this read stale
        const auto us = mpris::microseconds(position);
        if (us && epoch == m_epoch)
            m_position.read(*us, platform::now());
    }
    if (m_positionWanted || epoch != m_epoch)
        readPosition();
}
