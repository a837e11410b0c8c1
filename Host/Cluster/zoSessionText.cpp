#include "zoSessionText.h"

#include "zoHostClusterService.h"

#include <QCoreApplication>

namespace
{
QString engineOf(zoClusterService* cluster)
{
    const auto* host = qobject_cast<const zoHostClusterService*>(cluster);
    return host != nullptr ? host->engineName() : QString();
}
} // namespace

QString zoSessionText::of(zoClusterService* cluster)
{
    if (!cluster->isRunning())
        return {};
    const int count = cluster->runningNodes().size();
    const bool rehearses = (cluster->capabilities() & zoClusterService::Rehearses) != 0;
    const QString engine = engineOf(cluster);
    if (!engine.isEmpty()) {
        const QString nodes = count == 1
                                  ? QCoreApplication::translate("zoSessionText", "%1 on 1 node").arg(engine)
                                  : QCoreApplication::translate("zoSessionText", "%1 on %2 nodes")
                                        .arg(engine, QString::number(count));
        return rehearses
                   ? QCoreApplication::translate("zoSessionText", "%1, rehearsed on this machine").arg(nodes)
                   : nodes;
    }
    if (count == 1)
        return rehearses ? QCoreApplication::translate("zoSessionText", "rehearsal of 1 node on this machine")
                         : QCoreApplication::translate("zoSessionText", "1 node");
    const QString text =
        rehearses ? QCoreApplication::translate("zoSessionText", "rehearsal of %1 nodes on this machine")
                  : QCoreApplication::translate("zoSessionText", "%1 nodes");
    return text.arg(count);
}

QString zoSessionText::forScripts(zoClusterService* cluster)
{
    const QString count = QString::number(cluster->runningNodes().size());
    const QString engine = engineOf(cluster);
    if (!engine.isEmpty()) {
        const QString nodes = QStringLiteral("%1 on %2 nodes").arg(engine, count);
        return (cluster->capabilities() & zoClusterService::Rehearses) != 0
                   ? nodes + QStringLiteral(", rehearsed on this machine")
                   : nodes;
    }
    return (cluster->capabilities() & zoClusterService::Rehearses) != 0
               ? QStringLiteral("rehearsal of %1 nodes on this machine").arg(count)
               : QStringLiteral("%1 nodes").arg(count);
}
