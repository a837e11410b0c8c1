#include "zoControllerService.h"

zoControllerService::~zoControllerService() = default;
