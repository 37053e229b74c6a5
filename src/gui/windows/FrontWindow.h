#pragma once

#include <QRect>

class QWidget;

// How the application's own windows (search, lyric manager, preferences) open and close: clear
// of the windows that stay on top, in front, and closed by Escape or Ctrl+W.
namespace FrontWindow {

// What a shown top-level window covers on the screen: its frame, or only its shape when it is
// shaped (the strip spans the screen but draws its line alone).
QRect coveredArea(const QWidget* window);

// Escape and Ctrl+W close the window (from any child that leaves the key unused).
void addCloseKeys(QWidget* window);

// A hidden window is placed on the screen under the pointer, centred unless a window that
// stays on top would cover it there, and shown; a shown one keeps its place. Either way it
// comes to the front with the keyboard focus.
void present(QWidget* window);

} // namespace FrontWindow
