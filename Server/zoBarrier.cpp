#include "zoBarrier.h"

void zoBarrier::begin(quint64 round, const QSet<int>& members)
{
    m_round = round;
    m_missing = members;
    m_arrivals.clear();
    m_isOpen = !members.isEmpty();
}

bool zoBarrier::arrive(int member, quint64 round, qint64 now)
{
    if (!m_isOpen || round != m_round || !m_missing.remove(member))
        return false;
    m_arrivals.insert(member, now);
    return completeIfAllAreThere(now);
}

bool zoBarrier::leave(int member, qint64 now)
{
    m_arrivals.remove(member);
    m_waits.remove(member);
    return m_isOpen && m_missing.remove(member) && completeIfAllAreThere(now);
}

bool zoBarrier::completeIfAllAreThere(qint64 now)
{
    if (!m_missing.isEmpty())
        return false;
    m_isOpen = false;
    m_waits.clear();
    for (auto it = m_arrivals.cbegin(); it != m_arrivals.cend(); ++it)
        m_waits.insert(it.key(), now - it.value());
    return true;
}
