#include "zoHPCProjectionItem.h"

#include <zoIconManager.h>
#include <zoLog.h>

#include <QCoreApplication>
#include <QDomDocument>
#include <QIcon>
#include <QUuid>

#include <cmath>
#include <memory>

namespace
{
Point3 operator+(const Point3& a, const Point3& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

Point3 operator-(const Point3& a, const Point3& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Point3 operator*(double factor, const Point3& a)
{
    return {factor * a.x, factor * a.y, factor * a.z};
}

double length(const Point3& a)
{
    return std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z);
}

// A vector without length stays as it is.
Point3 unit(const Point3& a, double length)
{
    // The limit is the single-precision value: planes at the limit come out as they always did.
    const double divisor = length < static_cast<double>(1e-6F) ? 1.0 : length;
    return {a.x / divisor, a.y / divisor, a.z / divisor};
}

const QIcon& projectionIcon()
{
    static const QIcon icon =
        zoIconManager::getIcon(QString::fromLatin1("Iconset/ProjectionOnNormal.svg"), QString());
    return icon;
}

const QIcon& tiledWallIcon()
{
    static const QIcon icon =
        zoIconManager::getIcon(QString::fromLatin1("Iconset/TiledWallOnNormal.svg"), QString());
    return icon;
}

const QIcon& caveIcon()
{
    static const QIcon icon =
        zoIconManager::getIcon(QString::fromLatin1("Iconset/CaveOnNormal.svg"), QString());
    return icon;
}

const QIcon& tileIcon()
{
    static const QIcon icon =
        zoIconManager::getIcon(QString::fromLatin1("Iconset/WallTileOnNormal.svg"), QString());
    return icon;
}

// The attribute of each saved column; index is the column.
const char* const ATTRIBUTES[zoHPCProjectionItem::ColumnCount] = {
    "name",    nullptr,    "type",     "rightoffsetx", "rightoffsety", "row",       "column",  "rows",
    "columns", "overlapx", "overlapy", "cavewidth",    "caveheight",   "cavedepth", "cavex",   "cavey",
    "cavez",   "left",     "right",    "top",          "bottom",       "front",     "back",    "width",
    "height",  "distance", "x1",       "y1",           "z1",           "x2",        "y2",      "z2",
    "x3",      "y3",       "z3",       "edgeblending", "leftedge",     "rightedge", "topedge", "bottomedge",
};

zoHPCTreeWidgetItem::ColumnMap mapOf(std::initializer_list<int> columns)
{
    zoHPCTreeWidgetItem::ColumnMap map;
    for (const int col : columns)
        map.emplace(col, QString::fromLatin1(ATTRIBUTES[col]));
    return map;
}

zoHPCTreeWidgetItem::ColumnMap unionMap()
{
    zoHPCTreeWidgetItem::ColumnMap map;
    for (const char* const type : {"cave", "wall", "powerwall", "plane", "tile"}) {
        const zoHPCTreeWidgetItem::ColumnMap& columns =
            zoHPCProjectionItem::columns(QString::fromLatin1(type));
        map.insert(columns.begin(), columns.end());
    }
    return map;
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
    setData(Name, Qt::DecorationRole, projectionIcon());
    setString(Identifier, QUuid::createUuid().toString());
    setString(Name, name);
    setString(Type, type);
    update();
}

zoHPCProjectionItem::~zoHPCProjectionItem() = default;

QString zoHPCProjectionItem::projectionType() const
{
    return getString(Type);
}

void zoHPCProjectionItem::setName(const QString& name)
{
    setString(Name, name);
}

void zoHPCProjectionItem::setProjectionType(const QString& type)
{
    setString(Type, type);
}

void zoHPCProjectionItem::update()
{
    changeIcon();
    clearChildren();

    const QString type = projectionType();
    if (type == QLatin1String("powerwall")) {
        const double right = getDouble(Width) / 2;
        const double top = getDouble(Height) / 2;
        const double distance = getDouble(Distance);
        addPlane(QString(), {-right, -top, -distance}, {right, -top, -distance}, {right, top, -distance});
    } else if (type == QLatin1String("wall")) {
        addWallTiles();
    } else if (type == QLatin1String("cave")) {
        addCaveWalls();
    }
}

QDomElement zoHPCProjectionItem::toXML(QDomDocument& document, const QString& tagName) const
{
    QDomElement element = zoHPCTreeWidgetItem::toXML(document, tagName);
    for (int i = 0; i < childCount(); ++i) {
        if (const auto* projection = dynamic_cast<const zoHPCProjectionItem*>(child(i)))
            element.appendChild(projection->toXML(document, QString::fromLatin1("projection")));
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
    auto copy = std::make_unique<zoHPCProjectionItem>(QString::fromLatin1(""), QString::fromLatin1("wall"));
    copy->fromXML(toXML(document, QString::fromLatin1("projection")));
    // The source takes a new identifier as well: nothing that was linked before the copy may follow either of
    // the two by identifier alone.
    setString(Identifier, QUuid::createUuid().toString());
    return copy.release();
}

void zoHPCProjectionItem::changeIcon()
{
    const QString type = projectionType();
    const QIcon* icon = nullptr;
    if (type == QLatin1String("wall"))
        icon = &tiledWallIcon();
    else if (type == QLatin1String("cave"))
        icon = &caveIcon();
    else if (type == QLatin1String("plane"))
        icon = &projectionIcon();
    else if (type == QLatin1String("tile"))
        icon = &tileIcon();
    // Qt 6 takes no two icons for equal values: each update would announce a change there.
    if (icon && this->icon(Name).cacheKey() != icon->cacheKey())
        setData(Name, Qt::DecorationRole, *icon);
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
    const Point3 u = unit(a, planeWidth);
    const Point3 v = unit(b, planeHeight);
    const Point3 upperLeft = upperRight - lowerRight + lowerLeft;
    const double tileWidth = (planeWidth + (columns - 1) * ox) / columns;
    const double tileHeight = (planeHeight + (rows - 1) * oy) / rows;

    const QString ownName = getString(Name);
    const QString ownIdentifier = getString(Identifier);
    const QString trimmedName = name.trimmed();
    const bool single = rows < 2 && columns < 2 && !name.isEmpty();
    const bool blending = getBool(EdgeBlending);

    zoHPCProjectionItem prototype(QString(), QString::fromLatin1("plane"));
    prototype.setInt(OverlapX, getInt(OverlapX));
    prototype.setInt(OverlapY, getInt(OverlapY));
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

            const Point3 origin = upperLeft + (j * (tileWidth - ox)) * u + (i * (tileHeight - oy)) * v;
            const Point3 corners[] = {origin + tileHeight * v, origin + tileWidth * u + tileHeight * v,
                                      origin + tileWidth * u};
            int col = X1;
            for (const Point3& corner : corners) {
                plane->setDouble(col++, corner.x);
                plane->setDouble(col++, corner.y);
                plane->setDouble(col++, corner.z);
            }
            if (blending) {
                plane->setDouble(LeftEdge, (j > 0 ? ox : 0.0) / tileWidth);
                plane->setDouble(RightEdge, (j < columns - 1 ? ox : 0.0) / tileWidth);
                // Row 0 is the top row, and still its bottom overlap is called the top edge: the render side
                // reads the pair this way round.
                plane->setDouble(TopEdge, (i < rows - 1 ? oy : 0.0) / tileHeight);
                plane->setDouble(BottomEdge, (i > 0 ? oy : 0.0) / tileHeight);
            }
            planes.append(plane.release());
        }
    }
    addChildren(planes);
}

const zoHPCTreeWidgetItem::ColumnMap& zoHPCProjectionItem::columns(const QString& type)
{
    static const ColumnMap cave =
        mapOf({Name, Type, Rows, Columns, OverlapX, OverlapY, CaveWidth, CaveHeight, CaveDepth, CaveX, CaveY,
               CaveZ, LeftWall, RightWall, TopWall, BottomWall, FrontWall, BackWall, EdgeBlending});
    static const ColumnMap wall = mapOf(
        {Name, Type, RightOffsetX, RightOffsetY, Rows, Columns, OverlapX, OverlapY, Distance, EdgeBlending});
    static const ColumnMap powerwall = mapOf({Name, Type, RightOffsetX, RightOffsetY, Rows, Columns, OverlapX,
                                              OverlapY, Width, Height, Distance, EdgeBlending});
    static const ColumnMap plane = mapOf({Name, Type, Rows, Columns, X1, Y1, Z1, X2, Y2, Z2, X3, Y3, Z3,
                                          EdgeBlending, LeftEdge, RightEdge, TopEdge, BottomEdge});
    static const ColumnMap tile = mapOf({Name, Type, RightOffsetX, RightOffsetY, Row, TileColumn, Rows,
                                         Columns, OverlapX, OverlapY, Distance, EdgeBlending});
    if (type == QLatin1String("cave"))
        return cave;
    if (type == QLatin1String("wall"))
        return wall;
    if (type == QLatin1String("powerwall"))
        return powerwall;
    if (type == QLatin1String("plane"))
        return plane;
    if (type == QLatin1String("tile"))
        return tile;
    static const ColumnMap all = unionMap();
    return all;
}

void zoHPCProjectionItem::setDefaults()
{
    setInt(Rows, 1);
    setInt(Columns, 1);
    setInt(RightOffsetX, 0);
    setInt(RightOffsetY, 0);
    setInt(Row, 1);
    setInt(TileColumn, 1);
    setDouble(OverlapX, 0.0);
    setDouble(OverlapY, 0.0);
    setDouble(CaveWidth, 2000.0);
    setDouble(CaveHeight, 2000.0);
    setDouble(CaveDepth, 2000.0);
    setDouble(CaveX, 0.0);
    setDouble(CaveY, 0.0);
    setDouble(CaveZ, 0.0);
    setDouble(Width, 3000.0);
    setDouble(Height, 2000.0);
    setDouble(Distance, 1500.0);
    static constexpr double CORNERS[] = {-1.0, -1.0, -1.0, 1.0, -1.0, -1.0, 1.0, 1.0, -1.0};
    int col = X1;
    for (const double value : CORNERS)
        setDouble(col++, value);
}

void zoHPCProjectionItem::addWallTiles()
{
    const int rows = getInt(Rows);
    const int columns = getInt(Columns);
    if (rows < 1 || columns < 1 || hasTooManyTiles(1))
        return;
    const QString ownName = getString(Name);
    const QString ownIdentifier = getString(Identifier);

    zoHPCProjectionItem prototype(QString(), QString::fromLatin1("tile"));
    for (const int col : {Rows, Columns, OverlapX, OverlapY, RightOffsetX, RightOffsetY})
        prototype.setInt(col, getInt(col));
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
    if (rows < 1 || columns < 1 || planes < 1 || rows * columns <= MaximumTiles / planes)
        return false;
    zoLog::error(QCoreApplication::translate(
                     "zoHPCProjectionItem",
                     "Projection %1 with %2 x %3 tiles is not laid out: at most %4 tiles are supported.")
                     .arg(getString(Name), QString::number(rows), QString::number(columns),
                          QString::number(MaximumTiles)));
    return true;
}
