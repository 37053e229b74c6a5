#include "gui/display/ClickToFocus.h"

#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

ClickToFocus::ClickToFocus(QWidget* window)
    : QObject(window)
    , m_window(window)
{
    if (window)
        window->installEventFilter(this);
}

bool ClickToFocus::isAccepting() const
{
    const QWindow* handle = m_window ? m_window->windowHandle() : nullptr;
    return handle && !(handle->flags() & Qt::WindowDoesNotAcceptFocus);
}

// Only the native window's flag changes: the widget keeps its flags, so nothing recreates or
// re-shows the window, and the window manager reads the new input hint at once.
void ClickToFocus::accept(bool on)
{
    QWindow* handle = m_window ? m_window->windowHandle() : nullptr;
    if (!handle || isAccepting() == on)
        return;
    handle->setFlag(Qt::WindowDoesNotAcceptFocus, !on);
    if (on)
        m_window->activateWindow();
}

bool ClickToFocus::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_window)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        accept(true);
        break;
    case QEvent::WindowDeactivate:
    case QEvent::Hide:
        accept(false);
        break;
    default:
        break;
    }
    return false;
}
