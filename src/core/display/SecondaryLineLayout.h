#pragma once

#include <QRectF>
#include <QSizeF>

// Where the single-line strip puts its line and the smaller line under it: the two stacked and
// centred together in the bounds. The line itself always keeps its room; the line under it is
// dropped (an empty rectangle) when both do not fit.
namespace secondaryline {

// The strip's line under the sung line, against the strip's font.
constexpr double kStripScale = 0.6;
// Between the line and the line under it.
constexpr double kGap = 2;

struct Stack {
    QRectF main;
    QRectF under;
};

Stack stack(const QSizeF& bounds, const QSizeF& main, const QSizeF& under);

} // namespace secondaryline
