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

// Cosines of the angle between neighbours. Up to 31 degrees it does not matter from where they are looked at; up to
// 75 degrees they are parts of a bent wall, beyond it walls of a cave, which meet in a corner.
constexpr double s_flat = 0.999;
constexpr double s_flattestFold = 0.85;
constexpr double s_sharpestFold = 0.26;
// The viewer is in front of a plane when he is this part of its size away from it. Nearer to it, as on the floor of a
// cave, nothing can be said from his place.
constexpr double s_nearestViewer = 0.1;
// Neighbours are no further than this part of a plane's size from it.
constexpr double s_furthestNeighbour = 0.1;

bool isNear(const zoHPCPlane& plane, const std::vector<Point3>& corners)
{
    const Point3 n = plane.normal();
    double nearest = HUGE_VAL;
    for (const Point3& corner : corners)
        nearest = std::min(nearest, std::abs(dot(corner - plane.lowerLeft, n)));
    return nearest < s_furthestNeighbour * std::max(plane.width(), plane.height());
}

// Where the viewer at the origin sees these corners on a plane: `n` points from it to him, `distance` is his from it.
// What is beside or behind him is cut off.
std::vector<Point3> thrown(const std::vector<Point3>& corners, const Point3& n, double distance)
{
    constexpr double Nearest =
        0.01; // of the distance: what is nearer to him is seen far outside of the plane
    const auto depth = [&](const Point3& point) { return -dot(n, point) / distance; };
    std::vector<Point3> result;
    for (size_t i = 0; i < corners.size(); ++i) {
        const Point3& a = corners[i];
        const Point3& b = corners[(i + 1) % corners.size()];
        const double depthA = depth(a);
        const double depthB = depth(b);
        if (depthA >= Nearest)
            result.push_back((1.0 / depthA) * a);
        if ((depthA >= Nearest) != (depthB >= Nearest)) {
            const Point3 between = a + ((Nearest - depthA) / (depthB - depthA)) * (b - a);
            result.push_back((1.0 / Nearest) * between);
        }
    }
    return result;
}

// By what the corners, which lie in the plane or are taken to its nearest point, enclose. False when they do not
// reach over it.
bool widen(zoHPCPlaneOverlaps::Reach& reach, const zoHPCPlane& plane, const std::vector<Point3>& corners)
{
    constexpr double Touch = 1e-3; // fraction of the plane that counts as the same place
    const Point3 u = unit(plane.right());
    const Point3 v = cross(plane.normal(), u);
    double low[2] = {HUGE_VAL, HUGE_VAL};
    double high[2] = {-HUGE_VAL, -HUGE_VAL};
    for (const Point3& corner : corners) {
        const Point3 fromCorner = corner - plane.lowerLeft;
        const double place[2] = {dot(fromCorner, u) / plane.width(), dot(fromCorner, v) / plane.height()};
        for (int axis = 0; axis < 2; ++axis) {
            low[axis] = std::min(low[axis], place[axis]);
            high[axis] = std::max(high[axis], place[axis]);
        }
    }
    if (!(low[0] < 1.0 - Touch && high[0] > Touch && low[1] < 1.0 - Touch && high[1] > Touch))
        return false;
    if (low[0] < -Touch)
        reach.left = std::max(reach.left, std::min(high[0], 1.0));
    if (high[0] > 1.0 + Touch)
        reach.right = std::max(reach.right, std::min(1.0 - low[0], 1.0));
    if (low[1] < -Touch)
        reach.lower = std::max(reach.lower, std::min(high[1], 1.0));
    if (high[1] > 1.0 + Touch)
        reach.upper = std::max(reach.upper, std::min(1.0 - low[1], 1.0));
    return true;
}

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
    Reach result;
    const std::vector<const zoHPCPlane*> others = near(plane);
    if (others.size() > s_maximumNear)
        return {1.0, 1.0, 1.0, 1.0, false};
    const Point3 n = plane.normal();
    const double viewerDistance = plane.distanceInFront(Point3());
    const bool isSeen = viewerDistance > s_nearestViewer * std::max(plane.width(), plane.height());
    for (const zoHPCPlane* other : others) {
        const double cosine = dot(n, other->normal());
        const std::vector<Point3> corners{other->lowerLeft, other->lowerRight, other->upperRight,
                                          other->upperLeft()};
        if (!isNear(plane, corners))
            continue;
        if (std::abs(cosine) >= s_flattestFold)
            widen(result, plane, corners);
        if (isSeen && cosine >= s_sharpestFold && widen(result, plane, thrown(corners, n, viewerDistance)))
            result.isFolded = result.isFolded || cosine < s_flat;
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
