#pragma once

#include "zoCommand.h"

#include <QString>

#include <memory>
#include <vector>

// One command of zohpc: a row of the table.
struct zoCommandEntry
{
    const char* name; // as typed: "hosts expand"
    const char* summary;
    // Null in zohpc for the commands of zohpc-document.
    std::unique_ptr<zoCommand> (*create)();
    bool isPainting = false; // needs the toolkit's fonts
};

// The commands of zohpc. The overview, the program that serves a command and the completion of the shell follow
// from it.
class zoCommandTable final
{
public:
    // In the order of the overview.
    static const std::vector<zoCommandEntry>& entries();

    // Null for a name that is not in the table.
    static const zoCommandEntry* find(const QString& name);
};
