#pragma once

#include "core/app/AppPorts.h"
#include "core/app/UpdateTimer.h"

#include <QStringList>

#include <functional>
#include <memory>

class AppDelegate;
class ServiceAddresses;
class Settings;
class iTunesControl;

// What a front end may choose; the defaults are the user's.
struct ApplicationOptions {
    Settings* settings = nullptr;          // null: the user's settings
    ServiceAddresses* addresses = nullptr; // null: the user's service addresses
    UpdateTimer::Factory timers;           // empty: Qt's timers
    std::function<QStringList()> bundles;  // empty: the plug-in folders
    bool followMpris = true;               // mpv, VLC and any other MPRIS player
};

// The controller and what it stands on, for any front end: the players' connections, the
// settings and the service addresses, the controller on the front end's ports, and its D-Bus
// service. The desktop application and `versewick-cli follow` are built on it, and so are the
// tests that drive them: no one wires the controller by hand.
class HeadlessApplication {
public:
    explicit HeadlessApplication(ApplicationOptions options = {});
    ~HeadlessApplication();
    HeadlessApplication(const HeadlessApplication&) = delete;
    HeadlessApplication& operator=(const HeadlessApplication&) = delete;

    Settings& settings() const { return *m_settings; }
    ServiceAddresses& addresses() const { return *m_addresses; }
    iTunesControl& itunes() const { return *m_itunes; }

    // Builds the controller on these ports, which must outlive it (or destroyController()).
    // Quit (through the service, or the iTunes shutdown notice) then ends the event loop.
    AppDelegate& build(AppPorts ports);
    // Null before build() and after destroyController().
    AppDelegate* controller() const { return m_controller.get(); }
    // For a front end whose ports go before this object: the controller and its service first.
    void destroyController();

    // Puts the controller's D-Bus service on the session bus; false when the name is taken or
    // there is no bus.
    bool publish();
    // awakeFromNib, then applicationDidFinishLaunching.
    void launch();

private:
    ApplicationOptions m_options;
    std::unique_ptr<ServiceAddresses> m_ownAddresses;
    Settings* m_settings = nullptr;
    ServiceAddresses* m_addresses = nullptr;
    std::unique_ptr<iTunesControl> m_itunes;
    std::unique_ptr<AppDelegate> m_controller;
};
