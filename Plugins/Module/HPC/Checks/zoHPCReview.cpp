#include "zoHPCReview.h"

#include "zoHPCLayout.h"
#include "zoHPCProblems.h"
#include "zoHPCTreeItem.h"

zoHPCReview::zoHPCReview(QObject* parent) : QObject(parent) {}

zoHPCReview::~zoHPCReview() = default;

void zoHPCReview::setTrees(QTreeWidget* projections, QTreeWidget* displays, zoHPCHostTree* hosts)
{
    for (const QMetaObject::Connection& connection : m_connections)
        disconnect(connection);
    m_connections.clear();
    m_projections = projections;
    m_displays = displays;
    m_hosts = hosts;
    follow(m_projections);
    follow(m_displays);
    if (hosts) {
        // The view of the hosts, where there is one, announces more than their tree, and rows before they go.
        follow(hosts->master()->treeWidget());
        m_connections.push_back(
            connect(hosts, &zoHPCHostTree::aboutToReplaceItems, this, &zoHPCReview::forget));
        m_connections.push_back(connect(hosts, &zoHPCHostTree::changed, this, &zoHPCReview::noteChange));
        m_connections.push_back(connect(hosts, &QObject::destroyed, this, &zoHPCReview::forget));
    }
    forget();
}

const std::shared_ptr<const zoHPCLayout>& zoHPCReview::layout()
{
    if (m_isLayoutStale) {
        m_layout = std::make_shared<const zoHPCLayout>(m_projections.data(), m_displays.data(),
                                                       m_hosts ? m_hosts->master() : nullptr);
        m_isLayoutStale = false;
        m_areProblemsStale = true;
    }
    return m_layout;
}

const std::vector<zoHPCProblem>& zoHPCReview::problems()
{
    const zoHPCLayout& current = *layout();
    if (m_areProblemsStale) {
        m_problems = zoHPCProblems::find(current);
        m_areProblemsStale = false;
    }
    return m_problems;
}

void zoHPCReview::noteChange()
{
    m_isLayoutStale = true;
    emit changed();
}

void zoHPCReview::follow(const QTreeWidget* tree)
{
    if (!tree)
        return;
    const QAbstractItemModel* const model = tree->model();
    const auto listen = [this](const auto* sender, auto signal, auto slot) {
        m_connections.push_back(connect(sender, signal, this, slot));
    };
    // Before rows go, nothing may point to their items any more; somebody may read what is left of them while
    // they go, so that counts only afterwards.
    listen(model, &QAbstractItemModel::rowsAboutToBeRemoved, &zoHPCReview::forget);
    listen(model, &QAbstractItemModel::rowsRemoved, &zoHPCReview::forget);
    listen(model, &QAbstractItemModel::modelAboutToBeReset, &zoHPCReview::forget);
    listen(model, &QAbstractItemModel::modelReset, &zoHPCReview::forget);
    listen(tree, &QObject::destroyed, &zoHPCReview::forget);
    listen(model, &QAbstractItemModel::rowsInserted, &zoHPCReview::noteChange);
    listen(model, &QAbstractItemModel::rowsMoved, &zoHPCReview::noteChange);
    listen(model, &QAbstractItemModel::layoutChanged, &zoHPCReview::noteChange);
    listen(model, &QAbstractItemModel::dataChanged, &zoHPCReview::noteChange);
}

void zoHPCReview::forget()
{
    // Trees announce the removal of their rows one by one.
    if (m_layout) {
        m_layout.reset();
        m_problems.clear();
        emit itemsLeft();
    }
    noteChange();
}
