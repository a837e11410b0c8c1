#include "zoHostClusterService.h"

#include <QPointer>

zoHostClusterService::zoHostClusterService(QObject* parent) : zoClusterService(parent) {}

zoHostClusterService::~zoHostClusterService() = default;

void zoHostClusterService::offerConfig(const QString& document)
{
    if (document == currentConfig())
        return;
    const QPointer<zoHostClusterService> self(this);
    applyConfig(document);
    if (self && document == currentConfig())
        emit configChanged(document);
}
