#include "zoClusterSetup.h"

#include "zoConsole.h"
#include "zoHPCDocumentText.h"
#include "zoHPCTextCheck.h"
#include "zoHPCTreeWidgetItem.h"

#include <QCoreApplication>

#include <zoClusterTags.h>

namespace
{
// What is lost of a file with tiles is found by comparing them, too.
bool hasTiles(const QDomDocument& document)
{
    const QString tag = zoClusterTags::Projection;
    for (QDomElement projection = document.documentElement().firstChildElement(tag); !projection.isNull();
         projection = projection.nextSiblingElement(tag)) {
        if (!projection.firstChildElement(tag).isNull())
            return true;
    }
    return false;
}
} // namespace

bool zoClusterSetup::readFile(const QString& fileName)
{
    QDomDocument document;
    if (!readText(fileName, document))
        return false;
    readDocument(document);
    return true;
}

bool zoClusterSetup::readOutline(const QString& fileName)
{
    QDomDocument document;
    if (!readText(fileName, document))
        return false;
    m_configuration.read(document, hasTiles(document) ? zoHPCDisplaySetup::Tiles::All
                                                      : zoHPCDisplaySetup::Tiles::Shown);
    return true;
}

bool zoClusterSetup::readFile(const QString& fileName, std::vector<zoHPCDocumentProblems::Problem>& problems)
{
    QDomDocument document;
    if (!readText(fileName, document))
        return false;
    zoHPCTextCheck check(m_file.text);
    const bool isMended = check.mend(document);
    readDocument(document);
    problems = zoHPCDocumentProblems::find(check, displays(), hosts().master(), &m_hasGuessed);
    m_hasGuessed = m_hasGuessed || isMended;
    if (m_file.isCut) {
        const zoHPCProblem::Kind kind = zoHPCProblem::Kind::StrayText;
        problems.push_back({kind, {m_file.cutLine, m_file.cutColumn}, zoHPCDocumentLosses::cutText(), {}});
    }
    return true;
}

QDomDocument zoClusterSetup::outlineDocument(zoHPCDocumentText::Tiles tiles) const
{
    QDomDocument document;
    zoHPCDocumentText::parse(outline(tiles), document);
    return document;
}

QDomElement zoClusterSetup::tile(int projection, int place)
{
    const QTreeWidgetItem* const above = displays().projectionRoot()->child(projection);
    const auto* const tile =
        dynamic_cast<const zoHPCTreeWidgetItem*>(above != nullptr ? above->child(place) : nullptr);
    return tile != nullptr ? tile->toXML(m_tiles, zoClusterTags::Projection) : QDomElement();
}

QVector<zoHPCDocumentLosses::Loss> zoClusterSetup::losses() const
{
    // Of a hundred thousand tiles all parts take more than a gigabyte; whoever has them most often wrote them with us.
    constexpr int Large = 4 << 20; // bytes
    if (m_file.bytes.size() >= Large && m_file.bytes == text().toUtf8())
        return {};
    return zoHPCDocumentLosses::ofFormat(m_file.text, [this](zoHPCDocumentLosses::Tiles tiles) {
        return tiles == zoHPCDocumentLosses::Tiles::Some ? text() : outline(zoHPCDocumentText::Tiles::None);
    });
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
