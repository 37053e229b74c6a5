#include "online/QQFetchHelper.h"
#include "online/XmlAnswer.h"

#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"
#include "support/TempHome.h"

#include <QElapsedTimer>
#include <QUrlQuery>

#include <gtest/gtest.h>

namespace {

const QString kHost = QStringLiteral("lrc.example.test");

TEST(Base16, LittleEndianUtf16InUpperCaseHex)
{
    EXPECT_EQ(Base16Encoded(QStringLiteral("ab")), QStringLiteral("61006200"));
    EXPECT_EQ(Base16Encoded(QStringLiteral("\u6211")), QStringLiteral("1162"));
    EXPECT_EQ(Base16Encoded(QString::fromUtf8("\xF0\x9F\x8E\xB5")), QStringLiteral("3CD8B5DF"));
    EXPECT_TRUE(Base16Encoded(QString()).isNull());
    EXPECT_EQ(Base16Encoded(QString("")), QString(""));
}

TEST(SearchUrl, LowerCasesThenEncodes)
{
    EXPECT_EQ(QQFetchHelper::urlForLRCsearching("AB", "c", kHost).toString(),
              "http://lrc.example.test/dll/lyricsvr.dll?sh?Artist=61006200&Title=6300&Flags=1");
    EXPECT_EQ(QQFetchHelper::urlForLRCsearching("A b", "", kHost).toString(),
              "http://lrc.example.test/dll/lyricsvr.dll?sh?Artist=610020006200&Title=&Flags=1");
}

struct CodeCase {
    std::int64_t id;
    const char* artist;
    const char* title;
    std::int64_t code;
};

class RequestCode : public ::testing::TestWithParam<CodeCase> {};

TEST_P(RequestCode, MatchesTheServersArithmetic)
{
    const CodeCase& c = GetParam();
    EXPECT_EQ(QQFetchHelper::encryptedCodeFromID(c.id, QString::fromUtf8(c.artist),
                                                 QString::fromUtf8(c.title)),
              c.code);
}

// Worked example: v = 40 01 E2 BF, t1 = 692014337, t2 = 41173561. The others were computed
// independently with the same steps in 64-bit wrapping arithmetic.
INSTANTIATE_TEST_SUITE_P(Examples, RequestCode,
                         ::testing::Values(CodeCase{123456, "abc", "xyz", 2742079015687360073LL},
                                           // id 1, "a": v = 01 FF 00 FE, t1 = t2 = 97
                                           CodeCase{
                                               1, "a", "",
                                               std::int64_t((0x01FF00FEULL | 97) * (97 ^ 1ULL) *
                                                            ((97 | 1ULL) + (97 ^ 0x01FF00FEULL)))},
                                           CodeCase{0, "", "", 0}));

TEST(RequestCode, NonAsciiBytesCountAsNegative)
{
    // "é" is C3 A9: both bytes are added as -61 and -87.
    const std::uint64_t b0 = 7, v = (b0 << 24) + (255ULL << 16) + (0 << 8) + (255 - b0);
    std::uint64_t t1 = 0, t2 = 0;
    const std::int64_t bytes[] = {-61, -87};
    for (int k = 1; k >= 0; --k)
        t1 = (t1 << (4 + k % 2)) + t1 + std::uint64_t(bytes[k]);
    for (int k = 0; k < 2; ++k)
        t2 = (t2 << (3 + k % 2)) + t2 + std::uint64_t(bytes[k]);
    const auto expected = std::int64_t((v | t2) * (t1 ^ 7) * ((t2 | 7) + (t1 ^ v)));
    EXPECT_EQ(QQFetchHelper::encryptedCodeFromID(7, QString::fromUtf8("\xC3\xA9"), ""), expected);
}

TEST(DownloadUrl, CarriesIdAndSignedCode)
{
    const QUrl url = QQFetchHelper::urlForLRCfetching(123456, "abc", "xyz", kHost);
    EXPECT_EQ(url.toString(),
              "http://lrc.example.test/dll/lyricsvr.dll?dl?Id=123456&Code=2742079015687360073");
    const QString negative =
        QQFetchHelper::urlForLRCfetching(99, "Some Artist", "Title", kHost).toString();
    EXPECT_TRUE(negative.contains("Id=99&Code=")) << negative.toStdString();
}

TEST(SearchAnswer, EveryLrcElementInDocumentOrder)
{
    const QByteArray xml = R"(<?xml version="1.0" encoding="UTF-8"?>
<result><lrc id="12" artist="Ann" title="Rain"></lrc>
<group><inner><lrc id="-3" artist="B &amp; C" title="&#x6B4C;"/></inner></group>
<lrc artist="NoId"/><other id="9"/></result>)";
    const auto items = QQFetchHelper::lrcListItemsFromXML(xml, kHost);
    ASSERT_EQ(items.size(), 3);
    EXPECT_EQ(items[0].uid(), 12);
    EXPECT_EQ(items[0].artist(), QStringLiteral("Ann"));
    EXPECT_EQ(items[1].uid(), -3);
    EXPECT_EQ(items[1].artist(), QStringLiteral("B & C"));
    EXPECT_EQ(items[1].title(), QStringLiteral("\u6b4c"));
    EXPECT_EQ(items[2].uid(), 0);
    EXPECT_TRUE(items[2].title().isNull());
    EXPECT_EQ(items[0].fileURL(), QQFetchHelper::urlForLRCfetching(12, "Ann", "Rain", kHost));
}

struct HostileCase {
    const char* name;
    QByteArray xml;
};

class HostileAnswers : public ::testing::TestWithParam<HostileCase> {};

TEST_P(HostileAnswers, GiveAnEmptyListQuickly)
{
    QElapsedTimer timer;
    timer.start();
    QString error;
    EXPECT_TRUE(QQFetchHelper::lrcListItemsFromXML(GetParam().xml, kHost, &error).isEmpty());
    EXPECT_LT(timer.elapsed(), 3000);
}

QByteArray deep(int levels)
{
    return QByteArray("<a>").repeated(levels) + "<lrc id=\"1\"/>" +
           QByteArray("</a>").repeated(levels);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, HostileAnswers,
    ::testing::Values(
        HostileCase{"empty", ""}, HostileCase{"garbage", "\x00\xff<<>>"},
        HostileCase{"unclosed", "<result><lrc id=\"1\""},
        HostileCase{"laughs", R"(<?xml version="1.0"?><!DOCTYPE r [<!ENTITY a "aaaaaaaaaa">
<!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;"><!ENTITY c "&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;">
<!ENTITY d "&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;"><!ENTITY e "&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;">]>
<r><lrc id="1" artist="&e;&e;&e;&e;&e;&e;&e;&e;"/></r>)"},
        HostileCase{
            "externalEntity",
            R"(<?xml version="1.0"?><!DOCTYPE r [<!ENTITY x SYSTEM "file:///etc/passwd">]><r><lrc artist="&x;"/></r>)"},
        HostileCase{"deep", deep(20000)},
        HostileCase{"huge", "<r>" + QByteArray(5 * 1024 * 1024, ' ') + "<lrc id=\"1\"/></r>"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(SearchAnswer, NeverFetchesADocumentTypeOrExpandsItsEntities)
{
    RawHttpServer server;
    server.route("/x.dtd", RawHttpServer::status(200, "<!ENTITY y \"fetched\">"));
    TempHome home;
    const QString local = home.write("x.dtd", "<!ENTITY y \"read from disk\">");
    for (const QString& system : {server.url("/x.dtd"), QUrl::fromLocalFile(local).toString()}) {
        const QByteArray xml = "<?xml version=\"1.0\"?><!DOCTYPE r SYSTEM \"" + system.toUtf8() +
                               "\"><r><lrc id=\"1\" artist=\"&y;\"/></r>";
        for (const LRCListItem& item : QQFetchHelper::lrcListItemsFromXML(xml, kHost))
            EXPECT_FALSE(item.artist().contains("fetched") || item.artist().contains("disk"));
    }
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST(Artwork, QueryCarriesBase64AsIs)
{
    EXPECT_EQ(QQFetchHelper::urlForArtWorkSearchingOfArtist("Ann", kHost).toString(),
              "http://lrc.example.test/"
              "mttplayer.cgi?reqtype=3&Artist=QW5u&Title=&Album=&Extra=&Type=1&userid=1");
    EXPECT_FALSE(
        QQFetchHelper::urlForArtworkSearching(QString(49, 'x'), "", "", 2, kHost).isValid());
    EXPECT_EQ(QQFetchHelper::firstUrlForArtWorkFromXML(
                  R"(<r><res url="http://img.test/a.jpg"/><res url="http://img.test/b.jpg"/></r>)"),
              QUrl("http://img.test/a.jpg"));
    EXPECT_TRUE(QQFetchHelper::firstUrlForArtWorkFromXML("<r/>").isEmpty());
}

} // namespace
