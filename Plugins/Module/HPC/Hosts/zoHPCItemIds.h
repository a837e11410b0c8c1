#pragma once

#include <QHash>
#include <QString>

#include <vector>

class zoHPCTreeItem;

// Rows of networks from the root down as small numbers, shared between the trees that are compared. Stands
// for the ids of networks, which are as long as the tree is deep.
class zoHPCNetworkPaths final
{
public:
    // Number of the path that extends `path` (0 is the root's) by `row`.
    int child(int path, int row);

private:
    QHash<quint64, int> m_paths;
};

// Index of a tree's items by id, linear in the number of items. Equal to entering the items one after the
// other with zoHPCTreeItem::addToIDCache(), as long as no host is named like a network's id (see
// isAmbiguous()).
class zoHPCItemIds final
{
public:
    // Enters a node or the master; returns the index of its entry for id().
    int addName(const QString& name, zoHPCTreeItem* item);
    const QString& id(int entry) const { return m_entries[std::size_t(entry)].id; }
    // The item that has the id of an entry of `other` here.
    zoHPCTreeItem* findSame(const zoHPCItemIds& other, int entry) const;
    zoHPCTreeItem* findName(const QString& id) const;

    // Enters a network; returns how many had this path before.
    int addNetwork(int path, zoHPCTreeItem* item);
    zoHPCTreeItem* findNetwork(int path, int occurrence) const;

    // A name that could meet the id of a network.
    static bool isAmbiguous(const QString& name);

    void reserve(std::size_t count);

private:
    struct Entry
    {
        QString id;
        zoHPCTreeItem* item;
        uint hash;
        int nextSuffix;
    };

    int find(const QString& id, uint hash) const;
    int insert(const QString& id, uint hash, zoHPCTreeItem* item);

    std::vector<Entry> m_entries;
    std::vector<int> m_slots; // indices of entries, -1 for none; its size is a power of two
    QHash<quint64, zoHPCTreeItem*> m_networks;
    QHash<int, int> m_occurrences;
};
