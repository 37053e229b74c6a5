#include "core/lyric/Lyric.h"

#include "support/TempHome.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

QString at(Lyric& lyric, double t)
{
    const QString text = lyric.lyricsAtTime(t);
    return text.isNull() ? QStringLiteral("<nil>") : text;
}

struct TimeCase {
    double time;
    const char* expected;
};

class ThreeLines : public ::testing::TestWithParam<TimeCase> {};

TEST_P(ThreeLines, AnswerTheLineSungAtATime)
{
    // Asked twice: once fresh, once after a query elsewhere filled the cache.
    for (double warmUp : {-100.0, 0.5, 6.0, 50.0}) {
        Lyric lyric;
        lyric.parseLRCcontent(QStringLiteral("[00:00.00]A\n[00:05.00]B\n[00:09.00]C"));
        lyric.lrcItemAtTime(warmUp);
        EXPECT_EQ(at(lyric, GetParam().time), QString::fromUtf8(GetParam().expected))
            << "after asking " << warmUp;
    }
}

INSTANTIATE_TEST_SUITE_P(Times, ThreeLines,
                         ::testing::Values(TimeCase{4.999, "A"}, TimeCase{5.0, "B"},
                                           TimeCase{8.999, "B"}, TimeCase{9.0, "C"},
                                           TimeCase{100.0, "C"}, TimeCase{1e9, "C"},
                                           TimeCase{-1.0, "<nil>"}));

TEST(Timeline, FirstLastRepeatedAndOutOfOrderLines)
{
    // Times before the first line, a single line shown at every time, the last of identical
    // start times; lines sorted as 10.6, 10.0, 12.0, where the scan stops at 10.6 for earlier
    // times and never returns that line for later ones.
    const char* late = "[00:02.00]A\n[00:05.00]B\n[00:09.00]C";
    const char* only = "[00:30.00]only";
    const char* same = "[00:01]a\n[00:03]first\n[00:03]second\n[00:05]c";
    const char* near = "[00:10.60]first\n[00:10.00]second\n[00:12.00]third";
    const struct {
        const char* text;
        double time;
        const char* line;
    } cases[] = {{late, 6, "B"},        {late, 1, "<nil>"},     {late, 2, "A"},
                 {only, 0, "only"},     {only, -5, "only"},     {same, 3.5, "second"},
                 {near, 10.3, "<nil>"}, {near, 10.7, "second"}, {near, 12.5, "third"}};
    // One document for each run of its rows, asked in order as a player would.
    std::optional<Lyric> lyric;
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const auto& c = cases[i];
        if (i == 0 || c.text != cases[i - 1].text)
            lyric.emplace().parseLRCcontent(QString::fromUtf8(c.text));
        EXPECT_EQ(at(*lyric, c.time), QString::fromUtf8(c.line)) << c.text << " at " << c.time;
    }
}

TEST(Timeline, EmptyDocumentAnswersNothing)
{
    Lyric lyric;
    EXPECT_EQ(lyric.lrcItemAtTime(0), nullptr);
    EXPECT_EQ(lyric.itemIndexNonEmptyContent(0), -1);
    lyric.parseLRCcontent(QString());
    EXPECT_EQ(lyric.lrcItemAtTime(3), nullptr);
    EXPECT_EQ(lyric.lines(), 0);
}

TEST(Timeline, CachedLineFollowsTheEndTimeFixedAtSort)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[00:00]A\n[00:05]B\n[00:09]C"));
    EXPECT_EQ(at(lyric, 6), QStringLiteral("B"));
    lyric.setOffsetTime(-2.0); // B now starts at 3 and C at 7, but B's end stays 9
    EXPECT_EQ(at(lyric, 8.5), QStringLiteral("B"));

    Lyric fresh;
    fresh.parseLRCcontent(QStringLiteral("[00:00]A\n[00:05]B\n[00:09]C"));
    fresh.setOffsetTime(-2.0);
    EXPECT_EQ(at(fresh, 8.5), QStringLiteral("C"));
}

TEST(Timeline, IndexAccessIsBoundsCheckedAndNeedsAParse)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[00:01]a\n[00:02]b"));
    EXPECT_EQ(lyric.lrcItemAtIndex(1)->content(), QStringLiteral("b"));
    EXPECT_EQ(lyric.lrcItemAtIndex(2), nullptr);
    EXPECT_EQ(lyric.lrcItemAtIndex(-1), nullptr);
    EXPECT_EQ(lyric.indexOfItem(lyric.lrcItemAtIndex(1)), 1);
    LRCItem stranger;
    EXPECT_EQ(lyric.indexOfItem(&stranger), Lyric::NotFound);
    EXPECT_EQ(lyric.indexOfItem(nullptr), Lyric::NotFound);
    lyric.clean();
    EXPECT_EQ(lyric.lrcItemAtIndex(0), nullptr);
}

TEST(Timeline, NearestNonBlankLineAtOrBefore)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[00:10]text\n[00:12] \r\n[00:14]\n[00:16]more"));
    EXPECT_EQ(lyric.itemIndexNonEmptyContent(1), 0);
    EXPECT_EQ(lyric.itemIndexNonEmptyContent(2), 0);
    EXPECT_EQ(lyric.itemIndexNonEmptyContent(3), 3);
    EXPECT_EQ(lyric.itemIndexNonEmptyContent(2000000000), 3);
    EXPECT_EQ(lyric.itemIndexNonEmptyContent(-4), -1);

    Lyric blank;
    blank.parseLRCcontent(QStringLiteral("[00:10]\n[00:12]  "));
    EXPECT_EQ(blank.itemIndexNonEmptyContent(1), -1);
}

struct OffsetWrite {
    const char* before;
    double seconds;
    const char* after;
};

class OffsetWriting : public ::testing::TestWithParam<OffsetWrite> {};

TEST_P(OffsetWriting, WritesMillisecondsIntoTheText)
{
    Lyric lyric;
    lyric.parseLRCcontent(QString::fromUtf8(GetParam().before));
    lyric.setOffsetTime(GetParam().seconds);
    EXPECT_EQ(lyric.contents(), QString::fromUtf8(GetParam().after));
    EXPECT_DOUBLE_EQ(lyric.offsetTime(), GetParam().seconds);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, OffsetWriting,
    ::testing::Values(OffsetWrite{"[00:01]a", 0.25, "[00:01]a\n[offset:250]"},
                      OffsetWrite{"[00:01]a", -1.2344, "[00:01]a\n[offset:-1234]"},
                      OffsetWrite{"[offset:+500]\n[00:01]a", 0.5, "[offset:500]\n[00:01]a"},
                      OffsetWrite{"[offset:7]x[offset:7]\n[00:01]a", 0.0,
                                  "[offset:0]x[offset:0]\n[00:01]a"},
                      OffsetWrite{"", 1.0, "\n[offset:1000]"}));

TEST(OffsetWriting, EachChangeReplacesTheLastTagWritten)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[00:01]a"));
    lyric.setOffsetTime(0.25);
    lyric.setOffsetTime(-0.1);
    EXPECT_EQ(lyric.contents(), QStringLiteral("[00:01]a\n[offset:-100]"));
    EXPECT_FLOAT_EQ(lyric.lrcArray()[0]->startTime(), 0.9f);
}

TEST(OffsetWriting, AbsentTextStaysAbsent)
{
    Lyric lyric;
    lyric.setOffsetTime(1.0);
    EXPECT_TRUE(lyric.contents().isNull());
    EXPECT_EQ(lyric.offsetItem(), QStringLiteral("[offset:1000]"));
}

TEST(Renderings, ReadableTextRepeatsMultiTagLinesPerTag)
{
    Lyric lyric;
    EXPECT_EQ(lyric.contentsReadable(), QString(QLatin1String("")));
    lyric.parseLRCcontent(QStringLiteral("[ar:x]\n[00:01][00:03]a\n[00:02]b"));
    EXPECT_EQ(lyric.contentsReadable(), QStringLiteral("a\nb\na\n"));
}

TEST(Renderings, DescriptionAndDebugListing)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[02:03.5]x\n[1:23.45]Hello"));
    EXPECT_EQ(lyric.lrcArray()[0]->description(), QStringLiteral("[1:23.450001] Hello"));
    EXPECT_EQ(lyric.lrcArray()[1]->description(), QStringLiteral("[2:3.500000] x"));
    MessageCapture log;
    lyric.debugItems();
    EXPECT_EQ(log.lines(), QStringList({"[1:23.450001] Hello", "[2:3.500000] x"}));
}

} // namespace
