#include "core/display/HUDBackgroundGeometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {
double length(QPointF v)
{
    return std::hypot(v.x(), v.y());
}

double whole(double v)
{
    return std::trunc(v);
}
} // namespace

HUDBackgroundGeometry::HUDBackgroundGeometry(double width, double height)
    : m_width(std::isfinite(width) ? std::max(0.0, width) : 0.0)
    , m_height(std::isfinite(height) ? std::max(0.0, height) : 0.0)
{
    const double W = m_width;
    const double H = m_height;
    const double bar = H - kTitleHeight;

    m_body.moveTo(whole(W * 0.5), 0);
    appendArcFromPoint(m_body, {whole(W), 0}, {whole(W), whole(bar * 0.5)}, kRadius);
    m_body.lineTo(whole(W), whole(bar));
    m_body.lineTo(0, whole(bar));
    appendArcFromPoint(m_body, {0, whole(bar)}, {0, whole(bar * 0.5)}, kRadius);
    appendArcFromPoint(m_body, {0, 0}, {whole(W * 0.5), 0}, kRadius);
    m_body.closeSubpath();

    m_title.moveTo(0, whole(bar));
    m_title.lineTo(whole(W), whole(bar));
    appendArcFromPoint(m_title, {whole(W), whole(H)}, {whole(W * 0.5), whole(H)}, kRadius);
    appendArcFromPoint(m_title, {0, whole(H)}, {0, whole(bar)}, kRadius);
    m_title.closeSubpath();
}

QRectF HUDBackgroundGeometry::titleBarRect() const
{
    return {0, m_height - kTitleHeight, m_width, kTitleHeight};
}

QRectF HUDBackgroundGeometry::titleTextRect(double textHeight) const
{
    const double dy = (kTitleHeight - textHeight) * 0.5;
    return titleBarRect().adjusted(kTitleHeight, dy, -kTitleHeight, -dy);
}

QTransform HUDBackgroundGeometry::flip() const
{
    return QTransform(1, 0, 0, -1, 0, m_height);
}

QColor HUDBackgroundGeometry::bodyColor()
{
    return QColor::fromRgbF(float(kBodyWhite), float(kBodyWhite), float(kBodyWhite), float(kAlpha));
}

QColor HUDBackgroundGeometry::titleColor()
{
    return QColor::fromRgbF(float(kTitleWhite), float(kTitleWhite), float(kTitleWhite),
                            float(kAlpha));
}

void HUDBackgroundGeometry::appendArcFromPoint(QPainterPath& path, QPointF p1, QPointF p2,
                                               double radius)
{
    const QPointF p0 = path.currentPosition();
    const QPointF a = p0 - p1;
    const QPointF b = p2 - p1;
    const double la = length(a);
    const double lb = length(b);
    const double cross = a.x() * b.y() - a.y() * b.x();
    if (la <= 0 || lb <= 0 || radius <= 0 || std::abs(cross) < 1e-9 * la * lb) {
        path.lineTo(p1);
        return;
    }
    const QPointF ua = a / la;
    const QPointF ub = b / lb;
    const double cosTheta = std::clamp(ua.x() * ub.x() + ua.y() * ub.y(), -1.0, 1.0);
    const double theta = std::acos(cosTheta); // the angle at the corner
    const double tangent = radius / std::tan(theta * 0.5);
    const QPointF t1 = p1 + ua * tangent;
    const QPointF t2 = p1 + ub * tangent;
    QPointF bisector = ua + ub;
    bisector /= length(bisector);
    const QPointF centre = p1 + bisector * (radius / std::sin(theta * 0.5));

    // QPainterPath's angles: degrees, counter-clockwise with y pointing down the page.
    const auto angleOf = [&](QPointF p) {
        return std::atan2(-(p.y() - centre.y()), p.x() - centre.x()) * 180.0 / std::numbers::pi;
    };
    const double start = angleOf(t1);
    double sweep = angleOf(t2) - start;
    while (sweep > 180)
        sweep -= 360;
    while (sweep < -180)
        sweep += 360;
    path.lineTo(t1);
    path.arcTo(QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius), start,
               sweep);
}
