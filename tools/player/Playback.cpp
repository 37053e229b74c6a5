#include "Playback.h"

const Song* Playback::current() const
{
    return m_index >= 0 && m_index < playlist.size() ? &playlist[m_index] : nullptr;
}

double Playback::position() const
{
    if (m_state == Playing && m_clock.isValid())
        return m_base + double(m_clock.elapsed()) / 1000.0 * m_rate;
    return m_state == Stopped ? 0.0 : m_base;
}

void Playback::play()
{
    if (m_state == Playing || !current())
        return;
    m_state = Playing;
    m_clock.start();
}

void Playback::pause()
{
    if (m_state != Playing)
        return;
    m_base = position();
    m_state = Paused;
}

void Playback::stop()
{
    m_state = Stopped;
    m_base = 0.0;
}

bool Playback::next()
{
    if (m_index + 1 >= playlist.size())
        return false;
    ++m_index;
    m_base = 0.0;
    m_clock.start();
    return true;
}

bool Playback::previous()
{
    if (m_index <= 0)
        return false;
    --m_index;
    m_base = 0.0;
    m_clock.start();
    return true;
}

void Playback::seek(double seconds)
{
    m_base = std::max(0.0, seconds);
    m_clock.start();
}

void Playback::setRate(double rate)
{
    if (rate <= 0.0)
        return;
    m_base = position();
    m_clock.start();
    m_rate = rate;
}

bool Playback::advanceIfFinished()
{
    const Song* song = current();
    if (m_state != Playing || !song || position() < song->duration)
        return false;
    if (!next())
        stop();
    return true;
}

const char* Playback::stateName(State s)
{
    switch (s) {
    case Playing:
        return "Playing";
    case Paused:
        return "Paused";
    default:
        return "Stopped";
    }
}
