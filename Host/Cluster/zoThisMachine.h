#pragma once

#include <QString>

// Tells this machine from others by the names that documents have for it. Asks no name server.
namespace zoThisMachine
{
bool isNamed(const QString& hostName);
} // namespace zoThisMachine
