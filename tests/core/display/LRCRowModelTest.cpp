#include "core/display/LRCRowModel.h"
#include "FakeTextMeasurer.h"
#include "core/display/RowHeights.h"
#include "core/lyric/Lyric.h"

#include <gtest/gtest.h>

namespace {

class LRCRowModelTest : public ::testing::Test {
protected:
    FakeTextMeasurer measurer;
    Lyric lyric;
    LRCRowModel rows{measurer};

    void load(const QString& text, QSizeF view = {300, 201})
    {
        lyric.parseLRCcontent(text);
        rows.setParser(&lyric);
        rows.setViewSize(view);
        rows.reloadData();
    }
};

TEST_F(LRCRowModelTest, EmptyLyricHasTwoPaddingRowsOfHalfTheView)
{
    load(QString());
    ASSERT_EQ(rows.numberOfRows(), 2);
    EXPECT_DOUBLE_EQ(rows.heightForRow(0), 100.5); // not rounded
    EXPECT_DOUBLE_EQ(rows.heightForRow(1), 100.5);
    EXPECT_DOUBLE_EQ(rows.contentHeight(), 201);
    EXPECT_EQ(rows.textOfRow(0), QStringLiteral(""));
}

struct RowCase {
    int row;
    int index;
};
class RowMapping : public LRCRowModelTest, public ::testing::WithParamInterface<RowCase> {};

TEST_P(RowMapping, PaddingRowsAreMinusOne)
{
    load(QStringLiteral("[00:01.00]a\n[00:02.00]b\n[00:03.00]c\n"));
    EXPECT_EQ(rows.realIndexTrimFromRow(GetParam().row), GetParam().index);
    if (GetParam().index >= 0) {
        EXPECT_EQ(rows.rowIndexFromLRCindex(GetParam().index), GetParam().row);
    }
}
INSTANTIATE_TEST_SUITE_P(Rows, RowMapping,
                         ::testing::Values(RowCase{-1, -1}, RowCase{0, -1}, RowCase{1, 0},
                                           RowCase{3, 2}, RowCase{4, -1}, RowCase{5, -1}));

struct HeightCase {
    const char* text;
    int padding;
    double line;
    double height;
};
class RowHeight : public LRCRowModelTest, public ::testing::WithParamInterface<HeightCase> {};

TEST_P(RowHeight, PaddingPlusMeasuredTextWithAa)
{
    measurer.line = GetParam().line;
    rows.setCellPadding(GetParam().padding);
    load(QStringLiteral("[00:01.00]") + QString::fromUtf8(GetParam().text));
    EXPECT_DOUBLE_EQ(rows.heightForRow(1), GetParam().height);
}
INSTANTIATE_TEST_SUITE_P(
    Heights, RowHeight,
    ::testing::Values(HeightCase{"short", 5, 20, 25},
                      // 29 characters fit in 300; with "aa" appended they need a second line
                      HeightCase{"abcdefghijklmnopqrstuvwxyzabc", 5, 20, 45},
                      HeightCase{"", 5, 20, 15},    // an empty line: half the line height
                      HeightCase{"   ", 5, 20, 15}, // blank counts as empty
                      HeightCase{"", 3, 21, 13},    // 3 + 10.5, truncated
                      HeightCase{"x", 0, 20.7, 20}));

TEST_F(LRCRowModelTest, ALineTallerThanTheViewIsCutToTheView)
{
    load(QStringLiteral("[00:01.00]") + QString(5000, QLatin1Char('w')), {300, 50});
    EXPECT_DOUBLE_EQ(rows.heightForRow(1), 45); // two 20-point lines fit in 50
}

TEST_F(LRCRowModelTest, RectanglesStackAndPointsFindTheirRow)
{
    load(QStringLiteral("[00:01.00]one\n[00:02.00]\n[00:03.00]three\n"), {300, 200});
    EXPECT_EQ(rows.rectForRow(1), QRectF(0, 100, 300, 25));
    EXPECT_EQ(rows.rectForRow(2), QRectF(0, 125, 300, 15));
    EXPECT_EQ(rows.rectForRow(4), QRectF(0, 165, 300, 100));
    EXPECT_EQ(rows.rowAtY(99.9), 0);
    EXPECT_EQ(rows.rowAtY(125), 2);
    EXPECT_EQ(rows.rowAtY(264.9), 4);
    EXPECT_EQ(rows.rowAtY(265), -1);
    EXPECT_EQ(rows.rowAtY(-1), -1);
    EXPECT_DOUBLE_EQ(rows.offsetForRowAtMiddle(3), 140 + 12.5 - 100);
}

TEST_F(LRCRowModelTest, AReloadOfTheSameTextMeasuresNothing)
{
    load(QStringLiteral("[00:01.00]one\n[00:02.00]two\n"));
    const int before = measurer.calls;
    rows.reloadData();
    EXPECT_EQ(measurer.calls, before);
    rows.setViewSize({200, 201}); // a new width measures again
    rows.reloadData();
    EXPECT_GT(measurer.calls, before);
}

// 100,000 lines; every tenth is long enough to wrap, so its real height differs from the
// one-line estimate a long lyric starts with.
QString longLyric()
{
    QString text;
    for (int i = 0; i < 100000; ++i)
        text += QString::asprintf("[%d:%02d.00]", i / 60, i % 60) +
                (i % 10 ? QStringLiteral("line %1").arg(i)
                        : QStringLiteral("a long line that wraps at the view, %1").arg(i)) +
                QLatin1Char('\n');
    return text;
}

TEST_F(LRCRowModelTest, ALongLyricIsMeasuredOnlyAroundTheRowsAskedFor)
{
    load(longLyric());
    ASSERT_EQ(rows.numberOfRows(), 100002);
    EXPECT_LT(measurer.calls, 100);
    for (const int row : {1, 50001, 99990}) {
        rows.offsetForRowAtMiddle(row); // as the view scrolls to a row
        const QRectF rect = rows.rectForRow(row);
        EXPECT_DOUBLE_EQ(rect.height(), rows.heightOfCell(row));
        // The rows the view shows around it are measured already and stack without gaps.
        const int calls = measurer.calls;
        EXPECT_DOUBLE_EQ(rows.rectForRow(row + 1).top(), rect.bottom());
        EXPECT_DOUBLE_EQ(rows.rectForRow(row - 1).bottom(), rect.top());
        EXPECT_EQ(rows.rowAtY(rect.center().y()), row);
        EXPECT_EQ(rows.rectForRow(row), rect);
        EXPECT_EQ(measurer.calls, calls);
    }
    EXPECT_LT(measurer.calls, 300);
    EXPECT_GT(rows.unmeasuredRows(), 99000);
}

TEST(RowHeights, TopsAndRowsAtPointsFollowChangedHeights)
{
    std::vector<double> heights = {10, 0, 5, 25.5, 0, 0, 7, 100, 1, 3, 12};
    RowHeights tree;
    tree.assign(heights);
    heights[3] = 2;
    tree.setHeight(3, 2);
    heights[5] = 9;
    tree.setHeight(5, 9);
    double top = 0;
    for (std::size_t row = 0; row < heights.size(); ++row) {
        EXPECT_DOUBLE_EQ(tree.top(row), top);
        if (heights[row] > 0) {
            EXPECT_EQ(tree.rowAt(top), row); // rows of no height before it are passed over
            EXPECT_EQ(tree.rowAt(top + heights[row] - 0.25), row);
        }
        top += heights[row];
    }
    EXPECT_DOUBLE_EQ(tree.total(), top);
}

} // namespace
