#pragma once

#include "zoHPCPictureStyle.h"

#include <QCoreApplication>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <vector>

class zoHPCRoomCanvas;
struct zoHPCRoomWall;

// The places of the tiles of one wall in the picture of the room, with the hosts that drive them below, in letters
// of one size that all of them have room for.
class zoHPCRoomTileNames final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCRoomPicture)

public:
    // Smaller letters cannot be read.
    static constexpr int SmallestLetters = zoHPCPictureStyle::SmallestLetters;

    // Both must outlive it. The places alone, where the hosts have no room.
    zoHPCRoomTileNames(zoHPCRoomCanvas& canvas, const zoHPCRoomWall& wall, bool hasHosts = true);

    // Whether all of them can be read.
    bool fit() const { return m_letters > 0; }
    // Nothing when they do not fit, and none over another text.
    void paint() const;

private:
    struct Tile
    {
        QStringList lines;
        QRectF room; // in the picture, well within the tile
    };

    // Until one of them has no room at all. Returns the size of letters above which a tile has no room.
    int findTiles(bool hasHosts);
    Tile tileAt(int row, int column, bool hasHosts) const;
    bool fits(const Tile& tile, int letters) const;
    QSizeF sizeOf(const Tile& tile, int letters) const;
    QRectF freeBox(const Tile& tile, const QSizeF& size) const;

    zoHPCRoomCanvas& m_canvas;
    const zoHPCRoomWall& m_wall;
    std::vector<Tile> m_tiles;
    int m_letters = 0; // units of the picture
};
