#include "zoClusterIds.h"

#include <algorithm>
#include <climits>

namespace
{
const QLatin1String s_prefix("Network:/");
constexpr int s_noPlace = -1;

quint64 keyOf(int place, int row)
{
    return quint64(uint(place)) << 32 | uint(row);
}

// Reads a row and the "/" behind it as they are written, without leading zeros; false when there is none.
bool readRow(const QString& text, int& position, int& row)
{
    qint64 number = 0;
    int p = position;
    for (; p < text.size() && text.at(p) >= QLatin1Char('0') && text.at(p) <= QLatin1Char('9'); ++p) {
        number = number * 10 + (text.at(p).unicode() - '0');
        if (number > INT_MAX || (p > position && text.at(position) == QLatin1Char('0')))
            return false;
    }
    if (p == position || p == text.size() || text.at(p) != QLatin1Char('/'))
        return false;
    row = int(number);
    position = p + 1;
    return true;
}

// Splits an id into the place that it begins with and the rest. `step` gives the number of a place below
// another one, or a negative one when there is none.
template <class Step>
int splitId(const QString& id, QString& rest, Step step)
{
    if (!id.startsWith(s_prefix)) {
        rest = id;
        return s_noPlace;
    }
    int place = zoClusterPlaces::Top;
    int position = s_prefix.size();
    for (int row = 0; place >= 0 && readRow(id, position, row);)
        place = step(place, row);
    rest = id.mid(position);
    return place;
}
} // namespace

int zoClusterPlaces::child(int place, int row)
{
    const int known = find(place, row);
    if (known >= 0)
        return known;
    m_places.push_back({place, row});
    const int number = int(m_places.size());
    m_numbers.insert(keyOf(place, row), number);
    return number;
}

int zoClusterPlaces::find(int place, int row) const
{
    return m_numbers.value(keyOf(place, row), -1);
}

QString zoClusterPlaces::text(int place) const
{
    std::vector<int> rows;
    for (; place != Top; place = m_places[std::size_t(place) - 1].above)
        rows.push_back(m_places[std::size_t(place) - 1].row);
    return text(rows);
}

QString zoClusterPlaces::text(const std::vector<int>& rowsUpwards)
{
    QString text = s_prefix;
    for (auto row = rowsUpwards.crbegin(); row != rowsUpwards.crend(); ++row)
        text += QString::number(*row) + QLatin1Char('/');
    return text;
}

int zoClusterIds::addName(const QString& name)
{
    QString rest;
    const int place = splitId(name, rest, [this](int above, int row) { return m_places.child(above, row); });
    return add(place, rest);
}

int zoClusterIds::addNetwork(int place)
{
    return add(place, QString());
}

QString zoClusterIds::id(int entry) const
{
    const Key& key = m_entries[std::size_t(entry)].key;
    return key.place == s_noPlace ? key.rest : m_places.text(key.place) + key.rest;
}

int zoClusterIds::find(const QString& id) const
{
    // A place that is not known is none of an entry either.
    bool isKnown = true;
    QString rest;
    const int place = splitId(id, rest, [this, &isKnown](int above, int row) {
        const int found = m_places.find(above, row);
        isKnown = found >= 0;
        return found;
    });
    return isKnown ? find({place, rest, hashOf(place, rest)}) : None;
}

int zoClusterIds::findSame(const zoClusterIds& other, int entry) const
{
    return find(other.m_entries[std::size_t(entry)].key);
}

uint zoClusterIds::hashOf(int place, const QString& rest)
{
    return uint(place == s_noPlace ? qHash(rest) : qHash(rest, uint(place) * 2654435769U + 1));
}

int zoClusterIds::find(const Key& key) const
{
    if (m_slots.empty())
        return None;
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t slot = key.hash & mask; m_slots[slot] != None; slot = (slot + 1) & mask) {
        const Key& entry = m_entries[std::size_t(m_slots[slot])].key;
        if (entry.hash == key.hash && entry.place == key.place && entry.rest == key.rest)
            return m_slots[slot];
    }
    return None;
}

int zoClusterIds::add(int place, const QString& rest)
{
    Key key{place, rest, hashOf(place, rest)};
    const int first = find(key);
    if (first == None)
        return insert(key);

    // Suffixes below the next one are taken for good.
    int suffix = m_entries[std::size_t(first)].nextSuffix;
    key.rest = freeId(rest, suffix, [this, &key](const QString& candidate) {
        key.hash = hashOf(key.place, candidate);
        return find({key.place, candidate, key.hash}) != None;
    });
    m_entries[std::size_t(first)].nextSuffix = suffix;
    return insert(key);
}

int zoClusterIds::insert(const Key& key)
{
    if (2 * (m_entries.size() + 1) > m_slots.size())
        reserve(std::max<std::size_t>(8, 2 * m_entries.size()));
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = key.hash & mask;
    while (m_slots[slot] != None)
        slot = (slot + 1) & mask;
    m_slots[slot] = int(m_entries.size());
    m_entries.push_back({key, 2});
    return m_slots[slot];
}

void zoClusterIds::reserve(std::size_t count)
{
    m_entries.reserve(count);
    std::size_t slotCount = 16;
    while (slotCount < 2 * count)
        slotCount *= 2;
    if (slotCount <= m_slots.size())
        return;
    m_slots.assign(slotCount, None);
    const std::size_t mask = slotCount - 1;
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        std::size_t slot = m_entries[i].key.hash & mask;
        while (m_slots[slot] != None)
            slot = (slot + 1) & mask;
        m_slots[slot] = int(i);
    }
}
