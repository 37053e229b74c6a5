#pragma once

#include <QIcon>

// The application's icon: the theme's "versewick" when installed, else the one built in.
namespace AppIcon {
QIcon icon();
} // namespace AppIcon
