#pragma once

// A window the controller shows and closes (the lyric panel, the single-line strip).
class WindowPort {
public:
    virtual ~WindowPort() = default;
    // Brings it to the front without making it key, so the player keeps the keyboard.
    virtual void orderFrontRegardless() = 0;
    virtual void close() = 0;
};
