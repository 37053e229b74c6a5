#include "core/platform/Clock.h"

#include <chrono>
#include <mutex>

namespace platform {
namespace {
std::mutex gMutex;
std::function<double()> gClock;
} // namespace

double now()
{
    {
        std::lock_guard lock(gMutex);
        if (gClock)
            return gClock();
    }
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

void setClock(std::function<double()> clock)
{
    std::lock_guard lock(gMutex);
    gClock = std::move(clock);
}

} // namespace platform
