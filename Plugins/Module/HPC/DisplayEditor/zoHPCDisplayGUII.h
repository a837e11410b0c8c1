#pragma once

#include "ui_zoHPCDisplayGUII.h"

#include <QDialog>
#include <QDomDocument>
#include <QList>
#include <QModelIndex>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QStringList>

#include <memory>
#include <utility>
#include <vector>

class QAction;
class QStringListModel;
class QTreeWidgetItem;
class QZODataWidgetMapper;
class zoHPCDisplayItem;
class zoHPCDisplaySetup;
class zoHPCLayoutPane;
class zoHPCProjectionItem;
class zoHPCReview;
class zoHPCTreeGUIW;
class zoHPCTreeItem;
class zoHPCTreeWidgetItem;
class zoHPCViewportItem;
class zoHPCWindowItem;

// The display-setup dialog: projections on one side, displays with their windows and viewports on the other.
class zoHPCDisplayGUII final : public QDialog, private Ui_zoHPCDisplayGUII
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

    // Choices for render nodes, equal names told apart by a number. Windows whose node is none of them lose
    // it.
    void setNodeNames(const QStringList& names);
    // The nodes that the preview checks the setup against, and what its fixes change. Not owned, may go
    // first.
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
    void setDefaultConfig();

    // Links viewports and projections: by identifier, else by name; what finds neither loses its projection.
    void correctProjectionViewportsAssignments();
    // Documents of version 0 counted the rows of tiled walls from the other end.
    void correctWrongRows();
    void collectProjections();

    // "Projection1", "Projection2", ...: the first that no projection bears.
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
    // Of the tree in which a row was chosen last.
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

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class ActiveTree { None, Projections, Outputs };

    void fillCombos();
    void bindPanels();
    void createActions();
    void createPreview();
    void fitScreen();
    void connectTrees();
    void connectServices();

    void activate(ActiveTree tree);
    void chooseItem(QTreeWidgetItem* item);
    void noteHosts();
    void noteHostChanges();
    void takeBackHostChanges();
    void updateActions();
    void showPanel();
    void bindProjection();
    void bindOutput();
    void showAssignedProjection();
    void assignProjection(const QModelIndex& index);
    void showPixels();
    void showEyes();

    zoHPCProjectionItem* currentProjection() const;
    zoHPCDisplayItem* currentOutput() const;
    zoHPCDisplayItem* currentDisplay() const; // of the current row or above it
    zoHPCWindowItem* currentWindow() const;
    void regenerate(zoHPCProjectionItem* projection);
    void expandOutputs();

    std::unique_ptr<zoHPCDisplaySetup> m_setup; // of the rows of both trees
    QZODataWidgetMapper* m_projectionMapper = nullptr;
    QZODataWidgetMapper* m_displayMapper = nullptr;
    zoHPCLayoutPane* m_layoutPane = nullptr;
    QPointer<zoHPCTreeGUIW> m_hosts;
    QStringListModel* m_nodeNames = nullptr;
    QAction* m_deleteProjectionAction = nullptr;
    QAction* m_copyProjectionAction = nullptr;
    QAction* m_pasteProjectionAction = nullptr;
    QAction* m_convertAction = nullptr;
    QAction* m_deleteDisplayAction = nullptr;
    QAction* m_copyDisplayAction = nullptr;
    QAction* m_pasteDisplayAction = nullptr;
    QDomDocument m_backup;
    // What a fix is about to change in the host tree, and what fixes changed there since the dialog opened:
    // rows and what their option "enabled" was.
    std::vector<std::pair<zoHPCTreeItem*, QString>> m_hostsBefore;
    std::vector<std::pair<QPersistentModelIndex, QString>> m_hostChanges;
    std::shared_ptr<zoHPCProjectionItem> m_copiedProjection;
    std::shared_ptr<zoHPCDisplayItem> m_copiedDisplay;
    ActiveTree m_activeTree = ActiveTree::None;
    bool m_running = false;
    bool m_updating = false; // our own changes are under way: rows that change need no answer
};
