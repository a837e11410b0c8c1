#include "zoHPCBracketText.h"

#include "zoHPCHostsText.h"

#include <algorithm>

namespace
{
// Longer numbers do not fit.
constexpr int s_maximumDigits = 17;

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// Ends a word: separators, braces, a closing bracket.
bool endsWord(QChar c)
{
    return c == QLatin1Char(']') || (c != QLatin1Char('[') && zoHPCHostsText::endsWord(c));
}

bool canStandInRange(QChar c)
{
    return isDigit(c) || zoHPCHostsText::isBlank(c) || c == QLatin1Char('-') || c == QLatin1Char(',') ||
           c == QLatin1Char('/');
}

void append(QStringView text, QString& result)
{
    result.append(text.data(), int(text.size()));
}

int digitCount(qint64 number)
{
    int count = 1;
    for (; number >= 10; number /= 10)
        ++count;
    return count;
}

void appendNumber(qint64 number, int width, QString& result)
{
    char digits[24];
    int count = 0;
    do {
        digits[count++] = char('0' + number % 10);
        number /= 10;
    } while (number != 0);
    for (int i = count; i < width; ++i)
        result += QLatin1Char('0');
    while (count > 0)
        result += QLatin1Char(digits[--count]);
}
} // namespace

QString zoHPCBracketText::expanded(const QString& text)
{
    m_text = text;
    m_pieces.clear();
    m_count = 0;
    m_characters = 0;
    m_hasError = false;

    QString result;
    int copied = 0;
    int bracket = text.indexOf(QLatin1Char('['));
    while (bracket >= 0) {
        const int blockEnd = text.indexOf(QLatin1Char(']'), bracket);
        const int end = blockEnd < 0 ? text.size() : blockEnd;
        if (!isRange(m_text.mid(bracket + 1, end - bracket - 1))) {
            bracket = text.indexOf(QLatin1Char('['), end);
            continue;
        }
        // A bracket belongs to the word before it, over blanks too.
        int begin = bracket;
        while (begin > copied && zoHPCHostsText::isBlank(text.at(begin - 1)))
            --begin;
        if (begin == copied || endsWord(text.at(begin - 1)))
            begin = bracket;
        const int wordEnd = begin;
        while (begin > copied && !endsWord(text.at(begin - 1)))
            --begin;

        Word word;
        word.texts.push_back(m_text.mid(begin, std::min(wordEnd, bracket) - begin));
        int next = bracket;
        if (!readWord(bracket, word, next))
            return QString();
        m_pieces.push_back({int(result.size()), copied, true});
        append(m_text.mid(copied, begin - copied), result);
        m_pieces.push_back({int(result.size()), begin, false});
        if (!appendNames(word, begin, result))
            return QString();
        copied = next;
        bracket = text.indexOf(QLatin1Char('['), next);
    }
    if (copied == 0)
        return text;
    m_pieces.push_back({int(result.size()), copied, true});
    append(m_text.mid(copied), result);
    return result;
}

bool zoHPCBracketText::isRange(QStringView block)
{
    return std::all_of(block.begin(), block.end(), canStandInRange) &&
           std::any_of(block.begin(), block.end(), isDigit);
}

int zoHPCBracketText::sourceOffset(int expandedOffset) const
{
    const auto after = std::upper_bound(m_pieces.begin(), m_pieces.end(), expandedOffset,
                                        [](int value, const Piece& p) { return value < p.expandedOffset; });
    if (after == m_pieces.begin())
        return expandedOffset;
    const Piece& piece = *(after - 1);
    return piece.isCopy ? piece.sourceOffset + expandedOffset - piece.expandedOffset : piece.sourceOffset;
}

// Reads on from the first bracket to the end of the word; the text before it is there.
bool zoHPCBracketText::readWord(int firstBracket, Word& word, int& end)
{
    int p = firstBracket;
    const int size = int(m_text.size());
    while (p < size && m_text.at(p) == QLatin1Char('[')) {
        const int close = int(m_text.indexOf(QLatin1Char(']'), p));
        if (close < 0)
            return fail(p, tr("\"[\" is not closed"));
        if (!isRange(m_text.mid(p + 1, close - p - 1))) {
            // Options behind the ranges are each name's.
            const QChar* const tail = word.texts.back().data();
            word.texts.back() = QStringView(tail, m_text.data() + close + 1);
            p = close + 1;
            break;
        }
        Ranges ranges;
        if (!readRanges(p + 1, close, ranges))
            return false;
        word.brackets.push_back(std::move(ranges));
        p = close + 1;
        const int text = p;
        while (p < size && !endsWord(m_text.at(p)) && m_text.at(p) != QLatin1Char('['))
            ++p;
        word.texts.push_back(m_text.mid(text, p - text));
        p = optionBlock(p);
    }
    end = p;
    return true;
}

// Where an option block begins, over blanks too; the same place when there is none.
int zoHPCBracketText::optionBlock(int place) const
{
    const int size = int(m_text.size());
    int p = place;
    while (p < size && zoHPCHostsText::isBlank(m_text.at(p)))
        ++p;
    const int close =
        p < size && m_text.at(p) == QLatin1Char('[') ? int(m_text.indexOf(QLatin1Char(']'), p)) : -1;
    return close >= 0 && !isRange(m_text.mid(p + 1, close - p - 1)) ? p : place;
}

bool zoHPCBracketText::readRanges(int begin, int end, Ranges& ranges)
{
    int p = begin;
    while (p <= end) {
        int comma = p;
        while (comma < end && m_text.at(comma) != QLatin1Char(','))
            ++comma;
        int first = p;
        int last = comma;
        while (first < last && zoHPCHostsText::isBlank(m_text.at(first)))
            ++first;
        while (last > first && zoHPCHostsText::isBlank(m_text.at(last - 1)))
            --last;
        Range range;
        if (!readRange(first, last, range))
            return false;
        ranges.push_back(range);
        p = comma + 1;
    }
    return true;
}

bool zoHPCBracketText::readRange(int begin, int end, Range& range)
{
    const auto bad = [&] {
        return fail(begin,
                    tr("\"%1\" is no range of numbers").arg(m_text.mid(begin, end - begin).toString()));
    };
    const auto readNumber = [&](int& p, qint64& number) {
        const int first = p;
        number = 0;
        while (p < end && isDigit(m_text.at(p)) && p - first <= s_maximumDigits)
            number = number * 10 + (m_text.at(p++).unicode() - '0');
        return p > first && p - first <= s_maximumDigits;
    };

    int p = begin;
    if (!readNumber(p, range.first))
        return bad();
    range.width = m_text.at(begin) == QLatin1Char('0') ? p - begin : 0;
    range.last = range.first;
    range.step = 1;
    if (p < end && m_text.at(p) == QLatin1Char('-')) {
        ++p;
        if (!readNumber(p, range.last))
            return bad();
        if (p < end && m_text.at(p) == QLatin1Char('/')) {
            ++p;
            if (!readNumber(p, range.step) || range.step == 0)
                return bad();
        }
    }
    if (p != end)
        return bad();
    if (range.last < range.first)
        return fail(begin, tr("\"%1\" runs backwards").arg(m_text.mid(begin, end - begin).toString()));
    return true;
}

// All combinations, the last bracket changes first.
bool zoHPCBracketText::appendNames(const Word& word, int offset, QString& result)
{
    constexpr qint64 Maximum = zoClusterLimits::MaximumHosts;
    qint64 length = 1; // of the longest name, with its blank
    for (const QStringView text : word.texts)
        length += text.size();
    qint64 count = 1;
    for (const Ranges& ranges : word.brackets) {
        qint64 sum = 0;
        int width = 1;
        for (const Range& range : ranges) {
            sum += std::min((range.last - range.first) / range.step, Maximum) + 1;
            width = std::max({width, range.width, digitCount(range.last)});
        }
        length += width;
        count = std::min(count * std::min(sum, Maximum + 1), Maximum + 1);
    }
    m_count += count;
    if (m_count > Maximum)
        return fail(offset, tr("more than %1 names").arg(Maximum));
    m_characters += count * length;
    if (m_characters > zoClusterLimits::MaximumNameCharacters)
        return fail(
            offset,
            tr("names of more than %1 characters altogether").arg(zoClusterLimits::MaximumNameCharacters));

    struct Position
    {
        std::size_t range;
        qint64 number;
    };
    std::vector<Position> positions;
    for (const Ranges& ranges : word.brackets)
        positions.push_back({0, ranges.front().first});
    for (bool isDone = false; !isDone;) {
        for (std::size_t i = 0; i < word.brackets.size(); ++i) {
            append(word.texts[i], result);
            appendNumber(positions[i].number, word.brackets[i][positions[i].range].width, result);
        }
        append(word.texts.back(), result);

        isDone = true;
        for (std::size_t i = word.brackets.size(); i-- > 0 && isDone;) {
            const Ranges& ranges = word.brackets[i];
            Position& position = positions[i];
            isDone = false;
            if (position.number <= ranges[position.range].last - ranges[position.range].step) {
                position.number += ranges[position.range].step;
            } else if (position.range + 1 < ranges.size()) {
                position.number = ranges[++position.range].first;
            } else {
                position = {0, ranges.front().first};
                isDone = true;
            }
        }
        if (!isDone)
            result += QLatin1Char(' ');
    }
    return true;
}

bool zoHPCBracketText::fail(int offset, const QString& reason)
{
    m_hasError = true;
    m_error = {offset, reason};
    return false;
}
