#pragma once

#include <QVariant>

// A track's 0-100 rating as 0-5 stars and back. Anything but a number passes unchanged.
class TrackRatingValueTransformer {
public:
    static bool allowsReverseTransformation() { return true; }
    static QVariant transformedValue(const QVariant& value);
    static QVariant reverseTransformedValue(const QVariant& value);
    // True for the numeric variant types (bool excluded).
    static bool isNumber(const QVariant& value);
};
