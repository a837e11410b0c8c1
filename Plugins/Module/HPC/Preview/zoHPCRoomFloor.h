#pragma once

#include "zoHPCPlane.h"

#include <QRectF>

#include <vector>

class zoHPCRoomCanvas;

// The floor below all that stands in the room, with a grid to measure by.
class zoHPCRoomFloor final
{
public:
    explicit zoHPCRoomFloor(const std::vector<Point3>& points);

    // Between the lines of the grid, in millimetres: 1, 2 or 5 times a power of ten.
    double step() const { return m_step; }

    void paint(zoHPCRoomCanvas& canvas) const;

private:
    double m_height;
    QRectF m_ground; // x and z
    double m_step;
};
