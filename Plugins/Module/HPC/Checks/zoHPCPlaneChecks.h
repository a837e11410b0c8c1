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
    // A wall no size of which reaches this was most likely given in metres (mm): the longest walls have 20 metres.
    static constexpr double SmallestWall = 20.0;
    // A single plane may also be the display before an eye, from this size on (mm): those of less than half an inch
    // are rare, as are walls in one piece of more than ten metres that are not long.
    static constexpr double LargestMicrodisplay = 10.0;
    // But none is so many times longer than it is high: what is longer is a wall of up to SmallestWall metres.
    static constexpr double LongestMicrodisplay = 2.5;
    // From this size on (mm) a wall is one that people stand before: not at a distance below SmallestWall.
    static constexpr double SmallestRoom = 500.0;
    // Overlaps and gaps below it (mm) were given in metres when the wall was: neither is measured that finely.
    static constexpr double SmallestOverlap = 1.0;
    // What a blended band may be wider than its overlap, as a fraction of the plane: widths are typed with three
    // decimals.
    static constexpr double BlendTolerance = 2e-3;
    // The same as a fraction of the overlap where planes stand at an angle: it is as wide as it is seen from the
    // origin, and the head moves.
    static constexpr double FoldedBlendTolerance = 0.15;

    // Planes without area.
    static zoHPCProblem::List degeneratePlanes(const zoHPCLayout& layout);
    static zoHPCProblem::List skewedPlanes(const zoHPCLayout& layout);
    // Planes that turn their back on the viewer. Planes near him are let pass: a floor may lie a little above
    // the origin of the tracking.
    static zoHPCProblem::List mirroredPlanes(const zoHPCLayout& layout);
    // Bands of planes that reach further than a neighbour does, so that light is taken away where nothing
    // adds to it. Generated tiles are right by construction.
    static zoHPCProblem::List blendsWiderThanOverlap(const zoHPCLayout& layout);
    // Sizes in metres, or a distance in metres alone. The fix leaves what is in millimetres already.
    static zoHPCProblem::List wallsInMetres(const zoHPCLayout& layout);

private:
    static QString blendText(const QString& name, int edge, double blend, double overlap);
};
