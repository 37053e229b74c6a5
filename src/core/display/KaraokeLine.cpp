#include "core/display/KaraokeLine.h"

#include "core/lyric/LRCItem.h"

#include <algorithm>
#include <cmath>

KaraokeLine KaraokeLine::of(const LRCItem* item)
{
    KaraokeLine line;
    if (!item)
        return line;
    line.timing = item->words();
    line.text = item->content();
    line.start = item->startTime();
    line.end = item->endTime();
    return line;
}

double KaraokeLine::wordStart(int word) const
{
    return start + double(timing->words[std::size_t(word)].start);
}

double KaraokeLine::wordEnd(int word) const
{
    if (word + 1 < wordCount())
        return wordStart(word + 1);
    const double begin = wordStart(word);
    if (std::isfinite(timing->end))
        return std::max(begin, start + double(timing->end));
    double longest = 1.0;
    for (int i = 0; i + 1 < wordCount(); ++i)
        longest = std::max(longest, wordStart(i + 1) - wordStart(i));
    return std::max(begin, std::min(end, begin + longest));
}

qsizetype KaraokeLine::wordBegin(int word) const
{
    return std::clamp<qsizetype>(timing->words[std::size_t(word)].position, 0, text.size());
}

qsizetype KaraokeLine::wordFinish(int word) const
{
    return word + 1 < wordCount() ? wordBegin(word + 1) : text.size();
}

namespace karaoke {

KaraokeProgress progressAt(const KaraokeLine& line, double seconds)
{
    KaraokeProgress progress;
    if (!line.isTimed() || std::isnan(seconds))
        return progress;
    // Starts never decrease: the sung word is the last one started.
    const auto& words = line.timing->words;
    const auto after = std::upper_bound(
        words.begin(), words.end(), seconds - line.start,
        [](double t, const lrc::TimedWord& word) { return t < double(word.start); });
    progress.word = int(after - words.begin()) - 1;
    if (progress.word < 0)
        return progress;
    const double begin = line.wordStart(progress.word);
    const double length = line.wordEnd(progress.word) - begin;
    progress.fraction = length > 0 ? std::clamp((seconds - begin) / length, 0.0, 1.0) : 1.0;
    return progress;
}

double lineProgress(const KaraokeLine& line, double seconds)
{
    if (!line.isTimed())
        return -1;
    const KaraokeProgress progress = progressAt(line, seconds);
    if (progress.word < 0)
        return 0;
    const double sung = (progress.word + progress.fraction) / line.wordCount();
    return std::isfinite(sung) ? std::clamp(sung, 0.0, 1.0) : 0.0; // absurd times read as unsung
}

std::vector<QRectF> sungRects(const KaraokeLine& line, double seconds,
                              const std::vector<KaraokeTextLine>& lines, const KaraokeCaret& x)
{
    std::vector<QRectF> rects;
    const KaraokeProgress progress = progressAt(line, seconds);
    if (progress.word < 0 || !x)
        return rects;
    const qsizetype begin = line.wordBegin(progress.word);
    const qsizetype finish = std::max(begin, line.wordFinish(progress.word));
    // The word's width on each wrapped line it reaches.
    std::vector<double> widths(lines.size(), 0.0);
    double total = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const qsizetype from = std::max(lines[i].start, begin);
        const qsizetype to = std::min(lines[i].end, finish);
        if (from < to)
            total += widths[i] = std::abs(x(int(i), to) - x(int(i), from));
    }
    double left = progress.fraction * total; // width of the word still to fill
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const KaraokeTextLine& visual = lines[i];
        double right = visual.box.left();
        if (visual.end <= begin) {
            right = visual.box.right();
        } else if (visual.start < finish) {
            const double fill = std::min(left, widths[i]);
            left -= fill;
            right = x(int(i), std::max(visual.start, begin)) + fill;
        }
        if (right > visual.box.left())
            rects.emplace_back(QPointF(visual.box.left(), visual.box.top()),
                               QPointF(std::min(right, visual.box.right()), visual.box.bottom()));
    }
    return rects;
}

} // namespace karaoke
