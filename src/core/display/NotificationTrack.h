#pragma once

#include <QString>

// What the song-change panel shows of a track.
struct NotificationTrack {
    QString name;
    QString artist;
    QString album;
    double duration = 0; // seconds

    // "3:07", or "1:02:03" from an hour on; "0:00" for a duration that is not a number or < 0.
    static QString durationText(double seconds);
};
