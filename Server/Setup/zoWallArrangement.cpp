#include "zoWallArrangement.h"

#include <zoHPCProjectionItem.h>

#include <algorithm>
#include <cmath>

namespace
{
using P = zoHPCProjectionItem;
using Kind = zoHPCProjectionType::Kind;

constexpr double Gap = 0.04; // between walls, of the larger side
// Pictures of damaged sizes are not laid out further than this.
constexpr double Largest = 1.0e9;
} // namespace

zoWallArrangement::zoWallArrangement(const zoHPCRenderSetup& setup)
    : m_setup(setup), m_places(setup.pictures().size())
{
    std::vector<std::vector<int>> groups;
    std::vector<int> walls;
    for (std::size_t i = 0; i < setup.pictures().size(); ++i) {
        const int wall = setup.pictures()[i].wallItem;
        const auto found = std::find(walls.begin(), walls.end(), wall);
        const std::size_t group = std::size_t(found - walls.begin());
        if (found == walls.end()) {
            walls.push_back(wall);
            groups.emplace_back();
        }
        groups[group].push_back(int(i));
    }
    for (std::size_t i = 0; i < walls.size(); ++i) {
        noteWalls(walls[i]);
        layFlat(walls[i], groups[i]);
    }
    placeGroups(groups);
    placeCopies();
}

// The planes of a projection that are one wall each.
void zoWallArrangement::noteWalls(int wall)
{
    const P& item = *m_setup.layout().projections()[std::size_t(wall)].item;
    const QString name = item.getString(P::Name);
    if (item.kind() == Kind::Plane) {
        m_walls.push_back({name, zoHPCPlane::fromItem(item)});
        return;
    }
    if (item.kind() == Kind::PowerWall) {
        m_walls.push_back({name, zoHPCPlane::facing(item.getDouble(P::Width), item.getDouble(P::Height),
                                                    item.getDouble(P::Distance))});
        return;
    }
    if (item.kind() == Kind::Cave) {
        const int tiles = std::max(1, item.getInt(P::Rows)) * std::max(1, item.getInt(P::Columns));
        const int columns = std::max(1, item.getInt(P::Columns));
        for (int first = 0; first + tiles <= item.childCount(); first += tiles) {
            const auto planeOf = [&](int tile) {
                const auto* const child = dynamic_cast<const P*>(item.child(first + tile));
                return child != nullptr ? child->plane() : zoHPCPlane();
            };
            m_walls.push_back(
                {name, zoHPCPlane(planeOf(tiles - columns).lowerLeft, planeOf(tiles - 1).lowerRight,
                                  planeOf(columns - 1).upperRight)});
        }
        return;
    }
    // Of pixels: each of its pictures knows which part of it it is.
    for (const Picture& picture : m_setup.pictures()) {
        if (picture.wallItem != wall || picture.part.width() <= 0.0 || picture.part.height() <= 0.0)
            continue;
        const double left = -picture.part.left() / picture.part.width();
        const double bottom = -picture.part.top() / picture.part.height();
        m_walls.push_back({name, picture.plane.part(left, bottom, left + 1.0 / picture.part.width(),
                                                    bottom + 1.0 / picture.part.height())});
        return;
    }
}

// Pixels from the upper left corner of the wall.
void zoWallArrangement::layFlat(int wall, const std::vector<int>& pictures)
{
    const Kind kind = m_setup.layout().projections()[std::size_t(wall)].item->kind();
    const Picture& first = m_setup.pictures()[std::size_t(pictures.front())];
    const double pixelsPerMm = first.geometry.width() / std::max(1.0e-9, first.plane.width());
    for (const int index : pictures) {
        const Picture& picture = m_setup.pictures()[std::size_t(index)];
        QRectF place(QPointF(0.0, 0.0), QSizeF(picture.geometry.size()));
        if (kind == Kind::Cave) {
            const QRectF flat = unfolded(picture);
            place = QRectF(flat.topLeft() * pixelsPerMm, flat.size() * pixelsPerMm);
        } else if (picture.part.width() > 0.0 && picture.part.height() > 0.0) {
            // All tiles of a wall count as large as the first.
            const double width = first.geometry.width() / first.part.width();
            const double height = first.geometry.height() / first.part.height();
            place = QRectF(picture.part.left() * width, (1.0 - picture.part.bottom()) * height,
                           picture.part.width() * width, picture.part.height() * height);
        }
        m_places[std::size_t(index)] = place;
    }
}

// Millimetres with y down: left, front, right and back wall in a row, ceiling and floor above and below the front.
QRectF zoWallArrangement::unfolded(const Picture& picture) const
{
    const P& cave = *m_setup.layout().projections()[std::size_t(picture.wallItem)].item;
    const double width = cave.getDouble(P::CaveWidth);
    const double height = cave.getDouble(P::CaveHeight);
    const double depth = cave.getDouble(P::CaveDepth);
    const Point3 middle{cave.getDouble(P::CaveX), cave.getDouble(P::CaveY), cave.getDouble(P::CaveZ)};
    const zoHPCPlane& plane = picture.plane;
    const Point3 normal = plane.normal();
    // From the middle of the wall to the upper left corner of the tile, along the wall.
    const Point3 toCorner = plane.upperLeft() - middle;
    const double right = dot(toCorner, unit(plane.right()));
    const double up = dot(toCorner, unit(plane.up()));
    double x = 0.0; // of the wall's middle, from that of the front
    double y = 0.0;
    if (normal.x > 0.5) // left wall: it looks to the right
        x = -(width + depth) / 2.0;
    else if (normal.x < -0.5)
        x = (width + depth) / 2.0;
    else if (normal.z < -0.5)
        x = width + depth;
    else if (normal.y < -0.5)
        y = -(height + depth) / 2.0;
    else if (normal.y > 0.5)
        y = (height + depth) / 2.0;
    return {x + right, y - up, plane.width(), plane.height()};
}

QRectF zoWallArrangement::around(const std::vector<int>& pictures) const
{
    QRectF result;
    for (const int index : pictures)
        result = result.united(m_places[std::size_t(index)]);
    return result;
}

// Side by side, from left to right as the viewer sees their middles, with their lower edges on one line.
void zoWallArrangement::placeGroups(const std::vector<std::vector<int>>& groups)
{
    std::vector<std::pair<double, std::size_t>> order;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const Point3 middle = m_setup.pictures()[std::size_t(groups[i].front())].plane.center();
        order.emplace_back(groups.size() > 1 ? std::atan2(middle.x, -middle.z) : 0.0, i);
    }
    std::stable_sort(order.begin(), order.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    double tallest = 0.0;
    for (const std::vector<int>& group : groups)
        tallest = std::max(tallest, around(group).height());
    double x = 0.0;
    for (const auto& entry : order) {
        const std::vector<int>& group = groups[entry.second];
        const QRectF box = around(group);
        for (const int index : group)
            m_places[std::size_t(index)].translate(x - box.left(), tallest - box.bottom());
        x += box.width() + Gap * tallest;
    }
}

// The second picture of a plane goes to a second copy of all, beside or below the first.
void zoWallArrangement::placeCopies()
{
    QHash<int, int> shown; // pictures of each plane so far
    QRectF box;
    for (const QRectF& place : m_places)
        box = box.united(place);
    const bool isWide = box.width() > 1.4 * box.height();
    const double gap = Gap * std::max(box.width(), box.height());
    for (std::size_t i = 0; i < m_places.size(); ++i) {
        const int copy = shown[m_setup.pictures()[i].projectionItem]++;
        m_places[i].translate(isWide ? 0.0 : copy * (box.width() + gap),
                              isWide ? copy * (box.height() + gap) : 0.0);
    }
    box = QRectF();
    for (const QRectF& place : m_places)
        box = box.united(place);
    for (QRectF& place : m_places)
        place.translate(-box.topLeft());
    m_size = QSize(int(std::ceil(std::min(box.width() - 1.0e-6, Largest))),
                   int(std::ceil(std::min(box.height() - 1.0e-6, Largest))))
                 .expandedTo({0, 0});
}
