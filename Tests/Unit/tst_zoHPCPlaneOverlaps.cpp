#include "zoTestCase.h"

#include <zoHPCPlaneOverlaps.h>

#include <QApplication>
#include <QtMath>

// How far planes of bent walls reach over each other.
class tst_zoHPCPlaneOverlaps final : public zoTestCase
{
    Q_OBJECT

private slots:
    void bentWallsOverlapAsTheyAreSeen_data();
    void bentWallsOverlapAsTheyAreSeen();
    void wallsBentUpwardDoToo();
    void panelsEdgeToEdgeDoNot_data();
    void panelsEdgeToEdgeDoNot();
    void cornersOfCavesDoNot();
    void flatWallsOverlapFromAnywhere_data();
    void flatWallsOverlapFromAnywhere();
    void largePlaneOverlapsSmallOnes();
    void planesFarAwayDoNotCount_data();
    void planesFarAwayDoNotCount();

private:
    // A chord of a cylinder of 3 m around the viewer, between two angles in degrees.
    static zoHPCPlane chord(double from, double to, double height = 2200)
    {
        const auto at = [](double angle, double y) {
            return Point3{3000 * sin(qDegreesToRadians(angle)), y, -3000 * cos(qDegreesToRadians(angle))};
        };
        return {at(from, -height / 2), at(to, -height / 2), at(to, height / 2)};
    }
    // The part of a chord over `angles` degrees in the middle that lies beyond an angle.
    static double partBeyond(double half, double angle)
    {
        const double width = 2 * tan(qDegreesToRadians(half));
        return (tan(qDegreesToRadians(half)) - tan(qDegreesToRadians(angle))) / width;
    }
};

void tst_zoHPCPlaneOverlaps::bentWallsOverlapAsTheyAreSeen_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("half");

    QTest::newRow("20-degrees") << 20.0 << 12.0;
    QTest::newRow("32-degrees") << 32.0 << 18.0;
    QTest::newRow("40-degrees") << 40.0 << 23.0;
    QTest::newRow("60-degrees") << 60.0 << 34.0;
    QTest::newRow("74-degrees") << 74.0 << 40.0;
}

void tst_zoHPCPlaneOverlaps::bentWallsOverlapAsTheyAreSeen()
{
    QFETCH(double, step);
    QFETCH(double, half);
    const zoHPCPlane middle = chord(-half, half);
    const zoHPCPlaneOverlaps overlaps(
        {chord(-step - half, -step + half), middle, chord(step - half, step + half)});

    const zoHPCPlaneOverlaps::Reach reach = overlaps.over(middle);

    // Seen from the origin the neighbour begins at this angle. Looked at straight on it may reach a little further.
    const double expected = partBeyond(half, step - half);
    QVERIFY2(reach.left >= expected - 1e-6 && reach.left < expected + 0.02, QByteArray::number(reach.left));
    QVERIFY(qAbs(reach.right - reach.left) < 1e-6);
    // Neighbours are as high as the plane, at their edges they seem higher or lower.
    QVERIFY(reach.lower < 0.2 || qFuzzyCompare(reach.lower, 1.0));
    QVERIFY(reach.isFolded);
}

void tst_zoHPCPlaneOverlaps::wallsBentUpwardDoToo()
{
    // The same chords with x and y exchanged, which turns them round, so left and right change too.
    const auto upward = [](const zoHPCPlane& plane) {
        const auto turn = [](const Point3& p) { return Point3{p.y, p.x, p.z}; };
        return zoHPCPlane{turn(plane.lowerLeft), turn(plane.upperLeft()), turn(plane.upperRight)};
    };
    const zoHPCPlane middle = upward(chord(-23, 23));
    const zoHPCPlaneOverlaps overlaps({upward(chord(-63, -17)), middle, upward(chord(17, 63))});

    const zoHPCPlaneOverlaps::Reach reach = overlaps.over(middle);

    const double expected = partBeyond(23, 17);
    QVERIFY2(qAbs(reach.lower - expected) < 0.02, QByteArray::number(reach.lower));
    QVERIFY(qAbs(reach.upper - expected) < 0.02);
}

void tst_zoHPCPlaneOverlaps::panelsEdgeToEdgeDoNot_data()
{
    QTest::addColumn<double>("step");

    for (const double step : {5.0, 20.0, 31.0, 33.0, 45.0, 60.0, 74.0})
        QTest::addRow("%g-degrees", step) << step;
}

void tst_zoHPCPlaneOverlaps::panelsEdgeToEdgeDoNot()
{
    QFETCH(double, step);
    const zoHPCPlane middle = chord(-step / 2, step / 2);
    const zoHPCPlaneOverlaps overlaps({middle, chord(step / 2, 1.5 * step)});

    const zoHPCPlaneOverlaps::Reach reach = overlaps.over(middle);

    QVERIFY2(reach.left < 1e-3 && reach.right < 1e-3, QByteArray::number(reach.right));
}

void tst_zoHPCPlaneOverlaps::cornersOfCavesDoNot()
{
    const zoHPCPlane front{{-1500, -1500, -1500}, {1500, -1500, -1500}, {1500, 1500, -1500}};
    const zoHPCPlane side{{1500, -1500, -1500}, {1500, -1500, 1500}, {1500, 1500, 1500}};
    const zoHPCPlane floor{{-1500, -1500, 1500}, {1500, -1500, 1500}, {1500, -1500, -1500}};
    const zoHPCPlaneOverlaps overlaps({front, side, floor});

    for (const zoHPCPlane& plane : {front, side, floor}) {
        const zoHPCPlaneOverlaps::Reach reach = overlaps.over(plane);
        QCOMPARE(qMax(qMax(reach.left, reach.right), qMax(reach.lower, reach.upper)), 0.0);
    }
}

void tst_zoHPCPlaneOverlaps::flatWallsOverlapFromAnywhere_data()
{
    QTest::addColumn<double>("z");

    QTest::newRow("before-the-viewer") << -1500.0;
    QTest::newRow("the-origin-in-the-wall") << 0.0;
    QTest::newRow("the-origin-behind-the-wall") << 1500.0;
}

void tst_zoHPCPlaneOverlaps::flatWallsOverlapFromAnywhere()
{
    QFETCH(double, z);
    const auto plane = [z](double left, double right) {
        return zoHPCPlane{{left, -1000, z}, {right, -1000, z}, {right, 1000, z}};
    };
    const zoHPCPlaneOverlaps overlaps({plane(0, 1000), plane(800, 1800)});

    const zoHPCPlaneOverlaps::Reach reach = overlaps.over(plane(0, 1000));

    QVERIFY(qAbs(reach.right - 0.2) < 1e-9);
    QCOMPARE(reach.left, 0.0);
    QVERIFY(!reach.isFolded);
}

void tst_zoHPCPlaneOverlaps::planesFarAwayDoNotCount_data()
{
    QTest::addColumn<int>("count");

    // Beside more than 2,000 a plane would count as covered.
    QTest::newRow("2000") << 2000;
    QTest::newRow("2001") << 2001;
}

void tst_zoHPCPlaneOverlaps::planesFarAwayDoNotCount()
{
    QFETCH(int, count);
    std::vector<zoHPCPlane> row;
    for (int i = 0; i < count; ++i) {
        const double left = 3000.0 * i;
        row.push_back({{left, 0, -2000}, {left + 1000, 0, -2000}, {left + 1000, 500, -2000}});
    }
    const zoHPCPlaneOverlaps overlaps(row);

    for (const zoHPCPlane& plane : row) {
        const zoHPCPlaneOverlaps::Reach reach = overlaps.over(plane);
        QCOMPARE(QString("%1 %2 %3 %4").arg(reach.left).arg(reach.right).arg(reach.lower).arg(reach.upper),
                 QString("0 0 0 0"));
    }
}

// One that is 300 times as wide as the others overlaps its neighbour, and its neighbour overlaps it.
void tst_zoHPCPlaneOverlaps::largePlaneOverlapsSmallOnes()
{
    const auto plane = [](double left, double right) {
        return zoHPCPlane{{left, 0, -2000}, {right, 0, -2000}, {right, 100, -2000}};
    };
    std::vector<zoHPCPlane> row{plane(0, 100), plane(50, 30050)};
    for (int i = 1; i <= 20; ++i)
        row.push_back(plane(-200 * i, -200 * i + 100));
    const zoHPCPlaneOverlaps overlaps(row);

    const zoHPCPlaneOverlaps::Reach small = overlaps.over(row[0]);
    const zoHPCPlaneOverlaps::Reach large = overlaps.over(row[1]);
    const zoHPCPlaneOverlaps::Reach alone = overlaps.over(row[2]);

    QVERIFY(qAbs(small.right - 0.5) < 1e-9);
    QCOMPARE(small.left, 0.0);
    QVERIFY(qAbs(large.left - 50.0 / 30000.0) < 1e-9);
    QCOMPARE(large.right, 0.0);
    QCOMPARE(alone.left + alone.right, 0.0);
}

ZO_TEST_MAIN(tst_zoHPCPlaneOverlaps)
#include "tst_zoHPCPlaneOverlaps.moc"
