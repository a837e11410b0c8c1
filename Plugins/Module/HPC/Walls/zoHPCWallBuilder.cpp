#include "zoHPCWallBuilder.h"

#include "zoHPCConfiguration.h"
#include "zoHPCDisplayItem.h"
#include "zoHPCDocumentWriter.h"
#include "zoHPCLayout.h"
#include "zoHPCProblems.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCUniqueNames.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWallMistakes.h"
#include "zoHPCWallProjections.h"
#include "zoHPCWallWindows.h"
#include "zoHPCWindowItem.h"

#include <zoClusterTags.h>

#include <QDomDocument>

#include <memory>
#include <utility>
#include <vector>

namespace
{
using Plan = zoHPCWallPlan;
using Field = Plan::Field;

// Of a text in a message.
QString shortened(const QString& text)
{
    constexpr int Longest = 60;
    const QString line = text.simplified();
    return line.size() > Longest ? line.left(Longest) + QString::fromLatin1("...") : line;
}

// The field that a person would change to be rid of a problem.
Field fieldOf(const zoHPCProblem& problem, const Plan& plan)
{
    using Kind = zoHPCProblem::Kind;
    switch (problem.kind) {
    case Kind::EyeSeparationInMetres:
    case Kind::NoEyeSeparation:
    case Kind::SwappedEyes:
        return Field::EyeSeparation;
    case Kind::OverlapWiderThanTile:
    case Kind::BlendWiderThanOverlap:
        return Field::Overlap;
    case Kind::EqualProjectionNames:
        return plan.kind == Plan::Kind::Planes ? Field::Planes : Field::Name;
    case Kind::WindowWithoutNode:
    case Kind::WindowWithUnknownNode:
    case Kind::WindowWithDisabledNode:
    case Kind::MissingHostsFile:
        return Field::Hosts;
    default:
        break;
    }
    if (problem.concernsHost())
        return Field::Hosts;
    switch (plan.kind) {
    case Plan::Kind::Tiled:
        return Field::Tiles;
    case Plan::Kind::Cave:
        return Field::CaveSize;
    case Plan::Kind::Planes:
        return Field::Planes;
    case Plan::Kind::Power:
    case Plan::Kind::Curved:
        break;
    }
    return Field::Size;
}

void addWindow(zoHPCDisplayItem& display, const Plan& plan, const zoHPCProjectionItem& tile,
               const zoHPCWallWindows::Window& place, const QString& node)
{
    auto* window = new zoHPCWindowItem;
    display.addChild(window);
    window->setRenderNode(node);
    window->setString(zoHPCWindowItem::Screen, QString::number(place.screen));
    window->setInt(zoHPCWindowItem::Width, plan.tilePixels.width());
    window->setInt(zoHPCWindowItem::Height, plan.tilePixels.height());
    auto* viewport = new zoHPCViewportItem;
    window->addChild(viewport);
    viewport->setProjection(tile.getString(zoHPCProjectionItem::Name));
    viewport->setString(zoHPCViewportItem::Eye,
                        QLatin1String(plan.stereoMode().eyes[std::size_t(place.eye)]));
}

// Without nodes they name none.
void addWindows(zoHPCDisplayItem& display, const Plan& plan, const zoHPCWallProjections::List& projections,
                const zoHPCWallWindows& windows, const QStringList& nodes)
{
    display.setEyeSeparation(plan.eyeSeparation);
    display.setBool(zoHPCDisplayItem::HardwareSync, plan.stereo == Plan::Stereo::QuadBuffer);
    const std::vector<const zoHPCProjectionItem*> tiles = zoHPCWallProjections::tilesOf(projections);
    for (const zoHPCWallWindows::Window& window : windows.windows())
        addWindow(display, plan, *tiles[std::size_t(window.tile)], window,
                  nodes.isEmpty() ? QString() : nodes.at(window.node));
}

// Reads the projections that were made as a file is read, so that their text is what a save writes. Hosts and windows
// are taken as they are: a document of a hundred thousand windows takes more memory than all else.
void fill(zoHPCConfiguration& configuration, const QString& hosts, zoHPCWallProjections::List projections,
          std::unique_ptr<zoHPCDisplayItem> display)
{
    zoHPCDisplaySetup& displays = configuration.displays();
    for (auto& projection : projections)
        displays.projectionRoot()->addChild(projection.release());
    {
        // A million hosts find no room beside it.
        QDomDocument document;
        zoHPCDocumentText::parse(configuration.outline(zoHPCDocumentText::Tiles::None), document);
        displays.loadFromXML(document);
    }
    displays.displayRoot()->addChild(display.release());
    displays.correctProjectionViewportsAssignments();
    configuration.hosts().setDefaultConfig();
    configuration.hosts().setHostString(hosts);
}

// What is found in the finished configuration: nothing that is made of a plan may look like a mistake to "check".
void tellProblems(zoHPCConfiguration& configuration, const Plan& plan, zoHPCWallBuilder::Result& result)
{
    const zoHPCLayout layout(configuration.displays(), configuration.hosts().master());
    const zoHPCProblems::List problems = zoHPCProblems::find(layout);
    for (const zoHPCProblem& problem : problems) {
        const bool isError = problem.severity() == zoHPCProblem::Severity::Error;
        (isError ? result.mistakes : result.warnings).push_back({fieldOf(problem, plan), problem.message});
    }
}
} // namespace

zoHPCWallBuilder::Hosts zoHPCWallBuilder::readHosts(const QString& text)
{
    Hosts hosts;
    const int unwritable = zoHPCDocumentWriter::findUnwritable(text);
    if (unwritable >= 0) {
        hosts.mistake = zoHPCWallMistakes::unwritable(text, unwritable);
        return hosts;
    }
    zoHPCHostsReading reading;
    const zoHPCHostsReading::Outcome outcome = reading.read(text);
    hosts.notes = reading.notes();
    if (outcome == zoHPCHostsReading::Outcome::Refused) {
        hosts.mistake = hosts.notes.front().reason;
        return hosts;
    }
    hosts.text = reading.text();
    const zoHPCHostsOutline& outline = reading.outline();
    std::vector<const QString*> names; // of the outline
    int depth = 0;
    for (int index = outline.next(zoHPCHostsOutline::Root, depth); index >= 0;
         index = outline.next(index, depth)) {
        const zoHPCHostsOutline::Item& item = outline.item(index);
        if (item.isNetwork)
            continue;
        const bool isGateway = item.firstChild >= 0;
        ++hosts.nodes;
        hosts.gateways += isGateway ? 1 : 0;
        names.push_back(&item.name);
        if (!isGateway && item.isRenderNode)
            hosts.drivers << item.name;
    }
    const zoHPCUniqueNames unique(names);
    for (std::size_t i = 0; i < names.size() && unique.hasNumbered() && hosts.mistake.isEmpty(); ++i) {
        if (unique.find(*names[i]) != i)
            hosts.mistake = tr("\"%1\" comes twice").arg(*names[i]);
    }
    if (hosts.nodes == 0)
        hosts.mistake = tr("no node in \"%1\"").arg(shortened(text));
    else if (hosts.drivers.isEmpty() && hosts.mistake.isEmpty())
        hosts.mistake = tr("gateways and nodes that do not render drive no screen, and \"%1\" has no other")
                            .arg(shortened(text));
    return hosts;
}

zoHPCWallBuilder::Result zoHPCWallBuilder::build(const zoHPCWallPlan& plan)
{
    Result result;
    result.mistakes = zoHPCWallMistakes::find(plan);
    const Hosts hosts = readHosts(plan.hosts);
    if (!hosts.mistake.isEmpty())
        result.mistakes.push_back({Field::Hosts, hosts.mistake});
    if (!result.isGood())
        return result;

    const zoHPCWallWindows windows(plan, plan.tileCount(), hosts.drivers.size());
    result.mistakes = windows.mistakes();
    if (!result.isGood())
        return result;
    zoHPCWallProjections::List projections = zoHPCWallProjections::make(plan);
    auto display = std::make_unique<zoHPCDisplayItem>();
    addWindows(*display, plan, projections, windows, hosts.drivers);
    zoHPCConfiguration configuration;
    fill(configuration, hosts.text, std::move(projections), std::move(display));
    result.warnings = zoHPCWallMistakes::findDoubts(plan);
    tellProblems(configuration, plan, result);
    if (result.isGood())
        result.text = configuration.text();
    if (!windows.note().isEmpty())
        result.notes.push_back({Field::Hosts, windows.note()});
    return result;
}

QString zoHPCWallBuilder::sketch(const zoHPCWallPlan& plan)
{
    if (!zoHPCWallMistakes::find(plan).empty())
        return {};
    zoHPCWallPlan seen = plan;
    seen.windowsPerNode = 0;
    seen.eyeOrder = Plan::EyeOrder::Alternating;
    zoHPCWallProjections::List projections = zoHPCWallProjections::make(seen);
    const zoHPCWallWindows windows(seen, seen.tileCount(), seen.windowCount());
    auto display = std::make_unique<zoHPCDisplayItem>();
    addWindows(*display, seen, projections, windows, {});
    zoHPCConfiguration configuration;
    fill(configuration, QString::fromLatin1(""), std::move(projections), std::move(display));
    return configuration.text();
}
