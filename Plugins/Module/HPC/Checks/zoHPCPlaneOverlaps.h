#pragma once

#include "zoHPCPlane.h"

#include <QHash>

#include <vector>

// Tells how far planes overlap, near each of many without a look at all the others.
class zoHPCPlaneOverlaps final
{
public:
    // How far neighbours reach over a plane from its left, right, lower and upper edge, in fractions.
    struct Reach
    {
        double left = 0.0;
        double right = 0.0;
        double lower = 0.0;
        double upper = 0.0;
        bool isFolded = false; // a neighbour stands at an angle: the numbers hold from the origin
    };

    // Planes without area must not be among them.
    explicit zoHPCPlaneOverlaps(std::vector<zoHPCPlane> planes);

    // Of all planes over one of them. Neighbours at an angle reach as far as somebody at the origin, where the
    // viewer is, sees the same direction lit by both.
    Reach over(const zoHPCPlane& plane) const;

private:
    struct Box
    {
        double low[3];
        double high[3];
        // False for so many or so far away that they are not told one by one.
        bool hasCells() const;
    };

    Box boxOf(const zoHPCPlane& plane) const;
    std::vector<const zoHPCPlane*> near(const zoHPCPlane& plane) const;

    std::vector<zoHPCPlane> m_planes;
    double m_cell = 1.0;         // mm: cells of space, and the planes that reach them
    std::vector<size_t> m_large; // planes that reach too many cells, or too far
    QHash<quint64, std::vector<size_t>> m_cells;
};
