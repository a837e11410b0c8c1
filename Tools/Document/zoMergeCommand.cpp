#include "zoMergeCommand.h"

#include "zoClusterSetup.h"
#include "zoConfigurationMerge.h"
#include "zoConsole.h"
#include "zoHPCDocumentLosses.h"
#include "zoHPCLayout.h"
#include "zoHPCTreeItem.h"
#include "zoHPCViewportItem.h"
#include "zoItemPaths.h"

#include <zoClusterTags.h>

#include <QDomDocument>
#include <QFileInfo>
#include <QSet>

namespace
{
// Windows on nodes that are not there, and nodes that are there twice.
QStringList mistakesOf(zoClusterSetup& setup)
{
    QStringList result;
    const zoHPCLayout layout(setup.displays(), setup.hosts().master());
    for (const zoHPCLayout::Window& window : layout.windows()) {
        if (!window.node.isEmpty() && window.nodeIndex == zoHPCLayout::None)
            result << QCoreApplication::translate("zoMergeCommand",
                                                  "a window names \"%1\", which the other side has removed")
                          .arg(window.node);
    }
    QSet<QString> names;
    for (const zoHPCLayout::Node& node : layout.nodes()) {
        const QString name = node.item->hostName();
        if (names.contains(name))
            result << QCoreApplication::translate("zoMergeCommand",
                                                  "both have a node \"%1\", in different places")
                          .arg(name);
        names.insert(name);
    }
    result.removeDuplicates();
    return result;
}
} // namespace

// What the merge needs of one side.
struct zoMergeCommand::Side
{
    QDomDocument document;
    QStringList mistakes;
    bool isLosing = false;
};

QString zoMergeCommand::description() const
{
    return tr("Merges two configurations that came from BASE. Exit code 1 when both changed the same: each "
              "conflict is told\n"
              "with its path, and there OURS stays. As git's merge driver:\n"
              "  git config merge.zhpc.driver 'zohpc merge --name %P %O %A %B -o %A'\n"
              "  echo '*.zhpc merge=zhpc' >> .gitattributes");
}

QStringList zoMergeCommand::examples() const
{
    return {QStringLiteral("zohpc merge base.zhpc ours.zhpc theirs.zhpc -o wall.zhpc\t") + tr("by hand"),
            QStringLiteral("zohpc merge --name %P %O %A %B -o %A\t") + tr("by git, which puts files there")};
}

void zoMergeCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({QStringLiteral("force"), tr("Merge even when comments and the like get lost.")});
    parser.addOption({{QStringLiteral("o"), QStringLiteral("output")},
                      tr("Write to <file>, which may be OURS. Standard output otherwise."),
                      tr("file")});
    // Git merges files with names of its own, which are gone when a person reads of them.
    parser.addOption({QStringLiteral("name"),
                      tr("Call the file <name> where conflicts are told; OURS otherwise."), tr("name")});
    parser.addPositionalArgument(QStringLiteral("BASE"), tr("The configuration before; may be empty."));
    parser.addPositionalArgument(QStringLiteral("OURS"),
                                 tr("The one that stays where both changed the same."));
    parser.addPositionalArgument(QStringLiteral("THEIRS"), tr("The other one."));
}

int zoMergeCommand::execute(const QCommandLineParser& parser)
{
    const QStringList files = parser.positionalArguments();
    if (files.size() != 3)
        return usageError(tr("three files are needed"));
    if (files.count(QStringLiteral("-")) > 1)
        return usageError(tr("standard input can be one of the files only"));
    const QString name =
        parser.isSet(QStringLiteral("name")) ? parser.value(QStringLiteral("name")) : files.at(1);
    const QString output =
        parser.isSet(QStringLiteral("output")) ? parser.value(QStringLiteral("output")) : QStringLiteral("-");
    if (!zoTextFile::mayWrite({output}, files.at(1), true))
        return zoConsole::Unusable;
    QDomDocument base;
    Side ours;
    Side theirs;
    if (!readBase(files.at(0), base) || !readSide(files.at(1), ours) || !readSide(files.at(2), theirs))
        return zoConsole::Unusable;
    if ((ours.isLosing || theirs.isLosing) && !parser.isSet(QStringLiteral("force"))) {
        zoConsole::printError(
            tr("%1: not merged, for this would be lost; --force does it all the same").arg(name));
        return zoConsole::Unusable;
    }
    const zoConfigurationMerge merge(base, ours.document, theirs.document);
    if (!merge.isPossible()) {
        zoConsole::printError(tr("%1: nested too deep to be merged").arg(name));
        return zoConsole::Unusable;
    }
    // Four documents of as many nodes as a file may have take a gigabyte.
    base = ours.document = theirs.document = QDomDocument();
    zoClusterSetup result;
    QDomDocument document = merge.result();
    result.readDocument(document);
    const QStringList conflicts =
        merge.conflicts() + danglingReferences(merge.result(), result, ours.mistakes + theirs.mistakes);
    for (const QString& conflict : conflicts)
        zoConsole::printError(tr("%1: conflict: %2").arg(name, conflict));
    if (!zoTextFile::write(output, result.text()))
        return zoConsole::Unusable;
    return conflicts.isEmpty() ? zoConsole::Fine : zoConsole::ProblemsFound;
}

// The setup is gone when the next one is read: three times a hundred thousand tiles take a gigabyte.
bool zoMergeCommand::readSide(const QString& file, Side& side)
{
    zoClusterSetup setup;
    if (!setup.readOutline(file))
        return false;
    side.isLosing = printLosses(file, setup);
    side.document = setup.outlineDocument(zoHPCDocumentText::Tiles::None);
    side.mistakes = mistakesOf(setup);
    return true;
}

// Git has an empty file for one that both sides added.
bool zoMergeCommand::readBase(const QString& file, QDomDocument& document)
{
    const QFileInfo info(file);
    if (file != QLatin1String("-") && info.exists() && info.size() == 0) {
        document.appendChild(document.createElement(zoClusterTags::Cluster));
        return true;
    }
    zoClusterSetup setup;
    if (!setup.readOutline(file))
        return false;
    document = setup.outlineDocument(zoHPCDocumentText::Tiles::None);
    return true;
}

bool zoMergeCommand::printLosses(const QString& file, const zoClusterSetup& setup)
{
    bool isLosing = setup.file().isCut;
    if (isLosing)
        zoConsole::printError(file, setup.file().cutLine, setup.file().cutColumn,
                              zoHPCDocumentLosses::cutText());
    const QVector<zoHPCDocumentLosses::Loss> losses = setup.losses();
    for (const zoHPCDocumentLosses::Loss& loss : losses) {
        zoConsole::printError(file, loss.line, loss.column, loss.text);
        isLosing = true;
    }
    return isLosing;
}

QStringList zoMergeCommand::danglingReferences(const QDomDocument& merged, zoClusterSetup& result,
                                               const QStringList& known)
{
    QStringList conflicts;
    const QString projection = zoHPCViewportItem::columns().at(zoHPCViewportItem::Projection);
    const QDomDocument read = result.outlineDocument(zoHPCDocumentText::Tiles::None);
    const zoItemPaths before(merged.documentElement());
    const zoItemPaths after(read.documentElement());
    for (const zoItemPaths::Item& item : before.items()) {
        const int index = item.kind == zoClusterTags::Viewport ? after.indexOf(item.path) : -1;
        const QString shown = item.element.attribute(projection);
        if (index >= 0 && !shown.isEmpty() && after.item(index).element.attribute(projection).isEmpty())
            conflicts << tr("%1: shows \"%2\", which the other side has removed").arg(item.path, shown);
    }
    const QSet<QString> were(known.cbegin(), known.cend());
    const QStringList mistakes = mistakesOf(result);
    for (const QString& mistake : mistakes) {
        if (!were.contains(mistake))
            conflicts << mistake;
    }
    return conflicts;
}
