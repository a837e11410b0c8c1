#include "zoHPCCarryOver.h"

#include "zoHPCItemsById.h"
#include "zoHPCTreeItem.h"
#include "zoHPCTreeWalk.h"

#include <algorithm>
#include <vector>

namespace
{
using Items = std::vector<zoHPCTreeItem*>;

Items preOrder(const Items& tops)
{
    Items all;
    for (zoHPCTreeItem* top : tops)
        top->getAllSubItems(all);
    return all;
}

// The master's own options can be met by no id when it has no name, as usual.
bool hasAnythingToTake(zoHPCTreeItem* master)
{
    if (!master->hostName().isEmpty())
        return true;
    bool isPlain = true;
    zoHPCTreeWalk::forEachBelow<zoHPCTreeItem>(
        master, [&isPlain](const zoHPCTreeItem* item) { return isPlain = item->isPlain(); });
    return !isPlain;
}

// How many items, both trees in pre-order, are at the same place in the same company: their ids are the same.
std::size_t commonStart(const Items& first, const Items& second)
{
    const std::size_t count = std::min(first.size(), second.size());
    std::size_t i = 0;
    bool isSamePlace = true;
    while (isSamePlace && i < count && first[i]->isNetwork() == second[i]->isNetwork() &&
           first[i]->hostName() == second[i]->hostName()) {
        isSamePlace = first[i]->childCount() == second[i]->childCount();
        ++i;
    }
    return i;
}
} // namespace

bool zoHPCCarryOver::run(zoHPCTreeItem* oldMaster, const QList<QTreeWidgetItem*>& newNetworks)
{
    if (!hasAnythingToTake(oldMaster))
        return false; // equal to what new items are

    Items newTops;
    newTops.reserve(std::size_t(newNetworks.size()));
    for (QTreeWidgetItem* network : newNetworks)
        newTops.push_back(static_cast<zoHPCTreeItem*>(network));
    const Items newItems = preOrder(newTops);

    // As far as nothing changed, which most often is the whole tree, no id needs to be formed. A master with a
    // name takes part in the ids of the old tree alone.
    std::size_t taken = 0;
    Items oldItems;
    if (oldMaster->hostName().isEmpty()) {
        oldItems = preOrder(oldMaster->items());
        taken = commonStart(oldItems, newItems);
        for (std::size_t i = 0; i < taken; ++i)
            newItems[i]->takeOver(*oldItems[i]);
    }
    if (taken == newItems.size())
        return true;

    zoClusterPlaces places;
    zoHPCItemsById oldIds(places);
    oldIds.reserve(oldItems.size());
    oldIds.enter({oldMaster}, [](zoHPCTreeItem*, int) {});
    zoHPCItemsById newIds(places);
    newIds.reserve(newItems.size());
    std::size_t entered = 0;
    newIds.enter(newTops, [&](zoHPCTreeItem* item, int entry) {
        if (entered++ < taken)
            return;
        if (const zoHPCTreeItem* previous = oldIds.findSame(newIds, entry))
            item->takeOver(*previous);
    });
    return true;
}
