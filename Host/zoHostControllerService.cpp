#include "zoHostControllerService.h"

zoHostControllerService::zoHostControllerService(bool nonInteractive) : m_nonInteractive(nonInteractive) {}

zoHostControllerService::~zoHostControllerService() = default;

bool zoHostControllerService::isNonInteractive()
{
    return m_nonInteractive;
}

bool zoHostControllerService::usesModuleToolBar()
{
    return true;
}
