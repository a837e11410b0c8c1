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
#include <limits>
#include <map>
#include <memory>

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

// The tiles of a plane, in millimetres.
struct Grid
{
    int rows;
    int columns;
    double overlapX;
    double overlapY;
    double tileWidth;
    double tileHeight;
};

// Of a tile that shares its inner edges with its neighbours.
void setBlendWidths(zoHPCProjectionItem& tile, const Grid& grid, int row, int column)
{
    using P = zoHPCProjectionItem;
    tile.setDouble(P::LeftEdge, (column > 0 ? grid.overlapX : 0.0) / grid.tileWidth);
    tile.setDouble(P::RightEdge, (column < grid.columns - 1 ? grid.overlapX : 0.0) / grid.tileWidth);
    // Row 0 is the top row, and still its bottom overlap is called the top edge: the render side reads the
    // pair this way round.
    tile.setDouble(P::TopEdge, (row < grid.rows - 1 ? grid.overlapY : 0.0) / grid.tileHeight);
    tile.setDouble(P::BottomEdge, (row > 0 ? grid.overlapY : 0.0) / grid.tileHeight);
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

    switch (kind()) {
    case Kind::PowerWall: {
        const zoHPCPlane plane = zoHPCPlane::facing(getDouble(Width), getDouble(Height), getDouble(Distance));
        addPlane(QString(), plane.lowerLeft, plane.lowerRight, plane.upperRight);
        break;
    }
    case Kind::Wall:
        addWallTiles();
        break;
    case Kind::Cave:
        addCaveWalls();
        break;
    case Kind::Plane:
    case Kind::Tile:
    case Kind::Other:
        break;
    }
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

void zoHPCProjectionItem::addPlane(const QString& name, const Point3& lowerLeft, const Point3& lowerRight,
                                   const Point3& upperRight)
{
    const int rows = getInt(Rows);
    const int columns = getInt(Columns);
    if (columns < 1 || rows < 1 || hasTooManyTiles(1))
        return;
    const double ox = getDouble(OverlapX);
    const double oy = getDouble(OverlapY);

    const Point3 a = lowerRight - lowerLeft;
    const Point3 b = lowerRight - upperRight; // points down
    const double planeWidth = length(a);
    const double planeHeight = length(b);
    const Point3 u = direction(a, planeWidth);
    const Point3 v = direction(b, planeHeight);
    const Point3 upperLeft = upperRight - lowerRight + lowerLeft;
    const Grid grid{rows,
                    columns,
                    ox,
                    oy,
                    (planeWidth + (columns - 1) * ox) / columns,
                    (planeHeight + (rows - 1) * oy) / rows};

    const QString ownName = getString(Name);
    const QString ownIdentifier = getString(Identifier);
    const QString trimmedName = name.trimmed();
    const bool single = rows < 2 && columns < 2 && !name.isEmpty();
    const bool blending = getBool(EdgeBlending);

    zoHPCProjectionItem prototype(QString(), Kind::Plane);
    for (const int col : {OverlapX, OverlapY})
        prototype.setInt(col, wholeOverlap(col));
    prototype.setBool(EdgeBlending, blending);
    for (const int edge : {LeftEdge, RightEdge, TopEdge, BottomEdge})
        prototype.setDouble(edge, 0.0);

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

            const Point3 origin =
                upperLeft + (j * (grid.tileWidth - ox)) * u + (i * (grid.tileHeight - oy)) * v;
            const Point3 across = grid.tileWidth * u;
            const Point3 down = grid.tileHeight * v;
            plane->setPlane({origin + down, origin + across + down, origin + across});
            if (blending)
                setBlendWidths(*plane, grid, i, j);
            planes.append(plane.release());
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
    if (rows < 1 || columns < 1 || hasTooManyTiles(1))
        return;
    const QString ownName = getString(Name);
    const QString ownIdentifier = getString(Identifier);

    zoHPCProjectionItem prototype(QString(), Kind::Tile);
    for (const int col : {Rows, Columns, RightOffsetX, RightOffsetY})
        prototype.setInt(col, getInt(col));
    for (const int col : {OverlapX, OverlapY})
        prototype.setInt(col, wholeOverlap(col));
    prototype.setBool(EdgeBlending, getBool(EdgeBlending));
    prototype.setDouble(Distance, getDouble(Distance));

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
            tiles.append(tile.release());
        }
    }
    addChildren(tiles);
}

void zoHPCProjectionItem::addCaveWalls()
{
    const Point3 center{getDouble(CaveX), getDouble(CaveY), getDouble(CaveZ)};
    const Point3 half{getDouble(CaveWidth) / 2, getDouble(CaveHeight) / 2, getDouble(CaveDepth) / 2};
    const Point3 max = center + half;
    const Point3 min = center - half;

    struct Wall
    {
        int flag;
        const char* label; // part of the planes' names in documents: never translated
        Point3 lowerLeft, lowerRight, upperRight;
    };
    // Each wall is seen from inside the box.
    const Wall walls[] = {
        {LeftWall, "Left", {min.x, min.y, max.z}, {min.x, min.y, min.z}, {min.x, max.y, min.z}},
        {RightWall, "Right", {max.x, min.y, min.z}, {max.x, min.y, max.z}, {max.x, max.y, max.z}},
        {TopWall, "Top", {min.x, max.y, min.z}, {max.x, max.y, min.z}, {max.x, max.y, max.z}},
        {BottomWall, "Bottom", {min.x, min.y, max.z}, {max.x, min.y, max.z}, {max.x, min.y, min.z}},
        {FrontWall, "Front", {min.x, min.y, min.z}, {max.x, min.y, min.z}, {max.x, max.y, min.z}},
        {BackWall, "Back", {max.x, min.y, max.z}, {min.x, min.y, max.z}, {min.x, max.y, max.z}},
    };
    int count = 0;
    for (const Wall& wall : walls)
        count += getBool(wall.flag) ? 1 : 0;
    if (hasTooManyTiles(count))
        return;
    for (const Wall& wall : walls) {
        if (getBool(wall.flag))
            addPlane(QString::fromLatin1(wall.label), wall.lowerLeft, wall.lowerRight, wall.upperRight);
    }
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
