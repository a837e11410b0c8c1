#pragma once

#include "zoConsole.h"
#include "zoHPCHostsReading.h"

#include <QString>

class zoHostsInput;

// Reads hosts for all commands that take them, and says on standard error, with its place, what is refused or reads
// otherwise than it looks.
class zoHostsReading final
{
public:
    // Of a command that can take names as they stand: messages mention its option.
    void setHasNamesOption(bool has) { m_reading.setHasNamesOption(has); }

    // Once. Fine; ProblemsFound when something reads otherwise; Unusable when the text is refused: then there are
    // no hosts.
    zoConsole::ExitCode read(const zoHostsInput& input, zoHPCHostsSyntax::Form form);

    const zoHPCHostsOutline& tree() const { return m_reading.outline(); }
    // The hosts text that the cluster window reads: without brackets of numbers.
    const QString& text() const { return m_reading.text(); }

private:
    zoHPCHostsReading m_reading;
};
