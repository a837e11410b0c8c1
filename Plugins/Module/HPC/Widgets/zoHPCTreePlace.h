#pragma once

#include <QByteArray>

class QTreeWidget;

// Where a person is in a tree: the current row, which rows are selected and expanded, and how far it is scrolled.
class zoHPCTreePlace final
{
public:
    zoHPCTreePlace() = delete;

    // A few bits for each row that has children.
    static QByteArray of(const QTreeWidget& tree);
    // Whether the current row was selected, too.
    static bool isSelected(const QByteArray& place);
    // In a tree that may have other rows by now: what is not there any more is left out.
    static void restore(QTreeWidget& tree, const QByteArray& place);
};
