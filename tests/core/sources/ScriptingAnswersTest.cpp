#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"
#include "core/sources/JukoraControl.h"
#include "core/sources/MusicSourceQQMusic.h"
#include "core/sources/iTunesControl.h"

#include "support/FakePlayer.h"
#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"
#include "support/RoundTrip.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QElapsedTimer>

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

Workspace& workspace()
{
    return Workspace::sharedWorkspace();
}
DistributedNotificationCenter& center()
{
    return DistributedNotificationCenter::defaultCenter();
}

QVariantList inVariant(const QVariant& value)
{
    return {QVariant::fromValue(QDBusVariant(value))};
}

// iTunes answering every read properly: position 83.7 of version 12.1, playing track 1.
void serveITunes(FakePlayer& fake)
{
    fake.setProperty("/", "version", QStringLiteral("12.1"));
    fake.setProperty("/", "playerState", 0x6B505350u);
    fake.setProperty("/", "playerPosition", QVariant::fromValue(QDBusVariant(83.7)));
    fake.setProperty("/", "currentTrack", QVariant::fromValue(QDBusObjectPath("/Tracks/1")));
    fake.setProperty("/Tracks/1", "exists", true);
    fake.setProperty("/Tracks/1", "databaseID", qlonglong(1));
    fake.setProperty("/Tracks/1", "name", QStringLiteral("Song"));
    fake.setProperty("/Tracks/1", "rating", 80);
    fake.setProperty("/Tracks/1", "duration", 200.0);
}

struct Answer {
    const char* label;
    const char* path;
    const char* property;
    std::function<QVariantList()> reply;
    // What the source reads then; it must be the absent value.
    std::function<double(const iTunesControl&)> read;
};

class WrongAnswers : public ::testing::TestWithParam<Answer> {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "needs a session bus";
    }
};

// Every read of a player's answer checks its type and range: another type, NaN, an infinity
// or a nonsense magnitude reads as absent or 0, never as a number made up from it.
TEST_P(WrongAnswers, ReadAsAbsent)
{
    FakePlayer fake(QStringLiteral("com.apple.iTunes"));
    serveITunes(fake);
    iTunesControl itunes(workspace(), center());
    ASSERT_NE(GetParam().read(itunes), 0.0) << "the proper answer reads as something";
    fake.setReply(GetParam().path, GetParam().property, GetParam().reply());
    EXPECT_EQ(GetParam().read(itunes), 0.0);
}

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

double position(const iTunesControl& c)
{
    return c.playerPosition();
}
double playing(const iTunesControl& c)
{
    return double(c.isPlaying());
}
double trackId(const iTunesControl& c)
{
    return double(c.currentTrack()->databaseID());
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, WrongAnswers,
    ::testing::Values(
        Answer{"PositionNaN", "/", "playerPosition", [] { return inVariant(kNaN); }, position},
        Answer{"PositionInfinite", "/", "playerPosition", [] { return inVariant(kInf); }, position},
        Answer{"PositionHuge", "/", "playerPosition", [] { return inVariant(1e300); }, position},
        Answer{"PositionText", "/", "playerPosition",
               [] { return inVariant(QStringLiteral("83")); }, position},
        Answer{"PositionNotInAVariant", "/", "playerPosition", [] { return QVariantList{83.7}; },
               position},
        Answer{"PositionTwoValues", "/", "playerPosition", [] { return inVariant(83.7) << 1; },
               position},
        Answer{"StateText", "/", "playerState", [] { return inVariant(QStringLiteral("kPSP")); },
               playing},
        Answer{"StateDouble", "/", "playerState", [] { return inVariant(1800426320.0); }, playing},
        Answer{"TrackAsText", "/", "currentTrack",
               [] { return inVariant(QStringLiteral("/Tracks/1")); },
               [](const iTunesControl& c) { return double(!c.currentTrack()->isNull()); }},
        Answer{"ExistsAsNumber", "/Tracks/1", "exists", [] { return inVariant(1); },
               [](const iTunesControl& c) { return double(c.currentTrack()->exists()); }},
        Answer{"IdHugeDouble", "/Tracks/1", "databaseID", [] { return inVariant(1e30); }, trackId},
        Answer{"IdBeyondInt64", "/Tracks/1", "databaseID",
               [] { return inVariant(std::numeric_limits<qulonglong>::max()); }, trackId},
        Answer{"IdText", "/Tracks/1", "databaseID", [] { return inVariant(QStringLiteral("1")); },
               trackId},
        Answer{"NameAsNumber", "/Tracks/1", "name", [] { return inVariant(5); },
               [](const iTunesControl& c) { return double(c.currentTrack()->name().size()); }},
        Answer{"RatingOutOfRange", "/Tracks/1", "rating", [] { return inVariant(1000); },
               [](const iTunesControl& c) { return double(c.currentTrack()->rating()); }},
        Answer{"DurationNaN", "/Tracks/1", "duration", [] { return inVariant(kNaN); },
               [](const iTunesControl& c) { return c.currentTrack()->duration(); }}),
    [](const auto& info) { return std::string(info.param.label); });

TEST(JukoraAnswers, ANonsensePositionReadsAsZero)
{
    FakePlayer fake(QStringLiteral("com.morvane.Jukora"));
    JukoraControl jukora(workspace(), center());
    jukora.setCallBack(nullptr, {}, {});
    ASSERT_TRUE(jukora.isRunning());
    for (const double nonsense : {kNaN, -kInf, 1e300}) {
        fake.setProperty("/", "location", nonsense);
        EXPECT_FLOAT_EQ(jukora.location(), 0.15f) << nonsense;
    }
}

// The name can appear before the scripting object answers: the version is read again.
TEST(ITunesVersionRead, IsRetriedUntilKnown)
{
    FakePlayer fake(QStringLiteral("com.apple.iTunes"));
    iTunesControl itunes(workspace(), center());
    serveITunes(fake);
    EXPECT_NEAR(itunes.playerPosition(), 84.1f, 1e-3f) << "fractional, as 12.1 reports";
}

// A player that keeps its name and never answers costs one call limit, not one per read, and
// is read again once it answers.
TEST(HungPlayer, CostsOneLimitThenAnswersAgain)
{
    bool launched = false;
    QObject context;
    QObject::connect(
        &workspace(), &Workspace::didLaunchApplication, &context,
        [&](const QString& id) { launched = id == QLatin1String("com.apple.iTunes"); });
    FakePlayer fake(QStringLiteral("com.apple.iTunes"));
    serveITunes(fake);
    fake.setHung(true);
    // The launch is seen first: only an answer can clear the mark below, not the launch.
    ASSERT_TRUE(waitFor([&] { return launched; }));
    iTunesControl itunes(workspace(), center()); // its version read runs into the limit
    QElapsedTimer timer;
    timer.start();
    for (int tick = 0; tick < 5; ++tick) {
        EXPECT_EQ(itunes.playerPosition(), 0.0f);
        EXPECT_FALSE(itunes.isPlaying());
        EXPECT_FALSE(itunes.currentTrack()->exists());
    }
    EXPECT_LT(timer.elapsed(), ScriptingObject::kCallTimeoutMs);
    fake.setHung(false);
    EXPECT_TRUE(waitFor([&] { return itunes.playerPosition() > 84.0f; }));
    EXPECT_TRUE(itunes.currentTrack()->exists());
}

TEST(ITunesLaunch, WithoutAProviderNothingHappens)
{
    struct : iTunesControlDelegate {
        QList<bool> lifeCycle;
        void iTunesCB_AppLifeCycleChanged(bool alive) override { lifeCycle << alive; }
    } delegate;
    ASSERT_TRUE(busSignalsDelivered()); // launches and quits of earlier tests arrive first
    iTunesControl itunes(workspace(), center());
    itunes.setDelegate(&delegate);
    QElapsedTimer timer;
    timer.start();
    itunes.launchItunesApp();
    EXPECT_LT(timer.elapsed(), 1000) << "the launch is not waited for";
    // The bus answers the start request, with no such service, before this call.
    ASSERT_TRUE(busSignalsDelivered());
    EXPECT_TRUE(delegate.lifeCycle.isEmpty());
}

TEST(MusicSourceTrack, SetTrackReplacesTheRecordAndNoneIsHarmless)
{
    const quint16 port = closedPort();
    qputenv("VERSEWICK_QQMUSIC_PORT", QByteArray::number(port));
    PlayerProcess player({"--as", "qqmusic", "--qqmusic-port", QString::number(port)});
    player.send("qq-all A_$x$_B_$x$_C_$x$_20");
    ASSERT_TRUE(player.waitEvent("qq-all"));
    MusicSourceQQMusic qq(workspace(), center());
    qq.setCallBack(nullptr, {}, {});
    ASSERT_TRUE(qq.isRunning());

    auto given = std::make_unique<TrackItem>();
    given->setTitle(QStringLiteral("Given"));
    TrackItem* raw = given.get();
    qq.setTrack(std::move(given));
    EXPECT_EQ(qq.track(), raw);
    EXPECT_EQ(qq.track()->title(), QStringLiteral("Given")) << "a titled record is not refreshed";
    qq.updateSongInfo();
    EXPECT_EQ(raw->title(), QStringLiteral("B")) << "refreshed in place";

    qq.setTrack(nullptr);
    qq.updateSongInfo();
    EXPECT_EQ(qq.track(), nullptr);
    EXPECT_NEAR(qq.location(), 20.15f, 1e-4f) << "the position is still read";
}

} // namespace
