#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCPlane.h>
#include <zoHPCPlaneGrids.h>
#include <zoHPCReportWalls.h>

#include <QApplication>

#include <cmath>

namespace
{
// A tile of 1000 x 500 mm with this lower left corner.
zoHPCProjectionItem* addPlane(zoHPCSetup& setup, const QString& name, const Point3& corner = {})
{
    zoHPCProjectionItem* const item = setup.addProjection(name, QStringLiteral("plane"));
    item->setPlane({corner, corner + Point3{1000.0, 0.0, 0.0}, corner + Point3{1000.0, 500.0, 0.0}});
    return item;
}

QStringList namesOf(const std::vector<zoHPCPlaneGrids::Grid>& grids)
{
    QStringList names;
    for (const zoHPCPlaneGrids::Grid& grid : grids)
        names << QStringLiteral("%1 %2x%3").arg(grid.name).arg(grid.columns).arg(grid.rows);
    return names;
}
} // namespace

// Planes that are the tiles of one wall by their names.
class tst_zoHPCPlaneGrids final : public zoTestCase
{
    Q_OBJECT

private slots:
    void planesOfOneWallAreFound_data();
    void planesOfOneWallAreFound();
    void tilesComeRowByRow();
    void sizesAreMeasured();
    void eachIsOneWallOfAReport();
};

void tst_zoHPCPlaneGrids::planesOfOneWallAreFound_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("grids");

    QTest::newRow("row") << QStringList{"W row:1 col:1", "W row:1 col:2"} << QStringList{"W 2x1"};
    QTest::newRow("any-order") << QStringList{"W row:2 col:2", "W row:1 col:1", "W row:2 col:1",
                                              "W row:1 col:2"}
                               << QStringList{"W 2x2"};
    QTest::newRow("two-walls") << QStringList{"A row:1 col:1", "B row:1 col:1", "A row:2 col:1",
                                              "B row:1 col:2"}
                               << QStringList{"A 1x2", "B 2x1"};
    QTest::newRow("name-with-blanks")
        << QStringList{"West wing row:1 col:1", "West wing row:1 col:2"} << QStringList{"West wing 2x1"};
    QTest::newRow("one-tile-is-no-wall") << QStringList{"W row:1 col:1"} << QStringList();
    QTest::newRow("lacks-a-tile") << QStringList{"W row:1 col:1", "W row:1 col:3"} << QStringList();
    QTest::newRow("has-one-twice") << QStringList{"W row:1 col:1", "W row:1 col:2", "W row:2 col:1",
                                                  "W row:2 col:1"}
                                   << QStringList();
    QTest::newRow("counts-from-one") << QStringList{"W row:0 col:1", "W row:1 col:1"} << QStringList();
    QTest::newRow("other-names") << QStringList{"Left", "Right"} << QStringList();
    QTest::newRow("numbers-too-long")
        << QStringList{"W row:1 col:1", "W row:1 col:99999999999"} << QStringList();
}

void tst_zoHPCPlaneGrids::planesOfOneWallAreFound()
{
    QFETCH(QStringList, names);
    QFETCH(QStringList, grids);
    zoHPCSetup setup;
    for (const QString& name : qAsConst(names))
        addPlane(setup, name);
    // Tiles that a wall generates have such names, too, and are no planes of their own.
    setup.addPowerWall(QStringLiteral("P"), 2, 2);

    const std::vector<zoHPCPlaneGrids::Grid> found = zoHPCPlaneGrids::find(setup.layout());

    QCOMPARE(namesOf(found), grids);
}

void tst_zoHPCPlaneGrids::tilesComeRowByRow()
{
    zoHPCSetup setup;
    addPlane(setup, QStringLiteral("W row:2 col:1"), {0.0, 0.0, 0.0});
    addPlane(setup, QStringLiteral("W row:1 col:2"), {1000.0, 500.0, 0.0});
    addPlane(setup, QStringLiteral("W row:1 col:1"), {0.0, 500.0, 0.0});
    addPlane(setup, QStringLiteral("W row:2 col:2"), {1000.0, 0.0, 0.0});

    const zoHPCPlaneGrids::Grid grid = zoHPCPlaneGrids::find(setup.layout()).front();

    QCOMPARE(grid.projections, (std::vector<int>{2, 1, 0, 3}));
    QCOMPARE(grid.plane(0, 1).lowerLeft.x, 1000.0);
    QCOMPARE(grid.column(1).lowerLeft.y, 0.0);
    QCOMPARE(grid.column(1).upperRight.y, 1000.0);
}

void tst_zoHPCPlaneGrids::sizesAreMeasured()
{
    zoHPCSetup setup;
    // 20 mm between columns, 30 mm shared by rows; the second column turns by a right angle.
    addPlane(setup, QStringLiteral("W row:1 col:1"), {0.0, 470.0, 0.0});
    addPlane(setup, QStringLiteral("W row:2 col:1"), {0.0, 0.0, 0.0});
    for (int row : {1, 2}) {
        const double y = row == 1 ? 470.0 : 0.0;
        addPlane(setup, QStringLiteral("W row:%1 col:2").arg(row))
            ->setPlane({{1020.0, y, 0.0}, {1020.0, y, 1000.0}, {1020.0, y + 500.0, 1000.0}});
    }

    const zoHPCPlaneGrids::Grid grid = zoHPCPlaneGrids::find(setup.layout()).front();

    QCOMPARE(grid.tile(), QSizeF(1000.0, 500.0));
    QCOMPARE(grid.overlap(), QSizeF(-20.0, 30.0));
    QCOMPARE(grid.size(), QSizeF(2020.0, 970.0));
    QVERIFY(std::abs(grid.turn() - 90.0) < 1e-9);
}

void tst_zoHPCPlaneGrids::eachIsOneWallOfAReport()
{
    zoHPCSetup setup;
    for (const char* name : {"A row:1 col:1", "B row:1 col:1", "Alone", "A row:1 col:2", "B row:2 col:1"})
        addPlane(setup, QString::fromLatin1(name));

    QStringList walls;
    for (const zoHPCReportWalls::Wall& wall : zoHPCReportWalls::read(setup.layout()))
        walls << (wall.isGrid() ? namesOf({wall.grid}).first() : wall.name);

    QCOMPARE(walls, QStringList({"A 2x1", "B 1x2", "Alone"}));
}

ZO_TEST_MAIN(tst_zoHPCPlaneGrids)
#include "tst_zoHPCPlaneGrids.moc"
