#include "zoTestCase.h"

#include <zoHPC.h>
#include <zoHPCItemsById.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <zoIconManager.h>

#include <QApplication>
#include <QBrush>
#include <QPainter>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTreeWidget>

using Cache = std::map<QString, zoHPCTreeItem*>;

// One row of the host tree: options, ids, marks and looks.
class tst_zoHPCTreeItem final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void newItemHoldsAnEmptyEnabledOption();
    void newItemHasNoFlagsAndNoNames();
    void readingAnOptionInsertsNothing();
    void setOptionKeepsEmptyValues();
    void optionsThroughTheReferenceAreTheOptions();
    void clearedOptionsAreGone();
    void enabledReadsFalseOnlyForFalse_data();
    void enabledReadsFalseOnlyForFalse();
    void encryptedReadsTrueOnlyForTrue_data();
    void encryptedReadsTrueOnlyForTrue();
    void setRenderNodeWritesOnlyChanges();
    void intOptionEqualToTheDefaultIsStoredEmpty();
    void intOptionThatIsNoNumberReadsZero();
    void copyValuesReplacesOptionsOnly();
    void copyValuesFromItselfChangesNothing();
    void hostNameIsTheShownText();
    void uniqueHostNameIsKeptAcrossARename();
    void descriptionShowsInTheNetworksText_data();
    void descriptionShowsInTheNetworksText();
    void descriptionOfANodeDoesNotShow();
    void itemsAreInRowOrder();
    void allSubItemsAreDepthFirst();
    void clearItemsDetachesWithoutDestroying();
    void parentIsNullAtTheTop();
    void networkIdIsItsPosition();
    void networkIdDoesNotDependOnDescriptionOrOptions();
    void equalNamesGetSuffixes();
    void takenSuffixesAreSkipped();
    void aCacheThatIsClearedStartsOver();
    void twoCachesDoNotMixUp();
    void tenThousandEqualNamesGetTheirSuffixes();
    void idsEqualThoseOfTheCache();
    void restoreCopiesOptionsOfTheSameId();
    void restoreWithoutAMatchKeepsTheOptions();
    void renderOverride_data();
    void renderOverride();
    void textColourFollowsTheAncestors();
    void iconFollowsState_data();
    void iconFollowsState();
    void nodeUnderADisabledNetworkLooksDisabled();
    void encryptionOfTheNetworkShowsOnItsNodes();
    void nodesOwnEncryptionShowsNowhere();
    void masterHasNoIcon();
    void runningNetworkDoesNotRepaintItsNodes();
    void iconSetByHandShowsUntilTheNextChange();
    void changesAreAnnouncedOnceAndOnlyWhenSeen();
    void rowsThatChangeTogetherAreAnnouncedTogether();
    void iconComposition_data();
    void iconComposition();
    void unknownKindHasAnEmptyIcon();
    void plainNodeTakesLittleMemory();
    void deepItemsAreDestroyedWithoutRecursion();
    void itemWithoutAViewIsTolerated();

private:
    zoHPCTreeItem* addNetwork(QTreeWidgetItem* parent = nullptr);
    zoHPCTreeItem* addNode(QTreeWidgetItem* parent, const QString& name);
    static bool sameIcon(const QIcon& a, const QIcon& b);

    std::unique_ptr<zoHPCTreeGUIW> m_view;
    zoHPCTreeItem* m_master = nullptr;
};

void tst_zoHPCTreeItem::init()
{
    m_view = std::make_unique<zoHPCTreeGUIW>();
    m_view->setHostString(QString());
    m_master = m_view->master();
}

void tst_zoHPCTreeItem::cleanup()
{
    m_view.reset();
    zoTestCase::cleanup();
}

zoHPCTreeItem* tst_zoHPCTreeItem::addNetwork(QTreeWidgetItem* parent)
{
    return m_view->createNetwork(parent ? parent : m_master, -1);
}

zoHPCTreeItem* tst_zoHPCTreeItem::addNode(QTreeWidgetItem* parent, const QString& name)
{
    return m_view->createNode(parent, name, -1);
}

bool tst_zoHPCTreeItem::sameIcon(const QIcon& a, const QIcon& b)
{
    return a.pixmap(32, 32).toImage() == b.pixmap(32, 32).toImage();
}

void tst_zoHPCTreeItem::newItemHoldsAnEmptyEnabledOption()
{
    zoHPCTreeItem item(m_view.get());

    QVERIFY(!item.hasOption("enabled"));
    QVERIFY(item.isEnabled());
    const Cache::size_type one = 1;
    QCOMPARE(item.getOptions().size(), one);
    QCOMPARE(item.getOptions().begin()->first, QString("enabled"));
    QVERIFY(item.getOptions().begin()->second.isEmpty());
}

void tst_zoHPCTreeItem::newItemHasNoFlagsAndNoNames()
{
    zoHPCTreeItem item(m_view.get());

    QVERIFY(!item.isMaster());
    QVERIFY(!item.isNetwork());
    QVERIFY(!item.isNode());
    QVERIFY(!item.isRunning());
    QVERIFY(!item.isDisplayNode());
    QVERIFY(item.hostName().isEmpty());
    QVERIFY(item.uniqueHostName().isEmpty());
    QCOMPARE(item.type(), int(QTreeWidgetItem::Type));
}

void tst_zoHPCTreeItem::readingAnOptionInsertsNothing()
{
    zoHPCTreeItem item(m_view.get());

    QVERIFY(item.getOption("speed").isEmpty());
    QVERIFY(!item.hasOption("speed"));
    QCOMPARE(item.getIntOption("speed", 3), 3);

    QCOMPARE(int(item.getOptions().count("speed")), 0);
}

void tst_zoHPCTreeItem::setOptionKeepsEmptyValues()
{
    zoHPCTreeItem item(m_view.get());

    item.setOption("speed", "");

    QCOMPARE(int(item.getOptions().count("speed")), 1);
    QVERIFY(!item.hasOption("speed"));
}

void tst_zoHPCTreeItem::optionsThroughTheReferenceAreTheOptions()
{
    zoHPCTreeItem item(m_view.get());

    item.getOptions()["enabled"] = "false";
    item.getOptions()["Speed"] = "10g";

    QVERIFY(!item.isEnabled());
    QCOMPARE(item.getOption("Speed"), QString("10g"));
    QVERIFY(!item.hasOption("speed"));
}

void tst_zoHPCTreeItem::clearedOptionsAreGone()
{
    zoHPCTreeItem item(m_view.get());
    item.setIsEnabled(false);

    item.clearOptions();

    QVERIFY(item.getOptions().empty());
    QVERIFY(item.isEnabled());
}

void tst_zoHPCTreeItem::enabledReadsFalseOnlyForFalse_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("enabled");

    QTest::newRow("empty") << "" << true;
    QTest::newRow("false") << "false" << false;
    QTest::newRow("upper-case") << "FALSE" << true;
    QTest::newRow("zero") << "0" << true;
    QTest::newRow("blank-behind") << "false " << true;
}

void tst_zoHPCTreeItem::enabledReadsFalseOnlyForFalse()
{
    QFETCH(QString, value);
    QFETCH(bool, enabled);
    zoHPCTreeItem item(m_view.get());

    item.setOption(zoHPCOption::Enabled, value);
    item.setOption(zoHPCOption::RenderNode, value);

    QCOMPARE(item.isEnabled(), enabled);
    QCOMPARE(item.isRenderNode(), enabled);
}

void tst_zoHPCTreeItem::encryptedReadsTrueOnlyForTrue_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("encrypted");

    QTest::newRow("empty") << "" << false;
    QTest::newRow("true") << "true" << true;
    QTest::newRow("upper-case") << "TRUE" << false;
    QTest::newRow("one") << "1" << false;
}

void tst_zoHPCTreeItem::encryptedReadsTrueOnlyForTrue()
{
    QFETCH(QString, value);
    QFETCH(bool, encrypted);
    zoHPCTreeItem item(m_view.get());

    item.setOption(zoHPCOption::Encrypted, value);

    QCOMPARE(item.isEncrypted(), encrypted);
}

void tst_zoHPCTreeItem::setRenderNodeWritesOnlyChanges()
{
    zoHPCTreeItem item(m_view.get());

    item.setIsRenderNode(true);
    QCOMPARE(int(item.getOptions().count("rendernode")), 0);

    item.setIsRenderNode(false);
    QCOMPARE(item.getOption("rendernode"), QString("false"));

    item.setIsRenderNode(true);
    QCOMPARE(int(item.getOptions().count("rendernode")), 1);
    QVERIFY(item.getOption("rendernode").isEmpty());
}

void tst_zoHPCTreeItem::intOptionEqualToTheDefaultIsStoredEmpty()
{
    zoHPCTreeItem item(m_view.get());

    item.setIntOption("n", 4, 4);
    QCOMPARE(int(item.getOptions().count("n")), 1);
    QVERIFY(!item.hasOption("n"));
    QCOMPARE(item.getIntOption("n", 7), 7);

    item.setIntOption("n", -5, 4);
    QCOMPARE(item.getOption("n"), QString("-5"));
    QCOMPARE(item.getIntOption("n", 7), -5);
}

void tst_zoHPCTreeItem::intOptionThatIsNoNumberReadsZero()
{
    zoHPCTreeItem item(m_view.get());

    item.setOption("n", "abc");

    QCOMPARE(item.getIntOption("n", 7), 0);
}

void tst_zoHPCTreeItem::copyValuesReplacesOptionsOnly()
{
    zoHPCTreeItem* network = addNetwork();
    zoHPCTreeItem* from = addNode(network, "from");
    zoHPCTreeItem* to = addNode(network, "to");
    from->setOption("speed", "10g");
    from->setIsEnabled(false);
    from->setIsDisplayNode(true);
    addNetwork(from);
    to->setOption("ibport", "1");

    to->copyValuesFrom(from);

    QCOMPARE(to->getOptions(), from->getOptions());
    QCOMPARE(to->hostName(), QString("to"));
    QVERIFY(!to->isDisplayNode());
    QCOMPARE(to->childCount(), 0);
    QCOMPARE(to->foreground(0), m_view->palette().brush(QPalette::Light));
}

void tst_zoHPCTreeItem::copyValuesFromItselfChangesNothing()
{
    zoHPCTreeItem item(m_view.get());
    item.setOption("speed", "10g");

    item.copyValuesFrom(&item);

    QCOMPARE(item.getOption("speed"), QString("10g"));
}

void tst_zoHPCTreeItem::hostNameIsTheShownText()
{
    zoHPCTreeItem* node = addNode(addNetwork(), "a");

    node->setHostName("b %1");

    QCOMPARE(node->hostName(), QString("b %1"));
    QCOMPARE(node->text(0), QString("b %1"));
    QCOMPARE(node->getItemId(), QString("b %1"));
}

void tst_zoHPCTreeItem::uniqueHostNameIsKeptAcrossARename()
{
    zoHPCTreeItem* node = addNode(addNetwork(), "a");

    node->setUniqueHostName("a 1");
    QCOMPARE(node->uniqueHostName(), QString("a 1"));
    QCOMPARE(node->text(0), QString("a"));
    node->setUniqueHostName("a");
    QCOMPARE(node->uniqueHostName(), QString("a"));
    node->setHostName("b");
    QCOMPARE(node->uniqueHostName(), QString("a"));
    QVERIFY(node->isEnabled());
    node->setUniqueHostName("");
    QVERIFY(node->uniqueHostName().isEmpty());
}

void tst_zoHPCTreeItem::descriptionShowsInTheNetworksText_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << ""
                           << "Network";
    QTest::newRow("text") << "Render farm"
                          << "Network (Render farm)";
    QTest::newRow("placeholder") << "%1 %2"
                                 << "Network (%1 %2)";
}

void tst_zoHPCTreeItem::descriptionShowsInTheNetworksText()
{
    QFETCH(QString, description);
    QFETCH(QString, text);
    zoHPCTreeItem* network = addNetwork();
    network->setOption(zoHPCOption::Description, "before");

    network->setOption(zoHPCOption::Description, description);

    QCOMPARE(network->text(0), text);
}

void tst_zoHPCTreeItem::descriptionOfANodeDoesNotShow()
{
    zoHPCTreeItem* node = addNode(addNetwork(), "a");

    node->setOption(zoHPCOption::Description, "text");

    QCOMPARE(node->text(0), QString("a"));
}

void tst_zoHPCTreeItem::itemsAreInRowOrder()
{
    zoHPCTreeItem* network = addNetwork();
    zoHPCTreeItem* a = addNode(network, "a");
    zoHPCTreeItem* c = addNode(network, "c");
    zoHPCTreeItem* b = m_view->createNode(network, "b", 1);

    QCOMPARE(network->items(), (std::vector<zoHPCTreeItem*>{a, b, c}));
    QVERIFY(a->items().empty());
}

void tst_zoHPCTreeItem::allSubItemsAreDepthFirst()
{
    zoHPCTreeItem* first = addNetwork();
    zoHPCTreeItem* a = addNode(first, "a");
    zoHPCTreeItem* below = addNetwork(a);
    zoHPCTreeItem* x = addNode(below, "x");
    zoHPCTreeItem* b = addNode(first, "b");
    zoHPCTreeItem* second = addNetwork();
    std::vector<zoHPCTreeItem*> items{b};

    m_master->getAllSubItems(items);

    QCOMPARE(items, (std::vector<zoHPCTreeItem*>{b, m_master, first, a, below, x, b, second}));
}

void tst_zoHPCTreeItem::clearItemsDetachesWithoutDestroying()
{
    zoHPCTreeItem* network = addNetwork();
    const std::unique_ptr<zoHPCTreeItem> a(addNode(network, "a"));
    const std::unique_ptr<zoHPCTreeItem> b(addNode(network, "b"));

    network->clearItems();

    QCOMPARE(network->childCount(), 0);
    QVERIFY(!a->getParent());
    QCOMPARE(a->hostName(), QString("a"));
    QCOMPARE(b->hostName(), QString("b"));
}

void tst_zoHPCTreeItem::parentIsNullAtTheTop()
{
    zoHPCTreeItem* network = addNetwork();

    QCOMPARE(network->getParent(), m_master);
    QVERIFY(!m_master->getParent());
}

void tst_zoHPCTreeItem::networkIdIsItsPosition()
{
    zoHPCTreeItem* first = addNetwork();
    zoHPCTreeItem* second = addNetwork();
    addNode(first, "a");
    zoHPCTreeItem* gateway = addNode(first, "gw");
    addNetwork(gateway);
    zoHPCTreeItem* forwarding = addNetwork(gateway);

    QCOMPARE(first->getItemId(), QString("Network:/0/"));
    QCOMPARE(second->getItemId(), QString("Network:/1/"));
    QCOMPARE(forwarding->getItemId(), QString("Network:/0/1/"));
    QCOMPARE(gateway->getItemId(), QString("gw"));
    QCOMPARE(m_master->getItemId(), QString());
}

void tst_zoHPCTreeItem::networkIdDoesNotDependOnDescriptionOrOptions()
{
    zoHPCTreeItem* network = addNetwork();
    const QString id = network->getItemId();

    network->setOption(zoHPCOption::Description, "farm");
    network->setIsEnabled(false);

    QCOMPARE(network->getItemId(), id);
}

void tst_zoHPCTreeItem::equalNamesGetSuffixes()
{
    zoHPCTreeItem* network = addNetwork();
    Cache cache;

    zoHPCTreeItem* first = addNode(network, "n1");
    QCOMPARE(first->addToIDCache(cache), QString("n1"));
    zoHPCTreeItem* second = addNode(network, "n1");
    QCOMPARE(second->addToIDCache(cache), QString("n1_2"));
    QCOMPARE(addNode(network, "n1")->addToIDCache(cache), QString("n1_3"));

    QCOMPARE(cache["n1"], first);
    QCOMPARE(cache["n1_2"], second);
}

void tst_zoHPCTreeItem::takenSuffixesAreSkipped()
{
    zoHPCTreeItem* network = addNetwork();
    Cache cache;
    QStringList ids;

    for (const char* name : {"a", "a_2", "a_4", "a", "a_2", "a", "a_3"})
        ids << addNode(network, name)->addToIDCache(cache);

    QCOMPARE(ids, (QStringList{"a", "a_2", "a_4", "a_3", "a_2_2", "a_5", "a_3_2"}));
}

void tst_zoHPCTreeItem::aCacheThatIsClearedStartsOver()
{
    zoHPCTreeItem* network = addNetwork();
    zoHPCTreeItem* a = addNode(network, "a");
    zoHPCTreeItem* b = addNode(network, "a");
    Cache cache;
    a->addToIDCache(cache);
    b->addToIDCache(cache);
    b->addToIDCache(cache);

    cache.clear();

    QCOMPARE(b->addToIDCache(cache), QString("a"));
    QCOMPARE(a->addToIDCache(cache), QString("a_2"));
    QCOMPARE(a->addToIDCache(cache), QString("a_3"));

    // What it remembered of the cache does not count, even when an id from then is taken again.
    cache.clear();
    QCOMPARE(b->addToIDCache(cache), QString("a"));
    QCOMPARE(addNode(network, "a_3")->addToIDCache(cache), QString("a_3"));
    QCOMPARE(a->addToIDCache(cache), QString("a_2"));
    cache.clear();
    QCOMPARE(a->addToIDCache(cache), QString("a"));
    QCOMPARE(addNode(network, "a_3")->addToIDCache(cache), QString("a_3"));
    QCOMPARE(b->addToIDCache(cache), QString("a_2"));
}

void tst_zoHPCTreeItem::twoCachesDoNotMixUp()
{
    zoHPCTreeItem* network = addNetwork();
    zoHPCTreeItem* a = addNode(network, "a");
    Cache one;
    Cache two;
    for (int i = 0; i < 3; ++i)
        a->addToIDCache(one);

    QCOMPARE(a->addToIDCache(two), QString("a"));
    QCOMPARE(a->addToIDCache(one), QString("a_4"));
    QCOMPARE(a->addToIDCache(two), QString("a_2"));
    QCOMPARE(a->addToIDCache(one), QString("a_5"));
}

void tst_zoHPCTreeItem::tenThousandEqualNamesGetTheirSuffixes()
{
    // Forwarding networks of gateways have equal ids as well.
    std::vector<zoHPCTreeItem*> items;
    QString text;
    for (int i = 0; i < 10000; ++i)
        text += "gw { x } ";
    m_view->setHostString(text);
    m_master->getAllSubItems(items);
    Cache cache;
    QString last;

    for (zoHPCTreeItem* item : items)
        last = item->addToIDCache(cache);

    QCOMPARE(last, QString("x_10000"));
    QCOMPARE(int(cache.size()), 30002);
    QCOMPARE(int(cache.count("Network:/0/0/_10000")), 1);
}

void tst_zoHPCTreeItem::idsEqualThoseOfTheCache()
{
    const QStringList names{"a", "a_2", "a_3", "a_2_2", "b", "", "_2", "a_5"};
    QRandomGenerator random(99);

    for (int round = 0; round < 200; ++round) {
        QTreeWidgetItem root;
        Cache cache;
        zoHPCItemsById ids;
        for (int i = 0; i < 40; ++i) {
            auto* item = new zoHPCTreeItem(m_view.get());
            item->setIsNode(true);
            item->setHostName(names.at(random.bounded(names.size())));
            root.addChild(item);
            const QString expected = item->addToIDCache(cache);
            QCOMPARE(ids.id(ids.addName(item->hostName(), item)), expected);
        }
        for (const auto& entry : cache)
            QCOMPARE(ids.findName(entry.first), entry.second);
        QVERIFY(!ids.findName("nowhere"));
    }
}

void tst_zoHPCTreeItem::restoreCopiesOptionsOfTheSameId()
{
    zoHPCTreeItem* network = addNetwork();
    zoHPCTreeItem* old1 = addNode(network, "n");
    zoHPCTreeItem* old2 = addNode(network, "n");
    old1->setOption("speed", "1");
    old2->setOption("speed", "2");
    Cache oldCache;
    old1->addToIDCache(oldCache);
    old2->addToIDCache(oldCache);
    zoHPCTreeItem* new1 = addNode(network, "n");
    zoHPCTreeItem* new2 = addNode(network, "n");
    new2->setOption("ibport", "7");
    Cache newCache;

    new1->restoreFromIDCache(oldCache, newCache);
    new2->restoreFromIDCache(oldCache, newCache);

    QCOMPARE(new1->getOptions(), old1->getOptions());
    QCOMPARE(new2->getOptions(), old2->getOptions());
    QCOMPARE(newCache["n_2"], new2);
}

void tst_zoHPCTreeItem::restoreWithoutAMatchKeepsTheOptions()
{
    zoHPCTreeItem* node = addNode(addNetwork(), "n");
    node->setOption("speed", "1");
    Cache oldCache;
    Cache newCache;

    node->restoreFromIDCache(oldCache, newCache);

    QCOMPARE(node->getOption("speed"), QString("1"));
    QCOMPARE(newCache["n"], node);
}

void tst_zoHPCTreeItem::renderOverride_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("after");

    QTest::newRow("upper-case-false") << "rt"
                                      << "FALSE" << true << false;
    QTest::newRow("zero") << "rt"
                          << "0" << true << false;
    QTest::newRow("no-sets-it") << "rt"
                                << "no" << false << true;
    QTest::newRow("empty-sets-it") << "rt"
                                   << "" << false << true;
    QTest::newRow("two-zeros-set-it") << "rt"
                                      << "00" << false << true;
    QTest::newRow("other-keys-ignored") << "RT"
                                        << "0" << true << true;
}

void tst_zoHPCTreeItem::renderOverride()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(bool, before);
    QFETCH(bool, after);
    zoHPCTreeItem* node = addNode(addNetwork(), "n");
    node->setIsRenderNode(before);
    std::map<QString, QString> options{{key, value}};

    node->overwriteOptions(options);

    QCOMPARE(node->isRenderNode(), after);
}

void tst_zoHPCTreeItem::textColourFollowsTheAncestors()
{
    zoHPCTreeItem* network = addNetwork();
    zoHPCTreeItem* gateway = addNode(network, "gw");
    zoHPCTreeItem* node = addNode(addNetwork(gateway), "n");
    const QBrush text = m_view->palette().brush(QPalette::Text);
    const QBrush light = m_view->palette().brush(QPalette::Light);
    QVERIFY(text != light);

    QCOMPARE(node->foreground(0), text);
    network->setIsEnabled(false);
    QCOMPARE(network->foreground(0), light);
    QCOMPARE(node->foreground(0), light);
    QCOMPARE(m_master->foreground(0), text);
    network->setIsEnabled(true);
    QCOMPARE(node->foreground(0), text);
    gateway->setIsEnabled(false);
    QCOMPARE(network->foreground(0), text);
    QCOMPARE(node->foreground(0), light);
}

void tst_zoHPCTreeItem::iconFollowsState_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("running");
    QTest::addColumn<bool>("encrypted");
    QTest::addColumn<bool>("render");
    QTest::addColumn<bool>("display");

    for (int i = 0; i < 32; ++i) {
        QByteArray name;
        for (int bit = 0; bit < 5; ++bit)
            name += (i >> bit & 1) ? QByteArray("-") + "ERCND"[bit] : QByteArray();
        QTest::newRow(("state" + name).constData())
            << !(i & 1) << bool(i & 2) << bool(i & 4) << !(i & 8) << bool(i & 16);
    }
}

void tst_zoHPCTreeItem::iconFollowsState()
{
    QFETCH(bool, enabled);
    QFETCH(bool, running);
    QFETCH(bool, encrypted);
    QFETCH(bool, render);
    QFETCH(bool, display);
    zoHPCTreeItem* network = addNetwork();
    zoHPCTreeItem* node = addNode(network, "n");

    network->setOption(zoHPCOption::Encrypted, encrypted ? "true" : "");
    node->setIsEnabled(enabled);
    node->setIsRenderNode(render);
    node->setIsDisplayNode(display);
    node->setIsRunning(running);
    network->setIsRunning(running);

    QVERIFY(sameIcon(node->icon(0),
                     zoHPCTreeItem::getIcon(display ? 2 : 1, enabled, running, encrypted, !render)));
    QVERIFY(sameIcon(network->icon(0), zoHPCTreeItem::getIcon(0, true, running, encrypted, false)));
    QCOMPARE(node->isRunning(), running);
    QCOMPARE(node->isDisplayNode(), display);
}

void tst_zoHPCTreeItem::nodeUnderADisabledNetworkLooksDisabled()
{
    zoHPCTreeItem* network = addNetwork();
    zoHPCTreeItem* node = addNode(network, "n");
    network->setOption(zoHPCOption::Encrypted, "true");

    network->setIsEnabled(false);

    QVERIFY(node->isEnabled());
    QCOMPARE(node->foreground(0), m_view->palette().brush(QPalette::Light));
    // Neither lock nor marker on a disabled node.
    node->setIsRenderNode(false);
    QVERIFY(sameIcon(node->icon(0), zoHPCTreeItem::getIcon(1, false, false, false, false)));
    QVERIFY(!sameIcon(node->icon(0), zoHPCTreeItem::getIcon(1, true, false, false, false)));
}

void tst_zoHPCTreeItem::encryptionOfTheNetworkShowsOnItsNodes()
{
    zoHPCTreeItem* network = addNetwork();
    zoHPCTreeItem* node = addNode(network, "n");
    zoHPCTreeItem* off = addNode(network, "off");
    off->setIsEnabled(false);

    network->setOption(zoHPCOption::Encrypted, "true");

    QVERIFY(sameIcon(network->icon(0), zoHPCTreeItem::getIcon(0, true, false, true, false)));
    QVERIFY(sameIcon(node->icon(0), zoHPCTreeItem::getIcon(1, true, false, true, false)));
    QVERIFY(!sameIcon(node->icon(0), zoHPCTreeItem::getIcon(1, true, false, false, false)));
    QVERIFY(sameIcon(off->icon(0), zoHPCTreeItem::getIcon(1, false, false, false, false)));
}

void tst_zoHPCTreeItem::nodesOwnEncryptionShowsNowhere()
{
    zoHPCTreeItem* node = addNode(addNetwork(), "n");
    const QIcon before = node->icon(0);

    node->setOption(zoHPCOption::Encrypted, "true");

    QVERIFY(node->isEncrypted());
    QVERIFY(sameIcon(node->icon(0), before));
}

void tst_zoHPCTreeItem::masterHasNoIcon()
{
    m_master->setIsRunning(true);
    m_master->updateState();

    QVERIFY(m_master->icon(0).isNull());
}

void tst_zoHPCTreeItem::runningNetworkDoesNotRepaintItsNodes()
{
    zoHPCTreeItem* network = addNetwork();
    zoHPCTreeItem* node = addNode(network, "n");
    const QIcon before = node->icon(0);
    network->setIsRunning(true);

    network->setIsEnabled(false);
    QVERIFY(sameIcon(node->icon(0), before));
    QCOMPARE(node->foreground(0), m_view->palette().brush(QPalette::Text));

    network->setIsRunning(false);
    QVERIFY(sameIcon(node->icon(0), zoHPCTreeItem::getIcon(1, false, false, false, false)));
    QCOMPARE(node->foreground(0), m_view->palette().brush(QPalette::Light));
}

void tst_zoHPCTreeItem::iconSetByHandShowsUntilTheNextChange()
{
    zoHPCTreeItem* node = addNode(addNetwork(), "n");
    const QIcon state = node->icon(0);
    QPixmap red(32, 32);
    red.fill(Qt::red);

    node->setIcon(0, QIcon(red));
    node->setForeground(0, Qt::red);
    QVERIFY(sameIcon(node->icon(0), QIcon(red)));
    QCOMPARE(node->foreground(0), QBrush(Qt::red));

    node->updateState();
    QVERIFY(sameIcon(node->icon(0), state));
    QCOMPARE(node->foreground(0), m_view->palette().brush(QPalette::Text));
    QVERIFY(!sameIcon(state, QIcon(red)));
}

void tst_zoHPCTreeItem::changesAreAnnouncedOnceAndOnlyWhenSeen()
{
    zoHPCTreeItem* node = addNode(addNetwork(), "n");
    const QSignalSpy changes(m_view->findChild<QTreeWidget*>()->model(), &QAbstractItemModel::dataChanged);

    node->setIsDisplayNode(false);
    node->setIsRunning(false);
    node->setOption("speed", "1g");
    QCOMPARE(changes.count(), 0);

    node->setIsDisplayNode(true);
    QCOMPARE(changes.count(), 1);
    node->setIsRunning(true);
    QCOMPARE(changes.count(), 2);
}

void tst_zoHPCTreeItem::rowsThatChangeTogetherAreAnnouncedTogether()
{
    zoHPCTreeItem* network = addNetwork();
    for (int i = 0; i < 10; ++i)
        addNode(network, "n" + QString::number(i));
    static_cast<zoHPCTreeItem*>(network->child(4))->setIsEnabled(false);
    QSignalSpy changes(m_view->findChild<QTreeWidget*>()->model(), &QAbstractItemModel::dataChanged);

    network->setIsEnabled(false);

    QStringList ranges;
    for (const QList<QVariant>& change : changes)
        ranges
            << QString("%1-%2").arg(change.at(0).toModelIndex().row()).arg(change.at(1).toModelIndex().row());
    // The network itself, then its nodes around the one that was disabled before.
    QCOMPARE(ranges, (QStringList{"0-0", "0-3", "5-9"}));
}

void tst_zoHPCTreeItem::iconComposition_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("name");

    QTest::newRow("network") << 0 << "Network";
    QTest::newRow("node") << 1 << "Server";
    QTest::newRow("display-node") << 2 << "Display";
}

void tst_zoHPCTreeItem::iconComposition()
{
    QFETCH(int, kind);
    QFETCH(QString, name);
    const QSize size(32, 32);
    const QIcon base = zoIconManager::getIcon(name, "");
    const QPixmap lock = zoIconManager::getIcon("Lock", "").pixmap(QSize(24, 24), QIcon::Normal, QIcon::On);
    QVERIFY(!base.isNull());
    QVERIFY(!lock.isNull());

    for (int i = 0; i < 16; ++i) {
        const bool enabled = i & 1;
        const bool running = i & 2;
        const bool encrypted = i & 4;
        const bool noRender = i & 8;
        QPixmap expected =
            base.pixmap(size, enabled ? QIcon::Normal : QIcon::Disabled, running ? QIcon::On : QIcon::Off);
        if (enabled && encrypted)
            QPainter(&expected).drawPixmap(8, 8, lock);
        if (enabled && noRender) {
            QPainter painter(&expected);
            painter.setFont(QFont("Sans", 8));
            painter.setPen(QPen(QColor("#FF9900"), 1));
            painter.drawText(16, 0, 32, 16, 0, "RT");
            painter.setPen(Qt::red);
            painter.drawLine(16, 7, 32, 7);
        }

        const QIcon icon = zoHPCTreeItem::getIcon(kind, enabled, running, encrypted, noRender);

        QCOMPARE(icon.pixmap(size, QIcon::Normal, QIcon::Off).toImage(), expected.toImage());
        QCOMPARE(icon.availableSizes(QIcon::Normal, QIcon::Off), QList<QSize>{size});
        QVERIFY(icon.availableSizes(QIcon::Normal, QIcon::On).isEmpty());
        QCOMPARE(zoHPCTreeItem::getIcon(kind, enabled, running, encrypted, noRender).cacheKey(),
                 icon.cacheKey());
    }
}

void tst_zoHPCTreeItem::unknownKindHasAnEmptyIcon()
{
    QVERIFY(zoHPCTreeItem::getIcon(3, true, false, false, false).isNull());
}

void tst_zoHPCTreeItem::plainNodeTakesLittleMemory()
{
    if (sizeof(void*) != 8)
        QSKIP("for 64-bit platforms");
    // With the strings of Qt 5, the next step of the allocator behind the base class.
    QVERIFY(sizeof(zoHPCTreeItem) <= sizeof(QTreeWidgetItem) + sizeof(QString) + 16);
    zoHPCTreeItem* node = addNode(addNetwork(), "n");
    QVERIFY(node->isPlain());

    node->setUniqueHostName("n");
    node->setUniqueHostName("");
    node->setIsEnabled(true);
    QVERIFY(node->isPlain());
    node->setIsEnabled(false);
    QVERIFY(!node->isPlain());
}

void tst_zoHPCTreeItem::deepItemsAreDestroyedWithoutRecursion()
{
    const int levels = 200000;
    auto* top = new zoHPCTreeItem(m_view.get());
    QTreeWidgetItem* deepest = top;
    for (int i = 0; i < levels; ++i) {
        auto* item = new zoHPCTreeItem(m_view.get());
        deepest->addChild(item);
        deepest = item;
    }

    delete top;
}

void tst_zoHPCTreeItem::itemWithoutAViewIsTolerated()
{
    zoHPCTreeItem item(nullptr);
    item.setIsNode(true);
    item.setHostName("n");

    item.setIsEnabled(false);
    item.setIsRunning(true);

    QCOMPARE(item.foreground(0), QApplication::palette().brush(QPalette::Light));
    QVERIFY(!item.icon(0).isNull());
}

ZO_TEST_MAIN(tst_zoHPCTreeItem)
#include "tst_zoHPCTreeItem.moc"
