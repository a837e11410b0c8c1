#pragma once

#include "zoHPCProblem.h"

#include <QWidget>

#include <vector>

class QLabel;
class QModelIndex;
class QTreeView;
class QTreeWidgetItem;
class zoHPCProblemModel;

// The list of problems. A click selects the item of a problem; the button in its row, or the space bar, fixes it.
class zoHPCProblemsView final : public QWidget
{
    Q_OBJECT

public:
    explicit zoHPCProblemsView(QWidget* parent = nullptr);
    ~zoHPCProblemsView() override;

    // Keeps the current row where the same problem is there again.
    void setProblems(std::vector<zoHPCProblem> problems);
    const std::vector<zoHPCProblem>& problems() const;
    // Whether fixes may add rows, as they may not while a session runs. For the next setProblems().
    void setRowsMayCome(bool mayCome) { m_rowsMayCome = mayCome; }
    // Takes part in the order of tabs.
    QTreeView* list() const { return m_list; }
    // Before items go: the list can be read on, but a click does nothing until the next setProblems().
    void forgetItems();

signals:
    void itemActivated(QTreeWidgetItem* item);
    // Before each fix; whether it changes the host tree or the display setup.
    void aboutToFix(bool hosts);
    // A fix was made; whether it changed the host tree or the display setup. Nothing that was set before
    // need be valid any more.
    void fixed(bool hosts);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void nameManualPage(const QModelIndex& current);
    void activate(int row);
    void fixLater(const QModelIndex& index);
    void fix(int row);

    QLabel* m_summary = nullptr;
    QTreeView* m_list = nullptr;
    zoHPCProblemModel* m_model = nullptr;
    bool m_rowsMayCome = true;
};
