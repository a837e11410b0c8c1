#include "zoHPCItemsById.h"

int zoHPCItemsById::addName(const QString& name, zoHPCTreeItem* item)
{
    m_items.push_back(item);
    return m_ids.addName(name);
}

int zoHPCItemsById::addNetwork(int place, zoHPCTreeItem* item)
{
    m_items.push_back(item);
    return m_ids.addNetwork(place);
}

zoHPCTreeItem* zoHPCItemsById::findSame(const zoHPCItemsById& other, int entry) const
{
    return at(m_ids.findSame(other.m_ids, entry));
}

void zoHPCItemsById::reserve(std::size_t count)
{
    m_ids.reserve(count);
    m_items.reserve(count);
}

zoHPCTreeItem* zoHPCItemsById::at(int entry) const
{
    return entry == zoClusterIds::None ? nullptr : m_items[std::size_t(entry)];
}
