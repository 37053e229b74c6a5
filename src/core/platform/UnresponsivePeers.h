#pragma once

#include <QDBusMessage>
#include <QHash>
#include <QObject>
#include <QString>

#include <mutex>

// Players that let a blocking call run past its limit. Until such a player answers again, calls
// to it are not sent: they fail at once, so a hung player costs one limit, not one per read.
// The call that timed out is sent again in the background (never waited for); any answer to it,
// even an error, or the player's name changing owner, clears the mark. Probes are delivered by
// the event loop of the thread that made the call (the sources' main thread).
class UnresponsivePeers : public QObject {
    Q_OBJECT
public:
    static UnresponsivePeers& shared();

    bool isUnresponsive(const QString& busName) const;
    // Records how a blocking call ended; a time-out marks its destination and starts probing.
    void noteReply(const QDBusMessage& call, const QDBusMessage& reply);
    static bool isTimeout(const QDBusMessage& reply);

private:
    UnresponsivePeers();
    void probe(const QDBusMessage& call, quint64 generation);
    void clear(const QString& busName);

    mutable std::mutex m_mutex;
    QHash<QString, quint64> m_unresponsive; // bus name -> the mark's generation
    quint64 m_generation = 0;
};
