#include "zoHPCWindowChecks.h"

#include "zoHPCLayout.h"
#include "zoHPCTreeItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"
#include "zoHPCWindowOverlaps.h"

#include <QHash>
#include <QStringList>

namespace
{
using Kind = zoHPCProblem::Kind;
using Window = zoHPCLayout::Window;

// Nodes that no window names and that could take one, in tree order.
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
    return result;
}

void enableWithAncestors(zoHPCTreeItem* item)
{
    for (; item; item = item->getParent()) {
        if (!item->isEnabled())
            item->setIsEnabled(true);
    }
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
                                  ? tr("Viewport %1 of window %2 of display %3 shows no projection.")
                                        .arg(number, windowNumber, displayNumber)
                                  : tr("Viewport %1 of window %2 of display %3 shows the projection \"%4\", "
                                       "which does not exist.")
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
        zoHPCProblem problem(Kind::WindowWithoutNode, window.item,
                             tr("Window %1 of display %2 has no render node.")
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
    QHash<QString, QString> bySpelling; // lower case to the first such name
    for (const zoHPCLayout::Node& node : layout.nodes()) {
        const QString spelling = node.name.toLower();
        if (!spelling.isEmpty() && !bySpelling.contains(spelling))
            bySpelling.insert(spelling, node.name);
    }
    zoHPCProblem::List problems;
    for (const Window& window : layout.windows()) {
        if (window.node.isEmpty() || window.nodeIndex != zoHPCLayout::None)
            continue;
        zoHPCProblem problem(
            Kind::WindowWithUnknownNode, window.item,
            tr("Window %1 of display %2 is on the node \"%3\", which the cluster does not have.")
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
            tr("Window %1 of display %2 is on the node \"%3\", which is disabled.")
                .arg(QString::number(window.number), QString::number(window.display), window.node));
        problem.other = node.item;
        problem.setFix(tr("Enable %1").arg(node.name), [item = node.item] { enableWithAncestors(item); });
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblem::List zoHPCWindowChecks::overlappingWindows(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const auto& pair : zoHPCWindowOverlaps::find(layout)) {
        const Window& later = *pair.first;
        const Window& earlier = *pair.second;
        zoHPCProblem problem(
            Kind::OverlappingWindows, later.item,
            tr("Window %1 of display %2 and window %3 of display %4 overlap on one screen of "
               "the node \"%5\".")
                .arg(QString::number(earlier.number), QString::number(earlier.display),
                     QString::number(later.number), QString::number(later.display), later.node));
        problem.other = earlier.item;
        problems.push_back(problem);
    }
    return problems;
}
