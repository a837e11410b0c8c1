#pragma once

// The columns of a projection. Their attribute names stand in zoHPCProjectionItem.cpp, which of them a type saves in
// zoHPCProjectionType.cpp.
struct zoHPCProjectionColumns
{
    enum Column {
        Name = 0,
        Identifier = 1, // run time only
        Type = 2,
        RightOffsetX = 3,
        RightOffsetY = 4,
        Row = 5, // of a tile, from 1
        TileColumn = 6,
        Rows = 7,
        Columns = 8,
        OverlapX = 9,
        OverlapY = 10,
        CaveWidth = 11,
        CaveHeight = 12,
        CaveDepth = 13,
        CaveX = 14,
        CaveY = 15,
        CaveZ = 16,
        LeftWall = 17,
        RightWall = 18,
        TopWall = 19,
        BottomWall = 20,
        FrontWall = 21,
        BackWall = 22,
        Width = 23,
        Height = 24,
        Distance = 25,
        X1 = 26, // lower left
        Y1 = 27,
        Z1 = 28,
        X2 = 29, // lower right
        Y2 = 30,
        Z2 = 31,
        X3 = 32, // upper right
        Y3 = 33,
        Z3 = 34,
        EdgeBlending = 35,
        LeftEdge = 36, // blend widths, fractions of the tile
        RightEdge = 37,
        TopEdge = 38,
        BottomEdge = 39,
        ColumnCount = 40
    };
};
