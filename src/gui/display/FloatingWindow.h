#pragma once

class QWidget;

// Frameless windows that float above the others, on every desktop where the window manager
// allows, and (unless they ask for it) never take the keyboard focus from the player.
namespace FloatingWindow {

void apply(QWidget* window, bool acceptsFocus);
// Asks the window manager to show the window on every desktop (X11: _NET_WM_DESKTOP
// 0xFFFFFFFF, set before mapping and asked for again when mapped). Call from showEvent.
void showOnAllDesktops(QWidget* window);

} // namespace FloatingWindow
