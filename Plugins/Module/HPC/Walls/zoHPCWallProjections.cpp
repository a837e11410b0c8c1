#include "zoHPCWallProjections.h"

#include "zoHPCCurvedWall.h"
#include "zoHPCPlane.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCProjectionType.h"
#include "zoText.h"

#include <QtMath>

#include <cmath>
#include <utility>

namespace
{
using P = zoHPCProjectionItem;
using Plan = zoHPCWallPlan;
using Type = zoHPCProjectionType::Kind;

// The flag of each wall, and the column that has it.
constexpr std::pair<unsigned, int> s_caveWalls[] = {
    {Plan::LeftWall, P::LeftWall},     {Plan::RightWall, P::RightWall}, {Plan::TopWall, P::TopWall},
    {Plan::BottomWall, P::BottomWall}, {Plan::FrontWall, P::FrontWall}, {Plan::BackWall, P::BackWall}};

// 0, not -0, for what is in the middle.
Point3 seenFrom(const Point3& viewer, const Point3& point)
{
    return {point.x - viewer.x, point.y - viewer.y, point.z - viewer.z};
}

zoHPCPlane seenFrom(const Point3& viewer, const zoHPCPlane& plane)
{
    return {seenFrom(viewer, plane.lowerLeft), seenFrom(viewer, plane.lowerRight),
            seenFrom(viewer, plane.upperRight)};
}

// Columns, rows, and what tiles share.
void setGrid(P& item, const Plan& plan, const Plan::Overlap& overlap)
{
    item.setInt(P::Columns, plan.columns);
    item.setInt(P::Rows, plan.rows);
    item.setBool(P::EdgeBlending, overlap.across > 0.0 || overlap.down > 0.0);
    item.setDouble(P::OverlapX, overlap.across);
    item.setDouble(P::OverlapY, overlap.down);
}

std::unique_ptr<P> tiledWall(const Plan& plan)
{
    auto wall = std::make_unique<P>(plan.title(), Type::Wall);
    Plan::Overlap overlap = plan.overlapPixels();
    overlap = {std::round(overlap.across), std::round(overlap.down)};
    setGrid(*wall, plan, overlap);
    wall->setDouble(P::Distance, plan.viewer.z);
    wall->update();
    return wall;
}

std::unique_ptr<P> powerWall(const Plan& plan)
{
    auto wall = std::make_unique<P>(plan.title(), Type::PowerWall);
    setGrid(*wall, plan, plan.overlapMillimetres());
    wall->setDouble(P::Width, plan.wallSize().width());
    wall->setDouble(P::Height, plan.wallSize().height());
    wall->setDouble(P::Distance, plan.viewer.z);
    wall->update();
    return wall;
}

std::unique_ptr<P> cave(const Plan& plan)
{
    auto item = std::make_unique<P>(plan.title(), Type::Cave);
    setGrid(*item, plan, plan.overlapMillimetres());
    const Point3 center = seenFrom(plan.viewer, Point3());
    item->setDouble(P::CaveWidth, plan.caveSize.x);
    item->setDouble(P::CaveHeight, plan.caveSize.y);
    item->setDouble(P::CaveDepth, plan.caveSize.z);
    item->setDouble(P::CaveX, center.x);
    item->setDouble(P::CaveY, center.y);
    item->setDouble(P::CaveZ, center.z);
    for (const auto& [flag, column] : s_caveWalls)
        item->setBool(column, (plan.caveWalls & flag) != 0);
    item->update();
    return item;
}

std::unique_ptr<P> planeItem(const QString& name, const zoHPCPlane& plane)
{
    auto item = std::make_unique<P>(name, Type::Plane);
    plane.toItem(*item);
    item->setBool(P::EdgeBlending, false);
    return item;
}

// The planes of a power wall, moved to where they are seen from beside its middle.
void addMovedPowerWall(const Plan& plan, zoHPCWallProjections::List& list)
{
    const std::unique_ptr<P> wall = powerWall(plan);
    const Point3 aside{plan.viewer.x, plan.viewer.y, 0.0};
    const QList<P*> tiles = wall->children<P>();
    for (const P* tile : tiles) {
        std::unique_ptr<P> item = planeItem(tile->getString(P::Name), seenFrom(aside, tile->plane()));
        item->setBool(P::EdgeBlending, tile->getBool(P::EdgeBlending));
        // Where there is a bezel, those of a power wall are below 0.
        for (const int edge : {P::LeftEdge, P::RightEdge, P::TopEdge, P::BottomEdge})
            item->setDouble(edge, qMax(0.0, tile->getDouble(edge)));
        list.push_back(std::move(item));
    }
}

void addCurvedWall(const Plan& plan, zoHPCWallProjections::List& list)
{
    const QSizeF tile = plan.tileSize();
    const Plan::Overlap overlap = plan.overlapMillimetres();
    const zoHPCCurvedWall wall(plan.columns, plan.rows, tile, overlap.across, overlap.down,
                               plan.curveRadius());
    const bool isBlended = overlap.across > 0.0 || overlap.down > 0.0;
    const double across = qMax(0.0, overlap.across) / tile.width();
    const double down = qMax(0.0, overlap.down) / tile.height();
    for (int row = 1; row <= plan.rows; ++row) {
        for (int column = 1; column <= plan.columns; ++column) {
            const QString name =
                zoText("%1 row:%2 col:%3").arg(plan.title(), QString::number(row), QString::number(column));
            std::unique_ptr<P> item = planeItem(name, seenFrom(plan.viewer, wall.tile(row, column)));
            item->setBool(P::EdgeBlending, isBlended);
            item->setDouble(P::LeftEdge, column > 1 ? across : 0.0);
            item->setDouble(P::RightEdge, column < plan.columns ? across : 0.0);
            // What documents call the top edge overlaps the row below, as in the planes of power walls.
            item->setDouble(P::TopEdge, row < plan.rows ? down : 0.0);
            item->setDouble(P::BottomEdge, row > 1 ? down : 0.0);
            list.push_back(std::move(item));
        }
    }
}

zoHPCPlane planeOf(const Plan::Plane& plane)
{
    const double yaw = qDegreesToRadians(plane.yaw);
    const double tilt = qDegreesToRadians(plane.tilt);
    const Point3 normal{std::sin(yaw) * std::cos(tilt), std::sin(tilt), std::cos(yaw) * std::cos(tilt)};
    const Point3 right{std::cos(yaw), 0.0, -std::sin(yaw)};
    const Point3 halfWidth = plane.size.width() / 2 * right;
    const Point3 halfHeight = plane.size.height() / 2 * cross(normal, right);
    return {plane.center - halfWidth - halfHeight, plane.center + halfWidth - halfHeight,
            plane.center + halfWidth + halfHeight};
}

void addFreePlanes(const Plan& plan, zoHPCWallProjections::List& list)
{
    const std::vector<zoHPCPlane> planes = zoHPCWallProjections::planesOf(plan);
    for (std::size_t i = 0; i < planes.size(); ++i)
        list.push_back(
            planeItem(zoHPCWallProjections::nameOf(plan, int(i)), seenFrom(plan.viewer, planes[i])));
}
} // namespace

std::vector<zoHPCPlane> zoHPCWallProjections::planesOf(const zoHPCWallPlan& plan)
{
    std::vector<zoHPCPlane> planes;
    for (const Plan::Plane& plane : plan.planes)
        planes.push_back(planeOf(plane));
    return planes;
}

QString zoHPCWallProjections::nameOf(const zoHPCWallPlan& plan, int plane)
{
    const QString own = plan.planes[std::size_t(plane)].name.trimmed();
    return own.isEmpty() ? plan.title() + QLatin1Char(' ') + QString::number(plane + 1) : own;
}

zoHPCWallProjections::List zoHPCWallProjections::make(const zoHPCWallPlan& plan)
{
    List list;
    switch (plan.kind) {
    case Plan::Kind::Tiled:
        list.push_back(tiledWall(plan));
        break;
    case Plan::Kind::Power:
        if (plan.viewer.x != 0.0 || plan.viewer.y != 0.0)
            addMovedPowerWall(plan, list);
        else
            list.push_back(powerWall(plan));
        break;
    case Plan::Kind::Cave:
        list.push_back(cave(plan));
        break;
    case Plan::Kind::Curved:
        addCurvedWall(plan, list);
        break;
    case Plan::Kind::Planes:
        addFreePlanes(plan, list);
        break;
    }
    return list;
}

std::vector<const zoHPCProjectionItem*> zoHPCWallProjections::tilesOf(const List& projections)
{
    std::vector<const P*> tiles;
    for (const std::unique_ptr<P>& projection : projections) {
        const QList<P*> children = projection->children<P>();
        if (projection->kind() == Type::Plane)
            tiles.push_back(projection.get());
        else
            tiles.insert(tiles.end(), children.begin(), children.end());
    }
    return tiles;
}
