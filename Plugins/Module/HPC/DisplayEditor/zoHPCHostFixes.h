#pragma once

#include <QPersistentModelIndex>
#include <QPointer>
#include <QString>

#include <utility>
#include <vector>

class zoHPCTreeGUIW;
class zoHPCTreeItem;

// What fixes of problems changed in the host tree, so that it can be taken back: rows and what their option
// "enabled" was.
class zoHPCHostFixes final
{
public:
    zoHPCHostFixes();
    ~zoHPCHostFixes();

    // Not owned, may be null and may go first.
    void setHostTree(zoHPCTreeGUIW* hosts);
    zoHPCTreeGUIW* hostTree() const;

    // Around a fix.
    void noteBefore();
    void noteAfter();

    // Gives all rows that are still in the tree what they had, and lets the tree announce it.
    void takeBack();
    // What was changed so far stays.
    void clear();

private:
    QPointer<zoHPCTreeGUIW> m_hosts;
    std::vector<std::pair<zoHPCTreeItem*, QString>> m_before;
    std::vector<std::pair<QPersistentModelIndex, QString>> m_changes;
};
