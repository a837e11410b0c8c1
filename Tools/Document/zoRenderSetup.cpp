#include "zoRenderSetup.h"

#include "zoClusterSetup.h"
#include "zoHPCDisplayItem.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCProjectionType.h"
#include "zoHPCTreeItem.h"
#include "zoHPCViewportItem.h"

#include <QSet>

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

bool isOnAScreen(const QRectF& area)
{
    return std::abs(area.left()) <= FurthestPixel && std::abs(area.top()) <= FurthestPixel &&
           std::abs(area.right()) <= FurthestPixel && std::abs(area.bottom()) <= FurthestPixel;
}

// Where a tile begins in a row or column of them, in pixels.
double tileOffset(int index, double size, double overlap)
{
    return (index - 1) * (size - overlap);
}

double wallSize(int count, double size, double overlap)
{
    return count * size - (count - 1) * overlap;
}
} // namespace

zoRenderSetup::zoRenderSetup(zoClusterSetup& setup, double pixelPitch)
    : m_layout(setup.displays().getProjectionItems(), setup.displays().getWindowItems(),
               setup.hosts().master())
    , m_pixelPitch(pixelPitch)
{
    noteDisplays();
    noteGateways();
    noteProjections();
    for (const zoHPCLayout::Viewport& viewport : m_layout.viewports())
        addPicture(viewport);
}

void zoRenderSetup::noteDisplays()
{
    QSet<const QTreeWidgetItem*> known;
    for (const zoHPCLayout::Window& window : m_layout.windows()) {
        const auto* display = dynamic_cast<const zoHPCDisplayItem*>(window.item->parent());
        if (display == nullptr || known.contains(display))
            continue;
        const QString name = tr("display %1").arg(window.display);
        const double separation = display->getDouble(zoHPCDisplayItem::EyeSeparation);
        if (known.isEmpty())
            m_eyeSeparation = separation;
        else if (separation != m_eyeSeparation)
            note(window.item,
                 tr("the eye separation of %1 mm of %2 is not written: there is one for all, %3 mm")
                     .arg(QString::number(separation), name, QString::number(m_eyeSeparation)));
        if (display->getBool(zoHPCDisplayItem::HardwareSync))
            note(window.item, tr("the hardware sync of %1 is not written").arg(name));
        if (!display->getCameraName().isEmpty())
            note(window.item,
                 tr("the camera \"%1\" of %2 is not written").arg(display->getCameraName(), name));
        known.insert(display);
    }
}

void zoRenderSetup::noteGateways()
{
    for (const zoHPCLayout::Node& node : m_layout.nodes()) {
        if (node.item->childCount() > 0)
            note(node.item,
                 tr("the gateway \"%1\" is not written: the hosts behind it must be reached directly")
                     .arg(node.item->hostName()));
    }
}

void zoRenderSetup::noteProjections()
{
    QSet<int> shown;
    for (const zoHPCLayout::Viewport& viewport : m_layout.viewports()) {
        if (viewport.projection != zoHPCLayout::None)
            shown.insert(m_layout.projections()[std::size_t(viewport.projection)].top);
    }
    for (std::size_t i = 0; i < m_layout.projections().size(); ++i) {
        const P& item = *m_layout.projections()[i].item;
        if (!shown.contains(int(i)))
            continue;
        const QString name = item.getString(P::Name);
        if (item.getBool(P::EdgeBlending))
            note(&item, tr("the edge blending of \"%1\" is not written").arg(name));
        const bool isInPixels = zoHPCProjectionType::of(item.projectionType()).isInPixels;
        if ((isInPixels || isTypeOf(item, Type::PowerWall)) &&
            (item.getInt(P::RightOffsetX) != 0 || item.getInt(P::RightOffsetY) != 0))
            note(&item, tr("the right-eye offset of \"%1\" is not written").arg(name));
        if (isInPixels)
            note(&item, tr("\"%1\" has pixels instead of a size: a pixel is taken for %2 mm (--pixel-pitch)")
                            .arg(name, QString::number(m_pixelPitch)));
    }
}

void zoRenderSetup::addPicture(const zoHPCLayout::Viewport& viewport)
{
    if (viewport.window == zoHPCLayout::None)
        return;
    const zoHPCLayout::Window& window = m_layout.windows()[std::size_t(viewport.window)];
    const QString name = tr("viewport %1 of window %2 of display %3")
                             .arg(QString::number(viewport.number), QString::number(window.number),
                                  QString::number(window.display));
    const auto leaveOut = [&](const QString& reason) {
        note(viewport.item, tr("%1 is left out: %2").arg(name, reason));
    };
    if (window.nodeIndex == zoHPCLayout::None)
        return leaveOut(window.node.isEmpty() ? tr("its window has no node")
                                              : tr("the cluster has no node \"%1\"").arg(window.node));
    const zoHPCLayout::Node& node = m_layout.nodes()[std::size_t(window.nodeIndex)];
    if (!node.enabled)
        return leaveOut(tr("the node %1 is disabled").arg(node.name));
    if (viewport.projection == zoHPCLayout::None)
        return leaveOut(tr("it shows no projection"));

    Picture picture;
    const zoHPCLayout::Projection& projection = m_layout.projections()[std::size_t(viewport.projection)];
    picture.projection = projection.item->getString(P::Name);
    if (!findPlane(viewport.projection, picture))
        return leaveOut(tr("\"%1\" is not one plane").arg(picture.projection));
    if (picture.plane.isDegenerate())
        return leaveOut(tr("the plane \"%1\" has no area").arg(picture.projection));
    picture.host = node.item->hostName();
    picture.wall = m_layout.projections()[std::size_t(projection.top)].item->getString(P::Name);
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
        return leaveOut(tr("it is further than %1 pixels away").arg(FurthestPixel));
    picture.windowGeometry = outer.toRect();
    const int left = qRound(inner.left());
    const int top = qRound(inner.top());
    const int right = qRound(inner.right());
    const int bottom = qRound(inner.bottom());
    picture.geometry = QRect(left, top, right - left, bottom - top);
    if (picture.geometry.width() < 1 || picture.geometry.height() < 1)
        return leaveOut(tr("it has no pixels"));

    const QString eye = viewport.item->getString(zoHPCViewportItem::Eye);
    const zoHPCDisplayTables::StereoMode* const mode = zoHPCDisplayTables::stereoMode(eye);
    const bool isMono = mode != nullptr && mode->eyes == zoHPCDisplayTables::StereoMode::Eyes::Mono;
    if (!eye.isEmpty() && !isMono)
        note(viewport.item, tr("the eye \"%1\" of %2 is not written").arg(eye, name));
    if (viewport.item->getBool(zoHPCViewportItem::FlipX) || viewport.item->getBool(zoHPCViewportItem::FlipY))
        note(viewport.item, tr("the flip of %1 is not written").arg(name));
    m_pictures.push_back(picture);
}

// False for what is more than one plane.
bool zoRenderSetup::findPlane(int projection, Picture& picture) const
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
        picture.plane = wallPlane(item, m_layout.tilePixels(projection));
        return item.getInt(P::Rows) > 0 && item.getInt(P::Columns) > 0;
    }
    if (isTypeOf(item, Type::Tile)) {
        const QSizeF tile =
            m_layout.tilePixels(entry.parent == zoHPCLayout::None ? projection : entry.parent);
        const double overlapX = item.getDouble(P::OverlapX);
        const double overlapY = item.getDouble(P::OverlapY);
        const int rows = std::max(1, item.getInt(P::Rows));
        const double width = wallSize(std::max(1, item.getInt(P::Columns)), tile.width(), overlapX);
        const double height = wallSize(rows, tile.height(), overlapY);
        const double left = tileOffset(item.getInt(P::TileColumn), tile.width(), overlapX);
        // Rows count downward.
        const double bottom =
            height - tileOffset(item.getInt(P::Row), tile.height(), overlapY) - tile.height();
        picture.part = QRectF(left / width, bottom / height, tile.width() / width, tile.height() / height);
        picture.plane =
            wallPlane(item, tile)
                .part(picture.part.left(), picture.part.top(), picture.part.right(), picture.part.bottom());
        return true;
    }
    return false;
}

// Of the whole wall that the item, a wall or one of its tiles, describes.
zoHPCPlane zoRenderSetup::wallPlane(const zoHPCProjectionItem& wall, const QSizeF& tile) const
{
    const double x =
        wallSize(std::max(1, wall.getInt(P::Columns)), tile.width(), wall.getDouble(P::OverlapX)) *
        m_pixelPitch / 2;
    const double y = wallSize(std::max(1, wall.getInt(P::Rows)), tile.height(), wall.getDouble(P::OverlapY)) *
                     m_pixelPitch / 2;
    const double z = -wall.getDouble(P::Distance);
    return {{-x, -y, z}, {x, -y, z}, {x, y, z}};
}

void zoRenderSetup::note(const QTreeWidgetItem* item, const QString& text)
{
    m_notes.push_back({item, text});
}
