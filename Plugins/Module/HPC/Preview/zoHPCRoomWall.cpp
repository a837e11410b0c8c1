#include "zoHPCRoomWall.h"

#include "zoHPCLayout.h"
#include "zoHPCPlaneChecks.h"
#include "zoHPCPlaneGrids.h"
#include "zoHPCProjectionItem.h"

#include <QHash>

#include <algorithm>
#include <cmath>

namespace
{
using P = zoHPCProjectionItem;

bool isFinite(const Point3& p)
{
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

bool isFinite(const zoHPCPlane& plane)
{
    return isFinite(plane.lowerLeft) && isFinite(plane.lowerRight) && isFinite(plane.upperRight);
}

// Reads the walls of one projection after the other.
class Reader final
{
public:
    explicit Reader(const zoHPCLayout& layout);

    void addWalls(int projection);

    std::vector<zoHPCRoomWall> walls;

private:
    void addGeneratedWall(int projection, int firstTile, int tiles);
    void addTiledWall(int projection);
    void addPlane(int projection);
    void finish(zoHPCRoomWall& wall, int projection);
    void addHosts(zoHPCRoomWall& wall, int first) const;

    const zoHPCLayout& m_layout;
    QHash<int, QStringList> m_hosts; // by projection, who shows it
    QHash<int, QSizeF> m_tilePixels; // by projection, as the first viewport has it
};

Reader::Reader(const zoHPCLayout& layout) : m_layout(layout)
{
    for (const zoHPCLayout::Viewport& viewport : layout.viewports()) {
        if (viewport.projection == zoHPCLayout::None || viewport.window == zoHPCLayout::None)
            continue;
        const zoHPCLayout::Window& window = layout.windows()[static_cast<size_t>(viewport.window)];
        QStringList& hosts = m_hosts[viewport.projection];
        if (!window.node.isEmpty() && !hosts.contains(window.node))
            hosts << window.node;
        QSizeF& pixels = m_tilePixels[viewport.projection];
        if (pixels.isEmpty())
            pixels = QSizeF(window.geometry.width() * viewport.area.width(),
                            window.geometry.height() * viewport.area.height());
    }
}

void Reader::addWalls(int projection)
{
    const zoHPCProjectionItem& item = *m_layout.projections()[static_cast<size_t>(projection)].item;
    const zoHPCProjectionType::Kind kind = item.kind();
    if (kind == zoHPCProjectionType::Kind::Plane) {
        addPlane(projection);
    } else if (kind == zoHPCProjectionType::Kind::Wall) {
        addTiledWall(projection);
    } else if (item.childCount() > 0) {
        const qint64 tiles = std::max<qint64>(1, qint64(item.getInt(P::Rows)) * item.getInt(P::Columns));
        for (qint64 first = 0; first + tiles <= item.childCount(); first += tiles)
            addGeneratedWall(projection, static_cast<int>(first), static_cast<int>(tiles));
    }
}

void Reader::addGeneratedWall(int projection, int firstTile, int tiles)
{
    zoHPCRoomWall wall;
    wall.item = m_layout.projections()[static_cast<size_t>(projection)].item;
    wall.firstTile = firstTile;
    wall.rows = std::max(1, wall.item->getInt(P::Rows));
    wall.columns = std::max(1, tiles / wall.rows);
    const auto tile = [&](int row, int column) {
        return dynamic_cast<const zoHPCProjectionItem*>(
            wall.item->child(firstTile + row * wall.columns + column));
    };
    const zoHPCProjectionItem* const upperLeft = tile(0, 0);
    const zoHPCProjectionItem* const lowerLeft = tile(wall.rows - 1, 0);
    const zoHPCProjectionItem* const lowerRight = tile(wall.rows - 1, wall.columns - 1);
    const zoHPCProjectionItem* const upperRight = tile(0, wall.columns - 1);
    if (!upperLeft || !lowerLeft || !lowerRight || !upperRight)
        return;
    wall.plane = {zoHPCPlane::fromItem(*lowerLeft).lowerLeft, zoHPCPlane::fromItem(*lowerRight).lowerRight,
                  zoHPCPlane::fromItem(*upperRight).upperRight};
    const zoHPCPlane one = zoHPCPlane::fromItem(*upperLeft);
    if (wall.columns > 1 && wall.plane.width() > 0.0) {
        wall.tileWidth = one.width() / wall.plane.width();
        wall.columnStep = (1.0 - wall.tileWidth) / (wall.columns - 1);
    }
    if (wall.rows > 1 && wall.plane.height() > 0.0) {
        wall.tileHeight = one.height() / wall.plane.height();
        wall.rowStep = (1.0 - wall.tileHeight) / (wall.rows - 1);
    }
    wall.isBlended = wall.item->getBool(P::EdgeBlending);
    wall.name = wall.item->getString(P::Name);
    if (wall.item->kind() == zoHPCProjectionType::Kind::Cave) {
        // Left of the tile's own row and column stands the name of the wall.
        const QString name = upperLeft->getString(P::Name);
        const int label = name.lastIndexOf(QLatin1String(" row:"));
        wall.name = label > 0 ? name.left(label) : name;
    }
    finish(wall, projection);
}

void Reader::addTiledWall(int projection)
{
    zoHPCRoomWall wall;
    wall.item = m_layout.projections()[static_cast<size_t>(projection)].item;
    wall.rows = wall.item->getInt(P::Rows);
    wall.columns = wall.item->getInt(P::Columns);
    if (wall.rows < 1 || wall.columns < 1 || wall.item->childCount() != qint64(wall.rows) * wall.columns)
        return;
    wall.firstTile = 0;
    wall.isInPixels = true;
    wall.name = wall.item->getString(P::Name);
    wall.isBlended = wall.item->getBool(P::EdgeBlending);
    const QSizeF tile = m_layout.tilePixels(projection);
    const double overlapX = wall.item->wholeOverlap(P::OverlapX);
    const double overlapY = wall.item->wholeOverlap(P::OverlapY);
    const double width = wall.columns * tile.width() - (wall.columns - 1) * overlapX;
    const double height = wall.rows * tile.height() - (wall.rows - 1) * overlapY;
    const double distance = wall.item->getDouble(P::Distance);
    wall.plane = {{-width / 2, -height / 2, -distance},
                  {width / 2, -height / 2, -distance},
                  {width / 2, height / 2, -distance}};
    if (width > 0.0 && wall.columns > 1) {
        wall.tileWidth = tile.width() / width;
        wall.columnStep = (tile.width() - overlapX) / width;
    }
    if (height > 0.0 && wall.rows > 1) {
        wall.tileHeight = tile.height() / height;
        wall.rowStep = (tile.height() - overlapY) / height;
    }
    finish(wall, projection);
}

void Reader::addPlane(int projection)
{
    zoHPCRoomWall wall;
    wall.item = m_layout.projections()[static_cast<size_t>(projection)].item;
    wall.name = wall.item->getString(P::Name);
    wall.plane = zoHPCPlane::fromItem(*wall.item);
    wall.isBlended = wall.item->getBool(P::EdgeBlending);
    wall.leftBand = qBound(0.0, wall.item->getDouble(P::LeftEdge), 1.0);
    wall.rightBand = qBound(0.0, wall.item->getDouble(P::RightEdge), 1.0);
    // What the render side calls the top edge is the lower one: see zoHPCProjectionItem::addPlane(). Tiles
    // must look the same after they were made planes of their own.
    wall.lowerBand = qBound(0.0, wall.item->getDouble(P::TopEdge), 1.0);
    wall.upperBand = qBound(0.0, wall.item->getDouble(P::BottomEdge), 1.0);
    finish(wall, projection);
}

void Reader::finish(zoHPCRoomWall& wall, int projection)
{
    // Nothing can be drawn of a plane whose corners are not numbers; the list of problems names it.
    if (!isFinite(wall.plane))
        return;
    wall.isDegenerate = wall.plane.isDegenerate();
    wall.turnsAway = wall.plane.turnsAwayFrom(Point3());
    wall.isSkewed = wall.plane.skew() > zoHPCPlaneChecks::LargestSkew;
    const size_t first =
        static_cast<size_t>(wall.firstTile < 0 ? projection : projection + 1 + wall.firstTile);
    const size_t count = static_cast<size_t>(wall.rows) * static_cast<size_t>(wall.columns);
    const auto isLit = [&](size_t tile) {
        return first + tile < m_layout.projections().size() && m_layout.projections()[first + tile].isShown;
    };
    bool allLit = true;
    for (size_t tile = 0; tile < count && allLit; ++tile)
        allLit = isLit(tile);
    if (!allLit) {
        wall.lit.resize(count);
        for (size_t tile = 0; tile < count; ++tile)
            wall.lit[tile] = isLit(tile);
    }
    addHosts(wall, static_cast<int>(first));
    walls.push_back(wall);
}

void Reader::addHosts(zoHPCRoomWall& wall, int first) const
{
    const int count = wall.rows * wall.columns;
    bool isDriven = false;
    for (int tile = first; tile < first + count; ++tile) {
        isDriven = isDriven || !m_hosts.value(tile).isEmpty();
        if (wall.tilePixels.isEmpty())
            wall.tilePixels = m_tilePixels.value(tile);
    }
    for (int tile = first; isDriven && tile < first + count; ++tile)
        wall.hosts.push_back(m_hosts.value(tile));
}

void setGrids(const zoHPCLayout& layout, std::vector<zoHPCRoomWall>& walls)
{
    QHash<const P*, zoHPCRoomWall*> wallOf;
    for (zoHPCRoomWall& wall : walls)
        wallOf.insert(wall.item, &wall);
    const std::vector<zoHPCPlaneGrids::Grid> grids = zoHPCPlaneGrids::find(layout);
    for (const zoHPCPlaneGrids::Grid& grid : grids) {
        for (std::size_t i = 0; i < grid.projections.size(); ++i) {
            const P* const item = layout.projections()[std::size_t(grid.projections[i])].item;
            zoHPCRoomWall* const wall = wallOf.value(item);
            if (!wall)
                continue;
            wall->gridRow = int(i) / grid.columns + 1;
            wall->gridColumn = int(i) % grid.columns + 1;
            if (int(i) == grid.columns / 2)
                wall->gridName = grid.name;
        }
    }
}
} // namespace

std::vector<zoHPCRoomWall> zoHPCRoomWall::read(const zoHPCLayout& layout)
{
    Reader reader(layout);
    for (size_t i = 0; i < layout.projections().size(); ++i) {
        if (layout.projections()[i].parent == zoHPCLayout::None)
            reader.addWalls(static_cast<int>(i));
    }
    setGrids(layout, reader.walls);
    return std::move(reader.walls);
}

std::vector<Point3> zoHPCRoomWall::extent(const std::vector<zoHPCRoomWall>& walls)
{
    std::vector<Point3> points{Point3()};
    for (const zoHPCRoomWall& wall : walls) {
        points.push_back(wall.plane.lowerLeft);
        points.push_back(wall.plane.lowerRight);
        points.push_back(wall.plane.upperRight);
        points.push_back(wall.plane.upperLeft());
    }
    return points;
}
