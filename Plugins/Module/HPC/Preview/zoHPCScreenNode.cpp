#include "zoHPCScreenNode.h"

#include "zoHPCLayout.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"
#include "zoHPCWindowOverlaps.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
using Screen = zoHPCScreenNode::Screen;
using Viewport = zoHPCScreenNode::Viewport;
using Window = zoHPCScreenNode::Window;

// Damaged numbers must not make everything else vanish.
constexpr double s_farthestPixel = 65536.0;
constexpr double s_farthestCorner = 1e9; // windows

QRectF limited(const QRectF& geometry)
{
    return geometry.normalized().intersected(
        QRectF(-s_farthestPixel, -s_farthestPixel, 2 * s_farthestPixel, 2 * s_farthestPixel));
}

// The toolkit takes "nan" and "inf" for numbers, and imported configurations have them. The difference of two
// corners must stay a number as well.
QRectF finite(const QRectF& area)
{
    const auto corner = [](double value) {
        return std::isfinite(value) ? std::clamp(value, -s_farthestCorner, s_farthestCorner) : 0.0;
    };
    return {QPointF(corner(area.left()), corner(area.top())),
            QPointF(corner(area.right()), corner(area.bottom()))};
}

// Reads one layout, step by step.
class Reader final
{
public:
    Reader(const zoHPCLayout& layout, const QSizeF& screenSize) : m_layout(layout), m_screenSize(screenSize)
    {
    }

    void readWindows();
    void readViewports();
    void sortScreens();
    void markOverlaps();

    std::vector<zoHPCScreenNode> nodes;

private:
    void measure(Screen& screen) const;
    static void markCovered(Screen& screen);

    const zoHPCLayout& m_layout;
    const QSizeF m_screenSize;
    std::vector<std::pair<size_t, size_t>> m_places; // of each window of the layout: node, and where in it
    std::vector<std::vector<std::pair<int, Window>>> m_windows; // by node: screen and window
};

void Reader::readWindows()
{
    QHash<QString, size_t> nodesByName;
    const bool manyDisplays = !m_layout.windows().empty() &&
                              m_layout.windows().front().display != m_layout.windows().back().display;
    for (const zoHPCLayout::Window& source : m_layout.windows()) {
        const auto known = nodesByName.constFind(source.node);
        size_t index = nodes.size();
        if (known != nodesByName.constEnd()) {
            index = *known;
        } else {
            nodesByName.insert(source.node, index);
            zoHPCScreenNode node;
            node.name = source.node;
            node.isKnown = source.nodeIndex != zoHPCLayout::None;
            node.isEnabled = node.isKnown && m_layout.nodes()[static_cast<size_t>(source.nodeIndex)].enabled;
            nodes.push_back(node);
            m_windows.emplace_back();
        }
        Window window;
        window.item = source.item;
        window.name = manyDisplays ? zoHPCScreenNode::tr("Window %1 of display %2")
                                         .arg(QString::number(source.number), QString::number(source.display))
                                   : zoHPCScreenNode::tr("Window %1").arg(QString::number(source.number));
        window.isFullScreen = source.isFullScreen;
        window.geometry = source.geometry;
        m_places.emplace_back(index, m_windows[index].size());
        m_windows[index].emplace_back(source.screen, window);
    }
}

void Reader::readViewports()
{
    for (const zoHPCLayout::Viewport& source : m_layout.viewports()) {
        if (source.window == zoHPCLayout::None)
            continue;
        Viewport viewport;
        viewport.item = source.item;
        if (source.projection != zoHPCLayout::None) {
            const zoHPCLayout::Projection& projection =
                m_layout.projections()[static_cast<size_t>(source.projection)];
            viewport.shown = projection.item;
            viewport.shownTop = m_layout.projections()[static_cast<size_t>(projection.top)].item;
            viewport.projection = projection.item->getString(zoHPCProjectionItem::Name);
        }
        viewport.eye = source.item->getString(zoHPCViewportItem::Eye);
        viewport.isFlippedX = source.item->getBool(zoHPCViewportItem::FlipX);
        viewport.isFlippedY = source.item->getBool(zoHPCViewportItem::FlipY);
        viewport.area = finite(source.area);
        const auto& [node, index] = m_places[static_cast<size_t>(source.window)];
        m_windows[node][index].second.viewports.push_back(viewport);
    }
}

void Reader::sortScreens()
{
    for (size_t i = 0; i < nodes.size(); ++i) {
        std::vector<Screen>& screens = nodes[i].screens;
        for (auto& window : m_windows[i]) {
            auto screen = std::find_if(screens.begin(), screens.end(),
                                       [&](const Screen& s) { return s.number == window.first; });
            if (screen == screens.end()) {
                screen = screens.insert(screens.end(), Screen());
                screen->number = window.first;
            }
            screen->windows.push_back(std::move(window.second));
        }
        std::sort(screens.begin(), screens.end(),
                  [](const Screen& a, const Screen& b) { return a.number < b.number; });
        for (Screen& screen : screens)
            measure(screen);
    }
}

void Reader::markOverlaps()
{
    QHash<const QTreeWidgetItem*, std::pair<Screen*, Window*>> byItem;
    for (zoHPCScreenNode& node : nodes) {
        for (Screen& screen : node.screens) {
            for (Window& window : screen.windows)
                byItem.insert(window.item, {&screen, &window});
        }
    }
    for (const auto& pair : zoHPCWindowOverlaps::find(m_layout)) {
        const auto later = byItem.value(pair.first->item);
        const auto earlier = byItem.value(pair.second->item);
        if (!later.second || !earlier.second)
            continue;
        later.second->overlaps = true;
        earlier.second->overlaps = true;
        if (later.first == earlier.first)
            later.first->overlaps.push_back(later.second->geometry.intersected(earlier.second->geometry));
    }
    for (zoHPCScreenNode& node : nodes) {
        for (Screen& screen : node.screens)
            markCovered(screen);
    }
}

void Reader::markCovered(Screen& screen)
{
    // Texts on top of each other can be read by nobody: those of a window wholly below a later one stay away.
    constexpr size_t Many = 500;
    for (size_t i = 0; i < screen.windows.size(); ++i) {
        if (!screen.windows[i].overlaps)
            continue;
        const size_t end = std::min(screen.windows.size(), i + Many);
        for (size_t j = i + 1; j < end && !screen.windows[i].isCovered; ++j)
            screen.windows[i].isCovered = screen.windows[j].geometry.contains(screen.windows[i].geometry);
    }
}

void Reader::measure(Screen& screen) const
{
    const bool isDesktop = screen.number == zoHPCLayout::ExtendedDesktop;
    screen.isSizeKnown = !m_screenSize.isEmpty() && !isDesktop;
    QSizeF needed;
    QSizeF whole;
    for (const Window& window : screen.windows) {
        const QRectF geometry = limited(window.geometry);
        if (window.isFullScreen)
            whole = whole.expandedTo(geometry.size());
        else
            needed = needed.expandedTo(QSizeF(geometry.right(), geometry.bottom()));
    }
    screen.size = screen.isSizeKnown ? m_screenSize : needed.isEmpty() ? whole : needed;
    if (screen.size.isEmpty())
        screen.size = QSizeF(1280.0, 1024.0);

    const QRectF face(QPointF(0.0, 0.0), screen.size);
    screen.bounds = face;
    for (Window& window : screen.windows) {
        if (window.isFullScreen) {
            window.geometry = face;
            continue;
        }
        window.geometry = limited(window.geometry);
        screen.bounds = screen.bounds.united(window.geometry);
        window.isOffScreen = !isDesktop && !face.contains(window.geometry);
    }
}
} // namespace

std::vector<zoHPCScreenNode> zoHPCScreenNode::read(const zoHPCLayout& layout, const QSizeF& screenSize)
{
    Reader reader(layout, screenSize);
    reader.readWindows();
    reader.readViewports();
    reader.sortScreens();
    reader.markOverlaps();
    return std::move(reader.nodes);
}
