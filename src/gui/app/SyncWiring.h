#pragma once

#include <memory>

class AppController;
class AppDelegate;
class LyricPanel;
class OffsetNotice;
class SingleLineModeController;
class SyncInput;

// Connects the lyric windows to the controller's offset nudges and seeks: the keys, wheel and
// clicks over the panel and the strip, and the strip's offset notice.
class SyncWiring {
public:
    SyncWiring(AppDelegate& app, AppController& scrolling, LyricPanel& panel,
               SingleLineModeController& strip);
    ~SyncWiring();

    OffsetNotice& notice() const { return *m_notice; }

private:
    std::unique_ptr<SyncInput> m_input;
    std::unique_ptr<OffsetNotice> m_notice;
};
