#pragma once

#include "core/sources/MprisPosition.h"
#include "core/sources/MprisSong.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

class QDBusPendingCallWatcher;

// One MPRIS player on the session bus, as last heard: its Identity, PlaybackStatus, song,
// rate and an interpolated position. Nothing here waits on the player: every call is
// asynchronous with a time-out, and what does not arrive, or arrives in the wrong shape,
// reads as absent. Property changes and Seeked signals are followed; the Player's properties
// (the position among them) are re-read every two seconds and on every status or song change.
class MprisPlayerTracker : public QObject {
    Q_OBJECT
public:
    enum Status { Stopped, Paused, Playing };
    static constexpr int kCallTimeoutMs = 1500;
    static constexpr int kRereadIntervalMs = 2000;

    explicit MprisPlayerTracker(const QString& busName, QObject* parent = nullptr);

    const QString& busName() const { return m_busName; }
    // The bus name without "org.mpris.MediaPlayer2." ("vlc.instance123").
    QString suffix() const;
    // Null until the player names itself.
    const QString& identity() const { return m_identity; }
    // Both first reads have answered, failed or timed out.
    bool isReady() const { return m_pendingFirstReads == 0; }
    Status status() const { return m_status; }
    const MprisSong& song() const { return m_song; }
    const MprisPosition& positionModel() const { return m_position; }
    // Seconds, interpolated to the clock reading now.
    double position(double now) const { return m_position.at(now); }
    // Sequence numbers of the moments it was last seen starting to play and seen paused;
    // they order players by recency (larger is more recent).
    quint64 playingSince() const { return m_playingSince; }
    quint64 pausedSince() const { return m_pausedSince; }
    quint64 seenSince() const { return m_seenSince; }

Q_SIGNALS:
    // Ready, identity, status or song changed.
    void changed();

private Q_SLOTS:
    void onPropertiesChanged(const QString& interface, const QVariantMap& changed,
                             const QStringList& invalidated);
    void onSeeked(qlonglong position);

private:
    void getAll(const char* interface);
    void onGetAll(QDBusPendingCallWatcher* watcher, bool root);
    void applyRoot(const QVariantMap& properties);
    void applyPlayer(const QVariantMap& properties);
    void readPosition();
    void onPosition(QDBusPendingCallWatcher* watcher, quint64 epoch);

    QString m_busName;
    QDBusConnection m_bus;
    QString m_identity;
    Status m_status = Stopped;
    MprisSong m_song;
    MprisPosition m_position;
    quint64 m_playingSince = 0;
    quint64 m_pausedSince = 0;
    quint64 m_seenSince = 0;
    int m_pendingFirstReads = 2;
    // Position reads: one at a time; a read sent before the last seek, song or status change
    // is stale and dropped, and another one is asked for.
    quint64 m_epoch = 0;
    bool m_positionInFlight = false;
    bool m_positionWanted = false;
    QTimer m_reread;
};
