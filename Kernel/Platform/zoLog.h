#pragma once

#include <zoKernelExport.h>

#include <QtGlobal>

class QString;

// The host's log, which people read: texts are translated, except those for the eyes of a programmer.
// Messages go to Qt's message handler under the logging category "zo".
class ZO_KERNEL_EXPORT zoLog final
{
public:
    // Formats and texts are UTF-8.
    static void info(const char* format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);
    static void error(const char* format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);
    // The text as it is; a percent sign is a percent sign.
    static void info(const QString& text);
    static void error(const QString& text);
};
