#pragma once

#include <QLoggingCategory>
#include <QString>

// The application's diagnostics: single lines to the system log (Qt's message handler, which
// writes to standard error or the journal). Standard output stays free for program output.
Q_DECLARE_LOGGING_CATEGORY(lcVersewick)

namespace foundation {
void systemLog(const QString& line);
}
