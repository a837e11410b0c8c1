#include "zoHPCTreePlace.h"

#include <QBitArray>
#include <QDataStream>
#include <QIODevice>
#include <QItemSelectionModel>
#include <QScrollBar>
#include <QTreeWidget>

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

namespace
{
using Path = QVector<int>; // rows from the top

Path pathOf(QModelIndex index)
{
    Path path;
    for (; index.isValid(); index = index.parent())
        path.prepend(index.row());
    return path;
}

QModelIndex indexOf(const QTreeWidget& tree, const Path& path)
{
    QModelIndex index;
    for (const int row : path) {
        index = tree.model()->index(row, 0, index);
        if (!index.isValid())
            break;
    }
    return index;
}

// Selected rows that stand one after the other.
struct Rows
{
    Path parent;
    int first;
    int last;
};

QDataStream& operator<<(QDataStream& stream, const Rows& rows)
{
    return stream << rows.parent << rows.first << rows.last;
}

QDataStream& operator>>(QDataStream& stream, Rows& rows)
{
    return stream >> rows.parent >> rows.first >> rows.last;
}

// Empty when there is but one, the current one, as mostly.
QVector<Rows> selectedRows(const QTreeWidget& tree)
{
    QVector<Rows> all;
    const QItemSelection selection = tree.selectionModel()->selection();
    if (selection.size() == 1 && selection.first().height() == 1 &&
        selection.first().contains(tree.currentIndex()))
        return all;
    for (const QItemSelectionRange& range : selection)
        all.append({pathOf(range.parent()), range.top(), range.bottom()});
    std::sort(all.begin(), all.end(), [](const Rows& left, const Rows& right) {
        return std::tie(left.parent, left.first) < std::tie(right.parent, right.first);
    });
    QVector<Rows> merged;
    for (const Rows& rows : qAsConst(all)) {
        if (!merged.isEmpty() && merged.last().parent == rows.parent && merged.last().last + 1 == rows.first)
            merged.last().last = rows.last;
        else
            merged.append(rows);
    }
    return merged;
}

// The rows that have children, each before those below it.
template <class Visit>
void forEachParent(const QTreeWidget& tree, Visit visit)
{
    std::vector<std::pair<const QTreeWidgetItem*, QModelIndex>> waiting{
        {tree.invisibleRootItem(), QModelIndex()}};
    while (!waiting.empty()) {
        const auto [item, index] = waiting.back();
        waiting.pop_back();
        if (index.isValid())
            visit(index);
        for (int row = item->childCount() - 1; row >= 0; --row) {
            if (item->child(row)->childCount() > 0)
                waiting.emplace_back(item->child(row), tree.model()->index(row, 0, index));
        }
    }
}

void select(const QTreeWidget& tree, const QVector<Rows>& all)
{
    QItemSelection selection;
    for (const Rows& rows : all) {
        const QModelIndex parent = indexOf(tree, rows.parent);
        const int last = qMin(rows.last, tree.model()->rowCount(parent) - 1);
        if ((rows.parent.isEmpty() || parent.isValid()) && rows.first <= last)
            selection.select(tree.model()->index(rows.first, 0, parent),
                             tree.model()->index(last, 0, parent));
    }
    if (!selection.isEmpty())
        tree.selectionModel()->select(selection, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}
} // namespace

QByteArray zoHPCTreePlace::of(const QTreeWidget& tree)
{
    QBitArray expanded;
    int count = 0;
    forEachParent(tree, [&](const QModelIndex& index) {
        if (count == expanded.size())
            expanded.resize(qMax(64, count * 2));
        expanded.setBit(count++, tree.isExpanded(index));
    });
    expanded.resize(count);
    QByteArray place;
    QDataStream stream(&place, QIODevice::WriteOnly);
    const QModelIndex current = tree.currentIndex();
    stream << pathOf(current) << tree.selectionModel()->isSelected(current) << expanded
           << qint32(tree.verticalScrollBar()->value()) << qint32(tree.horizontalScrollBar()->value())
           << selectedRows(tree);
    return place;
}

bool zoHPCTreePlace::isSelected(const QByteArray& place)
{
    QDataStream stream(place);
    Path current;
    bool isSelected = false;
    stream >> current >> isSelected;
    return isSelected;
}

void zoHPCTreePlace::restore(QTreeWidget& tree, const QByteArray& place)
{
    QDataStream stream(place);
    Path current;
    bool isSelected = false;
    QBitArray expanded;
    qint32 vertical = 0;
    qint32 horizontal = 0;
    QVector<Rows> selected;
    stream >> current >> isSelected >> expanded >> vertical >> horizontal >> selected;
    if (stream.status() != QDataStream::Ok)
        return;
    int count = 0;
    forEachParent(tree, [&](const QModelIndex& index) {
        if (count < expanded.size() && tree.isExpanded(index) != expanded.at(count))
            tree.setExpanded(index, expanded.at(count));
        ++count;
    });
    const QModelIndex index = indexOf(tree, current);
    const bool keepsAutoScroll = tree.hasAutoScroll();
    tree.setAutoScroll(false); // the place in view comes back, not the row to the middle
    tree.selectionModel()->setCurrentIndex(index, isSelected ? QItemSelectionModel::ClearAndSelect
                                                             : QItemSelectionModel::NoUpdate);
    if (!isSelected)
        tree.clearSelection();
    select(tree, selected);
    tree.setAutoScroll(keepsAutoScroll);
    // The bars know their ranges once rows have their places.
    tree.doItemsLayout();
    tree.verticalScrollBar()->setValue(vertical);
    tree.horizontalScrollBar()->setValue(horizontal);
}
