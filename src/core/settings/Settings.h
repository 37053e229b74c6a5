#pragma once

#include "core/settings/PLSettings.h"

#include <QColor>
#include <QFont>

#include <optional>

// The application's settings. Reached through AppSetting(); values live in memory while the
// application runs and reach the store on synchronize() (at normal exit).
class Settings : public PLSettings {
    Q_OBJECT
    Q_PROPERTY(bool traditionchinese READ traditionchinese WRITE setTraditionchinese)
    Q_PROPERTY(int lyricCellHeight READ lyricCellHeight WRITE setLyricCellHeight)
    Q_PROPERTY(QVariant lyricFont READ lyricFontValue WRITE setLyricFontValue)
    Q_PROPERTY(QColor lyricNormalColor READ lyricNormalColor WRITE setLyricNormalColor)
    Q_PROPERTY(QColor lyricHighlightColor READ lyricHighlightColor WRITE setLyricHighlightColor)
    Q_PROPERTY(bool isSaveLRCtoDisk READ isSaveLRCtoDisk WRITE setIsSaveLRCtoDisk)
    Q_PROPERTY(bool isSaveLRCtoTrackTags READ isSaveLRCtoTrackTags WRITE setIsSaveLRCtoTrackTags)
    Q_PROPERTY(int lyricStyle READ lyricStyle WRITE setLyricStyle)
    Q_PROPERTY(QVariant fontSingleLine READ fontSingleLineValue WRITE setFontSingleLineValue)
    Q_PROPERTY(bool isShowSingleLineBG READ isShowSingleLineBG WRITE setIsShowSingleLineBG)
    Q_PROPERTY(
        bool isShowChangeSongNotify READ isShowChangeSongNotify WRITE setIsShowChangeSongNotify)
    Q_PROPERTY(bool isHaveLrcPlugin READ isHaveLrcPlugin WRITE setIsHaveLrcPlugin)
    Q_PROPERTY(QString lrcPluginInfo READ lrcPluginInfo WRITE setLrcPluginInfo)
    Q_PROPERTY(bool launchAndQuitWithiTunes READ launchAndQuitWithiTunes WRITE
                   setLaunchAndQuitWithiTunes NOTIFY launchAndQuitWithiTunesChanged)

public:
    static constexpr int kVersion = 7;
    static constexpr char kPluginBundleName[] = "versewick-iTunesPlugin.bundle";

    // The process's one instance, created on first use from the user's settings file.
    static Settings& singleton();
    // What singleton() does, on a given store: initialise (load or seed, migrate, count),
    // flush, then switch to cached mode. For tests and tools that bring their own store.
    static std::unique_ptr<Settings> launch(std::unique_ptr<QSettings> store);
    static void setupRoutes();

    int version() const override { return kVersion; }
    void setupDefaults() override;
    void migrateFromOldVersion(int storedVersion) override;
    void restoreLyricViewDefaults();

    // Where the helper bundle is copied: <library>/iTunes/iTunes Plug-ins/.
    static QString pluginFolderPath();

    bool traditionchinese() const { return m_traditionchinese; }
    void setTraditionchinese(bool v) { m_traditionchinese = v; }
    int lyricCellHeight() const { return m_lyricCellHeight; }
    void setLyricCellHeight(int v) { m_lyricCellHeight = v; }
    // Absent until set; reads as the system font meanwhile.
    QFont lyricFont() const { return m_lyricFont.value_or(defaultFont(14)); }
    void setLyricFont(const QFont& font) { m_lyricFont = font; }
    QColor lyricNormalColor() const { return m_lyricNormalColor; }
    void setLyricNormalColor(const QColor& c) { m_lyricNormalColor = c; }
    QColor lyricHighlightColor() const { return m_lyricHighlightColor; }
    void setLyricHighlightColor(const QColor& c) { m_lyricHighlightColor = c; }
    bool isSaveLRCtoDisk() const { return m_isSaveLRCtoDisk; }
    void setIsSaveLRCtoDisk(bool v) { m_isSaveLRCtoDisk = v; }
    bool isSaveLRCtoTrackTags() const { return m_isSaveLRCtoTrackTags; }
    void setIsSaveLRCtoTrackTags(bool v) { m_isSaveLRCtoTrackTags = v; }
    int lyricStyle() const { return m_lyricStyle; }
    void setLyricStyle(int v) { m_lyricStyle = v; }
    QFont fontSingleLine() const { return m_fontSingleLine.value_or(defaultFont(30)); }
    void setFontSingleLine(const QFont& font) { m_fontSingleLine = font; }
    bool isShowSingleLineBG() const { return m_isShowSingleLineBG; }
    void setIsShowSingleLineBG(bool v) { m_isShowSingleLineBG = v; }
    bool isShowChangeSongNotify() const { return m_isShowChangeSongNotify; }
    void setIsShowChangeSongNotify(bool v) { m_isShowChangeSongNotify = v; }
    bool isHaveLrcPlugin() const { return m_isHaveLrcPlugin; }
    void setIsHaveLrcPlugin(bool v) { m_isHaveLrcPlugin = v; }
    QString lrcPluginInfo() const { return m_lrcPluginInfo; }
    void setLrcPluginInfo(const QString& v) { m_lrcPluginInfo = v; }
    bool launchAndQuitWithiTunes() const { return m_launchAndQuitWithiTunes; }
    // Turning it on (re)installs the helper bundle; turning it off removes nothing.
    void setLaunchAndQuitWithiTunes(bool flag);

    // The font properties as the framework sees them: an invalid value while absent.
    QVariant lyricFontValue() const;
    void setLyricFontValue(const QVariant& v);
    QVariant fontSingleLineValue() const;
    void setFontSingleLineValue(const QVariant& v);

Q_SIGNALS:
    void launchAndQuitWithiTunesWillChange();
    void launchAndQuitWithiTunesChanged();

private:
    Settings(std::unique_ptr<QSettings> store,
             std::shared_ptr<const PLSettingPropertyList> properties)
        : PLSettings(std::move(store), std::move(properties))
    {
    }
    static QFont defaultFont(double size);

    bool m_traditionchinese = false;
    int m_lyricCellHeight = 0;
    std::optional<QFont> m_lyricFont;
    QColor m_lyricNormalColor;
    QColor m_lyricHighlightColor;
    bool m_isSaveLRCtoDisk = false;
    bool m_isSaveLRCtoTrackTags = false;
    int m_lyricStyle = 0;
    std::optional<QFont> m_fontSingleLine;
    bool m_isShowSingleLineBG = false;
    bool m_isShowChangeSongNotify = false;
    bool m_isHaveLrcPlugin = false;
    QString m_lrcPluginInfo;
    bool m_launchAndQuitWithiTunes = false;
};

Settings& AppSetting();
