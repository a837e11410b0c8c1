#include "zoHostsReading.h"

#include "zoBracketText.h"
#include "zoHPCHostsText.h"
#include "zoHostsInput.h"

#include <zoClusterLimits.h>

#include <algorithm>

namespace
{
void printError(const zoHostsInput& input, int offset, const QString& reason)
{
    const zoHostsInput::Place place = input.place(offset);
    zoConsole::printError(place.file, place.line, place.column, reason);
}

zoConsole::ExitCode refuse(const zoHostsInput& input, int offset, const QString& reason)
{
    printError(input, offset, reason);
    return zoConsole::Unusable;
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

QString strangeWordReason(const QString& word, bool hasNamesOption)
{
    const QString name = zoHPCHostsText::hostName(word);
    if (name.isEmpty())
        return zoHostsReading::tr("\"%1\" is no host name and is left out").arg(word);
    return hasNamesOption ? zoHostsReading::tr("\"%1\" reads as \"%2\"; --names keeps it").arg(word, name)
                          : zoHostsReading::tr("\"%1\" reads as \"%2\"").arg(word, name);
}

// Characters that no host has and that mean nothing between hosts: control characters, which would pass for what
// stands for a number while names are folded and which a terminal obeys, and what is no character at all.
zoHostsSyntax::Problem firstStrangeCharacter(const QString& text)
{
    const auto found = std::find_if(text.cbegin(), text.cend(), [](QChar c) {
        return c == QChar::ReplacementCharacter || (c.category() == QChar::Other_Control && !c.isSpace());
    });
    if (found == text.cend())
        return {-1, {}};
    const int offset = int(found - text.cbegin());
    if (*found == QChar::ReplacementCharacter)
        return {offset, zoHostsReading::tr("invalid UTF-8")};
    return {offset,
            zoHostsReading::tr("the control character U+%1 cannot stand in hosts text")
                .arg(QString::number(found->unicode(), 16).toUpper().rightJustified(4, QLatin1Char('0')))};
}

QString refusalReason(zoHostsTree::Outcome outcome)
{
    switch (outcome) {
    case zoHostsTree::Outcome::TooDeep:
        return zoHostsReading::tr("braces are more than %1 deep").arg(zoClusterLimits::MaximumNetworkDepth);
    case zoHostsTree::Outcome::TooMany:
        return zoHostsReading::tr("more than %1 names").arg(zoClusterLimits::MaximumHosts);
    case zoHostsTree::Outcome::TooLong:
        return zoHostsReading::tr("names of more than %1 characters altogether")
            .arg(zoClusterLimits::MaximumNameCharacters);
    case zoHostsTree::Outcome::Read:
        break;
    }
    return {};
}

// What stands between brackets for the names from one to the other, where their numbers are not at the end;
// empty when more than one number differs.
QString bracketForm(const QString& from, const QString& to)
{
    const auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
    const int size = std::min(from.size(), to.size());
    int begin = 0;
    while (begin < size && from.at(begin) == to.at(begin))
        ++begin;
    while (begin > 0 && isDigit(from.at(begin - 1)))
        --begin;
    int tail = 0;
    while (tail < size - begin && from.at(from.size() - 1 - tail) == to.at(to.size() - 1 - tail))
        ++tail;
    while (tail > 0 && isDigit(from.at(from.size() - tail)))
        --tail;
    const QString first = from.mid(begin, from.size() - begin - tail);
    const QString last = to.mid(begin, to.size() - begin - tail);
    const auto isNumber = [&](const QString& t) {
        return !t.isEmpty() && std::all_of(t.begin(), t.end(), isDigit);
    };
    if (!isNumber(first) || !isNumber(last) || first.toULongLong() >= last.toULongLong())
        return {};
    return from.left(begin) + QLatin1Char('[') + first + QLatin1Char('-') + last + QLatin1Char(']') +
           from.right(tail);
}

QString emptyRangeReason(const zoHostsTree::EmptyRange& range)
{
    using Reason = zoHostsTree::EmptyRange::Reason;
    const QString text = range.from + QLatin1String(" - ") + range.to;
    const QString brackets = bracketForm(range.from, range.to);
    switch (range.reason) {
    case Reason::OtherPrefix:
        return zoHostsReading::tr("\"%1\" fills nothing: the names differ before their number").arg(text);
    case Reason::Backwards:
        return zoHostsReading::tr("\"%1\" fills nothing: it runs backwards").arg(text);
    case Reason::TooLong:
        return zoHostsReading::tr("\"%1\" fills nothing: the names are more than %2 apart")
            .arg(text, QString::number(zoHPCHostRange::LargestDistance));
    case Reason::NoNumber:
        return brackets.isEmpty()
                   ? zoHostsReading::tr(
                         "\"%1\" is no range: both names must be text with a number at its end")
                         .arg(text)
                   : zoHostsReading::tr(
                         "\"%1\" is no range: both names must be text with a number at its end; write \"%2\"")
                         .arg(text, brackets);
    case Reason::NumberTooLong:
        return zoHostsReading::tr("\"%1\" is no range: the numbers are too long; write \"%2\"")
            .arg(text, brackets);
    case Reason::NoHost:
        return zoHostsReading::tr("\"-\" fills nothing: it does not stand between two hosts");
    }
    return {};
}

// What stands for no hosts at all; the others stand for the two that they name.
bool isRefused(const zoHostsTree::EmptyRange& range)
{
    return range.reason == zoHostsTree::EmptyRange::Reason::NoNumber ||
           range.reason == zoHostsTree::EmptyRange::Reason::NumberTooLong;
}
} // namespace

zoConsole::ExitCode zoHostsReading::read(const zoHostsInput& input, zoHostsSyntax::Form form)
{
    zoHostsSyntax::Problem problem = firstStrangeCharacter(input.text());
    if (problem.offset < 0)
        problem = zoHostsSyntax::firstProblem(input.text(), form);
    if (problem.offset >= 0)
        return refuse(input, problem.offset, problem.reason);

    zoBracketText brackets;
    m_text = brackets.expanded(input.text());
    if (brackets.hasError())
        return refuse(input, brackets.error().offset, brackets.error().reason);
    if (form == zoHostsSyntax::Form::Names) {
        m_tree.readNames(m_text);
        return zoConsole::Fine;
    }

    const zoHostsTree::Outcome outcome = m_tree.readHostsText(m_text);
    if (outcome != zoHostsTree::Outcome::Read)
        return refuse(input, brackets.sourceOffset(m_tree.endOffset()), refusalReason(outcome));
    const std::vector<zoHostsTree::EmptyRange>& ranges = m_tree.emptyRanges();
    const auto refused = std::find_if(ranges.begin(), ranges.end(), isRefused);
    if (refused != ranges.end())
        return refuse(input, brackets.sourceOffset(refused->offset), emptyRangeReason(*refused));
    const std::vector<Word> words = strangeWords(input.text());
    for (const Word& word : words)
        printError(input, word.offset, strangeWordReason(word.text, m_hasNamesOption));
    for (const zoHostsTree::EmptyRange& range : ranges)
        printError(input, brackets.sourceOffset(range.offset), emptyRangeReason(range));
    return words.empty() && ranges.empty() ? zoConsole::Fine : zoConsole::ProblemsFound;
}
