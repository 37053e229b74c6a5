#include "StoreFixture.h"

#include "support/QtPrinters.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

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
    control.writeLrc(*lyricOf(QStringLiteral("[00:01]new")), QStringLiteral("Ann"),
                     QStringLiteral("Rain"), false);
    EXPECT_EQ(stored(QStringLiteral("Ann--Rain.lrc")), QByteArray("[00:01]old\r\n"));

    control.writeLrc(*lyricOf(QStringLiteral("[ar:Ann]\n[offset:5]\n[00:01]new")),
                     QStringLiteral("Ann"), QStringLiteral("Rain"), true);
    EXPECT_EQ(stored(QStringLiteral("Ann--Rain.lrc")),
              QByteArray("[ar:Ann]\n[offset:5]\n[00:01]new"));
}

TEST_F(StoreTest, UnreadableOrEmptyFileCountsAsAbsentAndIsReplaced)
{
    for (const QByteArray& old : {QByteArray("\xFF\xFE\xFD"), QByteArray()}) {
        putFile(QStringLiteral("Ann--Rain.lrc"), old);
        EXPECT_EQ(control.readLrcByIdentify(QStringLiteral("Ann--Rain")), nullptr);
        control.writeLrc(*lyricOf(QStringLiteral("[00:01]fresh")), QStringLiteral("Ann"),
                         QStringLiteral("Rain"), false);
        EXPECT_EQ(stored(QStringLiteral("Ann--Rain.lrc")), QByteArray("[00:01]fresh"));
    }
}

TEST_F(StoreTest, BlankLyricsAreNeverWritten)
{
    for (const QString& text :
         {QStringLiteral(" \n\r\n\t"), QString(), QString(QLatin1String(""))}) {
        control.writeLrc(*lyricOf(text), QStringLiteral("Ann"), QStringLiteral("Rain"), true);
        EXPECT_FALSE(QFileInfo::exists(folder() + QStringLiteral("/Ann--Rain.lrc")));
    }
    // A tagless but non-blank text is a lyric as far as the folder is concerned.
    control.writeLrc(*lyricOf(QStringLiteral("just words")), QStringLiteral("Ann"),
                     QStringLiteral("Rain"), true);
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
        control.writeLrc(*lyricOf(QStringLiteral("[00:01]v%1").arg(i)), QStringLiteral("Ann"),
                         QStringLiteral("Rain"), true);
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files | QDir::Hidden), QStringList{"Ann--Rain.lrc"});
    EXPECT_EQ(stored(QStringLiteral("Ann--Rain.lrc")), QByteArray("[00:01]v4"));
}

} // namespace
