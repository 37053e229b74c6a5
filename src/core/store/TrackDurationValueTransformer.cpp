#include "core/store/TrackDurationValueTransformer.h"

#include "core/store/TrackRatingValueTransformer.h"

#include <cmath>
#include <cstdint>

QVariant TrackDurationValueTransformer::transformedValue(const QVariant& value)
{
    if (!TrackRatingValueTransformer::isNumber(value))
        return value;
    const double seconds = value.toDouble();
    if (!(seconds > 0))
        return {};
    // Rounded to the nearest second; beyond 64 bits (or infinite) it saturates.
    const double rounded = std::trunc(seconds + 0.5);
    const std::uint64_t total =
        rounded >= 18446744073709551615.0 ? UINT64_MAX : static_cast<std::uint64_t>(rounded);
    const std::uint64_t minutes = total / 60;
    const std::uint64_t rest = total % 60;
    return rest <= 9 ? QStringLiteral("%1:0%2").arg(minutes).arg(rest)
                     : QStringLiteral("%1:%2").arg(minutes).arg(rest);
}
