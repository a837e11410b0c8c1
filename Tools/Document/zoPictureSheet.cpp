#include "zoPictureSheet.h"

#include "zoHPCPictureStyle.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace
{
// Points of the sheet.
constexpr double s_margin = 12.0;
constexpr int s_titleLetters = 18;
constexpr double s_titleHeight = 32.0;
constexpr int s_letters = 12;
constexpr double s_lineHeight = 17.0;

QFont lineFont()
{
    QFont font;
    font.setPixelSize(s_letters);
    return font;
}
} // namespace

zoPictureSheet::zoPictureSheet(zoHPCPicture& picture, const QString& title, const QStringList& lines)
    : m_picture(picture), m_title(title), m_lines(lines)
{
}

QStringList zoPictureSheet::shownLines(const QRectF& area) const
{
    const QFontMetricsF metrics(lineFont());
    const double width = area.width() - 2 * s_margin;
    // The picture keeps the larger part.
    const int most = std::max(0, int(area.height() * 0.4 / s_lineHeight));
    QStringList result;
    int begun = 0; // of the lines
    for (const QString& line : m_lines) {
        if (result.size() >= most)
            break;
        ++begun;
        QString shown;
        // Word by word: a line of ten thousand hosts has room for the first of them.
        for (int begin = 0; begin <= line.size();) {
            const int blank = line.indexOf(QLatin1Char(' '), begin);
            const int end = blank < 0 ? line.size() : blank;
            const QString word = line.mid(begin, end - begin);
            begin = end + 1;
            const QString longer = shown.isEmpty() ? word : shown + QLatin1Char(' ') + word;
            if (shown.isEmpty() || metrics.horizontalAdvance(longer) <= width) {
                shown = longer;
                continue;
            }
            result << shown;
            shown = QLatin1String("    ") + word;
            if (result.size() >= most)
                break;
        }
        result << metrics.elidedText(shown, Qt::ElideMiddle, width);
    }
    while (result.size() > most)
        result.removeLast();
    // That there is more is told in place of the last line.
    if (begun < m_lines.size() && !result.isEmpty())
        result.last() = QCoreApplication::translate("zoPictureSheet", "... and %1 more lines")
                            .arg(m_lines.size() - begun + 1);
    return result;
}

QRectF zoPictureSheet::inside(const QRectF& area) const
{
    const double below = shownLines(area).size() * s_lineHeight + s_margin;
    const double above = m_title.isEmpty() ? 0.0 : s_titleHeight;
    return area.adjusted(0.0, above, 0.0, -std::min(below, area.height() / 2));
}

void zoPictureSheet::fit(const QRectF& area)
{
    m_picture.fit(inside(area));
}

void zoPictureSheet::paint(QPainter& painter, const QRectF& area, const QPalette& palette,
                           Detail detail) const
{
    const zoHPCPictureStyle style(palette);
    painter.fillRect(area, style.background);
    m_picture.paint(painter, inside(area), palette, detail);

    painter.save();
    QFont font;
    font.setPixelSize(s_titleLetters);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(style.text);
    const QRectF line(area.left() + s_margin, area.top(), area.width() - 2 * s_margin, s_titleHeight);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetricsF(font).elidedText(m_title, Qt::ElideMiddle, line.width()));
    painter.setFont(lineFont());
    const QStringList lines = shownLines(area);
    double y = area.bottom() - s_margin / 2 - lines.size() * s_lineHeight;
    for (const QString& text : lines) {
        painter.drawText(QRectF(line.left(), y, line.width(), s_lineHeight),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
        y += s_lineHeight;
    }
    painter.restore();
}
