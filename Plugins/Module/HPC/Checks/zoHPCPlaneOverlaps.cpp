#include "zoHPCPlaneOverlaps.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
// A plane that reaches more cells of space, or cells further away, is compared with all others.
constexpr double s_maximumCells = 256.0;
constexpr double s_furthestCell = 1e6;
// So many planes near one are no cluster: they are not compared, as if the plane were covered.
constexpr size_t s_maximumNear = 2000;

quint64 cellAt(double x, double y, double z)
{
    const auto part = [](double value) { return static_cast<quint64>(static_cast<qint64>(value) + 1048576); };
    return part(x) << 42 | part(y) << 21 | part(z);
}

template <class Box, class Function>
void forEachCell(const Box& box, Function function)
{
    for (double x = box.low[0]; x <= box.high[0]; ++x) {
        for (double y = box.low[1]; y <= box.high[1]; ++y) {
            for (double z = box.low[2]; z <= box.high[2]; ++z)
                function(cellAt(x, y, z));
        }
    }
}
} // namespace

zoHPCPlaneOverlaps::zoHPCPlaneOverlaps(std::vector<zoHPCPlane> planes) : m_planes(std::move(planes))
{
    std::vector<double> sizes;
    for (const zoHPCPlane& plane : m_planes)
        sizes.push_back(std::max(plane.width(), plane.height()));
    if (sizes.empty())
        return;
    std::nth_element(sizes.begin(), sizes.begin() + static_cast<std::ptrdiff_t>(sizes.size() / 2),
                     sizes.end());
    m_cell = std::max(sizes[sizes.size() / 2], 1e-3);
    for (size_t i = 0; i < m_planes.size(); ++i) {
        const Box box = boxOf(m_planes[i]);
        if (!box.hasCells())
            m_large.push_back(i);
        else
            forEachCell(box, [&](quint64 cell) { m_cells[cell].push_back(i); });
    }
}

// Beyond 2^53 counting in doubles would not go on.
bool zoHPCPlaneOverlaps::Box::hasCells() const
{
    double count = 1.0;
    for (int axis = 0; axis < 3; ++axis) {
        if (!(low[axis] >= -s_furthestCell) || !(high[axis] <= s_furthestCell))
            return false;
        count *= high[axis] - low[axis] + 1.0;
    }
    return count <= s_maximumCells;
}

zoHPCPlaneOverlaps::Reach zoHPCPlaneOverlaps::over(const zoHPCPlane& plane) const
{
    constexpr double Touch = 1e-3; // fraction of the plane that counts as the same place
    Reach result;
    const Point3 u = unit(plane.right());
    const Point3 n = plane.normal();
    const Point3 v = cross(n, u);
    const double w = plane.width();
    const double h = plane.height();
    const std::vector<const zoHPCPlane*> others = near(plane);
    if (others.size() > s_maximumNear)
        return {1.0, 1.0, 1.0, 1.0};
    for (const zoHPCPlane* other : others) {
        // Parts of a bent wall may stand at an angle to each other, the walls of a cave do not overlap.
        if (std::abs(dot(n, other->normal())) < 0.85)
            continue;
        double low[2] = {HUGE_VAL, HUGE_VAL};
        double high[2] = {-HUGE_VAL, -HUGE_VAL};
        double nearest = HUGE_VAL;
        for (const Point3& corner :
             {other->lowerLeft, other->lowerRight, other->upperRight, other->upperLeft()}) {
            const Point3 fromCorner = corner - plane.lowerLeft;
            const double place[2] = {dot(fromCorner, u) / w, dot(fromCorner, v) / h};
            for (int axis = 0; axis < 2; ++axis) {
                low[axis] = std::min(low[axis], place[axis]);
                high[axis] = std::max(high[axis], place[axis]);
            }
            nearest = std::min(nearest, std::abs(dot(fromCorner, n)));
        }
        const bool reaches = low[0] < 1.0 - Touch && high[0] > Touch && low[1] < 1.0 - Touch &&
                             high[1] > Touch && nearest < 0.1 * std::max(w, h);
        if (!reaches)
            continue;
        if (low[0] < -Touch)
            result.left = std::max(result.left, std::min(high[0], 1.0));
        if (high[0] > 1.0 + Touch)
            result.right = std::max(result.right, std::min(1.0 - low[0], 1.0));
        if (low[1] < -Touch)
            result.lower = std::max(result.lower, std::min(high[1], 1.0));
        if (high[1] > 1.0 + Touch)
            result.upper = std::max(result.upper, std::min(1.0 - low[1], 1.0));
    }
    return result;
}

zoHPCPlaneOverlaps::Box zoHPCPlaneOverlaps::boxOf(const zoHPCPlane& plane) const
{
    const Point3 corners[] = {plane.lowerLeft, plane.lowerRight, plane.upperRight, plane.upperLeft()};
    Box box;
    for (int axis = 0; axis < 3; ++axis) {
        double low = HUGE_VAL;
        double high = -HUGE_VAL;
        for (const Point3& corner : corners) {
            const double value = axis == 0 ? corner.x : axis == 1 ? corner.y : corner.z;
            low = std::min(low, value);
            high = std::max(high, value);
        }
        // Half a cell around: neighbours may be set back a little.
        box.low[axis] = std::floor(low / m_cell - 0.25);
        box.high[axis] = std::floor(high / m_cell + 0.25);
    }
    return box;
}

// Planes that share a cell with this one, some more than once.
std::vector<const zoHPCPlane*> zoHPCPlaneOverlaps::near(const zoHPCPlane& plane) const
{
    std::vector<const zoHPCPlane*> result;
    const Box box = boxOf(plane);
    const auto take = [&](const zoHPCPlane& other) {
        if (result.size() <= s_maximumNear)
            result.push_back(&other);
    };
    if (!box.hasCells()) {
        for (const zoHPCPlane& other : m_planes)
            take(other);
        return result;
    }
    for (const size_t i : m_large)
        take(m_planes[i]);
    forEachCell(box, [&](quint64 cell) {
        const auto found = m_cells.constFind(cell);
        if (found == m_cells.constEnd())
            return;
        for (const size_t i : *found) {
            if (result.size() > s_maximumNear)
                return;
            result.push_back(&m_planes[i]);
        }
    });
    return result;
}
