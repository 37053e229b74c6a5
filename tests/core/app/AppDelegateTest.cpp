// The controller's deliberate behaviours, with recording ports and hand-fired timers; no
// player runs (the session bus is a private one).
#include "support/app/AppFixture.h"

#include "core/app/LyricAcquisition.h"
#include "core/app/LyricManagerPort.h"

namespace {

const QByteArray kLrc = "[00:01.00]one\n[00:03.00]two\n[00:05.00]three\n";

class AppStartUp : public AppFixture {};

TEST_F(AppStartUp, WithoutPlayerShowsNoSourceAndStopsTheTimer)
{
    launch();
    EXPECT_EQ(ports.sourceTitle, "No Music Source");
    EXPECT_EQ(ports.info, "iTunes is not running"); // names iTunes whatever the player
    EXPECT_EQ(app->musicSource(), 0);
    EXPECT_FALSE(app->timerRunning());
    EXPECT_EQ(timers.live(), 0);
    EXPECT_EQ(ports.viewLyric, nullptr);
    // The stored mode's window is shown at launch and the toggle offers to hide it.
    EXPECT_TRUE(ports.panelShown);
    EXPECT_FALSE(ports.stripShown);
    EXPECT_EQ(ports.toggleTitle, "Hide LRC");
    EXPECT_TRUE(app->isLrcWindowVisible());
    EXPECT_TRUE(ports.log.contains("strip.load"));
    EXPECT_FALSE(settings->isHaveLrcPlugin());
    EXPECT_EQ(AppDelegate::s(), app.get());
    app.reset();
    EXPECT_EQ(AppDelegate::s(), nullptr);
}

TEST_F(AppStartUp, SettingsReachTheStoreOnlyAtNormalExit)
{
    launch();
    app->changeLrcModeTo(1);
    EXPECT_EQ(settingsStore()->value("lyricStyle").toInt(), 0);
    app->applicationWillTerminate();
    EXPECT_EQ(settingsStore()->value("lyricStyle").toInt(), 1);
}

class StatusMenu : public AppFixture {
protected:
    void SetUp() override
    {
        AppFixture::SetUp();
        launch();
        ports.log.clear();
    }
};

TEST_F(StatusMenu, ToggleAlternatesTheItemTitle)
{
    app->toggleLyricsWindow();
    EXPECT_EQ(ports.toggleTitle, "Show LRC");
    EXPECT_FALSE(ports.panelShown);
    EXPECT_FALSE(ports.stripShown);
    app->toggleLyricsWindow();
    EXPECT_EQ(ports.toggleTitle, "Hide LRC");
    EXPECT_TRUE(ports.panelShown);
}

TEST_F(StatusMenu, ModeChangeWhileHiddenShowsTheWindowButKeepsTheFlag)
{
    app->toggleLyricsWindow(); // hidden
    app->changeLrcMode(StatusMenuItem::ModeLine);
    EXPECT_TRUE(ports.lineOn);
    EXPECT_FALSE(ports.streamOn);
    EXPECT_EQ(settings->lyricStyle(), 1);
    EXPECT_TRUE(ports.stripShown);
    EXPECT_EQ(ports.toggleTitle, "Hide LRC");
    EXPECT_FALSE(app->isLrcWindowVisible());
    app->toggleLyricsWindow(); // sets the flag and shows again: no visible change
    EXPECT_TRUE(ports.stripShown);
    EXPECT_EQ(ports.toggleTitle, "Hide LRC");
    app->toggleLyricsWindow(); // only now hides
    EXPECT_FALSE(ports.stripShown);
    EXPECT_EQ(ports.toggleTitle, "Show LRC");
}

TEST_F(StatusMenu, ChoosingTheActiveModeChangesOnlyTheCheckMarks)
{
    app->changeLrcMode(StatusMenuItem::ModeStream);
    EXPECT_TRUE(ports.streamOn);
    EXPECT_FALSE(ports.lineOn);
    EXPECT_TRUE(ports.entries("panel.").isEmpty());
    EXPECT_TRUE(ports.entries("strip.").isEmpty());
    EXPECT_EQ(settings->lyricStyle(), 0);
}

TEST_F(StatusMenu, SetInfoReachesBothDisplaysAndNoneClearsThem)
{
    app->setInfo("hello");
    EXPECT_EQ(ports.info, "hello");
    EXPECT_EQ(ports.content, "hello");
    EXPECT_EQ(app->state().status(), "hello");
    app->setInfo(QString());
    EXPECT_TRUE(ports.info.isNull());
    EXPECT_TRUE(ports.content.isNull());
    EXPECT_EQ(app->state().status(), "");
}

TEST_F(StatusMenu, TheLyricManagerIsCreatedOnceWithTheStore)
{
    app->showLyricManager();
    app->showLyricManager();
    EXPECT_EQ(ports.managers, 1);
    EXPECT_EQ(ports.entries("manager.control").size(), 1);
    EXPECT_EQ(ports.entries("manager.show").size(), 2);
    app->showPreferencePanel();
    app->showPreferencePanel();
    EXPECT_EQ(ports.preferences, 1);
}

TEST_F(StatusMenu, ReloadReachesBothDisplays)
{
    app->reloadLyricView();
    EXPECT_EQ(ports.log, (QStringList{"view.updateConfigs", "strip.updateFromSettings"}));
}

// A lyric picked by hand while no player runs is kept but not driven: no timer ticks.
TEST_F(StatusMenu, ALyricPickedByHandWithoutPlayerIsKeptNotDriven)
{
    app->setupLRCcontent(QString::fromUtf8(kLrc));
    EXPECT_TRUE(app->lrcAvailable());
    EXPECT_EQ(app->lyric()->lines(), 3);
    EXPECT_EQ(app->state().lyricOrigin(), AppState::ByHand);
    timers.fire(3);
    EXPECT_EQ(ports.viewTime, -1);
    EXPECT_TRUE(ports.log.contains("view.updateConfigs"));
    EXPECT_TRUE(QDir(lyricsFolder()).entryList(QDir::Files).isEmpty()); // no song to save for
}

// The plug-in's answers, one scripted sequence per case.
struct PluginCase {
    const char* name;
    std::function<void(QObject* delegate)> answer;
    const char* status; // "" when cleared
    int downloads;      // lyricsContents calls
    bool installed;     // a lyric drives the displays
    const char* logged; // a diagnostic containing this, or ""
};

QVariantMap item(const char* artist, const char* title)
{
    return {{"artist", artist}, {"title", title}};
}

void invoke(QObject* d, const char* method, QGenericArgument a = {}, QGenericArgument b = {})
{
    QMetaObject::invokeMethod(d, method, a, b);
}

class PluginAnswers : public AppFixture, public ::testing::WithParamInterface<PluginCase> {};

TEST_P(PluginAnswers, AreTakenAsTheyShouldBe)
{
    auto fetcher = std::make_unique<ScriptedFetcher>();
    ScriptedFetcher* plugin = fetcher.get();
    pluginToLoad = std::move(fetcher);
    launch();
    MessageCapture messages;
    app->setInfo("searching");
    app->lyricControl()->fetchLrcByArtist("Ann", "Rain"); // a miss in the folder
    ASSERT_EQ(plugin->searches, QStringList{"Ann / Rain"});
    GetParam().answer(plugin->delegate);
    EXPECT_EQ(status(), GetParam().status);
    EXPECT_EQ(plugin->downloads.size(), GetParam().downloads);
    EXPECT_EQ(app->lrcAvailable(), GetParam().installed);
    const QString logged = QString::fromLatin1(GetParam().logged);
    if (!logged.isEmpty()) {
        EXPECT_EQ(messages.lines().filter(logged).size(), 1)
            << messages.lines().join('\n').toStdString();
    }
}

const QVariantList kThree{item("A", "1"), item("B", "2"), item("C", "3")};

INSTANTIATE_TEST_SUITE_P(
    Cases, PluginAnswers,
    ::testing::Values(
        PluginCase{"OnlyTheFirstOfThreeIsDownloaded",
                   [](QObject* d) { invoke(d, "lyricsListFetched", Q_ARG(QVariantList, kThree)); },
                   "searching", 1, false, ""},
        PluginCase{"EmptyList",
                   [](QObject* d) { invoke(d, "lyricsListFetched", Q_ARG(QVariantList, {})); },
                   "lyric is not available", 0, false, ""},
        PluginCase{"SearchFailed",
                   [](QObject* d) { invoke(d, "lyricsListFetchFailed", Q_ARG(QString, {})); },
                   "lyric is not available", 0, false, ""},
        PluginCase{"DownloadFailed",
                   [](QObject* d) {
                       invoke(d, "lyricsListFetched", Q_ARG(QVariantList, kThree));
                       invoke(d, "lyricsContentFetchFailed", Q_ARG(QString, "boom"));
                   },
                   "lyric is not available", 1, false, ""},
        PluginCase{"Downloaded",
                   [](QObject* d) {
                       invoke(d, "lyricsListFetched", Q_ARG(QVariantList, kThree));
                       invoke(d, "lyricsContentFetched", Q_ARG(QString, QString::fromUtf8(kLrc)),
                              Q_ARG(QVariant, kThree[0]));
                   },
                   "", 1, true, ""},
        PluginCase{"SearchAnsweredTwice",
                   [](QObject* d) {
                       invoke(d, "lyricsListFetched", Q_ARG(QVariantList, kThree));
                       invoke(d, "lyricsListFetched", Q_ARG(QVariantList, kThree));
                   },
                   "searching", 1, false, "a search that was not asked for"},
        PluginCase{"TextWithoutTimedLines",
                   [](QObject* d) {
                       invoke(d, "lyricsListFetched", Q_ARG(QVariantList, kThree));
                       invoke(d, "lyricsContentFetched", Q_ARG(QString, "\x01garbage<html>"),
                              Q_ARG(QVariant, kThree[0]));
                   },
                   "lyric is not available", 1, false, "without any timed line"},
        PluginCase{"TextLargerThanALyric",
                   [](QObject* d) {
                       invoke(d, "lyricsListFetched", Q_ARG(QVariantList, kThree));
                       invoke(d, "lyricsContentFetched", Q_ARG(QString, QString(5 << 20, u'x')),
                              Q_ARG(QVariant, kThree[0]));
                   },
                   "lyric is not available", 1, false, "more than a lyric holds"},
        PluginCase{"ResultThatIsNotAMap",
                   [](QObject* d) {
                       invoke(d, "lyricsListFetched", Q_ARG(QVariantList, (QVariantList{42, "x"})));
                   },
                   "lyric is not available", 0, false, "not a map"}),
    [](const auto& info) { return std::string(info.param.name); });

class Plugins : public AppFixture {};

TEST_F(Plugins, TheAlbumAndDurationCallIsPreferredWhenAnswered)
{
    auto fetcher = std::make_unique<AlbumFetcher>();
    ScriptedFetcher* plugin = fetcher.get();
    pluginToLoad = std::move(fetcher);
    launch();
    app->lyricControl()->fetchLrcByArtist("Ann", "Rain");
    EXPECT_EQ(plugin->searches, QStringList{"Ann / Rain /  / 0"});
}

TEST_F(Plugins, LoadingRecordsTheKeptPluginInTheSettings)
{
    pluginToLoad = std::make_unique<ScriptedFetcher>();
    launch();
    EXPECT_TRUE(app->isLyricPluginLoaded());
    EXPECT_TRUE(settings->isHaveLrcPlugin());
    EXPECT_EQ(settings->lrcPluginInfo(), "Scripted v(1)");
    EXPECT_EQ(app->state().pluginInfo(), "Scripted v(1)");
}

TEST_F(Plugins, WithoutPluginTheInfoKeepsItsValueAndASearchOpensTheHelpPage)
{
    settings->setLrcPluginInfo("Old v(2)");
    setService(ServiceAddresses::kHelpPageKey, "https://help.example/lyrics");
    launch();
    EXPECT_FALSE(app->isLyricPluginLoaded());
    EXPECT_FALSE(settings->isHaveLrcPlugin());
    EXPECT_EQ(settings->lrcPluginInfo(), "Old v(2)");
    app->lyricControl()->fetchLrcByArtist("Ann", "Rain");
    EXPECT_EQ(status(), "lyric is not available");
    app->showSearchWindow();
    EXPECT_EQ(ports.searchWindows, 0);
    EXPECT_EQ(ports.entries("desktop.open"),
              QStringList{"desktop.open https://help.example/lyrics"});
}

TEST(UploadBody, EscapesEachValue)
{
    EXPECT_EQ(
        LyricAcquisition::uploadBody("A&B", "[00:01]x=y %1", QString::fromUtf8("T/é")),
        "lyric[artist]=A%26B&lyric[content]=%5B00%3A01%5Dx%3Dy%20%251&lyric[track]=T%2F%C3%A9");
}

TEST_F(Plugins, AnOnlineLyricIsPostedOnceByteForByteAndTheAnswerIgnored)
{
    RawHttpServer server;
    server.route("/lyrics", RawHttpServer::status(500));
    setService(ServiceAddresses::kLyricSharingKey, server.host());
    auto fetcher = std::make_unique<ScriptedFetcher>();
    ScriptedFetcher* plugin = fetcher.get();
    pluginToLoad = std::move(fetcher);
    launch();
    app->lyricControl()->fetchLrcByArtist("Ann", "Rain");
    invoke(plugin->delegate, "lyricsListFetched", Q_ARG(QVariantList, kThree));
    invoke(plugin->delegate, "lyricsContentFetched", Q_ARG(QString, "[00:01]a&b"),
           Q_ARG(QVariant, item("Ann & Co", "Rain")));
    ASSERT_TRUE(waitFor([&] { return server.requests().size() == 1; }));
    const RawHttpServer::Request request = server.requests().first();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.path, "/lyrics");
    EXPECT_EQ(request.body,
              "lyric[artist]=Ann%20%26%20Co&lyric[content]=%5B00%3A01%5Da%26b&lyric[track]=Rain");
    EXPECT_FALSE(request.headers.contains("content-type"));
    // A retry would start while the answer is handled: once no transfer is left, it would
    // have been sent.
    ASSERT_TRUE(waitFor([] { return PLHttpConfig::s().connections() == 0; }));
    EXPECT_EQ(server.requests().size(), 1);
    EXPECT_EQ(status(), "");
}

} // namespace
