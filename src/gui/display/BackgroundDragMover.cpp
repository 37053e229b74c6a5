#include "gui/display/BackgroundDragMover.h"

#include <QMouseEvent>
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
        if (m_window->windowHandle() && m_window->windowHandle()->startSystemMove())
            return true;
        m_dragging = true;
        m_grab = mouse()->globalPosition().toPoint() - m_window->frameGeometry().topLeft();
        return true;
    case QEvent::MouseMove:
        if (!m_dragging)
            break;
        m_window->move(mouse()->globalPosition().toPoint() - m_grab);
        return true;
    case QEvent::MouseButtonRelease:
        if (!m_dragging)
            break;
        m_dragging = false;
        return true;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
