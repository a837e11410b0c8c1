#pragma once

#include <QString>
#include <QStringList>

#include <functional>

// The documents of the contract suite.
namespace zoContractDocument
{
// Of the factory of the suite that runs.
inline std::function<QString(const QString& document)>& completion()
{
    static std::function<QString(const QString& document)> complete;
    return complete;
}

inline QString completed(const QString& document)
{
    return completion() ? completion()(document) : document;
}

// A document with these nodes in one network.
inline QString documentOf(const QStringList& nodes, int servicePort = 0)
{
    QString text = QStringLiteral("<cluster version=\"1\">\n <master>\n  <network");
    if (servicePort != 0)
        text += QStringLiteral(" serviceport=\"%1\"").arg(servicePort);
    text += QStringLiteral(">\n");
    for (const QString& node : nodes)
        text += QStringLiteral("   <node name=\"%1\"/>\n").arg(node);
    return completed(text + QStringLiteral("  </network>\n </master>\n</cluster>\n"));
}
} // namespace zoContractDocument
