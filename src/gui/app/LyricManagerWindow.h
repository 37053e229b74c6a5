#pragma once

#include "core/app/LyricManagerPort.h"

#include <memory>

class AppDelegate;
class DesktopPort;
class LyricManagerWC;
class iTunesControl;

// The lyric manager window for the controller. "The playing song" is iTunes's current track
// when iTunes has one, otherwise the controller's Jukora song, whichever source is active.
class LyricManagerWindow : public LyricManagerPort {
public:
    // itunes: not owned; null when there is no iTunes bridge.
    LyricManagerWindow(AppDelegate& delegate, std::unique_ptr<DesktopPort> desktop,
                       iTunesControl* itunes = nullptr);
    ~LyricManagerWindow() override;

    void setLyricControl(LyricControl* control) override;
    void showWindow() override;

    LyricManagerWC* window() const { return m_window.get(); }

private:
    std::unique_ptr<LyricManagerWC> m_window;
};
