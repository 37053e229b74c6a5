#pragma once

#include <QString>

// A player's track as the lyric store needs it: its free-text lyrics tag and its names.
// Player sources implement it; reads of a track that is gone answer empty strings.
class LyricsTrack {
public:
    virtual ~LyricsTrack() = default;
    virtual QString lyrics() const = 0;
    virtual void setLyrics(const QString& lyrics) = 0;
    virtual QString artist() const = 0;
    virtual QString name() const = 0;
};
