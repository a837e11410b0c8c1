#include "zoSpeedStore.h"

#include <algorithm>

#ifdef __x86_64__
#include <emmintrin.h>
#endif

namespace
{
constexpr std::size_t s_blocksAtATime = 4;

std::size_t blocksFor(qint64 bytes, qint64 availableMemory)
{
    qint64 blocks = (bytes + zoSpeedStore::BlockSize - 1) / zoSpeedStore::BlockSize;
    if (availableMemory >= 0)
        blocks = std::min(blocks, availableMemory / zoSpeedStore::PartOfMemory / zoSpeedStore::BlockSize);
    return std::size_t(std::max<qint64>(blocks, 1));
}

// The caches keep nothing of what is written.
void writePastCaches(char* place, quint64 number)
{
#ifdef __x86_64__
    _mm_stream_si64(reinterpret_cast<long long*>(place), static_cast<long long>(number));
#else
    std::copy_n(reinterpret_cast<const char*>(&number), sizeof number, place);
#endif
}
} // namespace

zoSpeedStore::zoSpeedStore(qint64 bytes, qint64 availableMemory) : m_count(blocksFor(bytes, availableMemory))
{
    m_blocks.reserve(m_count);
}

void zoSpeedStore::makeSome()
{
    for (std::size_t i = 0; i < s_blocksAtATime && !isMade(); ++i) {
        QByteArray block(BlockSize, Qt::Uninitialized);
        char* const bytes = block.data();
        for (int at = 0; at < BlockSize; at += int(sizeof(quint64))) {
            m_state = m_state * 6364136223846793005U + 1442695040888963407U;
            writePastCaches(bytes + at, m_state);
        }
        m_blocks.push_back(block);
    }
#ifdef __x86_64__
    _mm_sfence();
#endif
}

QByteArray zoSpeedStore::block(qint64 position) const
{
    return m_blocks[std::size_t(position / BlockSize) % m_count];
}
