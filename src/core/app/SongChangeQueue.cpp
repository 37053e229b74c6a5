#include "core/app/SongChangeQueue.h"

#include <algorithm>

SongChangeQueue::SongChangeQueue(QObject* owner, std::function<void()> handle)
    : m_handle(std::move(handle))
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, owner, [this] { run(); });
}

void SongChangeQueue::notice()
{
    if (m_timer.isActive())
        return;
    const qint64 since = m_lastRun.isValid() ? m_lastRun.elapsed() : kMinGapMs;
    m_timer.start(int(std::max<qint64>(0, kMinGapMs - since)));
}

void SongChangeQueue::run()
{
    m_lastRun.start();
    m_handle();
}
