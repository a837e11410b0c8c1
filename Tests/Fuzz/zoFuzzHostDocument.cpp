#include "zoFuzzOutline.h"
#include "zoFuzzing.h"

#include <zoClusterDocument.h>
#include <zoClusterTags.h>
#include <zoHPCDocumentText.h>
#include <zoHPCHostTree.h>
#include <zoHPCOption.h>
#include <zoHPCTreeItem.h>

#include <QDomDocument>

#include <map>
#include <vector>

// The host's own reader of configurations beside that of the module: both take the same texts and find the same
// nodes under the same ids, and what the module writes of them is the same to the host.

namespace
{
using Nodes = std::vector<zoClusterDocument::Node>;

QString textOf(const Nodes& nodes)
{
    QString text;
    for (const zoClusterDocument::Node& node : nodes)
        text += QStringLiteral("%1 | %2 | %3 | %4\n")
                    .arg(node.id, node.hostName, QString::number(node.servicePort),
                         node.enabled ? QStringLiteral("on") : QStringLiteral("off"));
    return text;
}

bool isEnabled(const zoHPCTreeItem* item)
{
    for (; item != nullptr; item = item->getParent()) {
        if (!item->isEnabled())
            return false;
    }
    return true;
}

int servicePortOf(const zoHPCTreeItem* item)
{
    while (item != nullptr && !item->isNetwork())
        item = item->getParent();
    return item == nullptr ? zoClusterTags::DefaultServicePort
                           : item->getIntOption(zoHPCOption::ServicePort, zoClusterTags::DefaultServicePort);
}

Nodes nodesOf(const zoHPCHostTree& tree)
{
    std::vector<zoHPCTreeItem*> items;
    tree.master()->getAllSubItems(items);
    std::map<QString, zoHPCTreeItem*> cache;
    Nodes nodes;
    for (zoHPCTreeItem* item : items) {
        const QString id = item->addToIDCache(cache);
        if (item->isNode())
            nodes.push_back({id, item->hostName(), servicePortOf(item), isEnabled(item)});
    }
    return nodes;
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = zoFuzzOutline::documentOf(zoFuzzing::textOf(data, size));
    zoClusterDocument host;
    QString reason;
    const bool isRead = host.parse(text, reason);

    QDomDocument document;
    zoHPCDocumentText::Refusal refusal;
    const bool isDocument = zoHPCDocumentText::parse(text, document, refusal);
    zoFuzzing::require(isRead == isDocument, "host and module take the same texts", reason + refusal.reason);
    if (!isRead) {
        zoFuzzing::require(host.nodes().empty() && !reason.isEmpty(), "what is refused has a reason");
        if (!refusal.reason.isEmpty())
            zoFuzzing::requireSame(
                reason,
                QStringLiteral("line %1, column %2: %3")
                    .arg(QString::number(refusal.line), QString::number(refusal.column), refusal.reason),
                "host and module refuse with the same words");
        return 0;
    }

    static zoHPCHostTree* const tree = new zoHPCHostTree;
    tree->setHostString(QString());
    zoFuzzing::require(tree->loadFromXML(document), "the module takes the tree");
    zoFuzzing::requireSame(textOf(host.nodes()), textOf(nodesOf(*tree)),
                           "host and module find the same nodes");
    for (const zoClusterDocument::Node& node : host.enabledNodes())
        zoFuzzing::require(node.enabled && !node.hostName.isEmpty(), "a session runs on what can be reached");

    QDomDocument written;
    QDomElement root = written.createElement(QStringLiteral("cluster"));
    written.appendChild(root);
    tree->appendXMLConfig(tree->master(), written, root);
    zoClusterDocument again;
    zoFuzzing::require(again.parse(zoHPCDocumentText::toText(written), reason), "what is written is read",
                       reason);
    zoFuzzing::requireSame(textOf(again.nodes()), textOf(host.nodes()), "what is written has the same nodes");
    return 0;
}
