#include "zoHPCRenderSetup.h"

#include "zoHPCDisplayItem.h"
#include "zoHPCDisplaySetup.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCProjectionType.h"
#include "zoHPCTreeItem.h"
#include "zoHPCViewportItem.h"

#include <algorithm>
#include <cmath>

namespace
{
using P = zoHPCProjectionItem;

using Type = zoHPCProjectionType::Kind;

bool isTypeOf(const P& item, Type type)
{
    return zoHPCProjectionType::of(item.projectionType()).kind == type;
}

// Engines count pixels in whole numbers of 16 or 32 bits.
constexpr int FurthestPixel = 1000000;

// Where a tile begins in a row or column of them, in pixels.
double tileOffset(int index, double size, double overlap)
{
    return (index - 1) * (size - overlap);
}

// Null for a window that stands alone.
const zoHPCDisplayItem* displayOf(const zoHPCLayout::Window& window)
{
    return dynamic_cast<const zoHPCDisplayItem*>(static_cast<const QTreeWidgetItem*>(window.item)->parent());
}

double wallSize(int count, double size, double overlap)
{
    return count * size - (count - 1) * overlap;
}
} // namespace

zoHPCRenderSetup::zoHPCRenderSetup(const zoHPCDisplaySetup& displays, zoHPCTreeItem* master,
                                   double pixelPitch)
    : m_layout(displays, master), m_pixelPitch(pixelPitch)
{
    for (std::size_t i = 0; i < m_layout.viewports().size(); ++i)
        addPicture(int(i));
}

double zoHPCRenderSetup::eyeSeparation() const
{
    for (const zoHPCLayout::Window& window : m_layout.windows()) {
        if (const zoHPCDisplayItem* const display = displayOf(window))
            return display->getDouble(zoHPCDisplayItem::EyeSeparation);
    }
    return 65.0;
}

QString zoHPCRenderSetup::nameOf(const zoHPCLayout::Viewport& viewport) const
{
    const zoHPCLayout::Window& window = m_layout.windows()[std::size_t(viewport.window)];
    return tr("viewport %1 of window %2 of display %3")
        .arg(QString::number(viewport.number), QString::number(window.number),
             QString::number(window.display));
}

QPoint zoHPCRenderSetup::rightEyeOffset(int projection) const
{
    const zoHPCLayout::Projection& entry = m_layout.projections()[std::size_t(projection)];
    // Planes save none of their own; those of a power wall have that of the whole.
    const P& top = *m_layout.projections()[std::size_t(entry.top)].item;
    const P& item = isTypeOf(top, Type::PowerWall) ? top : *entry.item;
    if (!item.typeRow().isInPixels && !isTypeOf(item, Type::PowerWall))
        return {};
    return {item.getInt(P::RightOffsetX), item.getInt(P::RightOffsetY)};
}

void zoHPCRenderSetup::addPicture(int index)
{
    const zoHPCLayout::Viewport& viewport = m_layout.viewports()[std::size_t(index)];
    if (viewport.window == zoHPCLayout::None)
        return;
    Picture picture;
    picture.viewport = index;
    const QString reason = placePicture(viewport, picture);
    if (!reason.isEmpty()) {
        m_leftOut.push_back({index, tr("%1 is left out: %2").arg(nameOf(viewport), reason)});
        return;
    }
    setAppearance(viewport, picture);
    m_pictures.push_back(picture);
}

bool zoHPCRenderSetup::isOnAScreen(const QRectF& area)
{
    return std::abs(area.left()) <= FurthestPixel && std::abs(area.top()) <= FurthestPixel &&
           std::abs(area.right()) <= FurthestPixel && std::abs(area.bottom()) <= FurthestPixel;
}

// Node, plane and pixels; why not, if it has none of these.
QString zoHPCRenderSetup::placePicture(const zoHPCLayout::Viewport& viewport, Picture& picture) const
{
    const zoHPCLayout::Window& window = m_layout.windows()[std::size_t(viewport.window)];
    if (window.nodeIndex == zoHPCLayout::None)
        return window.node.isEmpty() ? tr("its window has no node")
                                     : tr("the cluster has no node \"%1\"").arg(window.node);
    const zoHPCLayout::Node& node = m_layout.nodes()[std::size_t(window.nodeIndex)];
    if (!node.enabled)
        return tr("the node %1 is disabled").arg(node.name);
    if (viewport.projection == zoHPCLayout::None)
        return tr("it shows no projection");

    const zoHPCLayout::Projection& projection = m_layout.projections()[std::size_t(viewport.projection)];
    picture.projection = projection.item->getString(P::Name);
    if (!findPlane(viewport.projection, picture))
        return tr("\"%1\" is not one plane").arg(picture.projection);
    if (picture.plane.isDegenerate())
        return tr("the plane \"%1\" has no area").arg(picture.projection);
    picture.node = window.nodeIndex;
    picture.host = node.item->hostName();
    picture.projectionItem = viewport.projection;
    picture.wallItem = projection.top;
    picture.wall = m_layout.projections()[std::size_t(projection.top)].item->getString(P::Name);
    return placeInWindow(viewport, picture);
}

QString zoHPCRenderSetup::placeInWindow(const zoHPCLayout::Viewport& viewport, Picture& picture) const
{
    const zoHPCLayout::Window& window = m_layout.windows()[std::size_t(viewport.window)];
    picture.screen = window.screen;
    picture.window = viewport.window;
    picture.isFullScreen = window.isFullScreen;
    picture.area = viewport.area;
    const QRectF& outer = window.geometry;
    const QRectF inner(QPointF(outer.x() + viewport.area.left() * outer.width(),
                               outer.y() + viewport.area.top() * outer.height()),
                       QPointF(outer.x() + viewport.area.right() * outer.width(),
                               outer.y() + viewport.area.bottom() * outer.height()));
    if (!isOnAScreen(outer) || !isOnAScreen(inner))
        return tr("it is further than %1 pixels away").arg(FurthestPixel);
    picture.windowGeometry = outer.toRect();
    const int left = qRound(inner.left());
    const int top = qRound(inner.top());
    const int right = qRound(inner.right());
    const int bottom = qRound(inner.bottom());
    picture.geometry = QRect(left, top, right - left, bottom - top);
    if (picture.geometry.width() < 1 || picture.geometry.height() < 1)
        return tr("it has no pixels");
    return {};
}

void zoHPCRenderSetup::setAppearance(const zoHPCLayout::Viewport& viewport, Picture& picture) const
{
    picture.cell = cellOf(viewport.projection);
    picture.edges = edgesOf(viewport.projection, picture.geometry.size());
    picture.eye = viewport.item->getString(zoHPCViewportItem::Eye);
    picture.flipX = viewport.item->getBool(zoHPCViewportItem::FlipX);
    picture.flipY = viewport.item->getBool(zoHPCViewportItem::FlipY);
    picture.rightEyeOffset = rightEyeOffset(viewport.projection);
    const zoHPCDisplayItem* const display = displayOf(m_layout.windows()[std::size_t(viewport.window)]);
    picture.eyeSeparation = display != nullptr ? display->getDouble(zoHPCDisplayItem::EyeSeparation) : 0.0;
}

zoHPCRenderSetup::Cell zoHPCRenderSetup::cellOf(int projection) const
{
    const zoHPCLayout::Projection& entry = m_layout.projections()[std::size_t(projection)];
    const P& item = *entry.item;
    if (isTypeOf(item, Type::Tile))
        return {item.getInt(P::Row), item.getInt(P::TileColumn), item.getInt(P::Rows),
                item.getInt(P::Columns)};
    if (!isTypeOf(item, Type::Plane) || entry.parent == zoHPCLayout::None)
        return {};
    // Planes are laid out row by row from the top left, in a cave wall after wall.
    const P& parent = *m_layout.projections()[std::size_t(entry.parent)].item;
    const int rows = std::max(1, parent.getInt(P::Rows));
    const int columns = std::max(1, parent.getInt(P::Columns));
    const int place = parent.indexOfChild(const_cast<P*>(&item)) % (rows * columns);
    return {place / columns + 1, place % columns + 1, rows, columns};
}

zoHPCRenderSetup::Edges zoHPCRenderSetup::edgesOf(int projection, const QSizeF& pixels) const
{
    const zoHPCLayout::Projection& entry = m_layout.projections()[std::size_t(projection)];
    const P& item = *entry.item;
    if (!item.getBool(P::EdgeBlending))
        return {};
    if (isTypeOf(item, Type::Plane)) {
        // What documents call the top edge overlaps the row below: rows of blend widths count upward.
        return {item.getDouble(P::LeftEdge) * pixels.width(), item.getDouble(P::RightEdge) * pixels.width(),
                item.getDouble(P::BottomEdge) * pixels.height(),
                item.getDouble(P::TopEdge) * pixels.height()};
    }
    if (!isTypeOf(item, Type::Tile))
        return {};
    const QSizeF tile = tilePixels(entry.parent == zoHPCLayout::None ? projection : entry.parent);
    const double x = item.getDouble(P::OverlapX) / tile.width() * pixels.width();
    const double y = item.getDouble(P::OverlapY) / tile.height() * pixels.height();
    const Cell cell = cellOf(projection);
    return {cell.column > 1 ? x : 0.0, cell.column < cell.columns ? x : 0.0, cell.row > 1 ? y : 0.0,
            cell.row < cell.rows ? y : 0.0};
}

// Sought among all viewports, once for each wall.
QSizeF zoHPCRenderSetup::tilePixels(int projection) const
{
    const auto known = m_tilePixels.constFind(projection);
    return known != m_tilePixels.constEnd()
               ? known.value()
               : m_tilePixels.insert(projection, m_layout.tilePixels(projection)).value();
}

// False for what is more than one plane.
bool zoHPCRenderSetup::findPlane(int projection, Picture& picture) const
{
    const zoHPCLayout::Projection& entry = m_layout.projections()[std::size_t(projection)];
    const P& item = *entry.item;
    picture.part = QRectF(0.0, 0.0, 1.0, 1.0);
    if (isTypeOf(item, Type::Plane)) {
        picture.plane = zoHPCPlane::fromItem(item);
        // A wall of planes that lie in one is one canvas.
        const P& top = *m_layout.projections()[std::size_t(entry.top)].item;
        if (isTypeOf(top, Type::PowerWall)) {
            const double width = top.getDouble(P::Width);
            const double height = top.getDouble(P::Height);
            if (width > 0.0 && height > 0.0) {
                const Point3 corner = picture.plane.lowerLeft;
                picture.part = QRectF(corner.x / width + 0.5, corner.y / height + 0.5,
                                      picture.plane.width() / width, picture.plane.height() / height);
            }
        }
        return true;
    }
    if (isTypeOf(item, Type::PowerWall)) {
        const double x = item.getDouble(P::Width) / 2;
        const double y = item.getDouble(P::Height) / 2;
        const double z = -item.getDouble(P::Distance);
        picture.plane = zoHPCPlane({-x, -y, z}, {x, -y, z}, {x, y, z});
        return true;
    }
    if (isTypeOf(item, Type::Wall)) {
        picture.plane = wallPlane(item, tilePixels(projection));
        return item.getInt(P::Rows) > 0 && item.getInt(P::Columns) > 0;
    }
    if (isTypeOf(item, Type::Tile)) {
        findTile(entry, projection, picture);
        return true;
    }
    return false;
}

void zoHPCRenderSetup::findTile(const zoHPCLayout::Projection& entry, int projection, Picture& picture) const
{
    const P& item = *entry.item;
    const QSizeF tile = tilePixels(entry.parent == zoHPCLayout::None ? projection : entry.parent);
    const double overlapX = item.getDouble(P::OverlapX);
    const double overlapY = item.getDouble(P::OverlapY);
    const int rows = std::max(1, item.getInt(P::Rows));
    const double width = wallSize(std::max(1, item.getInt(P::Columns)), tile.width(), overlapX);
    const double height = wallSize(rows, tile.height(), overlapY);
    const double left = tileOffset(item.getInt(P::TileColumn), tile.width(), overlapX);
    // Rows count downward.
    const double bottom = height - tileOffset(item.getInt(P::Row), tile.height(), overlapY) - tile.height();
    picture.part = QRectF(left / width, bottom / height, tile.width() / width, tile.height() / height);
    picture.plane =
        wallPlane(item, tile)
            .part(picture.part.left(), picture.part.top(), picture.part.right(), picture.part.bottom());
}

// Of the whole wall that the item, a wall or one of its tiles, describes.
zoHPCPlane zoHPCRenderSetup::wallPlane(const zoHPCProjectionItem& wall, const QSizeF& tile) const
{
    const double x =
        wallSize(std::max(1, wall.getInt(P::Columns)), tile.width(), wall.getDouble(P::OverlapX)) *
        m_pixelPitch / 2;
    const double y = wallSize(std::max(1, wall.getInt(P::Rows)), tile.height(), wall.getDouble(P::OverlapY)) *
                     m_pixelPitch / 2;
    const double z = -wall.getDouble(P::Distance);
    return {{-x, -y, z}, {x, -y, z}, {x, y, z}};
}
