#pragma once

#include <QStringList>

namespace cli {
// "audio ...": the lyrics kept in music files' tags.
int runAudioCommand(const QStringList& args);
} // namespace cli
