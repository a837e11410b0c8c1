#include "zoNoServices.h"

#include <zoCameraService.h>
#include <zoKernelServiceFactory.h>
#include <zoNodeService.h>

namespace
{
class NoCameras final : public zoCameraService
{
public:
    QStringList cameraNames() override { return {}; }
};

class NoNodes final : public zoNodeService
{
};
} // namespace

zoNoServices::zoNoServices() : m_cameras(std::make_unique<NoCameras>()), m_nodes(std::make_unique<NoNodes>())
{
    zoKernelServiceFactory::the().registerService<zoCameraService>(m_cameras.get());
    zoKernelServiceFactory::the().registerService<zoNodeService>(m_nodes.get());
}

zoNoServices::~zoNoServices()
{
    zoKernelServiceFactory::the().unregisterService<zoNodeService>();
    zoKernelServiceFactory::the().unregisterService<zoCameraService>();
}
