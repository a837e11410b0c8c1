#include "zoHPCWindowChecks.h"

#include "zoHPCDisplayItem.h"
#include "zoHPCLayout.h"
#include "zoHPCTreeItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"
#include "zoHPCWindowOverlaps.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace
{
using Kind = zoHPCProblem::Kind;
using Window = zoHPCLayout::Window;

// Nodes that no window names and that could take one, in tree order; gateways, which have work already, last.
std::vector<const zoHPCLayout::Node*> freeNodes(const zoHPCLayout& layout)
{
    std::vector<bool> used(layout.nodes().size(), false);
    for (const Window& window : layout.windows()) {
        if (window.nodeIndex != zoHPCLayout::None)
            used[static_cast<size_t>(window.nodeIndex)] = true;
    }
    std::vector<const zoHPCLayout::Node*> result;
    for (size_t i = 0; i < used.size(); ++i) {
        const zoHPCLayout::Node& node = layout.nodes()[i];
        if (!used[i] && node.enabled && !node.name.isEmpty())
            result.push_back(&node);
    }
    std::stable_partition(result.begin(), result.end(),
                          [](const zoHPCLayout::Node* node) { return node->item->childCount() == 0; });
    return result;
}

// Whether a window is the only one of its machine.
class OnlyWindows
{
public:
    explicit OnlyWindows(const zoHPCLayout& layout)
    {
        for (const Window& window : layout.windows())
            ++m_counts[window.machine];
    }

    bool operator()(const Window& window) const
    {
        return !window.machine.isEmpty() && m_counts.value(window.machine) == 1;
    }

private:
    QHash<QString, int> m_counts;
};

// The number of a screen in another spelling of it, such as ":0.1" or "1.0"; empty where there is none.
QString screenIn(const QString& word)
{
    static const QRegularExpression s_display(QString::fromLatin1("^[^:]*:[0-9]+\\.([0-9]{1,2})$"));
    static const QRegularExpression s_fraction(QString::fromLatin1("^([0-9]{1,2})\\.0*$"));
    for (const QRegularExpression& spelling : {s_display, s_fraction}) {
        const QRegularExpressionMatch match = spelling.match(word);
        if (match.hasMatch())
            return match.captured(1);
    }
    return QString();
}

void enableWithAncestors(zoHPCTreeItem* item)
{
    for (; item; item = item->getParent()) {
        if (!item->isEnabled())
            item->setIsEnabled(true);
    }
}

// Lower case to the first name that is spelt so.
QHash<QString, QString> nodesBySpelling(const zoHPCLayout& layout)
{
    QHash<QString, QString> bySpelling;
    for (const zoHPCLayout::Node& node : layout.nodes()) {
        const QString spelling = node.name.toLower();
        if (!spelling.isEmpty() && !bySpelling.contains(spelling))
            bySpelling.insert(spelling, node.name);
    }
    return bySpelling;
}
} // namespace

zoHPCProblem::List zoHPCWindowChecks::viewportsWithoutProjection(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const zoHPCLayout::Viewport& viewport : layout.viewports()) {
        if (viewport.projection != zoHPCLayout::None)
            continue;
        const Window window = viewport.window == zoHPCLayout::None
                                  ? Window()
                                  : layout.windows()[static_cast<size_t>(viewport.window)];
        const QString name = viewport.item->getString(zoHPCViewportItem::Projection);
        const QString number = QString::number(viewport.number);
        const QString windowNumber = QString::number(window.number);
        const QString displayNumber = QString::number(window.display);
        problems.emplace_back(Kind::ViewportWithoutProjection, viewport.item,
                              name.isEmpty()
                                  ? tr("Viewport %1 of window %2 of display %3 shows no projection. Choose "
                                       "one, or delete the viewport.")
                                        .arg(number, windowNumber, displayNumber)
                                  : tr("Viewport %1 of window %2 of display %3 shows the projection \"%4\", "
                                       "which does not exist. Choose another one.")
                                        .arg(number, windowNumber, displayNumber, name));
    }
    return problems;
}

zoHPCProblem::List zoHPCWindowChecks::windowsWithoutNode(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    const std::vector<const zoHPCLayout::Node*> free = freeNodes(layout);
    for (const Window& window : layout.windows()) {
        if (!window.node.isEmpty())
            continue;
        zoHPCProblem problem(
            Kind::WindowWithoutNode, window.item,
            tr("Window %1 of display %2 has no render node. Choose the one that has its screen.")
                .arg(QString::number(window.number), QString::number(window.display)));
        // The n-th such window is offered the n-th node: buttons pressed from top to bottom fill them up in
        // order.
        if (problems.size() < free.size()) {
            const QString node = free[problems.size()]->name;
            problem.setFix(tr("Use %1").arg(node), [item = window.item, node] {
                item->setRenderNode(node);
                item->update();
            });
        }
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblem::List zoHPCWindowChecks::windowsWithUnknownNode(const zoHPCLayout& layout)
{
    QHash<QString, QString> bySpelling; // read once it is needed
    zoHPCProblem::List problems;
    for (const Window& window : layout.windows()) {
        if (window.node.isEmpty() || window.nodeIndex != zoHPCLayout::None)
            continue;
        if (problems.empty())
            bySpelling = nodesBySpelling(layout);
        zoHPCProblem problem(
            Kind::WindowWithUnknownNode, window.item,
            tr("Window %1 of display %2 is on the node \"%3\", which the cluster does not have. Choose "
               "another one.")
                .arg(QString::number(window.number), QString::number(window.display), window.node));
        // A name spelt otherwise, or one that meanwhile has a number because it occurs twice.
        for (const QString& spelling : {window.node.toLower(), window.node.toLower() + QLatin1String(" 1")}) {
            const QString node = bySpelling.value(spelling);
            if (node.isEmpty() || problem.hasFix())
                continue;
            problem.setFix(tr("Use %1").arg(node), [item = window.item, node] {
                item->setRenderNode(node);
                item->update();
            });
        }
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblem::List zoHPCWindowChecks::windowsWithDisabledNode(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Window& window : layout.windows()) {
        if (window.nodeIndex == zoHPCLayout::None)
            continue;
        const zoHPCLayout::Node& node = layout.nodes()[static_cast<size_t>(window.nodeIndex)];
        if (node.enabled)
            continue;
        zoHPCProblem problem(
            Kind::WindowWithDisabledNode, window.item,
            tr("Window %1 of display %2 is on the node \"%3\", which is disabled. Enable it, or choose "
               "another one.")
                .arg(QString::number(window.number), QString::number(window.display), window.node));
        problem.other = node.item;
        problem.setFix(tr("Enable %1").arg(node.name), [item = node.item] { enableWithAncestors(item); });
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblem::List zoHPCWindowChecks::windowsWithoutViewport(const zoHPCLayout& layout)
{
    std::vector<bool> hasViewport(layout.windows().size(), false);
    for (const zoHPCLayout::Viewport& viewport : layout.viewports()) {
        if (viewport.window != zoHPCLayout::None)
            hasViewport[static_cast<size_t>(viewport.window)] = true;
    }
    zoHPCProblem::List problems;
    for (size_t i = 0; i < hasViewport.size(); ++i) {
        const Window& window = layout.windows()[i];
        if (hasViewport[i])
            continue;
        problems.emplace_back(
            Kind::WindowWithoutViewport, window.item,
            tr("Window %1 of display %2 has no viewport: it stays black. Add one, or delete the "
               "window.")
                .arg(QString::number(window.number), QString::number(window.display)));
    }
    return problems;
}

zoHPCProblem::List zoHPCWindowChecks::windowsWithoutSize(const zoHPCLayout& layout)
{
    using Item = zoHPCWindowItem;
    const auto isGiven = [](const Item& item, int column) {
        return item.isSet(column) && item.getInt(column) <= 0;
    };
    const OnlyWindows isAlone(layout);
    zoHPCProblem::List problems;
    for (const Window& window : layout.windows()) {
        Item* const item = window.item;
        if (window.isFullScreen || !(isGiven(*item, Item::Width) || isGiven(*item, Item::Height)))
            continue;
        const int width = item->getInt(Item::Width);
        const int height = item->getInt(Item::Height);
        problems.emplace_back(
            Kind::WindowWithoutSize, item,
            tr("Window %1 of display %2 has a size of %3 x %4 pixels: nobody sees it. Set its size, or "
               "\"Full screen\".")
                .arg(QString::number(window.number), QString::number(window.display), QString::number(width),
                     QString::number(height)));
        // With others on its screen it may lie over them.
        if (width == 0 || height == 0 || width == INT_MIN || height == INT_MIN || !isAlone(window))
            continue;
        problems.back().setFix(tr("Make sizes positive"), [item, width, height] {
            item->setInt(Item::Width, std::abs(width));
            item->setInt(Item::Height, std::abs(height));
            item->update();
        });
    }
    return problems;
}

zoHPCProblem::List zoHPCWindowChecks::windowsOutsideScreen(const zoHPCLayout& layout)
{
    using Item = zoHPCWindowItem;
    const OnlyWindows isAlone(layout);
    zoHPCProblem::List problems;
    for (const Window& window : layout.windows()) {
        // A desktop of several screens may have some of them left of the first one.
        if (window.isFullScreen || !window.hasScreen || window.screen == zoHPCLayout::ExtendedDesktop)
            continue;
        Item* const item = window.item;
        const int x = item->getInt(Item::X);
        const int y = item->getInt(Item::Y);
        if (x >= 0 && y >= 0)
            continue;
        problems.emplace_back(Kind::WindowOutsideScreen, item,
                              tr("Window %1 of display %2 begins at %3, %4, outside of its screen, which "
                                 "begins at 0, 0: that part of "
                                 "it is not seen. Move it, or choose the desktop over all screens.")
                                  .arg(QString::number(window.number), QString::number(window.display),
                                       QString::number(x), QString::number(y)));
        // With others on its screen it may lie over them.
        if (!isAlone(window))
            continue;
        problems.back().setFix(tr("Move it onto the screen"), [item, x, y] {
            item->setInt(Item::X, std::max(x, 0));
            item->setInt(Item::Y, std::max(y, 0));
            item->update();
        });
    }
    return problems;
}

zoHPCProblem::List zoHPCWindowChecks::displaysWithoutWindow(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    if (layout.windows().empty() && layout.projections().empty())
        return problems;
    std::vector<bool> hasWindow(layout.displays().size(), false);
    for (const Window& window : layout.windows()) {
        const size_t display = static_cast<size_t>(window.display - 1);
        if (display < hasWindow.size())
            hasWindow[display] = true;
    }
    for (size_t i = 0; i < hasWindow.size(); ++i) {
        if (!hasWindow[i])
            problems.emplace_back(
                Kind::DisplayWithoutWindow, layout.displays()[i],
                tr("Display %1 has no window: nobody sees anything of it. Add a window, or delete "
                   "the display.")
                    .arg(i + 1));
    }
    return problems;
}

zoHPCProblem::List zoHPCWindowChecks::windowsOnUnknownScreen(const zoHPCLayout& layout)
{
    const OnlyWindows isAlone(layout);
    zoHPCProblem::List problems;
    for (const Window& window : layout.windows()) {
        if (window.hasScreen)
            continue;
        const QString screen = window.item->getString(zoHPCWindowItem::Screen);
        problems.emplace_back(
            Kind::UnknownScreen, window.item,
            tr("Window %1 of display %2 is on the screen \"%3\", which there is not. In a file screens are "
               "numbers: 0 "
               "is the first one, -1 the primary one, -2 all of them.")
                .arg(QString::number(window.number), QString::number(window.display), screen));
        const QString number = screenIn(screen);
        // With others on its machine it may lie over them.
        if (number.isEmpty() || !isAlone(window))
            continue;
        problems.back().setFix(tr("Use screen %1").arg(number.toInt() + 1), [item = window.item, number] {
            item->setString(zoHPCWindowItem::Screen, number);
            item->update();
        });
    }
    return problems;
}

zoHPCProblem::List zoHPCWindowChecks::overlappingWindows(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const auto& pair : zoHPCWindowOverlaps::find(layout)) {
        const Window& later = *pair.first;
        const Window& earlier = *pair.second;
        const QStringList numbers{QString::number(earlier.number), QString::number(earlier.display),
                                  QString::number(later.number), QString::number(later.display)};
        zoHPCProblem problem(
            Kind::OverlappingWindows, later.item,
            earlier.node == later.node
                ? tr("Window %1 of display %2 and window %3 of display %4 overlap on one screen of "
                     "the node \"%5\". Move one of them, or choose another screen.")
                      .arg(numbers[0], numbers[1], numbers[2], numbers[3], later.node)
                : tr("Window %1 of display %2 and window %3 of display %4 overlap: \"%5\" and \"%6\" are one "
                     "machine. Give each a screen of its own.")
                      .arg(numbers[0], numbers[1], numbers[2], numbers[3], earlier.node, later.node));
        problem.other = earlier.item;
        problems.push_back(problem);
    }
    return problems;
}
