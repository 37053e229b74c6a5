#pragma once

#include <QString>

class WindowPort;

// The single-line strip's controller.
class SingleLinePort {
public:
    virtual ~SingleLinePort() = default;
    virtual void setContent(const QString& text) = 0;
    virtual void loadWindow() = 0;
    virtual void updateFromSettings() = 0;
    // Its window; null until loaded.
    virtual WindowPort* window() = 0;
};
