#pragma once

#include <QStringList>

namespace cli {
// "server ...": the online lyric server. "zh ...": Chinese script conversion.
// "translate ...": the translation service's addresses and answers.
int runServerCommand(const QStringList& args);
int runZhCommand(const QStringList& args);
int runTranslateCommand(const QStringList& args);
} // namespace cli
