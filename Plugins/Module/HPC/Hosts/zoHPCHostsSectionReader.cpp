#include "zoHPCHostsSectionReader.h"

#include "zoHPCTreeDepth.h"
#include "zoHPCTreeItem.h"
#include "zoText.h"

#include <zoClusterTags.h>

#include <QDomNamedNodeMap>

namespace
{
const QString s_name = zoClusterTags::NameAttribute;

int depthOf(const QTreeWidgetItem* item)
{
    int depth = 0;
    for (; item; item = item->parent())
        ++depth;
    return depth;
}
} // namespace

zoHPCHostsSectionReader::zoHPCHostsSectionReader(zoHPCTreeContext* context, zoHPCTreeItem* master,
                                                 const QString& networkText)
    : m_context(context)
    , m_master(master)
    , m_networkText(networkText)
    , m_depthLimit(zoHPCTreeDepth::limit())
    , m_underMaster{master, &m_itemsOfMaster, {}, 1}
{
}

zoHPCHostsSectionReader::~zoHPCHostsSectionReader()
{
    zoHPCTreeItem::destroy(m_itemsOfMaster);
    zoHPCTreeItem::destroy(m_itemsOfParent);
}

void zoHPCHostsSectionReader::Parent::append(QTreeWidgetItem* child)
{
    if (living)
        living->append(child);
    else
        pending.append(child);
}

void zoHPCHostsSectionReader::Parent::flush()
{
    if (living)
        return;
    if (!pending.isEmpty())
        item->addChildren(pending);
    pending.clear();
}

bool zoHPCHostsSectionReader::read(zoHPCTreeItem* parent, const QDomElement& top)
{
    Parent none{nullptr, nullptr, {}, 0};
    Parent given{parent, parent == m_master ? &m_itemsOfMaster : &m_itemsOfParent, {}, depthOf(parent)};
    bool fits = open(top, parent ? &given : &none);
    while (!m_places.empty()) {
        Place& place = m_places.back();
        if (!fits || place.next.isNull()) {
            if (place.own)
                place.own->flush();
            m_places.pop_back();
            continue;
        }
        const QDomElement element = place.next;
        place.next = element.nextSiblingElement();
        fits = open(element, place.into);
    }
    return fits;
}

void zoHPCHostsSectionReader::attach(zoHPCTreeItem* parent)
{
    for (const auto& option : m_masterOptions)
        m_master->setOption(option.first, option.second);
    attach(m_itemsOfMaster, m_master);
    attach(m_itemsOfParent, parent);
}

// Begins an element; what it holds is read next. False when it is nested too deep.
bool zoHPCHostsSectionReader::open(const QDomElement& element, Parent* into)
{
    const QString tag = element.tagName();
    Parent* below = into;
    std::unique_ptr<Parent> own;
    if (tag == zoClusterTags::Master) {
        applyAttributes(element, m_master);
        below = &m_underMaster;
    } else if (into->item && (tag == zoClusterTags::Node || tag == zoClusterTags::Network)) {
        zoHPCTreeItem* item = newItem(element);
        into->append(item);
        if (into->depth + 1 > m_depthLimit)
            return false;
        if (element.firstChild().isNull())
            return true;
        own.reset(new Parent{item, nullptr, {}, into->depth + 1});
        below = own.get();
    }
    // Any other element is transparent: what it holds belongs to what is around it.
    const QDomElement child = element.firstChildElement();
    if (!child.isNull()) {
        if (own)
            into->flush();
        m_places.push_back({child, below, std::move(own)});
    }
    return true;
}

zoHPCTreeItem* zoHPCHostsSectionReader::newItem(const QDomElement& element)
{
    auto* item = new zoHPCTreeItem(m_context);
    if (element.tagName() == zoClusterTags::Node) {
        item->setIsNode(true);
        item->setHostName(element.attribute(s_name, zoText("localhost")));
    } else {
        item->setIsNetwork(true);
        item->setText(0, m_networkText);
    }
    applyAttributes(element, item);
    return item;
}

void zoHPCHostsSectionReader::applyAttributes(const QDomElement& element, zoHPCTreeItem* item)
{
    const QDomNamedNodeMap attributes = element.attributes();
    const int count = attributes.length();
    if (count == 1 && item->isNode() && element.hasAttribute(s_name))
        return;
    for (int i = 0; i < count; ++i) {
        const QDomAttr attribute = attributes.item(i).toAttr();
        const QString name = attribute.name();
        if (name == s_name)
            continue;
        if (name == zoHPCOption::NodesFile) {
            m_hasHostFile = true;
            m_hostFile = attribute.value();
        } else if (item == m_master) {
            m_masterOptions.emplace_back(name, attribute.value());
        } else {
            item->setOptionQuietly(name, attribute.value());
        }
    }
}

void zoHPCHostsSectionReader::attach(QList<QTreeWidgetItem*>& items, zoHPCTreeItem* parent)
{
    if (items.isEmpty())
        return;
    for (QTreeWidgetItem* item : qAsConst(items))
        static_cast<zoHPCTreeItem*>(item)->refreshLooksUnder(*parent);
    parent->addChildren(items);
    items.clear();
}
