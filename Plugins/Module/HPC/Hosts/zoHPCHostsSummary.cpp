#include "zoHPCHostsSummary.h"

#include "zoHPCBracketText.h"
#include "zoHPCHostsOutline.h"
#include "zoHPCHostsReading.h"
#include "zoHPCHostsText.h"
#include "zoHPCNumberedName.h"
#include "zoText.h"

#include <QStringList>

#include <algorithm>

namespace
{
// The word at a place, up to what ends words; 0 when there is none.
int wordLength(const QString& text, int offset)
{
    int end = offset;
    while (end < text.size() && !zoHPCHostsText::endsWord(text.at(end)))
        ++end;
    return end - offset;
}

// From a bracket of numbers to the end of its word, over further brackets.
int bracketWordEnd(const QString& text, int bracket)
{
    int end = bracket;
    while (end < text.size() && text.at(end) == QLatin1Char('[')) {
        const int close = text.indexOf(QLatin1Char(']'), end);
        if (close < 0 || !zoHPCBracketText::isRange(QStringView(text).mid(end + 1, close - end - 1)))
            break;
        end = close + 1;
        end += wordLength(text, end);
    }
    return end;
}

// The same names as ranges of hosts text: "n01 - n24 viz1".
QString folded(const QString& names)
{
    const QStringList all = names.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QStringList words;
    for (int i = 0; i < all.size();) {
        const zoHPCNumberedName first(all.at(i));
        int count = 1;
        while (i + count < all.size() && count <= zoHPCHostRange::LargestDistance &&
               !first.digits().isEmpty() && all.at(i + count) == first.name(count))
            ++count;
        if (count < 3) {
            words << all.at(i);
            ++i;
            continue;
        }
        words << all.at(i) + zoText(" - ") + all.at(i + count - 1);
        i += count;
    }
    return words.join(QLatin1Char(' '));
}
} // namespace

zoHPCHostsSummary::zoHPCHostsSummary(const QString& text)
{
    count(text);
    noteBrackets(text);
    zoHPCHostsReading reading;
    reading.read(text);
    for (const zoHPCHostsReading::Note& note : reading.notes())
        m_notes.push_back({note.offset, wordLength(text, note.offset), note.reason, QString()});
    std::stable_sort(m_notes.begin(), m_notes.end(),
                     [](const Note& left, const Note& right) { return left.offset < right.offset; });
}

// By the reader that the host tree has.
void zoHPCHostsSummary::count(const QString& text)
{
    zoHPCHostsOutline outline;
    outline.readHostsText(text);
    int depth = 0;
    for (int index = outline.next(zoHPCHostsOutline::Root, depth); index >= 0;
         index = outline.next(index, depth)) {
        const zoHPCHostsOutline::Item& item = outline.item(index);
        if (item.isNetwork)
            ++m_networks;
        else
            ++m_nodes;
        m_gateways += int(!item.isNetwork && item.firstChild >= 0);
    }
}

void zoHPCHostsSummary::noteBrackets(const QString& text)
{
    int bracket = text.indexOf(QLatin1Char('['));
    while (bracket >= 0) {
        const int close = text.indexOf(QLatin1Char(']'), bracket);
        if (close < 0)
            return;
        int next = close + 1;
        if (zoHPCBracketText::isRange(QStringView(text).mid(bracket + 1, close - bracket - 1))) {
            int begin = bracket;
            while (begin > 0 && !zoHPCHostsText::endsWord(text.at(begin - 1)))
                --begin;
            next = bracketWordEnd(text, bracket);
            const QString word = text.mid(begin, next - begin);
            zoHPCBracketText brackets;
            const QString names = folded(brackets.expanded(word));
            // What is wrong in the brackets is told as such.
            if (!brackets.hasError()) {
                const QString read = zoHPCHostsText::hostName(word);
                m_notes.push_back(
                    {begin, next - begin,
                     read.isEmpty()
                         ? tr("\"%1\" is left out; write \"%2\"").arg(word, names)
                         : tr("\"%1\" reads as the one node \"%2\"; write \"%3\"").arg(word, read, names),
                     names});
            }
        }
        bracket = text.indexOf(QLatin1Char('['), next);
    }
}

QString zoHPCHostsSummary::counts() const
{
    QString result = m_nodes == 0   ? tr("No nodes")
                     : m_nodes == 1 ? tr("1 node")
                                    : tr("%1 nodes").arg(m_nodes);
    if (m_networks > 1)
        result = tr("%1 in %2 networks", "nodes").arg(result).arg(m_networks);
    if (m_gateways == 1)
        result = tr("%1, 1 gateway").arg(result);
    else if (m_gateways > 1)
        result = tr("%1, %2 gateways").arg(result).arg(m_gateways);
    return result;
}

int zoHPCHostsSummary::line(const QString& text, int offset)
{
    return int(std::count(text.cbegin(), text.cbegin() + std::min(offset, int(text.size())),
                          QLatin1Char('\n'))) +
           1;
}

int zoHPCHostsSummary::column(const QString& text, int offset)
{
    return offset == 0 ? 1 : offset - text.lastIndexOf(QLatin1Char('\n'), offset - 1);
}
