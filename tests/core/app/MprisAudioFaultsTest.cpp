// An MPRIS song whose audio file is read-only or corrupt: an online lyric is still shown and
// saved in the folder, and the file is left exactly as it was, though the settings ask for
// the lyric to be written into its tag.
#include "../audiofile/AudioFixtures.h"
#include "core/app/AppState.h"
#include "support/PlayerProcess.h"
#include "support/app/AppFixture.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QUrl>

namespace {

struct FileFault {
    const char* name;
    bool corrupt; // else read-only
};

class MprisAudioFault : public AppFixture, public ::testing::WithParamInterface<FileFault> {};

TEST_P(MprisAudioFault, TheLyricIsShownAndTheFileLeftAlone)
{
    QDir().mkpath(home.filePath("music"));
    const QString audio = makeAudioFile(audioFormats().front(), home.filePath("music"), "song");
    ASSERT_FALSE(audio.isEmpty()) << "ffmpeg could not make the audio file";
    if (GetParam().corrupt) {
        // Noise behind the format's magic number, so TagLib goes past its first check.
        QByteArray noise = readFile(audio).left(4);
        QRandomGenerator random(11);
        while (noise.size() < 64 * 1024)
            noise += char(random.generate());
        QFile file(audio);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(noise) == noise.size());
    } else {
        ASSERT_TRUE(QFile::setPermissions(audio, QFile::ReadOwner | QFile::ReadGroup));
    }
    const QByteArray before = readFile(audio);
    const QString playlist = home.write(
        "playlist.json",
        QJsonDocument(QJsonArray{QJsonObject{{"artist", "Ann"},
                                             {"title", "Rain"},
                                             {"url", QUrl::fromLocalFile(audio).toString()}}})
            .toJson());
    PlayerProcess player({"--as", "mpris", "--playlist", playlist});
    player.send("play");
    ASSERT_TRUE(player.waitEvent("play"));

    settings->setIsSaveLRCtoTrackTags(true);
    settings->setIsSaveLRCtoDisk(true);
    ScriptedFetcher* plugin = launchFollowingMpris();
    ASSERT_TRUE(waitFor([&] { return !plugin->searches.isEmpty(); })) << "the file held a lyric";
    ASSERT_NO_FATAL_FAILURE(answerFromPlugin(*plugin, "[00:00.00]online line\n[00:30.00]later\n"));
    ASSERT_TRUE(app->lrcAvailable());
    EXPECT_EQ(app->state().lyricOrigin(), AppState::Plugin);
    EXPECT_EQ(readFile(audio), before);
    EXPECT_TRUE(readFile(lyricsFolder() + "/Ann--Rain.lrc").contains("online line"));
    EXPECT_EQ(QDir(home.filePath("music")).entryList(QDir::Files).size(), 1) << "no copy is left";
}

INSTANTIATE_TEST_SUITE_P(Files, MprisAudioFault,
                         ::testing::Values(FileFault{"ReadOnly", false},
                                           FileFault{"Corrupt", true}),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
