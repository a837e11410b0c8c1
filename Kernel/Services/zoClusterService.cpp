#include "zoClusterService.h"

zoClusterService::zoClusterService(QObject* parent) : QObject(parent) {}

zoClusterService::~zoClusterService() = default;

zoClusterService::Capabilities zoClusterService::capabilities()
{
    return {};
}

QVector<zoClusterNodeReport> zoClusterService::nodeReport()
{
    return {};
}
