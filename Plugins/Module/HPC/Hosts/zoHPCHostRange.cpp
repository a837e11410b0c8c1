#include "zoHPCHostRange.h"

#include <algorithm>
#include <climits>

zoHPCHostRange::zoHPCHostRange(const zoHPCNumberedName& first, const zoHPCNumberedName& last)
    : m_distance(last.number() - first.number()), m_kind(Kind::Filled)
{
    if (first.prefix() != last.prefix())
        m_kind = Kind::OtherPrefix;
    else if (m_distance > LargestDistance)
        m_kind = Kind::TooLong;
    else if (m_distance < 0)
        m_kind = Kind::Backwards;
}

int zoHPCHostRange::namesBetween() const
{
    return m_kind == Kind::Filled ? std::max(0, m_distance - 1) : 0;
}

int zoHPCHostRange::longestFrom(const zoHPCNumberedName& first)
{
    return int(std::min<qint64>(LargestDistance + 1, qint64(INT_MAX) - first.number() + 1));
}
