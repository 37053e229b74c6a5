#include "core/display/LRCViewModel.h"
#include "FakeTextMeasurer.h"
#include "core/display/LRCViewHost.h"
#include "core/display/LineSeekGesture.h"
#include "core/foundation/Assertion.h"
#include "core/lyric/Lyric.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Animation {
    QString name;
    double y;
    double duration;
};

class RecordingHost : public LRCViewHost {
public:
    std::vector<std::pair<double, bool>> scrolls;
    std::vector<double> offsets;
    std::vector<Animation> animations;
    int removals = 0;
    int reloads = 0;
    double offset = 0;

    void reloadData() override { ++reloads; }
    void scrollToOffset(double y, bool animated) override { scrolls.emplace_back(y, animated); }
    void setContentOffset(double y) override
    {
        offsets.push_back(y);
        offset = y;
    }
    double contentOffset() const override { return offset; }
    void beginAnimation(const QString& name, double y, double duration) override
    {
        animations.push_back({name, y, duration});
    }
    void removeAllAnimations() override { ++removals; }
    void forget() { *this = RecordingHost(); }
};

// Twelve lines, line i at 2i seconds; line 3 is blank; line 11 follows line 10 by 0.05 s.
// View 300 x 200: row tops 0, 100 (line 0), 125, 150, 175 (blank, 15 high), 190 (line 4)...
QString twelveLines()
{
    QString text;
    for (int i = 0; i < 11; ++i)
        text += QString::asprintf("[00:%02d.00]", 2 * i) +
                (i == 3 ? QString() : QStringLiteral("line %1").arg(i)) + QLatin1Char('\n');
    return text + QStringLiteral("[00:20.05]line 11\n");
}

class LRCViewModelTest : public ::testing::Test {
protected:
    FakeTextMeasurer measurer;
    RecordingHost host;
    Lyric lyric;
    LRCViewModel view{measurer, host};

    void SetUp() override
    {
        view.rows().setViewSize({300, 200});
        lyric.parseLRCcontent(twelveLines());
        view.setParser(&lyric);
        view.reloadData();
        host.forget();
    }
};

struct MoveCase {
    int from;
    int to;
    bool animated;
};
class MoveToLine : public LRCViewModelTest, public ::testing::WithParamInterface<MoveCase> {};

TEST_P(MoveToLine, AnimatedBelowFiveLinesInstantFromFive)
{
    view.setCurrentLRCIndex(GetParam().from);
    host.forget();
    view.moveToLRCindex(GetParam().to);
    ASSERT_EQ(host.scrolls.size(), 1u);
    EXPECT_EQ(host.scrolls[0].second, GetParam().animated);
    EXPECT_DOUBLE_EQ(host.scrolls[0].first, view.rows().offsetForRowAtMiddle(GetParam().to + 1));
    EXPECT_EQ(view.currentLRCindex(), GetParam().to);
    EXPECT_EQ(host.reloads, GetParam().from == GetParam().to ? 0 : 1);
}
INSTANTIATE_TEST_SUITE_P(Jumps, MoveToLine,
                         ::testing::Values(MoveCase{0, 1, true}, MoveCase{0, 4, true},
                                           MoveCase{0, 5, false}, MoveCase{9, 5, true},
                                           MoveCase{9, 4, false}, MoveCase{10, 0, false},
                                           MoveCase{-1, 3, true}, MoveCase{2, 2, true}));

TEST_F(LRCViewModelTest, TheTickDoesNothingWhileTheLineIsTheSame)
{
    view.updatePlayerTime(2.5f);
    view.updatePlayerTime(3.9f);
    EXPECT_EQ(host.scrolls.size(), 1u);
    EXPECT_EQ(host.reloads, 1);
    view.updatePlayerTime(3.9f, true);
    EXPECT_EQ(host.scrolls.size(), 2u);
    EXPECT_EQ(view.currentLRCindex(), 1);
}

TEST_F(LRCViewModelTest, ABlankCurrentLineLightsTheNearestLineWithText)
{
    view.setCurrentLRCIndex(3);
    EXPECT_TRUE(host.scrolls.empty()); // a highlight change does not scroll
    EXPECT_EQ(host.reloads, 1);
    EXPECT_EQ(view.highlightedLRCindex(), 2);
    EXPECT_TRUE(view.isRowHighlighted(3));
    EXPECT_FALSE(view.isRowHighlighted(4));
}

TEST_F(LRCViewModelTest, WithoutALyricNothingHappens)
{
    view.updatePlayerTime(9.0f);
    view.scrollAnimateToHeight(200, 1);
    view.setParser(nullptr); // clears: no lit line, back to the top, no animation
    EXPECT_EQ(view.currentLRCindex(), -1);
    EXPECT_EQ(view.highlightedLRCindex(), -1);
    EXPECT_FALSE(view.isAnimation());
    EXPECT_EQ(host.offset, 0);
    host.forget();
    view.updatePlayerTime(3.0f);
    view.updatePositionAtPlayTime(3.0f, false);
    EXPECT_TRUE(host.scrolls.empty());
    EXPECT_TRUE(host.offsets.empty());
    EXPECT_EQ(host.reloads, 0);
}

TEST_F(LRCViewModelTest, AnEmptyLyricLightsNothing)
{
    lyric.parseLRCcontent(QStringLiteral("no tags here"));
    view.updatePlayerTime(1.0f);
    EXPECT_EQ(view.highlightedLRCindex(), -1);
    EXPECT_FALSE(view.isRowHighlighted(0));
    EXPECT_FALSE(view.isRowHighlighted(1));
}

TEST_F(LRCViewModelTest, ContinuousScrollMovesHalfARowAndChainsTheNext)
{
    view.updatePositionAtPlayTime(5.0f, false); // line 2 runs from 4 to 6
    EXPECT_EQ(host.removals, 1);
    ASSERT_EQ(host.offsets.size(), 1u);
    EXPECT_FLOAT_EQ(float(host.offsets[0]), 150 + 0.5f * 25 * 0.5f - 100);
    EXPECT_EQ(view.currentLRCindex(), 2);
    ASSERT_EQ(host.animations.size(), 1u);
    EXPECT_EQ(host.animations[0].name, QStringLiteral("LyricsAnimation"));
    EXPECT_FLOAT_EQ(float(host.animations[0].y), 175 + 7.5f - 100); // the blank row's centre
    EXPECT_FLOAT_EQ(float(host.animations[0].duration), 1.0f);
    EXPECT_TRUE(view.isAnimation());

    // The chain: line 3 becomes current and line 4 is scrolled to over 8 - 6 seconds.
    view.animationDidStop(QStringLiteral("LyricsAnimation"), true);
    EXPECT_EQ(view.currentLRCindex(), 3);
    ASSERT_EQ(host.animations.size(), 2u);
    EXPECT_FLOAT_EQ(float(host.animations[1].y), 190 + 12.5f - 100);
    EXPECT_FLOAT_EQ(float(host.animations[1].duration), 2.0f);
}

TEST_F(LRCViewModelTest, AStoppedOrForeignAnimationStartsNothing)
{
    view.updatePositionAtPlayTime(5.0f, false);
    view.animationDidStop(QStringLiteral("LyricsAnimation"), false);
    view.animationDidStop(QStringLiteral("other"), true);
    EXPECT_EQ(host.animations.size(), 1u);
    EXPECT_EQ(view.currentLRCindex(), 2);
    EXPECT_FALSE(view.isAnimation());
}

TEST_F(LRCViewModelTest, StopSkipsTheAnimation)
{
    view.updatePositionAtPlayTime(5.0f, true);
    EXPECT_EQ(host.offsets.size(), 1u);
    EXPECT_TRUE(host.animations.empty());
}

TEST_F(LRCViewModelTest, LinesCloserThanATenthRestOnTheRowCentre)
{
    view.updatePositionAtPlayTime(20.02f, false);
    ASSERT_EQ(host.offsets.size(), 1u);
    EXPECT_FLOAT_EQ(float(host.offsets[0]), 340 + 12.5f - 100);
    EXPECT_TRUE(host.animations.empty());
    EXPECT_EQ(view.currentLRCindex(), 10);
}

TEST_F(LRCViewModelTest, TheLastLineRestsAndTheChainReportsItsEnd)
{
    view.updatePositionAtPlayTime(30.0f, false);
    EXPECT_TRUE(host.animations.empty());
    EXPECT_EQ(view.currentLRCindex(), 11);

    QStringList failures;
    const auto previous =
        foundation::setAssertionHandler([&](const QString& text) { failures << text; });
    view.animationDidStop(QStringLiteral("LyricsAnimation"), true);
    foundation::setAssertionHandler(previous);
    EXPECT_EQ(failures, QStringList{QStringLiteral("the currentItem should not be nil!")});
    EXPECT_TRUE(host.animations.empty());
}

TEST_F(LRCViewModelTest, PlayTimeUnderTheCentre)
{
    EXPECT_FLOAT_EQ(view.playTimeOfOffsetY(-10), 0);      // top padding row
    EXPECT_FLOAT_EQ(view.playTimeOfOffsetY(92), 8.0f);    // centre at 192: line 4
    EXPECT_FLOAT_EQ(view.playTimeOfOffsetY(300), 20.05f); // centre on the bottom padding row
    EXPECT_FLOAT_EQ(view.playTimeOfOffsetY(10000), 0);    // no row at all
}

TEST_F(LRCViewModelTest, CleanForgetsTheLineAndScrollsToTheTop)
{
    view.setCurrentLRCIndex(4);
    view.clean();
    EXPECT_EQ(view.currentLRCindex(), -1);
    EXPECT_EQ(view.rows().numberOfRows(), 2);
    ASSERT_FALSE(host.offsets.empty());
    EXPECT_DOUBLE_EQ(host.offsets.back(), 0);
}

TEST_F(LRCViewModelTest, DraggingIsOffUnlessEnabled)
{
    std::vector<float> reported;
    view.scrollDelegate = [&](float t) { reported.push_back(t); };
    view.touchBegan(50);
    view.touchMoved(40);
    view.touchEnded();
    EXPECT_TRUE(reported.empty());
    EXPECT_TRUE(host.offsets.empty());

    view.setShouldHandleTouch(true);
    view.touchBegan(50.7);
    view.touchMoved(40); // offset 0 + 50 - 40
    view.touchMoved(40); // the start point stays: 10 + 50 - 40
    view.touchEnded();
    EXPECT_EQ(host.offsets, (std::vector<double>{10, 20}));
    ASSERT_EQ(reported.size(), 1u);
    EXPECT_FLOAT_EQ(reported[0], 0); // centre at 120: line 0
}

TEST_F(LRCViewModelTest, AClickSeeksToItsLineAndADragToTheLineUnderTheCentre)
{
    std::vector<float> seeks;
    LineSeekGesture gesture(view, [&](float t) { seeks.push_back(t); });
    const auto click = [&](double at, double to) {
        gesture.press(at);
        gesture.move(to);
        gesture.release(to, host.offset);
    };
    click(130, 133); // within the slop: line 1
    click(50, 50);   // the top padding row: nothing
    lyric.setOffsetTime(0.5);
    click(195, 195); // line 4, offset included
    EXPECT_EQ(seeks, (std::vector<float>{2.0f, 8.5f}));
    EXPECT_TRUE(host.offsets.empty());
    click(130, 40); // a drag: offset 0 + 130 - 40, centre at 190: line 4
    EXPECT_EQ(host.offsets, std::vector<double>{90});
    EXPECT_EQ(seeks.back(), 8.5f);
    EXPECT_FALSE(view.isDragging());
}

TEST_F(LRCViewModelTest, LineChangesInALongLyricMeasureNoMoreThanTheViewShows)
{
    // More distinct lines than the measurements remembered: a relayout would measure again.
    QString text;
    for (int i = 0; i < 30000; ++i)
        text += QString::asprintf("[%d:%02d.00]line %d\n", i / 60, i % 60, i);
    lyric.parseLRCcontent(text);
    view.reloadData();
    measurer.calls = 0;
    for (const float seconds : {3000.0f, 3001.0f, 3002.0f, 60.0f, 61.0f})
        view.updatePlayerTime(seconds);
    EXPECT_EQ(view.currentLRCindex(), 61);
    EXPECT_LT(measurer.calls, 100);
    EXPECT_DOUBLE_EQ(host.scrolls.back().first, view.rows().offsetForRowAtMiddle(62));
}

} // namespace
