#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>

class QWidget;

// Lets the user move a frameless window by dragging its background: the window manager moves
// it when it can, otherwise the window follows the pointer.
class BackgroundDragMover : public QObject {
    Q_OBJECT
public:
    explicit BackgroundDragMover(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QWidget> m_window;
    bool m_dragging = false;
    QPoint m_grab; // pointer position relative to the window's corner
};
