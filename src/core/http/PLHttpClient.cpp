#include "core/http/PLHttpClient.h"

#include "core/foundation/SystemLog.h"
#include "core/foundation/TextDecoding.h"
#include "core/http/BlockingGet.h"
#include "core/http/HttpForms.h"
#include "core/http/PLHttpConfig.h"

#include <QCoreApplication>
#include <QMetaMethod>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QThread>

#include <atomic>
#include <chrono>

namespace {
std::atomic<std::uint64_t> gEncoding{foundation::kUTF8Encoding};

QNetworkAccessManager* threadManager()
{
    // One manager per thread that makes requests. The application's thread gives its manager
    // to the application, so it goes while Qt can still wind its transfers down; another
    // thread's lives as long as the thread.
    if (QCoreApplication* app = QCoreApplication::instance();
        app && app->thread() == QThread::currentThread()) {
        static QPointer<QNetworkAccessManager> appManager;
        if (!appManager)
            appManager = new QNetworkAccessManager(app);
        return appManager;
    }
    thread_local std::unique_ptr<QNetworkAccessManager> manager;
    if (!manager)
        manager = std::make_unique<QNetworkAccessManager>();
    return manager.get();
}

class FileStream : public PLOutputStream {
public:
    explicit FileStream(QFile& file)
        : m_file(file)
    {
    }
    qint64 write(const char* data, qint64 length) override { return m_file.write(data, length); }
    QString errorString() const override { return m_file.errorString(); }

private:
    QFile& m_file;
};

// Invokes delegate->selector(client, value) when the delegate has that method.
template <typename T>
void callDelegate(QObject* delegate, const QByteArray& selector, PLHttpClient* client,
                  const T& value)
{
    if (!delegate)
        return;
    const QByteArray signature = QMetaObject::normalizedSignature(selector.constData());
    const int index = delegate->metaObject()->indexOfMethod(signature.constData());
    if (index < 0)
        return;
    delegate->metaObject()->method(index).invoke(delegate, Qt::DirectConnection,
                                                 Q_ARG(PLHttpClient*, client), Q_ARG(T, value));
}
} // namespace

void writeChunkToStream(PLOutputStream& stream, const QByteArray& chunk)
{
    const qint64 total = chunk.size();
    qint64 written = 0;
    while (written < total) {
        const qint64 taken = stream.write(chunk.constData(), total - written);
        if (taken <= 0) {
            foundation::systemLog(stream.errorString());
            return;
        }
        written += taken;
    }
}

PLHttpClient::PLHttpClient(QObject* delegate, QNetworkAccessManager* manager, QObject* parent)
    : QObject(parent)
    , m_manager(manager ? manager : threadManager())
    , m_delegate(delegate)
{
    qRegisterMetaType<PLHttpError>();
    qRegisterMetaType<PLHttpClient*>();
}

PLHttpClient::~PLHttpClient()
{
    cleanBeforeRelease();
}

PLHttpClient::TimeStamp PLHttpClient::now()
{
    const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(
                            std::chrono::system_clock::now().time_since_epoch())
                            .count();
    return {micros / 1000000, static_cast<std::int32_t>(micros % 1000000)};
}

void PLHttpClient::clean()
{
    cancel();
    m_url = QUrl();
    m_responseHeaders.clear();
    m_receivedData = QByteArray();
    m_userInfo.clear();
    m_requestMethod = None;
    m_t1 = m_t2 = {};
}

void PLHttpClient::get(const QUrl& url)
{
    get(url, {});
}

void PLHttpClient::get(const QUrl& url, const QVariantMap& userInfo)
{
    request(Get, url, "GET", {}, {}, userInfo);
}

void PLHttpClient::post(const QUrl& url, const QString& body)
{
    request(Post, url, "POST", body.toUtf8(), {});
}

void PLHttpClient::put(const QUrl& url, const QString& body)
{
    request(Put, url, "PUT", body.toUtf8(), {});
}

void PLHttpClient::deleteRequest(const QUrl& url)
{
    request(Delete, url, "DELETE", {}, {});
}

void PLHttpClient::postForm(const QUrl& url, const QVariantMap& params, const QString& fileName,
                            const QByteArray& fileData)
{
    request(Post, url, "POST", http::multipartBody(params, fileName, fileData),
            http::multipartContentType());
}

void PLHttpClient::willRequest(QNetworkRequest& /*request*/) {}

void PLHttpClient::request(RequestMethod method, const QUrl& url, const QByteArray& verb,
                           const QByteArray& body, const QByteArray& contentType,
                           const QVariantMap& userInfo)
{
    clean();
    m_requestMethod = method;
    m_userInfo = userInfo;
    m_url = url;

    QNetworkRequest req(url);
    req.setTransferTimeout(m_timeoutMs);
    const QString agent = PLHttpConfig::s().userAgentFormated();
    if (!agent.isNull())
        req.setHeader(QNetworkRequest::UserAgentHeader, agent);
    // With gzip asked for, Qt sends the header and inflates the answer itself; without it
    // the server is asked for the body as it is.
    if (!m_enableGzipEncoding)
        req.setRawHeader("Accept-Encoding", "identity");
    if (!contentType.isEmpty())
        req.setHeader(QNetworkRequest::ContentTypeHeader, contentType);
    willRequest(req);

    m_pendingSend = [this, req, verb, body]() {
        return m_manager->sendCustomRequest(req, verb, body);
    };
    if (m_startImmediately) {
        beginLoading();
        send();
    }
}

void PLHttpClient::beginLoading()
{
    m_isLoading = true;
    m_t1 = now();
    PLHttpConfig::s().requestStarted();
}

void PLHttpClient::send()
{
    auto sendNow = std::move(m_pendingSend);
    m_pendingSend = nullptr;
    m_connection = sendNow();
    connect(m_connection, &QNetworkReply::metaDataChanged, this, &PLHttpClient::onMetaData);
    connect(m_connection, &QIODevice::readyRead, this, &PLHttpClient::onReadyRead);
    connect(m_connection, &QNetworkReply::finished, this, &PLHttpClient::onFinished);
}

void PLHttpClient::start()
{
    if (!m_pendingSend || m_startImmediately)
        return;
    beginLoading();
    send();
}

int PLHttpClient::replyStatus() const
{
    return m_connection ? m_connection->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt()
                        : 0;
}

void PLHttpClient::onMetaData()
{
    const int status = replyStatus();
    // A redirect is not the answer: either the transport follows it and the next answer
    // counts, or it does not and the request fails when it finishes.
    if (status <= 0 || status / 100 == 3)
        return;
    m_statusCode = status;
    m_responseHeaders = m_connection->rawHeaderPairs();
    if (m_isForceHandleStatusCode && m_statusCode != 200) {
        failWithStatus(m_statusCode);
        return;
    }
    const QVariant length = m_connection->header(QNetworkRequest::ContentLengthHeader);
    if (bodyIsBounded() && length.isValid() && length.toLongLong() > m_maxResponseBytes)
        failTooLarge();
}

bool PLHttpClient::bodyIsBounded() const
{
    return m_downloadDestinationPath.isEmpty() && m_maxResponseBytes >= 0;
}

void PLHttpClient::failWithStatus(int code)
{
    clean();
    m_statusCode = 0;
    fail({QLatin1String(kErrorDomain), code,
          QStringLiteral("http response code %1 failed").arg(code)});
}

void PLHttpClient::failTooLarge()
{
    const PLHttpError failure{
        QLatin1String(kTransportErrorDomain), int(QNetworkReply::UnknownContentError),
        QStringLiteral("the answer is larger than %1 bytes").arg(m_maxResponseBytes)};
    clean();
    fail(failure);
}

void PLHttpClient::onReadyRead()
{
    if (!m_connection)
        return;
    const QByteArray chunk = m_connection->readAll();
    // The body of a redirect is never the answer when the status rule holds; a file being
    // downloaded to is not touched by it.
    if (m_isForceHandleStatusCode && replyStatus() / 100 == 3)
        return;
    if (m_downloadDestinationPath.isEmpty()) {
        if (!m_receivedData)
            return;
        m_receivedData->append(chunk);
        if (bodyIsBounded() && m_receivedData->size() > m_maxResponseBytes)
            failTooLarge();
        return;
    }
    if (!m_fileDownloadStream) {
        m_fileDownloadStream = std::make_unique<QFile>(m_downloadDestinationPath);
        if (!m_fileDownloadStream->open(QIODevice::WriteOnly | QIODevice::Truncate))
            foundation::systemLog(m_fileDownloadStream->errorString());
    }
    FileStream stream(*m_fileDownloadStream);
    writeChunkToStream(stream, chunk);
}

void PLHttpClient::onFinished()
{
    QNetworkReply* reply = m_connection;
    if (!reply)
        return;
    onReadyRead();
    if (m_connection != reply)
        return; // the body outgrew its bound and the request has failed
    const QNetworkReply::NetworkError error = reply->error();
    const int status = replyStatus();
    // An answer with an HTTP status is an answer, whatever Qt thinks of the status; only
    // transport trouble (refused, timed out, broken, a redirect loop) is a failure here.
    const bool answered = status > 0 && error > QNetworkReply::UnknownProxyError;
    if (error != QNetworkReply::NoError && !answered) {
        const PLHttpError failure{QLatin1String(kTransportErrorDomain), int(error),
                                  reply->errorString()};
        dropConnection();
        fail(failure);
        return;
    }
    // The final answer: a redirect that was not followed (300, 304, or one to a place the
    // transport does not go, such as a file) fails like any other status but 200.
    if (m_isForceHandleStatusCode && status != 200) {
        failWithStatus(status);
        return;
    }
    m_statusCode = status;
    m_responseHeaders = reply->rawHeaderPairs();
    dropConnection();
    stopBookkeeping();
    callDelegate(m_delegate, m_didFinishSelector, this, m_receivedData.value_or(QByteArray()));
}

void PLHttpClient::fail(const PLHttpError& error)
{
    stopBookkeeping();
    callDelegate(m_delegate, m_didFailSelector, this, error);
}

void PLHttpClient::stopBookkeeping()
{
    if (m_fileDownloadStream) {
        m_fileDownloadStream->close();
        m_fileDownloadStream.reset();
    }
    if (m_isLoading) {
        m_t2 = now();
        PLHttpConfig::s().requestStoped();
        m_isLoading = false;
    }
}

void PLHttpClient::dropConnection()
{
    if (QNetworkReply* reply = m_connection) {
        reply->disconnect(this);
        if (reply->isRunning())
            reply->abort();
        reply->deleteLater();
    }
    m_connection = nullptr;
}

void PLHttpClient::cancel()
{
    if (m_fileDownloadStream) {
        m_fileDownloadStream->close();
        m_fileDownloadStream.reset();
    }
    m_pendingSend = nullptr;
    dropConnection();
    m_receivedData.reset();
    stopBookkeeping();
    m_t1 = m_t2 = {};
}

void PLHttpClient::cleanBeforeRelease()
{
    m_delegate = nullptr;
    cancel();
}

QString PLHttpClient::stringValue() const
{
    if (!m_receivedData)
        return {};
    return foundation::decodeText(*m_receivedData, gEncoding.load()).value_or(QString());
}

QByteArray PLHttpClient::responseHeaderForKey(const QByteArray& name) const
{
    for (const auto& [key, value] : m_responseHeaders) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

double PLHttpClient::requestTimeCosted() const
{
    const double seconds =
        double(m_t2.seconds - m_t1.seconds) + double(m_t2.microseconds - m_t1.microseconds) / 1e6;
    return seconds > 0 ? seconds : 0.0;
}

void PLHttpClient::setGlobalEncoding(std::uint64_t encoding)
{
    gEncoding = encoding;
}

std::uint64_t PLHttpClient::globalEncoding()
{
    return gEncoding.load();
}

QString PLHttpClient::syncGet(const QUrl& url)
{
    const auto body = http::blockingGet(url);
    if (!body)
        return {};
    return foundation::decodeText(*body, gEncoding.load()).value_or(QString());
}

std::optional<QByteArray> PLHttpClient::simpleSyncGet(const QString& url)
{
    return http::blockingGet(QUrl(url));
}
