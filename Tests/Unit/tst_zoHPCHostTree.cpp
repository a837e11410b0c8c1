#include "zoTestCase.h"

#include <zoHPCDocumentWriter.h>
#include <zoHPCHostTree.h>
#include <zoHPCTreeDepth.h>
#include <zoHPCTreeItem.h>

#include <QCoreApplication>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

// The host tree without a window: the program has no application object, in which a widget or a picture could
// not be made.
class tst_zoHPCHostTree final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void thereIsNoApplication();
    void startsWithTheDefaultTree();
    void hostsTextIsReadAndWritten();
    void sectionIsReadAndWritten_data();
    void sectionIsReadAndWritten();
    void savingReadsTheHostsFileFirst();
    void refusedSectionIsReported();
    void rebuildCarriesOptionsOver_data();
    void rebuildCarriesOptionsOver();
    void runningMarksFollowTheIds();
    void operationIsAnnouncedOnce_data();
    void operationIsAnnouncedOnce();
    void itemsAnnounceTheirOptions();
    void marksAreNoChange();
    void replacementIsAnnouncedBeforeAndAfter();
    void removedItemLivesUntilTheNextRebuild();
    void itemRemovedTwiceIsDestroyedOnce();
    void removedItemThatHangsElsewhereStays();
    void itemsMayOutliveTheirWatchers();

private:
    QString section() const;
    bool load(const QString& text);
    zoHPCTreeItem* node(const QString& name) const;

    std::unique_ptr<zoHPCHostTree> m_tree;
};

void tst_zoHPCHostTree::init()
{
    m_tree = std::make_unique<zoHPCHostTree>();
}

void tst_zoHPCHostTree::cleanup()
{
    m_tree.reset();
    zoTestCase::cleanup();
}

QString tst_zoHPCHostTree::section() const
{
    zoHPCDocumentWriter writer;
    writer.openElement(QStringLiteral("cluster"));
    m_tree->writeRows(writer);
    writer.closeElement();
    return writer.takeText();
}

bool tst_zoHPCHostTree::load(const QString& text)
{
    QDomDocument document;
    return document.setContent(text) && m_tree->loadFromXML(document);
}

zoHPCTreeItem* tst_zoHPCHostTree::node(const QString& name) const
{
    for (zoHPCTreeItem* item : m_tree->getNodeItems()) {
        if (item->hostName() == name)
            return item;
    }
    return nullptr;
}

void tst_zoHPCHostTree::thereIsNoApplication()
{
    QVERIFY(!QCoreApplication::instance());
}

void tst_zoHPCHostTree::startsWithTheDefaultTree()
{
    QCOMPARE(section(), QStringLiteral("<cluster>\n"
                                       " <master scenecompression=\"best\">\n"
                                       "  <network>\n"
                                       "   <node name=\"localhost\"/>\n"
                                       "  </network>\n"
                                       " </master>\n"
                                       "</cluster>\n"));
    const QString before = section();

    m_tree->setHostString(QStringLiteral("a b"));
    m_tree->master()->setOption(QStringLiteral("startstopaction"), QStringLiteral("rendering"));
    m_tree->setDefaultConfig();

    QCOMPARE(section(), before);
    QCOMPARE(m_tree->getNodeNames(), QStringList{QStringLiteral("localhost")});
}

void tst_zoHPCHostTree::hostsTextIsReadAndWritten()
{
    m_tree->setHostString(QStringLiteral("{ n01 - n04 gw { x } } { y }"));

    QCOMPARE(m_tree->getHostsString(),
             QStringLiteral("{\n  n01 - n04\n  gw\n  {\n    x\n  }\n}\n{\n  y\n}\n"));
    QCOMPARE(m_tree->getNodeNames().size(), 7);
    QCOMPARE(m_tree->findNetworkByIndex(2)->getParent(), node(QStringLiteral("gw")));
    QVERIFY(!m_tree->findNetworkByIndex(4));
    QVERIFY(!m_tree->findNetworkByIndex(0));
}

void tst_zoHPCHostTree::sectionIsReadAndWritten_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("no-master") << "<cluster>\n <master/>\n</cluster>\n";
    QTest::newRow("booking") << "<cluster booking=\"b\">\n <master/>\n</cluster>\n";
    QTest::newRow("gateway") << "<cluster>\n <master nodesfile=\"/no/such\">\n  <network speed=\"10g\">\n"
                                "   <node name=\"gw\" enabled=\"false\">\n    <network>\n"
                                "     <node name=\"x\"/>\n    </network>\n   </node>\n  </network>\n"
                                " </master>\n</cluster>\n";
}

void tst_zoHPCHostTree::sectionIsReadAndWritten()
{
    QFETCH(QString, text);

    QVERIFY(load(text));

    QCOMPARE(section(), text);
    QDomDocument document;
    document.appendChild(document.createElement(QStringLiteral("cluster")));
    m_tree->saveToXML(document);
    zoHPCHostTree other;
    QVERIFY(other.loadFromXML(document));
    zoHPCDocumentWriter writer;
    writer.openElement(QStringLiteral("cluster"));
    other.writeRows(writer);
    writer.closeElement();
    QCOMPARE(writer.takeText(), text);
}

void tst_zoHPCHostTree::savingReadsTheHostsFileFirst()
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("hosts")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("a");
    file.close();
    m_tree->setHostFile(file.fileName());
    QCOMPARE(m_tree->getNodeNames(), QStringList{QStringLiteral("a")});
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("b");
    file.close();

    zoHPCDocumentWriter writer;
    writer.openElement(QStringLiteral("cluster"));
    m_tree->writeRows(writer);
    QCOMPARE(m_tree->getNodeNames(), QStringList{QStringLiteral("a")});
    m_tree->writeSection(writer);

    QCOMPARE(m_tree->getNodeNames(), QStringList{QStringLiteral("b")});
}

void tst_zoHPCHostTree::refusedSectionIsReported()
{
    m_tree->setHostString(QStringLiteral("kept"));
    QDomDocument document;
    QDomElement parent = document.createElement(QStringLiteral("cluster"));
    document.appendChild(parent);
    parent = parent.appendChild(document.createElement(QStringLiteral("master"))).toElement();
    for (int i = zoHPCTreeDepth::limit(); i > 0; --i) {
        QDomElement child = document.createElement(QStringLiteral("node"));
        parent.appendChild(child);
        parent = child;
    }
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("^The cluster section is nested too deep")));

    QVERIFY(!m_tree->loadFromXML(document));

    QCOMPARE(m_tree->getNodeNames(), QStringList{QStringLiteral("kept")});
}

void tst_zoHPCHostTree::rebuildCarriesOptionsOver_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("marked"); // names, or ids of networks, that get an option before
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("expected");

    QTest::newRow("same-text") << "{ a b } { c }"
                               << "b Network:/1/"
                               << "{ a b } { c }"
                               << "b Network:/1/";
    QTest::newRow("node-in-front") << "a b"
                                   << "a"
                                   << "x a b"
                                   << "a";
    QTest::newRow("nodes-in-other-order") << "a b c"
                                          << "a c"
                                          << "c b a"
                                          << "a c";
    QTest::newRow("second-of-a-name") << "a a"
                                      << "a_2"
                                      << "b a a"
                                      << "a_2";
    QTest::newRow("second-of-a-name-alone") << "a a"
                                            << "a_2"
                                            << "a"
                                            << "";
    QTest::newRow("to-another-network") << "{ a } { b }"
                                        << "b"
                                        << "{ b a }"
                                        << "b";
    QTest::newRow("networks-by-place") << "{ a } { b }"
                                       << "Network:/1/"
                                       << "{ x } { y } { z }"
                                       << "Network:/1/";
    QTest::newRow("gateways-with-equal-places") << "{ a { x } b { y } }"
                                                << "Network:/0/0/_2"
                                                << "{ c { x } b { y } }"
                                                << "Network:/0/0/_2";
    QTest::newRow("longer-tree") << "a b"
                                 << "b"
                                 << "a b c { d }"
                                 << "b";
    QTest::newRow("shorter-tree") << "a b c"
                                  << "a"
                                  << "a b"
                                  << "a";
}

void tst_zoHPCHostTree::rebuildCarriesOptionsOver()
{
    QFETCH(QString, before);
    QFETCH(QString, marked);
    QFETCH(QString, after);
    QFETCH(QString, expected);
    const auto items = [this] {
        std::vector<zoHPCTreeItem*> all;
        m_tree->master()->getAllSubItems(all);
        std::map<QString, zoHPCTreeItem*> ids;
        for (zoHPCTreeItem* item : all)
            item->addToIDCache(ids);
        return ids;
    };
    m_tree->setHostString(before);
    std::map<QString, zoHPCTreeItem*> ids = items();
    for (const QString& id : marked.split(QLatin1Char(' '))) {
        QVERIFY(ids.count(id) > 0);
        ids[id]->setOption(QStringLiteral("mark"), QStringLiteral("1"));
    }

    m_tree->setHostString(after);

    QStringList found;
    for (const auto& entry : items()) {
        if (entry.second->hasOption(QStringLiteral("mark")))
            found << entry.first;
    }
    QStringList wanted = expected.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    wanted.sort();
    QCOMPARE(found, wanted);
}

void tst_zoHPCHostTree::runningMarksFollowTheIds()
{
    m_tree->setHostString(QStringLiteral("{ a { a } } { b }"));

    m_tree->markRunning({QStringLiteral("a_2"), QStringLiteral("nowhere")});
    const std::vector<zoHPCTreeItem*> nodes = m_tree->getNodeItems();
    QVERIFY(!nodes[0]->isRunning());
    QVERIFY(nodes[1]->isRunning());
    QVERIFY(nodes[1]->getParent()->isRunning());
    QVERIFY(!nodes[2]->isRunning());

    m_tree->markRunning({QStringLiteral("Network:/0/0/")});
    QVERIFY(nodes[0]->isRunning());
    QVERIFY(!nodes[1]->isRunning());

    m_tree->markRunning({});
    QVERIFY(!nodes[0]->isRunning());
}

void tst_zoHPCHostTree::operationIsAnnouncedOnce_data()
{
    QTest::addColumn<QString>("operation");

    for (const char* name :
         {"hosts-text", "hosts-file", "load", "default", "network", "node", "range", "remove"})
        QTest::newRow(name) << name;
}

void tst_zoHPCHostTree::operationIsAnnouncedOnce()
{
    QFETCH(QString, operation);
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("hosts")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("a");
    file.close();
    m_tree->setHostString(QStringLiteral("n1 n5"));
    const QSignalSpy changed(m_tree.get(), &zoHPCHostTree::changed);

    if (operation == QLatin1String("hosts-text"))
        m_tree->setHostString(QStringLiteral("a - b { c }"));
    else if (operation == QLatin1String("hosts-file"))
        m_tree->setHostFile(file.fileName());
    else if (operation == QLatin1String("load"))
        QVERIFY(load(QStringLiteral("<cluster><master a='1' b='2'><network c='3'/></master></cluster>")));
    else if (operation == QLatin1String("default"))
        m_tree->setDefaultConfig();
    else if (operation == QLatin1String("network"))
        m_tree->createNetwork(m_tree->master(), -1);
    else if (operation == QLatin1String("node"))
        m_tree->createNode(m_tree->findNetworkByIndex(1), QStringLiteral("x"), -1);
    else if (operation == QLatin1String("range"))
        QCOMPARE(int(m_tree->insertHostRange(node(QStringLiteral("n5"))).size()), 3);
    else
        m_tree->remove(node(QStringLiteral("n5")));

    QCOMPARE(changed.count(), 1);
}

void tst_zoHPCHostTree::itemsAnnounceTheirOptions()
{
    zoHPCTreeItem* item = node(QStringLiteral("localhost"));
    const QSignalSpy changed(m_tree.get(), &zoHPCHostTree::changed);

    item->setOption(QStringLiteral("speed"), QStringLiteral("10g"));
    QCOMPARE(changed.count(), 1);
    item->setHostName(QStringLiteral("n"));
    QCOMPARE(changed.count(), 2);
    item->setIsEnabled(false);
    QCOMPARE(changed.count(), 3);
    item->setIsRenderNode(false);
    QCOMPARE(changed.count(), 4);
    item->clearOptions();
    QCOMPARE(changed.count(), 5);
}

void tst_zoHPCHostTree::marksAreNoChange()
{
    zoHPCTreeItem* item = node(QStringLiteral("localhost"));
    const QSignalSpy changed(m_tree.get(), &zoHPCHostTree::changed);

    item->setIsDisplayNode(true);
    item->setIsRunning(true);
    item->setUniqueHostName(QStringLiteral("localhost 1"));
    m_tree->markRunning({QStringLiteral("localhost")});
    section();

    QCOMPARE(changed.count(), 0);
}

void tst_zoHPCHostTree::replacementIsAnnouncedBeforeAndAfter()
{
    QStringList seen;
    connect(m_tree.get(), &zoHPCHostTree::aboutToReplaceItems, this, [this, &seen] {
        seen << QLatin1String("before ") + m_tree->getNodeNames().join(QLatin1Char(' '));
    });
    connect(m_tree.get(), &zoHPCHostTree::itemsReplaced, this, [this, &seen] {
        seen << QLatin1String("after ") + m_tree->getNodeNames().join(QLatin1Char(' '));
    });
    connect(m_tree.get(), &zoHPCHostTree::changed, this, [&seen] { seen << QStringLiteral("changed"); });

    m_tree->setHostString(QStringLiteral("a"));

    QCOMPARE(seen, (QStringList{QStringLiteral("before localhost"), QStringLiteral("after a"),
                                QStringLiteral("changed")}));
}

void tst_zoHPCHostTree::removedItemLivesUntilTheNextRebuild()
{
    zoHPCTreeItem* item = node(QStringLiteral("localhost"));
    const std::weak_ptr<zoHPCTreeItem> watched = item->watch();

    m_tree->remove(item);
    QVERIFY(!item->getParent());
    QCOMPARE(watched.lock().get(), item);
    QVERIFY(m_tree->getNodeItems().empty());

    m_tree->setHostString(QStringLiteral("a"));
    QVERIFY(watched.expired());
}

void tst_zoHPCHostTree::itemRemovedTwiceIsDestroyedOnce()
{
    zoHPCTreeItem* network = m_tree->findNetworkByIndex(1);
    zoHPCTreeItem* item = node(QStringLiteral("localhost"));
    const std::weak_ptr<zoHPCTreeItem> watched = item->watch();
    m_tree->remove(item);
    network->addChild(item);
    m_tree->remove(item);

    m_tree.reset();

    QVERIFY(watched.expired());
}

void tst_zoHPCHostTree::removedItemThatHangsElsewhereStays()
{
    zoHPCTreeItem* item = node(QStringLiteral("localhost"));
    QTreeWidgetItem other;
    m_tree->remove(item);
    other.addChild(item);

    m_tree.reset();

    QCOMPARE(other.childCount(), 1);
    QCOMPARE(item->hostName(), QStringLiteral("localhost"));
}

void tst_zoHPCHostTree::itemsMayOutliveTheirWatchers()
{
    zoHPCTreeItem* item = node(QStringLiteral("localhost"));
    {
        const std::shared_ptr<zoHPCTreeItem> held = item->watch().lock();
        QCOMPARE(held.get(), item);
    }

    QCOMPARE(item->watch().lock().get(), item);
    delete item;
    QVERIFY(m_tree->getNodeItems().empty());
}

QTEST_APPLESS_MAIN(tst_zoHPCHostTree)
#include "tst_zoHPCHostTree.moc"
