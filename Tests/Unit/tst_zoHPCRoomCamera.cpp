#include "zoTestCase.h"

#include <zoHPCRoomCamera.h>

#include <QApplication>

#include <cmath>

namespace
{
const QRectF AREA(0.0, 0.0, 800.0, 600.0);

zoHPCRoomCamera lookingAlongZ()
{
    zoHPCRoomCamera camera;
    camera.yaw = 0.0;
    camera.pitch = 0.0;
    camera.distance = 1000.0;
    return camera;
}
} // namespace

// The look into the room.
class tst_zoHPCRoomCamera final : public zoTestCase
{
    Q_OBJECT

private slots:
    void rightIsRightAndUpIsUp();
    void fartherIsSmaller();
    void yawGoesRoundTheTarget();
    void pitchStaysOffTheVertical();
    void zoomComesNearerWithinLimits();
    void panMovesTheRoomWithTheMouse();
    void rayGoesThroughThePointThatItShows();
    void parallelRaysShowTheSameAtAnyDepth();
    void parallelRayGoesThroughThePointThatItShows();
    void fitTakesInAllPoints_data();
    void fitTakesInAllPoints();
    void fitFillsThePicture();
    void fitWithoutPointsChangesNothing();
    void equalCamerasAreEqual();
};

void tst_zoHPCRoomCamera::rightIsRightAndUpIsUp()
{
    const zoHPCRoomCamera camera = lookingAlongZ();

    const QPointF center = camera.toPicture(camera.see({0, 0, 0}), AREA);
    const QPointF right = camera.toPicture(camera.see({100, 0, 0}), AREA);
    const QPointF up = camera.toPicture(camera.see({0, 100, 0}), AREA);

    QCOMPARE(center, AREA.center());
    QVERIFY(right.x() > center.x());
    QCOMPARE(right.y(), center.y());
    QVERIFY(up.y() < center.y());
    QCOMPARE(camera.eye().z, 1000.0);
}

void tst_zoHPCRoomCamera::fartherIsSmaller()
{
    const zoHPCRoomCamera camera = lookingAlongZ();

    const double near = camera.toPicture(camera.see({100, 0, 0}), AREA).x() - AREA.center().x();
    const double far = camera.toPicture(camera.see({100, 0, -1000}), AREA).x() - AREA.center().x();

    QVERIFY(std::abs(near - 2.0 * far) < 1e-9);
}

void tst_zoHPCRoomCamera::yawGoesRoundTheTarget()
{
    zoHPCRoomCamera camera = lookingAlongZ();

    camera.orbit(90.0, 0.0);

    QVERIFY(std::abs(camera.eye().x - 1000.0) < 1e-9);
    QVERIFY(std::abs(camera.eye().z) < 1e-9);
    camera.orbit(360.0, 0.0);
    QVERIFY(std::abs(camera.yaw - 90.0) < 1e-9);
}

void tst_zoHPCRoomCamera::pitchStaysOffTheVertical()
{
    zoHPCRoomCamera camera = lookingAlongZ();

    camera.orbit(0.0, 500.0);
    QCOMPARE(camera.pitch, 89.0);
    QVERIFY(camera.eye().y > 999.0);
    camera.orbit(0.0, -500.0);
    QCOMPARE(camera.pitch, -89.0);
}

void tst_zoHPCRoomCamera::zoomComesNearerWithinLimits()
{
    zoHPCRoomCamera camera = lookingAlongZ();

    camera.zoom(2.0);
    QCOMPARE(camera.distance, 500.0);
    camera.zoom(0.0);
    QCOMPARE(camera.distance, 500.0);
    camera.zoom(1e12);
    QVERIFY(camera.distance >= 1.0);
    camera.zoom(1e-30);
    QVERIFY(std::isfinite(camera.distance));
}

void tst_zoHPCRoomCamera::panMovesTheRoomWithTheMouse()
{
    zoHPCRoomCamera camera;

    camera.pan(QPointF(30.0, -20.0), AREA);

    const QPointF place = camera.toPicture(camera.see(Point3()), AREA);
    QVERIFY(std::abs(place.x() - (AREA.center().x() + 30.0)) < 1e-6);
    QVERIFY(std::abs(place.y() - (AREA.center().y() - 20.0)) < 1e-6);
}

void tst_zoHPCRoomCamera::rayGoesThroughThePointThatItShows()
{
    zoHPCRoomCamera camera;
    const Point3 point{700, -300, -1200};
    const QPointF place = camera.toPicture(camera.see(point), AREA);

    const Point3 ray = unit(camera.rayThrough(place, AREA));

    QVERIFY(length(cross(ray, unit(point - camera.eye()))) < 1e-9);
    QVERIFY(dot(ray, point - camera.eye()) > 0.0);
}

void tst_zoHPCRoomCamera::parallelRaysShowTheSameAtAnyDepth()
{
    zoHPCRoomCamera camera;
    camera.isParallel = true;
    camera.yaw = 0.0;
    const auto place = [&camera](double x, double y, double z) {
        return camera.toPicture(camera.see({x, y, z}), AREA);
    };

    camera.pitch = 0.0;
    QCOMPARE(place(500, 300, -9000), place(500, 300, 20000));
    QVERIFY(camera.see({500, 300, 20000}).depth > zoHPCRoomCamera::Near);
    camera.pitch = 90.0;
    const QPointF way = place(500, -4000, 300) - place(500, 4000, 300);
    QVERIFY(std::abs(way.x()) < 1e-6 && std::abs(way.y()) < 1e-6);
    QVERIFY(place(0, 0, -1000).y() < place(0, 0, 0).y()); // what the viewer looks at is above him
    const QPointF square = place(1000, 0, 1000) - place(0, 0, 0);
    QVERIFY(std::abs(square.x() - square.y()) < 1e-6);
}

void tst_zoHPCRoomCamera::parallelRayGoesThroughThePointThatItShows()
{
    zoHPCRoomCamera camera;
    camera.isParallel = true;
    const Point3 point{700, -300, -1200};
    const QPointF place = camera.toPicture(camera.see(point), AREA);

    const Point3 ray = unit(camera.rayThrough(place, AREA));
    const Point3 way = point - camera.rayStart(place, AREA);

    QVERIFY(length(cross(ray, way)) < 1e-3);
    QVERIFY(dot(ray, way) > 0.0);
}

void tst_zoHPCRoomCamera::fitTakesInAllPoints_data()
{
    QTest::addColumn<bool>("isParallel");
    QTest::addColumn<double>("yaw");
    QTest::addColumn<double>("pitch");
    QTest::addColumn<QRectF>("area");

    QTest::newRow("from-behind") << false << 0.0 << 0.0 << AREA;
    QTest::newRow("aslant") << false << 28.0 << 18.0 << AREA;
    QTest::newRow("from-above") << false << 0.0 << 89.0 << AREA;
    QTest::newRow("from-the-front-below") << false << 170.0 << -40.0 << AREA;
    QTest::newRow("narrow") << false << 28.0 << 18.0 << QRectF(50.0, 20.0, 100.0, 900.0);
    QTest::newRow("flat") << false << 28.0 << 18.0 << QRectF(0.0, 0.0, 900.0, 80.0);
    QTest::newRow("elevation") << true << 0.0 << 0.0 << AREA;
    QTest::newRow("plan") << true << 0.0 << 90.0 << AREA;
    QTest::newRow("narrow-plan") << true << 0.0 << 90.0 << QRectF(50.0, 20.0, 100.0, 900.0);
}

void tst_zoHPCRoomCamera::fitTakesInAllPoints()
{
    QFETCH(bool, isParallel);
    QFETCH(double, yaw);
    QFETCH(double, pitch);
    QFETCH(QRectF, area);
    zoHPCRoomCamera camera;
    camera.isParallel = isParallel;
    camera.yaw = yaw;
    camera.pitch = pitch;
    const std::vector<Point3> points{{0, 0, 0}, {-8000, -500, -1500}, {8000, -500, -1500}, {100, 3000, -900}};

    camera.fit(points, area, 10.0);

    for (const Point3& point : points) {
        QVERIFY(camera.see(point).depth > zoHPCRoomCamera::Near);
        QVERIFY(area.adjusted(9.0, 9.0, -9.0, -9.0).contains(camera.toPicture(camera.see(point), area)));
    }
}

void tst_zoHPCRoomCamera::fitFillsThePicture()
{
    zoHPCRoomCamera camera = lookingAlongZ();

    camera.fit({{-1000, -100, -500}, {1000, 100, -500}}, AREA);

    const QPointF right = camera.toPicture(camera.see({1000, 100, -500}), AREA);
    QVERIFY(std::abs(right.x() - AREA.right()) < 1.0);
}

void tst_zoHPCRoomCamera::fitWithoutPointsChangesNothing()
{
    zoHPCRoomCamera camera;

    camera.fit({}, AREA);
    camera.fit({{1, 2, 3}}, QRectF());

    QVERIFY(camera == zoHPCRoomCamera());
}

void tst_zoHPCRoomCamera::equalCamerasAreEqual()
{
    zoHPCRoomCamera camera;
    QVERIFY(camera == zoHPCRoomCamera());
    camera.orbit(1.0, 0.0);
    QVERIFY(camera != zoHPCRoomCamera());
}

ZO_TEST_MAIN(tst_zoHPCRoomCamera)

#include "tst_zoHPCRoomCamera.moc"
