#include "core/app/LyricPluginLoader.h"

#include "support/QtPrinters.h"
#include "support/TempHome.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

QString mkdir(const TempHome& home, const QString& relative)
{
    const QString path = home.filePath(relative);
    QDir().mkpath(path);
    return path;
}

TEST(LyricPluginLoader, SearchFoldersAreTheBuiltInThenEveryDataLocation)
{
    TempHome home;
    ScopedUserFolders folders(home);
    const QByteArray savedDirs = qgetenv("XDG_DATA_DIRS");
    qputenv("XDG_DATA_DIRS", (home.filePath("a") + u':' + home.filePath("b")).toUtf8());
    const QStringList expected{
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../plugins")),
        folders.dataHome() + QStringLiteral("/Versewick/PlugIns"),
        home.filePath("a") + QStringLiteral("/Versewick/PlugIns"),
        home.filePath("b") + QStringLiteral("/Versewick/PlugIns")};
    EXPECT_EQ(LyricPluginLoader::searchFolders(), expected);
    qputenv("XDG_DATA_DIRS", savedDirs);
}

TEST(LyricPluginLoader, MissingFoldersYieldNothing)
{
    TempHome home;
    EXPECT_TRUE(LyricPluginLoader::allBundles({home.filePath("none"), QString()}).isEmpty());
    const auto loaded = LyricPluginLoader::loadLyricPlugin({});
    EXPECT_FALSE(loaded.fetcher);
    EXPECT_EQ(loaded.info, QString());
}

TEST(LyricPluginLoader, WalksEveryFolderInNameOrderAtAnyDepthKeepingDuplicates)
{
    TempHome home;
    for (const char* dir : {"f1/z.bundle", "f1/a.bundle/Contents/PlugIns/inner.bundle",
                            "f1/B.bundle", "f1/sub/deep/d.bundle", "f2/e.bundle"})
        mkdir(home, QString::fromLatin1(dir));
    home.write("f1/file.bundle", "a plain file is an entry too");
    const QString f1 = home.filePath("f1"), f2 = home.filePath("f2");
    const QStringList once{f1 + "/B.bundle",
                           f1 + "/a.bundle",
                           f1 + "/a.bundle/Contents/PlugIns/inner.bundle",
                           f1 + "/file.bundle",
                           f1 + "/sub/deep/d.bundle",
                           f1 + "/z.bundle"};
    EXPECT_EQ(LyricPluginLoader::allBundles({f1, home.filePath("missing"), f2, f1}),
              once + QStringList{f2 + "/e.bundle"} + once);
}

class BundleExtension : public ::testing::TestWithParam<std::pair<const char*, bool>> {};

TEST_P(BundleExtension, OnlyTheExactLowerCaseExtensionIsTaken)
{
    TempHome home;
    const QString name = QString::fromLatin1(GetParam().first);
    mkdir(home, "f/" + name);
    const QStringList found = LyricPluginLoader::allBundles({home.filePath("f")});
    EXPECT_EQ(found, GetParam().second ? QStringList{home.filePath("f/" + name)} : QStringList());
}

INSTANTIATE_TEST_SUITE_P(
    Names, BundleExtension,
    ::testing::Values(std::pair{"x.bundle", true}, std::pair{"x.y.bundle", true},
                      std::pair{"x.Bundle", false}, std::pair{"x.BUNDLE", false},
                      std::pair{"x.bundles", false}, std::pair{"x.bundle.old", false},
                      std::pair{"xbundle", false}));

// The plug-in bundles of a scenario, "<folder>/<plug-in>" each, blank-separated: a bundle in
// the folder holding a copy of a test plug-in, a file that is no library ("broken"), or
// nothing ("empty").
struct Scenario {
    const char* label;
    const char* bundles;
    const char* keptName; // objectName of the fetcher kept, "" for none
    const char* info;
    const char* instantiated; // the plug-ins' log of instance() calls
    int diagnostics;
};

class LoadScenario : public ::testing::TestWithParam<Scenario> {};

TEST_P(LoadScenario, LoadsEveryBundleAndKeepsTheLast)
{
    const Scenario& scenario = GetParam();
    TempHome home;
    const QString log = home.filePath("instances.log");
    qputenv("VERSEWICK_TEST_PLUGIN_LOG", log.toUtf8());
    QStringList folders;
    int n = 0;
    for (const QString& placed : QString::fromLatin1(scenario.bundles).split(u' ')) {
        const QString dir = placed.section(u'/', 0, 0), plugin = placed.section(u'/', 1);
        const QString folder = home.filePath(dir);
        if (!folders.contains(folder))
            folders << folder;
        // A numbered prefix keeps the walk order the scenario's order within a folder.
        const QString bundle =
            mkdir(home, QStringLiteral("%1/%2-%3.bundle").arg(dir).arg(n++).arg(plugin));
        if (plugin == QLatin1String("broken")) {
            home.write(bundle.mid(home.path().size() + 1) + "/broken.so", "not a library");
        } else if (plugin != QLatin1String("empty")) {
            ASSERT_TRUE(QFile::copy(QStringLiteral(TEST_PLUGINS "/%1.bundle/%1.so").arg(plugin),
                                    bundle + u'/' + plugin + ".so"));
        }
    }
    MessageCapture messages;
    const auto loaded = LyricPluginLoader::loadLyricPlugin(LyricPluginLoader::allBundles(folders));
    ASSERT_EQ(bool(loaded.fetcher), *scenario.keptName != 0);
    if (loaded.fetcher) {
        EXPECT_EQ(loaded.fetcher->objectName(), QLatin1String(scenario.keptName));
        EXPECT_EQ(loaded.fetcher->parent(), nullptr) << "the loader owns what it keeps";
    }
    EXPECT_EQ(loaded.info, QLatin1String(scenario.info));
    QFile file(log);
    (void)file.open(QIODevice::ReadOnly);
    EXPECT_EQ(file.readAll(), QByteArray(scenario.instantiated));
    const QStringList skips =
        messages.lines().filter(QStringLiteral("error on load lyric plug-in "));
    EXPECT_EQ(skips.size(), scenario.diagnostics) << skips.join(u'\n').toStdString();
    qunsetenv("VERSEWICK_TEST_PLUGIN_LOG");
}

INSTANTIATE_TEST_SUITE_P(
    Scenarios, LoadScenario,
    ::testing::Values(Scenario{"One", "builtin/demo", "Demo", "Demo v(3)", "Demo\n", 0},
                      Scenario{"UsersFoundLaterIsKept", "builtin/demo user/user", "User",
                               "User v(7)", "Demo\nUser\n", 0},
                      Scenario{"LastWinsWhateverItIs", "builtin/user user/demo", "Demo",
                               "Demo v(3)", "User\nDemo\n", 0},
                      Scenario{"BrokenOnesAreSkipped",
                               "builtin/demo user/broken user/noinstance user/empty user/nothing",
                               "Demo", "Demo v(3)", "Demo\nNothing\n", 4},
                      Scenario{"NothingLoadable", "user/broken user/noinstance", "", "", "", 2}),
    [](const auto& info) { return std::string(info.param.label); });

} // namespace
