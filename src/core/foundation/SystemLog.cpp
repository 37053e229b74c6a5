#include "core/foundation/SystemLog.h"

Q_LOGGING_CATEGORY(lcVersewick, "versewick")

namespace foundation {
void systemLog(const QString& line)
{
    qCInfo(lcVersewick).noquote() << line;
}
} // namespace foundation
