#pragma once

#include "zoDifferences.h"

class zoComparedDocument;

// What differs between two configuration documents in canonical form, told as a person sees a wall: nodes,
// tiles, windows, overlaps.
class zoClusterComparison final
{
public:
    zoClusterComparison(const zoComparedDocument& from, const zoComparedDocument& to);

    // Once.
    std::vector<zoDifferences::Difference> takeDifferences() { return m_differences.takeList(); }
    // Whether both mean the same, also in what has no words.
    bool isSame() const { return m_isSame; }

private:
    zoDifferences m_differences;
    bool m_isSame;
};
