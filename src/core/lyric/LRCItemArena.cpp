#include "core/lyric/LRCItemArena.h"

#include <algorithm>

namespace {
// A song fits the first block; blocks double up to a size that keeps the unused tail of the
// last one small next to a large document.
constexpr std::size_t kFirstBlock = 64;
constexpr std::size_t kLargestBlock = 8192;
} // namespace

LRCItem* LRCItemArena::create()
{
    if (m_blocks.empty() || m_usedInLastBlock == m_blockSize) {
        m_blockSize = m_blocks.empty() ? kFirstBlock : std::min(2 * m_blockSize, kLargestBlock);
        m_blocks.push_back(std::make_unique<LRCItem[]>(m_blockSize));
        m_usedInLastBlock = 0;
    }
    return &m_blocks.back()[m_usedInLastBlock++];
}

LRCItem* LRCItemArena::adopt(std::unique_ptr<LRCItem> item)
{
    m_adopted.push_back(std::move(item));
    return m_adopted.back().get();
}

void LRCItemArena::clear()
{
    m_blocks.clear();
    m_blockSize = 0;
    m_usedInLastBlock = 0;
    m_adopted.clear();
}
