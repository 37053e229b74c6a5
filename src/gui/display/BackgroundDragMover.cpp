#include "gui/display/BackgroundDragMover.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWidget>
#include <QWindow>

BackgroundDragMover::BackgroundDragMover(QWidget* window)
    : QObject(window)
    , m_window(window)
{
    if (window)
        window->installEventFilter(this);
}

bool BackgroundDragMover::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_window)
        return QObject::eventFilter(watched, event);
    const auto mouse = [event] { return static_cast<QMouseEvent*>(event); };
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (mouse()->button() != Qt::LeftButton)
            break;
        // The move starts once the pointer has travelled: a quick click or a tap must not hand
        // the window to the window manager after the button is already up.
        m_pressed = true;
        m_dragging = false;
        m_press = mouse()->globalPosition().toPoint();
        m_grab = m_press - m_window->frameGeometry().topLeft();
        return true;
    case QEvent::MouseMove:
        if (m_dragging) {
            m_window->move(mouse()->globalPosition().toPoint() - m_grab);
            return true;
        }
        if (!m_pressed || !(mouse()->buttons() & Qt::LeftButton))
            break;
        if ((mouse()->globalPosition().toPoint() - m_press).manhattanLength() <
            QGuiApplication::styleHints()->startDragDistance())
            return true;
        m_pressed = false;
        if (m_window->windowHandle() && m_window->windowHandle()->startSystemMove())
            return true;
        m_dragging = true; // no window manager move: the window follows the pointer
        m_window->move(mouse()->globalPosition().toPoint() - m_grab);
        return true;
    case QEvent::MouseButtonRelease:
        if (mouse()->button() != Qt::LeftButton || (!m_pressed && !m_dragging))
            break;
        m_pressed = m_dragging = false;
        return true;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
