#pragma once

#include <QtGlobal>

// Time since this process was started by the kernel (exec), for the start-up figures.
namespace StartupClock {

// Milliseconds since exec, to the kernel's clock tick (10 ms); -1 when /proc cannot tell.
qint64 millisecondsSinceStart();

} // namespace StartupClock
