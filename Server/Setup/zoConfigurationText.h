#pragma once

#include <QString>

class zoHPCConfiguration;

// Reads the text of a configuration document, for all that is made of one.
namespace zoConfigurationText
{
// False, with a reason that names line and column, for a text that is no configuration.
bool read(const QString& text, zoHPCConfiguration& configuration, QString& reason);
} // namespace zoConfigurationText
