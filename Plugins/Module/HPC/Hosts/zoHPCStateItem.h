#pragma once

#include <QTreeWidgetItem>

class zoHPCTreeGUIW;

// Row of the host tree that keeps its look as a few bits and answers icon and text colour of column 0 from
// them, so that a cluster of 100,000 nodes changes its state without 100,000 icons being stored.
class zoHPCStateItem : public QTreeWidgetItem
{
public:
    // `tree` gives the text colours; not owned, may be null.
    explicit zoHPCStateItem(zoHPCTreeGUIW* tree);

    // An icon or a colour that was set by hand is shown until the next change of state.
    QVariant data(int column, int role) const override;
    void setData(int column, int role, const QVariant& value) override;

    zoHPCTreeGUIW* tree() const { return m_tree; }

protected:
    // What the row shows. Icon kinds are those of zoHPCTreeItem::getIcon().
    struct Look
    {
        bool hasIcon = false;
        int kind = 0;
        bool enabled = true;
        bool running = false;
        bool encrypted = false;
        bool noRender = false;
    };

    // Takes the look over without announcing it; returns whether anything visible changed.
    bool takeLook(const Look& look);

    void announceLook() { emitDataChanged(); }

private:
    // These and the flags of zoHPCTreeItem share one word, which lies in the tail padding of QTreeWidgetItem.
    quint32 m_lookTaken : 1;
    quint32 m_lookHasIcon : 1;
    quint32 m_lookKind : 2;
    quint32 m_lookEnabled : 1;
    quint32 m_lookRunning : 1;
    quint32 m_lookEncrypted : 1;
    quint32 m_lookNoRender : 1;
    quint32 m_ownIcon : 1;
    quint32 m_ownColour : 1;

protected:
    quint32 m_isMaster : 1;
    quint32 m_isNetwork : 1;
    quint32 m_isNode : 1;
    quint32 m_isRunning : 1;
    quint32 m_isDisplayNode : 1;
    quint32 m_uniqueNameIs : 2; // zoHPCTreeItem::UniqueName
    quint32 m_isBuried : 1;     // waits in the view's graveyard
    quint32 m_isEdited : 1;     // an editor shows it or did so
    quint32 m_lookDue : 1;      // zoHPCTreeItem::LookDue: refresh this row
    quint32 m_lookDueBelow : 1; // and all rows below it

private:
    zoHPCTreeGUIW* m_tree; // not owned
};
