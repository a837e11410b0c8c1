#pragma once

#include "zoHPCDisplayClipboard.h"
#include "zoHPCHostFixes.h"

#include <QDialog>
#include <QDomDocument>
#include <QList>
#include <QModelIndex>
#include <QStringList>

#include <memory>

class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class QZODataWidgetMapper;
class Ui_zoHPCDisplayGUII;
class zoHPCDisplayActions;
class zoHPCDisplayPanel;
class zoHPCDisplaySetup;
class zoHPCDisplayTools;
class zoHPCDisplayTrees;
class zoHPCKeys;
class zoHPCLayoutPane;
class zoHPCProjectionItem;
class zoHPCProjectionPanel;
class zoHPCReview;
class zoHPCTreeGUIW;
class zoHPCViewportItem;
class zoHPCViewportPanel;
class zoHPCWindowItem;
class zoHPCWindowPanel;

// The display-setup dialog: projections on one side, displays with their windows and viewports on the other.
class zoHPCDisplayGUII final : public QDialog
{
    Q_OBJECT

public:
    explicit zoHPCDisplayGUII(QWidget* parent = nullptr);
    ~zoHPCDisplayGUII() override;

    using QDialog::open;

    // In depth-first order, generated children included.
    QList<zoHPCProjectionItem*> getProjectionItems() const;
    QList<zoHPCViewportItem*> getViewportItems() const;
    // Both hold every window and, because a viewport is a window, every viewport; callers filter by kind.
    QList<zoHPCWindowItem*> getWindowItems() const;
    QList<zoHPCWindowItem*> getDisplayItems() const; // for hosts and tests

    // Choices for render nodes, equal names told apart by a number. Windows of other nodes lose their node.
    void setNodeNames(const QStringList& names);
    // The nodes that the preview checks the setup against, and what its fixes change. Not owned, may go first.
    void setHostTree(zoHPCTreeGUIW* hosts);
    // Layout and problems of the setup on that host tree, read once for all who show them.
    zoHPCReview& review() const;
    void setEyeSeparation(float separation); // mm, of all displays
    void setZeroParallax(float distance);    // mm, of all tiled walls; for hosts and tests
    // While a session runs rows neither come nor go by hand; values stay editable.
    void setIsRunning(bool running);

    // What the trees hold, for whoever reads it without them.
    const zoHPCDisplaySetup& setup() const { return *m_setup; }

    // Appends the display section to the document element.
    void saveToXML(QDomDocument& document) const;
    // Replaces both trees; a document without a root empties them. Documents without a version are upgraded.
    void loadFromXML(const QDomDocument& document);
    // The same for what the trees held before, which is not announced as applied.
    void restore(const QDomDocument& document);
    void setDefaultConfig();

    // For whoever keeps the steps of the dialog; disabled without.
    QPushButton* undoButton() const;
    QPushButton* redoButton() const;

    // Links viewports and projections: by identifier, else by name; what finds neither loses its projection.
    void correctProjectionViewportsAssignments();
    // Documents of version 0 counted the rows of tiled walls from the other end.
    void correctWrongRows();
    void collectProjections();

    // "Projection1", "Projection2", ...: the first name that no projection has.
    QString getUniqueProjectionName() const;

    // Attribute names of an element of the display section in the order in which they are written; empty for
    // other elements.
    static QStringList attributeOrder(const QString& tagName);

public slots:
    // Shows the dialog modal. Cancel brings back the setup of this moment, and takes back what fixes of
    // problems changed in the host tree.
    void open(const QStringList& nodeNames);
    void apply();
    void accept() override;
    void reject() override;

    void addProjection();
    void addDisplay();
    // Below the display of the current row; comes with a viewport.
    void addWindow();
    // In the window of the current row.
    void addViewport();
    // What is selected in the tree in which a row was chosen last, or its current row.
    void deleteItem();
    void copyProjection();
    void copyDisplay();
    void pasteProjection();
    void pasteDisplay();
    // The current projection gives way to its children, which become projections of their own.
    void convertToPlanes();

    void updateProjection(const QModelIndex& changed);
    void updateDisplay(const QModelIndex& changed);
    // The type chosen in the panel becomes the current projection's.
    void setProjectionType();
    void updateTiledVsibility();
    void setViewportPosition();
    void selectProjectionPlane(QTreeWidgetItem* current, QTreeWidgetItem* previous);
    void setSelected(QTreeWidgetItem* current, QTreeWidgetItem* previous);
    void updateCameraList();

signals:
    // The display setup was applied or loaded.
    void displayChanged();
    // Something in the trees is not as it was: a value, a row more or less, what a fix or a link changed.
    void changed();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class ActiveTree { None, Projections, Outputs };

    class Edit;

    void createPanels();
    void connectPanels();
    void connectActions();
    void createPreview();
    void connectTrees();
    void createTools();

    void activate(ActiveTree tree);
    QTreeWidget* activeTree() const;
    void chooseItem(QTreeWidgetItem* item);
    void updateActions();
    void showPanel();
    void bindProjection();
    void bindOutput();
    // To the viewport whose panel is shown.
    void assignSurface(QTreeWidgetItem* item);
    void noteChange();
    void noteBulkChange();

    std::unique_ptr<Ui_zoHPCDisplayGUII> m_ui;
    std::unique_ptr<zoHPCDisplayTrees> m_trees;
    std::unique_ptr<zoHPCDisplaySetup> m_setup; // what the trees hold
    std::unique_ptr<zoHPCDisplayActions> m_actions;
    std::unique_ptr<zoHPCProjectionPanel> m_projectionPanel;
    std::unique_ptr<zoHPCDisplayPanel> m_displayPanel;
    std::unique_ptr<zoHPCWindowPanel> m_windowPanel;
    std::unique_ptr<zoHPCViewportPanel> m_viewportPanel;
    QZODataWidgetMapper* m_displayMapper = nullptr; // of all panels for outputs
    zoHPCLayoutPane* m_layoutPane = nullptr;
    zoHPCDisplayTools* m_tools = nullptr;
    zoHPCKeys* m_keys = nullptr;
    QDomDocument m_backup;
    zoHPCHostFixes m_hostFixes; // since the dialog was opened
    zoHPCDisplayClipboard m_clipboard;
    ActiveTree m_activeTree = ActiveTree::None;
    bool m_running = false;
    Edit* m_edit = nullptr; // while the dialog itself changes rows
};
