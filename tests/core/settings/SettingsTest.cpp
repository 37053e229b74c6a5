#include "core/settings/Settings.h"
#include "core/settings/KeyedArchive.h"
#include "core/settings/NSFontTransformer.h"

#include "support/QtPrinters.h"
#include "support/TempHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontInfo>

#include <gtest/gtest.h>

namespace {

class AppSettings : public ::testing::Test {
protected:
    TempHome home;
    ScopedUserFolders folders{home};
    QString file = home.filePath(QStringLiteral("Versewick.ini"));

    std::unique_ptr<Settings> launch()
    {
        return Settings::launch(std::make_unique<QSettings>(file, QSettings::IniFormat));
    }
    QVariant raw(const QString& key)
    {
        QSettings settings(file, QSettings::IniFormat);
        return settings.value(key);
    }
    bool stored(const QString& key)
    {
        QSettings settings(file, QSettings::IniFormat);
        return settings.contains(key);
    }
    // A store of the given version in which every setting differs from its default and from
    // the empty value, so that whatever a migration keeps or resets shows.
    void stampVersion(int version)
    {
        QSettings settings(file, QSettings::IniFormat);
        settings.setValue("PLSettings", version);
        settings.setValue("traditionchinese", false);
        settings.setValue("launchAndQuitWithiTunes", false);
        settings.setValue("isSaveLRCtoDisk", false);
        settings.setValue("isSaveLRCtoTrackTags", true);
        settings.setValue("lyricCellHeight", 77);
        settings.setValue("lyricStyle", 1);
        settings.setValue("isShowSingleLineBG", false);
        settings.setValue("isShowChangeSongNotify", true);
        settings.setValue("lyricNormalColor",
                          KeyedArchive::archivedDataWithRootObject(QColor(Qt::red)));
        settings.setValue("lyricHighlightColor",
                          KeyedArchive::archivedDataWithRootObject(QColor(Qt::blue)));
        settings.setValue("lyricFont", QVariantMap{{"name", "DejaVu Serif"}, {"size", 21.0}});
        settings.setValue("fontSingleLine", QVariantMap{{"name", "DejaVu Serif"}, {"size", 41.0}});
    }
};

TEST_F(AppSettings, FirstLaunchWritesEveryDefault)
{
    auto s = launch();
    EXPECT_TRUE(s->isFirstLaunched());
    EXPECT_FALSE(s->isDynamicProperties());
    // Every registered setting and the framework's keys are in the store, so a value that
    // reads as false or 0 was written, not merely missing.
    for (const char* key :
         {"traditionchinese", "launchAndQuitWithiTunes", "isSaveLRCtoDisk", "isSaveLRCtoTrackTags",
          "lyricCellHeight", "lyricFont", "lyricNormalColor", "lyricHighlightColor", "lyricStyle",
          "fontSingleLine", "isShowSingleLineBG", "isShowChangeSongNotify", "PLSettings",
          "kSettingInitDate", "PLSettingInitCount"})
        EXPECT_TRUE(stored(key)) << key;
    // The scalar defaults, as the store's text holds them.
    for (const QString& entry :
         QStringLiteral("traditionchinese=true launchAndQuitWithiTunes=false isSaveLRCtoDisk=true "
                        "isSaveLRCtoTrackTags=false lyricCellHeight=5 lyricStyle=0 "
                        "isShowSingleLineBG=true isShowChangeSongNotify=true PLSettings=7 "
                        "PLSettingInitCount=1")
             .split(u' '))
        EXPECT_EQ(raw(entry.section(u'=', 0, 0)).toString(), entry.section(u'=', 1))
            << entry.toStdString();
    const QVariantMap font = raw("lyricFont").toMap();
    EXPECT_EQ(font.value("name").toString(), NSFontTransformer::systemFont().family());
    EXPECT_EQ(font.value("size").toDouble(), 14.0);
    EXPECT_EQ(raw("fontSingleLine").toMap().value("size").toDouble(), 30.0);
    EXPECT_EQ(KeyedArchive::unarchiveObjectWithData(raw("lyricNormalColor").toByteArray())
                  .value<QColor>(),
              QColor::fromRgbF(0.5f, 0.5f, 0.5f));
    EXPECT_EQ(KeyedArchive::unarchiveObjectWithData(raw("lyricHighlightColor").toByteArray())
                  .value<QColor>(),
              QColor(Qt::white));
    EXPECT_FALSE(s->isHaveLrcPlugin());
    EXPECT_FALSE(stored("isHaveLrcPlugin"));
    EXPECT_FALSE(stored("lrcPluginInfo"));
}

TEST_F(AppSettings, ChangesReachTheStoreOnlyOnSynchronize)
{
    {
        auto s = launch();
        s->setLyricStyle(1);
        s->setLyricCellHeight(9);
        s->setLyricHighlightColor(QColor(10, 20, 30));
        s->setIsHaveLrcPlugin(true);
        EXPECT_EQ(raw("lyricStyle").toInt(), 0);
        s->synchronize();
    }
    {
        auto s = launch();
        EXPECT_EQ(s->initedCount(), 2);
        EXPECT_EQ(s->lyricStyle(), 1);
        EXPECT_EQ(s->lyricCellHeight(), 9);
        EXPECT_EQ(s->lyricHighlightColor(), QColor(10, 20, 30));
        EXPECT_FALSE(s->isHaveLrcPlugin()); // memory only
        s->setLyricStyle(0);                // changed, then the process dies: not kept
    }
    EXPECT_EQ(launch()->lyricStyle(), 1);
}

TEST_F(AppSettings, StoreOlderThanFiveGetsAllDefaults)
{
    stampVersion(4);
    auto s = launch();
    EXPECT_TRUE(s->traditionchinese());
    EXPECT_TRUE(s->isSaveLRCtoDisk());
    EXPECT_FALSE(s->isSaveLRCtoTrackTags());
    EXPECT_EQ(s->lyricCellHeight(), 5);
    EXPECT_EQ(s->lyricStyle(), 0);
    EXPECT_TRUE(s->isShowSingleLineBG());
    EXPECT_EQ(s->lyricNormalColor(), QColor::fromRgbF(0.5f, 0.5f, 0.5f));
    EXPECT_EQ(s->lyricHighlightColor(), QColor(Qt::white));
    EXPECT_EQ(s->lyricFont(), NSFontTransformer::systemFont(14));
    EXPECT_EQ(s->fontSingleLine(), NSFontTransformer::systemFont(30));
    EXPECT_EQ(raw("lyricCellHeight").toInt(), 5);
    EXPECT_EQ(raw("PLSettings").toInt(), 7);
}

class EmptiedVersions : public AppSettings, public ::testing::WithParamInterface<int> {};

TEST_P(EmptiedVersions, StartFromEmptyValues)
{
    stampVersion(GetParam());
    auto s = launch();
    EXPECT_EQ(s->lyricCellHeight(), 0);
    EXPECT_EQ(s->lyricStyle(), 0);
    EXPECT_FALSE(s->isSaveLRCtoTrackTags());
    EXPECT_FALSE(s->isShowChangeSongNotify());
    EXPECT_FALSE(s->lyricNormalColor().isValid());
    EXPECT_FALSE(s->lyricHighlightColor().isValid());
    EXPECT_FALSE(stored("lyricFont"));
    EXPECT_FALSE(stored("fontSingleLine"));
    EXPECT_EQ(s->lyricFont(), NSFontTransformer::systemFont());
    EXPECT_EQ(s->fontSingleLine(), NSFontTransformer::systemFont());
    EXPECT_EQ(raw("PLSettings").toInt(), 7);
}

INSTANTIATE_TEST_SUITE_P(Versions, EmptiedVersions, ::testing::Values(5, 6, 8, 70));

TEST_F(AppSettings, ASettingsObjectKeepsItsPropertiesWhenTheRegistryIsReplaced)
{
    auto s = launch();
    s->setLyricStyle(1);
    PLSettings::initializeClass(nullptr); // another settings class is initialised
    s->synchronize();
    EXPECT_EQ(raw("lyricStyle").toInt(), 1);
    auto again = launch();
    EXPECT_EQ(again->lyricStyle(), 1);
    EXPECT_EQ(again->lyricCellHeight(), 5);
}

// Faces survive storing: the stored name is the face's full name.
struct Face {
    const char* family;
    const char* style;
    const char* fullName;
};

void PrintTo(const Face& face, std::ostream* os)
{
    *os << face.fullName;
}

class FontFaces : public AppSettings, public ::testing::WithParamInterface<Face> {};

TEST_P(FontFaces, AreStoredByFullNameAndReadBack)
{
    const Face face = GetParam();
    ASSERT_TRUE(QFontDatabase::hasFamily(face.family)) << "fonts-dejavu-core is needed";
    const QFont font = QFontDatabase::font(face.family, face.style, 17);
    {
        auto s = launch();
        s->setLyricFont(font);
        s->synchronize();
    }
    EXPECT_EQ(raw("lyricFont").toMap().value("name").toString(), face.fullName);
    const QFont back = launch()->lyricFont();
    EXPECT_EQ(back.family(), face.family);
    EXPECT_EQ(back.pointSizeF(), 17.0);
    EXPECT_EQ(back.bold(), font.bold());
    EXPECT_EQ(back.style(), font.style());
    EXPECT_EQ(QFontInfo(back).styleName(), QFontInfo(font).styleName());
}

INSTANTIATE_TEST_SUITE_P(
    DejaVu, FontFaces,
    ::testing::Values(Face{"DejaVu Sans", "Book", "DejaVu Sans"},
                      Face{"DejaVu Sans", "Bold", "DejaVu Sans Bold"},
                      Face{"DejaVu Sans", "Oblique", "DejaVu Sans Oblique"},
                      Face{"DejaVu Sans", "Bold Oblique", "DejaVu Sans Bold Oblique"},
                      Face{"DejaVu Sans Mono", "Bold", "DejaVu Sans Mono Bold"},
                      Face{"DejaVu Serif", "Italic", "DejaVu Serif Italic"}));

TEST_F(AppSettings, FontFlagsSelectAFaceAndFamilyNamesReadAsTheRegularFace)
{
    QFont bold(QStringLiteral("DejaVu Sans"), 12);
    bold.setBold(true);
    EXPECT_EQ(NSFontTransformer::faceName(bold), QStringLiteral("DejaVu Sans Bold"));
    // A value stored before faces were kept names the family alone.
    const QFont old =
        NSFontTransformer::reverseTransformFont(QVariantMap{{"name", "DejaVu Serif"}, {"size", 9}})
            .value<QFont>();
    EXPECT_EQ(old.family(), QStringLiteral("DejaVu Serif"));
    EXPECT_FALSE(old.bold());
    EXPECT_FALSE(old.italic());
    EXPECT_EQ(old.pointSizeF(), 9.0);
    // Neither a style the family lacks nor a family that merely begins the name is a face.
    for (const char* name : {"DejaVu Sans Shiny", "DejaVu SansBold", "DejaVu Sans Italic"})
        EXPECT_EQ(NSFontTransformer::reverseTransformFont(QVariantMap{{"name", name}, {"size", 9}}),
                  QVariant(NSFontTransformer::systemFont()))
            << name;
}

TEST_F(AppSettings, RestoringTheLookKeepsTheMode)
{
    auto s = launch();
    s->setLyricStyle(1);
    s->setLyricCellHeight(20);
    s->setIsShowSingleLineBG(false);
    s->setIsSaveLRCtoDisk(false);
    s->setLyricNormalColor(QColor(Qt::red));
    s->restoreLyricViewDefaults();
    EXPECT_EQ(s->lyricStyle(), 1);
    EXPECT_FALSE(s->isSaveLRCtoDisk());
    EXPECT_EQ(s->lyricCellHeight(), 5);
    EXPECT_TRUE(s->isShowSingleLineBG());
    EXPECT_EQ(s->lyricNormalColor(), QColor::fromRgbF(0.5f, 0.5f, 0.5f));
}

TEST_F(AppSettings, FontsOfUnknownFamiliesReadAsTheSystemFont)
{
    {
        QSettings settings(file, QSettings::IniFormat);
        settings.setValue("PLSettings", 7);
        settings.setValue("lyricFont", QVariantMap{{"name", "No Such Font 123"}, {"size", 22.0}});
        settings.setValue("fontSingleLine", QStringLiteral("not a dictionary"));
    }
    auto s = launch();
    EXPECT_EQ(s->lyricFont(), NSFontTransformer::systemFont());
    EXPECT_EQ(s->fontSingleLine(), NSFontTransformer::systemFont());
    const QString family = NSFontTransformer::systemFont().family();
    EXPECT_EQ(NSFontTransformer::reverseTransformFont(
                  QVariantMap{{"name", family}, {"size", QVariant::fromValue(nullptr)}}),
              QVariant(NSFontTransformer::systemFont()));
    EXPECT_FALSE(NSFontTransformer::transformFont(QStringLiteral("x")).isValid());
}

TEST_F(AppSettings, DamagedFileNeverStopsTheStartAndIsRepaired)
{
    QFile damaged(file);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("[General]\nPLSettings=7\nlyricCellHeight=tall\nisSaveLRCtoDisk=maybe\n"
                  "lyricNormalColor=@ByteArray(garbage\nlyricFont=@Variant(\\0\\0\\0\\x7f\\xff\n"
                  "lyricStyle=@Variant(\\0\\0\\0\n\xff\xfe\x00\x01[[[\n=\n");
    damaged.close();
    {
        auto s = launch();
        EXPECT_EQ(s->lyricCellHeight(), 0);
        EXPECT_FALSE(s->isSaveLRCtoDisk());
        EXPECT_EQ(s->lyricFont(), NSFontTransformer::systemFont());
        s->setLyricCellHeight(6);
        s->synchronize();
    }
    EXPECT_EQ(raw("lyricCellHeight").toInt(), 6);
    EXPECT_EQ(raw("isSaveLRCtoDisk").toString(), QStringLiteral("false"));
    EXPECT_EQ(launch()->lyricCellHeight(), 6);
}

TEST_F(AppSettings, PluginOptionInstallsTheBundleAndNeverRemovesIt)
{
    auto s = launch();
    const QString installed = Settings::pluginFolderPath() + "versewick-iTunesPlugin.bundle";
    EXPECT_EQ(Settings::pluginFolderPath(),
              folders.dataHome() + QStringLiteral("/iTunes/iTunes Plug-ins/"));
    EXPECT_FALSE(QFileInfo::exists(installed));

    int willChange = 0, changed = 0;
    QObject::connect(s.get(), &Settings::launchAndQuitWithiTunesWillChange, [&] { ++willChange; });
    QObject::connect(s.get(), &Settings::launchAndQuitWithiTunesChanged, [&] { ++changed; });
    QDir().mkpath(installed);
    QFile stale(installed + "/stale.txt");
    ASSERT_TRUE(stale.open(QIODevice::WriteOnly));
    stale.close();

    s->setLaunchAndQuitWithiTunes(true);
    EXPECT_TRUE(QFileInfo::exists(installed + "/Contents/Info.plist"));
    EXPECT_FALSE(QFileInfo::exists(installed + "/stale.txt"));
    s->setLaunchAndQuitWithiTunes(false);
    EXPECT_TRUE(QFileInfo::exists(installed + "/Contents/Info.plist"));
    EXPECT_EQ(willChange, 2);
    EXPECT_EQ(changed, 2);

    // A stored yes copies the bundle afresh at every start.
    s->setLaunchAndQuitWithiTunes(true);
    s->synchronize();
    QDir(installed).removeRecursively();
    launch();
    EXPECT_TRUE(QFileInfo::exists(installed + "/Contents/Info.plist"));
}

TEST_F(AppSettings, InstallingNeverFollowsALinkOutOfThePluginFolder)
{
    const QString outside = home.filePath("precious");
    QDir().mkpath(outside);
    QFile keep(outside + "/keep.txt");
    ASSERT_TRUE(keep.open(QIODevice::WriteOnly));
    keep.close();
    QDir().mkpath(Settings::pluginFolderPath());
    ASSERT_TRUE(
        QFile::link(outside, Settings::pluginFolderPath() + "versewick-iTunesPlugin.bundle"));
    launch()->setLaunchAndQuitWithiTunes(true);
    EXPECT_TRUE(QFileInfo::exists(outside + "/keep.txt"));
}

} // namespace
