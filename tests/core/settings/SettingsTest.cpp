#include "settings/Settings.h"
#include "settings/NSFontTransformer.h"

#include "support/QtPrinters.h"
#include "support/TempHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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
    void stampVersion(int version)
    {
        QSettings settings(file, QSettings::IniFormat);
        settings.setValue("PLSettings", version);
        settings.setValue("lyricCellHeight", 77);
        settings.setValue("isSaveLRCtoDisk", false);
    }
};

TEST_F(AppSettings, FirstLaunchWritesEveryDefault)
{
    auto s = launch();
    EXPECT_TRUE(s->isFirstLaunched());
    EXPECT_FALSE(s->isDynamicProperties());
    EXPECT_EQ(raw("traditionchinese").toBool(), true);
    EXPECT_EQ(raw("launchAndQuitWithiTunes").toBool(), false);
    EXPECT_EQ(raw("isSaveLRCtoDisk").toBool(), true);
    EXPECT_EQ(raw("isSaveLRCtoTrackTags").toBool(), false);
    EXPECT_EQ(raw("lyricCellHeight").toInt(), 5);
    EXPECT_EQ(raw("lyricStyle").toInt(), 0);
    EXPECT_EQ(raw("isShowSingleLineBG").toBool(), true);
    EXPECT_EQ(raw("isShowChangeSongNotify").toBool(), true);
    EXPECT_EQ(raw("PLSettings").toInt(), 7);
    EXPECT_EQ(raw("PLSettingInitCount").toInt(), 1);
    const QVariantMap font = raw("lyricFont").toMap();
    EXPECT_EQ(font.value("name").toString(), NSFontTransformer::systemFont().family());
    EXPECT_EQ(font.value("size").toDouble(), 14.0);
    EXPECT_EQ(raw("fontSingleLine").toMap().value("size").toDouble(), 30.0);
    EXPECT_EQ(raw("lyricNormalColor").typeId(), QMetaType::QByteArray);
    EXPECT_EQ(s->lyricNormalColor(), QColor::fromRgbF(0.5f, 0.5f, 0.5f));
    EXPECT_EQ(s->lyricHighlightColor(), QColor(Qt::white));
    EXPECT_FALSE(s->isHaveLrcPlugin());
    EXPECT_FALSE(raw("isHaveLrcPlugin").isValid());
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
    EXPECT_EQ(s->lyricCellHeight(), 5);
    EXPECT_TRUE(s->isSaveLRCtoDisk());
    EXPECT_TRUE(s->traditionchinese());
    EXPECT_EQ(s->lyricFont().pointSizeF(), 14.0);
    EXPECT_EQ(raw("PLSettings").toInt(), 7);
}

class EmptiedVersions : public AppSettings, public ::testing::WithParamInterface<int> {};

TEST_P(EmptiedVersions, StartFromEmptyValues)
{
    stampVersion(GetParam());
    auto s = launch();
    EXPECT_EQ(s->lyricCellHeight(), 0);
    EXPECT_FALSE(s->isSaveLRCtoDisk());
    EXPECT_FALSE(s->traditionchinese());
    EXPECT_FALSE(s->isShowChangeSongNotify());
    EXPECT_FALSE(s->lyricNormalColor().isValid());
    EXPECT_FALSE(s->lyricHighlightColor().isValid());
    EXPECT_FALSE(raw("lyricFont").isValid());
    EXPECT_EQ(s->lyricFont(), NSFontTransformer::systemFont());
    EXPECT_EQ(s->fontSingleLine(), NSFontTransformer::systemFont());
    EXPECT_EQ(raw("PLSettings").toInt(), 7);
}

INSTANTIATE_TEST_SUITE_P(Versions, EmptiedVersions, ::testing::Values(5, 6, 8, 70));

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
