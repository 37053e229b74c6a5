#include "core/foundation/ImageScaler.h"

#include <QPainter>

#include <cmath>

QRect ImageScaler::sourceSquare(QSize source)
{
    const int w = source.width();
    const int h = source.height();
    if (h > w) {
        // The margin is measured from the bottom edge and rounded; convert to a top edge.
        const int bottom = static_cast<int>(std::lround((h - w) / 2.0));
        return QRect(0, h - w - bottom, w, w);
    }
    const int left = static_cast<int>(std::lround((w - h) / 2.0));
    return QRect(left, 0, h, h);
}

QImage ImageScaler::scaleImage(const QImage& image, QSize fillSize)
{
    if (image.isNull() || fillSize.isEmpty())
        return {};
    QImage result(fillSize, QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setOpacity(1.0);
    painter.drawImage(QRect(QPoint(0, 0), fillSize), image, sourceSquare(image.size()));
    painter.end();
    return result;
}
