#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <utility>
#include <vector>

class QTreeWidgetItem;
class zoHPCTreeContext;
class zoHPCTreeItem;

// Builds networks with their nodes from hosts text. They hang in no tree until somebody takes them.
class zoHPCHostsTextBuilder final
{
public:
    // `networkText` is what networks without a description show.
    zoHPCHostsTextBuilder(zoHPCTreeContext* context, const QString& networkText);
    ~zoHPCHostsTextBuilder();
    zoHPCHostsTextBuilder(const zoHPCHostsTextBuilder&) = delete;
    zoHPCHostsTextBuilder& operator=(const zoHPCHostsTextBuilder&) = delete;

    enum class Outcome {
        Read,
        TooDeep, // braces, or too many hosts deep in braces
        TooMany  // hosts, or characters of their names
    };

    // What is beyond the limits of a cluster is not built.
    Outcome read(const QString& text);
    // In levels of the tree, the master being the first.
    int depthLimit() const { return m_depthLimit; }

    // Top level, owned by the builder.
    const QList<QTreeWidgetItem*>& networks() const { return m_networks; }
    // The caller owns them from now on.
    QList<QTreeWidgetItem*> takeNetworks();
    // Applies what the text says about render nodes; returns whether it said anything.
    bool overwriteOptions() const;

private:
    // Rows that are being collected for one parent, attached at once. The parent of an open list is itself
    // attached while it has no children yet: attaching walks what hangs below.
    struct Rows
    {
        QTreeWidgetItem* parent = nullptr;
        QList<QTreeWidgetItem*> pending;

        int count() const;
        void attach();
    };

    bool hasRoomFor(int hosts, int length);
    void readToken(QStringView token);
    void openNetwork();
    void closeNetwork();
    void addHost(QStringView token);
    void fillRange(std::vector<zoHPCTreeItem*>& inserted);
    zoHPCTreeItem* newNode(const QString& name);

    zoHPCTreeContext* m_context; // not owned
    const QString m_networkText;
    const int m_depthLimit;
    QList<QTreeWidgetItem*> m_networks;
    std::vector<Rows> m_open;            // networks from the top one to the current one
    QTreeWidgetItem* m_anchor = nullptr; // node that the next "{" hangs a network under; null is the root
    bool m_hasAnchor = true;
    bool m_rangePending = false;
    Outcome m_outcome = Outcome::Read;
    qint64 m_hosts = 0;
    qint64 m_characters = 0; // of their names
    qint64 m_levels = 0;     // of the hosts
    std::vector<std::pair<zoHPCTreeItem*, bool>> m_renderOptions;
};
