#pragma once

// The scrolling lyric view's controller, for what the controller commands. What it shows (the
// lyric, the play time, messages) it takes from AppState.
class LyricViewPort {
public:
    virtual ~LyricViewPort() = default;
    // Re-reads fonts, colours and spacing from the settings.
    virtual void updateConfigs() = 0;
};
