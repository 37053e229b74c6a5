#pragma once

#include "core/app/LyricEditing.h"
#include "core/app/WindowFactoryPort.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

class AppDelegate;
class LyricEditorWindow;
class QMessageBox;
class ServiceAddresses;
class iTunesControl;

// Creates the application's windows as widgets. The preferences window comes from a function
// the program supplies (it may answer null: no preferences window).
class DesktopWindowFactory : public WindowFactoryPort {
public:
    using PreferencesFactory = std::function<std::unique_ptr<PreferencesPort>()>;

    DesktopWindowFactory(ServiceAddresses& addresses, PreferencesFactory preferences);
    ~DesktopWindowFactory() override;

    std::unique_ptr<SearchWindowPort> createSearchWindow() override;
    std::unique_ptr<LyricManagerPort> createLyricManager() override;
    std::unique_ptr<PreferencesPort> createPreferences() override;
    std::unique_ptr<NotificationPort> createNotification() override;
    void showAbout() override;
    void showLyricEditor() override;
    void showLyricEditorWith(const QString& text) override;
    // Nothing to do: each window raises and activates itself when shown from the menu, and
    // the floating displays never take the focus.
    void activateApplication() override {}

    // The lyric manager asks this controller and iTunes (not owned) for the song now playing.
    void setDelegate(AppDelegate* delegate);
    void setITunes(iTunesControl* itunes) { m_itunes = itunes; }
    QMessageBox* aboutBox() const { return m_about.get(); }

private:
    ServiceAddresses& m_addresses;
    PreferencesFactory m_preferences;
    QPointer<AppDelegate> m_delegate;
    QPointer<iTunesControl> m_itunes;
    std::unique_ptr<QMessageBox> m_about;
    void openEditor(const QString& text);

    std::unique_ptr<LyricEditorWindow> m_editor;
    // The song the editor was last opened on, shared with its save and publish.
    std::shared_ptr<std::optional<lyricediting::EditedSong>> m_edited =
        std::make_shared<std::optional<lyricediting::EditedSong>>();
};
