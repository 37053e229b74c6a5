// The MPRIS source against versewick-player --as mpris on a private session bus.
#include "core/platform/Workspace.h"
#include "core/sources/MusicSourceMpris.h"

#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/RoundTrip.h"
#include "support/TempHome.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QElapsedTimer>
#include <QSettings>

#include <memory>

#include "support/CallbackTarget.h"

#include <gtest/gtest.h>

namespace {

using Target = CallbackTarget;

// A simulator acting as one MPRIS player.
std::unique_ptr<PlayerProcess> player(const QString& name, const QString& identity,
                                      QStringList more = {})
{
    return std::make_unique<PlayerProcess>(
        QStringList{"--as", "mpris", "--mpris-name", name, "--mpris-identity", identity} + more);
}

class Mpris : public ::testing::Test {
protected:
    TempHome home;
    QSettings settings{home.filePath("settings.ini"), QSettings::IniFormat};
    Target target;

    void SetUp() override
    {
        ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "needs a session bus";
    }
    std::unique_ptr<MusicSourceMpris> source(const QStringList& ignored = {})
    {
        settings.setValue(MusicSourceMpris::kIgnoredPlayersKey, ignored);
        auto s = std::make_unique<MusicSourceMpris>(Workspace::sharedWorkspace(), settings);
        target.running = [p = s.get()] { return p->isRunning(); };
        s->setCallBack(&target, "songChanged", "appStateChanged");
        return s;
    }
    static bool follows(const MusicSourceMpris& s, const QString& name)
    {
        return waitFor([&] { return s.name() == name; });
    }
    // Sends a command and waits for the simulator to echo it.
    static void run(PlayerProcess& p, const QString& command)
    {
        p.send(command);
        ASSERT_TRUE(p.waitEvent(command.section(u' ', 0, 0)));
    }
};

TEST_F(Mpris, PlayingBeatsPausedAndTheMostRecentWins)
{
    auto s = source();
    EXPECT_EQ(target.appStates, QList<bool>{false});
    auto a = player("alpha", "Alpha");
    auto b = player("beta", "Beta");
    // Only stopped players: none is followed, the source does not run.
    ASSERT_TRUE(mprisPlayersSettled({"alpha", "beta"}));
    EXPECT_FALSE(s->isRunning());

    run(*a, "play");
    ASSERT_TRUE(follows(*s, "Alpha"));
    EXPECT_EQ(target.appStates, (QList<bool>{false, true}));
    run(*b, "play");
    ASSERT_TRUE(follows(*s, "Beta")) << "the most recent to start playing";
    run(*b, "pause");
    ASSERT_TRUE(follows(*s, "Alpha")) << "playing beats paused";
    run(*a, "pause");
    ASSERT_TRUE(follows(*s, "Alpha")) << "the most recently seen paused";
    run(*b, "play");
    ASSERT_TRUE(follows(*s, "Beta"));
    run(*b, "stop");
    ASSERT_TRUE(follows(*s, "Alpha")) << "paused beats stopped";

    a.reset();
    ASSERT_TRUE(waitFor([&] { return !s->isRunning(); }));
    EXPECT_EQ(target.appStates, (QList<bool>{false, true, false}));
    EXPECT_TRUE(s->name().isNull());
    EXPECT_EQ(s->location(), 0.0f);
}

struct IgnoreCase {
    const char* name;
    const char* entry;
};

class MprisIgnore : public Mpris, public ::testing::WithParamInterface<IgnoreCase> {};

TEST_P(MprisIgnore, AnIgnoredPlayerIsNeverFollowed)
{
    auto s = source({QString::fromUtf8(GetParam().entry)});
    auto a = player("alpha", "Alpha");
    auto vlc1 = player("vlc.instance123", "VLC media player");
    auto vlc2 = player("vlc.instance456", "VLC media player");
    run(*a, "play");
    ASSERT_TRUE(follows(*s, "Alpha"));
    run(*vlc1, "play");
    // The echo can beat the player's signal to the bus: let vlc1's start be seen first.
    ASSERT_TRUE(mprisPlayersSettled({"vlc.instance123"}));
    run(*vlc2, "play");
    // Never the ignored ones, although they started playing later.
    ASSERT_TRUE(mprisPlayersSettled({"vlc.instance456"}));
    EXPECT_EQ(s->name(), "Alpha");
    a.reset();
    ASSERT_TRUE(waitFor([&] { return !s->isRunning(); }));

    // Without the list, the two instances are two players.
    s->setIgnoredPlayers({});
    ASSERT_TRUE(waitFor([&] { return s->busName().endsWith("vlc.instance456"); }));
    EXPECT_EQ(s->name(), "VLC media player");
    run(*vlc2, "pause");
    ASSERT_TRUE(waitFor([&] { return s->busName().endsWith("vlc.instance123"); }));
}

INSTANTIATE_TEST_SUITE_P(Entries, MprisIgnore,
                         ::testing::Values(IgnoreCase{"Suffix", "vlc"},
                                           IgnoreCase{"Identity", "vlc media player"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Mpris, SongChangesAreTrackIdTitleArtistOrUrl)
{
    auto p = player("alpha", "Alpha");
    auto s = source();
    run(*p, "play");
    ASSERT_TRUE(waitFor([&] { return s->track() != nullptr; }));
    EXPECT_EQ(s->track()->title(), "Lanterns on the Quay");
    EXPECT_EQ(s->track()->artist(), "The Morvane Players");
    EXPECT_EQ(s->track()->album(), "Harbour Songs");
    EXPECT_EQ(s->track()->length(), 75);
    const int first = target.songChanges;
    EXPECT_EQ(first, 1);

    run(*p, "mpris-meta album Another Album");
    ASSERT_TRUE(waitFor([&] { return s->track()->album() == "Another Album"; }));
    int expected = first;
    for (const char* change :
         {"mpris-meta title Other", "mpris-meta artist Someone", "mpris-meta url file:///x.ogg",
          "mpris-meta trackid /org/example/7", "next"}) {
        run(*p, QString::fromUtf8(change));
        ++expected;
        ASSERT_TRUE(waitFor([&] { return target.songChanges == expected; })) << change;
    }
    EXPECT_EQ(s->track()->title(), "Rain");
    EXPECT_EQ(s->song().album, "Weather");
    // The album change alone (first) was not a song change.
    EXPECT_EQ(target.songChanges, first + 5);
    run(*p, "stop");
    ASSERT_TRUE(waitFor([&] { return s->track() == nullptr; }));
}

TEST_F(Mpris, PositionFollowsSeekedAndRate)
{
    auto p = player("alpha", "Alpha");
    auto s = source();
    run(*p, "play");
    run(*p, "pause");
    run(*p, "seek 30");
    ASSERT_TRUE(waitFor([&] { return std::abs(s->location() - 30.15f) < 0.01f; })) << s->location();
    run(*p, "rate 2");
    run(*p, "play");
    QElapsedTimer clock;
    clock.start();
    waitFor([] { return false; }, 1000); // time must pass for the position to move
    const double elapsed = double(clock.elapsed()) / 1000.0;
    EXPECT_NEAR(s->location(), 30.15 + 2 * elapsed, 0.5);

    // The player's own methods, as any MPRIS client calls them.
    const auto call = [](const QString& method, const QVariantList& args) {
        QDBusMessage m = QDBusMessage::createMethodCall("org.mpris.MediaPlayer2.alpha",
                                                        "/org/mpris/MediaPlayer2",
                                                        "org.mpris.MediaPlayer2.Player", method);
        m.setArguments(args);
        return QDBusConnection::sessionBus().call(m).type() == QDBusMessage::ReplyMessage;
    };
    ASSERT_TRUE(call("Pause", {}));
    ASSERT_TRUE(p->waitEvent("pause"));
    ASSERT_TRUE(call("SetPosition", {QVariant::fromValue(QDBusObjectPath(s->song().trackId)),
                                     qlonglong(10'000'000)}));
    ASSERT_TRUE(waitFor([&] { return std::abs(s->location() - 10.15f) < 0.01f; })) << s->location();
    ASSERT_TRUE(call("Seek", {qlonglong(-4'000'000)}));
    ASSERT_TRUE(waitFor([&] { return std::abs(s->location() - 6.15f) < 0.01f; })) << s->location();
}

struct FaultCase {
    const char* fault;
    const char* name;  // what the menu shows
    const char* title; // the song's title, "" for no song
    bool seeks;        // the player announces seeks
};

class MprisFaults : public Mpris, public ::testing::WithParamInterface<FaultCase> {};

// Playing from 0 for five seconds: reads come every two seconds, so a wrong unit, a stuck
// position or a missing answer would all show in the position.
TEST_P(MprisFaults, PositionKeepsMovingAndNothingBlocks)
{
    auto p = player("faulty", "Faulty", {"--not-running"});
    run(*p, QStringLiteral("mpris-fault %1 on").arg(QString::fromUtf8(GetParam().fault)));
    run(*p, "launch");
    auto s = source();
    run(*p, "play");
    ASSERT_TRUE(waitFor([&] { return s->isRunning(); }));
    QElapsedTimer clock;
    clock.start();
    waitFor([] { return false; }, 5000); // time must pass for the position to move
    EXPECT_EQ(s->name(), QString::fromUtf8(GetParam().name));
    const QString title = QString::fromUtf8(GetParam().title);
    EXPECT_EQ(s->track() ? s->track()->title() : QString(), title);
    if (title.isEmpty())
        return;
    const double elapsed = double(clock.elapsed()) / 1000.0;
    EXPECT_NEAR(s->location(), elapsed + 0.15, 0.8);
    if (!GetParam().seeks)
        return;
    run(*p, "seek 40");
    ASSERT_TRUE(waitFor([&] { return std::abs(s->location() - 40.0f) < 1.0f; })) << s->location();
}

INSTANTIATE_TEST_SUITE_P(
    Faults, MprisFaults,
    ::testing::Values(FaultCase{"millis", "Faulty", "Lanterns on the Quay", true},
                      FaultCase{"stuck", "Faulty", "Lanterns on the Quay", false},
                      FaultCase{"no-rate", "Faulty", "Lanterns on the Quay", true},
                      FaultCase{"wrong-types", "faulty", "Lanterns on the Quay", true},
                      FaultCase{"huge", "faulty", "", true}),
    [](const auto& info) {
        return QString::fromUtf8(info.param.fault).remove(u'-').toStdString();
    });

TEST_F(Mpris, APlayerThatStopsAnsweringOrVanishesBlocksNothing)
{
    auto p = player("alpha", "Alpha");
    auto s = source();
    run(*p, "play");
    run(*p, "seek 50");
    ASSERT_TRUE(waitFor([&] { return std::abs(s->location() - 50.15f) < 0.3f; }));
    run(*p, "mpris-fault silent on");
    QElapsedTimer clock;
    clock.start();
    const double start = s->location();
    // Re-reads go out and time out meanwhile; a call that waited on the player would take its
    // whole time-out (1.5 s).
    qint64 slowest = 0;
    waitFor(
        [&] {
            QElapsedTimer call;
            call.start();
            (void)s->location();
            (void)s->track();
            slowest = std::max(slowest, call.elapsed());
            return false;
        },
        3500);
    EXPECT_LT(slowest, 1000) << "location and track never wait on the player";
    EXPECT_NEAR(s->location(), start + double(clock.elapsed()) / 1000.0, 0.5);
    EXPECT_EQ(s->name(), "Alpha");

    // Gone with calls in flight.
    run(*p, "mpris-meta title Changed"); // a song change asks for the position again
    p.reset();
    ASSERT_TRUE(waitFor([&] { return !s->isRunning(); }));
    EXPECT_EQ(s->location(), 0.0f);

    // A player that never answers a call, known only from its signals, by its bus name.
    auto mute = player("mute", "Mute", {"--not-running"});
    run(*mute, "mpris-fault silent on");
    run(*mute, "launch");
    // The source listens to a player only once it has seen its name appear, and a silent
    // player's status cannot be asked: a start it missed is heard at the next one.
    ASSERT_TRUE(waitFor([&] {
        for (const char* command : {"stop", "play"}) {
            mute->send(QString::fromLatin1(command));
            if (!mute->waitEvent(QString::fromLatin1(command)))
                return false;
        }
        return waitFor([&] { return s->name() == "mute"; }, 1000);
    }));
}

} // namespace
