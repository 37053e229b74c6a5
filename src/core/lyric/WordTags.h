#pragma once

#include <QString>
#include <QStringView>

#include <limits>
#include <optional>
#include <vector>

namespace lrc {

// One word of a word-timed line: where it begins in the line's text (word tags removed) and
// when it is sung.
struct TimedWord {
    qsizetype position = 0;
    float start = 0.0f; // seconds; absolute as read, relative to the line's own tag in an item
};

// The words of one line, in text order, their starts never decreasing. `end` is the time of a
// closing tag after the last word ("<00:14.00>" with no text after it), NaN when there is none.
struct WordTiming {
    std::vector<TimedWord> words;
    float end = std::numeric_limits<float>::quiet_NaN();
};

struct WordTaggedText {
    QString text; // the line's text with its word tags cut out
    WordTiming timing;
};

// Reads the enhanced-LRC word tags ("<mm:ss.xx>", ASCII digits, the fraction optional) out of
// a line's text; nullopt when it holds none, the text then being left exactly as it is.
// Text before the first tag is a word sung from the line's start (start NaN). A start earlier
// than the previous word's is raised to it; of tags with no text between them the last one
// counts. Anything that only looks like a tag stays text.
std::optional<WordTaggedText> readWordTags(QStringView text);

} // namespace lrc
