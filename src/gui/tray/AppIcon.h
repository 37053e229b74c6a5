#pragma once

#include <QIcon>
#include <QString>

class AppState;
class QSystemTrayIcon;

// The application's icon: the theme's "versewick" when installed, else the one built in.
namespace AppIcon {
QIcon icon();
// The tray item's tooltip: "Artist - Title" with the lit line under it; the application's
// name when no song plays.
QString toolTip(const QString& artist, const QString& title, const QString& line);
// Keeps the tray item's tooltip on the song and its lit line, for as long as both live.
void followSong(QSystemTrayIcon& tray, const AppState& state);
} // namespace AppIcon
