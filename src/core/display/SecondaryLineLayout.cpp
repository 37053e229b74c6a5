#include "core/display/SecondaryLineLayout.h"

#include "core/display/SingleLineGeometry.h"

#include <cmath>

namespace secondaryline {

Stack stack(const QSizeF& bounds, const QSizeF& main, const QSizeF& under)
{
    const double total = main.height() + kGap + under.height();
    if (under.isEmpty() || main.isEmpty() || total > bounds.height())
        return {main.isEmpty() ? QRectF() : SingleLineGeometry::textRect(bounds, main), {}};
    const double top = std::trunc((bounds.height() - total) / 2);
    const QRectF first(std::trunc((bounds.width() - main.width()) / 2), top, main.width(),
                       main.height());
    const QRectF second(std::trunc((bounds.width() - under.width()) / 2),
                        top + main.height() + kGap, under.width(), under.height());
    return {first, second};
}

} // namespace secondaryline
