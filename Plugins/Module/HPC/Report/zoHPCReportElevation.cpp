#include "zoHPCReportElevation.h"

#include "zoHPCReportFacts.h"
#include "zoText.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace
{
using Sheets = zoHPCReportSheets;

constexpr double s_point = Sheets::Point;
// Beside and below the tiles, for the dimensions.
constexpr double s_dimensions = 26 * s_point;
constexpr double s_padding = 4 * s_point;
constexpr double s_letters[] = {16.0, 14.0, 12.0, 11.0, 10.0, 9.0, 8.0}; // points
constexpr int s_longestName = 40;                                        // on a tile
constexpr int s_mostOutputs = 4;                                         // on a tile
constexpr std::size_t s_hardest = 40;

struct Cell
{
    QRectF area;
    QStringList lines;
    bool isLit;
};

void drawLines(QPainter& painter, const QRectF& area, const QStringList& lines, double letters)
{
    const QFont plain = Sheets::font(letters, false);
    const QFont bold = Sheets::font(letters, true);
    const double step = Sheets::lineHeight(plain);
    double y = area.center().y() - lines.size() * step / 2;
    bool isFirst = true;
    for (const QString& line : lines) {
        painter.setFont(isFirst ? bold : plain);
        const double width = QFontMetricsF(painter.font()).horizontalAdvance(line);
        painter.drawText(QPointF(area.center().x() - width / 2, y + 0.76 * step), line);
        y += step;
        isFirst = false;
    }
}

QStringList brokenLabel(const QString& label, double letters, double width)
{
    // The first line is bold, which is wider.
    return Sheets::lines(label, Sheets::font(letters, true), width);
}
// A number stays with the word before it.
QString unbroken(const QString& text)
{
    static const QRegularExpression blank(zoText(" (?=[0-9])"));
    return QString(text).replace(blank, QString(QChar(QChar::Nbsp)));
}
} // namespace

// What is painted of a part, in units of the sheets from its upper left corner.
struct zoHPCReportElevation::Drawing
{
    std::vector<Cell> cells;
    std::vector<QRectF> blends;
    QRectF whole;
    QString width;
    QString height;
    double letters = 0.0;

    void paint(QPainter& painter, const QRectF& area) const
    {
        painter.translate(area.topLeft());
        for (const QRectF& blend : blends)
            painter.fillRect(blend, QColor(0xdd, 0xdd, 0xdd));
        painter.setPen(QPen(Qt::black, s_point));
        for (const Cell& cell : cells) {
            painter.setBrush(cell.isLit ? QBrush(Qt::NoBrush)
                                        : QBrush(QColor(0xc8, 0xc8, 0xc8), Qt::BDiagPattern));
            painter.drawRect(cell.area);
        }
        for (const Cell& cell : cells)
            drawLines(painter, cell.area, cell.lines, letters);
        paintDimensions(painter);
    }

    void paintDimensions(QPainter& painter) const
    {
        const QFont font = Sheets::font(11.0, false);
        painter.setFont(font);
        const QFontMetricsF metrics(font);
        const double y = whole.bottom() + s_dimensions / 3;
        const double x = whole.left() - s_dimensions / 3;
        const double tick = 3 * s_point;
        painter.drawLine(QPointF(whole.left(), y), QPointF(whole.right(), y));
        painter.drawLine(QPointF(x, whole.top()), QPointF(x, whole.bottom()));
        for (const double end : {whole.left(), whole.right()})
            painter.drawLine(QPointF(end, y - tick), QPointF(end, y + tick));
        for (const double end : {whole.top(), whole.bottom()})
            painter.drawLine(QPointF(x - tick, end), QPointF(x + tick, end));
        painter.drawText(QPointF(whole.center().x() - metrics.horizontalAdvance(width) / 2, y + 14 * s_point),
                         width);
        painter.translate(x - 5 * s_point, whole.center().y() + metrics.horizontalAdvance(height) / 2);
        painter.rotate(-90.0);
        painter.drawText(QPointF(0.0, 0.0), height);
    }
};

zoHPCReportElevation::zoHPCReportElevation(zoHPCReportSheets& sheets, const zoHPCReportFacts& facts,
                                           const zoHPCReportWalls::Wall& wall)
    : m_sheets(sheets), m_facts(facts), m_wall(wall)
{
    const double scale = facts.scaleOf(wall);
    const double width = wall.plane.width() * scale;
    const double height = wall.plane.height() * scale;
    m_tile = QSizeF(width * wall.tileWidth, height * wall.tileHeight);
    m_step = QSizeF(width * (wall.columns > 1 ? wall.columnStep : wall.tileWidth),
                    height * (wall.rows > 1 ? wall.rowStep : wall.tileHeight));
    readLabels();
    choose();
}

zoHPCReportElevation::~zoHPCReportElevation() = default;

QString zoHPCReportElevation::nameOf(const QString& node)
{
    if (node.size() <= s_longestName)
        return node;
    if (!m_keys.contains(node))
        m_keys << node;
    return tr("node (%1)").arg(m_keys.indexOf(node) + 1);
}

void zoHPCReportElevation::readLabels()
{
    for (int row = 0; row < m_wall.rows; ++row) {
        for (int column = 0; column < m_wall.columns; ++column) {
            QStringList lines{
                unbroken(tr("row %1, column %2").arg(QString::number(row + 1), QString::number(column + 1)))};
            const std::vector<int> outputs = m_facts.outputsOf(m_wall, row, column);
            for (std::size_t i = 0; i < outputs.size(); ++i) {
                const zoHPCReportFacts::Output& output = m_facts.outputs()[std::size_t(outputs[i])];
                if (i >= s_mostOutputs) {
                    lines << tr("and %1 more").arg(outputs.size() - i);
                    break;
                }
                const QString eye = m_facts.eyeOf(output);
                lines << nameOf(m_facts.nodeOf(output));
                lines << (eye.isEmpty() ? m_facts.screenOf(output)
                                        : tr("%1, %2").arg(m_facts.screenOf(output), eye));
            }
            m_labels.push_back(lines.join(QLatin1Char('\n')));
        }
    }
}

// Those that need the most room: where these fit, all do.
std::vector<std::size_t> zoHPCReportElevation::hardest() const
{
    std::vector<std::size_t> result(m_labels.size());
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = i;
    const std::size_t count = std::min(result.size(), s_hardest);
    std::partial_sort(
        result.begin(), result.begin() + std::ptrdiff_t(count), result.end(),
        [this](std::size_t a, std::size_t b) { return m_labels[a].size() > m_labels[b].size(); });
    result.resize(count);
    return result;
}

QSizeF zoHPCReportElevation::sizeOf(int rows, int columns) const
{
    return {m_tile.width() + (columns - 1) * m_step.width(), m_tile.height() + (rows - 1) * m_step.height()};
}

// Of all pages but the one with the caption, which is low.
double zoHPCReportElevation::drawingHeight() const
{
    constexpr double OfOneTile = 0.4;
    const double whole = m_sheets.height() - 130 * s_point;
    return m_wall.hasTiles() ? whole : OfOneTile * whole;
}

double zoHPCReportElevation::scaleFor(int rows, int columns) const
{
    const QSizeF size = sizeOf(rows, columns);
    return std::min((m_sheets.width() - s_dimensions) / size.width(),
                    (drawingHeight() - s_dimensions) / size.height());
}

bool zoHPCReportElevation::fits(int rows, int columns, double letters,
                                const std::vector<std::size_t>& labels) const
{
    const double scale = scaleFor(rows, columns);
    const double width = scale * std::min(m_tile.width(), m_step.width()) - 2 * s_padding;
    const double height = scale * std::min(m_tile.height(), m_step.height()) - 2 * s_padding;
    const double step = Sheets::lineHeight(Sheets::font(letters, false));
    // A name in pieces of three letters is no name.
    constexpr double Narrowest = 6.0;
    if (!(width > Narrowest * letters * s_point) || !(height > step))
        return false;
    return std::all_of(labels.begin(), labels.end(), [&](std::size_t label) {
        return brokenLabel(m_labels[label], letters, width).size() * step <= height;
    });
}

// As few parts as show every label in letters that can be read, and then the largest letters.
void zoHPCReportElevation::choose()
{
    constexpr int MostParts = 4000;
    const double smallest = *std::prev(std::end(s_letters));
    const std::vector<std::size_t> labels = hardest();
    const auto find = [&] {
        for (int parts = 1; parts <= MostParts; ++parts) {
            for (int across = std::min(parts, m_wall.columns); across >= 1; --across) {
                const int down = parts / across;
                if (parts % across != 0 || down > m_wall.rows)
                    continue;
                m_partColumns = (m_wall.columns + across - 1) / across;
                m_partRows = (m_wall.rows + down - 1) / down;
                if (fits(m_partRows, m_partColumns, smallest, labels))
                    return true;
            }
            if (parts >= m_wall.rows * m_wall.columns)
                break;
        }
        return false;
    };
    const bool isShaped =
        m_tile.width() > 0.0 && m_tile.height() > 0.0 && m_step.width() > 0.0 && m_step.height() > 0.0;
    if (!isShaped || !find()) {
        // A strip or a point: the label counts for more than the shape.
        m_isToScale = false;
        m_tile = m_step = QSizeF(16.0, 10.0);
        if (!find())
            m_partRows = m_partColumns = 1;
    }
    const double* const letters =
        std::find_if(std::begin(s_letters), std::end(s_letters),
                     [&](double points) { return fits(m_partRows, m_partColumns, points, labels); });
    m_letters = letters == std::end(s_letters) ? smallest : *letters;
}

QString zoHPCReportElevation::lengthText(double length) const
{
    return m_facts.isMeasured(m_wall) ? tr("%1 mm").arg(zoHPCReportFacts::number(length))
                                      : tr("%1 pixels").arg(zoHPCReportFacts::number(length));
}

QString zoHPCReportElevation::caption() const
{
    const double scale = m_facts.scaleOf(m_wall);
    const auto sizeText = [this](double width, double height) {
        const QString size = zoHPCReportFacts::size(width, height);
        return m_facts.isMeasured(m_wall) ? tr("%1 mm").arg(size) : tr("%1 pixels").arg(size);
    };
    const double width = scale * m_wall.plane.width();
    const double height = scale * m_wall.plane.height();
    QStringList words{sizeText(width, height)};
    if (m_wall.hasTiles()) {
        words.prepend(tr("%1 x %2 tiles").arg(QString::number(m_wall.columns), QString::number(m_wall.rows)));
        words << tr("each %1").arg(sizeText(width * m_wall.tileWidth, height * m_wall.tileHeight));
        const double x = m_wall.columns > 1 ? width * m_wall.overlapX() : 0.0;
        const double y = m_wall.rows > 1 ? height * m_wall.overlapY() : 0.0;
        constexpr double Shown = 0.05;
        if (std::abs(x) >= Shown || std::abs(y) >= Shown)
            words << (x <= 0.0 && y <= 0.0 ? tr("%1 from picture to picture").arg(sizeText(0.0 - x, 0.0 - y))
                                           : tr("overlap %1").arg(sizeText(x, y)) +
                                                 (m_wall.isBlended ? tr(", blended") : QString()));
    }
    const double turn = m_wall.grid.turn();
    constexpr double ShownTurn = 0.05; // degrees
    if (turn >= ShownTurn)
        words << tr("unrolled, %1 degrees from column to column").arg(zoHPCReportFacts::number(turn));
    if (m_facts.isMeasured(m_wall))
        words << tr("lower edge at y = %1 mm")
                     .arg(zoHPCReportFacts::number(
                         scale * std::min(m_wall.plane.lowerLeft.y, m_wall.plane.lowerRight.y)));
    QStringList nodes;
    const std::vector<int> whole = m_facts.outputsOfWhole(m_wall);
    for (const int index : whole) {
        const zoHPCReportFacts::Output& output = m_facts.outputs()[std::size_t(index)];
        nodes << tr("%1, %2").arg(m_facts.nodeOf(output), m_facts.screenOf(output));
    }
    if (!nodes.isEmpty())
        words << tr("shown as a whole by %1").arg(nodes.join(QLatin1String("; ")));
    if (!m_isToScale)
        words << tr("not to scale");
    return words.join(QLatin1String(", "));
}

QString zoHPCReportElevation::captionOf(const Part& part) const
{
    if (part.rows == m_wall.rows && part.columns == m_wall.columns)
        return {};
    return tr("%1: rows %2 to %3 of %4, columns %5 to %6 of %7")
        .arg(m_wall.name, QString::number(part.row + 1), QString::number(part.row + part.rows),
             QString::number(m_wall.rows), QString::number(part.column + 1),
             QString::number(part.column + part.columns), QString::number(m_wall.columns));
}

void zoHPCReportElevation::add()
{
    // The caption does not stand alone.
    if (m_sheets.leftHeight() < drawingHeight() + 60 * s_point)
        m_sheets.beginPage();
    m_sheets.addText(m_wall.name.isEmpty() ? tr("(no name)") : m_wall.name, Sheets::Style::Strong);
    m_sheets.addText(caption());
    m_sheets.addGap(4 * s_point);
    for (int row = 0; row < m_wall.rows; row += m_partRows) {
        for (int column = 0; column < m_wall.columns && !m_sheets.isFull(); column += m_partColumns)
            addPart({row, column, std::min(m_partRows, m_wall.rows - row),
                     std::min(m_partColumns, m_wall.columns - column)});
    }
    for (int i = 0; i < m_keys.size(); ++i)
        m_sheets.addText(tr("node (%1): %2").arg(QString::number(i + 1), m_keys.at(i)));
    m_sheets.addGap(8 * s_point);
}

void zoHPCReportElevation::addCells(const Part& part, Drawing& drawing) const
{
    const double scale = scaleFor(part.rows, part.columns);
    const QSizeF size = scale * sizeOf(part.rows, part.columns);
    const QPointF corner((m_sheets.width() - s_dimensions - size.width()) / 2 + s_dimensions, 0.0);
    drawing.whole = QRectF(corner, size);
    const QSizeF overlap = m_tile - m_step;
    const bool isWholeLit = !m_facts.outputsOfWhole(m_wall).empty();
    const double width = scale * std::min(m_tile.width(), m_step.width()) - 2 * s_padding;
    for (int row = 0; row < part.rows; ++row) {
        for (int column = 0; column < part.columns; ++column) {
            const QRectF area(corner + scale * QPointF(column * m_step.width(), row * m_step.height()),
                              scale * m_tile);
            const int inRow = part.row + row;
            const int inColumn = part.column + column;
            const std::size_t index =
                std::size_t(inRow) * std::size_t(m_wall.columns) + std::size_t(inColumn);
            const std::vector<int> outputs = m_facts.outputsOf(m_wall, inRow, inColumn);
            const bool isLit = std::any_of(outputs.begin(), outputs.end(), [this](int output) {
                return m_facts.outputs()[std::size_t(output)].picture != zoHPCLayout::None;
            });
            drawing.cells.push_back(
                {area, brokenLabel(m_labels[index], m_letters, width), isLit || isWholeLit});
            if (m_wall.isBlended && overlap.width() > 0.0 && column > 0)
                drawing.blends.push_back(
                    QRectF(area.topLeft(), QSizeF(scale * overlap.width(), area.height())));
            if (m_wall.isBlended && overlap.height() > 0.0 && row > 0)
                drawing.blends.push_back(
                    QRectF(area.topLeft(), QSizeF(area.width(), scale * overlap.height())));
        }
    }
}

void zoHPCReportElevation::addPart(const Part& part)
{
    const auto drawing = std::make_shared<Drawing>();
    drawing->letters = m_letters;
    addCells(part, *drawing);
    if (m_isToScale) {
        const QSizeF size = sizeOf(part.rows, part.columns);
        drawing->width = lengthText(size.width());
        drawing->height = lengthText(size.height());
    }
    const double height = drawing->whole.height() + s_dimensions;
    const QString text = captionOf(part);
    if (m_sheets.leftHeight() < height + 20 * s_point)
        m_sheets.beginPage();
    if (!text.isEmpty())
        m_sheets.addText(text);
    m_sheets.addPicture(height,
                        [drawing](QPainter& painter, const QRectF& area) { drawing->paint(painter, area); });
}
