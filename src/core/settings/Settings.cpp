#include "core/settings/Settings.h"

#include "core/foundation/AppPaths.h"
#include "core/foundation/SystemLog.h"
#include "core/settings/NSFontTransformer.h"

#include <QDir>

namespace {
const QColor kGrey = QColor::fromRgbF(0.5f, 0.5f, 0.5f);
const QColor kWhite = QColor::fromRgbF(1.0f, 1.0f, 1.0f);
} // namespace

Settings& AppSetting()
{
    return Settings::singleton();
}

Settings& Settings::singleton()
{
    static std::unique_ptr<Settings> instance = launch(PLSettingsStore::defaultSettings());
    return *instance;
}

std::unique_ptr<Settings> Settings::launch(std::unique_ptr<QSettings> store)
{
    // The class is initialised once; its objects keep its list even when another settings
    // class replaces the process-wide registry afterwards.
    static const std::shared_ptr<const PLSettingPropertyList> properties =
        PLSettings::initializeClass(&Settings::setupRoutes);
    std::unique_ptr<Settings> settings(new Settings(std::move(store), properties));
    settings->init();
    settings->synchronize();
    settings->setIsDynamicProperties(false);
    return settings;
}

void Settings::setupRoutes()
{
    setupProperty(QStringLiteral("traditionchinese"), PLSettingType::Bool);
    setupProperty(QStringLiteral("launchAndQuitWithiTunes"), PLSettingType::Bool);
    setupProperty(QStringLiteral("isSaveLRCtoDisk"), PLSettingType::Bool);
    setupProperty(QStringLiteral("isSaveLRCtoTrackTags"), PLSettingType::Bool);
    setupProperty(QStringLiteral("lyricCellHeight"), PLSettingType::Int);
    setupPropertyWithTransformer(QStringLiteral("lyricFont"), NSFontTransformer::staticMetaObject);
    setupPropertyWithArchivedType(QStringLiteral("lyricNormalColor"));
    setupPropertyWithArchivedType(QStringLiteral("lyricHighlightColor"));
    setupProperty(QStringLiteral("lyricStyle"), PLSettingType::Int);
    setupPropertyWithTransformer(QStringLiteral("fontSingleLine"),
                                 NSFontTransformer::staticMetaObject);
    setupProperty(QStringLiteral("isShowSingleLineBG"), PLSettingType::Bool);
    setupProperty(QStringLiteral("isShowChangeSongNotify"), PLSettingType::Bool);
}

QFont Settings::defaultFont(double size)
{
    return NSFontTransformer::systemFont(size);
}

void Settings::setupDefaults()
{
    setTraditionchinese(true);
    setLyricCellHeight(5);
    setLyricFont(defaultFont(14));
    setLyricNormalColor(kGrey);
    setLyricHighlightColor(kWhite);
    setIsSaveLRCtoDisk(true);
    setIsSaveLRCtoTrackTags(false);
    setLyricStyle(0);
    setFontSingleLine(defaultFont(30));
    setIsShowSingleLineBG(true);
    setIsShowChangeSongNotify(true);
}

void Settings::restoreLyricViewDefaults()
{
    setLyricCellHeight(5);
    setLyricFont(defaultFont(14));
    setLyricNormalColor(kGrey);
    setLyricHighlightColor(kWhite);
    setFontSingleLine(defaultFont(30));
    setIsShowSingleLineBG(true);
}

void Settings::migrateFromOldVersion(int storedVersion)
{
    if (storedVersion < 5)
        setupDefaults();
    // For stored versions 5, 6 and above 7 this writes the fields' initial, empty values:
    // those settings start again from zero, which is what such an upgrade is meant to do.
    _writePropertiesToDefaults();
}

QString Settings::pluginFolderPath()
{
    return foundation::userLibraryPath() + QStringLiteral("/iTunes/iTunes Plug-ins/");
}

void Settings::setLaunchAndQuitWithiTunes(bool flag)
{
    Q_EMIT launchAndQuitWithiTunesWillChange();
    foundation::systemLog(QStringLiteral("update setLaunchAndQuitWithiTunes"));
    m_launchAndQuitWithiTunes = flag;
    if (flag) {
        const QString source = foundation::resourcePath(QLatin1String(kPluginBundleName));
        const QString folder = pluginFolderPath();
        const QString target = folder + QLatin1String(kPluginBundleName);
        QDir().mkpath(folder);
        foundation::removeRecursively(target);
        foundation::copyRecursively(source, target); // failures are not reported
    }
    Q_EMIT launchAndQuitWithiTunesChanged();
}

QVariant Settings::lyricFontValue() const
{
    return m_lyricFont ? QVariant(*m_lyricFont) : QVariant();
}

void Settings::setLyricFontValue(const QVariant& v)
{
    if (v.typeId() == QMetaType::QFont)
        m_lyricFont = v.value<QFont>();
}

QVariant Settings::fontSingleLineValue() const
{
    return m_fontSingleLine ? QVariant(*m_fontSingleLine) : QVariant();
}

void Settings::setFontSingleLineValue(const QVariant& v)
{
    if (v.typeId() == QMetaType::QFont)
        m_fontSingleLine = v.value<QFont>();
}
