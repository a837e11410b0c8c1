#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCEyePairs.h>
#include <zoHPCPlane.h>
#include <zoHPCTileChecks.h>

#include <QApplication>
#include <QtMath>

using P = zoHPCProjectionItem;

// Planes of one eye and those of the other.
class tst_zoHPCEyePairs final : public zoTestCase
{
    Q_OBJECT

private slots:
    void planesBelongTogether_data();
    void planesBelongTogether();
    void usersHaveEyesOfTheirOwn();
    void oneEyeIsNoPair();
    void tilesInPixelsBelongByTheirPlaces_data();
    void tilesInPixelsBelongByTheirPlaces();
    void manyPlanes();

private:
    static void addPlane(zoHPCSetup& setup, const QString& name, const zoHPCPlane& plane)
    {
        plane.toItem(*setup.addProjection(name, QStringLiteral("plane")));
    }
    static zoHPCPlane plane(const Point3& center, double width, double height, double turned)
    {
        const double angle = qDegreesToRadians(turned);
        const Point3 half{width / 2 * cos(angle), 0, width / 2 * sin(angle)};
        const Point3 up{0, height / 2, 0};
        return {center - half - up, center + half - up, center + half + up};
    }
};

void tst_zoHPCEyePairs::planesBelongTogether_data()
{
    QTest::addColumn<double>("shift"); // of a plane of 2000 x 1000 mm
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("turned");
    QTest::addColumn<bool>("together");

    QTest::newRow("the-same") << 0.0 << 1.0 << 0.0 << true;
    QTest::newRow("some-millimetres-off") << 7.0 << 1.0 << 0.0 << true;
    QTest::newRow("below-half-a-side") << 999.0 << 1.0 << 0.0 << true;
    QTest::newRow("half-a-side") << 1000.0 << 1.0 << 0.0 << false;
    QTest::newRow("its-neighbour") << 2000.0 << 1.0 << 0.0 << false;
    QTest::newRow("half-as-large") << 0.0 << 0.5 << 0.0 << true;
    QTest::newRow("less-than-half-as-large") << 0.0 << 0.49 << 0.0 << false;
    QTest::newRow("twice-as-large") << 0.0 << 2.0 << 0.0 << true;
    QTest::newRow("more-than-twice-as-large") << 0.0 << 2.01 << 0.0 << false;
    QTest::newRow("turned-outward") << 0.0 << 1.0 << 59.0 << true;
    QTest::newRow("turned-too-far") << 0.0 << 1.0 << 61.0 << false;
    QTest::newRow("from-behind") << 0.0 << 1.0 << 180.0 << false;
    QTest::newRow("microdisplays") << 65.0 << 0.0095 << 0.0 << false; // one of 19 mm beside one of 2 m
}

void tst_zoHPCEyePairs::planesBelongTogether()
{
    QFETCH(double, shift);
    QFETCH(double, scale);
    QFETCH(double, turned);
    QFETCH(bool, together);
    zoHPCSetup setup;
    addPlane(setup, QStringLiteral("l"), plane({0, 0, -1500}, 2000, 1000, 0));
    addPlane(setup, QStringLiteral("r"), plane({shift, 0, -1500}, scale * 2000, scale * 1000, turned));
    setup.addWindow(QStringLiteral("a"), QStringLiteral("l"), QStringLiteral("left"));
    setup.addWindow(QStringLiteral("b"), QStringLiteral("r"), QStringLiteral("right"));

    QCOMPARE(zoHPCTileChecks::tilesForOneEye(setup.layout()).size(), size_t(together ? 0 : 2));
}

void tst_zoHPCEyePairs::usersHaveEyesOfTheirOwn()
{
    zoHPCSetup setup;
    addPlane(setup, QStringLiteral("l"), plane({-32, 0, -30}, 19, 11, 0));
    addPlane(setup, QStringLiteral("r"), plane({32, 0, -30}, 19, 11, 0));
    setup.addWindow(QStringLiteral("a"), QStringLiteral("l"), QStringLiteral("left"));
    zoHPCDisplayItem* const second = setup.addDisplay(QStringLiteral("2"));
    setup.addWindow(QStringLiteral("b"), QStringLiteral("r"), QStringLiteral("right"), second);

    QCOMPARE(zoHPCTileChecks::tilesForOneEye(setup.layout()).size(), size_t(2));
    second->setString(zoHPCDisplayItem::User, QStringLiteral("1"));
    QVERIFY(zoHPCTileChecks::tilesForOneEye(setup.layout()).empty());
}

void tst_zoHPCEyePairs::oneEyeIsNoPair()
{
    zoHPCSetup setup;
    for (const char* name : {"a", "b"}) {
        addPlane(setup, QString::fromLatin1(name), plane({0, 0, -1500}, 2000, 1000, 0));
        setup.addWindow(QStringLiteral("n"), QString::fromLatin1(name), QStringLiteral("left"));
    }

    QCOMPARE(zoHPCTileChecks::tilesForOneEye(setup.layout()).size(), size_t(2));
}

void tst_zoHPCEyePairs::tilesInPixelsBelongByTheirPlaces_data()
{
    QTest::addColumn<int>("columns"); // of the right wall
    QTest::addColumn<int>("problems");

    QTest::newRow("equal-layout") << 3 << 0;
    QTest::newRow("other-layout") << 2 << 2;
}

void tst_zoHPCEyePairs::tilesInPixelsBelongByTheirPlaces()
{
    QFETCH(int, columns);
    QFETCH(int, problems);
    zoHPCSetup setup;
    for (const char* eye : {"left", "right"}) {
        const QString name = QString::fromLatin1(eye);
        zoHPCProjectionItem* const wall = setup.addProjection(name, QStringLiteral("wall"));
        wall->setInt(P::Columns, name == QLatin1String("left") ? 3 : columns);
        wall->update();
        for (int i = 0; i < wall->childCount(); ++i)
            setup.addWindow(QStringLiteral("n"), wall->child(i)->text(0), name);
    }

    QCOMPARE(int(zoHPCTileChecks::tilesForOneEye(setup.layout()).size()), problems);
}

// Counts, not times: what grows out of proportion runs into the time limit.
void tst_zoHPCEyePairs::manyPlanes()
{
    zoHPCSetup setup;
    std::vector<zoHPCEyePairs::Tile> tiles;
    for (int i = 0; i < 20000; ++i) {
        const int place = i / 2;
        addPlane(setup, QString::number(i),
                 plane({place % 100 * 2000.0, place / 100 * 1000.0, -1500}, 2000, 1000, 0));
        tiles.push_back({i, QStringLiteral("1"), i % 2 == 0 ? zoHPCLayout::LeftEye : zoHPCLayout::RightEye});
    }

    const std::vector<bool> pairs = zoHPCEyePairs::find(setup.layout(), tiles);

    QCOMPARE(std::count(pairs.begin(), pairs.end(), true), std::ptrdiff_t(20000));
}

ZO_TEST_MAIN(tst_zoHPCEyePairs)
#include "tst_zoHPCEyePairs.moc"
