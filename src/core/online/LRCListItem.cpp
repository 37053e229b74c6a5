#include "core/online/LRCListItem.h"

#include "core/lyric/LrcPatterns.h"
#include "core/online/QQFetchHelper.h"

LRCListItem::LRCListItem(QString artist, QString title, QString id, QString host)
    : m_artist(std::move(artist))
    , m_title(std::move(title))
    , m_id(std::move(id))
    , m_host(std::move(host))
{
}

std::int64_t LRCListItem::uid() const
{
    return lrc::readInt32(m_id);
}

QUrl LRCListItem::fileURL() const
{
    return QQFetchHelper::urlForLRCfetching(uid(), m_artist, m_title, m_host);
}
