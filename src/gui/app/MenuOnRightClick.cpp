#include "gui/app/MenuOnRightClick.h"

#include <QContextMenuEvent>
#include <QWidget>

MenuOnRightClick::MenuOnRightClick(QWidget* window, QMenu* menu)
    : QObject(window)
    , m_menu(menu)
{
    window->installEventFilter(this);
}

bool MenuOnRightClick::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ContextMenu || !m_menu || watched != parent())
        return false;
    m_menu->popup(static_cast<QContextMenuEvent*>(event)->globalPos());
    return true;
}
