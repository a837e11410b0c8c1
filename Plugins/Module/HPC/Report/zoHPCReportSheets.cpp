#include "zoHPCReportSheets.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>

namespace
{
using Sheets = zoHPCReportSheets;

struct Letters
{
    double points;
    bool isBold;
};

// What is held on a ladder is read from further away than a book.
Letters lettersOf(Sheets::Style style)
{
    switch (style) {
    case Sheets::Style::Title:
        return {22.0, true};
    case Sheets::Style::Heading:
        return {16.0, true};
    case Sheets::Style::Strong:
        return {12.0, true};
    case Sheets::Style::Text:
        return {11.0, false};
    case Sheets::Style::Table:
        return {10.0, false};
    case Sheets::Style::TableHeader:
        return {10.0, true};
    case Sheets::Style::Foot:
        break;
    }
    return {9.0, false};
}

// Without characters that are no letters: a name may hold any.
QString shown(const QString& line)
{
    QString result = line;
    for (QChar& c : result) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = QLatin1Char(' ');
    }
    return result;
}

void breakLine(const QString& line, const QFont& font, double width, QStringList& result)
{
    if (QFontMetricsF(font).horizontalAdvance(line) <= width) {
        result << line;
        return;
    }
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setUseDesignMetrics(true);
    // The toolkit goes back to the beginning of a word for each line of it. The last line of a part may go on.
    constexpr int Part = 2000; // characters, more than a line has
    for (int start = 0; start < line.size();) {
        const QString part = line.mid(start, Part);
        QTextLayout layout(part, font);
        layout.setTextOption(option);
        layout.beginLayout();
        int end = 0;
        for (QTextLine one = layout.createLine(); one.isValid(); one = layout.createLine()) {
            one.setLineWidth(std::max(width, 1.0));
            const int next = one.textStart() + one.textLength();
            if (next >= part.size() && end > 0 && start + next < line.size())
                break;
            result << part.mid(one.textStart(), one.textLength()).trimmed();
            end = next;
        }
        layout.endLayout();
        start += std::max(1, end);
    }
}
} // namespace

zoHPCReportSheets::zoHPCReportSheets(const QSizeF& page, int mostPages) : m_page(page), m_mostPages(mostPages)
{
    beginPage();
}

QFont zoHPCReportSheets::font(double points, bool isBold)
{
    QFont result;
    result.setPixelSize(qRound(points * Point));
    result.setBold(isBold);
    // Letters with any distance are not joined: one sign for "ff" could neither be searched nor copied.
    result.setLetterSpacing(QFont::AbsoluteSpacing, 0.02);
    return result;
}

QFont zoHPCReportSheets::font(Style style)
{
    const Letters letters = lettersOf(style);
    return font(letters.points, letters.isBold);
}

double zoHPCReportSheets::lineHeight(const QFont& font)
{
    return 1.25 * font.pixelSize();
}

QStringList zoHPCReportSheets::lines(const QString& text, const QFont& font, double width)
{
    QStringList result;
    const QStringList given = text.split(QLatin1Char('\n'));
    for (const QString& line : given)
        breakLine(shown(line), font, width, result);
    return result;
}

void zoHPCReportSheets::beginPage()
{
    m_y = 0.0;
    if (isFull())
        m_pages.back() = Page();
    else
        m_pages.emplace_back();
}

void zoHPCReportSheets::addHeading(const QString& text, double least)
{
    const bool isFirst = m_y <= 0.0;
    if (!isFirst && leftHeight() < least * height())
        beginPage();
    else if (!isFirst)
        addGap(14 * Point);
    addText(text, Style::Heading);
    addRule(m_y, Point);
    addGap(6 * Point);
}

void zoHPCReportSheets::addText(const QString& text, Style style)
{
    addLines(lines(text, font(style), width()), style, 0.0);
}

void zoHPCReportSheets::addLines(const QStringList& list, Style style, double x)
{
    const double step = lineHeight(font(style));
    for (const QString& line : list) {
        if (leftHeight() < step)
            beginPage();
        m_y += step;
        m_pages.back().pieces.push_back({QPointF(x, m_y - 0.28 * step), line, style});
    }
}

void zoHPCReportSheets::addRule(double y, double thickness)
{
    m_pages.back().areas.push_back(
        {QRectF(0.0, y, width(), thickness),
         [](QPainter& painter, const QRectF& area) { painter.fillRect(area, Qt::black); }});
}

void zoHPCReportSheets::addPicture(double height, const Paint& paint)
{
    if (leftHeight() < height)
        beginPage();
    m_pages.back().areas.push_back({QRectF(0.0, m_y, width(), std::min(height, leftHeight())), paint});
    m_y += height;
}

// Columns say the same again and again; measuring it takes longer than all else.
zoHPCReportSheets::Cells zoHPCReportSheets::brokenRow(const QStringList& row,
                                                      const std::vector<double>& widths, Style style,
                                                      const QStringList& rowAbove, const Cells& above)
{
    Cells cells;
    const QFont letters = font(style);
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const QString cell = row.value(int(i));
        cells.push_back(i < above.size() && cell == rowAbove.value(int(i))
                            ? above[i]
                            : lines(cell, letters, widths[i] - 2 * CellMargin));
    }
    return cells;
}

// Lines `from` to `from` + `count` of it.
void zoHPCReportSheets::placeRow(const Cells& row, int from, int count, const std::vector<double>& widths,
                                 Style style, bool hasBox)
{
    const double step = lineHeight(font(style));
    double x = 0.0;
    for (std::size_t i = 0; i < row.size(); ++i) {
        for (int line = from; line < std::min<int>(from + count, row[i].size()); ++line) {
            const QPointF at(x + CellMargin, m_y + CellMargin + (line - from + 0.72) * step);
            if (!row[i].at(line).isEmpty())
                m_pages.back().pieces.push_back({at, row[i].at(line), style});
        }
        x += widths[i];
    }
    if (hasBox && from == 0) {
        const double side = 0.9 * step;
        m_pages.back().areas.push_back({QRectF(x - widths.back() + CellMargin, m_y + CellMargin, side, side),
                                        [](QPainter& painter, const QRectF& area) {
                                            painter.setPen(QPen(Qt::black, Point));
                                            painter.drawRect(area);
                                        }});
    }
    m_y += count * step + 2 * CellMargin;
    addRule(m_y, 0.4 * Point);
}

void zoHPCReportSheets::placeHeader(const Cells& header, const std::vector<double>& widths)
{
    int count = 0;
    for (const QStringList& cell : header)
        count = std::max<int>(count, cell.size());
    const double bottom = m_y + count * lineHeight(font(Style::TableHeader)) + 2 * CellMargin;
    m_pages.back().areas.push_back(
        {QRectF(0.0, m_y, width(), bottom - m_y),
         [](QPainter& painter, const QRectF& area) { painter.fillRect(area, QColor(0xe6, 0xe6, 0xe6)); }});
    placeRow(header, 0, count, widths, Style::TableHeader, false);
    addRule(m_y, Point);
}

void zoHPCReportSheets::addTable(const std::vector<Column>& columns, const std::vector<QStringList>& rows,
                                 bool hasBox)
{
    double sum = 0.0;
    for (const Column& column : columns)
        sum += column.share;
    std::vector<double> widths;
    QStringList titles;
    for (const Column& column : columns) {
        widths.push_back(width() * column.share / sum);
        titles << column.title;
    }
    const Cells header = brokenRow(titles, widths, Style::TableHeader, {}, {});
    const double step = lineHeight(font(Style::Table));
    const auto room = [&] { return int((leftHeight() - 2 * CellMargin) / step); };
    // The header never stands alone at the end of a page.
    constexpr int FewestLines = 4;
    if (room() < FewestLines + 2)
        beginPage();
    placeHeader(header, widths);
    Cells cells;
    QStringList above;
    for (const QStringList& row : rows) {
        if (isFull())
            return;
        cells = brokenRow(row, widths, Style::Table, above, cells);
        above = row;
        int count = 0;
        for (const QStringList& cell : cells)
            count = std::max<int>(count, cell.size());
        for (int from = 0; from < count;) {
            // A row goes on over the end of a page only when no page has room for it.
            if (room() < std::min(count - from, FewestLines) ||
                (from == 0 && room() < count && count <= 24)) {
                beginPage();
                placeHeader(header, widths);
            }
            const int placed = std::min(count - from, std::max(1, room()));
            placeRow(cells, from, placed, widths, Style::Table, hasBox);
            from += placed;
        }
    }
    addGap(8 * Point);
}

void zoHPCReportSheets::paint(QPainter& painter, int page) const
{
    painter.save();
    painter.fillRect(QRectF(QPointF(0.0, 0.0), m_page), Qt::white);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(Margin, Margin);
    const Page& shown = m_pages[std::size_t(page)];
    for (const Area& area : shown.areas) {
        painter.save();
        area.paint(painter, area.area);
        painter.restore();
    }
    painter.setPen(Qt::black);
    const Piece* last = nullptr;
    for (const Piece& piece : shown.pieces) {
        if (last == nullptr || last->style != piece.style)
            painter.setFont(font(piece.style));
        last = &piece;
        painter.drawText(piece.at, piece.text);
    }
    const QFont foot = font(Style::Foot);
    const QFontMetricsF metrics(foot);
    const QString number = tr("Page %1 of %2").arg(QString::number(page + 1), QString::number(pageCount()));
    const double room = width() - metrics.horizontalAdvance(number) - 20 * Point;
    painter.setFont(foot);
    const double y = height() + FootHeight;
    painter.drawText(QPointF(0.0, y), metrics.elidedText(m_foot, Qt::ElideMiddle, room));
    painter.drawText(QPointF(width() - metrics.horizontalAdvance(number), y), number);
    painter.restore();
}
