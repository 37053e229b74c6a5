#pragma once

#include <QImage>
#include <QRect>
#include <QSize>

// Square thumbnails of track artwork.
class ImageScaler {
public:
    // The largest centred square of an image of this size, in top-left image coordinates.
    static QRect sourceSquare(QSize source);
    // That square drawn into a new image of the target size with smooth interpolation.
    static QImage scaleImage(const QImage& image, QSize fillSize);
};
