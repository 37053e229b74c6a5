#include "StoreFixture.h"

#include <functional>

#include "support/QtPrinters.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <chrono>
#include <future>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

TEST_F(StoreTest, FolderLivesInTheDataHomeAndAppearsOnlyWhenNeeded)
{
    EXPECT_EQ(folder(), folders.dataHome() + QStringLiteral("/Versewick/lyrics.lrcs"));
    control.fetchLrcByArtist(QStringLiteral("Ann"), QStringLiteral("Rain"));
    control.scanLrcFilesSync();
    EXPECT_FALSE(QFileInfo::exists(folder()));
    EXPECT_EQ(LyricControl::lyricsPath(), folder());
    EXPECT_TRUE(QFileInfo(folder()).isDir());
}

TEST_F(StoreTest, NamesAreRawArtistAndTitle)
{
    EXPECT_EQ(control.identifyFromArtist(QStringLiteral("Ann"), QStringLiteral("Rain")),
              QStringLiteral("Ann--Rain"));
    MemoryTrack track;
    track.trackArtist = QStringLiteral(" Ann ");
    track.trackName = QStringLiteral("Rain ");
    EXPECT_EQ(control.fileNameFromTrack(track), QStringLiteral(" Ann --Rain .lrc"));
}

TEST_F(StoreTest, FetchAnswersSynchronouslyFromTheFolder)
{
    putFile(QStringLiteral("Ann--Rain.lrc"), "[00:01]drops");
    control.fetchLrcByArtist(QStringLiteral("Ann"), QStringLiteral("Rain"));
    ASSERT_EQ(delegate.calls.size(), 1u);
    EXPECT_EQ(delegate.calls[0].what, QStringLiteral("fetched"));
    EXPECT_EQ(delegate.calls[0].source, 0);
    EXPECT_EQ(delegate.calls[0].contents, QStringLiteral("[00:01]drops"));
    EXPECT_EQ(control.artist(), QStringLiteral("Ann"));
    EXPECT_EQ(control.song(), QStringLiteral("Rain"));
}

TEST_F(StoreTest, MissingLyricCallsTheOptionalFailureOnlyWhenImplemented)
{
    control.fetchLrcByArtist(QStringLiteral("Ann"), QStringLiteral("Snow"));
    ASSERT_EQ(delegate.calls.size(), 1u);
    EXPECT_EQ(delegate.calls[0].what, QStringLiteral("failed"));
    EXPECT_EQ(delegate.calls[0].source, 0);

    delegate.calls.clear();
    delegate.implementsFailure = false;
    control.fetchLrcByArtist(QStringLiteral("Ann"), QStringLiteral("Snow"));
    EXPECT_TRUE(delegate.calls.empty());
}

TEST_F(StoreTest, EmptyNamesAreIgnoredButBlankOnesAreLookedUp)
{
    control.fetchLrcByArtist(QString(), QStringLiteral("Rain"));
    control.fetchLrcByArtist(QStringLiteral("Ann"), QString(QLatin1String("")));
    EXPECT_TRUE(delegate.calls.empty());
    EXPECT_TRUE(control.artist().isNull());

    putFile(QStringLiteral("  --Rain.lrc"), "[00:01]blank artist");
    control.fetchLrcByArtist(QStringLiteral("  "), QStringLiteral("Rain"));
    ASSERT_EQ(delegate.calls.size(), 1u);
    EXPECT_EQ(delegate.calls[0].what, QStringLiteral("fetched"));
}

TEST_F(StoreTest, OverwriteRules)
{
    putFile(QStringLiteral("Ann--Rain.lrc"), "[00:01]old\r\n");
    writeRain(QStringLiteral("[00:01]new"), false);
    EXPECT_EQ(stored(QStringLiteral("Ann--Rain.lrc")), QByteArray("[00:01]old\r\n"));

    writeRain(QStringLiteral("[ar:Ann]\n[offset:5]\n[00:01]new"), true);
    EXPECT_EQ(stored(QStringLiteral("Ann--Rain.lrc")),
              QByteArray("[ar:Ann]\n[offset:5]\n[00:01]new"));
}

TEST_F(StoreTest, UnreadableEmptyOrOversizedFileCountsAsAbsentAndIsReplaced)
{
    const QByteArray oversized = "[00:01]" + QByteArray(foundation::kMaxLyricBytes, 'x');
    for (const QByteArray& old : {QByteArray("\xFF\xFE\xFD"), QByteArray(), oversized}) {
        putFile(QStringLiteral("Ann--Rain.lrc"), old);
        EXPECT_EQ(control.readLrcByIdentify(QStringLiteral("Ann--Rain")), nullptr);
        writeRain(QStringLiteral("[00:01]fresh"), false);
        EXPECT_EQ(stored(QStringLiteral("Ann--Rain.lrc")), QByteArray("[00:01]fresh"));
    }
}

TEST_F(StoreTest, BlankLyricsAreNeverWritten)
{
    for (const QString& text :
         {QStringLiteral(" \n\r\n\t"), QString(), QString(QLatin1String(""))}) {
        writeRain(text, true);
        EXPECT_FALSE(QFileInfo::exists(folder() + QStringLiteral("/Ann--Rain.lrc")));
    }
    // A tagless but non-blank text is a lyric as far as the folder is concerned.
    writeRain(QStringLiteral("just words"), true);
    EXPECT_EQ(stored(QStringLiteral("Ann--Rain.lrc")), QByteArray("just words"));
    EXPECT_EQ(control.readLrcByIdentify(QStringLiteral("Ann--Rain"))->lines(), 0);
}

class EscapingNames : public StoreTest,
                      public ::testing::WithParamInterface<std::pair<QString, QString>> {};

TEST_P(EscapingNames, NeverTouchAFileOutsideTheFolder)
{
    const auto& [artist, title] = GetParam();
    // A lyric planted where an escaping name would lead must not be read...
    QDir().mkpath(home.filePath(QStringLiteral("data/Versewick/x--y")));
    QFile planted(home.filePath(QStringLiteral("data/Versewick/planted--Rain.lrc")));
    ASSERT_TRUE(planted.open(QIODevice::WriteOnly));
    planted.write("[00:01]secret");
    planted.close();

    control.fetchLrcByArtist(artist, title);
    for (const auto& call : delegate.calls)
        EXPECT_NE(call.what, QStringLiteral("fetched"));

    // ...and nothing may be written anywhere by such a name.
    control.writeLrc(*lyricOf(QStringLiteral("[00:01]x")), artist, title, true);
    QStringList files;
    QDirIterator it(home.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << it.next();
    EXPECT_EQ(files, QStringList{planted.fileName()});
}

INSTANTIATE_TEST_SUITE_P(
    Names, EscapingNames,
    ::testing::Values(std::pair{QStringLiteral("../planted"), QStringLiteral("Rain")},
                      std::pair{QStringLiteral("Ann"), QStringLiteral("Rain/Snow")},
                      std::pair{QStringLiteral("x"), QStringLiteral("y/../../planted--Rain")},
                      std::pair{QStringLiteral("/tmp/abs"), QStringLiteral("Rain")},
                      std::pair{QStringLiteral("nul\0byte"), QStringLiteral("Rain")}));

TEST_F(StoreTest, ListingKeepsLyricNamesOnly)
{
    for (const char* name : {"readme.txt", "Rain.lrc", "A--B.LRC", "Ann--Live--Rain.lrc",
                             "C--D.Lrc", "E--.lrc", "noext--name"})
        putFile(QString::fromUtf8(name), "[00:01]x");
    control.scanLrcFilesSync();
    std::map<QString, std::pair<QString, QString>> listed;
    for (const LyricStorageFile& f : control.lyricFiles())
        listed[f.fileName] = {f.artist, f.song};
    const std::map<QString, std::pair<QString, QString>> expected{
        {"A--B.LRC", {"A", "B"}},
        {"Ann--Live--Rain.lrc", {"Ann", "Rain"}},
        {"C--D.Lrc", {"C", "D"}},
        {"E--.lrc", {"E", ""}}};
    EXPECT_EQ(listed, expected);
    EXPECT_EQ(control.pathOfFile(control.lyricFiles().front()),
              folder() + u'/' + control.lyricFiles().front().fileName);
}

TEST_F(StoreTest, WritesLeaveNoTemporaryFilesBehind)
{
    for (int i = 0; i < 5; ++i)
        writeRain(QStringLiteral("[00:01]v%1").arg(i), true);
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files | QDir::Hidden), QStringList{"Ann--Rain.lrc"});
    EXPECT_EQ(stored(QStringLiteral("Ann--Rain.lrc")), QByteArray("[00:01]v4"));
}

// Entries under a lyric's name that are not regular files: none is a lyric, none is written
// to or replaced, and none can make the store wait.
enum class Planted { Pipe, LinkToOutsideLyric, DanglingLink, Folder };

class NonRegularEntries : public StoreTest, public ::testing::WithParamInterface<Planted> {
protected:
    QString entry() const { return folder() + QStringLiteral("/Ann--Rain.lrc"); }
    QString outside() const { return home.filePath(QStringLiteral("outside.lrc")); }
    void plant()
    {
        LyricControl::_createDictionaryInNecessary();
        home.write(QStringLiteral("outside.lrc"), "[00:01]secret");
        const QByteArray path = QFile::encodeName(entry());
        switch (GetParam()) {
        case Planted::Pipe:
            ASSERT_EQ(mkfifo(path.constData(), 0600), 0);
            break;
        case Planted::LinkToOutsideLyric:
            ASSERT_EQ(symlink(QFile::encodeName(outside()).constData(), path.constData()), 0);
            break;
        case Planted::DanglingLink:
            ASSERT_EQ(
                symlink(QFile::encodeName(home.filePath("none")).constData(), path.constData()), 0);
            break;
        case Planted::Folder:
            ASSERT_TRUE(QDir().mkpath(entry()));
            break;
        }
    }
    // Runs store operations; fails instead of hanging when they wait on a pipe, and then
    // opens the pipe's other end until they finish.
    void withoutWaiting(const std::function<void()>& operation)
    {
        auto done = std::async(std::launch::async, operation);
        if (done.wait_for(std::chrono::seconds(10)) == std::future_status::ready)
            return;
        ADD_FAILURE() << "the store waits on " << entry().toStdString();
        // Each opening of the other end lets one waiting open finish.
        do {
            const int fd = ::open(QFile::encodeName(entry()).constData(), O_WRONLY | O_NONBLOCK);
            if (fd >= 0)
                ::close(fd);
        } while (done.wait_for(std::chrono::milliseconds(100)) != std::future_status::ready);
    }
};

TEST_P(NonRegularEntries, AreNoLyricsAndAreLeftAlone)
{
    plant();
    struct stat before {};
    ASSERT_EQ(lstat(QFile::encodeName(entry()).constData(), &before), 0);

    withoutWaiting([&] {
        control.fetchLrcByArtist(QStringLiteral("Ann"), QStringLiteral("Rain"));
        writeRain(QStringLiteral("[00:01]new"), false);
        writeRain(QStringLiteral("[00:01]new"), true);
    });
    ASSERT_EQ(delegate.calls.size(), 1u);
    EXPECT_EQ(delegate.calls[0].what, QStringLiteral("failed"));

    struct stat after {};
    ASSERT_EQ(lstat(QFile::encodeName(entry()).constData(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
    QFile target(outside());
    ASSERT_TRUE(target.open(QIODevice::ReadOnly));
    EXPECT_EQ(target.readAll(), QByteArray("[00:01]secret"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, NonRegularEntries,
                         ::testing::Values(Planted::Pipe, Planted::LinkToOutsideLyric,
                                           Planted::DanglingLink, Planted::Folder));

TEST_F(StoreTest, NamesUpToTheFileNameLimitAreStored)
{
    // 251 bytes of name and ".lrc" make the longest file name, 255 bytes.
    const QString artist(124, u'a');
    const QString longest = artist + QStringLiteral("--") + QString(125, u'b');
    control.writeLrc(*lyricOf(QStringLiteral("[00:01]long")), artist, QString(125, u'b'), false);
    ASSERT_NE(control.readLrcByIdentify(longest), nullptr);
    EXPECT_EQ(control.readLrcByIdentify(longest)->contents(), QStringLiteral("[00:01]long"));
}

TEST(StoreNames, SayWhyTheyCannotBeStored)
{
    EXPECT_TRUE(LyricControl::whyNotStorable(QString(251, u'a')).isNull());
    // Two bytes per character in UTF-8: 126 of them pass the limit.
    const QString tooLong = QStringLiteral("A--") + QString(126, QChar(0xe9));
    EXPECT_TRUE(LyricControl::whyNotStorable(tooLong).contains(QStringLiteral("259 bytes")));
    EXPECT_TRUE(LyricControl::whyNotStorable(QStringLiteral("A--b/c")).contains(u'/'));
    EXPECT_TRUE(LyricControl::whyNotStorable(QStringLiteral("A--b") + QChar(0)).contains("NUL"));
}

} // namespace
