#include "gui/display/LayerTextField.h"
#include "gui/display/NotificationWindow.h"
#include "gui/display/NotificationWindowController.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QScreen>
#include <QTimer>

namespace {

bool waitFor(const std::function<bool()>& done, int milliseconds = 10000)
{
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < milliseconds)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    return done();
}

NotificationTrack track(const QString& name)
{
    return {name, QStringLiteral("Artist"), QStringLiteral("Album"), 187};
}

TEST(Notification, ShortTextsGive236AndALongNameWidensToItsEdgePlus30)
{
    NotificationWindowController controller;
    controller.setTrack(track(QStringLiteral("Song")));
    controller.resize();
    EXPECT_EQ(controller.window()->width(), 236);
    EXPECT_EQ(controller.durationField()->text(), QStringLiteral("3:07"));

    controller.setTrack(track(QStringLiteral("A much longer track name that needs room")));
    controller.resize();
    const QRect name = controller.nameField()->geometry();
    EXPECT_GT(name.width(), 236);
    EXPECT_EQ(controller.window()->width(), name.x() + name.width() + 30);

    controller.setTrack(track(QString(5000, QLatin1Char('n')))); // cut, not 5000 wide
    controller.resize();
    EXPECT_LE(controller.window()->width(), NotificationWindowController::kMaximumFieldWidth + 80);
}

TEST(Notification, CornerTwoIsTopRightAndUnknownIsTheOrigin)
{
    NotificationWindowController controller;
    const QRect visible = QGuiApplication::primaryScreen()->availableGeometry();
    controller.setPositionCorner(2);
    EXPECT_EQ(controller.window()->pos(),
              QPoint(visible.right() + 1 - controller.window()->width() - 20, visible.y() + 20));
    EXPECT_EQ(controller.positionCorner(), 2);
    controller.setPositionCorner(9);
    EXPECT_EQ(controller.window()->pos(), QPoint(0, 0));
}

TEST(Notification, NeverTakesTheKeyboard)
{
    NotificationWindowController controller;
    EXPECT_TRUE(controller.window()->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_TRUE(controller.window()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(controller.nameField()->focusPolicy(), Qt::NoFocus);
}

TEST(Notification, StaysFiveSecondsThenAsksForRemovalAfterShrinking)
{
    NotificationWindowController controller;
    int removals = 0;
    controller.setDelegate([&] { ++removals; });
    controller.setTrack(track(QStringLiteral("Song")));
    controller.showWindow();
    EXPECT_TRUE(controller.hideTimer()->isActive());
    EXPECT_TRUE(controller.hideTimer()->isSingleShot());
    EXPECT_EQ(controller.hideTimer()->interval(), 5000);
    EXPECT_TRUE(waitFor([&] { return controller.window()->plateScale() == 1.0; }));

    controller.timerFired();
    EXPECT_EQ(removals, 0); // not before the shrinking ends
    EXPECT_TRUE(waitFor([&] { return removals == 1; }));
    EXPECT_NEAR(controller.window()->plateScale(), 0.1, 1e-9);
}

TEST(Notification, AStoppedDisappearanceStillAsksAndCloseStopsTheTimer)
{
    NotificationWindowController controller;
    int removals = 0;
    controller.setDelegate([&] { ++removals; });
    controller.showWindow();
    controller.disappear();
    controller.disappear(); // stops the first shrinking early
    EXPECT_TRUE(waitFor([&] { return removals == 2; }));
    controller.showWindow();
    controller.close();
    EXPECT_FALSE(controller.hideTimer()->isActive());
    EXPECT_FALSE(controller.window()->isVisible());
}

TEST(Notification, AClearedDelegateHearsNothing)
{
    int removals = 0;
    {
        NotificationWindowController controller;
        controller.setDelegate([&] { ++removals; });
        controller.showWindow();
        controller.disappear();
        controller.setDelegate(nullptr);
        controller.close();
    }
    QApplication::processEvents();
    EXPECT_EQ(removals, 0);
}

} // namespace
