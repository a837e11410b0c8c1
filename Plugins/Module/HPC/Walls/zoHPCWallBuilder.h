#pragma once

#include "zoHPCHostsReading.h"
#include "zoHPCWallPlan.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <vector>

// Makes a configuration of a plan: hosts, projections, and a full-screen window for each tile and eye, spread over the
// nodes that render. Windows go to the nodes in the order of the hosts text, row by row from the upper left; gateways and
// nodes that do not render get none, nor do nodes left over.
//
// Stable: build(), sketch(), readHosts() and the three structures.
class zoHPCWallBuilder final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCWallBuilder)

public:
    using Mistake = zoHPCWallPlan::Mistake;

    struct Result
    {
        // The configuration as a save writes it; empty when there are mistakes.
        QString text;
        // Most telling first; all of them, as far as one does not hide another.
        std::vector<Mistake> mistakes;
        // What may yet be meant: a viewer outside his cave, a picture that is stretched, and what zoHPCProblems says of the
        // configuration, such as a wall that is a few millimetres wide. Errors of it are mistakes.
        std::vector<Mistake> warnings;

        // What was chosen for the person and is as good as any: nothing to mend.
        std::vector<Mistake> notes;

        bool isGood() const { return mistakes.empty(); }
    };

    // What hosts of a text mean for a wall.
    struct Hosts
    {
        QString text;        // hosts text without brackets of numbers
        QStringList drivers; // nodes that drive screens, in order
        int nodes = 0;       // all of them
        int gateways = 0;    // nodes with networks behind them
        QString mistake;     // empty for a text that can be used
        // What reads otherwise than it looks, and where; where the text is refused, that place. Not among the warnings
        // of build().
        std::vector<zoHPCHostsReading::Note> notes;
    };

    static Result build(const zoHPCWallPlan& plan);
    // The configuration as far as it can be seen without hosts, for a picture while somebody still types them: windows
    // name no node. Empty when the wall itself has mistakes.
    static QString sketch(const zoHPCWallPlan& plan);
    // In time for each key that is typed into ten thousand hosts.
    static Hosts readHosts(const QString& text);
};
