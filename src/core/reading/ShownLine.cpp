#include "core/reading/ShownLine.h"

#include "core/lyric/LRCItem.h"
#include "core/lyric/Lyric.h"
#include "core/reading/LyricReading.h"

ShownLine shownLine(const Lyric* lyric, const LRCItem* item, int index)
{
    if (!lyric || !item)
        return {};
    const auto readings = LyricReading::shared().readingsFor(lyric);
    const int owner = readings->ownerOf(index);
    const LRCItem* main = owner == index ? item : lyric->lrcItemAtIndex(owner);
    if (!main)
        return {item->content(), QString()};
    return {readings->textOf(owner, main->content()), readings->secondaryOf(owner)};
}
