#include "core/publish/LrclibPublisher.h"

#include "core/publish/ProofOfWork.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSettings>
#include <QThread>

namespace {

// The service's own sentence when its answer carries one.
QString serviceMessage(const QByteArray& body)
{
    return QJsonDocument::fromJson(body).object().value(QLatin1String("message")).toString();
}

} // namespace

QUrl LrclibPublisher::configuredUrl()
{
    const QSettings settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("morvane"),
                             QStringLiteral("Versewick"));
    const QString stored = settings.value(QLatin1String(kUrlKey)).toString().trimmed();
    return QUrl(stored.isEmpty() ? QString::fromLatin1(kDefaultUrl) : stored);
}

QByteArray LrclibPublisher::publishBody(const Song& song)
{
    const QJsonObject body{{QStringLiteral("trackName"), song.trackName},
                           {QStringLiteral("artistName"), song.artistName},
                           {QStringLiteral("albumName"), song.albumName},
                           {QStringLiteral("duration"), song.duration},
                           {QStringLiteral("plainLyrics"), song.plainLyrics},
                           {QStringLiteral("syncedLyrics"), song.syncedLyrics}};
    return QJsonDocument(body).toJson(QJsonDocument::Compact);
}

LrclibPublisher::LrclibPublisher(QNetworkAccessManager* network, QObject* parent)
    : QObject(parent)
    , m_network(network)
{
    if (!m_network) {
        m_ownNetwork = std::make_unique<QNetworkAccessManager>();
        m_network = m_ownNetwork.get();
    }
    // A step without an answer is aborted; the reply then finishes with an error.
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] {
        if (m_reply)
            m_reply->abort();
    });
}

LrclibPublisher::~LrclibPublisher()
{
    if (m_reply) {
        m_reply->disconnect(this); // no answer from a publisher going away
        m_reply->abort();
    }
    stopWorker();
}

void LrclibPublisher::start(const QUrl& base, const Song& song)
{
    if (m_running)
        return;
    m_running = true;
    m_base = base;
    m_song = song;
    Q_EMIT progress(Stage::Challenge, 0);
    m_reply = post(QStringLiteral("api/request-challenge"), {}, {});
    connect(m_reply, &QNetworkReply::finished, this, &LrclibPublisher::challengeAnswered);
}

void LrclibPublisher::cancel()
{
    if (!m_running)
        return;
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->abort();
        m_reply->deleteLater();
    }
    stopWorker();
    finish(false, tr("Publishing was cancelled."));
}

QNetworkReply* LrclibPublisher::post(const QString& path, const QByteArray& body,
                                     const QByteArray& token)
{
    QString base = m_base.toString();
    if (!base.endsWith(QLatin1Char('/')))
        base += QLatin1Char('/');
    QNetworkRequest request(QUrl(base + path));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    request.setRawHeader("User-Agent", "Versewick");
    if (!token.isEmpty())
        request.setRawHeader("X-Publish-Token", token);
    m_deadline.start(m_timeoutMs);
    return m_network->post(request, body);
}

void LrclibPublisher::challengeAnswered()
{
    m_deadline.stop();
    QNetworkReply* reply = m_reply;
    reply->deleteLater();
    const QByteArray body = reply->readAll();
    if (reply->error() != QNetworkReply::NoError) {
        finish(false, tr("The service could not be reached (%1).").arg(reply->errorString()));
        return;
    }
    const QJsonObject answer = QJsonDocument::fromJson(body).object();
    const QByteArray prefix = answer.value(QLatin1String("prefix")).toString().toUtf8();
    const auto target = proofofwork::parseTarget(answer.value(QLatin1String("target")).toString());
    if (prefix.isEmpty() || !target) {
        finish(false, tr("The service sent a challenge that cannot be read."));
        return;
    }
    Q_EMIT progress(Stage::Solving, 0);
    // The worker reaches this object only through queued calls (dropped once it is gone), and
    // is waited for before it goes away.
    m_cancel = std::make_shared<std::atomic<bool>>(false);
    auto cancel = m_cancel;
    LrclibPublisher* self = this;
    m_worker.reset(QThread::create([self, prefix, target = *target, cancel] {
        const auto report = [&](std::uint64_t hashes) {
            QMetaObject::invokeMethod(self, [self, hashes] {
                if (self->m_running)
                    Q_EMIT self->progress(Stage::Solving, hashes);
            });
        };
        const auto nonce = proofofwork::solve(prefix, target, *cancel, report);
        QMetaObject::invokeMethod(self, [self, prefix, nonce, cancel] {
            if (!cancel->load())
                self->solved(prefix, nonce);
        });
    }));
    m_worker->start();
}

void LrclibPublisher::solved(const QByteArray& prefix, std::optional<std::uint64_t> nonce)
{
    stopWorker();
    if (!nonce)
        return;
    Q_EMIT progress(Stage::Publishing, *nonce + 1);
    const QByteArray token = prefix + ':' + QByteArray::number(quint64(*nonce));
    m_reply = post(QStringLiteral("api/publish"), publishBody(m_song), token);
    connect(m_reply, &QNetworkReply::finished, this, &LrclibPublisher::publishAnswered);
}

void LrclibPublisher::publishAnswered()
{
    QNetworkReply* reply = m_reply;
    reply->deleteLater();
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QByteArray body = reply->readAll();
    if (status == 201) {
        finish(true, tr("The lyric was published."));
        return;
    }
    const QString said = serviceMessage(body);
    if (status == 0)
        finish(false, tr("The service could not be reached (%1).").arg(reply->errorString()));
    else if (!said.isEmpty())
        finish(false, tr("The service refused the lyric: %1").arg(said));
    else
        finish(false, tr("The service refused the lyric (HTTP %1).").arg(status));
}

void LrclibPublisher::finish(bool ok, const QString& message)
{
    m_deadline.stop();
    if (!m_running)
        return;
    m_running = false;
    m_reply = nullptr;
    Q_EMIT finished(ok, message);
}

void LrclibPublisher::stopWorker()
{
    if (m_cancel)
        m_cancel->store(true);
    if (m_worker) {
        m_worker->wait();
        m_worker.reset();
    }
    m_cancel.reset();
}
