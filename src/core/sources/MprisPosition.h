#pragma once

#include <QtGlobal>

#include <optional>

// A player's position between reads: the last known position and the clock reading it was
// known at; while playing, the elapsed time times the rate is added. Times are clock readings
// in seconds (platform::now()), positions are seconds.
//
// Two faults of real players are recognised by comparing reads taken while playing, at least
// a second apart: a position that advances a thousand times too slowly is in milliseconds
// (from then on every read and Seeked value is scaled), and one that does not advance at all
// is stuck (its reads are ignored and the position keeps moving by the clock alone).
class MprisPosition {
public:
    static constexpr double kMinDetectionSeconds = 1.0;

    void setPlaying(bool playing, double now);
    void setRate(std::optional<double> rate, double now);
    // A new song starts at 0.
    void restart(double now);
    // The player's Seeked signal, in its own unit.
    void seeked(qint64 raw, double now);
    // The answer to a Position read, in the player's own unit.
    void read(qint64 raw, double now);
    double at(double now) const;

    bool isPlaying() const { return m_playing; }
    double rate() const { return m_rate; }
    bool reportsMilliseconds() const { return m_scale > 1e-6; }
    bool isStuck() const { return m_stuck; }

private:
    void rebase(double now);
    void setAnchor(double seconds, double now);

    double m_anchor = 0.0;
    double m_anchorTime = 0.0;
    bool m_playing = false;
    double m_rate = 1.0;
    double m_scale = 1e-6; // seconds per unit of the player
    bool m_stuck = false;
    // The last read taken while playing, since the last seek, song change, pause or rate
    // change: raw value and time.
    std::optional<qint64> m_lastRaw;
    double m_lastReadTime = 0.0;
};
