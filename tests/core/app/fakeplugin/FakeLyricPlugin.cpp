#include "FakeLyricPlugin.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkReply>
#include <QUrlQuery>

void FakeLrcFetcher::get(const QString& path,
                         const std::function<void(int, const QByteArray&, int)>& done)
{
    QUrl url(qEnvironmentVariable("VERSEWICK_FAKE_PLUGIN_URL") + path);
    QNetworkReply* reply = m_network.get(QNetworkRequest(url));
    connect(reply, &QNetworkReply::finished, this, [reply, done] {
        reply->deleteLater();
        const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        const int times = qMax(1, reply->rawHeader("X-Times").toInt());
        done(status, reply->readAll(), times);
    });
}

void FakeLrcFetcher::lyricsListForArtist(const QString& artist, const QString& song)
{
    lyricsListForArtist(artist, song, QStringLiteral("<two-argument call>"), -1);
}

void FakeLrcFetcher::lyricsListForArtist(const QString& artist, const QString& song,
                                         const QString& album, double duration)
{
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("artist"), artist);
    query.addQueryItem(QStringLiteral("song"), song);
    query.addQueryItem(QStringLiteral("album"), album);
    query.addQueryItem(QStringLiteral("duration"), QString::number(duration));
    get(QStringLiteral("/list?") + query.toString(QUrl::FullyEncoded),
        [this](int status, const QByteArray& body, int times) {
            const QJsonDocument json = QJsonDocument::fromJson(body);
            for (int i = 0; i < times; ++i) {
                if (status != 200 || !json.isObject())
                    lrcfetcher::sendListFetchFailed(m_delegate, QStringLiteral("failed"));
                else
                    lrcfetcher::sendListFetched(
                        m_delegate,
                        json.object().value(QLatin1String("items")).toArray().toVariantList());
            }
        });
}

void FakeLrcFetcher::lyricsContents(const QVariant& item)
{
    const QString id = item.toMap().value(QStringLiteral("id")).toString();
    get(QStringLiteral("/content?id=") + QString::fromLatin1(QUrl::toPercentEncoding(id)),
        [this, item](int status, const QByteArray& body, int times) {
            for (int i = 0; i < times; ++i) {
                if (status != 200)
                    lrcfetcher::sendContentFetchFailed(m_delegate, QStringLiteral("failed"));
                else
                    lrcfetcher::sendContentFetched(m_delegate, QString::fromUtf8(body), item);
            }
        });
}
