// A track's lyrics tag as any player or user may have left it: the block reader must answer
// (a lyric or nothing) without crashing, hanging or inflating without bound. Inputs that look
// like LRC are also embedded and read back, which must give the text unchanged.
#include "core/lyric/Lyric.h"
#include "core/store/LyricTagBlock.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    (void)tagblock::lrcFromTagText(text);

    Lyric lyric;
    lyric.parseLRCcontent(text);
    if (const auto tag = tagblock::tagTextForLyric(lyric)) {
        const auto back = tagblock::lrcFromTagText(*tag);
        // The readable lines may themselves hold markers; only then may the answer differ.
        if (!text.contains(QLatin1String("=QV")) && (!back || *back != text))
            std::abort();
    }
    return 0;
}
