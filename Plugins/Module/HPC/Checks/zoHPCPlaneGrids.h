#pragma once

#include "zoHPCPlane.h"

#include <QSizeF>
#include <QString>

#include <vector>

class zoHPCLayout;

// Tells which single planes are the tiles of one wall by their names, "Wall row:2 col:3", as power walls name theirs:
// curved walls, and walls that the viewer does not stand straight before, are made of such planes.
class zoHPCPlaneGrids final
{
public:
    struct Grid
    {
        QString name; // before row and column
        int rows = 0;
        int columns = 0;
        std::vector<int> projections;   // indices into the layout, row by row from the upper left
        std::vector<zoHPCPlane> planes; // in the same order

        const zoHPCPlane& plane(int row, int column) const // from 0
        {
            return planes[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                          static_cast<std::size_t>(column)];
        }
        // From the top of the first row to the foot of the last.
        zoHPCPlane column(int column) const;
        // Of the first tile, in millimetres.
        QSizeF tile() const { return {planes.front().width(), planes.front().height()}; }
        // What the first tile shares with its neighbours; below 0 what lies between their pictures.
        QSizeF overlap() const;
        // Unrolled into one plane.
        QSizeF size() const;
        // Degrees from the first column to the next.
        double turn() const;
    };

    // In the order of their first planes. Of a wall that lacks a tile, or has one twice, its planes stand alone.
    static std::vector<Grid> find(const zoHPCLayout& layout);
};
