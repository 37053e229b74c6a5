#pragma once

#include "core/app/DesktopPort.h"

// The desktop through the freedesktop standards: web pages and files open with their default
// application (QDesktopServices, i.e. xdg-open); a file is revealed with
// org.freedesktop.FileManager1 ShowItems or, when no file manager answers on the session bus,
// its folder is opened.
class SystemDesktop : public DesktopPort {
public:
    void openUrl(const QUrl& url) override;
    void revealFile(const QString& path) override;
    void openInTextEditor(const QString& path) override;
};
