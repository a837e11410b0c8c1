#pragma once

#include "zoHPCLayout.h"

#include <utility>
#include <vector>

// Finds windows that share pixels of a screen, in little more time than reading them takes.
class zoHPCWindowOverlaps final
{
public:
    // The later window in the order of the tree, and an earlier one.
    using Pair = std::pair<const zoHPCLayout::Window*, const zoHPCLayout::Window*>;

    // In the order of the tree, each window at most once as the later one. A window in full screen fills its
    // screen whatever its geometry says. How screens lie on the extended desktop is not known, so a window
    // there meets only others there, unless it fills the desktop. Nodes of one host name are one machine.
    static std::vector<Pair> find(const zoHPCLayout& layout);
};
