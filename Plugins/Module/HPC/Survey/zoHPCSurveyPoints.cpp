#include "zoHPCSurveyPoints.h"

#include "zoHPCNumberExpression.h"
#include "zoHPCSurvey.h"
#include "zoHPCSurveyLine.h"
#include "zoText.h"

#include <QLocale>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace
{
const QStringList& columnWords(int column)
{
    static const QStringList words[] = {
        {"name", "point", "id", "nr", "no", "number", "code"},
        {"x", "e", "east", "easting"},
        {"y", "n", "north", "northing"},
        {"z", "h", "height", "elevation", "up"},
    };
    return words[column];
}

QStringList cellsOf(const QString& line, QChar separator)
{
    QStringList cells =
        separator == QLatin1Char(' ') ? line.simplified().split(separator) : line.split(separator);
    for (QString& cell : cells) {
        cell = cell.trimmed();
        if (cell.size() > 1 && cell.startsWith(QLatin1Char('"')) && cell.endsWith(QLatin1Char('"')))
            cell = cell.mid(1, cell.size() - 2);
    }
    return cells;
}

bool toNumber(QString cell, double& number)
{
    bool isNumber = false;
    number = QLocale::c().toDouble(cell.replace(QLatin1Char(','), QLatin1Char('.')), &isNumber);
    return isNumber && std::isfinite(number);
}

// Blanks, too, separate numbers with commas: "P 12,5 48,1 101,4".
QChar separatorOf(const QString& line)
{
    for (const char separator : {';', '\t'}) {
        if (line.contains(QLatin1Char(separator)))
            return QLatin1Char(separator);
    }
    if (!line.contains(QLatin1Char(',')))
        return QLatin1Char(' ');
    const QStringList cells = cellsOf(line, QLatin1Char(' '));
    double number = 0.0;
    const auto isNumber = [&number](const QString& cell) { return toNumber(cell, number); };
    constexpr int Least = 4;
    return cells.size() >= Least && std::all_of(cells.begin() + 1, cells.begin() + Least, isNumber)
               ? QLatin1Char(' ')
               : QLatin1Char(',');
}

bool isWhole(const QString& cell)
{
    static const QRegularExpression form(zoText("^[+-]?[0-9]+$"));
    return form.match(cell).hasMatch();
}
} // namespace

bool zoHPCSurveyPoints::read(const QString& text, double unit, bool isUpY)
{
    m_rows.clear();
    m_mistake.clear();
    m_remark.clear();
    m_titles = 0;
    m_marks = Marks();
    for (int column = 0; column < 4; ++column)
        m_columns[column] = column;
    const QStringList lines = text.split(QLatin1Char('\n'));
    bool isFirst = true;
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines.at(i).trimmed();
        const auto isControl = [](QChar character) {
            return !character.isPrint() && character != QLatin1Char('\t');
        };
        if (std::any_of(line.begin(), line.end(), isControl))
            return refuse(i + 1, tr("a control character; the file is no text"));
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const QChar separator = separatorOf(line);
        const QStringList cells = cellsOf(line, separator);
        if (isFirst && readHeader(cells))
            m_titles = cells.size();
        else if (hasTooManyCells(cells, i + 1, separator == QLatin1Char(',')) ||
                 !readRow(cells, i + 1, unit, isUpY))
            return false;
        isFirst = false;
    }
    return decideMarks(unit);
}

// "A,1,234,2,000,3,500" has three numbers with decimal commas, or six.
bool zoHPCSurveyPoints::hasTooManyCells(const QStringList& cells, int line, bool isComma)
{
    constexpr int Usual = 4;
    if (!isComma || cells.size() <= (m_titles > 0 ? m_titles : Usual))
        return false;
    if (m_titles > 0 ? cells.mid(m_titles).join(QString()).isEmpty()
                     : !std::all_of(cells.begin() + 1, cells.end(), isWhole))
        return false;
    if (m_titles > 0)
        refuse(line,
               tr("%1 cells under %2 titles; where the comma is a decimal mark, separate cells by semicolons")
                   .arg(cells.size())
                   .arg(m_titles));
    else
        refuse(line, tr("%1 whole numbers; where the comma is a decimal mark, separate cells by semicolons, "
                        "otherwise name the columns in a first line: name,east,north,height")
                         .arg(cells.size() - 1));
    return true;
}

void zoHPCSurveyPoints::noteMarks(const QString& cell, int line)
{
    const bool hasComma = cell.contains(QLatin1Char(','));
    m_marks.hasPoint = m_marks.hasPoint || (!hasComma && cell.contains(QLatin1Char('.')));
    if (hasComma && zoHPCNumberExpression::withoutGroups(cell) == cell)
        m_marks.provesComma = true;
    else if (hasComma && m_marks.twofold.isEmpty()) {
        m_marks.twofold = cell;
        m_marks.line = line;
    }
}

// Three digits behind a comma and no other number that tells what the comma is.
bool zoHPCSurveyPoints::decideMarks(double unit)
{
    if (m_marks.twofold.isEmpty() || m_marks.provesComma)
        return true;
    const QString decimal = QString(m_marks.twofold).replace(QLatin1Char(','), QLatin1Char('.'));
    // Nobody measures a thousandth of a millimetre, an inch or a centimetre.
    constexpr double LeastOfLargeUnits = 300.0; // mm
    if (unit < LeastOfLargeUnits || m_marks.hasPoint)
        return refuse(
            m_marks.line,
            tr("\"%1\" may be %2 or %3: write numbers with a point, without separated groups")
                .arg(m_marks.twofold, decimal, zoHPCNumberExpression::withoutGroups(m_marks.twofold)));
    m_remark = tr("\"%1\" is read as %2; should it be %3, write numbers without separated groups")
                   .arg(m_marks.twofold, decimal, zoHPCNumberExpression::withoutGroups(m_marks.twofold));
    m_remarkLine = m_marks.line;
    return true;
}

// A line whose second cell is no number names the columns.
bool zoHPCSurveyPoints::readHeader(const QStringList& cells)
{
    double number = 0.0;
    if (cells.size() < 4 || toNumber(cells.at(1), number))
        return false;
    int found[4] = {-1, -1, -1, -1};
    for (int column = 0; column < 4; ++column) {
        for (int cell = 0; cell < cells.size() && found[column] < 0; ++cell) {
            const QString word = cells.at(cell).section(QRegularExpression(zoText("[ \\[(]")), 0, 0);
            if (columnWords(column).contains(word.toLower()))
                found[column] = cell;
        }
        if (found[column] < 0)
            return false;
    }
    std::copy(std::begin(found), std::end(found), std::begin(m_columns));
    return true;
}

bool zoHPCSurveyPoints::readRow(const QStringList& cells, int line, double unit, bool isUpY)
{
    if (cells.size() <= *std::max_element(std::begin(m_columns), std::end(m_columns)))
        return refuse(line, tr("a name and three coordinates were expected: name,east,north,height"));
    if (m_rows.size() >= std::size_t(zoHPCSurvey::MaximumPoints))
        return refuse(line, tr("more than %1 points").arg(zoHPCSurvey::MaximumPoints));
    Row row;
    row.name = cells.at(m_columns[0]);
    row.line = line;
    if (row.name.isEmpty() || row.name.size() > zoHPCSurveyLine::LongestName)
        return refuse(line, tr("the point's name is missing or too long"));
    double numbers[3];
    for (int i = 0; i < 3; ++i) {
        const QString cell = cells.at(m_columns[i + 1]);
        if (!toNumber(cell, numbers[i]))
            return refuse(line, tr("\"%1\" is no coordinate").arg(cell.left(zoHPCSurveyLine::LongestName)));
        noteMarks(cell, line);
        numbers[i] *= unit;
        // Coordinates of a country are large; precision to the micrometre ends where this does.
        constexpr double Largest = 1e10; // mm
        if (std::abs(numbers[i]) > Largest)
            return refuse(
                line, tr("\"%1\" is too large a coordinate").arg(cell.left(zoHPCSurveyLine::LongestName)));
    }
    row.place =
        isUpY ? Point3{numbers[0], numbers[1], numbers[2]} : Point3{numbers[0], numbers[2], -numbers[1]};
    m_rows.push_back(row);
    return true;
}

bool zoHPCSurveyPoints::refuse(int line, const QString& mistake)
{
    m_mistake = mistake;
    m_mistakeLine = line;
    m_rows.clear();
    return false;
}
