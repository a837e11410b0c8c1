#pragma once

#include <QTreeWidgetItem>

class zoHPCTreeContext;

// Row of the host tree that keeps its kind, its marks and its look as a few bits and answers icon and text
// colour of column 0 from them, so that a cluster of 100,000 nodes changes its state without 100,000 icons
// being stored.
class zoHPCTreeRow : public QTreeWidgetItem
{
public:
    // `context` gives the text colours; not owned, may be null.
    explicit zoHPCTreeRow(zoHPCTreeContext* context);

    // An icon or a colour that was set by hand is shown until the next change of state.
    QVariant data(int column, int role) const override;
    void setData(int column, int role, const QVariant& value) override;

    // What its picture says, in words: "running, encrypted". Empty for a row that is as most are.
    QString stateText() const;

    zoHPCTreeContext* context() const { return m_context; }

protected:
    enum Flag : quint32 {
        Master = 1U << 0,
        Network = 1U << 1,
        Node = 1U << 2,
        Running = 1U << 3,
        DisplayNode = 1U << 4,
        LookDue = 1U << 5,      // refresh this row
        LookDueBelow = 1U << 6, // and all rows below it
    };
    // Where the unique name is.
    enum UniqueName : quint32 { UniqueNameEmpty, UniqueNameIsHostName, UniqueNameElsewhere };

    // What the row shows. Icon kinds are those of zoHPCHostIcon.
    struct Look
    {
        bool hasIcon = false;
        int kind = 0;
        bool enabled = true;
        bool running = false;
        bool encrypted = false;
        bool noRender = false;
    };

    bool has(Flag flag) const { return (m_flags & flag) != 0; }
    void set(Flag flag, bool on) { m_flags = on ? m_flags | flag : m_flags & ~quint32(flag); }
    UniqueName uniqueName() const { return UniqueName(quint32(m_uniqueName)); }
    void setUniqueName(UniqueName place) { m_uniqueName = place; }

    // Takes the look over without announcing it; returns whether anything visible changed.
    bool takeLook(const Look& look);
    void announceLook() { emitDataChanged(); }

private:
    // All of these share one word, which lies in the tail padding of QTreeWidgetItem.
    quint32 m_lookTaken : 1;
    quint32 m_lookHasIcon : 1;
    quint32 m_lookKind : 2;
    quint32 m_lookEnabled : 1;
    quint32 m_lookRunning : 1;
    quint32 m_lookEncrypted : 1;
    quint32 m_lookNoRender : 1;
    quint32 m_ownIcon : 1;
    quint32 m_ownColour : 1;
    quint32 m_uniqueName : 2;
    quint32 m_flags : 7;

    zoHPCTreeContext* m_context; // not owned
};
