#include "zoHPCProblems.h"

#include "zoHPCHostChecks.h"
#include "zoHPCProjectionChecks.h"
#include "zoHPCStereoChecks.h"
#include "zoHPCTileChecks.h"
#include "zoHPCViewportChecks.h"
#include "zoHPCWindowChecks.h"

#include <iterator>

zoHPCProblems::List zoHPCProblems::find(const zoHPCLayout& layout)
{
    using Check = List (*)(const zoHPCLayout&);
    static constexpr Check Checks[] = {
#define ZO_KIND(kind, word, severity, attribute, title, item, fix, check) check,
        ZO_HPC_PROBLEM_KINDS(ZO_KIND)
#undef ZO_KIND
    };
    List all;
    for (const Check check : Checks) {
        List found = check(layout);
        std::move(found.begin(), found.end(), std::back_inserter(all));
    }
    return all;
}

zoHPCProblems::List zoHPCProblems::viewportsWithoutProjection(const zoHPCLayout& layout)
{
    return zoHPCWindowChecks::viewportsWithoutProjection(layout);
}

zoHPCProblems::List zoHPCProblems::windowsWithoutNode(const zoHPCLayout& layout)
{
    return zoHPCWindowChecks::windowsWithoutNode(layout);
}

zoHPCProblems::List zoHPCProblems::windowsWithUnknownNode(const zoHPCLayout& layout)
{
    return zoHPCWindowChecks::windowsWithUnknownNode(layout);
}

zoHPCProblems::List zoHPCProblems::windowsWithDisabledNode(const zoHPCLayout& layout)
{
    return zoHPCWindowChecks::windowsWithDisabledNode(layout);
}

zoHPCProblems::List zoHPCProblems::overlappingWindows(const zoHPCLayout& layout)
{
    return zoHPCWindowChecks::overlappingWindows(layout);
}

zoHPCProblems::List zoHPCProblems::tilesShownNowhere(const zoHPCLayout& layout)
{
    return zoHPCTileChecks::tilesShownNowhere(layout);
}

zoHPCProblems::List zoHPCProblems::tilesShownTwice(const zoHPCLayout& layout)
{
    return zoHPCTileChecks::tilesShownTwice(layout);
}

zoHPCProblems::List zoHPCProblems::tilesForOneEye(const zoHPCLayout& layout)
{
    return zoHPCTileChecks::tilesForOneEye(layout);
}

zoHPCProblems::List zoHPCProblems::degeneratePlanes(const zoHPCLayout& layout)
{
    return zoHPCPlaneChecks::degeneratePlanes(layout);
}

zoHPCProblems::List zoHPCProblems::skewedPlanes(const zoHPCLayout& layout)
{
    return zoHPCPlaneChecks::skewedPlanes(layout);
}

zoHPCProblems::List zoHPCProblems::mirroredPlanes(const zoHPCLayout& layout)
{
    return zoHPCPlaneChecks::mirroredPlanes(layout);
}

zoHPCProblems::List zoHPCProblems::blendsWiderThanOverlap(const zoHPCLayout& layout)
{
    return zoHPCPlaneChecks::blendsWiderThanOverlap(layout);
}

zoHPCProblems::List zoHPCProblems::wallsInMetres(const zoHPCLayout& layout)
{
    return zoHPCPlaneChecks::wallsInMetres(layout);
}

zoHPCProblems::List zoHPCProblems::duplicateHostNames(const zoHPCLayout& layout)
{
    return zoHPCHostChecks::duplicateHostNames(layout);
}

zoHPCProblems::List zoHPCProblems::networksWithoutEnabledNode(const zoHPCLayout& layout)
{
    return zoHPCHostChecks::networksWithoutEnabledNode(layout);
}

zoHPCProblems::List zoHPCProblems::unknownOptionValues(const zoHPCLayout& layout)
{
    return zoHPCHostChecks::unknownOptionValues(layout);
}
