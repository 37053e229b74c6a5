#pragma once

#include "windows/WindowDesktop.h"

// The desktop through the freedesktop standards: files open with their default application
// (QDesktopServices, i.e. xdg-open), a file is revealed with org.freedesktop.FileManager1
// ShowItems, or, when no file manager answers on the session bus, its folder is opened.
class SystemDesktop : public WindowDesktop {
public:
    void openInTextEditor(const QString& path) override;
    void revealFile(const QString& path) override;
    void openFolder(const QString& path) override;
};
