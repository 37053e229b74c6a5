// LRC text through the whole model: parse, time queries, offset writing. Lines short enough
// for the quadratic reference are also checked against it, so a divergence of the linear
// scanners from the grammar is a finding; so is one of the offset tag search, or of the
// start time sort from the stable merge sort it stands in for (the input's bytes read as
// start times, NaN and infinities included).
#include "core/lyric/LrcLineScanner.h"
#include "core/lyric/LrcPatterns.h"
#include "core/lyric/Lyric.h"
#include "core/lyric/StartTimeSort.h"

#include <QString>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

void checkOffsetTag(QStringView text)
{
    const auto actual = lrc::findOffsetTag(text);
    const auto expected = lrc::reference::findOffsetTag(text);
    if (bool(actual) != bool(expected) ||
        (actual &&
         (actual->text != expected->text || actual->milliseconds != expected->milliseconds)))
        std::abort();
}

void checkSort(const std::uint8_t* data, std::size_t size)
{
    std::vector<float> starts;
    std::vector<lrc::StartTimeKey> keys;
    for (std::size_t i = 0; i + 4 <= size && i < 4 * 2048; i += 4) {
        float start;
        std::memcpy(&start, data + i, 4);
        keys.push_back({start, std::uint32_t(starts.size())});
        starts.push_back(start);
    }
    const std::vector<std::uint32_t> order = lrc::reference::sortOrder(starts);
    lrc::sortByStartTime(keys);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i].position != order[i])
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));

    Lyric lyric;
    lyric.parseLRCcontent(text);
    double t = -2.0;
    for (int i = 0; i < 64; ++i, t += 0.7)
        lyric.lrcItemAtTime(t);
    for (std::size_t i = 0; i + 4 <= size && i < 64; i += 4) {
        float seek;
        std::memcpy(&seek, data + i, 4);
        lyric.lyricsAtTime(double(seek));
    }
    lyric.itemIndexNonEmptyContent(lyric.lines());
    (void)lyric.contentsReadable();
    lyric.setOffsetTime(size % 2 ? 0.25 : -1.5);
    lyric.lrcItemAtTime(3.0);

    checkOffsetTag(text);
    checkSort(data, size);

    // Line by line as the parse scans them (the usual line takes a shorter road there), and
    // through the line functions, against the patterns as written.
    lrc::LrcLineScanner scanner;
    for (qsizetype start = 0; start <= text.size();) {
        const qsizetype end = scanner.scanLine(text, start);
        const QStringView line = QStringView(text).mid(start, end - start);
        start = end + 1;
        if (line.size() > 200)
            continue;
        const QStringList tags = lrc::reference::tagsFromLine(line);
        QStringList scanned;
        for (qsizetype i = 0; i < scanner.tagCount(); ++i)
            scanned.append(scanner.tag(i).toString());
        if (tags != lrc::tagsFromLine(line) || tags != scanned)
            std::abort();
        if (tags.isEmpty())
            continue;
        const QString content = lrc::reference::contentFromLine(line);
        if (lrc::contentFromLine(line) != content ||
            QStringView(text).mid(scanner.contentStart(), end - scanner.contentStart()) != content)
            std::abort();
    }
    return 0;
}
