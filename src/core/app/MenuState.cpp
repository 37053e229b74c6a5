#include "core/app/MenuState.h"

#include "core/app/AppState.h"
#include "core/app/AppTexts.h"
#include "core/app/LyricManagerPort.h"
#include "core/app/LyricViewPort.h"
#include "core/app/NotificationPort.h"
#include "core/app/PreferencesPort.h"
#include "core/app/SingleLinePort.h"
#include "core/app/WindowFactoryPort.h"
#include "core/app/WindowPort.h"
#include "core/settings/Settings.h"

MenuState::MenuState(Settings& settings, AppState& state, AppPorts ports, Makers makers)
    : m_settings(settings)
    , m_state(state)
    , m_ports(ports)
    , m_makers(std::move(makers))
{
}

MenuState::~MenuState() = default;

void MenuState::setModeItems()
{
    const int style = m_settings.lyricStyle();
    m_state.setModeItems(style == 0, style != 0);
    m_state.setMode(style);
}

void MenuState::toggleLyricsWindow()
{
    m_isLrcWindowVisible = !m_isLrcWindowVisible;
    m_state.setLyricWindowVisible(m_isLrcWindowVisible);
    if (!m_isLrcWindowVisible)
        hideMainWindow();
    else
        showMainWindow();
}

void MenuState::showMainWindow()
{
    if (m_settings.lyricStyle() != 0) {
        if (m_ports.singleLineControl && m_ports.singleLineControl->window())
            m_ports.singleLineControl->window()->orderFrontRegardless();
    } else if (m_ports.uiLRCpanel) {
        m_ports.uiLRCpanel->orderFrontRegardless();
    }
    m_state.setToggleTitle(apptext::tr(apptext::kHideLRC));
}

void MenuState::hideMainWindow()
{
    if (m_ports.singleLineControl && m_ports.singleLineControl->window())
        m_ports.singleLineControl->window()->close();
    if (m_ports.uiLRCpanel)
        m_ports.uiLRCpanel->close();
    m_state.setToggleTitle(apptext::tr(apptext::kShowLRC));
}

void MenuState::changeLrcMode(StatusMenuItem sender)
{
    const bool stream = sender == StatusMenuItem::ModeStream;
    m_state.setModeItems(stream, !stream);
    changeLrcModeTo(stream ? 0 : 1);
}

// Leaves the window's visible flag alone, also when the window was hidden: the new mode's window
// shows and the toggle item reads "Hide LRC" while the flag still says hidden. Kept so.
void MenuState::changeLrcModeTo(int mode)
{
    if (mode == m_settings.lyricStyle())
        return;
    hideMainWindow();
    m_settings.setLyricStyle(mode);
    m_state.setMode(mode);
    showMainWindow();
}

void MenuState::activate()
{
    if (m_ports.windows)
        m_ports.windows->activateApplication();
}

void MenuState::showPreferencePanel()
{
    if (!m_preferenceController && m_ports.windows)
        m_preferenceController = m_ports.windows->createPreferences();
    activate();
    if (m_preferenceController)
        m_preferenceController->centerAndShow();
}

void MenuState::showAbout()
{
    activate();
    if (m_ports.windows)
        m_ports.windows->showAbout();
}

void MenuState::showLyricManager()
{
    activate();
    if (LyricManagerPort* manager = lyricManagerWC())
        manager->showWindow();
}

LyricManagerPort* MenuState::lyricManagerWC()
{
    if (!m_lyricManagerWC && m_ports.windows) {
        m_lyricManagerWC = m_ports.windows->createLyricManager();
        if (m_lyricManagerWC)
            m_lyricManagerWC->setLyricControl(m_makers.store ? m_makers.store() : nullptr);
    }
    return m_lyricManagerWC.get();
}

void MenuState::showSongNotification(const NotificationPort::Track& track)
{
    if (m_notifyWC) {
        m_notifyWC->disappear();
        m_notifyWC->close();
        m_notifyWC.reset();
    }
    if (!m_makers.notification)
        return;
    m_notifyWC = m_makers.notification();
    if (m_notifyWC)
        m_notifyWC->showTrack(track);
}

void MenuState::notificationCanBeRemoved()
{
    if (!m_notifyWC)
        return;
    m_notifyWC->close();
    m_notifyWC.reset();
}

void MenuState::setInfo(const QString& info)
{
    m_state.showInfo(info);
}

void MenuState::reloadLyricView()
{
    if (m_ports.appController)
        m_ports.appController->updateConfigs();
    if (m_ports.singleLineControl)
        m_ports.singleLineControl->updateFromSettings();
}
