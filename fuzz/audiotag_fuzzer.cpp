// Arbitrary bytes as an audio file of each format TagLib reads lyrics from: the first byte
// chooses the format, the rest is the file. The tag reader must answer (texts or nothing)
// without crashing or hanging, and so must the choice of which text is a lyric.
#include "core/audiofile/AudioTagReader.h"
#include "core/audiofile/TagLyricText.h"

#include <QByteArray>

#include <cstdint>

namespace {
// TagLib reports what it cannot parse on standard error; silence it for the fuzzer's speed.
[[maybe_unused]] const bool gQuiet = [] {
    AudioTagReader::setDiagnosticsEnabled(false);
    return true;
}();
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1)
        return 0;
    const auto format = AudioTagReader::Format(data[0] % AudioTagReader::kFormatCount);
    const QByteArray bytes(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1));
    for (const QString& text : AudioTagReader::lyricTextsFromBytes(bytes, format))
        (void)taglyrics::lrcFromTagText(text);
    return 0;
}
