#include "core/sources/MprisPosition.h"
#include "core/sources/MprisSong.h"
#include "core/sources/MprisValues.h"

#include "support/QtPrinters.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

#include <limits>

#include <gtest/gtest.h>

TEST(MprisPosition, InterpolatesTimesRateBetweenReadsAndSeeks)
{
    MprisPosition p;
    p.read(10'000'000, 100.0);
    EXPECT_DOUBLE_EQ(p.at(105.0), 10.0) << "stopped or paused: no movement";
    p.setPlaying(true, 100.0);
    EXPECT_DOUBLE_EQ(p.at(103.0), 13.0);
    p.setRate(2.0, 103.0);
    EXPECT_DOUBLE_EQ(p.at(104.0), 15.0);
    p.seeked(60'000'000, 104.0);
    EXPECT_DOUBLE_EQ(p.at(104.5), 61.0);
    p.setRate(std::nullopt, 105.0); // a player without Rate plays at 1
    p.setPlaying(false, 106.0);
    EXPECT_DOUBLE_EQ(p.at(200.0), 63.0);
    p.restart(200.0);
    EXPECT_DOUBLE_EQ(p.at(201.0), 0.0);
}

TEST(MprisPosition, RecognisesMillisecondsAndScalesSeeksToo)
{
    MprisPosition p;
    p.setPlaying(true, 100.0);
    p.read(0, 100.0);
    p.read(2000, 102.0); // two seconds, reported as 2000 "microseconds"
    EXPECT_TRUE(p.reportsMilliseconds());
    EXPECT_NEAR(p.at(103.0), 3.0, 1e-9);
    p.seeked(40'000, 103.0);
    EXPECT_NEAR(p.at(103.0), 40.0, 1e-9);
}

TEST(MprisPosition, IgnoresAPositionStuckAtZero)
{
    MprisPosition p;
    p.setPlaying(true, 100.0);
    p.read(0, 100.0);
    p.read(0, 102.0);
    EXPECT_TRUE(p.isStuck());
    p.read(0, 104.0);
    EXPECT_DOUBLE_EQ(p.at(105.0), 5.0);
    // A player that recovers is believed again.
    p.read(20'000'000, 106.0);
    EXPECT_FALSE(p.isStuck());
    EXPECT_DOUBLE_EQ(p.at(106.0), 20.0);
}

struct ValueCase {
    const char* name;
    QVariant value;
    bool microsecondsValid;
};

class MprisValues : public ::testing::TestWithParam<ValueCase> {};

TEST_P(MprisValues, WrongTypesAndMagnitudesReadAsAbsent)
{
    const ValueCase& c = GetParam();
    EXPECT_EQ(mpris::microseconds(c.value).has_value(), c.microsecondsValid);
    EXPECT_FALSE(mpris::rate(c.value)) << "a rate is a finite double above 0";
}

INSTANTIATE_TEST_SUITE_P(
    Values, MprisValues,
    ::testing::Values(ValueCase{"int64", QVariant(qlonglong(5'000'000)), true},
                      ValueCase{"wrapped", QVariant::fromValue(QDBusVariant(qlonglong(1))), true},
                      ValueCase{"string", QVariant(QStringLiteral("12")), false},
                      ValueCase{"negative", QVariant(qlonglong(-1)), false},
                      ValueCase{"huge", QVariant(std::numeric_limits<qlonglong>::max()), false},
                      ValueCase{"nan", QVariant(std::numeric_limits<double>::quiet_NaN()), false},
                      ValueCase{"infinite", QVariant(std::numeric_limits<double>::infinity()),
                                false},
                      ValueCase{"absent", QVariant(), false}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(MprisSong, ReadsMetadataAndRefusesWhatDoesNotFit)
{
    const QVariantMap metadata{{"mpris:trackid", QVariant::fromValue(QDBusObjectPath("/t/1"))},
                               {"xesam:title", QStringLiteral("Rain")},
                               {"xesam:artist", QStringList{"Ann", "Bo"}},
                               {"xesam:album", QString(mpris::kMaxStringLength + 1, u'x')},
                               {"mpris:length", qlonglong(61'500'000)},
                               {"xesam:url", QStringLiteral("file:///music/a%20b.flac")}};
    const MprisSong song = MprisSong::fromMetadata(QVariant::fromValue(QDBusVariant(metadata)));
    EXPECT_EQ(song.trackId, "/t/1");
    EXPECT_EQ(song.title, "Rain");
    EXPECT_EQ(song.artist, "Ann, Bo");
    EXPECT_TRUE(song.album.isNull()) << "a huge string is absent";
    EXPECT_DOUBLE_EQ(song.lengthSeconds(), 61.5);
    EXPECT_EQ(song.localFilePath(), "/music/a b.flac");

    MprisSong other = song;
    other.album = QStringLiteral("Another album");
    EXPECT_FALSE(other.isOtherSongThan(song));
    other.url = QStringLiteral("file:///music/c.flac");
    EXPECT_TRUE(other.isOtherSongThan(song));

    const MprisSong wrong = MprisSong::fromMetadata(QVariantMap{
        {"xesam:title", 7}, {"xesam:artist", QStringLiteral("Solo")}, {"xesam:url", "http://x/y"}});
    EXPECT_TRUE(wrong.title.isNull());
    EXPECT_EQ(wrong.artist, "Solo");
    EXPECT_TRUE(wrong.localFilePath().isNull());
    EXPECT_TRUE(MprisSong::fromMetadata(QStringLiteral("not a dictionary")).isEmpty());
    EXPECT_EQ(mpris::rate(QVariant(2.0)), 2.0);
    EXPECT_FALSE(mpris::rate(QVariant(0.0)));
}
