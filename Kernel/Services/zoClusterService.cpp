#include "zoClusterService.h"

zoClusterService::zoClusterService(QObject* parent) : QObject(parent) {}

zoClusterService::~zoClusterService() = default;
