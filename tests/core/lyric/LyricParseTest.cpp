#include "core/lyric/Lyric.h"

#include "support/TempHome.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

struct Expected {
    float start;
    float end;
    QString content;
};

std::vector<Expected> itemsOf(const Lyric& lyric)
{
    std::vector<Expected> items;
    for (const auto& item : lyric.lrcArray())
        items.push_back({item->startTime(), item->endTime(), item->content()});
    return items;
}

void expectItems(const Lyric& lyric, const std::vector<Expected>& expected)
{
    const auto items = itemsOf(lyric);
    ASSERT_EQ(items.size(), expected.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_FLOAT_EQ(items[i].start, expected[i].start);
        EXPECT_FLOAT_EQ(items[i].end, expected[i].end);
        EXPECT_EQ(items[i].content, expected[i].content);
        EXPECT_EQ(lyric.lrcArray()[i]->index(), int(i));
    }
}

TEST(LyricParse, MultiTagLineYieldsOneItemPerTagPlacedByTime)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[ti:Song]\n[00:10.00][00:20.00]Hello\n[00:15.00]Mid"));
    EXPECT_TRUE(lyric.isParsed());
    EXPECT_EQ(lyric.lines(), 3);
    expectItems(lyric, {{10, 15, "Hello"}, {15, 20, "Mid"}, {20, 999999, "Hello"}});
}

TEST(LyricParse, TimedEmptyLineIsKeptAndEndsThePreviousLine)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[00:01.00]a\n[00:05.00]\n[00:07.00]b"));
    expectItems(lyric, {{1, 5, "a"}, {5, 7, ""}, {7, 999999, "b"}});
}

TEST(LyricParse, ContentsKeepTheTextExactlyAndOnlyLineFeedsSplit)
{
    const QString text = QStringLiteral("[ar:x]\r\n[00:01]a\r\n\nplain\n[00:02]b\r");
    Lyric lyric;
    lyric.parseLRCcontent(text);
    EXPECT_EQ(lyric.contents(), text);
    expectItems(lyric, {{1, 2, "a\r"}, {2, 999999, "b\r"}});
}

TEST(LyricParse, AbsentAndEmptyTextParseToNoItems)
{
    for (const QString& text : {QString(), QString(QLatin1String("")), QStringLiteral("no tags")}) {
        Lyric lyric;
        lyric.parseLRCcontent(text);
        EXPECT_TRUE(lyric.isParsed());
        EXPECT_EQ(lyric.lines(), 0);
        EXPECT_EQ(lyric.offsetTime(), 0.0);
        EXPECT_EQ(lyric.contents().isNull(), text.isNull());
    }
}

TEST(LyricParse, AbsurdMinuteCountsWrapInsteadOfOverflowing)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[99999999:00]x\n[99999999999999:00.5]y\n[00:") +
                          QString(400, u'9') + QStringLiteral("]z"));
    ASSERT_EQ(lyric.lines(), 3);
    for (const auto& item : lyric.lrcArray())
        EXPECT_FALSE(std::isnan(item->startTime()));
}

struct OffsetCase {
    const char* text;
    double offset;
    const char* tag; // nullptr: none found
};

class OffsetTags : public ::testing::TestWithParam<OffsetCase> {};

TEST_P(OffsetTags, ShiftEveryStartTime)
{
    Lyric lyric;
    lyric.parseLRCcontent(QString::fromUtf8(GetParam().text) + QStringLiteral("\n[00:10.00]a"));
    EXPECT_DOUBLE_EQ(lyric.offsetTime(), GetParam().offset);
    EXPECT_EQ(lyric.offsetItem(), GetParam().tag ? QString::fromUtf8(GetParam().tag) : QString());
    ASSERT_EQ(lyric.lines(), 1);
    EXPECT_FLOAT_EQ(lyric.lrcArray()[0]->startTime(), float(10.0 + GetParam().offset));
}

INSTANTIATE_TEST_SUITE_P(
    Tags, OffsetTags,
    ::testing::Values(OffsetCase{"[offset:+500]", 0.5, "[offset:+500]"},
                      OffsetCase{"[offset:-250]", -0.25, "[offset:-250]"},
                      OffsetCase{"text [offset:100] text", 0.1, "[offset:100]"},
                      OffsetCase{"[offset:200]\n[offset:900]", 0.2, "[offset:200]"},
                      OffsetCase{"[offset:12.5]", 0.0, nullptr},
                      OffsetCase{"[offset: 500]", 0.0, nullptr},
                      OffsetCase{"[OFFSET:500]", 0.0, nullptr}));

TEST(LyricParse, EndTimesCarryTheOffsetInForceWhenSorted)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[offset:1000]\n[00:01]a\n[00:03]b"));
    expectItems(lyric, {{2, 4, "a"}, {4, 999999, "b"}});
    // A later offset moves start times only.
    lyric.setOffsetTime(0.0);
    expectItems(lyric, {{1, 4, "a"}, {3, 999999, "b"}});
}

TEST(LyricParse, StartTimesLessThanASecondApartKeepTextOrder)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[00:10.60]first\n[00:10.00]second\n[00:12.00]third"));
    expectItems(lyric,
                {{10.6f, 10.0f, "first"}, {10.0f, 12.0f, "second"}, {12.0f, 999999, "third"}});
}

TEST(LyricParse, SortIsAscendingAndStableAcrossManyLines)
{
    QString text;
    for (int i = 199; i >= 0; --i)
        text += QStringLiteral("[%1:%2]line%3\n").arg(i / 60).arg(i % 60).arg(i);
    text += QStringLiteral("[01:40.00]dup\n");
    Lyric lyric;
    lyric.parseLRCcontent(text);
    ASSERT_EQ(lyric.lines(), 201);
    for (int i = 1; i < lyric.lines(); ++i) {
        EXPECT_LE(lyric.lrcArray()[i - 1]->startTime() - 1.0f, lyric.lrcArray()[i]->startTime());
    }
    // "dup" compares the same as line100 only: the stable sort keeps it after line100.
    EXPECT_EQ(lyric.lrcItemAtIndex(100)->content(), QStringLiteral("line100"));
    EXPECT_EQ(lyric.lrcItemAtIndex(101)->content(), QStringLiteral("dup"));
}

struct OrderCase {
    float a;
    float b;
    LRCOrdering withContext;
};

class SortComparison : public ::testing::TestWithParam<OrderCase> {};

TEST_P(SortComparison, TreatsNearTimesAsSameAndContextOnlyFlipsDirection)
{
    LRCItem a, b;
    a.setStartTime(GetParam().a);
    b.setStartTime(GetParam().b);
    const int flag = 0;
    EXPECT_EQ(SortLRCItem(a, b, &flag), GetParam().withContext);
    EXPECT_EQ(static_cast<int>(SortLRCItem(a, b, nullptr)),
              -static_cast<int>(GetParam().withContext));
}

INSTANTIATE_TEST_SUITE_P(Pairs, SortComparison,
                         ::testing::Values(OrderCase{10.0f, 10.9f, LRCOrdering::Same},
                                           OrderCase{10.9f, 10.0f, LRCOrdering::Same},
                                           OrderCase{10.0f, 11.0f, LRCOrdering::Less},
                                           OrderCase{12.5f, 10.0f, LRCOrdering::Greater},
                                           OrderCase{INFINITY, INFINITY, LRCOrdering::Same},
                                           OrderCase{INFINITY, 0.0f, LRCOrdering::Greater},
                                           OrderCase{-INFINITY, 0.0f, LRCOrdering::Less},
                                           OrderCase{NAN, 3.0f, LRCOrdering::Same}));

TEST(LyricParse, CleanForgetsEverythingButTheOffsetTagText)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[offset:500]\n[00:01]a"));
    lyric.parseLRCcontent(QStringLiteral("[00:01]a"));
    EXPECT_EQ(lyric.offsetTime(), 0.0);
    EXPECT_EQ(lyric.offsetItem(), QStringLiteral("[offset:500]"));
    // The remembered tag is not in the new text, so the new one is written nowhere.
    lyric.setOffsetTime(0.25);
    EXPECT_EQ(lyric.contents(), QStringLiteral("[00:01]a"));
    EXPECT_EQ(lyric.offsetItem(), QStringLiteral("[offset:250]"));

    lyric.clean();
    EXPECT_FALSE(lyric.isParsed());
    EXPECT_TRUE(lyric.contents().isNull());
    EXPECT_EQ(lyric.lines(), 0);
    EXPECT_EQ(lyric.offsetItem(), QStringLiteral("[offset:250]"));
}

TEST(LyricFile, ReadsUtf8WithAndWithoutBom)
{
    TempHome home;
    Lyric lyric;
    ASSERT_TRUE(lyric.parseLRCfile(home.write("a.lrc", "\xEF\xBB\xBF[00:01]\xE6\xAD\x8C")));
    ASSERT_EQ(lyric.lines(), 1);
    EXPECT_EQ(lyric.lrcArray()[0]->content(), QString::fromUtf8("\xE6\xAD\x8C"));
    EXPECT_EQ(lyric.fileEncoding(), Lyric::UTF8Encoding);
}

TEST(LyricFile, UnreadableFileLogsAndLeavesTheDocumentAlone)
{
    TempHome home;
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[00:01]kept"));
    for (const QString& path : {home.filePath("missing.lrc"),
                                home.write("bad.lrc", "[00:01]\xFF\xFE"), home.path(), QString()}) {
        MessageCapture log;
        EXPECT_FALSE(lyric.parseLRCfile(path));
        ASSERT_EQ(log.lines().size(), 1);
        EXPECT_TRUE(log.lines()[0].startsWith(QStringLiteral("error on read lrc file ")));
        EXPECT_EQ(lyric.lines(), 1);
        EXPECT_EQ(lyric.contents(), QStringLiteral("[00:01]kept"));
    }
}

TEST(LyricFile, UnsupportedEncodingFails)
{
    TempHome home;
    Lyric lyric;
    lyric.setFileEncoding(12345);
    MessageCapture log;
    EXPECT_FALSE(lyric.parseLRCfile(home.write("a.lrc", "[00:01]x")));
    EXPECT_FALSE(lyric.isParsed());
}

} // namespace
