#pragma once

#include "zoHPCProblem.h"
#include "zoHPCTextParts.h"

#include <QCoreApplication>
#include <QString>

#include <vector>

class zoHPCDisplaySetup;
class zoHPCTextCheck;
class zoHPCTextItems;
class zoHPCTreeItem;

// All problems of a document with their places in its text: what the text has and what its items have, each once.
class zoHPCDocumentProblems final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCDocumentProblems)

public:
    struct Problem
    {
        zoHPCProblem::Kind kind;
        zoHPCTextParts::Place place;
        QString message;
        QString fixText;
    };

    zoHPCDocumentProblems() = delete;

    // The items were read from the document that `check` mended. In the order of the text. Viewports whose reference can
    // be guessed refer to what was meant afterwards; `hasGuessed` tells whether there are any.
    static std::vector<Problem> find(zoHPCTextCheck& check, zoHPCDisplaySetup& displays,
                                     zoHPCTreeItem* master, bool* hasGuessed = nullptr);

    // What the text alone has, or its readers lost; the items were read from it as it is, and are not changed.
    static std::vector<Problem> findInText(const QString& text, const zoHPCDisplaySetup& displays,
                                           zoHPCTreeItem* master);

private:
    static void checkHostsFile(zoHPCTextCheck& check);
    static void addOfItems(zoHPCTextCheck& check, const zoHPCTextItems& items,
                           const zoHPCDisplaySetup& displays, zoHPCTreeItem* master);
};
