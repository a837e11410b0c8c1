#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCOption.h>
#include <zoHPCProblems.h>
#include <zoHPCTileChecks.h>
#include <zoHPCWindowSeries.h>

#include <QApplication>

using Cover = zoHPCWindowSeries::Cover;

// Windows that follow from others: for what nobody shows, and on the next nodes.
class tst_zoHPCWindowSeries final : public zoTestCase
{
    Q_OBJECT

private slots:
    void eachTileGetsTheNextNode();
    void gatewaysDrawNothing();
    void usedAndDisabledNodesAreLeftOut();
    void moreTilesThanNodesShareThem_data();
    void moreTilesThanNodesShareThem();
    void nodesGetAsManyWindowsAsTheBusiestHas();
    void neighboursAreThePattern();
    void bothEyesOfANeighbourAreThePattern();
    void tilesWithoutANodeAreLeftOpen();
    void fixLightsTheWholeWall();
    void tilesMayBeLaidOutAnewBeforeTheFix();
    void withoutADisplayThereIsNoFix();
    void withoutNodesThereIsNoFix();
    void equalNamesHaveNoFix();
    void afterGoesOnWithNodeAndTile();
    void afterKeepsGroupsTogether();
    void afterTheLastThereIsNothing();
    void wholeWallStaysShown();
    void nodesFollowEachOther();

private:
    static void addNodes(zoHPCSetup& setup, int count)
    {
        for (int i = 1; i <= count; ++i)
            setup.addNode(QStringLiteral("n%1").arg(i));
    }
    static QString described(const zoHPCWindowItem& window)
    {
        QStringList shown;
        for (const zoHPCViewportItem* viewport : window.children<zoHPCViewportItem>())
            shown << viewport->getString(zoHPCViewportItem::Projection) + QLatin1Char('/') +
                         viewport->getString(zoHPCViewportItem::Eye);
        return window.renderNode() + QLatin1Char(':') + window.getString(zoHPCWindowItem::Screen) +
               QLatin1Char(' ') + shown.join(QLatin1Char(','));
    }
    static QStringList described(const zoHPCWindowSeries::Windows& windows)
    {
        QStringList all;
        for (const auto& window : windows)
            all << described(*window);
        return all;
    }
    static QStringList covered(const zoHPCSetup& setup)
    {
        return described(zoHPCWindowSeries::cover(setup.layout()).windows());
    }
};

void tst_zoHPCWindowSeries::eachTileGetsTheNextNode()
{
    zoHPCSetup setup;
    addNodes(setup, 4);
    setup.addPowerWall(QStringLiteral("W"), 2, 2);

    QCOMPARE(
        covered(setup),
        (QStringList{QStringLiteral("n1:0 W row:1 col:1/mono"), QStringLiteral("n2:0 W row:1 col:2/mono"),
                     QStringLiteral("n3:0 W row:2 col:1/mono"), QStringLiteral("n4:0 W row:2 col:2/mono")}));
}

void tst_zoHPCWindowSeries::gatewaysDrawNothing()
{
    zoHPCSetup setup;
    zoHPCTreeItem* const gateway = setup.addNode(QStringLiteral("gate"));
    zoHPCTreeItem* const inner = setup.hosts.createNetwork(gateway, -1);
    setup.addNode(QStringLiteral("n1"), inner);
    setup.addNode(QStringLiteral("none"), inner)->setOption(zoHPCOption::RenderNode, QStringLiteral("false"));
    setup.addNode(QStringLiteral("n2"), inner);
    setup.addPowerWall(QStringLiteral("W"), 1, 2);

    QCOMPARE(covered(setup), (QStringList{QStringLiteral("n1:0 W row:1 col:1/mono"),
                                          QStringLiteral("n2:0 W row:1 col:2/mono")}));
}

void tst_zoHPCWindowSeries::usedAndDisabledNodesAreLeftOut()
{
    zoHPCSetup setup;
    addNodes(setup, 4);
    setup.hosts.getNodeItems().at(1)->setIsEnabled(false);
    setup.addProjection(QStringLiteral("P"), QStringLiteral("plane"));
    setup.addPowerWall(QStringLiteral("W"), 1, 2);
    setup.addWindow(QStringLiteral("n1"), QStringLiteral("P"));

    const QStringList windows = covered(setup);

    QCOMPARE(windows, (QStringList{QStringLiteral("n3:0 W row:1 col:1/mono"),
                                   QStringLiteral("n4:0 W row:1 col:2/mono")}));
}

void tst_zoHPCWindowSeries::moreTilesThanNodesShareThem_data()
{
    QTest::addColumn<int>("nodes");
    QTest::addColumn<QString>("places");

    QTest::newRow("one-each") << 6 << "n1:0 n2:0 n3:0 n4:0 n5:0 n6:0";
    QTest::newRow("two-each") << 3 << "n1:0 n1:1 n2:0 n2:1 n3:0 n3:1";
    QTest::newRow("one-too-few") << 5 << "n1:0 n1:1 n2:0 n2:1 n3:0 n3:1";
    QTest::newRow("all-on-one") << 1 << "n1:0 n1:1 n1:2 n1:3 n1:4 n1:5";
}

void tst_zoHPCWindowSeries::moreTilesThanNodesShareThem()
{
    QFETCH(int, nodes);
    QFETCH(QString, places);
    zoHPCSetup setup;
    addNodes(setup, nodes);
    setup.addPowerWall(QStringLiteral("W"), 2, 3);

    QStringList found;
    for (const QString& window : covered(setup))
        found << window.section(QLatin1Char(' '), 0, 0);

    QCOMPARE(found.join(QLatin1Char(' ')), places);
}

void tst_zoHPCWindowSeries::nodesGetAsManyWindowsAsTheBusiestHas()
{
    zoHPCSetup setup;
    addNodes(setup, 6);
    setup.addPowerWall(QStringLiteral("W"), 1, 6);
    setup.addWindow(QStringLiteral("n1"), QStringLiteral("W row:1 col:1"));
    setup.addWindow(QStringLiteral("n2"), QStringLiteral("W row:1 col:2"));
    setup.addWindow(QStringLiteral("n2"), QStringLiteral("W row:1 col:3"));

    QCOMPARE(covered(setup), (QStringList{QStringLiteral("n3:0 W row:1 col:4/mono"),
                                          QStringLiteral("n3:1 W row:1 col:5/mono"),
                                          QStringLiteral("n4:0 W row:1 col:6/mono")}));
}

void tst_zoHPCWindowSeries::neighboursAreThePattern()
{
    zoHPCSetup setup;
    addNodes(setup, 3);
    setup.addPowerWall(QStringLiteral("W"), 1, 3);
    zoHPCWindowItem* const first = setup.addWindow(QStringLiteral("n1"), QStringLiteral("W row:1 col:1"));
    first->setBool(zoHPCWindowItem::FullScreen, false);
    first->setInt(zoHPCWindowItem::Width, 3840);
    first->setString(zoHPCWindowItem::Screen, QStringLiteral("2"));
    first->children<zoHPCViewportItem>().front()->setBool(zoHPCViewportItem::FlipX, true);

    const zoHPCWindowSeries::Windows windows = zoHPCWindowSeries::cover(setup.layout()).windows();

    QCOMPARE(described(windows), (QStringList{QStringLiteral("n2:2 W row:1 col:2/mono"),
                                              QStringLiteral("n3:2 W row:1 col:3/mono")}));
    QCOMPARE(windows.front()->getInt(zoHPCWindowItem::Width), 3840);
    QVERIFY(!windows.front()->getBool(zoHPCWindowItem::FullScreen));
    QVERIFY(windows.front()->children<zoHPCViewportItem>().front()->getBool(zoHPCViewportItem::FlipX));
}

void tst_zoHPCWindowSeries::bothEyesOfANeighbourAreThePattern()
{
    zoHPCSetup setup;
    addNodes(setup, 4);
    setup.addPowerWall(QStringLiteral("W"), 1, 2);
    setup.addWindow(QStringLiteral("n1"), QStringLiteral("W row:1 col:1"), QStringLiteral("left"));
    setup.addWindow(QStringLiteral("n2"), QStringLiteral("W row:1 col:1"), QStringLiteral("right"));

    QCOMPARE(covered(setup), (QStringList{QStringLiteral("n3:0 W row:1 col:2/left"),
                                          QStringLiteral("n4:0 W row:1 col:2/right")}));
}

void tst_zoHPCWindowSeries::tilesWithoutANodeAreLeftOpen()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("W"), 1, 2);

    QCOMPARE(covered(setup),
             (QStringList{QStringLiteral(":0 W row:1 col:1/mono"), QStringLiteral(":0 W row:1 col:2/mono")}));
}

void tst_zoHPCWindowSeries::fixLightsTheWholeWall()
{
    zoHPCSetup setup;
    addNodes(setup, 6);
    setup.addPowerWall(QStringLiteral("W"), 2, 3);
    std::vector<zoHPCProblem> problems;
    {
        const zoHPCLayout layout = setup.layout();
        problems = zoHPCTileChecks::tilesShownNowhere(layout);
    }
    QCOMPARE(problems.size(), size_t(1));
    QCOMPARE(problems.front().fixText, QStringLiteral("Add 6 windows"));
    QVERIFY(problems.front().addsRows);

    problems.front().fix();

    QCOMPARE(setup.display()->childCount(), 6);
    QVERIFY(zoHPCProblems::find(setup.layout()).empty());
}

// As another fix of the same list may do it.
void tst_zoHPCWindowSeries::tilesMayBeLaidOutAnewBeforeTheFix()
{
    zoHPCSetup setup;
    addNodes(setup, 2);
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("W"), 1, 2);
    const zoHPCProblem::List problems = zoHPCTileChecks::tilesShownNowhere(setup.layout());
    wall->clearChildren();

    problems.front().fix();

    const QList<zoHPCWindowItem*> windows = setup.display()->children<zoHPCWindowItem>();
    QCOMPARE(windows.size(), 2);
    QCOMPARE(described(*windows.back()), QStringLiteral("n2:0 W row:1 col:2/mono"));
}

void tst_zoHPCWindowSeries::withoutADisplayThereIsNoFix()
{
    zoHPCSetup setup;
    addNodes(setup, 1);
    setup.displays.clear();
    setup.addProjection(QStringLiteral("P"), QStringLiteral("plane"));

    const zoHPCLayout layout = setup.layout();
    const std::vector<zoHPCProblem> problems = zoHPCTileChecks::tilesShownNowhere(layout);

    QCOMPARE(problems.size(), size_t(1));
    QVERIFY(!problems.front().hasFix());
}

void tst_zoHPCWindowSeries::withoutNodesThereIsNoFix()
{
    zoHPCSetup setup;
    addNodes(setup, 1);
    setup.addPowerWall(QStringLiteral("W"), 1, 17); // a window names 16 screens

    QVERIFY(!zoHPCWindowSeries::cover(setup.layout()).isSound);
    addNodes(setup, 1);
    QVERIFY(zoHPCWindowSeries::cover(setup.layout()).isSound);
}

void tst_zoHPCWindowSeries::equalNamesHaveNoFix()
{
    zoHPCSetup setup;
    addNodes(setup, 2);
    setup.addProjection(QStringLiteral("P"), QStringLiteral("plane"));
    QVERIFY(zoHPCWindowSeries::cover(setup.layout()).isSound);

    setup.addProjection(QStringLiteral("P"), QStringLiteral("plane"));

    QVERIFY(!zoHPCWindowSeries::cover(setup.layout()).isSound);
}

void tst_zoHPCWindowSeries::afterGoesOnWithNodeAndTile()
{
    zoHPCSetup setup;
    addNodes(setup, 3);
    setup.addPowerWall(QStringLiteral("W"), 1, 3);
    const zoHPCWindowItem* const first =
        setup.addWindow(QStringLiteral("n1"), QStringLiteral("W row:1 col:1"));
    setup.link();

    QCOMPARE(described(zoHPCWindowSeries::after(setup.layout(), {first})),
             QStringList{QStringLiteral("n2:0 W row:1 col:2/mono")});
}

void tst_zoHPCWindowSeries::afterKeepsGroupsTogether()
{
    zoHPCSetup setup;
    addNodes(setup, 2);
    setup.addPowerWall(QStringLiteral("W"), 1, 2);
    const zoHPCWindowItem* const left =
        setup.addWindow(QStringLiteral("n1"), QStringLiteral("W row:1 col:1"), QStringLiteral("left"));
    zoHPCWindowItem* const right =
        setup.addWindow(QStringLiteral("n1"), QStringLiteral("W row:1 col:1"), QStringLiteral("right"));
    right->setString(zoHPCWindowItem::Screen, QStringLiteral("1"));
    setup.link();

    QCOMPARE(
        described(zoHPCWindowSeries::after(setup.layout(), {left, right})),
        (QStringList{QStringLiteral("n2:0 W row:1 col:2/left"), QStringLiteral("n2:1 W row:1 col:2/right")}));
}

void tst_zoHPCWindowSeries::afterTheLastThereIsNothing()
{
    zoHPCSetup setup;
    addNodes(setup, 1);
    setup.addPowerWall(QStringLiteral("W"), 1, 1);
    const zoHPCWindowItem* const only =
        setup.addWindow(QStringLiteral("n1"), QStringLiteral("W row:1 col:1"));
    setup.link();

    QCOMPARE(described(zoHPCWindowSeries::after(setup.layout(), {only})),
             QStringList{QStringLiteral(":0 /mono")});
}

void tst_zoHPCWindowSeries::wholeWallStaysShown()
{
    zoHPCSetup setup;
    addNodes(setup, 2);
    setup.addPowerWall(QStringLiteral("W"), 1, 2);
    const zoHPCWindowItem* const whole = setup.addWindow(QStringLiteral("n1"), QStringLiteral("W"));
    setup.link();

    QCOMPARE(described(zoHPCWindowSeries::after(setup.layout(), {whole})),
             QStringList{QStringLiteral("n2:0 W/mono")});
}

void tst_zoHPCWindowSeries::nodesFollowEachOther()
{
    zoHPCSetup setup;
    addNodes(setup, 4);
    std::vector<const zoHPCWindowItem*> windows;
    for (const char* node : {"", "", "n1", "n1", ""})
        windows.push_back(setup.addWindow(QLatin1String(node), QString()));

    const std::vector<QString> nodes =
        zoHPCWindowSeries::nodesFrom(setup.layout(), QStringLiteral("n2"), windows);

    // The two of one node stay together, and there is no fifth node.
    QCOMPARE(QStringList(nodes.begin(), nodes.end()),
             (QStringList{QStringLiteral("n2"), QStringLiteral("n3"), QStringLiteral("n4"),
                          QStringLiteral("n4"), QString()}));
}

ZO_TEST_MAIN(tst_zoHPCWindowSeries)
#include "tst_zoHPCWindowSeries.moc"
