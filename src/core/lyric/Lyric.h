#pragma once

#include "core/lyric/LRCItem.h"
#include "core/lyric/LRCItemArena.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

// One LRC document: the text as given, its timed lines sorted by start time, and a
// whole-document offset. Lines without a time tag stay in the text but yield no item.
// A null QString stands for absent text (after clean(), or when nothing was given).
class Lyric {
public:
    // The items in sorted order. The document owns them (pointers stay valid until the next
    // parse, clean() or setLrcArray()).
    using Items = std::vector<LRCItem*>;
    static constexpr std::uint64_t UTF8Encoding = 4;
    // indexOfItem() of an item that is not in the document.
    static constexpr std::int64_t NotFound = std::numeric_limits<std::int64_t>::max();
    static constexpr float LastItemEndTime = 999999.0f;

    Lyric() = default;
    Lyric(const Lyric&) = delete;
    Lyric& operator=(const Lyric&) = delete;

    bool parseLRCfile(const QString& path);
    // A lyric kept among the application's resources (":/<name>").
    bool parseLRCname(const QString& name);
    void parseLRCcontent(const QString& text);

    // The pipeline's steps, in the order parseLRCcontent runs them after clean().
    void fetchOffsetTime();
    void convertToLRCArray();
    void sortLRCs();
    // Forgets text, items, offset and cache, but keeps the last offset tag's text.
    void clean();

    static QStringList tagsFromLine(QStringView line);
    static QString contentFromLine(QStringView line);

    // Decodes file bytes as parseLRCfile does; nullopt and a reason when they are not text.
    static std::optional<QString> decodeText(const QByteArray& bytes, std::uint64_t encoding,
                                             QString* error = nullptr);

    bool isParsed() const { return m_isParsed; }
    std::uint64_t fileEncoding() const { return m_fileEncoding; }
    void setFileEncoding(std::uint64_t encoding) { m_fileEncoding = encoding; }
    const QString& contents() const { return m_contents; }
    void setContents(const QString& contents) { m_contents = contents; }
    const Items& lrcArray() const { return m_lrcArray; }
    // Takes the items over, in the order given; absent ones are skipped.
    void setLrcArray(std::vector<std::unique_ptr<LRCItem>> items);
    double offsetTime() const { return m_offsetTime; }
    const QString& offsetItem() const { return m_offsetItem; }
    int lines() const { return static_cast<int>(m_lrcArray.size()); }

    // Timeline queries. lrcItemAtTime remembers its answer, so that time moving forward
    // within one line costs two comparisons.
    LRCItem* lrcItemAtTime(double seconds);
    QString lyricsAtTime(double seconds);
    LRCItem* lrcItemAtIndex(int index) const;
    std::int64_t indexOfItem(const LRCItem* item) const;
    int itemIndexNonEmptyContent(int index) const;

    // Moves every start time (end times stay as sorted) and writes "[offset:<ms>]" into the
    // text: replacing the remembered tag's text, or appended on a line of its own.
    void setOffsetTime(double seconds);
    // The items' texts, one per line, each ending with a line feed.
    QString contentsReadable() const;
    void debugItems() const;

private:
    // Gives the items from firstItem on (one line's) the line's word timing.
    void shareWordTiming(lrc::WordTiming timing, std::size_t firstItem);

    std::uint64_t m_fileEncoding = UTF8Encoding;
    QString m_contents;
    Items m_lrcArray;
    LRCItemArena m_items; // owns what m_lrcArray points to
    bool m_isParsed = false;
    double m_offsetTime = 0.0;
    QString m_offsetItem;
    LRCItem* m_itemCacheAssign = nullptr; // not owned: one of m_lrcArray's items
};
