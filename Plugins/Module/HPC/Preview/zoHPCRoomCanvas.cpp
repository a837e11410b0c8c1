#include "zoHPCRoomCanvas.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

zoHPCRoomCanvas::zoHPCRoomCanvas(QPainter& painterToUse, const QRectF& areaToFill, const QPalette& palette,
                                 zoHPCPicture::Detail detail, const zoHPCRoomCamera& cameraToUse)
    : painter(painterToUse)
    , area(areaToFill)
    , camera(cameraToUse)
    , style(palette)
    , isFast(detail == zoHPCPicture::Detail::Fast)
    , m_lowest(areaToFill.bottom())
{
}

QPointF zoHPCRoomCanvas::place(const Point3& point) const
{
    zoHPCRoomCamera::Seen seen = camera.see(point);
    seen.depth = std::max(seen.depth, zoHPCRoomCamera::Near);
    return camera.toPicture(seen, area);
}

QPolygonF zoHPCRoomCanvas::polygon(const zoHPCPlane& plane) const
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

void zoHPCRoomCanvas::line(const Point3& from, const Point3& to)
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

void zoHPCRoomCanvas::fill(const zoHPCPlane& plane, const QBrush& brush)
{
    const QPolygonF shape = polygon(plane);
    if (shape.size() < 3)
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawPolygon(shape);
}

void zoHPCRoomCanvas::ramp(const zoHPCPlane& plane, const QColor& from, const QColor& to, bool upward)
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

void zoHPCRoomCanvas::arrow(const Point3& from, const Point3& to, const QColor& color, double width)
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

void zoHPCRoomCanvas::label(const QPointF& center, const QString& fullText, const QColor& color, bool isBold)
{
    QFont font = style.font;
    font.setBold(isBold);
    const QFontMetricsF metrics(font, painter.device());
    constexpr double Margin = 4.0;
    const QString text = metrics.elidedText(fullText, Qt::ElideMiddle, area.width() - 3.0 * Margin);
    const QSizeF size(metrics.horizontalAdvance(text) + 2.0 * Margin, metrics.height() + 2.0);
    QRectF box(center - QPointF(size.width() / 2.0, size.height() / 2.0), size);
    // Off the picture: better no name than one that belongs to nothing visible.
    if (!area.adjusted(-size.width() / 2.0, 0, size.width() / 2.0, 0).intersects(box))
        return;
    box.moveLeft(std::max(std::min(box.left(), area.right() - box.width()), area.left()));
    box.moveTop(std::max(box.top(), area.top()));
    box.moveBottom(std::min(box.bottom(), m_lowest));
    // Below what is in the way, or above it where that is nearer or there is no room below.
    const QRectF below = besideLabels(box, false);
    const QRectF above = besideLabels(box, true);
    const auto isPossible = [this](const QRectF& place) {
        return isFree(place) && place.top() >= area.top() && place.bottom() <= m_lowest;
    };
    const bool isNearer = box.top() - above.top() < below.top() - box.top();
    const QRectF free = isPossible(above) && (isNearer || !isPossible(below)) ? above : below;
    if (!isPossible(free))
        return;
    reserve(free, true);
    leader(center, free);
    painter.setPen(Qt::NoPen);
    painter.setBrush(zoHPCPictureStyle::withAlpha(style.background, 0.8));
    painter.drawRoundedRect(free, 3.0, 3.0);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(free, Qt::AlignCenter, text);
}

// From what the label names, where that is not beside it.
void zoHPCRoomCanvas::leader(const QPointF& from, const QRectF& to)
{
    const QPointF end(qBound(to.left(), from.x(), to.right()), qBound(to.top(), from.y(), to.bottom()));
    if (std::hypot(end.x() - from.x(), end.y() - from.y()) < 1.5 * to.height())
        return;
    painter.setPen(QPen(style.faintText, 1.0));
    painter.drawLine(from, end);
}

void zoHPCRoomCanvas::reserve(const QRectF& box, bool isText)
{
    m_labels.push_back({box, isText});
}

bool zoHPCRoomCanvas::isFree(const QRectF& box) const
{
    return std::none_of(m_labels.begin(), m_labels.end(),
                        [&](const Label& taken) { return taken.box.intersects(box); });
}

bool zoHPCRoomCanvas::isFreeOfText(const QRectF& box) const
{
    return std::none_of(m_labels.begin(), m_labels.end(),
                        [&](const Label& taken) { return taken.isText && taken.box.intersects(box); });
}

zoHPCRoomCamera::Seen zoHPCRoomCanvas::cut(const zoHPCRoomCamera::Seen& a, const zoHPCRoomCamera::Seen& b)
{
    const double t = (zoHPCRoomCamera::Near - a.depth) / (b.depth - a.depth);
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), zoHPCRoomCamera::Near};
}

QRectF zoHPCRoomCanvas::besideLabels(QRectF box, bool isAbove) const
{
    for (int attempt = 0; attempt < 12; ++attempt) {
        const auto other = std::find_if(m_labels.begin(), m_labels.end(),
                                        [&](const Label& taken) { return taken.box.intersects(box); });
        if (other == m_labels.end())
            break;
        if (isAbove)
            box.moveBottom(other->box.top() - 1.0);
        else
            box.moveTop(other->box.bottom() + 1.0);
    }
    return box;
}
