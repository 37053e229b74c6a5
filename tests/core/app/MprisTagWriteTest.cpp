// An online lyric of an MPRIS song whose url is a local file, saved by the settings.
#include "../audiofile/AudioFixtures.h"
#include "core/app/AppState.h"
#include "core/audiofile/AudioFileLyrics.h"
#include "support/PlayerProcess.h"
#include "support/app/AppFixture.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace {

struct Saving {
    const char* name;
    bool toTrackTags;
    bool toDisk;
};

class MprisSaving : public AppFixture, public ::testing::WithParamInterface<Saving> {};

TEST_P(MprisSaving, AnOnlineLyricGoesWhereTheSettingsSay)
{
    const Saving saving = GetParam();
    const AudioFormat& mp3 = audioFormats().front();
    QDir().mkpath(home.filePath("music"));
    const QString audio = makeAudioFile(mp3, home.filePath("music"), "song");
    ASSERT_FALSE(audio.isEmpty()) << "ffmpeg could not make the audio file";
    const QString playlist = home.write(
        "playlist.json",
        QJsonDocument(QJsonArray{QJsonObject{{"artist", "Ann"},
                                             {"title", "Rain"},
                                             {"duration", 60},
                                             {"url", QUrl::fromLocalFile(audio).toString()}}})
            .toJson());
    PlayerProcess player({"--as", "mpris", "--mpris-name", "tester", "--mpris-identity", "Tester",
                          "--playlist", playlist});
    player.send("play");
    ASSERT_TRUE(player.waitEvent("play"));

    settings->setIsSaveLRCtoTrackTags(saving.toTrackTags);
    settings->setIsSaveLRCtoDisk(saving.toDisk);
    ScriptedFetcher* plugin = launchFollowingMpris();
    ASSERT_TRUE(waitFor([&] { return !plugin->searches.isEmpty(); })) << "nothing held a lyric";
    EXPECT_EQ(app->musicSource(), 4);
    EXPECT_EQ(ports.sourceTitle, "Tester");
    app->showSearchWindow(); // filled with the MPRIS song, as for the other players
    EXPECT_EQ(ports.entries("search.show"), QStringList{"search.show Rain / Ann"});

    ASSERT_NO_FATAL_FAILURE(answerFromPlugin(*plugin, "[00:00.00]online line\n[00:30.00]later\n"));
    ASSERT_TRUE(app->lrcAvailable());
    EXPECT_EQ(app->state().lyricOrigin(), AppState::Plugin);

    const auto tag = AudioFileLyrics::readLyric(audio);
    EXPECT_EQ(tag.has_value() && tag->contains("online line"), saving.toTrackTags);
    EXPECT_TRUE(isPlayableAudio(audio));
    EXPECT_EQ(readFile(lyricsFolder() + "/Ann--Rain.lrc").contains("online line"), saving.toDisk);
}

INSTANTIATE_TEST_SUITE_P(Settings, MprisSaving,
                         ::testing::Values(Saving{"TagAndFolder", true, true},
                                           Saving{"TagOnly", true, false},
                                           Saving{"Neither", false, false}),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
