#pragma once

#include <QImage>

// A Gaussian-like blur for soft shadows and glows: three box blurs in each direction.
class ImageBlur {
public:
    // A blur of the given radius (as drawing shadows specify it: about twice the standard
    // deviation). The result is premultiplied ARGB of the same size; pixels beyond the edges
    // count as transparent. A radius below 1 copies the image.
    static QImage blurred(const QImage& image, double radius);
};
