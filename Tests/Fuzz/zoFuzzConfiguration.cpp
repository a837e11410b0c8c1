#include "zoFuzzConfiguration.h"

#include "zoFuzzing.h"

#include <zoClusterTags.h>
#include <zoHPCDisplayGUII.h>
#include <zoHPCDocumentText.h>
#include <zoHPCGUIW.h>
#include <zoHPCLayout.h>
#include <zoHPCProblems.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <QCoreApplication>
#include <QDomDocument>
#include <QEvent>

namespace
{
zoHPCGUIW& window()
{
    static zoHPCGUIW* const s_window = new zoHPCGUIW(nullptr, QStringLiteral("fuzz"));
    return *s_window;
}

// As a document, without reading the hosts file that the text may name.
QString documentText()
{
    QDomDocument document;
    QDomElement root = document.createElement(zoClusterTags::Cluster);
    root.setAttribute(zoClusterTags::VersionAttribute, zoClusterTags::Version);
    if (!window().getTree()->booking().isEmpty())
        root.setAttribute(zoClusterTags::BookingAttribute, window().getTree()->booking());
    document.appendChild(root);
    window().getTree()->appendXMLConfig(window().getTree()->master(), document, root);
    window().getDisplayEditor()->saveToXML(document);
    return zoHPCDocumentText::toText(document);
}

zoHPCProblems::List problems()
{
    const zoHPCLayout layout(window().getDisplayEditor()->getProjectionItems(),
                             window().getDisplayEditor()->getWindowItems(), window().getTree()->master());
    return zoHPCProblems::find(layout);
}
} // namespace

bool zoFuzzConfiguration::isSmall(const QString& text)
{
    QDomDocument document;
    zoHPCDocumentText::Refusal refusal;
    zoHPCDocumentText::parse(text, document, refusal);
    const QDomNodeList projections = document.elementsByTagName(zoClusterTags::Projection);
    qint64 tiles = 0;
    for (int i = 0; i < projections.size(); ++i) {
        const QDomElement projection = projections.at(i).toElement();
        const auto number = [&projection](const char* name) {
            return qBound(0.0, projection.attribute(QLatin1String(name), QStringLiteral("1")).toDouble(),
                          1e6);
        };
        tiles += qint64(number("rows") * number("columns"));
        if (tiles > MaximumTiles)
            return false;
    }
    return true;
}

void zoFuzzConfiguration::check(const QString& text)
{
    window().setConfigString(text);
    const QString first = documentText();
    QCoreApplication::sendPostedEvents();

    window().setConfigString(first);
    zoFuzzing::requireSame(documentText(), first, "a text that was written loads to itself");
    if (window().getTree()->hostFile().isEmpty())
        zoFuzzing::requireSame(window().getConfigString(), first, "both ways to write give the same text");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void zoFuzzConfiguration::checkFixes()
{
    const zoHPCProblems::List list = problems();
    for (const zoHPCProblem& problem : list) {
        zoFuzzing::require(problem.item != nullptr && !problem.message.isEmpty(),
                           "a problem has an item and a text");
        if (problem.hasFix())
            problem.fix();
    }
    if (list.empty())
        return;
    window().setConfigString(documentText());
    const QString fixedText = documentText();
    window().setConfigString(fixedText);
    zoFuzzing::requireSame(documentText(), fixedText, "a text with fixes loads to itself");
}
