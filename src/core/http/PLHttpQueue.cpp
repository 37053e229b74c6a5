#include "core/http/PLHttpQueue.h"

#include "core/foundation/Assertion.h"

#include <QMetaProperty>

namespace {
bool flag(const QObject* task, const char* name)
{
    return task && task->property(name).toBool();
}
} // namespace

PLHttpQueue::PLHttpQueue(QObject* parent)
    : QObject(parent)
{
}

bool PLHttpQueue::addQueueItem(QObject* task)
{
    m_queues.append(task);
    runNextAction();
    return true;
}

void PLHttpQueue::pause()
{
    m_isActived = false;
}

void PLHttpQueue::start()
{
    m_isActived = true;
}

void PLHttpQueue::runNextAction()
{
    if (!m_isActived)
        return;
    const int free = m_parellelCapacity - m_currentActiveTaskCount;
    if (free <= 0)
        return;
    int started = 0;
    while (!m_queues.isEmpty()) {
        QObject* task = m_queues.takeFirst();
        if (!task || flag(task, "isCancelled") || flag(task, "isFinished") ||
            flag(task, "isStarted"))
            continue; // dropped: never run, never reported
        m_runningQueues.append(task);
        observe(task);
        QMetaObject::invokeMethod(task, "start", Qt::DirectConnection);
        ++m_currentActiveTaskCount;
        if (++started >= free)
            break;
    }
}

void PLHttpQueue::observe(QObject* task)
{
    const QMetaObject* meta = task->metaObject();
    const QMetaMethod onChange =
        metaObject()->method(metaObject()->indexOfMethod("onTaskChanged()"));
    for (const char* name : {"isFinished", "isCancelled"}) {
        const QMetaProperty property = meta->property(meta->indexOfProperty(name));
        if (property.hasNotifySignal())
            connect(task, property.notifySignal(), this, onChange);
    }
}

void PLHttpQueue::stopObserving(QObject* task)
{
    disconnect(task, nullptr, this, nullptr);
}

void PLHttpQueue::actionFinished(QObject* task)
{
    const qsizetype at = m_runningQueues.indexOf(task);
    if (at >= 0) {
        stopObserving(task);
        m_runningQueues.removeAt(at);
    }
    --m_currentActiveTaskCount;
    runNextAction();
    if (m_isShowActiveIndicaterWhileRunning && m_currentActiveTaskCount < 0) {
        foundation::assertionFailure(QStringLiteral("task count should GE 0"));
        m_currentActiveTaskCount = 0;
    }
}
