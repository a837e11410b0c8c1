#include "zoMainWindowService.h"

zoMainWindowService::~zoMainWindowService() = default;
