#include "zoLog.h"

#include <QLoggingCategory>
#include <QString>

#include <cstdarg>

namespace
{
Q_LOGGING_CATEGORY(zoCategory, "zo")
} // namespace

void zoLog::info(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    qCInfo(zoCategory).noquote() << QString::vasprintf(format, arguments);
    va_end(arguments);
}

void zoLog::error(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    qCCritical(zoCategory).noquote() << QString::vasprintf(format, arguments);
    va_end(arguments);
}

void zoLog::info(const QString& text)
{
    qCInfo(zoCategory).noquote() << text;
}

void zoLog::error(const QString& text)
{
    qCCritical(zoCategory).noquote() << text;
}
