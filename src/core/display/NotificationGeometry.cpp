#include "core/display/NotificationGeometry.h"

#include <algorithm>

int NotificationGeometry::fittedWidth(const std::vector<QRect>& fields)
{
    QRect united;
    for (const QRect& field : fields)
        united = united.united(field);
    const int right = united.isNull() ? 0 : united.x() + united.width();
    return std::max(right + kExtraWidth, kMinimumWidth);
}

QPoint NotificationGeometry::originForCorner(int corner, const QRect& visible, const QSize& window)
{
    const int left = visible.x() + kMargin;
    const int right = visible.x() + visible.width() - window.width() - kMargin;
    const int top = visible.y() + kMargin;
    const int bottom = visible.y() + visible.height() - window.height() - kMargin;
    switch (corner) {
    case TopLeft:
        return {left, top};
    case BottomLeft:
        return {left, bottom};
    case TopRight:
        return {right, top};
    case BottomRight:
        return {right, bottom};
    default:
        return {0, 0};
    }
}

int NotificationGeometry::cornerAvoiding(const QRect& visible, const QSize& window,
                                         const std::vector<QRect>& occupied)
{
    int best = TopRight;
    long long bestCovered = -1;
    for (const int corner : {TopRight, BottomRight, TopLeft, BottomLeft}) {
        const QRect frame(originForCorner(corner, visible, window), window);
        long long covered = 0;
        for (const QRect& other : occupied) {
            const QRect common = frame.intersected(other);
            if (!common.isEmpty())
                covered += (long long)common.width() * common.height();
        }
        if (covered == 0)
            return corner;
        if (bestCovered < 0 || covered < bestCovered) {
            best = corner;
            bestCovered = covered;
        }
    }
    return best;
}
