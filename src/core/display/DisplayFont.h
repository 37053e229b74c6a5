#pragma once

#include <QFont>

// The displays size their type as the lyric displays always have: a size of n is n
// device-independent pixels (a sixth of an inch at 96 dots per inch for 16), so that the
// 80-high strip holds two lines of its default 30 and the layouts keep their proportions at
// any screen resolution. Settings keep fonts as a name and a point size; this is the
// conversion.
class DisplayFont {
public:
    static constexpr int kLargest = 1000;

    // The font with its size, as stored, taken as pixels (1 to 1000).
    static QFont fromSetting(const QFont& font);
    // A copy of font at the given size in pixels.
    static QFont withSize(const QFont& font, double size);
};
