// The lyric server's XML answers: any bytes must give a list (possibly empty) without a
// crash, a hang, or a look at the network or the disk.
#include "core/online/QQFetchHelper.h"

#include <QByteArray>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray xml(reinterpret_cast<const char*>(data), qsizetype(size));
    for (const LRCListItem& item : QQFetchHelper::lrcListItemsFromXML(xml, QStringLiteral("h")))
        (void)item.fileURL();
    (void)QQFetchHelper::firstUrlForArtWorkFromXML(xml);
    return 0;
}
