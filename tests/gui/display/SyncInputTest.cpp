#include "gui/display/SyncInput.h"
#include "core/lyric/Lyric.h"
#include "core/settings/Settings.h"
#include "gui/display/LRCView.h"
#include "gui/display/SingleLineModeController.h"
#include "support/TempHome.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSettings>
#include <QTest>
#include <QWheelEvent>

namespace {

TEST(SyncInput, KeysAndCtrlWheelNudgeAndAClickSeeksItsLine)
{
    Lyric lyric;
    lyric.parseLRCcontent("[00:00.00]zero\n[00:03.00]one\n[00:06.00]two\n[00:09.00]three\n");
    LRCView view;
    view.resize(400, 300);
    view.setParser(&lyric);
    view.refresh();
    std::vector<double> nudges;
    std::vector<float> seeks;
    SyncInput input(
        {[&] { return &view; }, [&](const QWidget* w) { return w == &view; }},
        [&](double d) { nudges.push_back(d); }, [&](float s) { seeks.push_back(s); });
    qApp->installEventFilter(&input);

    for (const int key : {Qt::Key_Minus, Qt::Key_Plus, Qt::Key_A}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&view, &press);
    }
    const auto wheel = [&](int dy, Qt::KeyboardModifiers mods) {
        QWheelEvent event({10, 10}, {10, 10}, {}, {0, dy}, Qt::NoButton, mods, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(view.viewport(), &event);
    };
    wheel(120, Qt::ControlModifier);
    wheel(-60, Qt::ControlModifier); // half a notch: nothing yet
    wheel(-60, Qt::ControlModifier);
    wheel(120, Qt::NoModifier); // a plain wheel is the view's
    EXPECT_EQ(nudges, (std::vector<double>{-0.1, 0.1, 0.1, -0.1}));

    const QPointF at(100, view.model().rows().rectForRow(3).center().y() - view.contentOffset());
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, at, view.viewport()->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                          Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &event);
    }
    EXPECT_EQ(seeks, std::vector<float>{6.0f});
    qApp->removeEventFilter(&input);
}

// Showing the strip leaves the focus where it is; a click on its plate lets it take the keys,
// which go where a user's keys go (the active window), until another window is activated.
TEST(SyncInput, TheStripTakesKeysAfterAClickOnItsPlateUntilAnotherWindowIsActive)
{
    TempHome home;
    const auto settings = Settings::launch(
        std::make_unique<QSettings>(home.filePath(QStringLiteral("s.ini")), QSettings::IniFormat));
    SingleLineModeController strip(settings.get());
    strip.setContent(QStringLiteral("Rain on the roof"));
    QWidget* window = strip.window();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    QWidget player;
    player.show();
    player.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&player));
    EXPECT_TRUE(window->windowHandle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
    std::vector<double> nudges;
    SyncInput input({{}, [&](const QWidget* w) { return w == window; }},
                    [&](double d) { nudges.push_back(d); }, {});
    qApp->installEventFilter(&input);

    QTest::mouseClick(strip.view(), Qt::LeftButton, {}, strip.view()->inputRect().center());
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    QTest::keyClick(static_cast<QWidget*>(nullptr), Qt::Key_Plus); // to the active window
    EXPECT_EQ(nudges, std::vector<double>{0.1});

    player.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&player));
    EXPECT_TRUE(window->windowHandle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
    qApp->removeEventFilter(&input);
}

} // namespace
