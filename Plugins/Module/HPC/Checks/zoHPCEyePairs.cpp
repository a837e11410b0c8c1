#include "zoHPCEyePairs.h"

#include "zoHPCPlane.h"
#include "zoHPCProjectionItem.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace
{
using P = zoHPCProjectionItem;
using Tile = zoHPCEyePairs::Tile;

// So many planes in one place are no wall: the rest of them is not looked at.
constexpr size_t s_maximumNear = 200;

struct Picture
{
    zoHPCPlane plane;
    double side; // the larger one
};

bool belongTogether(const Picture& a, const Picture& b)
{
    const double small = std::min(a.side, b.side);
    const double large = std::max(a.side, b.side);
    if (large > zoHPCEyePairs::LargestRatio * small)
        return false;
    const double reach = std::max(zoHPCEyePairs::LargestShift * small, zoHPCEyePairs::EyeShift);
    return length(a.plane.center() - b.plane.center()) < reach &&
           dot(a.plane.normal(), b.plane.normal()) > zoHPCEyePairs::SmallestCosine;
}

// Planes of one eye in cells of space. Those of one class of size are found in the cells around a place, and pairs
// differ by one class at most.
class Space
{
public:
    void add(const Picture& picture)
    {
        const int scale = scaleOf(picture.side);
        std::vector<const Picture*>& cell = m_cells[cellAt(picture.plane.center(), scale, 0, 0, 0)];
        if (cell.size() < s_maximumNear)
            cell.push_back(&picture);
    }

    bool hasPartner(const Picture& picture) const
    {
        const int scale = scaleOf(picture.side);
        for (int s = scale - 1; s <= scale + 1; ++s) {
            for (int i = 0; i < 27; ++i) {
                const auto cell =
                    m_cells.find(cellAt(picture.plane.center(), s, i % 3 - 1, i / 3 % 3 - 1, i / 9 - 1));
                if (cell == m_cells.end())
                    continue;
                for (const Picture* other : cell->second) {
                    if (belongTogether(*other, picture))
                        return true;
                }
            }
        }
        return false;
    }

private:
    using Cell = std::array<double, 4>;

    static int scaleOf(double side) { return std::ilogb(std::max(side, 1.0)); }

    static Cell cellAt(const Point3& place, int scale, int dx, int dy, int dz)
    {
        // No smaller than what a pair of that size may be apart.
        const double size = std::max(std::ldexp(1.0, scale), zoHPCEyePairs::EyeShift);
        return {static_cast<double>(scale), std::floor(place.x / size) + dx, std::floor(place.y / size) + dy,
                std::floor(place.z / size) + dz};
    }

    std::map<Cell, std::vector<const Picture*>> m_cells;
};

// Row and column of a tile in pixels, and the layout of its wall.
QString gridPlaceOf(const zoHPCProjectionItem& item)
{
    QString place;
    for (const int column : {P::Rows, P::Columns, P::Row, P::TileColumn})
        place += QString::number(item.getInt(column)) + QLatin1Char(' ');
    return place;
}
} // namespace

std::vector<bool> zoHPCEyePairs::find(const zoHPCLayout& layout, const std::vector<Tile>& tiles)
{
    struct Seen // by one eye of one user
    {
        Space planes;
        QHash<QString, int> grid; // places to how many walls have them
    };
    std::map<std::pair<QString, unsigned>, Seen> seen;
    std::vector<Picture> pictures(tiles.size());
    const auto itemOf = [&](const Tile& tile) -> const zoHPCProjectionItem& {
        return *layout.projections()[static_cast<size_t>(tile.projection)].item;
    };
    for (size_t i = 0; i < tiles.size(); ++i) {
        const zoHPCProjectionItem& item = itemOf(tiles[i]);
        Seen& own = seen[{tiles[i].user, tiles[i].eye}];
        if (item.typeRow().isInPixels) {
            ++own.grid[gridPlaceOf(item)];
            continue;
        }
        const zoHPCPlane plane = zoHPCPlane::fromItem(item);
        if (plane.isDegenerate())
            continue;
        pictures[i] = {plane, std::max(plane.width(), plane.height())};
        own.planes.add(pictures[i]);
    }
    std::vector<bool> result(tiles.size(), false);
    for (size_t i = 0; i < tiles.size(); ++i) {
        const auto other = seen.find({tiles[i].user, tiles[i].eye ^ unsigned(zoHPCLayout::BothEyes)});
        if (other == seen.end())
            continue;
        const zoHPCProjectionItem& item = itemOf(tiles[i]);
        result[i] = item.typeRow().isInPixels
                        ? other->second.grid.contains(gridPlaceOf(item))
                        : pictures[i].side > 0.0 && other->second.planes.hasPartner(pictures[i]);
    }
    return result;
}
