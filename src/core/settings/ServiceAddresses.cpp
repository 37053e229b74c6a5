#include "core/settings/ServiceAddresses.h"

#include "core/settings/PLSettingsStore.h"

ServiceAddresses::ServiceAddresses()
    : ServiceAddresses(PLSettingsStore::defaultSettings())
{
}

ServiceAddresses::ServiceAddresses(std::unique_ptr<QSettings> store)
    : m_store(std::move(store))
{
}

ServiceAddresses::~ServiceAddresses() = default;

QString ServiceAddresses::value(const char* key, const char* fallback) const
{
    const QString stored = m_store->value(QLatin1String(key)).toString().trimmed();
    return stored.isEmpty() ? QString::fromLatin1(fallback) : stored;
}

QString ServiceAddresses::lyricServerHost() const
{
    return value(kLyricServerKey, "lrc.versewick.net");
}

QString ServiceAddresses::lyricSharingHost() const
{
    return value(kLyricSharingKey, "share.versewick.net");
}

QString ServiceAddresses::translationHost() const
{
    return value(kTranslationKey, "translate.versewick.net");
}

QString ServiceAddresses::helpPage() const
{
    return value(kHelpPageKey, "https://versewick.net/help");
}
