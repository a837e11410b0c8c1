#pragma once

#include "zoHPCProblem.h"

#include <QCoreApplication>

class zoHPCLayout;

// Checks of what the two eyes see: how far they are apart, and that a wall is one for both or for none.
class zoHPCStereoChecks final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCProblems)

public:
    // Eyes nearer to each other than this were given in metres (mm): those of a child are 40 mm apart and more, and
    // scenes that are shown small are scaled in other ways.
    static constexpr double SmallestEyeSeparation = 1.0;
    // What the fix sets, and a new display has (mm).
    static constexpr double UsualEyeSeparation = 65.0;

    // What is not given at all is not told in any of these: it counts as the usual one.
    static zoHPCProblem::List eyeSeparationsInMetres(const zoHPCLayout& layout);
    // Displays with a viewport in stereo.
    static zoHPCProblem::List noEyeSeparations(const zoHPCLayout& layout);
    // Displays of one tracked user, in stereo. One sign below 0 for all of them is a way to swap the eyes, and right.
    static zoHPCProblem::List unlikeEyeSeparations(const zoHPCLayout& layout);
    // The same where no display of the user is above 0: swapped for all, as may be wanted.
    static zoHPCProblem::List swappedEyes(const zoHPCLayout& layout);
    // Of each projection with several tiles, by tracked user: the fewer ones, or those without stereo. What shows the
    // whole is a copy and does not count. And of planes that stand edge to edge: those without stereo, when they are
    // the fewer ones.
    static zoHPCProblem::List monoTilesInStereoWalls(const zoHPCLayout& layout);

private:
    static zoHPCProblem::List monoTilesOfProjections(const zoHPCLayout& layout);
    static zoHPCProblem::List monoPlanesAmongStereo(const zoHPCLayout& layout);
};
