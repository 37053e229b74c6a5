// LRCLIB's JSON answers, parsed and ranked as the LRCLIB plug-in does.
#include "LrclibAnswer.h"

#include <QByteArray>
#include <QString>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    (void)lrclib::resultItems(bytes, QStringLiteral("Sigur Rós"), QStringLiteral("Hoppípolla"),
                              268);
    (void)lrclib::resultItems(bytes, QString(), QString(), 0);
    return 0;
}
