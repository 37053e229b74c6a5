#include "gui/windows/FrontWindow.h"

#include "core/preferences/WindowPlacement.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QRegion>
#include <QScreen>
#include <QWidget>

namespace FrontWindow {

namespace {

// Until the window manager has framed a window once, its frame is estimated with a title bar.
constexpr int kTitleBarEstimate = 28;

QScreen* screenFor(const QWidget* window)
{
    if (QScreen* screen = QGuiApplication::screenAt(QCursor::pos()))
        return screen;
    return window->screen() ? window->screen() : QGuiApplication::primaryScreen();
}

QList<QRect> onTopFrames(const QWidget* window)
{
    QList<QRect> frames;
    for (const QWidget* other : QApplication::topLevelWidgets()) {
        if (other == window || !other->isVisible() ||
            !other->windowFlags().testFlag(Qt::WindowStaysOnTopHint))
            continue;
        frames << coveredArea(other);
    }
    return frames;
}

// A key the focused child leaves unused travels up to the window, where Escape and Ctrl+W
// close it; an edit that uses Escape itself (an open editor) keeps it.
class CloseKeys : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
            return false;
        const auto* key = static_cast<QKeyEvent*>(event);
        const Qt::KeyboardModifiers mods = key->modifiers() & ~Qt::KeypadModifier;
        const bool escape = key->key() == Qt::Key_Escape && mods == Qt::NoModifier;
        const bool ctrlW = key->key() == Qt::Key_W && mods == Qt::ControlModifier;
        if (!escape && !ctrlW)
            return false;
        static_cast<QWidget*>(watched)->close();
        return true;
    }
};

} // namespace

QRect coveredArea(const QWidget* window)
{
    if (!window)
        return {};
    const QRegion shape = window->mask();
    return shape.isEmpty() ? window->frameGeometry()
                           : shape.boundingRect().translated(window->geometry().topLeft());
}

void addCloseKeys(QWidget* window)
{
    if (window)
        window->installEventFilter(new CloseKeys(window));
}

void present(QWidget* window)
{
    if (!window)
        return;
    if (!window->isVisible()) {
        if (const QScreen* screen = screenFor(window)) {
            QSize frame = window->frameGeometry().size();
            if (frame == window->size())
                frame.rheight() += kTitleBarEstimate;
            const QRect placed =
                WindowPlacement::place(screen->availableGeometry(), frame, onTopFrames(window));
            if (placed.height() < frame.height() || placed.width() < frame.width())
                window->resize(window->size().boundedTo(placed.size() - (frame - window->size())));
            window->move(placed.topLeft());
        }
        window->show();
    }
    window->raise();
    window->activateWindow();
}

} // namespace FrontWindow
