#include "zoWallOptions.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace
{
using Plan = zoHPCWallPlan;
using Kind = Plan::Kind;
using Field = Plan::Field;

// Numbers separated by "x" (or, for places, by commas); false when they are not as many as asked for.
bool readNumbers(const QString& text, const char* separator, std::size_t count, std::vector<double>& numbers)
{
    numbers.clear();
    const QStringList parts = text.split(QLatin1String(separator));
    for (const QString& part : parts) {
        bool isNumber = false;
        const double number = part.trimmed().toDouble(&isNumber);
        if (!isNumber || !std::isfinite(number))
            return false;
        numbers.push_back(number);
    }
    return numbers.size() == count;
}

bool areWhole(const std::vector<double>& numbers, double minimum, double maximum)
{
    return std::all_of(numbers.begin(), numbers.end(), [&](double number) {
        return number >= minimum && number <= maximum && number == std::floor(number);
    });
}

// "120", "120x60", "12mm", "12x14mm", "120px": one number holds across and down.
struct Measure
{
    double across = 0.0;
    double down = 0.0;
    bool isPair = false;
    QString unit; // empty when none is said

    bool read(const QString& text)
    {
        static const QRegularExpression pattern(
            QStringLiteral("^\\s*([^\\smpx]+)\\s*(mm|px)?(?:x\\s*([^\\smpx]+)\\s*(mm|px)?)?\\s*$"));
        const QRegularExpressionMatch match = pattern.match(text);
        bool isNumber = false;
        across = down = match.captured(1).toDouble(&isNumber);
        isPair = !match.captured(3).isEmpty();
        bool isOther = true;
        if (isPair)
            down = match.captured(3).toDouble(&isOther);
        const QString first = match.captured(2);
        unit = isPair ? match.captured(4) : first;
        const bool isOneUnit = !isPair || first.isEmpty() || first == unit;
        return isNumber && isOther && isOneUnit && std::isfinite(across) && std::isfinite(down);
    }
};

struct Named
{
    const char* name;
    unsigned value;
};

constexpr Named s_caveWalls[] = {{"left", Plan::LeftWall},   {"right", Plan::RightWall},
                                 {"top", Plan::TopWall},     {"bottom", Plan::BottomWall},
                                 {"front", Plan::FrontWall}, {"back", Plan::BackWall}};
constexpr Named s_eyeOrders[] = {{"in-turn", unsigned(Plan::EyeOrder::Alternating)},
                                 {"paired", unsigned(Plan::EyeOrder::SameNode)},
                                 {"apart", unsigned(Plan::EyeOrder::OwnNodes)},
                                 {"left-first", unsigned(Plan::EyeOrder::LeftNodesFirst)}};

template <class Table>
const Named* find(const Table& table, const QString& name)
{
    const auto found = std::find_if(std::begin(table), std::end(table),
                                    [&](const Named& known) { return name == QLatin1String(known.name); });
    return found == std::end(table) ? nullptr : found;
}

template <class Table>
QStringList namesOf(const Table& table)
{
    QStringList names;
    for (const Named& row : table)
        names << QLatin1String(row.name);
    return names;
}

struct OptionOfKinds
{
    const char* option;
    std::vector<Kind> kinds;
    const char* home; // which kinds these are
};

const std::vector<OptionOfKinds>& optionsOfKinds()
{
    static const std::vector<OptionOfKinds> s_options{
        {"overlap", {Kind::Tiled, Kind::Power, Kind::Curved, Kind::Cave}, "walls"},
        {"bezel", {Kind::Tiled, Kind::Power, Kind::Curved, Kind::Cave}, "walls"},
        {"pixel-pitch", {Kind::Tiled, Kind::Power}, "walls"},
        {"size", {Kind::Tiled, Kind::Power, Kind::Curved}, "walls"},
        {"tile-size", {Kind::Tiled, Kind::Power, Kind::Curved}, "walls"},
        {"distance", {Kind::Tiled, Kind::Power, Kind::Curved}, "walls"},
        {"walls", {Kind::Cave}, "caves"},
        {"center", {Kind::Cave}, "caves"},
        {"grid", {Kind::Cave}, "caves"},
        {"radius", {Kind::Curved}, "curved walls"},
        {"angle", {Kind::Curved}, "curved walls"}};
    return s_options;
}
} // namespace

// long: one entry per option
void zoWallOptions::add(QCommandLineParser& parser)
{
    const auto option = [&parser](const char* name, const QString& text, const QString& value,
                                  const char* fallback = "") {
        parser.addOption({QLatin1String(name), text, value, QLatin1String(fallback)});
    };
    option("wall", tr("A wall of <columns>x<rows> tiles."), tr("CxR"));
    option("curved",
           tr("A curved wall of <columns>x<rows> flat tiles, whose corners stand on a cylinder; needs "
              "--tile-size or --size, and --radius or --angle."),
           tr("CxR"));
    option("cave", tr("A cave of <width>x<height>x<depth> in millimetres."), tr("WxHxD"));
    option("plane",
           tr("A free plane, once for each: [<name>=]<width>x<height>@<x,y,z>[,<yaw>[,<tilt>]] with the "
              "place of "
              "its center in millimetres and degrees to turn it: yaw 90 stands at the left hand, tilt 90 "
              "lies on "
              "the floor."),
           tr("plane"));
    option("grid", tr("Tiles of each wall of a cave, <columns>x<rows> (default 1x1)."), tr("CxR"), "1x1");
    option("tile", tr("Pixels of one tile (default 1920x1080)."), tr("WxH"), "1920x1080");
    option(
        "overlap",
        tr("Pixels that neighbouring tiles share, to be blended; <across>x<down> when they differ. Below 0: "
           "pixels that lie hidden between them. In millimetres with mm: 40mm, 40x25mm."),
        tr("N"), "0");
    option(
        "bezel",
        tr("Millimetres from picture to picture of neighbouring tiles, in place of an overlap; needs --size, "
           "--tile-size or --pixel-pitch. In pixels with px: 12x14px."),
        tr("WxH"));
    option("pixel-pitch", tr("Millimetres of a pixel, for a --bezel of a wall without size."), tr("N"));
    option(
        "size",
        tr("Millimetres of the whole wall, of a curved one as if it stood in one plane. Makes a wall a power "
           "wall for tracked viewers."),
        tr("WxH"));
    option("tile-size", tr("Millimetres of the picture of one tile, in place of --size."), tr("WxH"));
    option("radius", tr("Millimetres of the circle that a curved wall is part of."), tr("N"));
    option("angle", tr("Degrees between neighbouring columns of a curved wall, in place of --radius."),
           tr("N"));
    option("distance",
           tr("Millimetres from the viewer to the wall (default 1500; of a curved wall its radius)."),
           tr("N"), "1500");
    option("viewer",
           tr("Millimetres of the viewer from the middle of the wall to the right, upward and toward him, in "
              "place of --distance; from the middle of a cave, in place of --center; from the origin of "
              "planes."),
           tr("x,y,z"));
    option("walls",
           tr("Walls of the cave, of left,right,top,bottom,front,back (default left,right,bottom,front)."),
           tr("list"), "left,right,bottom,front");
    option("center", tr("Center of the cave in millimetres (default 0,0,0)."), tr("x,y,z"), "0,0,0");
    option("stereo",
           tr("none (default), quad-buffer, left-right: a window of its own for each eye, or a mode of one "
              "window: %1.")
               .arg(stereoWords().mid(3).join(QStringLiteral(", "))),
           tr("mode"), "none");
    option(
        "eyes",
        tr("With left-right: windows for both eyes in turn (default), paired on one node, apart on nodes of "
           "their own, or all of the left eye first and then those of the right one on other nodes."),
        namesOf(s_eyeOrders).join(QLatin1Char('|')), "in-turn");
    option("eye-separation", tr("Millimetres between the eyes (default 65)."), tr("N"), "65");
    option("windows-per-node", tr("Screens of each node. Without it, one, or as many as it takes."), tr("N"));
    option("name", tr("Name of the wall (default Wall, Cave or Plane)."), tr("text"));
}

QStringList zoWallOptions::stereoWords()
{
    QStringList words;
    for (const Plan::StereoMode& mode : Plan::stereoModes())
        words << QLatin1String(mode.word);
    return words;
}

bool zoWallOptions::read()
{
    return readKind() && refuseOthers() && readPixels() && readOverlap() && readBezel() && readStereo() &&
           readWindows() && readSize() && checkPixelPitch() && readGrid() && readCurve() && readCave() &&
           readPlanes() && readViewer();
}

bool zoWallOptions::refuse(const QString& reason)
{
    m_reason = reason;
    return false;
}

bool zoWallOptions::refuseValue(const char* option, const QString& expected)
{
    return refuse(tr("--%1: \"%2\" is no %3").arg(QLatin1String(option), value(option), expected));
}

bool zoWallOptions::readKind()
{
    const bool isWall = isSet("wall");
    const bool isCurved = isSet("curved");
    const bool isCave = isSet("cave");
    const bool arePlanes = isSet("plane");
    if (int(isWall) + int(isCurved) + int(isCave) + int(arePlanes) != 1)
        return refuse(tr("either --wall, --curved, --cave or --plane"));
    const bool hasSize = isSet("size") || isSet("tile-size");
    m_plan.kind = isCurved    ? Kind::Curved
                  : isCave    ? Kind::Cave
                  : arePlanes ? Kind::Planes
                  : hasSize   ? Kind::Power
                              : Kind::Tiled;
    m_plan.name = value("name");
    return true;
}

bool zoWallOptions::refuseOthers()
{
    if (m_plan.kind == Kind::Cave && !isSet("grid") && (isSet("overlap") || isSet("bezel")))
        return refuse(tr("--%1: the walls of a cave share no pixels")
                          .arg(isSet("overlap") ? QStringLiteral("overlap") : QStringLiteral("bezel")));
    for (const OptionOfKinds& row : optionsOfKinds()) {
        const bool isOwn = std::find(row.kinds.begin(), row.kinds.end(), m_plan.kind) != row.kinds.end();
        if (!isOwn && isSet(row.option))
            return refuse(tr("--%1 is for %2").arg(QLatin1String(row.option), QLatin1String(row.home)));
    }
    return true;
}

bool zoWallOptions::readPixels()
{
    std::vector<double> tile;
    if (!readNumbers(value("tile"), "x", 2, tile) || !areWhole(tile, 1, 100000))
        return refuseValue("tile", tr("size in pixels such as 1920x1080"));
    m_plan.tilePixels = QSize(int(tile[0]), int(tile[1]));
    return true;
}

bool zoWallOptions::readOverlap()
{
    Measure overlap;
    const bool isRead = overlap.read(value("overlap"));
    const bool isLength = overlap.unit == QLatin1String("mm");
    if (!isRead || (!isLength && !areWhole({overlap.across, overlap.down}, -100000, 100000)))
        return refuseValue("overlap", isRead && overlap.unit.isEmpty() ? tr("number of pixels")
                                      : isRead                         ? tr("whole number of pixels")
                                                                       : tr("number of pixels"));
    m_plan.overlap = {overlap.across, overlap.down};
    m_plan.overlapUnit = isLength ? Plan::Unit::Millimetres : Plan::Unit::Pixels;
    return true;
}

// As an overlap below 0.
bool zoWallOptions::readBezel()
{
    if (!isSet("bezel"))
        return true;
    Measure bezel;
    if (!bezel.read(value("bezel")) || (!bezel.isPair && bezel.unit.isEmpty()) || bezel.across < 0 ||
        bezel.down < 0 || bezel.across > 100000 || bezel.down > 100000)
        return refuseValue("bezel", tr("size in millimetres such as 12x14"));
    if (isSet("overlap"))
        return refuse(tr("--bezel and --overlap exclude each other"));
    m_plan.overlap = {0.0 - bezel.across, 0.0 - bezel.down};
    m_plan.overlapUnit = bezel.unit == QLatin1String("px") ? Plan::Unit::Pixels : Plan::Unit::Millimetres;
    return true;
}

bool zoWallOptions::checkPixelPitch()
{
    const bool hasPitch = isSet("pixel-pitch");
    const bool hasSize = m_plan.kind != Kind::Tiled;
    const bool isLength = m_plan.overlapUnit == Plan::Unit::Millimetres;
    if (hasPitch && !isLength)
        return refuse(tr("--pixel-pitch needs --bezel"));
    if (hasPitch && hasSize)
        return refuse(tr("--%1 and --pixel-pitch exclude each other")
                          .arg(isSet("tile-size") ? QStringLiteral("tile-size") : QStringLiteral("size")));
    if (isLength && !hasPitch && !hasSize)
        return refuse(tr("--%1 needs --size or --pixel-pitch, which say how large a pixel is")
                          .arg(isSet("bezel") ? QStringLiteral("bezel") : QStringLiteral("overlap")));
    return readPixelPitch();
}

bool zoWallOptions::readPixelPitch()
{
    std::vector<double> pitch;
    if (!isSet("pixel-pitch"))
        return true;
    if (!readNumbers(value("pixel-pitch"), "x", 1, pitch) || pitch[0] < 0.001)
        return refuseValue("pixel-pitch", tr("number of millimetres"));
    m_plan.pixelPitch = pitch[0];
    return true;
}

bool zoWallOptions::readSize()
{
    if (m_plan.kind != Kind::Power && m_plan.kind != Kind::Curved)
        return true;
    if (isSet("size") == isSet("tile-size"))
        return refuse(isSet("size") ? tr("--size and --tile-size exclude each other")
                                    : tr("--curved needs --tile-size or --size"));
    const char* const option = isSet("size") ? "size" : "tile-size";
    std::vector<double> size;
    if (!readNumbers(value(option), "x", 2, size) || size[0] <= 0 || size[1] <= 0)
        return refuseValue(option, tr("size in millimetres such as 3600x2000"));
    m_plan.size = QSizeF(size[0], size[1]);
    m_plan.sizeOf = isSet("size") ? Plan::SizeOf::Wall : Plan::SizeOf::Tile;
    return true;
}

bool zoWallOptions::readGrid()
{
    if (!m_plan.hasGrid())
        return true;
    const char* const option = isSet("wall") ? "wall" : isSet("curved") ? "curved" : "grid";
    std::vector<double> tiles;
    if (!readNumbers(value(option), "x", 2, tiles) || !areWhole(tiles, 1, 1000))
        return refuseValue(option, tr("number of columns and rows such as 3x2"));
    m_plan.columns = int(tiles[0]);
    m_plan.rows = int(tiles[1]);
    return true;
}

bool zoWallOptions::readCurve()
{
    if (m_plan.kind != Kind::Curved)
        return true;
    if (isSet("radius") == isSet("angle"))
        return refuse(isSet("radius") ? tr("--radius and --angle exclude each other")
                                      : tr("--curved needs --radius or --angle"));
    std::vector<double> number;
    if (isSet("radius")) {
        if (!readNumbers(value("radius"), "x", 1, number) || number[0] <= 0)
            return refuseValue("radius", tr("number of millimetres"));
        m_plan.curvature = Plan::Curvature::Radius;
        m_plan.radius = number[0];
        return true;
    }
    if (!readNumbers(value("angle"), "x", 1, number) || number[0] <= 0)
        return refuseValue("angle", tr("number of degrees"));
    m_plan.curvature = Plan::Curvature::Angle;
    m_plan.columnAngle = number[0];
    return true;
}

bool zoWallOptions::readCave()
{
    if (m_plan.kind != Kind::Cave)
        return true;
    std::vector<double> size;
    if (!readNumbers(value("cave"), "x", 3, size) || size[0] <= 0 || size[1] <= 0 || size[2] <= 0)
        return refuseValue("cave", tr("size in millimetres such as 3000x2400x3000"));
    m_plan.caveSize = {size[0], size[1], size[2]};
    return readCaveWalls();
}

bool zoWallOptions::readCaveWalls()
{
    m_plan.caveWalls = 0;
    const QStringList names = value("walls").split(QLatin1Char(','));
    for (const QString& name : names) {
        const Named* const wall = find(s_caveWalls, name.trimmed());
        if (!wall)
            return refuse(tr("--walls: \"%1\" is no wall of a cave").arg(name.trimmed()));
        m_plan.caveWalls |= wall->value;
    }
    return true;
}

bool zoWallOptions::readPlanes()
{
    if (m_plan.kind != Kind::Planes)
        return true;
    const QStringList texts = m_parser.values(QStringLiteral("plane"));
    for (const QString& text : texts) {
        Plan::Plane plane;
        if (!readPlane(text, plane))
            return refuse(tr("--plane: \"%1\" is no plane such as Front=2400x1350@0,0,-1500 or "
                             "Floor=2400x2400@0,-1200,0,0,90")
                              .arg(text));
        m_plan.planes.push_back(plane);
    }
    return true;
}

bool zoWallOptions::readPlane(const QString& text, Plan::Plane& plane) const
{
    const int equals = text.indexOf(QLatin1Char('='));
    const int at = text.indexOf(QLatin1Char('@'), equals + 1);
    plane.name = equals < 0 ? QString() : text.left(equals).trimmed();
    std::vector<double> size;
    std::vector<double> place;
    if (at < 0 || !readNumbers(text.mid(equals + 1, at - equals - 1), "x", 2, size) || size[0] <= 0 ||
        size[1] <= 0)
        return false;
    const QString numbers = text.mid(at + 1);
    const int count = numbers.count(QLatin1Char(',')) + 1;
    if (count < 3 || count > 5 || !readNumbers(numbers, ",", std::size_t(count), place))
        return false;
    plane.size = QSizeF(size[0], size[1]);
    plane.center = {place[0], place[1], place[2]};
    plane.yaw = count > 3 ? place[3] : 0.0;
    plane.tilt = count > 4 ? place[4] : 0.0;
    return true;
}

bool zoWallOptions::readViewer()
{
    std::vector<double> place;
    if (isSet("viewer")) {
        if (isSet("distance") || isSet("center"))
            return refuse(
                tr("--viewer and --%1 exclude each other")
                    .arg(isSet("distance") ? QStringLiteral("distance") : QStringLiteral("center")));
        if (!readNumbers(value("viewer"), ",", 3, place))
            return refuseValue("viewer", tr("place in millimetres such as 0,-400,1500"));
        m_plan.viewer = {place[0], place[1], place[2]};
        return true;
    }
    if (m_plan.kind == Kind::Planes || m_plan.kind == Kind::Cave)
        m_plan.viewer = {};
    if (m_plan.kind == Kind::Cave) {
        if (!readNumbers(value("center"), ",", 3, place))
            return refuseValue("center", tr("place in millimetres such as 0,-400,0"));
        m_plan.viewer = {0.0 - place[0], 0.0 - place[1], 0.0 - place[2]};
    }
    if (m_plan.kind == Kind::Planes || m_plan.kind == Kind::Cave)
        return true;
    if (!readNumbers(value("distance"), "x", 1, place) || place[0] <= 0)
        return refuseValue("distance", tr("number of millimetres"));
    const bool isFromAxis = m_plan.kind == Kind::Curved && !isSet("distance");
    m_plan.viewer = {0.0, 0.0, isFromAxis ? m_plan.curveRadius() : place[0]};
    return true;
}

bool zoWallOptions::readStereo()
{
    std::vector<double> number;
    if (!readNumbers(value("eye-separation"), "x", 1, number) || number[0] < 0)
        return refuseValue("eye-separation", tr("number of millimetres"));
    m_plan.eyeSeparation = number[0];
    const std::vector<Plan::StereoMode>& modes = Plan::stereoModes();
    const auto mode = std::find_if(modes.begin(), modes.end(), [&](const Plan::StereoMode& known) {
        return value("stereo") == QLatin1String(known.word);
    });
    if (mode == modes.end())
        return refuseValue("stereo", tr("mode: %1").arg(stereoWords().join(QStringLiteral(", "))));
    m_plan.stereo = mode->mode;
    return true;
}

bool zoWallOptions::readWindows()
{
    const Named* const order = find(s_eyeOrders, value("eyes"));
    if (!order)
        return refuseValue("eyes", tr("order: %1").arg(namesOf(s_eyeOrders).join(QStringLiteral(", "))));
    m_plan.eyeOrder = Plan::EyeOrder(order->value);
    std::vector<double> number;
    if (!isSet("windows-per-node"))
        return true;
    if (!readNumbers(value("windows-per-node"), "x", 1, number) || !areWhole(number, 1, Plan::MaximumScreens))
        return refuseValue("windows-per-node", tr("number of 1 to %1").arg(Plan::MaximumScreens));
    m_plan.windowsPerNode = int(number[0]);
    return true;
}

QString zoWallOptions::optionOf(Field field) const
{
    const char* const kind = isSet("curved")  ? "curved"
                             : isSet("cave")  ? "cave"
                             : isSet("plane") ? "plane"
                                              : "wall";
    const auto given = [this](std::initializer_list<const char*> options) {
        const auto found = std::find_if(options.begin(), options.end(),
                                        [this](const char* option) { return isSet(option); });
        return found != options.end() ? *found : *(options.end() - 1);
    };
    const char* const option = [&] {
        switch (field) {
        case Field::Tiles:
            return isSet("grid") ? "grid" : kind;
        case Field::TilePixels:
            return "tile";
        case Field::Size:
            return given({"tile-size", "size"});
        case Field::PixelPitch:
            return "pixel-pitch";
        case Field::Overlap:
            return given({"bezel", "overlap"});
        case Field::Viewer:
            return m_plan.kind == Kind::Cave     ? given({"viewer", "center"})
                   : m_plan.kind == Kind::Planes ? "viewer"
                                                 : given({"viewer", "distance"});
        case Field::Curvature:
            return given({"angle", "radius"});
        case Field::CaveWalls:
            return "walls";
        case Field::CaveSize:
        case Field::Planes:
            return kind;
        case Field::Stereo:
            return "stereo";
        case Field::EyeSeparation:
            return "eye-separation";
        case Field::EyeOrder:
            return "eyes";
        case Field::Hosts:
            return "hosts";
        case Field::WindowsPerNode:
            return "windows-per-node";
        case Field::Name:
            return "name";
        }
        return kind;
    }();
    return QLatin1String("--") + QLatin1String(option);
}
