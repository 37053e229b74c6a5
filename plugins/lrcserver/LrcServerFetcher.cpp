#include "LrcServerFetcher.h"

#include "LyricServerProtocol.h"
#include "core/app/LrcFetcherProtocol.h"

LrcServerFetcher::LrcServerFetcher(QObject* parent)
    : QObject(parent)
{
}

void LrcServerFetcher::setDelegate(QObject* delegate)
{
    m_delegate = delegate;
}

void LrcServerFetcher::lyricsListForArtist(const QString& artist, const QString& song)
{
    const QString host = lyricserver::host();
    m_http.get(lyricserver::searchUrl(artist, song, host),
               [this, host](const PluginHttpGet::Outcome& outcome) {
                   if (!outcome.answered) {
                       lrcfetcher::sendListFetchFailed(m_delegate, outcome.error);
                       return;
                   }
                   // Whatever the server answered: an answer without results is an empty
                   // list, as the protocol has it.
                   lrcfetcher::sendListFetched(m_delegate,
                                               lyricserver::searchResults(outcome.body, host));
               });
}

void LrcServerFetcher::lyricsContents(const QVariant& item)
{
    const QUrl url = lyricserver::lyricUrl(item.toMap(), lyricserver::host());
    m_http.get(url, [this, item](const PluginHttpGet::Outcome& outcome) {
        if (!outcome.answered) {
            lrcfetcher::sendContentFetchFailed(m_delegate, outcome.error);
            return;
        }
        const auto text = lyricserver::lyricText(outcome.body);
        if (outcome.status != 200 || !text || text->trimmed().isEmpty()) {
            lrcfetcher::sendContentFetchFailed(
                m_delegate, QStringLiteral("the lyric server gave no lyric text (status %1)")
                                .arg(outcome.status));
            return;
        }
        lrcfetcher::sendContentFetched(m_delegate, *text, item);
    });
}
