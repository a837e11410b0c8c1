#pragma once

#include "zoHPCLayout.h"

#include <vector>

// Tells which tiles that one eye sees belong to tiles that the other eye sees: pictures of one wall, of a pair of
// projectors that miss each other a little, or of the two displays on a head.
class zoHPCEyePairs final
{
public:
    // A tile that one user sees with one eye.
    struct Tile
    {
        int projection = zoHPCLayout::None;
        QString user;
        zoHPCLayout::Eye eye = zoHPCLayout::LeftEye;
    };

    // Centres of a pair are nearer to each other than this part of the larger side of either: neighbours of a wall
    // are one side apart.
    static constexpr double LargestShift = 0.5;
    // But displays on a head may stand as far from each other as eyes do, however small they are (mm).
    static constexpr double EyeShift = 100.0;
    // Their larger sides differ by no more than this factor.
    static constexpr double LargestRatio = 2.0;
    // Cosine of the angle between them: wide head-mounted displays turn theirs outward, walls of a cave stand at
    // right angles.
    static constexpr double SmallestCosine = 0.5;

    // For each tile whether the other eye of its user has one that belongs to it. Planes belong together by their
    // places in space, tiles in pixels by their row and column in walls of equal layout.
    static std::vector<bool> find(const zoHPCLayout& layout, const std::vector<Tile>& tiles);
};
