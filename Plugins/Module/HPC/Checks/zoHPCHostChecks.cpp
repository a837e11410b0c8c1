#include "zoHPCHostChecks.h"

#include "zoHPCLayout.h"
#include "zoHPCOptionValues.h"
#include "zoHPCTreeItem.h"

#include <QHash>

namespace
{
using Kind = zoHPCProblem::Kind;
} // namespace

zoHPCProblem::List zoHPCHostChecks::duplicateHostNames(const zoHPCLayout& layout)
{
    QHash<QString, int> counts;
    for (const zoHPCLayout::Node& node : layout.nodes())
        ++counts[node.item->hostName()];
    QHash<QString, zoHPCTreeItem*> firsts;
    zoHPCProblem::List problems;
    for (const zoHPCLayout::Node& node : layout.nodes()) {
        const QString& name = node.item->hostName();
        const int count = counts.value(name);
        if (name.isEmpty() || count < 2)
            continue;
        if (!firsts.contains(name)) {
            firsts.insert(name, node.item);
            continue;
        }
        // The second one, once: usually the one that was added by mistake.
        zoHPCProblem problem(Kind::DuplicateHostName, node.item,
                             tr("%1 nodes are called \"%2\".").arg(QString::number(count), name));
        problem.other = firsts.value(name);
        problems.push_back(problem);
        counts.remove(name);
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
                ? tr("%1 number %2 holds no node.").arg(network.item->text(0), QString::number(i + 1))
                : tr("%1 number %2 holds no node that is enabled.")
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
