#include "zoHPCWallMistakes.h"

#include "zoHPCCurvedWall.h"
#include "zoHPCDocumentWriter.h"
#include "zoHPCPlane.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCViewportChecks.h"
#include "zoHPCWallProjections.h"

#include <algorithm>
#include <cmath>

namespace
{
using Plan = zoHPCWallPlan;
using Field = Plan::Field;

bool isLength(double value)
{
    return value >= zoHPCWallMistakes::LeastMillimetres && value <= zoHPCWallMistakes::MostMillimetres;
}

bool isPlace(double value)
{
    return std::abs(value) <= zoHPCWallMistakes::MostMillimetres;
}

bool isPlace(const Point3& point)
{
    return isPlace(point.x) && isPlace(point.y) && isPlace(point.z);
}

QString number(double value)
{
    return QString::number(value, 'g', 10);
}

// Of the middle of a cave to one of its walls, and of the viewer toward it.
struct CaveWall
{
    unsigned wall;
    const char* name;
    double (*distance)(const Point3& size);
    double (*viewer)(const Point3& viewer);
};

constexpr CaveWall s_caveWalls[] = {
    {Plan::LeftWall, QT_TRANSLATE_NOOP("zoHPCWallMistakes", "left"), [](const Point3& s) { return s.x / 2; },
     [](const Point3& v) { return -v.x; }},
    {Plan::RightWall, QT_TRANSLATE_NOOP("zoHPCWallMistakes", "right"),
     [](const Point3& s) { return s.x / 2; }, [](const Point3& v) { return v.x; }},
    {Plan::TopWall, QT_TRANSLATE_NOOP("zoHPCWallMistakes", "top"), [](const Point3& s) { return s.y / 2; },
     [](const Point3& v) { return v.y; }},
    {Plan::BottomWall, QT_TRANSLATE_NOOP("zoHPCWallMistakes", "bottom"),
     [](const Point3& s) { return s.y / 2; }, [](const Point3& v) { return -v.y; }},
    {Plan::FrontWall, QT_TRANSLATE_NOOP("zoHPCWallMistakes", "front"),
     [](const Point3& s) { return s.z / 2; }, [](const Point3& v) { return -v.z; }},
    {Plan::BackWall, QT_TRANSLATE_NOOP("zoHPCWallMistakes", "back"), [](const Point3& s) { return s.z / 2; },
     [](const Point3& v) { return v.z; }},
};

bool isWhole(double value)
{
    return value == std::floor(value);
}

// One number where both are equal.
QString overlapText(const Plan::Overlap& overlap)
{
    const QString across = number(overlap.across);
    const QString down = number(overlap.down);
    return across == down ? across : across + QLatin1Char('x') + down;
}
} // namespace

zoHPCWallMistakes::List zoHPCWallMistakes::find(const zoHPCWallPlan& plan)
{
    zoHPCWallMistakes mistakes(plan);
    mistakes.checkTiles();
    // Numbers that the rest divides by.
    if (mistakes.hasMistakes())
        return mistakes.m_list;
    mistakes.checkStereo();
    mistakes.checkName();
    switch (plan.kind) {
    case Plan::Kind::Tiled:
        mistakes.checkTiled();
        break;
    case Plan::Kind::Cave:
        mistakes.checkCave();
        break;
    case Plan::Kind::Power:
    case Plan::Kind::Curved:
        mistakes.checkSize();
        break;
    case Plan::Kind::Planes:
        mistakes.checkPlanes();
        break;
    }
    if (!mistakes.hasMistakes() && plan.hasGrid())
        mistakes.checkOverlap();
    if (!mistakes.hasMistakes() && plan.kind == Plan::Kind::Curved)
        mistakes.checkCurve();
    if (!mistakes.hasMistakes())
        mistakes.checkViewer();
    return mistakes.m_list;
}

zoHPCWallMistakes::List zoHPCWallMistakes::findDoubts(const zoHPCWallPlan& plan)
{
    zoHPCWallMistakes doubts(plan);
    switch (plan.kind) {
    case Plan::Kind::Cave:
        doubts.doubtViewerInCave();
        break;
    case Plan::Kind::Planes:
        doubts.doubtViewerOfPlanes();
        break;
    case Plan::Kind::Power:
    case Plan::Kind::Curved:
        doubts.doubtSize();
        break;
    case Plan::Kind::Tiled:
        break;
    }
    return doubts.m_list;
}

void zoHPCWallMistakes::checkTiles()
{
    const auto isCount = [](int count, int most) { return count >= 1 && count <= most; };
    if (m_plan.hasGrid()) {
        const QString tiles =
            QString::number(m_plan.columns) + QLatin1Char('x') + QString::number(m_plan.rows);
        if (!isCount(m_plan.columns, MostInARow) || !isCount(m_plan.rows, MostInARow))
            add(Field::Tiles, tr("%1 tiles cannot be: 1 to %2 in a row and in a column")
                                  .arg(tiles, QString::number(MostInARow)));
        else if (m_plan.tileCount() > zoHPCProjectionItem::MaximumTiles)
            add(Field::Tiles, tr("%1 tiles are more than %2")
                                  .arg(tiles, QString::number(zoHPCProjectionItem::MaximumTiles)));
        else
            checkWindows(Field::Tiles);
    }
    if (!isCount(m_plan.tilePixels.width(), MostPixels) || !isCount(m_plan.tilePixels.height(), MostPixels))
        add(Field::TilePixels, tr("%1x%2 pixels cannot be: 1 to %3 each way")
                                   .arg(m_plan.tilePixels.width())
                                   .arg(m_plan.tilePixels.height())
                                   .arg(MostPixels));
}

void zoHPCWallMistakes::checkWindows(Field field)
{
    if (m_plan.windowCount() > Plan::MaximumWindows)
        add(field, tr("%1 windows are more than %2")
                       .arg(QString::number(m_plan.windowCount()), QString::number(Plan::MaximumWindows)));
}

void zoHPCWallMistakes::checkOverlap()
{
    // A size of the whole that bezels use up has tiles of no size, and pixels of none.
    const QSizeF tile = m_plan.tileSize();
    const bool hasSize = m_plan.kind == Plan::Kind::Power || m_plan.kind == Plan::Kind::Curved;
    if (hasSize && (!(tile.width() > 0.0) || !(tile.height() > 0.0))) {
        add(Field::Overlap, tr("nothing of the size is left for pictures"));
        return;
    }
    const Plan::Overlap shared = m_plan.overlapPixels();
    if (!(std::abs(shared.across) <= MostPixels) || !(std::abs(shared.down) <= MostPixels)) {
        add(Field::Overlap, tr("more than %1 pixels").arg(MostPixels));
        return;
    }
    const QSize size = m_plan.tilePixels;
    const bool isInPixels = m_plan.overlapUnit == Plan::Unit::Pixels;
    if (shared.across >= size.width() || shared.down >= size.height())
        add(Field::Overlap, tr("tiles of %1x%2 pixels cannot share %3")
                                .arg(QString::number(size.width()), QString::number(size.height()),
                                     overlapText(isInPixels ? m_plan.overlap : shared)));
}

void zoHPCWallMistakes::checkTiled()
{
    const Plan::Overlap& overlap = m_plan.overlap;
    if (m_plan.pixelPitch != 0.0 && !(m_plan.pixelPitch >= 0.001 && m_plan.pixelPitch <= 1000.0))
        add(Field::PixelPitch, tr("a pixel is 0.001 to 1000 mm wide"));
    else if (m_plan.overlapUnit == Plan::Unit::Millimetres && m_plan.pixelPitch == 0.0 &&
             (overlap.across != 0.0 || overlap.down != 0.0))
        add(Field::PixelPitch, tr("how large is a pixel? Millimetres between tiles need it"));
    if (m_plan.overlapUnit == Plan::Unit::Pixels && (!isWhole(overlap.across) || !isWhole(overlap.down)))
        add(Field::Overlap, tr("pixels are whole numbers"));
}

void zoHPCWallMistakes::checkSize()
{
    if (!isLength(m_plan.size.width()) || !isLength(m_plan.size.height()))
        add(Field::Size, sizes());
}

void zoHPCWallMistakes::checkCave()
{
    if (!isLength(m_plan.caveSize.x) || !isLength(m_plan.caveSize.y) || !isLength(m_plan.caveSize.z))
        add(Field::CaveSize, sizes());
    if (m_plan.tileCount() == 0)
        add(Field::CaveWalls, tr("a cave has one wall at least"));
    const bool isShared = m_plan.overlap.across != 0.0 || m_plan.overlap.down != 0.0;
    if (isShared && m_plan.columns == 1 && m_plan.rows == 1)
        add(Field::Overlap, tr("the walls of a cave share no pixels"));
}

void zoHPCWallMistakes::checkCurve()
{
    const double angle = m_plan.columnAngle;
    if (m_plan.curvature == Plan::Curvature::Radius && !isLength(m_plan.radius)) {
        add(Field::Curvature,
            tr("a radius is %1 to %2 mm").arg(number(LeastMillimetres), number(MostMillimetres)));
        return;
    }
    if (m_plan.curvature == Plan::Curvature::Angle && !(angle > 0.0 && angle <= 120.0)) {
        add(Field::Curvature, tr("an angle between columns is more than 0 and at most 120 degrees"));
        return;
    }
    const QSizeF tile = m_plan.tileSize();
    const Plan::Overlap overlap = m_plan.overlapMillimetres();
    const double radius = m_plan.curveRadius();
    if (!(radius <= MostMillimetres)) {
        add(Field::Curvature,
            tr("so small an angle takes a radius of more than %1 mm").arg(number(MostMillimetres)));
        return;
    }
    if (!(tile.width() < 2.0 * radius) || !(-overlap.across < 2.0 * radius)) {
        add(Field::Curvature,
            tr("tiles of %1 mm do not stand on a circle with a radius of %2 mm")
                .arg(QString::number(tile.width(), 'g', 6), QString::number(radius, 'g', 6)));
        return;
    }
    const zoHPCCurvedWall wall(m_plan.columns, m_plan.rows, tile, overlap.across, overlap.down, radius);
    if (!wall.isPossible())
        add(Field::Curvature,
            tr("%1 columns with %2 degrees from one to the next do not fit into a circle")
                .arg(QString::number(m_plan.columns), QString::number(wall.angle(), 'g', 4)));
}

void zoHPCWallMistakes::checkPlanes()
{
    if (m_plan.planes.empty())
        add(Field::Planes, tr("one plane at least"));
    if (m_plan.planes.size() > std::size_t(zoHPCProjectionItem::MaximumTiles))
        add(Field::Planes, tr("%1 planes are more than %2")
                               .arg(QString::number(m_plan.planes.size()),
                                    QString::number(zoHPCProjectionItem::MaximumTiles)));
    else
        checkWindows(Field::Planes);
    for (const Plan::Plane& plane : m_plan.planes) {
        if (!isLength(plane.size.width()) || !isLength(plane.size.height()))
            add(Field::Planes, sizes());
        else if (!(std::abs(plane.yaw) <= MostDegrees) || !(std::abs(plane.tilt) <= MostDegrees))
            add(Field::Planes, tr("planes are turned and tilted by -%1 to %1 degrees").arg(MostDegrees));
        else if (!isPlace(plane.center))
            add(Field::Planes, tr("a place is at most %1 mm away").arg(number(MostMillimetres)));
        else
            continue;
        return;
    }
}

void zoHPCWallMistakes::checkViewer()
{
    const Point3& viewer = m_plan.viewer;
    if (!isPlace(viewer)) {
        add(Field::Viewer, tr("a place is at most %1 mm away").arg(number(MostMillimetres)));
        return;
    }
    if (m_plan.kind == Plan::Kind::Cave || m_plan.kind == Plan::Kind::Planes)
        return;
    if (!(viewer.z >= LeastDistance)) {
        add(Field::Viewer,
            tr("the viewer is before the wall: %1 mm away or more").arg(number(LeastDistance)));
        return;
    }
    if (m_plan.kind == Plan::Kind::Tiled && (viewer.x != 0.0 || viewer.y != 0.0))
        add(Field::Viewer,
            tr("who looks at a wall without a size in millimetres is straight before its middle"));
    if (m_plan.kind == Plan::Kind::Curved)
        checkViewerOfColumns();
}

void zoHPCWallMistakes::checkViewerOfColumns()
{
    const Plan::Overlap overlap = m_plan.overlapMillimetres();
    const zoHPCCurvedWall wall(m_plan.columns, 1, m_plan.tileSize(), overlap.across, 0.0,
                               m_plan.curveRadius());
    for (int column = 1; column <= m_plan.columns; ++column) {
        const double distance = wall.tile(1, column).distanceInFront(m_plan.viewer);
        if (distance >= LeastDistance)
            continue;
        add(Field::Viewer,
            distance > -LeastDistance
                ? tr("the viewer is in the plane of column %1: nearer to the middle he sees it").arg(column)
                : tr("column %1 turns its back to the viewer").arg(column));
        return;
    }
}

// Behind a wall he would see it mirrored, in its plane not at all. Both may be meant: the tracking may have its origin in
// the floor.
void zoHPCWallMistakes::doubtViewerInCave()
{
    for (const CaveWall& wall : s_caveWalls) {
        const double distance = wall.distance(m_plan.caveSize);
        const double before = distance - wall.viewer(m_plan.viewer);
        if ((m_plan.caveWalls & wall.wall) == 0 || before >= LeastDistance)
            continue;
        const QString name = tr(wall.name);
        add(Field::Viewer,
            before > -LeastDistance
                ? tr("the viewer is in the plane of the wall \"%1\": inside he is less than %2 mm from the "
                     "middle of the cave toward it")
                      .arg(name, number(distance))
                : tr("the viewer is outside the cave, behind its wall \"%1\": inside he is less than %2 mm "
                     "from the middle of the cave toward it")
                      .arg(name, number(distance)));
        return;
    }
    const auto isOutside = [this](const CaveWall& wall) {
        return wall.viewer(m_plan.viewer) >= wall.distance(m_plan.caveSize);
    };
    if (std::any_of(std::begin(s_caveWalls), std::end(s_caveWalls), isOutside))
        add(Field::Viewer, tr("the viewer is outside the cave, where it has no wall: inside he is less than "
                              "%1, %2 and %3 mm from its middle to the side, upward and backward")
                               .arg(number(m_plan.caveSize.x / 2), number(m_plan.caveSize.y / 2),
                                    number(m_plan.caveSize.z / 2)));
}

// By the shape of pixels, which is seldom quite square: that of a tile may have been typed for the whole.
void zoHPCWallMistakes::doubtSize()
{
    const auto stretch = [](const Plan& plan) {
        const double factor = plan.pixelSize().width() / plan.pixelSize().height();
        return factor > 1.0 ? factor : 1.0 / factor;
    };
    constexpr double Usual = 1.15;
    const double factor = stretch(m_plan);
    const bool isWhole = m_plan.sizeOf == Plan::SizeOf::Wall;
    Plan other = m_plan;
    other.sizeOf = isWhole ? Plan::SizeOf::Tile : Plan::SizeOf::Wall;
    if (!(factor > Usual) || stretch(other) > zoHPCViewportChecks::SmallestStretch)
        return;
    const bool isWide = m_plan.pixelSize().width() > m_plan.pixelSize().height();
    const QString percent = QString::number(std::lround(100.0 * (factor - 1.0)));
    add(Field::Size,
        (isWide ? tr("pictures would be %1 % too wide") : tr("pictures would be %1 % too high"))
                .arg(percent) +
            (isWhole ? tr("; is it the size of one tile?") : tr("; is it the size of the whole wall?")));
}

void zoHPCWallMistakes::doubtViewerOfPlanes()
{
    const std::vector<zoHPCPlane> planes = zoHPCWallProjections::planesOf(m_plan);
    for (std::size_t i = 0; i < planes.size(); ++i) {
        const QString name = zoHPCWallProjections::nameOf(m_plan, int(i));
        if (std::abs(planes[i].distanceInFront(m_plan.viewer)) >= LeastDistance)
            continue;
        add(Field::Viewer,
            tr("the viewer is in the plane of \"%1\", which he sees from its edge: he is before it")
                .arg(name));
        return;
    }
}

void zoHPCWallMistakes::checkName()
{
    if (qint64(m_plan.title().size()) * m_plan.tileCount() > zoHPCProjectionItem::MaximumNameCharacters)
        add(Field::Name, tr("too long a name for %1 tiles, which repeat it").arg(m_plan.tileCount()));
    const int at = zoHPCDocumentWriter::findUnwritable(m_plan.name);
    if (at >= 0)
        add(Field::Name, unwritable(m_plan.name, at));
    for (std::size_t i = 0; i < m_plan.planes.size() && m_plan.kind == Plan::Kind::Planes; ++i) {
        const QString& name = m_plan.planes[i].name;
        const int place = zoHPCDocumentWriter::findUnwritable(name);
        if (place < 0)
            continue;
        add(Field::Planes, tr("name of plane %1, %2").arg(QString::number(i + 1), unwritable(name, place)));
        return;
    }
}

QString zoHPCWallMistakes::unwritable(const QString& text, int at)
{
    constexpr int Digits = 4;
    constexpr int Hexadecimal = 16;
    return tr("character %1 is U+%2, which a document cannot hold")
        .arg(QString::number(at + 1), QString::number(text.at(at).unicode(), Hexadecimal)
                                          .toUpper()
                                          .rightJustified(Digits, QLatin1Char('0')));
}

QString zoHPCWallMistakes::sizes()
{
    return tr("a size is %1 to %2 mm").arg(number(LeastMillimetres), number(MostMillimetres));
}

void zoHPCWallMistakes::checkStereo()
{
    if (m_plan.windowsPerNode < 0 || m_plan.windowsPerNode > zoHPCWallPlan::MaximumScreens)
        add(Field::WindowsPerNode, tr("a node has 1 to %1 screens").arg(zoHPCWallPlan::MaximumScreens));
    if (!(m_plan.eyeSeparation >= 0.0 && m_plan.eyeSeparation <= MostBetweenEyes))
        add(Field::EyeSeparation, tr("eyes are 0 to %1 mm apart").arg(number(MostBetweenEyes)));
}
