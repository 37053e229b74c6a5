#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QString>

// One playlist played in real time.
struct Song {
    QString artist;
    QString title;
    QString album;
    double duration = 180.0;
    QString lyrics;  // the iTunes lyrics tag
    QString url;     // MPRIS xesam:url
    QString trackId; // MPRIS mpris:trackid; a path of the simulator's own when empty
};

class Playback {
public:
    enum State { Stopped, Playing, Paused };

    QList<Song> playlist;

    State state() const { return m_state; }
    int index() const { return m_index; }
    const Song* current() const;
    double position() const;

    void play();
    void pause();
    void stop();
    bool next();     // false at the end of the list
    bool previous(); // false at the start
    void seek(double seconds);
    double rate() const { return m_rate; }
    void setRate(double rate);
    // Moves on when the song's time is over; true when the song changed.
    bool advanceIfFinished();
    static const char* stateName(State s);

private:
    State m_state = Stopped;
    int m_index = 0;
    double m_base = 0.0; // position when the clock last started
    double m_rate = 1.0;
    QElapsedTimer m_clock;
};
