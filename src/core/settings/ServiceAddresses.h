#pragma once

#include <QSettings>
#include <QString>

#include <memory>

// Hosts of the online services. Each is a value in the settings store (group "services"),
// not a registered setting, with its default here and nowhere else. A host may carry a port
// ("127.0.0.1:8080"); tests point them at local servers.
class ServiceAddresses {
public:
    // Reads the user's settings file.
    ServiceAddresses();
    explicit ServiceAddresses(std::unique_ptr<QSettings> store);
    ~ServiceAddresses();

    QString lyricServerHost() const;
    QString lyricSharingHost() const;
    QString translationHost() const;
    QString helpPage() const;

    static constexpr char kLyricServerKey[] = "services/lyricServerHost";
    static constexpr char kLyricSharingKey[] = "services/lyricSharingHost";
    static constexpr char kTranslationKey[] = "services/translationHost";
    static constexpr char kHelpPageKey[] = "services/helpPage";

private:
    QString value(const char* key, const char* fallback) const;
    std::unique_ptr<QSettings> m_store;
};
