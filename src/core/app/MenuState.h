#pragma once

#include "app/NotificationPort.h"
#include "app/StatusMenuPort.h"

#include <QString>

class AppDelegate;
class LyricManagerPort;

// The status menu's actions and the display state: showing and hiding the lyric window, the
// two modes, the windows opened from the menu, and the fan-out of messages and settings to
// both displays.
class MenuState {
public:
    explicit MenuState(AppDelegate& d)
        : d(d)
    {
    }

    void setModeItems();
    void toggleLyricsWindow();
    void showMainWindow();
    void hideMainWindow();
    void changeLrcMode(StatusMenuPort::Item sender);
    void changeLrcModeTo(int mode);
    void showPreferencePanel();
    void showAbout();
    void showLyricManager();
    LyricManagerPort* lyricManagerWC();
    void showSongNotification(const NotificationPort::Track& track);
    void notificationCanBeRemoved();
    void setInfo(const QString& info);
    void reloadLyricView();

private:
    void activate();

    AppDelegate& d;
};
