#include "zoHPCReportWalls.h"

#include "zoHPCLayout.h"
#include "zoHPCProjectionItem.h"

#include <QHash>

#include <algorithm>

namespace
{
zoHPCReportWalls::Wall unrolled(const zoHPCPlaneGrids::Grid& grid, const zoHPCRoomWall& first)
{
    zoHPCReportWalls::Wall wall;
    wall.grid = grid;
    wall.item = first.item;
    wall.name = grid.name;
    wall.rows = grid.rows;
    wall.columns = grid.columns;
    wall.isBlended = first.isBlended;
    wall.tilePixels = first.tilePixels;
    const QSizeF size = grid.size();
    const QSizeF tile = grid.tile();
    const QSizeF overlap = grid.overlap();
    const Point3 foot = grid.column(0).lowerLeft;
    wall.plane = {foot, foot + Point3{size.width(), 0.0, 0.0},
                  foot + Point3{size.width(), size.height(), 0.0}};
    wall.tileWidth = tile.width() / size.width();
    wall.tileHeight = tile.height() / size.height();
    wall.columnStep = (tile.width() - overlap.width()) / size.width();
    wall.rowStep = (tile.height() - overlap.height()) / size.height();
    return wall;
}
} // namespace

std::vector<zoHPCReportWalls::Wall> zoHPCReportWalls::read(const zoHPCLayout& layout)
{
    const std::vector<zoHPCPlaneGrids::Grid> grids = zoHPCPlaneGrids::find(layout);
    QHash<const zoHPCProjectionItem*, std::size_t> gridOf;
    for (std::size_t i = 0; i < grids.size(); ++i) {
        for (const int projection : grids[i].projections)
            gridOf.insert(layout.projections()[std::size_t(projection)].item, i);
    }
    std::vector<Wall> walls;
    std::vector<bool> isDone(grids.size(), false);
    const std::vector<zoHPCRoomWall> all = zoHPCRoomWall::read(layout);
    for (const zoHPCRoomWall& single : all) {
        const auto grid = gridOf.constFind(single.item);
        if (grid == gridOf.constEnd()) {
            Wall wall;
            static_cast<zoHPCRoomWall&>(wall) = single;
            walls.push_back(wall);
        } else if (!isDone[*grid]) {
            isDone[*grid] = true;
            walls.push_back(unrolled(grids[*grid], single));
        }
    }
    return walls;
}
