#pragma once

#include "core/app/WindowPort.h"

#include <QPointer>
#include <QWidget>

// A floating window (the strip) as the controller shows and closes it. Closing hides it, so
// it keeps its place and content for the next showing.
class FloatingWindowPort : public WindowPort {
public:
    void setWindow(QWidget* window) { m_window = window; }
    QWidget* widget() const { return m_window; }

    // Shown without activation (the windows carry Qt::WA_ShowWithoutActivating): the player
    // keeps the keyboard.
    void orderFrontRegardless() override
    {
        if (!m_window)
            return;
        m_window->show();
        m_window->raise();
    }
    void close() override
    {
        if (m_window)
            m_window->hide();
    }

private:
    QPointer<QWidget> m_window;
};
