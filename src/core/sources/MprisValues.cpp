#include "core/sources/MprisValues.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <cmath>

namespace mpris {

QVariant unwrap(const QVariant& value)
{
    QVariant v = value;
    for (int depth = 0; depth < 8 && v.metaType() == QMetaType::fromType<QDBusVariant>(); ++depth)
        v = v.value<QDBusVariant>().variant();
    return v;
}

QString string(const QVariant& value)
{
    const QVariant v = unwrap(value);
    if (v.metaType() != QMetaType::fromType<QString>())
        return {};
    QString s = v.toString();
    if (s.size() > kMaxStringLength)
        return {};
    return s.isNull() ? QStringLiteral("") : s;
}

QString stringOrList(const QVariant& value)
{
    const QVariant v = unwrap(value);
    if (v.metaType() == QMetaType::fromType<QString>())
        return string(v);
    QStringList parts;
    if (v.metaType() == QMetaType::fromType<QStringList>()) {
        parts = v.toStringList();
    } else if (v.metaType() == QMetaType::fromType<QDBusArgument>()) {
        const QDBusArgument arg = v.value<QDBusArgument>();
        if (arg.currentSignature() != QLatin1String("as"))
            return {};
        arg >> parts;
    } else {
        return {};
    }
    QString joined;
    for (const QString& part : parts) {
        if (!joined.isEmpty() && !part.isEmpty())
            joined += QLatin1String(", ");
        joined += part;
        if (joined.size() > kMaxStringLength)
            return {};
    }
    return joined.isNull() ? QStringLiteral("") : joined;
}

QString objectPath(const QVariant& value)
{
    const QVariant v = unwrap(value);
    if (v.metaType() == QMetaType::fromType<QDBusObjectPath>())
        return string(v.value<QDBusObjectPath>().path());
    return string(v);
}

std::optional<qint64> microseconds(const QVariant& value)
{
    const QVariant v = unwrap(value);
    switch (v.metaType().id()) {
    case QMetaType::LongLong:
    case QMetaType::Int:
    case QMetaType::Short: {
        const qint64 n = v.toLongLong();
        if (n >= 0 && n <= kMaxMicroseconds)
            return n;
        return std::nullopt;
    }
    case QMetaType::ULongLong:
    case QMetaType::UInt:
    case QMetaType::UShort:
    case QMetaType::UChar: {
        const quint64 n = v.toULongLong();
        if (n <= quint64(kMaxMicroseconds))
            return qint64(n);
        return std::nullopt;
    }
    case QMetaType::Double: {
        const double d = v.toDouble();
        if (std::isfinite(d) && d >= 0.0 && d <= double(kMaxMicroseconds))
            return qint64(d);
        return std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

std::optional<double> rate(const QVariant& value)
{
    const QVariant v = unwrap(value);
    if (v.metaType() != QMetaType::fromType<double>())
        return std::nullopt;
    const double d = v.toDouble();
    if (!std::isfinite(d) || d <= 0.0 || d > 100.0)
        return std::nullopt;
    return d;
}

QVariantMap dictionary(const QVariant& value)
{
    const QVariant v = unwrap(value);
    if (v.metaType() == QMetaType::fromType<QVariantMap>())
        return v.toMap();
    if (v.metaType() != QMetaType::fromType<QDBusArgument>())
        return {};
    const QDBusArgument arg = v.value<QDBusArgument>();
    if (arg.currentSignature() != QLatin1String("a{sv}"))
        return {};
    QVariantMap map;
    arg >> map;
    return map;
}

} // namespace mpris
