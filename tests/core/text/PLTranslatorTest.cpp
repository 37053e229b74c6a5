#include "core/text/PLTranslator.h"
#include "core/foundation/Assertion.h"

#include "support/QtPrinters.h"

#include <QUrlQuery>

#include <gtest/gtest.h>

namespace {

TEST(Translator, AddressCarriesTheEscapedTextAndLanguagePair)
{
    EXPECT_EQ(PLTranslator::addressForText("a b", PLLangEnglish, PLLangJapanese, "tr.test"),
              "http://tr.test/ajax/services/language/translate?v=1.0&q=a%20b&langpair=en%7cja");
    EXPECT_TRUE(PLTranslator::addressForText("x&y=z", QString(), PLLangChineseSimplified, "tr.test")
                    .endsWith("?v=1.0&q=x&y=z&langpair=%7czh-cn"));
    const QUrl url = PLTranslator::URLforText("\u6b4c", "en", "ja", "tr.test");
    EXPECT_TRUE(url.isValid());
    EXPECT_EQ(QUrlQuery(url).queryItemValue("q"), QStringLiteral("\u6b4c"));
    EXPECT_EQ(PLLangChineseTradition, QStringLiteral("zh-tw"));
}

TEST(Translator, MissingTextOrTargetIsAnAssertion)
{
    QStringList assertions;
    auto previous = foundation::setAssertionHandler([&](const QString& t) { assertions << t; });
    EXPECT_TRUE(PLTranslator::URLforText("x", "en", QString(), "h").isEmpty());
    EXPECT_TRUE(PLTranslator::URLforText(QString(), "en", "ja", "h").isEmpty());
    foundation::setAssertionHandler(previous);
    EXPECT_EQ(assertions,
              QStringList({"target Language can't be nil!", "translation text can't be nil!"}));
}

struct AnswerCase {
    const char* json;
    QStringList keys;
};

class Answers : public ::testing::TestWithParam<AnswerCase> {};

TEST_P(Answers, ListEndsAtTheFirstMissingValue)
{
    EXPECT_EQ(PLTranslator::TranslationFromResponse(QString::fromUtf8(GetParam().json)).keys(),
              GetParam().keys);
}

INSTANTIATE_TEST_SUITE_P(
    Bodies, Answers,
    ::testing::Values(
        AnswerCase{
            R"({"responseDetails":null,"responseStatus":200,"responseData":{"translatedText":"hi"}})",
            {"kPLT_DETAILS", "kPLT_STATUS", "kPLT_TranslatedText"}},
        AnswerCase{
            R"({"responseDetails":"","responseStatus":200,"responseData":{"translatedText":"hi","detectedSourceLanguage":"en"}})",
            {"kPLT_DETAILS", "kPLT_DetectedSourceLanguage", "kPLT_STATUS", "kPLT_TranslatedText"}},
        AnswerCase{R"({"responseStatus":200,"responseData":{"translatedText":"hi"}})", {}},
        AnswerCase{R"({"responseDetails":"x","responseStatus":403})",
                   {"kPLT_DETAILS", "kPLT_STATUS"}},
        AnswerCase{
            R"({"responseDetails":"x","responseStatus":200,"responseData":{"detectedSourceLanguage":"en"}})",
            {"kPLT_DETAILS", "kPLT_STATUS"}},
        AnswerCase{"not json", {}}, AnswerCase{"[1,2]", {}}));

TEST(Translator, NullIsAValue)
{
    const QVariantMap result = PLTranslator::TranslationFromResponse(
        R"({"responseDetails":null,"responseStatus":200,"responseData":{"translatedText":"hi"}})");
    EXPECT_EQ(result.value("kPLT_DETAILS").metaType().id(), QMetaType::Nullptr);
    EXPECT_EQ(result.value("kPLT_STATUS").toInt(), 200);
    EXPECT_EQ(
        PLTranslator::TranslatedTextFromResponse(
            R"({"responseDetails":1,"responseStatus":2,"responseData":{"translatedText":"hi"}})"),
        QVariant("hi"));
    EXPECT_FALSE(PLTranslator::TranslatedTextFromResponse("{").isValid());
}

} // namespace
