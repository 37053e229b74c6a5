// Word-tagged lines through the word-tag reader, the model and the karaoke arithmetic. A
// finding: positions outside the text or going back, starts going back, text lost besides the
// tags, or a fill outside the laid-out lines.
#include "core/display/KaraokeLine.h"
#include "core/lyric/Lyric.h"
#include "core/lyric/WordTags.h"

#include <QString>

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

void checkReader(QStringView line)
{
    const auto tagged = lrc::readWordTags(line);
    if (!tagged)
        return;
    if (tagged->text.size() > line.size())
        std::abort();
    qsizetype position = 0;
    float start = -INFINITY;
    for (const auto& word : tagged->timing.words) {
        if (word.position < position || word.position > tagged->text.size())
            std::abort();
        if (!std::isnan(word.start)) {
            if (word.start < start)
                std::abort();
            start = word.start;
        }
        position = word.position;
    }
}

void checkFill(const Lyric& lyric)
{
    for (const LRCItem* item : lyric.lrcArray()) {
        const KaraokeLine line = KaraokeLine::of(item);
        // The text in lines of 7 characters, each 10 wide.
        std::vector<KaraokeTextLine> lines;
        for (qsizetype at = 0; at < line.text.size() || at == 0; at += 7)
            lines.push_back({at, std::min(at + 7, line.text.size()),
                             QRectF(0, 20.0 * double(lines.size()), 70, 20)});
        const KaraokeCaret x = [&lines](int i, qsizetype index) {
            return double(index - lines[std::size_t(i)].start) * 10;
        };
        // Counted steps: at a start beyond float precision, adding 0.37 would not move t.
        for (int step = 0; step < 25; ++step) {
            const double t = line.start - 1 + step * 0.37;
            const double progress = karaoke::lineProgress(line, t);
            if (!(progress == -1 || (progress >= 0 && progress <= 1)))
                std::abort();
            for (const QRectF& rect : karaoke::sungRects(line, t, lines, x)) {
                if (rect.left() < 0 || rect.right() > 70 || rect.isEmpty())
                    std::abort();
            }
        }
        if (lyric.lines() > 16)
            break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    for (qsizetype start = 0; start <= text.size();) {
        qsizetype end = text.indexOf(u'\n', start);
        if (end < 0)
            end = text.size();
        checkReader(QStringView(text).mid(start, end - start));
        start = end + 1;
    }
    Lyric lyric;
    lyric.parseLRCcontent(text);
    checkFill(lyric);
    return 0;
}
