#pragma once

#include <functional>
#include <memory>

// The controller's repeating update timer. The application uses a Qt timer on the main event
// loop; tests install a factory whose timers they fire by hand.
class UpdateTimer {
public:
    using Factory = std::function<std::unique_ptr<UpdateTimer>()>;

    virtual ~UpdateTimer() = default;
    // Calls tick every intervalMs until stopped or destroyed.
    virtual void start(int intervalMs, std::function<void()> tick) = 0;
    virtual void stop() = 0;
    virtual bool isActive() const = 0;

    static std::unique_ptr<UpdateTimer> createQtTimer();
};
