#include "zoHPCRoomTileNames.h"

#include "zoHPCRoomCanvas.h"
#include "zoHPCRoomWall.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

zoHPCRoomTileNames::zoHPCRoomTileNames(zoHPCRoomCanvas& canvas, const zoHPCRoomWall& wall, bool hasHosts)
    : m_canvas(canvas), m_wall(wall)
{
    int letters = findTiles(hasHosts);
    const auto isFit = [&](const Tile& tile) { return fits(tile, letters); };
    while (letters >= SmallestLetters && !std::all_of(m_tiles.begin(), m_tiles.end(), isFit))
        --letters;
    if (letters >= SmallestLetters)
        m_letters = letters;
}

int zoHPCRoomTileNames::findTiles(bool hasHosts)
{
    constexpr int LargestLetters = 13;
    int letters = LargestLetters;
    for (int row = 0; row < m_wall.rows; ++row) {
        for (int column = 0; column < m_wall.columns; ++column) {
            m_tiles.push_back(tileAt(row, column, hasHosts));
            // Of ten thousand tiles one tells, most often the first, that none of them has room.
            while (letters >= SmallestLetters && !fits(m_tiles.back(), letters))
                --letters;
            if (letters < SmallestLetters)
                return letters;
        }
    }
    return letters;
}

zoHPCRoomTileNames::Tile zoHPCRoomTileNames::tileAt(int row, int column, bool hasHosts) const
{
    // The middle half of what the neighbours leave, so that slanted edges do not cut letters.
    const zoHPCPlane tile = m_wall.tile(row, column);
    const QPointF left = m_canvas.place(tile.at(0.0, 0.5));
    const QPointF right = m_canvas.place(tile.at(1.0, 0.5));
    const QPointF upper = m_canvas.place(tile.at(0.5, 1.0));
    const QPointF lower = m_canvas.place(tile.at(0.5, 0.0));
    const double width = std::abs(right.x() - left.x()) - 8.0;
    const double height = std::abs(lower.y() - upper.y()) - std::abs(right.y() - left.y()) - 4.0;
    const QPointF center = m_canvas.place(tile.at(0.5, 0.5));
    Tile entry;
    entry.room = QRectF(center - QPointF(width / 2.0, height / 2.0), QSizeF(width, height));
    entry.lines << tr("r%1 c%2").arg(QString::number(m_wall.shownRow(row)),
                                     QString::number(m_wall.shownColumn(column)));
    if (hasHosts)
        entry.lines << m_wall.hostsOf(row, column);
    return entry;
}

bool zoHPCRoomTileNames::fits(const Tile& tile, int letters) const
{
    const QSizeF size = sizeOf(tile, letters);
    return size.width() <= tile.room.width() && size.height() <= tile.room.height();
}

QSizeF zoHPCRoomTileNames::sizeOf(const Tile& tile, int letters) const
{
    QFont font = m_canvas.style.font;
    font.setPixelSize(letters);
    const QFontMetricsF metrics(font, m_canvas.painter.device());
    double width = 0.0;
    for (const QString& line : tile.lines)
        width = std::max(width, metrics.horizontalAdvance(line));
    return {width + 2.0, metrics.height() * tile.lines.size()};
}

// In the middle, or above or below it, or at the sides: where nothing is, or at least no text and no viewer.
QRectF zoHPCRoomTileNames::freeBox(const Tile& tile, const QSizeF& size) const
{
    QRectF found(QPointF(), size);
    found.moveCenter(tile.room.center());
    bool isFound = m_canvas.isFreeOfText(found);
    for (const double across : {0.5, 0.0, 1.0}) {
        for (const double down : {0.5, 0.0, 1.0}) {
            const QRectF box(QPointF(tile.room.left() + across * (tile.room.width() - size.width()),
                                     tile.room.top() + down * (tile.room.height() - size.height())),
                             size);
            if (m_canvas.isFree(box))
                return box;
            if (!isFound && m_canvas.isFreeOfText(box)) {
                isFound = true;
                found = box;
            }
        }
    }
    return found;
}

void zoHPCRoomTileNames::paint() const
{
    if (!fit())
        return;
    QFont font = m_canvas.style.font;
    font.setPixelSize(m_letters);
    m_canvas.painter.setFont(font);
    m_canvas.painter.setPen(m_canvas.style.text);
    const double line = QFontMetricsF(font, m_canvas.painter.device()).height();
    for (const Tile& tile : m_tiles) {
        const QSizeF size = sizeOf(tile, m_letters);
        // Beside the viewer and his arrow, if there is room.
        const QRectF box = freeBox(tile, size);
        // Of walls that stand one behind the other, or reach beyond the picture.
        if (!m_canvas.isFreeOfText(box) || !m_canvas.area.contains(box))
            continue;
        // An arrow below must not look like a mark between the letters.
        const double ground = m_canvas.isFree(box) ? 0.6 : 1.0;
        m_canvas.reserve(box, true);
        m_canvas.painter.fillRect(box, zoHPCPictureStyle::withAlpha(m_canvas.style.background, ground));
        for (int i = 0; i < tile.lines.size(); ++i)
            m_canvas.painter.drawText(QRectF(box.left(), box.top() + i * line, box.width(), line),
                                      Qt::AlignCenter | Qt::TextSingleLine, tile.lines.at(i));
    }
}
