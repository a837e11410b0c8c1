#include "zoCommand.h"

#include "zoConsole.h"
#include "zoHPCSuggestion.h"

#include <QRegularExpression>

zoCommand::~zoCommand() = default;

int zoCommand::run(const QString& name, const QStringList& arguments)
{
    m_name = name;
    QCommandLineParser parser;
    parser.setApplicationDescription(description());
    parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, tr("Show this help.")});
    addArguments(parser);

    QStringList words = arguments;
    // The parser knows no option whose value may be left out.
    if (!words.isEmpty() && optionsWithoutValue().contains(words.constLast()))
        words << QString();
    if (!parser.parse(QStringList(QStringLiteral("zohpc")) + words))
        return usageError(parser.errorText() + meantOption(parser, arguments));
    if (parser.isSet(QStringLiteral("help"))) {
        return zoConsole::write(helpText(parser).toUtf8()) ? zoConsole::Fine : zoConsole::Unusable;
    }
    const QString repeated = repeatedOption(parser);
    if (!repeated.isEmpty())
        return usageError(tr("%1 is given more than once").arg(repeated));
    return execute(parser);
}

QString zoCommand::repeatedOption(const QCommandLineParser& parser) const
{
    const QStringList names = parser.optionNames();
    for (const QString& name : names) {
        // Without a value there is nothing that could differ.
        if (parser.values(name).size() > 1 && !repeatableOptions().contains(name))
            return (name.size() > 1 ? QStringLiteral("--") : QStringLiteral("-")) + name;
    }
    return {};
}

QString zoCommand::meantOption(const QCommandLineParser& parser, const QStringList& arguments) const
{
    QStringList known;
    static const QRegularExpression option(QStringLiteral("^  (?:-\\w, )?--([a-z-]+)"),
                                           QRegularExpression::MultilineOption);
    QRegularExpressionMatchIterator matches = option.globalMatch(parser.helpText());
    while (matches.hasNext())
        known << matches.next().captured(1);
    QStringList typed = parser.unknownOptionNames();
    // One dash before a word reads as an option for each letter.
    for (const QString& argument : arguments) {
        if (argument.size() > 2 && argument.startsWith(QLatin1Char('-')) &&
            !argument.startsWith(QLatin1String("--")))
            typed.prepend(argument.mid(1).section(QLatin1Char('='), 0, 0));
    }
    for (const QString& name : qAsConst(typed)) {
        const QString meant = name.size() > 1 ? zoHPCSuggestion::closest(name, known) : QString();
        if (!meant.isEmpty())
            return tr(" Did you mean '--%1'?").arg(meant);
    }
    return {};
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
