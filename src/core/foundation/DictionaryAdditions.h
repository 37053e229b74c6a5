#pragma once

#include <QVariantMap>

// Lookups that read a stored null object as absent.
namespace foundation {

QVariant objectForKeyPL(const QVariantMap& map, const QString& key);
// The value as a 32-bit integer, 0 when absent.
int intForKey(const QVariantMap& map, const QString& key);

} // namespace foundation
