#pragma once

#include <QStringList>

namespace cli {
// "store ...": the lyrics folder. "tag ...": the lyric block of a track's lyrics tag.
// "settings ...": the application's settings.
int runStoreCommand(const QStringList& args);
int runTagCommand(const QStringList& args);
int runSettingsCommand(const QStringList& args);
} // namespace cli
