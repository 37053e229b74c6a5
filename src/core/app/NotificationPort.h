#pragma once

#include <QString>

// The song-change notification panel. It tells the controller (notificationCanBeRemoved)
// when its disappearing animation has ended.
class NotificationPort {
public:
    struct Track {
        QString name;
        QString artist;
        QString album;
        double duration = 0.0; // seconds
    };

    virtual ~NotificationPort() = default;
    // Transparent at first, sized to the track, placed in corner 2, then shown.
    virtual void showTrack(const Track& track) = 0;
    // Starts the disappearing animation and stops reporting to the controller.
    virtual void disappear() = 0;
    virtual void close() = 0;
};
