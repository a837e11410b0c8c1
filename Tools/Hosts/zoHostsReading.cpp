#include "zoHostsReading.h"

#include "zoHostsInput.h"

zoConsole::ExitCode zoHostsReading::read(const zoHostsInput& input, zoHPCHostsSyntax::Form form)
{
    const zoHPCHostsReading::Outcome outcome = m_reading.read(input.text(), form);
    for (const zoHPCHostsReading::Note& note : m_reading.notes()) {
        const zoHostsInput::Place place = input.place(note.offset);
        zoConsole::printError(place.file, place.line, place.column, note.reason);
    }
    switch (outcome) {
    case zoHPCHostsReading::Outcome::Read:
        break;
    case zoHPCHostsReading::Outcome::ReadOtherwise:
        return zoConsole::ProblemsFound;
    case zoHPCHostsReading::Outcome::Refused:
        return zoConsole::Unusable;
    }
    return zoConsole::Fine;
}
