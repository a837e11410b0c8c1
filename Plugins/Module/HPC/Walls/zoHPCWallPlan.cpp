#include "zoHPCWallPlan.h"

#include "zoHPCCurvedWall.h"
#include "zoHPCDisplayTables.h"
#include "zoText.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace
{
using Plan = zoHPCWallPlan;

// Of one direction: how many tiles, how large they are together and what neighbours share, all in one unit.
struct Axis
{
    double count;
    double pixels;  // of a tile
    double size;    // mm, of the whole or of a tile; 0 for none
    bool isOfWhole; // the size
    double overlap;
    Plan::Unit unit; // of the overlap
    double pitch;    // mm of a pixel, where there is no size

    double gaps() const { return count > 1 ? count - 1 : 0; }
    double shared() const { return count > 1 ? overlap : 0.0; }

    // Millimetres of a pixel; 0 where nobody said a size.
    double pixelSize() const
    {
        if (!(size > 0.0))
            return pitch;
        if (!isOfWhole)
            return size / pixels;
        return unit == Plan::Unit::Pixels ? size / (count * pixels - gaps() * shared())
                                          : (size + gaps() * shared()) / (count * pixels);
    }
    double overlapMillimetres() const
    {
        if (unit == Plan::Unit::Millimetres)
            return shared();
        // Whole numbers stay whole.
        return size > 0.0 && isOfWhole ? shared() * size / (count * pixels - gaps() * shared())
                                       : shared() * pixelSize();
    }
    double overlapPixels() const
    {
        if (unit == Plan::Unit::Pixels)
            return shared();
        return pixelSize() > 0.0 ? shared() / pixelSize() : 0.0;
    }
    // Millimetres of a tile and of all of them.
    double tileSize() const
    {
        if (size > 0.0)
            return isOfWhole ? (size + gaps() * overlapMillimetres()) / count : size;
        return pixels * pitch;
    }
    double wallSize() const
    {
        return isOfWhole && size > 0.0 ? size : count * tileSize() - gaps() * overlapMillimetres();
    }
    double totalPixels() const { return count * pixels - gaps() * overlapPixels(); }
};

Axis axisOf(const Plan& plan, bool isAcross)
{
    const bool isCave = plan.kind == Plan::Kind::Cave;
    const bool hasSize = plan.kind == Plan::Kind::Power || plan.kind == Plan::Kind::Curved;
    const double said = isCave ? (isAcross ? plan.caveSize.x : plan.caveSize.y)
                               : (isAcross ? plan.size.width() : plan.size.height());
    Axis axis{};
    axis.count = !plan.hasGrid() ? 1 : isAcross ? plan.columns : plan.rows;
    axis.pixels = isAcross ? plan.tilePixels.width() : plan.tilePixels.height();
    axis.size = hasSize || isCave ? said : 0.0;
    axis.isOfWhole = isCave || plan.sizeOf == Plan::SizeOf::Wall;
    axis.overlap = isAcross ? plan.overlap.across : plan.overlap.down;
    axis.unit = plan.overlapUnit;
    axis.pitch = plan.kind == Plan::Kind::Tiled ? plan.pixelPitch : 0.0;
    return axis;
}

Axis across(const Plan& plan)
{
    return axisOf(plan, true);
}

Axis down(const Plan& plan)
{
    return axisOf(plan, false);
}

int caveWallCount(unsigned walls)
{
    int count = 0;
    for (unsigned wall = Plan::LeftWall; wall <= Plan::BackWall; wall <<= 1U)
        count += (walls & wall) != 0 ? 1 : 0;
    return count;
}

auto tied(const Point3& point)
{
    return std::tie(point.x, point.y, point.z);
}

bool areEqual(const Plan::Plane& left, const Plan::Plane& right)
{
    return left.name == right.name && left.size == right.size && tied(left.center) == tied(right.center) &&
           std::tie(left.yaw, left.tilt) == std::tie(right.yaw, right.tilt);
}
} // namespace

zoHPCWallPlan zoHPCWallPlan::of(Kind kind)
{
    zoHPCWallPlan plan;
    plan.kind = kind;
    switch (kind) {
    case Kind::Tiled:
    case Kind::Power:
        break;
    case Kind::Cave:
        plan.columns = plan.rows = 1;
        plan.tilePixels = {1920, 1536};
        plan.viewer = {};
        plan.stereo = Stereo::QuadBuffer;
        break;
    case Kind::Curved:
        plan.columns = 8;
        plan.rows = 3;
        plan.sizeOf = SizeOf::Tile;
        plan.size = {1209.6, 680.4};
        plan.viewer = {0.0, 0.0, plan.radius};
        break;
    case Kind::Planes:
        plan.columns = plan.rows = 1;
        plan.viewer = {};
        plan.planes = planesInARow(3, {1200.0, 675.0}, 0.0);
        break;
    }
    return plan;
}

std::vector<zoHPCWallPlan::Plane> zoHPCWallPlan::planesInARow(int count, const QSizeF& size, double gap)
{
    std::vector<Plane> planes;
    for (int i = 0; i < count; ++i) {
        Plane plane;
        plane.size = size;
        plane.center = {(i - (count - 1) / 2.0) * (size.width() + gap), 0.0, -1500.0};
        planes.push_back(plane);
    }
    return planes;
}

const std::vector<zoHPCWallPlan::StereoMode>& zoHPCWallPlan::stereoModes()
{
    static const std::vector<StereoMode> s_modes{
        {Stereo::None, "none", {"mono"}},
        {Stereo::QuadBuffer, "quad-buffer", {"stereo"}},
        {Stereo::LeftRight, "left-right", {"left", "right"}},
        {Stereo::HorizontalInterlaced, "horizontal-interlaced", {"horizontalinterlaced"}},
        {Stereo::VerticalInterlaced, "vertical-interlaced", {"verticalinterlaced"}},
        {Stereo::SplitLeftRight, "split-left-right", {"splitleftright"}},
        {Stereo::SplitBottomTop, "split-top-bottom", {"splitbottomtop"}},
        {Stereo::RedCyan, "red-cyan", {"redcyan"}},
        {Stereo::BlueYellow, "blue-yellow", {"blueyellow"}},
        {Stereo::GreenMagenta, "green-magenta", {"greenmagenta"}}};
    return s_modes;
}

const zoHPCWallPlan::StereoMode& zoHPCWallPlan::stereoMode() const
{
    const std::vector<StereoMode>& modes = stereoModes();
    const auto found = std::find_if(modes.begin(), modes.end(),
                                    [this](const StereoMode& known) { return known.mode == stereo; });
    return found != modes.end() ? *found : modes.front();
}

QString zoHPCWallPlan::StereoMode::text() const
{
    if (eyes.size() > 1)
        return QCoreApplication::translate("zoHPCWallPlan", "A window for each eye");
    const zoHPCDisplayTables::StereoMode* const row =
        zoHPCDisplayTables::stereoMode(QLatin1String(eyes.front()));
    return row ? QCoreApplication::translate("zoHPCDisplayGUII", row->text) : QString::fromLatin1(word);
}

QString zoHPCWallPlan::title() const
{
    const QString own = name.trimmed();
    if (!own.isEmpty())
        return own;
    // Stands in the document, which is the same in every language.
    if (kind == Kind::Planes)
        return zoText("Plane");
    return kind == Kind::Cave ? zoText("Cave") : zoText("Wall");
}

int zoHPCWallPlan::tileCount() const
{
    // What a person types into two fields may be more than fits.
    constexpr qint64 Most = 1000000000;
    if (!hasGrid())
        return int(std::min(qint64(planes.size()), Most));
    const qint64 walls = kind == Kind::Cave ? caveWallCount(caveWalls) : 1;
    return int(std::min(std::max(0, columns) * qint64(std::max(0, rows)), Most / 16) * walls);
}

int zoHPCWallPlan::windowCount() const
{
    return tileCount() * int(stereoMode().eyes.size());
}

bool zoHPCWallPlan::hasNodesOfEyes() const
{
    return stereoMode().eyes.size() > 1 &&
           (eyeOrder == EyeOrder::OwnNodes || eyeOrder == EyeOrder::LeftNodesFirst);
}

bool zoHPCWallPlan::hasPairsOnNodes() const
{
    return stereoMode().eyes.size() > 1 && eyeOrder == EyeOrder::SameNode;
}

int zoHPCWallPlan::usualWindowsPerNode() const
{
    return windowsPerNode > 0 ? windowsPerNode : hasPairsOnNodes() ? 2 : 1;
}

int zoHPCWallPlan::nodesNeeded(int each) const
{
    const auto roundedUp = [each](int windows) { return (windows + each - 1) / each; };
    const int eyes = int(stereoMode().eyes.size());
    return hasNodesOfEyes() ? eyes * roundedUp(tileCount()) : roundedUp(windowCount());
}

QSizeF zoHPCWallPlan::totalPixels() const
{
    return {across(*this).totalPixels(), down(*this).totalPixels()};
}

QSizeF zoHPCWallPlan::pixelSize() const
{
    return {across(*this).pixelSize(), down(*this).pixelSize()};
}

zoHPCWallPlan::Overlap zoHPCWallPlan::overlapPixels() const
{
    return {across(*this).overlapPixels(), down(*this).overlapPixels()};
}

zoHPCWallPlan::Overlap zoHPCWallPlan::overlapMillimetres() const
{
    return {across(*this).overlapMillimetres(), down(*this).overlapMillimetres()};
}

QSizeF zoHPCWallPlan::tileSize() const
{
    return {across(*this).tileSize(), down(*this).tileSize()};
}

QSizeF zoHPCWallPlan::wallSize() const
{
    return {across(*this).wallSize(), down(*this).wallSize()};
}

double zoHPCWallPlan::curveRadius() const
{
    return curvature == Curvature::Radius
               ? radius
               : zoHPCCurvedWall::radiusOf(tileSize().width(), overlapMillimetres().across, columnAngle);
}

double zoHPCWallPlan::curveAngle() const
{
    return curvature == Curvature::Angle
               ? columnAngle
               : zoHPCCurvedWall::angleOf(tileSize().width(), overlapMillimetres().across, radius);
}

bool zoHPCWallPlan::operator==(const zoHPCWallPlan& other) const
{
    const auto values = [](const zoHPCWallPlan& plan) {
        return std::tie(plan.kind, plan.name, plan.columns, plan.rows, plan.tilePixels, plan.size,
                        plan.sizeOf, plan.pixelPitch, plan.overlap.across, plan.overlap.down,
                        plan.overlapUnit, plan.curvature, plan.radius, plan.columnAngle, plan.caveWalls,
                        plan.stereo, plan.eyeOrder, plan.eyeSeparation, plan.hosts, plan.windowsPerNode);
    };
    return values(*this) == values(other) && tied(viewer) == tied(other.viewer) &&
           tied(caveSize) == tied(other.caveSize) &&
           std::equal(planes.begin(), planes.end(), other.planes.begin(), other.planes.end(), areEqual);
}
