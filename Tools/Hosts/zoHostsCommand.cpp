#include "zoHostsCommand.h"

#include "zoBracketText.h"
#include "zoConsole.h"
#include "zoHPCHostsText.h"
#include "zoHostsInput.h"

#include <zoClusterLimits.h>

#include <QCoreApplication>

#include <algorithm>

namespace
{
void printError(const zoHostsInput& input, int offset, const QString& reason)
{
    const zoHostsInput::Place place = input.place(offset);
    zoConsole::printError(place.file, place.line, place.column, reason);
}

struct Word
{
    int offset;
    QString text;
};

// Words with characters that host names of hosts text cannot have: the reader drops these characters.
std::vector<Word> strangeWords(const QString& text)
{
    std::vector<Word> words;
    const int size = text.size();
    int p = 0;
    while (p < size) {
        if (text.at(p) == QLatin1Char('[')) {
            const int close = text.indexOf(QLatin1Char(']'), p);
            p = close < 0 ? size : close + 1;
            continue;
        }
        if (zoHPCHostsText::endsWord(text.at(p))) {
            ++p;
            continue;
        }
        const int begin = p;
        bool isPlain = true;
        for (; p < size && !zoHPCHostsText::endsWord(text.at(p)); ++p)
            isPlain = isPlain && zoHPCHostsText::isNameChar(text.at(p));
        // What begins with a slash is left out as a whole.
        if (!isPlain && text.at(begin) != QLatin1Char('/'))
            words.push_back({begin, text.mid(begin, p - begin)});
    }
    return words;
}

// Characters that no host has and that mean nothing between hosts; -1 for none. They would pass for what
// stands for a number while names are folded, and a terminal obeys them.
int controlCharacterOffset(const QString& text)
{
    const auto found = std::find_if(text.cbegin(), text.cend(), [](QChar c) {
        return c.category() == QChar::Other_Control && !c.isSpace();
    });
    return found == text.cend() ? -1 : int(found - text.cbegin());
}

QString refusalReason(zoHostsTree::Outcome outcome)
{
    switch (outcome) {
    case zoHostsTree::Outcome::TooDeep:
        return QCoreApplication::translate("zoHostsCommand", "braces are more than %1 deep")
            .arg(zoClusterLimits::MaximumNetworkDepth);
    case zoHostsTree::Outcome::TooMany:
        return QCoreApplication::translate("zoHostsCommand", "more than %1 names")
            .arg(zoClusterLimits::MaximumHosts);
    case zoHostsTree::Outcome::TooLong:
        return QCoreApplication::translate("zoHostsCommand", "names of more than %1 characters altogether")
            .arg(zoClusterLimits::MaximumNameCharacters);
    case zoHostsTree::Outcome::Read:
        break;
    }
    return {};
}

QString emptyRangeReason(const zoHostsTree::EmptyRange& range)
{
    const QString text = range.from + QLatin1String(" - ") + range.to;
    switch (range.reason) {
    case zoHPCHostRange::Kind::OtherPrefix:
        return QCoreApplication::translate("zoHostsCommand",
                                           "\"%1\" fills nothing: the names differ before their number")
            .arg(text);
    case zoHPCHostRange::Kind::Backwards:
        return QCoreApplication::translate("zoHostsCommand", "\"%1\" fills nothing: it runs backwards")
            .arg(text);
    case zoHPCHostRange::Kind::TooLong:
        return QCoreApplication::translate("zoHostsCommand",
                                           "\"%1\" fills nothing: the names are more than %2 apart")
            .arg(text, QString::number(zoHPCHostRange::LargestDistance));
    case zoHPCHostRange::Kind::Filled:
        break;
    }
    return {};
}
} // namespace

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

    const int control = controlCharacterOffset(input.text());
    if (control >= 0) {
        const ushort code = input.text().at(control).unicode();
        printError(input, control,
                   tr("the control character U+%1 cannot stand in hosts text")
                       .arg(QString::number(code, 16).toUpper().rightJustified(4, QLatin1Char('0'))));
        return zoConsole::Unusable;
    }

    zoBracketText brackets;
    const QString text = brackets.expanded(input.text());
    if (brackets.hasError()) {
        printError(input, brackets.error().offset, brackets.error().reason);
        return zoConsole::Unusable;
    }
    int result = zoConsole::Fine;
    for (const zoBracketText::Problem& warning : brackets.warnings()) {
        printError(input, warning.offset, warning.reason);
        result = zoConsole::ProblemsFound;
    }

    zoHostsTree tree;
    if (parser.isSet(QStringLiteral("names"))) {
        tree.readNames(text);
    } else {
        const std::vector<Word> words = strangeWords(input.text());
        for (const Word& word : words) {
            const QString name = zoHPCHostsText::hostName(word.text);
            printError(input, word.offset,
                       name.isEmpty() ? tr("\"%1\" is no host name and is left out").arg(word.text)
                                      : tr("\"%1\" reads as \"%2\"; --names keeps it").arg(word.text, name));
            result = zoConsole::ProblemsFound;
        }
        const zoHostsTree::Outcome outcome = tree.readHostsText(text);
        if (outcome != zoHostsTree::Outcome::Read) {
            printError(input, brackets.sourceOffset(tree.endOffset()), refusalReason(outcome));
            return zoConsole::Unusable;
        }
        for (const zoHostsTree::EmptyRange& range : tree.emptyRanges()) {
            printError(input, brackets.sourceOffset(range.offset), emptyRangeReason(range));
            result = zoConsole::ProblemsFound;
        }
    }
    return writeResult(tree, parser) ? result : zoConsole::Unusable;
}
