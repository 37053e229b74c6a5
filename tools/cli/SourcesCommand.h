#pragma once

#include <QStringList>

namespace cli {
// "sources watch|status": the three player sources as the application creates them.
int runSourcesCommand(const QStringList& args);
} // namespace cli
