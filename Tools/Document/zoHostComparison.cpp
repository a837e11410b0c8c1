#include "zoHostComparison.h"

#include "zoDifferences.h"
#include "zoHPCOption.h"
#include "zoHostNames.h"

#include <zoClusterTags.h>

#include <QSet>

#include <vector>

namespace
{
QString nameOf(const QDomElement& element)
{
    return element.attribute(QStringLiteral("name"));
}

// In brackets where that tells all of them: equal names fold to one.
QString foldedNames(const QStringList& names)
{
    if (QSet<QString>(names.cbegin(), names.cend()).size() != names.size())
        return names.join(QLatin1Char(','));
    return QString::fromUtf8(zoHostNames::bracketText({names.cbegin(), names.cend()}, false));
}
} // namespace

QString zoHostComparison::HostList::placeLabel(const QString& key) const
{
    return key.isEmpty() ? tr("no network") : entries[key].label;
}

QStringList zoHostComparison::HostList::names(const QStringList& keys) const
{
    QStringList result;
    for (const QString& key : keys)
        result << nameOf(entries[key].element);
    return result;
}

zoHostComparison::HostList zoHostComparison::hostsOf(const QDomElement& master)
{
    // No recursion: networks behind gateways may be deep.
    struct Place
    {
        QDomElement element;
        QString key;
        int networks;
    };
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
            key = parent.key + QLatin1String("/network ") + QString::number(++parent.networks);
            const QString label =
                parent.element.tagName() == zoClusterTags::Node
                    ? tr("network %1 behind %2").arg(QString::number(parent.networks), nameOf(parent.element))
                    : tr("network %1").arg(parent.networks);
            list.networks << key;
            list.entries.insert(key, {element, parent.key, label});
        } else {
            const QString name = nameOf(element);
            const int count = ++counts[name];
            key = count == 1 ? name : name + QLatin1Char('\n') + QString::number(count);
            list.nodes << key;
            list.nodesOfNetwork[parent.key] << key;
            list.entries.insert(key, {element, parent.key, tr("node %1").arg(name)});
        }
        above.push_back({element, key, 0});
        element = element.firstChildElement();
    }
    return list;
}

void zoHostComparison::compare(const QDomElement& before, const QDomElement& after)
{
    const QDomElement masterBefore = before.firstChildElement(zoClusterTags::Master);
    const QDomElement masterAfter = after.firstChildElement(zoClusterTags::Master);
    compareOptions(tr("cluster"), masterBefore, masterAfter);
    const HostList listBefore = hostsOf(masterBefore);
    const HostList listAfter = hostsOf(masterAfter);
    compareNetworks(listBefore, listAfter);
    addMissingNodes(listBefore, listAfter, false);
    addMissingNodes(listAfter, listBefore, true);
    compareNodes(listBefore, listAfter);
    compareOrder(listBefore, listAfter);
}

void zoHostComparison::compareNetworks(const HostList& before, const HostList& after)
{
    for (const QString& key : before.networks) {
        if (!after.entries.contains(key))
            m_differences.add(QStringLiteral("network-removed"),
                              tr("network removed: %1").arg(before.entries[key].label));
    }
    for (const QString& key : after.networks) {
        const Entry& to = after.entries[key];
        if (!before.entries.contains(key))
            m_differences.add(QStringLiteral("network-added"), tr("network added: %1").arg(to.label));
        else
            compareOptions(to.label, before.entries[key].element, to.element);
    }
}

void zoHostComparison::addMissingNodes(const HostList& list, const HostList& other, bool isAdded)
{
    const QStringList parents = QStringList{QString()} + list.networks;
    for (const QString& parent : parents) {
        QStringList keys;
        const QStringList nodes = list.nodesOfNetwork.value(parent);
        for (const QString& key : nodes) {
            if (!other.entries.contains(key))
                keys << key;
        }
        if (keys.isEmpty())
            continue;
        const QString text = keys.size() == 1
                                 ? isAdded ? tr("node added: %1 (%2)") : tr("node removed: %1 (%2)")
                             : isAdded ? tr("nodes added: %1 (%2)")
                                       : tr("nodes removed: %1 (%2)");
        m_differences.add(isAdded ? QStringLiteral("node-added") : QStringLiteral("node-removed"),
                          text.arg(foldedNames(list.names(keys)), list.placeLabel(parent)));
    }
}

void zoHostComparison::compareNodes(const HostList& before, const HostList& after)
{
    for (const QString& key : after.nodes) {
        if (!before.entries.contains(key))
            continue;
        const Entry& from = before.entries[key];
        const Entry& to = after.entries[key];
        if (from.parent != to.parent)
            m_differences.add(
                QStringLiteral("node-moved"),
                tr("node moved: %1 from %2 to %3")
                    .arg(nameOf(to.element), before.placeLabel(from.parent), after.placeLabel(to.parent)));
        compareOptions(to.label, from.element, to.element);
    }
}

void zoHostComparison::compareOrder(const HostList& before, const HostList& after)
{
    for (const QString& network : after.networks) {
        const QStringList from = before.nodesOfNetwork.value(network);
        const QStringList to = after.nodesOfNetwork.value(network);
        if (zoDifferences::common(from, to) != zoDifferences::common(to, from))
            m_differences.add(QStringLiteral("nodes-reordered"),
                              tr("%1: its nodes are in another order").arg(after.entries[network].label));
    }
}

void zoHostComparison::compareOptions(const QString& label, const QDomElement& before,
                                      const QDomElement& after)
{
    const QStringList names = zoDifferences::attributeNames(before, after);
    for (const QString& name : names) {
        const QString from = before.attribute(name);
        const QString to = after.attribute(name);
        if (from == to || compareSwitch(name, label, from, to) || name == QLatin1String("name"))
            continue;
        m_differences.addChange(QStringLiteral("option-changed"), label, zoHPCOption::words(name),
                                zoDifferences::shown(from), zoDifferences::shown(to));
    }
}

bool zoHostComparison::compareSwitch(const QString& option, const QString& label, const QString& before,
                                     const QString& after)
{
    // Whatever is not "false" is on.
    const bool isOff = after == QLatin1String("false");
    if (isOff == (before == QLatin1String("false")))
        return false;
    if (option == zoHPCOption::Enabled) {
        m_differences.add(isOff ? QStringLiteral("disabled") : QStringLiteral("enabled"),
                          isOff ? tr("%1: disabled").arg(label) : tr("%1: enabled").arg(label));
        return true;
    }
    if (option == zoHPCOption::RenderNode) {
        m_differences.add(isOff ? QStringLiteral("render-node-off") : QStringLiteral("render-node-on"),
                          isOff ? tr("%1: does not render any more").arg(label)
                                : tr("%1: renders now").arg(label));
        return true;
    }
    return false;
}
