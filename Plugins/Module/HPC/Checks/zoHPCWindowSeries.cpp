#include "zoHPCWindowSeries.h"

#include "zoHPCLayout.h"
#include "zoHPCProjectionChecks.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCTreeItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>

namespace
{
using Cover = zoHPCWindowSeries::Cover;

// As many as a document's windows can name.
constexpr int s_mostScreens = 16;

std::unique_ptr<zoHPCWindowItem> copyOf(const zoHPCWindowItem& window)
{
    // Copying leaves the source as it is, though its signature does not say so.
    return std::unique_ptr<zoHPCWindowItem>(const_cast<zoHPCWindowItem&>(window).clone());
}

Cover::Surface surfaceOf(const zoHPCProjectionItem& projection)
{
    return {projection.getString(zoHPCProjectionItem::Identifier),
            projection.getString(zoHPCProjectionItem::Name)};
}

void show(zoHPCViewportItem& viewport, const Cover::Surface& surface)
{
    viewport.setString(zoHPCViewportItem::ProjectionIdentifier, surface.identifier);
    viewport.setProjection(surface.name);
}

// Names of the nodes that draw, in tree order.
QStringList drawingNodes(const zoHPCLayout& layout)
{
    QStringList names;
    for (const zoHPCLayout::Node& node : layout.nodes()) {
        if (node.enabled && !node.name.isEmpty() && zoHPCWindowSeries::isDrawing(*node.item))
            names << node.name;
    }
    return names;
}

// A window that shows one surface and nothing else.
struct Showing
{
    const zoHPCLayout::Window* window;
    int projection;
};

std::vector<Showing> windowsOfOneSurface(const zoHPCLayout& layout)
{
    constexpr int Several = -2;
    std::vector<int> shown(layout.windows().size(), zoHPCLayout::None);
    for (const zoHPCLayout::Viewport& viewport : layout.viewports()) {
        if (viewport.window == zoHPCLayout::None)
            continue;
        int& own = shown[static_cast<size_t>(viewport.window)];
        own = own == zoHPCLayout::None || own == viewport.projection ? viewport.projection : Several;
    }
    std::vector<Showing> result;
    for (size_t i = 0; i < shown.size(); ++i) {
        if (shown[i] >= 0)
            result.push_back({&layout.windows()[i], shown[i]});
    }
    return result;
}

// The windows of one tile beside the first dark one are what the wall is like.
void findPattern(const zoHPCLayout& layout, Cover& cover, int top)
{
    const std::vector<Showing> all = windowsOfOneSurface(layout);
    const auto topOf = [&layout](int projection) {
        return layout.projections()[static_cast<size_t>(projection)].top;
    };
    auto like = std::find_if(all.begin(), all.end(),
                             [&](const Showing& one) { return topOf(one.projection) == top; });
    // Planes that stand alone are alike.
    if (like == all.end())
        like = std::find_if(all.begin(), all.end(), [&](const Showing& one) {
            return layout.projections()[static_cast<size_t>(one.projection)].isTile;
        });
    if (like == all.end())
        return;
    for (const Showing& one : all) {
        if (one.projection == like->projection)
            cover.pattern.push_back(one.window->item);
    }
    cover.display = dynamic_cast<zoHPCDisplayItem*>(like->window->item->parent());
}

// Windows that the busiest node has now.
int windowsOnANode(const zoHPCLayout& layout)
{
    QHash<QString, int> counts;
    int most = 1;
    for (const zoHPCLayout::Window& window : layout.windows()) {
        if (!window.node.isEmpty())
            most = std::max(most, ++counts[window.node]);
    }
    return most;
}

void place(const zoHPCLayout& layout, Cover& cover)
{
    QSet<QString> used;
    for (const zoHPCLayout::Window& window : layout.windows())
        used.insert(window.node);
    QStringList free = drawingNodes(layout);
    free.erase(std::remove_if(free.begin(), free.end(),
                              [&used](const QString& name) { return used.contains(name); }),
               free.end());
    const int wanted = int(cover.shown.size() * std::max<size_t>(1, cover.pattern.size()));
    int screens = windowsOnANode(layout);
    if (!free.isEmpty() && wanted > free.size() * screens)
        screens = (wanted + free.size() - 1) / free.size();
    screens = std::min(screens, s_mostScreens);
    cover.hasScreens = screens > 1;
    cover.places.resize(static_cast<size_t>(wanted));
    for (int i = 0; i < wanted; ++i)
        cover.places[static_cast<size_t>(i)] = {free.value(i / screens), i % screens};
}

// Documents refer to what is shown by its name.
bool hasNamesOfTheirOwn(const zoHPCLayout& layout, const Cover& cover)
{
    QHash<QString, int> counts;
    for (const zoHPCLayout::Projection& projection : layout.projections())
        ++counts[projection.name()];
    return std::all_of(cover.shown.begin(), cover.shown.end(),
                       [&counts](const Cover::Surface& shown) { return counts.value(shown.name) == 1; });
}
} // namespace

bool zoHPCWindowSeries::isDrawing(const zoHPCTreeItem& node)
{
    // What is below a node are the networks that it forwards to.
    return node.isRenderNode() && node.childCount() == 0;
}

bool zoHPCWindowSeries::isDark(const zoHPCLayout& layout, size_t projection)
{
    const zoHPCLayout::Projection& one = layout.projections()[projection];
    return !one.isShown && !zoHPCProjectionChecks::hasNoTiles(*one.item);
}

zoHPCWindowSeries::Cover zoHPCWindowSeries::cover(const zoHPCLayout& layout)
{
    Cover cover;
    int first = zoHPCLayout::None;
    for (size_t i = 0; i < layout.projections().size(); ++i) {
        if (!layout.projections()[i].isTile || !isDark(layout, i))
            continue;
        cover.shown.push_back(surfaceOf(*layout.projections()[i].item));
        if (first == zoHPCLayout::None)
            first = static_cast<int>(i);
    }
    if (cover.shown.empty())
        return cover;
    if (!layout.displays().empty())
        cover.display = layout.displays().back();
    const int top = layout.projections()[static_cast<size_t>(first)].top;
    findPattern(layout, cover, top);
    const QSizeF size = layout.tilePixels(top);
    cover.width = qRound(size.width());
    cover.height = qRound(size.height());
    place(layout, cover);
    cover.isSound = cover.display && hasNamesOfTheirOwn(layout, cover) &&
                    std::none_of(cover.places.begin(), cover.places.end(),
                                 [](const Cover::Slot& place) { return place.node.isEmpty(); });
    return cover;
}

zoHPCWindowSeries::Windows Cover::windows() const
{
    Windows windows;
    windows.reserve(places.size());
    for (const Surface& surface : shown) {
        for (size_t i = 0; i < std::max<size_t>(1, pattern.size()); ++i) {
            std::unique_ptr<zoHPCWindowItem> window;
            if (pattern.empty()) {
                window = std::make_unique<zoHPCWindowItem>();
                window->setInt(zoHPCWindowItem::Width, width);
                window->setInt(zoHPCWindowItem::Height, height);
                window->addChild(new zoHPCViewportItem);
            } else {
                window = copyOf(*pattern[i]);
            }
            const Slot& place = places[windows.size()];
            window->setRenderNode(place.node);
            if (hasScreens)
                window->setString(zoHPCWindowItem::Screen, QString::number(place.screen));
            const QList<zoHPCViewportItem*> viewports = window->children<zoHPCViewportItem>();
            for (zoHPCViewportItem* viewport : viewports)
                show(*viewport, surface);
            window->update();
            windows.push_back(std::move(window));
        }
    }
    return windows;
}

zoHPCWindowSeries::Windows zoHPCWindowSeries::after(const zoHPCLayout& layout,
                                                    const std::vector<const zoHPCWindowItem*>& windows)
{
    const QStringList nodes = drawingNodes(layout);
    QHash<QString, int> placeOfNode;
    for (int i = 0; i < nodes.size(); ++i)
        placeOfNode.insert(nodes.at(i), i);
    std::vector<const zoHPCProjectionItem*> tiles;
    QHash<QString, int> placeOfTile; // by identifier
    for (const zoHPCLayout::Projection& projection : layout.projections()) {
        if (!projection.isTile)
            continue;
        placeOfTile.insert(projection.item->getString(zoHPCProjectionItem::Identifier), int(tiles.size()));
        tiles.push_back(projection.item);
    }
    QSet<QString> ownNodes;
    QSet<QString> ownTiles;
    for (const zoHPCWindowItem* window : windows) {
        ownNodes.insert(window->renderNode());
        const QList<zoHPCViewportItem*> viewports = window->children<zoHPCViewportItem>();
        for (const zoHPCViewportItem* viewport : viewports)
            ownTiles.insert(viewport->getString(zoHPCViewportItem::ProjectionIdentifier));
    }
    Windows result;
    result.reserve(windows.size());
    for (const zoHPCWindowItem* window : windows) {
        std::unique_ptr<zoHPCWindowItem> copy = copyOf(*window);
        const int node = placeOfNode.value(window->renderNode(), nodes.size());
        copy->setRenderNode(nodes.value(node + ownNodes.size()));
        for (int i = 0; i < copy->childCount(); ++i) {
            auto* const viewport = dynamic_cast<zoHPCViewportItem*>(copy->child(i));
            const auto* const source = dynamic_cast<const zoHPCViewportItem*>(window->child(i));
            const QString identifier =
                source ? source->getString(zoHPCViewportItem::ProjectionIdentifier) : QString();
            if (!viewport || !placeOfTile.contains(identifier))
                continue;
            const size_t next = static_cast<size_t>(placeOfTile.value(identifier) + ownTiles.size());
            show(*viewport, next < tiles.size() ? surfaceOf(*tiles[next]) : Cover::Surface());
        }
        copy->update();
        result.push_back(std::move(copy));
    }
    return result;
}

std::vector<QString> zoHPCWindowSeries::nodesFrom(const zoHPCLayout& layout, const QString& first,
                                                  const std::vector<const zoHPCWindowItem*>& windows)
{
    const QStringList drawing = drawingNodes(layout);
    // A person may begin at a gateway, on purpose.
    QStringList nodes = drawing.mid(std::max<int>(0, drawing.indexOf(first)));
    if (!drawing.contains(first))
        nodes.prepend(first);
    std::vector<QString> result;
    result.reserve(windows.size());
    QHash<QString, int> places; // of the nodes that the windows have now
    int next = 0;
    for (const zoHPCWindowItem* window : windows) {
        const QString node = window->renderNode();
        const auto known = places.constFind(node);
        const bool isTogether = !node.isEmpty() && known != places.constEnd();
        const int place = isTogether ? *known : next++;
        places.insert(node, place);
        result.push_back(nodes.value(place));
    }
    return result;
}
