#pragma once

#include "zoHPCOption.h"
#include "zoHPCTreeRow.h"

#include <QIcon>
#include <QList>
#include <QString>

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

class zoHPCTreeContext;
class zoHPCTreeGUIW;

// One row of the host tree: the master, a network or a compute node, with its options.
class zoHPCTreeItem final : public zoHPCTreeRow
{
public:
    // A new item holds the option "enabled" with an empty value and belongs to no row yet. The context, which
    // may be null, is not owned.
    explicit zoHPCTreeItem(zoHPCTreeContext* context);
    explicit zoHPCTreeItem(std::nullptr_t) : zoHPCTreeItem(static_cast<zoHPCTreeContext*>(nullptr)) {}
    // With the view's tree as context. Stands with the view.
    explicit zoHPCTreeItem(zoHPCTreeGUIW* tree);
    // Destroys what hangs below, however deep, without recursion.
    ~zoHPCTreeItem() override;

    bool isMaster() const { return has(Master); }
    void setIsMaster(bool master) { set(Master, master); }
    bool isNetwork() const { return has(Network); }
    void setIsNetwork(bool network) { set(Network, network); }
    bool isNode() const { return has(Node); }
    void setIsNode(bool node) { set(Node, node); }

    // The cluster runs with this item in it.
    bool isRunning() const { return has(Running); }
    void setIsRunning(bool running);
    // The node drives a display.
    bool isDisplayNode() const { return has(DisplayNode); }
    void setIsDisplayNode(bool displayNode); // for hosts and tests

    // Own option only; ancestors are not consulted.
    bool isEnabled() const;
    void setIsEnabled(bool enabled);
    bool isRenderNode() const;
    void setIsRenderNode(bool renderNode);
    bool isEncrypted() const;

    // Also the shown text.
    const QString& hostName() const { return m_hostName; }
    void setHostName(const QString& name);
    // Stored and returned only.
    QString uniqueHostName() const;
    void setUniqueHostName(const QString& name);

    // Null for the top-level item.
    zoHPCTreeItem* getParent() const;

    // Options are text; an absent one and an empty one both mean the default. Reading never inserts a key.
    QString getOption(const QString& name) const;
    bool hasOption(const QString& name) const; // for hosts and tests
    void setOption(const QString& name, const QString& value);
    // An invalid number reads as 0, not as the default.
    int getIntOption(const QString& name, int defaultValue) const;
    void setIntOption(const QString& name, int value, int defaultValue); // for hosts and tests
    // Stays valid until the item is destroyed. Changes made through it do not reach the display.
    std::map<QString, QString>& getOptions(); // for hosts and tests
    void clearOptions();
    // Replaces the options; flags, names and children stay.
    void copyValuesFrom(zoHPCTreeItem* other);

    // Direct children in row order.
    std::vector<zoHPCTreeItem*> items() const;
    // Appends this item and all below it, depth first, in row order.
    void getAllSubItems(std::vector<zoHPCTreeItem*>& out);
    // Takes all children off; the caller owns them.
    void clearItems(); // for hosts and tests

    // A node's id is its host name, a network's its position ("Network:/0/1/").
    QString getItemId() const;
    // Enters this item under its id, or, when that is taken, under the first free one of id_2, id_3, ...;
    // returns the id used. The items of the cache must be alive, and entries must not be taken out of it one
    // by one.
    QString addToIDCache(std::map<QString, zoHPCTreeItem*>& cache);
    // Enters this item into the new cache and takes over the options of the item that has its id in the old
    // one.
    void restoreFromIDCache(std::map<QString, zoHPCTreeItem*>& oldCache,
                            std::map<QString, zoHPCTreeItem*>& newCache); // for hosts and tests
    // Overrides from an option block of the hosts text. Only "rt" counts.
    void overwriteOptions(std::map<QString, QString>& options);

    // Brings icon and text colour of this item, and of those below it unless it runs, up to date.
    void updateState();

    // See zoHPCHostIcon.
    static QIcon getIcon(int kind, bool enabled, bool running, bool encrypted, bool noRender);

    // For whole trees: marks and options are written without a look at the display, then one walk tells each
    // item what it inherits and announces runs of rows instead of single ones.
    enum class Refresh {
        StopAtRunning, // as updateState(): what hangs below a running item keeps its look
        All,
        Due // rows that markRunning() and markDisplayNode() touched
    };
    void refreshLooks(Refresh scope);
    // The same for an item that hangs nowhere yet and will come under `futureParent`.
    void refreshLooksUnder(const zoHPCTreeItem& futureParent);
    // The look of a new item whose ancestors are enabled and not encrypted.
    void takeNewLook() { takeLook(currentLook(true, nullptr)); }
    void markRunning(bool running);
    void markDisplayNode(bool displayNode);
    void setOptionQuietly(const QString& name, const QString& value);
    // In key order, without building the map that getOptions() needs.
    template <class Visit>
    void forEachOption(Visit visit) const;
    // Nothing that a rebuild of the tree would have to carry over.
    bool isPlain() const;
    // Takes over options and marks (running, display node, unique name) of the item that this one replaces.
    void takeOver(const zoHPCTreeItem& previous);

    // Observes the item's life: the pointer is null once the item is destroyed. It does not own the item.
    std::weak_ptr<zoHPCTreeItem> watch();

    // Destroys detached items and all below them without recursion.
    static void destroy(const QList<QTreeWidgetItem*>& detached);

private:
    // What the item rarely has. Without it the options hold exactly the key "enabled" with an empty value.
    struct Extras
    {
        std::map<QString, QString> options;
        QString uniqueHostName;
        // Of the first item of an id in a cache: where the search for a free suffix goes on.
        const void* suffixCache = nullptr; // compared only
        int nextSuffix = 2;
        std::shared_ptr<zoHPCTreeItem> life; // owns nothing; goes with the item
    };

    class LookWalk;

    Extras& extras();
    Look currentLook(bool effectivelyEnabled, const zoHPCTreeItem* parent) const;
    void refreshLooks(Refresh scope, const zoHPCTreeItem* parent);
    void showDescription(const QString& description);
    void noteChange();

    QString m_hostName;
    std::unique_ptr<Extras> m_extras;
};

template <class Visit>
void zoHPCTreeItem::forEachOption(Visit visit) const
{
    if (!m_extras) {
        visit(zoHPCOption::Enabled, QString());
        return;
    }
    for (const auto& option : m_extras->options)
        visit(option.first, option.second);
}
