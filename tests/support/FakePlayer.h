#pragma once

#include <QDBusMessage>
#include <QHash>
#include <QString>
#include <QThread>
#include <QVariant>

#include <atomic>
#include <memory>
#include <mutex>

class QDBusConnection;

// A player's bus name and scripting objects served from a thread of its own, on a connection
// of its own, for answers the simulator never gives: properties of the wrong type, a name whose
// objects do not answer yet, or no answer at all. Blocking reads from the test's main thread
// reach it while that thread waits.
class FakePlayer {
public:
    explicit FakePlayer(const QString& busName);
    ~FakePlayer();

    // Get(any interface, property) on path answers exactly these reply arguments.
    void setReply(const QString& path, const QString& property, const QVariantList& arguments);
    // A proper answer: the value in a variant.
    void setProperty(const QString& path, const QString& property, const QVariant& value);
    // Calls are taken and never answered.
    void setHung(bool hung) { m_hung = hung; }
    int callsReceived() const { return m_calls; }

    // Called on the server thread.
    bool handle(const QDBusMessage& message, const QDBusConnection& connection);

private:
    QString m_busName;
    QString m_connectionName;
    QThread m_thread;
    std::unique_ptr<QObject> m_server;
    std::mutex m_mutex;
    QHash<QString, QVariantList> m_replies; // "path property" -> reply arguments
    std::atomic<bool> m_hung = false;
    std::atomic<int> m_calls = 0;
};
