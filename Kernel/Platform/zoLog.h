#pragma once

#include <zoKernelExport.h>

// The host's log. Messages go to Qt's message handler under the logging category "zo"; texts are UTF-8.
class ZO_KERNEL_EXPORT zoLog final
{
public:
    static void info(const char* format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);
    static void error(const char* format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);
};
