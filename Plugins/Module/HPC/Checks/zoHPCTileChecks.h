#pragma once

#include "zoHPCProblem.h"

#include <QCoreApplication>

class zoHPCLayout;

// Checks of who shows the tiles. A viewport of a projection shows all its tiles. What concerns all tiles of a
// projection is reported once, for the projection.
class zoHPCTileChecks final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCProblems)

public:
    static zoHPCProblem::List tilesShownNowhere(const zoHPCLayout& layout);
    // For the same eye of the same tracked user. A copy without stereo of a tile in stereo does not count, nor does
    // the whole of a wall beside its tiles.
    static zoHPCProblem::List tilesShownTwice(const zoHPCLayout& layout);
    // Left without right eye or the other way round, counted over all displays of a tracked user. The other eye may
    // have a tile of its own that belongs to this one.
    static zoHPCProblem::List tilesForOneEye(const zoHPCLayout& layout);
};
