#include "zoHPCWallBuilder.h"

#include "zoHPCConfiguration.h"
#include "zoHPCDisplayItem.h"
#include "zoHPCLayout.h"
#include "zoHPCProblems.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWallMistakes.h"
#include "zoHPCWallProjections.h"
#include "zoHPCWindowItem.h"

#include <zoClusterTags.h>

#include <QDomDocument>
#include <QSet>

#include <algorithm>

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
    default:
        break;
    }
    if (problem.concernsHost())
        return Field::Hosts;
    switch (plan.kind) {
    case Plan::Kind::Tiled:
        return Field::Viewer;
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

// What a window shows.
struct Show
{
    const zoHPCProjectionItem* tile; // not owned
    const char* eye;
};

// How many windows a node gets; 0 with a mistake when they do not fit.
int windowsPerNode(const Plan& plan, int windows, int hosts, QString& mistake)
{
    const QString each = QString::number(windows);
    int screens = plan.windowsPerNode;
    if (screens == 0 && hosts < windows && windows % hosts != 0)
        mistake = zoHPCWallBuilder::tr("%1 windows do not spread evenly over %2 hosts")
                      .arg(each, QString::number(hosts));
    else if (screens == 0)
        screens = hosts < windows ? windows / hosts : 1;
    const bool areTwo = plan.stereoMode().eyes.size() > 1;
    if (areTwo && plan.eyeOrder == Plan::EyeOrder::SameNode && screens == 1)
        screens = plan.windowsPerNode == 0 ? 2 : screens;
    if (mistake.isEmpty() && screens > zoHPCWallPlan::MaximumScreens)
        mistake = zoHPCWallBuilder::tr("%1 screens on each host, %2 at most")
                      .arg(screens)
                      .arg(zoHPCWallPlan::MaximumScreens);
    return mistake.isEmpty() ? screens : 0;
}

// The windows in the order in which nodes are filled. `group` tiles follow each other for one eye where each eye has
// nodes of its own.
std::vector<Show> showsOf(const Plan& plan, const std::vector<const zoHPCProjectionItem*>& tiles,
                          std::size_t group)
{
    const std::vector<const char*>& eyes = plan.stereoMode().eyes;
    if (plan.eyeOrder == Plan::EyeOrder::Alternating || plan.eyeOrder == Plan::EyeOrder::SameNode)
        group = 1;
    else if (plan.eyeOrder == Plan::EyeOrder::LeftNodesFirst)
        group = tiles.size();
    std::vector<Show> shows;
    for (std::size_t first = 0; first < tiles.size(); first += group) {
        for (const char* eye : eyes) {
            for (std::size_t i = first; i < std::min(first + group, tiles.size()); ++i)
                shows.push_back({tiles[i], eye});
        }
    }
    return shows;
}

void addWindow(zoHPCDisplayItem& display, const Show& show, const QString& node, int screen,
               const QSize& pixels)
{
    auto* window = new zoHPCWindowItem;
    display.addChild(window);
    window->setRenderNode(node);
    window->setString(zoHPCWindowItem::Screen, QString::number(screen));
    window->setInt(zoHPCWindowItem::Width, pixels.width());
    window->setInt(zoHPCWindowItem::Height, pixels.height());
    auto* viewport = new zoHPCViewportItem;
    window->addChild(viewport);
    viewport->setProjection(show.tile->getString(zoHPCProjectionItem::Name));
    viewport->setString(zoHPCViewportItem::Eye, QLatin1String(show.eye));
}

// A window for each of them. Without nodes they name none.
void addWindows(zoHPCDisplayItem& display, const Plan& plan, const std::vector<Show>& shows,
                const QStringList& nodes, int screens)
{
    display.setEyeSeparation(plan.eyeSeparation);
    display.setBool(zoHPCDisplayItem::HardwareSync, plan.stereo == Plan::Stereo::QuadBuffer);
    int number = 0;
    for (const Show& show : shows) {
        const QString node = nodes.isEmpty() ? QString() : nodes.at(number / screens);
        addWindow(display, show, node, nodes.isEmpty() ? 0 : number % screens, plan.tilePixels);
        ++number;
    }
}

// Reads what was made as a file is read, so that its text is what a save writes.
void fill(zoHPCConfiguration& configuration, const QString& hosts,
          const zoHPCWallProjections::List& projections, const zoHPCDisplayItem& display)
{
    zoHPCConfiguration made;
    made.hosts().setDefaultConfig();
    made.hosts().setHostString(hosts);
    made.displays().clear();
    QDomDocument document = made.document();
    QDomElement root = document.documentElement();
    for (const auto& projection : projections)
        root.appendChild(projection->toXML(document, zoClusterTags::Projection));
    root.appendChild(display.toXML(document, zoClusterTags::Display));
    configuration.read(document);
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
    zoHPCHostsReading reading;
    const zoHPCHostsReading::Outcome outcome = reading.read(text);
    hosts.notes = reading.notes();
    if (outcome == zoHPCHostsReading::Outcome::Refused) {
        hosts.mistake = hosts.notes.front().reason;
        return hosts;
    }
    hosts.text = reading.text();
    const zoHPCHostsOutline& outline = reading.outline();
    QSet<QString> known;
    int depth = 0;
    for (int index = outline.next(zoHPCHostsOutline::Root, depth); index >= 0;
         index = outline.next(index, depth)) {
        const zoHPCHostsOutline::Item& item = outline.item(index);
        if (item.isNetwork)
            continue;
        const bool isGateway = item.firstChild >= 0;
        ++hosts.nodes;
        hosts.gateways += isGateway ? 1 : 0;
        if (known.contains(item.name) && hosts.mistake.isEmpty())
            hosts.mistake = tr("\"%1\" comes twice").arg(item.name);
        known.insert(item.name);
        if (!isGateway && item.isRenderNode)
            hosts.drivers << item.name;
    }
    if (hosts.nodes == 0)
        hosts.mistake = tr("no host in \"%1\"").arg(shortened(text));
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

    QString mistake;
    const int screens = windowsPerNode(plan, plan.windowCount(), hosts.drivers.size(), mistake);
    if (screens == 0) {
        result.mistakes.push_back({Field::Hosts, mistake});
        return result;
    }
    const int needed = (plan.windowCount() + screens - 1) / screens;
    if (needed > hosts.drivers.size()) {
        result.mistakes.push_back(
            {Field::Hosts, tr("%1 windows, %2 on each host, take %3 hosts: there are %4")
                               .arg(QString::number(plan.windowCount()), QString::number(screens),
                                    QString::number(needed), QString::number(hosts.drivers.size()))});
        return result;
    }
    const zoHPCWallProjections::List projections = zoHPCWallProjections::make(plan);
    zoHPCDisplayItem display;
    addWindows(display, plan, showsOf(plan, zoHPCWallProjections::tilesOf(projections), std::size_t(screens)),
               hosts.drivers, screens);
    zoHPCConfiguration configuration;
    fill(configuration, hosts.text, projections, display);
    tellProblems(configuration, plan, result);
    if (result.isGood())
        result.text = configuration.text();
    return result;
}

QString zoHPCWallBuilder::sketch(const zoHPCWallPlan& plan)
{
    if (!zoHPCWallMistakes::find(plan).empty())
        return {};
    const zoHPCWallProjections::List projections = zoHPCWallProjections::make(plan);
    zoHPCDisplayItem display;
    addWindows(display, plan, showsOf(plan, zoHPCWallProjections::tilesOf(projections), 1), {}, 1);
    zoHPCConfiguration configuration;
    fill(configuration, QString::fromLatin1(""), projections, display);
    return configuration.text();
}
