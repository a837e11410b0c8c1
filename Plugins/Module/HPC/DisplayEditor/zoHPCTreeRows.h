#pragma once

#include <QModelIndex>

class QTreeView;
class QTreeWidget;
class QTreeWidgetItem;

// Rows of a tree widget as model indexes, and back; a tree widget keeps its own functions for that to itself.
namespace zoHPCTreeRows
{
// Both are empty for each other: no row, an invalid index.
QModelIndex indexOf(const QTreeWidget* tree, QTreeWidgetItem* item);
QTreeWidgetItem* itemAt(const QTreeWidget* tree, const QModelIndex& index);

// The row alone becomes current and selected, also in a tree that has several selected.
void choose(QTreeWidget* tree, QTreeWidgetItem* item);

QTreeWidgetItem* topLevelOf(QTreeWidgetItem* item);

// The other columns hold the properties.
void showFirstColumnOnly(QTreeView* view);
} // namespace zoHPCTreeRows
