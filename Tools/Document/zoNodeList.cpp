#include "zoNodeList.h"

#include "zoHPCTreeItem.h"

#include <QHash>
#include <QSet>

zoNodeList::zoNodeList(const zoHPCLayout& layout)
{
    QSet<int> displays;
    for (const zoHPCLayout::Window& window : layout.windows())
        displays.insert(window.nodeIndex);
    QHash<const zoHPCTreeItem*, int> networks;
    for (const zoHPCLayout::Network& network : layout.networks())
        networks.insert(network.item, networks.size() + 1);
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
        for (const zoHPCTreeItem* above = entry.item->getParent(); above != nullptr;
             above = above->getParent()) {
            if (above->isNode())
                node.gateways.prepend(above->hostName());
        }
        if (!node.name.isEmpty())
            m_nodes.push_back(node);
    }
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
