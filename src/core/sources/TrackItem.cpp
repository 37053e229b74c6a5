#include "core/sources/TrackItem.h"

QString TrackItem::album() const
{
    std::lock_guard lock(m_mutex);
    return m_album;
}

QString TrackItem::artist() const
{
    std::lock_guard lock(m_mutex);
    return m_artist;
}

QString TrackItem::title() const
{
    std::lock_guard lock(m_mutex);
    return m_title;
}

void TrackItem::setAlbum(const QString& album)
{
    std::lock_guard lock(m_mutex);
    m_album = album;
}

void TrackItem::setArtist(const QString& artist)
{
    std::lock_guard lock(m_mutex);
    m_artist = artist;
}

void TrackItem::setTitle(const QString& title)
{
    std::lock_guard lock(m_mutex);
    m_title = title;
}
