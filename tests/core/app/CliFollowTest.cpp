// versewick-cli follow and now, as a user runs them beside a player.
#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"
#include "support/TempHome.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>

namespace {

QList<QJsonObject> jsonLines(const QByteArray& out)
{
    QList<QJsonObject> objects;
    for (const QByteArray& line : out.split('\n'))
        if (!line.isEmpty())
            objects << QJsonDocument::fromJson(line).object();
    return objects;
}

class CliFollow : public ::testing::Test {
protected:
    TempHome home;
    quint16 qqPort = closedPort();
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();

    void SetUp() override
    {
        env.insert("HOME", home.path());
        env.insert("XDG_CONFIG_HOME", home.filePath("config"));
        env.insert("XDG_DATA_HOME", home.filePath("data"));
        env.insert("XDG_DATA_DIRS", home.filePath("none"));
        env.insert("VERSEWICK_QQMUSIC_PORT", QString::number(qqPort));
        QDir().mkpath(home.filePath("data/Versewick/lyrics.lrcs"));
        home.write("data/Versewick/lyrics.lrcs/Ann--Rain.lrc",
                   "[00:00.00]first line\n[00:00.40]second line\n[00:30.00]later\n");
    }
    std::unique_ptr<QProcess> start(const QStringList& args)
    {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(env);
        process->start(QStringLiteral(VERSEWICK_CLI), args);
        process->waitForStarted();
        return process;
    }
};

TEST_F(CliFollow, PrintsTheLitLinesAndAnswersNowUntilTerminated)
{
    const QString playlist = home.write(
        "playlist.json", R"([{"artist":"Ann","title":"Rain","album":"Weather","duration":60}])");
    PlayerProcess player(
        {"--as", "jukora", "--playlist", playlist, "--qqmusic-port", QString::number(qqPort)});
    player.send("play");
    auto follow = start({"follow", "--json"});
    QByteArray out;
    ASSERT_TRUE(waitFor([&] {
        out += follow->readAllStandardOutput();
        return out.contains("second line");
    }));

    auto now = start({"now"});
    ASSERT_TRUE(now->waitForFinished(10000));
    EXPECT_EQ(now->exitCode(), 0);
    const QJsonObject state = QJsonDocument::fromJson(now->readAllStandardOutput()).object();
    EXPECT_EQ(state["SourceKind"].toInt(), 2);
    EXPECT_EQ(state["SourceName"].toString(), "Jukora");
    EXPECT_EQ(state["Artist"].toString(), "Ann");
    EXPECT_EQ(state["Title"].toString(), "Rain");
    EXPECT_TRUE(state["LyricLoaded"].toBool());
    EXPECT_EQ(state["LyricOrigin"].toInt(), 0);
    EXPECT_TRUE(state.contains("Position"));

    ::kill(pid_t(follow->processId()), SIGTERM);
    ASSERT_TRUE(follow->waitForFinished(5000));
    EXPECT_EQ(follow->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(follow->exitCode(), 0);
    out += follow->readAllStandardOutput();
    const QList<QJsonObject> events = jsonLines(out);
    ASSERT_FALSE(events.isEmpty());
    EXPECT_TRUE(events.contains(QJsonObject{
        {"event", "song"}, {"source", "jukora"}, {"artist", "Ann"}, {"title", "Rain"}}));
    EXPECT_TRUE(events.contains(QJsonObject{{"event", "status"}, {"text", "fetching lyrics..."}}));
    EXPECT_TRUE(events.contains(QJsonObject{{"event", "status"}, {"text", QJsonValue()}}));
    int lines = 0;
    for (const QJsonObject& e : events) {
        if (e["event"] == "line") {
            ++lines;
            EXPECT_TRUE(e.contains("index") && e.contains("text") && e["position"].isDouble());
        }
    }
    EXPECT_GE(lines, 1);

    // Once it is gone, nothing answers.
    auto after = start({"now"});
    ASSERT_TRUE(after->waitForFinished(10000));
    EXPECT_EQ(after->exitCode(), 1);
    EXPECT_EQ(after->readAllStandardError(),
              "versewick-cli: No Versewick application is running on the session bus.\n");
}

TEST_F(CliFollow, PlainOutputIsTheLinesThemselves)
{
    const QString playlist = home.write(
        "playlist.json", R"([{"artist":"Ann","title":"Rain","album":"Weather","duration":60}])");
    PlayerProcess player(
        {"--as", "jukora", "--playlist", playlist, "--qqmusic-port", QString::number(qqPort)});
    player.send("play");
    auto follow = start({"follow", "--for", "2"});
    ASSERT_TRUE(follow->waitForFinished(15000));
    EXPECT_EQ(follow->exitCode(), 0);
    const QString out = QString::fromUtf8(follow->readAllStandardOutput());
    EXPECT_TRUE(out.contains("== Ann - Rain ==\n"));
    EXPECT_TRUE(out.contains("\nsecond line\n"));
}

} // namespace
