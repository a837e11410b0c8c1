#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCPlane.h>
#include <zoHPCStereoChecks.h>

#include <QApplication>
#include <QtMath>

#include <limits>

// Single planes that stand edge to edge, and one of them without stereo.
class tst_zoHPCPlaneWalls final : public zoTestCase
{
    Q_OBJECT

private slots:
    void theFewerOnesAreTold_data();
    void theFewerOnesAreTold();
    void neighboursStandEdgeToEdge_data();
    void neighboursStandEdgeToEdge();
    void copiesAreNoneOfTheWall();
    void usersHaveWallsOfTheirOwn();
    void theFixTakesTheModeOfTheOthers();
    void cornersThatAreNoNumbers_data();
    void cornersThatAreNoNumbers();
    void manyPlanes();

private:
    // Upright, its lower edge turned to the left, of 2000 x 1000 mm times the scale.
    static void addPlane(zoHPCSetup& setup, const QString& name, const QString& eye, const Point3& lowerLeft,
                         double scale = 1.0, double turned = 0.0)
    {
        const double angle = qDegreesToRadians(turned);
        const Point3 right{scale * 2000 * cos(angle), 0, scale * 2000 * sin(angle)};
        const Point3 up{0, scale * 1000, 0};
        zoHPCPlane(lowerLeft, lowerLeft + right, lowerLeft + right + up)
            .toItem(*setup.addProjection(name, QStringLiteral("plane")));
        setup.addWindow(QStringLiteral("n"), name, eye);
    }
    static QStringList toldIn(const zoHPCSetup& setup)
    {
        QStringList names;
        for (const zoHPCProblem& problem : zoHPCStereoChecks::monoTilesInStereoWalls(setup.layout()))
            names << problem.item->text(0);
        return names;
    }
};

void tst_zoHPCPlaneWalls::theFewerOnesAreTold_data()
{
    QTest::addColumn<QStringList>("eyes"); // of planes from left to right
    QTest::addColumn<QStringList>("told");

    const QString m = QStringLiteral("mono");
    const QString s = QStringLiteral("stereo");
    QTest::newRow("one") << QStringList{m} << QStringList{};
    QTest::newRow("two") << QStringList{m, s} << QStringList{};
    QTest::newRow("at-the-end") << QStringList{s, s, m} << QStringList{"2"};
    QTest::newRow("between") << QStringList{s, m, s} << QStringList{"1"};
    QTest::newRow("desk-with-one-in-stereo") << QStringList{m, s, m} << QStringList{};
    QTest::newRow("halves") << QStringList{s, s, m, m} << QStringList{};
    QTest::newRow("two-of-five") << QStringList{m, s, s, m, s} << QStringList{"0", "3"};
    QTest::newRow("all-in-stereo") << QStringList{s, s, s} << QStringList{};
    QTest::newRow("none-in-stereo") << QStringList{m, m, m} << QStringList{};
}

void tst_zoHPCPlaneWalls::theFewerOnesAreTold()
{
    QFETCH(QStringList, eyes);
    QFETCH(QStringList, told);
    for (const bool isColumn : {false, true}) {
        zoHPCSetup setup;
        for (int i = 0; i < eyes.size(); ++i) {
            addPlane(setup, QString::number(i), eyes[i],
                     {isColumn ? 0.0 : i * 2000.0, isColumn ? i * 1000.0 : 0.0, -1500});
        }

        QCOMPARE(toldIn(setup), told);
    }
}

void tst_zoHPCPlaneWalls::neighboursStandEdgeToEdge_data()
{
    QTest::addColumn<double>("x"); // where the last plane begins, beside one that ends at 0
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("turned");
    QTest::addColumn<bool>("isOfTheWall");

    QTest::newRow("edge-to-edge") << 0.0 << 0.0 << 1.0 << 0.0 << true;
    QTest::newRow("blended") << -199.0 << 0.0 << 1.0 << 0.0 << true;
    QTest::newRow("bezels") << 199.0 << 0.0 << 1.0 << 0.0 << true;
    QTest::newRow("too-far") << 200.0 << 0.0 << 1.0 << 0.0 << false;
    QTest::newRow("too-high") << 0.0 << 201.0 << 1.0 << 0.0 << false;
    QTest::newRow("corner-to-corner") << 0.0 << 1000.0 << 1.0 << 0.0 << false;
    QTest::newRow("as-large-as-measured") << 0.0 << 0.0 << 1.05 << 0.0 << true;
    QTest::newRow("larger") << 0.0 << 0.0 << 1.06 << 0.0 << false;
    QTest::newRow("smaller") << 0.0 << 0.0 << 0.94 << 0.0 << false;
    QTest::newRow("curved") << 0.0 << 0.0 << 1.0 << 36.0 << true;
    QTest::newRow("side-of-a-room") << 0.0 << 0.0 << 1.0 << 37.0 << false;
    QTest::newRow("cave") << 0.0 << 0.0 << 1.0 << 90.0 << false;
}

void tst_zoHPCPlaneWalls::neighboursStandEdgeToEdge()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, scale);
    QFETCH(double, turned);
    QFETCH(bool, isOfTheWall);
    zoHPCSetup setup;
    addPlane(setup, QStringLiteral("a"), QStringLiteral("stereo"), {-4000, 0, -1500});
    addPlane(setup, QStringLiteral("b"), QStringLiteral("stereo"), {-2000, 0, -1500});
    addPlane(setup, QStringLiteral("c"), QStringLiteral("mono"), {x, y, -1500}, scale, turned);

    QCOMPARE(toldIn(setup), isOfTheWall ? QStringList{"c"} : QStringList{});
}

void tst_zoHPCPlaneWalls::copiesAreNoneOfTheWall()
{
    for (const bool isFirst : {true, false}) {
        zoHPCSetup setup;
        if (isFirst)
            addPlane(setup, QStringLiteral("copy"), QStringLiteral("mono"), {0, 0, -1500});
        for (int i = 0; i < 3; ++i)
            addPlane(setup, QString::number(i), QStringLiteral("stereo"), {i * 2000.0, 0, -1500});
        if (!isFirst)
            addPlane(setup, QStringLiteral("copy"), QStringLiteral("mono"), {0, 0, -1500});
        // The same plane once more.
        setup.addWindow(QStringLiteral("desk"), QStringLiteral("1"), QStringLiteral("mono"));

        QCOMPARE(toldIn(setup), QStringList());
    }
}

void tst_zoHPCPlaneWalls::usersHaveWallsOfTheirOwn()
{
    zoHPCSetup setup;
    for (int i = 0; i < 3; ++i)
        addPlane(setup, QString::number(i), i == 1 ? QString() : QStringLiteral("stereo"),
                 {i * 2000.0, 0, -1500});
    zoHPCDisplayItem* const second = setup.addDisplay(QStringLiteral("2"));
    setup.addWindow(QStringLiteral("m"), QStringLiteral("1"), QStringLiteral("mono"), second);

    QCOMPARE(toldIn(setup), QStringList());
    second->setString(zoHPCDisplayItem::User, QStringLiteral("1"));
    QCOMPARE(toldIn(setup), QStringList{"1"});
}

void tst_zoHPCPlaneWalls::theFixTakesTheModeOfTheOthers()
{
    zoHPCSetup setup;
    for (int i = 0; i < 3; ++i) {
        addPlane(setup, QString::number(i),
                 i == 1 ? QStringLiteral("mono") : QStringLiteral("splitbottomtop"), {i * 2000.0, 0, -1500});
    }

    zoHPCStereoChecks::monoTilesInStereoWalls(setup.layout()).at(0).fix();

    QCOMPARE(setup.layout().viewports().at(1).item->getString(zoHPCViewportItem::Eye),
             QStringLiteral("splitbottomtop"));
    QCOMPARE(toldIn(setup), QStringList());
}

void tst_zoHPCPlaneWalls::cornersThatAreNoNumbers_data()
{
    QTest::addColumn<double>("scale");

    QTest::newRow("zero") << 0.0;
    QTest::newRow("tiny") << 1e-300;
    QTest::newRow("huge") << 1e200;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
    QTest::newRow("nan") << std::numeric_limits<double>::quiet_NaN();
}

void tst_zoHPCPlaneWalls::cornersThatAreNoNumbers()
{
    QFETCH(double, scale);
    zoHPCSetup setup;
    addPlane(setup, QStringLiteral("odd"), QStringLiteral("mono"), {0, 0, -1500}, scale);
    for (int i = 0; i < 2; ++i)
        addPlane(setup, QString::number(i), QStringLiteral("stereo"), {i * 2000.0, 0, -1500}, scale);

    QCOMPARE(toldIn(setup), QStringList());
    // A wall behind it.
    for (int i = 0; i < 3; ++i)
        addPlane(setup, QStringLiteral("good%1").arg(i),
                 i < 2 ? QStringLiteral("stereo") : QStringLiteral("mono"), {i * 2000.0, 0, 5000});
    QCOMPARE(toldIn(setup), QStringList("good2"));
}

// Counts, not times: what grows out of proportion runs into the time limit.
void tst_zoHPCPlaneWalls::manyPlanes()
{
    zoHPCSetup setup;
    QStringList mono;
    for (int row = 0; row < 100; ++row) {
        for (int column = 0; column < 100; ++column) {
            const QString name = QString::number(100 * row + column);
            const bool isMono = column % 3 == 0;
            addPlane(setup, name, isMono ? QStringLiteral("mono") : QStringLiteral("stereo"),
                     {column * 2000.0, row * 1000.0, -1500});
            if (isMono)
                mono << name;
        }
    }

    QCOMPARE(toldIn(setup), mono);
}

ZO_TEST_MAIN(tst_zoHPCPlaneWalls)
#include "tst_zoHPCPlaneWalls.moc"
