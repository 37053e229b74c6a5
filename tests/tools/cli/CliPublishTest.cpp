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
    bool withAlbum;
    int exitCode;
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

    QStringList args{"publish", lrc.fileName(), "--artist", "A", "--title",
                     "T",       "--duration",   "200"};
    if (GetParam().withAlbum)
        args << "--album"
             << "B";
    const CliResult result = runCliAt(home.path(), args);
    EXPECT_EQ(result.exitCode, GetParam().exitCode) << result.err.toStdString();
    if (result.exitCode != 0) {
        EXPECT_FALSE(result.err.trimmed().split('\n').last().isEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(Publish, CliPublish,
                         ::testing::Values(Case{"Published", 201, true, 0},
                                           Case{"Refused", 400, true, 1},
                                           Case{"NoSuchService", 0, true, 1},
                                           Case{"MissingAlbum", 201, false, 1}),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
