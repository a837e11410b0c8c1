#pragma once

#include "zoDifferences.h"

class QDomDocument;

// What differs between two configuration documents in canonical form, told as a person sees a wall: nodes,
// tiles, windows, overlaps.
class zoClusterComparison final
{
public:
    zoClusterComparison(const QDomDocument& before, const QDomDocument& after);

    const std::vector<zoDifferences::Difference>& differences() const { return m_differences.list(); }
    // Whether both mean the same, also in what has no words.
    bool isSame() const { return m_isSame; }

private:
    zoDifferences m_differences;
    bool m_isSame;
};
