#include "core/http/PLHttpQueue.h"
#include "core/foundation/Assertion.h"

#include <gtest/gtest.h>

namespace {

class Task : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isStarted READ isStarted NOTIFY isStartedChanged)
    Q_PROPERTY(bool isFinished READ isFinished NOTIFY isFinishedChanged)
    Q_PROPERTY(bool isCancelled READ isCancelled NOTIFY isCancelledChanged)
public:
    bool isStarted() const { return m_started; }
    bool isFinished() const { return m_finished; }
    bool isCancelled() const { return m_cancelled; }
    Q_INVOKABLE void start()
    {
        m_started = true;
        Q_EMIT isStartedChanged();
    }
    void finish()
    {
        m_finished = true;
        Q_EMIT isFinishedChanged();
    }
    void cancel()
    {
        m_cancelled = true;
        Q_EMIT isCancelledChanged();
    }

Q_SIGNALS:
    void isStartedChanged();
    void isFinishedChanged();
    void isCancelledChanged();

private:
    bool m_started = false, m_finished = false, m_cancelled = false;
};

std::vector<bool> started(const std::vector<std::unique_ptr<Task>>& tasks)
{
    std::vector<bool> out;
    for (const auto& t : tasks)
        out.push_back(t->isStarted());
    return out;
}

std::vector<std::unique_ptr<Task>> makeTasks(int n)
{
    std::vector<std::unique_ptr<Task>> tasks;
    for (int i = 0; i < n; ++i)
        tasks.push_back(std::make_unique<Task>());
    return tasks;
}

TEST(HttpQueue, RunsThreeAtATimeInOrder)
{
    PLHttpQueue queue;
    auto tasks = makeTasks(5);
    for (auto& t : tasks)
        EXPECT_TRUE(queue.addQueueItem(t.get()));
    EXPECT_EQ(started(tasks), (std::vector<bool>{true, true, true, false, false}));
    tasks[1]->finish();
    EXPECT_EQ(started(tasks), (std::vector<bool>{true, true, true, true, false}));
    tasks[0]->cancel();
    EXPECT_EQ(started(tasks), (std::vector<bool>{true, true, true, true, true}));
    EXPECT_EQ(queue.currentActiveTaskCount(), 3);
}

TEST(HttpQueue, PausedTasksWaitForTheNextAdditionOrEnd)
{
    PLHttpQueue queue;
    auto tasks = makeTasks(2);
    queue.pause();
    queue.addQueueItem(tasks[0].get());
    EXPECT_FALSE(tasks[0]->isStarted());
    queue.start();
    EXPECT_FALSE(tasks[0]->isStarted());
    queue.addQueueItem(tasks[1].get());
    EXPECT_TRUE(tasks[0]->isStarted());
    EXPECT_TRUE(tasks[1]->isStarted());
}

TEST(HttpQueue, CancelledOrStartedTasksAreDropped)
{
    PLHttpQueue queue;
    queue.setParellelCapacity(1);
    auto tasks = makeTasks(3);
    queue.addQueueItem(tasks[0].get());
    tasks[1]->cancel();
    queue.addQueueItem(tasks[1].get());
    queue.addQueueItem(tasks[2].get());
    tasks[0]->finish();
    EXPECT_FALSE(tasks[1]->isStarted());
    EXPECT_TRUE(tasks[2]->isStarted());
    EXPECT_EQ(queue.waitingCount(), 0);
}

TEST(HttpQueue, ZeroCapacityStartsNothingAndCapacityIsNotEnforced)
{
    PLHttpQueue queue;
    queue.setParellelCapacity(0);
    queue.setCapacity(1);
    auto tasks = makeTasks(3);
    for (auto& t : tasks)
        queue.addQueueItem(t.get());
    EXPECT_EQ(started(tasks), (std::vector<bool>{false, false, false}));
    EXPECT_EQ(queue.waitingCount(), 3);
}

TEST(HttpQueue, ATaskReportingTwiceTripsTheCountCheckOnlyWhenAsked)
{
    QStringList assertions;
    auto previous = foundation::setAssertionHandler([&](const QString& t) { assertions << t; });
    PLHttpQueue queue;
    Task task;
    queue.addQueueItem(&task);
    queue.actionFinished(&task);
    queue.actionFinished(&task);
    EXPECT_EQ(assertions, QStringList{"task count should GE 0"});
    EXPECT_EQ(queue.currentActiveTaskCount(), 0);

    queue.setIsShowActiveIndicaterWhileRunning(false);
    queue.actionFinished(&task);
    EXPECT_EQ(queue.currentActiveTaskCount(), -1);
    foundation::setAssertionHandler(previous);
}

class OtherQueue : public PLHttpQueue {};

TEST(HttpQueue, EachClassHasItsOwnSharedQueue)
{
    EXPECT_EQ(&PLHttpQueue::sharedQueue(), &PLHttpQueue::sharedQueue());
    EXPECT_NE(static_cast<PLHttpQueue*>(&PLHttpQueue::sharedQueue<OtherQueue>()),
              &PLHttpQueue::sharedQueue());
}

} // namespace

#include "PLHttpQueueTest.moc"
