#include "CliRunner.h"

#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QThread>

#include <gtest/gtest.h>

namespace {

QList<QJsonObject> lines(const QByteArray& out)
{
    QList<QJsonObject> objects;
    for (const QByteArray& line : out.split('\n')) {
        if (!line.isEmpty())
            objects << QJsonDocument::fromJson(line).object();
    }
    return objects;
}

// The companion watching while the simulator plays: what a user sees in two terminals.
TEST(CliSources, WatchShowsWhatThePlayersDo)
{
    const quint16 port = closedPort();
    QProcess watch;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("VERSEWICK_QQMUSIC_PORT", QString::number(port));
    watch.setProcessEnvironment(env);
    watch.start(QStringLiteral(VERSEWICK_CLI), {"sources", "watch"});
    ASSERT_TRUE(watch.waitForStarted());
    ASSERT_TRUE(
        waitFor([&] { return watch.bytesAvailable() > 0 && watch.peek(4096).count('\n') >= 3; }));
    {
        PlayerProcess player(
            {"--as", "qqmusic,jukora,itunes", "--qqmusic-port", QString::number(port)});
        player.send("play");
        player.send("next");
        ASSERT_TRUE(player.waitEvent("next"));
        QThread::msleep(500);
    }
    QThread::msleep(300);
    watch.terminate(); // SIGTERM: the watch ends cleanly
    ASSERT_TRUE(watch.waitForFinished(5000));
    EXPECT_EQ(watch.exitCode(), 0);
    const auto events = lines(watch.readAllStandardOutput());

    auto find = [&](const char* source, const char* event, bool running,
                    const char* title = nullptr) {
        return std::any_of(events.begin(), events.end(), [&](const QJsonObject& e) {
            return e["source"] == source && e["event"] == event && e["running"] == running &&
                   (!title || e["title"] == title);
        });
    };
    ASSERT_GE(events.size(), 3);
    EXPECT_EQ(events[0]["source"], "itunes");
    EXPECT_EQ(events[0]["running"], false);
    EXPECT_EQ(events[1]["kind"], 3);
    EXPECT_EQ(events[2]["kind"], 2);
    for (const char* source : {"itunes", "qqmusic", "jukora"}) {
        EXPECT_TRUE(find(source, "appStateChanged", true)) << source;
        EXPECT_TRUE(find(source, "songChanged", true, "Rain")) << source;
        EXPECT_TRUE(find(source, "appStateChanged", false)) << source;
    }
}

TEST(CliSources, StatusIsOneSnapshot)
{
    const quint16 port = closedPort();
    PlayerProcess player({"--as", "jukora,qqmusic", "--qqmusic-port", QString::number(port)});
    player.send("play");
    player.send("pause");
    player.send("seek 30");
    ASSERT_TRUE(player.waitEvent("seek"));
    QProcess status;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("VERSEWICK_QQMUSIC_PORT", QString::number(port));
    status.setProcessEnvironment(env);
    status.start(QStringLiteral(VERSEWICK_CLI), {"sources", "status"});
    ASSERT_TRUE(status.waitForFinished(15000));
    const QJsonArray all = QJsonDocument::fromJson(status.readAllStandardOutput()).array();
    ASSERT_EQ(all.size(), 3);
    EXPECT_EQ(all[0].toObject()["source"], "qqmusic");
    EXPECT_EQ(all[0].toObject()["running"], true);
    EXPECT_NEAR(all[0].toObject()["position"].toDouble(), 30.15, 0.01);
    EXPECT_EQ(all[1].toObject()["title"], "Lanterns on the Quay");
    EXPECT_NEAR(all[1].toObject()["position"].toDouble(), 30.15, 0.01);
    EXPECT_EQ(all[2].toObject()["running"], false);
}

} // namespace
