#include "http/BlockingGet.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSemaphore>
#include <QThread>
#include <QTimer>

#include <memory>
#include <mutex>

namespace http {
namespace {

struct Outcome {
    QSemaphore done;
    std::optional<QByteArray> body;
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

    void get(const QUrl& url, int timeoutMs, std::shared_ptr<Outcome> outcome)
    {
        QMetaObject::invokeMethod(m_context, [this, url, timeoutMs, outcome] {
            if (!m_manager)
                m_manager = new QNetworkAccessManager(m_context);
            QNetworkRequest request(url);
            request.setTransferTimeout(timeoutMs);
            QNetworkReply* reply = m_manager->get(request);
            // Replies are touched on this thread only; finished() comes exactly once, also
            // after an abort.
            QObject::connect(reply, &QNetworkReply::finished, reply, [reply, outcome] {
                const bool answered =
                    reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid() &&
                    reply->error() > QNetworkReply::UnknownProxyError;
                if (reply->error() == QNetworkReply::NoError || answered)
                    outcome->body = reply->readAll();
                reply->deleteLater();
                outcome->done.release();
            });
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

std::optional<QByteArray> blockingGet(const QUrl& url, int timeoutMs)
{
    if (!url.isValid())
        return std::nullopt;
    auto outcome = std::make_shared<Outcome>();
    worker().get(url, timeoutMs, outcome);
    // The worker enforces the limit; the margin only guards against a wedged worker.
    if (!outcome->done.tryAcquire(1, timeoutMs + 5000))
        return std::nullopt;
    return outcome->body;
}

} // namespace http
