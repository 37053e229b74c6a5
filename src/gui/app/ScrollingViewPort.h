#pragma once

#include "core/app/LyricViewPort.h"
#include "gui/display/AppController.h"

// The scrolling lyric view's controller as the application controller sees it.
class ScrollingViewPort : public LyricViewPort {
public:
    explicit ScrollingViewPort(AppController& controller)
        : m_controller(controller)
    {
    }

    void updateConfigs() override { m_controller.updateConfigs(); }

private:
    AppController& m_controller;
};
