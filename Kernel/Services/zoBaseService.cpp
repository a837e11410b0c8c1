#include "zoBaseService.h"

zoBaseService::~zoBaseService() = default;
