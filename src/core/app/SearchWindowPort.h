#pragma once

#include <QString>

// The manual lyric search window. A pick comes back as AppDelegate::setupLRCcontent.
class SearchWindowPort {
public:
    virtual ~SearchWindowPort() = default;
    // Centres the window, shows it and fills its title and artist fields; the song's duration
    // (seconds, 0 when unknown) ranks the plug-in's candidates as in the automatic search.
    virtual void showFor(const QString& title, const QString& artist, double duration) = 0;
};
