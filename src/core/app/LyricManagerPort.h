#pragma once

class LyricControl;

// The lyric manager window; it shares the controller's lyric store.
class LyricManagerPort {
public:
    virtual ~LyricManagerPort() = default;
    virtual void setLyricControl(LyricControl* control) = 0;
    virtual void showWindow() = 0;
};
