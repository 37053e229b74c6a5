// The lyric's timing by hand: offsets kept in whole milliseconds and saved with the lyric, and
// each player moved by a seek, against the player simulator or a fake on the private bus.
#include "support/app/AppFixture.h"

#include "core/app/ITunesPlayerSource.h"
#include "core/app/JukoraPlayerSource.h"
#include "core/app/MprisPlayerSource.h"
#include "core/app/OffsetNudge.h"
#include "core/app/QQMusicPlayerSource.h"
#include "core/sources/JukoraControl.h"

#include "support/FakePlayer.h"

#include <QElapsedTimer>

#include <cmath>
#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

struct OffsetCase {
    double given;
    std::optional<double> kept;
    const char* notice;
};

class OffsetValues : public ::testing::TestWithParam<OffsetCase> {};

TEST_P(OffsetValues, AreWholeMillisecondsWithinTenMinutes)
{
    const auto kept = offsetnudge::validOffset(GetParam().given);
    ASSERT_EQ(kept.has_value(), GetParam().kept.has_value());
    if (!kept)
        return;
    EXPECT_DOUBLE_EQ(*kept, *GetParam().kept);
    EXPECT_EQ(offsetnudge::noticeText(*kept), QString::fromUtf8(GetParam().notice));
}

INSTANTIATE_TEST_SUITE_P(Nudge, OffsetValues,
                         ::testing::Values(OffsetCase{0.3, 0.3, "Offset +0.3 s"},
                                           OffsetCase{-1.2344, -1.234, "Offset -1.234 s"},
                                           OffsetCase{-0.0001, 0.0, "Offset 0.0 s"},
                                           OffsetCase{600, 600, "Offset +600.0 s"},
                                           OffsetCase{-600.01, std::nullopt, ""},
                                           OffsetCase{kNaN, std::nullopt, ""},
                                           OffsetCase{HUGE_VAL, std::nullopt, ""}));

class OffsetSaving : public ::testing::Test {
protected:
    TempHome home;
    ScopedUserFolders folders{home};
    LyricControl store;
    Lyric lyric;

    QString path() const { return LyricControl::_pathLrcs() + "/Ann--Rain.lrc"; }
    QString saved() const { return QString::fromUtf8(readAll(path())); }
    offsetnudge::Outcome apply(double seconds)
    {
        return offsetnudge::apply(lyric, seconds, store, "Ann", "Rain");
    }
};

TEST_F(OffsetSaving, TheTagReadIsReplacedNotAdded)
{
    lyric.parseLRCcontent("[ar:Ann]\n[offset:500]\n[00:01.00]one\n[00:02.00]two\n");
    store.writeLrc(lyric, "Ann", "Rain", true);
    EXPECT_EQ(apply(0.6), offsetnudge::Outcome::Saved);
    EXPECT_EQ(apply(0.7), offsetnudge::Outcome::Saved);
    EXPECT_EQ(saved(), "[ar:Ann]\n[offset:700]\n[00:01.00]one\n[00:02.00]two\n");
    EXPECT_FLOAT_EQ(lyric.lrcItemAtIndex(0)->startTime(), 1.7f);
}

TEST_F(OffsetSaving, ALyricWithoutTagOrFileGetsBoth)
{
    lyric.parseLRCcontent("[00:01.00]one");
    EXPECT_EQ(apply(-0.1), offsetnudge::Outcome::Saved);
    EXPECT_EQ(saved(), "[00:01.00]one\n[offset:-100]");
}

TEST_F(OffsetSaving, WhatCannotBeWrittenIsReportedAndNothingIsLost)
{
    lyric.parseLRCcontent("[00:01.00]one");
    // A folder under the lyric's name: never replaced.
    QDir().mkpath(path());
    home.write(path().mid(home.path().size() + 1) + "/keep", "kept");
    EXPECT_EQ(apply(0.2), offsetnudge::Outcome::NotSaved);
    EXPECT_EQ(readAll(path() + "/keep"), "kept");
    // Out of range: nothing changes at all.
    EXPECT_EQ(apply(kNaN), offsetnudge::Outcome::Refused);
    EXPECT_EQ(apply(601), offsetnudge::Outcome::Refused);
    EXPECT_DOUBLE_EQ(lyric.offsetTime(), 0.2);
    // The model keeps a tag its new text lacks: there is nothing new to save.
    lyric.parseLRCcontent("[00:01.00]one");
    EXPECT_EQ(apply(0.4), offsetnudge::Outcome::TagNotInText);
    EXPECT_EQ(offsetnudge::apply(lyric, 0.5, store, "", "Rain"), offsetnudge::Outcome::NoSongNames);
}

// Each source against the simulator playing as that player.
class PlayerSeeks : public ::testing::TestWithParam<const char*> {
protected:
    TempHome home;
    QSettings ignored{home.filePath("mpris.ini"), QSettings::IniFormat};
    Workspace& workspace = Workspace::sharedWorkspace();
    DistributedNotificationCenter& center = DistributedNotificationCenter::defaultCenter();
    iTunesControl itunes{workspace, center};

    std::unique_ptr<PlayerSource> make(const QString& kind)
    {
        if (kind == "itunes")
            return std::make_unique<ITunesPlayerSource>(itunes);
        if (kind == "jukora") {
            auto jukora = std::make_unique<JukoraPlayerSource>(workspace, center);
            jukora->connectPlayer();
            return jukora;
        }
        if (kind == "qqmusic")
            return std::make_unique<QQMusicPlayerSource>(workspace, center);
        auto mpris = std::make_unique<MprisPlayerSource>(workspace, ignored);
        mpris->connectPlayer();
        return mpris;
    }
    // The answer of a seek, and how long it took; none when it never came.
    static std::optional<bool> seek(PlayerSource& source, double seconds, qint64* ms = nullptr)
    {
        std::optional<bool> answer;
        QElapsedTimer took;
        took.start();
        source.seek(seconds, [&](bool moved) { answer = moved; });
        waitFor([&] { return answer.has_value(); }, 15000);
        if (ms)
            *ms = took.elapsed();
        return answer;
    }
};

TEST_P(PlayerSeeks, MoveThePlayersClock)
{
    const QString playlist = home.write(
        "playlist.json", R"([{"artist":"Ann","title":"Rain","album":"W","duration":300}])");
    PlayerProcess player({"--as", GetParam(), "--playlist", playlist});
    player.send("play");
    ASSERT_TRUE(player.waitEvent("play"));
    const std::unique_ptr<PlayerSource> source = make(GetParam());
    ASSERT_TRUE(waitFor([&] { return source->isRunning() && source->location() > 0; }));
    EXPECT_EQ(seek(*source, 120), std::optional<bool>(true));
    EXPECT_TRUE(waitFor([&] { return std::fabs(source->location() - 120) < 5; }))
        << source->location();
}

INSTANTIATE_TEST_SUITE_P(Players, PlayerSeeks, ::testing::Values("itunes", "jukora", "mpris"));

TEST_F(PlayerSeeks, QQMusicAndPlayersThatRefuseOrNeverAnswerAreFalseInTime)
{
    EXPECT_EQ(seek(*make("qqmusic"), 10), std::optional<bool>(false));
    FakePlayer fake(QLatin1String(jukora::kBusName));
    const std::unique_ptr<PlayerSource> jukora = make("jukora");
    EXPECT_EQ(seek(*jukora, 10), std::optional<bool>(false)); // refused: no such property
    fake.setHung(true);
    qint64 ms = 0;
    EXPECT_EQ(seek(*jukora, 10, &ms), std::optional<bool>(false));
    EXPECT_LT(ms, 10000);
}

} // namespace
