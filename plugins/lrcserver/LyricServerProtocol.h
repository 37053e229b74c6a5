#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <QVariantList>
#include <QVariantMap>

#include <optional>

// What the lrcserver plug-in needs of the lyric server protocol, in Qt types only: the plug-in
// itself sees no application header but the plug-in contract.
namespace lyricserver {

// The server's host as the settings file names it.
QString host();
QUrl searchUrl(const QString& artist, const QString& song, const QString& host);
// Result items ("artist", "title", "id") read from a search answer; none for a bad answer.
QVariantList searchResults(const QByteArray& answer, const QString& host);
QUrl lyricUrl(const QVariantMap& item, const QString& host);
// The lyric text of a download, when it is UTF-8.
std::optional<QString> lyricText(const QByteArray& answer);

} // namespace lyricserver
