#include "zoHostsCommand.h"

#include "zoBracketText.h"
#include "zoConsole.h"
#include "zoHPCHostsText.h"
#include "zoHostsInput.h"

#include <QCoreApplication>

#include <algorithm>

namespace
{
void printError(const zoHostsInput& input, int offset, const QString& reason)
{
    const zoHostsInput::Place place = input.place(offset);
    zoConsole::printError(place.file, place.line, place.column, reason);
}

bool isNameChar(QChar c)
{
    const ushort u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= '0' && u <= '9') || (u >= 'A' && u <= 'Z') || u == '-' || u == '.';
}

bool endsWord(QChar c)
{
    switch (c.unicode()) {
    case ' ':
    case '\t':
    case '\n':
    case '\v':
    case '\f':
    case '\r':
    case ',':
    case '|':
    case '{':
    case '}':
    case '(':
    case ')':
    case '[':
        return true;
    default:
        return false;
    }
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
        if (endsWord(text.at(p))) {
            ++p;
            continue;
        }
        const int begin = p;
        bool isPlain = true;
        for (; p < size && !endsWord(text.at(p)); ++p)
            isPlain = isPlain && isNameChar(text.at(p));
        // What begins with a slash is left out as a whole.
        if (!isPlain && text.at(begin) != QLatin1Char('/'))
            words.push_back({begin, text.mid(begin, p - begin)});
    }
    return words;
}

// Where the word stands first from `begin` on; `begin` when it is not there as such, but came out of a
// bracket.
int offsetOfWord(const QString& text, const QString& word, int begin)
{
    const auto isEnd = [&](int p) { return p < 0 || p >= text.size() || endsWord(text.at(p)); };
    for (int p = text.indexOf(word, begin); p >= 0; p = text.indexOf(word, p + 1)) {
        if (isEnd(p - 1) && isEnd(p + word.size()))
            return p;
    }
    return begin;
}

QString emptyRangeReason(const zoHostsTree::EmptyRange& range)
{
    const QString text = range.from + QLatin1String(" - ") + range.to;
    switch (range.reason) {
    case zoHostsTree::EmptyRange::Prefixes:
        return QCoreApplication::translate("zoHostsCommand",
                                           "\"%1\" fills nothing: the names differ before their number")
            .arg(text);
    case zoHostsTree::EmptyRange::Backwards:
        return QCoreApplication::translate("zoHostsCommand", "\"%1\" fills nothing: it runs backwards")
            .arg(text);
    case zoHostsTree::EmptyRange::TooLong:
        return QCoreApplication::translate("zoHostsCommand",
                                           "\"%1\" fills nothing: the names are more than %2 apart")
            .arg(text, QString::number(zoHostsTree::LongestRange));
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
        if (!tree.readHostsText(text)) {
            zoConsole::printError(tr("zohpc %1: braces are more than %2 deep")
                                      .arg(name(), QString::number(zoHostsTree::MaximumDepth)));
            return zoConsole::Unusable;
        }
        int offset = 0;
        for (const zoHostsTree::EmptyRange& range : tree.emptyRanges()) {
            offset = offsetOfWord(input.text(), range.to, offsetOfWord(input.text(), range.from, offset));
            printError(input, offset, emptyRangeReason(range));
            result = zoConsole::ProblemsFound;
        }
    }
    return writeResult(tree, parser) ? result : zoConsole::Unusable;
}
