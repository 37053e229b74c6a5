#pragma once

#include <QString>

// The status menu's items that the controller writes: the source label, the show/hide item
// and the two mode check marks.
class StatusMenuPort {
public:
    enum class Item { Other, ModeStream, ModeLine };

    virtual ~StatusMenuPort() = default;
    virtual void setSourceTitle(const QString& title) = 0;
    virtual void setToggleTitle(const QString& title) = 0;
    virtual void setModeStreamOn(bool on) = 0;
    virtual void setModeLineOn(bool on) = 0;
};
