#include "core/display/ImageBlur.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Box widths whose three passes approximate a Gaussian of deviation sigma.
std::array<int, 3> boxRadii(double sigma)
{
    const double ideal = std::sqrt(12.0 * sigma * sigma / 3.0 + 1.0);
    int lower = int(std::floor(ideal));
    if (lower % 2 == 0)
        --lower;
    const int upper = lower + 2;
    const double m = std::round((12.0 * sigma * sigma - 3.0 * lower * lower - 12.0 * lower - 9.0) /
                                (-4.0 * lower - 4.0));
    std::array<int, 3> radii{};
    for (int i = 0; i < 3; ++i)
        radii[std::size_t(i)] = ((i < m ? lower : upper) - 1) / 2;
    return radii;
}

// One box pass over `count` pixels spaced `stride` apart, four channels, zero beyond the ends.
void boxLine(const quint32* in, quint32* out, int count, int stride, int radius)
{
    const int window = 2 * radius + 1;
    int acc[4] = {0, 0, 0, 0};
    const auto add = [&](int i, int sign) {
        if (i < 0 || i >= count)
            return;
        const quint32 p = in[std::size_t(i) * std::size_t(stride)];
        for (int c = 0; c < 4; ++c)
            acc[c] += sign * int((p >> (8 * c)) & 0xff);
    };
    for (int i = -radius; i < radius; ++i)
        add(i, 1);
    for (int i = 0; i < count; ++i) {
        add(i + radius, 1);
        quint32 value = 0;
        for (int c = 0; c < 4; ++c)
            value |= quint32(std::clamp((acc[c] + window / 2) / window, 0, 255)) << (8 * c);
        out[std::size_t(i) * std::size_t(stride)] = value;
        add(i - radius, -1);
    }
}

} // namespace

QImage ImageBlur::blurred(const QImage& image, double radius)
{
    QImage source = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (!(radius >= 1) || source.isNull())
        return source;
    const int w = source.width();
    const int h = source.height();
    QImage scratch(w, h, QImage::Format_ARGB32_Premultiplied);
    const auto radii = boxRadii(radius * 0.5);
    for (const int r : radii) {
        if (r <= 0)
            continue;
        for (int y = 0; y < h; ++y)
            boxLine(reinterpret_cast<const quint32*>(source.constScanLine(y)),
                    reinterpret_cast<quint32*>(scratch.scanLine(y)), w, 1, r);
        const int stride = int(scratch.bytesPerLine() / 4);
        for (int x = 0; x < w; ++x)
            boxLine(reinterpret_cast<const quint32*>(scratch.constBits()) + x,
                    reinterpret_cast<quint32*>(source.bits()) + x, h, stride, r);
    }
    return source;
}
