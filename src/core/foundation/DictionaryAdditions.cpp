#include "core/foundation/DictionaryAdditions.h"

#include <cmath>

namespace foundation {

QVariant objectForKeyPL(const QVariantMap& map, const QString& key)
{
    const auto it = map.constFind(key);
    if (it == map.constEnd())
        return {};
    if (it->metaType().id() == QMetaType::Nullptr || !it->isValid())
        return {};
    return *it;
}

int intForKey(const QVariantMap& map, const QString& key)
{
    const QVariant value = objectForKeyPL(map, key);
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok || !std::isfinite(number))
        return 0;
    const double clamped = std::clamp(std::trunc(number), double(INT_MIN), double(INT_MAX));
    return static_cast<int>(clamped);
}

} // namespace foundation
