#pragma once

#include <QByteArray>
#include <QFile>
#include <QNetworkRequest>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <QVariantMap>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

class QNetworkAccessManager;
class QNetworkReply;

struct PLHttpError {
    QString domain;
    int code = 0;
    QString localizedDescription;
};
Q_DECLARE_METATYPE(PLHttpError)

// Where a download's chunks go; a QFile in practice, something else in tests.
class PLOutputStream {
public:
    virtual ~PLOutputStream() = default;
    // Bytes taken (possibly fewer than offered), or -1 on error.
    virtual qint64 write(const char* data, qint64 length) = 0;
    virtual QString errorString() const = 0;
};

// Writes a chunk until the stream has taken as many bytes as it holds. A retry after a
// partial write hands the stream the chunk from its first byte again, limited to the count
// still missing: that is how downloads have always been written, and it is kept. An error
// (or a stream that takes nothing) drops the rest of the chunk and is logged.
void writeChunkToStream(PLOutputStream& stream, const QByteArray& chunk);

// One HTTP request at a time for a delegate. The outcome goes to the delegate's methods named
// by didFinishSelector (default "httpClientSuccessed(PLHttpClient*,QByteArray)") and
// didFailSelector (default "httpClientFailed(PLHttpClient*,PLHttpError)"), and only when the
// delegate has such a method. Any final status but 200 is a failure unless
// isForceHandleStatusCode is off; only the redirects the transport follows are passed over. The
// delegate is not owned; a delegate that goes away is simply not called.
class PLHttpClient : public QObject {
    Q_OBJECT
public:
    enum RequestMethod { None = 0, Get = 1, Put = 2, Post = 3, Delete = 4 };
    struct TimeStamp {
        std::int64_t seconds = 0;
        std::int32_t microseconds = 0;
    };
    static constexpr char kErrorDomain[] = "PLHttpClientErrorDomain";
    static constexpr char kTransportErrorDomain[] = "QNetworkReplyErrorDomain";
    static constexpr int kTimeoutMs = 30000;
    // The bound of a body kept in memory: room for any answer of the services we talk to.
    static constexpr qint64 kMaxResponseBytes = 4 * 1024 * 1024;

    explicit PLHttpClient(QObject* delegate = nullptr, QNetworkAccessManager* manager = nullptr,
                          QObject* parent = nullptr);
    ~PLHttpClient() override;

    void get(const QUrl& url);
    void get(const QUrl& url, const QVariantMap& userInfo);
    void post(const QUrl& url, const QString& body);
    void put(const QUrl& url, const QString& body);
    void deleteRequest(const QUrl& url);
    void postForm(const QUrl& url, const QVariantMap& params, const QString& fileName,
                  const QByteArray& fileData);
    // Called with the prepared request just before the transfer is made; for subclasses.
    virtual void willRequest(QNetworkRequest& request);

    void start();
    void cancel();
    void cleanBeforeRelease();

    QString stringValue() const;
    QByteArray responseHeaderForKey(const QByteArray& name) const;
    double requestTimeCosted() const;

    static void setGlobalEncoding(std::uint64_t encoding);
    static std::uint64_t globalEncoding();
    // Blocking GETs (see BlockingGet.h): null on any transport failure.
    static QString syncGet(const QUrl& url);
    static std::optional<QByteArray> simpleSyncGet(const QString& url);

    QVariantMap userInfo() const { return m_userInfo; }
    void setUserInfo(const QVariantMap& info) { m_userInfo = info; }
    QUrl url() const { return m_url; }
    QObject* delegate() const { return m_delegate; }
    void setDelegate(QObject* delegate) { m_delegate = delegate; }
    QByteArray didFinishSelector() const { return m_didFinishSelector; }
    void setDidFinishSelector(const QByteArray& s) { m_didFinishSelector = s; }
    QByteArray didFailSelector() const { return m_didFailSelector; }
    void setDidFailSelector(const QByteArray& s) { m_didFailSelector = s; }
    bool enableGzipEncoding() const { return m_enableGzipEncoding; }
    void setEnableGzipEncoding(bool on) { m_enableGzipEncoding = on; }
    bool startImmediately() const { return m_startImmediately; }
    void setStartImmediately(bool on) { m_startImmediately = on; }
    bool isForceHandleStatusCode() const { return m_isForceHandleStatusCode; }
    void setIsForceHandleStatusCode(bool on) { m_isForceHandleStatusCode = on; }
    QString downloadDestinationPath() const { return m_downloadDestinationPath; }
    void setDownloadDestinationPath(const QString& path) { m_downloadDestinationPath = path; }
    // 30 s without any progress unless changed.
    int requestTimeout() const { return m_timeoutMs; }
    void setRequestTimeout(int ms) { m_timeoutMs = ms; }
    // A body kept in memory that announces or reaches more fails at once (transport domain,
    // QNetworkReply::UnknownContentError). Negative: no bound. Downloads to a file are not
    // bounded.
    qint64 maxResponseBytes() const { return m_maxResponseBytes; }
    void setMaxResponseBytes(qint64 bytes) { m_maxResponseBytes = bytes; }
    int statusCode() const { return m_statusCode; }
    int requestMethod() const { return m_requestMethod; }
    bool isLoading() const { return m_isLoading; }
    bool hasReceivedData() const { return m_receivedData.has_value(); }
    TimeStamp startedAt() const { return m_t1; }
    TimeStamp endedAt() const { return m_t2; }

private:
    void clean();
    void request(RequestMethod method, const QUrl& url, const QByteArray& verb,
                 const QByteArray& body, const QByteArray& contentType,
                 const QVariantMap& userInfo = {});
    void beginLoading();
    void send();
    void onMetaData();
    void onReadyRead();
    void onFinished();
    void fail(const PLHttpError& error);
    void failWithStatus(int code);
    void failTooLarge();
    bool bodyIsBounded() const;
    int replyStatus() const;
    void stopBookkeeping();
    void dropConnection();
    static TimeStamp now();

    QNetworkAccessManager* m_manager;
    std::function<QNetworkReply*()> m_pendingSend; // a transfer made but not yet started
    QPointer<QNetworkReply> m_connection;
    std::optional<QByteArray> m_receivedData = QByteArray();
    QUrl m_url;
    QList<QPair<QByteArray, QByteArray>> m_responseHeaders; // of the last response
    QByteArray m_didFinishSelector = "httpClientSuccessed(PLHttpClient*,QByteArray)";
    QByteArray m_didFailSelector = "httpClientFailed(PLHttpClient*,PLHttpError)";
    QPointer<QObject> m_delegate;
    bool m_startImmediately = true;
    bool m_enableGzipEncoding = false;
    QVariantMap m_userInfo;
    int m_statusCode = 0;
    bool m_isLoading = false;
    bool m_isForceHandleStatusCode = true;
    int m_requestMethod = None;
    std::unique_ptr<QFile> m_fileDownloadStream;
    TimeStamp m_t1;
    TimeStamp m_t2;
    QString m_downloadDestinationPath;
    int m_timeoutMs = kTimeoutMs;
    qint64 m_maxResponseBytes = kMaxResponseBytes;
};
