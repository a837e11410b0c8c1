#pragma once

#include <QDomElement>
#include <QList>
#include <QString>

#include <memory>
#include <utility>
#include <vector>

class QTreeWidgetItem;
class zoHPCTreeContext;
class zoHPCTreeItem;

// Builds the items of the host tree from the elements of a configuration document. They hang in no tree until
// attach().
class zoHPCHostsSectionReader final
{
public:
    // `networkText` is what networks without a description show.
    zoHPCHostsSectionReader(zoHPCTreeContext* context, zoHPCTreeItem* master, const QString& networkText);
    ~zoHPCHostsSectionReader();
    zoHPCHostsSectionReader(const zoHPCHostsSectionReader&) = delete;
    zoHPCHostsSectionReader& operator=(const zoHPCHostsSectionReader&) = delete;

    // Reads an element and what is in it for `parent`, which may be null. False when the elements are nested
    // too deep.
    bool read(zoHPCTreeItem* parent, const QDomElement& element);
    // In levels of the tree, the master being the first.
    int depthLimit() const { return m_depthLimit; }
    // Hangs the items where they belong, and gives the master its options.
    void attach(zoHPCTreeItem* parent);

    bool hasHostFile() const { return m_hasHostFile; }
    const QString& hostFile() const { return m_hostFile; }

private:
    // Items below one parent: `pending` until one of them gets a child or the parent is complete. An item must
    // be attached while nothing hangs below it; only the lists of the living parents wait for attach().
    struct Parent
    {
        QTreeWidgetItem* item;           // null for no item
        QList<QTreeWidgetItem*>* living; // set when the item is in the tree
        QList<QTreeWidgetItem*> pending;
        int depth;

        void append(QTreeWidgetItem* child);
        void flush();
    };
    struct Place
    {
        QDomElement next;
        Parent* into;
        std::unique_ptr<Parent> own;
    };

    bool open(const QDomElement& element, Parent* into);
    zoHPCTreeItem* newItem(const QDomElement& element);
    void applyAttributes(const QDomElement& element, zoHPCTreeItem* item);
    static void attach(QList<QTreeWidgetItem*>& items, zoHPCTreeItem* parent);

    zoHPCTreeContext* m_context; // not owned
    zoHPCTreeItem* m_master;     // not owned
    const QString m_networkText;
    const int m_depthLimit;
    std::vector<Place> m_places; // open elements
    QList<QTreeWidgetItem*> m_itemsOfMaster;
    QList<QTreeWidgetItem*> m_itemsOfParent;
    Parent m_underMaster;
    std::vector<std::pair<QString, QString>> m_masterOptions;
    bool m_hasHostFile = false;
    QString m_hostFile;
};
