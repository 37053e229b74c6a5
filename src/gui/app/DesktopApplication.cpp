#include "gui/app/DesktopApplication.h"

#include "core/app/AppDelegate.h"
#include "core/app/AppState.h"
#include "core/app/PreferencesPort.h"
#include "core/foundation/SystemLog.h"
#include "gui/app/DesktopWindowFactory.h"
#include "gui/app/LyricPanel.h"
#include "gui/app/ScrollingViewPort.h"
#include "gui/app/StripPort.h"
#include "gui/app/SyncWiring.h"
#include "gui/app/TimeItOffer.h"
#include "gui/display/AppController.h"
#include "gui/display/HUDWindow.h"
#include "gui/display/SingleLineModeController.h"
#include "gui/preferences/PreferenceController.h"
#include "gui/tray/AppIcon.h"
#include "gui/tray/StatusMenu.h"
#include "gui/windows/SystemDesktop.h"

#include <QCoreApplication>
#include <QSystemTrayIcon>

DesktopApplication::DesktopApplication(ApplicationOptions options)
    : m_root(std::move(options))
    , m_desktop(std::make_unique<SystemDesktop>())
    , m_menu(std::make_unique<StatusMenu>())
{
    Settings& settings = m_root.settings();
    m_scrolling = std::make_unique<AppController>(&settings);
    m_scrollingPort = std::make_unique<ScrollingViewPort>(*m_scrolling);
    m_panel = std::make_unique<LyricPanel>(settings, *m_scrolling);
    m_panel->reportFirstPaint(qEnvironmentVariableIsSet("VERSEWICK_REPORT_FIRST_PAINT"));
    m_panel->setContextMenu(m_menu->menu());
    m_strip = std::make_unique<SingleLineModeController>(&settings);
    m_stripPort = std::make_unique<StripPort>(*m_strip);
    m_stripPort->setContextMenu(m_menu->menu());
    // Preferences open only from the controller's menu, so the controller exists by then.
    m_windows = std::make_unique<DesktopWindowFactory>(
        m_root.addresses(), [this]() -> std::unique_ptr<PreferencesPort> {
            auto preferences = std::make_unique<PreferenceController>(
                m_root.settings(), m_root.addresses(), *m_desktop);
            QObject::connect(preferences.get(), &PreferenceController::reloadLyricViewRequested,
                             m_root.controller(), &AppDelegate::reloadLyricView);
            return preferences;
        });

    AppDelegate& app = m_root.build({m_scrollingPort.get(), m_stripPort.get(), m_panel.get(),
                                     m_windows.get(), m_desktop.get()});
    observe(app.state());
    m_menu->setDelegate(&app);
    m_windows->setDelegate(&app);
    m_windows->setITunes(&m_root.itunes());
    m_panel->setSearchAction([&app] { app.showSearchWindow(); });
    m_sync = std::make_unique<SyncWiring>(app, *m_scrolling, *m_panel, *m_strip);
    new TimeItOffer(*m_panel->window(), app); // owned by the panel's window
    // Only the desktop application writes the settings, and only on a normal exit.
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &app,
                     &AppDelegate::applicationWillTerminate);
}

// The displays and the status menu show what the view model holds, and nothing else.
void DesktopApplication::observe(const AppState& state)
{
    AppController* scrolling = m_scrolling.get();
    QObject::connect(&state, &AppState::lyricShown, scrolling, &AppController::setParser);
    QObject::connect(&state, &AppState::playTimeShown, scrolling, &AppController::updateTime);
    // A plain lyric is read in the panel: its status is not laid over the text.
    QObject::connect(&state, &AppState::infoShown, scrolling,
                     [scrolling, &state](const QString& t) {
                         scrolling->setInfo(state.lyricLoaded() && !state.synced() ? QString() : t);
                     });
    QObject::connect(&state, &AppState::stripTextShown, m_strip.get(),
                     &SingleLineModeController::setContent);
    QObject::connect(&state, &AppState::changed, m_panel.get(),
                     [this](const QString& name, const QVariant& value) {
                         if (name == QLatin1String("PanelTitle"))
                             m_panel->setTitle(value.toString());
                         // The line under the lit line, in the strip.
                         else if (name == QLatin1String("SecondaryLine") && m_strip->view())
                             m_strip->view()->setSecondary(value.toString());
                     });
    m_menu->observe(state);
    m_strip->followState(&state); // the lit line's word timing, for the karaoke fill
}

DesktopApplication::~DesktopApplication()
{
    m_root.destroyController(); // before the ports it was built on
}

bool DesktopApplication::publish()
{
    return m_root.publish();
}

void DesktopApplication::launch()
{
    if (!m_menu->showInTray())
        foundation::systemLog(
            QStringLiteral("no system tray: the status menu is in the lyric panel's context menu"));
    else
        AppIcon::followSong(*m_menu->trayIcon(), controller().state());
    m_root.launch();
}
