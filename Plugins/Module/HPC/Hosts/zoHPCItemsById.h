#pragma once

#include "zoHPCTreeItem.h"
#include "zoHPCTreeWalk.h"

#include <zoClusterIds.h>

#include <QString>

#include <vector>

// The items of a host tree by their ids. Equal to entering the items one after the other with
// zoHPCTreeItem::addToIDCache(), and linear in their number.
class zoHPCItemsById final
{
public:
    zoHPCItemsById() : m_ids(m_places) {}
    // Tables that are compared share the places, which outlive them.
    explicit zoHPCItemsById(zoClusterPlaces& places) : m_ids(places) {}

    // Enters a node or the master, or a network; returns the number of its entry.
    int addName(const QString& name, zoHPCTreeItem* item);
    int addNetwork(int place, zoHPCTreeItem* item); // see zoClusterPlaces
    QString id(int entry) const { return m_ids.id(entry); }

    // Enters trees in pre-order, in which ids are given. `entered` gets each item and the number of its entry.
    template <class Entered>
    void enter(const std::vector<zoHPCTreeItem*>& tops, Entered entered);

    // Null when there is none.
    zoHPCTreeItem* findName(const QString& id) const { return at(m_ids.find(id)); }
    // The item here that has the id of an entry of `other`.
    zoHPCTreeItem* findSame(const zoHPCItemsById& other, int entry) const;

    void reserve(std::size_t count);

private:
    zoHPCTreeItem* at(int entry) const;

    zoClusterPlaces m_places; // unless they are shared
    zoClusterIds m_ids;
    std::vector<zoHPCTreeItem*> m_items; // by entry
};

template <class Entered>
void zoHPCItemsById::enter(const std::vector<zoHPCTreeItem*>& tops, Entered entered)
{
    zoHPCTreeWalk::inherit(tops, zoClusterPlaces::Top, [&](zoHPCTreeItem* item, int row, int place) {
        if (item->isNetwork()) {
            place = m_ids.places().child(place, row);
            entered(item, addNetwork(place, item));
        } else {
            entered(item, addName(item->hostName(), item));
        }
        return place;
    });
}
