#include "zoTestCase.h"

#include <zoHPCCurvedWall.h>
#include <zoHPCWallBuilder.h>

#include <QApplication>
#include <QDomDocument>
#include <QTest>
#include <QtMath>

#include <cmath>

namespace
{
using Plan = zoHPCWallPlan;

// A tile as a document has it: nothing here knows how it was computed.
struct Tile
{
    Point3 lowerLeft;
    Point3 lowerRight;
    Point3 upperRight;

    Point3 upperLeft() const { return lowerLeft + (upperRight - lowerRight); }
    Point3 center() const { return 0.5 * (lowerLeft + upperRight); }
    Point3 normal() const { return unit(cross(lowerRight - lowerLeft, upperRight - lowerRight)); }
};

double number(const QDomElement& element, const char* axis, int corner)
{
    return element.attribute(QLatin1String(axis) + QString::number(corner)).toDouble();
}

Point3 corner(const QDomElement& element, int corner)
{
    return {number(element, "x", corner), number(element, "y", corner), number(element, "z", corner)};
}

// By row and column, read from the attributes of the document.
std::vector<std::vector<Tile>> tilesOf(const Plan& plan)
{
    const zoHPCWallBuilder::Result result = zoHPCWallBuilder::build(plan);
    QDomDocument document;
    document.setContent(result.text);
    std::vector<std::vector<Tile>> tiles(std::size_t(plan.rows),
                                         std::vector<Tile>(std::size_t(plan.columns)));
    int count = 0;
    for (QDomElement e = document.documentElement().firstChildElement("projection"); !e.isNull();
         e = e.nextSiblingElement("projection")) {
        const QStringList place =
            e.attribute("name").section(QLatin1String("row:"), 1).split(QLatin1String(" col:"));
        tiles.at(std::size_t(place.at(0).toInt() - 1)).at(std::size_t(place.at(1).toInt() - 1)) = {
            corner(e, 1), corner(e, 2), corner(e, 3)};
        ++count;
    }
    return count == plan.tileCount() ? tiles : std::vector<std::vector<Tile>>();
}

struct Circle
{
    double x = 0.0;
    double z = 0.0;
    double radius = 0.0;
};

// Through three points seen from above.
Circle circleThrough(const Point3& a, const Point3& b, const Point3& c)
{
    const double bx = b.x - a.x;
    const double bz = b.z - a.z;
    const double cx = c.x - a.x;
    const double cz = c.z - a.z;
    const double d = 2.0 * (bx * cz - bz * cx);
    const double bb = bx * bx + bz * bz;
    const double cc = cx * cx + cz * cz;
    const double x = (cz * bb - bz * cc) / d;
    const double z = (bx * cc - cx * bb) / d;
    return {a.x + x, a.z + z, std::hypot(x, z)};
}

double distance(const Point3& a, const Point3& b)
{
    return length(b - a);
}

// Degrees from one direction to another.
double angleBetween(const Point3& a, const Point3& b)
{
    return qRadiansToDegrees(std::acos(qBound(-1.0, dot(a, b), 1.0)));
}

constexpr double s_tolerance = 1e-6; // mm
} // namespace

// Curved walls: the corners that documents have, measured as a surveyor would.
class tst_zoHPCCurvedWall final : public zoTestCase
{
    Q_OBJECT

private slots:
    void tilesStandOnTheCylinder_data();
    void tilesStandOnTheCylinder();
    void angleAndRadiusFollowFromEachOther_data();
    void angleAndRadiusFollowFromEachOther();
    void fullCircleCloses();
    void limits_data();
    void limits();
};

void tst_zoHPCCurvedWall::tilesStandOnTheCylinder_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("rows");
    QTest::addColumn<double>("radius"); // 0: by angle
    QTest::addColumn<double>("angle");
    QTest::addColumn<double>("across"); // what neighbours share, mm
    QTest::addColumn<double>("down");

    QTest::newRow("edge-to-edge") << 5 << 1 << 3000.0 << 0.0 << 0.0 << 0.0;
    QTest::newRow("bezels") << 8 << 3 << 4000.0 << 0.0 << -3.5 << -5.0;
    QTest::newRow("wide-bezels-on-a-small-circle") << 4 << 2 << 1200.0 << 0.0 << -150.0 << -80.0;
    QTest::newRow("blended") << 4 << 2 << 5000.0 << 0.0 << 120.0 << 60.0;
    QTest::newRow("by-angle") << 6 << 2 << 0.0 << 12.5 << 0.0 << 0.0;
    QTest::newRow("by-angle-with-bezels") << 7 << 2 << 0.0 << 20.0 << -10.0 << -12.0;
    QTest::newRow("by-angle-and-blended") << 3 << 1 << 0.0 << 15.0 << 90.0 << 0.0;
    QTest::newRow("more-than-half-a-circle") << 14 << 1 << 3000.0 << 0.0 << -4.0 << 0.0;
}

void tst_zoHPCCurvedWall::tilesStandOnTheCylinder()
{
    QFETCH(int, columns);
    QFETCH(int, rows);
    QFETCH(double, radius);
    QFETCH(double, angle);
    QFETCH(double, across);
    QFETCH(double, down);
    Plan plan = Plan::of(Plan::Kind::Curved);
    plan.columns = columns;
    plan.rows = rows;
    plan.size = {1200.0, 675.0};
    plan.tilePixels = {1920, 1080};
    plan.overlapUnit = Plan::Unit::Millimetres;
    plan.overlap = {across, down};
    plan.curvature = radius > 0.0 ? Plan::Curvature::Radius : Plan::Curvature::Angle;
    plan.radius = radius;
    plan.columnAngle = angle;
    plan.viewer = {150.0, -200.0, radius > 0.0 ? 0.9 * radius : 3000.0};
    plan.hosts = QStringLiteral("n[1-%1]").arg(plan.tileCount());

    const std::vector<std::vector<Tile>> tiles = tilesOf(plan);

    QVERIFY(!tiles.empty());
    const Circle circle =
        circleThrough(tiles[0].front().lowerLeft, tiles[0].front().lowerRight, tiles[0].back().lowerRight);
    if (radius > 0.0)
        QVERIFY(std::abs(circle.radius - radius) < s_tolerance);
    // The axis is to the left of a viewer who is to the right; he is so far from what is straight ahead.
    QVERIFY(std::abs(circle.x + 150.0) < s_tolerance);
    QVERIFY(std::abs(circle.radius - circle.z - plan.viewer.z) < s_tolerance);
    double top = -HUGE_VAL;
    double bottom = HUGE_VAL;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const Tile& tile = tiles[std::size_t(row)][std::size_t(column)];
            for (const Point3& point : {tile.lowerLeft, tile.lowerRight, tile.upperRight, tile.upperLeft()}) {
                QVERIFY(std::abs(std::hypot(point.x - circle.x, point.z - circle.z) - circle.radius) <
                        s_tolerance);
                top = std::max(top, point.y);
                bottom = std::min(bottom, point.y);
            }
            QVERIFY(std::abs(distance(tile.lowerLeft, tile.lowerRight) - 1200.0) < s_tolerance);
            QVERIFY(std::abs(distance(tile.lowerRight, tile.upperRight) - 675.0) < s_tolerance);
            // Upright, and its front is where the viewer is.
            QCOMPARE(tile.normal().y, 0.0);
            QVERIFY(dot(tile.normal(), Point3() - tile.center()) > 0.0);
            if (row > 0) {
                const Tile& above = tiles[std::size_t(row - 1)][std::size_t(column)];
                QVERIFY(std::abs(above.lowerLeft.y - tile.upperLeft().y + down) < s_tolerance);
                QVERIFY(std::abs(above.lowerLeft.x - tile.lowerLeft.x) < s_tolerance);
            }
            if (column == 0)
                continue;
            const Tile& left = tiles[std::size_t(row)][std::size_t(column - 1)];
            // Corners coincide, or are a bezel apart, or as far over each other as the tiles share.
            QVERIFY(std::abs(distance(left.lowerRight, tile.lowerLeft) - std::abs(across)) < s_tolerance);
            const double onward = dot(tile.lowerLeft - left.lowerRight, left.lowerRight - left.lowerLeft);
            QVERIFY(across > 0.0 ? onward < 0.0 : across < 0.0 ? onward > 0.0 : std::abs(onward) < 1e-3);
            // Columns turn toward the viewer from left to right.
            const double turn = angleBetween(left.normal(), tile.normal());
            QVERIFY(cross(left.normal(), tile.normal()).y < 0.0);
            if (angle > 0.0)
                QVERIFY(std::abs(turn - angle) < 1e-9 * angle + 1e-6);
            QVERIFY(std::abs(turn - plan.curveAngle()) < 1e-6);
        }
    }
    // As high above the viewer, who is 200 below the middle, as below it.
    QVERIFY(std::abs(top + bottom - 400.0) < s_tolerance);
    QVERIFY(std::abs(plan.curveRadius() - circle.radius) < s_tolerance);
}

void tst_zoHPCCurvedWall::angleAndRadiusFollowFromEachOther_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("overlap");
    QTest::addColumn<double>("radius");
    QTest::addColumn<double>("angle");

    // Six tiles as wide as the radius make the hexagon, four as wide as its root of two the square.
    QTest::newRow("hexagon") << 1000.0 << 0.0 << 1000.0 << 60.0;
    QTest::newRow("square") << 1000.0 * std::sqrt(2.0) << 0.0 << 1000.0 << 90.0;
    // A bezel that is as wide as the tile is one more side of the hexagon.
    QTest::newRow("bezel-of-a-side") << 1000.0 << -1000.0 << 1000.0 << 120.0;
    QTest::newRow("half-shared") << 1000.0 * std::sqrt(2.0) << 1000.0 << 1000.0 << 30.0;
}

void tst_zoHPCCurvedWall::angleAndRadiusFollowFromEachOther()
{
    QFETCH(double, width);
    QFETCH(double, overlap);
    QFETCH(double, radius);
    QFETCH(double, angle);

    QVERIFY(std::abs(zoHPCCurvedWall::angleOf(width, overlap, radius) - angle) < 1e-9);
    QVERIFY(std::abs(zoHPCCurvedWall::radiusOf(width, overlap, angle) - radius) < 1e-9);
}

// The last column is one bezel from the first.
void tst_zoHPCCurvedWall::fullCircleCloses()
{
    const double radius = zoHPCCurvedWall::radiusOf(800.0, -6.0, 30.0);
    const zoHPCCurvedWall wall(12, 1, QSizeF(800.0, 450.0), -6.0, 0.0, radius);

    QVERIFY(wall.isPossible());
    const zoHPCPlane first = wall.tile(1, 1);
    const zoHPCPlane last = wall.tile(1, 12);
    QVERIFY(std::abs(distance(last.lowerRight, first.lowerLeft) - 6.0) < s_tolerance);
}

void tst_zoHPCCurvedWall::limits_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("overlap");
    QTest::addColumn<bool>("isPossible");

    // On a circle of 1000.
    QTest::newRow("six-sides") << 6 << 1000.0 << 0.0 << true;
    QTest::newRow("seven-sides") << 7 << 1000.0 << 0.0 << false;
    QTest::newRow("one-as-wide-as-the-circle") << 1 << 2000.0 << 0.0 << true;
    QTest::newRow("wider-than-the-circle") << 1 << 2000.1 << 0.0 << false;
    QTest::newRow("nothing-left-to-turn-by") << 3 << 1000.0 << 1000.0 << false;
    // All of them fit, but the last one would be nearer to the first than a bezel.
    QTest::newRow("too-near-to-close") << 5 << 1000.0 << -259.0 << false;
    QTest::newRow("six-sides-with-bezels") << 6 << 1000.0 << -1.0 << false;
}

void tst_zoHPCCurvedWall::limits()
{
    QFETCH(int, columns);
    QFETCH(double, width);
    QFETCH(double, overlap);
    QFETCH(bool, isPossible);

    const zoHPCCurvedWall wall(columns, 1, QSizeF(width, 500.0), overlap, 0.0, 1000.0);

    QCOMPARE(wall.isPossible(), isPossible);
}

ZO_TEST_MAIN(tst_zoHPCCurvedWall)
#include "tst_zoHPCCurvedWall.moc"
