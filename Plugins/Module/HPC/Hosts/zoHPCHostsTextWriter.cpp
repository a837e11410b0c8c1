#include "zoHPCHostsTextWriter.h"

#include "zoHPCHostRange.h"
#include "zoHPCTreeItem.h"

#include <QVarLengthArray>

#include <climits>
#include <cstring>

namespace
{
// Counts a host's number up, digit by digit, and compares it with the names that follow.
class RunName final
{
public:
    explicit RunName(const QString& name)
        : m_number(name)
        , m_prefix(int(m_number.prefix().size()))
        // A longer number may not fit and then counts as 0.
        , m_counts(m_number.digits().size() <= 9)
    {
        if (m_prefix > 0)
            m_expected.append(m_number.prefix().data(), m_prefix);
        if (m_number.digits().isEmpty())
            m_expected.append(QLatin1Char('0'));
        else
            m_expected.append(m_number.digits().data(), int(m_number.digits().size()));
    }

    // Whether `next` might follow `name`: the last digit decides for most that do not.
    static bool mayFollow(const QString& name, const QString& next)
    {
        if (next.isEmpty())
            return false;
        const ushort last = name.isEmpty() ? 0 : name.at(name.size() - 1).unicode();
        const ushort nextLast = next.at(next.size() - 1).unicode();
        // "1" follows names without a number and numbers that do not fit.
        if (nextLast == '1' || last == '\n')
            return true;
        return last >= '0' && last <= '9' && nextLast == (last == '9' ? '0' : last + 1);
    }

    // Hosts of the longest run that reads back as a range. Runs from a name without a number ("host 1 2")
    // never do, and are written all the same.
    int longest() const
    {
        if (m_number.digits().isEmpty())
            return INT_MAX;
        return zoHPCHostRange::longestFrom(m_number);
    }

    // Goes on by one; whether the name is the one expected there.
    bool isNext(const QString& name)
    {
        ++m_offset;
        if (!m_counts)
            return name == m_number.name(m_offset);
        int i = m_expected.size() - 1;
        while (i >= m_prefix && m_expected[i] == QLatin1Char('9'))
            m_expected[i--] = QLatin1Char('0');
        if (i >= m_prefix)
            m_expected[i] = QChar(ushort(m_expected[i].unicode() + 1));
        else
            m_expected.insert(m_prefix, QLatin1Char('1'));
        return isExpected(name);
    }

private:
    bool isExpected(const QString& name) const
    {
        return name.size() == m_expected.size() && std::memcmp(name.constData(), m_expected.constData(),
                                                               sizeof(QChar) * uint(m_expected.size())) == 0;
    }

    const zoHPCNumberedName m_number;
    const int m_prefix;
    const bool m_counts;
    int m_offset = 0;
    QVarLengthArray<QChar, 64> m_expected;
};
} // namespace

void zoHPCHostsTextWriter::writeItem(zoHPCTreeItem* item, int depth)
{
    open(item, depth);
    run();
}

void zoHPCHostsTextWriter::writeRange(const std::vector<zoHPCTreeItem*>& items, int depth)
{
    m_list = &items;
    m_places.push_back({nullptr, 0, int(items.size()), depth, true, -1});
    run();
    m_list = nullptr;
}

void zoHPCHostsTextWriter::writeRangeOfChildren(zoHPCTreeItem* parent, int depth)
{
    m_places.push_back({parent, 0, parent->childCount(), depth, true, -1});
    run();
}

void zoHPCHostsTextWriter::open(zoHPCTreeItem* item, int depth)
{
    if (item->isNetwork()) {
        m_text.append(std::size_t(depth), ' ');
        m_text += "{\n";
        m_places.push_back({item, 0, item->childCount(), depth + 2, true, depth});
        return;
    }
    writeLine(depth, item->hostName());
    if (item->childCount() > 0)
        m_places.push_back({item, 0, item->childCount(), depth, false, -1});
}

void zoHPCHostsTextWriter::run()
{
    while (!m_places.empty()) {
        Place& place = m_places.back();
        if (place.next >= place.count) {
            if (place.closes >= 0) {
                m_text.append(std::size_t(place.closes), ' ');
                m_text += "}\n";
            }
            m_places.pop_back();
            continue;
        }
        zoHPCTreeItem* item = at(place, place.next);
        if (!place.folds) {
            ++place.next;
            open(item, place.depth); // may move the places
            continue;
        }
        const int last = lastOfRun(place);
        if (last > place.next) {
            m_text.append(std::size_t(place.depth), ' ');
            appendName(item->hostName());
            m_text += " - ";
            appendName(at(place, last)->hostName());
            m_text += '\n';
            place.next = last + 1;
            continue;
        }
        ++place.next;
        writeLine(place.depth, item->hostName());
        if (item->childCount() > 0)
            m_places.push_back({item, 0, item->childCount(), place.depth, false, -1});
    }
}

zoHPCTreeItem* zoHPCHostsTextWriter::at(const Place& place, int index) const
{
    return place.parent ? static_cast<zoHPCTreeItem*>(place.parent->child(index))
                        : (*m_list)[std::size_t(index)];
}

// The last item of the run that starts at the next item; that item itself when no run of three starts there.
int zoHPCHostsTextWriter::lastOfRun(const Place& place) const
{
    const int first = place.next;
    if (first + 2 >= place.count)
        return first;
    const zoHPCTreeItem* start = at(place, first);
    if (start->childCount() > 0 || !RunName::mayFollow(start->hostName(), at(place, first + 1)->hostName()))
        return first;
    RunName expected(start->hostName());
    const int longest = expected.longest();
    int last = first;
    while (last + 1 < place.count && last + 1 - first < longest) {
        const zoHPCTreeItem* item = at(place, last + 1);
        if (item->childCount() > 0 || !expected.isNext(item->hostName()))
            break;
        ++last;
    }
    return last - first >= 2 ? last : first;
}

void zoHPCHostsTextWriter::writeLine(int depth, const QString& name)
{
    m_text.append(std::size_t(depth), ' ');
    appendName(name);
    m_text += '\n';
}

void zoHPCHostsTextWriter::appendName(const QString& name)
{
    const std::size_t start = m_text.size();
    const auto length = std::size_t(name.size());
    m_text.resize(start + length);
    char* out = &m_text[start];
    const QChar* in = name.constData();
    ushort seen = 0;
    for (std::size_t i = 0; i < length; ++i) {
        seen |= in[i].unicode();
        out[i] = char(in[i].unicode());
    }
    if (seen >= 0x80) {
        m_text.resize(start);
        m_text += name.toStdString();
    }
}
