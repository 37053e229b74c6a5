#pragma once

#include <QMenu>
#include <QObject>
#include <QPointer>

class QWidget;

// Pops a menu up on a right click in a window (and its children that leave the click alone).
// Owned by the window.
class MenuOnRightClick : public QObject {
    Q_OBJECT
public:
    MenuOnRightClick(QWidget* window, QMenu* menu);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QMenu> m_menu;
};
