#include "zoHPCRenderNodes.h"

#include "zoHPCDisplaySetup.h"
#include "zoHPCHostTree.h"
#include "zoHPCTreeItem.h"
#include "zoHPCUniqueNames.h"
#include "zoHPCWindowItem.h"

#include <QHash>

zoHPCRenderNodes::zoHPCRenderNodes(zoHPCHostTree* hosts, const zoHPCDisplaySetup* displays)
    : m_hosts(hosts), m_displays(displays)
{
}

void zoHPCRenderNodes::remember()
{
    m_remembered.clear();
    QHash<QString, zoHPCTreeItem*> nodes;
    const std::vector<zoHPCTreeItem*> items = m_hosts->getNodeItems();
    for (zoHPCTreeItem* node : items)
        nodes.insert(node->uniqueHostName(), node);
    const QList<zoHPCWindowItem*> windows = m_displays->getWindowItems();
    for (zoHPCWindowItem* window : windows) {
        // A window that names nobody does so whatever nodes are called.
        zoHPCTreeItem* const node = nodes.value(window->renderNode());
        if (node != nullptr && !window->renderNode().isEmpty())
            m_remembered.emplace_back(window, node);
    }
}

void zoHPCRenderNodes::beginRename(zoHPCTreeItem* node)
{
    m_renamed = node->watch();
    m_renamedName = node->uniqueHostName();
    m_renamedWindows.clear();
    const QList<zoHPCWindowItem*> windows = m_displays->getWindowItems();
    for (const zoHPCWindowItem* window : windows) {
        if (!m_renamedName.isEmpty() && window->renderNode() == m_renamedName)
            m_renamedWindows.insert(window);
    }
}

void zoHPCRenderNodes::update()
{
    const std::vector<zoHPCTreeItem*> nodes = m_hosts->getNodeItems();
    std::vector<const QString*> hostNames;
    hostNames.reserve(nodes.size());
    for (const zoHPCTreeItem* node : nodes)
        hostNames.push_back(&node->hostName());
    const zoHPCUniqueNames names(std::move(hostNames));
    for (size_t i = 0; i < nodes.size(); ++i)
        nodes[i]->setUniqueHostName(names.name(i));
    renameRemembered();
    followRename();

    std::vector<bool> isDisplayNode(nodes.size(), false);
    QSet<QString> numbered; // what can only be the name of one of several nodes, or of none
    const QList<zoHPCWindowItem*> windows = m_displays->getWindowItems();
    for (const zoHPCWindowItem* window : windows) {
        const QString renderNode = window->renderNode();
        const size_t node = names.find(renderNode);
        if (node < nodes.size() && !names.isNumbered(node))
            isDisplayNode[node] = true;
        numbered.insert(renderNode);
    }
    for (size_t i = 0; i < nodes.size(); ++i)
        nodes[i]->markDisplayNode(isDisplayNode[i] ||
                                  (names.isNumbered(i) && numbered.contains(nodes[i]->uniqueHostName())));
    m_hosts->master()->refreshLooks(zoHPCTreeItem::Refresh::Due);
}

void zoHPCRenderNodes::renameRemembered()
{
    std::vector<std::pair<zoHPCWindowItem*, zoHPCTreeItem*>> renamed;
    renamed.swap(m_remembered);
    for (const auto& [window, node] : renamed) {
        const QString name = node->uniqueHostName();
        if (window->renderNode() != name)
            window->setRenderNode(name);
    }
}

void zoHPCRenderNodes::followRename()
{
    const std::shared_ptr<zoHPCTreeItem> node = m_renamed.lock();
    if (!node || node->uniqueHostName() == m_renamedName)
        return;
    const QString earlier = std::exchange(m_renamedName, node->uniqueHostName());
    const QList<zoHPCWindowItem*> windows = m_displays->getWindowItems();
    for (zoHPCWindowItem* window : windows) {
        if (m_renamedWindows.contains(window) && window->renderNode() == earlier)
            window->setRenderNode(m_renamedName);
    }
}
