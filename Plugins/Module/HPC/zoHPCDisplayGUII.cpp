#include "zoHPCDisplayGUII.h"

#include "zoHPCDisplayItem.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <zoCameraService.h>
#include <zoKernelServiceFactory.h>
#include <zoNodeService.h>

#include <QAction>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QSet>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

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

// The row of a tree that a model index stands for.
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
    buildWidgets();
    connectServices();
    updateCameraList();
    updateActions();
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
    return zoHPCTreeWidgetItem::subChildren<zoHPCProjectionItem>(m_projectionTree);
}

QList<zoHPCViewportItem*> zoHPCDisplayGUII::getViewportItems() const
{
    return zoHPCTreeWidgetItem::subChildren<zoHPCViewportItem>(m_displayTree);
}

QList<zoHPCWindowItem*> zoHPCDisplayGUII::getWindowItems() const
{
    return zoHPCTreeWidgetItem::subChildren<zoHPCWindowItem>(m_displayTree);
}

QList<zoHPCWindowItem*> zoHPCDisplayGUII::getDisplayItems() const
{
    return getWindowItems();
}

void zoHPCDisplayGUII::setNodeNames(const QStringList& names)
{
    struct Seen
    {
        int count;
        int first; // place of the first entry
    };
    QHash<QString, Seen> seen;
    QStringList entries;
    entries.reserve(names.size());
    for (const QString& name : names) {
        const auto it = seen.find(name);
        if (it == seen.end()) {
            seen.insert(name, {1, entries.size()});
            entries.append(name);
            continue;
        }
        ++it->count;
        if (it->count == 2)
            entries[it->first] = QStringLiteral("%1 1").arg(name);
        entries.append(QStringLiteral("%1 %2").arg(name, QString::number(it->count)));
    }
    m_nodeNames = entries;

    const QSet<QString> known(entries.cbegin(), entries.cend());
    const QScopedValueRollback<bool> updating(m_updating, true);
    const BulkChange change(m_displayTree);
    const QList<zoHPCWindowItem*> windows = getWindowItems();
    for (zoHPCWindowItem* window : windows) {
        if (window->renderNode().isEmpty() || known.contains(window->renderNode()))
            continue;
        window->setRenderNode(QString::fromLatin1(""));
        window->update();
    }
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
            if (projection->projectionType() == QLatin1String("wall"))
                walls.append(projection);
        }
        // From the last: a wall inside a wall goes when the outer one lays out its tiles.
        for (auto it = walls.crbegin(); it != walls.crend(); ++it) {
            (*it)->setDouble(zoHPCProjectionItem::Distance, static_cast<double>(distance));
            regenerate(*it);
        }
    }
    correctProjectionViewportsAssignments();
}

void zoHPCDisplayGUII::setIsRunning(bool running)
{
    m_running = running;
    updateActions();
}

void zoHPCDisplayGUII::saveToXML(QDomDocument& document) const
{
    QDomElement root = document.documentElement();
    if (root.isNull())
        return;
    for (int i = 0; i < m_projectionTree->topLevelItemCount(); ++i) {
        if (auto* projection = dynamic_cast<zoHPCProjectionItem*>(m_projectionTree->topLevelItem(i)))
            root.appendChild(projection->toXML(document, QString::fromLatin1("projection")));
    }
    for (int i = 0; i < m_displayTree->topLevelItemCount(); ++i) {
        if (auto* display = dynamic_cast<zoHPCDisplayItem*>(m_displayTree->topLevelItem(i)))
            root.appendChild(display->toXML(document, QString::fromLatin1("display")));
    }
}

void zoHPCDisplayGUII::loadFromXML(const QDomDocument& document)
{
    const QDomElement root = document.documentElement();
    const int version = root.attribute(QString::fromLatin1("version"), QString::fromLatin1("0")).toInt();
    {
        const QScopedValueRollback<bool> updating(m_updating, true);
        m_projectionTree->clear();
        m_displayTree->clear();

        const QString projectionTag = QString::fromLatin1("projection");
        QList<QTreeWidgetItem*> projections;
        for (QDomElement element = root.firstChildElement(projectionTag); !element.isNull();
             element = element.nextSiblingElement(projectionTag)) {
            auto projection =
                std::make_unique<zoHPCProjectionItem>(QString::fromLatin1(""), QString::fromLatin1("wall"));
            projection->fromXML(element);
            projections.append(projection.release());
        }
        m_projectionTree->addTopLevelItems(projections);

        const QString displayTag = QString::fromLatin1("display");
        QList<QTreeWidgetItem*> displays;
        for (QDomElement element = root.firstChildElement(displayTag); !element.isNull();
             element = element.nextSiblingElement(displayTag)) {
            auto display = std::make_unique<zoHPCDisplayItem>();
            display->fromXML(element);
            displays.append(display.release());
        }
        m_displayTree->addTopLevelItems(displays);
        expandOutputs();
    }
    if (version == 0)
        correctWrongRows();
    correctProjectionViewportsAssignments();
    emit displayChanged();
}

void zoHPCDisplayGUII::setDefaultConfig()
{
    m_projectionTree->clear();
    m_displayTree->clear();
    m_displayTree->addTopLevelItem(new zoHPCDisplayItem);
}

void zoHPCDisplayGUII::correctProjectionViewportsAssignments()
{
    collectProjections();

    const QScopedValueRollback<bool> updating(m_updating, true);
    const BulkChange change(m_displayTree);
    const QList<zoHPCViewportItem*> viewports = getViewportItems();
    for (zoHPCViewportItem* viewport : viewports) {
        const auto name =
            m_projectionNames.constFind(viewport->getString(zoHPCViewportItem::ProjectionIdentifier));
        if (name != m_projectionNames.constEnd()) {
            viewport->setProjection(name.value());
            continue;
        }
        const auto identifier =
            m_projectionIdentifiers.constFind(viewport->getString(zoHPCViewportItem::Projection));
        if (identifier != m_projectionIdentifiers.constEnd())
            viewport->setString(zoHPCViewportItem::ProjectionIdentifier, identifier.value());
        else
            viewport->setProjection(QString::fromLatin1(""));
    }
}

void zoHPCDisplayGUII::correctWrongRows()
{
    static const QRegularExpression rowPattern(QString::fromLatin1("row:(\\d+)"));

    QHash<QString, QString> renamed;
    for (int i = 0; i < m_projectionTree->topLevelItemCount(); ++i) {
        const auto* wall = dynamic_cast<zoHPCProjectionItem*>(m_projectionTree->topLevelItem(i));
        if (!wall || wall->projectionType() != QLatin1String("wall"))
            continue;
        const int rows = wall->getInt(zoHPCProjectionItem::Rows);
        if (rows < 2)
            continue;
        const QList<zoHPCProjectionItem*> tiles = wall->children<zoHPCProjectionItem>();
        for (const zoHPCProjectionItem* tile : tiles) {
            if (!tile)
                continue;
            QString name = tile->getString(zoHPCProjectionItem::Name);
            // The last one is the tile's own: the wall's name may hold such a text, too.
            QRegularExpressionMatch match;
            if (name.lastIndexOf(rowPattern, -1, &match) < 0)
                continue;
            const QString oldName = name;
            const int row = match.captured(1).toInt();
            name.replace(match.capturedStart(), match.capturedLength(),
                         QStringLiteral("row:%1").arg(rows + 1 - row));
            renamed.insert(oldName, name);
        }
    }
    if (renamed.isEmpty())
        return;

    const QScopedValueRollback<bool> updating(m_updating, true);
    const BulkChange change(m_displayTree);
    const QList<zoHPCViewportItem*> viewports = getViewportItems();
    for (zoHPCViewportItem* viewport : viewports) {
        const auto it = renamed.constFind(viewport->getString(zoHPCViewportItem::Projection));
        if (it == renamed.constEnd())
            continue;
        viewport->setProjection(it.value());
        viewport->setString(zoHPCViewportItem::ProjectionIdentifier, QString::fromLatin1(""));
    }
}

void zoHPCDisplayGUII::collectProjections()
{
    m_projectionNames.clear();
    m_projectionIdentifiers.clear();
    const QList<zoHPCProjectionItem*> projections = getProjectionItems();
    for (const zoHPCProjectionItem* projection : projections) {
        const QString identifier = projection->getString(zoHPCProjectionItem::Identifier);
        const QString name = projection->getString(zoHPCProjectionItem::Name);
        m_projectionNames.insert(identifier, name);
        m_projectionIdentifiers.insert(name, identifier);
    }
}

QString zoHPCDisplayGUII::getUniqueProjectionName() const
{
    QSet<QString> names;
    const QList<zoHPCProjectionItem*> projections = getProjectionItems();
    for (const zoHPCProjectionItem* projection : projections)
        names.insert(projection->getString(zoHPCProjectionItem::Name));
    for (int counter = 1;; ++counter) {
        const QString name = QStringLiteral("%1%2").arg(tr("Projection"), QString::number(counter));
        if (!names.contains(name))
            return name;
    }
}

QStringList zoHPCDisplayGUII::attributeOrder(const QString& tagName)
{
    if (tagName == QLatin1String("projection"))
        return zoHPCTreeWidgetItem::attributeOrder(zoHPCProjectionItem::columns(QString()));
    if (tagName == QLatin1String("display"))
        return zoHPCTreeWidgetItem::attributeOrder(zoHPCDisplayItem::columns());
    if (tagName == QLatin1String("window"))
        return zoHPCTreeWidgetItem::attributeOrder(zoHPCWindowItem::columns());
    if (tagName == QLatin1String("viewport"))
        return zoHPCTreeWidgetItem::attributeOrder(zoHPCViewportItem::columns());
    return {};
}

void zoHPCDisplayGUII::open(const QStringList& nodeNames)
{
    for (QTreeWidget* tree : {m_projectionTree, m_displayTree}) {
        tree->clearSelection();
        tree->setCurrentItem(nullptr);
    }
    setSelected(nullptr, nullptr);

    m_backup = QDomDocument();
    QDomElement root = m_backup.createElement(QString::fromLatin1("cluster"));
    root.setAttribute(QString::fromLatin1("version"), QString::fromLatin1("1"));
    m_backup.appendChild(root);
    saveToXML(m_backup);

    setNodeNames(nodeNames);
    setModal(true);
    show();
}

void zoHPCDisplayGUII::apply()
{
    emit displayChanged();
}

void zoHPCDisplayGUII::accept()
{
    emit displayChanged();
    QDialog::accept();
}

void zoHPCDisplayGUII::reject()
{
    if (!m_backup.documentElement().isNull()) {
        const QSignalBlocker blocker(this);
        loadFromXML(m_backup);
    }
    QDialog::reject();
}

void zoHPCDisplayGUII::addProjection()
{
    auto* projection = new zoHPCProjectionItem(getUniqueProjectionName(), QString::fromLatin1("wall"));
    m_projectionTree->addTopLevelItem(projection);
    m_projectionTree->setCurrentItem(projection);
}

void zoHPCDisplayGUII::addDisplay()
{
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
    if (!display)
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
    if (!window)
        return;
    auto* viewport = new zoHPCViewportItem;
    window->addChild(viewport);
    window->setExpanded(true);
    m_displayTree->setCurrentItem(viewport);
}

void zoHPCDisplayGUII::deleteItem()
{
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
    updateActions();
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
    zoHPCProjectionItem* projection = currentProjection();
    // Without children nothing would be left of it.
    if (!projection || projection->parent() || projection->childCount() == 0)
        return;
    {
        const QScopedValueRollback<bool> updating(m_updating, true);
        const int row = m_projectionTree->indexOfTopLevelItem(projection);
        const QList<QTreeWidgetItem*> planes = projection->takeChildren();
        delete m_projectionTree->takeTopLevelItem(row);
        m_projectionTree->insertTopLevelItems(row, planes);
    }
    m_projectionTree->setCurrentItem(nullptr);
    correctProjectionViewportsAssignments();
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
}

void zoHPCDisplayGUII::updateDisplay(const QModelIndex& changed)
{
    if (m_updating)
        return;
    const QScopedValueRollback<bool> updating(m_updating, true);
    if (auto* item = dynamic_cast<zoHPCTreeWidgetItem*>(itemAt(m_displayTree, changed)))
        item->update();
}

void zoHPCDisplayGUII::selectProjectionPlane(QTreeWidgetItem* current, QTreeWidgetItem* previous)
{
    Q_UNUSED(previous)
    if (m_updating)
        return;
    if (current && m_projectionTree->currentItem() != current)
        m_projectionTree->setCurrentItem(current);
    updateActions();
}

void zoHPCDisplayGUII::setSelected(QTreeWidgetItem* current, QTreeWidgetItem* previous)
{
    Q_UNUSED(previous)
    if (m_updating)
        return;
    if (current && m_displayTree->currentItem() != current)
        m_displayTree->setCurrentItem(current);
    updateActions();
}

void zoHPCDisplayGUII::updateCameraList() {}

void zoHPCDisplayGUII::keyPressEvent(QKeyEvent* event)
{
    // Return ends the editing of a field, never the dialog.
    if (event->key() == Qt::Key_Return) {
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

void zoHPCDisplayGUII::buildWidgets()
{
    setWindowTitle(tr("Display Setup"));
    auto* layout = new QVBoxLayout(this);
    auto* trees = new QHBoxLayout;
    layout->addLayout(trees);
    m_projectionTree = new QTreeWidget(this);
    m_projectionTree->setObjectName(QString::fromLatin1("m_projectionTree"));
    m_projectionTree->setColumnCount(zoHPCProjectionItem::ColumnCount);
    m_displayTree = new QTreeWidget(this);
    m_displayTree->setObjectName(QString::fromLatin1("m_displayTree"));
    m_displayTree->setColumnCount(zoHPCViewportItem::ColumnCount);
    for (QTreeWidget* tree : {m_projectionTree, m_displayTree}) {
        // The other columns hold the properties.
        for (int col = 1; col < tree->columnCount(); ++col)
            tree->setColumnHidden(col, true);
        tree->setUniformRowHeights(true);
        trees->addWidget(tree);
    }
    m_projectionTree->setHeaderLabels({tr("Projections")});
    m_displayTree->setHeaderLabels({tr("Windows and Viewports")});
    m_pasteProjectionAction = new QAction(tr("Paste"), this);
    m_pasteDisplayAction = new QAction(tr("Paste"), this);

    connect(m_projectionTree->model(), &QAbstractItemModel::dataChanged, this,
            &zoHPCDisplayGUII::updateProjection);
    connect(m_displayTree->model(), &QAbstractItemModel::dataChanged, this, &zoHPCDisplayGUII::updateDisplay);
    connect(m_projectionTree, &QTreeWidget::currentItemChanged, this,
            &zoHPCDisplayGUII::selectProjectionPlane);
    connect(m_displayTree, &QTreeWidget::currentItemChanged, this, &zoHPCDisplayGUII::setSelected);
    connect(m_projectionTree, &QTreeWidget::itemSelectionChanged, this, [this] {
        if (!m_projectionTree->selectedItems().isEmpty())
            activate(ActiveTree::Projections);
    });
    connect(m_displayTree, &QTreeWidget::itemSelectionChanged, this, [this] {
        if (!m_displayTree->selectedItems().isEmpty())
            activate(ActiveTree::Outputs);
    });

    auto* buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply, this);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &zoHPCDisplayGUII::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &zoHPCDisplayGUII::reject);
    connect(buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, &zoHPCDisplayGUII::apply);
}

void zoHPCDisplayGUII::connectServices()
{
    // By name, as with every service of the host: an older host may lack one of the signals.
    if (auto* cameras = zoKernelServiceFactory::getService<zoCameraService>())
        connect(cameras, SIGNAL(camerasChanged()), this, SLOT(updateCameraList()));
    if (auto* nodes = zoKernelServiceFactory::getService<zoNodeService>())
        connect(nodes, SIGNAL(cameraNameChanged(uint,QString)), this, SLOT(updateCameraList()));
}

void zoHPCDisplayGUII::activate(ActiveTree tree)
{
    m_activeTree = tree;
    // One row is highlighted in the whole dialog: the one that Delete means.
    QTreeWidget* other = tree == ActiveTree::Projections ? m_displayTree : m_projectionTree;
    other->clearSelection();
    updateActions();
}

void zoHPCDisplayGUII::updateActions()
{
    m_pasteProjectionAction->setEnabled(m_copiedProjection != nullptr);
    m_pasteDisplayAction->setEnabled(m_copiedDisplay != nullptr);
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
