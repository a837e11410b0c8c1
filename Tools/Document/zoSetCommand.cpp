#include "zoSetCommand.h"

#include "zoClusterSetup.h"
#include "zoConfigurationEdit.h"
#include "zoConsole.h"

QString zoSetCommand::description() const
{
    return tr("Changes values of a configuration and writes it in the canonical text, all changes or none. "
              "Paths are those\n"
              "of \"get\"; an empty value stands for the default. Values are those of the file (screens "
              "count from 0) and\n"
              "checked; a renamed node or projection keeps its windows and viewports. A file whose values "
              "are these already\n"
              "is not touched, however it is written; one with comments or other text that is not part of a "
              "configuration\n"
              "is rewritten only with --force.");
}

QStringList zoSetCommand::examples() const
{
    return {QStringLiteral("zohpc set wall.zhpc 'node[gpu07]/enabled=false'\t") + tr("take a node out"),
            QStringLiteral("zohpc set wall.zhpc Wall/columns=4 Wall/rows=3\t") + tr("both, or none"),
            QStringLiteral("zohpc set wall.zhpc 'window[*]/fullscreen=true'\t") + tr("all windows"),
            QStringLiteral("zohpc set - 'display[1]/eyeseparation=63' < wall.zhpc > other.zhpc\t") +
                tr("from standard input to standard output")};
}

void zoSetCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({QStringLiteral("force"), tr("Replace the file even when something of it gets lost.")});
    parser.addOption({{QStringLiteral("o"), QStringLiteral("output")},
                      tr("Write to <file> and leave FILE as it is."),
                      tr("file")});
    parser.addPositionalArgument(
        QStringLiteral("FILE"),
        tr("A configuration; \"-\" for standard input, which goes to standard output."));
    parser.addPositionalArgument(QStringLiteral("PATH=VALUE"), tr("What to change."),
                                 QStringLiteral("PATH=VALUE..."));
}

int zoSetCommand::execute(const QCommandLineParser& parser)
{
    QStringList changes = parser.positionalArguments();
    if (changes.isEmpty())
        return usageError(tr("no file given"));
    const QString file = changes.takeFirst();
    if (changes.isEmpty())
        return usageError(tr("no PATH=VALUE given"));
    const QString output =
        parser.isSet(QStringLiteral("output")) ? parser.value(QStringLiteral("output")) : file;
    if (!zoTextFile::mayWrite({output}, file, true))
        return zoConsole::Unusable;
    zoClusterSetup setup;
    if (!setup.readFile(file))
        return zoConsole::Unusable;
    zoConfigurationEdit edit(setup);
    for (const QString& change : qAsConst(changes))
        edit.set(change);
    const bool isSame = zoTextFile::isSameFile(file, output);
    // Before the setup becomes the new one.
    QVector<zoHPCDocumentLosses::Loss> losses;
    if (edit.mistakes().isEmpty() && !(isSame && !edit.hasChanged()))
        losses = setup.losses();
    if (edit.mistakes().isEmpty())
        edit.finish();
    for (const QString& mistake : edit.mistakes())
        zoConsole::printError(QStringLiteral("%1: %2").arg(file, mistake));
    if (!edit.mistakes().isEmpty())
        return zoConsole::Unusable;
    if (isSame && !edit.hasChanged())
        return zoConsole::Fine;

    for (const zoHPCDocumentLosses::Loss& loss : qAsConst(losses))
        zoConsole::printError(file, loss.line, loss.column, loss.text);
    const bool isLosing = setup.file().isCut || !losses.isEmpty();
    if (setup.file().isCut)
        zoConsole::printError(file, setup.file().cutLine, setup.file().cutColumn,
                              zoHPCDocumentLosses::cutText());
    if (isLosing && isSame && !parser.isSet(QStringLiteral("force"))) {
        zoConsole::printError(
            tr("%1: not rewritten, for this would be lost; --force does it all the same").arg(file));
        return zoConsole::Unusable;
    }
    return zoTextFile::write(output, edit.text()) ? zoConsole::Fine : zoConsole::Unusable;
}
