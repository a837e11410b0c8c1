#pragma once

#include "zoHPCPlane.h"

#include <QSizeF>
#include <QString>
#include <QStringList>

#include <vector>

class zoHPCLayout;
class zoHPCProjectionItem;

// Rows and columns of tiles in one plane of the room. Widths and steps are fractions of the plane.
struct zoHPCRoomWall
{
    zoHPCProjectionItem* item = nullptr; // the row of the tree that makes it; not owned
    QString name;
    zoHPCPlane plane;
    int rows = 1;
    int columns = 1;
    double tileWidth = 1.0;
    double tileHeight = 1.0;
    double columnStep = 1.0;
    double rowStep = 1.0;
    // Index among the item's children; below 0 the item is the tile itself.
    int firstTile = -1;
    bool isBlended = false;
    double leftBand = 0.0; // of a plane that stands alone
    double rightBand = 0.0;
    double lowerBand = 0.0;
    double upperBand = 0.0;
    bool isInPixels = false;
    bool isDegenerate = false;
    bool isSkewed = false;
    bool turnsAway = false; // from the viewer
    std::vector<bool> lit;  // tiles that a viewport shows, row by row from the top; empty when all are lit

    // Of a plane that is a tile of a wall of planes, as of a curved one: its row and column there, from 1, and the name
    // of the whole, which the tile in the middle of the upper edge has.
    int gridRow = 0;
    int gridColumn = 0;
    QString gridName;

    // Unique names of the nodes that drive the tiles, row by row from the top; empty when none does.
    std::vector<QStringList> hosts;
    QSizeF tilePixels; // of a viewport that shows one; empty when none does

    bool isBad() const { return isDegenerate || isSkewed || turnsAway; }
    double left(int column) const { return column * columnStep; }
    double top(int row) const { return 1.0 - row * rowStep; } // rows count downward
    bool isLit(int row, int column) const
    {
        return lit.empty() ||
               lit[static_cast<size_t>(row) * static_cast<size_t>(columns) + static_cast<size_t>(column)];
    }
    QStringList hostsOf(int row, int column) const
    {
        return hosts.empty() ? QStringList()
                             : hosts[static_cast<size_t>(row) * static_cast<size_t>(columns) +
                                     static_cast<size_t>(column)];
    }
    bool hasTiles() const { return rows > 1 || columns > 1; }
    bool isInGrid() const { return gridRow > 0; }
    // As a person counts them, from 1.
    int shownRow(int row) const { return isInGrid() ? gridRow : row + 1; }
    int shownColumn(int column) const { return isInGrid() ? gridColumn : column + 1; }
    zoHPCPlane tile(int row, int column) const
    {
        return plane.part(left(column), top(row) - tileHeight, left(column) + tileWidth, top(row));
    }
    double overlapX() const { return tileWidth - columnStep; }
    double overlapY() const { return tileHeight - rowStep; }

    // All walls of a configuration, those that generate tiles and those that stand alone.
    static std::vector<zoHPCRoomWall> read(const zoHPCLayout& layout);
    // What a picture of them has to take in: their corners and the viewer.
    static std::vector<Point3> extent(const std::vector<zoHPCRoomWall>& walls);
};
