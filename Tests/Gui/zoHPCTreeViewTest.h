#pragma once

#include "zoTestCase.h"

#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <QTreeWidget>

#include <initializer_list>
#include <memory>

// What the tests of the host tree's view have in common: a view, made anew for each, and words for what it holds.
class zoHPCTreeViewTest : public zoTestCase
{
    Q_OBJECT

protected slots:
    void init();
    void cleanup();

protected:
    static zoHPCTreeItem* asItem(QTreeWidgetItem* item) { return static_cast<zoHPCTreeItem*>(item); }
    static bool sameIcon(const QIcon& a, const QIcon& b);

    // "{a b {c}}": the kinds, names and nesting below an item.
    static QString outline(const QTreeWidgetItem* item);
    QString outline() const;
    // Everything that an item below holds and shows.
    static QString details(const QTreeWidgetItem* item);
    zoHPCTreeItem* item(std::initializer_list<int> rows) const;
    // The ids of the running items.
    QStringList running() const;
    // The section of the document that the view writes.
    QString section();
    void load(const QString& text);

    std::unique_ptr<zoHPCTreeGUIW> m_view;
    QTreeWidget* m_tree = nullptr;
    zoHPCTreeItem* m_master = nullptr;
};
