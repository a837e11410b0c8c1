#pragma once

#include "zoHPCTreeContext.h"

#include <QDomDocument>
#include <QList>
#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class QTreeWidgetItem;
class zoHPCDocumentWriter;
class zoHPCTreeItem;

// The host tree: owns the items from the master down, reads and writes them as hosts text and as a section of
// the configuration document. Needs no window; zoHPCTreeGUIW is the view of one.
class zoHPCHostTree final : public QObject, public zoHPCTreeContext
{
    Q_OBJECT

public:
    // Starts with one network that holds the node "localhost".
    explicit zoHPCHostTree(QObject* parent = nullptr);
    ~zoHPCHostTree() override;

    // Lives as long as the tree. A view may have it as its row; the tree owns it all the same.
    zoHPCTreeItem* master() const { return m_master.get(); }
    // Path of the hosts file that a save reads first; empty for none.
    const QString& hostFile() const { return m_hostFile; }
    // Opaque text that travels with a configuration until the tree is rebuilt from hosts text.
    const QString& booking() const { return m_booking; }

    // Where the text colours of the rows come from; the application's without.
    void setPaletteSource(const std::function<QPalette()>& source) { m_paletteSource = source; }
    QPalette palette() const override;
    // Announces a change of the configuration, after the operation of which it is a part.
    void noteChange() override;

    // New items; index -1 appends. The parent, which must not be null, owns the item. createMaster()'s item
    // belongs to the caller.
    zoHPCTreeItem* createMaster();
    zoHPCTreeItem* createNetwork(QTreeWidgetItem* parent, int index);
    zoHPCTreeItem* createNode(QTreeWidgetItem* parent, const QString& name, int index);
    // Takes an item out of the tree. It lives on until the next rebuild, as somebody may look at it; who puts
    // it into a tree again owns it, and who destroys it may.
    void remove(zoHPCTreeItem* item);
    // The same for several, none of them below another.
    void remove(const std::vector<zoHPCTreeItem*>& items);
    // Moves nodes, none of them below another or above the network, to a row of the network as it is before: in
    // their order. What hangs below them comes along.
    void moveNodes(const std::vector<zoHPCTreeItem*>& nodes, zoHPCTreeItem* network, int row);
    // What changes inside is announced once, afterwards.
    void changeTogether(const std::function<void()>& change);

    // Host names of all nodes, depth first, without the empty ones.
    QStringList getNodeNames() const;
    std::vector<zoHPCTreeItem*> getNodeItems() const;
    // Networks count from 1, depth first; null when there is no such network.
    zoHPCTreeItem* findNetworkByIndex(int index) const;

    // Hosts text. The reader keeps the settings of networks and nodes whose ids match; marks and unique names
    // with them. It never fails, except that text nested too deep for the stack is refused with an error in
    // the log.
    QString getHostsString() const;
    void setHostString(const QString& text);
    // Reads the hosts file; does nothing without one or when it cannot be opened.
    void loadNodesFile();
    void setHostFile(const QString& path);
    // Nodes between the node and its previous sibling, "n1" and "n4": in ascending order, put in between.
    std::vector<zoHPCTreeItem*> insertHostRange(zoHPCTreeItem* node);

    // Section of the configuration document. Saving reads the hosts file first, when there is one.
    void saveToXML(QDomDocument& doc);
    // The same as text, into the root element that the writer has just opened; without a document in between,
    // which large clusters pay for at each change while they run.
    void writeSection(zoHPCDocumentWriter& writer);
    // The same of the tree as it is, whatever a hosts file says by now.
    void writeRows(zoHPCDocumentWriter& writer) const;
    void appendXMLConfig(zoHPCTreeItem* item, QDomDocument& doc, QDomElement& parent) const;
    // False, with an error in the log and nothing changed, for a section that is nested too deep.
    bool loadFromXML(const QDomDocument& doc);
    void setXMLConfig(zoHPCTreeItem* parent, const QDomElement& element);
    void setDefaultConfig();
    // Names, options, hosts file and booking of a tree that has the same rows; the rows stay. False, and nothing
    // is done, for a tree that has others.
    bool takeValues(const zoHPCHostTree& other);

    // Marks the nodes of these ids, and the networks that they are in, as running, and no others.
    void markRunning(const QStringList& ids);

signals:
    // All items below the master are about to be replaced, and were replaced.
    void aboutToReplaceItems();
    void itemsReplaced();
    // Something that a document holds changed: a row, a name, an option, the hosts file or the booking.
    void changed();

private:
    class Operation;

    void keep(const QList<QTreeWidgetItem*>& detached);
    void takeAll();
    void destroyRemoved();
    void writeRows(zoHPCDocumentWriter& writer, const QString& booking) const;

    std::function<QPalette()> m_paletteSource;
    std::unique_ptr<zoHPCTreeItem> m_master;
    QString m_hostFile;
    QString m_booking;
    // Items that were taken out of the tree, as long as they live.
    std::vector<std::weak_ptr<zoHPCTreeItem>> m_removed;
    int m_operations = 0; // that are going on
    bool m_hasChanged = false;
};
