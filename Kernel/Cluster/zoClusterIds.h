#pragma once

#include <QHash>
#include <QString>

#include <cstddef>
#include <vector>

#include <zoKernelExport.h>

// The places of networks as small numbers, shared by tables of ids that are compared. A place is the rows of
// the networks from the top one down, written "Network:/0/1/".
class ZO_KERNEL_EXPORT zoClusterPlaces final
{
public:
    static constexpr int Top = 0; // of no network

    // Number of the place that extends `place` by a row.
    int child(int place, int row);
    // The same, -1 when nobody asked for that place before.
    int find(int place, int row) const;
    QString text(int place) const;

    // The text of a place from the rows, the last one first.
    static QString text(const std::vector<int>& rowsUpwards);

private:
    struct Place
    {
        int above;
        int row;
    };

    QHash<quint64, int> m_numbers;
    std::vector<Place> m_places; // from number 1 on
};

// The ids of the rows of a host tree, which are given in pre-order: a node's is its host name, a network's its
// place. A row whose id is taken gets the first free one of id_2, id_3, ... Sessions name their nodes by these
// ids, so that host and module must agree on them.
class ZO_KERNEL_EXPORT zoClusterIds final
{
public:
    static constexpr int None = -1;

    // The places outlive the table.
    explicit zoClusterIds(zoClusterPlaces& places) : m_places(places) {}
    zoClusterIds(const zoClusterIds&) = delete;
    zoClusterIds& operator=(const zoClusterIds&) = delete;

    zoClusterPlaces& places() const { return m_places; }

    void reserve(std::size_t count);
    // Enters a node or the master, or a network by its place; returns the number of its entry. Entries are
    // numbered from 0 in the order of the calls.
    int addName(const QString& name);
    int addNetwork(int place);

    QString id(int entry) const;
    // The entry of an id; None when there is none.
    int find(const QString& id) const;
    // The entry that has the id of an entry of `other`, which shares the places.
    int findSame(const zoClusterIds& other, int entry) const;

    // The first free one of id_2, id_3, ..., beginning with `suffix`, which then is the next one.
    template <class IsTaken>
    static QString freeId(const QString& id, int& suffix, IsTaken isTaken)
    {
        QString candidate;
        do
            candidate = id + QLatin1Char('_') + QString::number(suffix++);
        while (isTaken(candidate));
        return candidate;
    }

private:
    // An id as the place that it begins with and the rest. Networks may be thousands of levels deep, and ids as
    // long; names of nodes begin with no place, but for those that are made like one.
    struct Key
    {
        int place;
        QString rest;
        uint hash;
    };
    struct Entry
    {
        Key key;
        int nextSuffix;
    };

    static uint hashOf(int place, const QString& rest);
    int find(const Key& key) const;
    int add(int place, const QString& rest);
    int insert(const Key& key);

    zoClusterPlaces& m_places;
    std::vector<Entry> m_entries;
    std::vector<int> m_slots; // indices of entries, None for a free one; its size is a power of two
};
