#pragma once

#include <QString>

// The manual lyric search window. A pick comes back as AppDelegate::setupLRCcontent.
class SearchWindowPort {
public:
    virtual ~SearchWindowPort() = default;
    // Centres the window, shows it and fills its title and artist fields.
    virtual void showFor(const QString& title, const QString& artist) = 0;
};
