#include "gui/app/StartupClock.h"

#include <QByteArray>
#include <QFile>
#include <QList>

#include <ctime>
#include <unistd.h>

qint64 StartupClock::millisecondsSinceStart()
{
    QFile stat(QStringLiteral("/proc/self/stat"));
    if (!stat.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray line = stat.readAll();
    // The command name may hold spaces and parentheses: fields are counted after the last ')'.
    const qsizetype end = line.lastIndexOf(')');
    if (end < 0)
        return -1;
    const QList<QByteArray> fields = line.mid(end + 2).split(' ');
    // Field 22 (starttime) is the 20th after the name.
    constexpr int kStartTime = 22 - 3;
    if (fields.size() <= kStartTime)
        return -1;
    bool ok = false;
    const qint64 ticks = fields[kStartTime].toLongLong(&ok);
    const long perSecond = ::sysconf(_SC_CLK_TCK);
    timespec now{};
    if (!ok || perSecond <= 0 || ::clock_gettime(CLOCK_BOOTTIME, &now) != 0)
        return -1;
    const qint64 nowMs = qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
    return nowMs - ticks * 1000 / perSecond;
}
