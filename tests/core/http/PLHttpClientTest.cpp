#include "core/http/PLHttpClient.h"
#include "core/http/BlockingGet.h"
#include "core/http/PLHttpConfig.h"

#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"
#include "support/TempHome.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QNetworkReply>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

// What Debian's Qt asks for when it is left to choose (and then inflates itself).
constexpr char kQtAcceptEncoding[] = "zstd, br, gzip, deflate";
// The user agent is formed once per process, at the first request: the application's name is
// set before any test runs, so the agent is the same whichever test comes first.
class ApplicationName : public ::testing::Environment {
public:
    void SetUp() override { QCoreApplication::setApplicationName("Versewick"); }
};
[[maybe_unused]] const auto* const kApplicationName =
    ::testing::AddGlobalTestEnvironment(new ApplicationName);

// Records what the client reports; also what it saw at that moment.
class Recorder : public QObject {
    Q_OBJECT
public:
    struct Report {
        QString what;
        QByteArray body;
        PLHttpError error;
        int statusCode = -1;
        QVariantMap userInfo;
    };
    QList<Report> reports;

public Q_SLOTS:
    void httpClientSuccessed(PLHttpClient* client, const QByteArray& body)
    {
        reports.append({"success", body, {}, client->statusCode(), client->userInfo()});
    }
    void httpClientFailed(PLHttpClient* client, const PLHttpError& error)
    {
        reports.append({"failure", {}, error, client->statusCode(), client->userInfo()});
    }
    void otherDone(PLHttpClient*, const QByteArray& body)
    {
        reports.append({"other", body, {}, -1, {}});
    }
};

class HttpClient : public ::testing::Test {
protected:
    RawHttpServer server;
    Recorder recorder;
    PLHttpClient client{&recorder};

    const Recorder::Report& only()
    {
        EXPECT_TRUE(waitFor([&] { return !recorder.reports.isEmpty(); }));
        QCoreApplication::processEvents(); // a second report would arrive now
        EXPECT_EQ(recorder.reports.size(), 1);
        static Recorder::Report none;
        return recorder.reports.isEmpty() ? none : recorder.reports.first();
    }
};

struct AnswerCase {
    const char* name;
    RawHttpServer::Handler handler;
    bool gzip;
    const char* outcome;
    QByteArray body;
    int errorCode;
};

class Answers : public HttpClient, public ::testing::WithParamInterface<AnswerCase> {};

TEST_P(Answers, FollowTheStatusRule)
{
    const AnswerCase& c = GetParam();
    server.route("/page", c.handler);
    server.route("/target", RawHttpServer::status(200, "arrived"));
    server.route("/gone", RawHttpServer::status(404, "missing"));
    client.setEnableGzipEncoding(c.gzip);
    client.get(QUrl(server.url("/page?x=1")), {{"context", 7}});
    const auto& report = only();
    EXPECT_EQ(report.what, QString::fromUtf8(c.outcome));
    if (report.what == "success") {
        EXPECT_EQ(report.body, c.body);
        EXPECT_EQ(report.statusCode, 200);
        EXPECT_EQ(report.userInfo.value("context"), 7);
    } else {
        EXPECT_EQ(report.error.domain, QStringLiteral("PLHttpClientErrorDomain"));
        EXPECT_EQ(report.error.code, c.errorCode);
        EXPECT_EQ(report.error.localizedDescription,
                  QStringLiteral("http response code %1 failed").arg(c.errorCode));
        EXPECT_EQ(report.statusCode, 0);
        EXPECT_TRUE(report.userInfo.isEmpty());
    }
    EXPECT_FALSE(client.isLoading());
}

RawHttpServer::Handler moved(int code, const QByteArray& location)
{
    return RawHttpServer::status(code, "moved", "Location: " + location + "\r\n");
}

INSTANTIATE_TEST_SUITE_P(
    Servers, Answers,
    ::testing::Values(
        AnswerCase{"ok", RawHttpServer::status(200, "hello"), false, "success", "hello", 0},
        AnswerCase{"okEmpty", RawHttpServer::status(200), false, "success", "", 0},
        AnswerCase{"chunked", RawHttpServer::chunked({"ab", "cde", QByteArray(5000, 'z')}), false,
                   "success", "abcde" + QByteArray(5000, 'z'), 0},
        AnswerCase{"gzip", RawHttpServer::gzipped("compressed words"), true, "success",
                   "compressed words", 0},
        AnswerCase{"gzipNotAsked", RawHttpServer::gzipped("plain words"), false, "success",
                   "plain words", 0},
        AnswerCase{"redirect", RawHttpServer::redirect("/target"), false, "success", "arrived", 0},
        AnswerCase{"movedPermanently", moved(301, "/target"), false, "success", "arrived", 0},
        AnswerCase{"temporaryRedirect", moved(307, "/target"), false, "success", "arrived", 0},
        AnswerCase{
            "redirectToMissing", RawHttpServer::redirect("/gone"), false, "failure", {}, 404},
        AnswerCase{
            "redirectToAFile", moved(302, "file:///etc/hostname"), false, "failure", {}, 302},
        AnswerCase{"multipleChoices", moved(300, "/target"), false, "failure", {}, 300},
        AnswerCase{"multipleChoicesNowhere", RawHttpServer::status(300, "pick one"), false,
                   "failure", QByteArray(), 300},
        AnswerCase{"notModified", RawHttpServer::status(304), false, "failure", {}, 304},
        AnswerCase{"noContent", RawHttpServer::status(204), false, "failure", {}, 204},
        AnswerCase{"notFound", RawHttpServer::status(404, "missing"), false, "failure", {}, 404},
        AnswerCase{"serverError", RawHttpServer::status(500, "boom"), false, "failure", {}, 500},
        AnswerCase{"created", RawHttpServer::status(201, "made"), false, "failure", {}, 201}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(HttpClient, ARedirectThatIsNotFollowedLeavesTheDownloadFileAlone)
{
    TempHome home;
    server.route("/", moved(300, "/target"));
    client.setDownloadDestinationPath(home.write("kept.lrc", "kept"));
    client.get(QUrl(server.url("/")));
    EXPECT_EQ(only().error.code, 300);
    QFile kept(home.filePath("kept.lrc"));
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "kept");
}

class AcceptEncoding : public HttpClient, public ::testing::WithParamInterface<bool> {};

TEST_P(AcceptEncoding, SaysWhatIsSentOnTheWire)
{
    server.route("/", RawHttpServer::status(200, "x"));
    client.setEnableGzipEncoding(GetParam());
    client.get(QUrl(server.url("/")));
    only();
    const auto request = server.requests().value(0);
    EXPECT_EQ(request.headers.value("user-agent"), PLHttpConfig::s().userAgentFormated().toUtf8());
    EXPECT_TRUE(request.headers.value("user-agent").endsWith(") PLHttpClient/1"));
    EXPECT_EQ(request.headers.value("accept-encoding"),
              GetParam() ? QByteArray(kQtAcceptEncoding) : QByteArray("identity"));
    EXPECT_GT(client.requestTimeCosted(), 0.0);
}

INSTANTIATE_TEST_SUITE_P(Gzip, AcceptEncoding, ::testing::Bool());

TEST(BlockingGet, LeavesTheEncodingToQt)
{
    RawHttpServer server;
    server.route("/", RawHttpServer::gzipped("inflated by Qt"));
    EXPECT_EQ(http::blockingGet(QUrl(server.url("/"))), QByteArray("inflated by Qt"));
    EXPECT_EQ(server.requests().value(0).headers.value("accept-encoding"), kQtAcceptEncoding);
    EXPECT_EQ(server.requests().value(0).headers.value("user-agent"), "Mozilla/5.0"); // Qt's
}

struct LimitCase {
    const char* name;
    bool announced;
    bool toFile;
};

class BodyLimit : public HttpClient, public ::testing::WithParamInterface<LimitCase> {};

TEST_P(BodyLimit, StopsTheTransferAsSoonAsItIsPassed)
{
    TempHome home;
    const qint64 total = 256LL * 1024 * 1024;
    auto sent = std::make_shared<std::atomic<qint64>>(0);
    server.route("/big", RawHttpServer::huge(total, GetParam().announced, sent));
    client.setMaxResponseBytes(1024 * 1024);
    if (GetParam().toFile)
        client.setDownloadDestinationPath(home.filePath("big.bin"));
    client.get(QUrl(server.url("/big")));
    ASSERT_TRUE(waitFor([&] { return !recorder.reports.isEmpty(); }, 60000));
    const auto& report = recorder.reports.first();
    if (GetParam().toFile) {
        EXPECT_EQ(report.what, QStringLiteral("success")); // a file is not bounded
        EXPECT_EQ(QFileInfo(home.filePath("big.bin")).size(), total);
        return;
    }
    EXPECT_EQ(report.what, QStringLiteral("failure"));
    EXPECT_EQ(report.error.domain, QStringLiteral("QNetworkReplyErrorDomain"));
    EXPECT_EQ(report.error.code, int(QNetworkReply::UnknownContentError));
    EXPECT_TRUE(waitFor([&] { return server.openConnections() == 0; }));
    EXPECT_LT(sent->load(), total / 4);
    EXPECT_EQ(PLHttpConfig::s().connections(), 0);
}

INSTANTIATE_TEST_SUITE_P(Bodies, BodyLimit,
                         ::testing::Values(LimitCase{"announced", true, false},
                                           LimitCase{"streamed", false, false},
                                           LimitCase{"toFile", false, true}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(HttpClient, StatusRuleCanBeTurnedOff)
{
    server.route("/", RawHttpServer::status(404, "missing page"));
    client.setIsForceHandleStatusCode(false);
    client.get(QUrl(server.url("/")));
    const auto& report = only();
    EXPECT_EQ(report.what, QStringLiteral("success"));
    EXPECT_EQ(report.body, "missing page");
    EXPECT_EQ(report.statusCode, 404);
}

TEST_F(HttpClient, TransportFailuresReachTheFailureMethod)
{
    client.get(QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(closedPort())));
    EXPECT_EQ(only().error.domain, QStringLiteral("QNetworkReplyErrorDomain"));

    recorder.reports.clear();
    server.route("/silent", RawHttpServer::silent());
    client.setRequestTimeout(400);
    QElapsedTimer timer;
    timer.start();
    client.get(QUrl(server.url("/silent")));
    EXPECT_EQ(only().what, QStringLiteral("failure"));
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_EQ(PLHttpConfig::s().connections(), 0);
}

TEST_F(HttpClient, MethodsAndBodiesReachTheServer)
{
    server.route("/", RawHttpServer::status(200));
    const QUrl url(server.url("/"));
    for (const std::function<void()>& send : std::initializer_list<std::function<void()>>{
             [&] { client.post(url, QStringLiteral("a=\u6b4c")); },
             [&] { client.put(url, QStringLiteral("put body")); },
             [&] { client.deleteRequest(url); },
             [&] {
                 client.postForm(url, {{"k", QStringLiteral("v")}}, {}, {});
             }}) {
        recorder.reports.clear();
        send();
        only();
    }
    const auto requests = server.requests();
    ASSERT_EQ(requests.size(), 4);
    EXPECT_EQ(requests[0].method, "POST");
    EXPECT_EQ(requests[0].body, QStringLiteral("a=\u6b4c").toUtf8());
    EXPECT_EQ(requests[1].method, "PUT");
    EXPECT_EQ(requests[2].method, "DELETE");
    EXPECT_EQ(requests[3].headers.value("content-type"),
              "multipart/form-data; boundary=trevally-mp-sep");
    EXPECT_TRUE(requests[3].body.endsWith("\r\n--trevally-mp-sep\r\n\r\n--trevally-mp-sep--\r\n"));
}

TEST_F(HttpClient, ANewRequestCancelsTheFirstSilently)
{
    server.route("/slow", RawHttpServer::silent());
    server.route("/fast", RawHttpServer::status(200, "second"));
    client.get(QUrl(server.url("/slow")));
    client.get(QUrl(server.url("/fast")));
    EXPECT_EQ(only().body, "second");
}

TEST_F(HttpClient, CancelAndDeferredStart)
{
    server.route("/", RawHttpServer::status(200, "body"));
    client.get(QUrl(server.url("/")));
    client.cancel();
    // The transfer is gone, so nothing can report: events posted before are handled now.
    EXPECT_EQ(PLHttpConfig::s().connections(), 0);
    QCoreApplication::processEvents();
    EXPECT_TRUE(recorder.reports.isEmpty());
    EXPECT_FALSE(client.hasReceivedData());
    EXPECT_TRUE(client.stringValue().isNull());

    client.setStartImmediately(false);
    client.get(QUrl(server.url("/")));
    EXPECT_FALSE(client.isLoading());
    EXPECT_EQ(PLHttpConfig::s().connections(), 0); // nothing sent before start()
    client.start();
    EXPECT_TRUE(client.isLoading());
    EXPECT_EQ(only().body, "body");
    EXPECT_EQ(client.stringValue(), QStringLiteral("body"));
}

TEST_F(HttpClient, RetargetedSelectorsAndMissingMethods)
{
    server.route("/", RawHttpServer::status(200, "routed"));
    client.setDidFinishSelector("otherDone(PLHttpClient*,QByteArray)");
    client.get(QUrl(server.url("/")));
    EXPECT_EQ(only().what, QStringLiteral("other"));

    recorder.reports.clear();
    client.setDidFinishSelector("noSuchMethod(PLHttpClient*,QByteArray)");
    client.get(QUrl(server.url("/")));
    EXPECT_TRUE(waitFor([&] { return !client.isLoading(); }));
    EXPECT_TRUE(recorder.reports.isEmpty());

    // A delegate that goes away is not called.
    auto gone = std::make_unique<Recorder>();
    PLHttpClient orphan(gone.get());
    orphan.get(QUrl(server.url("/")));
    gone.reset();
    EXPECT_TRUE(waitFor([&] { return !orphan.isLoading(); }));
}

class Trickle : public PLOutputStream {
public:
    QByteArray written;
    int takes = 3;
    int failAfter = -1;
    qint64 write(const char* data, qint64 length) override
    {
        if (failAfter == 0)
            return -1;
        --failAfter;
        const qint64 n = std::min<qint64>(length, takes);
        written.append(data, n);
        return n;
    }
    QString errorString() const override { return QStringLiteral("disk full"); }
};

TEST(ChunkWriting, RetriesRestartFromTheChunksFirstByte)
{
    Trickle stream;
    writeChunkToStream(stream, "abcdefgh");
    EXPECT_EQ(stream.written, "abcabcab");

    Trickle failing;
    failing.failAfter = 1;
    MessageCapture log;
    writeChunkToStream(failing, "abcdefgh");
    EXPECT_EQ(failing.written, "abc");
    EXPECT_EQ(log.lines(), QStringList{"disk full"});
}

TEST(BlockingGet, AnswersWithoutRunningTheCallersEventLoop)
{
    RawHttpServer server;
    server.route("/", RawHttpServer::status(200, "blocking body"));
    server.route("/missing", RawHttpServer::status(404, "not here"));
    bool timerFired = false;
    QTimer::singleShot(0, [&] { timerFired = true; });
    EXPECT_EQ(PLHttpClient::syncGet(QUrl(server.url("/"))), QStringLiteral("blocking body"));
    EXPECT_FALSE(timerFired);
    EXPECT_FALSE(PLHttpClient::simpleSyncGet(server.url("/missing")));
    EXPECT_FALSE(
        PLHttpClient::simpleSyncGet(QStringLiteral("http://127.0.0.1:%1/").arg(closedPort())));
    EXPECT_TRUE(PLHttpClient::syncGet(QUrl(QStringLiteral("not a url"))).isNull());
    QCoreApplication::processEvents();
    EXPECT_TRUE(timerFired);
}

struct SlowCase {
    const char* name;
    RawHttpServer::Handler handler;
};

class BlockingLimit : public ::testing::TestWithParam<SlowCase> {};

TEST_P(BlockingLimit, BoundsTheWholeRequestAndEndsTheTransfer)
{
    RawHttpServer server;
    server.route("/", GetParam().handler);
    QElapsedTimer timer;
    timer.start();
    const http::BlockingAnswer answer = http::blockingFetch(QUrl(server.url("/")), 1500);
    EXPECT_EQ(answer.failure, http::BlockingFailure::TimedOut);
    EXPECT_FALSE(answer.body);
    EXPECT_GE(timer.elapsed(), 1400);
    EXPECT_LT(timer.elapsed(), 6000);
    // The abandoned transfer ends: the server sees its connection closed.
    EXPECT_TRUE(waitFor([&] { return server.openConnections() == 0; }, 5000));
}

INSTANTIATE_TEST_SUITE_P(Servers, BlockingLimit,
                         ::testing::Values(SlowCase{"silent", RawHttpServer::silent()},
                                           SlowCase{
                                               "oneBytePerTenthOfASecond",
                                               RawHttpServer::trickle(QByteArray(100, 'x'), 100)}),
                         [](const auto& info) { return std::string(info.param.name); });

struct StatusCase {
    const char* name;
    RawHttpServer::Handler handler;
    http::BlockingFailure failure;
    int status;
};

class BlockingStatus : public ::testing::TestWithParam<StatusCase> {};

// Only a 2xx final answer has a body; the redirects the transport follows are passed over.
TEST_P(BlockingStatus, OnlyA2xxFinalAnswerIsAnAnswer)
{
    RawHttpServer server;
    server.route("/", GetParam().handler);
    server.route("/there", RawHttpServer::status(200, "there"));
    const http::BlockingAnswer answer = http::blockingFetch(QUrl(server.url("/")));
    EXPECT_EQ(answer.failure, GetParam().failure);
    EXPECT_EQ(answer.status, GetParam().status);
    EXPECT_EQ(answer.body.has_value(), GetParam().failure == http::BlockingFailure::None);
}

INSTANTIATE_TEST_SUITE_P(
    Answers, BlockingStatus,
    ::testing::Values(
        StatusCase{"ok", RawHttpServer::status(200, "x"), http::BlockingFailure::None, 200},
        StatusCase{"noContent", RawHttpServer::status(204), http::BlockingFailure::None, 204},
        StatusCase{"followedRedirect", RawHttpServer::redirect("/there"),
                   http::BlockingFailure::None, 200},
        StatusCase{"multipleChoices", RawHttpServer::status(300, "a body", "Location: /there\r\n"),
                   http::BlockingFailure::Status, 300},
        StatusCase{"notFound", RawHttpServer::status(404, "not here"),
                   http::BlockingFailure::Status, 404},
        StatusCase{"serverError", RawHttpServer::status(500, "oops"), http::BlockingFailure::Status,
                   500}),
    [](const auto& info) { return std::string(info.param.name); });

class BlockingSize : public ::testing::TestWithParam<bool> {};

TEST_P(BlockingSize, StopsReadingPastTheBound)
{
    RawHttpServer server;
    const qint64 total = 512LL * 1024 * 1024;
    auto sent = std::make_shared<std::atomic<qint64>>(0);
    server.route("/", RawHttpServer::huge(total, GetParam(), sent));
    server.route("/fits", RawHttpServer::huge(64 * 1024));
    const QUrl url(server.url("/"));
    const http::BlockingAnswer answer = http::blockingFetch(url, 60000, 1024 * 1024);
    EXPECT_EQ(answer.failure, http::BlockingFailure::TooLarge);
    EXPECT_FALSE(answer.body);
    EXPECT_TRUE(waitFor([&] { return server.openConnections() == 0; }));
    EXPECT_LT(sent->load(), total / 4);
    EXPECT_EQ(http::blockingGet(QUrl(server.url("/fits")), 60000, 64 * 1024)->size(), 64 * 1024);
}

INSTANTIATE_TEST_SUITE_P(ContentLength, BlockingSize, ::testing::Bool());

} // namespace

#include "PLHttpClientTest.moc"
