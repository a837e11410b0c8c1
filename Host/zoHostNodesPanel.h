#pragma once

#include <QSet>
#include <QString>
#include <QWidget>

class QLabel;
class QTimer;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;
class zoHostClusterService;
class zoNodeClusterService;
struct zoClusterNodeReport;

// The nodes of the session, each with its state, what is known of its machine and how long it waited for the others.
// In a rehearsal it makes trouble on purpose.
class zoHostNodesPanel final : public QWidget
{
    Q_OBJECT

public:
    explicit zoHostNodesPanel(zoHostClusterService* cluster, QWidget* parent = nullptr); // outlives the panel
    ~zoHostNodesPanel() override;

    static QString stateText(const zoClusterNodeReport& report);

signals:
    // Of a person who wants the session to take the configuration as it is now.
    void restartRequested();

private:
    void createLayout();
    void createConnections();
    void refresh();
    QSet<int> showReport(QTreeWidgetItem* row, const zoClusterNodeReport& report);
    void updateButtons();
    void fitStateColumn();
    void widenColumn(int column);
    void showReason();
    QString currentNode() const;

    zoHostClusterService* m_cluster;
    zoNodeClusterService* m_servers; // the same; null for one without node servers
    QLabel* m_summary;
    QTreeWidget* m_list;
    QLabel* m_reason; // of the current node, or the first that failed, in full
    QToolButton* m_lose;
    QToolButton* m_hang;
    QToolButton* m_delay;
    QSet<QString> m_delayed; // nodes of this session
    QTimer* m_later;         // many nodes change at once
    QTimer* m_waits;         // which nobody announces
};
