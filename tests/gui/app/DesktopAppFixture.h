#pragma once

#include "support/app/AppFixture.h"

#include "gui/app/DesktopApplication.h"
#include "gui/app/DesktopWindowFactory.h"
#include "gui/app/LyricPanel.h"
#include "gui/display/HUDWindow.h"
#include "gui/display/SingleLineModeController.h"
#include "gui/tray/StatusMenu.h"

// The desktop application as `versewick` builds it, on temporary settings and folders, with
// timers the test fires and the plug-in bundles the test names (none by default).
class DesktopAppFixture : public AppFixture {
protected:
    std::unique_ptr<DesktopApplication> desktop;
    AppDelegate* controller = nullptr;
    StatusMenu* menu = nullptr;
    LyricPanel* panel = nullptr;
    SingleLineModeController* strip = nullptr;
    DesktopWindowFactory* windows = nullptr;
    int searches = 0;

    void launchDesktop()
    {
        desktop = std::make_unique<DesktopApplication>(
            ApplicationOptions{settings.get(), addresses.get(), timers.factory(),
                               [this] { return bundles; }, followMpris});
        controller = &desktop->controller();
        menu = &desktop->menu();
        panel = &desktop->panel();
        strip = &desktop->strip();
        windows = &desktop->windows();
        panel->setSearchAction([this] { ++searches; });
        desktop->launch();
    }
    void TearDown() override
    {
        desktop.reset();
        AppFixture::TearDown();
    }
    bool panelShown() const { return panel->window()->isVisible(); }
    bool stripShown() const { return strip->isWindowLoaded() && strip->window()->isVisible(); }
};
