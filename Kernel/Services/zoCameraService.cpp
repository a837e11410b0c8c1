#include "zoCameraService.h"

zoCameraService::zoCameraService(QObject* parent) : QObject(parent) {}

zoCameraService::~zoCameraService() = default;
