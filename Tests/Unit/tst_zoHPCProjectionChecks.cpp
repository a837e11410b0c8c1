#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCDisplaySetup.h>
#include <zoHPCProjectionChecks.h>
#include <zoHPCTileChecks.h>

#include <QApplication>

#include <algorithm>

using List = zoHPCProblem::List;
using P = zoHPCProjectionItem;

// What projections are called, and whether they have tiles.
class tst_zoHPCProjectionChecks final : public zoTestCase
{
    Q_OBJECT

private slots:
    void equalNamesAreTold_data();
    void equalNamesAreTold();
    void viewportsFollowTheNewName();
    void newNameIsFreeWithItsTiles_data();
    void newNameIsFreeWithItsTiles();
    void manyEqualNames();

    void typeIsUnknown_data();
    void typeIsUnknown();
    void typeThatNobodyShowsIsLeft();

    void caveHasNoWalls_data();
    void caveHasNoWalls();
    void faultsBehindOthersAreFound();

    void tilesAreMissing_data();
    void tilesAreMissing();
    void tooManyTilesAreNone();
    void whatHasNoTilesIsNotDarkToo();

    void overlapIsTooWide_data();
    void overlapIsTooWide();
    void overlapOfACave_data();
    void overlapOfACave();
    void overlapInPixels_data();
    void overlapInPixels();
    void overlapOfScreensOfUnknownSize_data();
    void overlapOfScreensOfUnknownSize();

private:
    static QStringList texts(const List& problems);
};

QStringList tst_zoHPCProjectionChecks::texts(const List& problems)
{
    QStringList result;
    for (const zoHPCProblem& problem : problems)
        result << problem.fixText;
    return result;
}

void tst_zoHPCProjectionChecks::equalNamesAreTold_data()
{
    QTest::addColumn<QStringList>("names"); // "NAME:TYPE"
    QTest::addColumn<QVector<int>>("told");

    QTest::newRow("one") << QStringList{"a:plane"} << QVector<int>{};
    QTest::newRow("unlike") << QStringList{"a:plane", "A:plane"} << QVector<int>{};
    QTest::newRow("two") << QStringList{"a:plane", "a:plane"} << QVector<int>{1};
    QTest::newRow("three") << QStringList{"a:plane", "a:wall", "a:plane"} << QVector<int>{1, 2};
    QTest::newRow("two-of-two") << QStringList{"a:plane", "b:plane", "b:plane", "a:plane"}
                                << QVector<int>{2, 3};
    QTest::newRow("walls-with-tiles") << QStringList{"a:wall", "a:wall"} << QVector<int>{1};
    QTest::newRow("plane-like-a-tile") << QStringList{"a:wall", "a row:1 col:1:plane"} << QVector<int>{1};
    QTest::newRow("tile-like-a-plane") << QStringList{"a row:1 col:1:plane", "a:wall"} << QVector<int>{1};
    QTest::newRow("without-names") << QStringList{":plane", ":plane"} << QVector<int>{1};
}

void tst_zoHPCProjectionChecks::equalNamesAreTold()
{
    QFETCH(QStringList, names);
    QFETCH(QVector<int>, told);
    zoHPCSetup setup;
    for (const QString& name : qAsConst(names))
        setup.addProjection(name.section(':', 0, -2), name.section(':', -1));

    const List problems = zoHPCProjectionChecks::equalNames(setup.layout());

    QVector<int> found;
    for (const zoHPCProblem& problem : problems) {
        found << setup.projections.indexOfTopLevelItem(problem.item);
        QVERIFY(problem.other && problem.other != problem.item);
    }
    QCOMPARE(found, told);
    for (const zoHPCProblem& problem : problems)
        problem.fix();
    QVERIFY(zoHPCProjectionChecks::equalNames(setup.layout()).empty());
}

// As in the dialog, where each viewport knows what it shows. Without new names the first two of them would show the
// second wall once the setup is loaded again.
void tst_zoHPCProjectionChecks::viewportsFollowTheNewName()
{
    zoHPCSetup setup;
    QVector<zoHPCViewportItem*> viewports;
    QStringList shown; // the identifiers
    for (int i = 0; i < 2; ++i) {
        const zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 1, 2);
        for (int tile = 0; tile < 2; ++tile) {
            const auto* const item = dynamic_cast<const zoHPCProjectionItem*>(wall->child(tile));
            zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), item->getString(P::Name));
            viewports << dynamic_cast<zoHPCViewportItem*>(window->child(0));
            shown << item->getString(P::Identifier);
            viewports.last()->setString(zoHPCViewportItem::ProjectionIdentifier, shown.last());
        }
    }

    const List problems = zoHPCProjectionChecks::equalNames(setup.layout());
    QCOMPARE(texts(problems), {QStringLiteral("Rename to \"wall 2\"")});
    problems[0].fix();

    QStringList names;
    QStringList identifiers;
    for (const zoHPCViewportItem* viewport : qAsConst(viewports)) {
        names << viewport->getString(zoHPCViewportItem::Projection);
        identifiers << viewport->getString(zoHPCViewportItem::ProjectionIdentifier);
    }
    QCOMPARE(names, QStringList({"wall row:1 col:1", "wall row:1 col:2", "wall 2 row:1 col:1",
                                 "wall 2 row:1 col:2"}));
    QCOMPARE(identifiers, shown);
    QVERIFY(zoHPCTileChecks::tilesShownNowhere(setup.layout()).empty());
    QVERIFY(zoHPCTileChecks::tilesShownTwice(setup.layout()).empty());
}

void tst_zoHPCProjectionChecks::newNameIsFreeWithItsTiles_data()
{
    QTest::addColumn<QStringList>("others");
    QTest::addColumn<QString>("name");

    QTest::newRow("next") << QStringList{} << "w 2";
    QTest::newRow("taken") << QStringList{"w 2"} << "w 3";
    QTest::newRow("taken-by-a-tile") << QStringList{"w 2 row:1 col:1"} << "w 3";
    QTest::newRow("longer-is-another") << QStringList{"w 22", "w 2x"} << "w 2";
}

void tst_zoHPCProjectionChecks::newNameIsFreeWithItsTiles()
{
    QFETCH(QStringList, others);
    QFETCH(QString, name);
    zoHPCSetup setup;
    for (const QString& other : qAsConst(others))
        setup.addProjection(other, QStringLiteral("plane"));
    setup.addProjection(QStringLiteral("w"), QStringLiteral("plane"));
    zoHPCProjectionItem* const second = setup.addProjection(QStringLiteral("w"), QStringLiteral("wall"));

    zoHPCProjectionChecks::equalNames(setup.layout()).at(0).fix();

    QCOMPARE(second->getString(P::Name), name);
}

// Counts, not times: what grows out of proportion runs into the time limit.
void tst_zoHPCProjectionChecks::manyEqualNames()
{
    zoHPCSetup setup;
    for (int i = 0; i < 10000; ++i)
        setup.addProjection(QStringLiteral("p"), QStringLiteral("plane"));

    const List problems = zoHPCProjectionChecks::equalNames(setup.layout());

    QCOMPARE(problems.size(), size_t(9999));
    QCOMPARE(problems.back().fixText, QStringLiteral("Rename to \"p 10000\""));
}

void tst_zoHPCProjectionChecks::typeIsUnknown_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("fix"); // "-" where the type is known

    for (const zoHPCProjectionType& type : zoHPCProjectionType::all())
        QTest::newRow(type.value) << QString::fromLatin1(type.value) << "-";
    QTest::newRow("upper-case") << "PowerWall"
                                << "Make it a powerwall";
    QTest::newRow("in-two-words") << "power wall"
                                  << "Make it a powerwall";
    QTest::newRow("hyphen") << "Power-Wall"
                            << "Make it a powerwall";
    QTest::newRow("blank") << "cave "
                           << "Make it a cave";
    QTest::newRow("dome") << "dome"
                          << "";
    QTest::newRow("none") << ""
                          << "";
}

void tst_zoHPCProjectionChecks::typeIsUnknown()
{
    QFETCH(QString, type);
    QFETCH(QString, fix);
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = setup.addProjection(QStringLiteral("p"), type);
    setup.addWindow(QStringLiteral("n"), QStringLiteral("p"));

    const List problems = zoHPCProjectionChecks::unknownTypes(setup.layout());

    QCOMPARE(problems.empty(), fix == QLatin1String("-"));
    if (problems.empty())
        return;
    QCOMPARE(problems[0].fixText, fix);
    if (fix.isEmpty())
        return;
    problems[0].fix();
    QVERIFY(zoHPCProjectionChecks::unknownTypes(setup.layout()).empty());
    QCOMPARE(item->kind() == zoHPCProjectionType::Kind::PowerWall, item->childCount() == 1);
}

void tst_zoHPCProjectionChecks::typeThatNobodyShowsIsLeft()
{
    zoHPCSetup setup;
    setup.addProjection(QStringLiteral("p"), QStringLiteral("PowerWall"));

    const List problems = zoHPCProjectionChecks::unknownTypes(setup.layout());

    QCOMPARE(texts(problems), {QString()});
}

void tst_zoHPCProjectionChecks::caveHasNoWalls_data()
{
    QTest::addColumn<QVector<int>>("walls");
    QTest::addColumn<bool>("told");

    QTest::newRow("none") << QVector<int>{} << true;
    for (const int wall : {P::LeftWall, P::RightWall, P::TopWall, P::BottomWall, P::FrontWall, P::BackWall})
        QTest::addRow("column-%d", wall) << QVector<int>{wall} << false;
}

void tst_zoHPCProjectionChecks::caveHasNoWalls()
{
    QFETCH(QVector<int>, walls);
    QFETCH(bool, told);
    zoHPCSetup setup;
    zoHPCProjectionItem* const cave = setup.addProjection(QStringLiteral("cave"), QStringLiteral("cave"));
    for (const int wall : qAsConst(walls))
        cave->setBool(wall, true);
    cave->update();

    QCOMPARE(!zoHPCProjectionChecks::cavesWithoutWalls(setup.layout()).empty(), told);
    // One thing at a time.
    QVERIFY(zoHPCProjectionChecks::projectionsWithoutTiles(setup.layout()).empty());
}

void tst_zoHPCProjectionChecks::faultsBehindOthersAreFound()
{
    zoHPCSetup setup;
    for (const char* round : {"1", "2"}) {
        const auto add = [&](const char* name, const char* type) {
            return setup.addProjection(QLatin1String(name) + QLatin1String(round), QLatin1String(type));
        };
        add("good", "plane");
        add("unknown", "dome");
        add("misspelt", "PowerWall");
        setup.addWindow(QStringLiteral("n"), QStringLiteral("misspelt%1").arg(round));
        add("dark", "cave");
        zoHPCProjectionItem* const empty = add("empty", "wall");
        empty->setInt(P::Rows, 0);
        empty->update();
    }

    const zoHPCLayout layout = setup.layout();

    QCOMPARE(zoHPCProjectionChecks::unknownTypes(layout).size(), size_t(4));
    QCOMPARE(zoHPCProjectionChecks::cavesWithoutWalls(layout).size(), size_t(2));
    QCOMPARE(zoHPCProjectionChecks::projectionsWithoutTiles(layout).size(), size_t(2));
}

void tst_zoHPCProjectionChecks::tilesAreMissing_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::addColumn<bool>("missing");

    QTest::newRow("wall") << "wall" << 1 << 1 << false;
    QTest::newRow("wall-without-rows") << "wall" << 0 << 3 << true;
    QTest::newRow("wall-without-columns") << "wall" << 3 << 0 << true;
    QTest::newRow("power-wall") << "powerwall" << -1 << -1 << true;
    QTest::newRow("cave") << "cave" << 0 << 1 << true;
    QTest::newRow("plane-needs-none") << "plane" << 0 << 0 << false;
    QTest::newRow("tile-needs-none") << "tile" << 0 << 0 << false;
}

void tst_zoHPCProjectionChecks::tilesAreMissing()
{
    QFETCH(QString, type);
    QFETCH(int, rows);
    QFETCH(int, columns);
    QFETCH(bool, missing);
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = setup.addProjection(QStringLiteral("p"), type);
    item->setInt(P::Rows, rows);
    item->setInt(P::Columns, columns);
    item->setBool(P::FrontWall, true);
    item->update();

    List problems = zoHPCProjectionChecks::projectionsWithoutTiles(setup.layout());
    QCOMPARE(problems.size(), size_t(missing ? 1 : 0));
    if (!missing)
        return;
    // Tiles that nobody shows would be dark.
    QVERIFY(!problems[0].hasFix());
    setup.addWindow(QStringLiteral("n"), QStringLiteral("p"));
    problems = zoHPCProjectionChecks::projectionsWithoutTiles(setup.layout());
    problems[0].fix();
    QCOMPARE(item->childCount(), qMax(1, rows) * qMax(1, columns));
    QVERIFY(zoHPCProjectionChecks::projectionsWithoutTiles(setup.layout()).empty());
}

void tst_zoHPCProjectionChecks::tooManyTilesAreNone()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = setup.addProjection(QStringLiteral("p"), QStringLiteral("wall"));
    item->setInt(P::Rows, P::MaximumTiles);
    item->setInt(P::Columns, 2);
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("is not laid out")));
    item->update();

    const List problems = zoHPCProjectionChecks::projectionsWithoutTiles(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QVERIFY(problems[0].message.contains(QString::number(P::MaximumTiles)));
    QVERIFY(!problems[0].hasFix());
}

void tst_zoHPCProjectionChecks::whatHasNoTilesIsNotDarkToo()
{
    zoHPCSetup setup;
    setup.addProjection(QStringLiteral("cave"), QStringLiteral("cave"));
    setup.addProjection(QStringLiteral("dome"), QStringLiteral("dome"));

    QVERIFY(zoHPCTileChecks::tilesShownNowhere(setup.layout()).empty());
}

void tst_zoHPCProjectionChecks::overlapIsTooWide_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<double>("overlap"); // of a wall of 3000 mm
    QTest::addColumn<bool>("isBlended");
    QTest::addColumn<bool>("tooWide");

    QTest::newRow("none") << 2 << 0.0 << true << false;
    QTest::newRow("usual") << 2 << 150.0 << true << false;
    QTest::newRow("one-tile-has-none") << 1 << 9000.0 << true << false;
    QTest::newRow("below-the-wall") << 2 << 2999.0 << true << false;
    QTest::newRow("the-wall") << 2 << 3000.0 << true << true;
    QTest::newRow("beyond-the-wall") << 2 << 4000.0 << false << true;
    QTest::newRow("half-a-tile-of-three") << 3 << 750.0 << true << false;
    QTest::newRow("more-than-half-a-tile-of-three") << 3 << 760.0 << true << true;
    QTest::newRow("more-than-half-without-blending") << 3 << 760.0 << false << false;
    QTest::newRow("bezels") << 2 << -24.0 << false << false;
    QTest::newRow("bezels-that-leave-a-little") << 2 << -2999.0 << false << false;
    QTest::newRow("bezels-that-leave-nothing") << 2 << -3000.0 << false << true;
}

void tst_zoHPCProjectionChecks::overlapIsTooWide()
{
    QFETCH(int, columns);
    QFETCH(double, overlap);
    QFETCH(bool, isBlended);
    QFETCH(bool, tooWide);
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 1, columns);
    wall->setDouble(P::OverlapX, overlap);
    wall->setBool(P::EdgeBlending, isBlended);
    wall->update();

    const List problems = zoHPCProjectionChecks::overlapsWiderThanTiles(setup.layout());

    QCOMPARE(problems.size(), size_t(tooWide ? 1 : 0));
    if (tooWide)
        QVERIFY(problems[0].message.contains(QString::number(qAbs(overlap))));
}

void tst_zoHPCProjectionChecks::overlapOfACave_data()
{
    QTest::addColumn<int>("wall");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("overlap");
    QTest::addColumn<bool>("tooWide");

    // The cave is 3000 wide, 2000 high and 1000 deep, its overlap 1500.
    QTest::newRow("front-across") << int(P::FrontWall) << int(P::Columns) << int(P::OverlapX) << false;
    QTest::newRow("left-across") << int(P::LeftWall) << int(P::Columns) << int(P::OverlapX) << true;
    QTest::newRow("front-down") << int(P::FrontWall) << int(P::Rows) << int(P::OverlapY) << false;
    QTest::newRow("floor-down") << int(P::BottomWall) << int(P::Rows) << int(P::OverlapY) << true;
}

void tst_zoHPCProjectionChecks::overlapOfACave()
{
    QFETCH(int, wall);
    QFETCH(int, count);
    QFETCH(int, overlap);
    QFETCH(bool, tooWide);
    zoHPCSetup setup;
    zoHPCProjectionItem* const cave = setup.addProjection(QStringLiteral("cave"), QStringLiteral("cave"));
    cave->setDouble(P::CaveWidth, 3000);
    cave->setDouble(P::CaveHeight, 2000);
    cave->setDouble(P::CaveDepth, 1000);
    cave->setBool(wall, true);
    cave->setInt(count, 2);
    cave->setDouble(overlap, 1500);
    cave->update();

    QCOMPARE(!zoHPCProjectionChecks::overlapsWiderThanTiles(setup.layout()).empty(), tooWide);
}

void tst_zoHPCProjectionChecks::overlapInPixels_data()
{
    QTest::addColumn<double>("overlap");
    QTest::addColumn<bool>("isFullScreen");
    QTest::addColumn<bool>("tooWide");

    QTest::newRow("usual") << 192.0 << false << false;
    QTest::newRow("below-a-tile") << 1919.0 << false << false;
    QTest::newRow("a-tile") << 1920.0 << false << true;
    QTest::newRow("many-tiles") << 9000.0 << false << true;
    // A window that fills its screen has the size of the screen, as "zohpc new" writes it.
    QTest::newRow("below-a-screen") << 1919.0 << true << false;
    QTest::newRow("a-screen") << 1920.0 << true << true;
    QTest::newRow("no-screen-is-so-large") << 20000.0 << true << true;
    QTest::newRow("gaps-may-be-wide") << -5000.0 << false << false;
}

void tst_zoHPCProjectionChecks::overlapInPixels()
{
    QFETCH(double, overlap);
    QFETCH(bool, isFullScreen);
    QFETCH(bool, tooWide);
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addProjection(QStringLiteral("wall"), QStringLiteral("wall"));
    wall->setInt(P::Columns, 2);
    wall->setDouble(P::OverlapX, overlap);
    wall->update();
    zoHPCWindowItem* const window =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 1920, 1080);
    setup.addViewport(window, QStringLiteral("wall row:1 col:1"), QStringLiteral("mono"));
    window->setBool(zoHPCWindowItem::FullScreen, isFullScreen);

    QCOMPARE(!zoHPCProjectionChecks::overlapsWiderThanTiles(setup.layout()).empty(), tooWide);
}

void tst_zoHPCProjectionChecks::overlapOfScreensOfUnknownSize_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("overlap");
    QTest::addColumn<bool>("tooWide");

    const QSize made(1280, 1024); // what a new window has
    QTest::newRow("never-told") << made << 2000.0 << false;
    QTest::newRow("never-told-and-too-wide-for-any") << made << 16384.0 << true;
    QTest::newRow("told") << made + QSize(0, 1) << 2000.0 << true;
    // The screen may be larger after all: half of the tile is judged in windows alone.
    QTest::newRow("more-than-half") << QSize(1920, 1080) << 1000.0 << false;
}

void tst_zoHPCProjectionChecks::overlapOfScreensOfUnknownSize()
{
    QFETCH(QSize, size);
    QFETCH(double, overlap);
    QFETCH(bool, tooWide);
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addProjection(QStringLiteral("wall"), QStringLiteral("wall"));
    wall->setInt(P::Columns, 3);
    wall->setDouble(P::OverlapX, overlap);
    wall->setBool(P::EdgeBlending, size != QSize(1280, 1024));
    wall->update();
    zoHPCWindowItem* const window =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, size.width(), size.height());
    setup.addViewport(window, QStringLiteral("wall row:1 col:1"), QStringLiteral("mono"));
    window->setBool(zoHPCWindowItem::FullScreen, true);

    QCOMPARE(!zoHPCProjectionChecks::overlapsWiderThanTiles(setup.layout()).empty(), tooWide);
}

ZO_TEST_MAIN(tst_zoHPCProjectionChecks)
#include "tst_zoHPCProjectionChecks.moc"
