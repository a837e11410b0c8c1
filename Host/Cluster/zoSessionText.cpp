#include "zoSessionText.h"

#include <zoClusterService.h>

#include <QCoreApplication>

QString zoSessionText::of(zoClusterService* cluster)
{
    if (!cluster->isRunning())
        return {};
    const int count = cluster->runningNodes().size();
    const bool rehearses = (cluster->capabilities() & zoClusterService::Rehearses) != 0;
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
    return (cluster->capabilities() & zoClusterService::Rehearses) != 0
               ? QStringLiteral("rehearsal of %1 nodes on this machine").arg(count)
               : QStringLiteral("%1 nodes").arg(count);
}
