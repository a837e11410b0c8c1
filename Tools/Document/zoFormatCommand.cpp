#include "zoFormatCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoHPCDocumentLosses.h"
#include "zoTextFile.h"

QString zoFormatCommand::description() const
{
    return tr("Writes a configuration in the canonical text, byte for byte as the cluster window saves it. A "
              "hosts file\n"
              "that it names is not read. What is not part of a configuration, such as comments, is left "
              "out and told on\n"
              "standard error with its place; a file is then rewritten only with --force.");
}

QStringList zoFormatCommand::examples() const
{
    return {QStringLiteral("zohpc format -i wall.zhpc\t") + tr("rewrite a file that was edited by hand"),
            QStringLiteral("zohpc format --check *.zhpc\t") +
                tr("before a commit: exit code 1 when one is not canonical"),
            QStringLiteral("zohpc format - < wall.zhpc > canonical.zhpc\t") +
                tr("from standard input to standard output")};
}

void zoFormatCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption(
        {{QStringLiteral("i"), QStringLiteral("in-place")}, tr("Replace each file by its canonical text.")});
    parser.addOption({QStringLiteral("force"), tr("Replace a file even when something of it gets lost.")});
    parser.addOption({QStringLiteral("check"), tr("Write nothing; name the files that are not canonical.")});
    parser.addOption({{QStringLiteral("o"), QStringLiteral("output")}, tr("Write to <file>."), tr("file")});
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("A configuration, \"-\" for standard input."),
                                 QStringLiteral("FILE..."));
}

int zoFormatCommand::execute(const QCommandLineParser& parser)
{
    const QStringList files = parser.positionalArguments();
    Request request;
    request.isInPlace = parser.isSet(QStringLiteral("in-place"));
    request.isCheck = parser.isSet(QStringLiteral("check"));
    request.isForced = parser.isSet(QStringLiteral("force"));
    const bool hasOutput = parser.isSet(QStringLiteral("output"));
    if (hasOutput)
        request.output = parser.value(QStringLiteral("output"));
    if (files.isEmpty())
        return usageError(tr("no file given"));
    if (int(request.isInPlace) + int(request.isCheck) + int(hasOutput) > 1)
        return usageError(tr("--in-place, --check and --output exclude each other"));
    if (files.size() > 1 && !request.isInPlace && !request.isCheck)
        return usageError(tr("more than one file needs --in-place or --check"));
    if (request.isInPlace && files.contains(QStringLiteral("-")))
        return usageError(tr("standard input cannot be replaced"));
    if (hasOutput && !zoTextFile::mayWrite({request.output}, files.constFirst(), true))
        return zoConsole::Unusable;

    int result = zoConsole::Fine;
    for (const QString& file : files)
        result = qMax(result, format(file, request));
    return result;
}

int zoFormatCommand::format(const QString& file, const Request& request)
{
    zoClusterSetup setup;
    if (!setup.readFile(file))
        return zoConsole::Unusable;
    const QString text = setup.text();
    const bool isCanonical = setup.file().bytes == text.toUtf8();
    if (request.isCheck) {
        if (!isCanonical)
            zoConsole::write(tr("%1: not canonical\n").arg(file).toUtf8());
        return isCanonical ? zoConsole::Fine : zoConsole::ProblemsFound;
    }
    if (request.isInPlace && isCanonical)
        return zoConsole::Fine;
    const bool isReplaced = request.isInPlace || zoTextFile::isSameFile(file, request.output);
    if (!isCanonical && printLosses(file, setup) && isReplaced && !request.isForced) {
        zoConsole::printError(
            tr("%1: not rewritten, for this would be lost; --force does it all the same").arg(file));
        return zoConsole::Unusable;
    }
    return zoTextFile::write(request.isInPlace ? file : request.output, text) ? zoConsole::Fine
                                                                              : zoConsole::Unusable;
}

bool zoFormatCommand::printLosses(const QString& file, const zoClusterSetup& setup)
{
    const QVector<zoHPCDocumentLosses::Loss> losses = setup.losses();
    for (const zoHPCDocumentLosses::Loss& loss : losses)
        zoConsole::printError(file, loss.line, loss.column, loss.text);
    if (setup.file().isCut)
        zoConsole::printError(file, setup.file().cutLine, setup.file().cutColumn,
                              zoHPCDocumentLosses::cutText());
    return setup.file().isCut || !losses.isEmpty();
}
