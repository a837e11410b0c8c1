#include "zoNodeService.h"

zoNodeService::zoNodeService(QObject* parent) : QObject(parent) {}

zoNodeService::~zoNodeService() = default;
