#pragma once

#include "../../core/app/AppFixture.h"

#include "app/DesktopWindowFactory.h"
#include "app/LyricPanel.h"
#include "app/ScrollingViewPort.h"
#include "app/StripPort.h"
#include "display/AppController.h"
#include "display/HUDWindow.h"
#include "display/SingleLineModeController.h"
#include "tray/StatusMenu.h"

// The controller with the desktop application's real ports: the status menu, the lyric panel,
// the strip and the window factory, on temporary settings and folders.
class DesktopAppFixture : public AppFixture {
protected:
    std::unique_ptr<StatusMenu> menu;
    std::unique_ptr<AppController> scrolling;
    std::unique_ptr<ScrollingViewPort> scrollingPort;
    std::unique_ptr<LyricPanel> panel;
    std::unique_ptr<SingleLineModeController> strip;
    std::unique_ptr<StripPort> stripPort;
    std::unique_ptr<DesktopWindowFactory> windows;
    int searches = 0;

    void launchDesktop()
    {
        menu = std::make_unique<StatusMenu>();
        scrolling = std::make_unique<AppController>(settings.get());
        scrollingPort = std::make_unique<ScrollingViewPort>(*scrolling);
        panel = std::make_unique<LyricPanel>(*settings, *scrolling);
        panel->setContextMenu(menu->menu());
        panel->setSearchAction([this] { ++searches; });
        strip = std::make_unique<SingleLineModeController>(settings.get());
        stripPort = std::make_unique<StripPort>(*strip);
        stripPort->setContextMenu(menu->menu());
        windows = std::make_unique<DesktopWindowFactory>(*addresses, nullptr);

        itunes = std::make_unique<iTunesControl>(Workspace::sharedWorkspace(),
                                                 DistributedNotificationCenter::defaultCenter());
        AppEnvironment env{*settings, *addresses, Workspace::sharedWorkspace(),
                           DistributedNotificationCenter::defaultCenter(), *itunes};
        env.timers = timers.factory();
        env.bundles = [] { return QStringList(); };
        app = std::make_unique<AppDelegate>(
            std::move(env), AppPorts{scrollingPort.get(), stripPort.get(), panel.get(), menu.get(),
                                     windows.get(), nullptr});
        menu->setDelegate(app.get());
        windows->setDelegate(app.get());
        app->awakeFromNib();
        app->applicationDidFinishLaunching();
    }
    void TearDown() override
    {
        app.reset();
        windows.reset();
        stripPort.reset();
        strip.reset();
        panel.reset();
        scrollingPort.reset();
        scrolling.reset();
        menu.reset();
        AppFixture::TearDown();
    }
    bool panelShown() const { return panel->window()->isVisible(); }
    bool stripShown() const { return strip->isWindowLoaded() && strip->window()->isVisible(); }
};
