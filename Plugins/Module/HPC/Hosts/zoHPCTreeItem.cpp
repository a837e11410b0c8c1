#include "zoHPCTreeItem.h"

#include "zoHPCHostIcon.h"
#include "zoHPCTreeContext.h"
#include "zoHPCTreeWalk.h"
#include "zoText.h"

#include <zoClusterIds.h>

#include <QAbstractItemModel>
#include <QCoreApplication>
#include <QTreeWidget>

#include <algorithm>

namespace
{
const QString s_false = QString::fromLatin1("false");
const QString s_true = QString::fromLatin1("true");

QModelIndex indexOf(const QTreeWidget* tree, const QTreeWidgetItem* item)
{
    std::vector<int> rows;
    while (const QTreeWidgetItem* parent = item->parent()) {
        rows.push_back(parent->indexOfChild(const_cast<QTreeWidgetItem*>(item)));
        item = parent;
    }
    QModelIndex index =
        tree->model()->index(tree->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item)), 0);
    for (auto row = rows.crbegin(); row != rows.crend(); ++row)
        index = tree->model()->index(*row, 0, index);
    return index;
}

bool hasGrandchildren(const QTreeWidgetItem* item)
{
    for (int i = 0; i < item->childCount(); ++i) {
        if (item->child(i)->childCount() > 0)
            return true;
    }
    return false;
}
} // namespace

zoHPCTreeItem::zoHPCTreeItem(zoHPCTreeContext* context) : zoHPCTreeRow(context)
{
    takeLook(currentLook(true, nullptr));
}

zoHPCTreeItem::~zoHPCTreeItem()
{
    // While the item is whole: the base class takes it out of the tree, too, when nothing of this class is
    // left, and the current row moves on before it is out.
    if (QTreeWidget* widget = treeWidget()) {
        if (QTreeWidgetItem* above = parent())
            above->removeChild(this);
        else
            widget->takeTopLevelItem(widget->indexOfTopLevelItem(this));
    }
    // Nobody finds it any more.
    if (m_extras)
        m_extras->life.reset();
    // The base class would recurse, once per level.
    if (hasGrandchildren(this))
        destroy(takeChildren());
}

void zoHPCTreeItem::setIsRunning(bool running)
{
    if (has(Running) == running)
        return;
    set(Running, running);
    updateState();
}

void zoHPCTreeItem::setIsDisplayNode(bool displayNode)
{
    set(DisplayNode, displayNode);
    updateState();
}

bool zoHPCTreeItem::isEnabled() const
{
    return !m_extras || getOption(zoHPCOption::Enabled) != s_false;
}

void zoHPCTreeItem::setIsEnabled(bool enabled)
{
    setOption(zoHPCOption::Enabled, enabled ? QString() : s_false);
}

bool zoHPCTreeItem::isRenderNode() const
{
    return !m_extras || getOption(zoHPCOption::RenderNode) != s_false;
}

void zoHPCTreeItem::setIsRenderNode(bool renderNode)
{
    if (isRenderNode() == renderNode)
        return;
    setOption(zoHPCOption::RenderNode, renderNode ? QString() : s_false);
    updateState();
}

bool zoHPCTreeItem::isEncrypted() const
{
    return m_extras && getOption(zoHPCOption::Encrypted) == s_true;
}

void zoHPCTreeItem::setHostName(const QString& name)
{
    if (uniqueName() == UniqueNameIsHostName && name != m_hostName) {
        extras().uniqueHostName = m_hostName;
        setUniqueName(UniqueNameElsewhere);
    }
    m_hostName = name;
    setText(0, name);
    noteChange();
}

QString zoHPCTreeItem::uniqueHostName() const
{
    switch (uniqueName()) {
    case UniqueNameIsHostName:
        return m_hostName;
    case UniqueNameElsewhere:
        return m_extras->uniqueHostName;
    default:
        return {};
    }
}

void zoHPCTreeItem::setUniqueHostName(const QString& name)
{
    if (name.isEmpty() || name == m_hostName) {
        setUniqueName(name.isEmpty() ? UniqueNameEmpty : UniqueNameIsHostName);
        if (m_extras)
            m_extras->uniqueHostName.clear();
        return;
    }
    extras().uniqueHostName = name;
    setUniqueName(UniqueNameElsewhere);
}

zoHPCTreeItem* zoHPCTreeItem::getParent() const
{
    // Dynamic: networks may hang under a plain row while a tree is built.
    return dynamic_cast<zoHPCTreeItem*>(parent());
}

QString zoHPCTreeItem::getOption(const QString& name) const
{
    if (!m_extras)
        return {};
    const auto option = m_extras->options.find(name);
    return option == m_extras->options.end() ? QString() : option->second;
}

bool zoHPCTreeItem::hasOption(const QString& name) const
{
    return !getOption(name).isEmpty();
}

void zoHPCTreeItem::setOption(const QString& name, const QString& value)
{
    setOptionQuietly(name, value);
    if (name == zoHPCOption::Enabled || name == zoHPCOption::Encrypted)
        updateState();
    noteChange();
}

void zoHPCTreeItem::setOptionQuietly(const QString& name, const QString& value)
{
    if (m_extras || !value.isEmpty() || name != zoHPCOption::Enabled)
        extras().options[name] = value;
    if (has(Network) && name == zoHPCOption::Description)
        showDescription(value);
}

int zoHPCTreeItem::getIntOption(const QString& name, int defaultValue) const
{
    const QString value = getOption(name);
    return value.isEmpty() ? defaultValue : value.toInt();
}

void zoHPCTreeItem::setIntOption(const QString& name, int value, int defaultValue)
{
    setOption(name, value == defaultValue ? QString() : QString::number(value));
}

std::map<QString, QString>& zoHPCTreeItem::getOptions()
{
    return extras().options;
}

void zoHPCTreeItem::clearOptions()
{
    extras().options.clear();
    noteChange();
}

void zoHPCTreeItem::copyValuesFrom(zoHPCTreeItem* other)
{
    if (other == this)
        return;
    const std::map<QString, QString> options =
        other->m_extras ? other->m_extras->options
                        : std::map<QString, QString>{{zoHPCOption::Enabled, QString()}};
    clearOptions();
    for (const auto& option : options)
        setOption(option.first, option.second);
}

std::vector<zoHPCTreeItem*> zoHPCTreeItem::items() const
{
    std::vector<zoHPCTreeItem*> result;
    result.reserve(std::size_t(childCount()));
    for (int i = 0; i < childCount(); ++i)
        result.push_back(static_cast<zoHPCTreeItem*>(child(i)));
    return result;
}

void zoHPCTreeItem::getAllSubItems(std::vector<zoHPCTreeItem*>& out)
{
    zoHPCTreeWalk::forEach(this, [&out](zoHPCTreeItem* item) { out.push_back(item); });
}

void zoHPCTreeItem::clearItems()
{
    takeChildren();
}

QString zoHPCTreeItem::getItemId() const
{
    if (!has(Network))
        return m_hostName;
    std::vector<int> rows;
    const zoHPCTreeItem* item = this;
    while (item && item->parent()) {
        if (item->has(Network))
            rows.push_back(item->parent()->indexOfChild(const_cast<zoHPCTreeItem*>(item)));
        item = item->getParent();
    }
    return zoClusterPlaces::text(rows);
}

QString zoHPCTreeItem::addToIDCache(std::map<QString, zoHPCTreeItem*>& cache)
{
    const QString id = getItemId();
    const auto first = cache.find(id);
    if (first == cache.end()) {
        if (m_extras)
            m_extras->suffixCache = nullptr; // of an earlier cache, perhaps at the same address
        cache[id] = this;
        return id;
    }

    Extras* hint = first->second ? &first->second->extras() : nullptr;
    int suffix = 2;
    // Not when the hint is of an earlier cache, perhaps at the same address.
    if (hint && hint->suffixCache == &cache &&
        cache.count(id + QLatin1Char('_') + QString::number(hint->nextSuffix - 1)) > 0)
        suffix = hint->nextSuffix;
    const QString used = zoClusterIds::freeId(
        id, suffix, [&cache](const QString& candidate) { return cache.count(candidate) > 0; });
    if (hint) {
        hint->suffixCache = &cache;
        hint->nextSuffix = suffix;
    }
    if (m_extras && m_extras.get() != hint)
        m_extras->suffixCache = nullptr;
    cache[used] = this;
    return used;
}

void zoHPCTreeItem::restoreFromIDCache(std::map<QString, zoHPCTreeItem*>& oldCache,
                                       std::map<QString, zoHPCTreeItem*>& newCache)
{
    const QString id = addToIDCache(newCache);
    const auto previous = oldCache.find(id);
    if (previous != oldCache.end() && previous->second)
        copyValuesFrom(previous->second);
}

void zoHPCTreeItem::overwriteOptions(std::map<QString, QString>& options)
{
    const auto option = options.find(zoText("rt"));
    if (option != options.end())
        setIsRenderNode(option->second != QLatin1String("0") && option->second.toLower() != s_false);
}

void zoHPCTreeItem::updateState()
{
    refreshLooks(Refresh::StopAtRunning);
}

QIcon zoHPCTreeItem::getIcon(int kind, bool enabled, bool running, bool encrypted, bool noRender)
{
    return zoHPCHostIcon::icon(kind, enabled, running, encrypted, noRender);
}

void zoHPCTreeItem::refreshLooks(Refresh scope)
{
    refreshLooks(scope, getParent());
}

void zoHPCTreeItem::refreshLooksUnder(const zoHPCTreeItem& futureParent)
{
    refreshLooks(Refresh::All, &futureParent);
}

// One walk that tells each item what it inherits; then it announces the rows that look different.
class zoHPCTreeItem::LookWalk final
{
public:
    LookWalk(Refresh scope, QTreeWidget* view) : m_scope(scope), m_view(view) {}

    void run(zoHPCTreeItem* top, const zoHPCTreeItem* above);

private:
    struct Visit
    {
        zoHPCTreeItem* parent;
        bool enabled;
        bool due;
        QModelIndex index; // valid only in a view
    };
    struct Run
    {
        QModelIndex parent;
        int first;
        int last;
    };

    bool takeLook(zoHPCTreeItem* item, const zoHPCTreeItem* parent, bool enabled, bool& due) const;
    bool goesBelow(const zoHPCTreeItem* item) const;
    void visitChildren(const Visit& here);
    void announceRuns() const;

    const Refresh m_scope;
    QTreeWidget* m_view; // may be null
    std::vector<Visit> m_waiting;
    std::vector<Run> m_runs;
};

void zoHPCTreeItem::LookWalk::run(zoHPCTreeItem* top, const zoHPCTreeItem* above)
{
    bool enabled = top->isEnabled();
    for (const zoHPCTreeItem* item = above; item && enabled; item = item->getParent())
        enabled = item->isEnabled();

    bool due = false;
    const bool selfChanged = takeLook(top, above, enabled, due);
    if (goesBelow(top))
        m_waiting.push_back({top, enabled, due, m_view ? indexOf(m_view, top) : QModelIndex()});
    while (!m_waiting.empty()) {
        const Visit here = m_waiting.back();
        m_waiting.pop_back();
        visitChildren(here);
    }

    // Announced only now: a listener may change the tree.
    if (!m_view)
        return;
    if (selfChanged)
        top->announceLook();
    announceRuns();
}

// Returns whether the row's look changed. `due` is that of the parent, then of the item.
bool zoHPCTreeItem::LookWalk::takeLook(zoHPCTreeItem* item, const zoHPCTreeItem* parent, bool enabled,
                                       bool& due) const
{
    bool wanted = true;
    if (m_scope == Refresh::Due) {
        due = due || item->has(LookDueBelow);
        wanted = due || item->has(LookDue);
        item->set(LookDue, false);
        item->set(LookDueBelow, false);
    }
    return wanted && item->takeLook(item->currentLook(enabled, parent));
}

bool zoHPCTreeItem::LookWalk::goesBelow(const zoHPCTreeItem* item) const
{
    return item->childCount() > 0 && (m_scope != Refresh::StopAtRunning || !item->has(Running));
}

void zoHPCTreeItem::LookWalk::visitChildren(const Visit& here)
{
    const int count = here.parent->childCount();
    int firstChanged = -1;
    for (int row = 0; row < count; ++row) {
        auto* item = static_cast<zoHPCTreeItem*>(here.parent->child(row));
        const bool enabled = here.enabled && item->isEnabled();
        bool due = here.due;
        const bool changed = takeLook(item, here.parent, enabled, due);
        if (changed && firstChanged < 0) {
            firstChanged = row;
        } else if (!changed && firstChanged >= 0) {
            m_runs.push_back({here.index, firstChanged, row - 1});
            firstChanged = -1;
        }
        if (goesBelow(item))
            m_waiting.push_back(
                {item, enabled, due, m_view ? here.index.model()->index(row, 0, here.index) : QModelIndex()});
    }
    if (firstChanged >= 0)
        m_runs.push_back({here.index, firstChanged, count - 1});
}

void zoHPCTreeItem::LookWalk::announceRuns() const
{
    QAbstractItemModel* model = m_view->model();
    const QVector<int> roles{Qt::DecorationRole, Qt::ForegroundRole};
    for (const Run& run : m_runs)
        emit model->dataChanged(model->index(run.first, 0, run.parent), model->index(run.last, 0, run.parent),
                                roles);
}

void zoHPCTreeItem::refreshLooks(Refresh scope, const zoHPCTreeItem* above)
{
    LookWalk(scope, treeWidget()).run(this, above);
}

zoHPCTreeRow::Look zoHPCTreeItem::currentLook(bool effectivelyEnabled, const zoHPCTreeItem* above) const
{
    Look look;
    look.hasIcon = has(Network) || has(Node);
    look.enabled = effectivelyEnabled;
    look.running = has(Running);
    if (has(Node)) {
        look.kind = has(DisplayNode) ? zoHPCHostIcon::DisplayNode : zoHPCHostIcon::Node;
        // Encryption belongs to the network.
        look.encrypted = above && above->isEncrypted();
        look.noRender = !isRenderNode();
    } else if (has(Network)) {
        look.kind = zoHPCHostIcon::Network;
        look.encrypted = isEncrypted();
    }
    return look;
}

void zoHPCTreeItem::markRunning(bool running)
{
    if (has(Running) == running)
        return;
    set(Running, running);
    set(LookDue, true);
    if (!running)
        set(LookDueBelow, true);
}

void zoHPCTreeItem::markDisplayNode(bool displayNode)
{
    set(DisplayNode, displayNode);
    set(LookDue, true);
    if (!has(Running))
        set(LookDueBelow, true);
}

bool zoHPCTreeItem::isPlain() const
{
    if (has(Running) || has(DisplayNode) || uniqueName() != UniqueNameEmpty)
        return false;
    if (!m_extras)
        return true;
    const auto& options = m_extras->options;
    return options.size() == 1 && options.begin()->first == zoHPCOption::Enabled &&
           options.begin()->second.isEmpty();
}

void zoHPCTreeItem::takeOver(const zoHPCTreeItem& previous)
{
    if (previous.m_extras) {
        extras().options = previous.m_extras->options;
        const auto description = m_extras->options.find(zoHPCOption::Description);
        if (has(Network) && description != m_extras->options.end())
            showDescription(description->second);
    } else if (m_extras) {
        m_extras->options = {{zoHPCOption::Enabled, QString()}};
    }
    set(Running, previous.has(Running));
    set(DisplayNode, previous.has(DisplayNode));
    if (previous.uniqueName() != UniqueNameEmpty || uniqueName() != UniqueNameEmpty)
        setUniqueHostName(previous.uniqueHostName());
}

std::weak_ptr<zoHPCTreeItem> zoHPCTreeItem::watch()
{
    std::shared_ptr<zoHPCTreeItem>& life = extras().life;
    if (!life)
        life = std::shared_ptr<zoHPCTreeItem>(this, [](zoHPCTreeItem*) {});
    return life;
}

void zoHPCTreeItem::destroy(const QList<QTreeWidgetItem*>& detached)
{
    // Parents of parents, top down; then bottom up each gives up its children, which have no grandchildren by
    // then.
    std::vector<QTreeWidgetItem*> parents;
    for (QTreeWidgetItem* item : detached) {
        if (hasGrandchildren(item))
            parents.push_back(item);
    }
    for (std::size_t i = 0; i < parents.size(); ++i) {
        QTreeWidgetItem* parent = parents[i];
        for (int row = 0; row < parent->childCount(); ++row) {
            if (hasGrandchildren(parent->child(row)))
                parents.push_back(parent->child(row));
        }
    }
    for (auto parent = parents.rbegin(); parent != parents.rend(); ++parent)
        qDeleteAll((*parent)->takeChildren());
    qDeleteAll(detached);
}

zoHPCTreeItem::Extras& zoHPCTreeItem::extras()
{
    if (!m_extras) {
        m_extras = std::make_unique<Extras>();
        m_extras->options.emplace(zoHPCOption::Enabled, QString());
    }
    return *m_extras;
}

void zoHPCTreeItem::showDescription(const QString& description)
{
    setText(0, description.isEmpty() ? QCoreApplication::translate("zoHPC", "Network")
                                     : QCoreApplication::translate("zoHPC", "Network (%1)").arg(description));
}

void zoHPCTreeItem::noteChange()
{
    if (context())
        context()->noteChange();
}
