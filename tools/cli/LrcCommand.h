#pragma once

#include <QStringList>

namespace cli {
// "versewick-cli lrc ...": inspect LRC files through the lyric model.
int runLrcCommand(const QStringList& args);
} // namespace cli
