#pragma once

#include "core/app/SingleLinePort.h"
#include "gui/app/FloatingWindowPort.h"
#include "gui/app/MenuOnRightClick.h"
#include "gui/display/SingleLineModeController.h"

// The single-line strip's controller as the application controller sees it.
class StripPort : public SingleLinePort {
public:
    explicit StripPort(SingleLineModeController& controller)
        : m_controller(controller)
    {
    }

    void loadWindow() override { m_controller.loadWindow(); }
    void updateFromSettings() override { m_controller.updateFromSettings(); }
    // Not owned; the strip shows it on a right click (the only way to it without a tray).
    void setContextMenu(QMenu* menu) { m_menu = menu; }

    WindowPort* window() override
    {
        if (!m_controller.isWindowLoaded())
            return nullptr;
        if (m_window.widget() != m_controller.window()) {
            m_window.setWindow(m_controller.window());
            if (m_menu)
                new MenuOnRightClick(m_controller.window(), m_menu);
        }
        return &m_window;
    }

private:
    SingleLineModeController& m_controller;
    FloatingWindowPort m_window;
    QPointer<QMenu> m_menu;
};
