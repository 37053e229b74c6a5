// The four player adapters side by side, with no player on the (private) bus: what sets them
// apart is theirs to answer, so the controller never asks which one it follows.
#include "core/app/AppState.h"
#include "core/app/ITunesPlayerSource.h"
#include "core/app/JukoraPlayerSource.h"
#include "core/app/MprisPlayerSource.h"
#include "core/app/QQMusicPlayerSource.h"
#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"

#include "support/TempHome.h"

#include <QSettings>

#include <gtest/gtest.h>

#include <functional>

namespace {

struct Adapter {
    const char* name;
    int kind;
    bool coalesced;
    bool keepsLyric;
    QList<int> writtenIntoSong; // the origins also written into the song itself
};

class PlayerSources : public ::testing::TestWithParam<Adapter> {
protected:
    TempHome home;
    QSettings ignored{home.filePath("mpris.ini"), QSettings::IniFormat};
    Workspace& workspace = Workspace::sharedWorkspace();
    DistributedNotificationCenter& center = DistributedNotificationCenter::defaultCenter();
    iTunesControl itunes{workspace, center};

    std::unique_ptr<PlayerSource> make(int kind)
    {
        switch (kind) {
        case 1:
            return std::make_unique<ITunesPlayerSource>(itunes);
        case 2:
            return std::make_unique<JukoraPlayerSource>(workspace, center);
        case 3:
            return std::make_unique<QQMusicPlayerSource>(workspace, center);
        default:
            return std::make_unique<MprisPlayerSource>(workspace, ignored);
        }
    }
};

TEST_P(PlayerSources, AnswerTheirOwnRules)
{
    const std::unique_ptr<PlayerSource> source = make(GetParam().kind);
    EXPECT_EQ(source->kind(), GetParam().kind);
    EXPECT_EQ(source->rules().coalesced, GetParam().coalesced);
    EXPECT_EQ(source->rules().keepsLyricUntilFound, GetParam().keepsLyric);
    QList<int> written;
    for (int origin : {AppState::Folder, AppState::TrackTag, AppState::Plugin, AppState::ByHand,
                       AppState::BesideAudio})
        if (source->writesIntoSong(origin))
            written << origin;
    EXPECT_EQ(written, GetParam().writtenIntoSong);
    // Without a player: not running, nothing playing.
    EXPECT_FALSE(source->isRunning());
    EXPECT_FALSE(source->nowPlaying());
}

INSTANTIATE_TEST_SUITE_P(
    Players, PlayerSources,
    ::testing::Values(
        Adapter{"iTunes", 1, false, false, {AppState::Folder, AppState::Plugin, AppState::ByHand}},
        Adapter{"Jukora", 2, false, false, {}}, Adapter{"QQMusic", 3, false, true, {}},
        Adapter{"Mpris", 4, true, false, {AppState::Plugin}}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
