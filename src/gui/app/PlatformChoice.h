#pragma once

#include <QByteArray>

// Which Qt platform the application asks for. Qt 6.4 cannot keep a window above the others on
// Wayland, so in a Wayland session the floating windows run on XWayland, unless the user chose
// a platform.
namespace PlatformChoice {

// The platform to set, or empty to leave Qt's choice alone.
QByteArray forcedPlatform(const QByteArray& sessionType, bool platformSetByUser);
// Applies the rule to this process's environment; call before the QApplication exists.
void apply();

} // namespace PlatformChoice
