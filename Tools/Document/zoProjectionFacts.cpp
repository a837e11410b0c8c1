#include "zoProjectionFacts.h"

#include "zoHPCPlane.h"
#include "zoHPCPlaneGrids.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCProjectionType.h"

#include <QHash>
#include <QJsonArray>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace
{
using P = zoHPCProjectionItem;
using Kind = zoHPCProjectionType::Kind;

QString number(double value)
{
    return QString::number(std::round(value * 100.0) / 100.0, 'g', 9);
}

QString sizeText(const QSizeF& size)
{
    return number(size.width()) + QLatin1String(" x ") + number(size.height());
}

QString pixelText(const QSizeF& size)
{
    return QString::number(std::llround(size.width())) + QLatin1String(" x ") +
           QString::number(std::llround(size.height()));
}

QJsonArray pair(const QSizeF& size)
{
    return {size.width(), size.height()};
}

// Pixels of the first viewport that has any and shows the projection or one of its tiles; empty when none does.
QSizeF shownPixels(const zoHPCLayout& layout, int projection)
{
    for (const zoHPCLayout::Viewport& viewport : layout.viewports()) {
        if (viewport.projection == zoHPCLayout::None || viewport.window == zoHPCLayout::None)
            continue;
        const zoHPCLayout::Projection& shown = layout.projections()[std::size_t(viewport.projection)];
        if (viewport.projection != projection && shown.parent != projection)
            continue;
        const QSizeF window = layout.windows()[std::size_t(viewport.window)].geometry.size();
        const QSizeF size(window.width() * viewport.area.width(), window.height() * viewport.area.height());
        if (!size.isEmpty())
            return size;
    }
    return {};
}

// A wall of planes, one of which is known.
zoProjectionFacts::Projection wallOf(const zoHPCPlaneGrids::Grid& grid,
                                     const zoProjectionFacts::Projection& tile)
{
    zoProjectionFacts::Projection wall = tile;
    wall.name = grid.name;
    wall.columns = grid.columns;
    wall.rows = grid.rows;
    wall.size = grid.size();
    wall.tile = grid.tile();
    // What computing corners leaves is no overlap.
    const auto rounded = [](double length) { return std::round(length * 1000.0) / 1000.0 + 0.0; };
    wall.overlap = QSizeF(rounded(grid.overlap().width()), rounded(grid.overlap().height()));
    wall.turn = grid.turn();
    wall.pixels = QSizeF(tile.tilePixels.width() * wall.size.width() / wall.tile.width(),
                         tile.tilePixels.height() * wall.size.height() / wall.tile.height());
    return wall;
}
} // namespace

std::vector<zoProjectionFacts::Projection> zoProjectionFacts::read(const zoHPCLayout& layout)
{
    std::vector<Projection> result;
    for (std::size_t i = 0; i < layout.projections().size(); ++i) {
        const zoHPCLayout::Projection& entry = layout.projections()[i];
        if (entry.parent != zoHPCLayout::None)
            continue;
        const P& item = *entry.item;
        const Kind kind = item.kind();
        Projection facts;
        facts.name = item.getString(P::Name);
        facts.type = item.projectionType();
        facts.isBlended = item.getBool(P::EdgeBlending);
        facts.tilePixels = shownPixels(layout, int(i));
        if (kind == Kind::Plane) {
            const zoHPCPlane plane = zoHPCPlane::fromItem(item);
            facts.size = facts.tile = QSizeF(plane.width(), plane.height());
            facts.pixels = facts.tilePixels;
        } else if (kind == Kind::Cave) {
            facts.columns = item.getInt(P::Columns);
            facts.rows = item.getInt(P::Rows);
            facts.size = QSizeF(item.getDouble(P::CaveWidth), item.getDouble(P::CaveHeight));
            facts.depth = item.getDouble(P::CaveDepth);
        } else {
            facts.columns = item.getInt(P::Columns);
            facts.rows = item.getInt(P::Rows);
            facts.distance = item.getDouble(P::Distance);
            facts.overlap = QSizeF(item.getDouble(P::OverlapX), item.getDouble(P::OverlapY));
            const int columns = std::max(1, facts.columns);
            const int rows = std::max(1, facts.rows);
            QSizeF share(0.0, 0.0); // of neighbouring tiles, of one of them
            if (kind == Kind::PowerWall) {
                facts.size = QSizeF(item.getDouble(P::Width), item.getDouble(P::Height));
                facts.tile = QSizeF((facts.size.width() + (columns - 1) * facts.overlap.width()) / columns,
                                    (facts.size.height() + (rows - 1) * facts.overlap.height()) / rows);
                share = QSizeF(facts.overlap.width() / facts.tile.width(),
                               facts.overlap.height() / facts.tile.height());
            } else if (!facts.tilePixels.isEmpty()) {
                share = QSizeF(facts.overlap.width() / facts.tilePixels.width(),
                               facts.overlap.height() / facts.tilePixels.height());
            }
            facts.pixels = QSizeF(facts.tilePixels.width() * (columns - (columns - 1) * share.width()),
                                  facts.tilePixels.height() * (rows - (rows - 1) * share.height()));
        }
        result.push_back(facts);
    }
    return result;
}

std::vector<zoProjectionFacts::Projection> zoProjectionFacts::readWalls(const zoHPCLayout& layout)
{
    const std::vector<zoHPCPlaneGrids::Grid> grids = zoHPCPlaneGrids::find(layout);
    std::vector<Projection> all = read(layout);
    if (grids.empty())
        return all;
    QHash<int, const zoHPCPlaneGrids::Grid*> gridOf;
    for (const zoHPCPlaneGrids::Grid& grid : grids) {
        for (const int projection : grid.projections)
            gridOf.insert(projection, &grid);
    }
    std::vector<Projection> result;
    QSet<const zoHPCPlaneGrids::Grid*> known;
    auto facts = all.begin();
    for (std::size_t i = 0; i < layout.projections().size(); ++i) {
        if (layout.projections()[i].parent != zoHPCLayout::None)
            continue;
        const Projection& single = *facts++;
        const zoHPCPlaneGrids::Grid* const grid = gridOf.value(int(i));
        if (!grid)
            result.push_back(single);
        else if (!known.contains(grid))
            result.push_back(wallOf(*grid, single));
        known.insert(grid);
    }
    return result;
}

QString zoProjectionFacts::Projection::text() const
{
    const bool isCave = depth != 0.0;
    const bool isInMillimetres = !size.isEmpty();
    QStringList words{type};
    if (rows * columns != 1)
        words << (isCave ? tr("%1 x %2 tiles on each wall") : tr("%1 x %2 tiles"))
                     .arg(QString::number(columns), QString::number(rows));
    if (isInMillimetres)
        words << (isCave ? tr("%1 x %2 mm").arg(sizeText(size), number(depth))
                         : tr("%1 mm").arg(sizeText(size)));
    if (!pixels.isEmpty())
        words << tr("%1 pixels").arg(pixelText(pixels));
    if (rows * columns != 1 || isCave) {
        QStringList one;
        if (isInMillimetres && !tile.isEmpty())
            one << tr("%1 mm").arg(sizeText(tile));
        if (!tilePixels.isEmpty())
            one << tr("%1 pixels").arg(pixelText(tilePixels));
        if (!one.isEmpty())
            words << tr("each tile %1").arg(one.join(QLatin1String(" = ")));
    }
    if (overlap.width() != 0.0 || overlap.height() != 0.0)
        words << (isInMillimetres ? tr("overlap %1 mm").arg(sizeText(overlap))
                                  : tr("overlap %1 pixels").arg(sizeText(overlap))) +
                     (isBlended ? tr(", blended") : QString());
    constexpr double ShownTurn = 0.05;
    if (turn >= ShownTurn)
        words << tr("%1 degrees from column to column").arg(number(turn));
    if (distance != 0.0)
        words << tr("%1 mm from the viewer").arg(number(distance));
    return tr("%1: %2").arg(name, words.join(QLatin1String(", ")));
}

QJsonObject zoProjectionFacts::Projection::json() const
{
    QJsonObject result{{QStringLiteral("name"), name},
                       {QStringLiteral("type"), type},
                       {QStringLiteral("columns"), columns},
                       {QStringLiteral("rows"), rows},
                       {QStringLiteral("blended"), isBlended}};
    if (!size.isEmpty())
        result.insert(QStringLiteral("size_mm"),
                      depth != 0.0 ? QJsonArray{size.width(), size.height(), depth} : pair(size));
    if (!tile.isEmpty())
        result.insert(QStringLiteral("tile_mm"), pair(tile));
    if (!pixels.isEmpty())
        result.insert(QStringLiteral("size_pixels"), pair(pixels));
    if (!tilePixels.isEmpty())
        result.insert(QStringLiteral("tile_pixels"), pair(tilePixels));
    if (distance != 0.0)
        result.insert(QStringLiteral("distance_mm"), distance);
    if (overlap.width() != 0.0 || overlap.height() != 0.0)
        result.insert(size.isEmpty() ? QStringLiteral("overlap_pixels") : QStringLiteral("overlap_mm"),
                      pair(overlap));
    return result;
}
