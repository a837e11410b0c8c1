#pragma once

#include <QTreeWidgetItem>

#include <type_traits>
#include <vector>

// Walks over a tree of items from the top down, each parent before its children, children in row order. None of
// them recurses: a host tree may be deeper than the stack. Items must not be added or taken out meanwhile.
namespace zoHPCTreeWalk
{
// `visit` gets each item, `top` first. One that returns bool ends the walk with false.
template <class Item, class Visit>
void forEach(Item* top, Visit visit)
{
    std::vector<Item*> waiting{top};
    while (!waiting.empty()) {
        Item* item = waiting.back();
        waiting.pop_back();
        if constexpr (std::is_same_v<decltype(visit(item)), bool>) {
            if (!visit(item))
                return;
        } else {
            visit(item);
        }
        for (int row = item->childCount() - 1; row >= 0; --row)
            waiting.push_back(static_cast<Item*>(item->child(row)));
    }
}

// As forEach(), without `top`, which may be of another class.
template <class Item, class Visit>
void forEachBelow(const QTreeWidgetItem* top, Visit visit)
{
    bool isGoingOn = true;
    for (int row = 0; row < top->childCount() && isGoingOn; ++row) {
        forEach(static_cast<Item*>(top->child(row)), [&](Item* item) {
            if constexpr (std::is_same_v<decltype(visit(item)), bool>)
                isGoingOn = visit(item);
            else
                visit(item);
            return isGoingOn;
        });
    }
}

// `visit` gets each item, its row, and what it returned for the parent (`state` for the items of `tops`), and
// returns what the item's children get. The rows of `tops` are their places in the list.
template <class Item, class State, class Visit>
void inherit(const std::vector<Item*>& tops, const State& state, Visit visit)
{
    struct Place
    {
        Item* item;
        int row;
        State above;
    };
    std::vector<Place> waiting;
    for (int row = int(tops.size()) - 1; row >= 0; --row)
        waiting.push_back({tops[std::size_t(row)], row, state});
    while (!waiting.empty()) {
        const Place place = waiting.back();
        waiting.pop_back();
        const State below = visit(place.item, place.row, place.above);
        for (int row = place.item->childCount() - 1; row >= 0; --row)
            waiting.push_back({static_cast<Item*>(place.item->child(row)), row, below});
    }
}

// `enter` gets each item before those below it, `leave` after them.
template <class Item, class Enter, class Leave>
void around(Item* top, Enter enter, Leave leave)
{
    struct Place
    {
        Item* item;
        int next;
    };
    enter(top);
    std::vector<Place> places{{top, 0}};
    while (!places.empty()) {
        Place& place = places.back();
        if (place.next >= place.item->childCount()) {
            Item* item = place.item;
            places.pop_back();
            leave(item);
            continue;
        }
        auto* child = static_cast<Item*>(place.item->child(place.next++));
        enter(child);
        places.push_back({child, 0});
    }
}
} // namespace zoHPCTreeWalk
