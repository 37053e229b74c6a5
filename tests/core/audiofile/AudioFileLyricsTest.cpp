#include "AudioFixtures.h"

#include "core/audiofile/AudioFileLyrics.h"
#include "core/lyric/Lyric.h"
#include "core/store/LyricTagBlock.h"

#include "support/QtPrinters.h"
#include "support/TempHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <future>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString kTimed = QStringLiteral("[ar:Ann]\n[00:01.00]Première ligne\n[00:02.50]雨が降る\n");
const QString kPlain = QStringLiteral("Just words\nthat someone typed\n");

QByteArray bytesOf(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QStringList filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden);
}

QString blockFor(const QString& lrc)
{
    Lyric lyric;
    lyric.parseLRCcontent(lrc);
    return tagblock::tagTextForLyric(lyric).value_or(QString());
}

// Each test starts with a fresh file of the format at path.
class AudioFiles : public ::testing::TestWithParam<AudioFormat> {
protected:
    TempHome home;
    QString path;
    void SetUp() override { ASSERT_FALSE(make().isNull()); }
    QString make()
    {
        path = makeAudioFile(GetParam(), home.path(), QStringLiteral("song"));
        EXPECT_FALSE(path.isNull()) << "ffmpeg could not make a ." << GetParam().extension;
        return path;
    }
};

TEST_P(AudioFiles, ReadsTimedTextAndTheBlockButNotPlainText)
{
    struct {
        QString tag;
        std::optional<QString> lyric;
    } cases[] = {{kTimed, kTimed}, {blockFor(kTimed), kTimed}, {kPlain, std::nullopt}};
    for (const auto& c : cases) {
        ASSERT_FALSE(make().isNull());
        ASSERT_TRUE(GetParam().tagLyrics(path, c.tag));
        EXPECT_EQ(AudioFileLyrics::readLyric(path), c.lyric) << c.tag.left(40).toStdString();
    }
}

TEST_P(AudioFiles, WritingRoundTripsAndReplaces)
{
    EXPECT_FALSE(AudioFileLyrics::readLyric(path));
    ASSERT_TRUE(AudioFileLyrics::writeLyric(path, kTimed));
    EXPECT_EQ(AudioFileLyrics::readLyric(path), kTimed);
    const QString second = QStringLiteral("[00:03.00]Second\n");
    ASSERT_TRUE(AudioFileLyrics::writeLyric(path, second));
    EXPECT_EQ(AudioFileLyrics::readLyric(path), second);
    EXPECT_TRUE(isPlayableAudio(path));
    EXPECT_EQ(filesIn(home.path()), QStringList{QFileInfo(path).fileName()}) << "no copy is left";
}

TEST_P(AudioFiles, WritingKeepsTheOwner)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give a file to another user";
    ASSERT_EQ(::chown(QFile::encodeName(path).constData(), 65534, 65534), 0);
    ASSERT_TRUE(AudioFileLyrics::writeLyric(path, kTimed));
    struct stat st {};
    ASSERT_EQ(::stat(QFile::encodeName(path).constData(), &st), 0);
    EXPECT_EQ(st.st_uid, 65534u);
    EXPECT_EQ(st.st_gid, 65534u);
}

TEST_P(AudioFiles, AReadOnlyFileIsRefusedAndUnchanged)
{
    const QByteArray before = bytesOf(path);
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup));
    EXPECT_FALSE(AudioFileLyrics::writeLyric(path, kTimed));
    EXPECT_EQ(bytesOf(path), before);
    EXPECT_EQ(filesIn(home.path()).size(), 1);
}

TEST_P(AudioFiles, ACorruptFileIsReadAsNothingAndLeftAlone)
{
    const QString broken = home.filePath(QStringLiteral("broken.") + GetParam().extension);
    QByteArray noise(64 * 1024, '\0');
    QRandomGenerator random(7);
    for (char& c : noise)
        c = char(random.generate());
    // Noise behind the format's magic number, so TagLib goes past its first check. (A file
    // whose headers are whole but whose audio is damaged is written: only its tags change.)
    noise.replace(0, 4, bytesOf(path).left(4));
    home.write(QFileInfo(broken).fileName(), noise);
    EXPECT_FALSE(AudioFileLyrics::readLyric(broken));
    EXPECT_FALSE(AudioFileLyrics::writeLyric(broken, kTimed));
    EXPECT_EQ(bytesOf(broken), noise);
}

INSTANTIATE_TEST_SUITE_P(Formats, AudioFiles, ::testing::ValuesIn(audioFormats()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(AudioFileLyrics, SynchronisedLyricsBecomeLrcLines)
{
    TempHome home;
    const QString path = makeAudioFile(audioFormats().first(), home.path(), "synced");
    ASSERT_FALSE(path.isNull());
    ASSERT_TRUE(addSyncedLyrics(path, {{1500, "Hello"}, {62039, "\nWorld"}, {3'600'000, "Late"}}));
    EXPECT_EQ(AudioFileLyrics::readLyric(path),
              QStringLiteral("[00:01.50]Hello\n[01:02.03]World\n[60:00.00]Late\n"));
}

TEST(AudioFileLyrics, TheLrcBesideTheAudioFile)
{
    TempHome home;
    EXPECT_EQ(AudioFileLyrics::lrcPathBeside("/music/a/One.Two.flac"), "/music/a/One.Two.lrc");
    EXPECT_TRUE(AudioFileLyrics::lrcPathBeside(QString()).isNull());
    const QString audio = home.filePath("song.flac");
    EXPECT_FALSE(AudioFileLyrics::readLrcBeside(audio));
    home.write("song.lrc", kTimed.toUtf8());
    EXPECT_EQ(AudioFileLyrics::readLrcBeside(audio), kTimed);
    home.write("song.lrc", QByteArray::fromHex("fffe00626164")); // bytes that are not UTF-8
    EXPECT_FALSE(AudioFileLyrics::readLrcBeside(audio)) << "not UTF-8 text";
}

TEST(AudioFileLyrics, MissingFilesAndBlankTextAreRefused)
{
    TempHome home;
    EXPECT_FALSE(AudioFileLyrics::readLyric(home.filePath("none.mp3")));
    EXPECT_FALSE(AudioFileLyrics::writeLyric(home.filePath("none.mp3"), kTimed));
    const QString path = makeAudioFile(audioFormats().first(), home.path(), "song");
    ASSERT_FALSE(path.isNull());
    EXPECT_FALSE(AudioFileLyrics::writeLyric(path, " \n"));
    EXPECT_FALSE(AudioFileLyrics::readLyric(path));
}

enum class Planted { Pipe, Folder, DevZero, OverTheBound };

class NonLyricEntries : public ::testing::TestWithParam<Planted> {
protected:
    TempHome home;
    void plant(const QString& path)
    {
        const QByteArray local = QFile::encodeName(path);
        switch (GetParam()) {
        case Planted::Pipe:
            ASSERT_EQ(::mkfifo(local.constData(), 0600), 0);
            break;
        case Planted::Folder:
            ASSERT_TRUE(QDir().mkpath(path));
            break;
        case Planted::DevZero:
            ASSERT_EQ(::symlink("/dev/zero", local.constData()), 0);
            break;
        case Planted::OverTheBound:
            home.write(QFileInfo(path).fileName(),
                       "[00:01]" + QByteArray(AudioFileLyrics::kMaxLrcBytes, 'x'));
            break;
        }
    }
    // Fails instead of hanging when the read waits on a pipe, then lets it go.
    template <typename F> auto atOnce(const QString& path, F read)
    {
        auto done = std::async(std::launch::async, read);
        if (done.wait_for(std::chrono::seconds(5)) != std::future_status::ready) {
            ADD_FAILURE() << "the read waits on " << path.toStdString();
            while (done.wait_for(std::chrono::milliseconds(100)) != std::future_status::ready) {
                const int fd = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_NONBLOCK);
                if (fd >= 0)
                    ::close(fd);
            }
        }
        return done.get();
    }
};

TEST_P(NonLyricEntries, BesideTheAudioFileAreNoLyric)
{
    plant(home.filePath("song.lrc"));
    const QString audio = home.filePath("song.flac");
    EXPECT_FALSE(
        atOnce(home.filePath("song.lrc"), [&] { return AudioFileLyrics::readLrcBeside(audio); }));
}

// Audio files have a bound of their own, far above any lyric.
class NonAudioEntries : public NonLyricEntries {};

TEST_P(NonAudioEntries, AsTheAudioFileAreNeitherReadNorWritten)
{
    const QString audio = home.filePath("song.mp3");
    plant(audio);
    EXPECT_FALSE(atOnce(audio, [&] { return AudioFileLyrics::readLyric(audio); }));
    EXPECT_FALSE(atOnce(audio, [&] { return AudioFileLyrics::writeLyric(audio, kTimed); }));
}

INSTANTIATE_TEST_SUITE_P(Kinds, NonLyricEntries,
                         ::testing::Values(Planted::Pipe, Planted::Folder, Planted::DevZero,
                                           Planted::OverTheBound));
INSTANTIATE_TEST_SUITE_P(Kinds, NonAudioEntries,
                         ::testing::Values(Planted::Pipe, Planted::Folder, Planted::DevZero));

} // namespace
