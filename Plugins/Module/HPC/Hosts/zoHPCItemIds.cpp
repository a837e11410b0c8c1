#include "zoHPCItemIds.h"

#include <algorithm>

int zoHPCNetworkPaths::child(int path, int row)
{
    const quint64 key = quint64(uint(path)) << 32 | uint(row);
    const auto known = m_paths.constFind(key);
    if (known != m_paths.constEnd())
        return *known;
    const int number = m_paths.size() + 1;
    m_paths.insert(key, number);
    return number;
}

int zoHPCItemIds::addName(const QString& name, zoHPCTreeItem* item)
{
    const uint hash = qHash(name);
    const int first = find(name, hash);
    if (first < 0)
        return insert(name, hash, item);

    // Suffixes below the next one are taken for good.
    int suffix = m_entries[std::size_t(first)].nextSuffix;
    QString id;
    uint idHash = 0;
    do {
        id = name + QLatin1Char('_') + QString::number(suffix++);
        idHash = qHash(id);
    } while (find(id, idHash) >= 0);
    m_entries[std::size_t(first)].nextSuffix = suffix;
    return insert(id, idHash, item);
}

zoHPCTreeItem* zoHPCItemIds::findName(const QString& id) const
{
    const int entry = find(id, qHash(id));
    return entry < 0 ? nullptr : m_entries[std::size_t(entry)].item;
}

zoHPCTreeItem* zoHPCItemIds::findSame(const zoHPCItemIds& other, int entry) const
{
    const Entry& wanted = other.m_entries[std::size_t(entry)];
    const int found = find(wanted.id, wanted.hash);
    return found < 0 ? nullptr : m_entries[std::size_t(found)].item;
}

int zoHPCItemIds::addNetwork(int path, zoHPCTreeItem* item)
{
    const int occurrence = m_occurrences[path]++;
    m_networks.insert(quint64(uint(path)) << 32 | uint(occurrence), item);
    return occurrence;
}

zoHPCTreeItem* zoHPCItemIds::findNetwork(int path, int occurrence) const
{
    return m_networks.value(quint64(uint(path)) << 32 | uint(occurrence));
}

bool zoHPCItemIds::isAmbiguous(const QString& name)
{
    return name.startsWith(QLatin1String("Network:/"));
}

void zoHPCItemIds::reserve(std::size_t count)
{
    m_entries.reserve(count);
    std::size_t slotCount = 16;
    while (slotCount < 2 * count)
        slotCount *= 2;
    if (slotCount <= m_slots.size())
        return;
    m_slots.assign(slotCount, -1);
    const std::size_t mask = slotCount - 1;
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        std::size_t slot = m_entries[i].hash & mask;
        while (m_slots[slot] >= 0)
            slot = (slot + 1) & mask;
        m_slots[slot] = int(i);
    }
}

int zoHPCItemIds::find(const QString& id, uint hash) const
{
    if (m_slots.empty())
        return -1;
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t slot = hash & mask; m_slots[slot] >= 0; slot = (slot + 1) & mask) {
        const Entry& entry = m_entries[std::size_t(m_slots[slot])];
        if (entry.hash == hash && entry.id == id)
            return m_slots[slot];
    }
    return -1;
}

int zoHPCItemIds::insert(const QString& id, uint hash, zoHPCTreeItem* item)
{
    if (2 * (m_entries.size() + 1) > m_slots.size())
        reserve(std::max<std::size_t>(8, 2 * m_entries.size()));
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = hash & mask;
    while (m_slots[slot] >= 0)
        slot = (slot + 1) & mask;
    m_slots[slot] = int(m_entries.size());
    m_entries.push_back({id, item, hash, 2});
    return m_slots[slot];
}
