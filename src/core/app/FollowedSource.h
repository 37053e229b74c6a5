#pragma once

#include <QString>

class TrackItem;

// A source of the last priority (kind 4: any MPRIS player), adapted to what the controller
// asks of a player. It reports through the callback style of the other sources: the song
// changed -> AppDelegate::mprisSongChanged, started or quit -> AppDelegate::updateMusicSource.
class FollowedSource {
public:
    virtual ~FollowedSource() = default;
    virtual bool isRunning() const = 0;
    // The menu's source title (the player's identity).
    virtual QString menuTitle() const = 0;
    // The song now playing, or null.
    virtual const TrackItem* track() const = 0;
    // Seconds, lead included; never a blocking call.
    virtual float location() const = 0;
    virtual double duration() const { return 0.0; }
    // The song's local audio file, when it is one; null otherwise.
    virtual QString localFilePath() const { return {}; }
};
