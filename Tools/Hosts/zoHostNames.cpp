#include "zoHostNames.h"

#include "zoHPCHostRange.h"

#include <QHash>
#include <QSet>
#include <QStringView>

#include <algorithm>
#include <numeric>

namespace
{
// A number with its width, in one word: the width decides first, then the value. Longer numbers count as
// text.
using Number = quint64;
constexpr int s_maximumDigits = 17;
// A name of more numbers is text as a whole: folding takes the square of their number.
constexpr std::size_t MaximumNumbers = 16;
constexpr int s_widthShift = 57;

Number number(QStringView digits)
{
    quint64 value = 0;
    for (const QChar c : digits)
        value = value * 10 + (c.unicode() - '0');
    return (quint64(digits.size()) << s_widthShift) | value;
}

quint64 valueOf(Number n)
{
    return n & ((quint64(1) << s_widthShift) - 1);
}

int widthOf(Number n)
{
    return int(n >> s_widthShift);
}

int digitCount(quint64 value)
{
    int result = 1;
    while (value >= 10) {
        value /= 10;
        ++result;
    }
    return result;
}

bool isPadded(Number n)
{
    return widthOf(n) > digitCount(valueOf(n));
}

void appendNumber(Number n, QByteArray& text)
{
    const QByteArray digits = QByteArray::number(valueOf(n));
    text.append(widthOf(n) - digits.size(), '0');
    text += digits;
}

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// Names of the same texts; a placeholder stands for each number.
struct Group
{
    QString pattern;
    int dimensions = 0;
    std::vector<Number> numbers; // `dimensions` for each name
    std::vector<int> names;
};

// Lower than what names hold, so that "n" and its numbers come before "na".
const QChar s_placeholder(1);

std::vector<Group> groupsOf(const std::vector<QString>& names)
{
    std::vector<Group> groups;
    QHash<QString, int> indices;
    QString pattern;
    std::vector<Number> numbers;
    int current = -1;
    for (std::size_t i = 0; i < names.size(); ++i) {
        Q_ASSERT(!names[i].contains(s_placeholder));
        pattern.resize(0);
        numbers.clear();
        const QString& name = names[i];
        const QChar* p = name.constData();
        const QChar* end = p + name.size();
        while (p != end) {
            const QChar* begin = p;
            while (p != end && isDigit(*p))
                ++p;
            if (p != begin && p - begin <= s_maximumDigits) {
                pattern += s_placeholder;
                numbers.push_back(number(QStringView(begin, p)));
                continue;
            }
            while (p != end && !isDigit(*p))
                ++p;
            pattern.append(begin, int(p - begin));
        }
        if (numbers.size() > MaximumNumbers) {
            pattern = name;
            numbers.clear();
        }
        if (current < 0 || groups[std::size_t(current)].pattern != pattern) {
            current = indices.value(pattern, -1);
            if (current < 0) {
                current = int(groups.size());
                // A deep copy: the buffer goes on being written.
                const QString key(pattern.constData(), pattern.size());
                indices.insert(key, current);
                groups.push_back({key, int(numbers.size()), {}, {}});
            }
        }
        Group& group = groups[std::size_t(current)];
        group.numbers.insert(group.numbers.end(), numbers.begin(), numbers.end());
        group.names.push_back(int(i));
    }
    std::sort(groups.begin(), groups.end(),
              [](const Group& a, const Group& b) { return a.pattern < b.pattern; });
    return groups;
}

// Sorts the group's names and leaves each once.
void sort(Group& group)
{
    const std::size_t dimensions = std::size_t(group.dimensions);
    if (dimensions == 0) {
        group.names.resize(1);
        return;
    }
    const auto row = [&](int i) {
        return group.numbers.begin() + std::ptrdiff_t(std::size_t(i) * dimensions);
    };
    const auto isLess = [&](int a, int b) {
        return std::lexicographical_compare(row(a), row(a) + group.dimensions, row(b),
                                            row(b) + group.dimensions);
    };
    std::vector<int> order(group.names.size());
    std::iota(order.begin(), order.end(), 0);
    if (dimensions == 1) {
        std::vector<std::pair<Number, int>> pairs(order.size());
        for (std::size_t i = 0; i < pairs.size(); ++i)
            pairs[i] = {group.numbers[i], int(i)};
        if (!std::is_sorted(pairs.begin(), pairs.end()))
            std::sort(pairs.begin(), pairs.end());
        for (std::size_t i = 0; i < pairs.size(); ++i)
            order[i] = pairs[i].second;
    } else {
        std::stable_sort(order.begin(), order.end(), isLess);
    }
    order.erase(
        std::unique(order.begin(), order.end(),
                    [&](int a, int b) { return std::equal(row(a), row(a) + group.dimensions, row(b)); }),
        order.end());

    std::vector<Number> numbers;
    std::vector<int> names;
    numbers.reserve(order.size() * dimensions);
    names.reserve(order.size());
    for (const int i : order) {
        numbers.insert(numbers.end(), row(i), row(i) + group.dimensions);
        names.push_back(group.names[std::size_t(i)]);
    }
    group.numbers = std::move(numbers);
    group.names = std::move(names);
}

// Whether the number is the one `step` after the first of a range that began with `first`, as a reader of
// ranges counts.
bool follows(Number n, Number first, Number previous, quint64 step)
{
    if (valueOf(n) != valueOf(previous) + step)
        return false;
    // From 9 to 10 a number grows, from 09 to 10 it keeps its width; what starts padded never grows.
    return isPadded(first) ? widthOf(n) == widthOf(first) : !isPadded(n);
}

// The numbers as a bracket's content: "1-3,7".
QByteArray rangesText(const std::vector<Number>& numbers, bool withSteps)
{
    QByteArray text;
    for (std::size_t i = 0; i < numbers.size();) {
        const Number first = numbers[i];
        std::size_t end = i + 1;
        quint64 step = 1;
        if (end < numbers.size()) {
            step = withSteps ? valueOf(numbers[end]) - valueOf(first) : 1;
            while (end < numbers.size() && follows(numbers[end], first, numbers[end - 1], step))
                ++end;
        }
        if (step > 1 && end - i < 3)
            end = i + 1;
        if (i > 0)
            text += ',';
        appendNumber(first, text);
        if (end - i > 1) {
            text += '-';
            appendNumber(numbers[end - 1], text);
            if (step > 1)
                text += '/' + QByteArray::number(step);
        }
        i = end;
    }
    return text;
}

// A bracket with its content; a single number needs none.
QByteArray bracket(const QByteArray& ranges)
{
    return ranges.contains(',') || ranges.contains('-') ? '[' + ranges + ']' : ranges;
}

void appendEntry(const QString& pattern, const QList<QByteArray>& brackets, QByteArray& text)
{
    if (!text.isEmpty())
        text += ',';
    int next = 0;
    int begin = 0;
    for (int i = 0; i <= pattern.size(); ++i) {
        if (i < pattern.size() && pattern.at(i) != s_placeholder)
            continue;
        text += QStringView(pattern).mid(begin, i - begin).toUtf8();
        if (i < pattern.size())
            text += brackets.at(next++);
        begin = i + 1;
    }
}

// Folds axis by axis from the last to the first: names that are equal in all other axes share a bracket.
void appendGroup(const Group& group, bool withSteps, QByteArray& text)
{
    if (group.dimensions <= 1) {
        appendEntry(group.pattern, {bracket(rangesText(group.numbers, withSteps))}, text);
        return;
    }
    struct Entry
    {
        QList<QByteArray> axes; // folded ones as brackets
        std::size_t row;
    };
    const std::size_t dimensions = std::size_t(group.dimensions);
    std::vector<Entry> entries(group.names.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i].row = i;
        for (std::size_t axis = 0; axis < dimensions; ++axis) {
            QByteArray digits;
            appendNumber(group.numbers[i * dimensions + axis], digits);
            entries[i].axes << digits;
        }
    }
    for (std::size_t axis = dimensions; axis-- > 0;) {
        std::vector<Entry> folded;
        std::vector<std::vector<Number>> numbers;
        QHash<QByteArray, int> indices;
        for (Entry& entry : entries) {
            QByteArray key;
            for (int other = 0; other < entry.axes.size(); ++other)
                key += (other == int(axis) ? QByteArray() : entry.axes.at(other)) + ';';
            const auto known = indices.constFind(key);
            if (known != indices.constEnd()) {
                numbers[std::size_t(*known)].push_back(group.numbers[entry.row * dimensions + axis]);
                continue;
            }
            indices.insert(key, int(folded.size()));
            numbers.push_back({group.numbers[entry.row * dimensions + axis]});
            folded.push_back(std::move(entry));
        }
        for (std::size_t i = 0; i < folded.size(); ++i)
            folded[i].axes[int(axis)] = bracket(rangesText(numbers[i], withSteps));
        entries = std::move(folded);
    }
    for (const Entry& entry : entries)
        appendEntry(group.pattern, entry.axes, text);
}
} // namespace

std::vector<int> zoHostNames::sorted(const std::vector<QString>& names)
{
    std::vector<int> result;
    result.reserve(names.size());
    std::vector<Group> groups = groupsOf(names);
    for (Group& group : groups) {
        sort(group);
        result.insert(result.end(), group.names.begin(), group.names.end());
    }
    return result;
}

QByteArray zoHostNames::bracketText(const std::vector<QString>& names, bool withSteps)
{
    QByteArray text;
    std::vector<Group> groups = groupsOf(names);
    for (Group& group : groups) {
        sort(group);
        appendGroup(group, withSteps, text);
    }
    return text;
}

QByteArray zoHostNames::orderedBracketText(const std::vector<QString>& names)
{
    QByteArray text;
    QStringView prefix;
    std::vector<Number> numbers;
    const auto flush = [&] {
        if (numbers.empty())
            return;
        if (!text.isEmpty())
            text += ',';
        text += prefix.toUtf8() + bracket(rangesText(numbers, false));
        numbers.clear();
    };
    for (const QString& name : names) {
        int start = name.size();
        while (start > 0 && isDigit(name.at(start - 1)) && name.size() - start < s_maximumDigits)
            --start;
        if (start == name.size()) {
            flush();
            if (!text.isEmpty())
                text += ',';
            text += name.toUtf8();
            continue;
        }
        const QStringView text1 = QStringView(name).left(start);
        if (!numbers.empty() && text1 != prefix)
            flush();
        prefix = text1;
        numbers.push_back(number(QStringView(name).mid(start)));
    }
    flush();
    return text;
}

std::size_t zoHostNames::rangeLength(const std::vector<QString>& names, std::size_t begin)
{
    const zoHPCNumberedName first(names[begin]);
    // Without a number nothing can be counted on; a number that does not fit reads as 0.
    if (!first.isCountable())
        return 1;
    const std::size_t maximum =
        std::size_t(zoHPCHostRange::longestFrom(first)); // the reader of ranges fills no more
    std::size_t length = 1;
    while (begin + length < names.size() && length < maximum &&
           names[begin + length] == first.name(int(length)))
        ++length;
    return length;
}
