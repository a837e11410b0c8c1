#include "zoSourcePlaces.h"

#include "zoClusterSetup.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCTreeItem.h"
#include "zoHPCWindowItem.h"

#include <zoClusterTags.h>

zoSourcePlaces::zoSourcePlaces(zoClusterSetup& setup)
{
    read(setup.source());

    // The trees keep the order of the text. Whatever does not fit has no place: a place shall not be wrong.
    std::vector<zoHPCTreeItem*> hosts;
    setup.hosts().master()->getAllSubItems(hosts);
    m_places.insert(setup.hosts().master(), m_master);
    if (hosts.size() == m_hosts.size() + 1) {
        for (std::size_t i = 0; i < m_hosts.size(); ++i)
            m_places.insert(hosts[i + 1], m_hosts[i]);
    }
    std::vector<const QTreeWidgetItem*> projections;
    const QList<zoHPCProjectionItem*> all = setup.displays().getProjectionItems();
    for (const zoHPCProjectionItem* item : all) {
        if (item->isTopLevel())
            projections.push_back(item);
    }
    if (projections.size() == m_projections.size()) {
        for (std::size_t i = 0; i < projections.size(); ++i)
            m_places.insert(projections[i], m_projections[i]);
    }
    const QList<zoHPCWindowItem*> outputs = setup.displays().getWindowItems();
    if (std::size_t(outputs.size()) == m_outputs.size()) {
        for (std::size_t i = 0; i < m_outputs.size(); ++i)
            m_places.insert(outputs.at(int(i)), m_outputs[i]);
    }
}

zoSourcePlaces::Place zoSourcePlaces::place(const QTreeWidgetItem* item) const
{
    for (; item != nullptr; item = item->parent()) {
        const auto found = m_places.constFind(item);
        if (found != m_places.constEnd())
            return *found;
    }
    return Place();
}

void zoSourcePlaces::read(const QString& text)
{
    zoHPCElementScanner scanner(text);
    bool hasMaster = false;
    while (scanner.next()) {
        const QString tag = scanner.tag();
        const int depth = scanner.around().size();
        const QString section = depth > 1 ? scanner.around().at(1) : QString();
        if (depth == 1 && tag == zoClusterTags::Master && !hasMaster) {
            m_master = scanner.place();
            hasMaster = true;
        }
        if (section == zoClusterTags::Master && (tag == zoClusterTags::Network || tag == zoClusterTags::Node))
            m_hosts.push_back(scanner.place());
        else if (depth == 1 && tag == zoClusterTags::Projection)
            m_projections.push_back(scanner.place());
        else if (section == zoClusterTags::Display &&
                 (tag == zoClusterTags::Window || tag == zoClusterTags::Viewport))
            m_outputs.push_back(scanner.place());
    }
}
