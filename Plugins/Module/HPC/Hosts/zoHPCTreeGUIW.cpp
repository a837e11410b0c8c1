#include "zoHPCTreeGUIW.h"

#include "ui_zoHPCTreeGUIW.h"
#include "zoHPCConfigEditGUIW.h"
#include "zoHPCDocumentWriter.h"
#include "zoHPCHostsText.h"
#include "zoHPCItemIds.h"
#include "zoHPCOption.h"
#include "zoHPCTreeDepth.h"
#include "zoHPCTreeItem.h"
#include "zoHPCWindowMemory.h"
#include "zoText.h"

#include <zoIconManager.h>
#include <zoLog.h>

#include <QAction>
#include <QCursor>
#include <QEvent>
#include <QFile>
#include <QHeaderView>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QStyle>
#include <QTreeWidget>
#include <QVarLengthArray>

#include <algorithm>
#include <climits>
#include <cstring>
#include <map>

namespace
{
const QString s_master = QString::fromLatin1("master");
const QString s_network = QString::fromLatin1("network");
const QString s_node = QString::fromLatin1("node");
const QString s_name = QString::fromLatin1("name");
const QString s_booking = QString::fromLatin1("booking");

// All items below the root in pre-order, without recursion. `visit` gets the item.
template <class Visit>
void forEachBelow(const QTreeWidgetItem* root, Visit visit)
{
    struct Place
    {
        const QTreeWidgetItem* parent;
        int next;
    };
    std::vector<Place> places{{root, 0}};
    while (!places.empty()) {
        Place& place = places.back();
        if (place.next >= place.parent->childCount()) {
            places.pop_back();
            continue;
        }
        auto* item = static_cast<zoHPCTreeItem*>(place.parent->child(place.next++));
        if (!visit(item))
            return;
        if (item->childCount() > 0)
            places.push_back({item, 0});
    }
}

int depthOf(const QTreeWidgetItem* item)
{
    int depth = 0;
    for (; item; item = item->parent())
        ++depth;
    return depth;
}

QString sectionTooDeep(int limit)
{
    return zoHPCTreeGUIW::tr(
               "The cluster section is nested too deep: at most %1 levels of the tree fit the stack.")
        .arg(limit);
}

// Rows that are being collected for one parent, attached at once. The parent of an open list is itself
// attached while it has no children yet: attaching walks what hangs below.
struct Rows
{
    QTreeWidgetItem* parent = nullptr;
    QList<QTreeWidgetItem*> pending;

    int count() const { return parent->childCount() + pending.size(); }
    void attach()
    {
        if (!pending.isEmpty())
            parent->addChildren(pending);
        pending.clear();
    }
};

// Builds detached networks with their nodes from hosts text.
class HostsTextBuilder final
{
public:
    HostsTextBuilder(zoHPCTreeGUIW* view, const QString& networkText)
        : m_view(view), m_networkText(networkText), m_depthLimit(zoHPCTreeDepth::limit())
    {
    }
    ~HostsTextBuilder() { zoHPCTreeItem::destroy(m_networks); }
    Q_DISABLE_COPY(HostsTextBuilder)

    // False when the text is nested too deep.
    bool read(const QString& text);
    QList<QTreeWidgetItem*> takeNetworks()
    {
        QList<QTreeWidgetItem*> networks;
        networks.swap(m_networks);
        return networks;
    }
    const QList<QTreeWidgetItem*>& networks() const { return m_networks; }
    // Returns whether there was any.
    bool overwriteOptions() const;
    int depthLimit() const { return m_depthLimit; }

private:
    void openNetwork();
    void closeNetwork();
    void addHost(QStringView token);
    void fillRange(std::vector<zoHPCTreeItem*>& inserted);
    zoHPCTreeItem* newNode(const QString& name);

    zoHPCTreeGUIW* m_view;
    const QString m_networkText;
    const int m_depthLimit;
    QList<QTreeWidgetItem*> m_networks;  // top level, owned
    std::vector<Rows> m_open;            // networks from the top one to the current one
    QTreeWidgetItem* m_anchor = nullptr; // node that the next "{" hangs a network under; null is the root
    bool m_hasAnchor = true;
    bool m_rangePending = false;
    std::vector<std::pair<zoHPCTreeItem*, bool>> m_renderOptions;
};

bool HostsTextBuilder::read(const QString& text)
{
    zoHPCHostsText reader(text);
    while (reader.next()) {
        const QStringView token = reader.token();
        const QChar first = token.front();
        if (first == QLatin1Char('[') || first == QLatin1Char('/'))
            continue;
        if (first == QLatin1Char('{')) {
            if (m_hasAnchor) {
                openNetwork();
                m_rangePending = false;
            }
        } else if (first == QLatin1Char('}')) {
            if (!m_open.empty()) {
                closeNetwork();
                m_rangePending = false;
            }
        } else if (first == QLatin1Char('-') && token.size() == 1) {
            m_rangePending = true;
        } else {
            addHost(token);
        }
        // The master, then a network and its nodes per open brace.
        if (1 + 2 * int(m_open.size()) > m_depthLimit)
            return false;
    }
    while (!m_open.empty()) {
        m_open.back().attach();
        m_open.pop_back();
    }
    return true;
}

void HostsTextBuilder::openNetwork()
{
    auto* network = new zoHPCTreeItem(m_view);
    network->setIsNetwork(true);
    network->setText(0, m_networkText);
    network->takeNewLook();
    if (m_anchor) {
        m_open.back().attach();
        m_anchor->addChild(network);
    } else {
        m_networks.append(network);
    }
    m_open.push_back({network, {}});
    m_hasAnchor = false;
}

void HostsTextBuilder::closeNetwork()
{
    m_open.back().attach();
    m_anchor = m_open.back().parent->parent();
    m_hasAnchor = true;
    m_open.pop_back();
}

zoHPCTreeItem* HostsTextBuilder::newNode(const QString& name)
{
    auto* node = new zoHPCTreeItem(m_view);
    node->setIsNode(true);
    node->setHostName(name);
    node->takeNewLook();
    return node;
}

void HostsTextBuilder::addHost(QStringView token)
{
    const QString name = zoHPCHostsText::hostName(token);
    if (name.isEmpty())
        return;
    if (m_open.empty())
        openNetwork();
    zoHPCTreeItem* node = newNode(name);
    m_open.back().pending.append(node);
    m_anchor = node;
    m_hasAnchor = true;

    std::vector<zoHPCTreeItem*> overridden;
    if (m_rangePending)
        fillRange(overridden);
    m_rangePending = false;
    QString value;
    if (zoHPCHostsText::renderOption(token, value)) {
        overridden.push_back(node);
        std::map<QString, QString> options{{zoText("rt"), value}};
        zoHPCTreeItem probe(nullptr);
        probe.overwriteOptions(options);
        for (zoHPCTreeItem* item : overridden)
            m_renderOptions.emplace_back(item, probe.isRenderNode());
    }
}

// Hosts of the longest range, both ends included. Longer ones are typing mistakes and are not filled.
constexpr int s_longestRange = 10001;

// Range of names between two hosts: the numbers in between, or nothing.
int hostsBetween(const zoHPCNumberedName& previous, const zoHPCNumberedName& next)
{
    const qint64 from = previous.number();
    const qint64 to = next.number();
    const bool fill = from < to - 1 && to - from < s_longestRange && previous.prefix() == next.prefix();
    return fill ? int(to - from - 1) : 0;
}

void HostsTextBuilder::fillRange(std::vector<zoHPCTreeItem*>& inserted)
{
    Rows& rows = m_open.back();
    if (rows.count() < 2)
        return;
    auto* node = static_cast<zoHPCTreeItem*>(rows.pending.takeLast());
    auto* previous = static_cast<zoHPCTreeItem*>(
        rows.pending.isEmpty() ? rows.parent->child(rows.parent->childCount() - 1) : rows.pending.last());
    const zoHPCNumberedName first(previous->hostName());
    const int count = hostsBetween(first, zoHPCNumberedName(node->hostName()));
    for (int k = 1; k <= count; ++k) {
        inserted.push_back(newNode(first.name(k)));
        rows.pending.append(inserted.back());
    }
    rows.pending.append(node);
}

bool HostsTextBuilder::overwriteOptions() const
{
    for (const auto& option : m_renderOptions) {
        if (option.first->isRenderNode() != option.second)
            option.first->setOptionQuietly(zoHPCOption::RenderNode,
                                           option.second ? QString() : zoText("false"));
    }
    return !m_renderOptions.empty();
}

// Whether two trees, each in pre-order, have the same items at the same places. Their ids are the same then.
bool isSameTree(const std::vector<zoHPCTreeItem*>& first, const std::vector<zoHPCTreeItem*>& second)
{
    return std::equal(first.cbegin(), first.cend(), second.cbegin(), second.cend(),
                      [](const zoHPCTreeItem* a, const zoHPCTreeItem* b) {
                          return a->isNetwork() == b->isNetwork() && a->childCount() == b->childCount() &&
                                 a->hostName() == b->hostName();
                      });
}

// Takes over what items with the same id had; returns whether there was anything to take. Both trees are
// walked in pre-order, in which ids are given.
bool restoreFrom(zoHPCTreeItem* oldMaster, const QList<QTreeWidgetItem*>& newNetworks)
{
    bool plain = true;
    forEachBelow(oldMaster, [&plain](const zoHPCTreeItem* item) { return plain = item->isPlain(); });
    if (plain && oldMaster->hostName().isEmpty())
        return false; // equal to what new items are

    std::vector<zoHPCTreeItem*> oldItems;
    oldMaster->getAllSubItems(oldItems);
    if (oldMaster->hostName().isEmpty()) {
        std::vector<zoHPCTreeItem*> newItems;
        newItems.reserve(oldItems.size());
        newItems.push_back(oldMaster); // in the master's place
        for (QTreeWidgetItem* network : newNetworks)
            static_cast<zoHPCTreeItem*>(network)->getAllSubItems(newItems);
        if (isSameTree(oldItems, newItems)) {
            for (std::size_t i = 1; i < newItems.size(); ++i)
                newItems[i]->takeOver(*oldItems[i]);
            return true;
        }
    }

    const bool ambiguous = std::any_of(oldItems.cbegin() + 1, oldItems.cend(), [](const zoHPCTreeItem* item) {
        return zoHPCItemIds::isAmbiguous(item->hostName());
    });
    if (ambiguous) {
        std::map<QString, zoHPCTreeItem*> oldIds;
        std::map<QString, zoHPCTreeItem*> newIds;
        for (zoHPCTreeItem* item : oldItems)
            item->addToIDCache(oldIds);
        QTreeWidgetItem root; // gives the networks their rows
        root.addChildren(newNetworks);
        forEachBelow(&root, [&](zoHPCTreeItem* item) {
            const auto previous = oldIds.find(item->addToIDCache(newIds));
            if (previous != oldIds.end())
                item->takeOver(*previous->second);
            return true;
        });
        root.takeChildren();
        return true;
    }

    struct Place
    {
        zoHPCTreeItem* item;
        int path; // of the item, when it is a network, else of the network around it
        int row;
    };
    zoHPCNetworkPaths paths;
    const auto walk = [&paths](std::vector<Place> waiting, auto visit) {
        while (!waiting.empty()) {
            Place place = waiting.back();
            waiting.pop_back();
            if (place.item->isNetwork())
                place.path = paths.child(place.path, place.row);
            visit(place.item, place.path);
            for (int row = place.item->childCount() - 1; row >= 0; --row)
                waiting.push_back({static_cast<zoHPCTreeItem*>(place.item->child(row)), place.path, row});
        }
    };
    zoHPCItemIds oldIds;
    oldIds.reserve(oldItems.size());
    walk({{oldMaster, 0, 0}}, [&oldIds](zoHPCTreeItem* item, int path) {
        if (item->isNetwork())
            oldIds.addNetwork(path, item);
        else
            oldIds.addName(item->hostName(), item);
    });
    std::vector<Place> roots;
    for (int row = newNetworks.size() - 1; row >= 0; --row)
        roots.push_back({static_cast<zoHPCTreeItem*>(newNetworks.at(row)), 0, row});
    zoHPCItemIds newIds;
    newIds.reserve(oldItems.size());
    walk(roots, [&oldIds, &newIds](zoHPCTreeItem* item, int path) {
        const zoHPCTreeItem* previous = item->isNetwork()
                                            ? oldIds.findNetwork(path, newIds.addNetwork(path, item))
                                            : oldIds.findSame(newIds, newIds.addName(item->hostName(), item));
        if (previous)
            item->takeOver(*previous);
    });
    return true;
}

// Builds items from elements, detached from the tree until attach().
class SectionBuilder final
{
public:
    SectionBuilder(zoHPCTreeGUIW* view, zoHPCTreeItem* master, const QString& networkText)
        : m_view(view), m_master(master), m_networkText(networkText), m_depthLimit(zoHPCTreeDepth::limit())
    {
    }
    ~SectionBuilder()
    {
        zoHPCTreeItem::destroy(m_underMaster);
        zoHPCTreeItem::destroy(m_underParent);
    }
    Q_DISABLE_COPY(SectionBuilder)

    // False when the elements are nested too deep.
    bool read(zoHPCTreeItem* parent, const QDomElement& element);
    void attach(zoHPCTreeItem* parent);

    bool hasHostFile() const { return m_hasHostFile; }
    const QString& hostFile() const { return m_hostFile; }
    int depthLimit() const { return m_depthLimit; }

private:
    void applyAttributes(const QDomElement& element, zoHPCTreeItem* item);

    zoHPCTreeGUIW* m_view;
    zoHPCTreeItem* m_master;
    const QString m_networkText;
    const int m_depthLimit;
    QList<QTreeWidgetItem*> m_underMaster;
    QList<QTreeWidgetItem*> m_underParent;
    std::vector<std::pair<QString, QString>> m_masterOptions;
    bool m_hasHostFile = false;
    QString m_hostFile;
};

bool SectionBuilder::read(zoHPCTreeItem* parent, const QDomElement& top)
{
    // Items below one parent: `pending` until one of them gets a child or the parent is complete. An item
    // must be attached while nothing hangs below it; only the lists of the living parents wait for attach().
    struct Parent
    {
        QTreeWidgetItem* item;           // null for no item
        QList<QTreeWidgetItem*>* living; // set when the item is in the tree
        QList<QTreeWidgetItem*> pending;
        int depth;
    };
    struct Place
    {
        QDomElement next;
        Parent* into;
        std::unique_ptr<Parent> own;
    };
    const auto flush = [](Parent& into) {
        if (!into.living && !into.pending.isEmpty())
            into.item->addChildren(into.pending);
        if (!into.living)
            into.pending.clear();
    };

    Parent none{nullptr, nullptr, {}, 0};
    Parent underMaster{m_master, &m_underMaster, {}, 1};
    Parent given{parent, parent == m_master ? &m_underMaster : &m_underParent, {}, depthOf(parent)};
    std::vector<Place> places;
    const auto open = [&](const QDomElement& element, Parent* into) {
        const QString tag = element.tagName();
        Parent* below = into;
        std::unique_ptr<Parent> own;
        if (tag == s_master) {
            applyAttributes(element, m_master);
            below = &underMaster;
        } else if (into->item && (tag == s_node || tag == s_network)) {
            auto* item = new zoHPCTreeItem(m_view);
            if (into->living)
                into->living->append(item);
            else
                into->pending.append(item);
            if (tag == s_node) {
                item->setIsNode(true);
                item->setHostName(element.attribute(s_name, zoText("localhost")));
            } else {
                item->setIsNetwork(true);
                item->setText(0, m_networkText);
            }
            applyAttributes(element, item);
            if (into->depth + 1 > m_depthLimit)
                return false;
            if (element.firstChild().isNull())
                return true;
            own.reset(new Parent{item, nullptr, {}, into->depth + 1});
            below = own.get();
        }
        QDomElement child = element.firstChildElement();
        if (!child.isNull()) {
            if (own)
                flush(*into);
            places.push_back({child, below, std::move(own)});
        }
        return true;
    };

    bool fits = open(top, parent ? &given : &none);
    while (!places.empty()) {
        Place& place = places.back();
        if (!fits || place.next.isNull()) {
            if (place.own)
                flush(*place.own);
            places.pop_back();
            continue;
        }
        const QDomElement element = place.next;
        place.next = element.nextSiblingElement();
        fits = open(element, place.into);
    }
    return fits;
}

void SectionBuilder::applyAttributes(const QDomElement& element, zoHPCTreeItem* item)
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

void SectionBuilder::attach(zoHPCTreeItem* parent)
{
    for (const auto& option : m_masterOptions)
        m_master->setOption(option.first, option.second);
    for (QTreeWidgetItem* item : qAsConst(m_underMaster))
        static_cast<zoHPCTreeItem*>(item)->refreshLooksUnder(*m_master);
    m_master->addChildren(m_underMaster);
    m_underMaster.clear();
    if (!m_underParent.isEmpty()) {
        for (QTreeWidgetItem* item : qAsConst(m_underParent))
            static_cast<zoHPCTreeItem*>(item)->refreshLooksUnder(*parent);
        parent->addChildren(m_underParent);
        m_underParent.clear();
    }
}

// Writes hosts text into a byte buffer; without recursion.
class HostsTextWriter final
{
public:
    void writeItem(zoHPCTreeItem* item, int depth);
    void writeRange(const std::vector<zoHPCTreeItem*>& items, int depth);
    void writeRangeOfChildren(zoHPCTreeItem* parent, int depth);

    const std::string& text() const { return m_text; }

private:
    struct Place
    {
        const QTreeWidgetItem* parent; // null: the list
        int next;
        int count;
        int depth;
        bool folds;
        int closes; // depth of the brace that ends the network, -1 for none
    };

    void open(zoHPCTreeItem* item, int depth);
    void run();
    void writeLine(int depth, const QString& name);
    void appendName(const QString& name);
    zoHPCTreeItem* at(const Place& place, int index) const;
    int lastOfRun(const Place& place) const;

    std::string m_text;
    const std::vector<zoHPCTreeItem*>* m_list = nullptr;
    std::vector<Place> m_places;
};

void HostsTextWriter::writeItem(zoHPCTreeItem* item, int depth)
{
    open(item, depth);
    run();
}

void HostsTextWriter::writeRange(const std::vector<zoHPCTreeItem*>& items, int depth)
{
    m_list = &items;
    m_places.push_back({nullptr, 0, int(items.size()), depth, true, -1});
    run();
    m_list = nullptr;
}

void HostsTextWriter::writeRangeOfChildren(zoHPCTreeItem* parent, int depth)
{
    m_places.push_back({parent, 0, parent->childCount(), depth, true, -1});
    run();
}

void HostsTextWriter::open(zoHPCTreeItem* item, int depth)
{
    if (item->isNetwork()) {
        m_text.append(std::size_t(depth), ' ');
        m_text += "{\n";
        m_places.push_back({item, 0, item->childCount(), depth + 2, true, depth});
        return;
    }
    writeLine(depth, item->hostName());
    if (item->childCount() > 0)
        m_places.push_back({item, 0, item->childCount(), depth, false, -1});
}

void HostsTextWriter::run()
{
    while (!m_places.empty()) {
        Place& place = m_places.back();
        if (place.next >= place.count) {
            if (place.closes >= 0) {
                m_text.append(std::size_t(place.closes), ' ');
                m_text += "}\n";
            }
            m_places.pop_back();
            continue;
        }
        zoHPCTreeItem* item = at(place, place.next);
        if (!place.folds) {
            ++place.next;
            open(item, place.depth); // may move the places
            continue;
        }
        const int last = lastOfRun(place);
        if (last > place.next) {
            m_text.append(std::size_t(place.depth), ' ');
            appendName(item->hostName());
            m_text += " - ";
            appendName(at(place, last)->hostName());
            m_text += '\n';
            place.next = last + 1;
            continue;
        }
        ++place.next;
        writeLine(place.depth, item->hostName());
        if (item->childCount() > 0)
            m_places.push_back({item, 0, item->childCount(), place.depth, false, -1});
    }
}

zoHPCTreeItem* HostsTextWriter::at(const Place& place, int index) const
{
    return place.parent ? static_cast<zoHPCTreeItem*>(place.parent->child(index))
                        : (*m_list)[std::size_t(index)];
}

// Counts a host's number up, digit by digit, and compares it with the names that follow.
class RunName final
{
public:
    explicit RunName(const QString& name)
        : m_number(name)
        , m_prefix(int(m_number.prefix().size()))
        // A longer number may not fit and then counts as 0.
        , m_counts(m_number.digits().size() <= 9)
    {
        if (m_prefix > 0)
            m_expected.append(m_number.prefix().data(), m_prefix);
        if (m_number.digits().isEmpty())
            m_expected.append(QLatin1Char('0'));
        else
            m_expected.append(m_number.digits().data(), int(m_number.digits().size()));
    }

    // Whether `next` might follow `name`: the last digit decides for most that do not.
    static bool mayFollow(const QString& name, const QString& next)
    {
        if (next.isEmpty())
            return false;
        const ushort last = name.isEmpty() ? 0 : name.at(name.size() - 1).unicode();
        const ushort nextLast = next.at(next.size() - 1).unicode();
        // "1" follows names without a number and numbers that do not fit.
        if (nextLast == '1' || last == '\n')
            return true;
        return last >= '0' && last <= '9' && nextLast == (last == '9' ? '0' : last + 1);
    }

    // Hosts of the longest run that reads back as a range. Runs from a name without a number ("host 1 2")
    // never do, and are written all the same.
    int longest() const
    {
        if (m_number.digits().isEmpty())
            return INT_MAX;
        return int(std::min<qint64>(s_longestRange, qint64(INT_MAX) - m_number.number() + 1));
    }

    // Goes on by one; whether the name is the one expected there.
    bool isNext(const QString& name)
    {
        ++m_offset;
        if (!m_counts)
            return name == m_number.name(m_offset);
        int i = m_expected.size() - 1;
        while (i >= m_prefix && m_expected[i] == QLatin1Char('9'))
            m_expected[i--] = QLatin1Char('0');
        if (i >= m_prefix)
            m_expected[i] = QChar(ushort(m_expected[i].unicode() + 1));
        else
            m_expected.insert(m_prefix, QLatin1Char('1'));
        return isExpected(name);
    }

private:
    // Four characters at a time: names are too short for the library's comparison to pay.
    bool isExpected(const QString& name) const
    {
        const int size = m_expected.size();
        if (name.size() != size)
            return false;
        const QChar* a = name.constData();
        const QChar* b = m_expected.constData();
        int i = 0;
        for (; i + 4 <= size; i += 4) {
            quint64 left = 0;
            quint64 right = 0;
            std::memcpy(&left, a + i, sizeof(left));
            std::memcpy(&right, b + i, sizeof(right));
            if (left != right)
                return false;
        }
        for (; i < size; ++i) {
            if (a[i] != b[i])
                return false;
        }
        return true;
    }

    const zoHPCNumberedName m_number;
    const int m_prefix;
    const bool m_counts;
    int m_offset = 0;
    QVarLengthArray<QChar, 64> m_expected;
};

// The last item of the run that starts at the next item; that item itself when no run of three starts there.
int HostsTextWriter::lastOfRun(const Place& place) const
{
    const int first = place.next;
    if (first + 2 >= place.count)
        return first;
    const zoHPCTreeItem* start = at(place, first);
    if (start->childCount() > 0 || !RunName::mayFollow(start->hostName(), at(place, first + 1)->hostName()))
        return first;
    RunName expected(start->hostName());
    const int longest = expected.longest();
    int last = first;
    while (last + 1 < place.count && last + 1 - first < longest) {
        const zoHPCTreeItem* item = at(place, last + 1);
        if (item->childCount() > 0 || !expected.isNext(item->hostName()))
            break;
        ++last;
    }
    return last - first >= 2 ? last : first;
}

void HostsTextWriter::writeLine(int depth, const QString& name)
{
    m_text.append(std::size_t(depth), ' ');
    appendName(name);
    m_text += '\n';
}

void HostsTextWriter::appendName(const QString& name)
{
    const std::size_t start = m_text.size();
    const auto length = std::size_t(name.size());
    m_text.resize(start + length);
    char* out = &m_text[start];
    const QChar* in = name.constData();
    ushort seen = 0;
    for (std::size_t i = 0; i < length; ++i) {
        seen |= in[i].unicode();
        out[i] = char(in[i].unicode());
    }
    if (seen >= 0x80) {
        m_text.resize(start);
        m_text += name.toStdString();
    }
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
    , m_nodeIcon(zoIconManager::getIcon(zoText("Server"), QString()))
{
    m_ui->setupUi(this);
    QHeaderView* header = m_ui->m_treeWidget->header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setResizeContentsPrecision(0); // what is visible
    m_ui->m_treeWidget->viewport()->installEventFilter(this);
    setReadablePalette();

    m_master = createMaster();
    m_ui->m_treeWidget->addTopLevelItem(m_master);
    updateRowHeight();
    createNode(createNetwork(m_master, -1), zoText("localhost"), -1);
    expandAllParents();

    connect(m_ui->m_treeWidget, &QTreeWidget::currentItemChanged, this, &zoHPCTreeGUIW::currentItemChanged);
    connect(m_ui->m_treeWidget, &QWidget::customContextMenuRequested, this,
            &zoHPCTreeGUIW::contextMenuRequested);
    connect(m_configAction, &QAction::triggered, this, &zoHPCTreeGUIW::editHosts);
    connect(m_addNetworkAction, &QAction::triggered, this, &zoHPCTreeGUIW::addNetwork);
    connect(m_addHostAction, &QAction::triggered, this, &zoHPCTreeGUIW::addHost);
    connect(m_removeNetworkAction, &QAction::triggered, this, &zoHPCTreeGUIW::removeItem);
    connect(m_removeHostAction, &QAction::triggered, this, &zoHPCTreeGUIW::removeItem);

    auto* remove = new QShortcut(QKeySequence(Qt::Key_Delete), m_ui->m_treeWidget);
    remove->setContext(Qt::WidgetShortcut);
    connect(remove, &QShortcut::activated, this, &zoHPCTreeGUIW::removeByKey);

    setSelectedItem(m_master);
}

zoHPCTreeGUIW::~zoHPCTreeGUIW()
{
    m_ui->m_treeWidget->disconnect(this);
    buryAll();
    clearGraveyard();
    delete m_master; // now, while its view is whole
}

zoHPCTreeItem* zoHPCTreeGUIW::selectedItem() const
{
    return static_cast<zoHPCTreeItem*>(m_ui->m_treeWidget->currentItem());
}

void zoHPCTreeGUIW::setSelectedItem(zoHPCTreeItem* item)
{
    m_ui->m_treeWidget->setCurrentItem(item);
}

zoHPCTreeItem* zoHPCTreeGUIW::createMaster()
{
    auto* master = new zoHPCTreeItem(this);
    master->setText(0, tr("Options"));
    master->setIsMaster(true);
    master->setOption(zoHPCOption::SceneCompression, zoText("best"));
    return master;
}

zoHPCTreeItem* zoHPCTreeGUIW::createNetwork(QTreeWidgetItem* parent, int index)
{
    auto* network = new zoHPCTreeItem(this);
    network->setText(0, tr("Network"));
    network->setIsNetwork(true);
    parent->insertChild(index < 0 ? parent->childCount() : index, network);
    network->updateState();
    return network;
}

zoHPCTreeItem* zoHPCTreeGUIW::createNode(QTreeWidgetItem* parent, const QString& name, int index)
{
    auto* node = new zoHPCTreeItem(this);
    node->setIcon(0, m_nodeIcon);
    parent->insertChild(index < 0 ? parent->childCount() : index, node);
    node->setIsNode(true);
    node->setHostName(name);
    node->updateState();
    return node;
}

QStringList zoHPCTreeGUIW::getNodeNames() const
{
    QStringList names;
    forEachBelow(m_master, [&names](const zoHPCTreeItem* item) {
        if (item->isNode() && !item->hostName().isEmpty())
            names << item->hostName();
        return true;
    });
    return names;
}

std::vector<zoHPCTreeItem*> zoHPCTreeGUIW::getNodeItems() const
{
    std::vector<zoHPCTreeItem*> nodes;
    forEachBelow(m_master, [&nodes](zoHPCTreeItem* item) {
        if (item->isNode())
            nodes.push_back(item);
        return true;
    });
    return nodes;
}

zoHPCTreeItem* zoHPCTreeGUIW::findNetworkByIndex(int index) const
{
    zoHPCTreeItem* found = nullptr;
    int count = 0;
    forEachBelow(m_master, [&](zoHPCTreeItem* item) {
        if (item->isNetwork() && ++count == index)
            found = item;
        return !found;
    });
    return found;
}

QString zoHPCTreeGUIW::getHostsString()
{
    if (selectedItem() != m_master)
        setSelectedItem(m_master);
    zoHPCTreeItem* start = m_master;
    if (!start->isNetwork() && start->childCount() == 1)
        start = static_cast<zoHPCTreeItem*>(start->child(0));

    HostsTextWriter writer;
    if (start->isNetwork()) {
        // A cluster of one network is a bare list.
        writer.writeRangeOfChildren(start, 0);
    } else {
        for (int row = 0; row < m_master->childCount(); ++row)
            writer.writeItem(static_cast<zoHPCTreeItem*>(m_master->child(row)), 0);
    }
    // Names outside ASCII do not survive the text; readers strip them anyway.
    return QString::fromLatin1(writer.text().data(), int(writer.text().size()));
}

void zoHPCTreeGUIW::getHostsString(zoHPCTreeItem* item, std::stringstream& out, int depth)
{
    HostsTextWriter writer;
    writer.writeItem(item, depth);
    out << writer.text();
}

void zoHPCTreeGUIW::getHostRangeString(std::vector<zoHPCTreeItem*> items, std::stringstream& out, int depth)
{
    HostsTextWriter writer;
    writer.writeRange(items, depth);
    out << writer.text();
}

void zoHPCTreeGUIW::setHostString(const QString& text)
{
    HostsTextBuilder builder(this, tr("Network"));
    if (!builder.read(text)) {
        zoLog::error(tr("The hosts text is nested too deep: at most %1 levels of the tree fit the stack.")
                         .arg(builder.depthLimit()));
        return;
    }
    m_booking.clear();
    setSelectedItem(m_master);
    const bool restored = restoreFrom(m_master, builder.networks());
    const bool overridden = builder.overwriteOptions();

    buryAll();
    const QList<QTreeWidgetItem*> networks = builder.takeNetworks();
    if (restored || overridden || !m_master->isEnabled()) {
        for (QTreeWidgetItem* network : networks)
            static_cast<zoHPCTreeItem*>(network)->refreshLooksUnder(*m_master);
    }
    m_master->addChildren(networks);
    expandAllParents();
}

void zoHPCTreeGUIW::loadNodesFile()
{
    if (m_hostFile.isEmpty())
        return;
    QFile file(m_hostFile);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    const QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        // Half a file would cost the other half of the cluster at the next save.
        zoLog::error(tr("Unable to read hosts file %1: %2").arg(m_hostFile, file.errorString()));
        return;
    }
    setHostString(QString::fromUtf8(content));
}

void zoHPCTreeGUIW::setHostFile(const QString& path)
{
    m_hostFile = path;
    loadNodesFile();
}

std::vector<zoHPCTreeItem*> zoHPCTreeGUIW::insertHostRange(zoHPCTreeItem* node)
{
    std::vector<zoHPCTreeItem*> inserted;
    QTreeWidgetItem* parent = node->getParent();
    const int row = parent ? parent->indexOfChild(node) : 0;
    if (row < 1)
        return inserted;
    const QString previous = static_cast<zoHPCTreeItem*>(parent->child(row - 1))->hostName();
    const int count = hostsBetween(zoHPCNumberedName(previous), zoHPCNumberedName(node->hostName()));
    for (int k = 1; k <= count; ++k)
        inserted.push_back(createNode(parent, createHostName(previous, k), row - 1 + k));
    return inserted;
}

QString zoHPCTreeGUIW::createHostName(const QString& name, int offset)
{
    return zoHPCNumberedName(name).name(offset);
}

void zoHPCTreeGUIW::saveToXML(QDomDocument& doc)
{
    QDomElement root = doc.documentElement();
    if (!m_booking.isEmpty())
        root.setAttribute(s_booking, m_booking);
    loadNodesFile();
    appendXMLConfig(m_master, doc, root);
    if (!root.isNull())
        doc.appendChild(root);
}

void zoHPCTreeGUIW::writeSection(zoHPCDocumentWriter& writer)
{
    const QString booking = m_booking; // reading the hosts file ends it
    loadNodesFile();
    writeRows(writer, booking);
}

void zoHPCTreeGUIW::writeRows(zoHPCDocumentWriter& writer) const
{
    writeRows(writer, m_booking);
}

void zoHPCTreeGUIW::writeRows(zoHPCDocumentWriter& writer, const QString& booking) const
{
    if (!booking.isEmpty())
        writer.addAttribute(s_booking, booking);

    const auto open = [this, &writer](const zoHPCTreeItem* item) {
        // An option of that name replaces the attribute, as it does in a document.
        const auto addFirst = [&writer, item](const QString& name, bool exists, const QString& value) {
            const QString option = item->getOption(name);
            if (exists || !option.isEmpty())
                writer.addAttribute(name, option.isEmpty() ? value : option);
        };
        writer.openElement(item->isMaster() ? s_master : item->isNetwork() ? s_network : s_node);
        addFirst(s_name, !item->isMaster() && !item->isNetwork(), item->hostName());
        addFirst(zoHPCOption::NodesFile, item->isMaster() && !m_hostFile.isEmpty(), m_hostFile);
        item->forEachOption([&writer](const QString& name, const QString& value) {
            if (!value.isEmpty() && name != s_name && name != zoHPCOption::NodesFile)
                writer.addAttribute(name, value);
        });
    };

    struct Place
    {
        const QTreeWidgetItem* item;
        int next;
    };
    open(m_master);
    std::vector<Place> places{{m_master, 0}};
    while (!places.empty()) {
        Place& place = places.back();
        if (place.next >= place.item->childCount()) {
            places.pop_back();
            writer.closeElement();
            continue;
        }
        const auto* child = static_cast<const zoHPCTreeItem*>(place.item->child(place.next++));
        open(child);
        places.push_back({child, 0});
    }
}

void zoHPCTreeGUIW::appendXMLConfig(zoHPCTreeItem* item, QDomDocument& doc, QDomElement& parent)
{
    const auto toElement = [this, &doc](const zoHPCTreeItem* source) {
        QDomElement element = doc.createElement(source->isMaster()    ? s_master
                                                : source->isNetwork() ? s_network
                                                                      : s_node);
        if (source->isMaster()) {
            if (!m_hostFile.isEmpty())
                element.setAttribute(zoHPCOption::NodesFile, m_hostFile);
        } else if (!source->isNetwork()) {
            element.setAttribute(s_name, source->hostName());
        }
        source->forEachOption([&element](const QString& name, const QString& value) {
            if (!value.isEmpty())
                element.setAttribute(name, value);
        });
        return element;
    };

    struct Place
    {
        const QTreeWidgetItem* item;
        int next;
        QDomElement element;
    };
    // Attributes come before the element gets a parent: the DOM looks for its document along the parents.
    QDomElement top = toElement(item);
    parent.appendChild(top);
    std::vector<Place> places{{item, 0, top}};
    while (!places.empty()) {
        Place& place = places.back();
        if (place.next >= place.item->childCount()) {
            places.pop_back();
            continue;
        }
        const auto* child = static_cast<const zoHPCTreeItem*>(place.item->child(place.next++));
        QDomElement element = toElement(child);
        place.element.appendChild(element);
        if (child->childCount() > 0)
            places.push_back({child, 0, element});
    }
}

void zoHPCTreeGUIW::loadFromXML(QDomDocument& doc)
{
    const QDomElement root = doc.documentElement();
    SectionBuilder builder(this, m_master, tr("Network"));
    if (!builder.read(nullptr, root)) {
        zoLog::error(sectionTooDeep(builder.depthLimit()));
        return;
    }
    m_booking = root.attribute(s_booking);
    m_master->clearOptions();
    setSelectedItem(m_master);
    buryAll();
    m_hostFile = builder.hostFile();
    builder.attach(nullptr);
    m_master->updateState();
    expandAllParents();
    currentItemChanged(m_master, m_master);
    emit hostsChanged();
}

void zoHPCTreeGUIW::setXMLConfig(zoHPCTreeItem* parent, QDomElement element)
{
    SectionBuilder builder(this, m_master, tr("Network"));
    if (!builder.read(parent, element)) {
        zoLog::error(sectionTooDeep(builder.depthLimit()));
        return;
    }
    if (builder.hasHostFile())
        m_hostFile = builder.hostFile();
    builder.attach(parent);
}

void zoHPCTreeGUIW::setDefaultConfig()
{
    setSelectedItem(m_master);
    m_master->clearOptions();
    buryAll();
    m_master->setOption(zoHPCOption::SceneCompression, zoText("best"));
    m_hostFile.clear();
    m_master->updateState();
    createNode(createNetwork(m_master, -1), zoText("localhost"), -1);
    expandAllParents();
    currentItemChanged(m_master, m_master);
}

void zoHPCTreeGUIW::setIsRunning(bool running, const QList<QString>& hosts)
{
    m_running = running;
    m_configAction->setEnabled(!running);
    m_addHostAction->setEnabled(!running);
    m_addNetworkAction->setEnabled(!running);
    m_removeHostAction->setEnabled(!running);

    std::vector<zoHPCTreeItem*> items;
    m_master->getAllSubItems(items);
    for (zoHPCTreeItem* item : items)
        item->markRunning(false);
    if (running && !hosts.isEmpty()) {
        const auto mark = [](zoHPCTreeItem* item) {
            if (!item)
                return;
            if (zoHPCTreeItem* above = item->getParent())
                above->markRunning(true);
            item->markRunning(true);
        };
        const auto ambiguousItem = [](const zoHPCTreeItem* item) {
            return zoHPCItemIds::isAmbiguous(item->hostName());
        };
        // A network's id is as long as the network is deep: built only when somebody asks for one.
        if (std::any_of(hosts.cbegin(), hosts.cend(), zoHPCItemIds::isAmbiguous) ||
            std::any_of(items.cbegin(), items.cend(), ambiguousItem)) {
            std::map<QString, zoHPCTreeItem*> ids;
            for (zoHPCTreeItem* item : items)
                item->addToIDCache(ids);
            for (const QString& host : hosts) {
                const auto item = ids.find(host);
                mark(item == ids.end() ? nullptr : item->second);
            }
        } else {
            zoHPCItemIds ids;
            ids.reserve(items.size());
            for (zoHPCTreeItem* item : items) {
                if (!item->isNetwork())
                    ids.addName(item->hostName(), item);
            }
            for (const QString& host : hosts)
                mark(ids.findName(host));
        }
    }
    m_master->refreshLooks(zoHPCTreeItem::Refresh::Due);
}

QIcon zoHPCTreeGUIW::getOverlayIcon(QPixmap base, const QPixmap& overlay)
{
    {
        QPainter painter(&base);
        painter.drawPixmap(QPoint(8, 8), overlay);
    }
    QIcon icon;
    icon.addPixmap(base, QIcon::Normal, QIcon::Off);
    return icon;
}

void zoHPCTreeGUIW::currentItemChanged(QTreeWidgetItem* current, QTreeWidgetItem*)
{
    auto* item = static_cast<zoHPCTreeItem*>(current);
    m_removeNetworkAction->setEnabled(item && item->isNetwork() && !m_running);
    m_removeHostAction->setEnabled(item && item->isNode() && !m_running);
    emit selectedItemChanged(item);
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
    zoHPCTreeItem* item = selectedItem();
    zoHPCTreeItem* parent = item ? item->getParent() : nullptr;
    if (!parent)
        return;
    parent->removeChild(item);
    bury({item});
    emit hostsChanged();
}

void zoHPCTreeGUIW::removeByKey()
{
    const zoHPCTreeItem* item = selectedItem();
    // What the actions allow differs from this: a network that was current when a session began keeps its
    // own.
    if (!item || m_running)
        return;
    if (item->isNetwork())
        m_removeNetworkAction->trigger();
    else if (item->isNode())
        m_removeHostAction->trigger();
}

void zoHPCTreeGUIW::editHosts()
{
    // Guarded: the window, and the dialog with it, may go while the dialog is open.
    const QPointer<zoHPCConfigEditGUIW> dialog = new zoHPCConfigEditGUIW(this);
    dialog->setWindowTitle(m_configAction->text());
    zoHPCWindowMemory::rememberDialog(dialog, zoText("hosts"));
    dialog->setServersFileEditable(true);
    dialog->setServersFile(m_hostFile);
    dialog->setText(getHostsString());
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    const QString path = dialog->getServersFile();
    const QString text = dialog->text();
    delete dialog;
    if (!accepted)
        return;
    m_hostFile = path;
    if (m_hostFile.isEmpty())
        setHostString(text);
    else
        loadNodesFile();
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

// Disabled rows are written in the palette's Light, which many palettes have as white as the background.
void zoHPCTreeGUIW::setReadablePalette()
{
    if (m_isSettingPalette)
        return;
    const QScopedValueRollback<bool> setting(m_isSettingPalette, true);
    setPalette(QPalette()); // what the application and the parents say now
    QPalette readable = palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QColor base = readable.color(group, QPalette::Base);
        const QColor text = readable.color(group, QPalette::Text);
        if (qAbs(readable.color(group, QPalette::Light).lightness() - base.lightness()) < 60)
            readable.setColor(group, QPalette::Light,
                              QColor((base.red() + text.red()) / 2, (base.green() + text.green()) / 2,
                                     (base.blue() + text.blue()) / 2));
    }
    setPalette(readable);
}

// Takes items that were just detached; they are not in the tree any more.
void zoHPCTreeGUIW::bury(const QList<QTreeWidgetItem*>& detached)
{
    for (QTreeWidgetItem* item : detached) {
        static_cast<zoHPCTreeItem*>(item)->m_isBuried = 1;
        m_graveyard.insert(item);
    }
}

// Empties the tree; what was taken out before it goes for good.
void zoHPCTreeGUIW::buryAll()
{
    clearGraveyard();
    // Removing rows costs the number of expanded ones times their depth.
    m_ui->m_treeWidget->collapseAll();
    bury(m_master->takeChildren());
    // With the master expanded, what comes is laid out once, later.
    m_master->setExpanded(true);
}

void zoHPCTreeGUIW::clearGraveyard()
{
    QList<QTreeWidgetItem*> dead;
    for (QTreeWidgetItem* item : m_graveyard) {
        static_cast<zoHPCTreeItem*>(item)->m_isBuried = 0;
        // Somebody may have put it back into a tree, which owns it then.
        if (!item->parent() && !item->treeWidget())
            dead.append(item);
    }
    m_graveyard.clear();
    zoHPCTreeItem::destroy(dead);
}

void zoHPCTreeGUIW::forget(QTreeWidgetItem* buried)
{
    m_graveyard.erase(buried);
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
