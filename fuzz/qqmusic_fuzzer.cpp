// QQMusic's "/all" answers: any text splits into exactly four parts or is ignored, and the
// position reads as a number or 0.
#include "core/lyric/LrcPatterns.h"
#include "core/sources/MusicSourceQQMusic.h"

#include <QString>

#include <cmath>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    if (const auto parts = MusicSourceQQMusic::splitAnswer(text)) {
        if (parts->size() != 4)
            std::abort();
        const float position = lrc::readFloat(parts->at(3));
        if (std::isnan(position))
            std::abort();
    }
    return 0;
}
