#pragma once

#include <QString>

// Receives the lyric text a user picked in the search window. The text is null when the
// download failed; the receiver then installs an empty lyric and saves nothing.
class LyricSearchDelegate {
public:
    virtual ~LyricSearchDelegate() = default;
    virtual void setupLRCcontent(const QString& text) = 0;
};
