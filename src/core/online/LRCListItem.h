#pragma once

#include <QString>
#include <QUrl>

#include <cstdint>

// One search result of the lyric server: the attributes of an <lrc> element.
class LRCListItem {
public:
    LRCListItem(QString artist, QString title, QString id, QString host);

    QString artist() const { return m_artist; } // null when the attribute is absent
    QString title() const { return m_title; }
    // The "id" attribute as a 32-bit integer (0 when absent or not a number), sign-extended.
    std::int64_t uid() const;
    QUrl fileURL() const;

private:
    QString m_artist;
    QString m_title;
    QString m_id;
    QString m_host;
};
