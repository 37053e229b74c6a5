#pragma once

#include <QtGlobal>

// The play time between the update loop's readings of the player. The loop reads the position a
// few times a second; a tap between two readings gets the last one plus the time since it came,
// never more than kMaxLeadMs (so a paused player does not run away), and never waits for the
// player itself.
class PlayClock {
public:
    static constexpr qint64 kMaxLeadMs = 250; // a little more than the loop's tick

    // position: the loop's last reading (seconds); nowMs: a monotonic clock.
    double at(double position, qint64 nowMs)
    {
        if (!m_seen || position != m_position) {
            m_seen = true;
            m_position = position;
            m_since = nowMs;
            return position;
        }
        const qint64 lead = qBound<qint64>(0, nowMs - m_since, kMaxLeadMs);
        return position + double(lead) / 1000.0;
    }

private:
    bool m_seen = false;
    double m_position = 0.0;
    qint64 m_since = 0;
};
