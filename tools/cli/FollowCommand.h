#pragma once

#include <QStringList>

namespace cli {
// "follow": the application without a display, printing the lit lines as they change.
int runFollowCommand(const QStringList& args);
// "now": the running application's state, read over the session bus.
int runNowCommand(const QStringList& args);
} // namespace cli
