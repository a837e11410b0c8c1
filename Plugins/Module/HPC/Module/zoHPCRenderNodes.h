#pragma once

#include <QSet>
#include <QString>

#include <memory>
#include <utility>
#include <vector>

class zoHPCDisplaySetup;
class zoHPCHostTree;
class zoHPCTreeItem;
class zoHPCWindowItem;

// The names by which windows refer to nodes: gives nodes of the same name numbers, and marks those that have a window.
class zoHPCRenderNodes final
{
public:
    // Neither is owned; both outlive it.
    zoHPCRenderNodes(zoHPCHostTree* hosts, const zoHPCDisplaySetup* displays);

    // Before nodes come into another order: which windows each one has. They keep it with the next update(), whatever
    // it is called by then; no item may go before that.
    void remember();
    // Before a person types the name of a node: its windows follow with each update() until another node is renamed.
    // Those of others do not, should both have one name for a while.
    void beginRename(zoHPCTreeItem* node);
    void update();

private:
    void renameRemembered();
    void followRename();

    zoHPCHostTree* m_hosts;
    const zoHPCDisplaySetup* m_displays;
    std::vector<std::pair<zoHPCWindowItem*, zoHPCTreeItem*>> m_remembered;
    std::weak_ptr<zoHPCTreeItem> m_renamed;
    QString m_renamedName; // what its windows call it
    // Some may be gone: compared only.
    QSet<const zoHPCWindowItem*> m_renamedWindows;
};
