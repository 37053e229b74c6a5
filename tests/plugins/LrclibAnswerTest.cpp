#include "LrclibAnswer.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

namespace {

class MatchKey : public ::testing::TestWithParam<std::tuple<const char*, const char*, bool>> {};

TEST_P(MatchKey, IgnoresCaseAndAccentsOnly)
{
    const auto& [a, b, same] = GetParam();
    EXPECT_EQ(lrclib::matchKey(QString::fromUtf8(a)) == lrclib::matchKey(QString::fromUtf8(b)),
              same);
}

INSTANTIATE_TEST_SUITE_P(
    Names, MatchKey,
    ::testing::Values(std::tuple{"Beyoncé", "BEYONCE", true},
                      std::tuple{"Mötley Crüe", "motley crue", true},
                      std::tuple{"Straße", "STRASSE", true}, std::tuple{"ＡＢＣ", "abc", true},
                      std::tuple{" Sia ", "sia", true}, std::tuple{"Sia", "Sia2", false},
                      std::tuple{"王菲", "王菲", true}, std::tuple{"王菲", "王", false},
                      std::tuple{"Björk", "Bjork (live)", false}));

TEST(LrclibJson, FieldsOfTheWrongTypeReadAsAbsent)
{
    const auto records = lrclib::parseAnswer(
        R"([{"id":"7","trackName":5,"artistName":"A","duration":"200","syncedLyrics":["x"]},)"
        R"({"id":12,"trackName":"T","albumName":"Al","duration":201.5,"instrumental":true,)"
        R"("plainLyrics":"p","syncedLyrics":"[00:01]s"}, null, 3])");
    ASSERT_TRUE(records);
    ASSERT_EQ(records->size(), 2);
    const lrclib::Record& odd = records->at(0);
    EXPECT_EQ(odd.id, 0);
    EXPECT_TRUE(odd.trackName.isNull());
    EXPECT_EQ(odd.artistName, "A");
    EXPECT_EQ(odd.duration, 0.0);
    EXPECT_TRUE(odd.syncedLyrics.isNull());
    const lrclib::Record& full = records->at(1);
    EXPECT_EQ(full.id, 12);
    EXPECT_EQ(full.albumName, "Al");
    EXPECT_EQ(full.duration, 201.5);
    EXPECT_TRUE(full.instrumental);
    EXPECT_EQ(full.syncedLyrics, "[00:01]s");
}

TEST(LrclibJson, ScalarsAndOversizedAnswersAreMalformed)
{
    for (const QByteArray& bytes :
         {QByteArray("42"), QByteArray("null"), QByteArray(""), QByteArray("{} trailing")})
        EXPECT_FALSE(lrclib::parseAnswer(bytes)) << bytes.constData();
    QByteArray big = "[" + QByteArray(lrclib::kMaxAnswerBytes, ' ') + "]";
    EXPECT_FALSE(lrclib::parseAnswer(big));
    EXPECT_TRUE(lrclib::parseAnswer("[]"));
}

} // namespace
