#include "core/editor/LrcDraft.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

namespace {

struct RoundTrip {
    const char* name;
    const char* input;
    const char* lrc; // what toLrc() writes back
};

class LrcDraftText : public ::testing::TestWithParam<RoundTrip> {};

TEST_P(LrcDraftText, ReadsAndWritesLrc)
{
    const LrcDraft draft = LrcDraft::fromText(QString::fromUtf8(GetParam().input));
    EXPECT_EQ(draft.toLrc(), QString::fromUtf8(GetParam().lrc));
    // What it writes reads back as the same draft.
    EXPECT_EQ(LrcDraft::fromText(draft.toLrc()).toLrc(), draft.toLrc());
}

INSTANTIATE_TEST_SUITE_P(
    Drafts, LrcDraftText,
    ::testing::Values(
        RoundTrip{"Plain", "one\r\n\ntwo\n", "one\ntwo\n"},
        RoundTrip{"Timed", "[00:01.5]one\n[1:02.345]two", "[00:01.50]one\n[01:02.35]two\n"},
        RoundTrip{"TagsKept", "[ar:Someone]\n[00:01.00]one", "[ar:Someone]\n[00:01.00]one\n"},
        RoundTrip{"OffsetFolded", "[offset:500]\n[00:01.00]one", "[00:01.50]one\n"},
        RoundTrip{"NegativeOffsetStopsAtZero", "[offset:-2000]\n[00:01.00]one", "[00:00.00]one\n"},
        RoundTrip{"GroupedTagsSpread", "[00:20.00][00:05.00]chorus\n[00:10.00]verse",
                  "[00:05.00]chorus\n[00:10.00]verse\n[00:20.00]chorus\n"},
        RoundTrip{"HalfTimed", "[00:03.00]one\ntwo\n", "[00:03.00]one\ntwo\n"},
        RoundTrip{"ColonFraction", "[00:03:25]one", "[00:03.25]one\n"},
        RoundTrip{"WordTagsFollowTheOffset", "[offset:500]\n[00:01.00]<00:01.00>a <00:01.40>b<x>",
                  "[00:01.50]<00:01.50>a <00:01.90>b<x>\n"},
        RoundTrip{"NotATimeStaysText", "[99:99.00]x\n[bad", "[99:99.00]x\n[bad\n"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(LrcDraft, ShiftMovesOnlyTimedLinesAndNeverBelowZero)
{
    LrcDraft draft = LrcDraft::fromText(QStringLiteral("[00:01.00]a\nb\n[00:10.00]c"));
    draft.shift(-1500);
    EXPECT_EQ(draft.toLrc(), QStringLiteral("[00:00.00]a\nb\n[00:08.50]c\n"));
    EXPECT_EQ(draft.plainText(), QStringLiteral("a\nb\nc\n"));
    draft.setTime(7, 1000); // out of range: nothing
    draft.setText(-1, QStringLiteral("x"));
    EXPECT_EQ(draft.timedCount(), 2);
}

TEST(LrcDraft, WordTagsMoveWithTheirLineAndAreNotPartOfThePlainText)
{
    LrcDraft draft = LrcDraft::fromText(QStringLiteral("[00:02.00]<00:02.00>a <00:02.50>b"));
    draft.shift(1000);
    EXPECT_EQ(draft.toLrc(), QStringLiteral("[00:03.00]<00:03.00>a <00:03.50>b\n"));
    draft.setTime(0, 2500); // a new stamp
    EXPECT_EQ(draft.toLrc(), QStringLiteral("[00:02.50]<00:02.50>a <00:03.00>b\n"));
    EXPECT_EQ(draft.plainText(), QStringLiteral("a b\n"));
}

} // namespace
