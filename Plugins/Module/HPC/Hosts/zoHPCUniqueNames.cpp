#include "zoHPCUniqueNames.h"

#include <QHash>

#include <utility>

zoHPCUniqueNames::zoHPCUniqueNames(std::vector<const QString*> hostNames)
    : m_hostNames(std::move(hostNames)), m_first(count()), m_sizes(count(), 0), m_numbers(count())
{
    std::size_t room = 16;
    while (room < 2 * count())
        room *= 2;
    m_slots.assign(room, 0);
    for (std::size_t i = 0; i < count(); ++i) {
        std::size_t& slot = m_slots[slotOf(*m_hostNames[i])];
        if (slot == 0)
            slot = i + 1;
        else
            m_hasNumbered = true;
        m_first[i] = slot - 1;
        m_numbers[i] = ++m_sizes[m_first[i]];
    }
}

QString zoHPCUniqueNames::name(std::size_t node) const
{
    const QString& hostName = *m_hostNames[node];
    return isNumbered(node) ? hostName + QLatin1Char(' ') + QString::number(m_numbers[node]) : hostName;
}

std::size_t zoHPCUniqueNames::find(const QString& hostName) const
{
    const std::size_t slot = m_slots[slotOf(hostName)];
    return slot == 0 ? count() : slot - 1;
}

// Holds the name, or is free.
std::size_t zoHPCUniqueNames::slotOf(const QString& hostName) const
{
    std::size_t slot = qHash(hostName) & (m_slots.size() - 1);
    while (m_slots[slot] != 0 && *m_hostNames[m_slots[slot] - 1] != hostName)
        slot = (slot + 1) & (m_slots.size() - 1);
    return slot;
}
