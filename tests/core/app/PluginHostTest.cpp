// PluginHost alone: a missing plug-in, and searches one at a time or all at once.
#include "support/app/AppFixture.h"

#include "core/app/AppState.h"
#include "core/app/PluginHost.h"

namespace {

class PluginHostTest : public ::testing::Test {
protected:
    TempHome home;
    std::unique_ptr<Settings> settings = Settings::launch(
        std::make_unique<QSettings>(home.filePath("settings.ini"), QSettings::IniFormat));
    AppState state;
    QObject answers;
    ScriptedFetcher* fetcher = nullptr;

    std::unique_ptr<PluginHost> host(bool withPlugin)
    {
        auto made = std::make_unique<PluginHost>(
            *settings, state,
            PluginHost::Loading{[] { return QStringList(); },
                                [this, withPlugin](const QStringList&) {
                                    LyricPluginLoader::Loaded loaded;
                                    if (withPlugin) {
                                        auto scripted = std::make_unique<ScriptedFetcher>();
                                        fetcher = scripted.get();
                                        loaded.fetcher = std::move(scripted);
                                        loaded.info = QStringLiteral("Scripted v(1)");
                                    }
                                    return loaded;
                                }},
            answers);
        made->install();
        return made;
    }
};

TEST_F(PluginHostTest, WithoutAPlugInASearchSaysTheLyricIsNotAvailable)
{
    auto plugin = host(false);
    QStringList status;
    QObject::connect(plugin.get(), &PluginHost::statusChanged,
                     [&](const QString& text) { status << text; });
    plugin->search("Ann", "Rain", {}, 0, false);
    EXPECT_EQ(status, QStringList{"lyric is not available"});
    EXPECT_FALSE(settings->isHaveLrcPlugin());
}

TEST_F(PluginHostTest, OneAtATimeANewerSongWaitsAndAStaleAnswerIsDropped)
{
    auto plugin = host(true);
    EXPECT_EQ(fetcher->delegate, &answers);
    EXPECT_EQ(state.pluginInfo(), "Scripted v(1)");
    plugin->songChanging(1);
    plugin->search("Ann", "Rain", {}, 0, true);
    plugin->songChanging(2);
    plugin->search("Bo", "Snow", {}, 0, true);
    EXPECT_EQ(fetcher->searches, QStringList{"Ann / Rain"});
    EXPECT_FALSE(plugin->acceptList({})); // for the earlier song: dropped, the next goes out
    EXPECT_EQ(fetcher->searches, (QStringList{"Ann / Rain", "Bo / Snow"}));
    EXPECT_TRUE(plugin->acceptList({}));
}

TEST_F(PluginHostTest, OtherwiseEverySearchGoesOutAndEveryAnswerIsTaken)
{
    auto plugin = host(true);
    plugin->search("Ann", "Rain", {}, 0, false);
    plugin->songChanging(2);
    plugin->search("Bo", "Snow", {}, 0, false);
    EXPECT_EQ(fetcher->searches.size(), 2);
    EXPECT_TRUE(plugin->acceptList({}));
    EXPECT_TRUE(plugin->acceptList({}));
}

} // namespace
