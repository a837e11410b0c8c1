#include "zoHPCItemIds.h"

int zoHPCItemIds::addName(const QString& name, zoHPCTreeItem* item)
{
    m_items.push_back(item);
    return m_ids.addName(name);
}

int zoHPCItemIds::addNetwork(int place, zoHPCTreeItem* item)
{
    m_items.push_back(item);
    return m_ids.addNetwork(place);
}

zoHPCTreeItem* zoHPCItemIds::findSame(const zoHPCItemIds& other, int entry) const
{
    return at(m_ids.findSame(other.m_ids, entry));
}

void zoHPCItemIds::reserve(std::size_t count)
{
    m_ids.reserve(count);
    m_items.reserve(count);
}

zoHPCTreeItem* zoHPCItemIds::at(int entry) const
{
    return entry == zoClusterIds::None ? nullptr : m_items[std::size_t(entry)];
}
