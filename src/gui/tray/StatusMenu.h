#pragma once

#include "core/app/StatusMenuItem.h"

#include <QObject>
#include <QPointer>

#include <memory>

class AppDelegate;
class AppState;
class QAction;
class QMenu;
class QSystemTrayIcon;
class SyncControls;

// The status menu: the active source's name, "Show LRC"/"Hide LRC", the two display modes
// with their check marks, the offset nudges, search lyrics, the lyric manager, preferences, about
// and quit. In the system tray when there is one; the lyric panel offers the same menu on a right
// click.
class StatusMenu : public QObject {
    Q_OBJECT
public:
    explicit StatusMenu(QObject* parent = nullptr);
    ~StatusMenu() override;

    // The controller the items act on; set once it exists. Without one the items do nothing.
    void setDelegate(AppDelegate* delegate);
    // Puts the icon in the system tray when a tray is there; false when there is none.
    bool showInTray();

    // Follows the source's name, the show/hide title and the mode check marks from now on.
    void observe(const AppState& state);
    void setSourceTitle(const QString& title);
    void setToggleTitle(const QString& title);
    void setModeStreamOn(bool on);
    void setModeLineOn(bool on);

    QMenu* menu() const { return m_menu.get(); }
    QSystemTrayIcon* trayIcon() const { return m_tray.get(); }
    QAction* sourceItem() const { return m_source; }
    QAction* toggleItem() const { return m_toggle; }
    QAction* modeStreamItem() const { return m_modeStream; }
    QAction* modeLineItem() const { return m_modeLine; }
    QAction* earlierItem() const { return m_earlier; }
    QAction* laterItem() const { return m_later; }
    QAction* resetOffsetItem() const { return m_resetOffset; }
    QAction* searchItem() const { return m_search; }
    QAction* lyricManagerItem() const { return m_manager; }
    QAction* preferencesItem() const { return m_preferences; }
    QAction* aboutItem() const { return m_about; }
    QAction* quitItem() const { return m_quit; }

private:
    QAction* addItem(const QString& title, void (AppDelegate::*action)());
    void showMenuItems();
    QAction* addSyncItem(const QString& title, void (SyncControls::*action)());

    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_tray;
    QPointer<AppDelegate> m_delegate;
    QPointer<const AppState> m_state;
    QAction* m_source = nullptr; // actions are owned by the menu
    QAction* m_toggle = nullptr;
    QAction* m_modeStream = nullptr;
    QAction* m_modeLine = nullptr;
    QAction* m_earlier = nullptr;
    QAction* m_later = nullptr;
    QAction* m_resetOffset = nullptr;
    QAction* m_search = nullptr;
    QAction* m_manager = nullptr;
    QAction* m_preferences = nullptr;
    QAction* m_about = nullptr;
    QAction* m_quit = nullptr;
};
