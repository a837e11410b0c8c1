#pragma once

#include <QList>

class QTreeWidgetItem;
class zoHPCTreeItem;

// What a rebuild of the host tree from hosts text carries over: options, marks and unique names of the items
// whose ids come again.
namespace zoHPCCarryOver
{
// Returns whether there was anything to take. The new networks hang in no tree yet.
bool run(zoHPCTreeItem* oldMaster, const QList<QTreeWidgetItem*>& newNetworks);
} // namespace zoHPCCarryOver
