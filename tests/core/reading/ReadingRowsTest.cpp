// Translation lines in the scrolling view's rows, the lit line's texts, and the strip's stack.
#include "core/display/FakeTextMeasurer.h"
#include "core/display/LRCViewHost.h"
#include "core/display/LRCViewModel.h"
#include "core/display/SecondaryLineLayout.h"
#include "core/lyric/Lyric.h"
#include "core/reading/LyricReading.h"
#include "core/reading/ShownLine.h"

#include <gtest/gtest.h>

namespace {

class QuietHost : public LRCViewHost {
public:
    void reloadData() override {}
    void scrollToOffset(double y, bool) override { offset = y; }
    void setContentOffset(double y) override { offset = y; }
    double contentOffset() const override { return offset; }
    void beginAnimation(const QString&, double, double) override {}
    void removeAllAnimations() override {}
    double offset = 0;
};

const char* const kBilingual =
    "[00:01.00]Hello\n[00:01.00]你好\n[00:03.00]World\n[00:03.00]世界\n[00:05.00]End";

class ReadingRows : public ::testing::Test {
protected:
    void SetUp() override
    {
        lyric.parseLRCcontent(QString::fromUtf8(kBilingual));
        model.rows().setViewSize({400, 300});
        model.rows().setReadingsSource([this](const Lyric* l) { return reading.readingsFor(l); });
        model.setParser(&lyric);
        model.reloadData();
    }

    FakeTextMeasurer measurer;
    QuietHost host;
    LRCViewModel model{measurer, host};
    LyricReading reading;
    Lyric lyric;
};

TEST_F(ReadingRows, TranslationsTakeNoRowAndTheirLineGrowsByThem)
{
    const LRCRowModel& rows = model.rows();
    // One line of text is 20 high with 5 of padding; the line under it adds 20.
    EXPECT_EQ(rows.heightForRow(rows.rowIndexFromLRCindex(0)), 45);
    EXPECT_EQ(rows.heightForRow(2), 0); // the translation's own row
    EXPECT_EQ(rows.rowIndexFromLRCindex(1), rows.rowIndexFromLRCindex(0));
    EXPECT_EQ(rows.heightForRow(rows.rowIndexFromLRCindex(4)), 25);
    EXPECT_EQ(rows.secondaryTextOfRow(3), QStringLiteral("世界"));

    // A lit translation lights its line; "none" shows every line as its own again.
    model.updatePlayerTime(3.5f);
    EXPECT_EQ(model.highlightedLRCindex(), 2);
    EXPECT_TRUE(model.isRowHighlighted(3));
    reading.setOptions({ReadingOptions::Secondary::None, ReadingOptions::Script::Original});
    model.reloadData();
    EXPECT_EQ(rows.heightForRow(2), 25);
    EXPECT_EQ(rows.secondaryTextOfRow(1), QString());
}

TEST(ShownLine, ALitTranslationShowsItsLineWithTheTranslationUnder)
{
    Lyric lyric;
    lyric.parseLRCcontent(QString::fromUtf8(kBilingual));
    LyricReading::shared().setOptions({});
    const LRCItem* lit = lyric.lrcItemAtTime(1.5);
    const ShownLine shown = shownLine(&lyric, lit, int(lyric.indexOfItem(lit)));
    EXPECT_EQ(shown.text, QStringLiteral("Hello"));
    EXPECT_EQ(shown.secondary, QStringLiteral("你好"));
    EXPECT_TRUE(shownLine(&lyric, nullptr, -1).text.isNull());
}

TEST(StripStack, TheLineUnderIsDroppedBeforeTheLineIsClipped)
{
    const auto both = secondaryline::stack({600, 60}, {200, 36}, {100, 21});
    EXPECT_EQ(both.main, QRectF(200, 0, 200, 36));
    EXPECT_EQ(both.under.top(), both.main.bottom() + secondaryline::kGap);
    EXPECT_LE(both.under.bottom(), 60);
    const auto tooTall = secondaryline::stack({600, 60}, {200, 36}, {100, 42});
    EXPECT_TRUE(tooTall.under.isEmpty());
    EXPECT_EQ(tooTall.main, QRectF(200, 12, 200, 36));
}

} // namespace
