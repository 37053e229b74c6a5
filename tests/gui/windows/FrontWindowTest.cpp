// The application's windows open clear of the windows that stay on top, and Escape or Ctrl+W
// close them from a focused field.
#include "gui/windows/LyricManagerWC.h"
#include "gui/windows/LyricSearchWC.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScreen>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

struct OpenedWindow {
    std::unique_ptr<QWidget> window;
    std::function<void()> show;
    QWidget* field; // a child with the keyboard focus
};

OpenedWindow searchWindow()
{
    auto window = std::make_unique<LyricSearchWC>();
    LyricSearchWC* w = window.get();
    return {std::move(window), [w] { w->showWindow(); }, w->textTitle()};
}

OpenedWindow lyricManager()
{
    auto window = std::make_unique<LyricManagerWC>();
    LyricManagerWC* w = window.get();
    return {std::move(window), [w] { w->showWindow(); }, w->searchField()};
}

struct WindowCase {
    const char* name;
    OpenedWindow (*open)();
};

void PrintTo(const WindowCase& c, std::ostream* os)
{
    *os << c.name;
}

class FrontWindowTest : public ::testing::TestWithParam<WindowCase> {};

bool closedBy(QWidget* field, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(field, &press);
    return !field->window()->isVisible();
}

TEST_P(FrontWindowTest, OpensClearOfAnOnTopWindowAndClosesByEscapeOrCtrlW)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    // A band that stays on top across the upper part of the screen, over its centre.
    QWidget band(nullptr, Qt::Window | Qt::WindowStaysOnTopHint | Qt::FramelessWindowHint);
    band.setGeometry(screen.x(), screen.y(), screen.width(), screen.height() * 5 / 12);
    band.show();

    OpenedWindow opened = GetParam().open();
    opened.window->resize(opened.window->minimumSizeHint().expandedTo(QSize(300, 150)));
    opened.show();
    EXPECT_TRUE(opened.window->isVisible());
    EXPECT_FALSE(opened.window->frameGeometry().intersects(band.frameGeometry()))
        << opened.window->frameGeometry().y();
    EXPECT_TRUE(screen.contains(opened.window->frameGeometry()));

    opened.field->setFocus();
    EXPECT_TRUE(closedBy(opened.field, Qt::Key_Escape, Qt::NoModifier));
    opened.show();
    EXPECT_FALSE(closedBy(opened.field, Qt::Key_W, Qt::NoModifier)); // typing a "w"
    EXPECT_TRUE(closedBy(opened.field, Qt::Key_W, Qt::ControlModifier));
}

INSTANTIATE_TEST_SUITE_P(Windows, FrontWindowTest,
                         ::testing::Values(WindowCase{"search", &searchWindow},
                                           WindowCase{"lyric manager", &lyricManager}));

// The strip is a screen-wide window shaped to its line: only the shape is in the way.
TEST(FrontWindowShaped, OnlyTheShapeOfAShapedWindowIsAvoided)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget strip(nullptr, Qt::Window | Qt::WindowStaysOnTopHint | Qt::FramelessWindowHint);
    strip.setGeometry(screen);
    const QRect line(screen.width() / 4, screen.height() / 2 - 40, screen.width() / 2, 80);
    strip.setMask(QRegion(line));
    strip.show();
    OpenedWindow opened = lyricManager();
    opened.window->resize(opened.window->minimumSizeHint().expandedTo(QSize(300, 150)));
    opened.show();
    EXPECT_FALSE(opened.window->frameGeometry().intersects(line.translated(screen.topLeft())));
    EXPECT_TRUE(screen.contains(opened.window->frameGeometry()));
}

TEST(SearchWindowFocus, ShowingPutsTheKeyboardInTheTitleField)
{
    LyricSearchWC window;
    window.showWindow();
    EXPECT_EQ(window.focusWidget(), window.textTitle());
}

} // namespace
