#pragma once

#include "core/app/AppPorts.h"
#include "core/app/NotificationPort.h"
#include "core/app/StatusMenuItem.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class AppState;
class LyricControl;
class LyricManagerPort;
class PreferencesPort;
class Settings;

// The status menu's actions and the display state: showing and hiding the lyric window, the
// two modes, the windows opened from the menu, and the fan-out of messages and settings to
// both displays. It owns the windows it opens.
class MenuState : public QObject {
    Q_OBJECT
public:
    // How the windows that need more than the ports are made.
    struct Makers {
        std::function<std::unique_ptr<NotificationPort>()> notification;
        // The lyric store the manager window edits; may be null.
        std::function<LyricControl*()> store;
    };

    MenuState(Settings& settings, AppState& state, AppPorts ports, Makers makers);
    ~MenuState() override;

    void setModeItems();
    // At launch the lyric window counts as hidden, so the first toggle shows it.
    void startHidden() { m_isLrcWindowVisible = false; }
    void toggleLyricsWindow();
    void showMainWindow();
    void hideMainWindow();
    void changeLrcMode(StatusMenuItem sender);
    void changeLrcModeTo(int mode);
    void showPreferencePanel();
    void showAbout();
    void showLyricManager();
    LyricManagerPort* lyricManagerWC();
    void notificationCanBeRemoved();
    void reloadLyricView();
    bool isLrcWindowVisible() const { return m_isLrcWindowVisible; }

public Q_SLOTS:
    // A message for both displays ("fetching lyrics..."); empty clears it.
    void setInfo(const QString& info);
    void showSongNotification(const NotificationPort::Track& track);

private:
    void activate();

    Settings& m_settings;
    AppState& m_state;
    AppPorts m_ports;
    Makers m_makers;
    bool m_isLrcWindowVisible = false;
    std::unique_ptr<NotificationPort> m_notifyWC;
    std::unique_ptr<LyricManagerPort> m_lyricManagerWC;
    std::unique_ptr<PreferencesPort> m_preferenceController;
};
