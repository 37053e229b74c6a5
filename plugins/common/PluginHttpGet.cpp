#include "PluginHttpGet.h"

#include <QNetworkReply>
#include <QNetworkRequest>

#include <utility>

PluginHttpGet::PluginHttpGet(QObject* parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (!m_reply)
            return;
        m_timedOut = true;
        m_reply->abort(); // finished() follows at once
    });
}

PluginHttpGet::~PluginHttpGet()
{
    cancel();
}

QByteArray PluginHttpGet::userAgent()
{
    return QByteArrayLiteral("Versewick/" VERSEWICK_BUILD_VERSION " (https://versewick.net)");
}

void PluginHttpGet::cancel()
{
    ++m_ticket;
    m_timer.stop();
    m_done = nullptr;
    if (QNetworkReply* reply = m_reply) {
        m_reply = nullptr; // its finished() is ignored now
        reply->abort();
        reply->deleteLater();
    }
}

void PluginHttpGet::get(const QUrl& url, Done done)
{
    cancel();
    m_done = std::move(done);
    m_timedOut = false;
    m_tooLarge = false;
    const QString scheme = url.scheme();
    if (!url.isValid() || (scheme != QLatin1String("http") && scheme != QLatin1String("https"))) {
        const quint64 ticket = m_ticket;
        QMetaObject::invokeMethod(
            this,
            [this, ticket] {
                if (ticket == m_ticket)
                    finish({false, 0, {}, QStringLiteral("invalid address")});
            },
            Qt::QueuedConnection);
        return;
    }
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::UserAgentHeader, userAgent());
    QNetworkReply* reply = m_manager.get(request);
    m_reply = reply;
    connect(reply, &QNetworkReply::downloadProgress, this,
            [this, reply](qint64 received, qint64 total) {
                if (reply != m_reply || (received <= kMaxBodyBytes && total <= kMaxBodyBytes))
                    return;
                m_tooLarge = true;
                reply->abort();
            });
    connect(reply, &QNetworkReply::finished, this, [this, reply] { onFinished(reply); });
    m_timer.start(m_timeoutMs);
}

void PluginHttpGet::onFinished(QNetworkReply* reply)
{
    reply->deleteLater();
    if (reply != m_reply)
        return;
    m_reply = nullptr;
    m_timer.stop();
    Outcome outcome;
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    // An HTTP error status is still an answer; transport errors come before those codes.
    const bool answered = reply->error() == QNetworkReply::NoError ||
                          (status.isValid() && reply->error() > QNetworkReply::UnknownProxyError);
    if (m_timedOut)
        outcome.error = QStringLiteral("no answer within %1 ms").arg(m_timeoutMs);
    else if (m_tooLarge)
        outcome.error = QStringLiteral("the answer is larger than %1 bytes").arg(kMaxBodyBytes);
    else if (!answered)
        outcome.error = reply->errorString();
    else {
        outcome.answered = true;
        outcome.status = status.toInt();
        outcome.body = reply->read(kMaxBodyBytes + 1);
        if (outcome.body.size() > kMaxBodyBytes) {
            outcome = {};
            outcome.error = QStringLiteral("the answer is larger than %1 bytes").arg(kMaxBodyBytes);
        }
    }
    finish(outcome);
}

void PluginHttpGet::finish(const Outcome& outcome)
{
    Done done = std::exchange(m_done, nullptr);
    if (done)
        done(outcome);
}
