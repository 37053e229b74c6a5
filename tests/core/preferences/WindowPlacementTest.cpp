#include "core/preferences/WindowPlacement.h"

#include <gtest/gtest.h>

#include <ostream>

// Found by argument-dependent lookup, so in QRect's namespace.
void PrintTo(const QRect& r, std::ostream* os)
{
    *os << r.x() << ',' << r.y() << ' ' << r.width() << 'x' << r.height();
}

namespace {

struct PlacementCase {
    const char* what;
    QRect area;
    QSize size;
    QList<QRect> obstacles;
    QRect expected;
};

void PrintTo(const PlacementCase& c, std::ostream* os)
{
    *os << c.what;
}

class WindowPlacementTest : public ::testing::TestWithParam<PlacementCase> {};

TEST_P(WindowPlacementTest, CentredUnlessAnOnTopWindowIsInTheWay)
{
    const PlacementCase c = GetParam();
    const QRect placed = WindowPlacement::place(c.area, c.size, c.obstacles);
    EXPECT_EQ(placed, c.expected);
    EXPECT_TRUE(c.area.contains(placed));
}

// The lyric panel's default corner on each screen is (width - 330, 32), 320x420.
using Rects = QList<QRect>;

INSTANTIATE_TEST_SUITE_P(
    Screens, WindowPlacementTest,
    ::testing::Values(
        PlacementCase{"1600x900, nothing on top", QRect(0, 0, 1600, 900), QSize(520, 420), Rects(),
                      QRect(540, 240, 520, 420)},
        PlacementCase{"3840x2160, panel in its corner", QRect(0, 0, 3840, 2160), QSize(720, 480),
                      Rects{QRect(3510, 32, 320, 420)}, QRect(1560, 840, 720, 480)},
        PlacementCase{"panel in the middle: beside it, left first", QRect(0, 0, 1600, 900),
                      QSize(520, 420), Rects{QRect(640, 240, 320, 420)}, QRect(96, 240, 520, 420)},
        PlacementCase{"a wide strip across the middle: above it", QRect(0, 0, 1600, 900),
                      QSize(520, 300), Rects{QRect(0, 400, 1600, 100)}, QRect(540, 76, 520, 300)},
        PlacementCase{"nowhere free: least covered, in the area", QRect(0, 0, 800, 600),
                      QSize(700, 500), Rects{QRect(0, 0, 800, 600)}, QRect(50, 50, 700, 500)},
        PlacementCase{"larger than the screen: fitted to it", QRect(0, 24, 1024, 744),
                      QSize(2000, 2000), Rects(), QRect(0, 24, 1024, 744)},
        PlacementCase{"second screen to the right", QRect(1600, 0, 1920, 1080), QSize(520, 420),
                      Rects{QRect(3190, 32, 320, 420)}, QRect(2300, 330, 520, 420)}));

} // namespace
