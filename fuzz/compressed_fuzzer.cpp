// The compressed text form of a lyric block: Base64 decoding and bounded inflation of
// arbitrary input, and the round trip of arbitrary bytes.
#include "core/foundation/DataAdditions.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    (void)foundation::zlibInflate(bytes, 1 << 20);
    (void)foundation::zlibInflateString(QString::fromLatin1(bytes), 1 << 20);

    const auto compressed = foundation::zlibDeflate(bytes);
    if (!compressed)
        std::abort();
    const auto restored = foundation::zlibInflate(
        foundation::dataFromBase64String(foundation::base64EncodedString(*compressed)));
    if (!restored || *restored != bytes)
        std::abort();
    return 0;
}
