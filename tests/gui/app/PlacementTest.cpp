#include "app/LyricPanel.h"
#include "app/PlatformChoice.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

struct PlatformCase {
    const char* session;
    bool userChose;
    const char* expected;
};

class PlatformChoiceTest : public ::testing::TestWithParam<PlatformCase> {};

TEST_P(PlatformChoiceTest, WaylandSessionsRunOnXcbUnlessTheUserChose)
{
    const PlatformCase c = GetParam();
    EXPECT_EQ(PlatformChoice::forcedPlatform(c.session, c.userChose), QByteArray(c.expected));
}

INSTANTIATE_TEST_SUITE_P(Sessions, PlatformChoiceTest,
                         ::testing::Values(PlatformCase{"wayland", false, "xcb"},
                                           PlatformCase{"Wayland\n", false, "xcb"},
                                           PlatformCase{"wayland", true, ""},
                                           PlatformCase{"x11", false, ""},
                                           PlatformCase{"", false, ""},
                                           PlatformCase{"tty", false, ""}));

struct FrameCase {
    const char* what;
    std::optional<QRect> saved;
    QRect expected;
};

class PanelPlacementTest : public ::testing::TestWithParam<FrameCase> {};

// A 1600x900 screen and a 320x420 panel: the default corner is (1270, 32).
TEST_P(PanelPlacementTest, SavedFrameIsKeptOnlyWhenWhollyOnTheScreen)
{
    const FrameCase c = GetParam();
    EXPECT_EQ(LyricPanel::placedFrame(QRect(0, 0, 1600, 900), QSize(320, 420), c.saved), c.expected)
        << c.what;
}

INSTANTIATE_TEST_SUITE_P(
    Frames, PanelPlacementTest,
    ::testing::Values(
        FrameCase{"nothing saved", std::nullopt, QRect(1270, 32, 320, 420)},
        FrameCase{"inside", QRect(100, 100, 300, 500), QRect(100, 100, 300, 500)},
        FrameCase{"touching the edges", QRect(0, 0, 1600, 900), QRect(0, 0, 1600, 900)},
        FrameCase{"partly off the right", QRect(1500, 100, 300, 500), QRect(1290, 32, 300, 500)},
        FrameCase{"on a screen now gone", QRect(-2000, 0, 300, 400), QRect(1290, 32, 300, 400)},
        FrameCase{"invalid", QRect(), QRect(1270, 32, 320, 420)}));

} // namespace
