#pragma once

// The preferences window.
class PreferencesPort {
public:
    virtual ~PreferencesPort() = default;
    // Centres the window and makes it key and front.
    virtual void centerAndShow() = 0;
};
