#include "StoreFixture.h"

#include "core/foundation/DataAdditions.h"
#include "core/store/LyricTagBlock.h"

#include "support/QtPrinters.h"

namespace {

const QString kSong = QStringLiteral("[ti:Rain]\n[offset:-20]\n[00:01.00]Drops\r\n[00:03]\n"
                                     "[00:05][00:09]On the roof \u96e8\n");

TEST(TagBlock, LayoutIsReadableLinesSpacerNoticeAndMarkedPayload)
{
    Lyric lyric;
    lyric.parseLRCcontent(kSong);
    const auto text = tagblock::tagTextForLyric(lyric);
    ASSERT_TRUE(text);
    const QString readable = QStringLiteral("Drops\r\n\nOn the roof \u96e8\nOn the roof \u96e8\n");
    const QString head = readable + QString(40, u'\n') +
                         QStringLiteral("=QVInfo=following datas was a format of karaoke style "
                                        "lyric attached by Versewick, plz don't modify anything "
                                        "below.\n=QVNOW=");
    ASSERT_TRUE(text->startsWith(head));
    ASSERT_TRUE(text->endsWith(QStringLiteral("=QVEOF=")));
    const QString payload = text->mid(head.size(), text->size() - head.size() - 7);
    const QStringList lines = payload.split(QStringLiteral("\r\n"));
    for (qsizetype i = 0; i + 1 < lines.size(); ++i)
        EXPECT_EQ(lines[i].size(), 64);
    EXPECT_LE(lines.back().size(), 64);
    EXPECT_FALSE(payload.endsWith(QStringLiteral("\r\n")));
    EXPECT_EQ(foundation::zlibInflate(foundation::dataFromBase64String(payload)), kSong.toUtf8());
}

TEST(TagBlock, NothingIsWrittenForBlankLyrics)
{
    for (const QString& text : {QStringLiteral("[00:01]\n[00:02]  \n[ti:x]"), QString(),
                                QStringLiteral("no tags at all")}) {
        Lyric lyric;
        lyric.parseLRCcontent(text);
        EXPECT_FALSE(tagblock::tagTextForLyric(lyric)) << text.toStdString();
    }
}

struct TagCase {
    const char* name;
    QString (*make)(const QString& block);
    bool found;
};

QString blockFor(const QString& lrc)
{
    Lyric lyric;
    lyric.parseLRCcontent(lrc);
    return *tagblock::tagTextForLyric(lyric);
}

class TagReading : public ::testing::TestWithParam<TagCase> {};

TEST_P(TagReading, FindsTheFirstUsableBlock)
{
    const QString tag = GetParam().make(blockFor(kSong));
    const auto text = tagblock::lrcFromTagText(tag);
    EXPECT_EQ(text.has_value(), GetParam().found);
    if (text) {
        EXPECT_EQ(*text, kSong);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Tags, TagReading,
    ::testing::Values(
        TagCase{"asWritten", [](const QString& b) { return b; }, true},
        TagCase{"lfOnly", [](const QString& b) { return QString(b).replace("\r\n", "\n"); }, true},
        TagCase{"noBreaks", [](const QString& b) { return QString(b).remove("\r\n"); }, true},
        TagCase{"blanksInside", [](const QString& b) { return QString(b).replace("\r\n", " \t "); },
                true},
        TagCase{"textAround", [](const QString& b) { return "typed words\n" + b + "\ntrailing"; },
                true},
        TagCase{"twoBlocks",
                [](const QString& b) { return b + blockFor(QStringLiteral("[00:01]other")); },
                true},
        TagCase{"endBeforeStart",
                [](const QString& b) {
                    return QStringLiteral("=QVEOF=") + QString(b).remove("=QVEOF=");
                },
                false},
        TagCase{"noStart", [](const QString& b) { return QString(b).remove("=QVNOW="); }, false},
        TagCase{"emptyPayload", [](const QString&) { return QStringLiteral("=QVNOW==QVEOF="); },
                false},
        TagCase{"corrupt",
                [](const QString& b) {
                    return QString(b).replace(b.indexOf("=QVNOW=") + 12, 8, "AAAAAAAA");
                },
                false},
        TagCase{"plainLyrics", [](const QString&) { return QStringLiteral("la la la\nla"); },
                false}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(TagBlock, InflationBombIsRejected)
{
    const QByteArray bomb =
        *foundation::zlibDeflate(QByteArray(foundation::kMaxInflatedSize + 10, 'a'));
    const QString tag = QStringLiteral("=QVNOW=") + foundation::base64EncodedString(bomb) +
                        QStringLiteral("=QVEOF=");
    EXPECT_FALSE(tagblock::lrcFromTagText(tag));
}

TEST_F(StoreTest, TrackRoundTripIsExact)
{
    MemoryTrack track;
    control.writeLrcToTrack(*lyricOf(kSong), track, false, false);
    control.fetchLrcFromTrackTags(track);
    ASSERT_EQ(delegate.calls.size(), 1u);
    EXPECT_EQ(delegate.calls[0].source, 1);
    EXPECT_EQ(delegate.calls[0].contents, kSong);
}

TEST_F(StoreTest, ExistingTagIsKeptUnlessOverwriting)
{
    MemoryTrack track;
    track.tag = QStringLiteral("words the user typed");
    control.writeLrcToTrack(*lyricOf(kSong), track, false, true);
    EXPECT_EQ(track.tag, QStringLiteral("words the user typed"));
    control.writeLrcToTrack(*lyricOf(kSong), track, true, false);
    EXPECT_TRUE(track.tag.endsWith(QStringLiteral("=QVEOF=")));
    EXPECT_FALSE(track.tag.contains(QStringLiteral("typed")));

    track.tag = QStringLiteral(" \n ");
    control.writeLrcToTrack(*lyricOf(kSong), track, false, false);
    EXPECT_TRUE(track.tag.startsWith(QStringLiteral("Drops")));
}

TEST_F(StoreTest, UnusableTagFallsThroughToTheFolder)
{
    putFile(QStringLiteral("Ann--Rain.lrc"), "[00:01]from the folder");
    MemoryTrack track;
    track.trackArtist = QStringLiteral("Ann");
    track.trackName = QStringLiteral("Rain");
    track.tag = QStringLiteral("=QVEOF= =QVNOW=garbage");
    control.fetchLrcFromTrackTags(track);
    ASSERT_EQ(delegate.calls.size(), 1u);
    EXPECT_EQ(delegate.calls[0].source, 0);
    EXPECT_EQ(delegate.calls[0].contents, QStringLiteral("[00:01]from the folder"));
}

// Only blocks that reading gives back are written: the text's UTF-8 may fill the inflation
// limit but not pass it.
class LargeLyrics : public StoreTest, public ::testing::WithParamInterface<qsizetype> {};

TEST_P(LargeLyrics, AreWrittenOnlyWhenTheyReadBack)
{
    const QByteArray line = "[00:01]" + QByteArray(1016, 'x') + '\n'; // 1 KiB
    QByteArray text = line.repeated(foundation::kMaxInflatedSize / line.size());
    text += QByteArray(GetParam() - text.size(), 'y');
    Lyric lyric;
    lyric.parseLRCcontent(QString::fromLatin1(text));
    ASSERT_EQ(lyric.contents().size(), GetParam());

    MemoryTrack track;
    control.writeLrcToTrack(lyric, track, true, true);
    if (GetParam() > foundation::kMaxInflatedSize) {
        EXPECT_TRUE(track.tag.isEmpty());
        return;
    }
    control.fetchLrcFromTrackTags(track);
    ASSERT_EQ(delegate.calls.size(), 1u);
    EXPECT_EQ(delegate.calls[0].source, 1);
    EXPECT_EQ(delegate.calls[0].contents.size(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Sizes, LargeLyrics,
                         ::testing::Values(foundation::kMaxInflatedSize,
                                           foundation::kMaxInflatedSize + 1));

} // namespace
