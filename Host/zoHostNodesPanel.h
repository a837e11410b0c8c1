#pragma once

#include <QWidget>

class QLabel;
class QTimer;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;
class zoNodeClusterService;
struct zoClusterNodeReport;

// The nodes of the session, each with its state, what is known of its machine and how long it waited for the others.
// In a rehearsal it makes trouble on purpose.
class zoHostNodesPanel final : public QWidget
{
    Q_OBJECT

public:
    explicit zoHostNodesPanel(zoNodeClusterService* cluster, QWidget* parent = nullptr); // outlives the panel
    ~zoHostNodesPanel() override;

    static QString stateText(const zoClusterNodeReport& report);

private:
    void createLayout();
    void createConnections();
    void refresh();
    void showReport(QTreeWidgetItem* row, const zoClusterNodeReport& report);
    void updateButtons();
    QString currentNode() const;

    zoNodeClusterService* m_cluster;
    QLabel* m_summary;
    QTreeWidget* m_list;
    QToolButton* m_lose;
    QToolButton* m_hang;
    QToolButton* m_delay;
    QTimer* m_later; // many nodes change at once
    QTimer* m_waits; // which nobody announces
};
