#include "zoRehearsalPlaces.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{
constexpr double s_margin = 0.9;
// Smaller beside the host's window than this share of what it is in the middle, it shows too little.
constexpr double s_leastShare = 0.15;
const QRect s_usualScreen(0, 0, 1920, 1080);

double scaleIn(const QRect& area, const QSize& wall)
{
    return std::min({s_margin * area.width() / std::max(wall.width(), 1),
                     s_margin * area.height() / std::max(wall.height(), 1), 1.0});
}
} // namespace

zoRehearsalPlaces::zoRehearsalPlaces(const QSize& wall, const QRect& screen, const QRect& avoided)
{
    QRect area = screen;
    const double whole = scaleIn(screen, wall);
    const QRect taken = avoided.intersected(screen);
    if (!taken.isEmpty()) {
        const QRect beside[] = {
            QRect(taken.right() + 1, screen.top(), screen.right() - taken.right(), screen.height()),
            QRect(screen.left(), screen.top(), taken.left() - screen.left(), screen.height()),
            QRect(screen.left(), taken.bottom() + 1, screen.width(), screen.bottom() - taken.bottom()),
            QRect(screen.left(), screen.top(), screen.width(), taken.top() - screen.top())};
        const QRect& largest =
            *std::max_element(std::begin(beside), std::end(beside), [&wall](const QRect& a, const QRect& b) {
                return scaleIn(a, wall) < scaleIn(b, wall);
            });
        if (scaleIn(largest, wall) >= s_leastShare * whole)
            area = largest;
    }
    m_scale = scaleIn(area, wall);
    m_corner = QPointF(area.x() + (area.width() - m_scale * std::max(wall.width(), 1)) / 2,
                       area.y() + (area.height() - m_scale * std::max(wall.height(), 1)) / 2);
}

QRect zoRehearsalPlaces::of(const QRectF& place) const
{
    return {int(m_corner.x() + m_scale * place.x()), int(m_corner.y() + m_scale * place.y()),
            std::max(int(m_scale * place.width()), 1), std::max(int(m_scale * place.height()), 1)};
}

QRect zoRehearsalPlaces::screenOf(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(\\d+)x(\\d+)([+-]\\d+)([+-]\\d+)$"));
    const QRegularExpressionMatch match = form.match(text);
    return match.hasMatch() ? QRect(match.captured(3).toInt(), match.captured(4).toInt(),
                                    match.captured(1).toInt(), match.captured(2).toInt())
                            : s_usualScreen;
}
