#include "zoNewCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoHPCDisplayItem.h"
#include "zoHPCDocumentText.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCProjectionType.h"
#include "zoHPCTreeItem.h"
#include "zoHPCViewportItem.h"
#include "zoHostsInput.h"
#include "zoHostsReading.h"
#include "zoTextFile.h"

#include <zoClusterTags.h>

#include <QSet>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <vector>

namespace
{
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
    for (const double number : numbers) {
        if (number < minimum || number > maximum || number != std::floor(number))
            return false;
    }
    return true;
}

struct Stereo
{
    const char* name;
    std::vector<const char*> eyes; // a window for each
};

const std::vector<Stereo>& stereoModes()
{
    static const std::vector<Stereo> modes{
        {"none", {"mono"}}, {"quad-buffer", {"stereo"}}, {"left-right", {"left", "right"}}};
    return modes;
}

constexpr int s_caveWalls[] = {zoHPCProjectionItem::LeftWall,  zoHPCProjectionItem::RightWall,
                               zoHPCProjectionItem::TopWall,   zoHPCProjectionItem::BottomWall,
                               zoHPCProjectionItem::FrontWall, zoHPCProjectionItem::BackWall};

// The wall of this name, which is that of its attribute too; end of the walls for another name.
const int* findCaveWall(const QString& name)
{
    return std::find_if(std::begin(s_caveWalls), std::end(s_caveWalls),
                        [&](int wall) { return name == zoHPCProjectionItem::columns(QString()).at(wall); });
}
} // namespace

// What was asked for, as far as walls and caves have it in common.
struct zoNewCommand::Request
{
    std::vector<double> tile;    // pixels
    std::vector<double> overlap; // pixels
    std::vector<double> bezel;   // mm; empty unless the wall has a size
    double eyeSeparation;        // mm
    const Stereo* stereo;        // not owned
    std::unique_ptr<zoHPCProjectionItem> projection;
    QStringList hosts;                            // that drive screens
    zoConsole::ExitCode result = zoConsole::Fine; // of reading them
};

QString zoNewCommand::description() const
{
    return tr("Writes a whole configuration of a tiled wall or a cave: the hosts, the projection, and a "
              "full-screen window\n"
              "for each tile. Tiles go to the hosts in order, row by row from the upper left; with fewer "
              "hosts than tiles\n"
              "each host drives as many screens. Gateways drive none, nor do nodes that do not render "
              "([rt=0]) and hosts\n"
              "left over.");
}

QStringList zoNewCommand::examples() const
{
    return {
        QStringLiteral("zohpc new --wall 3x2 --tile 1920x1080 --overlap 120 --hosts 'node01 - node06'\t") +
            tr("three tiles across, two down, blended over 120 pixels"),
        QStringLiteral("zohpc new --wall 4x2 --tile 1920x1080 --size 6400x1800 --hosts 'node[1-4]'\t") +
            tr("a power wall of 6.4 by 1.8 metres for tracked viewers, two screens per host"),
        QStringLiteral("zohpc new --wall 4x3 --size 4120x1760 --bezel 12x14 --hosts 'panel[01-12]'\t") +
            tr("panels with frames: 12 mm from picture to picture across, 14 mm down"),
        QStringLiteral("zohpc new --cave 3000x2400x3000 --stereo left-right --tile 2400x1920 --hosts 'cave1 "
                       "- cave8'\t") +
            tr("left, right, bottom and front, two hosts per wall")};
}

void zoNewCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({QStringLiteral("wall"), tr("A tiled wall of <columns>x<rows>."), tr("CxR")});
    parser.addOption(
        {QStringLiteral("cave"), tr("A cave of <width>x<height>x<depth> in millimetres."), tr("WxHxD")});
    parser.addOption({QStringLiteral("tile"), tr("Pixels of one tile (default 1920x1080)."), tr("WxH"),
                      QStringLiteral("1920x1080")});
    parser.addOption(
        {QStringLiteral("overlap"),
         tr("Pixels that neighbouring tiles share, to be blended; <across>x<down> when they differ. Below 0: "
            "pixels that lie hidden between them."),
         tr("N"), QStringLiteral("0")});
    parser.addOption({QStringLiteral("bezel"),
                      tr("Millimetres from picture to picture of neighbouring tiles, in place of an overlap; "
                         "needs --size or --pixel-pitch."),
                      tr("WxH")});
    parser.addOption({QStringLiteral("pixel-pitch"),
                      tr("Millimetres of a pixel, for --bezel of a wall without --size."), tr("N")});
    parser.addOption({QStringLiteral("hosts"),
                      tr("Hosts text or the bracket form; \"-\" for standard input."), tr("text")});
    parser.addOption({QStringLiteral("size"),
                      tr("Millimetres of the whole wall, which makes it a power wall for tracked viewers."),
                      tr("WxH")});
    parser.addOption({QStringLiteral("distance"),
                      tr("Millimetres from the viewer to the wall (default 1500)."), tr("N"),
                      QStringLiteral("1500")});
    parser.addOption(
        {QStringLiteral("walls"),
         tr("Walls of the cave, of left,right,top,bottom,front,back (default left,right,bottom,front)."),
         tr("list"), QStringLiteral("left,right,bottom,front")});
    parser.addOption({QStringLiteral("center"), tr("Center of the cave in millimetres (default 0,0,0)."),
                      tr("x,y,z"), QStringLiteral("0,0,0")});
    parser.addOption({QStringLiteral("stereo"),
                      tr("none (default), quad-buffer, or left-right: a window of its own for each eye."),
                      QStringLiteral("none|quad-buffer|left-right"), QStringLiteral("none")});
    parser.addOption({QStringLiteral("eye-separation"), tr("Millimetres between the eyes (default 65)."),
                      tr("N"), QStringLiteral("65")});
    parser.addOption({QStringLiteral("name"), tr("Name of the wall (default Wall or Cave)."), tr("text")});
    parser.addOption({{QStringLiteral("o"), QStringLiteral("output")},
                      tr("Write to <file>. Standard output otherwise."),
                      tr("file")});
}

int zoNewCommand::execute(const QCommandLineParser& parser)
{
    const bool isWall = parser.isSet(QStringLiteral("wall"));
    const bool isCave = parser.isSet(QStringLiteral("cave"));
    if (!parser.positionalArguments().isEmpty())
        return usageError(tr("unexpected argument \"%1\"").arg(parser.positionalArguments().constFirst()));
    if (isWall == isCave)
        return usageError(tr("either --wall or --cave"));
    if (!parser.isSet(QStringLiteral("hosts")))
        return usageError(tr("--hosts is missing"));

    if (!zoTextFile::mayWrite(parser.values(QStringLiteral("output")), QString()))
        return zoConsole::Unusable;

    Request request;
    zoClusterSetup setup;
    zoHPCDisplayItem display;
    const bool isGood = refuseOthers(parser, isWall) && readPixels(parser, request) &&
                        readStereo(parser, request) &&
                        (isWall ? makeWall(parser, request) : makeCave(parser, request)) &&
                        readHosts(parser, setup, request) && addWindows(parser, request, display);
    return isGood && write(parser, setup, *request.projection, display) ? request.result
                                                                        : zoConsole::Unusable;
}

bool zoNewCommand::refuseOthers(const QCommandLineParser& parser, bool isWall) const
{
    if (!isWall && (parser.isSet(QStringLiteral("overlap")) || parser.isSet(QStringLiteral("bezel"))))
        return refuse(tr("--%1: the walls of a cave share no pixels")
                          .arg(parser.isSet(QStringLiteral("overlap")) ? QStringLiteral("overlap")
                                                                       : QStringLiteral("bezel")));
    const QStringList ofWalls{QStringLiteral("size"), QStringLiteral("distance"),
                              QStringLiteral("pixel-pitch")};
    const QStringList ofCaves{QStringLiteral("walls"), QStringLiteral("center")};
    for (const QString& option : isWall ? ofCaves : ofWalls) {
        if (parser.isSet(option))
            return refuse(isWall ? tr("--%1 is for caves").arg(option) : tr("--%1 is for walls").arg(option));
    }
    return true;
}

bool zoNewCommand::refuse(const QString& reason) const
{
    usageError(reason);
    return false;
}

bool zoNewCommand::refuseValue(const QCommandLineParser& parser, const QString& option,
                               const QString& expected) const
{
    return refuse(tr("--%1: \"%2\" is no %3").arg(option, parser.value(option), expected));
}

bool zoNewCommand::readPixels(const QCommandLineParser& parser, Request& request) const
{
    const QString tile = parser.value(QStringLiteral("tile"));
    const QString overlap = parser.value(QStringLiteral("overlap"));
    if (!readNumbers(tile, "x", 2, request.tile) || !areWhole(request.tile, 1, 100000))
        return refuseValue(parser, QStringLiteral("tile"), tr("size in pixels such as 1920x1080"));
    if (readNumbers(overlap, "x", 1, request.overlap))
        request.overlap.push_back(request.overlap.front());
    else if (!readNumbers(overlap, "x", 2, request.overlap))
        return refuseValue(parser, QStringLiteral("overlap"), tr("number of pixels"));
    if (!areWhole(request.overlap, -100000, 100000))
        return refuseValue(parser, QStringLiteral("overlap"), tr("number of pixels"));
    if (request.overlap[0] >= request.tile[0] || request.overlap[1] >= request.tile[1])
        return refuse(tr("--overlap: tiles of %1 pixels cannot share %2").arg(tile, overlap));
    return readBezel(parser, request);
}

// As an overlap below 0, in pixels with the pitch and in millimetres with the size.
bool zoNewCommand::readBezel(const QCommandLineParser& parser, Request& request) const
{
    const bool hasPitch = parser.isSet(QStringLiteral("pixel-pitch"));
    const bool hasSize = parser.isSet(QStringLiteral("size"));
    if (!parser.isSet(QStringLiteral("bezel")))
        return hasPitch ? refuse(tr("--pixel-pitch needs --bezel")) : true;
    std::vector<double> bezel;
    if (!readNumbers(parser.value(QStringLiteral("bezel")), "x", 2, bezel) || bezel[0] < 0 || bezel[1] < 0 ||
        bezel[0] > 100000 || bezel[1] > 100000)
        return refuseValue(parser, QStringLiteral("bezel"), tr("size in millimetres such as 12x14"));
    if (parser.isSet(QStringLiteral("overlap")))
        return refuse(tr("--bezel and --overlap exclude each other"));
    if (hasPitch == hasSize)
        return refuse(hasSize ? tr("--size and --pixel-pitch exclude each other")
                              : tr("--bezel needs --size or --pixel-pitch, which say how large a pixel is"));
    if (hasSize) {
        request.bezel = bezel;
        return true;
    }
    std::vector<double> pitch;
    if (!readNumbers(parser.value(QStringLiteral("pixel-pitch")), "x", 1, pitch) || pitch[0] < 0.001)
        return refuseValue(parser, QStringLiteral("pixel-pitch"), tr("number of millimetres"));
    request.overlap = {-std::round(bezel[0] / pitch[0]), -std::round(bezel[1] / pitch[0])};
    return true;
}

bool zoNewCommand::readStereo(const QCommandLineParser& parser, Request& request) const
{
    std::vector<double> number;
    if (!readNumbers(parser.value(QStringLiteral("eye-separation")), "x", 1, number) || number[0] < 0)
        return refuseValue(parser, QStringLiteral("eye-separation"), tr("number of millimetres"));
    request.eyeSeparation = number[0];
    const std::vector<Stereo>& modes = stereoModes();
    const auto mode = std::find_if(modes.begin(), modes.end(), [&](const Stereo& known) {
        return parser.value(QStringLiteral("stereo")) == QLatin1String(known.name);
    });
    if (mode == modes.end())
        return refuseValue(parser, QStringLiteral("stereo"), tr("mode: none, quad-buffer, left-right"));
    request.stereo = &*mode;
    return true;
}

bool zoNewCommand::makeWall(const QCommandLineParser& parser, Request& request) const
{
    const QString wall = parser.value(QStringLiteral("wall"));
    std::vector<double> tiles;
    if (!readNumbers(wall, "x", 2, tiles) || !areWhole(tiles, 1, 1000))
        return refuseValue(parser, QStringLiteral("wall"), tr("number of columns and rows such as 3x2"));
    if (tiles[0] * tiles[1] > zoHPCProjectionItem::MaximumTiles)
        return refuse(tr("--wall: %1 tiles are more than %2")
                          .arg(wall, QString::number(zoHPCProjectionItem::MaximumTiles)));
    std::vector<double> distance;
    if (!readNumbers(parser.value(QStringLiteral("distance")), "x", 1, distance) || distance[0] <= 0)
        return refuseValue(parser, QStringLiteral("distance"), tr("number of millimetres"));
    const bool hasSize = parser.isSet(QStringLiteral("size"));
    auto projection = std::make_unique<zoHPCProjectionItem>(
        title(parser, tr("Wall")), zoHPCProjectionType::word(hasSize ? zoHPCProjectionType::Kind::PowerWall
                                                                     : zoHPCProjectionType::Kind::Wall));
    projection->setDouble(zoHPCProjectionItem::Distance, distance[0]);
    projection->setInt(zoHPCProjectionItem::Columns, int(tiles[0]));
    projection->setInt(zoHPCProjectionItem::Rows, int(tiles[1]));
    double overlapX = tiles[0] > 1 ? request.overlap[0] : 0.0;
    double overlapY = tiles[1] > 1 ? request.overlap[1] : 0.0;
    projection->setBool(zoHPCProjectionItem::EdgeBlending, overlapX > 0.0 || overlapY > 0.0);
    projection->setDouble(zoHPCProjectionItem::OverlapX, overlapX);
    projection->setDouble(zoHPCProjectionItem::OverlapY, overlapY);
    if (hasSize && !makePowerWall(parser, request, *projection))
        return false;
    projection->update();
    request.projection = std::move(projection);
    return true;
}

// Gives a wall its size, and its overlap, which it has in pixels, in millimetres.
bool zoNewCommand::makePowerWall(const QCommandLineParser& parser, const Request& request,
                                 zoHPCProjectionItem& wall) const
{
    std::vector<double> size;
    if (!readNumbers(parser.value(QStringLiteral("size")), "x", 2, size) || size[0] <= 0 || size[1] <= 0)
        return refuseValue(parser, QStringLiteral("size"), tr("size in millimetres such as 3600x2000"));
    wall.setDouble(zoHPCProjectionItem::Width, size[0]);
    wall.setDouble(zoHPCProjectionItem::Height, size[1]);
    constexpr int Counts[] = {zoHPCProjectionItem::Columns, zoHPCProjectionItem::Rows};
    constexpr int Overlaps[] = {zoHPCProjectionItem::OverlapX, zoHPCProjectionItem::OverlapY};
    for (std::size_t i = 0; i < 2; ++i) {
        const double gaps = wall.getInt(Counts[i]) - 1;
        const double pixels = wall.getDouble(Overlaps[i]);
        double overlap = pixels * size[i] / ((gaps + 1) * request.tile[i] - gaps * pixels);
        if (!request.bezel.empty()) {
            overlap = gaps > 0 ? -request.bezel[i] : 0.0;
            if (size[i] <= -overlap * gaps)
                return refuse(tr("--bezel: nothing of --size is left for pictures"));
        }
        wall.setDouble(Overlaps[i], overlap);
    }
    return true;
}

bool zoNewCommand::makeCave(const QCommandLineParser& parser, Request& request) const
{
    std::vector<double> size;
    if (!readNumbers(parser.value(QStringLiteral("cave")), "x", 3, size) || size[0] <= 0 || size[1] <= 0 ||
        size[2] <= 0)
        return refuseValue(parser, QStringLiteral("cave"), tr("size in millimetres such as 3000x2400x3000"));
    std::vector<double> center;
    if (!readNumbers(parser.value(QStringLiteral("center")), ",", 3, center))
        return refuseValue(parser, QStringLiteral("center"), tr("place in millimetres such as 0,-400,0"));
    auto projection = std::make_unique<zoHPCProjectionItem>(
        title(parser, tr("Cave")), zoHPCProjectionType::word(zoHPCProjectionType::Kind::Cave));
    projection->setDouble(zoHPCProjectionItem::CaveWidth, size[0]);
    projection->setDouble(zoHPCProjectionItem::CaveHeight, size[1]);
    projection->setDouble(zoHPCProjectionItem::CaveDepth, size[2]);
    projection->setDouble(zoHPCProjectionItem::CaveX, center[0]);
    projection->setDouble(zoHPCProjectionItem::CaveY, center[1]);
    projection->setDouble(zoHPCProjectionItem::CaveZ, center[2]);
    for (const int wall : s_caveWalls)
        projection->setBool(wall, false);
    const QStringList names = parser.value(QStringLiteral("walls")).split(QLatin1Char(','));
    for (const QString& name : names) {
        const int* const wall = findCaveWall(name.trimmed());
        if (wall == std::end(s_caveWalls))
            return refuse(tr("--walls: \"%1\" is no wall of a cave").arg(name.trimmed()));
        projection->setBool(*wall, true);
    }
    projection->setBool(zoHPCProjectionItem::EdgeBlending, false);
    projection->update();
    request.projection = std::move(projection);
    return true;
}

bool zoNewCommand::readHosts(const QCommandLineParser& parser, zoClusterSetup& setup, Request& request) const
{
    const QString given = parser.value(QStringLiteral("hosts"));
    zoHostsInput input;
    if (!input.readArguments({given}))
        return false;
    zoHostsReading reading;
    request.result = reading.read(input, zoHPCHostsSyntax::Form::HostsText);
    if (request.result == zoConsole::Unusable)
        return false;
    setup.hosts().setDefaultConfig();
    setup.hosts().setHostString(reading.text());
    QSet<QString> known;
    for (zoHPCTreeItem* node : setup.hosts().getNodeItems()) {
        if (known.contains(node->hostName()))
            return refuse(tr("--hosts: \"%1\" comes twice").arg(node->hostName()));
        known.insert(node->hostName());
        if (node->items().empty() && node->isRenderNode())
            request.hosts << node->hostName();
    }
    if (known.isEmpty())
        return refuse(tr("--hosts: no host in \"%1\"").arg(given));
    if (request.hosts.isEmpty())
        return refuse(
            tr("--hosts: gateways and nodes that do not render drive no screen, and \"%1\" has no other")
                .arg(given));
    return true;
}

bool zoNewCommand::addWindows(const QCommandLineParser& parser, const Request& request,
                              zoHPCDisplayItem& display) const
{
    const QList<zoHPCProjectionItem*> tiles = request.projection->children<zoHPCProjectionItem>();
    const int windowCount = tiles.size() * int(request.stereo->eyes.size());
    const int hostCount = request.hosts.size();
    if (hostCount < windowCount && windowCount % hostCount != 0)
        return refuse(tr("--hosts: %1 windows do not spread evenly over %2 hosts")
                          .arg(QString::number(windowCount), QString::number(hostCount)));
    const int screens = hostCount < windowCount ? windowCount / hostCount : 1;
    if (screens > 16)
        return refuse(tr("--hosts: %1 screens on each host, 16 at most").arg(screens));

    display.setEyeSeparation(request.eyeSeparation);
    display.setBool(zoHPCDisplayItem::HardwareSync,
                    parser.value(QStringLiteral("stereo")) == QLatin1String("quad-buffer"));
    int number = 0;
    for (const zoHPCProjectionItem* tile : tiles) {
        for (const char* eye : request.stereo->eyes) {
            auto* window = new zoHPCWindowItem;
            display.addChild(window);
            window->setRenderNode(request.hosts.at(number / screens));
            window->setString(zoHPCWindowItem::Screen, QString::number(number % screens));
            window->setInt(zoHPCWindowItem::Width, int(request.tile[0]));
            window->setInt(zoHPCWindowItem::Height, int(request.tile[1]));
            auto* viewport = new zoHPCViewportItem;
            window->addChild(viewport);
            viewport->setProjection(tile->getString(zoHPCProjectionItem::Name));
            viewport->setString(zoHPCViewportItem::Eye, QLatin1String(eye));
            ++number;
        }
    }
    return true;
}

bool zoNewCommand::write(const QCommandLineParser& parser, zoClusterSetup& setup,
                         const zoHPCProjectionItem& projection, const zoHPCDisplayItem& display)
{
    QDomDocument document = setup.document();
    document.documentElement().appendChild(projection.toXML(document, zoClusterTags::Projection));
    document.documentElement().appendChild(display.toXML(document, zoClusterTags::Display));
    // Once through the trees, so that the text is what a save writes.
    zoClusterSetup canonical;
    canonical.readDocument(document);
    const QString output = parser.value(QStringLiteral("output"));
    return zoTextFile::write(parser.isSet(QStringLiteral("output")) ? output : QStringLiteral("-"),
                             canonical.text());
}

QString zoNewCommand::title(const QCommandLineParser& parser, const QString& fallback)
{
    const QString name = parser.value(QStringLiteral("name")).trimmed();
    return name.isEmpty() ? fallback : name;
}
