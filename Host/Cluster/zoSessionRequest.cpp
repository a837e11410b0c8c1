#include "zoSessionRequest.h"

#include "zoThisMachine.h"

#include <QCoreApplication>
#include <QJsonArray>

#include <algorithm>

QJsonObject zoSessionRequest::config(const QString& document,
                                     const std::vector<zoClusterDocument::Node>& nodes, bool share)
{
    QJsonArray array;
    for (const zoClusterDocument::Node& node : nodes)
        array << QJsonObject{{QStringLiteral("id"), node.id},
                             {QStringLiteral("host"), node.hostName},
                             {QStringLiteral("port"), node.servicePort},
                             {QStringLiteral("here"), zoThisMachine::isNamed(node.hostName)}};
    return {{QStringLiteral("document"), document},
            {QStringLiteral("nodes"), array},
            {QStringLiteral("share"), share}};
}

bool zoSessionRequest::isAllOnThisMachine(const std::vector<zoClusterDocument::Node>& nodes)
{
    return std::all_of(nodes.begin(), nodes.end(), [](const zoClusterDocument::Node& node) {
        return zoThisMachine::isNamed(node.hostName);
    });
}

QStringList zoSessionRequest::idsOf(const std::vector<zoClusterDocument::Node>& nodes)
{
    QStringList ids;
    for (const zoClusterDocument::Node& node : nodes)
        ids << node.id;
    return ids;
}

QString zoSessionRequest::listOf(const QStringList& ids)
{
    constexpr int Shown = 8;
    if (ids.isEmpty())
        return QCoreApplication::translate("zoSessionRequest", "no node");
    const QString list = QStringList(ids.mid(0, Shown)).join(QStringLiteral(", "));
    if (ids.size() <= Shown)
        return list;
    return QCoreApplication::translate("zoSessionRequest", "%1 and %2 more")
        .arg(list, QString::number(ids.size() - Shown));
}
