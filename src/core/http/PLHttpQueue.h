#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

#include <typeinfo>

// Runs queued tasks a few at a time, oldest first. A task is any QObject with the boolean
// properties isStarted, isFinished and isCancelled (each with a change signal) and an
// invokable start(). When a running task's isFinished or isCancelled changes, the next ones
// start. Single-threaded: tasks must report on the queue's thread.
class PLHttpQueue : public QObject {
    Q_OBJECT
public:
    explicit PLHttpQueue(QObject* parent = nullptr);

    // One shared queue per class: a subclass gets its own.
    template <typename Queue = PLHttpQueue> static Queue& sharedQueue()
    {
        static Queue* queue = new Queue; // intentionally lives for the whole process
        return *queue;
    }

    bool addQueueItem(QObject* task); // always true
    void pause();
    void start(); // lets tasks start again; starts none by itself

    int capacity() const { return m_capacity; } // stored, deliberately not enforced
    void setCapacity(int capacity) { m_capacity = capacity; }
    int parellelCapacity() const { return m_parellelCapacity; }
    void setParellelCapacity(int capacity) { m_parellelCapacity = capacity; }
    int currentActiveTaskCount() const { return m_currentActiveTaskCount; }
    bool isActived() const { return m_isActived; }
    bool isShowActiveIndicaterWhileRunning() const { return m_isShowActiveIndicaterWhileRunning; }
    void setIsShowActiveIndicaterWhileRunning(bool on) { m_isShowActiveIndicaterWhileRunning = on; }
    int waitingCount() const { return int(m_queues.size()); }
    int runningCount() const { return int(m_runningQueues.size()); }

    void runNextAction();
    void actionFinished(QObject* task);

private Q_SLOTS:
    void onTaskChanged() { actionFinished(sender()); }

private:
    void observe(QObject* task);
    void stopObserving(QObject* task);

    int m_capacity = 1000;
    int m_parellelCapacity = 3;
    QList<QPointer<QObject>> m_queues;
    QList<QPointer<QObject>> m_runningQueues;
    int m_currentActiveTaskCount = 0;
    bool m_isActived = true;
    bool m_isShowActiveIndicaterWhileRunning = true;
};
