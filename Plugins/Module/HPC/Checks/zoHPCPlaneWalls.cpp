#include "zoHPCPlaneWalls.h"

#include "zoHPCPlane.h"
#include "zoHPCProjectionItem.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace
{
struct Picture
{
    int index;
    bool isStereo;
    zoHPCPlane plane;
    bool isCopy = false;
    std::vector<size_t> beside;
};

// So many planes in one place are no wall: the rest of them is not looked at.
constexpr size_t s_maximumNear = 200;

bool areAlike(double a, double b)
{
    return std::abs(a - b) <= zoHPCPlaneWalls::SizeTolerance * std::max(a, b);
}

bool areOfOneSize(const zoHPCPlane& a, const zoHPCPlane& b)
{
    return areAlike(a.width(), b.width()) && areAlike(a.height(), b.height()) &&
           dot(a.normal(), b.normal()) > zoHPCPlaneWalls::SmallestCosine;
}

double reachOf(const zoHPCPlane& plane)
{
    return zoHPCPlaneWalls::LargestShift * std::min(plane.width(), plane.height());
}

bool areEdgeToEdge(const zoHPCPlane& a, const zoHPCPlane& b)
{
    const double reach = reachOf(a);
    const auto meet = [&](double s, double t) { return length(a.at(s, t) - b.at(1.0 - s, 1.0 - t)) < reach; };
    return meet(0.0, 0.5) || meet(1.0, 0.5) || meet(0.5, 0.0) || meet(0.5, 1.0);
}

// One of two in one place is the copy: that without stereo.
void relate(std::vector<Picture>& pictures, size_t a, size_t b)
{
    const zoHPCPlane& plane = pictures[a].plane;
    const zoHPCPlane& other = pictures[b].plane;
    if (!areOfOneSize(plane, other))
        return;
    if (length(plane.center() - other.center()) < reachOf(plane)) {
        pictures[pictures[a].isStereo ? b : a].isCopy = true;
    } else if (areEdgeToEdge(plane, other)) {
        pictures[a].beside.push_back(b);
        pictures[b].beside.push_back(a);
    }
}

// Cells of space as large as two neighbours, for sizes of one power of two: neighbours are in cells that touch, and
// their sizes differ by one class at most.
void relateAll(std::vector<Picture>& pictures)
{
    using Cell = std::array<double, 4>;
    const auto cellAt = [](const Point3& place, int scale, const std::array<int, 3>& step) {
        const double size = std::ldexp(4.0, scale);
        return Cell{static_cast<double>(scale), std::floor(place.x / size) + step[0],
                    std::floor(place.y / size) + step[1], std::floor(place.z / size) + step[2]};
    };
    constexpr int Steps = 27;
    std::map<Cell, std::vector<size_t>> cells;
    for (size_t i = 0; i < pictures.size(); ++i) {
        const zoHPCPlane plane = pictures[i].plane;
        const int scale = std::ilogb(std::max(plane.width(), plane.height()));
        for (int s = scale - 1; s <= scale + 1; ++s) {
            for (int step = 0; step < Steps; ++step) {
                const auto cell =
                    cells.find(cellAt(plane.center(), s, {step % 3 - 1, step / 3 % 3 - 1, step / 9 - 1}));
                if (cell == cells.end())
                    continue;
                for (const size_t other : cell->second)
                    relate(pictures, i, other);
            }
        }
        std::vector<size_t>& own = cells[cellAt(plane.center(), scale, {0, 0, 0})];
        if (own.size() < s_maximumNear)
            own.push_back(i);
    }
}

// All that are reached from it over neighbours, copies aside.
std::vector<size_t> wallOf(const std::vector<Picture>& pictures, size_t first, std::vector<bool>& isDone)
{
    std::vector<size_t> wall = {first};
    isDone[first] = true;
    for (size_t i = 0; i < wall.size(); ++i) {
        for (const size_t other : pictures[wall[i]].beside) {
            if (isDone[other] || pictures[other].isCopy)
                continue;
            isDone[other] = true;
            wall.push_back(other);
        }
    }
    return wall;
}
} // namespace

std::vector<zoHPCPlaneWalls::Mixed> zoHPCPlaneWalls::mixedWalls(const zoHPCLayout& layout,
                                                                const std::map<int, bool>& planes)
{
    std::vector<Picture> pictures;
    size_t stereoCount = 0;
    for (const auto& [index, isStereo] : planes) {
        const zoHPCPlane plane = zoHPCPlane::fromItem(*layout.projections()[static_cast<size_t>(index)].item);
        // Lengths of such corners may not be numbers any more.
        if (plane.isDegenerate() || !std::isfinite(plane.width()) || !std::isfinite(plane.height()))
            continue;
        pictures.push_back({index, isStereo, plane, false, {}});
        stereoCount += isStereo ? 1 : 0;
    }
    std::vector<Mixed> result;
    // Walls for both eyes or for none, which are nearly all, cost nothing.
    if (stereoCount == 0 || stereoCount == pictures.size())
        return result;
    relateAll(pictures);
    std::vector<bool> isDone(pictures.size(), false);
    for (size_t i = 0; i < pictures.size(); ++i) {
        if (isDone[i] || pictures[i].isCopy)
            continue;
        Mixed mixed;
        for (const size_t member : wallOf(pictures, i, isDone))
            (pictures[member].isStereo ? mixed.stereo : mixed.mono).push_back(pictures[member].index);
        if (mixed.mono.empty() || mixed.mono.size() >= mixed.stereo.size())
            continue;
        std::sort(mixed.mono.begin(), mixed.mono.end());
        std::sort(mixed.stereo.begin(), mixed.stereo.end());
        result.push_back(std::move(mixed));
    }
    return result;
}
