#pragma once

#include "zoHPCPlane.h"

#include <QSizeF>

// Columns of flat tiles on a cylinder that stands upright. All corners of tiles are on it: each column is a chord of the
// circle with radius R, which a tile of width w sees under 2 asin(w / 2R). Neighbouring columns have corners that are
// |o| apart in a straight line, o being what they share; below 0 it is the bezel between them. So the angle between
// neighbouring columns is
//
//     2 asin(w / 2R) - 2 asin(o / 2R)
//
// and, the other way round, R = sqrt(w² + o² - 2 w o cos(angle / 2)) / (2 sin(angle / 2)). Lengths are millimetres,
// angles degrees.
class zoHPCCurvedWall final
{
public:
    // Between neighbouring columns. Not a number where a tile is wider than the circle.
    static double angleOf(double tileWidth, double overlap, double radius);
    static double radiusOf(double tileWidth, double overlap, double angle);

    // Overlaps as those of a plan, in millimetres.
    zoHPCCurvedWall(int columns, int rows, const QSizeF& tile, double overlapAcross, double overlapDown,
                    double radius);

    double angle() const { return m_angle; }
    // From the left edge of the first column to the right edge of the last one, as seen from the axis.
    double span() const;
    // No column goes beyond the first one, and all of them fit into the circle.
    bool isPossible() const;

    // Row and column from 1. The middle of the cylinder straight ahead is at the origin, its axis at (0, y, R).
    zoHPCPlane tile(int row, int column) const;

private:
    int m_columns;
    int m_rows;
    QSizeF m_tile;
    double m_overlapDown;
    double m_radius;
    double m_angle;
};
