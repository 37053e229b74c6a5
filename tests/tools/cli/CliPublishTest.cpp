#include "CliRunner.h"

#include "support/RawHttpServer.h"
#include "support/TempHome.h"

#include <QDir>
#include <QFile>
#include <QSettings>

#include <gtest/gtest.h>

namespace {

struct Case {
    const char* name;
    int publishStatus; // 0: no route for the lyric (the server cannot be used)
    QStringList more;  // after the file, artist, title and duration
    int exitCode;
    const char* said; // in the sentence on standard error
};

class CliPublish : public ::testing::TestWithParam<Case> {};

TEST_P(CliPublish, ExitsZeroOnlyWhenTheServiceTookTheLyric)
{
    TempHome home;
    RawHttpServer server;
    server.route(
        "/api/request-challenge",
        RawHttpServer::status(200, R"({"prefix":"p","target":")" + QByteArray(64, 'f') + "\"}"));
    if (GetParam().publishStatus)
        server.route("/api/publish", RawHttpServer::status(GetParam().publishStatus,
                                                           R"({"message":"Wrong token"})"));
    QDir().mkpath(home.filePath("config/morvane"));
    QSettings(home.filePath("config/morvane/Versewick.ini"), QSettings::IniFormat)
        .setValue("services/lrclibUrl", server.url(QStringLiteral("/")));
    QFile lrc(home.filePath("song.lrc"));
    ASSERT_TRUE(lrc.open(QIODevice::WriteOnly));
    lrc.write("[00:01.00]la\n");
    lrc.close();

    const QStringList args = QStringList{"publish", lrc.fileName(), "--artist", "A", "--title",
                                         "T",       "--duration",   "200"} +
                             GetParam().more;
    const CliResult result = runCliAt(home.path(), args);
    EXPECT_EQ(result.exitCode, GetParam().exitCode) << result.err.toStdString();
    EXPECT_TRUE(result.err.trimmed().split('\n').last().contains(GetParam().said))
        << result.err.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Publish, CliPublish,
    ::testing::Values(
        Case{"Published", 201, {"--album", "B"}, 0, "ublished"},
        Case{"Refused", 400, {"--album", "B"}, 1, "Wrong token"},
        Case{"NoSuchService", 0, {"--album", "B"}, 1, "versewick-cli: "},
        Case{"MissingAlbum", 201, {}, 2, "needs --album"},
        Case{"AlbumWithoutValue", 201, {"--album"}, 2, "--album needs"},
        Case{"DurationNotANumber",
             201,
             {"--album", "B", "--duration", "soon"},
             2,
             "positive number"},
        Case{"UnknownOption", 201, {"--album", "B", "--year", "1999"}, 2, "\"--year\""}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
