#include "zoHPCRoomFrames.h"

#include "zoHPCProjectionItem.h"
#include "zoHPCRoomCanvas.h"
#include "zoHPCRoomWall.h"
#include "zoHPCScreenNode.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace
{
// Units of the picture: a surface that is smaller has no room, and how far within it the outlines are.
constexpr double s_leastRoom = 44.0;
constexpr double s_monitorInset = 3.0;
constexpr double s_windowInset = 6.0;

// An edge this little beyond a surface lies on its edge (fraction of the surface).
constexpr double s_tolerance = 0.002;

// The part of a window that a viewport is becomes 0..1 each way.
QRectF onSurface(const QRectF& ofWindow, const zoHPCScreenNode::Viewport& viewport)
{
    const QRectF& part = viewport.area;
    QRectF result((ofWindow.left() - part.left()) / part.width(),
                  (ofWindow.top() - part.top()) / part.height(), ofWindow.width() / part.width(),
                  ofWindow.height() / part.height());
    if (viewport.isFlippedX)
        result.moveLeft(1.0 - result.right());
    if (viewport.isFlippedY)
        result.moveTop(1.0 - result.bottom());
    return result;
}

double lengthOf(const QPointF& way)
{
    return std::hypot(way.x(), way.y());
}
} // namespace

zoHPCRoomFrames zoHPCRoomFrames::read(const zoHPCLayout& layout, const QSizeF& screenSize)
{
    zoHPCRoomFrames result;
    const std::vector<zoHPCScreenNode> nodes = zoHPCScreenNode::read(layout, screenSize);
    for (const zoHPCScreenNode& node : nodes) {
        for (const zoHPCScreenNode::Screen& screen : node.screens) {
            for (const zoHPCScreenNode::Window& window : screen.windows) {
                const QRectF& place = window.geometry;
                if (place.isEmpty())
                    continue;
                const QRectF monitor(-place.left() / place.width(), -place.top() / place.height(),
                                     screen.size.width() / place.width(),
                                     screen.size.height() / place.height());
                for (const zoHPCScreenNode::Viewport& viewport : window.viewports) {
                    if (viewport.shown && !viewport.area.isEmpty() &&
                        !result.m_frames.contains(viewport.shown))
                        result.m_frames.insert(
                            viewport.shown,
                            {onSurface(QRectF(0.0, 0.0, 1.0, 1.0), viewport), onSurface(monitor, viewport)});
                }
            }
        }
    }
    return result;
}

const zoHPCRoomFrames::Frame* zoHPCRoomFrames::of(const QTreeWidgetItem* projection) const
{
    const auto found = m_frames.constFind(projection);
    return found == m_frames.constEnd() ? nullptr : &*found;
}

bool zoHPCRoomFrames::paint(zoHPCRoomCanvas& canvas, const zoHPCRoomWall& wall) const
{
    if (wall.isDegenerate || m_frames.isEmpty())
        return false;
    std::vector<std::pair<zoHPCPlane, Frame>> surfaces;
    for (int row = 0; row < wall.rows && wall.firstTile >= 0; ++row) {
        for (int column = 0; column < wall.columns; ++column) {
            const Frame* const frame = of(wall.item->child(wall.firstTile + row * wall.columns + column));
            if (frame)
                surfaces.emplace_back(wall.tile(row, column), *frame);
        }
    }
    // A row that stands for several walls has no place for its window on one of them.
    const Frame* const whole = of(wall.item);
    const bool isOneWall = wall.firstTile < 0 || wall.item->childCount() == wall.rows * wall.columns;
    if (whole && isOneWall && surfaces.empty())
        surfaces.emplace_back(wall.plane, *whole);
    // Some of them alone would look as if the others had no windows.
    const bool isPainted =
        !surfaces.empty() && std::all_of(surfaces.begin(), surfaces.end(),
                                         [&](const auto& one) { return hasRoom(canvas, one.first); });
    for (std::size_t i = 0; isPainted && i < surfaces.size(); ++i)
        paintOne(canvas, surfaces[i].first, surfaces[i].second);
    return isPainted;
}

bool zoHPCRoomFrames::hasRoom(const zoHPCRoomCanvas& canvas, const zoHPCPlane& surface)
{
    if (!canvas.isVisible(surface.at(0.0, 0.0)) || !canvas.isVisible(surface.at(1.0, 0.0)) ||
        !canvas.isVisible(surface.at(0.0, 1.0)) || !canvas.isVisible(surface.at(1.0, 1.0)))
        return false;
    const QPointF across = canvas.place(surface.at(1.0, 0.5)) - canvas.place(surface.at(0.0, 0.5));
    const QPointF up = canvas.place(surface.at(0.5, 1.0)) - canvas.place(surface.at(0.5, 0.0));
    // Of a surface that is seen from the side the height over its breadth.
    const double area = std::abs(across.x() * up.y() - across.y() * up.x());
    return area >= s_leastRoom * std::max({lengthOf(across), lengthOf(up), s_leastRoom});
}

void zoHPCRoomFrames::paintOne(zoHPCRoomCanvas& canvas, const zoHPCPlane& surface, const Frame& frame)
{
    const double width = lengthOf(canvas.place(surface.at(1.0, 0.5)) - canvas.place(surface.at(0.0, 0.5)));
    const double height = lengthOf(canvas.place(surface.at(0.5, 1.0)) - canvas.place(surface.at(0.5, 0.0)));
    const auto paintEdges = [&](const QRectF& box, double inset) {
        const double x = inset / width;
        const double y = inset / height;
        const auto isWithin = [](double place) { return place > -s_tolerance && place < 1.0 + s_tolerance; };
        // Up to the edge of the surface where the outline goes on beyond it.
        const double left = isWithin(box.left()) ? std::max(box.left(), 0.0) + x : 0.0;
        const double right = isWithin(box.right()) ? std::min(box.right(), 1.0) - x : 1.0;
        const double top = isWithin(box.top()) ? std::max(box.top(), 0.0) + y : 0.0;
        const double bottom = isWithin(box.bottom()) ? std::min(box.bottom(), 1.0) - y : 1.0;
        if (left >= right || top >= bottom || box.left() > 1.0 || box.right() < 0.0 || box.top() > 1.0 ||
            box.bottom() < 0.0)
            return;
        const auto line = [&](double fromX, double fromY, double toX, double toY) {
            canvas.line(surface.at(fromX, 1.0 - fromY), surface.at(toX, 1.0 - toY));
        };
        if (isWithin(box.left()))
            line(left, top, left, bottom);
        if (isWithin(box.right()))
            line(right, top, right, bottom);
        if (isWithin(box.top()))
            line(left, top, right, top);
        if (isWithin(box.bottom()))
            line(left, bottom, right, bottom);
    };
    const QColor color = zoHPCPictureStyle::withAlpha(canvas.style.line, 0.6);
    canvas.painter.setPen(QPen(color, 1.0, Qt::DashLine));
    paintEdges(frame.monitor, s_monitorInset);
    canvas.painter.setPen(QPen(color, 1.0));
    paintEdges(frame.window, s_windowInset);
}
