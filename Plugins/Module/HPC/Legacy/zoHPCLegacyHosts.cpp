#include "zoHPCLegacyHosts.h"

#include "zoHPCDocumentWriter.h"
#include "zoHPCLegacyParameters.h"
#include "zoHPCLegacyRemarks.h"
#include "zoHPCLegacyText.h"
#include "zoHPCOption.h"
#include "zoText.h"

#include <QHash>

#include <zoClusterTags.h>

#include <algorithm>
#include <cstddef>

using Kind = zoHPCLegacyRemark::Kind;

namespace
{
const QLatin1String ForwardsKey("forwards=");
}

zoHPCLegacyHosts::zoHPCLegacyHosts(const zoHPCLegacyParameters& parameters, zoHPCLegacyRemarks& remarks)
    : m_parameters(parameters), m_remarks(remarks)
{
}

void zoHPCLegacyHosts::convert()
{
    m_nodes.clear();
    m_forwardsParameter.clear();
    setEntry(0);
    switch (m_parameters.mode()) {
    case zoHPCLegacyParameters::Raytracing:
        addHosts(0, m_parameters.value("zoClusterSortFirstServers", ""));
        break;
    case zoHPCLegacyParameters::Powerwall:
        addHosts(0, m_parameters.value("zoClusterPWServers", ""));
        break;
    case zoHPCLegacyParameters::Custom: {
        const QStringList pipes = m_parameters.pipes();
        for (int i = 0; i < pipes.size(); ++i) {
            setEntry(i);
            addHosts(0, zoHPCLegacyText::hostOf(pipes.at(i)));
        }
        break;
    }
    case zoHPCLegacyParameters::Old: {
        const QStringList entries = zoHPCLegacyText::parts(m_parameters.value("zoClusterHosts", ""), ',');
        for (const QString& entry : entries) {
            const QString host = zoHPCLegacyText::hostOf(entry);
            // Entries and windows of this layout are paired by their index: an entry without a host keeps its
            // place.
            if (host.isEmpty())
                addHost(0, host, 0, 0);
            else
                addHosts(0, host);
        }
        break;
    }
    }
    numberEqualNames();
}

void zoHPCLegacyHosts::writeNodes(zoHPCDocumentWriter& writer) const
{
    int depth = 0;
    const auto closeTo = [&](int level) {
        for (; depth > level; --depth) {
            writer.closeElement(); // the network
            writer.closeElement(); // its gateway
        }
    };
    const bool isInfiniband = m_parameters.isOn("zoClusterInfiniband");
    for (const Node& node : m_nodes) {
        closeTo(node.depth);
        writer.openElement(zoClusterTags::Node);
        writer.addAttribute(zoClusterTags::NameAttribute, node.name);
        if (!node.isGateway) {
            writer.closeElement();
            continue;
        }
        ++depth;
        writer.openElement(zoClusterTags::Network);
        if (isInfiniband)
            writer.addAttribute(zoHPCOption::NetworkType, zoText("infiniband"));
    }
    closeTo(0);
}

void zoHPCLegacyHosts::addHosts(int depth, const QString& hosts)
{
    const int forwards = hosts.indexOf(ForwardsKey);
    if (forwards >= 0) {
        addForwarding(depth, hosts, forwards);
        return;
    }
    const QStringList entries = hosts.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& entry : entries)
        addEntry(depth, entry);
}

// "NAME[forwards=A|B|C]"
void zoHPCLegacyHosts::addForwarding(int depth, const QString& hosts, int forwards)
{
    const QString gateway = zoHPCLegacyText::firstPart(hosts, '[');
    addNode(depth, gateway, true);

    const int begin = forwards + ForwardsKey.size();
    const int end = hosts.indexOf(ForwardsKey, begin);
    QString innerHosts = hosts.mid(begin, end < 0 ? -1 : end - begin);
    innerHosts.remove(QLatin1Char(']')).replace(QLatin1Char('|'), QLatin1Char(' '));
    // Goes at most two levels deep: the inner text ends before the next "forwards=", so it can only hold one
    // that came up when its brackets went, and then it has no brackets left.
    addHosts(depth + 1, innerHosts);

    if (m_forwardsParameter.isEmpty())
        m_forwardsParameter = m_parameters.entryName(m_entry);
    if (end >= 0) {
        m_remarks.add(
            Kind::DroppedForwards,
            tr("Host \"%1\": what follows its second list of forwarded hosts was dropped.").arg(gateway),
            m_parameters.entryName(m_entry));
    }
}

// "NAME" or "NAME[key=value,key=value,...]"
void zoHPCLegacyHosts::addEntry(int depth, const QString& entry)
{
    QString attributes = entry.section(QLatin1Char('['), 1, 1);
    attributes.chop(1); // the closing bracket, which nobody checks
    int xPosition = 0;
    int yPosition = 0;
    const QStringList items = zoHPCLegacyText::parts(attributes, ',');
    for (const QString& item : items) {
        const QString key = item.section(QLatin1Char('='), 0, 0);
        if (key == QLatin1String("xpos"))
            xPosition = m_remarks.intField(item.section(QLatin1Char('='), 1, 1));
        else if (key == QLatin1String("ypos"))
            yPosition = m_remarks.intField(item.section(QLatin1Char('='), 1, 1));
    }
    addHost(depth, zoHPCLegacyText::firstPart(entry, '['), xPosition, yPosition);
}

void zoHPCLegacyHosts::addHost(int depth, const QString& name, int xPosition, int yPosition)
{
    m_xPositions.push_back(xPosition);
    m_yPositions.push_back(yPosition);
    addNode(depth, name, false);
}

void zoHPCLegacyHosts::addNode(int depth, const QString& name, bool isGateway)
{
    m_nodes.push_back({name, depth, isGateway});
    m_names.append(name);
    m_entries.push_back(m_entry);
}

void zoHPCLegacyHosts::setEntry(int entry)
{
    m_entry = entry;
    m_remarks.setEntry(entry);
}

// One name that is there twice numbers the whole list: the windows of imported files name their nodes so. The
// nodes of the tree keep their names.
void zoHPCLegacyHosts::numberEqualNames()
{
    QHash<QString, int> counts;
    for (const QString& name : qAsConst(m_names))
        ++counts[name];
    const auto equal = std::find_if(m_names.cbegin(), m_names.cend(),
                                    [&counts](const QString& name) { return counts.value(name) != 1; });
    if (equal == m_names.cend())
        return;
    const QString name = *equal;
    const int entry = m_entries[std::size_t(equal - m_names.cbegin())];
    for (int i = 0; i < m_names.size(); ++i)
        m_names[i] = name + QLatin1Char(' ') + QString::number(i + 1);
    m_remarks.add(Kind::NumberedHosts,
                  tr("Several hosts have the name \"%1\", so all windows name their "
                     "nodes \"%1 1\", \"%1 2\" and so on.")
                      .arg(name),
                  m_parameters.entryName(entry));
}

int zoHPCLegacyHosts::position(const std::vector<int>& positions, int index)
{
    return std::size_t(index) < positions.size() ? positions[std::size_t(index)] : 0;
}

void zoHPCLegacyHosts::addRemarks(int windows)
{
    if (!m_forwardsParameter.isEmpty()) {
        m_remarks.add(Kind::ShiftedHosts,
                      tr("Forwarding hosts take part in the order in which windows get their "
                         "nodes and positions; check both."),
                      m_forwardsParameter);
    }
    if (count() < windows) {
        // A pipe without a host takes one from all that follow: the first one is what to look at.
        int entry = 0;
        for (const int hostEntry : m_entries)
            entry += hostEntry == entry ? 1 : 0;
        m_remarks.add(Kind::MissingHosts, tr("%1 windows have no node.").arg(windows - count()),
                      m_parameters.entryName(entry));
    } else if (count() > windows) {
        m_remarks.add(Kind::UnusedHosts, tr("%1 hosts have no window.").arg(count() - windows),
                      m_parameters.entryName(m_entries[std::size_t(windows)]));
    }
}
