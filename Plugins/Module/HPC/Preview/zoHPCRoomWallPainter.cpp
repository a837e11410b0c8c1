#include "zoHPCRoomWallPainter.h"

#include "zoHPCRoomCanvas.h"
#include "zoHPCRoomWall.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

void zoHPCRoomWallPainter::paint()
{
    if (m_wall.isDegenerate) {
        m_canvas.painter.setPen(QPen(m_canvas.style.bad, 3.0, Qt::DotLine, Qt::RoundCap));
        m_canvas.line(m_wall.plane.lowerLeft, m_wall.plane.upperRight);
        m_canvas.line(m_wall.plane.lowerLeft, m_wall.plane.lowerRight);
        return;
    }
    paintFill();
    paintBands();
    paintTileLines();
    const QPolygonF outline = m_canvas.polygon(m_wall.plane);
    if (outline.size() > 2) {
        m_canvas.painter.setPen(m_wall.isBad() ? QPen(m_canvas.style.bad, 2.0)
                                               : QPen(m_canvas.style.line, 1.6));
        m_canvas.painter.setBrush(Qt::NoBrush);
        m_canvas.painter.drawPolygon(outline);
    }
    paintNormal();
}

void zoHPCRoomWallPainter::paintFill()
{
    const QColor color = m_wall.turnsAway ? zoHPCPictureStyle::withAlpha(m_canvas.style.bad, 0.22)
                                          : zoHPCPictureStyle::withAlpha(m_canvas.style.front,
                                                                         m_canvas.style.isDark ? 0.25 : 0.32);
    if (m_wall.lit.empty()) {
        m_canvas.fill(m_wall.plane, color);
    } else {
        m_canvas.fill(m_wall.plane, QBrush(m_canvas.style.faintText, Qt::DiagCrossPattern));
        m_canvas.fill(m_wall.plane, zoHPCPictureStyle::withAlpha(m_canvas.style.background, 0.75));
        // Neighbours in a row at once. Frames during a drag do without the pattern of a large m_wall.
        constexpr int Many = 2000;
        int pieces = 0;
        for (int row = 0; row < m_wall.rows; ++row) {
            for (int column = 0; column < m_wall.columns;) {
                int end = column;
                while (end < m_wall.columns && m_wall.isLit(row, end))
                    ++end;
                if (end > column && (!m_canvas.isFast || ++pieces < Many)) {
                    const double top = m_wall.top(row);
                    const zoHPCPlane part =
                        m_wall.plane.part(m_wall.left(column), std::max(0.0, top - m_wall.tileHeight),
                                          m_wall.left(end - 1) + m_wall.tileWidth, top);
                    m_canvas.fill(part, m_canvas.style.background);
                    m_canvas.fill(part, color);
                }
                column = end + 1;
            }
        }
    }
    if (m_wall.turnsAway)
        m_canvas.fill(m_wall.plane,
                      QBrush(zoHPCPictureStyle::withAlpha(m_canvas.style.bad, 0.7), Qt::BDiagPattern));
}

void zoHPCRoomWallPainter::paintBands()
{
    constexpr double Strength = 0.75;
    const QColor out = zoHPCPictureStyle::withAlpha(m_canvas.style.fadeOut, Strength);
    const QColor in = zoHPCPictureStyle::withAlpha(m_canvas.style.fadeIn, Strength);
    const auto strip = [&](const zoHPCPlane& part, double width, bool upward) {
        if (width < 0.0) // a gap: the frames of the screens
            m_canvas.fill(part, zoHPCPictureStyle::withAlpha(m_canvas.style.background, 0.85));
        else if (m_wall.isBlended)
            m_canvas.ramp(part, upward ? in : out, upward ? out : in, upward);
        else
            m_canvas.fill(part, zoHPCPictureStyle::withAlpha(m_canvas.style.twice, 0.6));
    };
    const double overlapX = m_wall.overlapX();
    const double overlapY = m_wall.overlapY();
    constexpr double Nothing = 1e-6;
    if (m_wall.columns > 1 && std::abs(overlapX) > Nothing) {
        for (int column = 1; column < m_wall.columns; ++column) {
            const double s = m_wall.left(column);
            strip(m_wall.plane.part(std::min(s, s + overlapX), 0.0, std::max(s, s + overlapX), 1.0), overlapX,
                  false);
        }
    }
    if (m_wall.rows > 1 && std::abs(overlapY) > Nothing) {
        for (int row = 1; row < m_wall.rows; ++row) {
            const double t = m_wall.top(row);
            strip(m_wall.plane.part(0.0, std::min(t, t - overlapY), 1.0, std::max(t, t - overlapY)), overlapY,
                  true);
        }
    }
    if (!m_wall.isBlended || m_wall.firstTile >= 0)
        return;
    const QColor nothing = zoHPCPictureStyle::withAlpha(m_canvas.style.fadeOut, 0.0);
    if (m_wall.leftBand > 0.0)
        m_canvas.ramp(m_wall.plane.part(0.0, 0.0, m_wall.leftBand, 1.0),
                      zoHPCPictureStyle::withAlpha(in, 0.0), in, false);
    if (m_wall.rightBand > 0.0)
        m_canvas.ramp(m_wall.plane.part(1.0 - m_wall.rightBand, 0.0, 1.0, 1.0), out, nothing, false);
    if (m_wall.lowerBand > 0.0)
        m_canvas.ramp(m_wall.plane.part(0.0, 0.0, 1.0, m_wall.lowerBand), nothing, out, true);
    if (m_wall.upperBand > 0.0)
        m_canvas.ramp(m_wall.plane.part(0.0, 1.0 - m_wall.upperBand, 1.0, 1.0), in,
                      zoHPCPictureStyle::withAlpha(in, 0.0), true);
}

void zoHPCRoomWallPainter::paintTileLines()
{
    if (!m_wall.hasTiles())
        return;
    const QPointF corner = m_canvas.place(m_wall.plane.lowerLeft);
    // Lines closer than this run together: then only some are drawn.
    constexpr double Closest = 3.0;
    const auto every = [&](const Point3& end, int count) {
        const QPointF way = m_canvas.place(end) - corner;
        const double apart = std::hypot(way.x(), way.y()) / count;
        return std::max(1, static_cast<int>(std::ceil(Closest / std::max(apart, 1e-3))));
    };
    m_canvas.painter.setPen(QPen(zoHPCPictureStyle::withAlpha(m_canvas.style.line, 0.75), 1.0));
    const int columnStep = every(m_wall.plane.lowerRight, m_wall.columns);
    for (int column = columnStep; column < m_wall.columns; column += columnStep) {
        const double s = m_wall.left(column);
        m_canvas.line(m_wall.plane.at(s, 0.0), m_wall.plane.at(s, 1.0));
        const double end = m_wall.left(column - 1) + m_wall.tileWidth;
        if (columnStep == 1 && std::abs(end - s) > 1e-6)
            m_canvas.line(m_wall.plane.at(end, 0.0), m_wall.plane.at(end, 1.0));
    }
    const int rowStep = every(m_wall.plane.upperLeft(), m_wall.rows);
    for (int row = rowStep; row < m_wall.rows; row += rowStep) {
        const double t = m_wall.top(row);
        m_canvas.line(m_wall.plane.at(0.0, t), m_wall.plane.at(1.0, t));
        const double end = m_wall.top(row - 1) - m_wall.tileHeight;
        if (rowStep == 1 && std::abs(end - t) > 1e-6)
            m_canvas.line(m_wall.plane.at(0.0, end), m_wall.plane.at(1.0, end));
    }
}

Point3 zoHPCRoomWallPainter::endOfNormal(const zoHPCRoomWall& wall)
{
    const double size = 0.12 * std::min(wall.plane.width(), wall.plane.height());
    return wall.plane.center() + size * wall.plane.normal();
}

void zoHPCRoomWallPainter::paintNormal()
{
    m_canvas.arrow(m_wall.plane.center(), endOfNormal(m_wall),
                   m_wall.turnsAway ? m_canvas.style.bad : m_canvas.style.fadeOut,
                   m_wall.turnsAway ? 3.0 : 2.0);
}
