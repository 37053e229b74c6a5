#include "core/lyric/LrcLineScanner.h"

#include "core/lyric/LrcPatterns.h"

#include <algorithm>
#include <cstring>

namespace lrc {
namespace {

bool isBracket(char16_t c)
{
    return c == u'[' || c == u']';
}

// The end of "\[\d++:\d++\.?+\d*+\]" when it matches at s[at] (a "["), or -1. Possessive
// quantifiers match exactly the texts of the greedy ones here (after a maximal digit run the
// next character is not a digit, so giving digits back can never help), without the
// quadratic backtracking of the greedy form on long unclosed digit runs.
qsizetype tagEndAt(const char16_t* s, qsizetype n, qsizetype at)
{
    qsizetype i = at + 1;
    qsizetype next = digitRunEnd(s, n, i);
    if (next == i || next >= n || s[next] != u':')
        return -1;
    i = next + 1;
    next = digitRunEnd(s, n, i);
    if (next == i)
        return -1;
    i = next;
    if (i < n && s[i] == u'.')
        ++i;
    i = digitRunEnd(s, n, i);
    return i < n && s[i] == u']' ? i + 1 : -1;
}

struct Span {
    qsizetype start = -1;
    qsizetype end = -1;
};

// The leftmost tag in s[from, n). Each failed attempt reads only digits and separators, so
// the search reads every character at most twice.
Span findTag(const char16_t* s, qsizetype n, qsizetype from)
{
    for (qsizetype i = from; i < n; ++i) {
        const char16_t* open = std::find(s + i, s + n, u'[');
        if (open == s + n)
            break;
        i = open - s;
        const qsizetype end = tagEndAt(s, n, i);
        if (end >= 0)
            return {i, end};
    }
    return {};
}

} // namespace

qsizetype LrcLineScanner::scanLine(QStringView text, qsizetype from)
{
    // Most lines are tags at the very start and then text without a bracket. For those the
    // leftmost match is always the next tag, no text is kept between cuts, the tags are read
    // where they stand, and the content starts after the last one (the greedy ".+" stops at
    // the last "]" of the line, and tags hold no line terminator).
    m_tags.clear();
    const auto* s = reinterpret_cast<const char16_t*>(text.utf16());
    const qsizetype n = text.size();
    qsizetype i = from;
    while (i < n && s[i] == u'[') {
        // A tag holds no line feed, so matching against the rest of the text is matching
        // against the rest of the line.
        const qsizetype end = tagEndAt(s, n, i);
        if (end < 0)
            break;
        m_tags.emplace_back(s + i, end - i);
        i = end;
    }
    const qsizetype textStart = i;
    bool bracket = false;
    for (; i < n && s[i] != u'\n'; ++i) {
        // "[" and "]" are below "^"; most of a line's text is above.
        if (s[i] <= u']' && (s[i] == u'[' || s[i] == u']'))
            bracket = true;
    }
    if (!bracket) {
        m_contentStart = m_tags.empty() ? -1 : textStart;
        return i;
    }
    const QStringView line = text.mid(from, i - from);
    scan(line);
    if (m_contentStart >= 0)
        m_contentStart += from;
    return i;
}

void LrcLineScanner::scan(QStringView line)
{
    scanTags(line);
    m_contentStart = m_tags.empty() ? -1 : lrc::contentStart(line);
}

void LrcLineScanner::scanTags(QStringView line)
{
    m_tags.clear();
    m_tagText.clear();
    m_tagEnds.clear();
    const qsizetype n = line.size();
    // A tag needs both brackets; most lines of a document have neither after their tags.
    if (!line.contains(u']'))
        return;

    m_buffer.assign(reinterpret_cast<const char16_t*>(line.utf16()), std::size_t(n));
    m_brackets.clear();
    char16_t* buf = m_buffer.data();
    qsizetype w = 0;
    qsizetype r = 0;
    while (r < n) {
        qsizetype from = r;
        // Only from a last "[" of the kept text can a tag run on into the unsearched text,
        // and only if the next bracket there is "]": then that tail of the kept text goes
        // back in front of the unsearched text and is searched again.
        if (!m_brackets.empty() && buf[m_brackets.back()] == u'[') {
            const char16_t* bracket = std::find_if(buf + r, buf + n, isBracket);
            if (bracket != buf + n && *bracket == u']') {
                const qsizetype tail = m_brackets.back();
                const qsizetype tailLength = w - tail;
                std::memmove(buf + r - tailLength, buf + tail,
                             std::size_t(tailLength) * sizeof(char16_t));
                m_brackets.pop_back();
                w = tail;
                from = r - tailLength;
            }
        }
        const Span tag = findTag(buf, n, from);
        if (tag.start < 0)
            break;
        // Views are taken once all tags are in, m_tagText having stopped moving.
        m_tagText.append(buf + tag.start, std::size_t(tag.end - tag.start));
        m_tagEnds.push_back(qsizetype(m_tagText.size()));

        for (qsizetype i = from; i < tag.start; ++i) {
            if (isBracket(buf[i]))
                m_brackets.push_back(w + (i - from));
        }
        if (tag.start > from && w != from)
            std::memmove(buf + w, buf + from, std::size_t(tag.start - from) * sizeof(char16_t));
        w += tag.start - from;
        r = tag.end;
    }
    qsizetype start = 0;
    for (const qsizetype end : m_tagEnds) {
        m_tags.emplace_back(m_tagText.data() + start, end - start);
        start = end;
    }
}

} // namespace lrc
