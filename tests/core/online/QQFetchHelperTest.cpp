#include "core/online/QQFetchHelper.h"
#include "core/online/XmlAnswer.h"

#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"
#include "support/TempHome.h"

#include <QElapsedTimer>
#include <QStringEncoder>
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
// independently with the same steps in 64-bit wrapping arithmetic: id 1 with "a" has
// v = 01 FF 00 FE and t1 = t2 = 97; "\u00e9" (C3 A9) adds its bytes as -61 and -87; ids below
// 65536 use the substitutes 255 - b1 and 255 - b0; a negative id keeps its high bits in the
// product.
INSTANTIATE_TEST_SUITE_P(
    Examples, RequestCode,
    ::testing::Values(CodeCase{123456, "abc", "xyz", 2742079015687360073LL},
                      CodeCase{1, "a", "", 107666233746235392LL},
                      CodeCase{7, "\xC3\xA9", "", -212521534938948LL},
                      CodeCase{99, "Some Artist", "Title", -1282641077751620992LL},
                      CodeCase{-5, "\xE5\x91\xA8", "\xE6\x99\xB4", 1664431056309460566LL},
                      CodeCase{0x12345678, "A", "B", 3054295691668604588LL},
                      CodeCase{0, "", "", 0}));

TEST(DownloadUrl, CarriesIdAndSignedCode)
{
    EXPECT_EQ(QQFetchHelper::urlForLRCfetching(123456, "abc", "xyz", kHost).toString(),
              "http://lrc.example.test/dll/lyricsvr.dll?dl?Id=123456&Code=2742079015687360073");
    EXPECT_EQ(QQFetchHelper::urlForLRCfetching(99, "Some Artist", "Title", kHost).toString(),
              "http://lrc.example.test/dll/lyricsvr.dll?dl?Id=99&Code=-1282641077751620992");
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

class MalformedAnswers : public ::testing::TestWithParam<HostileCase> {};

TEST_P(MalformedAnswers, GiveAnEmptyListQuickly)
{
    QElapsedTimer timer;
    timer.start();
    QString error;
    EXPECT_TRUE(QQFetchHelper::lrcListItemsFromXML(GetParam().xml, kHost, &error).isEmpty());
    EXPECT_FALSE(error.isEmpty());
    EXPECT_LT(timer.elapsed(), 3000);
}

QByteArray deep(int levels)
{
    return QByteArray("<a>").repeated(levels) + "<lrc id=\"1\"/>" +
           QByteArray("</a>").repeated(levels);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, MalformedAnswers,
    ::testing::Values(HostileCase{"empty", ""}, HostileCase{"garbage", "\x00\xff<<>>"},
                      HostileCase{"unclosed", "<result><lrc id=\"1\""},
                      HostileCase{"deep", deep(20000)},
                      HostileCase{"huge", "<r>" + QByteArray(5 * 1024 * 1024, ' ') +
                                              "<lrc id=\"1\"/></r>"}),
    [](const auto& info) { return std::string(info.param.name); });

// The same documents in every encoding an XML parser detects by itself.
struct EncodingCase {
    const char* name;
    QStringConverter::Encoding encoding;
    bool byteOrderMark;
};

QByteArray encode(const QString& text, const EncodingCase& e)
{
    QStringEncoder encoder(e.encoding, e.byteOrderMark ? QStringConverter::Flag::WriteBom
                                                       : QStringConverter::Flag::Default);
    return encoder.encode(text);
}

const auto kEncodings =
    ::testing::Values(EncodingCase{"utf8", QStringConverter::Utf8, false},
                      EncodingCase{"utf8bom", QStringConverter::Utf8, true},
                      EncodingCase{"utf16le", QStringConverter::Utf16LE, false},
                      EncodingCase{"utf16lebom", QStringConverter::Utf16LE, true},
                      EncodingCase{"utf16be", QStringConverter::Utf16BE, false},
                      EncodingCase{"utf16bebom", QStringConverter::Utf16BE, true},
                      EncodingCase{"utf32le", QStringConverter::Utf32LE, false},
                      EncodingCase{"utf32lebom", QStringConverter::Utf32LE, true},
                      EncodingCase{"utf32be", QStringConverter::Utf32BE, false},
                      EncodingCase{"utf32bebom", QStringConverter::Utf32BE, true});

class Encodings : public ::testing::TestWithParam<EncodingCase> {};

TEST_P(Encodings, AnAnswerReadsTheSameInEach)
{
    const QString xml = QStringLiteral("<?xml version=\"1.0\"?><result><lrc id=\"12\" "
                                       "artist=\"Ann &amp; \u6b4c\" title=\"Rain\"/></result>");
    QString error;
    const auto items = QQFetchHelper::lrcListItemsFromXML(encode(xml, GetParam()), kHost, &error);
    ASSERT_EQ(items.size(), 1) << error.toStdString();
    EXPECT_EQ(items[0].uid(), 12);
    EXPECT_EQ(items[0].artist(), QStringLiteral("Ann & \u6b4c"));
}

// Documents a parser without the refusal would read, each carrying one result.
QString quadratic()
{
    return QStringLiteral("<?xml version=\"1.0\"?><!DOCTYPE r [<!ENTITY big \"%1\">]><r><lrc "
                          "id=\"1\" artist=\"%2\"/></r>")
        .arg(QString(10000, u'x'), QStringLiteral("&big;").repeated(12000));
}

struct DeclarationCase {
    const char* name;
    QString xml;
};

const auto kDeclarations = ::testing::Values(
    DeclarationCase{"internalEntity",
                    R"(<?xml version="1.0"?><!DOCTYPE r [<!ENTITY x "expanded">]>)"
                    R"(<r><lrc id="1" artist="&x;"/></r>)"},
    DeclarationCase{"laughs", R"(<?xml version="1.0"?><!DOCTYPE r [<!ENTITY a "aaaaaaaaaa">)"
                              R"(<!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;">)"
                              R"(<!ENTITY c "&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;">]>)"
                              R"(<r><lrc id="1" artist="&c;&c;&c;&c;"/></r>)"},
    DeclarationCase{"quadratic", quadratic()},
    DeclarationCase{
        "externalEntity",
        R"(<?xml version="1.0"?><!DOCTYPE r [<!ENTITY x SYSTEM "file:///etc/hostname">]>)"
        R"(<r><lrc id="1" artist="&x;"/></r>)"},
    DeclarationCase{"parameterEntity",
                    R"(<?xml version="1.0"?><!DOCTYPE r [<!ENTITY % p "<!ENTITY x 'y'>"> %p;]>)"
                    R"(<r><lrc id="1" artist="&x;"/></r>)"},
    DeclarationCase{"bareDocumentType",
                    R"(<?xml version="1.0"?><!DOCTYPE r><r><lrc id="1"/></r>)"});

class Declarations : public ::testing::TestWithParam<std::tuple<DeclarationCase, EncodingCase>> {};

TEST_P(Declarations, AreRefusedByTheParserQuickly)
{
    const auto& [document, encoding] = GetParam();
    QElapsedTimer timer;
    timer.start();
    QString error;
    const auto items =
        QQFetchHelper::lrcListItemsFromXML(encode(document.xml, encoding), kHost, &error);
    EXPECT_TRUE(items.isEmpty()) << items.first().artist().left(40).toStdString();
    EXPECT_EQ(error, QStringLiteral("the answer declares a document type"));
    EXPECT_LT(timer.elapsed(), 3000);
}

INSTANTIATE_TEST_SUITE_P(All, Encodings, kEncodings,
                         [](const auto& info) { return std::string(info.param.name); });
INSTANTIATE_TEST_SUITE_P(All, Declarations, ::testing::Combine(kDeclarations, kEncodings),
                         [](const auto& info) {
                             return std::string(std::get<0>(info.param).name) + "_" +
                                    std::get<1>(info.param).name;
                         });

class ExternalSubsets : public Encodings {};

TEST_P(ExternalSubsets, AreNeverFetched)
{
    RawHttpServer server;
    server.route("/x.dtd", RawHttpServer::status(200, "<!ENTITY y \"fetched\">"));
    TempHome home;
    const QString local = home.write("x.dtd", "<!ENTITY y \"read from disk\">");
    for (const QString& system : {server.url("/x.dtd"), QUrl::fromLocalFile(local).toString()}) {
        const QString xml = "<?xml version=\"1.0\"?><!DOCTYPE r SYSTEM \"" + system +
                            "\"><r><lrc id=\"1\" artist=\"&y;\"/></r>";
        EXPECT_TRUE(QQFetchHelper::lrcListItemsFromXML(encode(xml, GetParam()), kHost).isEmpty());
    }
    EXPECT_TRUE(server.requests().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, ExternalSubsets, kEncodings,
                         [](const auto& info) { return std::string(info.param.name); });

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
