#include "zoHPCWindowOverlaps.h"

#include "zoHPCAreaOverlaps.h"

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <functional>
#include <map>

namespace
{
using Window = zoHPCLayout::Window;

// Pairs among the windows of one screen, none of which fills it.
void addOverlaps(const std::vector<const Window*>& windows,
                 const std::function<void(const Window*, const Window*)>& addPair)
{
    std::vector<QRectF> areas;
    areas.reserve(windows.size());
    for (const Window* window : windows)
        areas.push_back(window->geometry);
    for (const zoHPCAreaOverlaps::Pair& pair : zoHPCAreaOverlaps::find(areas))
        addPair(windows[pair.first], windows[pair.second]);
}
} // namespace

std::vector<zoHPCWindowOverlaps::Pair> zoHPCWindowOverlaps::find(const zoHPCLayout& layout)
{
    struct Machine
    {
        std::map<int, std::vector<const Window*>> screens;
        const Window* desktopFiller = nullptr; // the first one in full screen on the extended desktop
    };
    QHash<QString, Machine> machines;
    QStringList order;
    for (const Window& window : layout.windows()) {
        if (window.machine.isEmpty() || !window.hasScreen)
            continue;
        if (!machines.contains(window.machine))
            order.append(window.machine);
        Machine& machine = machines[window.machine];
        machine.screens[window.screen].push_back(&window);
        if (window.isFullScreen && window.screen == zoHPCLayout::ExtendedDesktop && !machine.desktopFiller)
            machine.desktopFiller = &window;
    }

    std::map<const Window*, const Window*> partners; // the later window to an earlier one
    const auto addPair = [&partners](const Window* a, const Window* b) {
        if (a != b)
            partners.emplace(std::max(a, b), std::min(a, b));
    };
    for (const QString& name : qAsConst(order)) {
        const Machine& machine = *machines.constFind(name);
        for (const auto& screen : machine.screens) {
            const std::vector<const Window*>& windows = screen.second;
            const auto filler = std::find_if(windows.begin(), windows.end(),
                                             [](const Window* window) { return window->isFullScreen; });
            const Window* const whole = filler != windows.end() ? *filler : machine.desktopFiller;
            if (whole) {
                for (const Window* window : windows)
                    addPair(window, whole);
            } else {
                addOverlaps(windows, addPair);
            }
        }
    }
    return {partners.begin(), partners.end()};
}
