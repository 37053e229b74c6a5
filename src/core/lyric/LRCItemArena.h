#pragma once

#include "core/lyric/LRCItem.h"

#include <cstddef>
#include <memory>
#include <vector>

// Owns a document's items. Items parsed from text are made in blocks, many to one
// allocation and freed together; items handed in from outside are adopted one by one.
// Items never move, so pointers to them stay valid until clear().
class LRCItemArena {
public:
    LRCItem* create();
    LRCItem* adopt(std::unique_ptr<LRCItem> item);
    void clear();

private:
    std::vector<std::unique_ptr<LRCItem[]>> m_blocks;
    std::size_t m_blockSize = 0;
    std::size_t m_usedInLastBlock = 0;
    std::vector<std::unique_ptr<LRCItem>> m_adopted;
};
