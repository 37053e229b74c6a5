#pragma once

#include "LrclibScore.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariantMap>

#include <optional>

// The LRCLIB web API's JSON answers, as pure functions: /api/get answers one track object,
// /api/search an array of them.
namespace lrclib {

struct Record {
    qint64 id = 0;
    QString trackName;
    QString artistName;
    QString albumName;
    double duration = 0; // seconds; 0 when absent
    bool instrumental = false;
    QString plainLyrics;
    QString syncedLyrics; // null when absent or JSON null
};

// Larger answers are refused (a search answer is a few hundred kilobytes at most).
inline constexpr qsizetype kMaxAnswerBytes = 4 * 1024 * 1024;

// The records of an answer, in its order; elements that are not objects are skipped, fields of
// the wrong type read as absent. nullopt when the bytes are not a JSON object or array, or too
// large.
std::optional<QList<Record>> parseAnswer(const QByteArray& json);

// Case- and accent-insensitive form of a name: compatibility decomposition, combining marks
// removed, full case folding ("ß" matches "ss"), blanks trimmed.
QString matchKey(const QString& text);

struct Ranked {
    Record record;
    Score score;
};

// Drops the records without any text (synced or plain) and orders the rest best first (see
// LrclibScore.h); equals keep the answer's order.
QList<Ranked> rankRecords(const QList<Record>& records, const QString& artist, const QString& title,
                          double duration);

// The result item handed to the application: "artist", "title", and our own "album",
// "duration", "id", "syncedLyrics" (the item's text), "synced" (false: no synced text),
// "match" (false: names or duration do not fit the song) and, for an unsynced one,
// "plainLyrics".
QVariantMap itemFromRecord(const Record& record, const Score& score);

// The ranked items of these records.
QVariantList itemsFromRecords(const QList<Record>& records, const QString& artist,
                              const QString& title, double duration);

// The bytes of an answer to the items the plug-in reports; nullopt when malformed.
std::optional<QVariantList> resultItems(const QByteArray& json, const QString& artist,
                                        const QString& title, double duration);

} // namespace lrclib
