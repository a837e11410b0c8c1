#include "zoHPCTextLog.h"

#include "zoHPCDocumentProblems.h"

#include <zoLog.h>

void zoHPCTextLog::tell(const QString& fileName, const QString& text, const zoHPCDisplaySetup& displays,
                        zoHPCTreeItem* master)
{
    const std::vector<zoHPCDocumentProblems::Problem> problems =
        zoHPCDocumentProblems::findInText(text, displays, master);
    int count = 0;
    for (const zoHPCDocumentProblems::Problem& problem : problems) {
        if (++count > MostLines) {
            zoLog::info(
                "%s", qUtf8Printable(tr("%1: and %2 more, which \"zohpc check\" tells.")
                                         .arg(fileName, QString::number(int(problems.size()) - MostLines))));
            return;
        }
        zoLog::info("%s", qUtf8Printable(tr("%1, line %2, column %3: %4")
                                             .arg(fileName, QString::number(problem.place.line),
                                                  QString::number(problem.place.column), problem.message)));
    }
}
