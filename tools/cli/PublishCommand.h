#pragma once

#include <QStringList>

namespace cli {

// publish LRC-FILE --artist A --title T --album B --duration S: the lyric to LRCLIB.
int runPublishCommand(const QStringList& args);

} // namespace cli
