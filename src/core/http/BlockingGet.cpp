#include "core/http/BlockingGet.h"

#include <QDeadlineTimer>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSemaphore>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <memory>

namespace http {
namespace {

// Qt reads the socket only as fast as the transfer takes the bytes, so an answer past its
// bound never piles up inside Qt either.
constexpr qint64 kReadBufferBytes = 64 * 1024;

struct Outcome {
    QSemaphore done;
    std::atomic<bool> abandoned{false}; // the caller stopped waiting
    std::optional<QByteArray> body;     // written before done is released
    BlockingFailure failure = BlockingFailure::None;
    int status = 0;
};

// One transfer on the worker thread: it settles once, with the body or a failure, and then
// aborts whatever is still running.
class Transfer : public QObject {
public:
    Transfer(QNetworkReply* reply, qint64 maxBytes, std::shared_ptr<Outcome> outcome,
             const QDeadlineTimer& deadline)
        : QObject(reply)
        , m_reply(reply)
        , m_maxBytes(maxBytes)
        , m_outcome(std::move(outcome))
    {
        reply->setReadBufferSize(kReadBufferBytes);
        connect(reply, &QNetworkReply::metaDataChanged, this, &Transfer::onMetaData);
        connect(reply, &QIODevice::readyRead, this, &Transfer::onReadyRead);
        connect(reply, &QNetworkReply::finished, this, &Transfer::onFinished);
        m_timer.setSingleShot(true);
        connect(&m_timer, &QTimer::timeout, this, [this] { settle(BlockingFailure::TimedOut); });
        m_timer.start(std::chrono::milliseconds(deadline.remainingTime()));
    }

private:
    void onMetaData()
    {
        const QVariant length = m_reply->header(QNetworkRequest::ContentLengthHeader);
        if (length.isValid() && length.toLongLong() > m_maxBytes)
            settle(BlockingFailure::TooLarge);
    }

    void onReadyRead()
    {
        if (m_settled)
            return;
        m_body += m_reply->read(m_maxBytes + 1 - m_body.size());
        if (m_body.size() > m_maxBytes)
            settle(BlockingFailure::TooLarge);
    }

    void onFinished()
    {
        onReadyRead();
        if (m_settled)
            return;
        const QNetworkReply::NetworkError error = m_reply->error();
        const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        m_outcome->status = status;
        // Only a 2xx final answer is an answer. The redirects the transport follows never come
        // here; any other 3xx (300, 304) is final and fails like a 404, and so does a redirect
        // the transport could not follow.
        const bool answered =
            error == QNetworkReply::NoError || error > QNetworkReply::UnknownProxyError;
        if (error == QNetworkReply::NoError && (status == 0 || status / 100 == 2))
            settle(BlockingFailure::None);
        else if (status > 0 && answered)
            settle(BlockingFailure::Status);
        else
            settle(error == QNetworkReply::TimeoutError ? BlockingFailure::TimedOut
                                                        : BlockingFailure::Transport);
    }

    void settle(BlockingFailure failure)
    {
        if (m_settled)
            return;
        m_settled = true;
        m_timer.stop();
        if (failure == BlockingFailure::None)
            m_outcome->body = std::move(m_body);
        m_outcome->failure = failure;
        m_body = QByteArray();
        if (m_reply->isRunning())
            m_reply->abort(); // finished() comes again, and is ignored
        m_reply->deleteLater();
        m_outcome->done.release();
    }

    QNetworkReply* m_reply; // owns this
    qint64 m_maxBytes;
    std::shared_ptr<Outcome> m_outcome;
    QTimer m_timer;
    QByteArray m_body;
    bool m_settled = false;
};

// A thread with its own event loop and network manager, alive until the process ends.
class Worker {
public:
    Worker()
    {
        m_thread.setObjectName(QStringLiteral("versewick-blocking-http"));
        m_thread.start();
        m_context = new QObject;
        m_context->moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::finished, m_context, &QObject::deleteLater);
    }
    ~Worker()
    {
        m_thread.quit();
        m_thread.wait();
    }

    void get(const QUrl& url, QDeadlineTimer deadline, qint64 maxBytes,
             std::shared_ptr<Outcome> outcome)
    {
        QMetaObject::invokeMethod(m_context, [this, url, deadline, maxBytes, outcome] {
            if (outcome->abandoned)
                return; // the caller gave up before this thread came to it
            if (!m_manager)
                m_manager = new QNetworkAccessManager(m_context);
            new Transfer(m_manager->get(QNetworkRequest(url)), maxBytes, outcome, deadline);
        });
    }

private:
    QThread m_thread;
    QObject* m_context = nullptr;               // lives on m_thread
    QNetworkAccessManager* m_manager = nullptr; // child of m_context
};

Worker& worker()
{
    static Worker instance;
    return instance;
}

} // namespace

BlockingAnswer blockingFetch(const QUrl& url, int timeoutMs, qint64 maxBytes)
{
    const QString scheme = url.scheme();
    if (!url.isValid() || (scheme != QLatin1String("http") && scheme != QLatin1String("https")))
        return {std::nullopt, BlockingFailure::InvalidUrl};
    const QDeadlineTimer deadline(std::max(timeoutMs, 0));
    auto outcome = std::make_shared<Outcome>();
    worker().get(url, deadline, std::max<qint64>(maxBytes, 0), outcome);
    // The worker aborts the transfer at the same deadline; waiting no longer than it also
    // covers a worker that is late to start.
    if (!outcome->done.tryAcquire(1, int(deadline.remainingTime()))) {
        outcome->abandoned = true;
        if (!outcome->done.tryAcquire(1, 0))
            return {std::nullopt, BlockingFailure::TimedOut};
    }
    return {outcome->body, outcome->failure, outcome->status};
}

std::optional<QByteArray> blockingGet(const QUrl& url, int timeoutMs, qint64 maxBytes)
{
    return blockingFetch(url, timeoutMs, maxBytes).body;
}

} // namespace http
