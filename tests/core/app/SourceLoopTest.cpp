// SourceLoop alone: which player it follows and what a song change tells the others.
#include "FakePlayer.h"
#include "support/app/RecordingPorts.h"

#include "core/app/AppState.h"
#include "core/app/LyricAcquisition.h"
#include "core/app/PluginHost.h"
#include "core/app/ShownLyric.h"
#include "core/app/SourceLoop.h"
#include "core/lyric/Lyric.h"
#include "core/reading/LyricReading.h"
#include "core/settings/ServiceAddresses.h"
#include "core/settings/Settings.h"

#include "support/TempHome.h"

#include <QSettings>

#include <gtest/gtest.h>

namespace {

class SourceLoopTest : public ::testing::Test {
protected:
    TempHome home;
    ScopedUserFolders folders{home};
    std::unique_ptr<Settings> settings = Settings::launch(
        std::make_unique<QSettings>(home.filePath("settings.ini"), QSettings::IniFormat));
    ServiceAddresses addresses{
        std::make_unique<QSettings>(home.filePath("services.ini"), QSettings::IniFormat)};
    AppState state;
    ShownLyric shown;
    RecordingPorts ports{state};
    ManualTimers timers;
    QObject answers;
    PluginHost plugin{*settings, state, {}, answers};
    LyricAcquisition acquisition{*settings, addresses, state,
                                 shown,     plugin,    {ports.ports(), nullptr, nullptr, {}, {}}};
    SourceLoop loop{state, shown, *settings, acquisition, timers.factory()};
};

TEST_F(SourceLoopTest, FollowsTheFirstRunningPlayerInPriority)
{
    FakePlayer first(3), second(2);
    first.change = second.change = PlayerSource::Change::None;
    loop.addSource(second, 1);
    loop.addSource(first, 0);
    QList<PlayerSource*> chosen;
    QObject::connect(&loop, &SourceLoop::playerChosen, [&](PlayerSource* p) { chosen << p; });

    second.setRunning(true);
    first.setRunning(true);
    EXPECT_EQ(loop.active(), &first);
    EXPECT_EQ(state.sourceKind(), 3);
    EXPECT_EQ(state.sourceName(), "player 3");
    first.setRunning(false);
    EXPECT_EQ(loop.active(), &second);
    EXPECT_TRUE(loop.timerRunning());
    second.setRunning(false);
    EXPECT_EQ(loop.active(), nullptr);
    EXPECT_EQ(state.sourceKind(), 0);
    EXPECT_FALSE(loop.timerRunning());
    EXPECT_EQ(chosen, (QList<PlayerSource*>{&second, &first, &second, nullptr}));
}

struct SongCase {
    const char* name;
    PlayerSource::Change change;
    bool keepsLyric;
    int clears;       // songChanging signals
    bool songChanged; // a search starts
    bool lyricKept;   // LyricLoaded afterwards
};

class SongChange : public SourceLoopTest, public ::testing::WithParamInterface<SongCase> {};

TEST_P(SongChange, ClearsAndSearchesAsThePlayerSays)
{
    FakePlayer player(1, {false, GetParam().keepsLyric});
    player.change = PlayerSource::Change::None;
    loop.addSource(player, 0);
    player.setRunning(true);
    shown.available = true;
    state.setLyricLoaded(true);
    int clears = 0, songs = 0;
    QObject::connect(&loop, &SourceLoop::songChanging, [&] { ++clears; });
    QObject::connect(&loop, &SourceLoop::songChanged, [&] { ++songs; });

    player.change = GetParam().change;
    Q_EMIT player.songChanged();
    EXPECT_EQ(clears, GetParam().clears);
    EXPECT_EQ(songs, GetParam().songChanged ? 1 : 0);
    EXPECT_EQ(state.lyricLoaded(), GetParam().lyricKept);
    EXPECT_EQ(shown.available, GetParam().lyricKept);
    EXPECT_EQ(state.title(), GetParam().songChanged ? "Rain" : "");
}

INSTANTIATE_TEST_SUITE_P(
    Changes, SongChange,
    ::testing::Values(SongCase{"Unchanged", PlayerSource::Change::None, false, 0, false, true},
                      SongCase{"NoSong", PlayerSource::Change::NoSong, false, 1, false, false},
                      SongCase{"Song", PlayerSource::Change::Song, false, 1, true, false},
                      SongCase{"SongKeepingTheLyric", PlayerSource::Change::Song, true, 1, true,
                               true}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace

namespace {

TEST_F(SourceLoopTest, PublishesTheLitLinesTranslationAsTheSecondaryLine)
{
    FakePlayer player(1); // at 2 s
    player.change = PlayerSource::Change::None;
    loop.addSource(player, 0);
    player.setRunning(true);
    shown.parser = std::make_unique<Lyric>();
    shown.parser->parseLRCcontent(QStringLiteral("[00:01.00]Hello\n[00:01.00]你好\n[00:03.00]x"));
    shown.available = true;
    LyricReading::shared().setOptions({});
    QStringList changed;
    QObject::connect(&state, &AppState::changed, [&](const QString& name) { changed << name; });
    loop.tick(&player);
    EXPECT_EQ(state.line(), QStringLiteral("Hello"));
    EXPECT_EQ(state.secondaryLine(), QStringLiteral("你好"));
    EXPECT_TRUE(changed.contains(QStringLiteral("SecondaryLine")));
}

} // namespace
