#pragma once

#include "core/app/PreferencesPort.h"
#include "core/preferences/AutostartEntry.h"
#include "core/preferences/LyricAppearanceEditor.h"
#include "gui/preferences/PLTabPreferenceControl.h"
#include "gui/preferences/PLTabPreferenceDelegate.h"

#include <QFont>
#include <QHash>

class AppearancePanel;
class ColorWell;
class DesktopPort;
class QCheckBox;
class QFontDialog;
class QLabel;
class QLineEdit;
class QVBoxLayout;
class ReadingGroup;
class ServiceAddresses;
class Settings;

// The application's preferences window: General (switches, feedback), Appearance (fonts,
// colours, Default and Apply) and Lyric (saving switches, the plug-in, the lyrics folder, help
// pages). Switches write their setting at once; colours wait for Apply, and the displays take
// up the new look (colours, the strip's background) on Apply or Default.
class PreferenceController : public PLTabPreferenceControl,
                             public PLTabPreferenceDelegate,
                             public PreferencesPort {
    Q_OBJECT
public:
    enum Panel { General = 0, Appearance = 1, Lyric = 2 };

    // The plug-in's description is the settings' lrcPluginInfo, read as the Lyric panel opens.
    PreferenceController(Settings& settings, const ServiceAddresses& addresses,
                         DesktopPort& desktop, QWidget* parent = nullptr);
    ~PreferenceController() override;

    void centerAndShow() override;

    int countOfPreferencePanels() const override { return 3; }
    QString titleForPreferencePanelAt(int index) const override;
    QIcon imageForPreferencePanelAt(int index) const override;
    QWidget* panelViewForPreferencePanelAt(int index) const override;
    void prefViewWillAppear(QWidget* view, int index) override;
    void prefViewDidAppear(QWidget* view, int index) override;

    void updateLyricAppearancePanel();
    void updateFontField();
    void updateFontFieldSingleLine();
    void onLyricStyleDefault();
    void onLyricStyleApply();
    void onLyricFontChoose();
    void onLyricFontChooseLineMode();
    void changeFont(const QFont& font);
    void onRevealLyricsFolder();
    void onFeedBack();
    void onDownloadJukora();
    void onTutorialDownloadLRC();

    QLineEdit* fontField() const;
    QLineEdit* fontFieldLineMode() const;
    ColorWell* colorWellNormal() const;
    ColorWell* colorWellHighlight() const;
    QCheckBox* switchFor(const QString& property) const { return m_switches.value(property); }
    // "Start Versewick when I log in", and the line that says why it could not be changed.
    QCheckBox* startAtLoginSwitch() const { return m_startAtLogin; }
    QLabel* startAtLoginError() const { return m_startAtLoginError; }
    QLabel* pluginInfoLabel() const { return m_pluginInfoLabel; }
    ReadingGroup* readingGroup() const { return m_reading; }
    QFontDialog* fontDialog() const { return m_fontDialog; }
    bool isModifyStreamFont() const { return m_editor.isModifyStreamFont(); }

Q_SIGNALS:
    // The displays should read their look from the settings again (Default, Apply). The
    // application connects it to its lyric view reload.
    void reloadLyricViewRequested();

private:
    QWidget* buildGeneralPanel();
    QWidget* buildLyricPanel();
    void addSwitches(QWidget* owner, QVBoxLayout* layout, int panel);
    void updateSwitches();
    void updatePluginInfo();
    void addStartAtLogin(QWidget* owner, QVBoxLayout* layout);
    void updateStartAtLogin();
    void openFontDialog();

    Settings& m_settings;
    const ServiceAddresses& m_addresses;
    DesktopPort& m_desktop;
    LyricAppearanceEditor m_editor;
    AutostartEntry m_autostart;

    // The panels and dialogs are owned by this window (Qt parent).
    QWidget* m_prefGeneralView = nullptr;
    AppearancePanel* m_prefAppearanceView = nullptr;
    QWidget* m_prefLyric = nullptr;
    QHash<QString, QCheckBox*> m_switches;
    QLabel* m_pluginInfoLabel = nullptr;
    ReadingGroup* m_reading = nullptr;
    QCheckBox* m_startAtLogin = nullptr;
    QLabel* m_startAtLoginError = nullptr;
    QFontDialog* m_fontDialog = nullptr;
    QFont m_fontBeforeChoice; // put back when the font dialog is cancelled
};
