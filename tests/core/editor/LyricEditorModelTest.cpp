#include "core/editor/LyricEditorModel.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

namespace {

// Steps on a three-line plain lyric: what the LRC text and the selection are after each.
struct Step {
    const char* name;
    std::function<void(LyricEditorModel&)> act;
    const char* lrc;
    int selected;
    int start = 1; // the line selected before the step
};

class EditorSteps : public ::testing::TestWithParam<Step> {};

TEST_P(EditorSteps, ChangeThenUndoThenRedo)
{
    LyricEditorModel model;
    model.load(QStringLiteral("one\ntwo\nthree"));
    model.tap(1000); // a first stamp, so that each step starts from a timed line
    model.select(GetParam().start);
    const QString before = model.draft().toLrc();
    const int selectedBefore = model.selected();

    GetParam().act(model);
    EXPECT_EQ(model.draft().toLrc(), QString::fromUtf8(GetParam().lrc));
    EXPECT_EQ(model.selected(), GetParam().selected);

    model.undoStack().undo();
    EXPECT_EQ(model.draft().toLrc(), before);
    EXPECT_EQ(model.selected(), selectedBefore);
    model.undoStack().redo();
    EXPECT_EQ(model.draft().toLrc(), QString::fromUtf8(GetParam().lrc));
}

INSTANTIATE_TEST_SUITE_P(
    Steps, EditorSteps,
    ::testing::Values(
        Step{"TapStampsAndMovesOn", [](auto& m) { m.tap(2500); },
             "[00:01.00]one\n[00:02.50]two\nthree\n", 2},
        Step{"TapOnTheLastLineStaysThere", [](auto& m) { m.tap(9000); },
             "[00:01.00]one\ntwo\n[00:09.00]three\n", 2, 2},
        Step{"StepBackClearsTheLineBefore", [](auto& m) { m.stepBack(); }, "one\ntwo\nthree\n", 0},
        Step{"Shift", [](auto& m) { m.shift(250); }, "[00:01.25]one\ntwo\nthree\n", 1},
        Step{"EditLine", [](auto& m) { m.setLineText(2, QStringLiteral("3")); },
             "[00:01.00]one\ntwo\n3\n", 1},
        Step{"EditTime", [](auto& m) { m.setLineTime(0, std::nullopt); }, "one\ntwo\nthree\n", 1},
        Step{"EditWholeText", [](auto& m) { m.setText(QStringLiteral("[00:04.00]four")); },
             "[00:04.00]four\n", 0}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(LyricEditorModel, AnEmptyLyricTakesNoStampsAndLoadingForgetsHistory)
{
    LyricEditorModel model;
    model.load({});
    model.tap(1000);
    model.stepBack();
    EXPECT_EQ(model.undoStack().count(), 0);
    model.load(QStringLiteral("a"));
    model.tap(1000);
    model.load(QStringLiteral("b"));
    EXPECT_FALSE(model.undoStack().canUndo());
}

} // namespace
