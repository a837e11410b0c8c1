#include "zoHPCProjectionType.h"

#include "zoHPCProjectionColumns.h"

#include <QtGlobal>

#include <algorithm>
#include <set>

namespace
{
using P = zoHPCProjectionColumns;
using Kind = zoHPCProjectionType::Kind;

zoHPCProjectionType wallRow()
{
    zoHPCProjectionType type{};
    type.kind = Kind::Wall;
    type.value = "wall";
    type.text = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Wall (No head tracking)");
    type.icon = type.choiceIcon = "Iconset/TiledWallOnNormal.svg";
    type.overlapUnit = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "[pixel]");
    type.tileLayout = type.distance = type.rightOffset = true;
    type.isInPixels = true;
    type.columns = {P::Name,    P::Type,     P::RightOffsetX, P::RightOffsetY, P::Rows,
                    P::Columns, P::OverlapX, P::OverlapY,     P::Distance,     P::EdgeBlending};
    type.lengths = {P::Distance};
    return type;
}

zoHPCProjectionType powerWallRow()
{
    zoHPCProjectionType type{};
    type.kind = Kind::PowerWall;
    type.value = "powerwall";
    type.text = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Power Wall");
    type.choiceIcon = "Iconset/ProjectionOnNormal.svg";
    type.overlapUnit = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "[mm]");
    type.tileLayout = type.area = type.distance = type.rightOffset = true;
    type.overlapIsLength = true;
    type.columns = {P::Name,     P::Type,     P::RightOffsetX, P::RightOffsetY, P::Rows,     P::Columns,
                    P::OverlapX, P::OverlapY, P::Width,        P::Height,       P::Distance, P::EdgeBlending};
    type.lengths = {P::Width, P::Height, P::Distance};
    type.sizes = {P::Width, P::Height, P::Distance};
    return type;
}

zoHPCProjectionType caveRow()
{
    zoHPCProjectionType type{};
    type.kind = Kind::Cave;
    type.value = "cave";
    type.text = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Cave");
    type.icon = type.choiceIcon = "Iconset/CaveOnNormal.svg";
    type.overlapUnit = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "[mm]");
    type.tileLayout = type.cave = true;
    type.overlapIsLength = true;
    type.columns = {P::Name,       P::Type,      P::Rows,       P::Columns,     P::OverlapX,
                    P::OverlapY,   P::CaveWidth, P::CaveHeight, P::CaveDepth,   P::CaveX,
                    P::CaveY,      P::CaveZ,     P::LeftWall,   P::RightWall,   P::TopWall,
                    P::BottomWall, P::FrontWall, P::BackWall,   P::EdgeBlending};
    type.lengths = {P::CaveWidth, P::CaveHeight, P::CaveDepth, P::CaveX, P::CaveY, P::CaveZ};
    type.sizes = {P::CaveWidth, P::CaveHeight, P::CaveDepth};
    return type;
}

zoHPCProjectionType planeRow()
{
    zoHPCProjectionType type{};
    type.kind = Kind::Plane;
    type.value = "plane";
    type.text = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Plane");
    type.icon = type.choiceIcon = "Iconset/ProjectionOnNormal.svg";
    type.overlapUnit = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "[mm]");
    type.corners = type.edges = true;
    type.columns = {P::Name, P::Type,         P::Rows,     P::Columns,   P::X1,      P::Y1,
                    P::Z1,   P::X2,           P::Y2,       P::Z2,        P::X3,      P::Y3,
                    P::Z3,   P::EdgeBlending, P::LeftEdge, P::RightEdge, P::TopEdge, P::BottomEdge};
    type.lengths = {P::X1, P::Y1, P::Z1, P::X2, P::Y2, P::Z2, P::X3, P::Y3, P::Z3};
    return type;
}

zoHPCProjectionType tileRow()
{
    zoHPCProjectionType type{};
    type.kind = Kind::Tile;
    type.value = "tile";
    type.text = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Tile");
    type.icon = type.choiceIcon = "Iconset/WallTileOnNormal.svg";
    type.overlapUnit = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "[mm]");
    type.tilePlace = type.tileLayout = type.distance = type.rightOffset = true;
    type.isInPixels = true;
    type.columns = {P::Name, P::Type,    P::RightOffsetX, P::RightOffsetY, P::Row,      P::TileColumn,
                    P::Rows, P::Columns, P::OverlapX,     P::OverlapY,     P::Distance, P::EdgeBlending};
    return type;
}

zoHPCProjectionType otherRow()
{
    zoHPCProjectionType type{};
    type.kind = Kind::Other;
    type.value = type.text = type.overlapUnit = "";
    std::set<int> columns;
    for (const zoHPCProjectionType& known : zoHPCProjectionType::all())
        columns.insert(known.columns.begin(), known.columns.end());
    type.columns.assign(columns.begin(), columns.end());
    return type;
}

template <class Matches>
const zoHPCProjectionType& find(Matches matches)
{
    static const zoHPCProjectionType s_other = otherRow();
    const std::vector<zoHPCProjectionType>& types = zoHPCProjectionType::all();
    const auto found = std::find_if(types.begin(), types.end(), matches);
    return found != types.end() ? *found : s_other;
}
} // namespace

const std::vector<zoHPCProjectionType>& zoHPCProjectionType::all()
{
    static const std::vector<zoHPCProjectionType> s_types{wallRow(), powerWallRow(), caveRow(), planeRow(),
                                                          tileRow()};
    return s_types;
}

const zoHPCProjectionType& zoHPCProjectionType::of(const QString& word)
{
    return find([&word](const zoHPCProjectionType& type) { return word == QLatin1String(type.value); });
}

const zoHPCProjectionType& zoHPCProjectionType::of(Kind kind)
{
    return find([kind](const zoHPCProjectionType& type) { return type.kind == kind; });
}
