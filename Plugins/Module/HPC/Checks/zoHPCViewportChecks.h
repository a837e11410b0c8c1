#pragma once

#include "zoHPCProblem.h"

#include <QCoreApplication>

class zoHPCLayout;

// Checks of the places of viewports in their windows.
class zoHPCViewportChecks final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCProblems)

public:
    // How far corners may be off before they are told, in fractions of the window: thirds and sixths are written with
    // three decimals, and 0.334 beside 0.333 is no overlap.
    static constexpr double Tolerance = 1.5e-3;
    // A viewport within an earlier one is taken for an inset, such as an overview in a corner, below this part of
    // the other's area. Halves and quarters of a window are what viewports are set to for a wall.
    static constexpr double LargestInset = 0.25;

    // Viewports of one window that show pictures to the same eye at the same place. Those for the left and the right
    // eye may lie over each other: they go to two buffers.
    static zoHPCProblem::List overlappingViewports(const zoHPCLayout& layout);
    static zoHPCProblem::List viewportsWithoutArea(const zoHPCLayout& layout);
    static zoHPCProblem::List viewportsOutsideWindow(const zoHPCLayout& layout);
    // Left beyond right, or lower beyond upper.
    static zoHPCProblem::List viewportsWithCrossedCorners(const zoHPCLayout& layout);
    // Below that, sizes are rounded and pixels of panels not quite square; beyond, sizes are no sizes.
    static constexpr double SmallestStretch = 1.05;
    static constexpr double LargestStretch = 20.0;
    // Pictures of planes whose pixels are not as wide as they are high, in windows whose size is known. One for each
    // projection of the tree, at the first such viewport.
    static zoHPCProblem::List stretchedPictures(const zoHPCLayout& layout);
};
