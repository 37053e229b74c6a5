#pragma once

#include <QColor>
#include <QPainterPath>
#include <QRectF>
#include <QTransform>

// The HUD panel's drawn frame: a dark body with rounded bottom corners under a lighter 19-point
// title strip with rounded top corners. The paths are built with the origin at the bottom left
// (y up), as the frame is defined; flip() turns them into widget coordinates.
class HUDBackgroundGeometry {
public:
    static constexpr double kTitleHeight = 19;
    static constexpr double kRadius = 6;
    static constexpr double kBodyWhite = 0.1;
    static constexpr double kTitleWhite = 0.25;
    static constexpr double kAlpha = 0.75;

    HUDBackgroundGeometry(double width, double height);

    const QPainterPath& bodyPath() const { return m_body; }
    const QPainterPath& titlePath() const { return m_title; }
    // (0, H - 19, W, 19), y up.
    QRectF titleBarRect() const;
    // The title bar inset by 19 at each side and centred vertically for a title h high.
    QRectF titleTextRect(double textHeight) const;
    // From y up to y down, for painting into a widget of this height.
    QTransform flip() const;
    static QColor bodyColor();
    static QColor titleColor();

    // Appends a tangent arc at the corner p1 between the lines current point -> p1 and
    // p1 -> p2, of the given radius; a straight line to p1 when the three points make no
    // corner (the current point on p1, or all on one line).
    static void appendArcFromPoint(QPainterPath& path, QPointF p1, QPointF p2, double radius);

private:
    double m_width;
    double m_height;
    QPainterPath m_body;
    QPainterPath m_title;
};
