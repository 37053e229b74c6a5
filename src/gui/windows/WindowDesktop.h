#pragma once

#include <QString>

// What the windows ask of the desktop. SystemDesktop is the real one; tests record calls.
class WindowDesktop {
public:
    virtual ~WindowDesktop() = default;
    virtual void openInTextEditor(const QString& path) = 0;
    // Shows the file selected in the file manager.
    virtual void revealFile(const QString& path) = 0;
    virtual void openFolder(const QString& path) = 0;
};
