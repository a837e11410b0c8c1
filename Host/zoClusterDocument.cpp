#include "zoClusterDocument.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>
#include <QXmlStreamReader>

#include <algorithm>

namespace
{
enum class Kind { Master, Network, Node };

constexpr int NoItem = -1;

// One row of the host tree.
struct Item
{
    Kind kind = Kind::Node;
    int parent = NoItem;
    int row = 0;
    bool enabled = true;
    QString name;
    QString servicePort;
    std::vector<int> children;
};

QString idOf(const std::vector<Item>& items, int index)
{
    if (items[size_t(index)].kind != Kind::Network)
        return items[size_t(index)].name;
    QString path;
    for (int at = index; items[size_t(at)].parent != NoItem; at = items[size_t(at)].parent) {
        if (items[size_t(at)].kind == Kind::Network)
            path = QString::number(items[size_t(at)].row) + QLatin1Char('/') + path;
    }
    return QStringLiteral("Network:/") + path;
}

// Ids in the order of entering; equal ones get "_2", "_3", ... in turn.
class IdCache final
{
public:
    QString enter(const QString& id)
    {
        QString used = id;
        // The next free suffix is kept per id: probing from 2 again would be quadratic in equal names.
        if (m_used.contains(used)) {
            int& next = m_nextSuffix[id];
            next = std::max(next, 2);
            do {
                used = id + QLatin1Char('_') + QString::number(next++);
            } while (m_used.contains(used));
        }
        m_used.insert(used);
        return used;
    }

private:
    QSet<QString> m_used;
    QHash<QString, int> m_nextSuffix;
};

// The rows of the host tree; the master is the first. False when the text is not well-formed.
bool readItems(const QString& text, std::vector<Item>& items, QString& reason)
{
    items.assign(1, Item());
    items.front().kind = Kind::Master;

    QXmlStreamReader xml(text);
    xml.setNamespaceProcessing(false); // as the window reads it
    // The item that each open element hangs its children under.
    std::vector<int> open{NoItem};
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement: {
            const int parent = open.back();
            const auto tag = xml.qualifiedName();
            const QXmlStreamAttributes attributes = xml.attributes();
            int index = NoItem;
            if (tag == QLatin1String("master")) {
                index = 0;
            } else if (parent != NoItem &&
                       (tag == QLatin1String("network") || tag == QLatin1String("node"))) {
                index = int(items.size());
                Item item;
                item.kind = tag == QLatin1String("node") ? Kind::Node : Kind::Network;
                item.parent = parent;
                item.row = int(items[size_t(parent)].children.size());
                if (item.kind == Kind::Node)
                    item.name = attributes.hasAttribute(QLatin1String("name"))
                                    ? attributes.value(QLatin1String("name")).toString()
                                    : QStringLiteral("localhost");
                items.push_back(item);
                items[size_t(parent)].children.push_back(index);
            }
            if (index != NoItem) {
                Item& item = items[size_t(index)];
                if (attributes.hasAttribute(QLatin1String("enabled")))
                    item.enabled = attributes.value(QLatin1String("enabled")) != QLatin1String("false");
                if (attributes.hasAttribute(QLatin1String("serviceport")))
                    item.servicePort = attributes.value(QLatin1String("serviceport")).toString();
            }
            // An element without an item is transparent: its children belong to what is around it.
            open.push_back(index != NoItem ? index : parent);
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
        bool enabled;
        int servicePort;
    };
    // A network's id is as long as the network is deep, and only a node that is named like one can meet it.
    const QString networkPrefix = QStringLiteral("Network:/");
    const bool networksCount = std::any_of(items.cbegin(), items.cend(), [&networkPrefix](const Item& item) {
        return item.name.startsWith(networkPrefix);
    });
    IdCache ids;
    std::vector<Step> pending{{0, true, DefaultServicePort}};
    while (!pending.empty()) {
        const Step step = pending.back();
        pending.pop_back();
        const Item& item = items[size_t(step.index)];
        const bool enabled = step.enabled && item.enabled;
        const int servicePort = item.kind == Kind::Network ? servicePortOf(item) : step.servicePort;
        QString id;
        if (item.kind != Kind::Network || networksCount)
            id = ids.enter(idOf(items, step.index));
        if (item.kind == Kind::Node)
            m_nodes.push_back({id, item.name, servicePort, enabled});
        for (auto child = item.children.rbegin(); child != item.children.rend(); ++child)
            pending.push_back({*child, enabled, servicePort});
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
