#pragma once

#include "core/app/HeadlessApplication.h"

#include <memory>

class AppController;
class AppDelegate;
class AppState;
class DesktopWindowFactory;
class LyricPanel;
class ScrollingViewPort;
class SingleLineModeController;
class StatusMenu;
class StripPort;
class SyncWiring;
class SystemDesktop;
class iTunesControl;

// The desktop application's composition root: the controller on the real ports (the status
// menu, the lyric panel, the strip, the windows and the desktop) and its D-Bus service.
// `versewick` is this object and an event loop; the desktop tests build the same object.
class DesktopApplication {
public:
    explicit DesktopApplication(ApplicationOptions options = {});
    ~DesktopApplication();
    DesktopApplication(const DesktopApplication&) = delete;
    DesktopApplication& operator=(const DesktopApplication&) = delete;

    AppDelegate& controller() const { return *m_root.controller(); }
    iTunesControl& itunes() const { return m_root.itunes(); }
    StatusMenu& menu() const { return *m_menu; }
    LyricPanel& panel() const { return *m_panel; }
    SingleLineModeController& strip() const { return *m_strip; }
    DesktopWindowFactory& windows() const { return *m_windows; }

    // The controller's D-Bus service on the session bus; false when the name is taken.
    bool publish();
    // The status menu into the tray (or, without one, only the panel's context menu), then
    // the controller's launch, which shows the window of the stored mode.
    void launch();

private:
    void observe(const AppState& state);

    HeadlessApplication m_root;
    std::unique_ptr<SystemDesktop> m_desktop;
    std::unique_ptr<StatusMenu> m_menu;
    std::unique_ptr<AppController> m_scrolling;
    std::unique_ptr<ScrollingViewPort> m_scrollingPort;
    std::unique_ptr<LyricPanel> m_panel;
    std::unique_ptr<SingleLineModeController> m_strip;
    std::unique_ptr<StripPort> m_stripPort;
    std::unique_ptr<DesktopWindowFactory> m_windows;
    std::unique_ptr<SyncWiring> m_sync;
};
