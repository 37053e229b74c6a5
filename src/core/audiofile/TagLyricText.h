#pragma once

#include <QList>
#include <QString>

#include <optional>

// Which texts of an audio file's lyrics tags are lyrics for the displays.
namespace taglyrics {

// One line of a synchronised lyrics frame (ID3v2 SYLT).
struct SyncedLine {
    quint32 milliseconds = 0;
    QString text;
};

// The LRC text a lyrics tag holds: the compressed lyric block decoded, else the tag's own
// text when it has timed lines. Plain text without time tags is not a lyric: nullopt.
std::optional<QString> lrcFromTagText(const QString& text);

// LRC lines "[mm:ss.xx]text", one per synchronised line, in the frame's order. Line breaks
// inside a line's text become spaces. Null when there is no line.
QString lrcFromSyncedLines(const QList<SyncedLine>& lines);

} // namespace taglyrics
