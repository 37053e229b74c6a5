#include "core/lyric/WordTags.h"

#include <cmath>

namespace lrc {
namespace {

// A tag longer than this is text: no real time needs it, and the reading stays bounded.
constexpr qsizetype kMaxTagLength = 24;

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// The end of a word tag at s[at] (a "<") and its time, or -1.
qsizetype readTag(QStringView s, qsizetype at, float& seconds)
{
    const qsizetype limit = std::min(s.size(), at + kMaxTagLength);
    qsizetype i = at + 1;
    double minutes = 0;
    const qsizetype minuteStart = i;
    for (; i < limit && isAsciiDigit(s[i]); ++i)
        minutes = minutes * 10 + (s[i].unicode() - u'0');
    if (i == minuteStart || i >= limit || s[i] != u':')
        return -1;
    const qsizetype secondStart = ++i;
    double whole = 0;
    for (; i < limit && isAsciiDigit(s[i]); ++i)
        whole = whole * 10 + (s[i].unicode() - u'0');
    if (i == secondStart)
        return -1;
    double fraction = 0;
    if (i < limit && s[i] == u'.') {
        double scale = 0.1;
        for (++i; i < limit && isAsciiDigit(s[i]); ++i, scale /= 10)
            fraction += (s[i].unicode() - u'0') * scale;
    }
    if (i >= limit || s[i] != u'>')
        return -1;
    seconds = float(minutes * 60 + whole + fraction);
    return i + 1;
}

} // namespace

std::optional<WordTaggedText> readWordTags(QStringView text)
{
    std::optional<WordTaggedText> result;
    qsizetype copied = 0; // text[0, copied) is in result->text or was a tag
    for (qsizetype at = text.indexOf(u'<'); at >= 0; at = text.indexOf(u'<', at + 1)) {
        float start = 0;
        const qsizetype end = readTag(text, at, start);
        if (end < 0)
            continue;
        if (!result) {
            result.emplace();
            result->text.reserve(text.size());
        }
        result->text.append(text.mid(copied, at - copied));
        copied = end;
        auto& words = result->timing.words;
        const qsizetype position = result->text.size();
        if (words.empty() && position > 0) // untagged text before the first tag
            words.push_back({0, std::numeric_limits<float>::quiet_NaN()});
        if (!words.empty() && words.back().position == position)
            words.pop_back(); // no text since the last tag: this one replaces it
        if (!words.empty() && !(start >= words.back().start))
            start = std::isnan(words.back().start) ? start : words.back().start;
        words.push_back({position, start});
        at = end - 1;
    }
    if (!result)
        return result;
    result->text.append(text.mid(copied));
    auto& words = result->timing.words;
    // A last tag with nothing (or only blanks) after it closes the last word.
    if (!words.empty() && result->text.mid(words.back().position).trimmed().isEmpty()) {
        result->timing.end = words.back().start;
        words.pop_back();
    }
    return result;
}

} // namespace lrc
