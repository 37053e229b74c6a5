#pragma once

#include <QString>

#include <memory>

class Lyric;
class LyricControl;

// Receives the outcome of a lyric fetch. Sources: 0 the lyrics folder, 1 the track's tag.
class LyricControlDelegate {
public:
    enum Source { FromFolder = 0, FromTrackTag = 1 };

    virtual ~LyricControlDelegate() = default;
    virtual void controlLrcFetched(LyricControl& control, std::unique_ptr<Lyric> lyric,
                                   int source) = 0;
    // Optional: the store asks first and calls only a delegate that answers true.
    virtual bool respondsToLrcFetchFailed() const { return false; }
    virtual void controlLrcFetchFailed(LyricControl& /*control*/, const QString* /*error*/,
                                       int /*type*/)
    {
    }
};
