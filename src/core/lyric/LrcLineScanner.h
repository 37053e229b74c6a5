#pragma once

#include <QStringView>

#include <string>
#include <vector>

namespace lrc {

// Finds the time tags of one line at a time, matching "\[\d+:\d+\.?\d*\]" by hand and
// cutting each tag out before looking for the next, so that a tag that forms only once an
// inner one is cut out is found too; and where the line's text begins. Its buffers are
// reused from one line to the next: a document of any length is scanned without an
// allocation per line.
class LrcLineScanner {
public:
    // Scans the line of `text` that starts at `from` and runs to the next line feed or the
    // end of the text; returns where it ends.
    qsizetype scanLine(QStringView text, qsizetype from);
    // Scans all of `line` as one line.
    void scan(QStringView line);

    qsizetype tagCount() const { return qsizetype(m_tags.size()); }
    // Valid until the next scan, and while the scanned text lives.
    QStringView tag(qsizetype i) const { return m_tags[std::size_t(i)]; }
    // Where the line's text (after the first match of "\s*\[.+\]") begins, as a position in
    // what was scanned; -1 when the line has none. Only looked for when the line has tags.
    qsizetype contentStart() const { return m_contentStart; }

private:
    void scanTags(QStringView line);

    std::vector<QStringView> m_tags;
    qsizetype m_contentStart = -1;
    // The line as a gap buffer: m_buffer[0, w) is the text kept so far with the tags cut out
    // (it holds no tag), m_buffer[r, n) the text not yet searched.
    std::u16string m_buffer;
    std::vector<qsizetype> m_brackets; // positions of the brackets in the kept text
    std::u16string m_tagText;          // the tags found, one after the other
    std::vector<qsizetype> m_tagEnds;
};

} // namespace lrc
