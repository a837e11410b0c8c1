#include "zoHPCTreeItem.h"

#include "zoHPCTreeEditGUIW.h"
#include "zoHPCTreeGUIW.h"
#include "zoText.h"

#include <zoIconManager.h>

#include <QAbstractItemModel>
#include <QCoreApplication>
#include <QFont>
#include <QPainter>
#include <QPixmap>
#include <QTreeWidget>

#include <algorithm>

static_assert(sizeof(void*) != 8 || sizeof(zoHPCStateItem) <= sizeof(QTreeWidgetItem) + sizeof(void*),
              "the flags lie in the padding of the base class");

namespace
{
const QString s_false = QString::fromLatin1("false");
const QString s_true = QString::fromLatin1("true");
const QString s_networkId = QString::fromLatin1("Network:/");

constexpr int PictureSize = 32;

QIcon iconOf(const QPixmap& pixmap)
{
    QIcon icon;
    icon.addPixmap(pixmap, QIcon::Normal, QIcon::Off);
    return icon;
}

// A transparent picture stands for artwork that the host does not have, so that overlays still show.
QPixmap pictureOf(const QIcon& icon, QIcon::Mode mode, QIcon::State state)
{
    QPixmap pixmap = icon.pixmap(QSize(PictureSize, PictureSize), mode, state);
    if (pixmap.isNull()) {
        pixmap = QPixmap(PictureSize, PictureSize);
        pixmap.fill(Qt::transparent);
    }
    return pixmap;
}

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

zoHPCTreeItem::zoHPCTreeItem(zoHPCTreeGUIW* tree) : zoHPCStateItem(tree)
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
    if (m_isBuried && tree())
        tree()->forget(this);
    if (m_isEdited)
        zoHPCTreeEditGUIW::forget(this);
    // The base class would recurse, once per level.
    if (hasGrandchildren(this))
        destroy(takeChildren());
}

void zoHPCTreeItem::setIsRunning(bool running)
{
    if (m_isRunning == running)
        return;
    m_isRunning = running;
    updateState();
}

void zoHPCTreeItem::setIsDisplayNode(bool displayNode)
{
    m_isDisplayNode = displayNode;
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
    if (m_uniqueNameIs == UniqueNameIsHostName && name != m_hostName) {
        extras().uniqueHostName = m_hostName;
        m_uniqueNameIs = UniqueNameInExtras;
    }
    m_hostName = name;
    setText(0, name);
}

QString zoHPCTreeItem::uniqueHostName() const
{
    switch (m_uniqueNameIs) {
    case UniqueNameIsHostName:
        return m_hostName;
    case UniqueNameInExtras:
        return m_extras->uniqueHostName;
    default:
        return {};
    }
}

void zoHPCTreeItem::setUniqueHostName(const QString& name)
{
    if (name.isEmpty() || name == m_hostName) {
        m_uniqueNameIs = name.isEmpty() ? UniqueNameEmpty : UniqueNameIsHostName;
        if (m_extras)
            m_extras->uniqueHostName.clear();
        return;
    }
    extras().uniqueHostName = name;
    m_uniqueNameIs = UniqueNameInExtras;
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
}

void zoHPCTreeItem::setOptionQuietly(const QString& name, const QString& value)
{
    if (m_extras || !value.isEmpty() || name != zoHPCOption::Enabled)
        extras().options[name] = value;
    if (m_isNetwork && name == zoHPCOption::Description)
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
    std::vector<zoHPCTreeItem*> waiting{this};
    while (!waiting.empty()) {
        zoHPCTreeItem* item = waiting.back();
        waiting.pop_back();
        out.push_back(item);
        for (int i = item->childCount() - 1; i >= 0; --i)
            waiting.push_back(static_cast<zoHPCTreeItem*>(item->child(i)));
    }
}

void zoHPCTreeItem::clearItems()
{
    takeChildren();
}

QString zoHPCTreeItem::getItemId() const
{
    if (!m_isNetwork)
        return m_hostName;
    std::vector<int> rows;
    const zoHPCTreeItem* item = this;
    while (item && item->parent()) {
        if (item->m_isNetwork)
            rows.push_back(item->parent()->indexOfChild(const_cast<zoHPCTreeItem*>(item)));
        item = item->getParent();
    }
    QString id = s_networkId;
    for (auto row = rows.crbegin(); row != rows.crend(); ++row)
        id += QString::number(*row) + QLatin1Char('/');
    return id;
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

    const auto candidate = [&id](int suffix) { return id + QLatin1Char('_') + QString::number(suffix); };
    Extras* hint = first->second ? &first->second->extras() : nullptr;
    int suffix = 2;
    if (hint && hint->suffixCache == &cache && cache.count(candidate(hint->nextSuffix - 1)) > 0)
        suffix = hint->nextSuffix;
    QString used = candidate(suffix);
    while (cache.count(used) > 0)
        used = candidate(++suffix);
    if (hint) {
        hint->suffixCache = &cache;
        hint->nextSuffix = suffix + 1;
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
    static std::map<int, QIcon> cache;
    const int key =
        kind | int(enabled) << 15 | int(running) << 16 | int(encrypted) << 17 | int(noRender) << 18;
    const auto known = cache.find(key);
    if (known != cache.end())
        return known->second;

    QIcon base;
    if (kind == NetworkIcon)
        base = zoIconManager::getIcon(zoText("Network"), QString());
    else if (kind == NodeIcon)
        base = zoIconManager::getIcon(zoText("Server"), QString());
    else if (kind == DisplayNodeIcon)
        base = zoIconManager::getIcon(zoText("Display"), QString());
    else
        return cache[key] = QIcon();

    QPixmap picture =
        pictureOf(base, enabled ? QIcon::Normal : QIcon::Disabled, running ? QIcon::On : QIcon::Off);
    if (enabled && encrypted) {
        const QIcon lock = zoIconManager::getIcon(zoText("Lock"), QString());
        QPainter painter(&picture);
        painter.drawPixmap(QPoint(8, 8), lock.pixmap(QSize(24, 24), QIcon::Normal, QIcon::On));
    }
    if (enabled && noRender) {
        QPainter painter(&picture);
        painter.setFont(QFont(zoText("Sans"), 8));
        painter.setPen(QPen(QColor(zoText("#FF9900")), 1));
        painter.drawText(QRect(16, 0, 32, 16), zoText("RT"));
        painter.setPen(Qt::red);
        painter.drawLine(16, 7, 32, 7);
    }
    return cache[key] = iconOf(picture);
}

void zoHPCTreeItem::refreshLooks(Refresh scope)
{
    refreshLooks(scope, getParent());
}

void zoHPCTreeItem::refreshLooksUnder(const zoHPCTreeItem& futureParent)
{
    refreshLooks(Refresh::All, &futureParent);
}

void zoHPCTreeItem::refreshLooks(Refresh scope, const zoHPCTreeItem* above)
{
    bool aboveEnabled = true;
    for (const zoHPCTreeItem* item = above; item && aboveEnabled; item = item->getParent())
        aboveEnabled = item->isEnabled();

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
    std::vector<Visit> waiting;
    std::vector<Run> runs;

    // Returns whether the row's look changed.
    const auto visit = [scope](zoHPCTreeItem* item, const zoHPCTreeItem* parent, bool enabled, bool& due) {
        bool wanted = true;
        if (scope == Refresh::Due) {
            due = due || item->m_lookDueBelow;
            wanted = due || item->m_lookDue;
            item->m_lookDue = 0;
            item->m_lookDueBelow = 0;
        }
        return wanted && item->takeLook(item->currentLook(enabled, parent));
    };
    const auto hasVisitsBelow = [scope](const zoHPCTreeItem* item) {
        return item->childCount() > 0 && (scope != Refresh::StopAtRunning || !item->m_isRunning);
    };

    const bool enabled = aboveEnabled && isEnabled();
    bool due = false;
    const bool selfChanged = visit(this, above, enabled, due);
    const QTreeWidget* widget = treeWidget();
    if (hasVisitsBelow(this))
        waiting.push_back({this, enabled, due, widget ? indexOf(widget, this) : QModelIndex()});
    while (!waiting.empty()) {
        const Visit here = waiting.back();
        waiting.pop_back();
        const int count = here.parent->childCount();
        int firstChanged = -1;
        for (int row = 0; row < count; ++row) {
            auto* item = static_cast<zoHPCTreeItem*>(here.parent->child(row));
            const bool itemEnabled = here.enabled && item->isEnabled();
            bool itemDue = here.due;
            const bool changed = visit(item, here.parent, itemEnabled, itemDue);
            if (changed && firstChanged < 0) {
                firstChanged = row;
            } else if (!changed && firstChanged >= 0) {
                runs.push_back({here.index, firstChanged, row - 1});
                firstChanged = -1;
            }
            if (hasVisitsBelow(item))
                waiting.push_back({item, itemEnabled, itemDue,
                                   widget ? here.index.model()->index(row, 0, here.index) : QModelIndex()});
        }
        if (firstChanged >= 0)
            runs.push_back({here.index, firstChanged, count - 1});
    }

    // Announced only now: a listener may change the tree.
    if (!widget)
        return;
    QAbstractItemModel* model = widget->model();
    const QVector<int> roles{Qt::DecorationRole, Qt::ForegroundRole};
    if (selfChanged)
        announceLook();
    for (const Run& run : runs)
        emit model->dataChanged(model->index(run.first, 0, run.parent), model->index(run.last, 0, run.parent),
                                roles);
}

zoHPCStateItem::Look zoHPCTreeItem::currentLook(bool effectivelyEnabled, const zoHPCTreeItem* above) const
{
    Look look;
    look.hasIcon = m_isNetwork || m_isNode;
    look.enabled = effectivelyEnabled;
    look.running = m_isRunning;
    if (m_isNode) {
        look.kind = m_isDisplayNode ? DisplayNodeIcon : NodeIcon;
        // Encryption belongs to the network.
        look.encrypted = above && above->isEncrypted();
        look.noRender = !isRenderNode();
    } else if (m_isNetwork) {
        look.kind = NetworkIcon;
        look.encrypted = isEncrypted();
    }
    return look;
}

void zoHPCTreeItem::markRunning(bool running)
{
    if (m_isRunning == running)
        return;
    m_isRunning = running;
    m_lookDue = 1;
    if (!running)
        m_lookDueBelow = 1;
}

void zoHPCTreeItem::markDisplayNode(bool displayNode)
{
    m_isDisplayNode = displayNode;
    m_lookDue = 1;
    if (!m_isRunning)
        m_lookDueBelow = 1;
}

bool zoHPCTreeItem::isPlain() const
{
    return !m_extras && !m_isRunning && !m_isDisplayNode && m_uniqueNameIs == UniqueNameEmpty;
}

void zoHPCTreeItem::takeOver(const zoHPCTreeItem& previous)
{
    if (previous.m_extras) {
        extras().options = previous.m_extras->options;
        const auto description = m_extras->options.find(zoHPCOption::Description);
        if (m_isNetwork && description != m_extras->options.end())
            showDescription(description->second);
    } else if (m_extras) {
        m_extras->options = {{zoHPCOption::Enabled, QString()}};
    }
    m_isRunning = previous.m_isRunning;
    m_isDisplayNode = previous.m_isDisplayNode;
    if (previous.m_uniqueNameIs != UniqueNameEmpty || m_uniqueNameIs != UniqueNameEmpty)
        setUniqueHostName(previous.uniqueHostName());
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
