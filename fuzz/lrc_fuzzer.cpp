// LRC text through the whole model: parse, time queries, offset writing. Lines short enough
// for the quadratic reference are also checked against it, so a divergence of the linear
// scanners from the grammar is a finding.
#include "lyric/LrcPatterns.h"
#include "lyric/Lyric.h"

#include <QString>

#include <cstdint>
#include <cstdlib>
#include <cstring>

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

    for (const QStringView line : QStringView(text).split(u'\n')) {
        if (line.size() > 200)
            continue;
        const QStringList tags = lrc::tagsFromLine(line);
        if (tags != lrc::reference::tagsFromLine(line))
            std::abort();
        if (!tags.isEmpty() && lrc::contentFromLine(line) != lrc::reference::contentFromLine(line))
            std::abort();
    }
    return 0;
}
