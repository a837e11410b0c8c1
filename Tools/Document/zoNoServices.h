#pragma once

#include <memory>

class zoCameraService;
class zoNodeService;

// Stands in for the services of a host that the module's classes ask for, as long as it lives: without a
// scene there are no cameras.
class zoNoServices final
{
public:
    zoNoServices();
    ~zoNoServices();
    zoNoServices(const zoNoServices&) = delete;
    zoNoServices& operator=(const zoNoServices&) = delete;

private:
    std::unique_ptr<zoCameraService> m_cameras;
    std::unique_ptr<zoNodeService> m_nodes;
};
