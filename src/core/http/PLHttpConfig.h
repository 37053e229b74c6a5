#pragma once

#include <QString>

#include <mutex>
#include <optional>

// Process-wide HTTP facts: the count of transfers in progress and the User-Agent.
class PLHttpConfig {
public:
    static PLHttpConfig& s();

    void requestStarted();
    // Never lets the count fall below 0.
    void requestStoped();
    int connections() const;

    // "<program>/<version> (Linux; Linux <major.minor.patch>; <locale>) PLHttpClient/1", built
    // once. Null (no header is sent) when the program has no name or the kernel version
    // cannot be read; a failed build is tried again next time.
    QString userAgentFormated();

    // The pieces, exposed for tests: a version of "short rv:build" when both exist and differ.
    static QString formatUserAgent(const QString& executable, const QString& shortVersion,
                                   const QString& buildVersion, const QString& kernelVersion,
                                   const QString& locale);

private:
    mutable std::mutex m_mutex;
    int m_connections = 0;
    std::optional<QString> m_userAgent;
};
