#include "zoNodeList.h"

#include "zoHPCTreeItem.h"

#include <QHash>
#include <QSet>

#include <algorithm>

zoNodeList::zoNodeList(const zoHPCLayout& layout)
{
    QSet<int> displays;
    for (const zoHPCLayout::Window& window : layout.windows())
        displays.insert(window.nodeIndex);
    QHash<const zoHPCTreeItem*, int> networks;
    for (const zoHPCLayout::Network& network : layout.networks())
        networks.insert(network.item, networks.size() + 1);
    QHash<const zoHPCTreeItem*, int> gateways;
    for (std::size_t i = 0; i < layout.nodes().size(); ++i) {
        const zoHPCLayout::Node& entry = layout.nodes()[i];
        Node node;
        node.name = entry.item->hostName();
        node.unique = entry.name;
        node.isEnabled = entry.enabled;
        node.isDisplay = displays.contains(int(i));
        node.isRender = entry.item->isRenderNode();
        node.isGateway = entry.item->childCount() > 0;
        node.network = networks.value(entry.item->getParent());
        // Those above come first.
        for (const zoHPCTreeItem* above = entry.item->getParent(); above != nullptr && node.gateway == None;
             above = above->getParent())
            node.gateway = gateways.value(above, None);
        if (node.isGateway) {
            gateways.insert(entry.item, int(m_gateways.size()));
            m_gateways.push_back({node.name, node.gateway});
        }
        if (!node.name.isEmpty())
            m_nodes.push_back(node);
    }
}

QStringList zoNodeList::gatewaysOf(const Node& node) const
{
    QStringList names;
    for (int i = node.gateway; i != None; i = m_gateways[std::size_t(i)].above)
        names.append(m_gateways[std::size_t(i)].name);
    std::reverse(names.begin(), names.end());
    return names;
}

QString zoNodeList::gatewayOf(const Node& node) const
{
    return node.gateway == None ? QString() : m_gateways[std::size_t(node.gateway)].name;
}

std::vector<QString> zoNodeList::names() const
{
    std::vector<QString> result;
    QSet<QString> known;
    for (const Node& node : m_nodes) {
        if (!known.contains(node.name))
            result.push_back(node.name);
        known.insert(node.name);
    }
    return result;
}
