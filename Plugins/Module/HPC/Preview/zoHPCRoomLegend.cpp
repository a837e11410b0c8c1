#include "zoHPCRoomLegend.h"

#include "zoHPCRoomCanvas.h"
#include "zoHPCRoomWall.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>

#include <zoLengthUnit.h>

#include <algorithm>

namespace
{
QString lengthText(double mm)
{
    const zoLengthUnit unit = zoLengthUnit::shown();
    if (unit.millimetres() != 1.0)
        return unit.text(mm);
    return mm >= 1000.0 ? QString::number(mm / 1000.0) + QString::fromLatin1(" m")
                        : QString::number(mm) + QString::fromLatin1(" mm");
}

bool overlaps(const zoHPCRoomWall& wall)
{
    return (wall.columns > 1 && wall.overlapX() > 1e-6) || (wall.rows > 1 && wall.overlapY() > 1e-6);
}

bool hasBands(const zoHPCRoomWall& wall)
{
    return wall.firstTile < 0 && wall.leftBand + wall.rightBand + wall.lowerBand + wall.upperBand > 0.0;
}
} // namespace

zoHPCRoomLegend::zoHPCRoomLegend(zoHPCRoomCanvas& canvas, const std::vector<zoHPCRoomWall>& walls,
                                 double gridStep, bool hasFrames)
    : m_canvas(canvas)
{
    addEntries(walls, gridStep);
    if (hasFrames)
        addFrames();
}

void zoHPCRoomLegend::addFrames()
{
    const QBrush paper(m_canvas.style.background);
    m_entries.push_back({tr("Window"), paper, QBrush(Qt::transparent), Qt::SolidLine});
    m_entries.push_back({tr("Monitor"), paper, QBrush(Qt::transparent), Qt::DashLine});
}

void zoHPCRoomLegend::addEntries(const std::vector<zoHPCRoomWall>& walls, double gridStep)
{
    const auto any = [&walls](auto claim) { return std::any_of(walls.begin(), walls.end(), claim); };
    m_entries.push_back({tr("Grid %1").arg(lengthText(gridStep)), QBrush(), QBrush(), Qt::NoPen});
    const QBrush paper(m_canvas.style.background);
    if (any([&](const zoHPCRoomWall& wall) {
            return wall.isBlended && (overlaps(wall) || hasBands(wall));
        })) {
        QLinearGradient ramp(0.0, 0.0, 1.0, 0.0);
        ramp.setCoordinateMode(QGradient::ObjectMode);
        ramp.setColorAt(0.0, zoHPCPictureStyle::withAlpha(m_canvas.style.fadeOut, 0.75));
        ramp.setColorAt(1.0, zoHPCPictureStyle::withAlpha(m_canvas.style.fadeIn, 0.75));
        m_entries.push_back({tr("Edge blending"), paper, ramp, Qt::NoPen});
    }
    if (any([&](const zoHPCRoomWall& wall) { return !wall.isBlended && overlaps(wall); }))
        m_entries.push_back(
            {tr("Overlap"), paper, zoHPCPictureStyle::withAlpha(m_canvas.style.twice, 0.6), Qt::NoPen});
    if (any([](const zoHPCRoomWall& wall) { return !wall.lit.empty() && !wall.isDegenerate; }))
        m_entries.push_back(
            {tr("Shown nowhere"), paper,
             QBrush(zoHPCPictureStyle::withAlpha(m_canvas.style.faintText, 0.5), Qt::DiagCrossPattern),
             Qt::NoPen});
    if (any([](const zoHPCRoomWall& wall) { return wall.turnsAway; }))
        m_entries.push_back(
            {tr("Faces away from the viewer"), QBrush(zoHPCPictureStyle::withAlpha(m_canvas.style.bad, 0.22)),
             QBrush(zoHPCPictureStyle::withAlpha(m_canvas.style.bad, 0.7), Qt::BDiagPattern), Qt::NoPen});
    if (any([](const zoHPCRoomWall& wall) { return wall.isInPixels; }))
        m_entries.push_back({tr("Tiled walls: 1 pixel drawn as 1 mm"), QBrush(), QBrush(), Qt::NoPen});
}

void zoHPCRoomLegend::paint()
{
    // In as many lines as the width asks for.
    const QFontMetricsF metrics(m_canvas.style.font, m_canvas.painter.device());
    const double height = metrics.height();
    const double swatch = 1.6 * height;
    const double left = m_canvas.area.left() + 0.6 * height;
    std::vector<QPointF> places;
    double x = left;
    double y = 0.0;
    for (const Entry& entry : m_entries) {
        const double width = metrics.horizontalAdvance(entry.text) + 1.0 +
                             (entry.brush.style() != Qt::NoBrush ? swatch + 0.4 * height : 0.0);
        if (x > left && x + width > m_canvas.area.right()) {
            x = left;
            y += 1.2 * height;
        }
        places.emplace_back(x, y);
        x += width + height;
    }
    const double top = m_canvas.area.bottom() - 1.5 * height - y;
    m_canvas.endLabelsAt(top);
    m_canvas.reserve(QRectF(QPointF(m_canvas.area.left(), top), m_canvas.area.bottomRight()), true);
    m_canvas.painter.setFont(m_canvas.style.font);
    for (size_t i = 0; i < m_entries.size(); ++i) {
        QPointF place = places[i] + QPointF(0.0, top);
        if (m_entries[i].brush.style() != Qt::NoBrush) {
            const QRectF box(place + QPointF(0.0, 0.1 * height), QSizeF(swatch, 0.8 * height));
            m_canvas.painter.fillRect(box, m_entries[i].ground);
            m_canvas.painter.setPen(QPen(m_canvas.style.line, 1.0));
            m_canvas.painter.setBrush(m_entries[i].brush);
            m_canvas.painter.drawRect(box);
            if (m_entries[i].frame != Qt::NoPen) {
                m_canvas.painter.setPen(
                    QPen(zoHPCPictureStyle::withAlpha(m_canvas.style.line, 0.6), 1.0, m_entries[i].frame));
                m_canvas.painter.drawRect(box.adjusted(3.0, 3.0, -3.0, -3.0));
            }
            place.rx() += swatch + 0.4 * height;
        }
        m_canvas.painter.setPen(m_canvas.style.faintText);
        m_canvas.painter.drawText(
            QRectF(place, QSizeF(metrics.horizontalAdvance(m_entries[i].text) + 1.0, height)),
            Qt::AlignVCenter | Qt::AlignLeft, m_entries[i].text);
    }
}
