#include "zoHPCHostFixes.h"

#include "zoHPCTreeGUIW.h"
#include "zoHPCTreeItem.h"
#include "zoHPCTreeRows.h"

zoHPCHostFixes::zoHPCHostFixes() = default;

zoHPCHostFixes::~zoHPCHostFixes() = default;

void zoHPCHostFixes::setHostTree(zoHPCTreeGUIW* hosts)
{
    m_hosts = hosts;
}

zoHPCTreeGUIW* zoHPCHostFixes::hostTree() const
{
    return m_hosts;
}

void zoHPCHostFixes::noteBefore()
{
    m_before.clear();
    if (!m_hosts)
        return;
    std::vector<zoHPCTreeItem*> hosts;
    m_hosts->master()->getAllSubItems(hosts);
    m_before.reserve(hosts.size());
    for (zoHPCTreeItem* host : hosts)
        m_before.emplace_back(host, host->getOption(zoHPCOption::Enabled));
}

void zoHPCHostFixes::noteAfter()
{
    if (m_hosts) {
        for (const auto& [host, enabled] : m_before) {
            // Of a row that changes twice the first value counts, which is taken back last.
            if (host->getOption(zoHPCOption::Enabled) != enabled)
                m_changes.emplace_back(zoHPCTreeRows::indexOf(host->treeWidget(), host), enabled);
        }
    }
    m_before.clear();
}

void zoHPCHostFixes::takeBack()
{
    bool isChanged = false;
    for (auto change = m_changes.crbegin(); m_hosts && change != m_changes.crend(); ++change) {
        // A row that left its tree since, as when another configuration was loaded, is invalid.
        if (!change->first.isValid())
            continue;
        const QTreeWidget* const tree = m_hosts->master()->treeWidget();
        if (auto* host = dynamic_cast<zoHPCTreeItem*>(zoHPCTreeRows::itemAt(tree, change->first))) {
            host->setOption(zoHPCOption::Enabled, change->second);
            isChanged = true;
        }
    }
    m_changes.clear();
    if (isChanged)
        m_hosts->announceOptions();
}

void zoHPCHostFixes::clear()
{
    m_changes.clear();
}
