#include "core/display/KaraokeLine.h"

#include "core/lyric/Lyric.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

namespace {

// "Hold me now" at 12 s: "Hold " from 12.0, "me " from 12.6, "now" from 13.1 to the closing
// tag at 14.1. The next line starts at 20.
KaraokeLine holdMeNow(Lyric& lyric, const char* closing = "<00:14.10>")
{
    lyric.parseLRCcontent(QStringLiteral("[00:12.00]<00:12.00>Hold <00:12.60>me <00:13.10>now") +
                          QLatin1String(closing) + QStringLiteral("\n[00:20.00]next"));
    return KaraokeLine::of(lyric.lrcItemAtIndex(0));
}

struct FillCase {
    double seconds;
    double lineProgress;
    std::vector<QRectF> rects; // characters 10 wide, "Hold me " on one line, "now" under it
};

class KaraokeFill : public testing::TestWithParam<FillCase> {};

TEST_P(KaraokeFill, SungPartAtTime)
{
    Lyric lyric;
    const KaraokeLine line = holdMeNow(lyric);
    ASSERT_TRUE(line.isTimed());
    EXPECT_NEAR(karaoke::lineProgress(line, GetParam().seconds), GetParam().lineProgress, 1e-6);
    // Two wrapped lines, centred in 100: "Hold me " from x 10, "now" from x 35.
    const std::vector<KaraokeTextLine> lines{{0, 8, QRectF(0, 0, 100, 20)},
                                             {8, 11, QRectF(0, 20, 100, 20)}};
    const KaraokeCaret x = [&](int i, qsizetype index) {
        return (i == 0 ? 10.0 : 35.0) + 10.0 * double(index - lines[std::size_t(i)].start);
    };
    const auto rects = karaoke::sungRects(line, GetParam().seconds, lines, x);
    ASSERT_EQ(rects.size(), GetParam().rects.size());
    for (std::size_t i = 0; i < rects.size(); ++i) {
        const QRectF& expected = GetParam().rects[i];
        EXPECT_NEAR(rects[i].right(), expected.right(), 1e-3) << i;
        EXPECT_EQ(rects[i].adjusted(0, 0, expected.right() - rects[i].right(), 0), expected);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Times, KaraokeFill,
    testing::Values(FillCase{11.0, 0, {}},                           // before the line
                    FillCase{12.0, 0, {QRectF(0, 0, 10, 20)}},       // nothing sung yet
                    FillCase{12.3, 0.5 / 3, {QRectF(0, 0, 35, 20)}}, // half of "Hold "
                    FillCase{12.6, 1.0 / 3, {QRectF(0, 0, 60, 20)}}, // "me " begins
                    FillCase{13.6, 2.5 / 3, {QRectF(0, 0, 100, 20), QRectF(0, 20, 50, 20)}},
                    FillCase{19.0, 1, {QRectF(0, 0, 100, 20), QRectF(0, 20, 65, 20)}}));

TEST(KaraokeLine, LastWordEndsAtClosingTagOrWithinTheLongestWordAndUntimedHasNoProgress)
{
    Lyric closed;
    EXPECT_NEAR(holdMeNow(closed).wordEnd(2), 14.1, 1e-6);
    // No closing tag: the line's end, but no longer than its longest word (at least 1 s).
    Lyric open;
    EXPECT_NEAR(holdMeNow(open, "").wordEnd(2), 14.1, 1e-6);
    open.parseLRCcontent(QStringLiteral("[00:12.00]<00:12.00>Hold <00:14.00>me\n[00:30]x"));
    EXPECT_NEAR(KaraokeLine::of(open.lrcItemAtIndex(0)).wordEnd(1), 16.0, 1e-6);
    // One word on the last line: a second at most.
    Lyric last;
    last.parseLRCcontent(QStringLiteral("[00:01.00]<00:01.00>la"));
    EXPECT_NEAR(KaraokeLine::of(last.lrcItemAtIndex(0)).wordEnd(0), 2.0, 1e-6);
    last.parseLRCcontent(QStringLiteral("[00:01.00]plain"));
    EXPECT_EQ(karaoke::lineProgress(KaraokeLine::of(last.lrcItemAtIndex(0)), 1.5), -1);
    EXPECT_EQ(karaoke::lineProgress(KaraokeLine::of(nullptr), 1.5), -1);
}

} // namespace
