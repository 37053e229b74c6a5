#include "support/FakePlayer.h"
#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include <gtest/gtest.h>

namespace {

QProcessEnvironment withPort(quint16 port)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("VERSEWICK_QQMUSIC_PORT", QString::number(port));
    return env;
}

// The companion watching while the simulator plays: what a user sees in two terminals, or at
// the end of a pipe. Every line must arrive while the watch runs, not when it ends.
TEST(CliSources, WatchShowsWhatThePlayersDoAsTheyDoIt)
{
    const quint16 port = closedPort();
    QProcess watch;
    watch.setProcessEnvironment(withPort(port));
    QList<QJsonObject> events;
    QByteArray pending;
    QObject::connect(&watch, &QProcess::readyReadStandardOutput, [&] {
        pending += watch.readAllStandardOutput();
        for (qsizetype end; (end = pending.indexOf('\n')) >= 0; pending.remove(0, end + 1))
            events << QJsonDocument::fromJson(pending.left(end)).object();
    });
    watch.start(QStringLiteral(VERSEWICK_CLI), {"sources", "watch"});
    ASSERT_TRUE(watch.waitForStarted());
    ASSERT_TRUE(waitFor([&] { return events.size() >= 3; }));

    auto find = [&](const char* source, const char* event, bool running,
                    const char* title = nullptr) {
        return std::any_of(events.begin(), events.end(), [&](const QJsonObject& e) {
            return e["source"] == source && e["event"] == event && e["running"] == running &&
                   (!title || e["title"] == title);
        });
    };
    const QList<const char*> sources{"itunes", "qqmusic", "jukora"};
    {
        PlayerProcess player(
            {"--as", "qqmusic,jukora,itunes", "--qqmusic-port", QString::number(port)});
        player.send("play");
        player.send("next");
        EXPECT_TRUE(waitFor([&] {
            return std::all_of(sources.begin(), sources.end(), [&](const char* source) {
                return find(source, "songChanged", true, "Rain");
            });
        })) << "song changes are shown while the players play";
    }
    EXPECT_TRUE(waitFor([&] {
        return std::all_of(sources.begin(), sources.end(), [&](const char* source) {
            return find(source, "appStateChanged", false) && find(source, "appStateChanged", true);
        });
    })) << "the players quitting is shown at once";
    ASSERT_EQ(watch.state(), QProcess::Running);
    watch.terminate(); // SIGTERM: the watch ends cleanly
    ASSERT_TRUE(watch.waitForFinished(5000));
    EXPECT_EQ(watch.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(watch.exitCode(), 0);

    ASSERT_GE(events.size(), 3);
    EXPECT_EQ(events[0]["source"], "itunes");
    EXPECT_EQ(events[0]["running"], false);
    EXPECT_EQ(events[1]["kind"], 3);
    EXPECT_EQ(events[2]["kind"], 2);
}

// iTunes keeps its name and never answers: each command waits one call limit, not one per read.
TEST(CliSources, AHungPlayerCostsOneLimit)
{
    FakePlayer itunes(QStringLiteral("com.apple.iTunes"));
    itunes.setHung(true);
    QProcess status;
    status.setProcessEnvironment(withPort(closedPort()));
    status.start(QStringLiteral(VERSEWICK_CLI), {"sources", "status"});
    ASSERT_TRUE(status.waitForFinished(20000));
    EXPECT_EQ(status.exitCode(), 0);
    const QJsonArray all = QJsonDocument::fromJson(status.readAllStandardOutput()).array();
    ASSERT_EQ(all.size(), 3);
    EXPECT_EQ(all[2].toObject()["running"], true);
    EXPECT_EQ(all[2].toObject()["title"], QJsonValue());
    // One read ran into the limit; the others were not sent (a probe may follow the first).
    EXPECT_LE(itunes.callsReceived(), 2);
}

// A SIGTERM that arrives while the sources start ends the watch cleanly once the start is over.
TEST(CliSources, AnEarlyInterruptEndsTheWatchCleanly)
{
    FakePlayer itunes(QStringLiteral("com.apple.iTunes"));
    itunes.setHung(true);
    QProcess watch;
    watch.setProcessEnvironment(withPort(closedPort()));
    watch.start(QStringLiteral(VERSEWICK_CLI), {"sources", "watch"});
    ASSERT_TRUE(watch.waitForStarted());
    // The watch is reading iTunes, which does not answer: the sources are starting.
    ASSERT_TRUE(waitFor([&] { return itunes.callsReceived() > 0; }));
    watch.terminate();
    ASSERT_TRUE(watch.waitForFinished(10000));
    EXPECT_EQ(watch.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(watch.exitCode(), 0);
    EXPECT_EQ(watch.readAllStandardOutput().count('\n'), 3) << "the start is reported";
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
    status.setProcessEnvironment(withPort(port));
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
