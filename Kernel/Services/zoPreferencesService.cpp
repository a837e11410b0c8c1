#include "zoPreferencesService.h"

zoPreferencesService::~zoPreferencesService() = default;
