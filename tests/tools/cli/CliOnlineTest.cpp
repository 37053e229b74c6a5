#include "CliRunner.h"

#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"
#include "support/TempHome.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSettings>
#include <QTcpSocket>

#include <gtest/gtest.h>

namespace {

class CliOnline : public ::testing::Test {
protected:
    TempHome home;
    RawHttpServer server;

    void SetUp() override { configureHost(server.host()); }
    void configureHost(const QString& host)
    {
        QDir().mkpath(home.filePath("config/morvane"));
        QSettings ini(home.filePath("config/morvane/Versewick.ini"), QSettings::IniFormat);
        ini.setValue("services/lyricServerHost", host);
        ini.setValue("services/translationHost", "tr.test");
    }
    CliResult cli(const QStringList& args, const QByteArray& input = {})
    {
        return runCliAt(home.path(), args, input);
    }
};

TEST_F(CliOnline, SearchAndDownloadAgainstTheConfiguredServer)
{
    server.route(
        "/dll/lyricsvr.dll", [](const RawHttpServer::Request& request, QTcpSocket& socket) {
            const bool search = request.path.contains("?sh?");
            RawHttpServer::status(
                200, search ? QByteArray(R"(<result><lrc id="42" artist="Ann" title="Rain"/>
<lrc id="7" artist="Bo" title="Snow"/></result>)")
                            : QByteArray("[00:01.00]drops\r\n"))(request, socket);
        });
    const CliResult search = cli({"server", "search", "ANN", "Rain"});
    ASSERT_EQ(search.exitCode, 0) << search.err.toStdString();
    const QJsonArray items = QJsonDocument::fromJson(search.out).array();
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[0].toObject()["id"], 42);
    EXPECT_EQ(items[1].toObject()["title"], "Snow");
    EXPECT_TRUE(items[0].toObject()["url"].toString().startsWith(
        server.url("/dll/lyricsvr.dll?dl?Id=42&Code=")));
    EXPECT_EQ(server.requests().value(0).path,
              "/dll/lyricsvr.dll?sh?Artist=61006E006E00&Title=7200610069006E00&Flags=1");

    const CliResult download = cli({"server", "download", "42", "Ann", "Rain"});
    ASSERT_EQ(download.exitCode, 0);
    EXPECT_EQ(download.out, QByteArray("[00:01.00]drops\r\n"));
    EXPECT_TRUE(server.requests().value(1).path.startsWith("/dll/lyricsvr.dll?dl?Id=42&Code="));
}

TEST_F(CliOnline, UnreachableServerIsAnInputError)
{
    configureHost(QStringLiteral("127.0.0.1:%1").arg(closedPort()));
    const CliResult r = cli({"server", "search", "a", "b"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.startsWith("versewick-cli: The lyric server at 127.0.0.1:"))
        << r.err.toStdString();
    EXPECT_EQ(cli({"server", "download", "1", "a", "b"}).exitCode, 1);
}

TEST_F(CliOnline, AnAnswerPastItsBoundIsAnInputError)
{
    for (const bool announced : {true, false}) {
        server.route("/dll/lyricsvr.dll", RawHttpServer::huge(256LL * 1024 * 1024, announced));
        for (const QStringList& args : {QStringList{"server", "search", "a", "b"},
                                        QStringList{"server", "download", "1", "a", "b"}}) {
            const CliResult r = cli(args);
            EXPECT_EQ(r.exitCode, 1);
            EXPECT_TRUE(r.out.isEmpty());
            EXPECT_TRUE(r.err.endsWith(" sent more than 4 MiB.\n")) << r.err.toStdString();
        }
    }
}

TEST_F(CliOnline, ATricklingAnswerIsGivenUpOnAtTheLimitOfTheWholeRequest)
{
    server.route("/dll/lyricsvr.dll", RawHttpServer::trickle(QByteArray(100000, 'x'), 1000));
    QElapsedTimer timer;
    timer.start();
    const CliResult r = cli({"server", "search", "a", "b"});
    EXPECT_LT(timer.elapsed(), 15000);
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.endsWith(" did not answer within 5 s.\n")) << r.err.toStdString();
}

class CliStatus : public CliOnline, public ::testing::WithParamInterface<int> {};

// Only a 2xx answer is a lyric: a 300 with a Location is not followed, and its body is no lyric.
TEST_P(CliStatus, AnythingButA2xxAnswerIsAnInputError)
{
    server.route("/dll/lyricsvr.dll",
                 RawHttpServer::status(GetParam(), "[00:01]not a lyric",
                                       "Location: " + server.url("/elsewhere").toUtf8() + "\r\n"));
    const CliResult r = cli({"server", "download", "1", "a", "b"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.out.isEmpty()) << r.out.toStdString();
    EXPECT_TRUE(
        r.err.endsWith(QStringLiteral(" answered with HTTP status %1.\n").arg(GetParam()).toUtf8()))
        << r.err.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Statuses, CliStatus, ::testing::Values(300, 404, 500));

TEST_F(CliOnline, OfflineCommands)
{
    EXPECT_EQ(cli({"server", "code", "123456", "abc", "xyz"}).out, "2742079015687360073\n");
    EXPECT_EQ(cli({"server", "search-url", "AB", "c"}).json()["url"],
              server.url("/dll/lyricsvr.dll?sh?Artist=61006200&Title=6300&Flags=1"));
    EXPECT_EQ(cli({"server", "download-url", "1", "a", ""}).json()["url"].toString(),
              server.url("/dll/lyricsvr.dll?dl?Id=1&Code=") +
                  cli({"server", "code", "1", "a", ""}).out.trimmed());
    EXPECT_EQ(cli({"server", "code", "x", "a", "b"}).exitCode, 2);
    EXPECT_EQ(cli({"server", "parse", "-"}, "<broken").out, "[]\n");
    EXPECT_EQ(cli({"zh", "traditional", "爱情"}).out, QByteArray("愛情"));
    EXPECT_EQ(cli({"zh", "simplified"}, "愛 abc").out, QByteArray("爱 abc"));
    EXPECT_EQ(cli({"zh", "mars", "爱"}).out, QByteArray("嬡"));
    EXPECT_EQ(cli({"translate", "url", "a b", "en", "ja"}).json()["url"],
              "http://tr.test/ajax/services/language/translate?v=1.0&q=a%20b&langpair=en%7cja");
    EXPECT_TRUE(cli({"translate", "url", "x", "", "zh-cn"})
                    .json()["url"]
                    .toString()
                    .endsWith("langpair=%7czh-cn"));
    EXPECT_EQ(
        cli({"translate", "parse"},
            R"({"responseDetails":null,"responseStatus":200,"responseData":{"translatedText":"hi"}})")
            .out,
        "{\"kPLT_DETAILS\":null,\"kPLT_STATUS\":200,\"kPLT_TranslatedText\":\"hi\"}\n");
    EXPECT_EQ(cli({"translate", "parse"}, "nonsense").out, "{}\n");
}

} // namespace
