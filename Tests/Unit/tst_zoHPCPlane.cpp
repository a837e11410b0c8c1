#include "zoTestCase.h"

#include <zoHPCPlane.h>
#include <zoHPCProjectionItem.h>

#include <QApplication>

#include <limits>

// Planes by three corners.
class tst_zoHPCPlane final : public zoTestCase
{
    Q_OBJECT

private slots:
    void wallInFrontReadsFromTheViewersSide();
    void facingPlaneIsCentredOnTheAxis();
    void swappedCornersTurnThePlaneRound();
    void fourthCornerCompletesTheParallelogram();
    void partIsCutOutByFractions();
    void planeWithoutAreaIsDegenerate_data();
    void planeWithoutAreaIsDegenerate();
    void skewIsTheAngleOffTheSquare_data();
    void skewIsTheAngleOffTheSquare();
    void itemKeepsTheCorners();
};

namespace
{
zoHPCPlane frontWall()
{
    return {{-1500, -1000, -1500}, {1500, -1000, -1500}, {1500, 1000, -1500}};
}
} // namespace

void tst_zoHPCPlane::wallInFrontReadsFromTheViewersSide()
{
    const zoHPCPlane plane = frontWall();

    QCOMPARE(plane.width(), 3000.0);
    QCOMPARE(plane.height(), 2000.0);
    QCOMPARE(plane.normal().z, 1.0);
    QCOMPARE(plane.distanceInFront(Point3()), 1500.0);
}

void tst_zoHPCPlane::facingPlaneIsCentredOnTheAxis()
{
    const zoHPCPlane plane = zoHPCPlane::facing(3000.0, 2000.0, 1500.0);

    const zoHPCPlane byHand = frontWall();
    QCOMPARE(length(plane.lowerLeft - byHand.lowerLeft), 0.0);
    QCOMPARE(length(plane.lowerRight - byHand.lowerRight), 0.0);
    QCOMPARE(length(plane.upperRight - byHand.upperRight), 0.0);
}

void tst_zoHPCPlane::swappedCornersTurnThePlaneRound()
{
    const zoHPCPlane plane({1500, -1000, -1500}, {-1500, -1000, -1500}, {-1500, 1000, -1500});

    QCOMPARE(plane.normal().z, -1.0);
    QCOMPARE(plane.distanceInFront(Point3()), -1500.0);
}

void tst_zoHPCPlane::fourthCornerCompletesTheParallelogram()
{
    const Point3 corner = frontWall().upperLeft();

    QCOMPARE(corner.x, -1500.0);
    QCOMPARE(corner.y, 1000.0);
    QCOMPARE(corner.z, -1500.0);
}

void tst_zoHPCPlane::partIsCutOutByFractions()
{
    const zoHPCPlane part = frontWall().part(0.0, 0.5, 0.25, 1.0);

    QCOMPARE(part.lowerLeft.x, -1500.0);
    QCOMPARE(part.lowerLeft.y, 0.0);
    QCOMPARE(part.upperRight.x, -750.0);
    QCOMPARE(part.upperRight.y, 1000.0);
}

void tst_zoHPCPlane::planeWithoutAreaIsDegenerate_data()
{
    QTest::addColumn<double>("x2");
    QTest::addColumn<double>("x3");
    QTest::addColumn<double>("y3");
    QTest::addColumn<bool>("degenerate");

    QTest::newRow("rectangle") << 1000.0 << 1000.0 << 500.0 << false;
    QTest::newRow("no-width") << 0.0 << 0.0 << 500.0 << true;
    QTest::newRow("no-height") << 1000.0 << 1000.0 << 0.0 << true;
    QTest::newRow("corners-on-one-line") << 1000.0 << 2000.0 << 0.0 << true;
    QTest::newRow("skewed-but-wide") << 1000.0 << 1500.0 << 500.0 << false;
    QTest::newRow("no-number") << std::numeric_limits<double>::quiet_NaN() << 1000.0 << 500.0 << true;
    QTest::newRow("infinite") << 1000.0 << std::numeric_limits<double>::infinity() << 500.0 << true;
}

void tst_zoHPCPlane::planeWithoutAreaIsDegenerate()
{
    QFETCH(double, x2);
    QFETCH(double, x3);
    QFETCH(double, y3);
    QFETCH(bool, degenerate);

    const zoHPCPlane plane({0, 0, 0}, {x2, 0, 0}, {x3, y3, 0});

    QCOMPARE(plane.isDegenerate(), degenerate);
}

void tst_zoHPCPlane::skewIsTheAngleOffTheSquare_data()
{
    QTest::addColumn<double>("x3");
    QTest::addColumn<double>("degrees");

    QTest::newRow("square") << 1000.0 << 0.0;
    QTest::newRow("leaning-right") << 2000.0 << 45.0;
    QTest::newRow("leaning-left") << 0.0 << 45.0;
}

void tst_zoHPCPlane::skewIsTheAngleOffTheSquare()
{
    QFETCH(double, x3);
    QFETCH(double, degrees);

    const zoHPCPlane plane({0, 0, 0}, {1000, 0, 0}, {x3, 1000, 0});

    QVERIFY(qAbs(plane.skew() - degrees) < 1e-9);
}

void tst_zoHPCPlane::itemKeepsTheCorners()
{
    zoHPCProjectionItem item(QStringLiteral("p"), QStringLiteral("plane"));

    zoHPCPlane({1, 2, 3}, {4, 5, 6}, {7, 8, 9}).toItem(item);

    const zoHPCPlane plane = zoHPCPlane::fromItem(item);
    QCOMPARE(item.getDouble(zoHPCProjectionItem::Y2), 5.0);
    QCOMPARE(plane.lowerLeft.z, 3.0);
    QCOMPARE(plane.lowerRight.x, 4.0);
    QCOMPARE(plane.upperRight.y, 8.0);
}

ZO_TEST_MAIN(tst_zoHPCPlane)

#include "tst_zoHPCPlane.moc"
