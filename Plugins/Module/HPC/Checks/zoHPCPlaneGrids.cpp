#include "zoHPCPlaneGrids.h"

#include "zoHPCLayout.h"
#include "zoHPCProjectionItem.h"

#include <QHash>
#include <QRegularExpression>
#include <QtMath>

#include <algorithm>

namespace
{
struct Cell
{
    int projection;
    int row; // from 1
    int column;
};

struct Named
{
    QString name;
    std::vector<Cell> cells;
};

// By the begin of their names, in the order of the first.
std::vector<Named> namedAlike(const zoHPCLayout& layout)
{
    static const QRegularExpression s_place(
        QString::fromLatin1("^(.*) row:([1-9][0-9]{0,5}) col:([1-9][0-9]{0,5})$"));
    std::vector<Named> result;
    QHash<QString, std::size_t> known;
    for (std::size_t i = 0; i < layout.projections().size(); ++i) {
        const zoHPCLayout::Projection& projection = layout.projections()[i];
        if (projection.parent != zoHPCLayout::None ||
            projection.item->kind() != zoHPCProjectionType::Kind::Plane)
            continue;
        const QRegularExpressionMatch place = s_place.match(projection.name());
        if (!place.hasMatch() || projection.item->plane().isDegenerate())
            continue;
        const QString name = place.captured(1);
        const auto found = known.constFind(name);
        if (found == known.constEnd()) {
            known.insert(name, result.size());
            result.push_back({name, {}});
        }
        result[known.value(name)].cells.push_back(
            {int(i), place.captured(2).toInt(), place.captured(3).toInt()});
    }
    return result;
}

// Along a direction, from the end of one to the begin of the next; below 0 where they share something.
double gap(const Point3& end, const Point3& begin, const Point3& onward)
{
    const double distance = length(begin - end);
    return dot(begin - end, onward) < 0.0 ? -distance : distance;
}
} // namespace

zoHPCPlane zoHPCPlaneGrids::Grid::column(int column) const
{
    const zoHPCPlane& foot = plane(rows - 1, column);
    return {foot.lowerLeft, foot.lowerRight, plane(0, column).upperRight};
}

QSizeF zoHPCPlaneGrids::Grid::overlap() const
{
    const zoHPCPlane& first = planes.front();
    const double across = columns > 1 ? -gap(first.lowerRight, plane(0, 1).lowerLeft, first.right()) : 0.0;
    const double down = rows > 1 ? -gap(first.lowerLeft, plane(1, 0).upperLeft(), -1.0 * first.up()) : 0.0;
    return {across, down};
}

QSizeF zoHPCPlaneGrids::Grid::size() const
{
    const QSizeF one = tile();
    const QSizeF shared = overlap();
    return {columns * one.width() - (columns - 1) * shared.width(),
            rows * one.height() - (rows - 1) * shared.height()};
}

double zoHPCPlaneGrids::Grid::turn() const
{
    if (columns < 2)
        return 0.0;
    const double cosine = dot(plane(0, 0).normal(), plane(0, 1).normal());
    return qRadiansToDegrees(std::acos(qBound(-1.0, cosine, 1.0)));
}

std::vector<zoHPCPlaneGrids::Grid> zoHPCPlaneGrids::find(const zoHPCLayout& layout)
{
    std::vector<Grid> grids;
    const std::vector<Named> walls = namedAlike(layout);
    for (const Named& wall : walls) {
        Grid grid;
        grid.name = wall.name;
        for (const Cell& cell : wall.cells) {
            grid.rows = std::max(grid.rows, cell.row);
            grid.columns = std::max(grid.columns, cell.column);
        }
        if (wall.cells.size() < 2 || qint64(grid.rows) * grid.columns != qint64(wall.cells.size()))
            continue;
        grid.projections.assign(wall.cells.size(), zoHPCLayout::None);
        grid.planes.resize(wall.cells.size());
        bool isWhole = true;
        for (const Cell& cell : wall.cells) {
            const auto place = std::size_t((cell.row - 1) * grid.columns + cell.column - 1);
            isWhole = isWhole && grid.projections[place] == zoHPCLayout::None;
            grid.projections[place] = cell.projection;
            grid.planes[place] = layout.projections()[std::size_t(cell.projection)].item->plane();
        }
        if (isWhole)
            grids.push_back(grid);
    }
    return grids;
}
