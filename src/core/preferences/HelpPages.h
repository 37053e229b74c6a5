#pragma once

#include <QUrl>

class ServiceAddresses;

// The web pages the preferences window opens. They live under the help page address, so a
// test (or a mirror) moves them all by changing that one value.
class HelpPages {
public:
    static QUrl feedback(const ServiceAddresses& addresses);
    static QUrl jukoraDownload(const ServiceAddresses& addresses);
    static QUrl lyricDownloadTutorial(const ServiceAddresses& addresses);

    // The help page with one more path segment; a help page without a scheme is taken as web.
    static QUrl below(const QString& helpPage, const QString& segment);
};
