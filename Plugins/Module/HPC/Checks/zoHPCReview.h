#pragma once

#include "zoHPCHostTree.h"
#include "zoHPCProblem.h"

#include <QObject>
#include <QPointer>
#include <QTreeWidget>

#include <memory>
#include <vector>

class zoHPCLayout;

// One reading of a configuration for all who show it: the layout and the problems of the trees as they are now.
// Each is computed when somebody asks for it first after a change, and shared until the next change.
class zoHPCReview final : public QObject
{
    Q_OBJECT

public:
    explicit zoHPCReview(QObject* parent = nullptr);
    ~zoHPCReview() override;

    // What is read and followed from now on. Not owned; each may be null and may go before the review.
    void setTrees(QTreeWidget* projections, QTreeWidget* displays, zoHPCHostTree* hosts);

    // Never null.
    const std::shared_ptr<const zoHPCLayout>& layout();
    const std::vector<zoHPCProblem>& problems();

public slots:
    // After a change that the trees did not announce, as while their signals were blocked.
    void noteChange();

signals:
    // What was read before is out of date; its items still live.
    void changed();
    // Items of what was read leave their trees: nobody may keep one beyond this signal.
    void itemsLeft();

private:
    void follow(const QTreeWidget* tree);
    void forget();

    QPointer<QTreeWidget> m_projections;
    QPointer<QTreeWidget> m_displays;
    QPointer<zoHPCHostTree> m_hosts;
    std::vector<QMetaObject::Connection> m_connections;
    std::shared_ptr<const zoHPCLayout> m_layout; // null when its items are gone
    std::vector<zoHPCProblem> m_problems;
    bool m_isLayoutStale = true;
    bool m_areProblemsStale = true;
};
