#pragma once

#include "app/LyricManagerPort.h"

#include <memory>

class AppDelegate;
class DesktopPort;
class LyricManagerWC;

// The lyric manager window for the controller; "the playing song" is the controller's song.
class LyricManagerWindow : public LyricManagerPort {
public:
    LyricManagerWindow(AppDelegate& delegate, std::unique_ptr<DesktopPort> desktop);
    ~LyricManagerWindow() override;

    void setLyricControl(LyricControl* control) override;
    void showWindow() override;

    LyricManagerWC* window() const { return m_window.get(); }

private:
    std::unique_ptr<LyricManagerWC> m_window;
};
