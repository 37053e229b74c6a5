#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>

class QWidget;

// Lets the user move a frameless window by dragging its background: the window manager moves
// it when it can, otherwise the window follows the pointer. A click without a move moves nothing.
class BackgroundDragMover : public QObject {
    Q_OBJECT
public:
    explicit BackgroundDragMover(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QWidget> m_window;
    bool m_pressed = false;  // the left button is down and the pointer has not gone far yet
    bool m_dragging = false; // the window follows the pointer (no window manager move)
    QPoint m_press;          // where the button went down, on the screen
    QPoint m_grab;           // pointer position relative to the window's corner
};
