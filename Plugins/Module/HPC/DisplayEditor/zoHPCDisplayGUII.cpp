#include "zoHPCDisplayGUII.h"

#include "ui_zoHPCDisplayForm.h"
#include "zoHPCDisplayActions.h"
#include "zoHPCDisplayPanel.h"
#include "zoHPCDisplaySetup.h"
#include "zoHPCDisplaySize.h"
#include "zoHPCDisplayTools.h"
#include "zoHPCDisplayTrees.h"
#include "zoHPCKeys.h"
#include "zoHPCLayoutPane.h"
#include "zoHPCPanelFields.h"
#include "zoHPCProblemsView.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCProjectionPanel.h"
#include "zoHPCReview.h"
#include "zoHPCTreeGUIW.h"
#include "zoHPCTreeItem.h"
#include "zoHPCTreeRows.h"
#include "zoHPCViewportItem.h"
#include "zoHPCViewportPanel.h"
#include "zoHPCWindowPanel.h"

#include <QZODataWidgetMapper.h>
#include <zoClusterTags.h>

#include <QAction>
#include <QKeyEvent>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>

#include <algorithm>

// Changes by the dialog itself: rows that change meanwhile need no answer, and what changed is announced once.
class zoHPCDisplayGUII::Edit final
{
public:
    explicit Edit(zoHPCDisplayGUII& dialog) : m_dialog(dialog), m_outer(dialog.m_edit)
    {
        m_dialog.m_edit = this;
    }

    ~Edit()
    {
        m_dialog.m_edit = m_outer;
        if (m_isChanged)
            m_dialog.noteChange();
    }
    Edit(const Edit&) = delete;
    Edit& operator=(const Edit&) = delete;

    void noteChange() { m_isChanged = true; }

private:
    zoHPCDisplayGUII& m_dialog;
    Edit* m_outer;
    bool m_isChanged = false;
};

zoHPCDisplayGUII::zoHPCDisplayGUII(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui_zoHPCDisplayGUII>())
{
    m_ui->setupUi(this);
    m_trees = std::make_unique<zoHPCDisplayTrees>(m_ui->m_projectionTree, m_ui->m_displayTree);
    m_setup = std::make_unique<zoHPCDisplaySetup>(m_ui->m_projectionTree->invisibleRootItem(),
                                                  m_ui->m_displayTree->invisibleRootItem());
    createPanels();
    zoHPCPanelFields::prepare(m_ui->m_panels);
    // Wide enough for all panels while nothing is hidden yet; the rest is the trees'.
    m_ui->m_panelArea->setMinimumWidth(m_ui->m_panels->minimumSizeHint().width() +
                                       style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    m_ui->m_splitter->setStretchFactor(0, 1);
    m_ui->m_splitter->setStretchFactor(1, 0);
    m_ui->m_splitter->setSizes({width(), 0});

    connectPanels();
    connectActions();
    connectTrees();
    m_displayPanel->followCameras(*this);
    createPreview();
    createTools();
    updateCameraList();
    updateActions();
    showPanel();
}

zoHPCDisplayGUII::~zoHPCDisplayGUII()
{
    // The rows go with the trees, which are still whole when the rest of the dialog is not.
    m_ui->m_projectionTree->disconnect(this);
    m_ui->m_projectionTree->model()->disconnect(this);
    m_ui->m_displayTree->disconnect(this);
    m_ui->m_displayTree->model()->disconnect(this);
}

QList<zoHPCProjectionItem*> zoHPCDisplayGUII::getProjectionItems() const
{
    return m_setup->getProjectionItems();
}

QList<zoHPCViewportItem*> zoHPCDisplayGUII::getViewportItems() const
{
    return m_setup->getViewportItems();
}

QList<zoHPCWindowItem*> zoHPCDisplayGUII::getWindowItems() const
{
    return m_setup->getWindowItems();
}

QList<zoHPCWindowItem*> zoHPCDisplayGUII::getDisplayItems() const
{
    return getWindowItems();
}

void zoHPCDisplayGUII::setNodeNames(const QStringList& names)
{
    m_windowPanel->setNodeNames(names);
    {
        const Edit edit(*this);
        const zoHPCDisplayTrees::BulkChange change(*m_trees);
        if (m_setup->clearUnknownNodes([this](const QString& name) { return m_windowPanel->isNode(name); }))
            noteBulkChange();
    }
    m_displayMapper->refresh();
}

void zoHPCDisplayGUII::setHostTree(zoHPCTreeGUIW* hosts)
{
    m_hostFixes.setHostTree(hosts);
    m_layoutPane->setModel(m_ui->m_projectionTree, m_ui->m_displayTree, hosts);
    m_windowPanel->setLayoutSource([this] { return review().layout(); });
}

zoHPCReview& zoHPCDisplayGUII::review() const
{
    return m_layoutPane->review();
}

void zoHPCDisplayGUII::setEyeSeparation(float separation)
{
    const Edit edit(*this);
    m_trees->setEyeSeparation(static_cast<double>(separation));
}

void zoHPCDisplayGUII::setZeroParallax(float distance)
{
    {
        const Edit edit(*this);
        m_trees->setWallDistance(static_cast<double>(distance));
    }
    correctProjectionViewportsAssignments();
    bindProjection();
}

void zoHPCDisplayGUII::setIsRunning(bool running)
{
    m_running = running;
    m_tools->setIsRunning(running);
    m_layoutPane->problemsView()->setRowsMayCome(!running);
    if (m_layoutPane->isVisible())
        m_layoutPane->refresh();
    updateActions();
}

void zoHPCDisplayGUII::saveToXML(QDomDocument& document) const
{
    m_setup->saveToXML(document);
}

void zoHPCDisplayGUII::loadFromXML(const QDomDocument& document)
{
    {
        const Edit edit(*this);
        m_trees->clear();
        m_setup->loadFromXML(document);
        m_trees->expandOutputs();
    }
    m_displayMapper->refresh();
    bindProjection();
    bindOutput();
    emit displayChanged();
}

void zoHPCDisplayGUII::restore(const QDomDocument& document)
{
    {
        const QSignalBlocker blocker(this);
        loadFromXML(document);
    }
    noteChange();
}

QPushButton* zoHPCDisplayGUII::undoButton() const
{
    return m_ui->m_undoButton;
}

QPushButton* zoHPCDisplayGUII::redoButton() const
{
    return m_ui->m_redoButton;
}

void zoHPCDisplayGUII::setDefaultConfig()
{
    {
        const Edit edit(*this);
        m_trees->clear();
        m_setup->setDefaultConfig();
    }
    bindProjection();
    bindOutput();
}

void zoHPCDisplayGUII::correctProjectionViewportsAssignments()
{
    {
        const Edit edit(*this);
        const zoHPCDisplayTrees::BulkChange change(*m_trees);
        if (m_setup->correctProjectionViewportsAssignments())
            noteBulkChange();
    }
    m_displayMapper->refresh();
    m_viewportPanel->showProjection();
}

void zoHPCDisplayGUII::correctWrongRows()
{
    const Edit edit(*this);
    const zoHPCDisplayTrees::BulkChange change(*m_trees);
    if (m_setup->correctWrongRows())
        noteBulkChange();
}

void zoHPCDisplayGUII::collectProjections()
{
    m_setup->collectProjections();
}

QString zoHPCDisplayGUII::getUniqueProjectionName() const
{
    return m_setup->getUniqueProjectionName();
}

QStringList zoHPCDisplayGUII::attributeOrder(const QString& tagName)
{
    return zoHPCDisplaySetup::attributeOrder(tagName);
}

void zoHPCDisplayGUII::open(const QStringList& nodeNames)
{
    m_tools->clearFilters();
    m_trees->clearCurrentRows();
    setSelected(nullptr, nullptr);

    m_hostFixes.clear();
    m_backup = QDomDocument();
    QDomElement root = m_backup.createElement(zoClusterTags::Cluster);
    root.setAttribute(zoClusterTags::VersionAttribute, QString::number(zoClusterTags::Version));
    m_backup.appendChild(root);
    saveToXML(m_backup);

    setNodeNames(nodeNames);
    setModal(true);
    show();
    zoHPCDisplaySize::fitScreen(*this, *m_ui);
    m_tools->focusTree();
}

void zoHPCDisplayGUII::apply()
{
    emit displayChanged();
}

void zoHPCDisplayGUII::accept()
{
    m_hostFixes.clear();
    emit displayChanged();
    QDialog::accept();
}

void zoHPCDisplayGUII::reject()
{
    if (!m_backup.documentElement().isNull())
        restore(m_backup);
    m_hostFixes.takeBack();
    QDialog::reject();
}

void zoHPCDisplayGUII::addProjection()
{
    if (!m_running)
        m_trees->addProjection(std::make_unique<zoHPCProjectionItem>(getUniqueProjectionName(),
                                                                     zoHPCProjectionType::Kind::Wall));
}

void zoHPCDisplayGUII::addDisplay()
{
    if (!m_running)
        m_trees->addDisplay();
}

void zoHPCDisplayGUII::addWindow()
{
    if (m_running)
        return;
    if (m_trees->addOutput(std::make_unique<zoHPCWindowItem>()))
        addViewport();
}

void zoHPCDisplayGUII::addViewport()
{
    if (!m_running)
        m_trees->addOutput(std::make_unique<zoHPCViewportItem>());
}

void zoHPCDisplayGUII::deleteItem()
{
    if (m_running || m_activeTree == ActiveTree::None)
        return;
    // Destroyed last: whoever still follows the row lets go of it while it is whole.
    std::vector<std::unique_ptr<QTreeWidgetItem>> removed;
    {
        const Edit edit(*this);
        removed = zoHPCDisplayTrees::takeChosen(activeTree());
    }
    if (removed.empty())
        return;
    bindProjection();
    bindOutput();
    correctProjectionViewportsAssignments();
    updateActions();
}

void zoHPCDisplayGUII::copyProjection()
{
    zoHPCProjectionItem* projection = m_trees->currentProjection();
    if (!projection)
        return;
    {
        const Edit edit(*this);
        m_clipboard.copyProjection(*projection);
        // The source has a new identifier: its tiles follow, and viewports find them again by name.
        m_trees->regenerate(static_cast<zoHPCProjectionItem*>(zoHPCTreeRows::topLevelOf(projection)));
    }
    correctProjectionViewportsAssignments();
    bindProjection();
}

void zoHPCDisplayGUII::copyDisplay()
{
    zoHPCDisplayItem* item = m_trees->currentOutput();
    if (!item)
        return;
    m_clipboard.copyOutput(*item);
    updateActions();
}

void zoHPCDisplayGUII::pasteProjection()
{
    if (!m_running && m_clipboard.hasProjection())
        m_trees->addProjection(m_clipboard.newProjection(getUniqueProjectionName()));
}

void zoHPCDisplayGUII::pasteDisplay()
{
    if (!m_running && m_clipboard.hasOutput() && m_trees->addOutput(m_clipboard.newOutput()))
        correctProjectionViewportsAssignments();
}

void zoHPCDisplayGUII::convertToPlanes()
{
    if (m_running)
        return;
    zoHPCProjectionItem* projection = m_trees->currentProjection();
    // Without children nothing would be left of it.
    if (!projection || projection->parent() || projection->childCount() == 0)
        return;
    const bool wasShown = m_setup->isShown(*projection);
    QTreeWidgetItem* const first = [&] {
        const Edit edit(*this);
        return m_trees->replaceByChildren(projection);
    }();
    zoHPCTreeRows::choose(m_ui->m_projectionTree, first);
    // The planes keep names and identifiers; only what showed the whole projection has to be linked again.
    if (wasShown)
        correctProjectionViewportsAssignments();
    bindProjection();
}

void zoHPCDisplayGUII::updateProjection(const QModelIndex& changed)
{
    if (m_edit)
        return;
    auto* projection = dynamic_cast<zoHPCProjectionItem*>(
        zoHPCTreeRows::topLevelOf(zoHPCTreeRows::itemAt(m_ui->m_projectionTree, changed)));
    if (!projection)
        return;
    {
        const Edit edit(*this);
        // A file holds the parameters of one type only; another type has to start with some.
        if (changed.column() == zoHPCProjectionItem::Type)
            projection->setMissingDefaults();
        m_trees->regenerate(projection);
    }
    correctProjectionViewportsAssignments();
    bindProjection();
}

void zoHPCDisplayGUII::updateDisplay(const QModelIndex& changed)
{
    if (m_edit)
        return;
    const Edit edit(*this);
    if (auto* item = dynamic_cast<zoHPCTreeWidgetItem*>(zoHPCTreeRows::itemAt(m_ui->m_displayTree, changed)))
        item->update();
}

void zoHPCDisplayGUII::setProjectionType()
{
    zoHPCProjectionItem* projection = m_trees->currentProjection();
    // A type that the dialog does not know stays as it is.
    if (projection && !m_edit && m_ui->m_type->currentIndex() >= 0)
        projection->setProjectionType(m_projectionPanel->chosenType());
    updateTiledVsibility();
}

void zoHPCDisplayGUII::updateTiledVsibility()
{
    m_projectionPanel->showParameters();
}

void zoHPCDisplayGUII::setViewportPosition()
{
    m_viewportPanel->enableCorners();
}

void zoHPCDisplayGUII::selectProjectionPlane(QTreeWidgetItem* current, QTreeWidgetItem* previous)
{
    Q_UNUSED(previous)
    if (m_edit)
        return;
    if (current && m_ui->m_projectionTree->currentItem() != current)
        zoHPCTreeRows::choose(m_ui->m_projectionTree, current);
    bindProjection();
}

void zoHPCDisplayGUII::setSelected(QTreeWidgetItem* current, QTreeWidgetItem* previous)
{
    Q_UNUSED(previous)
    if (m_edit)
        return;
    if (current && m_ui->m_displayTree->currentItem() != current)
        zoHPCTreeRows::choose(m_ui->m_displayTree, current);
    bindOutput();
}

void zoHPCDisplayGUII::updateCameraList()
{
    m_displayPanel->updateCameraList();
}

void zoHPCDisplayGUII::keyPressEvent(QKeyEvent* event)
{
    // Return, on the number block, too, ends the editing of a field, never the dialog.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

void zoHPCDisplayGUII::createPanels()
{
    m_displayMapper = new QZODataWidgetMapper(this);
    m_displayMapper->setModel(m_ui->m_displayTree->model());
    m_projectionPanel = std::make_unique<zoHPCProjectionPanel>(*m_ui);
    m_displayPanel = std::make_unique<zoHPCDisplayPanel>(*m_ui, *m_displayMapper);
    m_windowPanel = std::make_unique<zoHPCWindowPanel>(*m_ui, *m_displayMapper);
    m_viewportPanel = std::make_unique<zoHPCViewportPanel>(*m_ui, *m_displayMapper, *m_setup);
}

void zoHPCDisplayGUII::connectPanels()
{
    // After the mappers: the item has the new value when the panel follows it.
    connect(m_ui->m_type, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &zoHPCDisplayGUII::setProjectionType);
    connect(m_ui->m_edgeBlending, &QCheckBox::toggled, this, &zoHPCDisplayGUII::updateTiledVsibility);
    connect(m_ui->m_position, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &zoHPCDisplayGUII::setViewportPosition);
    connect(m_viewportPanel.get(), &zoHPCViewportPanel::projectionChosen, this,
            [this](const QModelIndex& row) {
                assignSurface(zoHPCTreeRows::itemAt(m_ui->m_projectionTree, row));
            });
    setViewportPosition();
    updateTiledVsibility();
    m_viewportPanel->showEyes();
}

void zoHPCDisplayGUII::connectActions()
{
    m_actions = std::make_unique<zoHPCDisplayActions>(*m_ui);
    const auto perform = [this](const QAction* action, ActiveTree active,
                                void (zoHPCDisplayGUII::*operation)()) {
        connect(action, &QAction::triggered, this, [this, active, operation] {
            activate(active);
            (this->*operation)();
        });
    };
    perform(m_actions->deleteProjection(), ActiveTree::Projections, &zoHPCDisplayGUII::deleteItem);
    perform(m_actions->copyProjection(), ActiveTree::Projections, &zoHPCDisplayGUII::copyProjection);
    perform(m_actions->pasteProjection(), ActiveTree::Projections, &zoHPCDisplayGUII::pasteProjection);
    perform(m_actions->convertToPlanes(), ActiveTree::Projections, &zoHPCDisplayGUII::convertToPlanes);
    perform(m_actions->deleteDisplay(), ActiveTree::Outputs, &zoHPCDisplayGUII::deleteItem);
    perform(m_actions->copyDisplay(), ActiveTree::Outputs, &zoHPCDisplayGUII::copyDisplay);
    perform(m_actions->pasteDisplay(), ActiveTree::Outputs, &zoHPCDisplayGUII::pasteDisplay);

    connect(m_ui->m_addProjectionButton, &QPushButton::clicked, this, &zoHPCDisplayGUII::addProjection);
    connect(m_ui->m_addDisplayButton, &QPushButton::clicked, this, &zoHPCDisplayGUII::addDisplay);
    connect(m_ui->m_addWindowButton, &QPushButton::clicked, this, &zoHPCDisplayGUII::addWindow);
    connect(m_ui->m_addViewportButton, &QPushButton::clicked, this, &zoHPCDisplayGUII::addViewport);
    connect(m_ui->m_buttonBox->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            &zoHPCDisplayGUII::apply);

    m_keys = new zoHPCKeys(this);
    m_actions->addTo(*m_keys);
    // F2 renames, as in other trees; here the name has a field of its own.
    m_keys->add(m_ui->m_projectionTree, Qt::Key_F2, [this] { m_projectionPanel->focusName(); });
}

void zoHPCDisplayGUII::connectTrees()
{
    connect(m_ui->m_projectionTree->model(), &QAbstractItemModel::dataChanged, this,
            &zoHPCDisplayGUII::updateProjection);
    connect(m_ui->m_displayTree->model(), &QAbstractItemModel::dataChanged, this,
            &zoHPCDisplayGUII::updateDisplay);
    connect(m_ui->m_projectionTree, &QTreeWidget::currentItemChanged, this,
            &zoHPCDisplayGUII::selectProjectionPlane);
    connect(m_ui->m_displayTree, &QTreeWidget::currentItemChanged, this, &zoHPCDisplayGUII::setSelected);
    for (const QTreeWidget* tree : {m_ui->m_projectionTree, m_ui->m_displayTree}) {
        const QAbstractItemModel* const model = tree->model();
        connect(model, &QAbstractItemModel::dataChanged, this, &zoHPCDisplayGUII::noteChange);
        connect(model, &QAbstractItemModel::rowsInserted, this, &zoHPCDisplayGUII::noteChange);
        connect(model, &QAbstractItemModel::rowsRemoved, this, &zoHPCDisplayGUII::noteChange);
        connect(model, &QAbstractItemModel::rowsMoved, this, &zoHPCDisplayGUII::noteChange);
        connect(model, &QAbstractItemModel::modelReset, this, &zoHPCDisplayGUII::noteChange);
    }
    // The selection tells which tree was chosen last, even when its current row stays the same.
    connect(m_ui->m_projectionTree, &QTreeWidget::itemSelectionChanged, this, [this] {
        if (!m_ui->m_projectionTree->selectedItems().isEmpty())
            activate(ActiveTree::Projections);
    });
    connect(m_ui->m_displayTree, &QTreeWidget::itemSelectionChanged, this, [this] {
        if (!m_ui->m_displayTree->selectedItems().isEmpty())
            activate(ActiveTree::Outputs);
    });
}

void zoHPCDisplayGUII::createPreview()
{
    m_layoutPane = new zoHPCLayoutPane;
    m_layoutPane->setObjectName(QString::fromLatin1("m_layoutPane"));
    m_ui->m_splitter->addWidget(m_layoutPane);
    m_ui->m_splitter->setStretchFactor(0, 0);
    m_ui->m_splitter->setStretchFactor(2, 1);
    zoHPCDisplaySize::begin(*this, *m_ui, m_layoutPane->sizeHint().width());
    setHostTree(nullptr);
    connect(m_layoutPane, &zoHPCLayoutPane::itemActivated, this, &zoHPCDisplayGUII::chooseItem);
    connect(m_layoutPane, &zoHPCLayoutPane::surfaceChosen, this, &zoHPCDisplayGUII::assignSurface);
    connect(m_layoutPane, &zoHPCLayoutPane::displayEdited, this,
            &zoHPCDisplayGUII::correctProjectionViewportsAssignments);
    connect(m_layoutPane, &zoHPCLayoutPane::hostsAboutToBeEdited, this, [this] { m_hostFixes.noteBefore(); });
    connect(m_layoutPane, &zoHPCLayoutPane::hostsEdited, this, [this] {
        m_hostFixes.noteAfter();
        if (zoHPCTreeGUIW* const hosts = m_hostFixes.hostTree())
            hosts->announceOptions();
    });
}

void zoHPCDisplayGUII::createTools()
{
    const auto changeOutputs = [this](const std::function<void()>& change) {
        {
            const Edit edit(*this);
            const zoHPCDisplayTrees::BulkChange bulk(*m_trees);
            change();
            noteBulkChange();
        }
        m_displayMapper->refresh();
        showPanel();
    };
    m_tools = new zoHPCDisplayTools(
        {*m_ui, *m_trees, *m_layoutPane, changeOutputs, [this] { correctProjectionViewportsAssignments(); }},
        this);
    m_tools->addTo(*m_keys);
}

void zoHPCDisplayGUII::chooseItem(QTreeWidgetItem* item)
{
    QTreeWidget* const tree = item->treeWidget();
    if (tree == m_ui->m_projectionTree || tree == m_ui->m_displayTree)
        zoHPCTreeRows::choose(tree, item);
    else if (auto* host = dynamic_cast<zoHPCTreeItem*>(item); host && m_hostFixes.hostTree())
        m_hostFixes.hostTree()->setSelectedItem(host);
}

void zoHPCDisplayGUII::activate(ActiveTree tree)
{
    m_activeTree = tree;
    // One row is highlighted in the whole dialog: the one that the panel shows and that Delete means.
    QTreeWidget* other = tree == ActiveTree::Projections ? m_ui->m_displayTree : m_ui->m_projectionTree;
    other->clearSelection();
    m_tools->markRows(*activeTree());
    showPanel();
    updateActions();
}

QTreeWidget* zoHPCDisplayGUII::activeTree() const
{
    return m_activeTree == ActiveTree::Projections ? m_ui->m_projectionTree : m_ui->m_displayTree;
}

void zoHPCDisplayGUII::updateActions()
{
    m_actions->update(*m_trees, m_clipboard, m_running);
    if (m_tools)
        m_tools->updateActions();
}

void zoHPCDisplayGUII::showPanel()
{
    QWidget* page = m_ui->m_nothingPage;
    if (m_activeTree == ActiveTree::Projections && m_trees->currentProjection())
        page = m_ui->m_projectionPage;
    else if (m_activeTree == ActiveTree::Outputs && m_trees->currentOutput()) {
        if (zoHPCDisplayTrees::isViewport(m_trees->currentOutput()))
            page = m_ui->m_viewportPage;
        else
            page = zoHPCDisplayTrees::isPlainWindow(m_trees->currentOutput()) ? m_ui->m_windowPage
                                                                              : m_ui->m_displayPage;
    }
    if (QWidget* const several = m_activeTree == ActiveTree::Outputs ? m_tools->severalPage() : nullptr)
        page = several;
    m_layoutPane->setTakesSurfaces(page == m_ui->m_viewportPage);
    m_viewportPanel->setIsShown(page == m_ui->m_viewportPage);
    m_ui->m_panels->setCurrentWidget(page);
    m_viewportPanel->showProjection();
}

void zoHPCDisplayGUII::bindProjection()
{
    zoHPCProjectionItem* const projection = m_trees->currentProjection();
    m_projectionPanel->setRow(zoHPCTreeRows::indexOf(m_ui->m_projectionTree, projection),
                              projection && projection->parent());
    showPanel();
    updateActions();
}

void zoHPCDisplayGUII::bindOutput()
{
    m_displayMapper->setCurrentRow(zoHPCTreeRows::indexOf(m_ui->m_displayTree, m_trees->currentOutput()));
    m_windowPanel->showGeometry();
    setViewportPosition();
    m_viewportPanel->showEyes();
    showPanel();
    m_viewportPanel->showPixels();
    updateActions();
}

void zoHPCDisplayGUII::assignSurface(QTreeWidgetItem* item)
{
    auto* viewport = dynamic_cast<zoHPCViewportItem*>(m_trees->currentOutput());
    const auto* projection = dynamic_cast<zoHPCProjectionItem*>(item);
    if (!viewport || !projection)
        return;
    {
        const Edit edit(*this);
        viewport->setString(zoHPCViewportItem::ProjectionIdentifier,
                            projection->getString(zoHPCProjectionItem::Identifier));
        viewport->setProjection(projection->getString(zoHPCProjectionItem::Name));
    }
    collectProjections();
    m_viewportPanel->showProjection();
}

void zoHPCDisplayGUII::noteChange()
{
    if (m_edit)
        m_edit->noteChange();
    else
        emit changed();
}

// The tree did not announce it.
void zoHPCDisplayGUII::noteBulkChange()
{
    noteChange();
    m_layoutPane->review().noteChange();
}
