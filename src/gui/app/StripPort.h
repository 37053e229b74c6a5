#pragma once

#include "app/FloatingWindowPort.h"
#include "app/SingleLinePort.h"
#include "display/SingleLineModeController.h"

// The single-line strip's controller as the application controller sees it.
class StripPort : public SingleLinePort {
public:
    explicit StripPort(SingleLineModeController& controller)
        : m_controller(controller)
    {
    }

    void setContent(const QString& text) override { m_controller.setContent(text); }
    void loadWindow() override { m_controller.loadWindow(); }
    void updateFromSettings() override { m_controller.updateFromSettings(); }
    WindowPort* window() override
    {
        if (!m_controller.isWindowLoaded())
            return nullptr;
        m_window.setWindow(m_controller.window());
        return &m_window;
    }

private:
    SingleLineModeController& m_controller;
    FloatingWindowPort m_window;
};
