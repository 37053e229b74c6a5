#include "app/MenuState.h"

#include "app/AppDelegate.h"
#include "app/AppTexts.h"
#include "app/LyricManagerPort.h"
#include "app/LyricPanelPort.h"
#include "app/LyricViewPort.h"
#include "app/NotificationPort.h"
#include "app/PreferencesPort.h"
#include "app/SingleLinePort.h"
#include "app/WindowFactoryPort.h"
#include "settings/Settings.h"

void MenuState::setModeItems()
{
    const int style = d.m_env.settings.lyricStyle();
    if (d.m_ports.statusMenu) {
        d.m_ports.statusMenu->setModeStreamOn(style == 0);
        d.m_ports.statusMenu->setModeLineOn(style != 0);
    }
    d.m_state.setMode(style);
}

void MenuState::toggleLyricsWindow()
{
    d._isLrcWindowVisible = !d._isLrcWindowVisible;
    d.m_state.setLyricWindowVisible(d._isLrcWindowVisible);
    if (!d._isLrcWindowVisible)
        hideMainWindow();
    else
        showMainWindow();
}

void MenuState::showMainWindow()
{
    if (d.m_env.settings.lyricStyle() != 0) {
        if (d.m_ports.singleLineControl && d.m_ports.singleLineControl->window())
            d.m_ports.singleLineControl->window()->orderFrontRegardless();
    } else if (d.m_ports.uiLRCpanel) {
        d.m_ports.uiLRCpanel->orderFrontRegardless();
    }
    if (d.m_ports.statusMenu)
        d.m_ports.statusMenu->setToggleTitle(apptext::tr(apptext::kHideLRC));
}

void MenuState::hideMainWindow()
{
    if (d.m_ports.singleLineControl && d.m_ports.singleLineControl->window())
        d.m_ports.singleLineControl->window()->close();
    if (d.m_ports.uiLRCpanel)
        d.m_ports.uiLRCpanel->close();
    if (d.m_ports.statusMenu)
        d.m_ports.statusMenu->setToggleTitle(apptext::tr(apptext::kShowLRC));
}

void MenuState::changeLrcMode(StatusMenuPort::Item sender)
{
    const bool stream = sender == StatusMenuPort::Item::ModeStream;
    if (d.m_ports.statusMenu) {
        d.m_ports.statusMenu->setModeStreamOn(stream);
        d.m_ports.statusMenu->setModeLineOn(!stream);
    }
    changeLrcModeTo(stream ? 0 : 1);
}

// Leaves _isLrcWindowVisible alone, also when the window was hidden: the new mode's window
// shows and the toggle item reads "Hide LRC" while the flag still says hidden. Kept so.
void MenuState::changeLrcModeTo(int mode)
{
    if (mode == d.m_env.settings.lyricStyle())
        return;
    hideMainWindow();
    d.m_env.settings.setLyricStyle(mode);
    d.m_state.setMode(mode);
    showMainWindow();
}

void MenuState::activate()
{
    if (d.m_ports.windows)
        d.m_ports.windows->activateApplication();
}

void MenuState::showPreferencePanel()
{
    if (!d.preferenceController && d.m_ports.windows)
        d.preferenceController = d.m_ports.windows->createPreferences();
    activate();
    if (d.preferenceController)
        d.preferenceController->centerAndShow();
}

void MenuState::showAbout()
{
    activate();
    if (d.m_ports.windows)
        d.m_ports.windows->showAbout();
}

void MenuState::showLyricManager()
{
    activate();
    if (LyricManagerPort* manager = lyricManagerWC())
        manager->showWindow();
}

LyricManagerPort* MenuState::lyricManagerWC()
{
    if (!d._lyricManagerWC && d.m_ports.windows) {
        d._lyricManagerWC = d.m_ports.windows->createLyricManager();
        if (d._lyricManagerWC)
            d._lyricManagerWC->setLyricControl(d.lrcControl.get());
    }
    return d._lyricManagerWC.get();
}

void MenuState::showSongNotification(const NotificationPort::Track& track)
{
    if (d._notifyWC) {
        d._notifyWC->disappear();
        d._notifyWC->close();
        d._notifyWC.reset();
    }
    if (!d.m_ports.windows)
        return;
    d._notifyWC = d.m_ports.windows->createNotification(d);
    if (d._notifyWC)
        d._notifyWC->showTrack(track);
}

void MenuState::notificationCanBeRemoved()
{
    if (!d._notifyWC)
        return;
    d._notifyWC->close();
    d._notifyWC.reset();
}

void MenuState::setInfo(const QString& info)
{
    if (d.m_ports.appController)
        d.m_ports.appController->setInfo(info);
    if (d.m_ports.singleLineControl)
        d.m_ports.singleLineControl->setContent(info);
    d.m_state.setStatus(info);
    d.m_state.setLineText(info);
}

void MenuState::reloadLyricView()
{
    if (d.m_ports.appController)
        d.m_ports.appController->updateConfigs();
    if (d.m_ports.singleLineControl)
        d.m_ports.singleLineControl->updateFromSettings();
}
