// The controller's road from an MPRIS song change to the displays: cleared before every
// search, the service's lyric values with them, the menu following the followed player, a
// song known only by its file, and the song-change notification.
#include "core/app/AppState.h"
#include "support/PlayerProcess.h"
#include "support/RoundTrip.h"
#include "support/app/AppFixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace {

class MprisSongRoad : public AppFixture {
protected:
    std::unique_ptr<PlayerProcess> player(const QString& name, const QJsonObject& song)
    {
        const QString list = home.write(name + ".json", QJsonDocument(QJsonArray{song}).toJson());
        auto p = std::make_unique<PlayerProcess>(QStringList{"--as", "mpris", "--mpris-name", name,
                                                             "--mpris-identity", name.toUpper(),
                                                             "--playlist", list});
        return p;
    }
    static void run(PlayerProcess& p, const QString& command)
    {
        p.send(command);
        ASSERT_TRUE(p.waitEvent(command.section(u' ', 0, 0)));
    }
};

TEST_F(MprisSongRoad, ASongWithoutLyricClearsTheDisplaysAndTheServiceValues)
{
    writeStored("Ann--Rain", "[00:00.00]old line\n[00:30.00]later\n");
    settings->setIsShowChangeSongNotify(true);
    auto a = player("alpha", {{"artist", "Ann"}, {"title", "Rain"}, {"duration", 60}});
    run(*a, "play");
    ScriptedFetcher* plugin = launchFollowingMpris();
    ASSERT_TRUE(waitFor([&] { return app->lrcAvailable(); }));
    timers.fire();
    ASSERT_EQ(ports.content, "old line");
    ASSERT_GE(app->state().lineIndex(), 0);
    EXPECT_EQ(ports.notifications, 1) << "MPRIS songs are announced too";

    run(*a, "mpris-meta title Snow");
    ASSERT_TRUE(waitFor([&] { return plugin->searches.contains("Ann / Snow"); }));
    EXPECT_EQ(ports.viewLyric, nullptr);
    EXPECT_EQ(ports.content, "fetching lyrics..."); // the strip shows the message instead
    EXPECT_EQ(app->state().lineIndex(), -1);
    EXPECT_EQ(app->state().lyricOrigin(), -1);
    EXPECT_EQ(ports.notifications, 2);
}

TEST_F(MprisSongRoad, TheMenuFollowsTheFollowedPlayerAndAStoppedOneIsNotFollowed)
{
    auto a = player("alpha", {{"artist", "Ann"}, {"title", "Rain"}});
    auto b = player("beta", {{"artist", "Ann"}, {"title", "Rain"}});
    launchFollowingMpris();
    // Both only stopped: nothing is followed.
    ASSERT_TRUE(mprisPlayersSettled({"alpha", "beta"}));
    timers.fire();
    EXPECT_EQ(app->musicSource(), 0);
    run(*a, "play");
    run(*a, "pause");
    ASSERT_TRUE(waitFor([&] { return app->state().sourceName() == "ALPHA"; }));
    run(*b, "play");
    ASSERT_TRUE(waitFor([&] {
        timers.fire();
        return app->state().sourceName() == "BETA";
    }));
    EXPECT_EQ(ports.sourceTitle, "BETA");
}

TEST_F(MprisSongRoad, ASongKnownOnlyByItsFileIsLookedUpBesideIt)
{
    QDir().mkpath(home.filePath("music"));
    home.write("music/tune.lrc", "[00:00.00]beside line\n[00:30.00]later\n");
    const QString url = QUrl::fromLocalFile(home.filePath("music/tune.flac")).toString();
    auto a = player("alpha", {{"url", url}});
    run(*a, "play");
    launchFollowingMpris();
    ASSERT_TRUE(waitFor([&] { return app->lrcAvailable(); }));
    EXPECT_EQ(app->state().lyricOrigin(), AppState::BesideAudio);
    timers.fire();
    EXPECT_EQ(ports.panelTitle, "tune-");
}

} // namespace
