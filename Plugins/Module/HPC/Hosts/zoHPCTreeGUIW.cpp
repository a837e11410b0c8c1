#include "zoHPCTreeGUIW.h"

#include "ui_zoHPCTreeGUIW.h"
#include "zoHPCConfigEditGUIW.h"
#include "zoHPCHostIcon.h"
#include "zoHPCHostTree.h"
#include "zoHPCHostsTextWriter.h"
#include "zoHPCKeys.h"
#include "zoHPCNumberedName.h"
#include "zoHPCTreeFilter.h"
#include "zoHPCTreeItem.h"
#include "zoHPCTreePlace.h"
#include "zoHPCTreeWalk.h"
#include "zoHPCWindowMemory.h"
#include "zoText.h"

#include <zoIconManager.h>

#include <QAction>
#include <QCursor>
#include <QEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStyle>
#include <QTreeWidget>

#include <algorithm>
#include <set>
#include <vector>

namespace
{
// The palette's own, or halfway between background and text when it could not be read.
QBrush readableLight(const QPalette& palette, QPalette::ColorGroup group)
{
    const QColor base = palette.color(group, QPalette::Base);
    const QColor text = palette.color(group, QPalette::Text);
    if (qAbs(palette.color(group, QPalette::Light).lightness() - base.lightness()) >= 60)
        return palette.brush(group, QPalette::Light);
    return QColor((base.red() + text.red()) / 2, (base.green() + text.green()) / 2,
                  (base.blue() + text.blue()) / 2);
}
} // namespace

zoHPCTreeGUIW::zoHPCTreeGUIW(QWidget* parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui_zoHPCTreeGUIW>())
    , m_configAction(
          new QAction(zoIconManager::getIcon(zoText("Network"), QString()), tr("Cluster config..."), this))
    , m_addNetworkAction(new QAction(tr("Add network"), this))
    , m_addHostAction(new QAction(tr("Add compute node"), this))
    , m_removeNetworkAction(new QAction(tr("Remove network"), this))
    , m_removeHostAction(new QAction(tr("Remove compute node"), this))
    , m_hosts(std::make_unique<zoHPCHostTree>())
    , m_master(m_hosts->master())
{
    m_ui->setupUi(this);
    QHeaderView* header = m_ui->m_treeWidget->header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setResizeContentsPrecision(0); // what is visible
    m_ui->m_treeWidget->viewport()->installEventFilter(this);
    setReadablePalette();

    m_hosts->setPaletteSource([this] { return palette(); });
    m_ui->m_treeWidget->addTopLevelItem(m_master);
    updateRowHeight();
    expandAllParents();
    createFilter();
    followHosts();

    connect(m_ui->m_treeWidget, &QTreeWidget::currentItemChanged, this, &zoHPCTreeGUIW::currentItemChanged);
    connect(m_ui->m_treeWidget, &QTreeWidget::itemSelectionChanged, this, &zoHPCTreeGUIW::selectionChanged);
    connect(m_ui->m_treeWidget, &zoHPCHostTreeWidget::nodesDropped, this, &zoHPCTreeGUIW::moveNodes);
    connect(m_ui->m_treeWidget, &QWidget::customContextMenuRequested, this,
            &zoHPCTreeGUIW::contextMenuRequested);
    connect(m_configAction, &QAction::triggered, this, &zoHPCTreeGUIW::editHosts);
    connect(m_addNetworkAction, &QAction::triggered, this, &zoHPCTreeGUIW::addNetwork);
    connect(m_addHostAction, &QAction::triggered, this, &zoHPCTreeGUIW::addHost);
    connect(m_removeNetworkAction, &QAction::triggered, this, [this] { removeRows(Kind::Network); });
    connect(m_removeHostAction, &QAction::triggered, this, [this] { removeRows(Kind::Node); });

    auto* keys = new zoHPCKeys(this);
    keys->add(m_ui->m_treeWidget, Qt::Key_Delete, [this] { removeByKey(); });

    setSelectedItem(m_master);
}

zoHPCTreeGUIW::~zoHPCTreeGUIW()
{
    m_ui->m_treeWidget->disconnect(this);
    m_ui->m_treeWidget->model()->disconnect(this);
    m_hosts->disconnect(this);
    // Removing rows costs the number of expanded ones times their depth.
    m_ui->m_treeWidget->collapseAll();
    m_hosts.reset(); // now, while the view of its rows is whole
}

void zoHPCTreeGUIW::createFilter()
{
    m_filter =
        new zoHPCTreeFilter(m_ui->m_treeWidget, [](const QTreeWidgetItem& row) { return row.text(0); });
    m_filter->setMatch([](const QTreeWidgetItem& row, const QString& word) {
        return hasWord(static_cast<const zoHPCTreeItem&>(row), word.toLower());
    });
    m_filter->setCounts(
        [](const QTreeWidgetItem& row) { return static_cast<const zoHPCTreeItem&>(row).isNode(); });
    m_filter->setKeepsCurrentRow(true);
    m_filter->field()->setPlaceholderText(tr("Filter networks and compute nodes"));
    m_filter->field()->setToolTip(
        tr("Shows the rows that have each of these words: a part of the name, or one of %1, or an option as "
           "speed=10g")
            .arg(QStringList{tr("disabled"), tr("running"), tr("display"), tr("gateway"), tr("encrypted")}
                     .join(QLatin1String(", "))));
    m_ui->m_layout->insertWidget(0, m_filter);
    setTabOrder(m_filter->field(), m_ui->m_treeWidget);
    setFocusProxy(m_ui->m_treeWidget);
}

bool zoHPCTreeGUIW::hasWord(const zoHPCTreeItem& item, const QString& word)
{
    const auto isWord = [&word](bool has, const QString& state) { return has && word == state.toLower(); };
    if (isWord(!item.isEnabled(), tr("disabled")) || isWord(item.isRunning(), tr("running")) ||
        isWord(item.isDisplayNode(), tr("display")) || isWord(item.isEncrypted(), tr("encrypted")) ||
        isWord(item.isNode() && item.childCount() > 0, tr("gateway")))
        return true;
    const int equals = word.indexOf(QLatin1Char('='));
    bool has = false;
    item.forEachOption([&](const QString& name, const QString& value) {
        const QString shown = value.toLower();
        const bool isNamed = equals > 0 && name.toLower() == word.left(equals);
        has =
            has || (!shown.isEmpty() && shown == word) || (isNamed && shown.startsWith(word.mid(equals + 1)));
    });
    return has;
}

void zoHPCTreeGUIW::followHosts()
{
    connect(m_hosts.get(), &zoHPCHostTree::aboutToReplaceItems, this, [this] {
        setSelectedItem(m_master);
        // Removing rows costs the number of expanded ones times their depth.
        m_ui->m_treeWidget->collapseAll();
    });
    connect(m_hosts.get(), &zoHPCHostTree::itemsReplaced, this, [this] {
        expandAllParents();
        if (m_filter->isOn())
            m_filter->apply();
    });
    connect(m_hosts.get(), &zoHPCHostTree::changed, this, &zoHPCTreeGUIW::changed);
    // Others may move and delete items.
    const QAbstractItemModel* rows = m_ui->m_treeWidget->model();
    connect(rows, &QAbstractItemModel::rowsInserted, this, [this] { m_hosts->noteChange(); });
    connect(rows, &QAbstractItemModel::rowsRemoved, this, [this] { m_hosts->noteChange(); });
}

const QString& zoHPCTreeGUIW::hostFile() const
{
    return m_hosts->hostFile();
}

const QString& zoHPCTreeGUIW::booking() const
{
    return m_hosts->booking();
}

zoHPCTreeItem::zoHPCTreeItem(zoHPCTreeGUIW* tree)
    : zoHPCTreeItem(tree ? static_cast<zoHPCTreeContext*>(tree->hosts()) : nullptr)
{
}

zoHPCTreeItem* zoHPCTreeGUIW::selectedItem() const
{
    return static_cast<zoHPCTreeItem*>(m_ui->m_treeWidget->currentItem());
}

void zoHPCTreeGUIW::setSelectedItem(zoHPCTreeItem* item)
{
    // Alone, also while a person holds Ctrl, with which views add rows to those that are selected.
    m_ui->m_treeWidget->setCurrentItem(item, 0, QItemSelectionModel::ClearAndSelect);
}

std::vector<zoHPCTreeItem*> zoHPCTreeGUIW::selectedItems() const
{
    std::vector<zoHPCTreeItem*> items;
    zoHPCTreeItem* const current = selectedItem();
    if (current != nullptr && !current->isSelected())
        return {current};
    zoHPCTreeWalk::forEach(m_master, [&items](zoHPCTreeItem* item) {
        if (item->isSelected())
            items.push_back(item);
    });
    return items;
}

zoHPCTreeItem* zoHPCTreeGUIW::createMaster()
{
    return m_hosts->createMaster();
}

zoHPCTreeItem* zoHPCTreeGUIW::createNetwork(QTreeWidgetItem* parent, int index)
{
    return m_hosts->createNetwork(parent, index);
}

zoHPCTreeItem* zoHPCTreeGUIW::createNode(QTreeWidgetItem* parent, const QString& name, int index)
{
    return m_hosts->createNode(parent, name, index);
}

QStringList zoHPCTreeGUIW::getNodeNames() const
{
    return m_hosts->getNodeNames();
}

std::vector<zoHPCTreeItem*> zoHPCTreeGUIW::getNodeItems() const
{
    return m_hosts->getNodeItems();
}

zoHPCTreeItem* zoHPCTreeGUIW::findNetworkByIndex(int index) const
{
    return m_hosts->findNetworkByIndex(index);
}

QString zoHPCTreeGUIW::getHostsString()
{
    if (selectedItem() != m_master)
        setSelectedItem(m_master);
    return m_hosts->getHostsString();
}

void zoHPCTreeGUIW::getHostsString(zoHPCTreeItem* item, std::stringstream& out, int depth)
{
    zoHPCHostsTextWriter writer;
    writer.writeItem(item, depth);
    out << writer.text();
}

void zoHPCTreeGUIW::getHostRangeString(std::vector<zoHPCTreeItem*> items, std::stringstream& out, int depth)
{
    zoHPCHostsTextWriter writer;
    writer.writeRange(items, depth);
    out << writer.text();
}

void zoHPCTreeGUIW::setHostString(const QString& text)
{
    m_hosts->setHostString(text);
}

void zoHPCTreeGUIW::loadNodesFile()
{
    m_hosts->loadNodesFile();
}

void zoHPCTreeGUIW::setHostFile(const QString& path)
{
    m_hosts->setHostFile(path);
}

std::vector<zoHPCTreeItem*> zoHPCTreeGUIW::insertHostRange(zoHPCTreeItem* node)
{
    return m_hosts->insertHostRange(node);
}

QString zoHPCTreeGUIW::createHostName(const QString& name, int offset)
{
    return zoHPCNumberedName(name).name(offset);
}

void zoHPCTreeGUIW::saveToXML(QDomDocument& doc)
{
    m_hosts->saveToXML(doc);
}

void zoHPCTreeGUIW::writeSection(zoHPCDocumentWriter& writer)
{
    m_hosts->writeSection(writer);
}

void zoHPCTreeGUIW::writeRows(zoHPCDocumentWriter& writer) const
{
    m_hosts->writeRows(writer);
}

void zoHPCTreeGUIW::appendXMLConfig(zoHPCTreeItem* item, QDomDocument& doc, QDomElement& parent)
{
    m_hosts->appendXMLConfig(item, doc, parent);
}

void zoHPCTreeGUIW::loadFromXML(QDomDocument& doc)
{
    if (!m_hosts->loadFromXML(doc))
        return;
    currentItemChanged(m_master, m_master);
    emit hostsChanged();
}

void zoHPCTreeGUIW::restore(QDomDocument& doc)
{
    zoHPCHostTree coming;
    if (!coming.loadFromXML(doc))
        return;
    if (m_hosts->takeValues(coming))
        emit hostsChanged();
    else
        loadFromXML(doc);
}

void zoHPCTreeGUIW::setXMLConfig(zoHPCTreeItem* parent, QDomElement element)
{
    m_hosts->setXMLConfig(parent, element);
}

void zoHPCTreeGUIW::setDefaultConfig()
{
    m_hosts->setDefaultConfig();
    currentItemChanged(m_master, m_master);
}

void zoHPCTreeGUIW::setIsRunning(bool running, const QList<QString>& hosts)
{
    m_running = running;
    m_configAction->setEnabled(!running);
    m_addHostAction->setEnabled(!running);
    m_addNetworkAction->setEnabled(!running);
    m_removeHostAction->setEnabled(!running);
    m_ui->m_treeWidget->setFixed(running);
    m_hosts->markRunning(running ? QStringList(hosts) : QStringList());
}

void zoHPCTreeGUIW::announceOptions()
{
    emit hostsChanged();
}

QIcon zoHPCTreeGUIW::getOverlayIcon(QPixmap base, const QPixmap& overlay)
{
    return zoHPCHostIcon::overlaid(base, overlay);
}

void zoHPCTreeGUIW::currentItemChanged(QTreeWidgetItem* current, QTreeWidgetItem*)
{
    auto* item = static_cast<zoHPCTreeItem*>(current);
    m_removeNetworkAction->setEnabled(item && item->isNetwork() && !m_running);
    m_removeHostAction->setEnabled(item && item->isNode() && !m_running);
    emit selectedItemChanged(item);
    emit selectionChanged();
}

void zoHPCTreeGUIW::contextMenuRequested(const QPoint& position)
{
    if (!m_ui->m_treeWidget->itemAt(position))
        return;
    QMenu menu;
    menu.addAction(m_configAction);
    menu.addSeparator();
    menu.addAction(m_addHostAction);
    menu.addAction(m_removeHostAction);
    menu.addSeparator();
    menu.addAction(m_addNetworkAction);
    menu.addAction(m_removeNetworkAction);
    menu.exec(QCursor::pos());
}

void zoHPCTreeGUIW::addHost()
{
    zoHPCTreeItem* current = selectedItem();
    if (!current)
        return;
    if (current->isMaster()) {
        if (m_master->childCount() == 0)
            addNetwork();
        setSelectedItem(static_cast<zoHPCTreeItem*>(m_master->child(m_master->childCount() - 1)));
        addHost();
        // The second notice of this way; listeners only bring themselves up to date.
        emit hostsChanged();
        return;
    }
    zoHPCTreeItem* node = nullptr;
    if (current->isNetwork()) {
        node = createNode(current, zoText("localhost"), -1);
    } else {
        zoHPCTreeItem* parent = current->getParent();
        node = createNode(parent, zoText("localhost"), parent->indexOfChild(current) + 1);
    }
    node->getParent()->setExpanded(true);
    setSelectedItem(node);
    emit hostsChanged();
}

void zoHPCTreeGUIW::addNetwork()
{
    zoHPCTreeItem* current = selectedItem();
    if (!current)
        return;
    zoHPCTreeItem* parent = current->isNetwork() ? current->getParent() : current;
    zoHPCTreeItem* network =
        createNetwork(parent, current->isNetwork() ? parent->indexOfChild(current) + 1 : -1);
    parent->setExpanded(true);
    setSelectedItem(network);
}

void zoHPCTreeGUIW::removeItem()
{
    removeRows(Kind::Any);
}

void zoHPCTreeGUIW::removeRows(Kind kind)
{
    std::vector<zoHPCTreeItem*> rows;
    std::set<const QTreeWidgetItem*> taken;
    const std::vector<zoHPCTreeItem*> selected = selectedItems();
    for (zoHPCTreeItem* item : selected) {
        const bool isWanted = kind == Kind::Any || (kind == Kind::Node ? item->isNode() : item->isNetwork());
        const QTreeWidgetItem* above = item->parent();
        if (!isWanted || above == nullptr)
            continue;
        while (above != nullptr && taken.count(above) == 0)
            above = above->parent();
        if (above == nullptr) { // else it goes with what it is in
            taken.insert(item);
            rows.push_back(item);
        }
    }
    if (rows.empty())
        return;
    if (rows.size() == 1) {
        m_hosts->remove(rows.front());
        // The view has moved on, without selecting where it is now.
        if (selectedItem() != nullptr && !selectedItem()->isSelected())
            setSelectedItem(selectedItem());
    } else {
        // Once, and not for each row that goes.
        setSelectedItem(rowAfter(rows));
        m_hosts->remove(rows);
    }
    if (m_filter->isOn())
        m_filter->apply();
    emit hostsChanged();
}

// Where a person is when these rows are gone: on the next one, the one before, or the one that they were in.
zoHPCTreeItem* zoHPCTreeGUIW::rowAfter(const std::vector<zoHPCTreeItem*>& rows)
{
    zoHPCTreeItem* const last = rows.back();
    zoHPCTreeItem* const parent = last->getParent();
    const int place = parent->indexOfChild(last);
    if (place + 1 < parent->childCount())
        return static_cast<zoHPCTreeItem*>(parent->child(place + 1));
    const std::set<const QTreeWidgetItem*> going(rows.cbegin(), rows.cend());
    for (int row = place - 1; row >= 0; --row) {
        if (going.count(parent->child(row)) == 0)
            return static_cast<zoHPCTreeItem*>(parent->child(row));
    }
    return parent;
}

void zoHPCTreeGUIW::moveNodes(const std::vector<zoHPCTreeItem*>& nodes, zoHPCTreeItem* network, int row)
{
    if (m_running || nodes.empty())
        return;
    emit aboutToRename();
    zoHPCTreeItem* const current = selectedItem();
    m_hosts->moveNodes(nodes, network, row);
    network->setExpanded(true);
    setSelectedItem(std::find(nodes.cbegin(), nodes.cend(), current) == nodes.cend() ? nodes.front()
                                                                                     : current);
    for (zoHPCTreeItem* node : nodes) {
        node->setSelected(true);
        // A row that is taken out loses this.
        for (zoHPCTreeItem* below : node->items()) {
            node->setExpanded(true);
            below->setExpanded(true);
        }
    }
    emit hostsChanged();
}

void zoHPCTreeGUIW::removeByKey()
{
    const zoHPCTreeItem* item = selectedItem();
    // What the actions allow differs from this: a network that was current when a session began keeps its
    // own.
    if (!item || m_running)
        return;
    const std::vector<zoHPCTreeItem*> rows = selectedItems();
    const auto isOfKind = [item](const zoHPCTreeItem* row) { return row->isNode() == item->isNode(); };
    if (!std::all_of(rows.cbegin(), rows.cend(), isOfKind))
        removeItem();
    else if (item->isNetwork())
        m_removeNetworkAction->trigger();
    else if (item->isNode())
        m_removeHostAction->trigger();
}

void zoHPCTreeGUIW::editHosts()
{
    // Reading the text chooses the top row.
    const QByteArray place = zoHPCTreePlace::of(*m_ui->m_treeWidget);
    // Guarded: the window, and the dialog with it, may go while the dialog is open.
    const QPointer<zoHPCConfigEditGUIW> dialog = new zoHPCConfigEditGUIW(this);
    dialog->setWindowTitle(m_configAction->text());
    zoHPCWindowMemory::rememberDialog(dialog, zoText("hosts"));
    dialog->setServersFileEditable(true);
    dialog->setServersFile(hostFile());
    dialog->setText(getHostsString());
    dialog->setIsHostsText(true);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    const QString path = dialog->getServersFile();
    const QString text = dialog->text();
    delete dialog;
    if (!accepted) {
        zoHPCTreePlace::restore(*m_ui->m_treeWidget, place);
        return;
    }
    setHostFile(path);
    if (path.isEmpty())
        setHostString(text);
    emit hostsChanged();
}

void zoHPCTreeGUIW::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (m_master && (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange))
        updateRowHeight();
    if (m_master && event->type() == QEvent::PaletteChange)
        setReadablePalette();
}

// A row is as wide as its text needs, and at least as wide as the view.
bool zoHPCTreeGUIW::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_ui->m_treeWidget->viewport() && event->type() == QEvent::Resize) {
        QHeaderView* header = m_ui->m_treeWidget->header();
        header->setMinimumSectionSize(m_ui->m_treeWidget->viewport()->width());
        header->resizeSections(QHeaderView::ResizeToContents);
    }
    return QWidget::eventFilter(watched, event);
}

// Disabled rows are written in the palette's Light, which many palettes have as white as the background. One
// that was set on this view is taken as it is.
void zoHPCTreeGUIW::setReadablePalette()
{
    if (m_isSettingPalette)
        return;
    const QScopedValueRollback<bool> setting(m_isSettingPalette, true);
    const QPalette current = palette();
    setPalette(QPalette());
    const QPalette inherited = palette(); // what the application and the parents say now
    // Only what is this view's own: the rest goes on following application and parents.
    QPalette own;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (int i = 0; i < QPalette::NColorRoles; ++i) {
            const auto role = QPalette::ColorRole(i);
            const QBrush brush = current.brush(group, role);
            const bool isOurs = role == QPalette::Light && brush == m_readableLight[size_t(group)];
            if (brush != inherited.brush(group, role) && !isOurs)
                own.setBrush(group, role, brush); // somebody set it on this view
        }
        const bool isLightSet = own.isBrushSet(group, QPalette::Light);
        m_readableLight[size_t(group)] = isLightSet ? QBrush() : readableLight(own.resolve(inherited), group);
        if (!isLightSet)
            own.setBrush(group, QPalette::Light, m_readableLight[size_t(group)]);
    }
    setPalette(own);
}

// Expands what has children only: each expanded row makes later insertions and removals slower.
void zoHPCTreeGUIW::expandAllParents()
{
    QTreeWidget* tree = m_ui->m_treeWidget;
    const QAbstractItemModel* model = tree->model();
    struct Place
    {
        const QTreeWidgetItem* item;
        QModelIndex index;
    };
    std::vector<Place> waiting{{m_master, model->index(tree->indexOfTopLevelItem(m_master), 0)}};
    while (!waiting.empty()) {
        const Place place = waiting.back();
        waiting.pop_back();
        tree->expand(place.index);
        for (int row = place.item->childCount() - 1; row >= 0; --row) {
            if (place.item->child(row)->childCount() > 0)
                waiting.push_back({place.item->child(row), model->index(row, 0, place.index)});
        }
    }
}

// All rows are as high as the first one, the master's, which alone has no icon.
void zoHPCTreeGUIW::updateRowHeight()
{
    QTreeWidget* tree = m_ui->m_treeWidget;
    m_master->setData(0, Qt::SizeHintRole, QVariant());
    const QModelIndex index = tree->model()->index(0, 0);
    const QSize natural = tree->sizeHintForIndex(index);
    const int icon = tree->style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, tree);
    m_master->setSizeHint(0, QSize(natural.width(), qMax(natural.height(), icon + 2)));
}
