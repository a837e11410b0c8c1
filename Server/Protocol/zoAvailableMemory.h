#pragma once

#include <QtGlobal>

// What the operating system can give to new programs without swapping.
namespace zoAvailableMemory
{
// Negative when it does not say.
qint64 bytes();
} // namespace zoAvailableMemory
