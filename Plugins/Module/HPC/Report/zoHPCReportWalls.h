#pragma once

#include "zoHPCPlaneGrids.h"
#include "zoHPCRoomWall.h"

#include <vector>

class zoHPCLayout;

// The walls of a report: those of the room, with the planes of a curved wall, which stand alone there, as one wall
// unrolled into a plane.
class zoHPCReportWalls final
{
public:
    struct Wall : zoHPCRoomWall
    {
        zoHPCPlaneGrids::Grid grid; // of planes; without any for all other walls

        bool isGrid() const { return !grid.planes.empty(); }
    };

    static std::vector<Wall> read(const zoHPCLayout& layout);
};
