#include "core/display/FontTextMeasurer.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>

namespace {

QFont testFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(20);
    return font;
}

TEST(FontTextMeasurer, OneLineFitsTwoLinesWrapAtWords)
{
    const FontTextMeasurer measurer;
    const QFont font = testFont();
    const double line = QFontMetricsF(font).height();
    const QSizeF one = measurer.sizeWithFont(QStringLiteral("hello"), font, {1000, 1000});
    EXPECT_DOUBLE_EQ(one.height(), std::ceil(line));
    EXPECT_GT(one.width(), 20);
    const QSizeF two =
        measurer.sizeWithFont(QStringLiteral("hello hello"), font, {one.width() + 5, 1000});
    EXPECT_GE(two.height(), std::floor(2 * line));
    EXPECT_LE(two.height(), std::ceil(2 * line) + 1);
}

TEST(FontTextMeasurer, HostileTextStaysInsideTheBox)
{
    const FontTextMeasurer measurer;
    const QSizeF box(300, 50);
    const QSizeF size = measurer.sizeWithFont(QString(5000, QLatin1Char('m')), testFont(), box);
    EXPECT_LE(size.width(), 300);
    EXPECT_LE(size.height(), 50);
    EXPECT_GT(size.height(), 0);
    EXPECT_EQ(measurer.sizeWithFont(QStringLiteral("x"), testFont(), {300, 0}), QSizeF());
    EXPECT_EQ(measurer.sizeWithFont(QString(), testFont(), box), QSizeF());
    // A view a few points high still gets its first line, cut to the box.
    EXPECT_DOUBLE_EQ(measurer.sizeWithFont(QStringLiteral("x"), testFont(), {300, 3}).height(), 3);
}

} // namespace
