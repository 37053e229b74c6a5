#pragma once

#include <QString>
#include <QVariant>
#include <QVariantList>

#include <memory>
#include <optional>

class Lyric;

// Unsynced (plain) lyrics from a plug-in. A result item with "synced" false carries its text in
// "plainLyrics"; an item with "match" false does not fit the song. Items without these keys
// (other plug-ins) are synced matches, as they always were.
namespace plainlyric {

// What the controller takes from a search answer: the first item, which the plug-in ordered
// best first. plain: show its plain text instead of downloading it.
struct Pick {
    QVariant item;
    bool plain = false;
    QString plainText;
};
std::optional<Pick> pickCandidate(const QVariantList& items);

// A document that shows the text's lines with none lit: every line starts after any song ends,
// behind an empty first line, so that the first line is not lit either before it "starts".
// contents() is the plain text.
std::unique_ptr<Lyric> lyricFromPlainText(const QString& text);

} // namespace plainlyric
