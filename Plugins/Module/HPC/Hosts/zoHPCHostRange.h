#pragma once

#include "zoHPCNumberedName.h"

#include <QString>

// A range of hosts as hosts text has it ("node07 - node12"): which names it fills in, and how long it may be. Module
// and zohpc read, fill and write ranges by it.
class zoHPCHostRange final
{
public:
    // Hosts of one range are no further apart. Longer ones are typing mistakes and are not filled.
    static constexpr int LargestDistance = 10000;
    enum class Kind { Filled, OtherPrefix, TooLong, Backwards };

    zoHPCHostRange(const zoHPCNumberedName& first, const zoHPCNumberedName& last);

    // A filled range may have nothing in between.
    Kind kind() const { return m_kind; }
    // How many names it fills in; 0 when it is not filled.
    int namesBetween() const;

    // Hosts of the longest range that starts with this name.
    static int longestFrom(const zoHPCNumberedName& first);

private:
    int m_distance;
    Kind m_kind;
};
