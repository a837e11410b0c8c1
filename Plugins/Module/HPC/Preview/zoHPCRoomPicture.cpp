#include "zoHPCRoomPicture.h"

#include "zoHPCLayout.h"
#include "zoHPCPictureStyle.h"
#include "zoHPCProblems.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPolygonF>

#include <algorithm>
#include <array>
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

QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(alpha);
    return color;
}

double distanceOf(const QPointF& a, const QPointF& b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

double distanceToSegment(const QPointF& p, const QPointF& a, const QPointF& b)
{
    const QPointF way = b - a;
    const double square = QPointF::dotProduct(way, way);
    const double t = square > 0.0 ? qBound(0.0, QPointF::dotProduct(p - a, way) / square, 1.0) : 0.0;
    return distanceOf(p, a + t * way);
}

// 1, 2 or 5 times a power of ten, not below the value.
double roundStep(double value)
{
    const double power = std::pow(10.0, std::floor(std::log10(std::max(value, 1e-3))));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= value)
            return factor * power;
    }
    return 10.0 * power;
}

QString lengthText(double mm)
{
    return mm >= 1000.0 ? QString::number(mm / 1000.0) + QString::fromLatin1(" m")
                        : QString::number(mm) + QString::fromLatin1(" mm");
}
} // namespace

// What the parts of the picture are painted with.
class zoHPCRoomPicture::Canvas final
{
public:
    Canvas(QPainter& painterToUse, const QRectF& areaToFill, const QPalette& palette, Detail detailToShow,
           const zoHPCRoomCamera& cameraToUse)
        : painter(painterToUse)
        , area(areaToFill)
        , camera(cameraToUse)
        , style(palette)
        , isFast(detailToShow == Detail::Fast)
        , m_lowest(areaToFill.bottom())
    {
    }

    bool isVisible(const Point3& point) const { return camera.see(point).depth > zoHPCRoomCamera::Near; }

    QPointF place(const Point3& point) const
    {
        zoHPCRoomCamera::Seen seen = camera.see(point);
        seen.depth = std::max(seen.depth, zoHPCRoomCamera::Near);
        return camera.toPicture(seen, area);
    }

    // What lies before the camera; empty when nothing does.
    QPolygonF polygon(const zoHPCPlane& plane) const
    {
        const std::array<zoHPCRoomCamera::Seen, 4> corners = {
            camera.see(plane.lowerLeft), camera.see(plane.lowerRight), camera.see(plane.upperRight),
            camera.see(plane.upperLeft())};
        QPolygonF result;
        for (size_t i = 0; i < corners.size(); ++i) {
            const zoHPCRoomCamera::Seen& a = corners[i];
            const zoHPCRoomCamera::Seen& b = corners[(i + 1) % corners.size()];
            if (a.depth >= zoHPCRoomCamera::Near)
                result << camera.toPicture(a, area);
            if ((a.depth >= zoHPCRoomCamera::Near) != (b.depth >= zoHPCRoomCamera::Near))
                result << camera.toPicture(cut(a, b), area);
        }
        return result;
    }

    void line(const Point3& from, const Point3& to)
    {
        zoHPCRoomCamera::Seen a = camera.see(from);
        zoHPCRoomCamera::Seen b = camera.see(to);
        if (a.depth < zoHPCRoomCamera::Near && b.depth < zoHPCRoomCamera::Near)
            return;
        if (a.depth < zoHPCRoomCamera::Near)
            a = cut(a, b);
        else if (b.depth < zoHPCRoomCamera::Near)
            b = cut(a, b);
        painter.drawLine(camera.toPicture(a, area), camera.toPicture(b, area));
    }

    void fill(const zoHPCPlane& plane, const QBrush& brush)
    {
        const QPolygonF shape = polygon(plane);
        if (shape.size() < 3)
            return;
        painter.setPen(Qt::NoPen);
        painter.setBrush(brush);
        painter.drawPolygon(shape);
    }

    // From colour to colour across the plane, to the right or upward.
    void ramp(const zoHPCPlane& plane, const QColor& from, const QColor& to, bool upward)
    {
        const QPolygonF shape = polygon(plane);
        if (shape.size() < 3)
            return;
        const QPointF start = upward ? place(plane.at(0.5, 0.0)) : place(plane.at(0.0, 0.5));
        const QPointF end = upward ? place(plane.at(0.5, 1.0)) : place(plane.at(1.0, 0.5));
        const QPointF edge = upward ? place(plane.at(1.0, 0.0)) - place(plane.at(0.0, 0.0))
                                    : place(plane.at(0.0, 1.0)) - place(plane.at(0.0, 0.0));
        // Lines of equal colour run along the edge, so the way of the gradient is square to it.
        QPointF way = end - start;
        const double square = QPointF::dotProduct(edge, edge);
        if (square > 0.0)
            way -= QPointF::dotProduct(way, edge) / square * edge;
        painter.setPen(Qt::NoPen);
        if (isFast || std::hypot(way.x(), way.y()) < 3.0) {
            const QColor middle((from.red() + to.red()) / 2, (from.green() + to.green()) / 2,
                                (from.blue() + to.blue()) / 2, (from.alpha() + to.alpha()) / 2);
            painter.setBrush(middle);
        } else {
            QLinearGradient gradient(start, start + way);
            gradient.setColorAt(0.0, from);
            gradient.setColorAt(1.0, to);
            painter.setBrush(gradient);
        }
        painter.drawPolygon(shape);
    }

    void arrow(const Point3& from, const Point3& to, const QColor& color, double width)
    {
        if (!isVisible(from) || !isVisible(to))
            return;
        const QPointF a = place(from);
        const QPointF b = place(to);
        const QPointF way = b - a;
        const double size = std::hypot(way.x(), way.y());
        const double head = 3.5 * width + 2.0;
        painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap));
        painter.setBrush(color);
        if (size < head) {
            painter.drawEllipse(b, width, width); // it points at the camera or away from it
            return;
        }
        const QPointF along = way / size;
        const QPointF across(-along.y(), along.x());
        painter.drawLine(a, b - head * along);
        painter.setPen(Qt::NoPen);
        painter.drawPolygon(QPolygonF() << b << b - head * along + 0.45 * head * across
                                        << b - head * along - 0.45 * head * across);
    }

    // On a ground of its own, whole within the picture; moved down until it covers no other label, or up
    // where there is no room below.
    void label(const QPointF& center, const QString& fullText, const QColor& color, bool isBold)
    {
        QFont font = style.font;
        font.setBold(isBold);
        const QFontMetricsF metrics(font, painter.device());
        constexpr double MARGIN = 4.0;
        const QString text = metrics.elidedText(fullText, Qt::ElideMiddle, area.width() - 3.0 * MARGIN);
        const QSizeF size(metrics.horizontalAdvance(text) + 2.0 * MARGIN, metrics.height() + 2.0);
        QRectF box(center - QPointF(size.width() / 2.0, size.height() / 2.0), size);
        // Off the picture: better no name than one that belongs to nothing visible.
        if (!area.adjusted(-size.width() / 2.0, 0, size.width() / 2.0, 0).intersects(box))
            return;
        box.moveLeft(std::max(std::min(box.left(), area.right() - box.width()), area.left()));
        box.moveTop(std::max(box.top(), area.top()));
        QRectF free = besideLabels(box, false);
        if (free.bottom() > m_lowest) {
            box.moveBottom(std::min(box.bottom(), m_lowest));
            free = besideLabels(box, true);
        }
        m_labels.push_back(free);
        painter.setPen(Qt::NoPen);
        painter.setBrush(withAlpha(style.background, 0.8));
        painter.drawRoundedRect(free, 3.0, 3.0);
        painter.setFont(font);
        painter.setPen(color);
        painter.drawText(free, Qt::AlignCenter, text);
    }

    // Beside the labels that are there, or not at all.
    void smallLabel(QRectF box, const QString& text)
    {
        const auto isTaken = [&] {
            return std::any_of(m_labels.begin(), m_labels.end(),
                               [&](const QRectF& taken) { return taken.intersects(box); });
        };
        if (isTaken())
            box.translate(0.0, box.height());
        if (area.contains(box) && !isTaken())
            painter.drawText(box, Qt::AlignCenter, text);
    }

    void reserve(const QRectF& box) { m_labels.push_back(box); }
    // Below this there are no labels.
    void endLabelsAt(double y) { m_lowest = y; }

    QPainter& painter;
    const QRectF area;
    const zoHPCRoomCamera& camera;
    const zoHPCPictureStyle style;
    const bool isFast;

private:
    static zoHPCRoomCamera::Seen cut(const zoHPCRoomCamera::Seen& a, const zoHPCRoomCamera::Seen& b)
    {
        const double t = (zoHPCRoomCamera::Near - a.depth) / (b.depth - a.depth);
        return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), zoHPCRoomCamera::Near};
    }

    QRectF besideLabels(QRectF box, bool isAbove) const
    {
        for (int attempt = 0; attempt < 12; ++attempt) {
            const auto other = std::find_if(m_labels.begin(), m_labels.end(),
                                            [&](const QRectF& taken) { return taken.intersects(box); });
            if (other == m_labels.end())
                break;
            if (isAbove)
                box.moveBottom(other->top() - 1.0);
            else
                box.moveTop(other->bottom() + 1.0);
        }
        return box;
    }

    std::vector<QRectF> m_labels;
    double m_lowest;
};

void zoHPCRoomPicture::setLayout(const zoHPCLayout& layout)
{
    m_walls.clear();
    m_highlights.clear();
    for (size_t i = 0; i < layout.projections().size(); ++i) {
        if (layout.projections()[i].parent == zoHPCLayout::None)
            addWalls(layout, static_cast<int>(i));
    }
}

void zoHPCRoomPicture::setCurrentItem(const QTreeWidgetItem* item, const zoHPCLayout& layout)
{
    m_highlights.clear();
    std::vector<int> projections = layout.shownBy(item);
    const int own = layout.indexOf(item);
    if (own != zoHPCLayout::None)
        projections.push_back(own);
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
    m_camera.fit(extent(), area, 0.07 * std::min(area.width(), area.height()));
}

bool zoHPCRoomPicture::isLarge() const
{
    constexpr qint64 MANY_TILES = 1000;
    qint64 tiles = 0;
    for (const Wall& wall : m_walls)
        tiles += qint64(wall.rows) * wall.columns;
    return tiles > MANY_TILES;
}

void zoHPCRoomPicture::paint(QPainter& painter, const QRectF& area, const QPalette& palette,
                             Detail detail) const
{
    painter.save();
    Canvas canvas(painter, area, palette, detail, m_camera);
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

    paintFloor(canvas);
    // Far ones first, the viewer at his place among them.
    std::vector<std::pair<double, const Wall*>> parts;
    parts.emplace_back(m_camera.see(Point3()).depth, nullptr);
    for (const Wall& wall : m_walls)
        parts.emplace_back(m_camera.see(wall.plane.center()).depth, &wall);
    std::stable_sort(parts.begin(), parts.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    for (const auto& part : parts) {
        if (part.second)
            paintWall(canvas, *part.second);
        else
            paintViewer(canvas);
    }
    paintHighlights(canvas);
    paintLegend(canvas);
    paintNames(canvas);
    paintAxes(canvas);
    painter.restore();
}

QTreeWidgetItem* zoHPCRoomPicture::itemAt(const QPointF& point, const QRectF& area) const
{
    const Point3 eye = m_camera.eye();
    const Point3 ray = m_camera.rayThrough(point, area);
    const Wall* nearest = nullptr;
    double nearestWay = HUGE_VAL;
    double nearestS = 0.0;
    double nearestT = 0.0;
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
        nearest = &wall;
        nearestWay = way;
        nearestS = s;
        nearestT = t;
    }
    if (!nearest) {
        // What has no area can be taken at its line.
        constexpr double REACH = 5.0;
        for (const Wall& wall : m_walls) {
            if (!wall.isDegenerate || m_camera.see(wall.plane.center()).depth < zoHPCRoomCamera::Near)
                continue;
            const QPointF from = m_camera.toPicture(m_camera.see(wall.plane.lowerLeft), area);
            const QPointF to = m_camera.toPicture(m_camera.see(wall.plane.upperRight), area);
            if (distanceToSegment(point, from, to) <= REACH)
                return wall.item;
        }
        return nullptr;
    }
    if (nearest->firstTile < 0)
        return nearest->item;
    const auto index = [](double way, double step, int count) {
        return step > 0.0 ? qBound(0, static_cast<int>(way / step), count - 1) : 0;
    };
    const int column = index(nearestS, nearest->columnStep, nearest->columns);
    const int row = index(1.0 - nearestT, nearest->rowStep, nearest->rows);
    return nearest->item->child(nearest->firstTile + row * nearest->columns + column);
}

void zoHPCRoomPicture::addWalls(const zoHPCLayout& layout, int projection)
{
    const zoHPCProjectionItem& item = *layout.projections()[static_cast<size_t>(projection)].item;
    const QString type = item.projectionType();
    if (type == QLatin1String("plane")) {
        addPlane(layout, projection);
    } else if (type == QLatin1String("wall")) {
        addTiledWall(layout, projection);
    } else if (item.childCount() > 0) {
        const qint64 tiles = std::max<qint64>(1, qint64(item.getInt(P::Rows)) * item.getInt(P::Columns));
        for (qint64 first = 0; first + tiles <= item.childCount(); first += tiles)
            addGeneratedWall(layout, projection, static_cast<int>(first), static_cast<int>(tiles));
    }
}

void zoHPCRoomPicture::addGeneratedWall(const zoHPCLayout& layout, int projection, int firstTile, int tiles)
{
    Wall wall;
    wall.item = layout.projections()[static_cast<size_t>(projection)].item;
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
    if (wall.item->projectionType() == QLatin1String("cave")) {
        // Left of the tile's own row and column stands the name of the wall.
        const QString name = upperLeft->getString(P::Name);
        const int label = name.lastIndexOf(QLatin1String(" row:"));
        wall.name = label > 0 ? name.left(label) : name;
    }
    finish(wall, layout, projection);
}

void zoHPCRoomPicture::addTiledWall(const zoHPCLayout& layout, int projection)
{
    Wall wall;
    wall.item = layout.projections()[static_cast<size_t>(projection)].item;
    wall.rows = wall.item->getInt(P::Rows);
    wall.columns = wall.item->getInt(P::Columns);
    if (wall.rows < 1 || wall.columns < 1 || wall.item->childCount() != qint64(wall.rows) * wall.columns)
        return;
    wall.firstTile = 0;
    wall.isInPixels = true;
    wall.name = wall.item->getString(P::Name);
    wall.isBlended = wall.item->getBool(P::EdgeBlending);
    const QSizeF tile = layout.tilePixels(projection);
    const double overlapX = wall.item->getInt(P::OverlapX);
    const double overlapY = wall.item->getInt(P::OverlapY);
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
    finish(wall, layout, projection);
}

void zoHPCRoomPicture::addPlane(const zoHPCLayout& layout, int projection)
{
    Wall wall;
    wall.item = layout.projections()[static_cast<size_t>(projection)].item;
    wall.name = wall.item->getString(P::Name);
    wall.plane = zoHPCPlane::fromItem(*wall.item);
    wall.isBlended = wall.item->getBool(P::EdgeBlending);
    wall.leftBand = qBound(0.0, wall.item->getDouble(P::LeftEdge), 1.0);
    wall.rightBand = qBound(0.0, wall.item->getDouble(P::RightEdge), 1.0);
    // What the render side calls the top edge is the lower one: see zoHPCProjectionItem::addPlane(). Tiles
    // must look the same after they were made planes of their own.
    wall.lowerBand = qBound(0.0, wall.item->getDouble(P::TopEdge), 1.0);
    wall.upperBand = qBound(0.0, wall.item->getDouble(P::BottomEdge), 1.0);
    finish(wall, layout, projection);
}

void zoHPCRoomPicture::finish(Wall& wall, const zoHPCLayout& layout, int projection)
{
    // Nothing can be drawn of a plane whose corners are no numbers; the list of problems names it.
    if (!isFinite(wall.plane))
        return;
    wall.isDegenerate = wall.plane.isDegenerate();
    wall.turnsAway = wall.plane.turnsAwayFrom(Point3());
    wall.isSkewed = wall.plane.skew() > zoHPCProblems::LargestSkew;
    const size_t first =
        static_cast<size_t>(wall.firstTile < 0 ? projection : projection + 1 + wall.firstTile);
    const size_t count = static_cast<size_t>(wall.rows) * static_cast<size_t>(wall.columns);
    const auto isLit = [&](size_t tile) {
        return first + tile < layout.projections().size() && layout.projections()[first + tile].isShown;
    };
    bool allLit = true;
    for (size_t tile = 0; tile < count && allLit; ++tile)
        allLit = isLit(tile);
    if (!allLit) {
        wall.lit.resize(count);
        for (size_t tile = 0; tile < count; ++tile)
            wall.lit[tile] = isLit(tile);
    }
    m_walls.push_back(wall);
}

std::vector<Point3> zoHPCRoomPicture::extent() const
{
    std::vector<Point3> points{Point3()};
    for (const Wall& wall : m_walls) {
        points.push_back(wall.plane.lowerLeft);
        points.push_back(wall.plane.lowerRight);
        points.push_back(wall.plane.upperRight);
        points.push_back(wall.plane.upperLeft());
    }
    return points;
}

void zoHPCRoomPicture::paintFloor(Canvas& canvas) const
{
    double floor = HUGE_VAL;
    QRectF ground(0.0, 0.0, 1e-3, 1e-3); // x and z
    for (const Point3& p : extent()) {
        floor = std::min(floor, p.y);
        ground = ground.united(QRectF(p.x, p.z, 1e-3, 1e-3));
    }
    const double step = roundStep(std::max(ground.width(), ground.height()) / 10.0);
    const double left = std::floor(ground.left() / step - 0.25) * step;
    const double right = std::ceil(ground.right() / step + 0.25) * step;
    const double back = std::floor(ground.top() / step - 0.25) * step;
    const double front = std::ceil(ground.bottom() / step + 0.25) * step;
    canvas.painter.setPen(QPen(canvas.style.grid, 1.0));
    for (int i = 0; left + i * step <= right + 0.5 * step; ++i)
        canvas.line({left + i * step, floor, back}, {left + i * step, floor, front});
    for (int i = 0; back + i * step <= front + 0.5 * step; ++i)
        canvas.line({left, floor, back + i * step}, {right, floor, back + i * step});

    if (canvas.isVisible(Point3())) {
        canvas.painter.setPen(QPen(canvas.style.faintText, 1.0, Qt::DashLine));
        canvas.line(Point3(), {0.0, floor, 0.0});
    }
}

void zoHPCRoomPicture::paintViewer(Canvas& canvas) const
{
    if (!canvas.isVisible(Point3()))
        return;
    constexpr double HEAD = 110.0; // mm
    constexpr double LOOK = 500.0; // mm
    const double scale = m_camera.scaleAt(m_camera.see(Point3()).depth, canvas.area);
    // Always to be seen, never in the way.
    const double radius = qBound(4.0, HEAD * scale, 8.0);
    canvas.arrow(Point3(), {0.0, 0.0, -std::max(LOOK, 3.0 * radius / scale)}, canvas.style.text, 2.0);
    canvas.painter.setPen(QPen(canvas.style.background, 1.5));
    canvas.painter.setBrush(canvas.style.text);
    canvas.painter.drawEllipse(canvas.place(Point3()), radius, radius);
}

void zoHPCRoomPicture::paintAxes(Canvas& canvas) const
{
    constexpr double SIZE = 24.0;
    const QPointF origin = canvas.area.topLeft() + QPointF(1.6 * SIZE, 1.8 * SIZE);
    const zoHPCRoomCamera::Seen from = m_camera.see(Point3());
    const struct
    {
        Point3 direction;
        QLatin1String name;
    } axes[] = {{{1.0, 0.0, 0.0}, QLatin1String("x")},
                {{0.0, 1.0, 0.0}, QLatin1String("y")},
                {{0.0, 0.0, 1.0}, QLatin1String("z")}};
    canvas.painter.setFont(canvas.style.font);
    canvas.painter.setPen(QPen(canvas.style.faintText, 1.2));
    for (const auto& axis : axes) {
        const zoHPCRoomCamera::Seen to = m_camera.see(axis.direction);
        const QPointF way(to.x - from.x, from.y - to.y);
        canvas.painter.drawLine(origin, origin + SIZE * way);
        const QPointF text = origin + (SIZE + 8.0) * way;
        canvas.painter.drawText(QRectF(text - QPointF(8.0, 9.0), QSizeF(16.0, 18.0)), Qt::AlignCenter,
                                axis.name);
    }
}

void zoHPCRoomPicture::paintWall(Canvas& canvas, const Wall& wall) const
{
    if (wall.isDegenerate) {
        canvas.painter.setPen(QPen(canvas.style.bad, 3.0, Qt::DotLine, Qt::RoundCap));
        canvas.line(wall.plane.lowerLeft, wall.plane.upperRight);
        canvas.line(wall.plane.lowerLeft, wall.plane.lowerRight);
        return;
    }
    paintFill(canvas, wall);
    paintBands(canvas, wall);
    paintTileLines(canvas, wall);
    const QPolygonF outline = canvas.polygon(wall.plane);
    if (outline.size() > 2) {
        canvas.painter.setPen(wall.isBad() ? QPen(canvas.style.bad, 2.0) : QPen(canvas.style.line, 1.6));
        canvas.painter.setBrush(Qt::NoBrush);
        canvas.painter.drawPolygon(outline);
    }
    paintNormal(canvas, wall);
}

void zoHPCRoomPicture::paintFill(Canvas& canvas, const Wall& wall) const
{
    const QColor color = wall.turnsAway ? withAlpha(canvas.style.bad, 0.22)
                                        : withAlpha(canvas.style.front, canvas.style.isDark ? 0.25 : 0.32);
    if (wall.lit.empty()) {
        canvas.fill(wall.plane, color);
    } else {
        canvas.fill(wall.plane, QBrush(canvas.style.faintText, Qt::DiagCrossPattern));
        canvas.fill(wall.plane, withAlpha(canvas.style.background, 0.75));
        // Neighbours in a row at once. Frames during a drag do without the pattern of a large wall.
        constexpr int MANY = 2000;
        int pieces = 0;
        for (int row = 0; row < wall.rows; ++row) {
            for (int column = 0; column < wall.columns;) {
                int end = column;
                while (end < wall.columns && wall.isLit(row, end))
                    ++end;
                if (end > column && (!canvas.isFast || ++pieces < MANY)) {
                    const double top = wall.top(row);
                    const zoHPCPlane part =
                        wall.plane.part(wall.left(column), std::max(0.0, top - wall.tileHeight),
                                        wall.left(end - 1) + wall.tileWidth, top);
                    canvas.fill(part, canvas.style.background);
                    canvas.fill(part, color);
                }
                column = end + 1;
            }
        }
    }
    if (wall.turnsAway)
        canvas.fill(wall.plane, QBrush(withAlpha(canvas.style.bad, 0.7), Qt::BDiagPattern));
}

void zoHPCRoomPicture::paintBands(Canvas& canvas, const Wall& wall) const
{
    constexpr double STRENGTH = 0.75;
    const QColor out = withAlpha(canvas.style.fadeOut, STRENGTH);
    const QColor in = withAlpha(canvas.style.fadeIn, STRENGTH);
    const auto strip = [&](const zoHPCPlane& part, double width, bool upward) {
        if (width < 0.0) // a gap: the frames of the screens
            canvas.fill(part, withAlpha(canvas.style.background, 0.85));
        else if (wall.isBlended)
            canvas.ramp(part, upward ? in : out, upward ? out : in, upward);
        else
            canvas.fill(part, withAlpha(canvas.style.twice, 0.6));
    };
    const double overlapX = wall.tileWidth - wall.columnStep;
    const double overlapY = wall.tileHeight - wall.rowStep;
    constexpr double NOTHING = 1e-6;
    if (wall.columns > 1 && std::abs(overlapX) > NOTHING) {
        for (int column = 1; column < wall.columns; ++column) {
            const double s = wall.left(column);
            strip(wall.plane.part(std::min(s, s + overlapX), 0.0, std::max(s, s + overlapX), 1.0), overlapX,
                  false);
        }
    }
    if (wall.rows > 1 && std::abs(overlapY) > NOTHING) {
        for (int row = 1; row < wall.rows; ++row) {
            const double t = wall.top(row);
            strip(wall.plane.part(0.0, std::min(t, t - overlapY), 1.0, std::max(t, t - overlapY)), overlapY,
                  true);
        }
    }
    if (!wall.isBlended || wall.firstTile >= 0)
        return;
    const QColor nothing = withAlpha(canvas.style.fadeOut, 0.0);
    if (wall.leftBand > 0.0)
        canvas.ramp(wall.plane.part(0.0, 0.0, wall.leftBand, 1.0), withAlpha(in, 0.0), in, false);
    if (wall.rightBand > 0.0)
        canvas.ramp(wall.plane.part(1.0 - wall.rightBand, 0.0, 1.0, 1.0), out, nothing, false);
    if (wall.lowerBand > 0.0)
        canvas.ramp(wall.plane.part(0.0, 0.0, 1.0, wall.lowerBand), nothing, out, true);
    if (wall.upperBand > 0.0)
        canvas.ramp(wall.plane.part(0.0, 1.0 - wall.upperBand, 1.0, 1.0), in, withAlpha(in, 0.0), true);
}

void zoHPCRoomPicture::paintTileLines(Canvas& canvas, const Wall& wall) const
{
    if (wall.rows < 2 && wall.columns < 2)
        return;
    const QPointF corner = canvas.place(wall.plane.lowerLeft);
    // Lines closer than this run together: then only some are drawn.
    constexpr double CLOSEST = 3.0;
    const auto every = [&](const Point3& end, int count) {
        const double apart = distanceOf(corner, canvas.place(end)) / count;
        return std::max(1, static_cast<int>(std::ceil(CLOSEST / std::max(apart, 1e-3))));
    };
    canvas.painter.setPen(QPen(withAlpha(canvas.style.line, 0.75), 1.0));
    const int columnStep = every(wall.plane.lowerRight, wall.columns);
    for (int column = columnStep; column < wall.columns; column += columnStep) {
        const double s = wall.left(column);
        canvas.line(wall.plane.at(s, 0.0), wall.plane.at(s, 1.0));
        const double end = wall.left(column - 1) + wall.tileWidth;
        if (columnStep == 1 && std::abs(end - s) > 1e-6)
            canvas.line(wall.plane.at(end, 0.0), wall.plane.at(end, 1.0));
    }
    const int rowStep = every(wall.plane.upperLeft(), wall.rows);
    for (int row = rowStep; row < wall.rows; row += rowStep) {
        const double t = wall.top(row);
        canvas.line(wall.plane.at(0.0, t), wall.plane.at(1.0, t));
        const double end = wall.top(row - 1) - wall.tileHeight;
        if (rowStep == 1 && std::abs(end - t) > 1e-6)
            canvas.line(wall.plane.at(0.0, end), wall.plane.at(1.0, end));
    }
}

void zoHPCRoomPicture::paintNormal(Canvas& canvas, const Wall& wall) const
{
    const double size = 0.12 * std::min(wall.plane.width(), wall.plane.height());
    const Point3 center = wall.plane.center();
    canvas.arrow(center, center + size * wall.plane.normal(),
                 wall.turnsAway ? canvas.style.bad : canvas.style.fadeOut, wall.turnsAway ? 3.0 : 2.0);
}

void zoHPCRoomPicture::paintHighlights(Canvas& canvas) const
{
    for (const Highlight& highlight : m_highlights) {
        const Wall& wall = m_walls[highlight.wall];
        zoHPCPlane part = wall.plane;
        if (highlight.tile >= 0) {
            const double left = wall.left(highlight.tile % wall.columns);
            const double top = wall.top(highlight.tile / wall.columns);
            part = wall.plane.part(left, top - wall.tileHeight, left + wall.tileWidth, top);
        }
        const QPolygonF outline = canvas.polygon(part);
        if (outline.size() < 2)
            continue;
        canvas.painter.setBrush(withAlpha(canvas.style.current, 0.18));
        canvas.painter.setPen(
            QPen(canvas.style.background, 6.0, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        canvas.painter.drawPolygon(outline);
        canvas.painter.setBrush(Qt::NoBrush);
        canvas.painter.setPen(QPen(canvas.style.current, 3.5, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        canvas.painter.drawPolygon(outline);
    }
}

void zoHPCRoomPicture::paintNames(Canvas& canvas) const
{
    canvas.painter.setFont(canvas.style.font);
    const QFontMetricsF metrics(canvas.style.font, canvas.painter.device());
    if (canvas.isVisible(Point3())) {
        canvas.reserve(QRectF(canvas.place(Point3()) - QPointF(9.0, 9.0), QSizeF(18.0, 18.0)));
        canvas.label(canvas.place(Point3()) + QPointF(0.0, 1.6 * metrics.height()), tr("Viewer"),
                     canvas.style.text, false);
    }
    for (const Wall& wall : m_walls) {
        if (!canvas.isVisible(wall.plane.center()))
            continue;
        QString name = wall.name;
        if (wall.isDegenerate)
            name = tr("%1 (no area)").arg(wall.name);
        else if (wall.turnsAway)
            name = tr("%1 (mirrored)").arg(wall.name);
        else if (wall.isSkewed)
            name = tr("%1 (skewed)").arg(wall.name);
        const QColor color = wall.isBad() ? canvas.style.bad : canvas.style.text;
        const bool hasTiles = wall.rows > 1 || wall.columns > 1;
        const Point3 upperEdge = wall.plane.at(0.5, 1.0);
        if (hasTiles && canvas.isVisible(upperEdge))
            canvas.label(canvas.place(upperEdge) - QPointF(0.0, 0.8 * metrics.height()), name, color, true);
        else
            canvas.label(canvas.place(wall.plane.center()) + QPointF(0.0, metrics.height()), name, color,
                         true);
    }
    if (!canvas.isFast)
        paintTileNames(canvas);
}

void zoHPCRoomPicture::paintTileNames(Canvas& canvas) const
{
    canvas.painter.setFont(canvas.style.font);
    canvas.painter.setPen(canvas.style.text);
    const QFontMetricsF metrics(canvas.style.font, canvas.painter.device());
    for (const Wall& wall : m_walls) {
        if ((wall.rows < 2 && wall.columns < 2) || wall.isDegenerate ||
            !canvas.isVisible(wall.plane.center()))
            continue;
        const QSizeF room(metrics.horizontalAdvance(
                              tr("r%1 c%2").arg(QString::number(wall.rows), QString::number(wall.columns))) +
                              8.0,
                          1.4 * metrics.height());
        const double scale =
            m_camera.scaleAt(std::max(m_camera.see(wall.plane.center()).depth, 1.0), canvas.area);
        if (wall.tileWidth * wall.plane.width() * scale < 1.6 * room.width() ||
            wall.tileHeight * wall.plane.height() * scale < 1.6 * room.height())
            continue;
        canvas.reserve(QRectF(canvas.place(wall.plane.center()) - QPointF(6.0, 6.0), QSizeF(12.0, 12.0)));
        for (int row = 0; row < wall.rows; ++row) {
            for (int column = 0; column < wall.columns; ++column) {
                const Point3 center = wall.plane.at(wall.left(column) + 0.5 * wall.tileWidth,
                                                    wall.top(row) - 0.5 * wall.tileHeight);
                if (!canvas.isVisible(center))
                    continue;
                canvas.smallLabel(
                    QRectF(canvas.place(center) - QPointF(room.width() / 2.0, room.height() / 2.0), room),
                    tr("r%1 c%2").arg(QString::number(row + 1), QString::number(column + 1)));
            }
        }
    }
}

void zoHPCRoomPicture::paintLegend(Canvas& canvas) const
{
    const auto any = [this](auto claim) { return std::any_of(m_walls.begin(), m_walls.end(), claim); };
    const auto overlaps = [](const Wall& wall) {
        return (wall.columns > 1 && wall.tileWidth - wall.columnStep > 1e-6) ||
               (wall.rows > 1 && wall.tileHeight - wall.rowStep > 1e-6);
    };
    const auto hasBands = [](const Wall& wall) {
        return wall.firstTile < 0 && wall.leftBand + wall.rightBand + wall.lowerBand + wall.upperBand > 0.0;
    };
    struct Entry
    {
        QString text;
        QBrush ground;
        QBrush brush; // none: only the text
    };
    std::vector<Entry> entries;
    QRectF floor(0.0, 0.0, 1e-3, 1e-3);
    for (const Point3& p : extent())
        floor = floor.united(QRectF(p.x, p.z, 1e-3, 1e-3));
    entries.push_back(
        {tr("Grid %1").arg(lengthText(roundStep(std::max(floor.width(), floor.height()) / 10.0))), QBrush(),
         QBrush()});
    const QBrush paper(canvas.style.background);
    if (any([&](const Wall& wall) { return wall.isBlended && (overlaps(wall) || hasBands(wall)); })) {
        QLinearGradient ramp(0.0, 0.0, 1.0, 0.0);
        ramp.setCoordinateMode(QGradient::ObjectMode);
        ramp.setColorAt(0.0, withAlpha(canvas.style.fadeOut, 0.75));
        ramp.setColorAt(1.0, withAlpha(canvas.style.fadeIn, 0.75));
        entries.push_back({tr("Edge blending"), paper, ramp});
    }
    if (any([&](const Wall& wall) { return !wall.isBlended && overlaps(wall); }))
        entries.push_back({tr("Overlap"), paper, withAlpha(canvas.style.twice, 0.6)});
    if (any([](const Wall& wall) { return !wall.lit.empty() && !wall.isDegenerate; }))
        entries.push_back({tr("Shown nowhere"), paper,
                           QBrush(withAlpha(canvas.style.faintText, 0.5), Qt::DiagCrossPattern)});
    if (any([](const Wall& wall) { return wall.turnsAway; }))
        entries.push_back({tr("Faces away from the viewer"), QBrush(withAlpha(canvas.style.bad, 0.22)),
                           QBrush(withAlpha(canvas.style.bad, 0.7), Qt::BDiagPattern)});
    if (any([](const Wall& wall) { return wall.isInPixels; }))
        entries.push_back({tr("Tiled walls: 1 pixel drawn as 1 mm"), QBrush(), QBrush()});

    // In as many lines as the width asks for.
    const QFontMetricsF metrics(canvas.style.font, canvas.painter.device());
    const double height = metrics.height();
    const double swatch = 1.6 * height;
    const double left = canvas.area.left() + 0.6 * height;
    std::vector<QPointF> places;
    double x = left;
    double y = 0.0;
    for (const Entry& entry : entries) {
        const double width = metrics.horizontalAdvance(entry.text) + 1.0 +
                             (entry.brush.style() != Qt::NoBrush ? swatch + 0.4 * height : 0.0);
        if (x > left && x + width > canvas.area.right()) {
            x = left;
            y += 1.2 * height;
        }
        places.emplace_back(x, y);
        x += width + height;
    }
    const double top = canvas.area.bottom() - 1.5 * height - y;
    canvas.endLabelsAt(top);
    canvas.reserve(QRectF(QPointF(canvas.area.left(), top), canvas.area.bottomRight()));
    canvas.painter.setFont(canvas.style.font);
    for (size_t i = 0; i < entries.size(); ++i) {
        QPointF place = places[i] + QPointF(0.0, top);
        if (entries[i].brush.style() != Qt::NoBrush) {
            const QRectF box(place + QPointF(0.0, 0.1 * height), QSizeF(swatch, 0.8 * height));
            canvas.painter.fillRect(box, entries[i].ground);
            canvas.painter.setPen(QPen(canvas.style.line, 1.0));
            canvas.painter.setBrush(entries[i].brush);
            canvas.painter.drawRect(box);
            place.rx() += swatch + 0.4 * height;
        }
        canvas.painter.setPen(canvas.style.faintText);
        canvas.painter.drawText(
            QRectF(place, QSizeF(metrics.horizontalAdvance(entries[i].text) + 1.0, height)),
            Qt::AlignVCenter | Qt::AlignLeft, entries[i].text);
    }
}
