#include "zoHPCTreeRows.h"

#include <QItemSelectionModel>
#include <QTreeWidget>

QModelIndex zoHPCTreeRows::indexOf(const QTreeWidget* tree, QTreeWidgetItem* item)
{
    if (!item)
        return {};
    QTreeWidgetItem* parent = item->parent();
    const int row = parent ? parent->indexOfChild(item) : tree->indexOfTopLevelItem(item);
    return tree->model()->index(row, 0, indexOf(tree, parent));
}

QTreeWidgetItem* zoHPCTreeRows::itemAt(const QTreeWidget* tree, const QModelIndex& index)
{
    QList<int> rows;
    for (QModelIndex i = index; i.isValid(); i = i.parent())
        rows.prepend(i.row());
    QTreeWidgetItem* item = tree->invisibleRootItem();
    for (const int row : qAsConst(rows))
        item = item ? item->child(row) : nullptr;
    return rows.isEmpty() ? nullptr : item;
}

void zoHPCTreeRows::choose(QTreeWidget* tree, QTreeWidgetItem* item)
{
    tree->setCurrentItem(item, 0, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

QTreeWidgetItem* zoHPCTreeRows::topLevelOf(QTreeWidgetItem* item)
{
    while (item && item->parent())
        item = item->parent();
    return item;
}

void zoHPCTreeRows::showFirstColumnOnly(QTreeView* view)
{
    for (int col = 1; col < view->model()->columnCount(); ++col)
        view->setColumnHidden(col, true);
}
