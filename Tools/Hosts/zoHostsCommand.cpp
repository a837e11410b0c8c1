#include "zoHostsCommand.h"

#include "zoConsole.h"
#include "zoHostsInput.h"
#include "zoHostsReading.h"

void zoHostsCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({QStringLiteral("json"), tr("Write JSON.")});
    parser.addOption(
        {QStringLiteral("names"), tr("Take the names as they stand, \"_\" and all: the input is a list of "
                                     "names and brackets, not hosts text.")});
    parser.addOption({{QStringLiteral("f"), QStringLiteral("file")},
                      tr("Read <file>. May be given more than once."),
                      tr("file")});
    parser.addPositionalArgument(
        QStringLiteral("TEXT"),
        tr("Hosts text (\"n01 - n16, gw { a b }\"), the bracket form of cluster tools "
           "(\"n[01-16,20]\"), or both. \"-\" or none: standard input."),
        QStringLiteral("[TEXT...]"));
}

int zoHostsCommand::execute(const QCommandLineParser& parser)
{
    zoHostsInput input;
    const QStringList files = parser.values(QStringLiteral("file"));
    for (const QString& file : files) {
        if (!input.readFile(file))
            return zoConsole::Unusable;
    }
    const QStringList texts = parser.positionalArguments();
    if ((files.isEmpty() || !texts.isEmpty()) && !input.readArguments(texts))
        return zoConsole::Unusable;

    zoHostsReading reading;
    reading.setHasNamesOption(true);
    const zoConsole::ExitCode result =
        reading.read(input, parser.isSet(QStringLiteral("names")) ? zoHPCHostsSyntax::Form::Names
                                                                  : zoHPCHostsSyntax::Form::HostsText);
    if (result == zoConsole::Unusable)
        return result;
    return writeResult(reading.tree(), parser) ? result : zoConsole::Unusable;
}
