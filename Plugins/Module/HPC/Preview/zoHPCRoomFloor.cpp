#include "zoHPCRoomFloor.h"

#include "zoHPCRoomCanvas.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{
// Steps are tenths of the ground or more; where the last doubles are they lead nowhere.
constexpr int s_mostLines = 20;

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
} // namespace

zoHPCRoomFloor::zoHPCRoomFloor(const std::vector<Point3>& points)
    : m_height(HUGE_VAL), m_ground(0.0, 0.0, 1e-3, 1e-3)
{
    for (const Point3& p : points) {
        m_height = std::min(m_height, p.y);
        m_ground = m_ground.united(QRectF(p.x, p.z, 1e-3, 1e-3));
    }
    m_step = roundStep(std::max(m_ground.width(), m_ground.height()) / 10.0);
}

void zoHPCRoomFloor::paint(zoHPCRoomCanvas& canvas) const
{
    const double left = std::floor(m_ground.left() / m_step - 0.25) * m_step;
    const double right = std::ceil(m_ground.right() / m_step + 0.25) * m_step;
    const double back = std::floor(m_ground.top() / m_step - 0.25) * m_step;
    const double front = std::ceil(m_ground.bottom() / m_step + 0.25) * m_step;
    canvas.painter.setPen(QPen(canvas.style.grid, 1.0));
    for (int i = 0; i < s_mostLines && left + i * m_step <= right + 0.5 * m_step; ++i)
        canvas.line({left + i * m_step, m_height, back}, {left + i * m_step, m_height, front});
    for (int i = 0; i < s_mostLines && back + i * m_step <= front + 0.5 * m_step; ++i)
        canvas.line({left, m_height, back + i * m_step}, {right, m_height, back + i * m_step});

    if (canvas.isVisible(Point3())) {
        canvas.painter.setPen(QPen(canvas.style.faintText, 1.0, Qt::DashLine));
        canvas.line(Point3(), {0.0, m_height, 0.0});
    }
}
