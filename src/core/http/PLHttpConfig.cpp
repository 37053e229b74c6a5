#include "core/http/PLHttpConfig.h"

#include <QCoreApplication>
#include <QLocale>
#include <QRegularExpression>
#include <QSysInfo>

PLHttpConfig& PLHttpConfig::s()
{
    static PLHttpConfig instance;
    return instance;
}

void PLHttpConfig::requestStarted()
{
    std::lock_guard lock(m_mutex);
    ++m_connections;
}

void PLHttpConfig::requestStoped()
{
    std::lock_guard lock(m_mutex);
    m_connections = std::max(0, m_connections - 1);
}

int PLHttpConfig::connections() const
{
    std::lock_guard lock(m_mutex);
    return m_connections;
}

QString PLHttpConfig::formatUserAgent(const QString& executable, const QString& shortVersion,
                                      const QString& buildVersion, const QString& kernelVersion,
                                      const QString& locale)
{
    if (executable.isEmpty())
        return {};
    // The kernel's "6.1.0-18-amd64" becomes "6.1.0"; a missing part is 0.
    static const QRegularExpression numbers(QStringLiteral("^(\\d+)(?:\\.(\\d+))?(?:\\.(\\d+))?"));
    const QRegularExpressionMatch m = numbers.match(kernelVersion);
    if (!m.hasMatch())
        return {};
    const QString system = QStringLiteral("%1.%2.%3")
                               .arg(m.captured(1).toUInt())
                               .arg(m.captured(2).toUInt())
                               .arg(m.captured(3).toUInt());
    QString version;
    if (!shortVersion.isEmpty() && !buildVersion.isEmpty())
        version = shortVersion == buildVersion
                      ? shortVersion
                      : shortVersion + QStringLiteral(" rv:") + buildVersion;
    else if (!shortVersion.isEmpty() || !buildVersion.isEmpty())
        version = shortVersion.isEmpty() ? buildVersion : shortVersion;
    else
        version = QStringLiteral("(null)");
    return QStringLiteral("%1/%2 (Linux; Linux %3; %4) PLHttpClient/1")
        .arg(executable, version, system, locale);
}

QString PLHttpConfig::userAgentFormated()
{
    std::lock_guard lock(m_mutex);
    if (!m_userAgent) {
        const QString agent = formatUserAgent(QCoreApplication::applicationName(),
                                              QCoreApplication::applicationVersion(),
                                              QString::fromLatin1(VERSEWICK_BUILD_VERSION),
                                              QSysInfo::kernelVersion(), QLocale().name());
        if (agent.isNull())
            return agent;
        m_userAgent = agent;
    }
    return *m_userAgent;
}
