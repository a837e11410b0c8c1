#include "zoWallNeighbourhood.h"

#include <algorithm>

namespace
{
// Of the plane's size; corners from files do not meet exactly.
constexpr double Tolerance = 0.01;

bool isAtEdge(const zoHPCPlane& plane, const Point3& from, const Point3& to)
{
    const Point3 corners[] = {plane.lowerLeft, plane.lowerRight, plane.upperRight, plane.upperLeft()};
    const double near = Tolerance * length(to - from);
    for (int i = 0; i < 4; ++i) {
        const Point3& a = corners[i];
        const Point3& b = corners[(i + 1) % 4];
        if ((length(a - from) < near && length(b - to) < near) ||
            (length(a - to) < near && length(b - from) < near))
            return true;
    }
    return false;
}
} // namespace

template <class Claim>
int zoWallNeighbourhood::best(const zoHPCRenderSetup::Picture& picture, Claim claim) const
{
    int found = -1;
    for (std::size_t i = 0; i < m_pictures.size(); ++i) {
        const zoHPCRenderSetup::Picture& other = m_pictures[i];
        if (other.wallItem != picture.wallItem || other.projectionItem == picture.projectionItem ||
            !claim(other))
            continue;
        if (other.eye == picture.eye)
            return int(i);
        if (found < 0)
            found = int(i);
    }
    return found;
}

int zoWallNeighbourhood::inGrid(const zoHPCRenderSetup::Picture& picture, int rowStep, int columnStep) const
{
    const zoHPCRenderSetup::Cell& cell = picture.cell;
    if (cell.row < 1)
        return -1;
    // Rows and columns of a cave count in each of its walls.
    const Point3 normal = picture.plane.normal();
    return best(picture, [&](const zoHPCRenderSetup::Picture& other) {
        return other.cell.row == cell.row + rowStep && other.cell.column == cell.column + columnStep &&
               dot(other.plane.normal(), normal) > 0.99;
    });
}

int zoWallNeighbourhood::alongEdge(const zoHPCRenderSetup::Picture& picture, const Point3& from,
                                   const Point3& to) const
{
    return best(picture,
                [&](const zoHPCRenderSetup::Picture& other) { return isAtEdge(other.plane, from, to); });
}

zoWallNeighbourhood::Sides zoWallNeighbourhood::of(int index) const
{
    const zoHPCRenderSetup::Picture& picture = m_pictures[std::size_t(index)];
    const zoHPCPlane& plane = picture.plane;
    Sides sides{inGrid(picture, 0, -1), inGrid(picture, 0, 1), inGrid(picture, -1, 0), inGrid(picture, 1, 0)};
    if (sides.left < 0)
        sides.left = alongEdge(picture, plane.lowerLeft, plane.upperLeft());
    if (sides.right < 0)
        sides.right = alongEdge(picture, plane.lowerRight, plane.upperRight);
    if (sides.above < 0)
        sides.above = alongEdge(picture, plane.upperLeft(), plane.upperRight);
    if (sides.below < 0)
        sides.below = alongEdge(picture, plane.lowerLeft, plane.lowerRight);
    return sides;
}
