#include "zoTestCase.h"

#include <zoOffAxisView.h>

#include <QApplication>

#include <cmath>

// What an eye sees through a plane. Expected values are worked out by hand, from similar triangles.
class tst_zoOffAxisView final : public zoTestCase
{
    Q_OBJECT

private slots:
    void eyeInTheMiddleHasASymmetricFrustum();
    void eyeAsideShiftsTheFrustum();
    void pointsOfThePlaneStayWhereTheyAre();
    void pointBehindThePlaneIsSeenThroughIt();
    void tilesOfAWallMeet();
    void wallsOfACaveMeet();
    void eyeWithoutAViewSeesNothing_data();
    void eyeWithoutAViewSeesNothing();
    void figureIsCutOffBeforeTheEye();
    void slantedCornersKeepARightAngle();
};

namespace
{
const zoWallPlane Front{{}, {-1000, -600, -2000}, {1000, -600, -2000}, {1000, 600, -2000}};

bool isNear(double a, double b, double tolerance = 1.0e-9)
{
    return std::abs(a - b) <= tolerance;
}
} // namespace

void tst_zoOffAxisView::eyeInTheMiddleHasASymmetricFrustum()
{
    const zoOffAxisView view(Front, {0, 0, 0});

    const zoOffAxisView::Frustum frustum = view.frustum(100.0);

    QVERIFY(view.isValid());
    QCOMPARE(view.distance(), 2000.0);
    // 1000 mm at a distance of 2000 mm are 50 mm at 100 mm.
    QCOMPARE(frustum.left, -50.0);
    QCOMPARE(frustum.right, 50.0);
    QCOMPARE(frustum.bottom, -30.0);
    QCOMPARE(frustum.top, 30.0);
}

void tst_zoOffAxisView::eyeAsideShiftsTheFrustum()
{
    const zoOffAxisView view(Front, {400, 200, -1000});

    const zoOffAxisView::Frustum frustum = view.frustum(100.0);

    QCOMPARE(view.distance(), 1000.0);
    QCOMPARE(frustum.left, -140.0);
    QCOMPARE(frustum.right, 60.0);
    QCOMPARE(frustum.bottom, -80.0);
    QCOMPARE(frustum.top, 40.0);
}

// Zero parallax: what lies in the plane is there for every eye.
void tst_zoOffAxisView::pointsOfThePlaneStayWhereTheyAre()
{
    for (const zoWallPoint& eye :
         {zoWallPoint{0, 0, 0}, zoWallPoint{-700, 300, 500}, zoWallPoint{32.5, 0, -1990}}) {
        const QPointF place = zoOffAxisView(Front, eye).project(zoWallPoint{500, 300, -2000});

        QVERIFY(isNear(place.x(), 0.75));
        QVERIFY(isNear(place.y(), 0.75));
    }
}

void tst_zoOffAxisView::pointBehindThePlaneIsSeenThroughIt()
{
    const zoWallPoint point{0, 0, -4000};

    const QPointF left = zoOffAxisView(Front, {-32.5, 0, 0}).project(point);
    const QPointF right = zoOffAxisView(Front, {32.5, 0, 0}).project(point);

    // Half way to the point each eye's line is half of its way to the middle: 16.25 mm off, of 2000.
    QVERIFY(isNear(left.x(), 0.5 - 16.25 / 2000.0));
    QVERIFY(isNear(right.x(), 0.5 + 16.25 / 2000.0));
    QVERIFY(isNear(left.y(), 0.5));
}

void tst_zoOffAxisView::tilesOfAWallMeet()
{
    const zoWallPlane left{{}, {-1000, -600, -2000}, {0, -600, -2000}, {0, 600, -2000}};
    const zoWallPlane right{{}, {0, -600, -2000}, {1000, -600, -2000}, {1000, 600, -2000}};
    const zoWallPoint eye{150, -80, 300};
    const zoWallPoint from{-900, 700, -3500};
    const zoWallPoint to{1200, -200, -5200};

    for (double share = 0.0; share <= 1.0; share += 0.05) {
        const zoWallPoint point{from.x + share * (to.x - from.x), from.y + share * (to.y - from.y),
                                from.z + share * (to.z - from.z)};
        const QPointF inLeft = zoOffAxisView(left, eye).project(point);
        const QPointF inRight = zoOffAxisView(right, eye).project(point);
        const QPointF inWhole = zoOffAxisView(Front, eye).project(point);

        QVERIFY(isNear(inLeft.x() / 2.0, inWhole.x()));
        QVERIFY(isNear(0.5 + inRight.x() / 2.0, inWhole.x()));
        QVERIFY(isNear(inLeft.y(), inWhole.y()) && isNear(inRight.y(), inWhole.y()));
    }
}

// The line from the eye through a point of the edge is on the edge in both pictures, at the same height.
void tst_zoOffAxisView::wallsOfACaveMeet()
{
    const zoWallPlane front{{}, {-1500, -1600, -1500}, {1500, -1600, -1500}, {1500, 800, -1500}};
    const zoWallPlane right{{}, {1500, -1600, -1500}, {1500, -1600, 1500}, {1500, 800, 1500}};
    const zoWallPlane floor{{}, {-1500, -1600, 1500}, {1500, -1600, 1500}, {1500, -1600, -1500}};
    const zoWallPoint eye{32.5, 40, -10};

    for (double height = -1500.0; height < 800.0; height += 230.0) {
        // Three times as far away as the edge.
        const zoWallPoint point{eye.x + 3 * (1500 - eye.x), eye.y + 3 * (height - eye.y),
                                eye.z + 3 * (-1500 - eye.z)};
        const QPointF inFront = zoOffAxisView(front, eye).project(point);
        const QPointF inRight = zoOffAxisView(right, eye).project(point);

        QVERIFY(isNear(inFront.x(), 1.0) && isNear(inRight.x(), 0.0));
        QVERIFY(isNear(inFront.y(), (height + 1600.0) / 2400.0) && isNear(inRight.y(), inFront.y()));
    }
    const zoWallPoint point{eye.x + 2 * (700 - eye.x), eye.y + 2 * (-1600 - eye.y),
                            eye.z + 2 * (-1500 - eye.z)};
    const QPointF inFront = zoOffAxisView(front, eye).project(point);
    const QPointF inFloor = zoOffAxisView(floor, eye).project(point);
    QVERIFY(isNear(inFront.y(), 0.0) && isNear(inFloor.y(), 1.0));
    QVERIFY(isNear(inFront.x(), 2200.0 / 3000.0) && isNear(inFloor.x(), inFront.x()));
}

void tst_zoOffAxisView::eyeWithoutAViewSeesNothing_data()
{
    QTest::addColumn<double>("z");
    QTest::addColumn<double>("width");
    QTest::addColumn<bool>("isValid");

    QTest::newRow("in-front") << -1999.0 << 2000.0 << true;
    QTest::newRow("in-the-plane") << -2000.0 << 2000.0 << false;
    QTest::newRow("behind") << -2001.0 << 2000.0 << false;
    QTest::newRow("no-width") << 0.0 << 0.0 << false;
    QTest::newRow("not-a-number") << std::nan("") << 2000.0 << false;
}

void tst_zoOffAxisView::eyeWithoutAViewSeesNothing()
{
    QFETCH(double, z);
    QFETCH(double, width);
    QFETCH(bool, isValid);

    const zoOffAxisView view(
        {{}, {-1000, -600, -2000}, {-1000 + width, -600, -2000}, {-1000 + width, 600, -2000}}, {0, 0, z});

    QCOMPARE(view.isValid(), isValid);
    QCOMPARE(view.project(std::vector<zoWallPoint>{{0, 0, -9000}, {100, 0, -9000}, {0, 100, -9000}}).empty(),
             !isValid);
    QVERIFY(!zoOffAxisView().isValid());
}

void tst_zoOffAxisView::figureIsCutOffBeforeTheEye()
{
    const zoOffAxisView view(Front, {0, 0, 0});
    // A floor from far ahead to far behind.
    const std::vector<zoWallPoint> floor{
        {-500, -600, 5000}, {500, -600, 5000}, {500, -600, -5000}, {-500, -600, -5000}};

    const std::vector<QPointF> seen = view.project(floor);
    const std::vector<QPointF> behind =
        view.project(std::vector<zoWallPoint>{{0, 0, 10}, {9, 0, 10}, {0, 9, 10}});

    QCOMPARE(int(seen.size()), 4);
    QVERIFY(behind.empty());
    double lowest = 0.0;
    for (const QPointF& point : seen)
        lowest = std::min(lowest, point.y());
    // At a hundredth of the distance of 2000 mm, 600 mm are 60000 mm in the plane, of 1200, below its middle.
    QVERIFY(isNear(lowest, 0.5 - 50.0, 1.0e-6));
    QVERIFY(view.project(std::vector<zoWallPoint>()).empty());
}

void tst_zoOffAxisView::slantedCornersKeepARightAngle()
{
    const zoOffAxisView view({{}, {-1000, -600, -2000}, {1000, -600, -2000}, {1100, 600, -2000}}, {0, 0, 0});

    const QPointF top = view.project(zoWallPoint{1000, 600, -2000});

    QVERIFY(view.isValid());
    QVERIFY(isNear(top.x(), 1.0) && isNear(top.y(), 1.0));
}

ZO_TEST_MAIN(tst_zoOffAxisView)
#include "tst_zoOffAxisView.moc"
