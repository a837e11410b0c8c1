#include "zoNewCommand.h"

#include "zoBracketText.h"
#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoHPCDisplayItem.h"
#include "zoHPCDocumentText.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCTreeItem.h"
#include "zoHPCViewportItem.h"
#include "zoTextFile.h"

#include <QSet>

#include <cmath>
#include <memory>
#include <vector>

namespace
{
// Numbers parted by "x" (or, for places, by commas); false when they are not as many as asked for.
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

// A view of one tile: one of it, or one for each eye.
struct View
{
    QString projection;
    QString eye;
};

struct Stereo
{
    const char* name;
    std::vector<const char*> eyes;
};

const std::vector<Stereo>& stereoModes()
{
    static const std::vector<Stereo> modes{
        {"none", {"mono"}}, {"quad-buffer", {"stereo"}}, {"left-right", {"left", "right"}}};
    return modes;
}

struct CaveWall
{
    const char* name;
    const char* label; // of the generated plane
    zoHPCProjectionItem::Column column;
};

constexpr CaveWall s_caveWalls[] = {
    {"left", "Left", zoHPCProjectionItem::LeftWall},    {"right", "Right", zoHPCProjectionItem::RightWall},
    {"top", "Top", zoHPCProjectionItem::TopWall},       {"bottom", "Bottom", zoHPCProjectionItem::BottomWall},
    {"front", "Front", zoHPCProjectionItem::FrontWall}, {"back", "Back", zoHPCProjectionItem::BackWall}};

// Names of the tiles that were generated, in their order.
QStringList tileNames(const zoHPCProjectionItem& projection)
{
    QStringList names;
    const QList<zoHPCProjectionItem*> tiles = projection.children<zoHPCProjectionItem>();
    for (const zoHPCProjectionItem* tile : tiles)
        names << tile->getString(zoHPCProjectionItem::Name);
    return names;
}

} // namespace

QString zoNewCommand::description() const
{
    return tr("Writes a whole configuration of a tiled wall or a cave: the hosts, the projection, and a "
              "full-screen window\n"
              "for each tile. Tiles go to the hosts in order, row by row from the upper left; with fewer "
              "hosts than tiles\n"
              "each host drives as many screens. Gateways drive none, and hosts left over none.");
}

QStringList zoNewCommand::examples() const
{
    return {
        QStringLiteral("zohpc new --wall 3x2 --tile 1920x1080 --overlap 120 --hosts 'node01 - node06'\t") +
            tr("three tiles across, two down, blended over 120 pixels"),
        QStringLiteral("zohpc new --wall 4x2 --tile 1920x1080 --size 6400x1800 --hosts 'node[1-4]'\t") +
            tr("a power wall of 6.4 by 1.8 metres for tracked viewers, two screens per host"),
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
         tr("Pixels that neighbouring tiles share, to be blended; <across>x<down> when they differ."),
         tr("N"), QStringLiteral("0")});
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
                      tr("mode"), QStringLiteral("none")});
    parser.addOption({QStringLiteral("eye-separation"), tr("Millimetres between the eyes (default 65)."),
                      tr("N"), QStringLiteral("65")});
    parser.addOption({QStringLiteral("name"), tr("Name of the wall (default Wall or Cave)."), tr("text")});
    parser.addOption({{QStringLiteral("o"), QStringLiteral("output")},
                      tr("Write to <file>. Standard output otherwise."),
                      tr("file")});
}

int zoNewCommand::execute(const QCommandLineParser& parser)
{
    const auto value = [&](const char* option) { return parser.value(QLatin1String(option)); };
    const auto wrong = [&](const char* option, const QString& expected) {
        return usageError(tr("--%1: \"%2\" is no %3").arg(QLatin1String(option), value(option), expected));
    };
    const bool isWall = parser.isSet(QStringLiteral("wall"));
    const bool isCave = parser.isSet(QStringLiteral("cave"));
    if (!parser.positionalArguments().isEmpty())
        return usageError(tr("unexpected argument \"%1\"").arg(parser.positionalArguments().constFirst()));
    if (isWall == isCave)
        return usageError(tr("either --wall or --cave"));
    if (!parser.isSet(QStringLiteral("hosts")))
        return usageError(tr("--hosts is missing"));

    // Pixels
    std::vector<double> tile;
    if (!readNumbers(value("tile"), "x", 2, tile) || !areWhole(tile, 1, 100000))
        return wrong("tile", tr("size in pixels such as 1920x1080"));
    std::vector<double> overlap;
    if (readNumbers(value("overlap"), "x", 1, overlap))
        overlap.push_back(overlap.front());
    else if (!readNumbers(value("overlap"), "x", 2, overlap))
        return wrong("overlap", tr("number of pixels"));
    if (!areWhole(overlap, 0, 100000))
        return wrong("overlap", tr("number of pixels"));
    if (overlap[0] >= tile[0] || overlap[1] >= tile[1])
        return usageError(
            tr("--overlap: tiles of %1 pixels cannot share %2").arg(value("tile"), value("overlap")));
    double eyeSeparation = 0.0;
    std::vector<double> number;
    if (!readNumbers(value("eye-separation"), "x", 1, number) || number[0] < 0)
        return wrong("eye-separation", tr("number of millimetres"));
    eyeSeparation = number[0];
    const Stereo* stereo = nullptr;
    for (const Stereo& mode : stereoModes()) {
        if (value("stereo") == QLatin1String(mode.name))
            stereo = &mode;
    }
    if (stereo == nullptr)
        return wrong("stereo", tr("mode: none, quad-buffer, left-right"));

    // Projection
    QString title = value("name").trimmed();
    if (title.isEmpty())
        title = isWall ? tr("Wall") : tr("Cave");
    std::unique_ptr<zoHPCProjectionItem> projection;
    if (isWall) {
        std::vector<double> tiles;
        if (!readNumbers(value("wall"), "x", 2, tiles) || !areWhole(tiles, 1, 1000))
            return wrong("wall", tr("number of columns and rows such as 3x2"));
        if (tiles[0] * tiles[1] > zoHPCProjectionItem::MaximumTiles)
            return usageError(tr("--wall: %1 tiles are more than %2")
                                  .arg(value("wall"), QString::number(zoHPCProjectionItem::MaximumTiles)));
        if (!readNumbers(value("distance"), "x", 1, number) || number[0] <= 0)
            return wrong("distance", tr("number of millimetres"));
        const bool hasSize = parser.isSet(QStringLiteral("size"));
        projection = std::make_unique<zoHPCProjectionItem>(title, hasSize ? QStringLiteral("powerwall")
                                                                          : QStringLiteral("wall"));
        projection->setDouble(zoHPCProjectionItem::Distance, number[0]);
        projection->setInt(zoHPCProjectionItem::Columns, int(tiles[0]));
        projection->setInt(zoHPCProjectionItem::Rows, int(tiles[1]));
        double overlapX = tiles[0] > 1 ? overlap[0] : 0.0;
        double overlapY = tiles[1] > 1 ? overlap[1] : 0.0;
        projection->setBool(zoHPCProjectionItem::EdgeBlending, overlapX > 0.0 || overlapY > 0.0);
        if (hasSize) {
            std::vector<double> size;
            if (!readNumbers(value("size"), "x", 2, size) || size[0] <= 0 || size[1] <= 0)
                return wrong("size", tr("size in millimetres such as 3600x2000"));
            projection->setDouble(zoHPCProjectionItem::Width, size[0]);
            projection->setDouble(zoHPCProjectionItem::Height, size[1]);
            // From pixels to millimetres on the wall.
            overlapX *= size[0] / (tiles[0] * tile[0] - (tiles[0] - 1) * overlapX);
            overlapY *= size[1] / (tiles[1] * tile[1] - (tiles[1] - 1) * overlapY);
        }
        projection->setDouble(zoHPCProjectionItem::OverlapX, overlapX);
        projection->setDouble(zoHPCProjectionItem::OverlapY, overlapY);
    } else {
        std::vector<double> size;
        if (!readNumbers(value("cave"), "x", 3, size) || size[0] <= 0 || size[1] <= 0 || size[2] <= 0)
            return wrong("cave", tr("size in millimetres such as 3000x2400x3000"));
        std::vector<double> center;
        if (!readNumbers(value("center"), ",", 3, center))
            return wrong("center", tr("place in millimetres such as 0,-400,0"));
        if (overlap[0] > 0 || overlap[1] > 0)
            return usageError(tr("--overlap: the walls of a cave share no pixels"));
        if (parser.isSet(QStringLiteral("size")))
            return usageError(tr("--size is for walls"));
        projection = std::make_unique<zoHPCProjectionItem>(title, QStringLiteral("cave"));
        projection->setDouble(zoHPCProjectionItem::CaveWidth, size[0]);
        projection->setDouble(zoHPCProjectionItem::CaveHeight, size[1]);
        projection->setDouble(zoHPCProjectionItem::CaveDepth, size[2]);
        projection->setDouble(zoHPCProjectionItem::CaveX, center[0]);
        projection->setDouble(zoHPCProjectionItem::CaveY, center[1]);
        projection->setDouble(zoHPCProjectionItem::CaveZ, center[2]);
        for (const CaveWall& wall : s_caveWalls)
            projection->setBool(wall.column, false);
        const QStringList walls = value("walls").split(QLatin1Char(','));
        for (const QString& name : walls) {
            bool isKnown = false;
            for (const CaveWall& wall : s_caveWalls) {
                if (name.trimmed() == QLatin1String(wall.name)) {
                    projection->setBool(wall.column, true);
                    isKnown = true;
                }
            }
            if (!isKnown)
                return usageError(tr("--walls: \"%1\" is no wall of a cave").arg(name.trimmed()));
        }
        projection->setBool(zoHPCProjectionItem::EdgeBlending, false);
    }
    projection->update();

    // Hosts
    QString hostsText = value("hosts");
    if (hostsText == QLatin1String("-") && !zoTextFile::read(hostsText, hostsText))
        return zoConsole::Unusable;
    zoBracketText brackets;
    hostsText = brackets.expanded(hostsText);
    if (brackets.hasError())
        return usageError(tr("--hosts: %1").arg(brackets.error().reason));
    zoClusterSetup setup;
    setup.hosts().setDefaultConfig();
    setup.hosts().setHostString(hostsText);
    QStringList hosts;
    QSet<QString> known;
    for (zoHPCTreeItem* node : setup.hosts().getNodeItems()) {
        if (known.contains(node->hostName()))
            return usageError(tr("--hosts: \"%1\" comes twice").arg(node->hostName()));
        known.insert(node->hostName());
        if (node->items().empty())
            hosts << node->hostName();
    }
    if (hosts.isEmpty())
        return usageError(tr("--hosts: no host in \"%1\"").arg(value("hosts")));

    // Windows
    std::vector<View> views;
    const QStringList tiles = tileNames(*projection);
    for (const QString& tileName : tiles) {
        for (const char* eye : stereo->eyes)
            views.push_back({tileName, QLatin1String(eye)});
    }
    const int viewCount = int(views.size());
    if (hosts.size() < viewCount && viewCount % hosts.size() != 0)
        return usageError(tr("--hosts: %1 windows do not spread evenly over %2 hosts")
                              .arg(QString::number(viewCount), QString::number(hosts.size())));
    const int screens = hosts.size() < viewCount ? viewCount / hosts.size() : 1;
    if (screens > 16)
        return usageError(tr("--hosts: %1 screens on each host, 16 at most").arg(screens));
    zoHPCDisplayItem display;
    display.setEyeSeparation(eyeSeparation);
    display.setBool(zoHPCDisplayItem::HardwareSync, value("stereo") == QLatin1String("quad-buffer"));
    for (int i = 0; i < viewCount; ++i) {
        auto* window = new zoHPCWindowItem;
        display.addChild(window);
        window->setRenderNode(hosts.at(i / screens));
        window->setString(zoHPCWindowItem::Screen, QString::number(i % screens));
        window->setInt(zoHPCWindowItem::Width, int(tile[0]));
        window->setInt(zoHPCWindowItem::Height, int(tile[1]));
        auto* viewport = new zoHPCViewportItem;
        window->addChild(viewport);
        viewport->setProjection(views[std::size_t(i)].projection);
        viewport->setString(zoHPCViewportItem::Eye, views[std::size_t(i)].eye);
    }

    QDomDocument document = setup.document();
    document.documentElement().appendChild(projection->toXML(document, QStringLiteral("projection")));
    document.documentElement().appendChild(display.toXML(document, QStringLiteral("display")));
    // Once through the trees, so that the text is what a save writes.
    zoClusterSetup canonical;
    canonical.readDocument(document);
    const QString output = parser.isSet(QStringLiteral("output")) ? value("output") : QStringLiteral("-");
    return zoTextFile::write(output, canonical.text()) ? zoConsole::Fine : zoConsole::Unusable;
}
