#include "core/lyric/Lyric.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

struct WordCase {
    const char* name;
    const char16_t* line;
    const char16_t* text;            // the item's text
    std::vector<qsizetype> position; // where each word begins; empty: no word timing
    std::vector<float> start;        // relative to the line's tag
    float end;                       // the closing tag, relative; NaN for none
};

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

class WordTags : public testing::TestWithParam<WordCase> {};

TEST_P(WordTags, ReadIntoTheItem)
{
    const WordCase& c = GetParam();
    Lyric lyric;
    lyric.parseLRCcontent(QString::fromUtf16(c.line));
    ASSERT_EQ(lyric.lines(), 1);
    const LRCItem* item = lyric.lrcItemAtIndex(0);
    EXPECT_EQ(item->content(), QString::fromUtf16(c.text));
    EXPECT_EQ(lyric.contentsReadable(), QString::fromUtf16(c.text) + u'\n');
    if (c.position.empty()) {
        EXPECT_EQ(item->words(), nullptr);
        return;
    }
    ASSERT_NE(item->words(), nullptr);
    const auto& words = item->words()->words;
    ASSERT_EQ(words.size(), c.position.size());
    for (std::size_t i = 0; i < words.size(); ++i) {
        EXPECT_EQ(words[i].position, c.position[i]) << i;
        EXPECT_NEAR(words[i].start, c.start[i], 1e-4) << i;
    }
    if (std::isnan(c.end))
        EXPECT_TRUE(std::isnan(item->words()->end));
    else
        EXPECT_NEAR(item->words()->end, c.end, 1e-4);
}

using At = std::vector<qsizetype>;
using Starts = std::vector<float>;

INSTANTIATE_TEST_SUITE_P(
    Lines, WordTags,
    testing::Values(
        WordCase{"plain", u"[00:12.00]Hold me <now>", u"Hold me <now>", At(), Starts(), kNone},
        WordCase{"words", u"[00:12.00]<00:12.00>Hold <00:12.60>me <00:13.10>now", u"Hold me now",
                 At{0, 5, 8}, Starts{0, 0.6f, 1.1f}, kNone},
        WordCase{"closing_tag", u"[00:12.00]<00:12.00>Hold <00:12.60>me<00:13.00> ", u"Hold me ",
                 At{0, 5}, Starts{0, 0.6f}, 1.0f},
        WordCase{"untagged_first_word", u"[01:00.00]Oh <01:00.50>yes", u"Oh yes", At{0, 3},
                 Starts{0, 0.5f}, kNone},
        WordCase{"out_of_order", u"[00:10.00]<00:10.00>a <00:12.00>b <00:11.00>c", u"a b c",
                 At{0, 2, 4}, Starts{0, 2, 2}, kNone},
        WordCase{"before_the_line", u"[00:10.00]<00:09.00>a <00:10.50>b", u"a b", At{0, 2},
                 Starts{-1, 0.5f}, kNone},
        WordCase{"beyond_the_lines_end", u"[00:10.00]<00:10.00>a <59:00.00>b", u"a b", At{0, 2},
                 Starts{0, 3530}, kNone},
        WordCase{"tags_without_text_between", u"[00:10.00]<00:10.00><00:10.40>a <00:11>b", u"a b",
                 At{0, 2}, Starts{0.4f, 1}, kNone},
        WordCase{"malformed_stay_text", u"[00:10.00]<00:10.00>a <1:2.3 <x:1> <:1> <1:> b",
                 u"a <1:2.3 <x:1> <:1> <1:> b", At{0}, Starts{0}, kNone},
        WordCase{"overlong_tag_is_text", u"[00:10.00]<0000000000000000000000001:00>a",
                 u"<0000000000000000000000001:00>a", At(), Starts(), kNone},
        WordCase{"only_a_tag", u"[00:10.00]<00:10.00>", u"", At(), Starts(), kNone},
        WordCase{"CJK", u"[00:01.00]<00:01.00>你<00:01.50>好<00:02.00>𠀋<00:02.40>", u"你好𠀋",
                 At{0, 1, 2}, Starts{0, 0.5f, 1}, 1.4f}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(WordTags, EachRepeatOfALineFillsFromItsOwnStart)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[00:40.00][00:10.00]<00:10.00>la <00:10.50>la\n"
                                         "[offset:500]"));
    ASSERT_EQ(lyric.lines(), 2);
    for (const LRCItem* item : lyric.lrcArray()) {
        ASSERT_NE(item->words(), nullptr);
        EXPECT_EQ(item->words(), lyric.lrcItemAtIndex(0)->words()); // one timing, shared
        EXPECT_FLOAT_EQ(item->words()->words[1].start, 0.5f);
    }
    EXPECT_FLOAT_EQ(lyric.lrcItemAtIndex(1)->startTime(), 40.5f);
}

} // namespace
