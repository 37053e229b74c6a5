#include "CliRunner.h"

#include "../../core/audiofile/AudioFixtures.h"

#include "support/QtPrinters.h"
#include "support/TempHome.h"

#include <QDir>
#include <QFile>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace {

const QByteArray kLyric = "[00:01.00]Première ligne\n[00:02.50]雨が降る\n";

QByteArray bytesOf(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

class CliAudio : public ::testing::TestWithParam<AudioFormat> {
protected:
    TempHome home;
    QString lrc = home.write("in.lrc", kLyric);
    CliResult cli(const QStringList& args) { return runCliAt(home.path(), args); }
};

TEST_P(CliAudio, WritesAndReadsBackTheLyric)
{
    const QString song = makeAudioFile(GetParam(), home.path(), "song");
    ASSERT_FALSE(song.isNull());
    const CliResult none = cli({"audio", "read", song});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_EQ(none.err, "versewick-cli: " + song.toUtf8() + " holds no lyric in its tags.\n");
    const CliResult written = cli({"audio", "write", song, lrc});
    EXPECT_EQ(written.exitCode, 0) << written.err.constData();
    EXPECT_EQ(written.json()["written"], true);
    EXPECT_EQ(cli({"audio", "read", song}).out, kLyric);
    EXPECT_TRUE(isPlayableAudio(song));
}

INSTANTIATE_TEST_SUITE_P(Formats, CliAudio, ::testing::ValuesIn(audioFormats()),
                         [](const auto& info) { return std::string(info.param.name); });

// What audio write refuses: the music file stays byte for byte and one sentence says why.
struct Refusal {
    const char* name;
    std::function<void(TempHome&, QString& song, QString& lrc)> arrange;
    const char* sentence; // contained in standard error
};

class CliAudioWriteRefuses : public ::testing::TestWithParam<Refusal> {};

TEST_P(CliAudioWriteRefuses, LeavesTheFileAlone)
{
    TempHome home;
    QString song = makeAudioFile(audioFormats()[2], home.path(), "song");
    ASSERT_FALSE(song.isNull());
    QString lrc = home.write("in.lrc", kLyric);
    GetParam().arrange(home, song, lrc);
    const QByteArray before = bytesOf(song);
    const CliResult result = runCliAt(home.path(), {"audio", "write", song, lrc});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.err.contains(GetParam().sentence)) << result.err.constData();
    EXPECT_EQ(result.err.count('\n'), 1);
    EXPECT_EQ(bytesOf(song), before);
    QFile::setPermissions(home.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(QDir(home.path()).entryList(QDir::Files | QDir::Hidden).size(), 2) << "no copy";
}

const QFile::Permissions kReadOnly = QFile::ReadOwner | QFile::ReadGroup;

INSTANTIATE_TEST_SUITE_P(
    Cases, CliAudioWriteRefuses,
    ::testing::Values(
        Refusal{"ReadOnlyFile",
                [](TempHome&, QString& s, QString&) { QFile::setPermissions(s, kReadOnly); },
                "is read-only; it was left unchanged."},
        Refusal{"ReadOnlyFolder",
                [](TempHome& h, QString&, QString&) {
                    QFile::setPermissions(h.path(), kReadOnly | QFile::ExeOwner);
                },
                "is read-only, so it was left unchanged."},
        Refusal{"Damaged",
                [](TempHome& h, QString& s, QString&) {
                    h.write("song.flac", "fLaC" + QByteArray(4096, '\x7f'));
                    s = h.filePath("song.flac");
                },
                "is not audio that can be tagged"},
        Refusal{"BinaryLyric",
                [](TempHome& h, QString&, QString& l) {
                    l = h.write("in.lrc", QByteArray("[00:01]a\0b", 10));
                },
                "it is not text."},
        Refusal{"OverTheBound",
                [](TempHome& h, QString&, QString& l) {
                    l = h.write("in.lrc", "[00:01]" + QByteArray(4 << 20, 'x'));
                },
                "Cannot read"},
        Refusal{"NoTimedLine",
                [](TempHome& h, QString&, QString& l) { l = h.write("in.lrc", "just words\n"); },
                "has no timed line, so it is not a lyric."}),
    [](const auto& info) { return std::string(info.param.name); });

// A music folder with one file of each kind the import and the export meet.
class CliAudioFolder : public ::testing::Test {
protected:
    TempHome home;
    QString music = home.filePath("music");
    QString tagged, bare, locked;
    void SetUp() override
    {
        ASSERT_TRUE(QDir().mkpath(music + "/sub"));
        tagged = makeAudioFile(audioFormats()[0], music, "tagged");
        bare = makeAudioFile(audioFormats()[2], music + "/sub", "bare");
        locked = makeAudioFile(audioFormats()[5], music, "locked");
        ASSERT_TRUE(setSongTags(tagged, "Ann", "Rain") &&
                    audioFormats()[0].tagLyrics(tagged, kLyric));
        ASSERT_TRUE(setSongTags(bare, "Bo", "Snow") && setSongTags(locked, "Cy", "Sun"));
        const QString synced = makeAudioFile(audioFormats()[0], music + "/sub", "synced");
        ASSERT_TRUE(setSongTags(synced, "Di", "Moon") && addSyncedLyrics(synced, {{1500, "Hi"}}));
        QFile::setPermissions(locked, kReadOnly);
        home.write("music/other.mka", "not really");
        home.write("music/cover.jpg", "ignored");
        home.write("music/broken.mp3", QByteArray(2048, '\xff'));
    }
    CliResult cli(const QStringList& args) { return runCliAt(home.path(), args); }
    QJsonObject summary(const CliResult& r)
    {
        return r.jsonLines().value(r.jsonLines().size() - 1);
    }
    QString stored(const QString& name)
    {
        return QString::fromUtf8(bytesOf(home.filePath("data/Versewick/lyrics.lrcs/" + name)));
    }
};

TEST_F(CliAudioFolder, ImportCopiesTagLyricsIntoTheFolderAndKeepsDifferentOnes)
{
    const CliResult dry = cli({"audio", "import", music, "--dry-run"});
    EXPECT_EQ(summary(dry)["written"], 2);
    EXPECT_TRUE(stored("Ann--Rain.lrc").isEmpty()) << "a dry run writes nothing";

    const CliResult first = cli({"audio", "import", music});
    EXPECT_EQ(first.exitCode, 0);
    EXPECT_EQ(first.jsonLines().size(), 7) << first.out.constData(); // six files, a summary
    const QJsonObject s = summary(first);
    EXPECT_EQ(s["found"], 6);
    EXPECT_EQ(s["written"], 2);
    EXPECT_EQ(s["reasons"].toObject(), QJsonObject({{"no lyric", 2},
                                                    {"unsupported format", 1},
                                                    {"not readable as audio (damaged?)", 1}}));
    EXPECT_EQ(stored("Ann--Rain.lrc"), QString::fromUtf8(kLyric));
    EXPECT_EQ(stored("Di--Moon.lrc"), "[00:01.50]Hi\n") << "synchronised lyrics become LRC";
    EXPECT_TRUE(first.err.isEmpty()) << "no progress line off a terminal";

    EXPECT_EQ(summary(cli({"audio", "import", music}))["reasons"].toObject()["already the same"],
              2);
    home.write("data/Versewick/lyrics.lrcs/Ann--Rain.lrc", "[00:09]mine\n");
    EXPECT_EQ(summary(cli({"audio", "import", music}))["written"], 0);
    EXPECT_EQ(stored("Ann--Rain.lrc"), "[00:09]mine\n");
    EXPECT_EQ(summary(cli({"audio", "import", music, "--force"}))["written"], 1);
    EXPECT_EQ(stored("Ann--Rain.lrc"), QString::fromUtf8(kLyric));
}

TEST_F(CliAudioFolder, ExportWritesFolderLyricsIntoTheFiles)
{
    ASSERT_TRUE(QDir().mkpath(home.filePath("data/Versewick/lyrics.lrcs")));
    home.write("data/Versewick/lyrics.lrcs/Bo--Snow.lrc", "[00:03]Snow\n");
    home.write("data/Versewick/lyrics.lrcs/Cy--Sun.lrc", "[00:04]Sun\n");
    home.write("data/Versewick/lyrics.lrcs/Ann--Rain.lrc", "[00:05]Rain\n");
    const QByteArray lockedBefore = bytesOf(locked);

    EXPECT_EQ(summary(cli({"audio", "export", music, "--dry-run"}))["written"], 1);
    EXPECT_EQ(cli({"audio", "read", bare}).exitCode, 1);

    const QJsonObject s = summary(cli({"audio", "export", music}));
    EXPECT_EQ(s["written"], 1);
    EXPECT_EQ(s["reasons"].toObject()["read-only"], 1);
    EXPECT_EQ(s["reasons"].toObject()["a different lyric is in the file (--force replaces it)"], 1);
    EXPECT_EQ(cli({"audio", "read", bare}).out, "[00:03]Snow\n");
    EXPECT_EQ(bytesOf(locked), lockedBefore);
    EXPECT_EQ(cli({"audio", "read", tagged}).out, kLyric);

    EXPECT_EQ(summary(cli({"audio", "export", music, "--force"}))["written"], 1);
    EXPECT_EQ(cli({"audio", "read", tagged}).out, "[00:05]Rain\n");
}

} // namespace
