#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <functional>

// Coalesces song-change notices. A notice only asks for a handling; the handler runs once for
// all the notices that came since it last ran, reading the song as it is then, and no more
// often than every kMinGapMs. A player sending thousands of changes a second costs a few
// handlings a second, not one per notice.
class SongChangeQueue {
public:
    static constexpr int kMinGapMs = 100;
    // handle() is called on the owner's thread.
    SongChangeQueue(QObject* owner, std::function<void()> handle);

    void notice();
    bool isPending() const { return m_timer.isActive(); }

private:
    void run();

    std::function<void()> m_handle;
    QTimer m_timer;
    QElapsedTimer m_lastRun;
};
