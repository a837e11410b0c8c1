#include "zoClusterSetup.h"

#include "zoConsole.h"
#include "zoDocumentLosses.h"
#include "zoHPCDocumentText.h"
#include "zoHPCTextCheck.h"

#include <QCoreApplication>

#include <zoClusterTags.h>

bool zoClusterSetup::readFile(const QString& fileName)
{
    QDomDocument document;
    if (!readText(fileName, document))
        return false;
    readDocument(document);
    return true;
}

bool zoClusterSetup::readFile(const QString& fileName, std::vector<zoHPCDocumentProblems::Problem>& problems)
{
    QDomDocument document;
    if (!readText(fileName, document))
        return false;
    zoHPCTextCheck check(m_file.text);
    check.mend(document);
    readDocument(document);
    problems = zoHPCDocumentProblems::find(check, displays(), hosts().master());
    if (m_file.isCut) {
        const zoHPCProblem::Kind kind = zoHPCProblem::Kind::StrayText;
        problems.push_back({kind, {m_file.cutLine, m_file.cutColumn}, zoDocumentLosses::cutText(), {}});
    }
    return true;
}

QDomDocument zoClusterSetup::documentWithNamesOfTiles() const
{
    QDomDocument document;
    zoHPCDocumentText::parse(textWithNamesOfTiles(), document);
    return document;
}

bool zoClusterSetup::readText(const QString& fileName, QDomDocument& document)
{
    if (!zoTextFile::read(fileName, m_file))
        return false;
    zoHPCDocumentText::Refusal refusal;
    if (!zoHPCDocumentText::parse(m_file.text, document, refusal)) {
        const QString reason = refusal.reason.isEmpty()
                                   ? QCoreApplication::translate("zoClusterSetup", "the file is empty")
                                   : refusal.reason;
        zoConsole::printError(fileName, refusal.line, refusal.column, reason);
        return false;
    }
    // The window would show an empty cluster; a script would go on with it.
    const QString root = document.documentElement().tagName();
    if (root != zoClusterTags::Cluster) {
        zoConsole::printError(fileName, 1, 1,
                              QCoreApplication::translate(
                                  "zoClusterSetup", "no cluster configuration: its root element is \"%1\"")
                                  .arg(root));
        return false;
    }
    return true;
}

void zoClusterSetup::readDocument(QDomDocument& document)
{
    m_configuration.read(document);
}
