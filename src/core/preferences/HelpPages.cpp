#include "core/preferences/HelpPages.h"

#include "core/settings/ServiceAddresses.h"

QUrl HelpPages::below(const QString& helpPage, const QString& segment)
{
    QUrl url = QUrl::fromUserInput(helpPage.trimmed());
    QString path = url.path();
    while (path.endsWith(u'/'))
        path.chop(1);
    url.setPath(path + u'/' + segment);
    return url;
}

QUrl HelpPages::feedback(const ServiceAddresses& addresses)
{
    return below(addresses.helpPage(), QStringLiteral("feedback"));
}

QUrl HelpPages::jukoraDownload(const ServiceAddresses& addresses)
{
    return below(addresses.helpPage(), QStringLiteral("jukora"));
}

QUrl HelpPages::lyricDownloadTutorial(const ServiceAddresses& addresses)
{
    return below(addresses.helpPage(), QStringLiteral("download-lyrics"));
}
