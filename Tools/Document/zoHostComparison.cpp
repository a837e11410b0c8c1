#include "zoHostComparison.h"

#include "zoAttributeValue.h"
#include "zoComparedDocument.h"
#include "zoDifferences.h"
#include "zoHPCOption.h"
#include "zoHostNames.h"
#include "zoItemPaths.h"

#include <zoClusterTags.h>

#include <QJsonArray>
#include <QSet>

#include <algorithm>
#include <tuple>
#include <vector>

namespace
{
// In keys; no name holds it.
const QChar s_mark(0);

QString nameOf(const QDomElement& element)
{
    return element.attribute(QStringLiteral("name"));
}

// In brackets where that tells all of them: equal names fold to one.
QString folded(const QStringList& names)
{
    if (QSet<QString>(names.cbegin(), names.cend()).size() != names.size())
        return names.join(QLatin1Char(','));
    return QString::fromUtf8(zoHostNames::bracketText({names.cbegin(), names.cend()}, false));
}

// As many as a person may read. Each has its own change, where the line that tells of all of them stands again.
QString foldedNames(const QStringList& names)
{
    constexpr int Longest = 1000; // characters
    const QString all = folded(names);
    if (all.size() <= Longest)
        return all;
    int count = 0;
    for (int length = 0; count < names.size(); ++count) {
        length += names.at(count).size() + 1;
        if (length > Longest)
            break;
    }
    const QString shown =
        count > 0 ? folded(names.mid(0, count)) : names.constFirst().left(Longest) + QLatin1String("...");
    const QString left = QString::number(names.size() - std::max(count, 1));
    return names.size() == 1
               ? shown
               : QCoreApplication::translate("zoHostComparison", "%1 ... and %2 more").arg(shown, left);
}
} // namespace

QString zoHostComparison::HostList::placeLabel(const QString& key) const
{
    return key.isEmpty() ? tr("no network") : entries[key].label;
}

QString zoHostComparison::HostList::placePath(const QString& key) const
{
    return key.isEmpty() ? zoItemPaths::master() : entries[key].path;
}

QStringList zoHostComparison::HostList::names(const QStringList& keys) const
{
    QStringList result;
    for (const QString& key : keys)
        result << nameOf(entries[key].element);
    return result;
}

zoHostComparison::HostList zoHostComparison::hostsOf(const zoComparedDocument& document)
{
    // No recursion: networks behind gateways may be deep.
    struct Place
    {
        QDomElement element;
        QString key;
        int networks;
    };
    const QDomElement master = document.root().firstChildElement(zoClusterTags::Master);
    const QStringList networkPaths = document.paths(zoClusterTags::Network);
    const QStringList nodePaths = document.paths(zoClusterTags::Node);
    HostList list;
    QHash<QString, int> counts;
    std::vector<Place> above{{master, QString(), 0}};
    QDomElement element = master.firstChildElement();
    while (!above.empty()) {
        if (element.isNull()) {
            element = above.back().element.nextSiblingElement();
            above.pop_back();
            continue;
        }
        Place& parent = above.back();
        QString key;
        if (element.tagName() == zoClusterTags::Network) {
            key = parent.key + s_mark + QLatin1String("network ") + QString::number(++parent.networks);
            const QString label =
                parent.element.tagName() == zoClusterTags::Node
                    ? tr("network %1 behind %2").arg(QString::number(parent.networks), nameOf(parent.element))
                    : tr("network %1").arg(parent.networks);
            list.entries.insert(key, {element, parent.key, label, networkPaths.value(list.networks.size()),
                                      int(list.networks.size())});
            list.networks << key;
            list.networksOf[parent.key] << key;
        } else {
            const QString name = nameOf(element);
            const int count = ++counts[name];
            key = count == 1 ? name : name + s_mark + QString::number(count);
            list.entries.insert(key, {element, parent.key, tr("node %1").arg(name),
                                      nodePaths.value(list.nodes.size()), int(list.nodes.size())});
            list.nodes << key;
            list.nodesOf[parent.key] << key;
        }
        above.push_back({element, key, 0});
        element = element.firstChildElement();
    }
    return list;
}

void zoHostComparison::compare(const zoComparedDocument& before, const zoComparedDocument& after)
{
    m_before = hostsOf(before);
    m_after = hostsOf(after);
    const auto masterOf = [](const zoComparedDocument& document) {
        return Entry{
            document.root().firstChildElement(zoClusterTags::Master), {}, {}, zoItemPaths::master(), 0};
    };
    compareOptions(tr("cluster"), masterOf(before), masterOf(after));
    pair({}, {});
    pairNodes();
    pairGateways();
    pairNetworks();
    pairRestOfNetworks();
    compareNetworks();
    addMissingNodes(m_before, m_partnerAfter, false);
    addMissingNodes(m_after, m_partnerBefore, true);
    addMovedNodes();
    compareNodes();
    compareOrder();
}

void zoHostComparison::pair(const QString& before, const QString& after)
{
    m_partnerAfter.insert(before, after);
    m_partnerBefore.insert(after, before);
}

void zoHostComparison::pairNodes()
{
    for (const QString& key : qAsConst(m_before.nodes)) {
        if (m_after.entries.contains(key))
            pair(key, key);
    }
}

// A gateway that is gone and a new one before the same hosts are one that got another name.
void zoHostComparison::pairGateways()
{
    const auto firstBehind = [](const HostList& list, const QString& gateway) {
        const QStringList networks = list.networksOf.value(gateway);
        for (const QString& network : networks) {
            if (list.nodesOf.contains(network))
                return list.nodesOf[network].constFirst();
        }
        return QString();
    };
    // From below, so that a gateway behind a renamed one is known by its new name.
    for (auto key = m_before.nodes.crbegin(); key != m_before.nodes.crend(); ++key) {
        if (m_partnerAfter.contains(*key) || !m_before.networksOf.contains(*key))
            continue;
        const QString host = m_partnerAfter.value(firstBehind(m_before, *key));
        if (host.isEmpty())
            continue;
        const QString gateway = m_after.entries[m_after.entries[host].parent].parent;
        if (gateway.isEmpty() || m_partnerBefore.contains(gateway) || firstBehind(m_after, gateway) != host)
            continue;
        pair(*key, gateway);
        m_renamedNodes.insert(nameOf(m_before.entries[*key].element),
                              nameOf(m_after.entries[gateway].element));
    }
}

bool zoHostComparison::HostList::isNetwork(const QString& key) const
{
    return entries.value(key).element.tagName() == zoClusterTags::Network;
}

// Networks go by the nodes that they hold: one that is put in between makes no other of those behind it. One whose
// half is left where it was stays, whatever moved elsewhere.
void zoHostComparison::pairNetworks()
{
    QHash<QString, QHash<QString, int>> shared;
    for (const QString& key : qAsConst(m_before.nodes)) {
        if (m_partnerAfter.contains(key))
            ++shared[m_before.entries[key].parent][m_after.entries[m_partnerAfter[key]].parent];
    }
    struct Candidate
    {
        QString before;
        QString after;
        std::tuple<bool, int, bool, int, int> rank; // the lowest first
    };
    std::vector<Candidate> candidates;
    for (const QString& before : qAsConst(m_before.networks)) {
        const QHash<QString, int> others = shared.value(before);
        for (auto other = others.cbegin(); other != others.cend(); ++other) {
            const QString& after = other.key();
            if (!m_after.isNetwork(after))
                continue;
            const int smaller = std::min(m_before.nodesOf[before].size(), m_after.nodesOf[after].size());
            const bool isSamePlace = before == after;
            candidates.push_back({before,
                                  after,
                                  {!isSamePlace || 2 * other.value() < smaller, -other.value(), !isSamePlace,
                                   m_before.entries[before].order, m_after.entries[after].order}});
        }
    }
    std::sort(candidates.begin(), candidates.end(),
              [](const Candidate& a, const Candidate& b) { return a.rank < b.rank; });
    for (const Candidate& candidate : candidates) {
        if (!m_partnerAfter.contains(candidate.before) && !m_partnerBefore.contains(candidate.after))
            pair(candidate.before, candidate.after);
    }
}

// What shares no node: in their order, where both are at the same place.
void zoHostComparison::pairRestOfNetworks()
{
    QHash<QString, int> next; // of the networks below a parent that have no partner yet
    for (const QString& key : qAsConst(m_before.networks)) {
        const QString parent = m_before.entries[key].parent;
        if (m_partnerAfter.contains(key) || !m_partnerAfter.contains(parent))
            continue;
        const QStringList others = m_after.networksOf.value(m_partnerAfter[parent]);
        int& index = next[parent];
        while (index < others.size() && m_partnerBefore.contains(others.at(index)))
            ++index;
        if (index < others.size())
            pair(key, others.at(index));
    }
}

void zoHostComparison::compareNetworks()
{
    addMissingNetworks(m_before, m_partnerAfter, false);
    addMissingNetworks(m_after, m_partnerBefore, true);
    for (const QString& key : qAsConst(m_after.networks)) {
        if (!m_partnerBefore.contains(key))
            continue;
        const Entry& from = m_before.entries[m_partnerBefore[key]];
        const Entry& to = m_after.entries[key];
        if (!m_partnerAfter.contains(from.parent) || m_partnerAfter[from.parent] != to.parent)
            m_differences.add(QStringLiteral("network-moved"),
                              tr("network moved: %1 is now %2").arg(from.label, to.label),
                              {{to.path, m_before.placePath(from.parent), m_after.placePath(to.parent)}});
        compareOptions(to.label, from, to);
    }
}

void zoHostComparison::addMissingNetworks(const HostList& list, const QHash<QString, QString>& partners,
                                          bool isAdded)
{
    const auto change = [&](const QString& key) {
        const Entry& entry = list.entries[key];
        const QString place = list.placePath(entry.parent);
        return isAdded ? zoDifferences::Change{entry.path, QJsonValue(), place}
                       : zoDifferences::Change{entry.path, place, QJsonValue()};
    };
    struct Missing
    {
        QString label;
        QStringList names;
        zoDifferences::Changes changes;
    };
    std::vector<Missing> missing;
    QHash<QString, std::size_t> told; // the gateways below a missing network
    for (const QString& key : list.networks) {
        if (partners.contains(key))
            continue;
        const QString parent = list.entries[key].parent;
        const std::size_t index = told.value(parent, missing.size());
        if (index == missing.size())
            missing.push_back({list.entries[key].label, {}, {}});
        Missing& above = missing[index];
        above.changes.push_back(change(key));
        const QStringList nodes = list.nodesOf.value(key);
        for (const QString& node : nodes) {
            if (partners.contains(node))
                continue;
            told.insert(node, index);
            above.names << nameOf(list.entries[node].element);
            above.changes.push_back(change(node));
        }
    }
    for (const Missing& network : missing) {
        const QString names =
            network.names.isEmpty() ? QString() : tr(" (%1)").arg(foldedNames(network.names));
        m_differences.add(
            isAdded ? QStringLiteral("network-added") : QStringLiteral("network-removed"),
            (isAdded ? tr("network added: %1%2") : tr("network removed: %1%2")).arg(network.label, names),
            network.changes);
    }
}

void zoHostComparison::addMissingNodes(const HostList& list, const QHash<QString, QString>& partners,
                                       bool isAdded)
{
    // Those of networks that are missing were told with them.
    const QStringList parents = QStringList{QString()} + list.networks + list.nodes;
    for (const QString& parent : parents) {
        const QStringList nodes = list.nodesOf.value(parent);
        if (nodes.isEmpty() || (!partners.contains(parent) && list.isNetwork(parent)))
            continue;
        QStringList keys;
        zoDifferences::Changes changes;
        for (const QString& key : nodes) {
            if (partners.contains(key))
                continue;
            keys << key;
            const QString place = list.placePath(parent);
            changes.push_back(isAdded ? zoDifferences::Change{list.entries[key].path, QJsonValue(), place}
                                      : zoDifferences::Change{list.entries[key].path, place, QJsonValue()});
        }
        if (keys.isEmpty())
            continue;
        const QString text = keys.size() == 1
                                 ? isAdded ? tr("node added: %1 (%2)") : tr("node removed: %1 (%2)")
                             : isAdded ? tr("nodes added: %1 (%2)")
                                       : tr("nodes removed: %1 (%2)");
        m_differences.add(isAdded ? QStringLiteral("node-added") : QStringLiteral("node-removed"),
                          text.arg(foldedNames(list.names(keys)), list.placeLabel(parent)), changes);
    }
}

void zoHostComparison::addMovedNodes()
{
    struct Move
    {
        QString from; // keys of places
        QString to;
        QStringList nodes;
        zoDifferences::Changes changes;
    };
    std::vector<Move> moves;
    QHash<QString, std::size_t> indices;
    for (const QString& key : qAsConst(m_after.nodes)) {
        if (!m_partnerBefore.contains(key))
            continue;
        const QString from = m_before.entries[m_partnerBefore[key]].parent;
        const Entry& to = m_after.entries[key];
        if (m_partnerAfter.contains(from) && m_partnerAfter[from] == to.parent)
            continue;
        const QString places = from + s_mark + s_mark + to.parent;
        if (!indices.contains(places)) {
            indices.insert(places, moves.size());
            moves.push_back({from, to.parent, {}, {}});
        }
        Move& move = moves[indices[places]];
        move.nodes << key;
        move.changes.push_back({to.path, m_before.placePath(from), m_after.placePath(to.parent)});
    }
    for (const Move& move : moves)
        m_differences.add(QStringLiteral("node-moved"),
                          (move.nodes.size() == 1 ? tr("node moved: %1 from %2 to %3")
                                                  : tr("nodes moved: %1 from %2 to %3"))
                              .arg(foldedNames(m_after.names(move.nodes)), m_before.placeLabel(move.from),
                                   m_after.placeLabel(move.to)),
                          move.changes);
}

void zoHostComparison::compareNodes()
{
    for (const QString& key : qAsConst(m_after.nodes)) {
        if (!m_partnerBefore.contains(key))
            continue;
        const Entry& from = m_before.entries[m_partnerBefore[key]];
        const Entry& to = m_after.entries[key];
        if (nameOf(from.element) != nameOf(to.element))
            m_differences.add(
                QStringLiteral("node-renamed"),
                tr("node renamed: %1 to %2").arg(nameOf(from.element), nameOf(to.element)),
                {zoDifferences::change(to.path, zoClusterTags::NameAttribute, from.element, to.element)});
        compareOptions(to.label, from, to);
    }
}

void zoHostComparison::compareOrder()
{
    // Those of the former place that are still there, by their present keys.
    const auto partnersOf = [this](const QStringList& keys) {
        QStringList result;
        for (const QString& key : keys) {
            if (m_partnerAfter.contains(key))
                result << m_partnerAfter[key];
        }
        return result;
    };
    const auto isReordered = [](const QStringList& from, const QStringList& to) {
        return zoDifferences::common(from, to) != zoDifferences::common(to, from);
    };
    const QStringList parents = QStringList{QString()} + m_after.nodes;
    for (const QString& parent : parents) {
        const QStringList to = m_after.networksOf.value(parent);
        if (to.size() < 2 || !m_partnerBefore.contains(parent) ||
            !isReordered(partnersOf(m_before.networksOf.value(m_partnerBefore[parent])), to))
            continue;
        m_differences.add(QStringLiteral("networks-reordered"),
                          tr("%1: its networks are in another order")
                              .arg(parent.isEmpty() ? tr("cluster") : m_after.entries[parent].label),
                          {{m_after.placePath(parent), QJsonValue(), QJsonValue()}});
    }
    for (const QString& network : qAsConst(m_after.networks)) {
        const QStringList to = m_after.nodesOf.value(network);
        if (!m_partnerBefore.contains(network))
            continue;
        const QStringList from = m_before.nodesOf.value(m_partnerBefore[network]);
        if (isReordered(partnersOf(from), to))
            m_differences.add(
                QStringLiteral("nodes-reordered"),
                tr("%1: its nodes are in another order").arg(m_after.entries[network].label),
                {{m_after.entries[network].path, QJsonArray::fromStringList(m_before.names(from)),
                  QJsonArray::fromStringList(m_after.names(to))}});
    }
}

void zoHostComparison::compareOptions(const QString& label, const Entry& before, const Entry& after)
{
    const QStringList names = zoDifferences::attributeNames(before.element, after.element);
    for (const QString& name : names) {
        if (zoAttributeValue::isSame(before.element, after.element, name) ||
            compareSwitch(name, label, before, after) || name == zoClusterTags::NameAttribute)
            continue;
        m_differences.addChange(QStringLiteral("option-changed"), label, zoHPCOption::words(name),
                                zoDifferences::shown(before.element.attribute(name)),
                                zoDifferences::shown(after.element.attribute(name)),
                                {zoDifferences::change(after.path, name, before.element, after.element)});
    }
}

bool zoHostComparison::compareSwitch(const QString& option, const QString& label, const Entry& before,
                                     const Entry& after)
{
    // Whatever is not "false" is on.
    const bool isOff = after.element.attribute(option) == QLatin1String("false");
    if (isOff == (before.element.attribute(option) == QLatin1String("false")))
        return false;
    const zoDifferences::Changes changes{
        zoDifferences::change(after.path, option, before.element, after.element)};
    if (option == zoHPCOption::Enabled) {
        m_differences.add(isOff ? QStringLiteral("disabled") : QStringLiteral("enabled"),
                          isOff ? tr("%1: disabled").arg(label) : tr("%1: enabled").arg(label), changes);
        return true;
    }
    if (option == zoHPCOption::RenderNode) {
        m_differences.add(isOff ? QStringLiteral("render-node-off") : QStringLiteral("render-node-on"),
                          isOff ? tr("%1: does not render any more").arg(label)
                                : tr("%1: renders now").arg(label),
                          changes);
        return true;
    }
    return false;
}
