#include "zoClusterDocument.h"

#include <zoClusterIds.h>
#include <zoClusterLimits.h>
#include <zoClusterTags.h>
#include <zoClusterXml.h>

#include <QCoreApplication>
#include <QDomDocument>

namespace
{
enum class Kind { Master, Network, Node };

constexpr int s_noItem = -1;

// One row of the host tree.
struct Item
{
    Kind kind = Kind::Node;
    int parent = s_noItem;
    int row = 0;
    bool enabled = true;
    QString name;
    QString servicePort;
    std::vector<int> children;
};

QString reasonOf(zoClusterXml::Outcome outcome, const zoClusterXml::Refusal& refusal)
{
    switch (outcome) {
    case zoClusterXml::Outcome::TooDeep:
        return QCoreApplication::translate("zoClusterDocument", "more than %1 elements are nested")
            .arg(zoClusterLimits::MaximumDepth);
    case zoClusterXml::Outcome::TooManyAttributes:
        return QCoreApplication::translate("zoClusterDocument", "an element has more than %1 attributes")
            .arg(zoClusterLimits::MaximumAttributes);
    case zoClusterXml::Outcome::TooManyEntities:
        return QCoreApplication::translate("zoClusterDocument", "the document type declares too much");
    default:
        return refusal.reason;
    }
}

// The item that an element stands for, below its parent; s_noItem for none.
int readItem(const QDomElement& element, int parent, std::vector<Item>& items)
{
    const QString tag = element.tagName();
    int index = s_noItem;
    if (tag == zoClusterTags::Master) {
        index = 0;
    } else if (parent != s_noItem && (tag == zoClusterTags::Network || tag == zoClusterTags::Node)) {
        index = int(items.size());
        Item item;
        item.kind = tag == zoClusterTags::Node ? Kind::Node : Kind::Network;
        item.parent = parent;
        item.row = int(items[size_t(parent)].children.size());
        if (item.kind == Kind::Node)
            item.name = element.attribute(zoClusterTags::NameAttribute, QStringLiteral("localhost"));
        items.push_back(item);
        items[size_t(parent)].children.push_back(index);
    }
    if (index != s_noItem) {
        Item& item = items[size_t(index)];
        if (element.hasAttribute(QStringLiteral("enabled")))
            item.enabled = element.attribute(QStringLiteral("enabled")) != QLatin1String("false");
        if (element.hasAttribute(QStringLiteral("serviceport")))
            item.servicePort = element.attribute(QStringLiteral("serviceport"));
    }
    return index;
}

// The rows of the host tree; the master is the first. False when the text is not well-formed.
bool readItems(const QString& text, std::vector<Item>& items, QString& reason)
{
    items.assign(1, Item());
    items.front().kind = Kind::Master;

    QDomDocument document;
    zoClusterXml::Refusal refusal;
    const zoClusterXml::Outcome outcome = zoClusterXml::read(text, document, refusal);
    if (outcome != zoClusterXml::Outcome::Read) {
        reason = QCoreApplication::translate("zoClusterDocument", "line %1, column %2: %3")
                     .arg(QString::number(refusal.line), QString::number(refusal.column),
                          reasonOf(outcome, refusal));
        return false;
    }
    // Without recursion: the item that the children of each open element hang under.
    std::vector<int> open{s_noItem};
    QDomElement element = document.documentElement();
    while (!element.isNull()) {
        const int index = readItem(element, open.back(), items);
        QDomElement next = element.firstChildElement();
        if (!next.isNull()) {
            // An element without an item is transparent: its children belong to what is around it.
            open.push_back(index != s_noItem ? index : open.back());
        } else {
            next = element.nextSiblingElement();
            while (next.isNull() && open.size() > 1) {
                open.pop_back();
                element = element.parentNode().toElement();
                next = element.nextSiblingElement();
            }
        }
        element = next;
    }
    return true;
}

int servicePortOf(const Item& network)
{
    return network.servicePort.isEmpty() ? zoClusterTags::DefaultServicePort : network.servicePort.toInt();
}
} // namespace

bool zoClusterDocument::parse(const QString& text, QString& reason)
{
    m_nodes.clear();
    std::vector<Item> items;
    if (!readItems(text, items, reason))
        return false;

    // Pre-order without recursion: a document may nest deeper than the stack carries.
    struct Step
    {
        int index;
        int place; // of the network around it
        bool enabled;
        int servicePort;
    };
    zoClusterPlaces places;
    zoClusterIds ids(places);
    ids.reserve(items.size());
    std::vector<Step> pending{{0, zoClusterPlaces::Top, true, zoClusterTags::DefaultServicePort}};
    while (!pending.empty()) {
        Step step = pending.back();
        pending.pop_back();
        const Item& item = items[size_t(step.index)];
        step.enabled = step.enabled && item.enabled;
        if (item.kind == Kind::Network) {
            step.servicePort = servicePortOf(item);
            step.place = places.child(step.place, item.row);
            ids.addNetwork(step.place);
        } else {
            const int entry = ids.addName(item.name);
            if (item.kind == Kind::Node)
                m_nodes.push_back({ids.id(entry), item.name, step.servicePort, step.enabled});
        }
        for (auto child = item.children.rbegin(); child != item.children.rend(); ++child)
            pending.push_back({*child, step.place, step.enabled, step.servicePort});
    }
    return true;
}

std::vector<zoClusterDocument::Node> zoClusterDocument::enabledNodes() const
{
    std::vector<Node> enabled;
    for (const Node& node : m_nodes) {
        if (node.enabled && !node.hostName.isEmpty())
            enabled.push_back(node);
    }
    return enabled;
}
