#include "zoHPCRoomPicture.h"

#include "zoHPCLayout.h"
#include "zoHPCPictureStyle.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCRoomCanvas.h"
#include "zoHPCRoomFloor.h"
#include "zoHPCRoomLegend.h"
#include "zoHPCRoomTileNames.h"
#include "zoHPCRoomWallPainter.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPolygonF>

#include <zoLengthUnit.h>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double Head = 110.0; // mm, of the viewer

// What has no area can be taken at its line, this near (units of the picture).
constexpr double s_lineReach = 5.0;

// Of more, nobody reads the names on one sheet.
constexpr qint64 s_mostTileNames = 10000;

double distanceOf(const QPointF& a, const QPointF& b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

// How far from a to b what is nearest to p lies, from 0 to 1.
double wayAlong(const QPointF& p, const QPointF& a, const QPointF& b)
{
    const QPointF way = b - a;
    const double square = QPointF::dotProduct(way, way);
    return square > 0.0 ? qBound(0.0, QPointF::dotProduct(p - a, way) / square, 1.0) : 0.0;
}
} // namespace

void zoHPCRoomPicture::setLayout(const zoHPCLayout& layout)
{
    m_walls = zoHPCRoomWall::read(layout);
    m_frames = isLarge() ? zoHPCRoomFrames() : zoHPCRoomFrames::read(layout, m_screenSize);
    m_highlights.clear();
}

void zoHPCRoomPicture::setCurrentItems(const Rows& items, const zoHPCLayout& layout)
{
    m_highlights.clear();
    const std::vector<int> projections = layout.chosenBy(items);
    for (const int projection : projections) {
        const zoHPCProjectionItem* const current = layout.projections()[static_cast<size_t>(projection)].item;
        for (size_t i = 0; i < m_walls.size(); ++i) {
            const Wall& wall = m_walls[i];
            if (wall.item == current) {
                m_highlights.push_back({i, -1});
            } else if (wall.item == current->parent() && wall.firstTile >= 0) {
                const int tile =
                    wall.item->indexOfChild(const_cast<zoHPCProjectionItem*>(current)) - wall.firstTile;
                if (tile >= 0 && tile < wall.rows * wall.columns)
                    m_highlights.push_back({i, tile});
            }
        }
    }
}

void zoHPCRoomPicture::fit(const QRectF& area)
{
    // Room for the names at the edges and for the legend.
    m_camera.fit(zoHPCRoomWall::extent(m_walls), area, 0.07 * std::min(area.width(), area.height()));
}

bool zoHPCRoomPicture::isLarge() const
{
    constexpr qint64 ManyTiles = 1000;
    return tileCount() > ManyTiles;
}

qint64 zoHPCRoomPicture::tileCount() const
{
    qint64 tiles = 0;
    for (const Wall& wall : m_walls)
        tiles += qint64(wall.rows) * wall.columns;
    return tiles;
}

void zoHPCRoomPicture::paint(QPainter& painter, const QRectF& area, const QPalette& palette,
                             Detail detail) const
{
    painter.save();
    zoHPCRoomCanvas canvas(painter, area, palette, detail, m_camera);
    painter.setClipRect(area, Qt::IntersectClip);
    painter.fillRect(area, canvas.style.background);
    if (m_walls.empty()) {
        painter.setPen(canvas.style.faintText);
        painter.setFont(canvas.style.font);
        painter.drawText(area, Qt::AlignCenter, tr("No projections"));
        painter.restore();
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing, !canvas.isFast);

    const zoHPCRoomFloor floor(zoHPCRoomWall::extent(m_walls));
    floor.paint(canvas);
    bool hasFrames = false;
    // Far ones first, the viewer at his place among them.
    std::vector<std::pair<double, const Wall*>> parts;
    parts.emplace_back(m_camera.see(Point3()).depth, nullptr);
    for (const Wall& wall : m_walls)
        parts.emplace_back(m_camera.see(wall.plane.center()).depth, &wall);
    std::stable_sort(parts.begin(), parts.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    for (const auto& part : parts) {
        if (!part.second) {
            paintViewer(canvas);
            continue;
        }
        zoHPCRoomWallPainter(canvas, *part.second).paint();
        hasFrames = (m_hasFrames && !canvas.isFast && m_frames.paint(canvas, *part.second)) || hasFrames;
    }
    paintHighlights(canvas);
    if (!m_highlights.empty())
        paintViewer(canvas);
    zoHPCRoomLegend(canvas, m_walls, floor.step(), hasFrames).paint();
    for (const Axis& axis : axesOf(canvas))
        canvas.reserve(axis.name, true);
    if (m_isDrawing || !canvas.isFast)
        paintHosts(canvas);
    paintNames(canvas);
    paintAxes(canvas);
    painter.restore();
}

QTreeWidgetItem* zoHPCRoomPicture::itemAt(const QPointF& point, const QRectF& area) const
{
    Meeting nearest = meet(point, area);
    if (!nearest.wall)
        nearest = meetEdge(point, area);
    if (!nearest.wall)
        return lineAt(point, area);
    const Wall& wall = *nearest.wall;
    if (wall.firstTile < 0)
        return wall.item;
    const auto index = [](double way, double step, int count) {
        return step > 0.0 ? qBound(0, static_cast<int>(way / step), count - 1) : 0;
    };
    const int column = index(nearest.s, wall.columnStep, wall.columns);
    const int row = index(1.0 - nearest.t, wall.rowStep, wall.rows);
    return wall.item->child(wall.firstTile + row * wall.columns + column);
}

zoHPCRoomPicture::Meeting zoHPCRoomPicture::meet(const QPointF& point, const QRectF& area) const
{
    const Point3 ray = m_camera.rayThrough(point, area);
    const Point3 eye = m_camera.rayStart(point, area);
    Meeting nearest;
    double nearestWay = HUGE_VAL;
    for (const Wall& wall : m_walls) {
        if (wall.isDegenerate)
            continue;
        const Point3 a = wall.plane.right();
        const Point3 b = wall.plane.up();
        const Point3 normal = cross(a, b);
        const double slope = dot(ray, normal);
        if (std::abs(slope) < 1e-12 * length(ray) * length(normal))
            continue;
        const double way = dot(wall.plane.lowerLeft - eye, normal) / slope;
        if (way <= 0.0 || way >= nearestWay)
            continue;
        // The corner need not be square.
        const Point3 hit = eye + way * ray - wall.plane.lowerLeft;
        const double square = dot(normal, normal);
        const double s = dot(cross(hit, b), normal) / square;
        const double t = dot(cross(a, hit), normal) / square;
        if (s < 0.0 || s > 1.0 || t < 0.0 || t > 1.0)
            continue;
        nearest = {&wall, s, t};
        nearestWay = way;
    }
    return nearest;
}

// In an elevation or a plan a wall may be seen as a line: its edge that is nearest to the eye.
zoHPCRoomPicture::Meeting zoHPCRoomPicture::meetEdge(const QPointF& point, const QRectF& area) const
{
    Meeting nearest;
    double nearestDepth = HUGE_VAL;
    const Point3 ray = m_camera.rayThrough(point, area);
    constexpr QPointF Edges[][2] = {{{0.0, 0.0}, {1.0, 0.0}},
                                    {{0.0, 1.0}, {1.0, 1.0}},
                                    {{0.0, 0.0}, {0.0, 1.0}},
                                    {{1.0, 0.0}, {1.0, 1.0}}};
    for (const Wall& wall : m_walls) {
        if (wall.isDegenerate || !m_camera.isParallel || std::abs(dot(ray, wall.plane.normal())) > 1e-6)
            continue;
        for (const auto& edge : Edges) {
            const zoHPCRoomCamera::Seen from = m_camera.see(wall.plane.at(edge[0].x(), edge[0].y()));
            const zoHPCRoomCamera::Seen to = m_camera.see(wall.plane.at(edge[1].x(), edge[1].y()));
            const QPointF start = m_camera.toPicture(from, area);
            const double way = wayAlong(point, start, m_camera.toPicture(to, area));
            const double depth = from.depth + way * (to.depth - from.depth);
            const QPointF place = start + way * (m_camera.toPicture(to, area) - start);
            if (distanceOf(point, place) > s_lineReach || depth >= nearestDepth)
                continue;
            const QPointF hit = edge[0] + way * (edge[1] - edge[0]);
            nearest = {&wall, hit.x(), hit.y()};
            nearestDepth = depth;
        }
    }
    return nearest;
}

QTreeWidgetItem* zoHPCRoomPicture::lineAt(const QPointF& point, const QRectF& area) const
{
    for (const Wall& wall : m_walls) {
        if (!wall.isDegenerate || m_camera.see(wall.plane.center()).depth < zoHPCRoomCamera::Near)
            continue;
        const QPointF from = m_camera.toPicture(m_camera.see(wall.plane.lowerLeft), area);
        const QPointF to = m_camera.toPicture(m_camera.see(wall.plane.upperRight), area);
        if (distanceOf(point, from + wayAlong(point, from, to) * (to - from)) <= s_lineReach)
            return wall.item;
    }
    return nullptr;
}

// Where the arrow of the viewer ends.
Point3 zoHPCRoomPicture::viewersLook(const zoHPCRoomCanvas& canvas) const
{
    constexpr double Look = 500.0; // mm
    const double scale = m_camera.scaleAt(m_camera.see(Point3()).depth, canvas.area);
    return {0.0, 0.0, -std::max(Look, 3.0 * viewersRadius(canvas) / scale)};
}

// Always to be seen, never in the way.
double zoHPCRoomPicture::viewersRadius(const zoHPCRoomCanvas& canvas) const
{
    return qBound(4.0, Head * m_camera.scaleAt(m_camera.see(Point3()).depth, canvas.area), 8.0);
}

QRectF zoHPCRoomPicture::viewersPlace(const zoHPCRoomCanvas& canvas) const
{
    const double size = viewersRadius(canvas) + 1.0;
    return QRectF(canvas.place(Point3()) - QPointF(size, size), QSizeF(2.0 * size, 2.0 * size));
}

void zoHPCRoomPicture::paintViewer(zoHPCRoomCanvas& canvas) const
{
    if (!canvas.isVisible(Point3()))
        return;
    const double radius = viewersRadius(canvas);
    canvas.arrow(Point3(), viewersLook(canvas), canvas.style.text, 2.0);
    canvas.painter.setPen(QPen(canvas.style.background, 1.5));
    canvas.painter.setBrush(canvas.style.text);
    canvas.painter.drawEllipse(canvas.place(Point3()), radius, radius);
}

std::array<zoHPCRoomPicture::Axis, 3> zoHPCRoomPicture::axesOf(const zoHPCRoomCanvas& canvas) const
{
    constexpr double Size = 24.0;
    const QPointF origin = canvas.area.topLeft() + QPointF(1.6 * Size, 1.8 * Size);
    const zoHPCRoomCamera::Seen from = m_camera.see(Point3());
    const Point3 directions[] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
    std::array<Axis, 3> axes;
    for (size_t i = 0; i < axes.size(); ++i) {
        const zoHPCRoomCamera::Seen to = m_camera.see(directions[i]);
        const QPointF way(to.x - from.x, from.y - to.y);
        QPointF text = origin + (Size + 8.0) * way;
        // Of an axis that points at the camera: where the two others are not.
        if (std::hypot(way.x(), way.y()) < 0.1) {
            for (const Point3& other : directions) {
                const zoHPCRoomCamera::Seen end = m_camera.see(other);
                text -= 10.0 * QPointF(end.x - from.x, from.y - end.y);
            }
        }
        axes[i] = {QLineF(origin, origin + Size * way), QRectF(text - QPointF(8.0, 9.0), QSizeF(16.0, 18.0))};
    }
    return axes;
}

void zoHPCRoomPicture::paintAxes(zoHPCRoomCanvas& canvas) const
{
    constexpr const char* Names[] = {"x", "y", "z"};
    canvas.painter.setFont(canvas.style.font);
    canvas.painter.setPen(QPen(canvas.style.faintText, 1.2));
    const std::array<Axis, 3> axes = axesOf(canvas);
    QRectF last;
    for (size_t i = 0; i < axes.size(); ++i) {
        canvas.painter.drawLine(axes[i].line);
        // Of an axis that points at the camera, or lies behind another, the name lies over others.
        if (!axes[i].name.adjusted(4.0, 3.0, -4.0, -3.0).intersects(last))
            canvas.painter.drawText(axes[i].name, Qt::AlignCenter, QLatin1String(Names[i]));
        last = axes[i].name;
    }
}

void zoHPCRoomPicture::paintHighlights(zoHPCRoomCanvas& canvas) const
{
    for (const Highlight& highlight : m_highlights) {
        const Wall& wall = m_walls[highlight.wall];
        const zoHPCPlane part = highlight.tile < 0
                                    ? wall.plane
                                    : wall.tile(highlight.tile / wall.columns, highlight.tile % wall.columns);
        const QPolygonF outline = canvas.polygon(part);
        if (outline.size() < 2)
            continue;
        const double width = zoHPCPictureStyle::markWidth(outline.boundingRect(), int(m_highlights.size()));
        canvas.painter.setBrush(zoHPCPictureStyle::withAlpha(canvas.style.current, 0.18));
        canvas.painter.setPen(
            QPen(canvas.style.background, 1.7 * width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        canvas.painter.drawPolygon(outline);
        canvas.painter.setBrush(Qt::NoBrush);
        canvas.painter.setPen(QPen(canvas.style.current, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        canvas.painter.drawPolygon(outline);
    }
}

void zoHPCRoomPicture::paintNames(zoHPCRoomCanvas& canvas) const
{
    canvas.painter.setFont(canvas.style.font);
    const QFontMetricsF metrics(canvas.style.font, canvas.painter.device());
    if (canvas.isVisible(Point3())) {
        canvas.reserve(viewersPlace(canvas), true);
        canvas.label(canvas.place(Point3()) + QPointF(0.0, 1.6 * metrics.height()), tr("Viewer"),
                     canvas.style.text, false);
    }
    for (const Wall& wall : m_walls) {
        if (!canvas.isVisible(wall.plane.center()))
            continue;
        // A tile of a wall of planes has its place in it; one of them has the name of the whole.
        const bool isPlaced = wall.isInGrid() && !wall.isBad();
        if (isPlaced && wall.gridName.isEmpty())
            continue;
        QString name = isPlaced ? wall.gridName : wall.name;
        if (wall.isDegenerate)
            name = tr("%1 (no area)").arg(wall.name);
        else if (wall.turnsAway)
            name = tr("%1 (mirrored)").arg(wall.name);
        else if (wall.isSkewed)
            name = tr("%1 (skewed)").arg(wall.name);
        if (!wall.hasTiles() && !isPlaced && !wall.hostsOf(0, 0).isEmpty())
            name = tr("%1: %2").arg(name, wall.hostsOf(0, 0).join(QLatin1String(", ")));
        const QColor color = wall.isBad() ? canvas.style.bad : canvas.style.text;
        const Point3 upperEdge = wall.plane.at(0.5, 1.0);
        if ((wall.hasTiles() || isPlaced) && canvas.isVisible(upperEdge))
            canvas.label(canvas.place(upperEdge) - QPointF(0.0, 0.8 * metrics.height()), name, color, true);
        else
            canvas.label(canvas.place(wall.plane.center()) + QPointF(0.0, metrics.height()), name, color,
                         true);
        if ((m_isDrawing || m_hasDimensions) && !wall.isDegenerate && !isPlaced)
            paintDimensions(canvas, wall);
    }
}

bool zoHPCRoomPicture::isReadable(const QRectF& area) const
{
    const bool hasTiles =
        std::any_of(m_walls.begin(), m_walls.end(), [](const Wall& wall) { return wall.hasTiles(); });
    if (hasTiles && tileCount() > s_mostTileNames)
        return false;
    QImage measure(1, 1, QImage::Format_RGB32);
    QPainter painter(&measure);
    zoHPCRoomCanvas canvas(painter, area, QPalette(), Detail::Full, m_camera);
    return std::all_of(m_walls.begin(), m_walls.end(), [&](const Wall& wall) {
        return !wall.hasTiles() || wall.isDegenerate || !canvas.isVisible(wall.plane.center()) ||
               zoHPCRoomTileNames(canvas, wall).fit();
    });
}

void zoHPCRoomPicture::paintHosts(zoHPCRoomCanvas& canvas) const
{
    const auto reserveArrow = [&canvas](const Point3& from, const Point3& to) {
        if (canvas.isVisible(from) && canvas.isVisible(to))
            canvas.reserve(QRectF(canvas.place(from), canvas.place(to)).normalized().adjusted(-9, -9, 9, 9));
    };
    reserveArrow(Point3(), viewersLook(canvas));
    // The viewer himself is to be seen, as a text is.
    if (canvas.isVisible(Point3()))
        canvas.reserve(viewersPlace(canvas), true);
    if (tileCount() > s_mostTileNames)
        return;
    for (const Wall& wall : m_walls) {
        if ((wall.hasTiles() || wall.isInGrid()) && !wall.isDegenerate &&
            canvas.isVisible(wall.plane.center())) {
            reserveArrow(wall.plane.center(), zoHPCRoomWallPainter::endOfNormal(wall));
            const zoHPCRoomTileNames names(canvas, wall);
            if (names.fit() || (m_isDrawing && !wall.isInGrid()))
                names.paint();
            else
                zoHPCRoomTileNames(canvas, wall, false).paint();
        }
    }
}

// Width below, height to the right, each in the units that the wall has.
void zoHPCRoomPicture::paintDimensions(zoHPCRoomCanvas& canvas, const Wall& wall) const
{
    const auto text = [&wall](double length, double tilePart, double tilePixels) {
        const QString pixels =
            tilePixels > 0.0 && tilePart > 0.0 ? tr("%1 px").arg(qRound64(tilePixels / tilePart)) : QString();
        if (wall.isInPixels)
            return pixels;
        const QString size = zoLengthUnit::shown().text(length);
        return pixels.isEmpty() ? size : tr("%1 = %2").arg(size, pixels);
    };
    const QString width = text(wall.plane.width(), wall.tileWidth, wall.tilePixels.width());
    const QString height = text(wall.plane.height(), wall.tileHeight, wall.tilePixels.height());
    const QFontMetricsF metrics(canvas.style.font, canvas.painter.device());
    // Of an edge that is seen from its end the length is not there.
    const auto isSeen = [&canvas, &wall](double s, double t) {
        return distanceOf(canvas.place(wall.plane.at(0.0, 0.0)), canvas.place(wall.plane.at(s, t))) >
               2.0 * s_lineReach;
    };
    if (!wall.hasTiles()) {
        const bool isLine =
            std::abs(dot(m_camera.rayThrough(QPointF(), canvas.area), wall.plane.normal())) < 1e-6;
        if (isLine && m_camera.isParallel)
            return;
        canvas.label(canvas.place(wall.plane.center()) + QPointF(0.0, 2.2 * metrics.height()),
                     tr("%1 by %2").arg(width, height), canvas.style.faintText, false);
        return;
    }
    const Point3 lower = wall.plane.at(0.5, 0.0);
    const Point3 right = wall.plane.at(1.0, 0.5);
    if (!width.isEmpty() && canvas.isVisible(lower) && isSeen(1.0, 0.0))
        canvas.label(canvas.place(lower) + QPointF(0.0, 0.9 * metrics.height()), width,
                     canvas.style.faintText, false);
    if (!height.isEmpty() && canvas.isVisible(right) && isSeen(0.0, 1.0))
        canvas.label(canvas.place(right) + QPointF(metrics.horizontalAdvance(height) / 2.0 + 9.0, 0.0),
                     height, canvas.style.faintText, false);
}
