#include "zoClusterDocument.h"

#include <zoClusterIds.h>
#include <zoClusterTags.h>

#include <QCoreApplication>
#include <QXmlStreamReader>

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

// The rows of the host tree; the master is the first. False when the text is not well-formed.
bool readItems(const QString& text, std::vector<Item>& items, QString& reason)
{
    items.assign(1, Item());
    items.front().kind = Kind::Master;

    QXmlStreamReader xml(text);
    xml.setNamespaceProcessing(false); // as the window reads it
    // The item that each open element hangs its children under.
    std::vector<int> open{s_noItem};
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement: {
            const int parent = open.back();
            const auto tag = xml.qualifiedName();
            const QXmlStreamAttributes attributes = xml.attributes();
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
                    item.name = attributes.hasAttribute(zoClusterTags::NameAttribute)
                                    ? attributes.value(zoClusterTags::NameAttribute).toString()
                                    : QStringLiteral("localhost");
                items.push_back(item);
                items[size_t(parent)].children.push_back(index);
            }
            if (index != s_noItem) {
                Item& item = items[size_t(index)];
                if (attributes.hasAttribute(QLatin1String("enabled")))
                    item.enabled = attributes.value(QLatin1String("enabled")) != QLatin1String("false");
                if (attributes.hasAttribute(QLatin1String("serviceport")))
                    item.servicePort = attributes.value(QLatin1String("serviceport")).toString();
            }
            // An element without an item is transparent: its children belong to what is around it.
            open.push_back(index != s_noItem ? index : parent);
            break;
        }
        case QXmlStreamReader::EndElement:
            open.pop_back();
            break;
        default:
            break;
        }
    }
    if (xml.hasError()) {
        reason = QCoreApplication::translate("zoClusterDocument", "line %1, column %2: %3")
                     .arg(QString::number(xml.lineNumber()), QString::number(xml.columnNumber()),
                          xml.errorString());
        return false;
    }
    return true;
}

int servicePortOf(const Item& network)
{
    return network.servicePort.isEmpty() ? zoClusterDocument::DefaultServicePort
                                         : network.servicePort.toInt();
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
    std::vector<Step> pending{{0, zoClusterPlaces::Top, true, DefaultServicePort}};
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
