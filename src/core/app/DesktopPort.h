#pragma once

#include <QString>
#include <QUrl>

// What the desktop does for us: open a web page, reveal a file, edit a file.
class DesktopPort {
public:
    virtual ~DesktopPort() = default;
    virtual void openUrl(const QUrl& url) = 0;
    virtual void revealFile(const QString& path) = 0;
    virtual void openInTextEditor(const QString& path) = 0;
};
