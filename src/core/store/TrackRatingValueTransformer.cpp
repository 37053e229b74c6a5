#include "core/store/TrackRatingValueTransformer.h"

bool TrackRatingValueTransformer::isNumber(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

QVariant TrackRatingValueTransformer::transformedValue(const QVariant& value)
{
    return isNumber(value) ? QVariant(value.toDouble() / 20.0) : value;
}

QVariant TrackRatingValueTransformer::reverseTransformedValue(const QVariant& value)
{
    return isNumber(value) ? QVariant(value.toDouble() * 20.0) : value;
}
