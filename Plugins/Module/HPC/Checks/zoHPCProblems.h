#pragma once

#include "zoHPCPlaneChecks.h"
#include "zoHPCProblem.h"

class zoHPCLayout;

// All checks of a configuration. Each looks at one thing that would keep pixels dark or show them wrong, needs a
// time in proportion to the configuration, and shows, logs and changes nothing.
class zoHPCProblems final
{
public:
    using List = zoHPCProblem::List;

    static constexpr double LargestSkew = zoHPCPlaneChecks::LargestSkew;
    static constexpr double SmallestWall = zoHPCPlaneChecks::SmallestWall;

    // All kinds in the order of their table.
    static List find(const zoHPCLayout& layout);

    // One kind each, as the classes of checks find it.
    static List viewportsWithoutProjection(const zoHPCLayout& layout);
    static List windowsWithoutNode(const zoHPCLayout& layout);
    static List windowsWithUnknownNode(const zoHPCLayout& layout);
    static List windowsWithDisabledNode(const zoHPCLayout& layout);
    static List overlappingWindows(const zoHPCLayout& layout);
    static List tilesShownNowhere(const zoHPCLayout& layout);
    static List tilesShownTwice(const zoHPCLayout& layout);
    static List tilesForOneEye(const zoHPCLayout& layout);
    static List degeneratePlanes(const zoHPCLayout& layout);
    static List skewedPlanes(const zoHPCLayout& layout);
    static List mirroredPlanes(const zoHPCLayout& layout);
    static List blendsWiderThanOverlap(const zoHPCLayout& layout);
    static List wallsInMetres(const zoHPCLayout& layout);
    static List duplicateHostNames(const zoHPCLayout& layout);
    static List networksWithoutEnabledNode(const zoHPCLayout& layout);
    static List unknownOptionValues(const zoHPCLayout& layout);
};
