#pragma once

#include "zoHPCPlane.h"
#include "zoHPCWallPlan.h"

#include <memory>
#include <vector>

class zoHPCProjectionItem;

// The projections of a plan: one for a wall or a cave, one per tile for a curved wall, free planes, and a power wall that
// the viewer does not stand straight before.
class zoHPCWallProjections final
{
public:
    using List = std::vector<std::unique_ptr<zoHPCProjectionItem>>;

    // Of a plan without mistakes.
    static List make(const zoHPCWallPlan& plan);
    // Of free planes, where they stand, and what they are called.
    static std::vector<zoHPCPlane> planesOf(const zoHPCWallPlan& plan);
    static QString nameOf(const zoHPCWallPlan& plan, int plane);
    // Their tiles and planes in the order of windows: wall by wall, row by row from the upper left. They belong to the
    // list.
    static std::vector<const zoHPCProjectionItem*> tilesOf(const List& projections);
};
