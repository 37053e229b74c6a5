#pragma once

#include <functional>

namespace platform {

// Seconds since 1970, as a double. Tests replace the source to drive time by hand.
double now();
// Installs a clock; an empty function restores the system clock.
void setClock(std::function<double()> clock);

} // namespace platform
