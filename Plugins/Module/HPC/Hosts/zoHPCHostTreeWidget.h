#pragma once

#include "zoHPCTreeItem.h" // whole, as the meta-object of Qt 6 wants what lists in signals point to

#include <QTreeWidget>

#include <vector>

// The rows of a host tree, of which nodes can be dragged into other networks or to another place in their own. It
// moves nothing itself: it tells what was dropped where.
class zoHPCHostTreeWidget final : public QTreeWidget
{
    Q_OBJECT

public:
    explicit zoHPCHostTreeWidget(QWidget* parent = nullptr);

    // The selected nodes in the order of the rows, without those below another one of them; empty when something
    // else is selected, too.
    std::vector<zoHPCTreeItem*> draggedNodes() const;
    // While the rows are fixed nothing can be dragged.
    void setFixed(bool isFixed) { m_isFixed = isFixed; }

    enum class Place { Above, On, Below, Nowhere };
    struct Target
    {
        zoHPCTreeItem* network = nullptr; // null: nothing can be dropped there
        int row = 0;                      // in it, before anything moves
    };
    // What dropping at an item, which may be null, means.
    static Target targetAt(QTreeWidgetItem* item, Place place);

signals:
    void nodesDropped(const std::vector<zoHPCTreeItem*>& nodes, zoHPCTreeItem* network, int row);

protected:
    void startDrag(Qt::DropActions actions) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    Target targetOf(const QDropEvent& event) const;

    bool m_isFixed = false;
};
