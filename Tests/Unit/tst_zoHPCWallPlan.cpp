#include "zoTestCase.h"

#include <zoHPCWallPlan.h>
#include <zoShownTexts.h>

#include <QApplication>
#include <QTest>

#include <cmath>
#include <functional>

namespace
{
using Plan = zoHPCWallPlan;
using Change = std::function<void(Plan&)>;
} // namespace

Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(zoHPCWallPlan)

// What follows from what a person says of a wall.
class tst_zoHPCWallPlan final : public zoTestCase
{
    Q_OBJECT

private slots:
    void eachValueMakesAnotherPlan_data();
    void eachValueMakesAnotherPlan();
    void overlapIsShownInBothUnits_data();
    void overlapIsShownInBothUnits();
    void sizeOfTheWallAndOfATileAreOne_data();
    void sizeOfTheWallAndOfATileAreOne();
    void windowsAndNodesAreCounted_data();
    void windowsAndNodesAreCounted();
    void namesOfModesAreThoseOfTheDisplaySetup();
    void tooLargeNumbersStayNumbers();
    void titleIsTheSameInEveryLanguage();
};

void tst_zoHPCWallPlan::eachValueMakesAnotherPlan_data()
{
    QTest::addColumn<Change>("change");

    QTest::newRow("kind") << Change([](Plan& p) { p.kind = Plan::Kind::Power; });
    QTest::newRow("name") << Change([](Plan& p) { p.name = "n"; });
    QTest::newRow("columns") << Change([](Plan& p) { ++p.columns; });
    QTest::newRow("rows") << Change([](Plan& p) { ++p.rows; });
    QTest::newRow("pixels") << Change([](Plan& p) { p.tilePixels.rheight() += 1; });
    QTest::newRow("size") << Change([](Plan& p) { p.size.rwidth() += 1; });
    QTest::newRow("size-of") << Change([](Plan& p) { p.sizeOf = Plan::SizeOf::Tile; });
    QTest::newRow("pitch") << Change([](Plan& p) { p.pixelPitch = 1.0; });
    QTest::newRow("across") << Change([](Plan& p) { p.overlap.across = 1.0; });
    QTest::newRow("down") << Change([](Plan& p) { p.overlap.down = 1.0; });
    QTest::newRow("unit") << Change([](Plan& p) { p.overlapUnit = Plan::Unit::Millimetres; });
    QTest::newRow("viewer-x") << Change([](Plan& p) { p.viewer.x = 1.0; });
    QTest::newRow("viewer-y") << Change([](Plan& p) { p.viewer.y = 1.0; });
    QTest::newRow("viewer-z") << Change([](Plan& p) { p.viewer.z += 1.0; });
    QTest::newRow("curvature") << Change([](Plan& p) { p.curvature = Plan::Curvature::Angle; });
    QTest::newRow("radius") << Change([](Plan& p) { p.radius += 1.0; });
    QTest::newRow("angle") << Change([](Plan& p) { p.columnAngle += 1.0; });
    QTest::newRow("cave-size") << Change([](Plan& p) { p.caveSize.z += 1.0; });
    QTest::newRow("cave-walls") << Change([](Plan& p) { p.caveWalls = Plan::FrontWall; });
    QTest::newRow("planes") << Change([](Plan& p) { p.planes = Plan::planesInARow(1, {1.0, 1.0}, 0.0); });
    QTest::newRow("stereo") << Change([](Plan& p) { p.stereo = Plan::Stereo::QuadBuffer; });
    QTest::newRow("eye-order") << Change([](Plan& p) { p.eyeOrder = Plan::EyeOrder::OwnNodes; });
    QTest::newRow("eye-separation") << Change([](Plan& p) { p.eyeSeparation += 1.0; });
    QTest::newRow("hosts") << Change([](Plan& p) { p.hosts = "n1"; });
    QTest::newRow("windows-per-node") << Change([](Plan& p) { p.windowsPerNode = 2; });
}

void tst_zoHPCWallPlan::eachValueMakesAnotherPlan()
{
    QFETCH(Change, change);
    Plan plan;
    const Plan same;

    change(plan);

    QVERIFY(same == Plan());
    QVERIFY(plan != same);
    Plan planes = Plan::of(Plan::Kind::Planes);
    Plan turned = planes;
    turned.planes[1].tilt = 1.0;
    QVERIFY(planes != turned);
}

void tst_zoHPCWallPlan::overlapIsShownInBothUnits_data()
{
    QTest::addColumn<Plan>("plan");
    QTest::addColumn<double>("pixels");
    QTest::addColumn<double>("millimetres");
    QTest::addColumn<double>("pixelSize");

    const auto row = [](const char* name, Plan::Kind kind, double pixels, double millimetres,
                        double pixelSize, const Change& change) {
        Plan plan = Plan::of(kind);
        plan.columns = 2;
        plan.rows = 1;
        plan.tilePixels = {1000, 500};
        change(plan);
        QTest::newRow(name) << plan << pixels << millimetres << pixelSize;
    };
    using Kind = Plan::Kind;
    // 2 x 1000 - 100 pixels on 3800 mm are two millimetres each.
    row("power-wall-in-pixels", Kind::Power, 100.0, 200.0, 2.0, [](Plan& p) {
        p.size = {3800.0, 1000.0};
        p.overlap.across = 100.0;
    });
    row("power-wall-in-millimetres", Kind::Power, 100.0, 200.0, 2.0, [](Plan& p) {
        p.size = {3800.0, 1000.0};
        p.overlap.across = 200.0;
        p.overlapUnit = Plan::Unit::Millimetres;
    });
    // 2 x 1000 pixels on 4024 mm, of which 24 are bezel.
    row("bezel-in-millimetres", Kind::Power, -12.0, -24.0, 2.0, [](Plan& p) {
        p.size = {4024.0, 1000.0};
        p.overlap.across = -24.0;
        p.overlapUnit = Plan::Unit::Millimetres;
    });
    row("bezel-in-pixels-of-a-tile", Kind::Curved, -12.0, -24.0, 2.0, [](Plan& p) {
        p.size = {2000.0, 1000.0};
        p.overlap.across = -12.0;
    });
    row("pitch-of-a-tiled-wall", Kind::Tiled, -12.0, -6.0, 0.5, [](Plan& p) {
        p.pixelPitch = 0.5;
        p.overlap.across = -6.0;
        p.overlapUnit = Plan::Unit::Millimetres;
    });
    row("tiled-wall-of-unknown-pixels", Kind::Tiled, 100.0, 0.0, 0.0,
        [](Plan& p) { p.overlap.across = 100.0; });
    row("millimetres-of-unknown-pixels", Kind::Tiled, 0.0, 6.0, 0.0, [](Plan& p) {
        p.overlap.across = 6.0;
        p.overlapUnit = Plan::Unit::Millimetres;
    });
    row("one-column-shares-nothing", Kind::Power, 0.0, 0.0, 2.0, [](Plan& p) {
        p.columns = 1;
        p.size = {2000.0, 1000.0};
        p.overlap.across = 100.0;
    });
    row("front-wall-of-a-cave", Kind::Cave, 100.0, 200.0, 2.0, [](Plan& p) {
        p.caveSize = {3800.0, 1000.0, 3800.0};
        p.overlap.across = 100.0;
    });
}

void tst_zoHPCWallPlan::overlapIsShownInBothUnits()
{
    QFETCH(Plan, plan);
    QFETCH(double, pixels);
    QFETCH(double, millimetres);
    QFETCH(double, pixelSize);

    QCOMPARE(plan.overlapPixels().across, pixels);
    QCOMPARE(plan.overlapMillimetres().across, millimetres);
    QCOMPARE(plan.pixelSize().width(), pixelSize);
    QCOMPARE(plan.totalPixels().width(), plan.columns * 1000.0 - (plan.columns - 1) * pixels);
}

void tst_zoHPCWallPlan::sizeOfTheWallAndOfATileAreOne_data()
{
    QTest::addColumn<double>("overlap");
    QTest::addColumn<bool>("isInPixels");

    QTest::newRow("edge-to-edge") << 0.0 << true;
    QTest::newRow("pixels") << 64.0 << true;
    QTest::newRow("hidden-pixels") << -20.0 << true;
    QTest::newRow("millimetres") << 48.0 << false;
    QTest::newRow("bezel") << -7.5 << false;
}

void tst_zoHPCWallPlan::sizeOfTheWallAndOfATileAreOne()
{
    QFETCH(double, overlap);
    QFETCH(bool, isInPixels);
    Plan byTile = Plan::of(Plan::Kind::Power);
    byTile.sizeOf = Plan::SizeOf::Tile;
    byTile.size = {1440.0, 810.0};
    byTile.overlap = {overlap, overlap};
    byTile.overlapUnit = isInPixels ? Plan::Unit::Pixels : Plan::Unit::Millimetres;

    Plan byWall = byTile;
    byWall.sizeOf = Plan::SizeOf::Wall;
    byWall.size = byTile.wallSize();

    // 0.75 mm each pixel.
    const double shared = isInPixels ? 0.75 * overlap : overlap;
    QCOMPARE(byTile.wallSize().width(), 3 * 1440.0 - 2 * shared);
    QCOMPARE(byTile.wallSize().height(), 2 * 810.0 - shared);
    QVERIFY(std::abs(byWall.tileSize().width() - 1440.0) < 1e-9);
    QVERIFY(std::abs(byWall.tileSize().height() - 810.0) < 1e-9);
    QVERIFY(std::abs(byWall.overlapPixels().down - byTile.overlapPixels().down) < 1e-9);
}

void tst_zoHPCWallPlan::windowsAndNodesAreCounted_data()
{
    QTest::addColumn<Plan>("plan");
    QTest::addColumn<int>("tiles");
    QTest::addColumn<int>("windows");
    QTest::addColumn<int>("nodes");

    const auto row = [](const char* name, Plan::Kind kind, int tiles, int windows, int nodes,
                        const Change& change) {
        Plan plan = Plan::of(kind);
        change(plan);
        QTest::newRow(name) << plan << tiles << windows << nodes;
    };
    using Kind = Plan::Kind;
    row("tiled", Kind::Tiled, 6, 6, 6, [](Plan&) {});
    row("two-each", Kind::Tiled, 6, 6, 3, [](Plan& p) { p.windowsPerNode = 2; });
    row("four-each-last-not-full", Kind::Tiled, 6, 6, 2, [](Plan& p) { p.windowsPerNode = 4; });
    row("cave", Kind::Cave, 4, 4, 4, [](Plan&) {});
    row("cave-of-tiles", Kind::Cave, 12, 12, 12, [](Plan& p) {
        p.columns = 2;
        p.rows = 2;
        p.caveWalls = Plan::LeftWall | Plan::FrontWall | Plan::BackWall;
    });
    row("planes", Kind::Planes, 3, 3, 3, [](Plan&) {});
    const auto stereo = [](Plan::EyeOrder order, int each) {
        return Change([order, each](Plan& p) {
            p.stereo = Plan::Stereo::LeftRight;
            p.eyeOrder = order;
            p.windowsPerNode = each;
        });
    };
    row("eyes-in-turn", Kind::Tiled, 6, 12, 12, stereo(Plan::EyeOrder::Alternating, 0));
    row("eyes-in-turn-five-each", Kind::Tiled, 6, 12, 3, stereo(Plan::EyeOrder::Alternating, 5));
    row("eyes-paired", Kind::Tiled, 6, 12, 6, stereo(Plan::EyeOrder::SameNode, 0));
    row("eyes-apart-four-each", Kind::Tiled, 6, 12, 4, stereo(Plan::EyeOrder::OwnNodes, 4));
    row("left-first-five-each", Kind::Tiled, 6, 12, 4, stereo(Plan::EyeOrder::LeftNodesFirst, 5));
    row("nothing", Kind::Tiled, 0, 0, 0, [](Plan& p) { p.columns = 0; });
}

void tst_zoHPCWallPlan::windowsAndNodesAreCounted()
{
    QFETCH(Plan, plan);
    QFETCH(int, tiles);
    QFETCH(int, windows);
    QFETCH(int, nodes);

    QCOMPARE(plan.tileCount(), tiles);
    QCOMPARE(plan.windowCount(), windows);
    QCOMPARE(plan.nodesNeeded(), nodes);
}

void tst_zoHPCWallPlan::namesOfModesAreThoseOfTheDisplaySetup()
{
    QStringList texts;
    for (const Plan::StereoMode& mode : Plan::stereoModes())
        texts << mode.text();

    QCOMPARE(texts, (QStringList{"Disabled", "Double Buffered", "A window for each eye",
                                 "Horizontal Interlaced", "Vertical Interlaced", "Left/Right Split",
                                 "Top/Bottom Split", "Red/Cyan", "Blue/Yellow", "Green/Magenta"}));
}

// As somebody types them.
void tst_zoHPCWallPlan::tooLargeNumbersStayNumbers()
{
    Plan plan = Plan::of(Plan::Kind::Cave);
    plan.columns = plan.rows = 2000000000;
    plan.stereo = Plan::Stereo::LeftRight;

    QVERIFY(plan.tileCount() > 1000000);
    QVERIFY(plan.windowCount() > plan.tileCount());
    QVERIFY(plan.nodesNeeded() > 1000000);
    plan.columns = -5;
    QCOMPARE(plan.tileCount(), 0);
}

void tst_zoHPCWallPlan::titleIsTheSameInEveryLanguage()
{
    zoMarkingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    Plan plan;

    QCOMPARE(plan.title(), QStringLiteral("Wall"));
    plan.kind = Plan::Kind::Cave;
    QCOMPARE(plan.title(), QStringLiteral("Cave"));
    plan.kind = Plan::Kind::Planes;
    QCOMPARE(plan.title(), QStringLiteral("Plane"));
    QCoreApplication::removeTranslator(&translator);
}

ZO_TEST_MAIN(tst_zoHPCWallPlan)
#include "tst_zoHPCWallPlan.moc"
