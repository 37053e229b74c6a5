#pragma once

#include "core/app/WindowPort.h"

#include <QString>

// The floating panel that hosts the scrolling lyric view.
class LyricPanelPort : public WindowPort {
public:
    virtual void setTitle(const QString& title) = 0;
};
