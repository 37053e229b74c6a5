#pragma once

#include <QVariant>

// A duration in seconds as "m:ss" text: 65.4 -> "1:05", 600 -> "10:00". A number not above 0
// gives no value (an invalid QVariant); anything but a number passes unchanged.
class TrackDurationValueTransformer {
public:
    static bool allowsReverseTransformation() { return false; }
    static QVariant transformedValue(const QVariant& value);
};
