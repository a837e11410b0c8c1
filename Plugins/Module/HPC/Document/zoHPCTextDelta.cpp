#include "zoHPCTextDelta.h"

#include <QHash>
#include <QStringView>

#include <algorithm>
#include <cstring>
#include <utility>

namespace
{
// How far both texts are searched for the place where they go on alike. What lies further is found by lines that
// a text has once.
constexpr int Nearby = 48;

struct Middle
{
    std::vector<QStringView> lines;
    int start = 0; // in the whole text

    int size() const { return int(lines.size()); }
    QStringView at(int line) const { return lines[std::size_t(line)]; }
};

Middle middleOf(const QString& text, int start, int end)
{
    Middle middle;
    middle.start = start;
    const QStringView whole(text);
    while (start < end) {
        const int newLine = text.indexOf(QLatin1Char('\n'), start);
        const int next = newLine < 0 || newLine >= end ? end : newLine + 1;
        middle.lines.push_back(whole.mid(start, next - start));
        start = next;
    }
    return middle;
}

// How many lines of each text the difference has that begins at these lines.
using Extent = std::pair<int, int>;

class Comparison final
{
public:
    Comparison(const Middle& before, const Middle& after) : m_before(before), m_after(after) {}

    Extent differenceAt(int before, int after)
    {
        for (int sum = 1; sum <= Nearby; ++sum) {
            for (int removed = 0; removed <= sum; ++removed) {
                if (isAlike(before + removed, after + sum - removed))
                    return {removed, sum - removed};
            }
        }
        if (m_places.isEmpty())
            noteSingleLines();
        for (int line = after; line < m_after.size(); ++line) {
            const auto place = m_places.constFind(qHash(m_after.at(line)));
            if (place != m_places.constEnd() && *place >= before && m_before.at(*place) == m_after.at(line))
                return {*place - before, line - after};
        }
        return {m_before.size() - before, m_after.size() - after};
    }

private:
    // Two lines, as one alone may be a closing tag that stands everywhere.
    bool isAlike(int before, int after) const
    {
        int alike = 0;
        while (alike < 2 && before < m_before.size() && after < m_after.size() &&
               m_before.at(before) == m_after.at(after)) {
            ++alike;
            ++before;
            ++after;
        }
        return alike == 2 || (before == m_before.size() && after == m_after.size());
    }

    void noteSingleLines()
    {
        constexpr int Often = -1;
        m_places.reserve(m_before.size());
        for (int line = 0; line < m_before.size(); ++line) {
            const auto hash = qHash(m_before.at(line));
            const auto place = m_places.find(hash);
            if (place == m_places.end())
                m_places.insert(hash, line);
            else
                *place = Often;
        }
    }

    const Middle& m_before;
    const Middle& m_after;
    QHash<decltype(qHash(QString())), int> m_places; // of lines that the earlier text has once
};

// Characters that are compared at once.
constexpr int Block = 1024;

// The texts begin with the same whole lines up to here.
int sameStart(const QString& before, const QString& after)
{
    const int most = std::min(before.size(), after.size());
    int length = 0;
    while (length + Block <= most &&
           std::memcmp(before.constData() + length, after.constData() + length, Block * sizeof(QChar)) == 0)
        length += Block;
    while (length < most && before.at(length) == after.at(length))
        ++length;
    return length == 0 ? 0 : before.lastIndexOf(QLatin1Char('\n'), length - 1) + 1;
}

// And end with this many characters of whole lines, which do not reach into the start.
int sameEnd(const QString& before, const QString& after, int start)
{
    const int most = std::min(before.size(), after.size()) - start;
    const QChar* const beforeEnd = before.constData() + before.size();
    const QChar* const afterEnd = after.constData() + after.size();
    int length = 0;
    while (length + Block <= most &&
           std::memcmp(beforeEnd - length - Block, afterEnd - length - Block, Block * sizeof(QChar)) == 0)
        length += Block;
    while (length < most && *(beforeEnd - length - 1) == *(afterEnd - length - 1))
        ++length;
    // Back to where a line begins in both.
    for (; length > 0; --length) {
        const int inBefore = before.size() - length;
        const int inAfter = after.size() - length;
        const bool beginsBefore = inBefore == 0 || before.at(inBefore - 1) == QLatin1Char('\n');
        const bool beginsAfter = inAfter == 0 || after.at(inAfter - 1) == QLatin1Char('\n');
        if (beginsBefore && beginsAfter)
            break;
    }
    return length;
}

QString joined(const Middle& middle, int line, int count)
{
    if (count == 0)
        return {};
    const QStringView first = middle.at(line);
    const QStringView last = middle.at(line + count - 1);
    return QStringView(first.data(), last.data() + last.size() - first.data()).toString();
}

QString replaced(const QString& text, const std::vector<zoHPCTextDelta::Hunk>& hunks,
                 int zoHPCTextDelta::Hunk::*place, QString zoHPCTextDelta::Hunk::*going,
                 QString zoHPCTextDelta::Hunk::*coming)
{
    int size = text.size();
    for (const zoHPCTextDelta::Hunk& hunk : hunks)
        size += (hunk.*coming).size() - (hunk.*going).size();
    QString result;
    result.reserve(size);
    int done = 0;
    for (const zoHPCTextDelta::Hunk& hunk : hunks) {
        result.append(text.constData() + done, hunk.*place - done);
        result.append(hunk.*coming);
        done = hunk.*place + (hunk.*going).size();
    }
    return result.append(text.constData() + done, text.size() - done);
}
} // namespace

zoHPCTextDelta zoHPCTextDelta::between(const QString& before, const QString& after)
{
    zoHPCTextDelta delta;
    if (before == after)
        return delta;
    const int start = sameStart(before, after);
    const int end = sameEnd(before, after, start);
    const Middle earlier = middleOf(before, start, before.size() - end);
    const Middle later = middleOf(after, start, after.size() - end);
    Comparison comparison(earlier, later);
    int i = 0;
    int j = 0;
    int inBefore = start;
    int inAfter = start;
    while (i < earlier.size() || j < later.size()) {
        if (i < earlier.size() && j < later.size() && earlier.at(i) == later.at(j)) {
            inBefore += int(earlier.at(i++).size());
            inAfter += int(later.at(j++).size());
            continue;
        }
        const Extent extent = comparison.differenceAt(i, j);
        delta.m_hunks.push_back(
            {inBefore, inAfter, joined(earlier, i, extent.first), joined(later, j, extent.second)});
        i += extent.first;
        j += extent.second;
        inBefore += delta.m_hunks.back().removed.size();
        inAfter += delta.m_hunks.back().inserted.size();
    }
    return delta;
}

QString zoHPCTextDelta::applied(const QString& before) const
{
    return replaced(before, m_hunks, &Hunk::before, &Hunk::removed, &Hunk::inserted);
}

QString zoHPCTextDelta::reverted(const QString& after) const
{
    return replaced(after, m_hunks, &Hunk::after, &Hunk::inserted, &Hunk::removed);
}

qint64 zoHPCTextDelta::size() const
{
    qint64 size = 0;
    for (const Hunk& hunk : m_hunks)
        size += qint64(sizeof(Hunk)) + qint64(sizeof(QChar)) * (hunk.removed.size() + hunk.inserted.size());
    return size;
}
