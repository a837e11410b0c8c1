#pragma once

#include <QBrush>
#include <QDomDocument>
#include <QIcon>
#include <QList>
#include <QPalette>
#include <QStringList>
#include <QWidget>

#include <array>
#include <memory>
#include <sstream>
#include <vector>

class QAction;
class QTreeWidgetItem;
class Ui_zoHPCTreeGUIW;
class zoHPCDocumentWriter;
class zoHPCHostTree;
class zoHPCTreeFilter;
class zoHPCTreeItem;

// The view of a host tree, which it owns: shows its items and lets people edit them. What reads, writes and
// asks the tree is zoHPCHostTree's.
class zoHPCTreeGUIW final : public QWidget
{
    Q_OBJECT

public:
    explicit zoHPCTreeGUIW(QWidget* parent = nullptr);
    ~zoHPCTreeGUIW() override;

    zoHPCHostTree* hosts() const { return m_hosts.get(); }
    // The view's own top-level item; lives as long as the view.
    zoHPCTreeItem* master() const { return m_master; }
    // The tree's current item, null when there is none.
    zoHPCTreeItem* selectedItem() const;
    void setSelectedItem(zoHPCTreeItem* item);
    // All selected rows in the order of the tree; the current one alone when it is none of them.
    std::vector<zoHPCTreeItem*> selectedItems() const;
    // The box over the rows.
    zoHPCTreeFilter* filter() const { return m_filter; }

    QAction* configAction() const { return m_configAction; }
    QAction* addNetworkAction() const { return m_addNetworkAction; }
    QAction* addHostAction() const { return m_addHostAction; }
    QAction* removeNetworkAction() const { return m_removeNetworkAction; }
    QAction* removeHostAction() const { return m_removeHostAction; }

    // Path of the hosts file that a save reads first; empty for none.
    const QString& hostFile() const;
    // Opaque text that travels with a configuration until the tree is rebuilt from hosts text.
    const QString& booking() const;

    // New items; index -1 appends. The parent, which must not be null, owns the item. createMaster()'s item
    // belongs to the caller.
    zoHPCTreeItem* createMaster();
    zoHPCTreeItem* createNetwork(QTreeWidgetItem* parent, int index);
    zoHPCTreeItem* createNode(QTreeWidgetItem* parent, const QString& name, int index);

    // Host names of all nodes, depth first, without the empty ones.
    QStringList getNodeNames() const;
    std::vector<zoHPCTreeItem*> getNodeItems() const;
    // Networks count from 1, depth first; null when there is no such network.
    zoHPCTreeItem* findNetworkByIndex(int index) const;

    // Hosts text. The reader keeps the settings of networks and nodes whose ids match; marks and unique names
    // with them. It never fails, except that text nested too deep for the stack is refused with an error in
    // the log.
    QString getHostsString();
    void getHostsString(zoHPCTreeItem* item, std::stringstream& out, int depth);
    // For hosts and tests.
    void getHostRangeString(std::vector<zoHPCTreeItem*> items, std::stringstream& out, int depth);
    void setHostString(const QString& text);
    // Reads the hosts file; does nothing without one or when it cannot be opened.
    void loadNodesFile();
    void setHostFile(const QString& path);
    // Nodes between the node and its previous sibling, "n1" and "n4": in ascending order, put in between.
    std::vector<zoHPCTreeItem*> insertHostRange(zoHPCTreeItem* node);
    // The name `offset` numbers further, zero padding kept.
    static QString createHostName(const QString& name, int offset); // for hosts and tests

    // Section of the configuration document. Saving reads the hosts file first, when there is one.
    void saveToXML(QDomDocument& doc);
    // The same as text, into the root element that the writer has just opened; without a document in between,
    // which large clusters pay for at each change while they run.
    void writeSection(zoHPCDocumentWriter& writer);
    // The same of the tree as it is, whatever a hosts file says by now.
    void writeRows(zoHPCDocumentWriter& writer) const;
    void appendXMLConfig(zoHPCTreeItem* item, QDomDocument& doc, QDomElement& parent);
    void loadFromXML(QDomDocument& doc);
    // The same for what the tree held before: where its rows are those of the document they stay, and with them
    // what is selected.
    void restore(QDomDocument& doc);
    void setXMLConfig(zoHPCTreeItem* parent, QDomElement element);
    void setDefaultConfig();

    // Marks the nodes of these ids; marks none when not running.
    void setIsRunning(bool running, const QList<QString>& hosts);

    // Options of rows were changed by somebody else: announces it.
    void announceOptions();

    QIcon getOverlayIcon(QPixmap base, const QPixmap& overlay); // for hosts and tests

public slots:
    void currentItemChanged(QTreeWidgetItem* current, QTreeWidgetItem* previous);
    void contextMenuRequested(const QPoint& position);
    void addHost();
    void addNetwork();
    // All selected rows.
    void removeItem();
    void editHosts();
    // Nodes, none below another, to a row of a network; they stay selected.
    void moveNodes(const std::vector<zoHPCTreeItem*>& nodes, zoHPCTreeItem* network, int row);

signals:
    void selectedItemChanged(zoHPCTreeItem* item);
    // Which rows are selected, or which of them is the current one.
    void selectionChanged();
    void hostsChanged();
    // Nodes are about to come to other places, which numbers those of the same name anew.
    void aboutToRename();
    // Something that a document holds changed here: a row, a name, an option, the hosts file or the booking.
    void changed();

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createFilter();
    void followHosts();
    void expandAllParents();
    void updateRowHeight();
    void setReadablePalette();
    void removeByKey();
    enum class Kind { Any, Network, Node };
    void removeRows(Kind kind);
    static zoHPCTreeItem* rowAfter(const std::vector<zoHPCTreeItem*>& rows);
    // In lower case, beside its text.
    static bool hasWord(const zoHPCTreeItem& item, const QString& word);

    std::unique_ptr<Ui_zoHPCTreeGUIW> m_ui;
    zoHPCTreeFilter* m_filter = nullptr;
    QAction* m_configAction = nullptr;
    QAction* m_addNetworkAction = nullptr;
    QAction* m_addHostAction = nullptr;
    QAction* m_removeNetworkAction = nullptr;
    QAction* m_removeHostAction = nullptr;
    std::unique_ptr<zoHPCHostTree> m_hosts;
    zoHPCTreeItem* m_master = nullptr; // of m_hosts
    bool m_running = false;
    bool m_isSettingPalette = false;
    std::array<QBrush, QPalette::NColorGroups> m_readableLight; // what this view set itself, by group
};
