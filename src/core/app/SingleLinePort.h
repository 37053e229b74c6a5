#pragma once

class WindowPort;

// The single-line strip's controller, for what the controller commands. Its text it takes from
// AppState.
class SingleLinePort {
public:
    virtual ~SingleLinePort() = default;
    virtual void loadWindow() = 0;
    virtual void updateFromSettings() = 0;
    // Its window; null until loaded.
    virtual WindowPort* window() = 0;
};
