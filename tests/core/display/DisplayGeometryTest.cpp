#include "core/display/HUDBackgroundGeometry.h"
#include "core/display/ImageBlur.h"
#include "core/display/NotificationGeometry.h"
#include "core/display/NotificationTrack.h"
#include "core/display/SingleLineGeometry.h"

#include <gtest/gtest.h>

#include <QPainter>

namespace {

TEST(SingleLineGeometry, FirstLaunchIsTwoThirdsWideCentred200AboveTheBottom)
{
    const QRect screen(0, 0, 1600, 900);
    const QRect content = SingleLineGeometry::contentRect(screen);
    EXPECT_EQ(content, QRect(0, 0, 1066, 80));
    const QRect frame =
        SingleLineGeometry::initialFrame(screen, content.size(), std::nullopt, {screen});
    EXPECT_EQ(frame, QRect(267, 620, 1066, 80));
    // A second screen to the right: the strip goes on the given (main) one.
    const QRect right(1600, 0, 3840, 2160);
    EXPECT_EQ(SingleLineGeometry::initialFrame(right, {2560, 80}, std::nullopt, {screen, right}),
              QRect(1600 + 640, 2160 - 280, 2560, 80));
}

TEST(SingleLineGeometry, ASavedFrameIsRestoredOnlyWhereItCanBeSeen)
{
    const QRect screen(0, 0, 1600, 900);
    const QRect saved(100, 40, 1066, 80);
    EXPECT_EQ(SingleLineGeometry::initialFrame(screen, {1066, 80}, saved, {screen}), saved);
    const QRect gone(5000, 40, 1066, 80); // its screen was unplugged
    EXPECT_EQ(SingleLineGeometry::initialFrame(screen, {1066, 80}, gone, {screen}),
              QRect(267, 620, 1066, 80));
}

TEST(SingleLineGeometry, TextIsCentredWithTruncatedCornerAndThePlateGrowsByTen)
{
    const QRectF text = SingleLineGeometry::textRect({1066, 80}, {401, 41});
    EXPECT_EQ(text, QRectF(332, 19, 401, 41));
    EXPECT_EQ(SingleLineGeometry::plateRect(text), QRectF(322, 9, 421, 61));
}

TEST(NotificationGeometry, WidthIsTheFieldsRightEdgePlus30AtLeast236)
{
    EXPECT_EQ(NotificationGeometry::fittedWidth({}), 236);
    EXPECT_EQ(NotificationGeometry::fittedWidth({QRect(15, 10, 120, 18), QRect(15, 30, 90, 16)}),
              236);
    EXPECT_EQ(NotificationGeometry::fittedWidth({QRect(15, 10, 120, 18), QRect(15, 30, 400, 16)}),
              445);
}

struct CornerCase {
    int corner;
    QPoint origin;
};
class NotificationCorner : public ::testing::TestWithParam<CornerCase> {};

TEST_P(NotificationCorner, TwentyInsideTheVisibleArea)
{
    const QRect visible(0, 27, 1600, 873); // a top panel 27 high
    EXPECT_EQ(NotificationGeometry::originForCorner(GetParam().corner, visible, {300, 90}),
              GetParam().origin);
}
INSTANTIATE_TEST_SUITE_P(Corners, NotificationCorner,
                         ::testing::Values(CornerCase{0, {20, 47}}, CornerCase{1, {20, 790}},
                                           CornerCase{2, {1280, 47}}, CornerCase{3, {1280, 790}},
                                           CornerCase{4, {0, 0}}, CornerCase{-1, {0, 0}}));

struct AvoidCase {
    const char* what;
    std::vector<QRect> occupied;
    int corner;
};
class NotificationAvoids : public ::testing::TestWithParam<AvoidCase> {};

// A 1600x900 screen with a 27-high top panel and a 300x90 notification.
TEST_P(NotificationAvoids, TheFirstCornerNoPanelCovers)
{
    EXPECT_EQ(
        NotificationGeometry::cornerAvoiding({0, 27, 1600, 873}, {300, 90}, GetParam().occupied),
        GetParam().corner)
        << GetParam().what;
}
INSTANTIATE_TEST_SUITE_P(
    Panels, NotificationAvoids,
    ::testing::Values(AvoidCase{"nothing", {}, 2},
                      AvoidCase{"lyric panel top right", {QRect(1270, 32, 320, 420)}, 3},
                      AvoidCase{"a tall panel on the right", {QRect(1270, 32, 320, 860)}, 0},
                      AvoidCase{"panels in all but one corner",
                                {QRect(1270, 32, 320, 860), QRect(0, 30, 400, 200)},
                                1},
                      AvoidCase{"everything covered: least covered",
                                {QRect(0, 0, 1600, 900), QRect(1300, 40, 300, 90)},
                                3}),
    [](const auto& info) { return "case" + std::to_string(info.index); });

TEST(NotificationTrack, DurationText)
{
    EXPECT_EQ(NotificationTrack::durationText(187.4), QStringLiteral("3:07"));
    EXPECT_EQ(NotificationTrack::durationText(3723), QStringLiteral("1:02:03"));
    EXPECT_EQ(NotificationTrack::durationText(-5), QStringLiteral("0:00"));
    EXPECT_EQ(NotificationTrack::durationText(std::nan("")), QStringLiteral("0:00"));
}

TEST(HUDBackgroundGeometry, BodyHasRoundBottomCornersAndTheTitleStripRoundTopCorners)
{
    const HUDBackgroundGeometry hud(300, 200);
    EXPECT_EQ(hud.bodyPath().boundingRect(), QRectF(0, 0, 300, 181));
    EXPECT_EQ(hud.titlePath().boundingRect(), QRectF(0, 181, 300, 19));
    // y up: the body's bottom corners are cut, its top corners square; the title the reverse.
    for (const QPointF p : {QPointF(0.5, 0.5), QPointF(299.5, 0.5)})
        EXPECT_FALSE(hud.bodyPath().contains(p)) << p.x() << ',' << p.y();
    for (const QPointF p : {QPointF(0.5, 180.5), QPointF(299.5, 180.5), QPointF(6, 1)})
        EXPECT_TRUE(hud.bodyPath().contains(p)) << p.x() << ',' << p.y();
    for (const QPointF p : {QPointF(0.5, 199.5), QPointF(299.5, 199.5)})
        EXPECT_FALSE(hud.titlePath().contains(p)) << p.x() << ',' << p.y();
    EXPECT_TRUE(hud.titlePath().contains(QPointF(0.5, 181.5)));
    EXPECT_EQ(hud.titleTextRect(13), QRectF(19, 184, 262, 13));
    EXPECT_EQ(hud.flip().map(hud.titlePath()).boundingRect(), QRectF(0, 0, 300, 19));
}

TEST(HUDBackgroundGeometry, OddSizesAreTruncated)
{
    const HUDBackgroundGeometry hud(301.7, 100.9);
    EXPECT_EQ(hud.bodyPath().boundingRect(), QRectF(0, 0, 301, 81));
}

TEST(HUDBackgroundGeometry, APanelNoTallerThanTheTitleStillGetsItsTitle)
{
    for (const double h : {19.0, 10.0, 0.0}) {
        const HUDBackgroundGeometry hud(200, h);
        const QRectF title = hud.flip().map(hud.titlePath()).boundingRect();
        EXPECT_DOUBLE_EQ(title.top(), 0) << h;
        EXPECT_DOUBLE_EQ(title.height(), 19) << h;
    }
}

TEST(HUDBackgroundGeometry, AnArcFromTheCurrentPointIsAStraightEdge)
{
    QPainterPath path;
    path.moveTo(0, 50);
    HUDBackgroundGeometry::appendArcFromPoint(path, {0, 50}, {0, 25}, 6);
    for (int i = 0; i < path.elementCount(); ++i)
        EXPECT_NE(path.elementAt(i).type, QPainterPath::CurveToElement);
    EXPECT_EQ(path.currentPosition(), QPointF(0, 50));
    HUDBackgroundGeometry::appendArcFromPoint(path, {0, 0}, {50, 0}, 6);
    EXPECT_GT(path.elementCount(), 3); // a corner: a line to the tangent point, then curves
    EXPECT_NEAR(path.currentPosition().x(), 6, 1e-9);
    EXPECT_NEAR(path.currentPosition().y(), 0, 1e-9);
}

TEST(ImageBlur, SpreadsAPointAndKeepsItsWeight)
{
    QImage dot(81, 81, QImage::Format_ARGB32_Premultiplied);
    dot.fill(Qt::transparent);
    for (int y = 38; y < 43; ++y)
        for (int x = 38; x < 43; ++x)
            dot.setPixel(x, y, 0xff000000);
    const QImage soft = ImageBlur::blurred(dot, 15);
    EXPECT_LT(qAlpha(soft.pixel(40, 40)), 255);
    EXPECT_GT(qAlpha(soft.pixel(40, 48)), 0);
    EXPECT_EQ(qAlpha(soft.pixel(0, 0)), 0);
    long long before = 0;
    long long after = 0;
    for (int y = 0; y < 81; ++y)
        for (int x = 0; x < 81; ++x) {
            before += qAlpha(dot.pixel(x, y));
            after += qAlpha(soft.pixel(x, y));
        }
    EXPECT_NEAR(double(after), double(before), before * 0.1); // rounding loses a little
    EXPECT_EQ(ImageBlur::blurred(dot, 0.5), dot);
}

} // namespace
