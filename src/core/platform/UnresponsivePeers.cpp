#include "core/platform/UnresponsivePeers.h"

#include "core/platform/ScriptingObject.h"
#include "core/platform/Workspace.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusPendingCallWatcher>

UnresponsivePeers& UnresponsivePeers::shared()
{
    static UnresponsivePeers* peers = new UnresponsivePeers; // process-long
    return *peers;
}

UnresponsivePeers::UnresponsivePeers()
{
    // A name that changes owner belongs to another process now (or to none).
    connect(&Workspace::sharedWorkspace(), &Workspace::didLaunchApplication, this,
            &UnresponsivePeers::clear);
    connect(&Workspace::sharedWorkspace(), &Workspace::didTerminateApplication, this,
            &UnresponsivePeers::clear);
}

bool UnresponsivePeers::isUnresponsive(const QString& busName) const
{
    std::lock_guard lock(m_mutex);
    return m_unresponsive.contains(busName);
}

bool UnresponsivePeers::isTimeout(const QDBusMessage& reply)
{
    if (reply.type() != QDBusMessage::ErrorMessage)
        return false;
    const QDBusError::ErrorType error = QDBusError(reply).type();
    return error == QDBusError::NoReply || error == QDBusError::Timeout;
}

void UnresponsivePeers::noteReply(const QDBusMessage& call, const QDBusMessage& reply)
{
    if (!isTimeout(reply))
        return;
    quint64 generation = 0;
    {
        std::lock_guard lock(m_mutex);
        if (m_unresponsive.contains(call.service()))
            return; // already probing
        generation = ++m_generation;
        m_unresponsive.insert(call.service(), generation);
    }
    probe(call, generation);
}

void UnresponsivePeers::probe(const QDBusMessage& call, quint64 generation)
{
    auto* watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(call, ScriptingObject::kCallTimeoutMs));
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, call, generation](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                {
                    std::lock_guard lock(m_mutex);
                    if (m_unresponsive.value(call.service()) != generation)
                        return; // cleared (or marked again) meanwhile: another probe runs
                    if (!isTimeout(finished->reply())) {
                        m_unresponsive.remove(call.service());
                        return;
                    }
                }
                probe(call, generation);
            });
}

void UnresponsivePeers::clear(const QString& busName)
{
    std::lock_guard lock(m_mutex);
    m_unresponsive.remove(busName);
}
