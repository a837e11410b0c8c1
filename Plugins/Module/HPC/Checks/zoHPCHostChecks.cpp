#include "zoHPCHostChecks.h"

#include "zoHPCLayout.h"
#include "zoHPCOptionValues.h"
#include "zoHPCTreeItem.h"

#include <QHash>
#include <QStringList>

#include <algorithm>

namespace
{
using Kind = zoHPCProblem::Kind;

std::vector<bool> usedNodes(const zoHPCLayout& layout)
{
    std::vector<bool> isUsed(layout.nodes().size(), false);
    for (const zoHPCLayout::Window& window : layout.windows()) {
        if (window.nodeIndex != zoHPCLayout::None)
            isUsed[static_cast<size_t>(window.nodeIndex)] = true;
    }
    return isUsed;
}
} // namespace

zoHPCProblem::List zoHPCHostChecks::nodesWithoutName(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const zoHPCLayout::Node& node : layout.nodes()) {
        if (!node.item->hostName().isEmpty())
            continue;
        const zoHPCTreeItem* const network = node.item->getParent();
        const int row = network ? network->indexOfChild(node.item) : 0;
        problems.emplace_back(
            Kind::NodeWithoutName, node.item,
            tr("Node number %1 of %2 has no name: no server can be started on it. Enter its host "
               "name, or remove it.")
                .arg(QString::number(row + 1), network ? network->text(0) : tr("Cluster")));
    }
    return problems;
}

zoHPCProblem::List zoHPCHostChecks::duplicateHostNames(const zoHPCLayout& layout)
{
    // What is there more than once has a number behind its name; of a million nodes that is most often none.
    const bool hasDuplicates =
        std::any_of(layout.nodes().begin(), layout.nodes().end(), [](const zoHPCLayout::Node& node) {
            return !node.item->hostName().isEmpty() && node.name != node.item->hostName();
        });
    if (!hasDuplicates)
        return {};
    const std::vector<bool> isUsed = usedNodes(layout);
    struct Name
    {
        int count = 0;
        size_t first = 0;
        size_t odd = 0; // the node that was most likely added by mistake
        bool hasOdd = false;
    };
    QHash<QString, Name> names;
    QStringList order;
    for (size_t i = 0; i < layout.nodes().size(); ++i) {
        const QString& host = layout.nodes()[i].item->hostName();
        if (host.isEmpty())
            continue;
        Name& name = names[host];
        if (++name.count == 1) {
            name.first = i;
            order.append(host);
        } else if (!isUsed[i] && !name.hasOdd) {
            name.odd = i;
            name.hasOdd = true;
        }
    }
    zoHPCProblem::List problems;
    for (const QString& host : qAsConst(order)) {
        const Name name = names.value(host);
        // With windows on each of them the machine is listed more than once on purpose, as for two graphics cards.
        if (name.count < 2 || (!name.hasOdd && isUsed[name.first]))
            continue;
        const zoHPCLayout::Node& odd = layout.nodes()[name.hasOdd ? name.odd : name.first];
        problems.emplace_back(Kind::DuplicateHostName, odd.item,
                              tr("%1 nodes are called \"%2\", and no window is on \"%3\". Remove or rename "
                                 "one of them, or give each a "
                                 "window.")
                                  .arg(QString::number(name.count), host, odd.name));
        problems.back().other = layout.nodes()[name.first].item;
    }
    return problems;
}

zoHPCProblem::List zoHPCHostChecks::networksWithoutEnabledNode(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (size_t i = 0; i < layout.networks().size(); ++i) {
        const zoHPCLayout::Network& network = layout.networks()[i];
        if (!network.enabled || network.enabledNodes > 0)
            continue;
        zoHPCProblem problem(
            Kind::NetworkWithoutEnabledNode, network.item,
            network.nodes.empty()
                ? tr("%1 number %2 holds no node. Add one, or delete the network.")
                      .arg(network.item->text(0), QString::number(i + 1))
                : tr("%1 number %2 holds no node that is enabled. Enable one, or disable the network.")
                      .arg(network.item->text(0), QString::number(i + 1)));
        if (!network.nodes.empty()) {
            problem.setFix(tr("Enable its nodes"), [nodes = network.nodes] {
                for (zoHPCTreeItem* node : nodes)
                    node->setIsEnabled(true);
            });
        }
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblem::List zoHPCHostChecks::unknownOptionValues(const zoHPCLayout& layout)
{
    namespace Tables = zoHPCOptionValues;
    zoHPCProblem::List problems;
    const auto look = [&problems](zoHPCTreeItem* item, const QString& name, const auto& options) {
        for (const Tables::ComboOption& option : options) {
            const QString value = item->getOption(*option.option);
            if (option.hasRow(value))
                continue;
            zoHPCProblem problem(
                Kind::UnknownOptionValue, item,
                tr("%1: option \"%2\" has the unknown value \"%3\".").arg(name, *option.option, value));
            problem.setFix(tr("Use the default"),
                           [item, key = *option.option] { item->setOption(key, QString()); });
            problems.push_back(problem);
        }
    };
    if (zoHPCTreeItem* master = layout.master())
        look(master, tr("Cluster"), Tables::MasterOptions);
    for (size_t i = 0; i < layout.networks().size(); ++i) {
        zoHPCTreeItem* network = layout.networks()[i].item;
        look(network, tr("%1 number %2").arg(network->text(0), QString::number(i + 1)),
             Tables::NetworkOptions);
    }
    return problems;
}
