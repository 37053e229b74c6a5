#pragma once

#include "core/online/LRCListItem.h"

#include <QList>
#include <QString>
#include <QUrl>

#include <cstdint>

// The online lyric server's protocol: search and download addresses, the download's request
// code, and the XML answers. All plain functions; the host comes from ServiceAddresses.
class QQFetchHelper {
public:
    static QUrl urlForLRCsearching(const QString& artist, const QString& title,
                                   const QString& host);
    static QUrl urlForLRCfetching(std::int64_t id, const QString& artist, const QString& title,
                                  const QString& host);
    static std::int64_t encryptedCodeFromID(std::int64_t id, const QString& artist,
                                            const QString& title);
    // Every <lrc> element at any depth, in document order; empty (never failing) for anything
    // that does not parse. error receives the parser's reason.
    static QList<LRCListItem> lrcListItemsFromXML(const QByteArray& xml, const QString& host,
                                                  QString* error = nullptr);

    // Artwork query: artist, title and album as Base64 of UTF-8, put into the address as is.
    // An invalid URL results when a text is long enough for its Base64 to break a line.
    static QUrl urlForArtworkSearching(const QString& artist, const QString& title,
                                       const QString& album, int type, const QString& host);
    static QUrl urlForArtWorkSearchingOfArtist(const QString& artist, const QString& host);
    static QUrl firstUrlForArtWorkFromXML(const QByteArray& xml, QString* error = nullptr);
};

// UTF-16 little-endian bytes as upper-case hexadecimal: "ab" -> "61006200". Null stays null.
QString Base16Encoded(const QString& text);
// UTF-8 bytes as Base64 in lines of 64 characters separated by CR LF.
QString base64Encrypted(const QString& text);
