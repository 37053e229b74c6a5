#include "DesktopAppFixture.h"
#include "core/app/PlainLyric.h"
#include "gui/app/LyricPanel.h"
#include "gui/app/NotificationPanel.h"
#include "gui/app/PlatformChoice.h"
#include "gui/display/LRCView.h"
#include "gui/display/NotificationWindow.h"
#include "gui/display/NotificationWindowController.h"

#include <gtest/gtest.h>

#include <QGraphicsOpacityEffect>
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>

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

class PanelLookTest : public DesktopAppFixture {};

TEST_F(PanelLookTest, FadedSearchButtonAndANotificationThatHidesNoPanel)
{
    launchDesktop();
    panel->orderFrontRegardless();
    const auto* fade =
        qobject_cast<QGraphicsOpacityEffect*>(panel->searchButton()->graphicsEffect());
    ASSERT_NE(fade, nullptr);
    EXPECT_DOUBLE_EQ(fade->opacity(), 0.8);

    NotificationPanel notification(*controller);
    notification.showTrack({QStringLiteral("Song"), QStringLiteral("Artist"), {}, 200});
    const QRect shown = notification.controller()->window()->frameGeometry();
    EXPECT_FALSE(shown.intersects(panel->window()->frameGeometry()))
        << shown.x() << "," << shown.y();
    EXPECT_TRUE(QGuiApplication::primaryScreen()->availableGeometry().contains(shown));
    notification.close();
}

// A plain lyric is read in the panel with its offer; a status over a synced lyric's place hides it.
TEST_F(PanelLookTest, APlainLyricIsReadWithTheOfferAndNoStatusOverIt)
{
    launchDesktop();
    panel->orderFrontRegardless();
    auto* view = panel->window()->findChild<LRCView*>();
    ASSERT_NE(view, nullptr);
    AppState& state = controller->state();
    const auto plain = plainlyric::lyricFromPlainText(QStringLiteral("First line\nSecond line"));
    state.setSynced(false);
    state.showLyric(plain.get());
    state.setLyricLoaded(true);
    state.showInfo(QStringLiteral("unsynced lyric"));
    EXPECT_FALSE(view->isDefaultStringVisible());
    const QImage shown = view->grab().toImage();
    int inked = 0;
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x)
            inked += qGray(shown.pixel(x, y)) > 100;
    EXPECT_GT(inked, 50) << "the plain text is drawn";
    const auto offer = [&] {
        for (auto* button : panel->window()->findChildren<QPushButton*>())
            if (button->text() == QStringLiteral("Time it..."))
                return button->isVisible();
        return false;
    };
    EXPECT_TRUE(offer());
    state.setSynced(true);
    state.showInfo(QStringLiteral("lyric is not available"));
    EXPECT_TRUE(view->isDefaultStringVisible());
    EXPECT_FALSE(offer());
}

} // namespace
