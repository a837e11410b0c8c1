#include "zoHPCWindowOverlaps.h"

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <array>
#include <map>

namespace
{
using Window = zoHPCLayout::Window;

bool shareArea(const QRectF& a, const QRectF& b)
{
    return a.left() < b.right() && b.left() < a.right() && a.top() < b.bottom() && b.top() < a.bottom();
}

// Windows of one screen in the order of their left edges, with the windows that still reach the current
// place by their upper edges: for each one it finds another that it overlaps, if there is one.
class OverlapFinder
{
public:
    explicit OverlapFinder(std::vector<const Window*> windows) : m_windows(std::move(windows))
    {
        m_windows.erase(std::remove_if(m_windows.begin(), m_windows.end(),
                                       [](const Window* window) { return window->geometry.isEmpty(); }),
                        m_windows.end());
        for (const Window* window : m_windows)
            m_tallest = std::max(m_tallest, window->geometry.height());
    }

    // Pairs in the order of the tree, each window at most once as the second one.
    std::vector<std::pair<const Window*, const Window*>> pairs()
    {
        std::map<const Window*, const Window*> partners; // the later one in the tree to the earlier one
        std::vector<const Window*> sorted = withoutCopies(partners);
        std::stable_sort(sorted.begin(), sorted.end(), [](const Window* a, const Window* b) {
            return a->geometry.left() < b->geometry.left();
        });
        std::multimap<double, const Window*> active; // by upper edge
        std::multimap<double, std::multimap<double, const Window*>::iterator> byRight;
        for (const Window* window : sorted) {
            const QRectF& area = window->geometry;
            while (!byRight.empty() && byRight.begin()->first <= area.left()) {
                active.erase(byRight.begin()->second);
                byRight.erase(byRight.begin());
            }
            for (auto other = active.lower_bound(area.top() - m_tallest);
                 other != active.end() && other->first < area.bottom(); ++other) {
                if (shareArea(area, other->second->geometry))
                    partners.emplace(std::max(window, other->second), std::min(window, other->second));
            }
            byRight.emplace(area.right(), active.emplace(area.top(), window));
        }
        return {partners.begin(), partners.end()};
    }

private:
    // Windows at one and the same place overlap the first of them, which stands for all.
    std::vector<const Window*> withoutCopies(std::map<const Window*, const Window*>& partners) const
    {
        std::map<std::array<double, 4>, const Window*> firsts;
        std::vector<const Window*> result;
        for (const Window* window : m_windows) {
            const QRectF& area = window->geometry;
            const auto place = firsts.emplace(
                std::array<double, 4>{area.x(), area.y(), area.width(), area.height()}, window);
            if (place.second)
                result.push_back(window);
            else
                partners.emplace(window, place.first->second);
        }
        return result;
    }

    std::vector<const Window*> m_windows; // not owned; neighbours in one vector, so addresses are tree order
    double m_tallest = 0.0;
};
} // namespace

std::vector<zoHPCWindowOverlaps::Pair> zoHPCWindowOverlaps::find(const zoHPCLayout& layout)
{
    struct Node
    {
        std::map<int, std::vector<const Window*>> screens;
        const Window* desktopFiller = nullptr; // the first one in full screen on the extended desktop
    };
    QHash<QString, Node> nodes;
    QStringList order;
    for (const Window& window : layout.windows()) {
        if (window.node.isEmpty())
            continue;
        if (!nodes.contains(window.node))
            order.append(window.node);
        Node& node = nodes[window.node];
        node.screens[window.screen].push_back(&window);
        if (window.isFullScreen && window.screen == zoHPCLayout::ExtendedDesktop && !node.desktopFiller)
            node.desktopFiller = &window;
    }

    std::map<const Window*, const Window*> partners; // the later window to an earlier one
    const auto addPair = [&partners](const Window* a, const Window* b) {
        if (a != b)
            partners.emplace(std::max(a, b), std::min(a, b));
    };
    for (const QString& name : qAsConst(order)) {
        const Node& node = *nodes.constFind(name);
        for (const auto& screen : node.screens) {
            const std::vector<const Window*>& windows = screen.second;
            const auto filler = std::find_if(windows.begin(), windows.end(),
                                             [](const Window* window) { return window->isFullScreen; });
            const Window* const whole = filler != windows.end() ? *filler : node.desktopFiller;
            if (whole) {
                for (const Window* window : windows)
                    addPair(window, whole);
            } else {
                for (const auto& pair : OverlapFinder(windows).pairs())
                    addPair(pair.first, pair.second);
            }
        }
    }
    return {partners.begin(), partners.end()};
}
