#pragma once

#include <zoBaseService.h>

// How the host is run.
class ZO_KERNEL_EXPORT zoControllerService : public zoBaseService
{
public:
    ~zoControllerService() override;

    // True when nobody is there to answer: modules show no overlay and ask no question.
    virtual bool isNonInteractive() = 0;

    // True when modules put their toggle actions onto zoMainWindowService::moduleToolBar().
    virtual bool usesModuleToolBar() = 0;
};
