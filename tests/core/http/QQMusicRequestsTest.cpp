// The QQMusic source's blocking requests to the player's loopback service: each is bounded in
// time as a whole and in size.
#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"
#include "core/sources/MusicSourceQQMusic.h"

#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace {

class QQMusicRequests : public ::testing::Test {
protected:
    RawHttpServer server;
    std::unique_ptr<MusicSourceQQMusic> source;

    void SetUp() override
    {
        qputenv("VERSEWICK_QQMUSIC_PORT", QByteArray::number(server.port()));
        source = std::make_unique<MusicSourceQQMusic>(
            Workspace::sharedWorkspace(), DistributedNotificationCenter::defaultCenter());
    }
};

TEST_F(QQMusicRequests, ATricklingServiceIsGivenUpOnAfterFiveSeconds)
{
    // About 10 s for the whole answer: each byte comes well within any inactivity limit.
    server.route("/", RawHttpServer::trickle("Versewick says hello", 500));
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(source->syncGet(QString()).isNull());
    EXPECT_GE(timer.elapsed(), 4500);
    EXPECT_LT(timer.elapsed(), 8000);
    EXPECT_TRUE(waitFor([&] { return server.openConnections() == 0; }, 5000));
}

TEST_F(QQMusicRequests, AnAnswerBeyondAFewKilobytesIsNoAnswer)
{
    auto sent = std::make_shared<std::atomic<qint64>>(0);
    const qint64 total = 256LL * 1024 * 1024;
    server.route("/all", RawHttpServer::huge(total, false, sent));
    EXPECT_TRUE(source->syncGet(QStringLiteral("all")).isNull());
    EXPECT_TRUE(waitFor([&] { return server.openConnections() == 0; }));
    EXPECT_LT(sent->load(), total / 4);

    server.route("/all",
                 RawHttpServer::status(200, "A_$x$_" + QByteArray(3000, 't') + "_$x$_C_$x$_61.5"));
    EXPECT_EQ(MusicSourceQQMusic::splitAnswer(source->syncGet(QStringLiteral("all")))
                  .value_or(QStringList())
                  .value(3),
              QStringLiteral("61.5"));
}

} // namespace
