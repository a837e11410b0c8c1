#include "zoHPCHostsReading.h"

#include "zoHPCBracketText.h"
#include "zoHPCHostsText.h"

#include <zoClusterLimits.h>

#include <algorithm>

namespace
{
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
        return zoHPCHostsReading::tr("\"%1\" is no host name and is left out").arg(word);
    return hasNamesOption ? zoHPCHostsReading::tr("\"%1\" reads as \"%2\"; --names keeps it").arg(word, name)
                          : zoHPCHostsReading::tr("\"%1\" reads as \"%2\"").arg(word, name);
}

// Characters that no host has and that mean nothing between hosts: control characters, which would pass for what
// stands for a number while names are folded and which a terminal obeys, and what is no character at all.
zoHPCHostsSyntax::Problem firstStrangeCharacter(const QString& text)
{
    const auto found = std::find_if(text.cbegin(), text.cend(), [](QChar c) {
        return c == QChar::ReplacementCharacter || (c.category() == QChar::Other_Control && !c.isSpace());
    });
    if (found == text.cend())
        return {-1, {}};
    const int offset = int(found - text.cbegin());
    if (*found == QChar::ReplacementCharacter)
        return {offset, zoHPCHostsReading::tr("invalid UTF-8")};
    return {offset,
            zoHPCHostsReading::tr("the control character U+%1 cannot stand in hosts text")
                .arg(QString::number(found->unicode(), 16).toUpper().rightJustified(4, QLatin1Char('0')))};
}

QString refusalReason(zoHPCHostsOutline::Outcome outcome)
{
    switch (outcome) {
    case zoHPCHostsOutline::Outcome::TooDeep:
        return zoHPCHostsReading::tr("braces are more than %1 deep")
            .arg(zoClusterLimits::MaximumNetworkDepth);
    case zoHPCHostsOutline::Outcome::TooMany:
        return zoHPCHostsReading::tr("more than %1 names").arg(zoClusterLimits::MaximumHosts);
    case zoHPCHostsOutline::Outcome::TooLong:
        return zoHPCHostsReading::tr("names of more than %1 characters altogether")
            .arg(zoClusterLimits::MaximumNameCharacters);
    case zoHPCHostsOutline::Outcome::Read:
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

QString emptyRangeReason(const zoHPCHostsOutline::EmptyRange& range)
{
    using Reason = zoHPCHostsOutline::EmptyRange::Reason;
    const QString text = range.from + QLatin1String(" - ") + range.to;
    const QString brackets = bracketForm(range.from, range.to);
    switch (range.reason) {
    case Reason::OtherPrefix:
        return zoHPCHostsReading::tr("\"%1\" fills nothing: the names differ before their number").arg(text);
    case Reason::Backwards:
        return zoHPCHostsReading::tr("\"%1\" fills nothing: it runs backwards").arg(text);
    case Reason::TooLong:
        return zoHPCHostsReading::tr("\"%1\" fills nothing: the names are more than %2 apart")
            .arg(text, QString::number(zoHPCHostRange::LargestDistance));
    case Reason::NoNumber:
        return brackets.isEmpty()
                   ? zoHPCHostsReading::tr(
                         "\"%1\" is no range: both names must be text with a number at its end")
                         .arg(text)
                   : zoHPCHostsReading::tr(
                         "\"%1\" is no range: both names must be text with a number at its end; write \"%2\"")
                         .arg(text, brackets);
    case Reason::NumberTooLong:
        return zoHPCHostsReading::tr("\"%1\" is no range: the numbers are too long; write \"%2\"")
            .arg(text, brackets);
    case Reason::NoHost:
        return zoHPCHostsReading::tr("\"-\" fills nothing: it does not stand between two hosts");
    }
    return {};
}

// What stands for no hosts at all; the others stand for the two that they name.
bool isRefused(const zoHPCHostsOutline::EmptyRange& range)
{
    return range.reason == zoHPCHostsOutline::EmptyRange::Reason::NoNumber ||
           range.reason == zoHPCHostsOutline::EmptyRange::Reason::NumberTooLong;
}
} // namespace

zoHPCHostsReading::Outcome zoHPCHostsReading::refuse(int offset, const QString& reason)
{
    m_notes = {{offset, reason}};
    return Outcome::Refused;
}

zoHPCHostsReading::Outcome zoHPCHostsReading::read(const QString& text, zoHPCHostsSyntax::Form form)
{
    zoHPCHostsSyntax::Problem problem = firstStrangeCharacter(text);
    if (problem.offset < 0)
        problem = zoHPCHostsSyntax::firstProblem(text, form);
    if (problem.offset >= 0)
        return refuse(problem.offset, problem.reason);

    zoHPCBracketText brackets;
    m_text = brackets.expanded(text);
    if (brackets.hasError())
        return refuse(brackets.error().offset, brackets.error().reason);
    if (form == zoHPCHostsSyntax::Form::Names) {
        m_outline.readNames(m_text);
        return Outcome::Read;
    }

    const zoHPCHostsOutline::Outcome outcome = m_outline.readHostsText(m_text);
    if (outcome != zoHPCHostsOutline::Outcome::Read)
        return refuse(brackets.sourceOffset(m_outline.endOffset()), refusalReason(outcome));
    const std::vector<zoHPCHostsOutline::EmptyRange>& ranges = m_outline.emptyRanges();
    const auto refused = std::find_if(ranges.begin(), ranges.end(), isRefused);
    if (refused != ranges.end())
        return refuse(brackets.sourceOffset(refused->offset), emptyRangeReason(*refused));
    const std::vector<Word> words = strangeWords(text);
    for (const Word& word : words)
        m_notes.push_back({word.offset, strangeWordReason(word.text, m_hasNamesOption)});
    for (const zoHPCHostsOutline::EmptyRange& range : ranges)
        m_notes.push_back({brackets.sourceOffset(range.offset), emptyRangeReason(range)});
    return m_notes.empty() ? Outcome::Read : Outcome::ReadOtherwise;
}
