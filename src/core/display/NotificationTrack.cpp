#include "core/display/NotificationTrack.h"

#include <cmath>

QString NotificationTrack::durationText(double seconds)
{
    if (!std::isfinite(seconds) || seconds < 0 || seconds > 1e9)
        seconds = 0;
    const long long total = static_cast<long long>(std::llround(seconds));
    const long long hours = total / 3600;
    const long long minutes = total / 60 % 60;
    const long long rest = total % 60;
    if (hours > 0)
        return QStringLiteral("%1:%2:%3")
            .arg(hours)
            .arg(minutes, 2, 10, QLatin1Char('0'))
            .arg(rest, 2, 10, QLatin1Char('0'));
    return QStringLiteral("%1:%2").arg(minutes).arg(rest, 2, 10, QLatin1Char('0'));
}
