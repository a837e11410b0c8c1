#pragma once

#include <QAction>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <vector>

class QAbstractItemModel;
class QLabel;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class QVariant;
class Ui_zoHPCDisplayGUII;
class zoHPCDisplayTrees;
class zoHPCKeys;
class zoHPCLayoutPane;
class zoHPCSeveralPanel;
class zoHPCTreeFilter;
class zoHPCViewportItem;
class zoHPCWindowItem;

// What makes the display setup bearable with hundreds of rows: filters over both trees, fields for several rows at once,
// copies of windows on the next nodes, and the node beside each surface.
class zoHPCDisplayTools final : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        const Ui_zoHPCDisplayGUII& form;
        const zoHPCDisplayTrees& trees;
        zoHPCLayoutPane& pane;
        // Changes values of outputs as one step, announced once.
        std::function<void(const std::function<void()>& change)> changeOutputs;
        // After rows came.
        std::function<void()> link;
    };

    // Puts its widgets into the form. What the parts refer to outlives it.
    explicit zoHPCDisplayTools(const Parts& parts, QObject* parent);
    ~zoHPCDisplayTools() override;

    // The page for what is selected in the output tree; null for one row or none.
    QWidget* severalPage();
    void addTo(zoHPCKeys& keys);
    // While a session runs rows neither come nor go.
    void setIsRunning(bool running);
    // What can be done follows the current row.
    void updateActions();
    // All rows are shown: nobody who opens the dialog looks for what was typed the last time.
    void clearFilters();
    // Keys go to the first tree that has rows; the first of them chooses one.
    void focusTree() const;
    // What is selected in one of the trees, or its current row, is marked in the pictures.
    void markRows(const QTreeWidget& tree) const;

    zoHPCTreeFilter* projectionFilter() const { return m_projectionFilter; }
    zoHPCTreeFilter* outputFilter() const { return m_outputFilter; }

public slots:
    // The windows that are selected, or the current one, go on with the next nodes and tiles. The copies become what is
    // selected.
    void duplicate();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Selection
    {
        std::vector<zoHPCWindowItem*> windows;     // selected, or above viewports that are
        std::vector<zoHPCViewportItem*> viewports; // selected, or below windows that are
        int rows = 0;
    };

    void createFilters();
    void createDuplicateButton();
    void createSeveralPanel();
    void createNodeColumn();
    void createProjectionNote();
    void orderTabs() const;
    void showProjectionNote() const;
    Selection selection() const;
    void setWindows(int column, const QVariant& value);
    void setViewports(int column, const QVariant& value);
    void setNodes(const QString& first);
    void select(const std::vector<QTreeWidgetItem*>& windows);
    void focusFilter();
    void showNodes();

    Parts m_parts;
    zoHPCTreeFilter* m_projectionFilter = nullptr;
    zoHPCTreeFilter* m_outputFilter = nullptr;
    zoHPCSeveralPanel* m_panel = nullptr;
    QPushButton* m_duplicateButton = nullptr;
    QLabel* m_projectionNote = nullptr;
    QAction m_findAction;
    QAction m_duplicateAction;
    QTimer m_nodesTimer{this}; // until the column of the nodes is read anew
    bool m_isRunning = false;
};
