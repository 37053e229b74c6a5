#include "app/SongChangeQueue.h"

#include <algorithm>

SongChangeQueue::SongChangeQueue(QObject* owner, std::function<void(int kind)> handle)
    : m_handle(std::move(handle))
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, owner, [this] { run(); });
}

void SongChangeQueue::notice(int kind)
{
    if (kind < 0 || kind >= kKinds)
        return;
    m_pending[kind] = true;
    if (m_timer.isActive())
        return;
    const qint64 since = m_lastRun.isValid() ? m_lastRun.elapsed() : kMinGapMs;
    m_timer.start(int(std::max<qint64>(0, kMinGapMs - since)));
}

void SongChangeQueue::run()
{
    m_lastRun.start();
    for (int kind = 0; kind < kKinds; ++kind) {
        if (!m_pending[kind])
            continue;
        m_pending[kind] = false;
        m_handle(kind);
    }
}
