#include "core/lyric/Lyric.h"
#include "core/platform/Clock.h"
#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"
#include "core/sources/JukoraControl.h"
#include "core/sources/MusicSourceController.h"
#include "core/sources/MusicSourceQQMusic.h"
#include "core/sources/iTunesControl.h"
#include "core/store/LyricControl.h"

#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"
#include "support/RoundTrip.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QElapsedTimer>

#include <algorithm>

#include "support/CallbackTarget.h"

#include <gtest/gtest.h>

namespace {

using Target = CallbackTarget;

class ITunesDelegate : public iTunesControlDelegate {
public:
    QList<bool> lifeCycle;
    QList<std::optional<itunes::Track>> tracks;
    void iTunesCB_AppLifeCycleChanged(bool alive) override { lifeCycle << alive; }
    void iTunesCB_TrackDidChange(const std::optional<itunes::Track>& t) override { tracks << t; }
};

Workspace& workspace()
{
    return Workspace::sharedWorkspace();
}
DistributedNotificationCenter& center()
{
    return DistributedNotificationCenter::defaultCenter();
}

// The three sources of the notification players, each with its recorder.
struct AllSources {
    MusicSourceQQMusic qq{workspace(), center()};
    JukoraControl jukora{workspace(), center()};
    iTunesControl itunes{workspace(), center()};
    ITunesDelegate delegate;
    Target qqTarget, jukoraTarget;
    AllSources()
    {
        qqTarget.running = [this] { return qq.isRunning(); };
        jukoraTarget.running = [this] { return jukora.isRunning(); };
        qq.setCallBack(&qqTarget, "songChanged", "appStateChanged");
        jukora.setCallBack(&jukoraTarget, "songChanged", "appStateChanged");
        itunes.setDelegate(&delegate);
    }
};

class Sources : public ::testing::Test {
protected:
    quint16 port = closedPort();
    void SetUp() override
    {
        ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "needs a session bus";
        qputenv("VERSEWICK_QQMUSIC_PORT", QByteArray::number(port));
        settleBus(); // a test of another suite may have left its players' departures behind
    }
    void TearDown() override
    {
        settleBus();
        platform::setClock({});
    }
    // The players of a test leave the bus after it ends; their departures must reach this
    // process now, not the sources of the next test (the tests share one bus when the binary
    // runs whole).
    static void settleBus()
    {
        QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
        EXPECT_TRUE(waitFor([&] {
            const QStringList names = bus->registeredServiceNames().value();
            return std::none_of(names.begin(), names.end(), [&](const QString& name) {
                return !name.startsWith(u':') && name != QLatin1String("org.freedesktop.DBus") &&
                       bus->serviceOwner(name).value() !=
                           QDBusConnection::sessionBus().baseService();
            });
        }));
        EXPECT_TRUE(busSignalsDelivered());
    }
    QStringList playerArgs(const QString& players, QStringList more = {})
    {
        return QStringList{"--as", players, "--qqmusic-port", QString::number(port)} + more;
    }
};

TEST_F(Sources, RegisteringWithNoPlayerReportsNotRunningOnce)
{
    AllSources all;
    EXPECT_EQ(all.qqTarget.appStates, QList<bool>{false});
    EXPECT_EQ(all.jukoraTarget.appStates, QList<bool>{false});
    EXPECT_EQ(all.qq.track(), nullptr);
    EXPECT_EQ(all.qq.location(), 0.0f);
    EXPECT_FALSE(all.jukora.item());
    all.itunes.updateAppLifeState();
    EXPECT_EQ(all.delegate.lifeCycle, QList<bool>{false});
    EXPECT_EQ(all.itunes.playerPosition(), 0.0f);
    EXPECT_FALSE(all.itunes.currentTrack());
}

TEST_F(Sources, AFreshQQMusicTrackIsEmptyNotMissing)
{
    MusicSourceQQMusic qq(workspace(), center());
    EXPECT_EQ(qq.name(), QStringLiteral("QQ音乐"));
    EXPECT_EQ(qq.messageIdentifier(), qq.bundleIdentifier());
    EXPECT_TRUE(qq.MusicSource::track()->title().isNull());
    EXPECT_EQ(qq.MusicSource::track()->length(), 0);
    EXPECT_EQ(&MusicSourceController::sharedController(),
              &MusicSourceController::sharedController());
    MusicSourceController::sharedController().registerMusicSource(&qq);
}

TEST_F(Sources, StartAndQuitInEveryOrder)
{
    AllSources all;
    auto& [qq, jukora, itunes, delegate, qqTarget, jukoraTarget] = all;

    // Rounds are a minute apart on the seam's clock, so the relaunch guard stays out of it.
    double now = 5000.0;
    platform::setClock([&] { return now; });
    PlayerProcess player(playerArgs("itunes,qqmusic,jukora", {"--not-running"}));
    // Every launch order, each quitting in another order (rotated by one).
    QStringList order{"itunes", "jukora", "qqmusic"};
    int rounds = 0;
    do {
        for (const QString& p : order) {
            player.send("launch " + p);
            ASSERT_TRUE(player.waitEvent("launched", p));
        }
        ASSERT_TRUE(waitFor([&] {
            return qq.isRunning() && jukora.isRunning() && !delegate.lifeCycle.isEmpty() &&
                   delegate.lifeCycle.back();
        })) << order.join(' ').toStdString();
        for (const QString& p : order.mid(1) + order.mid(0, 1)) {
            player.send("quit " + p);
            ASSERT_TRUE(player.waitEvent("quit", p));
        }
        ASSERT_TRUE(waitFor(
            [&] { return !qq.isRunning() && !jukora.isRunning() && !delegate.lifeCycle.back(); }));
        now += 60;
        ++rounds;
    } while (std::next_permutation(order.begin(), order.end()));
    ASSERT_EQ(rounds, 6);
    QList<bool> expected;
    for (int i = 0; i < rounds; ++i)
        expected << true << false;
    EXPECT_EQ(delegate.lifeCycle, expected);
    // The ready notice probes again: each QQMusic launch reports twice.
    EXPECT_EQ(qqTarget.appStates.count(true), 2 * rounds);
    EXPECT_EQ(qqTarget.appStates.size(), 1 + 3 * rounds);
    EXPECT_EQ(jukoraTarget.appStates.count(true), rounds);
}

TEST_F(Sources, JukoraReportsAQuitTwice)
{
    JukoraControl jukora(workspace(), center());
    Target target;
    target.running = [&] { return jukora.isRunning(); };
    jukora.setCallBack(&target, "songChanged", "appStateChanged");
    PlayerProcess player(playerArgs("jukora"));
    ASSERT_TRUE(waitFor([&] { return target.appStates.size() == 2; }));
    EXPECT_EQ(target.appStates, (QList<bool>{false, true}));

    player.send("play");
    player.send("pause");
    player.send("seek 12");
    ASSERT_TRUE(player.waitEvent("seek"));
    EXPECT_NEAR(jukora.location(), 12.15f, 0.01f);
    EXPECT_EQ(jukora.item()->title(), QStringLiteral("Lanterns on the Quay"));

    player.send("next");
    ASSERT_TRUE(waitFor([&] { return target.songChanges == 1; }));
    EXPECT_EQ(jukora.cachedItem()->title(), QStringLiteral("Rain"));

    player.send("quit jukora");
    ASSERT_TRUE(waitFor([&] { return target.appStates.size() == 4; }));
    EXPECT_EQ(target.appStates, (QList<bool>{false, true, false, false}));

    // A song change while not alive leaves no cached song.
    center().post("com.morvane.Jukora.songchanged", "com.morvane.Jukora");
    ASSERT_TRUE(waitFor([&] { return target.songChanges == 2; }));
    EXPECT_FALSE(jukora.cachedItem());
}

TEST_F(Sources, JukoraSongNeedsTitleAndArtist)
{
    PlayerProcess player(playerArgs("jukora", {"--not-running"}));
    player.send("add Someone |  | Album | 100");
    player.send("add  | Nameless | Album | 100");
    player.send("launch");
    ASSERT_TRUE(player.waitEvent("launched"));
    JukoraControl jukora(workspace(), center());
    Target target;
    jukora.setCallBack(&target, "songChanged", "appStateChanged");
    ASSERT_TRUE(jukora.isRunning());
    EXPECT_TRUE(jukora.item());
    for (int i = 0; i < 3; ++i) {
        player.send("next");
        ASSERT_TRUE(player.waitEvent("next"));
    }
    EXPECT_FALSE(jukora.item()) << "an empty artist";
    player.send("previous");
    ASSERT_TRUE(player.waitEvent("previous"));
    EXPECT_FALSE(jukora.item()) << "an empty title";
}

class QQMusicProbe : public Sources, public ::testing::WithParamInterface<bool> {};

TEST_P(QQMusicProbe, CountsOnlyAServiceThatNamesVersewick)
{
    const bool named = GetParam();
    PlayerProcess player(
        playerArgs("qqmusic", named ? QStringList{} : QStringList{"--qqmusic-without-name"}));
    MusicSourceQQMusic qq(workspace(), center());
    Target target;
    target.running = [&] { return qq.isRunning(); };
    qq.setCallBack(&target, "songChanged", "appStateChanged");
    // The bus may take the subscription after a first notice: post until one is seen.
    ASSERT_TRUE(waitFor([&] {
        if (target.appStates.size() >= 2)
            return true;
        center().post("com.tencent.QQMusicMac.ready", "com.tencent.QQMusicMac");
        return waitFor([&] { return target.appStates.size() >= 2; }, 200);
    }));
    ASSERT_TRUE(postedNoticesDelivered()); // the answers to every ready notice posted above
    EXPECT_EQ(target.appStates, QList<bool>(target.appStates.size(), named));
    // The ready notice from another sender is not QQMusic's.
    const auto before = target.appStates.size();
    center().post("com.tencent.QQMusicMac.ready", "org.example.impostor");
    ASSERT_TRUE(postedNoticesDelivered());
    EXPECT_EQ(target.appStates.size(), before);
}

INSTANTIATE_TEST_SUITE_P(Names, QQMusicProbe, ::testing::Bool());

struct AllCase {
    const char* answer;
    const char* artist;
    const char* album;
    float stored;
};

class QQMusicAnswers : public Sources, public ::testing::WithParamInterface<AllCase> {};

TEST_P(QQMusicAnswers, FourPartsOrNothing)
{
    PlayerProcess player(playerArgs("qqmusic"));
    player.send("qq-all Artist_$x$_Title_$x$_Album_$x$_61.5");
    ASSERT_TRUE(player.waitEvent("qq-all"));
    MusicSourceQQMusic qq(workspace(), center());
    qq.setCallBack(nullptr, {}, {});
    ASSERT_TRUE(qq.isRunning());
    qq.updateSongInfo();
    EXPECT_NEAR(qq.location(), 61.65f, 1e-4f);

    player.send(QStringLiteral("qq-all ") + QString::fromUtf8(GetParam().answer));
    ASSERT_TRUE(player.waitEvent("qq-all"));
    qq.updateSongInfo();
    EXPECT_EQ(qq.track()->artist(), QString::fromUtf8(GetParam().artist));
    EXPECT_EQ(qq.track()->album(), QString::fromUtf8(GetParam().album));
    EXPECT_NEAR(qq.location(), GetParam().stored + 0.15f, 1e-4f);
}

INSTANTIATE_TEST_SUITE_P(
    Answers, QQMusicAnswers,
    ::testing::Values(AllCase{"A_$x$_B_$x$_C", "Artist", "Album", 61.5f},
                      AllCase{"A_$x$_B_$x$_C_$x$_1_$x$_E", "Artist", "Album", 61.5f},
                      AllCase{"Other_$x$_Song_$x$__$x$_7", "Other", "", 7.0f},
                      AllCase{"Other_$x$_Song_$x$_X_$x$_soon", "Other", "X", 0.0f}));

TEST_F(Sources, ASilentQQMusicServiceBlocksForFiveSecondsOnly)
{
    PlayerProcess player(playerArgs("qqmusic"));
    player.send("qq-all A_$x$_B_$x$_C_$x$_20");
    ASSERT_TRUE(player.waitEvent("qq-all"));
    // The player's launch and its notices come over the bus, not its output: they must reach
    // this process before the source exists, or the source probes the service again once it
    // is silent.
    ASSERT_TRUE(busSignalsDelivered());
    ASSERT_TRUE(peerAnswered("com.tencent.QQMusicMac"));
    MusicSourceQQMusic qq(workspace(), center());
    qq.setCallBack(nullptr, {}, {});
    ASSERT_TRUE(qq.isRunning());
    EXPECT_NEAR(qq.location(), 20.15f, 1e-4f);
    player.send("qq-silent on");
    ASSERT_TRUE(player.waitEvent("qq-silent"));
    QElapsedTimer timer;
    timer.start();
    EXPECT_NEAR(qq.location(), 20.15f, 1e-4f); // the old value is kept
    EXPECT_GE(timer.elapsed(), 4500);
    EXPECT_LT(timer.elapsed(), 8000);
}

class ITunesVersions : public Sources,
                       public ::testing::WithParamInterface<std::pair<const char*, float>> {};

TEST_P(ITunesVersions, PositionWidthFollowsTheVersion)
{
    PlayerProcess player(playerArgs("itunes", {"--itunes-version", GetParam().first}));
    player.send("play");
    player.send("pause");
    player.send("seek 83.7");
    ASSERT_TRUE(player.waitEvent("seek"));
    ITunesDelegate delegate;
    iTunesControl itunes(workspace(), center());
    itunes.setDelegate(&delegate);
    EXPECT_NEAR(itunes.playerPosition(), GetParam().second, 1e-3f);
    EXPECT_FALSE(itunes.isPlaying());
}

INSTANTIATE_TEST_SUITE_P(Versions, ITunesVersions,
                         ::testing::Values(std::pair{"10.7", 83.4f}, std::pair{"11.0.2", 83.4f},
                                           std::pair{"11.0.3", 84.1f}, std::pair{"11.0.10", 84.1f},
                                           std::pair{"12.1", 84.1f}));

TEST(iTunesVersion, RunsOfDigitsCompareAsNumbers)
{
    EXPECT_GT(iTunesControl::compareVersions("11.0.10", "11.0.3"), 0);
    EXPECT_EQ(iTunesControl::compareVersions("11.0.3", "11.0.3"), 0);
    EXPECT_LT(iTunesControl::compareVersions("11.0.2", "11.0.3"), 0);
    EXPECT_LT(iTunesControl::compareVersions("", "11.0.3"), 0);
}

TEST_F(Sources, ITunesTrackChangesAndTheStoppedNotice)
{
    PlayerProcess player(playerArgs("itunes"));
    ITunesDelegate delegate;
    iTunesControl itunes(workspace(), center());
    itunes.setDelegate(&delegate);
    player.send("play");
    ASSERT_TRUE(waitFor([&] { return delegate.tracks.size() == 1; }));
    ASSERT_TRUE(delegate.tracks[0]);
    EXPECT_EQ(delegate.tracks[0]->name(), QStringLiteral("Lanterns on the Quay"));
    EXPECT_EQ(delegate.tracks[0]->databaseID(), 1);
    EXPECT_TRUE(itunes.isPlaying());
    player.send("stop");
    ASSERT_TRUE(waitFor([&] { return delegate.tracks.size() == 2; }));
    EXPECT_FALSE(delegate.tracks[1]);
    // The same notice from another sender is ignored.
    center().post("com.apple.iTunes.playerInfo", "org.example.other",
                  {{"Player State", "Stopped"}});
    ASSERT_TRUE(postedNoticesDelivered());
    EXPECT_EQ(delegate.tracks.size(), 2);
}

TEST_F(Sources, TheTrackTagHoldsALyricBlock)
{
    PlayerProcess player(playerArgs("itunes"));
    player.send("play");
    ASSERT_TRUE(player.waitEvent("play"));
    iTunesControl itunes(workspace(), center());
    auto track = itunes.currentTrack();
    ASSERT_TRUE(track && track->exists());
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[00:01.00]over the bus"));
    LyricControl store;
    store.writeLrcToTrack(lyric, *track, false, true);
    EXPECT_TRUE(itunes.currentTrack()->lyrics().endsWith(QStringLiteral("=QVEOF=")));
    EXPECT_TRUE(itunes.currentTrack()->lyrics().startsWith(QStringLiteral("over the bus\n")));
}

TEST_F(Sources, APlayerThatIsGoneReadsAsAbsent)
{
    std::optional<itunes::Track> track;
    {
        PlayerProcess player(playerArgs("itunes"));
        player.send("play");
        ASSERT_TRUE(player.waitEvent("play"));
        iTunesControl itunes(workspace(), center());
        track = itunes.currentTrack();
        ASSERT_TRUE(track->exists());
    }
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(track->exists());
    EXPECT_EQ(track->name(), QString());
    EXPECT_EQ(track->databaseID(), 0);
    EXPECT_LT(timer.elapsed(), 1000);
}

TEST_F(Sources, RelaunchWithinTwoTenthsOfASecondIsClosed)
{
    double now = 1000.0;
    platform::setClock([&] { return now; });
    PlayerProcess player(playerArgs("itunes"));
    ITunesDelegate delegate;
    iTunesControl itunes(workspace(), center());
    itunes.setDelegate(&delegate);
    const QString id = QStringLiteral("com.apple.iTunes");

    Q_EMIT workspace().didTerminateApplication(id);
    now += 0.1;
    Q_EMIT workspace().willLaunchApplication(id);
    Q_EMIT workspace().didLaunchApplication(id);
    EXPECT_EQ(delegate.lifeCycle, (QList<bool>{false, false}));
    EXPECT_TRUE(player.waitEvent("quit", "itunes")); // it was told to quit

    delegate.lifeCycle.clear();
    now += 50;
    Q_EMIT workspace().didTerminateApplication(id);
    now += 0.3;
    Q_EMIT workspace().willLaunchApplication(id);
    Q_EMIT workspace().didLaunchApplication(id);
    EXPECT_EQ(delegate.lifeCycle, (QList<bool>{false, true}));
}

TEST_F(Sources, OtherApplicationsAreIgnored)
{
    AllSources all;
    ASSERT_TRUE(QDBusConnection::sessionBus().registerService("org.example.SomethingElse"));
    QDBusConnection::sessionBus().unregisterService("org.example.SomethingElse");
    ASSERT_TRUE(busSignalsDelivered());
    EXPECT_EQ(all.qqTarget.appStates.size(), 1);
    EXPECT_EQ(all.jukoraTarget.appStates.size(), 1);
    EXPECT_TRUE(all.delegate.lifeCycle.isEmpty());
}

TEST_F(Sources, ShutdownNoticeFromThePlayerQuitsTheApplication)
{
    iTunesControl itunes(workspace(), center());
    int requests = 0;
    QObject::connect(&itunes, &iTunesControl::shutdownRequested, [&] { ++requests; });
    center().post("com.morvane.Versewick.action.shutdown", "org.example.other");
    center().post("com.morvane.Versewick.action.shutdown", "com.apple.iTunes.player");
    ASSERT_TRUE(postedNoticesDelivered());
    EXPECT_EQ(requests, 1);
}

} // namespace
