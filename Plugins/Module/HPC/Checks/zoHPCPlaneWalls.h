#pragma once

#include "zoHPCLayout.h"

#include <map>
#include <vector>

// Tells which single planes are one wall by where they stand, as those that were converted from older files or
// moved to where the projectors are: planes of one size, edge to edge.
class zoHPCPlaneWalls final
{
public:
    // A wall most planes of which are in stereo, but not all. Indices, ascending.
    struct Mixed
    {
        std::vector<int> mono;
        std::vector<int> stereo;
    };

    // Sizes of neighbours differ by no more than this part: what measuring leaves.
    static constexpr double SizeTolerance = 0.05;
    // The middles of neighbouring edges are nearer to each other than this part of the smaller side: what is blended,
    // or a bezel wide.
    static constexpr double LargestShift = 0.2;
    // Cosine of the angle between neighbours: curved walls are flatter than it, the sides of a cave and a console
    // beside a wall are not.
    static constexpr double SmallestCosine = 0.8;

    // Of planes by their indices, and whether each is in stereo. A plane in the place of another one is a copy, and
    // none of its wall. In the order of the first planes.
    static std::vector<Mixed> mixedWalls(const zoHPCLayout& layout, const std::map<int, bool>& planes);
};
