#include "zoKernelServiceFactory.h"

#include <cstdio>

zoKernelServiceFactory::zoKernelServiceFactory() = default;
zoKernelServiceFactory::~zoKernelServiceFactory() = default;

zoKernelServiceFactory& zoKernelServiceFactory::the()
{
    static zoKernelServiceFactory factory;
    return factory;
}

zoBaseService* zoKernelServiceFactory::find(const char* typeName) const
{
    const auto it = m_services.constFind(typeName);
    if (it == m_services.constEnd()) {
        std::fprintf(stderr, "zoKernelServiceFactory: couldn't find class '%s'!\n", typeName);
        return nullptr;
    }
    if (it.value() == nullptr) {
        std::fprintf(stderr, "zoKernelServiceFactory: service '%s' is NULL!\n", typeName);
        return nullptr;
    }
    return it.value();
}

void zoKernelServiceFactory::insert(const char* typeName, zoBaseService* service)
{
    m_services.insert(typeName, service);
}

void zoKernelServiceFactory::remove(const char* typeName)
{
    m_services.remove(typeName);
}
