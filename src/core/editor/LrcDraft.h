#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// A lyric being timed by hand: its lines in the order written, each with an optional start
// time in milliseconds. Tag lines such as "[ar:...]" are kept as they are; an offset tag is
// folded into the times, so that a stamp is always the play time it was taken at.
class LrcDraft {
public:
    struct Line {
        std::optional<qint64> ms; // none: not timed yet
        QString text;
        bool operator==(const Line&) const = default;
    };

    // Reads LRC or plain text; a line with several time tags becomes one line per tag.
    static LrcDraft fromText(const QString& text);
    // The LRC text: the tag lines, then one line per lyric line ("[mm:ss.xx]text" when timed).
    QString toLrc() const;
    // The lyric's words without times, one line each (what a plain lyric is).
    QString plainText() const;

    // "mm:ss.xx" for a time; empty for none. parseTime reads "m:ss", "m:ss.x..." and "m:ss:xx".
    static QString formatTime(std::optional<qint64> ms);
    static std::optional<qint64> parseTime(QStringView text);
    // Enhanced LRC's word tags ("<mm:ss.xx>") in a line's text: moved with their line, or cut
    // out for reading.
    static QString shiftWordTags(const QString& text, qint64 deltaMs);
    static QString withoutWordTags(const QString& text);

    int size() const { return int(m_lines.size()); }
    bool isEmpty() const { return m_lines.empty(); }
    const Line& line(int row) const { return m_lines.at(std::size_t(row)); }
    const std::vector<Line>& lines() const { return m_lines; }
    const QStringList& tags() const { return m_tags; }
    int timedCount() const;

    // Out-of-range rows are ignored. A line's word tags move with its time.
    void setTime(int row, std::optional<qint64> ms);
    void setText(int row, const QString& text);
    // Moves every time (word tags included) by delta; times never go below zero.
    void shift(qint64 deltaMs);

    bool operator==(const LrcDraft&) const = default;

private:
    std::vector<Line> m_lines;
    QStringList m_tags;
};
