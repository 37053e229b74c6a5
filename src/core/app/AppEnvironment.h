#pragma once

#include "core/app/LyricPluginLoader.h"
#include "core/app/UpdateTimer.h"

#include <QStringList>

#include <functional>

class DistributedNotificationCenter;
class QNetworkAccessManager;
class ServiceAddresses;
class Settings;
class Workspace;
class iTunesControl;

// What the controller is built on; the application passes the process's services, tests
// their own. References are not owned and outlive the controller.
struct AppEnvironment {
    AppEnvironment(Settings& settings, ServiceAddresses& addresses, Workspace& workspace,
                   DistributedNotificationCenter& center, iTunesControl& itunes)
        : settings(settings)
        , addresses(addresses)
        , workspace(workspace)
        , center(center)
        , itunes(itunes)
    {
    }

    Settings& settings;
    ServiceAddresses& addresses;
    Workspace& workspace;
    DistributedNotificationCenter& center;
    iTunesControl& itunes;
    UpdateTimer::Factory timers = &UpdateTimer::createQtTimer;
    // The plug-in bundles to load; empty: the loader's search folders.
    std::function<QStringList()> bundles;
    // Loads the kept plug-in from the bundles; empty: LyricPluginLoader.
    std::function<LyricPluginLoader::Loaded(const QStringList&)> loader;
    // Manager for the sharing upload; null: the thread's own.
    QNetworkAccessManager* network = nullptr;
    // Follow MPRIS players as the last source when no other is set (setFollowedSource).
    bool followMpris = false;
};
