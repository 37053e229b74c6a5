#include "core/app/HeadlessApplication.h"

#include "core/app/AppDBusService.h"
#include "core/app/AppDelegate.h"
#include "core/app/AppEnvironment.h"
#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"
#include "core/reading/LyricReading.h"
#include "core/settings/ServiceAddresses.h"
#include "core/settings/Settings.h"
#include "core/sources/iTunesControl.h"

#include <QCoreApplication>

HeadlessApplication::HeadlessApplication(ApplicationOptions options)
    : m_options(std::move(options))
    , m_settings(m_options.settings ? m_options.settings : &AppSetting())
    , m_itunes(std::make_unique<iTunesControl>(Workspace::sharedWorkspace(),
                                               DistributedNotificationCenter::defaultCenter()))
{
    if (!m_options.addresses)
        m_ownAddresses = std::make_unique<ServiceAddresses>();
    m_addresses = m_options.addresses ? m_options.addresses : m_ownAddresses.get();
}

HeadlessApplication::~HeadlessApplication()
{
    destroyController();
}

AppDelegate& HeadlessApplication::build(AppPorts ports)
{
    AppEnvironment environment(*m_settings, *m_addresses, Workspace::sharedWorkspace(),
                               DistributedNotificationCenter::defaultCenter(), *m_itunes);
    if (m_options.timers)
        environment.timers = m_options.timers;
    environment.bundles = m_options.bundles;
    environment.followMpris = m_options.followMpris;
    // How lyrics read on the displays and over the bus, as the user set it.
    LyricReading::shared().setOptions(ReadingOptions::load(m_settings->store()));
    m_controller = std::make_unique<AppDelegate>(std::move(environment), ports);
    QObject::connect(m_controller.get(), &AppDelegate::quitRequested, qApp,
                     &QCoreApplication::quit);
    QObject::connect(m_itunes.get(), &iTunesControl::shutdownRequested, qApp,
                     &QCoreApplication::quit);
    return *m_controller;
}

void HeadlessApplication::destroyController()
{
    m_controller.reset(); // the service is its child and gives its name back
}

bool HeadlessApplication::publish()
{
    if (!m_controller)
        return false;
    auto* service = new AppDBusService(*m_controller); // owned by the controller
    return service->publish();
}

void HeadlessApplication::launch()
{
    if (!m_controller)
        return;
    m_controller->awakeFromNib();
    m_controller->applicationDidFinishLaunching();
}
