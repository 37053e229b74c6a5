#include "core/foundation/DictionaryAdditions.h"
#include "core/foundation/ImageScaler.h"
#include "core/foundation/StringAdditions.h"
#include "core/foundation/T.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QPainter>

using namespace foundation;

namespace {

struct EmptyCase {
    QString text;
    bool empty;
    bool nonEmpty;
};

class StringEmptiness : public ::testing::TestWithParam<EmptyCase> {};

TEST_P(StringEmptiness, TrimsWhiteSpaceAndLineBreaks)
{
    EXPECT_EQ(isEmpty(GetParam().text), GetParam().empty);
    EXPECT_EQ(isNonEmpty(GetParam().text), GetParam().nonEmpty);
}

INSTANTIATE_TEST_SUITE_P(Texts, StringEmptiness,
                         ::testing::Values(EmptyCase{QString(QLatin1String("")), true, false},
                                           EmptyCase{QStringLiteral(" \t\r\n \u3000\u2028"), true,
                                                     false},
                                           EmptyCase{QStringLiteral("  a "), false, true},
                                           // an absent string is neither
                                           EmptyCase{QString(), false, false}));

TEST(NumberEmptiness, UsesTheIntegerValue)
{
    for (const QVariant& yes : {QVariant(3), QVariant(-1.7)})
        EXPECT_TRUE(isNonEmpty(yes)) << yes.toString().toStdString();
    for (const QVariant& no :
         {QVariant(0), QVariant(0.5), QVariant(), QVariant::fromValue(nullptr)})
        EXPECT_FALSE(isNonEmpty(no)) << no.toString().toStdString();
}

TEST(Dictionary, StoredNullReadsAsAbsent)
{
    const QVariantMap map{{"null", QVariant::fromValue(nullptr)},
                          {"n", 42},
                          {"text", QStringLiteral("17")},
                          {"real", 2.9},
                          {"huge", 1e20}};
    EXPECT_FALSE(objectForKeyPL(map, "null").isValid());
    EXPECT_FALSE(objectForKeyPL(map, "missing").isValid());
    EXPECT_EQ(objectForKeyPL(map, "n"), QVariant(42));
    EXPECT_EQ(intForKey(map, "n"), 42);
    EXPECT_EQ(intForKey(map, "text"), 17);
    EXPECT_EQ(intForKey(map, "real"), 2);
    EXPECT_EQ(intForKey(map, "huge"), INT_MAX);
    EXPECT_EQ(intForKey(map, "null"), 0);
}

TEST(Colours, FromComponentsHexAndText)
{
    const QColor c = T::colorWithHex(0x336699);
    EXPECT_EQ(c.red(), 0x33);
    EXPECT_EQ(c.green(), 0x66);
    EXPECT_EQ(c.blue(), 0x99);
    EXPECT_NEAR(T::colorR(255, 0, 0, 0.5).alphaF(), 0.5, 1e-4);
    EXPECT_EQ(T::colorR(255, 128, 0), T::colorHexFromString(QStringLiteral("#ff8000")));
    EXPECT_EQ(T::colorHexFromString(QStringLiteral("#ff8800")),
              T::colorHexFromString(QStringLiteral("ff8800")));
    EXPECT_EQ(T::colorHexFromString(QStringLiteral("ff8800"), true), T::colorWithHex(0xf8800));
    EXPECT_FALSE(T::colorHexFromString(QStringLiteral("#f")).isValid());
    EXPECT_EQ(T::colorHexFromString(QStringLiteral("#zz0")), T::colorWithHex(0));
}

struct AgoCase {
    qint64 secondsAgo;
    const char* expected;
};

class RelativeTime : public ::testing::TestWithParam<AgoCase> {};

TEST_P(RelativeTime, BoundariesBelongToTheNearerClass)
{
    const QDateTime now(QDate(2026, 11, 22), QTime(12, 0));
    EXPECT_EQ(T::readableTime(now.addSecs(-GetParam().secondsAgo), now),
              QString::fromUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(Ages, RelativeTime,
                         ::testing::Values(AgoCase{-500, "刚刚"}, AgoCase{0, "刚刚"},
                                           AgoCase{60, "刚刚"}, AgoCase{61, "1分钟前"},
                                           AgoCase{3599, "59分钟前"}, AgoCase{3600, "60分钟前"},
                                           AgoCase{3601, "1小时前"}, AgoCase{86400, "24小时前"},
                                           AgoCase{3 * 86400 + 5, "3天前"},
                                           AgoCase{604800, "7天前"},
                                           AgoCase{8 * 86400, "26-11-14"}));

struct SizeCase {
    std::int64_t bytes;
    const char* expected;
};

class FileSize : public ::testing::TestWithParam<SizeCase> {};

TEST_P(FileSize, ReadsAsItIsWritten)
{
    EXPECT_EQ(T::localizedFileSize(GetParam().bytes), QString::fromUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(Sizes, FileSize,
                         ::testing::Values(SizeCase{0, "0 KB"}, SizeCase{1023, "0 KB"},
                                           SizeCase{2048, "2 KB"}, SizeCase{(1 << 20), "10.00 MB"},
                                           // whole megabytes and the fraction stand side by side
                                           SizeCase{3 * (1 << 20) + 512 * 1024, "30.50 MB"},
                                           SizeCase{(1LL << 30) + 5 * (1 << 20), "1 GB 5 MB"},
                                           SizeCase{-4096, "-4 KB"}));

struct SquareCase {
    QSize source;
    QRect square;
};

class Squares : public ::testing::TestWithParam<SquareCase> {};

TEST_P(Squares, LargestCentredSquare)
{
    EXPECT_EQ(ImageScaler::sourceSquare(GetParam().source), GetParam().square);
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, Squares,
    ::testing::Values(SquareCase{{300, 200}, {50, 0, 200, 200}},
                      SquareCase{{200, 300}, {0, 50, 200, 200}},
                      // the bottom margin is 50.5 rounded to 51, so the top one is 50
                      SquareCase{{200, 301}, {0, 50, 200, 200}},
                      SquareCase{{301, 200}, {51, 0, 200, 200}},
                      SquareCase{{64, 64}, {0, 0, 64, 64}}));

TEST(ImageScaler, DrawsTheSquareIntoTheTargetSize)
{
    QImage source(300, 200, QImage::Format_RGB32);
    source.fill(Qt::green); // the cropped-away side strips
    QPainter painter(&source);
    painter.fillRect(50, 0, 100, 200, Qt::red);
    painter.fillRect(150, 0, 100, 200, Qt::blue);
    painter.end();

    const QImage thumb = ImageScaler::scaleImage(source, {100, 100});
    ASSERT_EQ(thumb.size(), QSize(100, 100));
    EXPECT_EQ(QColor(thumb.pixel(5, 50)), QColor(Qt::red));
    EXPECT_EQ(QColor(thumb.pixel(95, 50)), QColor(Qt::blue));
    EXPECT_TRUE(ImageScaler::scaleImage(QImage(), {10, 10}).isNull());
}

} // namespace
