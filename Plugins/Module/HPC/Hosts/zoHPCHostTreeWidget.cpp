#include "zoHPCHostTreeWidget.h"

#include "zoHPCTreeItem.h"
#include "zoHPCTreeWalk.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>

zoHPCHostTreeWidget::zoHPCHostTreeWidget(QWidget* parent) : QTreeWidget(parent)
{
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setDragDropMode(QAbstractItemView::InternalMove);
    setDropIndicatorShown(true);
}

std::vector<zoHPCTreeItem*> zoHPCHostTreeWidget::draggedNodes() const
{
    const QList<QTreeWidgetItem*> items = selectedItems();
    for (const QTreeWidgetItem* item : items) {
        if (!static_cast<const zoHPCTreeItem*>(item)->isNode())
            return {};
    }
    std::vector<zoHPCTreeItem*> nodes;
    zoHPCTreeWalk::forEachBelow<zoHPCTreeItem>(invisibleRootItem(), [&nodes](zoHPCTreeItem* item) {
        const QTreeWidgetItem* above = item->isSelected() ? item->parent() : nullptr;
        if (above == nullptr)
            return;
        while (above != nullptr && !above->isSelected())
            above = above->parent();
        if (above == nullptr)
            nodes.push_back(item);
    });
    return nodes;
}

zoHPCHostTreeWidget::Target zoHPCHostTreeWidget::targetAt(QTreeWidgetItem* item, Place place)
{
    auto* const row = static_cast<zoHPCTreeItem*>(item);
    if (row == nullptr || place == Place::Nowhere)
        return {};
    if (row->isNetwork()) {
        if (place == Place::On)
            return {row, row->childCount()};
        return place == Place::Below && row->isExpanded() ? Target{row, 0} : Target{};
    }
    zoHPCTreeItem* const network = row->getParent();
    if (!row->isNode() || network == nullptr || !network->isNetwork())
        return {};
    return {network, network->indexOfChild(row) + (place == Place::Above ? 0 : 1)};
}

void zoHPCHostTreeWidget::startDrag(Qt::DropActions actions)
{
    Q_UNUSED(actions)
    const std::vector<zoHPCTreeItem*> nodes = draggedNodes();
    if (m_isFixed || nodes.empty())
        return;
    auto* drag = new QDrag(this);
    drag->setMimeData(model()->mimeData({indexFromItem(nodes.front())}));
    drag->setPixmap(nodes.front()->icon(0).pixmap(iconSize().isValid() ? iconSize() : QSize(16, 16)));
    // The rows are moved when they are dropped; the base class would remove them afterwards.
    drag->exec(Qt::MoveAction);
}

void zoHPCHostTreeWidget::dragMoveEvent(QDragMoveEvent* event)
{
    QTreeWidget::dragMoveEvent(event); // scrolls, and shows where
    if (event->isAccepted() && targetOf(*event).network == nullptr)
        event->ignore();
}

void zoHPCHostTreeWidget::dropEvent(QDropEvent* event)
{
    const Target target = targetOf(*event);
    const std::vector<zoHPCTreeItem*> nodes = draggedNodes();
    stopAutoScroll();
    setState(NoState);
    viewport()->update();
    if (event->source() != this || m_isFixed || target.network == nullptr || nodes.empty()) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::MoveAction);
    event->accept();
    emit nodesDropped(nodes, target.network, target.row);
}

// A node cannot come below itself.
zoHPCHostTreeWidget::Target zoHPCHostTreeWidget::targetOf(const QDropEvent& event) const
{
    const DropIndicatorPosition position = dropIndicatorPosition();
    const Place place = position == OnItem      ? Place::On
                        : position == AboveItem ? Place::Above
                        : position == BelowItem ? Place::Below
                                                : Place::Nowhere;
    const Target target = targetAt(itemAt(event.pos()), place);
    for (QTreeWidgetItem* above = target.network; above != nullptr; above = above->parent()) {
        if (above->isSelected())
            return {};
    }
    return target;
}
