#pragma once

#include "core/app/NotificationPort.h"

#include <QObject>

#include <memory>

class AppDelegate;
class NotificationWindowController;

// The song-change panel for the controller. When its animation has ended it tells the
// controller, which releases it: that happens on the next turn of the event loop, never
// inside the panel's own animation callback, and not at all once the panel is gone.
class NotificationPanel : public NotificationPort {
public:
    explicit NotificationPanel(AppDelegate& delegate);
    ~NotificationPanel() override;

    void showTrack(const Track& track) override;
    void disappear() override;
    void close() override;

    NotificationWindowController* controller() const { return m_controller.get(); }

private:
    std::unique_ptr<NotificationWindowController> m_controller;
    // Context of the queued report: deleted with the panel, so a report never outlives it.
    std::unique_ptr<QObject> m_guard;
};
