#include "zoHPCProjectionChecks.h"

#include "zoHPCLayout.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>
#include <vector>

namespace
{
using Kind = zoHPCProblem::Kind;
using TypeKind = zoHPCProjectionType::Kind;
using P = zoHPCProjectionItem;
using Projection = zoHPCLayout::Projection;

bool isTopLevel(const Projection& projection)
{
    return projection.parent == zoHPCLayout::None;
}

// Gives out names that are unique with all the tiles that a projection of that name gets: no other name goes on where
// one ends. Counts on from the last number, so that many equal names take no longer each than few.
class FreeNames
{
public:
    explicit FreeNames(const QHash<QString, int>& names) : m_names(names.keyBegin(), names.keyEnd()) {}

    QString next(const QString& name)
    {
        const QString base = name.isEmpty() ? QString::fromLatin1("Projection") : name;
        int& number = m_numbers.insert(base, m_numbers.value(base, 1)).value();
        QString candidate;
        do {
            candidate = base + QLatin1Char(' ') + QString::number(++number);
        } while (isTaken(candidate));
        m_names.insert(candidate);
        return candidate;
    }

private:
    bool isTaken(const QString& name) const
    {
        const QString start = name + QLatin1Char(' ');
        const auto above = m_names.lower_bound(start);
        return m_names.count(name) != 0 || (above != m_names.end() && above->startsWith(start));
    }

    std::set<QString> m_names;
    QHash<QString, int> m_numbers; // the last one given out, by name
};

// A viewport, and the identifier of what it shows.
using Link = std::pair<zoHPCViewportItem*, QString>;

// Viewports go on showing what they show: their names follow.
void rename(zoHPCProjectionItem* item, const QString& name, const std::vector<Link>& links)
{
    QHash<QString, QString> names; // by identifier
    item->setName(name);
    item->update();
    names.insert(item->getString(P::Identifier), name);
    const QList<zoHPCProjectionItem*> tiles = item->children<zoHPCProjectionItem>();
    for (const zoHPCProjectionItem* tile : tiles)
        names.insert(tile->getString(P::Identifier), tile->getString(P::Name));
    for (const auto& [viewport, identifier] : links) {
        if (!names.contains(identifier))
            continue;
        viewport->setString(zoHPCViewportItem::ProjectionIdentifier, identifier);
        viewport->setProjection(names.value(identifier));
    }
}

// By top-level row.
QHash<int, std::vector<Link>> linksOf(const zoHPCLayout& layout)
{
    QHash<int, std::vector<Link>> links;
    for (const zoHPCLayout::Viewport& viewport : layout.viewports()) {
        if (viewport.projection == zoHPCLayout::None)
            continue;
        const Projection& shown = layout.projections()[static_cast<size_t>(viewport.projection)];
        links[shown.top].emplace_back(viewport.item, shown.item->getString(P::Identifier));
    }
    return links;
}

// The word without what people add to it: upper case, blanks, hyphens.
QString plain(const QString& word)
{
    QString result;
    for (const QChar c : word) {
        if (c.isLetterOrNumber())
            result += c.toLower();
    }
    return result;
}

// Null when it is like none of the types.
const zoHPCProjectionType* typeLike(const QString& word)
{
    const std::vector<zoHPCProjectionType>& types = zoHPCProjectionType::all();
    const QString wanted = plain(word);
    const auto found = std::find_if(types.begin(), types.end(), [&](const zoHPCProjectionType& type) {
        return wanted == QLatin1String(type.value);
    });
    return found != types.end() ? &*found : nullptr;
}

QString typeWords()
{
    QStringList words;
    for (const zoHPCProjectionType& type : zoHPCProjectionType::all())
        words << QString::fromLatin1(type.value);
    return words.join(QString::fromLatin1(", "));
}

bool hasWall(const zoHPCProjectionItem& item)
{
    constexpr int Walls[] = {P::LeftWall, P::RightWall, P::TopWall, P::BottomWall, P::FrontWall, P::BackWall};
    return std::any_of(std::begin(Walls), std::end(Walls), [&](int wall) { return item.getBool(wall); });
}

// One direction in which tiles stand side by side.
struct Direction
{
    int tiles;
    double overlap;
    double tile; // its size, in the unit of the overlap
    bool isBlended;

    bool isTooWide() const
    {
        if (tiles < 2)
            return false;
        // Only tiles with a neighbour on both sides have two bands.
        const double largest = isBlended && tiles > 2 ? zoHPCProjectionChecks::LargestBlendedOverlap : 1.0;
        return tile <= 0.0 || overlap >= tile || overlap > largest * tile;
    }
};

// Of a wall in millimetres; a cave has up to four.
std::vector<Direction> directionsOf(const zoHPCProjectionItem& item)
{
    const auto direction = [&](int tiles, int overlap, int size) {
        const int count = std::max(item.getInt(tiles), 1);
        const double shared = item.getDouble(overlap);
        return Direction{count, shared, (std::abs(item.getDouble(size)) + (count - 1) * shared) / count,
                         item.getBool(P::EdgeBlending)};
    };
    const auto across = [&](int size) { return direction(P::Columns, P::OverlapX, size); };
    const auto down = [&](int size) { return direction(P::Rows, P::OverlapY, size); };
    if (item.kind() == TypeKind::PowerWall)
        return {across(P::Width), down(P::Height)};
    if (item.kind() != TypeKind::Cave)
        return {};
    std::vector<Direction> result;
    const auto any = [&](std::initializer_list<int> walls) {
        return std::any_of(walls.begin(), walls.end(), [&](int wall) { return item.getBool(wall); });
    };
    if (any({P::FrontWall, P::BackWall, P::TopWall, P::BottomWall}))
        result.push_back(across(P::CaveWidth));
    if (any({P::LeftWall, P::RightWall}))
        result.push_back(across(P::CaveDepth));
    if (any({P::FrontWall, P::BackWall, P::LeftWall, P::RightWall}))
        result.push_back(down(P::CaveHeight));
    if (any({P::TopWall, P::BottomWall}))
        result.push_back(down(P::CaveDepth));
    return result;
}

// A name that MaximumTiles tiles may have in theirs.
constexpr int LongName = int(P::MaximumNameCharacters / P::MaximumTiles);

// The smallest tile of each wall in pixels, by top-level row: in windows that fill their screen, or in the others. One
// that fills its screen keeps the size that it was given before, mostly that of the screen.
QHash<int, QSizeF> smallestTiles(const zoHPCLayout& layout, bool isFullScreen)
{
    // Every window has the size of a new one until somebody gives it another.
    const zoHPCWindowItem made;
    const QSizeF unsaid(made.getInt(zoHPCWindowItem::Width), made.getInt(zoHPCWindowItem::Height));
    QHash<int, QSizeF> tiles;
    for (const zoHPCLayout::Viewport& viewport : layout.viewports()) {
        if (viewport.projection == zoHPCLayout::None || viewport.window == zoHPCLayout::None)
            continue;
        const Projection& shown = layout.projections()[static_cast<size_t>(viewport.projection)];
        const zoHPCLayout::Window& window = layout.windows()[static_cast<size_t>(viewport.window)];
        if (isTopLevel(shown) || !shown.isTile || window.isFullScreen != isFullScreen ||
            window.geometry.isEmpty() || (isFullScreen && window.geometry.size() == unsaid))
            continue;
        const QSizeF size(window.geometry.width() * viewport.area.width(),
                          window.geometry.height() * viewport.area.height());
        if (size.width() < 1.0 || size.height() < 1.0)
            continue;
        const QSizeF known = tiles.value(shown.top, size);
        tiles.insert(shown.top, known.boundedTo(size));
    }
    return tiles;
}
} // namespace

bool zoHPCProjectionChecks::hasNoTiles(const zoHPCProjectionItem& item)
{
    const TypeKind kind = item.kind();
    return item.childCount() == 0 && kind != TypeKind::Plane && kind != TypeKind::Tile;
}

zoHPCProblem::List zoHPCProjectionChecks::equalNames(const zoHPCLayout& layout)
{
    const std::vector<Projection>& all = layout.projections();
    zoHPCProblem::List problems;
    // Tiles of one row of the tree differ by their labels.
    if (std::count_if(all.begin(), all.end(), isTopLevel) < 2)
        return problems;
    QHash<QString, int> firsts;             // the top-level row that has the name first
    std::vector<std::pair<int, int>> pairs; // a later top-level row and the first one
    for (const Projection& projection : all) {
        const QString name = projection.name();
        const auto first = firsts.constFind(name);
        if (first == firsts.constEnd())
            firsts.insert(name, projection.top);
        else if (*first != projection.top && (pairs.empty() || pairs.back().first != projection.top))
            pairs.emplace_back(projection.top, *first);
    }
    if (pairs.empty())
        return problems;
    FreeNames names(firsts);
    const QHash<int, std::vector<Link>> links = linksOf(layout);
    for (const auto& [later, earlier] : pairs) {
        const Projection& projection = all[static_cast<size_t>(later)];
        const Projection& first = all[static_cast<size_t>(earlier)];
        const QString name = projection.name();
        const QString newName = names.next(name);
        problems.emplace_back(Kind::EqualProjectionNames, projection.item,
                              name == first.name()
                                  ? tr("Two projections are called \"%1\". A file keeps names alone: when it "
                                       "is loaded, their viewports "
                                       "show the last one. Rename one of them.")
                                        .arg(name)
                                  : tr("\"%1\" and \"%2\" have tiles of the same names. A file keeps names "
                                       "alone: when it is loaded, "
                                       "their viewports show the last one. Rename one of them.")
                                        .arg(first.name(), name));
        problems.back().other = first.item;
        problems.back().setFix(
            tr("Rename to \"%1\"").arg(newName),
            [item = projection.item, newName, own = links.value(later)] { rename(item, newName, own); });
    }
    return problems;
}

zoHPCProblem::List zoHPCProjectionChecks::unknownTypes(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Projection& projection : layout.projections()) {
        zoHPCProjectionItem* const item = projection.item;
        if (item->kind() != TypeKind::Other)
            continue;
        problems.emplace_back(
            Kind::UnknownProjectionType, item,
            tr("\"%1\" is of the type \"%2\", which there is not: it shows nothing. Types are %3.")
                .arg(projection.name(), item->projectionType(), typeWords()));
        const zoHPCProjectionType* const type = typeLike(item->projectionType());
        // Of one that no viewport shows, the tiles would be dark.
        if (!type || !projection.isShown)
            continue;
        problems.back().setFix(tr("Make it a %1").arg(QString::fromLatin1(type->value)),
                               [item, kind = type->kind] {
                                   item->setProjectionType(zoHPCProjectionType::word(kind));
                                   item->setMissingDefaults();
                                   item->update();
                               });
    }
    return problems;
}

zoHPCProblem::List zoHPCProjectionChecks::cavesWithoutWalls(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Projection& projection : layout.projections()) {
        if (projection.item->kind() != TypeKind::Cave || hasWall(*projection.item))
            continue;
        problems.emplace_back(
            Kind::CaveWithoutWalls, projection.item,
            tr("The cave \"%1\" has no walls: it shows nothing. Switch on those that it has.")
                .arg(projection.name()));
    }
    return problems;
}

zoHPCProblem::List zoHPCProjectionChecks::projectionsWithoutTiles(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Projection& projection : layout.projections()) {
        zoHPCProjectionItem* const item = projection.item;
        const bool isCave = item->kind() == TypeKind::Cave;
        if (!hasNoTiles(*item) || item->kind() == TypeKind::Other || (isCave && !hasWall(*item)))
            continue;
        const int rows = item->getInt(P::Rows);
        const int columns = item->getInt(P::Columns);
        if (rows > 0 && columns > 0 && qint64(rows) * columns <= P::MaximumTiles &&
            projection.name().size() > LongName) {
            problems.emplace_back(
                Kind::ProjectionWithoutTiles, item,
                tr("\"%1...\" has a name of %2 characters, too long to be in that of each tile: it shows "
                   "nothing. "
                   "Give it a shorter one.")
                    .arg(projection.name().left(40), QString::number(projection.name().size())));
            continue;
        }
        if (rows > 0 && columns > 0) {
            problems.emplace_back(
                Kind::ProjectionWithoutTiles, item,
                tr("\"%1\" has %2 rows and %3 columns, which is too many: it shows nothing. At most %4 tiles "
                   "are supported.")
                    .arg(projection.name(), QString::number(rows), QString::number(columns),
                         QString::number(P::MaximumTiles)));
            continue;
        }
        problems.emplace_back(
            Kind::ProjectionWithoutTiles, item,
            tr("\"%1\" has %2 rows and %3 columns: it shows nothing. Each has to be 1 at least.")
                .arg(projection.name(), QString::number(rows), QString::number(columns)));
        // Of one that no viewport shows, the tiles would be dark.
        if (!projection.isShown)
            continue;
        problems.back().setFix(tr("Use 1"), [item, rows, columns] {
            item->setInt(P::Rows, std::max(rows, 1));
            item->setInt(P::Columns, std::max(columns, 1));
            item->update();
        });
    }
    return problems;
}

zoHPCProblem::List zoHPCProjectionChecks::overlapsWiderThanTiles(const zoHPCLayout& layout)
{
    const QHash<int, QSizeF> tiles = smallestTiles(layout, false);
    const QHash<int, QSizeF> screens = smallestTiles(layout, true);
    zoHPCProblem::List problems;
    for (size_t i = 0; i < layout.projections().size(); ++i) {
        const Projection& projection = layout.projections()[i];
        const zoHPCProjectionItem& item = *projection.item;
        if (!isTopLevel(projection))
            continue;
        std::vector<Direction> directions = directionsOf(item);
        if (item.kind() == TypeKind::Wall) {
            const auto row = static_cast<int>(i);
            // A screen may be larger than its window says: bands that are wide then are no mistake yet.
            const bool isSaid = !tiles.contains(row) && screens.contains(row);
            const QSizeF tile =
                isSaid ? screens.value(row) : tiles.value(row, QSizeF(LargestTile, LargestTile));
            const auto direction = [&](int count, double overlap, double size) {
                return Direction{count, overlap, size, !isSaid && item.getBool(P::EdgeBlending)};
            };
            for (const Direction& one :
                 {direction(item.getInt(P::Columns), item.getDouble(P::OverlapX), tile.width()),
                  direction(item.getInt(P::Rows), item.getDouble(P::OverlapY), tile.height())})
                directions.push_back(one);
        }
        const auto wrong = std::find_if(directions.begin(), directions.end(),
                                        [](const Direction& one) { return one.isTooWide(); });
        if (wrong == directions.end())
            continue;
        const QString size = QString::number(std::abs(wrong->overlap));
        problems.emplace_back(Kind::OverlapWiderThanTile, projection.item,
                              wrong->overlap < 0.0
                                  ? tr("The gaps of %2 between the tiles of \"%1\" leave nothing of the "
                                       "tiles. Measure them again.")
                                        .arg(projection.name(), size)
                                  : tr("The tiles of \"%1\" overlap by %2, but are only %3 wide or high: at "
                                       "most half of a tile "
                                       "can be shared. Measure the overlap again.")
                                        .arg(projection.name(), size, QString::number(wrong->tile, 'g', 6)));
    }
    return problems;
}
