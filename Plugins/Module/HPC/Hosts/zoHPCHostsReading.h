#pragma once

#include "zoHPCHostsOutline.h"
#include "zoHPCHostsSyntax.h"

#include <QCoreApplication>
#include <QString>

#include <vector>

// Reads what a person typed as hosts - hosts text, the bracket form of cluster tools, or both - and tells what is refused
// or reads otherwise than it looks, with its place. Commands, dialogs and the assistant share it; what the host tree does
// with the same text, it does in silence.
class zoHPCHostsReading final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCHostsReading)

public:
    enum class Outcome {
        Read,
        ReadOtherwise, // there are notes
        Refused        // one note, and no hosts
    };

    struct Note
    {
        int offset; // in the text that was read
        QString reason;
    };

    // Of a command that can take names as they stand: messages mention its option.
    void setHasNamesOption(bool has) { m_hasNamesOption = has; }

    // Once.
    Outcome read(const QString& text, zoHPCHostsSyntax::Form form = zoHPCHostsSyntax::Form::HostsText);

    const std::vector<Note>& notes() const { return m_notes; }
    const zoHPCHostsOutline& outline() const { return m_outline; }
    // The hosts text that the host tree reads: without brackets of numbers.
    const QString& text() const { return m_text; }

private:
    Outcome refuse(int offset, const QString& reason);

    zoHPCHostsOutline m_outline;
    QString m_text;
    std::vector<Note> m_notes;
    bool m_hasNamesOption = false;
};
