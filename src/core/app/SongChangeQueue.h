#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <functional>

// Coalesces song-change notices. A notice only marks its source; the handler runs once for
// all the notices that came since it last ran, reading each source's song as it is then, and
// no more often than every kMinGapMs. A player sending thousands of changes a second costs a
// few handlings a second, not one per notice.
class SongChangeQueue {
public:
    static constexpr int kMinGapMs = 100;
    static constexpr int kKinds = 8;

    // handle(kind) is called on the owner's thread for each kind with a notice pending.
    SongChangeQueue(QObject* owner, std::function<void(int kind)> handle);

    void notice(int kind);
    bool isPending() const { return m_timer.isActive(); }

private:
    void run();

    std::function<void(int)> m_handle;
    QTimer m_timer;
    QElapsedTimer m_lastRun;
    bool m_pending[kKinds] = {};
};
