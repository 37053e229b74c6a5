#include "core/preferences/WindowPlacement.h"

#include <QPoint>

#include <algorithm>
#include <limits>

namespace WindowPlacement {

namespace {

QRect fitted(const QRect& area, QRect frame)
{
    frame.moveLeft(std::clamp(frame.left(), area.left(), area.right() - frame.width() + 1));
    frame.moveTop(std::clamp(frame.top(), area.top(), area.bottom() - frame.height() + 1));
    return frame;
}

qint64 coveredArea(const QRect& frame, const QList<QRect>& obstacles)
{
    qint64 covered = 0;
    for (const QRect& obstacle : obstacles) {
        const QRect overlap = frame.intersected(obstacle);
        covered += qint64(overlap.width()) * overlap.height();
    }
    return covered;
}

qint64 distanceSquared(const QPoint& a, const QPoint& b)
{
    const qint64 dx = a.x() - b.x();
    const qint64 dy = a.y() - b.y();
    return dx * dx + dy * dy;
}

} // namespace

QRect place(const QRect& area, QSize size, const QList<QRect>& obstacles)
{
    if (!area.isValid())
        return QRect(QPoint(0, 0), size);
    size = size.boundedTo(area.size()).expandedTo(QSize(1, 1));
    QRect centred(QPoint(0, 0), size);
    centred.moveCenter(area.center());

    // The centre first, then each side of each obstacle, keeping the other coordinate centred.
    QList<QRect> candidates{centred};
    for (const QRect& o : obstacles) {
        if (!o.isValid())
            continue;
        const QRect left = centred.translated(o.left() - kGap - centred.right() - 1, 0);
        const QRect right = centred.translated(o.right() + kGap + 1 - centred.left(), 0);
        const QRect above = centred.translated(0, o.top() - kGap - centred.bottom() - 1);
        const QRect below = centred.translated(0, o.bottom() + kGap + 1 - centred.top());
        candidates << left << right << above << below;
    }

    QRect best;
    qint64 bestCovered = std::numeric_limits<qint64>::max();
    qint64 bestDistance = std::numeric_limits<qint64>::max();
    for (const QRect& candidate : candidates) {
        const QRect frame = fitted(area, candidate);
        const qint64 covered = coveredArea(frame, obstacles);
        const qint64 distance = distanceSquared(frame.center(), area.center());
        if (covered < bestCovered || (covered == bestCovered && distance < bestDistance)) {
            best = frame;
            bestCovered = covered;
            bestDistance = distance;
        }
    }
    return best;
}

} // namespace WindowPlacement
