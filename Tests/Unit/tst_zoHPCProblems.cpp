#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCPlane.h>
#include <zoHPCProblems.h>

#include <QApplication>
#include <QSet>

namespace
{
using Kind = zoHPCProblem::Kind;
using List = zoHPCProblems::List;

QStringList names(const List& problems)
{
    QStringList result;
    for (const zoHPCProblem& problem : problems) {
        const auto* projection = dynamic_cast<const zoHPCProjectionItem*>(problem.item);
        result << (projection ? projection->getString(zoHPCProjectionItem::Name) : problem.item->text(0));
    }
    return result;
}

QStringList kinds(const List& problems)
{
    QStringList result;
    for (const zoHPCProblem& problem : problems)
        result << zoHPCProblem::kindName(problem.kind);
    return result;
}

zoHPCProjectionItem* addPlane(zoHPCSetup& setup, const QString& name, const zoHPCPlane& plane)
{
    zoHPCProjectionItem* item = setup.addProjection(name, QStringLiteral("plane"));
    plane.toItem(*item);
    return item;
}

zoHPCPlane frontPlane(double left, double right)
{
    return {{left, -1000, -1500}, {right, -1000, -1500}, {right, 1000, -1500}};
}

// One wall that is all right, on one node.
void fillSound(zoHPCSetup& setup)
{
    setup.addNode(QStringLiteral("n"));
    setup.addPowerWall(QStringLiteral("wall"), 1, 1);
    setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:1 col:1"));
}
} // namespace

// The checks of a configuration.
class tst_zoHPCProblems final : public zoTestCase
{
    Q_OBJECT

private slots:
    void soundConfigurationHasNone();
    void samplesHaveNone_data();
    void samplesHaveNone();
    void emptyConfigurationHasNoneButItsNetwork();
    void everyKindHasItsOwnWord();
    void allChecksRunInOrder();

    void viewportWithoutProjectionIsFound();
    void viewportOfAProjectionThatIsGoneIsFound();
    void projectionNameMayHoldAPlaceholder();

    void windowWithoutNodeIsOfferedAFreeOne();
    void windowsWithoutNodeAreOfferedDifferentNodes();
    void windowWithoutNodeHasNoFixWhenNoNodeIsFree();

    void windowOnUnknownNodeIsFound();
    void nodeSpeltOtherwiseIsOffered();
    void nameThatBecameNumberedIsOffered();

    void windowOnDisabledNodeIsFound_data();
    void windowOnDisabledNodeIsFound();

    void windowsOverlap_data();
    void windowsOverlap();
    void eachOverlappedWindowIsReportedOnce();
    void laterWindowIsReportedWhateverItsPlace();
    void windowInFullScreenCoversItsScreen_data();
    void windowInFullScreenCoversItsScreen();
    void geometryOfAWindowInFullScreenDoesNotCount();
    void windowsWithoutNodeDoNotOverlap();

    void tileShownNowhereIsFound();
    void projectionShownNowhereIsReportedOnce();
    void viewportOfTheProjectionShowsAllItsTiles();
    void tileShownTwiceIsFound_data();
    void tileShownTwiceIsFound();
    void tileShownWithItsProjectionIsShownTwice();
    void wholeBesideItsTilesIsACopy_data();
    void wholeBesideItsTilesIsACopy();
    void usersMaySeeTheSameTile();
    void tileForOneEyeIsFound_data();
    void tileForOneEyeIsFound();
    void eyesMayComeFromTwoDisplays();
    void eyesOfDifferentUsersDoNotMakeAPair();
    void allTilesForOneEyeAreReportedOnce();

    void degeneratePlaneIsFound();
    void caveWithoutDepthHasDegenerateWalls();
    void skewedPlaneIsFound_data();
    void skewedPlaneIsFound();
    void skewedPlaneIsMadeSquare();
    void mirroredPlaneIsFound_data();
    void mirroredPlaneIsFound();
    void mirroredPlaneIsTurnedRound();
    void planeUpsideDownIsTurnedUpright();
    void mirroredWallIsFoundByItsSizes_data();
    void mirroredWallIsFoundByItsSizes();

    void blendWiderThanTheOverlapIsFound_data();
    void blendWiderThanTheOverlapIsFound();
    void blendIsCutToTheOverlap();
    void blendWithoutNeighbourIsFound();
    void blendThatIsOffDoesNotCount();
    void convertedTilesBlendAsTheyOverlap();
    void planesForBothEyesAreNoNeighbours();

    void wallInMetresIsFound_data();
    void wallInMetresIsFound();
    void wallInMetresIsMultiplied();
    void lengthsInMillimetresAreLeft();
    void planeInMetresIsFound_data();
    void planeInMetresIsFound();

    void largeConfigurationIsCheckedInProportion();
};

void tst_zoHPCProblems::soundConfigurationHasNone()
{
    zoHPCSetup setup;
    fillSound(setup);

    QCOMPARE(kinds(zoHPCProblems::find(setup.layout())), QStringList());
}

void tst_zoHPCProblems::samplesHaveNone_data()
{
    QTest::addColumn<QString>("file");

    QTest::newRow("power-wall") << "powerwall-2x2";
    QTest::newRow("cave-with-two-nodes-per-wall") << "cave-4-sided";
    QTest::newRow("tiled-wall-behind-a-gateway") << "tiledwall-3x5-gateway";
}

void tst_zoHPCProblems::samplesHaveNone()
{
    QFETCH(QString, file);
    zoHPCSetup setup;
    QVERIFY(setup.load(QStringLiteral(ZO_DATA_DIR "/cluster/") + file + QStringLiteral(".zhpc")));

    const List problems = zoHPCProblems::find(setup.layout());

    QVERIFY2(problems.empty(), problems.empty() ? "" : qPrintable(problems.front().message));
    QVERIFY(!setup.layout().viewports().empty());
}

void tst_zoHPCProblems::emptyConfigurationHasNoneButItsNetwork()
{
    zoHPCSetup setup;

    QCOMPARE(kinds(zoHPCProblems::find(setup.layout())), QStringList());
    QCOMPARE(kinds(zoHPCProblems::find(zoHPCLayout())), QStringList());
    setup.hosts.createNetwork(setup.hosts.master(), -1);
    QCOMPARE(kinds(zoHPCProblems::find(setup.layout())), {QStringLiteral("network-without-enabled-node")});
}

void tst_zoHPCProblems::everyKindHasItsOwnWord()
{
    QSet<QString> words;
    for (int kind = 0; kind < zoHPCProblem::kindCount(); ++kind)
        words.insert(zoHPCProblem::kindName(static_cast<Kind>(kind)));

    QCOMPARE(words.size(), zoHPCProblem::kindCount());
    QVERIFY(!words.contains(QString()));
}

void tst_zoHPCProblems::allChecksRunInOrder()
{
    zoHPCSetup setup;
    setup.addNode(QStringLiteral("twin"));
    setup.addNode(QStringLiteral("twin"));
    setup.addNode(QStringLiteral("off"))->setIsEnabled(false);
    setup.hosts.createNetwork(setup.hosts.master(), -1)
        ->setOption(zoHPCOption::LinkSpeed, QStringLiteral("5g"));
    setup.addWindow(QStringLiteral("off"), QString());
    setup.addWindow(QStringLiteral("off"), QStringLiteral("skewed"), QStringLiteral("left"));
    setup.addWindow(QString(), QStringLiteral("mirrored"));
    setup.addWindow(QStringLiteral("gone"), QStringLiteral("mirrored"));
    setup.addProjection(QStringLiteral("metres"), QStringLiteral("plane"));
    addPlane(setup, QStringLiteral("flat"), {{-500, 0, -900}, {500, 0, -900}, {500, 0, -900}});
    addPlane(setup, QStringLiteral("skewed"), {{0, 0, -900}, {500, 0, -900}, {600, 500, -900}});
    zoHPCProjectionItem* const mirrored = addPlane(setup, QStringLiteral("mirrored"), frontPlane(500, -500));
    mirrored->setBool(zoHPCProjectionItem::EdgeBlending, true);
    mirrored->setDouble(zoHPCProjectionItem::LeftEdge, 0.5);

    const QStringList found = kinds(zoHPCProblems::find(setup.layout()));

    QStringList expected{QStringLiteral("viewport-without-projection"),
                         QStringLiteral("window-without-node"),
                         QStringLiteral("window-with-unknown-node"),
                         QStringLiteral("window-with-disabled-node"),
                         QStringLiteral("window-with-disabled-node"),
                         QStringLiteral("overlapping-windows"),
                         QStringLiteral("tile-shown-nowhere"),
                         QStringLiteral("tile-shown-nowhere"),
                         QStringLiteral("tile-shown-twice"),
                         QStringLiteral("tile-for-one-eye"),
                         QStringLiteral("degenerate-plane"),
                         QStringLiteral("skewed-plane"),
                         QStringLiteral("mirrored-plane"),
                         QStringLiteral("blend-wider-than-overlap"),
                         QStringLiteral("wall-in-metres"),
                         QStringLiteral("duplicate-host-name"),
                         QStringLiteral("network-without-enabled-node"),
                         QStringLiteral("unknown-option-value")};
    QCOMPARE(found, expected);
}

void tst_zoHPCProblems::viewportWithoutProjectionIsFound()
{
    zoHPCSetup setup;
    fillSound(setup);
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QString());

    const List problems = zoHPCProblems::viewportsWithoutProjection(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QCOMPARE(problems[0].item, window->child(0));
    QCOMPARE(
        problems[0].message,
        QStringLiteral(
            "Viewport 1 of window 2 of display 1 shows no projection. Choose one, or delete the viewport."));
    QVERIFY(!problems[0].concernsHost());
}

void tst_zoHPCProblems::viewportOfAProjectionThatIsGoneIsFound()
{
    zoHPCSetup setup;
    fillSound(setup);
    setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:9 col:9"));

    const List problems = zoHPCProblems::viewportsWithoutProjection(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QVERIFY(problems[0].message.contains(QStringLiteral("\"wall row:9 col:9\"")));
}

void tst_zoHPCProblems::projectionNameMayHoldAPlaceholder()
{
    zoHPCSetup setup;
    setup.addWindow(QStringLiteral("n"), QStringLiteral("%1 %2 %3"));

    const List problems = zoHPCProblems::viewportsWithoutProjection(setup.layout());

    QVERIFY(problems[0].message.contains(QStringLiteral("\"%1 %2 %3\"")));
}

void tst_zoHPCProblems::windowWithoutNodeIsOfferedAFreeOne()
{
    zoHPCSetup setup;
    fillSound(setup);
    setup.addNode(QStringLiteral("off"))->setIsEnabled(false);
    setup.addNode(QStringLiteral("free"));
    zoHPCWindowItem* const window = setup.addWindow(QString(), QStringLiteral("wall"));

    const List problems = zoHPCProblems::windowsWithoutNode(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QCOMPARE(problems[0].item, window);
    QCOMPARE(problems[0].fixText, QStringLiteral("Use free"));
    problems[0].fix();
    QCOMPARE(window->renderNode(), QStringLiteral("free"));
    QCOMPARE(window->text(0), QStringLiteral("Window: free"));
    QVERIFY(zoHPCProblems::windowsWithoutNode(setup.layout()).empty());
}

void tst_zoHPCProblems::windowsWithoutNodeAreOfferedDifferentNodes()
{
    zoHPCSetup setup;
    setup.addNode(QStringLiteral("a"));
    setup.addNode(QStringLiteral("b"));
    for (int i = 0; i < 3; ++i)
        setup.addWindow(QString(), QString());

    const List problems = zoHPCProblems::windowsWithoutNode(setup.layout());

    QCOMPARE(problems.size(), size_t(3));
    QCOMPARE(problems[0].fixText, QStringLiteral("Use a"));
    QCOMPARE(problems[1].fixText, QStringLiteral("Use b"));
    QVERIFY(!problems[2].hasFix());
}

void tst_zoHPCProblems::windowWithoutNodeHasNoFixWhenNoNodeIsFree()
{
    zoHPCSetup setup;
    fillSound(setup);
    setup.addWindow(QString(), QString());

    const List problems = zoHPCProblems::windowsWithoutNode(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QVERIFY(!problems[0].hasFix());
}

void tst_zoHPCProblems::windowOnUnknownNodeIsFound()
{
    zoHPCSetup setup;
    fillSound(setup);
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("gone"), QString());
    setup.addWindow(QString(), QString());

    const List problems = zoHPCProblems::windowsWithUnknownNode(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QCOMPARE(problems[0].item, window);
    QVERIFY(!problems[0].hasFix());
}

void tst_zoHPCProblems::nodeSpeltOtherwiseIsOffered()
{
    zoHPCSetup setup;
    setup.addNode(QStringLiteral("Render1"));
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("render1"), QString());

    const List problems = zoHPCProblems::windowsWithUnknownNode(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QCOMPARE(problems[0].fixText, QStringLiteral("Use Render1"));
    problems[0].fix();
    QCOMPARE(window->renderNode(), QStringLiteral("Render1"));
}

void tst_zoHPCProblems::nameThatBecameNumberedIsOffered()
{
    zoHPCSetup setup;
    setup.addNode(QStringLiteral("a"));
    setup.addNode(QStringLiteral("a"));
    setup.addWindow(QStringLiteral("a"), QString());
    setup.addWindow(QStringLiteral("a 2"), QString());

    const List problems = zoHPCProblems::windowsWithUnknownNode(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QCOMPARE(problems[0].fixText, QStringLiteral("Use a 1"));
}

void tst_zoHPCProblems::windowOnDisabledNodeIsFound_data()
{
    QTest::addColumn<bool>("node");
    QTest::addColumn<bool>("network");
    QTest::addColumn<bool>("gateway");

    QTest::newRow("its-own-option") << false << true << true;
    QTest::newRow("its-network") << true << false << true;
    QTest::newRow("the-gateway-before-it") << true << true << false;
    QTest::newRow("all") << false << false << false;
}

void tst_zoHPCProblems::windowOnDisabledNodeIsFound()
{
    QFETCH(bool, node);
    QFETCH(bool, network);
    QFETCH(bool, gateway);
    zoHPCSetup setup;
    zoHPCTreeItem* const gatewayItem = setup.addNode(QStringLiteral("gateway"));
    zoHPCTreeItem* const networkItem = setup.hosts.createNetwork(gatewayItem, -1);
    zoHPCTreeItem* const nodeItem = setup.addNode(QStringLiteral("n"), networkItem);
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QString());
    QVERIFY(zoHPCProblems::windowsWithDisabledNode(setup.layout()).empty());
    gatewayItem->setIsEnabled(gateway);
    networkItem->setIsEnabled(network);
    nodeItem->setIsEnabled(node);

    const List problems = zoHPCProblems::windowsWithDisabledNode(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QCOMPARE(problems[0].item, window);
    QCOMPARE(problems[0].other, nodeItem);
    problems[0].fix();
    QVERIFY(zoHPCProblems::windowsWithDisabledNode(setup.layout()).empty());
}

void tst_zoHPCProblems::windowsOverlap_data()
{
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("screen");
    QTest::addColumn<QRectF>("place");
    QTest::addColumn<bool>("overlap");

    const QRectF same(0, 0, 100, 100);
    QTest::newRow("same-place") << "n"
                                << "0" << same << true;
    QTest::newRow("one-pixel") << "n"
                               << "0" << QRectF(99, 99, 100, 100) << true;
    QTest::newRow("inside") << "n"
                            << "0" << QRectF(40, 40, 10, 10) << true;
    QTest::newRow("around") << "n"
                            << "0" << QRectF(-10, -10, 500, 500) << true;
    QTest::newRow("side-by-side") << "n"
                                  << "0" << QRectF(100, 0, 100, 100) << false;
    QTest::newRow("one-above-the-other") << "n"
                                         << "0" << QRectF(0, 100, 100, 100) << false;
    QTest::newRow("left-of-it") << "n"
                                << "0" << QRectF(-100, 0, 100, 100) << false;
    QTest::newRow("without-size") << "n"
                                  << "0" << QRectF(50, 50, 0, 0) << false;
    QTest::newRow("other-screen") << "n"
                                  << "1" << same << false;
    QTest::newRow("other-node") << "m"
                                << "0" << same << false;
    QTest::newRow("primary-screen") << "n"
                                    << "-1" << same << false;
    QTest::newRow("extended-desktop") << "n"
                                      << "-2" << same << false;
    QTest::newRow("at-the-end-of-the-numbers") << "n"
                                               << "0" << QRectF(2147483647, 0, 2147483647, 1) << false;
}

void tst_zoHPCProblems::windowsOverlap()
{
    QFETCH(QString, node);
    QFETCH(QString, screen);
    QFETCH(QRectF, place);
    QFETCH(bool, overlap);
    zoHPCSetup setup;
    zoHPCWindowItem* const first =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 100, 100);
    zoHPCWindowItem* const second = setup.addWindowAt(node, screen, int(place.x()), int(place.y()),
                                                      int(place.width()), int(place.height()));

    const List problems = zoHPCProblems::overlappingWindows(setup.layout());

    QCOMPARE(!problems.empty(), overlap);
    if (overlap) {
        QCOMPARE(problems.size(), size_t(1));
        QCOMPARE(problems[0].item, second);
        QCOMPARE(problems[0].other, first);
    }
}

void tst_zoHPCProblems::eachOverlappedWindowIsReportedOnce()
{
    zoHPCSetup setup;
    for (int i = 0; i < 5; ++i)
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("-2"), 10 * (i / 2), 0, 100, 100);

    const List problems = zoHPCProblems::overlappingWindows(setup.layout());

    QCOMPARE(problems.size(), size_t(4));
    for (int i = 0; i < 4; ++i)
        QCOMPARE(problems[size_t(i)].item, setup.display()->child(i + 1));
}

void tst_zoHPCProblems::laterWindowIsReportedWhateverItsPlace()
{
    zoHPCSetup setup;
    // The first one lies to the right of both others, which do not touch each other.
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 90, 0, 100, 300);
    zoHPCWindowItem* const upper =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 100, 100);
    zoHPCWindowItem* const lower =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 150, 100, 100);

    const List problems = zoHPCProblems::overlappingWindows(setup.layout());

    QCOMPARE(problems.size(), size_t(2));
    QCOMPARE(problems[0].item, upper);
    QCOMPARE(problems[1].item, lower);
}

void tst_zoHPCProblems::windowInFullScreenCoversItsScreen_data()
{
    QTest::addColumn<QString>("screen");
    QTest::addColumn<QString>("otherScreen");
    QTest::addColumn<bool>("overlap");

    QTest::newRow("same-screen") << "0"
                                 << "0" << true;
    QTest::newRow("other-screen") << "0"
                                  << "1" << false;
    QTest::newRow("whole-desktop-over-a-screen") << "-2"
                                                 << "3" << true;
    QTest::newRow("screen-and-somewhere-on-the-desktop") << "0"
                                                         << "-2" << false;
}

void tst_zoHPCProblems::windowInFullScreenCoversItsScreen()
{
    QFETCH(QString, screen);
    QFETCH(QString, otherScreen);
    QFETCH(bool, overlap);
    zoHPCSetup setup;
    zoHPCWindowItem* const whole = setup.addWindow(QStringLiteral("n"), QString());
    whole->setString(zoHPCWindowItem::Screen, screen);
    setup.addWindowAt(QStringLiteral("n"), otherScreen, 5000, 5000, 10, 10);

    const List problems = zoHPCProblems::overlappingWindows(setup.layout());

    QCOMPARE(problems.size(), size_t(overlap ? 1 : 0));
}

void tst_zoHPCProblems::geometryOfAWindowInFullScreenDoesNotCount()
{
    zoHPCSetup setup;
    for (const char* screen : {"0", "1", "2"}) {
        zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QString());
        window->setString(zoHPCWindowItem::Screen, QString::fromLatin1(screen));
    }

    QVERIFY(zoHPCProblems::overlappingWindows(setup.layout()).empty());
}

void tst_zoHPCProblems::windowsWithoutNodeDoNotOverlap()
{
    zoHPCSetup setup;
    setup.addWindow(QString(), QString());
    setup.addWindow(QString(), QString());

    QVERIFY(zoHPCProblems::overlappingWindows(setup.layout()).empty());
}

void tst_zoHPCProblems::tileShownNowhereIsFound()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 2, 2);
    setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:1 col:1"));
    setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:2 col:2"));

    const List problems = zoHPCProblems::tilesShownNowhere(setup.layout());

    QCOMPARE(names(problems),
             QStringList({QStringLiteral("wall row:1 col:2"), QStringLiteral("wall row:2 col:1")}));
}

void tst_zoHPCProblems::projectionShownNowhereIsReportedOnce()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 10, 10);
    setup.addProjection(QStringLiteral("plane"), QStringLiteral("plane"));

    const List problems = zoHPCProblems::tilesShownNowhere(setup.layout());

    QCOMPARE(names(problems), QStringList({QStringLiteral("wall"), QStringLiteral("plane")}));
}

void tst_zoHPCProblems::viewportOfTheProjectionShowsAllItsTiles()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 3, 3);
    setup.addWindow(QStringLiteral("n"), QStringLiteral("wall"));

    QVERIFY(zoHPCProblems::tilesShownNowhere(setup.layout()).empty());
    QVERIFY(zoHPCProblems::tilesShownTwice(setup.layout()).empty());
    QVERIFY(zoHPCProblems::tilesForOneEye(setup.layout()).empty());
}

void tst_zoHPCProblems::tileShownTwiceIsFound_data()
{
    QTest::addColumn<QString>("eye");
    QTest::addColumn<QString>("otherEye");
    QTest::addColumn<bool>("twice");

    QTest::newRow("left-and-right") << "left"
                                    << "right" << false;
    QTest::newRow("left-and-left") << "left"
                                   << "left" << true;
    QTest::newRow("right-and-right") << "right"
                                     << "right" << true;
    QTest::newRow("without-stereo") << "mono"
                                    << "mono" << true;
    QTest::newRow("without-stereo-and-left") << "mono"
                                             << "left" << true;
    QTest::newRow("double-buffered-and-right") << "stereo"
                                               << "right" << true;
    QTest::newRow("copy-without-stereo") << "splitleftright"
                                         << "mono" << false;
    QTest::newRow("split-and-anaglyph") << "splitleftright"
                                        << "redcyan" << true;
}

void tst_zoHPCProblems::tileShownTwiceIsFound()
{
    QFETCH(QString, eye);
    QFETCH(QString, otherEye);
    QFETCH(bool, twice);
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 2);
    setup.addWindow(QStringLiteral("a"), QStringLiteral("wall row:1 col:1"), eye);
    setup.addWindow(QStringLiteral("b"), QStringLiteral("wall row:1 col:1"), otherEye);

    const List problems = zoHPCProblems::tilesShownTwice(setup.layout());

    QCOMPARE(names(problems), twice ? QStringList(QStringLiteral("wall row:1 col:1")) : QStringList());
}

void tst_zoHPCProblems::tileShownWithItsProjectionIsShownTwice()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 2);
    setup.addWindow(QStringLiteral("a"), QStringLiteral("wall"));
    setup.addWindow(QStringLiteral("b"), QStringLiteral("wall row:1 col:2"));

    const List problems = zoHPCProblems::tilesShownTwice(setup.layout());

    QCOMPARE(names(problems), {QStringLiteral("wall row:1 col:2")});
}

void tst_zoHPCProblems::wholeBesideItsTilesIsACopy_data()
{
    QTest::addColumn<int>("tiles"); // of four, with viewports of their own
    QTest::addColumn<QStringList>("twice");
    QTest::addColumn<QStringList>("dark");

    const QString first = QStringLiteral("wall row:1 col:1");
    const QString second = QStringLiteral("wall row:1 col:2");
    QTest::newRow("none") << 0 << QStringList{} << QStringList{};
    QTest::newRow("one") << 1 << QStringList{first} << QStringList{};
    QTest::newRow("half") << 2 << QStringList{first, second} << QStringList{};
    QTest::newRow("most") << 3 << QStringList{} << QStringList{QStringLiteral("wall row:1 col:4")};
    QTest::newRow("all") << 4 << QStringList{} << QStringList{};
}

void tst_zoHPCProblems::wholeBesideItsTilesIsACopy()
{
    QFETCH(int, tiles);
    QFETCH(QStringList, twice);
    QFETCH(QStringList, dark);
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 4);
    setup.addWindow(QStringLiteral("desk"), QStringLiteral("wall"));
    for (int i = 1; i <= tiles; ++i)
        setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:1 col:%1").arg(i));

    QCOMPARE(names(zoHPCProblems::tilesShownTwice(setup.layout())), twice);
    QCOMPARE(names(zoHPCProblems::tilesShownNowhere(setup.layout())), dark);
}

void tst_zoHPCProblems::usersMaySeeTheSameTile()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 1);
    zoHPCDisplayItem* const second = setup.addDisplay(QStringLiteral("2"));
    setup.addWindow(QStringLiteral("a"), QStringLiteral("wall"));
    setup.addWindow(QStringLiteral("b"), QStringLiteral("wall"), QStringLiteral("mono"), second);

    QVERIFY(zoHPCProblems::tilesShownTwice(setup.layout()).empty());
    second->setString(zoHPCDisplayItem::User, QStringLiteral("1"));
    QCOMPARE(names(zoHPCProblems::tilesShownTwice(setup.layout())), {QStringLiteral("wall")});
}

void tst_zoHPCProblems::tileForOneEyeIsFound_data()
{
    QTest::addColumn<QStringList>("eyes");
    QTest::addColumn<bool>("oneEye");

    QTest::newRow("left") << QStringList{QStringLiteral("left")} << true;
    QTest::newRow("right") << QStringList{QStringLiteral("right")} << true;
    QTest::newRow("left-and-right") << QStringList{QStringLiteral("left"), QStringLiteral("right")} << false;
    QTest::newRow("without-stereo") << QStringList{QStringLiteral("mono")} << false;
    QTest::newRow("double-buffered") << QStringList{QStringLiteral("stereo")} << false;
    QTest::newRow("top-bottom-split") << QStringList{QStringLiteral("splitbottomtop")} << false;
    QTest::newRow("nobody") << QStringList() << false;
}

void tst_zoHPCProblems::tileForOneEyeIsFound()
{
    QFETCH(QStringList, eyes);
    QFETCH(bool, oneEye);
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 2);
    for (const QString& eye : qAsConst(eyes))
        setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:1 col:2"), eye);

    const List problems = zoHPCProblems::tilesForOneEye(setup.layout());

    QCOMPARE(names(problems), oneEye ? QStringList(QStringLiteral("wall row:1 col:2")) : QStringList());
    if (oneEye) {
        const QString missing =
            eyes.front() == QLatin1String("left") ? QStringLiteral("right") : QStringLiteral("left");
        QVERIFY(problems[0].message.contains(QStringLiteral("but not to the ") + missing +
                                             QStringLiteral(" eye.")));
    }
}

void tst_zoHPCProblems::eyesMayComeFromTwoDisplays()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 1);
    zoHPCDisplayItem* const second = setup.addDisplay(QStringLiteral("1"));
    setup.addWindow(QStringLiteral("a"), QStringLiteral("wall"), QStringLiteral("left"));
    setup.addWindow(QStringLiteral("b"), QStringLiteral("wall"), QStringLiteral("right"), second);

    QVERIFY(zoHPCProblems::tilesForOneEye(setup.layout()).empty());
}

void tst_zoHPCProblems::eyesOfDifferentUsersDoNotMakeAPair()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 1);
    zoHPCDisplayItem* const second = setup.addDisplay(QStringLiteral("2"));
    setup.addWindow(QStringLiteral("a"), QStringLiteral("wall"), QStringLiteral("left"));
    setup.addWindow(QStringLiteral("b"), QStringLiteral("wall"), QStringLiteral("right"), second);

    QCOMPARE(zoHPCProblems::tilesForOneEye(setup.layout()).size(), size_t(2));
}

void tst_zoHPCProblems::allTilesForOneEyeAreReportedOnce()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 4, 4);
    setup.addWindow(QStringLiteral("n"), QStringLiteral("wall"), QStringLiteral("left"));

    QCOMPARE(names(zoHPCProblems::tilesForOneEye(setup.layout())), {QStringLiteral("wall")});
}

void tst_zoHPCProblems::degeneratePlaneIsFound()
{
    zoHPCSetup setup;
    addPlane(setup, QStringLiteral("good"), frontPlane(-500, 500));
    addPlane(setup, QStringLiteral("no-width"), frontPlane(500, 500));
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 2, 2);
    wall->setDouble(zoHPCProjectionItem::Height, 0.0);
    wall->update();

    const List problems = zoHPCProblems::degeneratePlanes(setup.layout());

    QCOMPARE(names(problems), QStringList({QStringLiteral("no-width"), QStringLiteral("wall")}));
}

void tst_zoHPCProblems::caveWithoutDepthHasDegenerateWalls()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const cave = setup.addProjection(QStringLiteral("cave"), QStringLiteral("cave"));
    cave->setBool(zoHPCProjectionItem::LeftWall, true);
    cave->setBool(zoHPCProjectionItem::FrontWall, true);
    cave->setDouble(zoHPCProjectionItem::CaveDepth, 0.0);
    cave->update();

    QCOMPARE(names(zoHPCProblems::degeneratePlanes(setup.layout())), {QStringLiteral("cave Left")});
}

void tst_zoHPCProblems::skewedPlaneIsFound_data()
{
    QTest::addColumn<double>("shift");
    QTest::addColumn<bool>("skewed");

    QTest::newRow("square") << 0.0 << false;
    QTest::newRow("as-measured-by-tape") << 5.0 << false;
    QTest::newRow("a-hand-off") << 100.0 << true;
    QTest::newRow("a-hand-off-to-the-left") << -100.0 << true;
}

void tst_zoHPCProblems::skewedPlaneIsFound()
{
    QFETCH(double, shift);
    QFETCH(bool, skewed);
    zoHPCSetup setup;
    zoHPCPlane plane = frontPlane(-1500, 1500);
    plane.upperRight.x += shift;
    addPlane(setup, QStringLiteral("p"), plane);

    QCOMPARE(zoHPCProblems::skewedPlanes(setup.layout()).size(), size_t(skewed ? 1 : 0));
}

void tst_zoHPCProblems::skewedPlaneIsMadeSquare()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item =
        addPlane(setup, QStringLiteral("p"), {{0, 0, -900}, {1000, 0, -900}, {1600, 800, -900}});

    zoHPCProblems::skewedPlanes(setup.layout()).at(0).fix();

    const zoHPCPlane plane = zoHPCPlane::fromItem(*item);
    QVERIFY(plane.skew() < 1e-9);
    QCOMPARE(plane.width(), 1000.0);
    QCOMPARE(plane.height(), 1000.0);
    QCOMPARE(plane.upperRight.x, 1000.0);
    QCOMPARE(plane.upperRight.y, 1000.0);
}

void tst_zoHPCProblems::mirroredPlaneIsFound_data()
{
    QTest::addColumn<double>("left");
    QTest::addColumn<double>("right");
    QTest::addColumn<double>("z");
    QTest::addColumn<bool>("mirrored");

    QTest::newRow("in-front") << -1500.0 << 1500.0 << -1500.0 << false;
    QTest::newRow("in-front-swapped") << 1500.0 << -1500.0 << -1500.0 << true;
    QTest::newRow("behind") << 1500.0 << -1500.0 << 1500.0 << false;
    QTest::newRow("behind-swapped") << -1500.0 << 1500.0 << 1500.0 << true;
    QTest::newRow("through-the-origin") << -1500.0 << 1500.0 << 0.0 << false;
    QTest::newRow("a-little-behind-the-origin") << -1500.0 << 1500.0 << 100.0 << false;
}

void tst_zoHPCProblems::mirroredPlaneIsFound()
{
    QFETCH(double, left);
    QFETCH(double, right);
    QFETCH(double, z);
    QFETCH(bool, mirrored);
    zoHPCSetup setup;
    addPlane(setup, QStringLiteral("p"), {{left, -1000, z}, {right, -1000, z}, {right, 1000, z}});

    QCOMPARE(zoHPCProblems::mirroredPlanes(setup.layout()).size(), size_t(mirrored ? 1 : 0));
}

void tst_zoHPCProblems::mirroredPlaneIsTurnedRound()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = addPlane(setup, QStringLiteral("p"), frontPlane(500, -300));

    zoHPCProblems::mirroredPlanes(setup.layout()).at(0).fix();

    const zoHPCPlane plane = zoHPCPlane::fromItem(*item);
    QCOMPARE(plane.lowerLeft.x, -300.0);
    QCOMPARE(plane.lowerRight.x, 500.0);
    QCOMPARE(plane.upperRight.y, 1000.0);
    QVERIFY(zoHPCProblems::mirroredPlanes(setup.layout()).empty());
}

void tst_zoHPCProblems::planeUpsideDownIsTurnedUpright()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item =
        addPlane(setup, QStringLiteral("p"), {{-500, 1000, -1500}, {500, 1000, -1500}, {500, -1000, -1500}});

    zoHPCProblems::mirroredPlanes(setup.layout()).at(0).fix();

    const zoHPCPlane plane = zoHPCPlane::fromItem(*item);
    QCOMPARE(plane.lowerLeft.x, -500.0);
    QCOMPARE(plane.lowerLeft.y, -1000.0);
    QCOMPARE(plane.upperRight.x, 500.0);
    QCOMPARE(plane.upperRight.y, 1000.0);
}

void tst_zoHPCProblems::mirroredWallIsFoundByItsSizes_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("column");
    QTest::addColumn<double>("size");
    QTest::addColumn<bool>("mirrored");

    using P = zoHPCProjectionItem;
    QTest::newRow("power-wall") << "powerwall" << int(P::Width) << 3000.0 << false;
    QTest::newRow("power-wall-of-negative-width") << "powerwall" << int(P::Width) << -3000.0 << true;
    QTest::newRow("power-wall-behind-the-viewer") << "powerwall" << int(P::Distance) << -1500.0 << true;
    QTest::newRow("power-wall-through-the-viewer") << "powerwall" << int(P::Distance) << 0.0 << false;
    QTest::newRow("cave") << "cave" << int(P::CaveDepth) << 2000.0 << false;
    QTest::newRow("cave-of-negative-depth") << "cave" << int(P::CaveDepth) << -2000.0 << true;
    QTest::newRow("cave-beside-the-viewer") << "cave" << int(P::CaveX) << -5000.0 << false;
}

void tst_zoHPCProblems::mirroredWallIsFoundByItsSizes()
{
    QFETCH(QString, type);
    QFETCH(int, column);
    QFETCH(double, size);
    QFETCH(bool, mirrored);
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = setup.addProjection(QStringLiteral("p"), type);
    item->setDouble(column, size);
    item->setBool(zoHPCProjectionItem::FrontWall, true);
    item->update();

    const List problems = zoHPCProblems::mirroredPlanes(setup.layout());

    QCOMPARE(problems.size(), size_t(mirrored ? 1 : 0));
    if (mirrored) {
        problems[0].fix();
        QCOMPARE(item->getDouble(column), -size);
        QVERIFY(zoHPCProblems::mirroredPlanes(setup.layout()).empty());
    }
}

void tst_zoHPCProblems::blendWiderThanTheOverlapIsFound_data()
{
    QTest::addColumn<int>("edge");
    QTest::addColumn<double>("blend");
    QTest::addColumn<bool>("tooWide");

    using P = zoHPCProjectionItem;
    // The neighbour on the right reaches 200 of 1000 mm into the plane.
    QTest::newRow("none") << int(P::RightEdge) << 0.0 << false;
    QTest::newRow("narrower") << int(P::RightEdge) << 0.1 << false;
    QTest::newRow("equal") << int(P::RightEdge) << 0.2 << false;
    QTest::newRow("wider") << int(P::RightEdge) << 0.25 << true;
    QTest::newRow("on-the-other-side") << int(P::LeftEdge) << 0.2 << true;
    QTest::newRow("above") << int(P::BottomEdge) << 0.1 << true;
    QTest::newRow("below") << int(P::TopEdge) << 0.1 << true;
}

void tst_zoHPCProblems::blendWiderThanTheOverlapIsFound()
{
    QFETCH(int, edge);
    QFETCH(double, blend);
    QFETCH(bool, tooWide);
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = addPlane(setup, QStringLiteral("p"), frontPlane(0, 1000));
    addPlane(setup, QStringLiteral("right"), frontPlane(800, 1800));
    item->setBool(zoHPCProjectionItem::EdgeBlending, true);
    item->setDouble(edge, blend);

    QCOMPARE(names(zoHPCProblems::blendsWiderThanOverlap(setup.layout())),
             tooWide ? QStringList(QStringLiteral("p")) : QStringList());
}

void tst_zoHPCProblems::blendIsCutToTheOverlap()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = addPlane(setup, QStringLiteral("p"), frontPlane(0, 1000));
    addPlane(setup, QStringLiteral("right"), frontPlane(800, 1800));
    item->setBool(zoHPCProjectionItem::EdgeBlending, true);
    item->setDouble(zoHPCProjectionItem::RightEdge, 0.5);
    item->setDouble(zoHPCProjectionItem::LeftEdge, 0.5);

    zoHPCProblems::blendsWiderThanOverlap(setup.layout()).at(0).fix();

    QVERIFY(qAbs(item->getDouble(zoHPCProjectionItem::RightEdge) - 0.2) < 1e-9);
    QCOMPARE(item->getDouble(zoHPCProjectionItem::LeftEdge), 0.0);
    QVERIFY(zoHPCProblems::blendsWiderThanOverlap(setup.layout()).empty());
}

void tst_zoHPCProblems::blendWithoutNeighbourIsFound()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = addPlane(setup, QStringLiteral("p"), frontPlane(0, 1000));
    // A wall of a cave in the corner is no neighbour.
    addPlane(setup, QStringLiteral("side"), {{1000, -1000, -1500}, {1000, -1000, 500}, {1000, 1000, 500}});
    item->setBool(zoHPCProjectionItem::EdgeBlending, true);
    item->setDouble(zoHPCProjectionItem::RightEdge, 0.1);

    QCOMPARE(names(zoHPCProblems::blendsWiderThanOverlap(setup.layout())), {QStringLiteral("p")});
}

void tst_zoHPCProblems::blendThatIsOffDoesNotCount()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = addPlane(setup, QStringLiteral("p"), frontPlane(0, 1000));
    item->setBool(zoHPCProjectionItem::EdgeBlending, false);
    item->setDouble(zoHPCProjectionItem::RightEdge, 0.1);

    QVERIFY(zoHPCProblems::blendsWiderThanOverlap(setup.layout()).empty());
}

void tst_zoHPCProblems::convertedTilesBlendAsTheyOverlap()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 3, 3, 150.5);
    const QList<QTreeWidgetItem*> tiles = wall->takeChildren();
    delete setup.projections.takeTopLevelItem(0);
    setup.projections.addTopLevelItems(tiles);

    QCOMPARE(setup.layout().projections().size(), size_t(9));
    QCOMPARE(names(zoHPCProblems::blendsWiderThanOverlap(setup.layout())), QStringList());
}

void tst_zoHPCProblems::planesForBothEyesAreNoNeighbours()
{
    zoHPCSetup setup;
    for (const char* name : {"left", "right"}) {
        zoHPCProjectionItem* const item = addPlane(setup, QString::fromLatin1(name), frontPlane(0, 1000));
        item->setBool(zoHPCProjectionItem::EdgeBlending, true);
        item->setDouble(zoHPCProjectionItem::RightEdge, 0.1);
    }

    QCOMPARE(zoHPCProblems::blendsWiderThanOverlap(setup.layout()).size(), size_t(2));
}

void tst_zoHPCProblems::wallInMetresIsFound_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QVector<double>>("sizes");
    QTest::addColumn<bool>("metres");

    QTest::newRow("power-wall-in-millimetres") << "powerwall" << QVector<double>{3000, 2000, 1500} << false;
    QTest::newRow("power-wall-in-metres") << "powerwall" << QVector<double>{3, 2, 1.5} << true;
    QTest::newRow("power-wall-below-10") << "powerwall" << QVector<double>{9.9, 9.9, 9.9} << true;
    QTest::newRow("power-wall-of-10") << "powerwall" << QVector<double>{10, 9.9, 9.9} << false;
    QTest::newRow("long-power-wall-of-12") << "powerwall" << QVector<double>{12, 2.5, 4} << true;
    QTest::newRow("high-power-wall-of-12") << "powerwall" << QVector<double>{2.5, 12, 4} << true;
    QTest::newRow("long-power-wall-below-20") << "powerwall" << QVector<double>{19.9, 4, 4} << true;
    QTest::newRow("as-long-as-a-microdisplay") << "powerwall" << QVector<double>{12.5, 5, 4} << false;
    QTest::newRow("longer-than-a-microdisplay") << "powerwall" << QVector<double>{12.6, 5, 4} << true;
    QTest::newRow("long-and-without-height") << "powerwall" << QVector<double>{12, 0, 4} << false;
    QTest::newRow("power-wall-with-the-default-distance")
        << "powerwall" << QVector<double>{3, 2, 1500} << true;
    QTest::newRow("power-wall-at-metres") << "powerwall" << QVector<double>{3000, 2000, 1.5} << true;
    QTest::newRow("microdisplay") << "powerwall" << QVector<double>{19, 11, 16} << false;
    QTest::newRow("cave-below-20") << "cave" << QVector<double>{19.9, 3, 3} << true;
    QTest::newRow("cave-of-20") << "cave" << QVector<double>{20, 3, 3} << false;
    QTest::newRow("power-wall-of-20") << "powerwall" << QVector<double>{20, 2, 1.5} << false;
    QTest::newRow("small-power-wall-far-away") << "powerwall" << QVector<double>{10, 10, 500} << false;
    QTest::newRow("cave-in-metres") << "cave" << QVector<double>{3, 3, 3} << true;
    QTest::newRow("cave-in-millimetres") << "cave" << QVector<double>{3000, 3000, 3000} << false;
    QTest::newRow("tiled-wall-in-metres") << "wall" << QVector<double>{2.5} << true;
    QTest::newRow("tiled-wall-in-millimetres") << "wall" << QVector<double>{2500} << false;
    QTest::newRow("tiled-wall-at-no-distance") << "wall" << QVector<double>{0} << false;
    // Neither would be a wall if it was in metres.
    QTest::newRow("power-wall-below-20-micrometres")
        << "powerwall" << QVector<double>{0.019, 0.01, 0} << false;
    QTest::newRow("power-wall-of-20-micrometres") << "powerwall" << QVector<double>{0.02, 0.01, 0} << true;
}

void tst_zoHPCProblems::wallInMetresIsFound()
{
    QFETCH(QString, type);
    QFETCH(QVector<double>, sizes);
    QFETCH(bool, metres);
    using P = zoHPCProjectionItem;
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = setup.addProjection(QStringLiteral("p"), type);
    const QVector<int> columns =
        type == QLatin1String("powerwall") ? QVector<int>{P::Width, P::Height, P::Distance}
        : type == QLatin1String("cave")    ? QVector<int>{P::CaveWidth, P::CaveHeight, P::CaveDepth}
                                           : QVector<int>{P::Distance};
    for (int i = 0; i < columns.size(); ++i)
        item->setDouble(columns[i], sizes[i]);
    item->update();

    QCOMPARE(zoHPCProblems::wallsInMetres(setup.layout()).size(), size_t(metres ? 1 : 0));
}

void tst_zoHPCProblems::wallInMetresIsMultiplied()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = setup.addPowerWall(QStringLiteral("wall"), 1, 2, 0.1);
    item->setDouble(zoHPCProjectionItem::Width, 3.0);
    item->setDouble(zoHPCProjectionItem::Height, 2.0);
    item->setDouble(zoHPCProjectionItem::Distance, 1.5);
    item->update();

    zoHPCProblems::wallsInMetres(setup.layout()).at(0).fix();

    QCOMPARE(item->getDouble(zoHPCProjectionItem::Width), 3000.0);
    QCOMPARE(item->getDouble(zoHPCProjectionItem::Distance), 1500.0);
    QCOMPARE(item->getDouble(zoHPCProjectionItem::OverlapX), 100.0);
    QCOMPARE(item->childCount(), 2);
    QCOMPARE(zoHPCPlane::fromItem(*dynamic_cast<zoHPCProjectionItem*>(item->child(0))).width(), 1550.0);
}

void tst_zoHPCProblems::lengthsInMillimetresAreLeft()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = setup.addPowerWall(QStringLiteral("wall"), 1, 2, 100.0);
    item->setDouble(zoHPCProjectionItem::Width, 3.0);
    item->setDouble(zoHPCProjectionItem::Height, 2.0);
    item->update();

    zoHPCProblems::wallsInMetres(setup.layout()).at(0).fix();

    QCOMPARE(item->getDouble(zoHPCProjectionItem::Width), 3000.0);
    QCOMPARE(item->getDouble(zoHPCProjectionItem::Height), 2000.0);
    QCOMPARE(item->getDouble(zoHPCProjectionItem::Distance), 1500.0);
    QCOMPARE(item->getDouble(zoHPCProjectionItem::OverlapX), 100.0);
    QVERIFY(zoHPCProblems::wallsInMetres(setup.layout()).empty());
}

void tst_zoHPCProblems::planeInMetresIsFound_data()
{
    QTest::addColumn<double>("width"); // of a plane around the axis
    QTest::addColumn<double>("z");
    QTest::addColumn<bool>("metres");

    QTest::newRow("metres") << 3.0 << -1.5 << true;
    QTest::newRow("below-10") << 9.9 << -4.0 << true;
    QTest::newRow("10") << 10.0 << -4.0 << false;
    QTest::newRow("microdisplay") << 19.0 << -16.0 << false;
    QTest::newRow("small-and-far-away") << 9.0 << -35.0 << false;
    QTest::newRow("millimetres") << 3000.0 << -1500.0 << false;
}

void tst_zoHPCProblems::planeInMetresIsFound()
{
    QFETCH(double, width);
    QFETCH(double, z);
    QFETCH(bool, metres);
    zoHPCSetup setup;
    addPlane(setup, QStringLiteral("p"), zoHPCPlane::facing(width, width / 2, -z));

    QCOMPARE(zoHPCProblems::wallsInMetres(setup.layout()).size(), size_t(metres ? 1 : 0));
}

void tst_zoHPCProblems::largeConfigurationIsCheckedInProportion()
{
    // Checks counts, not times, so that a busy machine cannot fail it; what grows out of proportion runs into
    // the time limit of the test.
    const int count = 10000;
    zoHPCSetup setup;
    setup.hosts.setHostString(QStringLiteral("n1 - n%1").arg(count));
    setup.addPowerWall(QStringLiteral("wall"), 100, 100);
    for (int i = 0; i < 1000; ++i) {
        zoHPCWindowItem* const window =
            setup.addWindowAt(QStringLiteral("n1"), QStringLiteral("0"), i, 0, 2000, 1);
        setup.addViewport(window, QStringLiteral("wall"), QStringLiteral("left"));
    }

    const List problems = zoHPCProblems::find(setup.layout());

    const QStringList found = kinds(problems);
    QCOMPARE(found.count(QStringLiteral("overlapping-windows")), 999);
    QCOMPARE(found.count(QStringLiteral("tile-shown-twice")), 1);
    QCOMPARE(found.count(QStringLiteral("tile-for-one-eye")), 1);
    QCOMPARE(problems.size(), size_t(1001));
}

ZO_TEST_MAIN(tst_zoHPCProblems)

#include "tst_zoHPCProblems.moc"
