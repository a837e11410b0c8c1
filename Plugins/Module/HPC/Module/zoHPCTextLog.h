#pragma once

#include <QCoreApplication>
#include <QString>

class zoHPCDisplaySetup;
class zoHPCTreeItem;

// Tells in the log what the text of a file held and nobody read, for the next save writes it without. The problem list
// knows only what the items have.
class zoHPCTextLog final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCTextLog)

public:
    // Of a long list only the first ones, and how many more there are.
    static constexpr int MostLines = 20;

    zoHPCTextLog() = delete;

    // The items were just read from the text of that file.
    static void tell(const QString& fileName, const QString& text, const zoHPCDisplaySetup& displays,
                     zoHPCTreeItem* master);
};
