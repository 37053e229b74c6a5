// LyricAcquisition alone: what installing a lyric reports, and saving by the player's rules.
#include "FakePlayer.h"
#include "support/app/RecordingPorts.h"

#include "core/app/AppState.h"
#include "core/app/LyricAcquisition.h"
#include "core/app/PluginHost.h"
#include "core/app/ShownLyric.h"
#include "core/settings/ServiceAddresses.h"
#include "core/settings/Settings.h"
#include "core/store/LyricControl.h"

#include "support/TempHome.h"

#include <QFile>
#include <QSettings>

#include <gtest/gtest.h>

namespace {

const QString kLrc = QStringLiteral("[00:01.00]one\n[00:03.00]two\n");

class LyricAcquisitionTest : public ::testing::Test {
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
    LyricControl store;
    QObject answers;
    PluginHost plugin{*settings, state, {}, answers};
    LyricAcquisition acquisition{
        *settings, addresses, state,
        shown,     plugin,    {ports.ports(), nullptr, nullptr, {}, [this] { return &store; }}};
    FakePlayer player{4};

    std::unique_ptr<Lyric> lyric() const
    {
        auto parsed = std::make_unique<Lyric>();
        parsed->parseLRCcontent(kLrc);
        return parsed;
    }
    bool savedInFolder() const
    {
        return QFile::exists(LyricControl::_pathForIdentify(QStringLiteral("Ann--Rain.lrc")));
    }
};

TEST_F(LyricAcquisitionTest, AnInstalledLyricIsReportedWithItsOrigin)
{
    QList<int> installed;
    QStringList status;
    QObject::connect(&acquisition, &LyricAcquisition::lyricInstalled,
                     [&](int origin) { installed << origin; });
    QObject::connect(&acquisition, &LyricAcquisition::statusChanged,
                     [&](const QString& text) { status << text; });
    acquisition.installStored(lyric(), AppState::Folder);
    EXPECT_EQ(installed, QList<int>{AppState::Folder});
    EXPECT_EQ(status, QStringList{QString()});
    EXPECT_TRUE(shown.available);
    EXPECT_EQ(ports.viewLyric, shown.parser.get());
    EXPECT_EQ(state.lyricOrigin(), AppState::Folder);
}

TEST_F(LyricAcquisitionTest, SavesByTheFollowedPlayersRules)
{
    settings->setIsSaveLRCtoDisk(true);
    settings->setIsSaveLRCtoTrackTags(true);
    player.writesOrigin = AppState::Plugin;

    acquisition.installStored(lyric(), AppState::TrackTag); // no player: nothing is saved
    EXPECT_FALSE(savedInFolder());
    acquisition.setPlayer(&player);
    acquisition.installStored(lyric(), AppState::TrackTag); // no names: not in the folder
    EXPECT_FALSE(savedInFolder());
    player.saved = FakePlayer::named(QStringLiteral("Ann"), QStringLiteral("Rain"));
    acquisition.installStored(lyric(), AppState::TrackTag);
    EXPECT_TRUE(savedInFolder());
    EXPECT_EQ(player.written, 0);
    acquisition.installStored(lyric(), AppState::Plugin);
    EXPECT_EQ(player.written, 1);
}

TEST_F(LyricAcquisitionTest, AResultThatDoesNotFitTheSongOrHasNoTextIsNotTaken)
{
    QStringList status;
    QObject::connect(&acquisition, &LyricAcquisition::statusChanged,
                     [&](const QString& text) { status << text; });
    const QVariantMap other{{"artist", "Bo"}, {"title", "Snow"}, {"match", false}};
    const QVariantMap empty{{"artist", "Ann"}, {"title", "Rain"}, {"synced", false}};
    for (const QVariantMap& item : {other, empty})
        acquisition.listFetched({item, QVariantMap{{"artist", "Ann"}, {"title", "Rain"}}});
    EXPECT_EQ(status, QStringList(2, "lyric is not available"));
    EXPECT_FALSE(state.lyricLoaded());
}

} // namespace
