#include "core/foundation/DataAdditions.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>
#include <QStringList>

using namespace foundation;

namespace {

class CompressedTextForm : public ::testing::TestWithParam<QString> {};

TEST_P(CompressedTextForm, RoundTrips)
{
    const QString encoded = zlibDeflateString(GetParam());
    ASSERT_FALSE(encoded.isNull());
    EXPECT_EQ(zlibInflateString(encoded), GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Texts, CompressedTextForm,
    ::testing::Values(QStringLiteral("a"), QStringLiteral("[00:01.00]Hello\r\n[00:02]World"),
                      QString::fromUtf8("\xE6\xAD\x8C\xE8\xAF\x8D lyric \xF0\x9F\x8E\xB5"),
                      QString(100000, u'x')));

TEST(CompressedTextForm, EmptyStringIsItsOwnForm)
{
    const QString encoded = zlibDeflateString(QString(QLatin1String("")));
    EXPECT_FALSE(encoded.isNull());
    EXPECT_TRUE(encoded.isEmpty());
    const QString decoded = zlibInflateString(encoded);
    EXPECT_FALSE(decoded.isNull());
    EXPECT_TRUE(decoded.isEmpty());
    EXPECT_TRUE(zlibDeflateString(QString()).isNull());
}

TEST(CompressedTextForm, PayloadThatIsNotUtf8IsAbsent)
{
    const auto compressed = zlibDeflate(QByteArray("\xFF\xFE\xFD"));
    ASSERT_TRUE(compressed);
    EXPECT_TRUE(zlibInflateString(base64EncodedString(*compressed)).isNull());
}

TEST(Deflate, ProducesAZlibStreamAtTheDefaultLevel)
{
    const auto out = zlibDeflate(QByteArray(50000, 'a'));
    ASSERT_TRUE(out);
    ASSERT_GE(out->size(), 2);
    EXPECT_EQ(quint8(out->at(0)), 0x78);
    EXPECT_EQ(quint8(out->at(1)), 0x9C);
}

TEST(Deflate, IncompressibleInputGrowsTheBufferPastOneChunk)
{
    QByteArray noise(40000, Qt::Uninitialized);
    QRandomGenerator random(7);
    for (char& c : noise)
        c = char(random.bounded(256));
    const auto out = zlibDeflate(noise);
    ASSERT_TRUE(out);
    EXPECT_GT(out->size(), 40000);
    EXPECT_EQ(zlibInflate(*out), noise);
}

TEST(Inflate, RejectsWhatIsNotACompleteStream)
{
    EXPECT_EQ(zlibInflate(QByteArray()), QByteArray());
    EXPECT_FALSE(zlibInflate(QByteArray("not a zlib stream at all")));
    const QByteArray whole = *zlibDeflate(QByteArray(5000, 'q'));
    EXPECT_FALSE(zlibInflate(whole.left(whole.size() - 6))); // truncated
    QByteArray corrupt = whole;
    corrupt[corrupt.size() - 1] = char(corrupt.back() ^ 0x55); // checksum broken
    EXPECT_FALSE(zlibInflate(corrupt));
}

TEST(Inflate, StopsAtTheOutputLimit)
{
    const QByteArray bomb = *zlibDeflate(QByteArray(kMaxInflatedSize + 1, '\0'));
    EXPECT_LT(bomb.size(), 100000);
    EXPECT_FALSE(zlibInflate(bomb));
    const auto exact = zlibInflate(*zlibDeflate(QByteArray(1000, 'z')), 1000);
    ASSERT_TRUE(exact);
    EXPECT_EQ(exact->size(), 1000);
    EXPECT_FALSE(zlibInflate(*zlibDeflate(QByteArray(1001, 'z')), 1000));
}

struct Base64Case {
    int bytes;
    int lines;
    int lastLineLength;
};

class Base64Lines : public ::testing::TestWithParam<Base64Case> {};

TEST_P(Base64Lines, BreakEvery64CharactersWithCrLf)
{
    QByteArray data(GetParam().bytes, Qt::Uninitialized);
    for (int i = 0; i < data.size(); ++i)
        data[i] = char(i * 37);
    const QString text = base64EncodedString(data);
    const QStringList lines = text.split(QStringLiteral("\r\n"));
    EXPECT_EQ(lines.size(), GetParam().lines);
    for (qsizetype i = 0; i + 1 < lines.size(); ++i)
        EXPECT_EQ(lines[i].size(), 64);
    EXPECT_EQ(lines.back().size(), GetParam().lastLineLength);
    EXPECT_FALSE(text.contains(u'\n') && !text.contains(QStringLiteral("\r\n")));
    EXPECT_EQ(dataFromBase64String(text), data);
}

INSTANTIATE_TEST_SUITE_P(Sizes, Base64Lines,
                         ::testing::Values(Base64Case{0, 1, 0}, Base64Case{1, 1, 4},
                                           Base64Case{48, 1, 64}, Base64Case{49, 2, 4},
                                           Base64Case{96, 2, 64}, Base64Case{1000, 21, 56}));

TEST(Base64, StandardAlphabetWithPadding)
{
    EXPECT_EQ(base64EncodedString(QByteArray("\xFB\xFF", 2)), QStringLiteral("+/8="));
    EXPECT_EQ(dataFromBase64String(QStringLiteral("+/8=")), QByteArray("\xFB\xFF", 2));
}

} // namespace
