#include "zoHostNodeService.h"

zoHostNodeService::zoHostNodeService(QObject* parent) : zoNodeService(parent) {}

zoHostNodeService::~zoHostNodeService() = default;

void zoHostNodeService::announceCameraName(uint node, const QString& name)
{
    emit cameraNameChanged(node, name);
}
