#pragma once

#include <zoKernelExport.h>

#include <string>

// Where the host keeps its data, and how large it draws.
class ZO_KERNEL_EXPORT zoPlatform final
{
public:
    // Directory of sample configurations and translations, without a trailing slash: the environment variable
    // ZOKE_DATA when set and not empty, else the installed share directory, else the one of the source tree.
    static std::string getDataDir();

    // Edge lengths of icons in pixels.
    static int getSmallIconSize();
    static int getMediumIconSize();
};
