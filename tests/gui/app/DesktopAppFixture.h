#pragma once

#include "../../core/app/AppFixture.h"

#include "app/DesktopApplication.h"
#include "app/DesktopWindowFactory.h"
#include "app/LyricPanel.h"
#include "display/HUDWindow.h"
#include "display/SingleLineModeController.h"
#include "tray/StatusMenu.h"

// The desktop application as `versewick` builds it, on temporary settings and folders, with
// timers the test fires and no plug-in.
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
                               [] { return QStringList(); }, false});
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
