#include "zoHPCHostsTextBuilder.h"

#include "zoHPCHostRange.h"
#include "zoHPCHostsText.h"
#include "zoHPCTreeDepth.h"
#include "zoHPCTreeItem.h"
#include "zoText.h"

#include <zoClusterLimits.h>

#include <algorithm>
#include <map>

zoHPCHostsTextBuilder::zoHPCHostsTextBuilder(zoHPCTreeContext* context, const QString& networkText)
    : m_context(context), m_networkText(networkText), m_depthLimit(zoHPCTreeDepth::limit())
{
}

zoHPCHostsTextBuilder::~zoHPCHostsTextBuilder()
{
    // Of a text that was refused in the middle.
    for (const Rows& rows : m_open)
        zoHPCTreeItem::destroy(rows.pending);
    zoHPCTreeItem::destroy(m_networks);
}

int zoHPCHostsTextBuilder::Rows::count() const
{
    return parent->childCount() + pending.size();
}

void zoHPCHostsTextBuilder::Rows::attach()
{
    if (!pending.isEmpty())
        parent->addChildren(pending);
    pending.clear();
}

zoHPCHostsTextBuilder::Outcome zoHPCHostsTextBuilder::read(const QString& text)
{
    zoHPCHostsText reader(text);
    while (reader.next()) {
        readToken(reader.token());
        // The master, then a network and its nodes per open brace.
        if (1 + 2 * int(m_open.size()) > m_depthLimit)
            m_outcome = Outcome::TooDeep;
        if (m_outcome != Outcome::Read)
            return m_outcome;
    }
    while (!m_open.empty()) {
        m_open.back().attach();
        m_open.pop_back();
    }
    return m_outcome;
}

// False, with the outcome told, when so many hosts more in the current network are too many.
bool zoHPCHostsTextBuilder::hasRoomFor(int hosts, int length)
{
    m_hosts += hosts;
    m_characters += qint64(hosts) * length;
    m_levels += 2 * qint64(hosts) * qint64(m_open.size());
    if (m_hosts > zoClusterLimits::MaximumHosts || m_characters > zoClusterLimits::MaximumNameCharacters)
        m_outcome = Outcome::TooMany;
    else if (m_levels > zoClusterLimits::MaximumLevels)
        m_outcome = Outcome::TooDeep;
    return m_outcome == Outcome::Read;
}

QList<QTreeWidgetItem*> zoHPCHostsTextBuilder::takeNetworks()
{
    QList<QTreeWidgetItem*> networks;
    networks.swap(m_networks);
    return networks;
}

bool zoHPCHostsTextBuilder::overwriteOptions() const
{
    for (const auto& option : m_renderOptions) {
        if (option.first->isRenderNode() != option.second)
            option.first->setOptionQuietly(zoHPCOption::RenderNode,
                                           option.second ? QString() : zoText("false"));
    }
    return !m_renderOptions.empty();
}

void zoHPCHostsTextBuilder::readToken(QStringView token)
{
    const QChar first = token.front();
    if (first == QLatin1Char('[') || first == QLatin1Char('/'))
        return;
    if (first == QLatin1Char('{')) {
        if (m_hasAnchor) {
            openNetwork();
            m_rangePending = false;
        }
    } else if (first == QLatin1Char('}')) {
        if (!m_open.empty()) {
            closeNetwork();
            m_rangePending = false;
        }
    } else if (first == QLatin1Char('-') && token.size() == 1) {
        m_rangePending = true;
    } else {
        addHost(token);
    }
}

void zoHPCHostsTextBuilder::openNetwork()
{
    auto* network = new zoHPCTreeItem(m_context);
    network->setIsNetwork(true);
    network->setText(0, m_networkText);
    network->takeNewLook();
    if (m_anchor) {
        m_open.back().attach();
        m_anchor->addChild(network);
    } else {
        m_networks.append(network);
    }
    m_open.push_back({network, {}});
    m_hasAnchor = false;
}

void zoHPCHostsTextBuilder::closeNetwork()
{
    m_open.back().attach();
    m_anchor = m_open.back().parent->parent();
    m_hasAnchor = true;
    m_open.pop_back();
}

void zoHPCHostsTextBuilder::addHost(QStringView token)
{
    const QString name = zoHPCHostsText::hostName(token);
    if (name.isEmpty())
        return;
    if (m_open.empty())
        openNetwork();
    if (!hasRoomFor(1, name.size()))
        return;
    zoHPCTreeItem* node = newNode(name);
    m_open.back().pending.append(node);
    m_anchor = node;
    m_hasAnchor = true;

    std::vector<zoHPCTreeItem*> overridden;
    if (m_rangePending)
        fillRange(overridden);
    m_rangePending = false;
    QString value;
    if (zoHPCHostsText::renderOption(token, value)) {
        overridden.push_back(node);
        std::map<QString, QString> options{{zoText("rt"), value}};
        zoHPCTreeItem probe(nullptr);
        probe.overwriteOptions(options);
        for (zoHPCTreeItem* item : overridden)
            m_renderOptions.emplace_back(item, probe.isRenderNode());
    }
}

void zoHPCHostsTextBuilder::fillRange(std::vector<zoHPCTreeItem*>& inserted)
{
    Rows& rows = m_open.back();
    if (rows.count() < 2)
        return;
    auto* node = static_cast<zoHPCTreeItem*>(rows.pending.takeLast());
    const auto* previous = static_cast<const zoHPCTreeItem*>(
        rows.pending.isEmpty() ? rows.parent->child(rows.parent->childCount() - 1) : rows.pending.last());
    const zoHPCNumberedName first(previous->hostName());
    const int count = zoHPCHostRange(first, zoHPCNumberedName(node->hostName())).namesBetween();
    if (!hasRoomFor(count, std::max(previous->hostName().size(), node->hostName().size()))) {
        rows.pending.append(node);
        return;
    }
    for (int k = 1; k <= count; ++k) {
        inserted.push_back(newNode(first.name(k)));
        rows.pending.append(inserted.back());
    }
    rows.pending.append(node);
}

zoHPCTreeItem* zoHPCHostsTextBuilder::newNode(const QString& name)
{
    auto* node = new zoHPCTreeItem(m_context);
    node->setIsNode(true);
    node->setHostName(name);
    node->takeNewLook();
    return node;
}
