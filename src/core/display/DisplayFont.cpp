#include "core/display/DisplayFont.h"

#include <algorithm>
#include <cmath>

QFont DisplayFont::fromSetting(const QFont& font)
{
    const double size = font.pointSizeF() > 0 ? font.pointSizeF() : double(font.pixelSize());
    return withSize(font, size);
}

QFont DisplayFont::withSize(const QFont& font, double size)
{
    QFont sized = font;
    const double pixels = std::isfinite(size) ? std::round(size) : 16.0;
    sized.setPixelSize(int(std::clamp(pixels, 1.0, double(kLargest))));
    return sized;
}
