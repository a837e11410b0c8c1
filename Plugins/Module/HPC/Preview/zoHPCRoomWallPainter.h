#pragma once

#include "Point3.h"

class zoHPCRoomCanvas;
struct zoHPCRoomWall;

// Paints one wall of the room: its surface, the bands where tiles overlap, the lines between them, its outline
// and the side that it faces.
class zoHPCRoomWallPainter final
{
public:
    // Both must outlive the painter.
    zoHPCRoomWallPainter(zoHPCRoomCanvas& canvas, const zoHPCRoomWall& wall) : m_canvas(canvas), m_wall(wall)
    {
    }

    void paint();
    // Of the arrow from its centre to where its picture is seen.
    static Point3 endOfNormal(const zoHPCRoomWall& wall);

private:
    void paintFill();
    void paintBands();
    void paintTileLines();
    void paintNormal();

    zoHPCRoomCanvas& m_canvas;
    const zoHPCRoomWall& m_wall;
};
