#include "zoHPCTextItems.h"

#include "zoHPCDisplaySetup.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCTextParts.h"
#include "zoHPCTreeItem.h"
#include "zoHPCWindowItem.h"

#include <zoClusterTags.h>

zoHPCTextItems::zoHPCTextItems(const zoHPCTextParts& text, const zoHPCDisplaySetup& displays,
                               zoHPCTreeItem* master)
    : zoHPCTextItems(
          text, [&text](int part) { return text.parts().at(part).tag; }, displays, master)
{
}

zoHPCTextItems::zoHPCTextItems(const zoHPCTextParts& text, const Tags& tags,
                               const zoHPCDisplaySetup& displays, zoHPCTreeItem* master)
{
    read(text, tags);

    // The trees keep the order of the text. Whatever does not fit has no part: a place shall not be wrong.
    std::vector<zoHPCTreeItem*> hosts;
    if (master) {
        master->getAllSubItems(hosts);
        m_parts.insert(master, m_master);
    }
    if (hosts.size() == m_hosts.size() + 1) {
        for (std::size_t i = 0; i < m_hosts.size(); ++i)
            m_parts.insert(hosts[i + 1], m_hosts[i]);
    }
    std::vector<const QTreeWidgetItem*> projections;
    const QList<zoHPCProjectionItem*> all = displays.getProjectionItems();
    for (const zoHPCProjectionItem* item : all) {
        if (item->isTopLevel())
            projections.push_back(item);
    }
    if (projections.size() == m_projections.size()) {
        for (std::size_t i = 0; i < projections.size(); ++i)
            m_parts.insert(projections[i], m_projections[i]);
    }
    const QList<zoHPCWindowItem*> outputs = displays.getWindowItems();
    if (std::size_t(outputs.size()) == m_outputs.size()) {
        for (std::size_t i = 0; i < m_outputs.size(); ++i)
            m_parts.insert(outputs.at(int(i)), m_outputs[i]);
    }
    // Also those that hold nothing.
    const QTreeWidgetItem* const root = displays.displayRoot();
    if (std::size_t(root->childCount()) == m_displays.size()) {
        for (std::size_t i = 0; i < m_displays.size(); ++i)
            m_parts.insert(root->child(int(i)), m_displays[i]);
    }
}

int zoHPCTextItems::part(const QTreeWidgetItem* item) const
{
    for (; item != nullptr; item = item->parent()) {
        const auto found = m_parts.constFind(item);
        if (found != m_parts.constEnd())
            return *found;
    }
    return -1;
}

void zoHPCTextItems::read(const zoHPCTextParts& text, const Tags& tags)
{
    const QVector<zoHPCTextParts::Part>& parts = text.parts();
    // The element of the top level that each part is in, by part.
    std::vector<int> sections(size_t(parts.size()), -1);
    for (int i = 0; i < parts.size(); ++i) {
        const int parent = parts.at(i).parent;
        if (parts.at(i).kind != zoHPCTextParts::Kind::Element || parent < 0)
            continue;
        const bool isTop = parts.at(parent).parent < 0;
        sections[size_t(i)] = isTop ? i : sections[size_t(parent)];
        const QString tag = tags(i);
        const QString section = tags(sections[size_t(i)]);
        if (isTop && tag == zoClusterTags::Master && m_master < 0)
            m_master = i;
        if (section == zoClusterTags::Master && (tag == zoClusterTags::Network || tag == zoClusterTags::Node))
            m_hosts.push_back(i);
        else if (isTop && tag == zoClusterTags::Projection)
            m_projections.push_back(i);
        else if (isTop && tag == zoClusterTags::Display)
            m_displays.push_back(i);
        else if (section == zoClusterTags::Display &&
                 (tag == zoClusterTags::Window || tag == zoClusterTags::Viewport))
            m_outputs.push_back(i);
    }
}
