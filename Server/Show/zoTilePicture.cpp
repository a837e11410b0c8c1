#include "zoTilePicture.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{
// What people see at the height of a node's name from five metres.
constexpr double NameShare = 0.15;
constexpr double TextShare = 0.066;
constexpr double SmallShare = 0.046;

QFont fontOf(double pixels, bool isBold)
{
    QFont font;
    font.setPixelSize(std::max(5, int(std::lround(pixels))));
    font.setBold(isBold);
    return font;
}

// As high as wanted, or as wide as there is room.
QFont fontThatFits(const QString& text, double pixels, double width, bool isBold)
{
    const QFont font = fontOf(pixels, isBold);
    const double needed = QFontMetricsF(font).horizontalAdvance(text);
    return needed > width ? fontOf(pixels * width / needed, isBold) : font;
}

// Height of a tile for what is measured in shares of it; narrow ones count less.
double unitOf(const QRect& target)
{
    return std::min(double(target.height()), target.width() * 0.75);
}
} // namespace

zoTilePicture::zoTilePicture(const zoWallNode& node, const zoWallWindow& window,
                             const zoWallViewport& viewport, const QSize& pixels)
    : m_node(node), m_window(window), m_viewport(viewport), m_pixels(pixels)
{
}

QColor zoTilePicture::colourOf(const QString& node)
{
    // Not qHash(), which differs between processes.
    const QByteArray bytes = node.toUtf8();
    const unsigned hash = qChecksum(bytes.constData(), uint(bytes.size()));
    return QColor::fromHsvF(std::fmod(hash * 0.6180339887498949, 1.0), 0.72, 0.86);
}

void zoTilePicture::paint(QPainter& painter, const QRect& target, zoStereoMode::Eye eye) const
{
    painter.save();
    painter.setClipRect(target, Qt::IntersectClip);
    const QColor colour = colourOf(m_node.name);
    // Tiles side by side differ, however alike their names are.
    const bool isLight = ((m_viewport.row + m_viewport.column) & 1) != 0;
    painter.fillRect(target,
                     QColor::fromHsvF(std::max(0.0, double(colour.hueF())), 0.6, isLight ? 0.42 : 0.28));
    painter.setRenderHint(QPainter::Antialiasing, true);
    paintShapes(painter, target);
    paintOverlaps(painter, target);
    paintTexts(painter, target, eye);
    paintArrows(painter, target);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(Qt::white, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(target.adjusted(0, 0, -1, -1));
    painter.restore();
}

// A circle and the diagonals: stretched or turned pictures show.
void zoTilePicture::paintShapes(QPainter& painter, const QRect& target) const
{
    const double unit = unitOf(target);
    const QPen thin(QColor(255, 255, 255, 60), std::max(1.0, unit * 0.003));
    painter.setPen(thin);
    painter.setBrush(Qt::NoBrush);
    const QRectF box(target);
    painter.drawLine(box.topLeft(), box.bottomRight());
    painter.drawLine(box.bottomLeft(), box.topRight());
    const double radius = std::min(box.width(), box.height()) * 0.46;
    painter.drawEllipse(box.center(), radius, radius);
}

zoWallEdges zoTilePicture::edgesIn(const QRect& target) const
{
    const double x = m_pixels.width() > 0 ? double(target.width()) / m_pixels.width() : 1.0;
    const double y = m_pixels.height() > 0 ? double(target.height()) / m_pixels.height() : 1.0;
    const zoWallEdges& edges = m_viewport.edges;
    return {edges.left * x, edges.right * x, edges.top * y, edges.bottom * y};
}

void zoTilePicture::paintOverlaps(QPainter& painter, const QRect& target) const
{
    const zoWallEdges edges = edgesIn(target);
    const QRectF box(target);
    const double step = std::max(4.0, unitOf(target) * 0.035);
    const auto hatch = [&](const QRectF& strip, bool rises) {
        if (strip.width() < 1.0 || strip.height() < 1.0)
            return;
        painter.save();
        painter.setClipRect(strip, Qt::IntersectClip);
        painter.fillRect(strip, QColor(255, 255, 255, 36));
        painter.setPen(QPen(QColor(255, 255, 255, 110), std::max(1.0, step * 0.16)));
        const double length = strip.width() + strip.height();
        for (double d = 0.0; d < length; d += step) {
            if (rises)
                painter.drawLine(QPointF(strip.left() + d - strip.height(), strip.bottom()),
                                 QPointF(strip.left() + d, strip.top()));
            else
                painter.drawLine(QPointF(strip.left() + d - strip.height(), strip.top()),
                                 QPointF(strip.left() + d, strip.bottom()));
        }
        painter.restore();
    };
    hatch({box.left(), box.top(), edges.left, box.height()}, true);
    hatch({box.right() - edges.right, box.top(), edges.right, box.height()}, true);
    hatch({box.left(), box.top(), box.width(), edges.top}, false);
    hatch({box.left(), box.bottom() - edges.bottom, box.width(), edges.bottom}, false);
}

QString zoTilePicture::place() const
{
    if (m_viewport.rows > 1 || m_viewport.columns > 1)
        return tr("row %1, column %2")
            .arg(QString::number(m_viewport.row), QString::number(m_viewport.column));
    return m_viewport.tile;
}

void zoTilePicture::paintTexts(QPainter& painter, const QRect& target, zoStereoMode::Eye eye) const
{
    const double unit = unitOf(target);
    const double width = target.width() * 0.6;
    QString screen = m_window.screen >= 0 ? tr("screen %1").arg(m_window.screen + 1)
                     : m_window.screen == zoWallWindow::ExtendedDesktop ? tr("desktop")
                                                                        : tr("primary screen");
    screen +=
        tr(" · %1 × %2 pixels").arg(QString::number(m_pixels.width()), QString::number(m_pixels.height()));
    struct Line
    {
        QString text;
        double share;
        bool isBold;
        QColor colour;
    };
    std::vector<Line> lines{{m_node.name.isEmpty() ? m_node.id : m_node.name, NameShare, true, Qt::white},
                            {place(), TextShare, true, QColor(255, 255, 255, 235)},
                            {m_viewport.wall, SmallShare, false, QColor(255, 255, 255, 205)},
                            {screen, SmallShare, false, QColor(255, 255, 255, 205)}};
    if (eye == zoStereoMode::Eye::Left)
        lines.push_back({tr("left eye"), TextShare, true, QColor(255, 176, 120)});
    if (eye == zoStereoMode::Eye::Right)
        lines.push_back({tr("right eye"), TextShare, true, QColor(140, 214, 255)});
    double height = 0.0;
    for (const Line& line : lines)
        height += line.share * unit * 1.32;
    const zoWallEdges edges = edgesIn(target);
    const QRectF inner = QRectF(target).adjusted(edges.left, edges.top, -edges.right, -edges.bottom);
    double top = inner.center().y() - height / 2.0;
    for (const Line& line : lines) {
        const double lineHeight = line.share * unit * 1.32;
        const QRectF box(inner.left(), top, inner.width(), lineHeight);
        painter.setFont(fontThatFits(line.text, line.share * unit, width, line.isBold));
        painter.setPen(line.colour);
        painter.drawText(box, Qt::AlignCenter | Qt::TextDontClip, line.text);
        top += lineHeight;
    }
}

void zoTilePicture::paintArrows(QPainter& painter, const QRect& target) const
{
    const zoWallNeighbours& near = m_viewport.neighbours;
    paintArrow(painter, target, {-1.0, 0.0}, near.left);
    paintArrow(painter, target, {1.0, 0.0}, near.right);
    paintArrow(painter, target, {0.0, -1.0}, near.above);
    paintArrow(painter, target, {0.0, 1.0}, near.below);
}

void zoTilePicture::paintArrow(QPainter& painter, const QRect& target, const QPointF& direction,
                               const QString& name) const
{
    if (name.isEmpty())
        return;
    const double unit = unitOf(target);
    const zoWallEdges edges = edgesIn(target);
    const QRectF inner = QRectF(target).adjusted(edges.left, edges.top, -edges.right, -edges.bottom);
    const double length = unit * 0.075;
    const double gap = unit * 0.02;
    // The neighbour's own arrow points into the overlap from its side.
    const QPointF middle = inner.center();
    const QPointF tip(middle.x() + direction.x() * (inner.width() / 2.0 - gap),
                      middle.y() + direction.y() * (inner.height() / 2.0 - gap));
    const QPointF aside(-direction.y(), direction.x());
    const QPointF foot = tip - length * direction;
    painter.setPen(Qt::NoPen);
    painter.setBrush(colourOf(name).lighter(120));
    const QPointF corners[] = {tip, foot + length * 0.62 * aside, foot - length * 0.62 * aside};
    painter.drawConvexPolygon(corners, 3);

    const QFont font =
        fontThatFits(name, SmallShare * unit, inner.width() * (direction.x() != 0.0 ? 0.18 : 0.5), true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    const double height = SmallShare * unit * 1.4;
    const double width = QFontMetricsF(font).horizontalAdvance(name) + 2.0;
    // Beside the arrow on the inner side.
    QRectF text(0.0, 0.0, width, height);
    if (direction.x() != 0.0)
        text.moveCenter(foot - QPointF(direction.x() * (width / 2.0 + gap * 0.6), 0.0));
    else
        text.moveCenter(foot - QPointF(0.0, direction.y() * (height / 2.0)));
    painter.drawText(text, Qt::AlignCenter | Qt::TextDontClip, name);
}
