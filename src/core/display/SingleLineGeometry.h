#pragma once

#include <QList>
#include <QRect>
#include <QRectF>
#include <QSizeF>

#include <optional>

// Where the single-line strip sits and where its text goes. Screen coordinates have their
// origin at the top left, as the strip's view has.
class SingleLineGeometry {
public:
    static constexpr int kHeight = 80;
    // Distance from the bottom of the screen when no frame was saved.
    static constexpr int kBottomDistance = 200;
    static constexpr double kPlateMargin = 10;
    static constexpr double kPlateRadius = 5;
    static constexpr double kPlateAlpha = 0.75;
    static constexpr double kOutlineWidth = 2.0;
    static constexpr double kShadowBlur = 15;

    // Two thirds of the screen wide, 80 high, at (0, 0).
    static QRect contentRect(const QRect& screen);
    // The strip's frame: the saved one when it still shows on one of the screens; otherwise
    // centred horizontally on the screen, 200 above its bottom.
    static QRect initialFrame(const QRect& screen, const QSize& size,
                              const std::optional<QRect>& saved, const QList<QRect>& screens);
    // The text's rectangle: the measured size centred in the bounds, its corner truncated to
    // whole points.
    static QRectF textRect(const QSizeF& bounds, const QSizeF& measured);
    // The dark plate: the text's rectangle grown by 10 on every side.
    static QRectF plateRect(const QRectF& text);
    // What of the strip shows and takes the mouse: the plate, or without it the text and its
    // shadow, within the bounds; empty for no text.
    static QRect inputRect(const QRectF& text, bool plate, const QSizeF& bounds);
};
