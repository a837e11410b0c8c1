#pragma once

#include <zoAvailableMemory.h>

#include <QByteArray>

#include <vector>

// What a speed test sends: bytes that no link can compress and no cache holds. Each block is sent once, and writing them
// leaves nothing of them in the caches, where the processor has a way to do that; what is sent from there would say
// nothing about data that comes from memory.
class zoSpeedStore final
{
public:
    static constexpr int BlockSize = 1024 * 1024;
    // Of the memory that the machine has left, no more than this part is taken; the blocks then come again.
    static constexpr int PartOfMemory = 4;

    explicit zoSpeedStore(qint64 bytes, qint64 availableMemory = zoAvailableMemory::bytes());

    // A few milliseconds of work at a time, for whoever has something else to do as well.
    void makeSome();
    bool isMade() const { return m_blocks.size() == m_count; }

    // The block that begins at this position of what is sent. Once made.
    QByteArray block(qint64 position) const;
    std::size_t count() const { return m_count; }

private:
    std::size_t m_count; // of blocks, at least one
    std::vector<QByteArray> m_blocks;
    quint64 m_state = 1;
};
