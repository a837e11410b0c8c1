#include "zoConfigurationService.h"

zoConfigurationService::zoConfigurationService(QObject* parent) : QObject(parent) {}

zoConfigurationService::~zoConfigurationService() = default;
