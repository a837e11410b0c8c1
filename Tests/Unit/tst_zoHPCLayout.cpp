#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <QApplication>

// The reading of a configuration that checks and pictures work on.
class tst_zoHPCLayout final : public zoTestCase
{
    Q_OBJECT

private slots:
    void emptyConfigurationIsAnEmptyLayout();
    void nodesHaveTheNamesThatWindowsUse();
    void equalNamesAreNumberedInTreeOrder();
    void nodeIsEnabledOnlyWithAllAboveIt();
    void networkCountsItsOwnNodes();
    void thousandsOfNestedGatewaysAreRead();
    void tilesKnowTheirProjection();
    void viewportFindsItsProjectionByName();
    void identifierGoesBeforeTheName();
    void lastOfEqualProjectionNamesCounts();
    void windowsAndViewportsAreNumberedAsTheTreeShowsThem();
    void viewportAreaCountsFromTheUpperEdge();
    void cornersInPixelsAreReadAsSuch();
    void eyesFollowTheStereoMode_data();
    void eyesFollowTheStereoMode();
    void tilesAreAsLargeAsTheFirstViewportOfOne();
    void claimOfAllTilesIsThatOfTheProjection();
    void listsAndTreesGiveTheSame();
};

void tst_zoHPCLayout::emptyConfigurationIsAnEmptyLayout()
{
    const zoHPCLayout layout(static_cast<const QTreeWidget*>(nullptr), nullptr, nullptr);

    QVERIFY(layout.nodes().empty());
    QVERIFY(layout.projections().empty());
    QVERIFY(layout.windows().empty());
    QVERIFY(layout.viewports().empty());
    QCOMPARE(layout.indexOf(nullptr), zoHPCLayout::None);
}

void tst_zoHPCLayout::nodesHaveTheNamesThatWindowsUse()
{
    zoHPCSetup setup;
    zoHPCTreeItem* const node = setup.addNode(QStringLiteral("n1"));
    setup.addWindow(QStringLiteral("n1"), QString());
    setup.addWindow(QStringLiteral("N1"), QString());

    const zoHPCLayout layout = setup.layout();

    QCOMPARE(layout.nodes().size(), size_t(1));
    QCOMPARE(layout.nodes()[0].item, node);
    QCOMPARE(layout.windows()[0].nodeIndex, 0);
    QCOMPARE(layout.windows()[1].nodeIndex, zoHPCLayout::None);
}

void tst_zoHPCLayout::equalNamesAreNumberedInTreeOrder()
{
    zoHPCSetup setup;
    for (const char* name : {"a", "b", "a"})
        setup.addNode(QString::fromLatin1(name));
    setup.addNode(QString());

    const zoHPCLayout layout = setup.layout();

    QCOMPARE(layout.nodes()[0].name, QStringLiteral("a 1"));
    QCOMPARE(layout.nodes()[1].name, QStringLiteral("b"));
    QCOMPARE(layout.nodes()[2].name, QStringLiteral("a 2"));
    QCOMPARE(layout.nodes()[3].name, QString());
    QCOMPARE(layout.nodeNamed(QStringLiteral("a 2")), 2);
    QCOMPARE(layout.nodeNamed(QStringLiteral("a")), zoHPCLayout::None);
    QCOMPARE(layout.nodeNamed(QString()), zoHPCLayout::None);
}

void tst_zoHPCLayout::nodeIsEnabledOnlyWithAllAboveIt()
{
    zoHPCSetup setup;
    zoHPCTreeItem* const gateway = setup.addNode(QStringLiteral("gateway"));
    zoHPCTreeItem* const behind = setup.hosts.createNetwork(gateway, -1);
    setup.addNode(QStringLiteral("inner"), behind);
    setup.addNode(QStringLiteral("outer"), gateway->getParent());
    gateway->setIsEnabled(false);

    const zoHPCLayout layout = setup.layout();

    QVERIFY(!layout.nodes()[size_t(layout.nodeNamed(QStringLiteral("gateway")))].enabled);
    QVERIFY(!layout.nodes()[size_t(layout.nodeNamed(QStringLiteral("inner")))].enabled);
    QVERIFY(layout.nodes()[size_t(layout.nodeNamed(QStringLiteral("outer")))].enabled);
}

void tst_zoHPCLayout::networkCountsItsOwnNodes()
{
    zoHPCSetup setup;
    zoHPCTreeItem* const gateway = setup.addNode(QStringLiteral("gateway"));
    setup.addNode(QStringLiteral("off"))->setIsEnabled(false);
    zoHPCTreeItem* const behind = setup.hosts.createNetwork(gateway, -1);
    setup.addNode(QStringLiteral("inner"), behind);

    const zoHPCLayout layout = setup.layout();

    QCOMPARE(layout.networks().size(), size_t(2));
    QCOMPARE(layout.networks()[0].nodes.size(), size_t(2));
    QCOMPARE(layout.networks()[0].enabledNodes, 1);
    QCOMPARE(layout.networks()[1].nodes.size(), size_t(1));
}

void tst_zoHPCLayout::thousandsOfNestedGatewaysAreRead()
{
    zoHPCSetup setup;
    QString text;
    for (int i = 0; i < 3000; ++i)
        text += QStringLiteral("n") + QString::number(i) + QStringLiteral(" {");
    setup.hosts.setHostString(text + QStringLiteral(" last"));

    const zoHPCLayout layout = setup.layout();

    QCOMPARE(layout.nodes().size(), size_t(3001));
    QCOMPARE(layout.nodes().back().name, QStringLiteral("last"));
}

void tst_zoHPCLayout::tilesKnowTheirProjection()
{
    zoHPCSetup setup;
    setup.addProjection(QStringLiteral("plane"), QStringLiteral("plane"));
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 2, 2);

    const zoHPCLayout layout = setup.layout();

    QCOMPARE(layout.projections().size(), size_t(6));
    QVERIFY(layout.projections()[0].isTile);
    QVERIFY(!layout.projections()[1].isTile);
    QCOMPARE(layout.projections()[1].item, wall);
    QCOMPARE(layout.projections()[5].parent, 1);
    QCOMPARE(layout.projections()[5].top, 1);
    QVERIFY(layout.projections()[5].isTile);
    QCOMPARE(layout.indexOf(wall->child(3)), 5);
}

void tst_zoHPCLayout::viewportFindsItsProjectionByName()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 2);
    setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:1 col:2"));
    setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:1 col:3"));
    setup.addWindow(QStringLiteral("n"), QString());

    const zoHPCLayout layout = setup.layout();

    QCOMPARE(layout.viewports()[0].projection, 2);
    QCOMPARE(layout.viewports()[1].projection, zoHPCLayout::None);
    QCOMPARE(layout.viewports()[2].projection, zoHPCLayout::None);
}

void tst_zoHPCLayout::identifierGoesBeforeTheName()
{
    zoHPCSetup setup;
    setup.addProjection(QStringLiteral("p1"), QStringLiteral("plane"));
    zoHPCProjectionItem* const renamed = setup.addProjection(QStringLiteral("p2"), QStringLiteral("plane"));
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QStringLiteral("p1"));
    dynamic_cast<zoHPCViewportItem*>(window->child(0))
        ->setString(zoHPCViewportItem::ProjectionIdentifier,
                    renamed->getString(zoHPCProjectionItem::Identifier));

    const zoHPCLayout layout = setup.layout();

    QCOMPARE(layout.viewports()[0].projection, 1);
}

void tst_zoHPCLayout::lastOfEqualProjectionNamesCounts()
{
    zoHPCSetup setup;
    setup.addProjection(QStringLiteral("p"), QStringLiteral("plane"));
    setup.addProjection(QStringLiteral("p"), QStringLiteral("plane"));
    setup.addWindow(QStringLiteral("n"), QStringLiteral("p"));

    const zoHPCLayout layout = setup.layout();

    QCOMPARE(layout.viewports()[0].projection, 1);
}

void tst_zoHPCLayout::windowsAndViewportsAreNumberedAsTheTreeShowsThem()
{
    zoHPCSetup setup;
    setup.addDisplay(QStringLiteral("empty"));
    zoHPCDisplayItem* const third = setup.addDisplay(QStringLiteral("2"));
    setup.addWindow(QStringLiteral("a"), QString());
    setup.addWindow(QStringLiteral("b"), QString(), QStringLiteral("mono"), third);
    zoHPCWindowItem* const last =
        setup.addWindow(QStringLiteral("c"), QString(), QStringLiteral("left"), third);
    setup.addViewport(last, QString(), QStringLiteral("right"));

    const zoHPCLayout layout = setup.layout();

    QCOMPARE(layout.windows()[2].display, 3);
    QCOMPARE(layout.windows()[2].number, 2);
    QCOMPARE(layout.windows()[2].user, QStringLiteral("2"));
    QCOMPARE(layout.viewports()[3].window, 2);
    QCOMPARE(layout.viewports()[3].number, 2);
}

void tst_zoHPCLayout::viewportAreaCountsFromTheUpperEdge()
{
    zoHPCSetup setup;
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QString());
    auto* const viewport = dynamic_cast<zoHPCViewportItem*>(window->child(0));
    viewport->setString(zoHPCViewportItem::Position, QStringLiteral("top"));
    viewport->update();

    const zoHPCLayout layout = setup.layout();

    QCOMPARE(layout.viewports()[0].area, QRectF(0.0, 0.0, 1.0, 0.5));
}

void tst_zoHPCLayout::cornersInPixelsAreReadAsSuch()
{
    zoHPCSetup setup;
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QString());
    auto* const viewport = dynamic_cast<zoHPCViewportItem*>(window->child(0));
    viewport->setString(zoHPCViewportItem::Position, QStringLiteral("custom"));
    viewport->setViewport(640, 0, 1280, 1024);

    const zoHPCLayout layout = setup.layout();

    QCOMPARE(layout.viewports()[0].area, QRectF(0.5, 0.0, 0.5, 1.0));
}

void tst_zoHPCLayout::eyesFollowTheStereoMode_data()
{
    QTest::addColumn<QString>("eye");
    QTest::addColumn<unsigned>("eyes");

    QTest::newRow("stereo-off") << "mono" << unsigned(zoHPCLayout::BothEyes);
    QTest::newRow("left") << "left" << unsigned(zoHPCLayout::LeftEye);
    QTest::newRow("right") << "right" << unsigned(zoHPCLayout::RightEye);
    for (const char* mode : {"stereo", "horizontalinterlaced", "verticalinterlaced", "splitleftright",
                             "splitbottomtop", "redcyan", "blueyellow", "greenmagenta"})
        QTest::newRow(mode) << QString::fromLatin1(mode) << unsigned(zoHPCLayout::BothEyes);
    QTest::newRow("unset") << "" << unsigned(zoHPCLayout::BothEyes);
}

void tst_zoHPCLayout::eyesFollowTheStereoMode()
{
    QFETCH(QString, eye);
    QFETCH(unsigned, eyes);

    QCOMPARE(zoHPCLayout::eyesOf(eye), eyes);
}

void tst_zoHPCLayout::tilesAreAsLargeAsTheFirstViewportOfOne()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addProjection(QStringLiteral("wall"), QStringLiteral("wall"));
    wall->setInt(zoHPCProjectionItem::Rows, 1);
    wall->setInt(zoHPCProjectionItem::Columns, 2);
    wall->update();
    zoHPCProjectionItem* const tile = setup.addProjection(QStringLiteral("tile"), QStringLiteral("tile"));
    zoHPCProjectionItem* const unshown = setup.addProjection(QStringLiteral("dark"), QStringLiteral("wall"));
    const QString eye = QStringLiteral("mono");
    zoHPCWindowItem* const window =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 800, 600);
    zoHPCViewportItem* const half =
        setup.addViewport(window, static_cast<zoHPCProjectionItem*>(wall->child(1))->getString(0), eye);
    half->setViewport(0.5, 0.0, 1.0, 1.0);
    setup.addViewport(setup.addWindowAt(QStringLiteral("n"), QStringLiteral("1"), 0, 0, 640, 480),
                      QStringLiteral("tile"), eye);

    const zoHPCLayout layout = setup.layout();

    QCOMPARE(layout.tilePixels(layout.indexOf(wall)), QSizeF(400, 600));
    QCOMPARE(layout.tilePixels(layout.indexOf(tile)), QSizeF(640, 480));
    QCOMPARE(layout.tilePixels(layout.indexOf(unshown)), QSizeF(1280, 1024));
}

void tst_zoHPCLayout::claimOfAllTilesIsThatOfTheProjection()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const all = setup.addPowerWall(QStringLiteral("all"), 1, 2);
    zoHPCProjectionItem* const some = setup.addPowerWall(QStringLiteral("some"), 1, 2);
    const zoHPCLayout layout = setup.layout();

    const auto found = layout.tilesOrTheirProjections(
        [&](size_t i) { return layout.projections()[i].item != some->child(0); });

    QCOMPARE(found.size(), size_t(2));
    QCOMPARE(found[0]->item, all);
    QCOMPARE(found[1]->item, some->child(1));
    QCOMPARE(found[0]->name(), QStringLiteral("all"));
}

void tst_zoHPCLayout::listsAndTreesGiveTheSame()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 2, 1);
    setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:2 col:1"));

    const zoHPCLayout layout(zoHPCTreeWidgetItem::subChildren<zoHPCProjectionItem>(&setup.projections),
                             zoHPCTreeWidgetItem::subChildren<zoHPCWindowItem>(&setup.displays), nullptr);

    QCOMPARE(layout.projections().size(), setup.layout().projections().size());
    QCOMPARE(layout.windows().size(), size_t(1));
    QCOMPARE(layout.viewports().size(), size_t(1));
    QCOMPARE(layout.viewports()[0].projection, 2);
}

ZO_TEST_MAIN(tst_zoHPCLayout)

#include "tst_zoHPCLayout.moc"
