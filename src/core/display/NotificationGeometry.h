#pragma once

#include <QColor>
#include <QPoint>
#include <QRect>

#include <vector>

// The song-change panel's size, place and timings. Screen coordinates have their origin at the
// top left; a corner's margins are measured from the screen's visible area.
class NotificationGeometry {
public:
    enum Corner { TopLeft = 0, BottomLeft = 1, TopRight = 2, BottomRight = 3 };

    static constexpr int kMinimumWidth = 236;
    static constexpr int kExtraWidth = 30;
    static constexpr int kMargin = 20;
    static constexpr double kAppearSeconds = 0.44;
    static constexpr double kStaySeconds = 5.0;
    static constexpr double kDisappearSeconds = 0.3;
    static constexpr double kSmallScale = 0.1;
    static constexpr double kAlpha = 0.9;
    static constexpr double kCornerRadius = 5;
    // The plate's gradient, from its bottom edge up: flat dark grey, brightening over the top.
    static constexpr double kGradientFlatUntil = 0.7;
    static QColor gradientDark() { return QColor(60, 60, 60); }
    static QColor gradientLight() { return QColor(100, 100, 100); }

    // The union of the fields' frames, its right edge plus 30, but at least 236.
    static int fittedWidth(const std::vector<QRect>& fields);
    // The window's top-left corner for a corner code; (0, 0) for an unknown code.
    static QPoint originForCorner(int corner, const QRect& visible, const QSize& window);
    // The first corner, in the order top right, bottom right, top left, bottom left, where the
    // window covers none of the occupied frames (the application's own panels); when every
    // corner covers one, the corner covering the least area.
    static int cornerAvoiding(const QRect& visible, const QSize& window,
                              const std::vector<QRect>& occupied);
};
