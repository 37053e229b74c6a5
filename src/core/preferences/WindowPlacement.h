#pragma once

#include <QList>
#include <QRect>
#include <QSize>

// Where a window opens: centred on the screen's free area, unless a window that stays on top
// (the lyric panel, the strip) would cover it there; then beside that window, as near the centre
// as it fits. Pure arithmetic, so it holds for any screen size.
namespace WindowPlacement {

// Space kept between the window and a window it avoids.
inline constexpr int kGap = 24;

// area: the screen's available geometry; size: the window's frame size; obstacles: the frames
// of the windows that stay on top. The answer lies inside the area (a window larger than the
// area is fitted to it) and overlaps the obstacles as little as possible.
QRect place(const QRect& area, QSize size, const QList<QRect>& obstacles);

} // namespace WindowPlacement
