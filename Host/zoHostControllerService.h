#pragma once

#include <zoControllerService.h>

// Tells modules how this host is run.
class zoHostControllerService final : public zoControllerService
{
public:
    explicit zoHostControllerService(bool nonInteractive);
    ~zoHostControllerService() override;

    bool isNonInteractive() override;
    bool usesModuleToolBar() override;

private:
    bool m_nonInteractive;
};
