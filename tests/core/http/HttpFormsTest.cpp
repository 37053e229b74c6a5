#include "core/http/HttpForms.h"
#include "core/http/PLHttpConfig.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

namespace {

struct EscapeCase {
    const char* text;
    const char* escaped;
};

class Escaping : public ::testing::TestWithParam<EscapeCase> {};

TEST_P(Escaping, EscapesAllButLettersDigitsAndThreeMarks)
{
    const QString text = QString::fromUtf8(GetParam().text);
    EXPECT_EQ(http::URLEscaped(text), QString::fromUtf8(GetParam().escaped));
    EXPECT_EQ(http::unURLEscape(http::URLEscaped(text)), text);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Escaping,
    ::testing::Values(EscapeCase{"a/b?c=d&e", "a%2Fb%3Fc%3Dd%26e"}, EscapeCase{"100%", "100%25"},
                      EscapeCase{"x y", "x%20y"}, EscapeCase{"Az09-._", "Az09-._"},
                      EscapeCase{"~\"\\`", "%7E%22%5C%60"},
                      EscapeCase{":/?#[]@!$&'()*+,;=<>%{}|^",
                                 "%3A%2F%3F%23%5B%5D%40%21%24%26%27%28%29%2A%2B%2C%3B%3D%3C%3E%25%"
                                 "7B%7D%7C%5E"},
                      EscapeCase{"\xE6\xAD\x8C", "%E6%AD%8C"}));

TEST(Escaping, IsNotIdempotent)
{
    EXPECT_EQ(http::URLEscaped(http::URLEscaped("a b")), QStringLiteral("a%2520b"));
}

TEST(Forms, ParamsUseStringsOnlyArgumentsUseEverything)
{
    const QVariantMap params{{"a", QStringLiteral("x y")}, {"n", 5}};
    EXPECT_EQ(http::paramsFromDict(params), QStringLiteral("a=x%20y"));
    EXPECT_EQ(http::toURLarguments(params), QStringLiteral("a=x%20y&n=5"));
    EXPECT_EQ(http::paramsFromDict({}), QString(""));
    EXPECT_EQ(http::paramsFromDict({{"k y", QStringLiteral("v")}}), QStringLiteral("k y=v"));
}

TEST(Forms, MultipartLayoutIsExact)
{
    EXPECT_EQ(http::multipartContentType(), "multipart/form-data; boundary=trevally-mp-sep");
    const QVariantMap params{{"artist", QStringLiteral("Ann")}, {"title", QStringLiteral("Rain")}};
    EXPECT_EQ(http::multipartBody(params, {}, {}),
              "--trevally-mp-sep\r\n"
              "Content-Disposition: form-data; name=\"artist\"\r\n\r\nAnn\r\n--trevally-mp-sep\r\n"
              "Content-Disposition: form-data; name=\"title\"\r\n\r\nRain\r\n--trevally-mp-sep\r\n"
              "\r\n--trevally-mp-sep--\r\n");
    EXPECT_EQ(http::multipartBody({{"a", QStringLiteral("1")}}, QStringLiteral("cover"),
                                  QByteArray("\x89PNG", 4)),
              "--trevally-mp-sep\r\n"
              "Content-Disposition: form-data; name=\"a\"\r\n\r\n1\r\n--trevally-mp-sep\r\n"
              "Content-Disposition: form-data; name=\"cover\"; filename=\"cover.jpg\"\r\n"
              "Content-Type: image/jpg\r\n\r\n\x89PNG\r\n--trevally-mp-sep--\r\n");
}

struct AgentCase {
    const char* exe;
    const char* shortVersion;
    const char* build;
    const char* kernel;
    const char* expected; // nullptr: no User-Agent
};

class UserAgent : public ::testing::TestWithParam<AgentCase> {};

TEST_P(UserAgent, FollowsTheFormat)
{
    const AgentCase& c = GetParam();
    const QString agent = PLHttpConfig::formatUserAgent(c.exe, c.shortVersion, c.build, c.kernel,
                                                        QStringLiteral("en_US"));
    EXPECT_EQ(agent, c.expected ? QString::fromUtf8(c.expected) : QString());
}

INSTANTIATE_TEST_SUITE_P(
    Parts, UserAgent,
    ::testing::Values(AgentCase{"Versewick", "1.2", "1.2", "6.1.0-18-amd64",
                                "Versewick/1.2 (Linux; Linux 6.1.0; en_US) PLHttpClient/1"},
                      AgentCase{"Versewick", "1.2", "345", "6.1",
                                "Versewick/1.2 rv:345 (Linux; Linux 6.1.0; en_US) PLHttpClient/1"},
                      AgentCase{"Versewick", "", "345", "5.10.2",
                                "Versewick/345 (Linux; Linux 5.10.2; en_US) PLHttpClient/1"},
                      AgentCase{"Versewick", "", "", "6.1.0",
                                "Versewick/(null) (Linux; Linux 6.1.0; en_US) PLHttpClient/1"},
                      AgentCase{"", "1", "1", "6.1.0", nullptr},
                      AgentCase{"Versewick", "1", "1", "", nullptr}));

TEST(TransferCounter, NeverGoesBelowZero)
{
    PLHttpConfig& config = PLHttpConfig::s();
    const int before = config.connections();
    config.requestStarted();
    for (int i = 0; i < before + 3; ++i)
        config.requestStoped();
    EXPECT_EQ(config.connections(), 0);
}

} // namespace
