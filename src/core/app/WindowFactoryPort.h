#pragma once

#include <QString>

#include <memory>

class LyricManagerPort;
class NotificationPort;
class PreferencesPort;
class SearchWindowPort;

// Creates the application's windows on first use and shows the standard panels; the windows
// act on the controller the front end built. An implementation without windows (a terminal)
// answers null and does nothing.
class WindowFactoryPort {
public:
    virtual ~WindowFactoryPort() = default;
    virtual std::unique_ptr<SearchWindowPort> createSearchWindow() = 0;
    virtual std::unique_ptr<LyricManagerPort> createLyricManager() = 0;
    virtual std::unique_ptr<PreferencesPort> createPreferences() = 0;
    virtual std::unique_ptr<NotificationPort> createNotification() = 0;
    virtual void showAbout() = 0;
    // Opens the lyric editor on the song playing, with its lyric or with the text given;
    // nothing where there are no windows.
    virtual void showLyricEditor() {}
    virtual void showLyricEditorWith(const QString& /*text*/) {}
    // Brings the application forward, ignoring other applications.
    virtual void activateApplication() = 0;
};
