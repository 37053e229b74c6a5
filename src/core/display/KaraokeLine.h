#pragma once

#include "core/lyric/WordTags.h"

#include <QRectF>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

class LRCItem;

// The lit line's words and when each is sung, and from that which part of the line's text is
// sung at a play time: the arithmetic behind the karaoke fill, without any drawing.
struct KaraokeLine {
    std::shared_ptr<const lrc::WordTiming> timing; // null: the line has no word timing
    QString text;
    double start = 0; // the line's start, offset included
    double end = 0;   // the next line's start

    // The item's line; an untimed line for null.
    static KaraokeLine of(const LRCItem* item);
    bool isTimed() const { return timing && !timing->words.empty(); }
    int wordCount() const { return isTimed() ? int(timing->words.size()) : 0; }
    double wordStart(int word) const;
    // The next word's start; the last word ends at the closing tag, else at the line's end
    // but never more than the line's longest word (or a second) after its start.
    double wordEnd(int word) const;
    // Where the word's text begins and ends in `text`.
    qsizetype wordBegin(int word) const;
    qsizetype wordFinish(int word) const;
};

struct KaraokeProgress {
    int word = -1;       // the word being sung; -1 before the first
    double fraction = 0; // of that word, 0 to 1
};

// One wrapped line of the drawn text: the characters [start, end) of the line's text, and its
// box. A caret gives the x of the place before character `index` on visual line `line`.
struct KaraokeTextLine {
    qsizetype start = 0;
    qsizetype end = 0;
    QRectF box;
};
using KaraokeCaret = std::function<double(int line, qsizetype index)>;

namespace karaoke {
KaraokeProgress progressAt(const KaraokeLine& line, double seconds);
// The sung fraction of the line's words, 0 to 1; -1 for a line without word timing.
double lineProgress(const KaraokeLine& line, double seconds);
// The parts of the laid-out text that are sung: whole wrapped lines before the sung word,
// and the word's own part filled in proportion to its sung fraction (spread over the lines
// it is broken across). Empty before the first word.
std::vector<QRectF> sungRects(const KaraokeLine& line, double seconds,
                              const std::vector<KaraokeTextLine>& lines, const KaraokeCaret& x);
} // namespace karaoke
