#include "core/display/SingleLineGeometry.h"

#include <cmath>

QRect SingleLineGeometry::contentRect(const QRect& screen)
{
    return {0, 0, 2 * screen.width() / 3, kHeight};
}

QRect SingleLineGeometry::initialFrame(const QRect& screen, const QSize& size,
                                       const std::optional<QRect>& saved,
                                       const QList<QRect>& screens)
{
    if (saved && saved->isValid()) {
        for (const QRect& each : screens) {
            if (each.intersects(*saved))
                return *saved;
        }
    }
    const int x = screen.x() + (screen.width() - size.width()) / 2;
    const int y = screen.y() + screen.height() - kBottomDistance - size.height();
    return {QPoint(x, y), size};
}

QRectF SingleLineGeometry::textRect(const QSizeF& bounds, const QSizeF& measured)
{
    const double x = std::trunc((bounds.width() - measured.width()) * 0.5);
    const double y = std::trunc((bounds.height() - measured.height()) * 0.5);
    return {x, y, measured.width(), measured.height()};
}

QRectF SingleLineGeometry::plateRect(const QRectF& text)
{
    return text.adjusted(-kPlateMargin, -kPlateMargin, kPlateMargin, kPlateMargin);
}

QRect SingleLineGeometry::inputRect(const QRectF& text, bool plate, const QSizeF& bounds)
{
    if (text.isEmpty())
        return {};
    // The shadow fades out within twice its blur.
    const double shadow = 2 * kShadowBlur;
    const QRectF shown = plate ? plateRect(text) : text.adjusted(-shadow, -shadow, shadow, shadow);
    return shown.toAlignedRect().intersected(QRect(QPoint(), bounds.toSize()));
}
