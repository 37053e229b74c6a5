#include "LrclibFetcher.h"

#include "LrclibAnswer.h"
#include "core/app/LrcFetcherProtocol.h"

#include <QSettings>

#include <algorithm>
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
    const bool exact = url.path().endsWith(QLatin1String("/api/get"));
    m_http.get(url, [this, artist, song, duration, exact](const PluginHttpGet::Outcome& outcome) {
        const Query query{artist, song, duration};
        if (!outcome.answered)
            return lrcfetcher::sendListFetchFailed(m_delegate, outcome.error);
        if (exact && outcome.status == 404)
            return search(query, {}); // not under that album and duration: any version
        if (outcome.status != 200)
            return lrcfetcher::sendListFetchFailed(
                m_delegate, QStringLiteral("LRCLIB answered status %1").arg(outcome.status));
        const auto records = lrclib::parseAnswer(outcome.body);
        if (!records)
            return lrcfetcher::sendListFetchFailed(
                m_delegate, QStringLiteral("LRCLIB's answer is not valid JSON"));
        const bool anySynced = std::any_of(records->begin(), records->end(), [](const auto& r) {
            return !r.syncedLyrics.trimmed().isEmpty();
        });
        // The exact track without timing: another version may have it.
        if (exact && !anySynced)
            return search(query, *records);
        answer(query, *records);
    });
}

void LrclibFetcher::search(const Query& query, const QList<lrclib::Record>& found)
{
    const QUrl url = requestUrl(baseUrl(), query.artist, query.song, QString(), 0);
    m_http.get(url, [this, query, found](const PluginHttpGet::Outcome& outcome) {
        const auto records = outcome.answered && outcome.status == 200
                                 ? lrclib::parseAnswer(outcome.body)
                                 : std::nullopt;
        if (records)
            return answer(query, found + *records);
        if (!found.isEmpty())
            return answer(query, found); // the search failed, the plain text stands
        lrcfetcher::sendListFetchFailed(
            m_delegate, !outcome.answered ? outcome.error
                        : outcome.status != 200
                            ? QStringLiteral("LRCLIB answered status %1").arg(outcome.status)
                            : QStringLiteral("LRCLIB's answer is not valid JSON"));
    });
}

void LrclibFetcher::answer(const Query& query, const QList<lrclib::Record>& records)
{
    lrcfetcher::sendListFetched(
        m_delegate, lrclib::itemsFromRecords(records, query.artist, query.song, query.duration));
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
