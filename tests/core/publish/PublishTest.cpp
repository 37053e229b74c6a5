#include "core/publish/LrclibPublisher.h"
#include "core/publish/ProofOfWork.h"

#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMutex>
#include <QTcpSocket>

#include <gtest/gtest.h>

namespace {

// The service's rule, written out independently: SHA-256(prefix + nonce), as a big-endian
// number, is not above the target (same length, so byte order is number order).
bool tokenMeets(const QByteArray& token, const QByteArray& targetHex)
{
    const qsizetype colon = token.lastIndexOf(':');
    const QByteArray nonce = token.mid(colon + 1);
    bool decimal = !nonce.isEmpty();
    for (char c : nonce)
        decimal = decimal && c >= '0' && c <= '9';
    const QByteArray digest =
        QCryptographicHash::hash(token.left(colon) + nonce, QCryptographicHash::Sha256);
    return colon > 0 && decimal && digest <= QByteArray::fromHex(targetHex);
}

// What finished() said, waited for with a generous limit.
struct Finished {
    std::optional<std::pair<bool, QString>> said;
    explicit Finished(LrclibPublisher& publisher)
    {
        QObject::connect(&publisher, &LrclibPublisher::finished,
                         [this](bool ok, const QString& text) {
                             said = {ok, text};
                         });
    }
    bool wait()
    {
        QDeadlineTimer deadline(20000);
        while (!said && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        return bool(said);
    }
};

constexpr char kEasy[] = "000fffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff";

TEST(ProofOfWork, FoundNoncesMeetTheTarget)
{
    std::atomic<bool> cancel = false;
    for (const char* hex :
         {kEasy, "0000ffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff"}) {
        const auto target = proofofwork::parseTarget(QString::fromLatin1(hex));
        ASSERT_TRUE(target);
        const auto nonce = proofofwork::solve("prefix", *target, cancel);
        ASSERT_TRUE(nonce);
        EXPECT_TRUE(tokenMeets("prefix:" + QByteArray::number(quint64(*nonce)), hex)) << hex;
    }
    EXPECT_FALSE(proofofwork::parseTarget(QStringLiteral("0g")));
    EXPECT_FALSE(proofofwork::parseTarget(QStringLiteral("abc")));
    EXPECT_TRUE(proofofwork::meetsTarget(QByteArray::fromHex("0100"), QByteArray::fromHex("0100")));
    EXPECT_FALSE(
        proofofwork::meetsTarget(QByteArray::fromHex("0101"), QByteArray::fromHex("0100")));
}

// A fake LRCLIB: hands out challenges and checks tokens against verifyTarget.
struct FakeService {
    QByteArray offeredTarget = kEasy;
    QByteArray verifyTarget = kEasy;
    bool expired = false;
    bool silent = false;
    QMutex mutex;
    QByteArray token;
    QJsonObject body;

    void install(RawHttpServer& server)
    {
        server.route("/api/request-challenge", [this](const auto& request, QTcpSocket& socket) {
            if (silent)
                return;
            const QByteArray answer = R"({"prefix":"abc123","target":")" + offeredTarget + "\"}";
            RawHttpServer::status(request.method == "POST" ? 200 : 405, answer)(request, socket);
        });
        server.route("/api/publish", [this](const auto& request, QTcpSocket& socket) {
            QMutexLocker lock(&mutex);
            token = request.headers.value("x-publish-token");
            body = QJsonDocument::fromJson(request.body).object();
            const bool known = token.startsWith("abc123:") && !expired;
            if (known && tokenMeets(token, verifyTarget))
                return RawHttpServer::status(201)(request, socket);
            const QByteArray why = known ? "Wrong token" : "The challenge has expired";
            RawHttpServer::status(400, R"({"code":400,"message":")" + why + "\"}")(request, socket);
        });
    }
};

struct Outcome {
    const char* name;
    std::function<void(FakeService&)> setUp;
    bool ok;
    const char* says;
};

class Publish : public ::testing::TestWithParam<Outcome> {};

TEST_P(Publish, AnswersOnceWithWhatTheServiceSaid)
{
    RawHttpServer server;
    FakeService service;
    GetParam().setUp(service);
    service.install(server);
    LrclibPublisher publisher;
    publisher.setTimeout(500);
    Finished finished(publisher);
    publisher.start(QUrl(server.url(QStringLiteral("/"))),
                    {"Song", "Singer", "Album", 201.5, "la\n", "[00:01.00]la\n"});
    ASSERT_TRUE(finished.wait());
    EXPECT_EQ(finished.said->first, GetParam().ok);
    EXPECT_TRUE(finished.said->second.contains(QLatin1String(GetParam().says)))
        << finished.said->second.toStdString();
    EXPECT_FALSE(publisher.isRunning());
    QMutexLocker lock(&service.mutex);
    if (GetParam().ok) {
        EXPECT_EQ(service.body.value("trackName").toString(), QStringLiteral("Song"));
        EXPECT_EQ(service.body.value("duration").toDouble(), 201.5);
        EXPECT_EQ(service.body.value("syncedLyrics").toString(), QStringLiteral("[00:01.00]la\n"));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Answers, Publish,
    ::testing::Values(
        Outcome{"Published", [](FakeService&) {}, true, "published"},
        // The service checks against a harder target than it offered: the token is wrong.
        Outcome{"WrongToken",
                [](FakeService& s) {
                    s.verifyTarget =
                        "0000000000000000000000000000000000000000000000000000000000000000";
                },
                false, "Wrong token"},
        Outcome{"ExpiredChallenge", [](FakeService& s) { s.expired = true; }, false, "expired"},
        Outcome{"NeverAnswers", [](FakeService& s) { s.silent = true; }, false, "reached"},
        Outcome{"UnreadableChallenge", [](FakeService& s) { s.offeredTarget = "xyz"; }, false,
                "cannot be read"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(PublishCancel, StopsTheSearchAndNeverPosts)
{
    RawHttpServer server;
    FakeService service;
    service.offeredTarget = "0000000000000000000000000000000000000000000000000000000000000000";
    service.install(server);
    LrclibPublisher publisher;
    Finished finished(publisher);
    QObject::connect(&publisher, &LrclibPublisher::progress, [&](auto stage, quint64 hashes) {
        if (stage == LrclibPublisher::Stage::Solving && hashes > 0)
            publisher.cancel();
    });
    publisher.start(QUrl(server.url(QStringLiteral("/"))), {});
    ASSERT_TRUE(finished.wait());
    EXPECT_FALSE(finished.said->first);
    EXPECT_EQ(server.requests().size(), 1);
}

} // namespace
