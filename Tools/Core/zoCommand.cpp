#include "zoCommand.h"

#include "zoConsole.h"

zoCommand::~zoCommand() = default;

int zoCommand::run(const QString& name, const QStringList& arguments)
{
    m_name = name;
    QCommandLineParser parser;
    parser.setApplicationDescription(description());
    parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, tr("Show this help.")});
    addArguments(parser);

    if (!parser.parse(QStringList(QStringLiteral("zohpc")) + arguments))
        return usageError(parser.errorText());
    if (parser.isSet(QStringLiteral("help"))) {
        return zoConsole::write(helpText(parser).toUtf8()) ? zoConsole::Fine : zoConsole::Unusable;
    }
    return execute(parser);
}

int zoCommand::usageError(const QString& reason) const
{
    zoConsole::printError(tr("zohpc %1: %2\nTry 'zohpc %1 --help'.").arg(name(), reason));
    return zoConsole::Unusable;
}

QString zoCommand::helpText(const QCommandLineParser& parser) const
{
    // The parser begins with the path of the program, which says nothing about the command.
    QString text = parser.helpText();
    const int lineEnd = text.indexOf(QLatin1Char('\n'));
    const int arguments = text.indexOf(QLatin1Char('['));
    const QString usage =
        arguments >= 0 && arguments < lineEnd ? text.mid(arguments, lineEnd - arguments) : QString();
    text = tr("Usage: zohpc %1 %2").arg(name(), usage).trimmed() + text.mid(lineEnd);

    text += tr("\nExamples:\n");
    const QStringList list = examples();
    for (const QString& example : list) {
        const QString command = example.section(QLatin1Char('\t'), 0, 0);
        const QString effect = example.section(QLatin1Char('\t'), 1);
        text += QLatin1String("  ") + command + QLatin1String("\n      ") + effect + QLatin1Char('\n');
    }
    return text;
}
