#include "zoClusterSetup.h"

#include "zoConsole.h"
#include "zoHPCDocumentText.h"

#include <QCoreApplication>

#include <zoClusterTags.h>

bool zoClusterSetup::readFile(const QString& fileName)
{
    if (!zoTextFile::read(fileName, m_file))
        return false;
    QDomDocument document;
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
    readDocument(document);
    return true;
}

void zoClusterSetup::readDocument(QDomDocument& document)
{
    m_configuration.read(document);
}
