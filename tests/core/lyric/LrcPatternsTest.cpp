#include "core/lyric/LrcPatterns.h"
#include "core/lyric/LrcLineScanner.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>

namespace {

struct TagCase {
    const char16_t* line;
    QStringList tags;
    QString content;
};

class TagsAndContent : public ::testing::TestWithParam<TagCase> {};

TEST_P(TagsAndContent, MatchTheGrammar)
{
    const TagCase& c = GetParam();
    const QString line = QString::fromUtf16(c.line);
    EXPECT_EQ(lrc::tagsFromLine(line), c.tags);
    if (!c.tags.isEmpty()) {
        EXPECT_EQ(lrc::contentFromLine(line), c.content);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Lines, TagsAndContent,
    ::testing::Values(TagCase{u"[00:10.00][00:20.00]Hello", {"[00:10.00]", "[00:20.00]"}, "Hello"},
                      TagCase{u"[1:2.5]x", {"[1:2.5]"}, "x"},
                      TagCase{u"[00:10.]x", {"[00:10.]"}, "x"}, TagCase{u"[3:5]x", {"[3:5]"}, "x"},
                      TagCase{u"[00:10:20]x", {}, ""}, TagCase{u"[0010]x", {}, ""},
                      TagCase{u"[mm:ss]x", {}, ""},
                      // text before the first "[" is lost
                      TagCase{u"abc[00:01.00]def", {"[00:01.00]"}, "def"},
                      // brackets inside the text are swallowed up to the last "]"
                      TagCase{u"[00:01.00]a [b] c", {"[00:01.00]"}, " c"},
                      TagCase{u"[00:01.00] x", {"[00:01.00]"}, " x"},
                      TagCase{u"  [00:01]x", {"[00:01]"}, "x"},
                      TagCase{u"words[00:01][00:02]", {"[00:01]", "[00:02]"}, ""},
                      TagCase{u"[00:01]x\r", {"[00:01]"}, "x\r"},
                      // a tag that forms once the inner one is cut out
                      TagCase{u"[0[00:01]0:05]x", {"[00:01]", "[00:05]"}, "x"},
                      TagCase{u"[1[2[00:01]:02]:03]y", {"[00:01]", "[2:02]", "[1:03]"}, "y"},
                      // tags in the middle of the text are found in order of position
                      TagCase{u"a[00:02]b[00:01]c", {"[00:02]", "[00:01]"}, "c"},
                      // "." does not cross a carriage return, so the greedy run stops before it
                      TagCase{u"[00:01]a\r[b]", {"[00:01]"}, "a\r[b]"},
                      // any Unicode decimal digit is a digit to the grammar
                      TagCase{u"[\u0661:\u0662]x", {"[\u0661:\u0662]"}, "x"}));

struct NumberCase {
    const char16_t* text;
    std::int32_t integer;
    float real;
};

class NumberReading : public ::testing::TestWithParam<NumberCase> {};

TEST_P(NumberReading, ReadsLikeTheFormat)
{
    const QString text = QString::fromUtf16(GetParam().text);
    EXPECT_EQ(lrc::readInt32(text), GetParam().integer);
    EXPECT_FLOAT_EQ(lrc::readFloat(text), GetParam().real);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, NumberReading,
    ::testing::Values(
        NumberCase{u"23.45", 23, 23.45f}, NumberCase{u"5", 5, 5.0f},
        NumberCase{u"+500", 500, 500.0f}, NumberCase{u"-250", -250, -250.0f},
        NumberCase{u"10.", 10, 10.0f}, NumberCase{u"", 0, 0.0f}, NumberCase{u"\u0665", 0, 0.0f},
        NumberCase{u"99999999999", std::numeric_limits<std::int32_t>::max(), 99999999999.0f},
        NumberCase{u"-99999999999", std::numeric_limits<std::int32_t>::min(), -99999999999.0f}));

TEST(NumberReading, HugeFloatIsInfinite)
{
    EXPECT_EQ(lrc::readFloat(QString(400, u'9')), std::numeric_limits<float>::infinity());
    EXPECT_EQ(lrc::readFloat(QStringLiteral("0.") + QString(400, u'0') + u'1'), 0.0f);
}

QString randomText(QRandomGenerator& random, std::u16string_view alphabet, int maxLength)
{
    QString text;
    const int length = int(random.bounded(maxLength));
    for (int i = 0; i < length; ++i)
        text += QChar(alphabet[random.bounded(int(alphabet.size()))]);
    return text;
}

// What a document's parse takes from a line (scanned in place among other lines, where the
// usual line takes a shorter road) and what the line functions give, against the patterns.
void expectAsTheReference(const QString& line)
{
    const QStringList tags = lrc::reference::tagsFromLine(line);
    ASSERT_EQ(lrc::tagsFromLine(line), tags) << line.toStdString();
    const QString text = QStringLiteral("[00:09]before\n") + line + QStringLiteral("\nafter");
    lrc::LrcLineScanner scanner;
    const qsizetype end = scanner.scanLine(text, 14);
    ASSERT_EQ(end, 14 + line.size()) << line.toStdString();
    QStringList scanned;
    for (qsizetype i = 0; i < scanner.tagCount(); ++i)
        scanned.append(scanner.tag(i).toString());
    ASSERT_EQ(scanned, tags) << line.toStdString();
    if (!tags.isEmpty()) {
        const QString content = lrc::reference::contentFromLine(line);
        ASSERT_EQ(lrc::contentFromLine(line), content) << line.toStdString();
        ASSERT_EQ(text.mid(scanner.contentStart(), end - scanner.contentStart()), content)
            << line.toStdString();
    }
}

// The hand-written scanners must agree with the patterns as written on every line. Random
// lines over the characters that matter to the grammar find the corner cases quickly; the
// halves of a supplementary digit (U+1D7CE) also come alone or swapped. Lines made of whole
// tags and pieces of them reach the usual-line road often.
TEST(LinearScanners, AgreeWithTheReferenceOnRandomLines)
{
    const std::u16string_view alphabet = u"[[]]::..0123 x\r\u2028\u0663\t\U0001D7CE";
    QRandomGenerator random(20261122);
    for (int round = 0; round < 30000; ++round)
        ASSERT_NO_FATAL_FAILURE(expectAsTheReference(randomText(random, alphabet, 24)));

    const QStringList pieces = {"[00:01.5]", "[1:02]", "[\u0663:1]", "[", "]", "x",
                                "\r",        "\u2028", "0",          ":", "."};
    for (int round = 0; round < 30000; ++round) {
        QString line;
        for (int i = int(random.bounded(6)); i > 0; --i)
            line += pieces[random.bounded(int(pieces.size()))];
        ASSERT_NO_FATAL_FAILURE(expectAsTheReference(line));
    }
}

TEST(LinearScanners, OffsetTagAgreesWithTheReference)
{
    const std::u16string_view alphabet = u"[[]]offset::+-0123 \n\u0663\U0001D7CE";
    QRandomGenerator random(20261123);
    for (int round = 0; round < 30000; ++round) {
        // Most texts start like a tag, so that they get as far as the number.
        const QString text = (round % 2 ? QString() : QStringLiteral("x[offset:")) +
                             randomText(random, alphabet, 16);
        const auto expected = lrc::reference::findOffsetTag(text);
        const auto actual = lrc::findOffsetTag(text);
        ASSERT_EQ(bool(actual), bool(expected)) << text.toStdString();
        if (expected) {
            EXPECT_EQ(actual->text, expected->text);
            EXPECT_EQ(actual->milliseconds, expected->milliseconds);
        }
    }
}

// Short numbers are read without the general decimal conversion; both must round alike.
TEST(NumberReading, FloatsRoundAsTheDecimalConversionDoes)
{
    const std::u16string_view alphabet = u"0123456789.";
    QRandomGenerator random(7);
    for (int round = 0; round < 100000; ++round) {
        const QString text = randomText(random, alphabet, 26);
        const std::string ascii = text.toStdString();
        const std::size_t dot = ascii.find('.');
        // strtod stops at a second "."; readFloat too.
        const std::string number =
            ascii.substr(0, ascii.find('.', dot == std::string::npos ? dot : dot + 1));
        const bool digits = number.find_first_of("0123456789") != std::string::npos;
        const double wide = digits ? std::strtod(number.c_str(), nullptr) : 0.0;
        ASSERT_EQ(lrc::readFloat(text), static_cast<float>(wide)) << ascii;
    }
}

// The usual tag's inside is read in one pass; it must read as the two general readers do.
TEST(NumberReading, UsualTagTimeReadsAsTheGeneralReaders)
{
    const std::u16string_view alphabet = u"0123456789::.. \u0663";
    QRandomGenerator random(11);
    int usual = 0;
    for (int round = 0; round < 100000; ++round) {
        const QString inner = randomText(random, alphabet, 22);
        std::int32_t minute = -7;
        float second = -7.0f;
        if (!lrc::readUsualTagTime(inner, minute, second))
            continue;
        ++usual;
        const qsizetype colon = inner.indexOf(u':');
        ASSERT_EQ(minute, lrc::readInt32(QStringView(inner).left(colon))) << inner.toStdString();
        ASSERT_EQ(second, lrc::readFloat(QStringView(inner).mid(colon + 1))) << inner.toStdString();
    }
    EXPECT_GT(usual, 1000);
}

} // namespace
