#include "LrcServerFetcher.h"

#include "app/LrcFetcherProtocol.h"
#include "foundation/TextDecoding.h"
#include "online/QQFetchHelper.h"
#include "settings/ServiceAddresses.h"

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
    const QString host = ServiceAddresses().lyricServerHost();
    m_http.get(QQFetchHelper::urlForLRCsearching(artist, song, host),
               [this, host](const PluginHttpGet::Outcome& outcome) {
                   if (!outcome.answered) {
                       lrcfetcher::sendListFetchFailed(m_delegate, outcome.error);
                       return;
                   }
                   // Whatever the server answered: an answer without results is an empty
                   // list, as the protocol has it.
                   QVariantList items;
                   for (const LRCListItem& result :
                        QQFetchHelper::lrcListItemsFromXML(outcome.body, host)) {
                       items.append(QVariantMap{{QStringLiteral("artist"), result.artist()},
                                                {QStringLiteral("title"), result.title()},
                                                {QStringLiteral("id"), qint64(result.uid())}});
                   }
                   lrcfetcher::sendListFetched(m_delegate, items);
               });
}

void LrcServerFetcher::lyricsContents(const QVariant& item)
{
    const QVariantMap fields = item.toMap();
    const QUrl url = QQFetchHelper::urlForLRCfetching(
        fields.value(QStringLiteral("id")).toLongLong(),
        fields.value(QStringLiteral("artist")).toString(),
        fields.value(QStringLiteral("title")).toString(), ServiceAddresses().lyricServerHost());
    m_http.get(url, [this, item](const PluginHttpGet::Outcome& outcome) {
        if (!outcome.answered) {
            lrcfetcher::sendContentFetchFailed(m_delegate, outcome.error);
            return;
        }
        const auto text = foundation::decodeText(outcome.body, foundation::kUTF8Encoding);
        if (outcome.status != 200 || !text || text->trimmed().isEmpty()) {
            lrcfetcher::sendContentFetchFailed(
                m_delegate, QStringLiteral("the lyric server gave no lyric text (status %1)")
                                .arg(outcome.status));
            return;
        }
        lrcfetcher::sendContentFetched(m_delegate, *text, item);
    });
}
