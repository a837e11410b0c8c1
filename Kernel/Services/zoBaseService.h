#pragma once

#include <zoKernelExport.h>

// Common base of everything that a host offers to its modules through zoKernelServiceFactory.
class ZO_KERNEL_EXPORT zoBaseService
{
public:
    virtual ~zoBaseService();
};
