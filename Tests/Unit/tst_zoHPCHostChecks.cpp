#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCHostChecks.h>

#include <QApplication>

using List = zoHPCProblem::List;

// The host tree: hosts that are listed more than once, networks without nodes, values of options.
class tst_zoHPCHostChecks final : public zoTestCase
{
    Q_OBJECT

private slots:
    void nodeNeedsAName();
    void listedTwiceOnPurpose_data();
    void listedTwiceOnPurpose();

    void duplicateHostNameIsReportedOnce();
    void networkWithoutEnabledNodeIsFound();
    void disabledNetworkNeedsNoNode();
    void nodesOfTheNetworkAreEnabled();
    void unknownOptionValueIsFound();
};

void tst_zoHPCHostChecks::listedTwiceOnPurpose_data()
{
    QTest::addColumn<QStringList>("windows");
    QTest::addColumn<int>("told"); // the place of the node, or -1

    QTest::newRow("no-windows") << QStringList{} << 1;
    QTest::newRow("each-has-one") << QStringList{"a 1", "a 2", "a 3"} << -1;
    QTest::newRow("the-last-has-none") << QStringList{"a 1", "a 2"} << 2;
    QTest::newRow("the-second-has-none") << QStringList{"a 1", "a 3"} << 1;
    QTest::newRow("the-first-has-none") << QStringList{"a 2", "a 3"} << 0;
    QTest::newRow("windows-mean-the-name-alone") << QStringList{"a"} << 1;
}

void tst_zoHPCHostChecks::listedTwiceOnPurpose()
{
    QFETCH(QStringList, windows);
    QFETCH(int, told);
    zoHPCSetup setup;
    for (int i = 0; i < 3; ++i)
        setup.addNode(QStringLiteral("a"));
    for (const QString& node : qAsConst(windows))
        setup.addWindow(node, QString());

    const List problems = zoHPCHostChecks::duplicateHostNames(setup.layout());

    QCOMPARE(problems.size(), size_t(told < 0 ? 0 : 1));
    if (told >= 0)
        QCOMPARE(problems[0].item, setup.hosts.getNodeItems()[size_t(told)]);
}

void tst_zoHPCHostChecks::duplicateHostNameIsReportedOnce()
{
    zoHPCSetup setup;
    for (const char* name : {"a", "b", "a", "a", "", ""})
        setup.addNode(QString::fromLatin1(name));

    const List problems = zoHPCHostChecks::duplicateHostNames(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QCOMPARE(
        problems[0].message,
        QStringLiteral("3 nodes are called \"a\", and no window is on \"a 2\". Remove or rename one of them, "
                       "or give each a window."));
    QCOMPARE(problems[0].item, setup.hosts.getNodeItems()[2]);
    QCOMPARE(problems[0].other, setup.hosts.getNodeItems()[0]);
    QVERIFY(problems[0].concernsHost());
}

void tst_zoHPCHostChecks::networkWithoutEnabledNodeIsFound()
{
    zoHPCSetup setup;
    setup.addNode(QStringLiteral("a"));
    zoHPCTreeItem* const empty = setup.hosts.createNetwork(setup.hosts.master(), -1);
    zoHPCTreeItem* const off = setup.hosts.createNetwork(setup.hosts.master(), -1);
    setup.addNode(QStringLiteral("b"), off)->setIsEnabled(false);

    const List problems = zoHPCHostChecks::networksWithoutEnabledNode(setup.layout());

    QCOMPARE(problems.size(), size_t(2));
    QCOMPARE(problems[0].item, empty);
    QVERIFY(!problems[0].hasFix());
    QCOMPARE(problems[1].item, off);
    QVERIFY(problems[1].hasFix());
}

void tst_zoHPCHostChecks::disabledNetworkNeedsNoNode()
{
    zoHPCSetup setup;
    setup.addNode(QStringLiteral("a"))->getParent()->setIsEnabled(false);

    QVERIFY(zoHPCHostChecks::networksWithoutEnabledNode(setup.layout()).empty());
}

void tst_zoHPCHostChecks::nodesOfTheNetworkAreEnabled()
{
    zoHPCSetup setup;
    zoHPCTreeItem* const node = setup.addNode(QStringLiteral("a"));
    node->setIsEnabled(false);

    zoHPCHostChecks::networksWithoutEnabledNode(setup.layout()).at(0).fix();

    QVERIFY(node->isEnabled());
    QVERIFY(zoHPCHostChecks::networksWithoutEnabledNode(setup.layout()).empty());
}

void tst_zoHPCHostChecks::unknownOptionValueIsFound()
{
    zoHPCSetup setup;
    zoHPCTreeItem* const node = setup.addNode(QStringLiteral("a"));
    zoHPCTreeItem* const network = node->getParent();
    zoHPCTreeItem* const master = setup.hosts.master();
    zoHPCTreeItem* const behind = setup.hosts.createNetwork(node, -1);
    setup.addNode(QStringLiteral("b"), behind);
    network->setOption(zoHPCOption::LinkSpeed, QStringLiteral("40g10g"));
    node->setOption(zoHPCOption::LinkSpeed, QStringLiteral("a node has none"));
    master->setOption(zoHPCOption::ServicePort, QStringLiteral("no combo box"));
    QVERIFY(zoHPCHostChecks::unknownOptionValues(setup.layout()).empty());
    master->setOption(zoHPCOption::SceneCompression, QStringLiteral("ultra"));
    master->setOption(zoHPCOption::ParallelFrames, QStringLiteral("9"));
    behind->setOption(zoHPCOption::NetworkType, QStringLiteral("InfiniBand"));

    const List problems = zoHPCHostChecks::unknownOptionValues(setup.layout());

    QCOMPARE(problems.size(), size_t(3));
    QCOMPARE(problems[0].item, master);
    QCOMPARE(problems[0].message,
             QStringLiteral("Cluster: option \"scenecompression\" has the unknown value \"ultra\"."));
    QCOMPARE(problems[1].item, master);
    QCOMPARE(problems[2].item, behind);
    QCOMPARE(problems[2].message,
             QStringLiteral("Network number 2: option \"network\" has the unknown value \"InfiniBand\"."));
    for (const zoHPCProblem& problem : problems)
        problem.fix();
    QCOMPARE(behind->getOption(zoHPCOption::NetworkType), QString());
    QVERIFY(zoHPCHostChecks::unknownOptionValues(setup.layout()).empty());
}

void tst_zoHPCHostChecks::nodeNeedsAName()
{
    zoHPCSetup setup;
    setup.addNode(QStringLiteral("a"));
    zoHPCTreeItem* const empty = setup.addNode(QString());

    const zoHPCProblem::List problems = zoHPCHostChecks::nodesWithoutName(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QCOMPARE(problems[0].item, static_cast<QTreeWidgetItem*>(empty));
    QVERIFY2(problems[0].message.startsWith(QStringLiteral("Node number 2 of Network ")),
             qPrintable(problems[0].message));
}

ZO_TEST_MAIN(tst_zoHPCHostChecks)
#include "tst_zoHPCHostChecks.moc"
