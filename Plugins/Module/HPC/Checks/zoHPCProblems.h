#pragma once

#include "zoHPCProblem.h"

#include <QCoreApplication>

#include <vector>

class zoHPCLayout;

// Checks of a configuration for what would not light up as meant. Each looks at one thing, needs a time in
// proportion to the configuration, and shows, logs and changes nothing.
class zoHPCProblems final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCProblems)

public:
    using List = std::vector<zoHPCProblem>;

    // Corners further from a right angle than this are skewed; below it lies what measuring a real wall
    // leaves (degrees).
    static constexpr double LargestSkew = 0.25;
    // A wall no size of which reaches this was most likely given in metres (mm).
    static constexpr double SmallestWall = 20.0;

    // All checks in the order below.
    static List find(const zoHPCLayout& layout);

    // No projection, or the name of one that does not exist.
    static List viewportsWithoutProjection(const zoHPCLayout& layout);
    static List windowsWithoutNode(const zoHPCLayout& layout);
    // A node that the host tree lacks.
    static List windowsWithUnknownNode(const zoHPCLayout& layout);
    // By its own option or by that of a network or node above it.
    static List windowsWithDisabledNode(const zoHPCLayout& layout);
    // On one screen of one node; the second window of each such pair is reported once. A window in full
    // screen fills its screen whatever its geometry says. How screens lie on the extended desktop is not
    // known, so a window there meets only others there, unless it fills the desktop.
    static List overlappingWindows(const zoHPCLayout& layout);
    // A viewport of a projection shows all its tiles. What concerns all tiles of a projection is reported
    // once, for the projection.
    static List tilesShownNowhere(const zoHPCLayout& layout);
    // For the same eye of the same tracked user.
    static List tilesShownTwice(const zoHPCLayout& layout);
    // Left without right eye or the other way round, counted over all displays of a tracked user.
    static List tilesForOneEye(const zoHPCLayout& layout);
    // Planes without area.
    static List degeneratePlanes(const zoHPCLayout& layout);
    static List skewedPlanes(const zoHPCLayout& layout);
    // Planes that turn their back on the viewer. Planes near him are let pass: a floor may lie a little above
    // the origin of the tracking.
    static List mirroredPlanes(const zoHPCLayout& layout);
    // Bands of planes that reach further than a neighbour does, so that light is taken away where nothing
    // adds to it. Generated tiles are right by construction.
    static List blendsWiderThanOverlap(const zoHPCLayout& layout);
    static List wallsInMetres(const zoHPCLayout& layout);
    static List duplicateHostNames(const zoHPCLayout& layout);
    // Networks that are themselves enabled.
    static List networksWithoutEnabledNode(const zoHPCLayout& layout);
};
