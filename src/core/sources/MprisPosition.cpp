#include "core/sources/MprisPosition.h"

#include <algorithm>

void MprisPosition::rebase(double now)
{
    m_anchor = at(now);
    m_anchorTime = now;
}

void MprisPosition::setAnchor(double seconds, double now)
{
    m_anchor = std::max(0.0, seconds);
    m_anchorTime = now;
}

void MprisPosition::setPlaying(bool playing, double now)
{
    if (playing == m_playing)
        return;
    rebase(now);
    m_playing = playing;
    m_lastRaw.reset();
}

void MprisPosition::setRate(std::optional<double> rate, double now)
{
    const double r = rate.value_or(1.0);
    if (r == m_rate)
        return;
    rebase(now);
    m_rate = r;
    m_lastRaw.reset();
}

void MprisPosition::restart(double now)
{
    setAnchor(0.0, now);
    m_lastRaw.reset();
}

void MprisPosition::seeked(qint64 raw, double now)
{
    setAnchor(double(raw) * m_scale, now);
    m_lastRaw.reset();
}

void MprisPosition::read(qint64 raw, double now)
{
    if (m_playing && m_lastRaw && now - m_lastReadTime >= kMinDetectionSeconds) {
        const double expected = (now - m_lastReadTime) * m_rate;
        const double moved = double(raw - *m_lastRaw) * 1e-6;
        const double ratio = moved / expected;
        m_stuck = raw == *m_lastRaw;
        if (ratio > 0.0005 && ratio < 0.002)
            m_scale = 1e-3;
        else if (ratio > 0.5 && ratio < 2.0)
            m_scale = 1e-6;
    }
    if (m_playing && (!m_lastRaw || now - m_lastReadTime >= kMinDetectionSeconds)) {
        m_lastRaw = raw;
        m_lastReadTime = now;
    }
    if (!m_stuck)
        setAnchor(double(raw) * m_scale, now);
}

double MprisPosition::at(double now) const
{
    if (!m_playing)
        return m_anchor;
    return m_anchor + std::max(0.0, now - m_anchorTime) * m_rate;
}
