#pragma once

#include "zoHPCProblem.h"

#include <QCoreApplication>

class zoHPCLayout;

// Checks of the planes in space: their shape, their size, the way they face, their blending.
class zoHPCPlaneChecks final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCProblems)

public:
    // Corners further from a right angle than this are skewed; below it lies what measuring a real wall
    // leaves (degrees).
    static constexpr double LargestSkew = 0.25;
    // A wall no size of which reaches this was most likely given in metres (mm).
    static constexpr double SmallestWall = 20.0;

    // Planes without area.
    static zoHPCProblem::List degeneratePlanes(const zoHPCLayout& layout);
    static zoHPCProblem::List skewedPlanes(const zoHPCLayout& layout);
    // Planes that turn their back on the viewer. Planes near him are let pass: a floor may lie a little above
    // the origin of the tracking.
    static zoHPCProblem::List mirroredPlanes(const zoHPCLayout& layout);
    // Bands of planes that reach further than a neighbour does, so that light is taken away where nothing
    // adds to it. Generated tiles are right by construction.
    static zoHPCProblem::List blendsWiderThanOverlap(const zoHPCLayout& layout);
    static zoHPCProblem::List wallsInMetres(const zoHPCLayout& layout);
};
