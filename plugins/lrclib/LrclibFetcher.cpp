#include "LrclibFetcher.h"

#include "LrclibAnswer.h"
#include "core/app/LrcFetcherProtocol.h"

#include <QSettings>

#include <cmath>

LrclibFetcher::LrclibFetcher(QObject* parent)
    : QObject(parent)
{
}

void LrclibFetcher::setDelegate(QObject* delegate)
{
    m_delegate = delegate;
}

QUrl LrclibFetcher::baseUrl()
{
    // The application's settings file; read directly, the plug-in keeps no settings of its own.
    const QSettings settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("morvane"),
                             QStringLiteral("Versewick"));
    const QString stored = settings.value(QLatin1String(kUrlKey)).toString().trimmed();
    return QUrl(stored.isEmpty() ? QString::fromLatin1(kDefaultUrl) : stored);
}

QUrl LrclibFetcher::requestUrl(const QUrl& base, const QString& artist, const QString& song,
                               const QString& album, double duration)
{
    const bool exact = !album.trimmed().isEmpty() && std::isfinite(duration) && duration > 0;
    QList<std::pair<const char*, QString>> parameters{{"track_name", song},
                                                      {"artist_name", artist}};
    if (exact) {
        parameters.append({"album_name", album});
        parameters.append({"duration", QString::number(std::llround(duration))});
    }
    // Every value fully percent-encoded: "+", "&" and "=" in names must reach the service.
    QByteArray query;
    for (const auto& [name, value] : parameters) {
        if (!query.isEmpty())
            query += '&';
        query += QByteArray(name) + '=' + QUrl::toPercentEncoding(value);
    }
    QUrl url = base;
    QString path = base.path();
    while (path.endsWith(u'/'))
        path.chop(1);
    url.setPath(path + (exact ? QStringLiteral("/api/get") : QStringLiteral("/api/search")));
    url.setQuery(QString::fromLatin1(query), QUrl::StrictMode);
    return url;
}

void LrclibFetcher::lyricsListForArtist(const QString& artist, const QString& song)
{
    lyricsListForArtist(artist, song, QString(), 0);
}

void LrclibFetcher::lyricsListForArtist(const QString& artist, const QString& song,
                                        const QString& album, double duration)
{
    const QUrl url = requestUrl(baseUrl(), artist, song, album, duration);
    m_http.get(url, [this, artist, song, duration](const PluginHttpGet::Outcome& outcome) {
        if (!outcome.answered) {
            lrcfetcher::sendListFetchFailed(m_delegate, outcome.error);
            return;
        }
        if (outcome.status != 200) {
            lrcfetcher::sendListFetchFailed(
                m_delegate, QStringLiteral("LRCLIB answered status %1").arg(outcome.status));
            return;
        }
        const auto items = lrclib::resultItems(outcome.body, artist, song, duration);
        if (!items)
            lrcfetcher::sendListFetchFailed(m_delegate,
                                            QStringLiteral("LRCLIB's answer is not valid JSON"));
        else
            lrcfetcher::sendListFetched(m_delegate, *items);
    });
}

void LrclibFetcher::lyricsContents(const QVariant& item)
{
    // The text came with the search; it is still handed over from the event loop.
    QMetaObject::invokeMethod(
        this,
        [this, item] {
            const QString text = item.toMap().value(QStringLiteral("syncedLyrics")).toString();
            if (text.trimmed().isEmpty())
                lrcfetcher::sendContentFetchFailed(m_delegate,
                                                   QStringLiteral("the item has no synced lyrics"));
            else
                lrcfetcher::sendContentFetched(m_delegate, text, item);
        },
        Qt::QueuedConnection);
}
