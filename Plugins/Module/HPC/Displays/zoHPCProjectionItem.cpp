#include "zoHPCProjectionItem.h"

#include "zoHPCProjectionDefaults.h"

#include <zoClusterTags.h>
#include <zoIconManager.h>
#include <zoLog.h>

#include <QCoreApplication>
#include <QDomDocument>
#include <QIcon>
#include <QUuid>
#include <QVariant>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <typeinfo>

namespace
{
using Kind = zoHPCProjectionType::Kind;

// Not unit(): planes at the limit, which is the single-precision value, and their rounding come out as they
// always did.
Point3 direction(const Point3& a, double length)
{
    const double divisor = length < static_cast<double>(1e-6F) ? 1.0 : length;
    return {a.x / divisor, a.y / divisor, a.z / divisor};
}

// The attribute of each saved column; index is the column.
const char* const ATTRIBUTES[zoHPCProjectionItem::ColumnCount] = {
    "name",    nullptr,    "type",     "rightoffsetx", "rightoffsety", "row",       "column",  "rows",
    "columns", "overlapx", "overlapy", "cavewidth",    "caveheight",   "cavedepth", "cavex",   "cavey",
    "cavez",   "left",     "right",    "top",          "bottom",       "front",     "back",    "width",
    "height",  "distance", "x1",       "y1",           "z1",           "x2",        "y2",      "z2",
    "x3",      "y3",       "z3",       "edgeblending", "leftedge",     "rightedge", "topedge", "bottomedge",
};

zoHPCTreeWidgetItem::ColumnMap mapOf(const zoHPCProjectionType& type)
{
    zoHPCTreeWidgetItem::ColumnMap map;
    for (const int col : type.columns)
        map.emplace(col, QString::fromLatin1(ATTRIBUTES[col]));
    return map;
}

const QIcon& iconOf(const zoHPCProjectionType& type)
{
    static std::map<Kind, QIcon> s_icons;
    const auto known = s_icons.find(type.kind);
    if (known != s_icons.end())
        return known->second;
    return s_icons.emplace(type.kind, zoIconManager::getIcon(QString::fromLatin1(type.icon), QString()))
        .first->second;
}

// Which walls a cave has.
constexpr int CaveWalls[] = {zoHPCProjectionItem::LeftWall,  zoHPCProjectionItem::RightWall,
                             zoHPCProjectionItem::TopWall,   zoHPCProjectionItem::BottomWall,
                             zoHPCProjectionItem::FrontWall, zoHPCProjectionItem::BackWall};

// Just that value.
bool isSame(const QVariant& held, const QVariant& value)
{
    if (value.userType() != QMetaType::Double)
        return held.isValid() && held == value;
    // To the last digit, and -0 is not 0.
    const double number = value.toDouble();
    return held.userType() == QMetaType::Double && held.toDouble() == number &&
           std::signbit(held.toDouble()) == std::signbit(number);
}

// By column, what all children of a projection have alike.
using Values = std::vector<std::pair<int, QVariant>>;

Values planeValues(const zoHPCProjectionItem& projection)
{
    using P = zoHPCProjectionItem;
    return {{P::EdgeBlending, projection.getBool(P::EdgeBlending)},
            {P::OverlapX, projection.wholeOverlap(P::OverlapX)},
            {P::OverlapY, projection.wholeOverlap(P::OverlapY)}};
}

Values tileValues(const zoHPCProjectionItem& projection)
{
    using P = zoHPCProjectionItem;
    Values values = planeValues(projection);
    for (const int col : {P::Rows, P::Columns, P::RightOffsetX, P::RightOffsetY})
        values.emplace_back(col, projection.getInt(col));
    values.emplace_back(P::Distance, projection.getDouble(P::Distance));
    return values;
}

// Text that is only ever joined, never a pattern: names may hold "%1".
QString joined(const QString& first, QChar separator, const QString& second)
{
    return first + separator + second;
}

QString tileLabel(int row, int column)
{
    return QLatin1String("row:") + QString::number(row) + QLatin1String(" col:") + QString::number(column);
}
} // namespace

// The tiles of a plane, in millimetres.
struct zoHPCProjectionItem::Grid
{
    int rows;
    int columns;
    double overlapX;
    double overlapY;
    double tileWidth;
    double tileHeight;
    bool isBlended;
    Point3 upperLeft;
    Point3 right; // directions
    Point3 down;
};

struct zoHPCProjectionItem::CaveWall
{
    const char* label; // part of the planes' names in documents: never translated
    zoHPCPlane plane;
};

bool zoHPCProjectionItem::Layout::operator==(const Layout& other) const
{
    return kind == other.kind && name == other.name && identifier == other.identifier && rows == other.rows &&
           columns == other.columns && walls == other.walls && tiles == other.tiles;
}

zoHPCProjectionItem::zoHPCProjectionItem(const QString& name, const QString& type)
{
    setDefaults();
    // Unknown types and power walls keep it.
    setData(Name, Qt::DecorationRole, iconOf(zoHPCProjectionType::of(Kind::Plane)));
    setString(Identifier, QUuid::createUuid().toString());
    setString(Name, name);
    setString(Type, type);
    update();
}

zoHPCProjectionItem::zoHPCProjectionItem(const QString& name, Kind kind)
    : zoHPCProjectionItem(name, zoHPCProjectionType::word(kind))
{
}

zoHPCProjectionItem::~zoHPCProjectionItem() = default;

QString zoHPCProjectionItem::projectionType() const
{
    return getString(Type);
}

zoHPCPlane zoHPCProjectionItem::plane() const
{
    const auto point = [this](int column) {
        return Point3{getDouble(column), getDouble(column + 1), getDouble(column + 2)};
    };
    return {point(X1), point(X2), point(X3)};
}

void zoHPCProjectionItem::setPlane(const zoHPCPlane& plane)
{
    int column = X1;
    for (const Point3& corner : {plane.lowerLeft, plane.lowerRight, plane.upperRight}) {
        setDouble(column++, corner.x);
        setDouble(column++, corner.y);
        setDouble(column++, corner.z);
    }
}

void zoHPCProjectionItem::setName(const QString& name)
{
    setString(Name, name);
}

void zoHPCProjectionItem::setProjectionType(const QString& type)
{
    setString(Type, type);
}

void zoHPCProjectionItem::setMissingDefaults()
{
    const std::vector<int>& columns = typeRow().columns;
    for (const auto& [col, value] : zoHPCProjectionDefaults::values()) {
        if (!data(col, Qt::EditRole).isValid() &&
            std::find(columns.begin(), columns.end(), col) != columns.end())
            setData(col, Qt::EditRole, value);
    }
}

int zoHPCProjectionItem::wholeOverlap(int column) const
{
    // Not getInt(): it rounds a number and reads the text of one, as files hold it, as 0.
    const double overlap = std::trunc(getDouble(column));
    constexpr double LIMIT = std::numeric_limits<int>::max();
    return std::isnan(overlap) ? 0 : static_cast<int>(std::clamp(overlap, -LIMIT, LIMIT));
}

void zoHPCProjectionItem::update()
{
    changeIcon();
    clearChildren();
    static unsigned s_generation = 0;
    m_generation = ++s_generation;
    m_layout = layout();
    if (hasTooManyTiles(planeCount()) || !m_isLaidOut)
        return;

    switch (kind()) {
    case Kind::PowerWall: {
        const zoHPCPlane plane = powerWallPlane();
        addPlane(QString(), plane.lowerLeft, plane.lowerRight, plane.upperRight);
        break;
    }
    case Kind::Wall:
        addWallTiles();
        break;
    case Kind::Cave:
        for (const CaveWall& wall : caveWalls())
            addPlane(QString::fromLatin1(wall.label), wall.plane.lowerLeft, wall.plane.lowerRight,
                     wall.plane.upperRight);
        break;
    case Kind::Plane:
    case Kind::Tile:
    case Kind::Other:
        break;
    }
}

bool zoHPCProjectionItem::updateValues()
{
    const int count = childCount();
    if (count == 0 || !(layout() == m_layout) || count != m_layout.tiles)
        return false;
    if (ownTiles() == 0)
        return false;
    for (const auto& [column, value] : kind() == Kind::Wall ? tileValues(*this) : planeValues(*this)) {
        // All have the same of these, so that the first one tells what changed.
        for (int i = isSame(child(0)->data(column, Qt::EditRole), value) ? count : 0; i < count; ++i)
            static_cast<zoHPCProjectionItem*>(child(i))->put(column, value);
    }
    if (kind() == Kind::PowerWall) {
        placeTiles(powerWallPlane(), 0);
    } else if (kind() == Kind::Cave) {
        const std::vector<CaveWall> walls = caveWalls();
        for (std::size_t i = 0; i < walls.size(); ++i)
            placeTiles(walls[i].plane, int(i) * m_layout.rows * m_layout.columns);
    }
    return true;
}

void zoHPCProjectionItem::setData(int column, int role, const QVariant& value)
{
    // What views write beside the properties, such as the nodes of a surface or a tool tip, makes no other tile of it.
    if (column < ColumnCount && (role == Qt::EditRole || role == Qt::DisplayRole))
        m_madeIn = 0;
    zoHPCTreeWidgetItem::setData(column, role, value);
}

QDomElement zoHPCProjectionItem::toXML(QDomDocument& document, const QString& tagName) const
{
    QDomElement element = zoHPCTreeWidgetItem::toXML(document, tagName);
    for (int i = 0; i < childCount(); ++i) {
        if (const auto* projection = dynamic_cast<const zoHPCProjectionItem*>(child(i)))
            element.appendChild(projection->toXML(document, zoClusterTags::Projection));
    }
    return element;
}

void zoHPCProjectionItem::fromXML(const QDomElement& element)
{
    // Without a type the item reads the parameters of all types.
    setString(Type, QString::fromLatin1(""));
    zoHPCTreeWidgetItem::fromXML(element);
}

const zoHPCTreeWidgetItem::ColumnMap& zoHPCProjectionItem::getColumns() const
{
    return columns(projectionType());
}

zoHPCProjectionItem* zoHPCProjectionItem::clone()
{
    QDomDocument document;
    auto copy = std::make_unique<zoHPCProjectionItem>(QString::fromLatin1(""), Kind::Wall);
    copy->fromXML(toXML(document, zoClusterTags::Projection));
    // The source takes a new identifier as well: nothing that was linked before the copy may follow either of
    // the two by identifier alone.
    setString(Identifier, QUuid::createUuid().toString());
    return copy.release();
}

void zoHPCProjectionItem::changeIcon()
{
    const zoHPCProjectionType& type = typeRow();
    if (!type.icon)
        return;
    // Qt 6 takes no two icons for equal values: each update would announce a change there.
    const QIcon& ofType = iconOf(type);
    if (icon(Name).cacheKey() != ofType.cacheKey())
        setData(Name, Qt::DecorationRole, ofType);
}

zoHPCProjectionItem::Layout zoHPCProjectionItem::layout() const
{
    Layout now;
    now.kind = kind();
    now.name = getString(Name);
    now.identifier = getString(Identifier);
    now.rows = getInt(Rows);
    now.columns = getInt(Columns);
    for (const int flag : CaveWalls)
        now.walls = 2 * now.walls + (getBool(flag) ? 1 : 0);
    now.tiles = tileCount();
    return now;
}

unsigned zoHPCProjectionItem::ownTiles() const
{
    const int count = childCount();
    for (int i = 0; i < count; ++i) {
        if (!isOwnChild(i))
            return 0;
    }
    return count > 0 ? m_generation : 0;
}

bool zoHPCProjectionItem::isOwnChild(int index) const
{
    const QTreeWidgetItem* const row = child(index);
    if (typeid(*row) != typeid(zoHPCProjectionItem)) // the class is final
        return false;
    const auto* const item = static_cast<const zoHPCProjectionItem*>(row);
    return item->m_madeIn == m_generation && item->m_madeAs == index && item->childCount() == 0;
}

void zoHPCProjectionItem::addOwn(std::unique_ptr<zoHPCProjectionItem> child,
                                 QList<QTreeWidgetItem*>& items) const
{
    child->m_madeIn = m_generation;
    child->m_madeAs = childCount() + items.size();
    items.append(child.release());
}

void zoHPCProjectionItem::put(int column, const QVariant& value)
{
    const QVariant held = data(column, Qt::EditRole);
    if (isSame(held, value))
        return;
    // The toolkit does not replace a number by one that it takes for the same, as with 0 and -0 and in the last digits:
    // what a tile has would depend on what it had.
    if (value.userType() == QMetaType::Double && held == value)
        zoHPCTreeWidgetItem::setData(column, Qt::EditRole, QVariant());
    zoHPCTreeWidgetItem::setData(column, Qt::EditRole, value);
}

zoHPCPlane zoHPCProjectionItem::powerWallPlane() const
{
    return zoHPCPlane::facing(getDouble(Width), getDouble(Height), getDouble(Distance));
}

zoHPCProjectionItem::Grid zoHPCProjectionItem::gridOf(const zoHPCPlane& plane) const
{
    const Point3 a = plane.lowerRight - plane.lowerLeft;
    const Point3 b = plane.lowerRight - plane.upperRight; // points down
    const double width = length(a);
    const double height = length(b);
    Grid grid;
    grid.rows = getInt(Rows);
    grid.columns = getInt(Columns);
    grid.overlapX = getDouble(OverlapX);
    grid.overlapY = getDouble(OverlapY);
    grid.tileWidth = (width + (grid.columns - 1) * grid.overlapX) / grid.columns;
    grid.tileHeight = (height + (grid.rows - 1) * grid.overlapY) / grid.rows;
    grid.isBlended = getBool(EdgeBlending);
    grid.upperLeft = plane.upperLeft();
    grid.right = direction(a, width);
    grid.down = direction(b, height);
    return grid;
}

void zoHPCProjectionItem::givePlaneValues(zoHPCProjectionItem& plane) const
{
    for (const auto& [column, value] : planeValues(*this))
        plane.put(column, value);
}

void zoHPCProjectionItem::giveTileValues(zoHPCProjectionItem& tile) const
{
    for (const auto& [column, value] : tileValues(*this))
        tile.put(column, value);
}

void zoHPCProjectionItem::placeTile(zoHPCProjectionItem& plane, const Grid& grid, int row, int column) const
{
    const Point3 origin = grid.upperLeft + (column * (grid.tileWidth - grid.overlapX)) * grid.right +
                          (row * (grid.tileHeight - grid.overlapY)) * grid.down;
    const Point3 across = grid.tileWidth * grid.right;
    const Point3 down = grid.tileHeight * grid.down;
    int col = X1;
    for (const Point3& corner : {origin + down, origin + across + down, origin + across}) {
        plane.put(col++, corner.x);
        plane.put(col++, corner.y);
        plane.put(col++, corner.z);
    }
    // It shares its inner edges with its neighbours.
    const auto share = [&grid](bool isShared, double overlap, double size) {
        return grid.isBlended ? (isShared ? overlap : 0.0) / size + 0.0 : 0.0; // never -0
    };
    plane.put(LeftEdge, share(column > 0, grid.overlapX, grid.tileWidth));
    plane.put(RightEdge, share(column < grid.columns - 1, grid.overlapX, grid.tileWidth));
    // Row 0 is the top row, and still its bottom overlap is called the top edge: the render side reads the
    // pair this way round.
    plane.put(TopEdge, share(row < grid.rows - 1, grid.overlapY, grid.tileHeight));
    plane.put(BottomEdge, share(row > 0, grid.overlapY, grid.tileHeight));
}

void zoHPCProjectionItem::placeTiles(const zoHPCPlane& plane, int firstChild)
{
    const Grid grid = gridOf(plane);
    for (int i = 0; i < grid.rows; ++i) {
        for (int j = 0; j < grid.columns; ++j) {
            auto* const tile = static_cast<zoHPCProjectionItem*>(child(firstChild + i * grid.columns + j));
            placeTile(*tile, grid, i, j);
        }
    }
}

void zoHPCProjectionItem::addPlane(const QString& name, const Point3& lowerLeft, const Point3& lowerRight,
                                   const Point3& upperRight)
{
    const int rows = getInt(Rows);
    const int columns = getInt(Columns);
    if (columns < 1 || rows < 1 || hasTooManyTiles(1))
        return;
    const Grid grid = gridOf({lowerLeft, lowerRight, upperRight});
    const QString ownName = getString(Name);
    const QString ownIdentifier = getString(Identifier);
    const QString trimmedName = name.trimmed();
    const bool single = rows < 2 && columns < 2 && !name.isEmpty();

    zoHPCProjectionItem prototype(QString(), Kind::Plane);
    givePlaneValues(prototype);
    QList<QTreeWidgetItem*> planes;
    planes.reserve(rows * columns);
    for (int i = 0; i < rows; ++i) {
        for (int j = 0; j < columns; ++j) {
            const QString label =
                single ? trimmedName
                       : joined(trimmedName, QLatin1Char(' '), tileLabel(i + 1, j + 1)).trimmed();
            auto plane = std::unique_ptr<zoHPCProjectionItem>(new zoHPCProjectionItem(prototype));
            plane->setString(Name, joined(ownName, QLatin1Char(' '), label).trimmed());
            plane->setString(Identifier, joined(ownIdentifier, QLatin1Char('/'), label));
            placeTile(*plane, grid, i, j);
            addOwn(std::move(plane), planes);
        }
    }
    addChildren(planes);
}

const zoHPCTreeWidgetItem::ColumnMap& zoHPCProjectionItem::columns(const QString& type)
{
    static const std::map<Kind, ColumnMap> s_maps = [] {
        std::map<Kind, ColumnMap> maps;
        for (const zoHPCProjectionType& known : zoHPCProjectionType::all())
            maps.emplace(known.kind, mapOf(known));
        maps.emplace(Kind::Other, mapOf(zoHPCProjectionType::of(Kind::Other)));
        return maps;
    }();
    return s_maps.at(zoHPCProjectionType::of(type).kind);
}

void zoHPCProjectionItem::setDefaults()
{
    for (const auto& [col, value] : zoHPCProjectionDefaults::values())
        setData(col, Qt::EditRole, value);
}

void zoHPCProjectionItem::addWallTiles()
{
    const int rows = getInt(Rows);
    const int columns = getInt(Columns);
    if (rows < 1 || columns < 1)
        return;
    const QString ownName = getString(Name);
    const QString ownIdentifier = getString(Identifier);

    zoHPCProjectionItem prototype(QString(), Kind::Tile);
    giveTileValues(prototype);
    QList<QTreeWidgetItem*> tiles;
    tiles.reserve(rows * columns);
    for (int row = 1; row <= rows; ++row) {
        for (int column = 1; column <= columns; ++column) {
            const QString label = tileLabel(row, column);
            auto tile = std::unique_ptr<zoHPCProjectionItem>(new zoHPCProjectionItem(prototype));
            tile->setString(Name, joined(ownName, QLatin1Char(' '), label));
            tile->setString(Identifier, joined(ownIdentifier, QLatin1Char('/'), label));
            tile->setInt(Row, row);
            tile->setInt(TileColumn, column);
            addOwn(std::move(tile), tiles);
        }
    }
    addChildren(tiles);
}

std::vector<zoHPCProjectionItem::CaveWall> zoHPCProjectionItem::caveWalls() const
{
    const Point3 center{getDouble(CaveX), getDouble(CaveY), getDouble(CaveZ)};
    const Point3 half{getDouble(CaveWidth) / 2, getDouble(CaveHeight) / 2, getDouble(CaveDepth) / 2};
    const Point3 max = center + half;
    const Point3 min = center - half;

    // In the order of the flags; each wall is seen from inside the box.
    const CaveWall all[] = {
        {"Left", {{min.x, min.y, max.z}, {min.x, min.y, min.z}, {min.x, max.y, min.z}}},
        {"Right", {{max.x, min.y, min.z}, {max.x, min.y, max.z}, {max.x, max.y, max.z}}},
        {"Top", {{min.x, max.y, min.z}, {max.x, max.y, min.z}, {max.x, max.y, max.z}}},
        {"Bottom", {{min.x, min.y, max.z}, {max.x, min.y, max.z}, {max.x, min.y, min.z}}},
        {"Front", {{min.x, min.y, min.z}, {max.x, min.y, min.z}, {max.x, max.y, min.z}}},
        {"Back", {{max.x, min.y, max.z}, {min.x, min.y, max.z}, {min.x, max.y, max.z}}},
    };
    std::vector<CaveWall> walls;
    for (std::size_t i = 0; i < std::size(CaveWalls); ++i) {
        if (getBool(CaveWalls[i]))
            walls.push_back(all[i]);
    }
    return walls;
}

int zoHPCProjectionItem::planeCount() const
{
    switch (kind()) {
    case Kind::PowerWall:
    case Kind::Wall:
        return 1;
    case Kind::Cave:
        return int(std::count_if(std::begin(CaveWalls), std::end(CaveWalls),
                                 [this](int flag) { return getBool(flag); }));
    case Kind::Plane:
    case Kind::Tile:
    case Kind::Other:
        break;
    }
    return 0;
}

int zoHPCProjectionItem::tileCount() const
{
    const qint64 count = qint64(getInt(Rows)) * getInt(Columns);
    const int planes = planeCount();
    const bool isGrid = getInt(Rows) > 0 && getInt(Columns) > 0 && planes > 0;
    return isGrid && count <= m_tileLimit / planes && count * planes * getString(Name).size() <= m_nameLimit
               ? int(count * planes)
               : 0;
}

bool zoHPCProjectionItem::hasTooManyTiles(int planes) const
{
    const qint64 rows = getInt(Rows);
    const qint64 columns = getInt(Columns);
    if (rows < 1 || columns < 1 || planes < 1)
        return false;
    if (rows * columns <= m_tileLimit / planes) {
        if (rows * columns * planes * getString(Name).size() <= m_nameLimit)
            return false;
        zoLog::error(
            "%s",
            qUtf8Printable(QCoreApplication::translate(
                               "zoHPCProjectionItem",
                               "Projection %1... is not laid out: its tiles would repeat too long a name.")
                               .arg(getString(Name).left(40))));
        return true;
    }
    zoLog::error("%s",
                 qUtf8Printable(
                     QCoreApplication::translate(
                         "zoHPCProjectionItem",
                         "Projection %1 with %2 x %3 tiles is not laid out: at most %4 tiles are supported.")
                         .arg(getString(Name), QString::number(rows), QString::number(columns),
                              QString::number(MaximumTiles))));
    return true;
}
