#include "zoHPCDisplayTrees.h"

#include "zoHPCProjectionItem.h"
#include "zoHPCTreeRows.h"
#include "zoHPCViewportItem.h"

#include <QSet>
#include <QTreeWidget>

zoHPCDisplayTrees::BulkChange::BulkChange(const zoHPCDisplayTrees& trees)
    : m_outputs(trees.m_outputs), m_blocker(m_outputs->model())
{
}

zoHPCDisplayTrees::BulkChange::~BulkChange()
{
    m_outputs->viewport()->update();
}

zoHPCDisplayTrees::zoHPCDisplayTrees(QTreeWidget* projections, QTreeWidget* outputs)
    : m_projections(projections), m_outputs(outputs)
{
    m_projections->setColumnCount(zoHPCProjectionItem::ColumnCount);
    m_outputs->setColumnCount(zoHPCViewportItem::ColumnCount);
    for (QTreeWidget* tree : {m_projections, m_outputs})
        zoHPCTreeRows::showFirstColumnOnly(tree);
}

zoHPCProjectionItem* zoHPCDisplayTrees::currentProjection() const
{
    return dynamic_cast<zoHPCProjectionItem*>(m_projections->currentItem());
}

zoHPCDisplayItem* zoHPCDisplayTrees::currentOutput() const
{
    return dynamic_cast<zoHPCDisplayItem*>(m_outputs->currentItem());
}

zoHPCDisplayItem* zoHPCDisplayTrees::currentDisplay() const
{
    QTreeWidgetItem* item = m_outputs->currentItem();
    while (item && !isPlainDisplay(item))
        item = item->parent();
    return static_cast<zoHPCDisplayItem*>(item);
}

zoHPCWindowItem* zoHPCDisplayTrees::currentWindow() const
{
    QTreeWidgetItem* item = m_outputs->currentItem();
    while (item && !isPlainWindow(item))
        item = item->parent();
    return static_cast<zoHPCWindowItem*>(item);
}

void zoHPCDisplayTrees::addProjection(std::unique_ptr<zoHPCProjectionItem> projection)
{
    zoHPCProjectionItem* const item = projection.release();
    m_projections->addTopLevelItem(item);
    zoHPCTreeRows::choose(m_projections, item);
}

void zoHPCDisplayTrees::addDisplay()
{
    auto* const display = new zoHPCDisplayItem;
    m_outputs->addTopLevelItem(display);
    if (!m_outputs->currentItem())
        zoHPCTreeRows::choose(m_outputs, display);
}

bool zoHPCDisplayTrees::addOutput(std::unique_ptr<zoHPCDisplayItem> item)
{
    QTreeWidgetItem* parent = m_outputs->invisibleRootItem();
    if (isViewport(item.get()))
        parent = currentWindow();
    else if (isPlainWindow(item.get()))
        parent = currentDisplay();
    if (!parent)
        return false;
    zoHPCDisplayItem* const added = item.release();
    parent->addChild(added);
    parent->setExpanded(true);
    zoHPCTreeRows::choose(m_outputs, added);
    return true;
}

std::vector<std::unique_ptr<QTreeWidgetItem>> zoHPCDisplayTrees::takeChosen(QTreeWidget* tree)
{
    const QList<QTreeWidgetItem*> rows = tree->selectedItems();
    const QSet<const QTreeWidgetItem*> selected(rows.cbegin(), rows.cend());
    std::vector<QTreeWidgetItem*> chosen;
    for (QTreeWidgetItem* row : rows) {
        bool goesWithAnother = dynamic_cast<const zoHPCProjectionItem*>(row) != nullptr && row->parent();
        for (const QTreeWidgetItem* above = row->parent(); above && !goesWithAnother; above = above->parent())
            goesWithAnother = selected.contains(above);
        if (!goesWithAnother)
            chosen.push_back(row);
    }
    if (rows.size() < 2)
        chosen.assign(tree->currentItem() ? 1 : 0, tree->currentItem());
    std::vector<std::unique_ptr<QTreeWidgetItem>> taken;
    for (QTreeWidgetItem* row : chosen) {
        if (QTreeWidgetItem* const parent = row->parent())
            parent->removeChild(row);
        else
            tree->takeTopLevelItem(tree->indexOfTopLevelItem(row));
        taken.emplace_back(row);
    }
    // The view has moved on, without selecting where it is now.
    if (!taken.empty() && tree->currentItem() && tree->selectedItems().isEmpty())
        zoHPCTreeRows::choose(tree, tree->currentItem());
    return taken;
}

QTreeWidgetItem* zoHPCDisplayTrees::replaceByChildren(zoHPCProjectionItem* projection)
{
    const int row = m_projections->indexOfTopLevelItem(projection);
    const QList<QTreeWidgetItem*> children = projection->takeChildren();
    delete m_projections->takeTopLevelItem(row);
    m_projections->insertTopLevelItems(row, children);
    return children.constFirst();
}

void zoHPCDisplayTrees::clear()
{
    m_projections->clear();
    m_outputs->clear();
}

void zoHPCDisplayTrees::clearCurrentRows()
{
    for (QTreeWidget* tree : {m_projections, m_outputs}) {
        tree->clearSelection();
        tree->setCurrentItem(nullptr);
    }
}

bool zoHPCDisplayTrees::regenerate(zoHPCProjectionItem* projection)
{
    QAbstractItemModel* const model = m_projections->model();
    const bool isKept = [&] {
        const QSignalBlocker blocker(model);
        return projection->updateValues();
    }();
    if (isKept) {
        const QModelIndex above = zoHPCTreeRows::indexOf(m_projections, projection);
        // Behind the name and the identifier, which are the same.
        emit model->dataChanged(
            model->index(0, zoHPCProjectionItem::Type, above),
            model->index(projection->childCount() - 1, zoHPCProjectionItem::ColumnCount - 1, above));
        return true;
    }
    QTreeWidgetItem* current = m_projections->currentItem();
    const int row = current && current->parent() == projection ? projection->indexOfChild(current) : -1;
    projection->update();
    if (row >= 0)
        zoHPCTreeRows::choose(m_projections,
                              row < projection->childCount() ? projection->child(row) : projection);
    return false;
}

void zoHPCDisplayTrees::setEyeSeparation(double separation)
{
    for (int i = 0; i < m_outputs->topLevelItemCount(); ++i) {
        if (auto* display = dynamic_cast<zoHPCDisplayItem*>(m_outputs->topLevelItem(i)))
            display->setEyeSeparation(separation);
    }
}

void zoHPCDisplayTrees::setWallDistance(double distance)
{
    QList<zoHPCProjectionItem*> walls = zoHPCTreeWidgetItem::subChildren<zoHPCProjectionItem>(m_projections);
    // From the last: a wall inside a wall goes when the outer one lays out its tiles.
    while (!walls.isEmpty()) {
        zoHPCProjectionItem* const wall = walls.takeLast();
        if (wall->kind() != zoHPCProjectionType::Kind::Wall)
            continue;
        wall->setDouble(zoHPCProjectionItem::Distance, distance);
        regenerate(wall);
    }
}

void zoHPCDisplayTrees::expandOutputs()
{
    // Row by row: expandAll() makes each later insertion slow.
    for (int i = 0; i < m_outputs->topLevelItemCount(); ++i) {
        QTreeWidgetItem* display = m_outputs->topLevelItem(i);
        display->setExpanded(true);
        for (int j = 0; j < display->childCount(); ++j)
            display->child(j)->setExpanded(true);
    }
}

bool zoHPCDisplayTrees::isViewport(const QTreeWidgetItem* item)
{
    return dynamic_cast<const zoHPCViewportItem*>(item) != nullptr;
}

bool zoHPCDisplayTrees::isPlainWindow(const QTreeWidgetItem* item)
{
    return dynamic_cast<const zoHPCWindowItem*>(item) != nullptr && !isViewport(item);
}

bool zoHPCDisplayTrees::isPlainDisplay(const QTreeWidgetItem* item)
{
    return dynamic_cast<const zoHPCDisplayItem*>(item) != nullptr &&
           dynamic_cast<const zoHPCWindowItem*>(item) == nullptr;
}
