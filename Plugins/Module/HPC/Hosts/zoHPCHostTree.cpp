#include "zoHPCHostTree.h"

#include "zoHPCCarryOver.h"
#include "zoHPCDocumentWriter.h"
#include "zoHPCHostRange.h"
#include "zoHPCHostsSection.h"
#include "zoHPCHostsSectionReader.h"
#include "zoHPCHostsTextBuilder.h"
#include "zoHPCHostsTextWriter.h"
#include "zoHPCItemsById.h"
#include "zoHPCTreeItem.h"
#include "zoHPCTreeWalk.h"
#include "zoText.h"

#include <zoClusterLimits.h>
#include <zoClusterTags.h>
#include <zoFileReader.h>
#include <zoLog.h>

#include <QCoreApplication>
#include <QGuiApplication>

#include <algorithm>
#include <set>
#include <utility>

namespace
{
// The texts belong to the view.
QString translated(const char* text)
{
    return QCoreApplication::translate("zoHPCTreeGUIW", text);
}

QString networkText()
{
    return translated(QT_TRANSLATE_NOOP("zoHPCTreeGUIW", "Network"));
}

void reportDepth(const zoHPCHostsSectionReader& reader)
{
    zoLog::error(
        "%s", qUtf8Printable(translated(QT_TRANSLATE_NOOP("zoHPCTreeGUIW",
                                                          "The cluster section is nested too deep: the tree "
                                                          "has at most %1 levels. Put networks beside "
                                                          "each other, not into each other."))
                                 .arg(reader.depthLimit())));
}

// In walks over two trees: the rows so far are of the same kinds and at the same places.
bool isSameRow(const zoHPCTreeItem* left, const zoHPCTreeItem* right)
{
    return left->isNode() == right->isNode() && left->isNetwork() == right->isNetwork() &&
           left->childCount() == right->childCount();
}

std::vector<std::pair<QString, QString>> optionsOf(const zoHPCTreeItem& item)
{
    std::vector<std::pair<QString, QString>> options;
    item.forEachOption(
        [&options](const QString& name, const QString& value) { options.emplace_back(name, value); });
    return options;
}
} // namespace

// Changes are announced once, when the outermost operation is over.
class zoHPCHostTree::Operation final
{
public:
    explicit Operation(zoHPCHostTree* tree) : m_tree(tree)
    {
        ++m_tree->m_operations;
        m_tree->noteChange();
    }
    ~Operation()
    {
        if (--m_tree->m_operations == 0 && m_tree->m_hasChanged)
            m_tree->noteChange();
    }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

private:
    zoHPCHostTree* m_tree;
};

zoHPCHostTree::zoHPCHostTree(QObject* parent) : QObject(parent)
{
    m_master.reset(createMaster());
    createNode(createNetwork(m_master.get(), -1), zoText("localhost"), -1);
}

zoHPCHostTree::~zoHPCHostTree()
{
    ++m_operations; // what goes now is no change
    destroyRemoved();
    zoHPCTreeItem::destroy(m_master->takeChildren());
    m_master.reset(); // now, while its tree is whole
}

QPalette zoHPCHostTree::palette() const
{
    return m_paletteSource ? m_paletteSource() : QGuiApplication::palette();
}

void zoHPCHostTree::noteChange()
{
    m_hasChanged = m_operations > 0;
    if (!m_hasChanged)
        emit changed();
}

zoHPCTreeItem* zoHPCHostTree::createMaster()
{
    auto* master = new zoHPCTreeItem(this);
    master->setText(0, translated(QT_TRANSLATE_NOOP("zoHPCTreeGUIW", "Options")));
    master->setIsMaster(true);
    master->setOption(zoHPCOption::SceneCompression, zoText("best"));
    return master;
}

zoHPCTreeItem* zoHPCHostTree::createNetwork(QTreeWidgetItem* parent, int index)
{
    const Operation operation(this);
    auto* network = new zoHPCTreeItem(this);
    network->setText(0, networkText());
    network->setIsNetwork(true);
    parent->insertChild(index < 0 ? parent->childCount() : index, network);
    network->updateState();
    return network;
}

zoHPCTreeItem* zoHPCHostTree::createNode(QTreeWidgetItem* parent, const QString& name, int index)
{
    const Operation operation(this);
    auto* node = new zoHPCTreeItem(this);
    parent->insertChild(index < 0 ? parent->childCount() : index, node);
    node->setIsNode(true);
    node->setHostName(name);
    node->updateState();
    return node;
}

void zoHPCHostTree::remove(zoHPCTreeItem* item)
{
    const Operation operation(this);
    item->parent()->removeChild(item);
    keep({item});
}

void zoHPCHostTree::remove(const std::vector<zoHPCTreeItem*>& items)
{
    const Operation operation(this);
    // From the end, where rows are found at once.
    for (auto item = items.crbegin(); item != items.crend(); ++item)
        remove(*item);
}

void zoHPCHostTree::moveNodes(const std::vector<zoHPCTreeItem*>& nodes, zoHPCTreeItem* network, int row)
{
    const Operation operation(this);
    QList<QTreeWidgetItem*> moved;
    for (zoHPCTreeItem* node : nodes) {
        QTreeWidgetItem* from = node->parent();
        const int place = from->indexOfChild(node);
        if (from == network && place < row)
            --row;
        moved.append(from->takeChild(place));
    }
    network->insertChildren(row, moved);
    for (zoHPCTreeItem* node : nodes)
        node->refreshLooks(zoHPCTreeItem::Refresh::All);
}

void zoHPCHostTree::changeTogether(const std::function<void()>& change)
{
    const Operation operation(this);
    change();
}

QStringList zoHPCHostTree::getNodeNames() const
{
    QStringList names;
    zoHPCTreeWalk::forEach(m_master.get(), [&names](const zoHPCTreeItem* item) {
        if (item->isNode() && !item->hostName().isEmpty())
            names << item->hostName();
    });
    return names;
}

std::vector<zoHPCTreeItem*> zoHPCHostTree::getNodeItems() const
{
    std::vector<zoHPCTreeItem*> nodes;
    zoHPCTreeWalk::forEach(m_master.get(), [&nodes](zoHPCTreeItem* item) {
        if (item->isNode())
            nodes.push_back(item);
    });
    return nodes;
}

zoHPCTreeItem* zoHPCHostTree::findNetworkByIndex(int index) const
{
    zoHPCTreeItem* found = nullptr;
    int count = 0;
    zoHPCTreeWalk::forEach(m_master.get(), [&](zoHPCTreeItem* item) {
        if (item->isNetwork() && ++count == index)
            found = item;
        return !found;
    });
    return found;
}

QString zoHPCHostTree::getHostsString() const
{
    zoHPCTreeItem* start = m_master.get();
    if (!start->isNetwork() && start->childCount() == 1)
        start = static_cast<zoHPCTreeItem*>(start->child(0));

    zoHPCHostsTextWriter writer;
    if (start->isNetwork()) {
        // A cluster of one network is a bare list.
        writer.writeRangeOfChildren(start, 0);
    } else {
        for (zoHPCTreeItem* item : m_master->items())
            writer.writeItem(item, 0);
    }
    // Names outside ASCII do not survive the text; readers strip them anyway.
    return QString::fromLatin1(writer.text().data(), int(writer.text().size()));
}

void zoHPCHostTree::setHostString(const QString& text)
{
    zoHPCHostsTextBuilder builder(this, networkText());
    const Operation operation(this);
    const zoHPCHostsTextBuilder::Outcome outcome = builder.read(text);
    if (outcome == zoHPCHostsTextBuilder::Outcome::TooMany) {
        zoLog::error("%s",
                     qUtf8Printable(translated(QT_TRANSLATE_NOOP("zoHPCTreeGUIW",
                                                                 "The hosts text names more than %1 hosts."))
                                        .arg(zoClusterLimits::MaximumHosts)));
        return;
    }
    if (outcome == zoHPCHostsTextBuilder::Outcome::TooDeep) {
        zoLog::error(
            "%s", qUtf8Printable(translated(QT_TRANSLATE_NOOP("zoHPCTreeGUIW",
                                                              "The hosts text is nested too deep: the tree "
                                                              "has at most %1 levels. Put networks beside "
                                                              "each other, not into each other."))
                                     .arg(builder.depthLimit())));
        return;
    }
    m_booking.clear();
    emit aboutToReplaceItems();
    const bool restored = zoHPCCarryOver::run(m_master.get(), builder.networks());
    const bool overridden = builder.overwriteOptions();

    takeAll();
    const QList<QTreeWidgetItem*> networks = builder.takeNetworks();
    if (restored || overridden || !m_master->isEnabled()) {
        for (QTreeWidgetItem* network : networks)
            static_cast<zoHPCTreeItem*>(network)->refreshLooksUnder(*m_master);
    }
    m_master->addChildren(networks);
    emit itemsReplaced();
}

void zoHPCHostTree::loadNodesFile()
{
    if (m_hostFile.isEmpty())
        return;
    QByteArray content;
    QString reason;
    const zoFileReader::Result result = zoFileReader::read(m_hostFile, content, &reason);
    if (result == zoFileReader::Result::NotOpened)
        return;
    if (result == zoFileReader::Result::NotRead) {
        // Half a file would cost the other half of the cluster at the next save.
        zoLog::error("%s", qUtf8Printable(translated(QT_TRANSLATE_NOOP("zoHPCTreeGUIW",
                                                                       "Unable to read hosts file %1: %2"))
                                              .arg(m_hostFile, reason)));
        return;
    }
    if (content.contains('\0')) {
        // UTF-16 or no text at all: its first character would become the whole cluster, and be saved.
        zoLog::error("%s",
                     qUtf8Printable(
                         translated(QT_TRANSLATE_NOOP("zoHPCTreeGUIW", "Unable to read hosts file %1: %2"))
                             .arg(m_hostFile,
                                  translated(QT_TRANSLATE_NOOP("zoHPCTreeGUIW", "it is no text in UTF-8")))));
        return;
    }
    setHostString(QString::fromUtf8(content).remove(QLatin1Char('\r'))); // as in text mode
}

void zoHPCHostTree::setHostFile(const QString& path)
{
    const Operation operation(this);
    m_hostFile = path;
    loadNodesFile();
}

std::vector<zoHPCTreeItem*> zoHPCHostTree::insertHostRange(zoHPCTreeItem* node)
{
    const Operation operation(this);
    std::vector<zoHPCTreeItem*> inserted;
    QTreeWidgetItem* parent = node->getParent();
    const int row = parent ? parent->indexOfChild(node) : 0;
    if (row < 1)
        return inserted;
    const zoHPCNumberedName first(static_cast<zoHPCTreeItem*>(parent->child(row - 1))->hostName());
    const int count = zoHPCHostRange(first, zoHPCNumberedName(node->hostName())).namesBetween();
    for (int k = 1; k <= count; ++k)
        inserted.push_back(createNode(parent, first.name(k), row - 1 + k));
    return inserted;
}

void zoHPCHostTree::saveToXML(QDomDocument& doc)
{
    QDomElement root = doc.documentElement();
    if (!m_booking.isEmpty())
        root.setAttribute(zoClusterTags::BookingAttribute, m_booking);
    loadNodesFile();
    appendXMLConfig(m_master.get(), doc, root);
    if (!root.isNull())
        doc.appendChild(root);
}

void zoHPCHostTree::writeSection(zoHPCDocumentWriter& writer)
{
    const QString booking = m_booking; // reading the hosts file ends it
    loadNodesFile();
    writeRows(writer, booking);
}

void zoHPCHostTree::writeRows(zoHPCDocumentWriter& writer) const
{
    writeRows(writer, m_booking);
}

void zoHPCHostTree::writeRows(zoHPCDocumentWriter& writer, const QString& booking) const
{
    if (!booking.isEmpty())
        writer.addAttribute(zoClusterTags::BookingAttribute, booking);
    zoHPCHostsSection::write(m_master.get(), m_hostFile, writer);
}

void zoHPCHostTree::appendXMLConfig(zoHPCTreeItem* item, QDomDocument& doc, QDomElement& parent) const
{
    zoHPCHostsSection::append(item, m_hostFile, doc, parent);
}

bool zoHPCHostTree::loadFromXML(const QDomDocument& doc)
{
    const QDomElement root = doc.documentElement();
    zoHPCHostsSectionReader reader(this, m_master.get(), networkText());
    const Operation operation(this);
    if (!reader.read(nullptr, root)) {
        reportDepth(reader);
        return false;
    }
    m_booking = root.attribute(zoClusterTags::BookingAttribute);
    m_master->clearOptions();
    emit aboutToReplaceItems();
    takeAll();
    m_hostFile = reader.hostFile();
    reader.attach(nullptr);
    m_master->updateState();
    emit itemsReplaced();
    return true;
}

void zoHPCHostTree::setXMLConfig(zoHPCTreeItem* parent, const QDomElement& element)
{
    zoHPCHostsSectionReader reader(this, m_master.get(), networkText());
    const Operation operation(this);
    if (!reader.read(parent, element)) {
        reportDepth(reader);
        return;
    }
    if (reader.hasHostFile())
        m_hostFile = reader.hostFile();
    reader.attach(parent);
}

void zoHPCHostTree::setDefaultConfig()
{
    const Operation operation(this);
    emit aboutToReplaceItems();
    m_master->clearOptions();
    takeAll();
    m_master->setOption(zoHPCOption::SceneCompression, zoText("best"));
    m_hostFile.clear();
    m_master->updateState();
    createNode(createNetwork(m_master.get(), -1), zoText("localhost"), -1);
    emit itemsReplaced();
}

bool zoHPCHostTree::takeValues(const zoHPCHostTree& other)
{
    std::vector<zoHPCTreeItem*> own;
    std::vector<zoHPCTreeItem*> others;
    m_master->getAllSubItems(own);
    other.master()->getAllSubItems(others);
    if (!std::equal(own.cbegin(), own.cend(), others.cbegin(), others.cend(), isSameRow))
        return false;
    const Operation operation(this);
    m_hostFile = other.m_hostFile;
    m_booking = other.m_booking;
    for (std::size_t i = 0; i < own.size(); ++i) {
        if (own[i]->hostName() != others[i]->hostName())
            own[i]->setHostName(others[i]->hostName());
        if (optionsOf(*own[i]) != optionsOf(*others[i]))
            own[i]->copyValuesFrom(others[i]);
    }
    return true;
}

void zoHPCHostTree::markRunning(const QStringList& ids)
{
    std::vector<zoHPCTreeItem*> items;
    m_master->getAllSubItems(items);
    for (zoHPCTreeItem* item : items)
        item->markRunning(false);
    if (!ids.isEmpty()) {
        zoHPCItemsById known;
        known.reserve(items.size());
        known.enter({m_master.get()}, [](zoHPCTreeItem*, int) {});
        for (const QString& id : ids) {
            zoHPCTreeItem* item = known.findName(id);
            if (!item)
                continue;
            if (zoHPCTreeItem* above = item->getParent())
                above->markRunning(true);
            item->markRunning(true);
        }
    }
    m_master->refreshLooks(zoHPCTreeItem::Refresh::Due);
}

// Owns items that were just detached.
void zoHPCHostTree::keep(const QList<QTreeWidgetItem*>& detached)
{
    for (QTreeWidgetItem* item : detached)
        m_removed.push_back(static_cast<zoHPCTreeItem*>(item)->watch());
}

// Empties the tree; what was taken out before it goes for good.
void zoHPCHostTree::takeAll()
{
    destroyRemoved();
    keep(m_master->takeChildren());
    // With the master expanded, what comes is laid out once, later.
    m_master->setExpanded(true);
}

void zoHPCHostTree::destroyRemoved()
{
    std::set<QTreeWidgetItem*> dead; // one may have been taken out twice
    for (const std::weak_ptr<zoHPCTreeItem>& removed : m_removed) {
        // Somebody may have destroyed it, or put it back into a tree, which owns it then.
        const std::shared_ptr<zoHPCTreeItem> item = removed.lock();
        if (item && !item->parent() && !item->treeWidget())
            dead.insert(item.get());
    }
    m_removed.clear();
    zoHPCTreeItem::destroy(QList<QTreeWidgetItem*>(dead.cbegin(), dead.cend()));
}
