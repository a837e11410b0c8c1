#include "zoHPCCurvedWall.h"

#include <QtMath>

#include <cmath>

namespace
{
// Under which a chord is seen from the axis, in degrees.
double chordAngle(double chord, double radius)
{
    return qRadiansToDegrees(2.0 * std::asin(chord / (2.0 * radius)));
}

// A full circle is closed by as much as numbers of a data sheet are rounded.
constexpr double s_largestSpan = 360.01;
} // namespace

double zoHPCCurvedWall::angleOf(double tileWidth, double overlap, double radius)
{
    return chordAngle(tileWidth, radius) - chordAngle(overlap, radius);
}

double zoHPCCurvedWall::radiusOf(double tileWidth, double overlap, double angle)
{
    const double half = qDegreesToRadians(angle / 2.0);
    const double squared =
        tileWidth * tileWidth + overlap * overlap - 2.0 * tileWidth * overlap * std::cos(half);
    return std::sqrt(squared) / (2.0 * std::sin(half));
}

zoHPCCurvedWall::zoHPCCurvedWall(int columns, int rows, const QSizeF& tile, double overlapAcross,
                                 double overlapDown, double radius)
    : m_columns(columns)
    , m_rows(rows)
    , m_tile(tile)
    , m_overlapDown(overlapDown)
    , m_radius(radius)
    , m_angle(angleOf(tile.width(), overlapAcross, radius))
{
}

double zoHPCCurvedWall::span() const
{
    return (m_columns - 1) * m_angle + chordAngle(m_tile.width(), m_radius);
}

bool zoHPCCurvedWall::isPossible() const
{
    return m_angle > 0.0 && span() <= s_largestSpan && m_columns * m_angle <= s_largestSpan;
}

zoHPCPlane zoHPCCurvedWall::tile(int row, int column) const
{
    const double middle = (column - 1 - (m_columns - 1) / 2.0) * m_angle;
    const double half = chordAngle(m_tile.width(), m_radius) / 2.0;
    const double step = m_tile.height() - m_overlapDown;
    const double top = (m_rows - 1) * step / 2.0 + m_tile.height() / 2.0 - (row - 1) * step;
    const auto corner = [this](double angle, double y) -> Point3 {
        const double radians = qDegreesToRadians(angle);
        return {m_radius * std::sin(radians), y, m_radius - m_radius * std::cos(radians)};
    };
    const double bottom = top - m_tile.height();
    return {corner(middle - half, bottom), corner(middle + half, bottom), corner(middle + half, top)};
}
