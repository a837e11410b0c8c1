#include "zoHPCDisplayGUII.h"

#include "zoHPCDisplayItem.h"
#include "zoHPCDisplaySetup.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCLayoutPane.h"
#include "zoHPCProblemsView.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCReview.h"
#include "zoHPCTreeGUIW.h"
#include "zoHPCTreeItem.h"
#include "zoHPCUniqueNames.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"
#include "zoText.h"

#include <QZODataWidgetMapper.h>
#include <zoCameraService.h>
#include <zoIconManager.h>
#include <zoKernelServiceFactory.h>
#include <zoNodeService.h>

#include <QAbstractSpinBox>
#include <QAction>
#include <QDoubleSpinBox>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QSet>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStringListModel>
#include <QStyle>

#include <algorithm>
#include <initializer_list>

namespace
{
// Changes the values of many rows as one: while it lives the view hears nothing, then it is painted once.
// Rows must neither come nor go.
class BulkChange final
{
public:
    explicit BulkChange(QTreeWidget* tree) : m_tree(tree), m_blocker(tree->model()) {}
    ~BulkChange() { m_tree->viewport()->update(); }

    BulkChange(const BulkChange&) = delete;
    BulkChange& operator=(const BulkChange&) = delete;

private:
    QTreeWidget* m_tree;
    QSignalBlocker m_blocker;
};

bool isViewport(const QTreeWidgetItem* item)
{
    return dynamic_cast<const zoHPCViewportItem*>(item) != nullptr;
}

bool isPlainWindow(const QTreeWidgetItem* item)
{
    return dynamic_cast<const zoHPCWindowItem*>(item) != nullptr && !isViewport(item);
}

bool isPlainDisplay(const QTreeWidgetItem* item)
{
    return dynamic_cast<const zoHPCDisplayItem*>(item) != nullptr &&
           dynamic_cast<const zoHPCWindowItem*>(item) == nullptr;
}

QTreeWidgetItem* topLevelOf(QTreeWidgetItem* item)
{
    while (item && item->parent())
        item = item->parent();
    return item;
}

void showFirstColumnOnly(QTreeView* view)
{
    for (int col = 1; col < view->model()->columnCount(); ++col)
        view->setColumnHidden(col, true);
}

// Ranges take everything that a document may hold, far more than a wall ever has: a field is wide enough for
// usual numbers, wider when there is room.
void narrow(QAbstractSpinBox* field)
{
    QString widest;
    QString usual;
    if (const auto* number = qobject_cast<const QDoubleSpinBox*>(field)) {
        for (const double limit : {number->minimum(), number->maximum()}) {
            const QString text = number->textFromValue(limit);
            if (text.size() > widest.size())
                widest = text;
        }
        usual = number->textFromValue(-10000.0);
    } else if (const auto* pixels = qobject_cast<const QSpinBox*>(field)) {
        for (const int limit : {pixels->minimum(), pixels->maximum()}) {
            const QString text = QString::number(limit);
            if (text.size() > widest.size())
                widest = text;
        }
        usual = zoText("-10000");
    }
    const QFontMetrics metrics(field->font());
    const int spare = metrics.horizontalAdvance(widest) - metrics.horizontalAdvance(usual);
    if (spare > 0)
        field->setMinimumWidth(field->minimumSizeHint().width() - spare);
}

// The second and third number of a row have a sign for a label, or none: what is read aloud is their tool
// tip.
void nameForReaders(const QWidget* panels)
{
    const QList<QLabel*> labels = panels->findChildren<QLabel*>();
    QSet<const QWidget*> labelled;
    for (const QLabel* label : labels) {
        if (label->buddy() && label->text() != QString::fromUtf8("×"))
            labelled.insert(label->buddy());
    }
    const QList<QAbstractSpinBox*> numbers = panels->findChildren<QAbstractSpinBox*>();
    for (QAbstractSpinBox* number : numbers) {
        if (!labelled.contains(number))
            number->setAccessibleName(number->toolTip());
    }
}

QIcon icon(const char* name)
{
    return zoIconManager::getIcon(QString::fromLatin1(name), QString());
}

// The model index of a row of a tree, and back; a tree widget keeps its own functions for that to itself.
QModelIndex indexOf(const QTreeWidget* tree, QTreeWidgetItem* item)
{
    if (!item)
        return {};
    QTreeWidgetItem* parent = item->parent();
    const int row = parent ? parent->indexOfChild(item) : tree->indexOfTopLevelItem(item);
    return tree->model()->index(row, 0, indexOf(tree, parent));
}

QTreeWidgetItem* itemAt(const QTreeWidget* tree, const QModelIndex& index)
{
    QList<int> rows;
    for (QModelIndex i = index; i.isValid(); i = i.parent())
        rows.prepend(i.row());
    QTreeWidgetItem* item = tree->invisibleRootItem();
    for (const int row : qAsConst(rows))
        item = item ? item->child(row) : nullptr;
    return rows.isEmpty() ? nullptr : item;
}
} // namespace

zoHPCDisplayGUII::zoHPCDisplayGUII(QWidget* parent) : QDialog(parent)
{
    setupUi(this);
    m_setup = std::make_unique<zoHPCDisplaySetup>(m_projectionTree->invisibleRootItem(),
                                                  m_displayTree->invisibleRootItem());
    // The other columns hold the properties.
    m_projectionTree->setColumnCount(zoHPCProjectionItem::ColumnCount);
    m_displayTree->setColumnCount(zoHPCViewportItem::ColumnCount);
    for (QTreeWidget* tree : {m_projectionTree, m_displayTree})
        showFirstColumnOnly(tree);
    fillCombos();
    const QList<QAbstractSpinBox*> numbers = m_panels->findChildren<QAbstractSpinBox*>();
    for (QAbstractSpinBox* number : numbers)
        narrow(number);
    nameForReaders(m_panels);
    // Wide enough for all panels while nothing is hidden yet; the rest is the trees'.
    m_panelArea->setMinimumWidth(m_panels->minimumSizeHint().width() +
                                 style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 0);
    m_splitter->setSizes({width(), 0});

    bindPanels();
    createActions();
    connectTrees();
    connectServices();
    createPreview();
    updateCameraList();
    updateActions();
    showPanel();
}

zoHPCDisplayGUII::~zoHPCDisplayGUII()
{
    // The rows go with the trees, which are still whole when the rest of the dialog is not.
    m_projectionTree->disconnect(this);
    m_projectionTree->model()->disconnect(this);
    m_displayTree->disconnect(this);
    m_displayTree->model()->disconnect(this);
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
    std::vector<const QString*> hostNames;
    hostNames.reserve(std::size_t(names.size()));
    for (const QString& name : names)
        hostNames.push_back(&name);
    const zoHPCUniqueNames unique(std::move(hostNames));
    QStringList entries;
    entries.reserve(names.size());
    for (std::size_t i = 0; i < unique.count(); ++i)
        entries.append(unique.name(i));
    {
        // Another choice is no change of the window that the panel shows.
        const QSignalBlocker blocker(m_renderNode);
        m_nodeNames->setStringList(entries);
    }

    // Without equal names the entries are the names.
    const bool isNumbered = unique.hasNumbered();
    const QSet<QString> numbered =
        isNumbered ? QSet<QString>(entries.cbegin(), entries.cend()) : QSet<QString>();
    const auto isKnown = [&](const QString& name) {
        return isNumbered ? numbered.contains(name) : unique.find(name) < unique.count();
    };
    {
        const BulkChange change(m_displayTree);
        m_setup->clearUnknownNodes(isKnown);
    }
    m_displayMapper->refresh();
    m_layoutPane->review().noteChange();
}

void zoHPCDisplayGUII::setHostTree(zoHPCTreeGUIW* hosts)
{
    m_hosts = hosts;
    m_layoutPane->setModel(m_projectionTree, m_displayTree, hosts);
}

zoHPCReview& zoHPCDisplayGUII::review() const
{
    return m_layoutPane->review();
}

void zoHPCDisplayGUII::setEyeSeparation(float separation)
{
    const QScopedValueRollback<bool> updating(m_updating, true);
    for (int i = 0; i < m_displayTree->topLevelItemCount(); ++i) {
        if (auto* display = dynamic_cast<zoHPCDisplayItem*>(m_displayTree->topLevelItem(i)))
            display->setEyeSeparation(static_cast<double>(separation));
    }
}

void zoHPCDisplayGUII::setZeroParallax(float distance)
{
    {
        const QScopedValueRollback<bool> updating(m_updating, true);
        QList<zoHPCProjectionItem*> walls;
        const QList<zoHPCProjectionItem*> projections = getProjectionItems();
        for (zoHPCProjectionItem* projection : projections) {
            if (projection->kind() == zoHPCProjectionType::Kind::Wall)
                walls.append(projection);
        }
        // From the last: a wall inside a wall goes when the outer one lays out its tiles.
        for (auto it = walls.crbegin(); it != walls.crend(); ++it) {
            (*it)->setDouble(zoHPCProjectionItem::Distance, static_cast<double>(distance));
            regenerate(*it);
        }
    }
    correctProjectionViewportsAssignments();
    bindProjection();
}

void zoHPCDisplayGUII::setIsRunning(bool running)
{
    m_running = running;
    updateActions();
}

void zoHPCDisplayGUII::saveToXML(QDomDocument& document) const
{
    m_setup->saveToXML(document);
}

void zoHPCDisplayGUII::loadFromXML(const QDomDocument& document)
{
    {
        const QScopedValueRollback<bool> updating(m_updating, true);
        m_projectionTree->clear();
        m_displayTree->clear();
        m_setup->loadFromXML(document);
        expandOutputs();
    }
    m_displayMapper->refresh();
    showAssignedProjection();
    m_layoutPane->review().noteChange();
    bindProjection();
    bindOutput();
    emit displayChanged();
}

void zoHPCDisplayGUII::setDefaultConfig()
{
    m_projectionTree->clear();
    m_displayTree->clear();
    m_setup->setDefaultConfig();
}

void zoHPCDisplayGUII::correctProjectionViewportsAssignments()
{
    {
        const BulkChange change(m_displayTree);
        m_setup->correctProjectionViewportsAssignments();
    }
    m_displayMapper->refresh();
    showAssignedProjection();
    m_layoutPane->review().noteChange();
}

void zoHPCDisplayGUII::correctWrongRows()
{
    const BulkChange change(m_displayTree);
    m_setup->correctWrongRows();
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
    for (QTreeWidget* tree : {m_projectionTree, m_displayTree}) {
        tree->clearSelection();
        tree->setCurrentItem(nullptr);
    }
    setSelected(nullptr, nullptr);

    m_hostChanges.clear();
    m_backup = QDomDocument();
    QDomElement root = m_backup.createElement(QString::fromLatin1("cluster"));
    root.setAttribute(QString::fromLatin1("version"), QString::fromLatin1("1"));
    m_backup.appendChild(root);
    saveToXML(m_backup);

    setNodeNames(nodeNames);
    setModal(true);
    show();
    fitScreen();
}

// Once all parts know their sizes, which depend on style and language.
void zoHPCDisplayGUII::fitScreen()
{
    constexpr int FRAME = 32; // around the window
    const int room = screen()->availableGeometry().width() - FRAME;
    const int tooWide = minimumSizeHint().width() - room;
    if (tooWide <= 0)
        return;
    // Better panels to scroll than panes one over the other.
    m_panelArea->setMinimumWidth(std::max(m_panelArea->minimumWidth() - tooWide, 0));
    m_panelArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_splitter->updateGeometry();
    layout()->activate();
    resize(std::min(width(), room), height());
}

void zoHPCDisplayGUII::apply()
{
    emit displayChanged();
}

void zoHPCDisplayGUII::accept()
{
    m_hostChanges.clear();
    emit displayChanged();
    QDialog::accept();
}

void zoHPCDisplayGUII::reject()
{
    if (!m_backup.documentElement().isNull()) {
        const QSignalBlocker blocker(this);
        loadFromXML(m_backup);
    }
    takeBackHostChanges();
    QDialog::reject();
}

void zoHPCDisplayGUII::addProjection()
{
    if (m_running)
        return;
    auto* projection = new zoHPCProjectionItem(getUniqueProjectionName(), zoHPCProjectionType::Kind::Wall);
    m_projectionTree->addTopLevelItem(projection);
    m_projectionTree->setCurrentItem(projection);
}

void zoHPCDisplayGUII::addDisplay()
{
    if (m_running)
        return;
    auto* display = new zoHPCDisplayItem;
    m_displayTree->addTopLevelItem(display);
    // Nothing is taken from a current row, but without one the new display is what windows are to be added
    // to.
    if (!m_displayTree->currentItem())
        m_displayTree->setCurrentItem(display);
}

void zoHPCDisplayGUII::addWindow()
{
    zoHPCDisplayItem* display = currentDisplay();
    if (!display || m_running)
        return;
    auto* window = new zoHPCWindowItem;
    display->addChild(window);
    display->setExpanded(true);
    m_displayTree->setCurrentItem(window);
    addViewport();
}

void zoHPCDisplayGUII::addViewport()
{
    zoHPCWindowItem* window = currentWindow();
    if (!window || m_running)
        return;
    auto* viewport = new zoHPCViewportItem;
    window->addChild(viewport);
    window->setExpanded(true);
    m_displayTree->setCurrentItem(viewport);
}

void zoHPCDisplayGUII::deleteItem()
{
    if (m_running)
        return;
    if (m_activeTree == ActiveTree::None)
        return;
    QTreeWidget* tree = m_activeTree == ActiveTree::Projections ? m_projectionTree : m_displayTree;
    QTreeWidgetItem* item = tree->currentItem();
    if (!item)
        return;
    // Taken out first, so that whoever still follows the row lets go of it while it is whole.
    std::unique_ptr<QTreeWidgetItem> removed(item);
    if (QTreeWidgetItem* parent = item->parent())
        parent->removeChild(item);
    else
        tree->takeTopLevelItem(tree->indexOfTopLevelItem(item));
    correctProjectionViewportsAssignments();
    updateActions();
}

void zoHPCDisplayGUII::copyProjection()
{
    zoHPCProjectionItem* projection = currentProjection();
    if (!projection)
        return;
    {
        const QScopedValueRollback<bool> updating(m_updating, true);
        m_copiedProjection.reset(projection->clone());
        // The source has a new identifier: its tiles follow, and viewports find them again by name.
        regenerate(static_cast<zoHPCProjectionItem*>(topLevelOf(projection)));
    }
    correctProjectionViewportsAssignments();
    bindProjection();
}

void zoHPCDisplayGUII::copyDisplay()
{
    zoHPCDisplayItem* item = currentOutput();
    if (!item)
        return;
    m_copiedDisplay.reset(item->clone());
    updateActions();
}

void zoHPCDisplayGUII::pasteProjection()
{
    if (m_running)
        return;
    if (!m_copiedProjection)
        return;
    auto* projection = m_copiedProjection->clone();
    projection->setName(getUniqueProjectionName());
    projection->update();
    m_projectionTree->addTopLevelItem(projection);
    m_projectionTree->setCurrentItem(projection);
}

void zoHPCDisplayGUII::pasteDisplay()
{
    if (m_running)
        return;
    if (!m_copiedDisplay)
        return;
    QTreeWidgetItem* parent = nullptr;
    if (isViewport(m_copiedDisplay.get()))
        parent = currentWindow();
    else if (isPlainWindow(m_copiedDisplay.get()))
        parent = currentDisplay();
    else
        parent = m_displayTree->invisibleRootItem();
    if (!parent)
        return;
    zoHPCDisplayItem* item = m_copiedDisplay->clone();
    parent->addChild(item);
    parent->setExpanded(true);
    m_displayTree->setCurrentItem(item);
    correctProjectionViewportsAssignments();
}

void zoHPCDisplayGUII::convertToPlanes()
{
    if (m_running)
        return;
    zoHPCProjectionItem* projection = currentProjection();
    // Without children nothing would be left of it.
    if (!projection || projection->parent() || projection->childCount() == 0)
        return;
    QTreeWidgetItem* const first = projection->child(0);
    const QString identifier = projection->getString(zoHPCProjectionItem::Identifier);
    {
        const QScopedValueRollback<bool> updating(m_updating, true);
        const int row = m_projectionTree->indexOfTopLevelItem(projection);
        const QList<QTreeWidgetItem*> planes = projection->takeChildren();
        delete m_projectionTree->takeTopLevelItem(row);
        m_projectionTree->insertTopLevelItems(row, planes);
    }
    m_projectionTree->setCurrentItem(first);
    // The planes keep names and identifiers; only what showed the whole projection has to be linked again.
    const QList<zoHPCViewportItem*> viewports = getViewportItems();
    const bool wasShown =
        std::any_of(viewports.cbegin(), viewports.cend(), [&identifier](const zoHPCViewportItem* viewport) {
            return viewport->getString(zoHPCViewportItem::ProjectionIdentifier) == identifier;
        });
    if (wasShown)
        correctProjectionViewportsAssignments();
    bindProjection();
}

void zoHPCDisplayGUII::updateProjection(const QModelIndex& changed)
{
    if (m_updating)
        return;
    auto* projection = dynamic_cast<zoHPCProjectionItem*>(topLevelOf(itemAt(m_projectionTree, changed)));
    if (!projection)
        return;
    {
        const QScopedValueRollback<bool> updating(m_updating, true);
        regenerate(projection);
    }
    correctProjectionViewportsAssignments();
    bindProjection();
}

void zoHPCDisplayGUII::updateDisplay(const QModelIndex& changed)
{
    if (m_updating)
        return;
    const QScopedValueRollback<bool> updating(m_updating, true);
    if (auto* item = dynamic_cast<zoHPCTreeWidgetItem*>(itemAt(m_displayTree, changed)))
        item->update();
}

void zoHPCDisplayGUII::setProjectionType()
{
    zoHPCProjectionItem* projection = currentProjection();
    // A type that the dialog does not know stays as it is.
    if (projection && !m_updating && m_type->currentIndex() >= 0)
        projection->setProjectionType(m_type->currentData().toString());
    updateTiledVsibility();
}

void zoHPCDisplayGUII::updateTiledVsibility()
{
    const zoHPCProjectionType& type = zoHPCProjectionType::of(m_type->currentData().toString());

    m_tileLayoutGroup->setVisible(type.tileLayout);
    for (QWidget* widget : std::initializer_list<QWidget*>{m_rowLabel, m_row, m_columnLabel, m_column})
        widget->setVisible(type.tilePlace);
    m_overlapUnit->setText(*type.overlapUnit ? tr(type.overlapUnit) : QString());
    m_areaGroup->setVisible(type.area);
    m_cornersGroup->setVisible(type.corners);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{m_caveWallsGroup, m_caveSizeGroup, m_caveCenterGroup})
        widget->setVisible(type.cave);
    for (QWidget* widget : std::initializer_list<QWidget*>{m_distanceLabel, m_distance})
        widget->setVisible(type.distance);
    for (QWidget* widget : std::initializer_list<QWidget*>{m_rightOffsetXLabel, m_rightOffsetX,
                                                           m_rightOffsetYLabel, m_rightOffsetY})
        widget->setVisible(type.rightOffset);
    m_edgesGroup->setVisible(type.edges && m_edgeBlending->isChecked());
}

void zoHPCDisplayGUII::setViewportPosition()
{
    const bool custom = m_position->currentData().toString() == QLatin1String("custom");
    for (QWidget* field :
         std::initializer_list<QWidget*>{m_viewportX1, m_viewportY1, m_viewportX2, m_viewportY2})
        field->setEnabled(custom);
}

void zoHPCDisplayGUII::selectProjectionPlane(QTreeWidgetItem* current, QTreeWidgetItem* previous)
{
    Q_UNUSED(previous)
    if (m_updating)
        return;
    if (current && m_projectionTree->currentItem() != current)
        m_projectionTree->setCurrentItem(current);
    bindProjection();
}

void zoHPCDisplayGUII::setSelected(QTreeWidgetItem* current, QTreeWidgetItem* previous)
{
    Q_UNUSED(previous)
    if (m_updating)
        return;
    if (current && m_displayTree->currentItem() != current)
        m_displayTree->setCurrentItem(current);
    bindOutput();
}

void zoHPCDisplayGUII::updateCameraList()
{
    auto* cameras = zoKernelServiceFactory::getService<zoCameraService>();
    const QStringList names = cameras ? cameras->cameraNames() : QStringList();
    const QString current = m_camera->currentText();
    // The choice changes, not the display's camera, which may come and go with the scene.
    const QSignalBlocker blocker(m_camera);
    m_camera->clear();
    m_camera->addItems(names);
    m_camera->setCurrentIndex(m_camera->findText(current, Qt::MatchFixedString | Qt::MatchCaseSensitive));
    m_camera->setEditText(current);
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

void zoHPCDisplayGUII::fillCombos()
{
    for (const zoHPCProjectionType& type : zoHPCProjectionType::all())
        m_type->addItem(icon(type.choiceIcon), tr(type.text), QString::fromLatin1(type.value));
    const auto fill = [](QComboBox* combo, const auto& row) {
        combo->addItem(tr(row.text), QString::fromLatin1(row.value));
    };
    for (const zoHPCDisplayTables::Position& row : zoHPCDisplayTables::Positions)
        fill(m_position, row);
    for (const zoHPCDisplayTables::StereoMode& row : zoHPCDisplayTables::Eyes)
        fill(m_eye, row);
    for (const zoHPCDisplayTables::ComboRow& row : zoHPCDisplayTables::Screens)
        fill(m_screen, row);
    m_nodeNames = new QStringListModel(this);
    m_renderNode->setModel(m_nodeNames);
}

void zoHPCDisplayGUII::bindPanels()
{
    using P = zoHPCProjectionItem;
    using V = zoHPCViewportItem;

    m_projectionMapper = new QZODataWidgetMapper(this);
    m_projectionMapper->setModel(m_projectionTree->model());
    const std::pair<QWidget*, int> projectionFields[] = {
        {m_name, P::Name},
        {m_type, P::Type},
        {m_rightOffsetX, P::RightOffsetX},
        {m_rightOffsetY, P::RightOffsetY},
        {m_row, P::Row},
        {m_column, P::TileColumn},
        {m_rows, P::Rows},
        {m_columns, P::Columns},
        {m_overlapX, P::OverlapX},
        {m_overlapY, P::OverlapY},
        {m_caveWidth, P::CaveWidth},
        {m_caveHeight, P::CaveHeight},
        {m_caveDepth, P::CaveDepth},
        {m_caveCenterX, P::CaveX},
        {m_caveCenterY, P::CaveY},
        {m_caveCenterZ, P::CaveZ},
        {m_leftWall, P::LeftWall},
        {m_rightWall, P::RightWall},
        {m_topWall, P::TopWall},
        {m_bottomWall, P::BottomWall},
        {m_frontWall, P::FrontWall},
        {m_backWall, P::BackWall},
        {m_areaWidth, P::Width},
        {m_areaHeight, P::Height},
        {m_distance, P::Distance},
        {m_lowerLeftX, P::X1},
        {m_lowerLeftY, P::Y1},
        {m_lowerLeftZ, P::Z1},
        {m_lowerRightX, P::X2},
        {m_lowerRightY, P::Y2},
        {m_lowerRightZ, P::Z2},
        {m_upperRightX, P::X3},
        {m_upperRightY, P::Y3},
        {m_upperRightZ, P::Z3},
        {m_edgeBlending, P::EdgeBlending},
        {m_leftEdge, P::LeftEdge},
        {m_rightEdge, P::RightEdge},
        {m_topEdge, P::TopEdge},
        {m_bottomEdge, P::BottomEdge},
    };
    for (const auto& [widget, col] : projectionFields)
        m_projectionMapper->addMapping(widget, col);

    m_displayMapper = new QZODataWidgetMapper(this);
    m_displayMapper->setModel(m_displayTree->model());
    const std::pair<QWidget*, int> outputFields[] = {
        {m_eyeSeparation, V::EyeSeparation},
        {m_camera, V::Camera},
        {m_user, V::User},
        {m_hardwareSync, V::HardwareSync},
        {m_renderNode, V::Node},
        {m_screen, V::Screen},
        {m_windowX, V::X},
        {m_windowY, V::Y},
        {m_windowWidth, V::Width},
        {m_windowHeight, V::Height},
        {m_fullScreen, V::FullScreen},
        {m_position, V::Position},
        {m_viewportX1, V::X1},
        {m_viewportY1, V::Y1},
        {m_viewportX2, V::X2},
        {m_viewportY2, V::Y2},
        {m_flipX, V::FlipX},
        {m_flipY, V::FlipY},
        {m_eye, V::Eye},
    };
    for (const auto& [widget, col] : outputFields)
        m_displayMapper->addMapping(widget, col);

    // After the mappers: the item has the new value when the panel follows it.
    connect(m_type, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &zoHPCDisplayGUII::setProjectionType);
    connect(m_edgeBlending, &QCheckBox::toggled, this, &zoHPCDisplayGUII::updateTiledVsibility);
    connect(m_position, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &zoHPCDisplayGUII::setViewportPosition);
    connect(m_eye, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &zoHPCDisplayGUII::showEyes);
    connect(m_fullScreen, &QCheckBox::toggled, m_geometryGroup, &QWidget::setHidden);
    for (QDoubleSpinBox* field : {m_viewportX1, m_viewportY1, m_viewportX2, m_viewportY2})
        connect(field, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
                &zoHPCDisplayGUII::showPixels);
    connect(m_planeView, &QTreeView::clicked, this, &zoHPCDisplayGUII::assignProjection);
    connect(m_planeView, &QTreeView::activated, this, &zoHPCDisplayGUII::assignProjection);
    setViewportPosition();
    updateTiledVsibility();
    showEyes();
}

void zoHPCDisplayGUII::createActions()
{
    const auto add = [this](QTreeWidget* tree, const QString& text, QKeySequence::StandardKey key,
                            ActiveTree active, void (zoHPCDisplayGUII::*operation)()) {
        auto* action = new QAction(text, tree);
        action->setShortcuts(key);
        action->setShortcutContext(Qt::WidgetShortcut);
        tree->addAction(action);
        connect(action, &QAction::triggered, this, [this, active, operation] {
            activate(active);
            (this->*operation)();
        });
        return action;
    };
    m_deleteProjectionAction = add(m_projectionTree, tr("Delete"), QKeySequence::Delete,
                                   ActiveTree::Projections, &zoHPCDisplayGUII::deleteItem);
    m_copyProjectionAction = add(m_projectionTree, tr("Copy"), QKeySequence::Copy, ActiveTree::Projections,
                                 &zoHPCDisplayGUII::copyProjection);
    m_pasteProjectionAction = add(m_projectionTree, tr("Paste"), QKeySequence::Paste, ActiveTree::Projections,
                                  &zoHPCDisplayGUII::pasteProjection);
    m_convertAction = add(m_projectionTree, tr("Convert to planes"), QKeySequence::UnknownKey,
                          ActiveTree::Projections, &zoHPCDisplayGUII::convertToPlanes);
    m_deleteDisplayAction = add(m_displayTree, tr("Delete"), QKeySequence::Delete, ActiveTree::Outputs,
                                &zoHPCDisplayGUII::deleteItem);
    m_copyDisplayAction = add(m_displayTree, tr("Copy"), QKeySequence::Copy, ActiveTree::Outputs,
                              &zoHPCDisplayGUII::copyDisplay);
    m_pasteDisplayAction = add(m_displayTree, tr("Paste"), QKeySequence::Paste, ActiveTree::Outputs,
                               &zoHPCDisplayGUII::pasteDisplay);

    connect(m_addProjectionButton, &QPushButton::clicked, this, &zoHPCDisplayGUII::addProjection);
    connect(m_addDisplayButton, &QPushButton::clicked, this, &zoHPCDisplayGUII::addDisplay);
    connect(m_addWindowButton, &QPushButton::clicked, this, &zoHPCDisplayGUII::addWindow);
    connect(m_addViewportButton, &QPushButton::clicked, this, &zoHPCDisplayGUII::addViewport);
    connect(m_buttonBox->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            &zoHPCDisplayGUII::apply);

    // F2 renames, as in other trees; here the name has a field of its own.
    auto* rename = new QShortcut(QKeySequence(Qt::Key_F2), m_projectionTree);
    rename->setContext(Qt::WidgetShortcut);
    connect(rename, &QShortcut::activated, m_name, [this] {
        m_name->setFocus(Qt::ShortcutFocusReason);
        m_name->selectAll();
    });
}

void zoHPCDisplayGUII::connectTrees()
{
    connect(m_projectionTree->model(), &QAbstractItemModel::dataChanged, this,
            &zoHPCDisplayGUII::updateProjection);
    connect(m_displayTree->model(), &QAbstractItemModel::dataChanged, this, &zoHPCDisplayGUII::updateDisplay);
    connect(m_projectionTree, &QTreeWidget::currentItemChanged, this,
            &zoHPCDisplayGUII::selectProjectionPlane);
    connect(m_displayTree, &QTreeWidget::currentItemChanged, this, &zoHPCDisplayGUII::setSelected);
    // The selection tells which tree was chosen last, even when its current row stays the same.
    connect(m_projectionTree, &QTreeWidget::itemSelectionChanged, this, [this] {
        if (!m_projectionTree->selectedItems().isEmpty())
            activate(ActiveTree::Projections);
    });
    connect(m_displayTree, &QTreeWidget::itemSelectionChanged, this, [this] {
        if (!m_displayTree->selectedItems().isEmpty())
            activate(ActiveTree::Outputs);
    });
}

void zoHPCDisplayGUII::connectServices()
{
    // By name, as with every service of the host: an older host may lack one of the signals.
    if (auto* cameras = zoKernelServiceFactory::getService<zoCameraService>())
        connect(cameras, SIGNAL(camerasChanged()), this, SLOT(updateCameraList()));
    if (auto* nodes = zoKernelServiceFactory::getService<zoNodeService>())
        connect(nodes, SIGNAL(cameraNameChanged(uint,QString)), this, SLOT(updateCameraList()));
}

void zoHPCDisplayGUII::createPreview()
{
    m_layoutPane = new zoHPCLayoutPane;
    m_layoutPane->setObjectName(QString::fromLatin1("m_layoutPane"));
    m_splitter->addWidget(m_layoutPane);
    m_splitter->setStretchFactor(0, 0);
    m_splitter->setStretchFactor(2, 1);
    constexpr int TREE_WIDTH = 280;
    constexpr int PICTURE_WIDTH = 580; // most problems can be read to their end
    const int pictureWidth = std::max(PICTURE_WIDTH, m_layoutPane->sizeHint().width());
    const int panelWidth = m_panelArea->minimumWidth();
    m_splitter->setSizes({TREE_WIDTH, panelWidth, pictureWidth});
    // Within the screen, with room for the frame around the window.
    constexpr int FRAME = 48;
    const QSize screen = QGuiApplication::primaryScreen()->availableGeometry().size();
    resize(std::min(TREE_WIDTH + panelWidth + pictureWidth, screen.width()),
           std::min(height(), screen.height() - FRAME));
    setHostTree(nullptr);
    // The buttons at the bottom come last.
    QWidget* last = m_layoutPane->problemsView()->list();
    for (const QDialogButtonBox::StandardButton which :
         {QDialogButtonBox::Ok, QDialogButtonBox::Cancel, QDialogButtonBox::Apply}) {
        setTabOrder(last, m_buttonBox->button(which));
        last = m_buttonBox->button(which);
    }

    connect(m_layoutPane, &zoHPCLayoutPane::itemActivated, this, &zoHPCDisplayGUII::chooseItem);
    connect(m_layoutPane, &zoHPCLayoutPane::displayEdited, this,
            &zoHPCDisplayGUII::correctProjectionViewportsAssignments);
    connect(m_layoutPane, &zoHPCLayoutPane::hostsAboutToBeEdited, this, &zoHPCDisplayGUII::noteHosts);
    connect(m_layoutPane, &zoHPCLayoutPane::hostsEdited, this, [this] {
        noteHostChanges();
        if (m_hosts)
            emit m_hosts->hostsChanged();
    });
    for (const QTreeWidget* tree : {m_projectionTree, m_displayTree})
        connect(tree, &QTreeWidget::currentItemChanged, this,
                [this](QTreeWidgetItem* current) { m_layoutPane->setCurrentItem(current); });
}

void zoHPCDisplayGUII::chooseItem(QTreeWidgetItem* item)
{
    QTreeWidget* const tree = item->treeWidget();
    if (tree == m_projectionTree || tree == m_displayTree)
        tree->setCurrentItem(item);
    else if (auto* host = dynamic_cast<zoHPCTreeItem*>(item); host && m_hosts)
        m_hosts->setSelectedItem(host);
}

void zoHPCDisplayGUII::noteHosts()
{
    m_hostsBefore.clear();
    if (!m_hosts)
        return;
    std::vector<zoHPCTreeItem*> hosts;
    m_hosts->master()->getAllSubItems(hosts);
    m_hostsBefore.reserve(hosts.size());
    for (zoHPCTreeItem* host : hosts)
        m_hostsBefore.emplace_back(host, host->getOption(zoHPCOption::Enabled));
}

void zoHPCDisplayGUII::noteHostChanges()
{
    if (m_hosts) {
        for (const auto& [host, enabled] : m_hostsBefore) {
            // Of a row that changes twice the first value counts, which is taken back last.
            if (host->getOption(zoHPCOption::Enabled) != enabled)
                m_hostChanges.emplace_back(indexOf(host->treeWidget(), host), enabled);
        }
    }
    m_hostsBefore.clear();
}

void zoHPCDisplayGUII::takeBackHostChanges()
{
    bool isChanged = false;
    for (auto change = m_hostChanges.crbegin(); m_hosts && change != m_hostChanges.crend(); ++change) {
        // A row that left its tree since, as when another configuration was loaded, is invalid.
        if (!change->first.isValid())
            continue;
        const QTreeWidget* const tree = m_hosts->master()->treeWidget();
        if (auto* host = dynamic_cast<zoHPCTreeItem*>(itemAt(tree, change->first))) {
            host->setOption(zoHPCOption::Enabled, change->second);
            isChanged = true;
        }
    }
    m_hostChanges.clear();
    if (isChanged)
        emit m_hosts->hostsChanged();
}

void zoHPCDisplayGUII::activate(ActiveTree tree)
{
    m_activeTree = tree;
    // One row is highlighted in the whole dialog: the one that the panel shows and that Delete means.
    QTreeWidget* other = tree == ActiveTree::Projections ? m_displayTree : m_projectionTree;
    other->clearSelection();
    m_layoutPane->setCurrentItem(tree == ActiveTree::Projections ? m_projectionTree->currentItem()
                                                                 : m_displayTree->currentItem());
    showPanel();
    updateActions();
}

void zoHPCDisplayGUII::updateActions()
{
    const zoHPCProjectionItem* projection = currentProjection();
    const bool independent = projection && !projection->parent();
    m_deleteProjectionAction->setEnabled(independent && !m_running);
    m_copyProjectionAction->setEnabled(projection != nullptr);
    m_pasteProjectionAction->setEnabled(m_copiedProjection && !m_running);
    m_convertAction->setEnabled(independent && projection->childCount() > 0 && !m_running);
    m_addProjectionButton->setEnabled(!m_running);

    m_deleteDisplayAction->setEnabled(currentOutput() && !m_running);
    m_copyDisplayAction->setEnabled(currentOutput() != nullptr);
    m_pasteDisplayAction->setEnabled(m_copiedDisplay && !m_running);
    m_addDisplayButton->setEnabled(!m_running);
    m_addWindowButton->setEnabled(currentDisplay() && !m_running);
    m_addViewportButton->setEnabled(currentWindow() && !m_running);
}

void zoHPCDisplayGUII::showPanel()
{
    QWidget* page = m_nothingPage;
    if (m_activeTree == ActiveTree::Projections && currentProjection())
        page = m_projectionPage;
    else if (m_activeTree == ActiveTree::Outputs && currentOutput()) {
        if (isViewport(currentOutput()))
            page = m_viewportPage;
        else
            page = isPlainWindow(currentOutput()) ? m_windowPage : m_displayPage;
    }
    // Its rows cost as much as those of the tree, so it has them only while it is seen.
    if (page == m_viewportPage && m_planeView->model() == nullptr) {
        m_planeView->setModel(m_projectionTree->model());
        showFirstColumnOnly(m_planeView);
    } else if (page != m_viewportPage && m_planeView->model() != nullptr) {
        m_planeView->setModel(nullptr);
    }
    m_panels->setCurrentWidget(page);
    showAssignedProjection();
}

void zoHPCDisplayGUII::bindProjection()
{
    zoHPCProjectionItem* projection = currentProjection();
    m_projectionMapper->setCurrentRow(indexOf(m_projectionTree, projection));
    const bool generated = projection && projection->parent();
    m_generatedHint->setVisible(generated);
    // Read-only, not disabled: the numbers of a tile are there to be read.
    if (m_name->isReadOnly() != generated) {
        const QList<QAbstractSpinBox*> numbers = m_projectionPage->findChildren<QAbstractSpinBox*>();
        for (QAbstractSpinBox* number : numbers) {
            number->setReadOnly(generated);
            number->setButtonSymbols(generated ? QAbstractSpinBox::NoButtons
                                               : QAbstractSpinBox::UpDownArrows);
        }
        m_name->setReadOnly(generated);
        for (QWidget* choice : std::initializer_list<QWidget*>{m_type, m_edgeBlending})
            choice->setEnabled(!generated);
    }
    updateTiledVsibility();
    showPanel();
    updateActions();
}

void zoHPCDisplayGUII::bindOutput()
{
    m_displayMapper->setCurrentRow(indexOf(m_displayTree, currentOutput()));
    m_geometryGroup->setHidden(m_fullScreen->isChecked());
    setViewportPosition();
    showEyes();
    showPanel();
    showPixels();
    updateActions();
}

void zoHPCDisplayGUII::showAssignedProjection()
{
    const auto* viewport = dynamic_cast<const zoHPCViewportItem*>(currentOutput());
    if (!viewport || m_planeView->model() == nullptr)
        return;
    const QString name = viewport->getString(zoHPCViewportItem::Projection);
    m_planeName->setText(name.isEmpty() ? tr("None yet: click the surface that this viewport shows.") : name);

    const QString identifier = viewport->getString(zoHPCViewportItem::ProjectionIdentifier);
    QModelIndex assigned;
    if (!name.isEmpty() && m_setup->isProjection(identifier)) {
        const QList<zoHPCProjectionItem*> projections = getProjectionItems();
        for (zoHPCProjectionItem* projection : projections) {
            if (projection->getString(zoHPCProjectionItem::Identifier) == identifier)
                assigned = indexOf(m_projectionTree, projection);
        }
    }
    if (m_planeView->currentIndex() != assigned || !assigned.isValid()) {
        m_planeView->setCurrentIndex(assigned);
        if (!assigned.isValid())
            m_planeView->clearSelection();
    }
}

void zoHPCDisplayGUII::assignProjection(const QModelIndex& index)
{
    auto* viewport = dynamic_cast<zoHPCViewportItem*>(currentOutput());
    const auto* projection = dynamic_cast<zoHPCProjectionItem*>(itemAt(m_projectionTree, index));
    if (!viewport || !projection)
        return;
    {
        const QScopedValueRollback<bool> updating(m_updating, true);
        viewport->setString(zoHPCViewportItem::ProjectionIdentifier,
                            projection->getString(zoHPCProjectionItem::Identifier));
        viewport->setProjection(projection->getString(zoHPCProjectionItem::Name));
    }
    collectProjections();
    showAssignedProjection();
}

void zoHPCDisplayGUII::showPixels()
{
    const auto* viewport = dynamic_cast<const zoHPCViewportItem*>(currentOutput());
    const auto* window = viewport ? dynamic_cast<const zoHPCWindowItem*>(viewport->parent()) : nullptr;
    // How large a full-screen window is only its screen knows.
    const bool known = window && !window->getBool(zoHPCWindowItem::FullScreen);
    for (QWidget* widget : std::initializer_list<QWidget*>{m_lowerLeftPixelLabel, m_lowerLeftPixel,
                                                           m_upperRightPixelLabel, m_upperRightPixel})
        widget->setVisible(known);
    if (!known)
        return;
    const auto corner = [window](double x, double y) {
        return tr("%1, %2").arg(QString::number(qRound(x * window->getInt(zoHPCWindowItem::Width))),
                                QString::number(qRound(y * window->getInt(zoHPCWindowItem::Height))));
    };
    m_lowerLeftPixel->setText(corner(m_viewportX1->value(), m_viewportY1->value()));
    m_upperRightPixel->setText(corner(m_viewportX2->value(), m_viewportY2->value()));
}

void zoHPCDisplayGUII::showEyes()
{
    using Eyes = zoHPCDisplayTables::StereoMode::Eyes;
    const zoHPCDisplayTables::StereoMode* const mode =
        zoHPCDisplayTables::stereoMode(m_eye->currentData().toString());
    if (!mode || mode->eyes == Eyes::Left || mode->eyes == Eyes::Right)
        m_eyesShown->clear();
    else
        m_eyesShown->setText(mode->eyes == Eyes::Mono ? tr("Mono") : tr("Both"));
}

zoHPCProjectionItem* zoHPCDisplayGUII::currentProjection() const
{
    return dynamic_cast<zoHPCProjectionItem*>(m_projectionTree->currentItem());
}

zoHPCDisplayItem* zoHPCDisplayGUII::currentOutput() const
{
    return dynamic_cast<zoHPCDisplayItem*>(m_displayTree->currentItem());
}

zoHPCDisplayItem* zoHPCDisplayGUII::currentDisplay() const
{
    QTreeWidgetItem* item = m_displayTree->currentItem();
    while (item && !isPlainDisplay(item))
        item = item->parent();
    return static_cast<zoHPCDisplayItem*>(item);
}

zoHPCWindowItem* zoHPCDisplayGUII::currentWindow() const
{
    QTreeWidgetItem* item = m_displayTree->currentItem();
    while (item && !isPlainWindow(item))
        item = item->parent();
    return static_cast<zoHPCWindowItem*>(item);
}

void zoHPCDisplayGUII::regenerate(zoHPCProjectionItem* projection)
{
    // A generated row that is current goes with all others; its successor takes its place.
    QTreeWidgetItem* current = m_projectionTree->currentItem();
    const int row = current && current->parent() == projection ? projection->indexOfChild(current) : -1;
    projection->update();
    if (row >= 0)
        m_projectionTree->setCurrentItem(row < projection->childCount() ? projection->child(row)
                                                                        : projection);
}

void zoHPCDisplayGUII::expandOutputs()
{
    // Row by row: expandAll() makes each later insertion slow.
    for (int i = 0; i < m_displayTree->topLevelItemCount(); ++i) {
        QTreeWidgetItem* display = m_displayTree->topLevelItem(i);
        display->setExpanded(true);
        for (int j = 0; j < display->childCount(); ++j)
            display->child(j)->setExpanded(true);
    }
}
