#pragma once

#include "zoConsole.h"
#include "zoHostsSyntax.h"
#include "zoHostsTree.h"

#include <QCoreApplication>
#include <QString>

class zoHostsInput;

// Reads what a person typed as hosts, for all commands that take hosts, and says on standard error, with its place,
// what is refused or reads otherwise than it looks.
class zoHostsReading final
{
    Q_DECLARE_TR_FUNCTIONS(zoHostsReading)

public:
    // Of a command that can take names as they stand: messages mention its option.
    void setHasNamesOption(bool has) { m_hasNamesOption = has; }

    // Once. Fine; ProblemsFound when something reads otherwise; Unusable when the text is refused: then there are
    // no hosts.
    zoConsole::ExitCode read(const zoHostsInput& input, zoHostsSyntax::Form form);

    const zoHostsTree& tree() const { return m_tree; }
    // The hosts text that the cluster window reads: without brackets of numbers.
    const QString& text() const { return m_text; }

private:
    zoHostsTree m_tree;
    QString m_text;
    bool m_hasNamesOption = false;
};
