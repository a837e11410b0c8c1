#pragma once

#include "zoHPCProblem.h"

#include <QCoreApplication>

class zoHPCLayout;
class zoHPCProjectionItem;

// Checks of what projections are called, and whether they have tiles.
class zoHPCProjectionChecks final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCProblems)

public:
    // Where blended bands of both edges of a tile would meet, in tiles.
    static constexpr double LargestBlendedOverlap = 0.5;
    // No screen has more pixels side by side: what a tile in full screen has at most, where nothing tells its size.
    static constexpr double LargestTile = 16384.0;

    // Whether it is a wall, a cave or of an unknown type, and has no tile to show.
    static bool hasNoTiles(const zoHPCProjectionItem& item);

    // Projections, or tiles of them, with a name that an earlier one has: each row of the tree once. A document holds
    // names alone, so its viewports mean the last one of a name.
    static zoHPCProblem::List equalNames(const zoHPCLayout& layout);
    static zoHPCProblem::List unknownTypes(const zoHPCLayout& layout);
    static zoHPCProblem::List cavesWithoutWalls(const zoHPCLayout& layout);
    // No rows, no columns or too many of both.
    static zoHPCProblem::List projectionsWithoutTiles(const zoHPCLayout& layout);
    // Overlaps that leave no step from one tile to the next, bezels that leave no tile, and blended bands that cross
    // each other. Of walls in pixels, as far as the sizes of windows tell those of tiles; of windows that fill their
    // screen, sizes that somebody gave them, and no overlap below a whole tile.
    static zoHPCProblem::List overlapsWiderThanTiles(const zoHPCLayout& layout);
};
