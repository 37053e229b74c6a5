#pragma once

#include <QString>

class Lyric;

// The scrolling lyric view's controller. The lyric handed over stays owned by the application
// controller; null clears the view.
class LyricViewPort {
public:
    virtual ~LyricViewPort() = default;
    virtual void setParser(Lyric* lyric) = 0;
    virtual void updateTime(float seconds) = 0;
    // A message shown over the lyric; a null string clears it.
    virtual void setInfo(const QString& info) = 0;
    // Re-reads fonts, colours and spacing from the settings.
    virtual void updateConfigs() = 0;
};
