#include "zoHPCLayout.h"

#include "zoHPCDisplayItem.h"
#include "zoHPCDisplaySetup.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCTreeItem.h"
#include "zoHPCTreeWalk.h"
#include "zoHPCUniqueNames.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <algorithm>
#include <optional>

namespace
{
template <class T>
QList<T*> itemsOf(const QTreeWidget* tree)
{
    return tree ? zoHPCTreeWidgetItem::subChildren<T>(tree) : QList<T*>();
}

// The place of a display among the displays of its setup; none when it stands alone.
std::optional<int> placeOf(const QTreeWidgetItem* display)
{
    if (!display)
        return std::nullopt;
    const QTreeWidget* const tree = display->treeWidget();
    const QTreeWidgetItem* const root = tree ? tree->invisibleRootItem() : display->parent();
    if (!root)
        return std::nullopt;
    return root->indexOfChild(const_cast<QTreeWidgetItem*>(display));
}

bool isStereo(const QString& eye)
{
    const zoHPCDisplayTables::StereoMode* const mode = zoHPCDisplayTables::stereoMode(eye);
    return mode && mode->eyes != zoHPCDisplayTables::StereoMode::Eyes::Mono;
}

QRectF viewportArea(const zoHPCViewportItem& viewport, const QSizeF& window)
{
    double x1 = viewport.getDouble(zoHPCViewportItem::X1);
    double y1 = viewport.getDouble(zoHPCViewportItem::Y1);
    double x2 = viewport.getDouble(zoHPCViewportItem::X2);
    double y2 = viewport.getDouble(zoHPCViewportItem::Y2);
    if (viewport.isInPixels() && window.width() > 0.0 && window.height() > 0.0) {
        x1 /= window.width();
        x2 /= window.width();
        y1 /= window.height();
        y2 /= window.height();
    }
    return QRectF(QPointF(x1, 1.0 - y2), QPointF(x2, 1.0 - y1)).normalized();
}
} // namespace

QString zoHPCLayout::Projection::name() const
{
    return item->getString(zoHPCProjectionItem::Name);
}

zoHPCLayout::zoHPCLayout(const QList<zoHPCProjectionItem*>& projections,
                         const QList<zoHPCWindowItem*>& windows, zoHPCTreeItem* master)
{
    m_master = master;
    readNodes(master);
    nameNodes();
    readProjections(projections);
    readWindows(windows);
    linkViewports();
    markOverviews();
    markShown();
}

zoHPCLayout::zoHPCLayout(const QTreeWidget* projections, const QTreeWidget* displays, zoHPCTreeItem* master)
    : zoHPCLayout(itemsOf<zoHPCProjectionItem>(projections), itemsOf<zoHPCWindowItem>(displays), master)
{
    if (displays)
        readDisplays(displays->invisibleRootItem());
}

zoHPCLayout::zoHPCLayout(const zoHPCDisplaySetup& displays, zoHPCTreeItem* master)
    : zoHPCLayout(displays.getProjectionItems(), displays.getWindowItems(), master)
{
    readDisplays(displays.displayRoot());
}

void zoHPCLayout::readDisplays(const QTreeWidgetItem* root)
{
    m_displays.clear();
    for (int i = 0; i < root->childCount(); ++i) {
        auto* const display = dynamic_cast<zoHPCDisplayItem*>(root->child(i));
        if (display && !dynamic_cast<const zoHPCWindowItem*>(display))
            m_displays.push_back(display);
    }
}

int zoHPCLayout::indexOf(const QTreeWidgetItem* projection) const
{
    const auto found = std::find_if(m_projections.begin(), m_projections.end(),
                                    [projection](const Projection& p) { return p.item == projection; });
    return projection && found != m_projections.end() ? static_cast<int>(found - m_projections.begin())
                                                      : None;
}

std::vector<int> zoHPCLayout::chosenBy(const QSet<const QTreeWidgetItem*>& rows) const
{
    std::vector<bool> isChosen(m_projections.size());
    for (size_t i = 0; i < m_projections.size(); ++i)
        isChosen[i] = rows.contains(m_projections[i].item);
    for (const Viewport& viewport : m_viewports) {
        const QTreeWidgetItem* item = viewport.item;
        while (item && !rows.contains(item))
            item = item->parent();
        if (item && viewport.projection != None)
            isChosen[static_cast<size_t>(viewport.projection)] = true;
    }
    std::vector<int> result;
    for (size_t i = 0; i < isChosen.size(); ++i) {
        if (isChosen[i])
            result.push_back(static_cast<int>(i));
    }
    return result;
}

std::vector<const zoHPCLayout::Projection*>
zoHPCLayout::tilesOrTheirProjections(const std::function<bool(size_t)>& claim) const
{
    std::vector<bool> holds(m_projections.size(), false);
    std::vector<int> without(m_projections.size(), 0); // by top-level row: tiles for which it does not hold
    for (size_t i = 0; i < m_projections.size(); ++i) {
        if (!m_projections[i].isTile)
            continue;
        holds[i] = claim(i);
        without[static_cast<size_t>(m_projections[i].top)] += holds[i] ? 0 : 1;
    }
    std::vector<const Projection*> result;
    for (size_t i = 0; i < m_projections.size(); ++i) {
        const size_t top = static_cast<size_t>(m_projections[i].top);
        const bool isWhole = top == i && without[i] == 0;
        if (isWhole || (holds[i] && without[top] > 0))
            result.push_back(&m_projections[i]);
    }
    return result;
}

QSizeF zoHPCLayout::tilePixels(int projection) const
{
    for (const Viewport& viewport : m_viewports) {
        if (viewport.projection == None || viewport.window == None)
            continue;
        const Projection& shown = m_projections[static_cast<size_t>(viewport.projection)];
        // A tile may also be a projection of its own.
        const bool isTile =
            viewport.projection == projection && shown.item->kind() == zoHPCProjectionType::Kind::Tile;
        if (shown.parent != projection && !isTile)
            continue;
        const QSizeF window = m_windows[static_cast<size_t>(viewport.window)].geometry.size();
        const QSizeF size(window.width() * viewport.area.width(), window.height() * viewport.area.height());
        if (size.width() >= 1.0 && size.height() >= 1.0)
            return size;
    }
    return QSizeF(1280.0, 1024.0);
}

std::vector<QStringList> zoHPCLayout::nodesOfProjections() const
{
    std::vector<QStringList> nodes(m_projections.size());
    for (const Viewport& viewport : m_viewports) {
        if (viewport.projection == None || viewport.window == None)
            continue;
        const QString& node = m_windows[static_cast<size_t>(viewport.window)].node;
        QStringList& own = nodes[static_cast<size_t>(viewport.projection)];
        if (!node.isEmpty() && !own.contains(node))
            own << node;
    }
    return nodes;
}

int zoHPCLayout::nodeNamed(const QString& name) const
{
    return m_nodeSlots.empty() ? None : m_nodeSlots[nodeSlot(name)] - 1;
}

unsigned zoHPCLayout::eyesOf(const QString& eye)
{
    using Eyes = zoHPCDisplayTables::StereoMode::Eyes;
    const zoHPCDisplayTables::StereoMode* const mode = zoHPCDisplayTables::stereoMode(eye);
    if (mode && mode->eyes == Eyes::Left)
        return LeftEye;
    if (mode && mode->eyes == Eyes::Right)
        return RightEye;
    return BothEyes;
}

bool zoHPCLayout::isScreen(const QString& word)
{
    bool isNumber = false;
    return word.toInt(&isNumber) >= ExtendedDesktop && isNumber;
}

void zoHPCLayout::readProjections(const QList<zoHPCProjectionItem*>& items)
{
    m_projections.reserve(static_cast<size_t>(items.size()));
    std::vector<int> above; // the rows from the top down to the last one
    for (zoHPCProjectionItem* item : items) {
        if (!item)
            continue;
        while (!above.empty() && m_projections[static_cast<size_t>(above.back())].item != item->parent())
            above.pop_back();
        const int index = static_cast<int>(m_projections.size());
        Projection projection;
        projection.item = item;
        projection.parent = above.empty() ? None : above.back();
        projection.top = above.empty() ? index : above.front();
        projection.isTile = item->childCount() == 0;
        m_projections.push_back(projection);
        if (!projection.isTile)
            above.push_back(index);
    }
}

zoHPCLayout::Window zoHPCLayout::windowOf(zoHPCWindowItem* item) const
{
    Window window;
    window.item = item;
    window.node = item->renderNode();
    window.nodeIndex = nodeNamed(window.node);
    // Names of machines do not tell upper from lower case, those of nodes do.
    window.machine = window.nodeIndex == None
                         ? window.node
                         : m_nodes[static_cast<size_t>(window.nodeIndex)].item->hostName().toLower();
    window.screen = item->getInt(zoHPCWindowItem::Screen);
    const QString screen = item->getString(zoHPCWindowItem::Screen);
    window.hasScreen = screen.isEmpty() || isScreen(screen);
    window.isFullScreen = item->getBool(zoHPCWindowItem::FullScreen);
    window.geometry = QRectF(item->getInt(zoHPCWindowItem::X), item->getInt(zoHPCWindowItem::Y),
                             item->getInt(zoHPCWindowItem::Width), item->getInt(zoHPCWindowItem::Height));
    return window;
}

void zoHPCLayout::readWindows(const QList<zoHPCWindowItem*>& items)
{
    QHash<const QTreeWidgetItem*, int> displays;     // to their numbers
    QHash<const QTreeWidgetItem*, int> windowCounts; // by display
    QHash<const QTreeWidgetItem*, int> windows;      // to their indices
    std::vector<int> viewportCounts;                 // by window
    for (zoHPCWindowItem* item : items) {
        if (auto* viewportItem = dynamic_cast<zoHPCViewportItem*>(item)) {
            Viewport viewport;
            viewport.item = viewportItem;
            viewport.window = windows.value(item->parent(), None);
            QSizeF size;
            if (viewport.window != None) {
                viewport.number = ++viewportCounts[static_cast<size_t>(viewport.window)];
                size = m_windows[static_cast<size_t>(viewport.window)].geometry.size();
            }
            const QString eye = viewportItem->getString(zoHPCViewportItem::Eye);
            viewport.eyes = eyesOf(eye);
            viewport.isStereo = isStereo(eye);
            viewport.area = viewportArea(*viewportItem, size);
            m_viewports.push_back(viewport);
        } else if (item) {
            const QTreeWidgetItem* const display = item->parent();
            if (!displays.contains(display)) {
                displays.insert(display, placeOf(display).value_or(displays.size()) + 1);
                if (auto* const own = dynamic_cast<zoHPCDisplayItem*>(item->parent()))
                    m_displays.push_back(own);
            }
            Window window = windowOf(item);
            window.display = displays.value(display);
            window.number = ++windowCounts[display];
            if (const auto* displayItem = dynamic_cast<const zoHPCDisplayItem*>(display))
                window.user = displayItem->getString(zoHPCDisplayItem::User);
            windows.insert(item, static_cast<int>(m_windows.size()));
            m_windows.push_back(window);
            viewportCounts.push_back(0);
        }
    }
}

// The whole beside a few of its tiles is a mistake, the whole beside most of them a copy: of a wall that is nearly
// complete, what is missing shall be told as such.
void zoHPCLayout::markOverviews()
{
    std::vector<bool> isOwn(m_projections.size(), false);
    for (const Viewport& viewport : m_viewports) {
        if (viewport.projection != None)
            isOwn[static_cast<size_t>(viewport.projection)] = true;
    }
    std::vector<int> tiles(m_projections.size(), 0); // by the projection above
    std::vector<int> own(m_projections.size(), 0);
    for (size_t i = 0; i < m_projections.size(); ++i) {
        if (m_projections[i].parent == None || !m_projections[i].isTile)
            continue;
        const size_t parent = static_cast<size_t>(m_projections[i].parent);
        ++tiles[parent];
        own[parent] += isOwn[i] ? 1 : 0;
    }
    for (Viewport& viewport : m_viewports) {
        if (viewport.projection == None)
            continue;
        const size_t shown = static_cast<size_t>(viewport.projection);
        viewport.isOverview = tiles[shown] > 1 && 2 * own[shown] > tiles[shown];
    }
}

void zoHPCLayout::markShown()
{
    std::vector<bool> isWhole(m_projections.size(), false); // with all below it
    for (const Viewport& viewport : m_viewports) {
        if (viewport.projection == None)
            continue;
        const size_t shown = static_cast<size_t>(viewport.projection);
        m_projections[shown].isShown = true;
        isWhole[shown] = isWhole[shown] || !viewport.isOverview;
    }
    // Parents come before their children.
    for (size_t i = 0; i < m_projections.size(); ++i) {
        const int parent = m_projections[i].parent;
        if (parent == None || !isWhole[static_cast<size_t>(parent)])
            continue;
        m_projections[i].isShown = true;
        isWhole[i] = true;
    }
}

void zoHPCLayout::readNodes(zoHPCTreeItem* master)
{
    if (!master)
        return;
    struct Above
    {
        int network; // index of the parent when that is a network
        bool enabled;
    };
    zoHPCTreeWalk::inherit(std::vector<zoHPCTreeItem*>{master}, Above{None, true},
                           [this](zoHPCTreeItem* item, int, const Above& above) {
                               const bool enabled = above.enabled && item->isEnabled();
                               if (item->isNetwork()) {
                                   m_networks.push_back({item, enabled, {}, 0});
                                   return Above{static_cast<int>(m_networks.size()) - 1, enabled};
                               }
                               if (item->isNode())
                                   addNode(item, above.network, enabled);
                               return Above{None, enabled};
                           });
}

void zoHPCLayout::addNode(zoHPCTreeItem* item, int network, bool enabled)
{
    m_nodes.push_back({item, QString(), enabled});
    if (network == None)
        return;
    Network& parent = m_networks[static_cast<size_t>(network)];
    parent.nodes.push_back(item);
    parent.enabledNodes += enabled ? 1 : 0;
}

void zoHPCLayout::nameNodes()
{
    std::vector<const QString*> hostNames;
    hostNames.reserve(m_nodes.size());
    for (const Node& node : m_nodes)
        hostNames.push_back(&node.item->hostName());
    const zoHPCUniqueNames names(std::move(hostNames));
    std::size_t room = 16;
    while (room < 2 * m_nodes.size())
        room *= 2;
    m_nodeSlots.assign(room, 0);
    for (size_t i = 0; i < m_nodes.size(); ++i) {
        if (m_nodes[i].item->hostName().isEmpty())
            continue;
        m_nodes[i].name = names.name(i);
        // "n 1" may be a host name as well; the first node counts.
        int& slot = m_nodeSlots[nodeSlot(m_nodes[i].name)];
        if (slot == 0)
            slot = static_cast<int>(i) + 1;
    }
}

std::size_t zoHPCLayout::nodeSlot(const QString& name) const
{
    std::size_t slot = qHash(name) & (m_nodeSlots.size() - 1);
    while (m_nodeSlots[slot] != 0 && m_nodes[static_cast<std::size_t>(m_nodeSlots[slot] - 1)].name != name)
        slot = (slot + 1) & (m_nodeSlots.size() - 1);
    return slot;
}

void zoHPCLayout::linkViewports()
{
    // Only what viewports refer to is looked up: a wall has many more tiles than there are viewports.
    QHash<QString, int> identifiers;
    QHash<QString, int> names;
    for (const Viewport& viewport : m_viewports) {
        identifiers.insert(viewport.item->getString(zoHPCViewportItem::ProjectionIdentifier), None);
        names.insert(viewport.item->getString(zoHPCViewportItem::Projection), None);
    }
    identifiers.remove(QString());
    names.remove(QString());
    // Of equal ones the last counts, as for the links of the editor.
    const auto lookUp = [this](QHash<QString, int>& wanted, int column) {
        for (size_t i = 0; i < m_projections.size() && !wanted.isEmpty(); ++i) {
            const auto found = wanted.find(m_projections[i].item->getString(column));
            if (found != wanted.end())
                *found = static_cast<int>(i);
        }
    };
    lookUp(identifiers, zoHPCProjectionItem::Identifier);
    bool needsNames = false;
    for (Viewport& viewport : m_viewports) {
        viewport.projection =
            identifiers.value(viewport.item->getString(zoHPCViewportItem::ProjectionIdentifier), None);
        needsNames |= viewport.projection == None;
    }
    if (!needsNames)
        return;
    lookUp(names, zoHPCProjectionItem::Name);
    for (Viewport& viewport : m_viewports) {
        if (viewport.projection == None)
            viewport.projection = names.value(viewport.item->getString(zoHPCViewportItem::Projection), None);
    }
}
