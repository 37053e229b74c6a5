#include "LyricServerProtocol.h"

#include "core/foundation/TextDecoding.h"
#include "core/online/QQFetchHelper.h"
#include "core/settings/ServiceAddresses.h"

namespace lyricserver {

QString host()
{
    return ServiceAddresses().lyricServerHost();
}

QUrl searchUrl(const QString& artist, const QString& song, const QString& host)
{
    return QQFetchHelper::urlForLRCsearching(artist, song, host);
}

QVariantList searchResults(const QByteArray& answer, const QString& host)
{
    QVariantList items;
    for (const LRCListItem& result : QQFetchHelper::lrcListItemsFromXML(answer, host)) {
        items.append(QVariantMap{{QStringLiteral("artist"), result.artist()},
                                 {QStringLiteral("title"), result.title()},
                                 {QStringLiteral("id"), qint64(result.uid())}});
    }
    return items;
}

QUrl lyricUrl(const QVariantMap& item, const QString& host)
{
    return QQFetchHelper::urlForLRCfetching(item.value(QStringLiteral("id")).toLongLong(),
                                            item.value(QStringLiteral("artist")).toString(),
                                            item.value(QStringLiteral("title")).toString(), host);
}

std::optional<QString> lyricText(const QByteArray& answer)
{
    return foundation::decodeText(answer, foundation::kUTF8Encoding);
}

} // namespace lyricserver
