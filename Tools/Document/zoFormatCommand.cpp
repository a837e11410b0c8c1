#include "zoFormatCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoTextFile.h"

QString zoFormatCommand::description() const
{
    return tr("Writes a configuration in the canonical text, byte for byte as the cluster window saves it. A "
              "hosts file\n"
              "that it names is not read. Comments and elements that are not part of a configuration are "
              "left out.");
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
    parser.addOption({QStringLiteral("check"), tr("Write nothing; name the files that are not canonical.")});
    parser.addOption({{QStringLiteral("o"), QStringLiteral("output")}, tr("Write to <file>."), tr("file")});
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("A configuration, \"-\" for standard input."),
                                 QStringLiteral("FILE..."));
}

int zoFormatCommand::execute(const QCommandLineParser& parser)
{
    const QStringList files = parser.positionalArguments();
    const bool isInPlace = parser.isSet(QStringLiteral("in-place"));
    const bool isCheck = parser.isSet(QStringLiteral("check"));
    const bool hasOutput = parser.isSet(QStringLiteral("output"));
    if (files.isEmpty())
        return usageError(tr("no file given"));
    if (int(isInPlace) + int(isCheck) + int(hasOutput) > 1)
        return usageError(tr("--in-place, --check and --output exclude each other"));
    if (files.size() > 1 && !isInPlace && !isCheck)
        return usageError(tr("more than one file needs --in-place or --check"));

    int result = zoConsole::Fine;
    for (const QString& file : files) {
        zoClusterSetup setup;
        if (isInPlace && file == QLatin1String("-"))
            return usageError(tr("standard input cannot be replaced"));
        if (!setup.readFile(file)) {
            result = zoConsole::Unusable;
            continue;
        }
        const QString text = setup.text();
        if (isCheck) {
            if (setup.source() != text) {
                zoConsole::write(tr("%1: not canonical\n").arg(file).toUtf8());
                result = qMax<int>(result, zoConsole::ProblemsFound);
            }
        } else if (isInPlace ? setup.source() != text && !zoTextFile::write(file, text)
                             : !zoTextFile::write(hasOutput ? parser.value(QStringLiteral("output"))
                                                            : QStringLiteral("-"),
                                                  text)) {
            result = zoConsole::Unusable;
        }
    }
    return result;
}
