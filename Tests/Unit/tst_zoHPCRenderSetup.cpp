#include "zoTestCase.h"

#include <zoHPCConfiguration.h>
#include <zoHPCDocumentText.h>
#include <zoHPCRenderSetup.h>

#include <QApplication>
#include <QDomDocument>

#include <memory>

// A configuration as it is rendered.
class tst_zoHPCRenderSetup final : public zoTestCase
{
    Q_OBJECT

private slots:
    void cellsCountFromTheTopLeft_data();
    void cellsCountFromTheTopLeft();
    void edgesAreThoseOfThePlane_data();
    void edgesAreThoseOfThePlane();
    void edgesOfTilesFollowFromTheOverlap();
    void edgesGrowWithTheViewport();
    void rightEyeOffsetIsThatOfTheWall_data();
    void rightEyeOffsetIsThatOfTheWall();
    void eyeSeparationIsThatOfTheDisplay();
    void viewportsComeInTheirOrder();

private:
    // Of a node "a" that shows the projections of that name, one window each, and of the projections.
    void read(const QString& projections, const QStringList& shown,
              const QString& viewport = QStringLiteral("position=\"fill\""));
    const zoHPCRenderSetup::Picture& picture(int index) const
    {
        return m_setup->pictures().at(std::size_t(index));
    }

    std::unique_ptr<zoHPCConfiguration> m_configuration;
    std::unique_ptr<zoHPCRenderSetup> m_setup;
};

namespace
{
const char* const PowerWall =
    R"(<projection name="W" type="powerwall" rows="2" columns="3" overlapx="100" overlapy="50"
    width="3100" height="1950" distance="1500" edgeblending="true" rightoffsetx="4" rightoffsety="-5"/>)";
const char* const Cave = R"(<projection name="C" type="cave" rows="2" columns="2" overlapx="0" overlapy="0"
    cavewidth="2000" caveheight="2000" cavedepth="2000" left="true" front="true"/>)";
const char* const Tiles = R"(<projection name="T" type="wall" rows="3" columns="2" overlapx="20" overlapy="10"
    distance="900" edgeblending="true" rightoffsetx="6" rightoffsety="1"/>)";
const char* const Plane =
    R"(<projection name="P" type="plane" x1="-500" y1="-500" z1="-1000" x2="500" y2="-500" z2="-1000"
    x3="500" y3="500" z3="-1000" edgeblending="true" leftedge="0.1" rightedge="0.2" topedge="0.3" bottomedge="0.4"/>)";
const char* const PlaneWithout =
    R"(<projection name="Q" type="plane" x1="-500" y1="-500" z1="-1000" x2="500" y2="-500"
    z2="-1000" x3="500" y3="500" z3="-1000" edgeblending="false" leftedge="0.1"/>)";
} // namespace

void tst_zoHPCRenderSetup::read(const QString& projections, const QStringList& shown, const QString& viewport)
{
    QString text =
        QStringLiteral("<cluster version=\"1\"><master><network><node name=\"a\"/></network></master>") +
        projections + QStringLiteral("<display eyeseparation=\"63\">");
    for (const QString& name : shown)
        text +=
            QStringLiteral(
                "<window node=\"a\" width=\"200\" height=\"100\"><viewport projection=\"%1\" %2/></window>")
                .arg(name, viewport);
    text += QStringLiteral("</display></cluster>");
    QDomDocument document;
    QVERIFY(zoHPCDocumentText::parse(text, document));
    m_configuration = std::make_unique<zoHPCConfiguration>();
    m_configuration->read(document);
    m_setup = std::make_unique<zoHPCRenderSetup>(m_configuration->displays(),
                                                 m_configuration->hosts().master(), 1.0);
    QCOMPARE(m_setup->pictures().size() + m_setup->leftOut().size(), std::size_t(shown.size()));
}

void tst_zoHPCRenderSetup::cellsCountFromTheTopLeft_data()
{
    QTest::addColumn<QString>("projections");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");

    QTest::newRow("power-wall-first") << PowerWall << "W row:1 col:1" << 1 << 1 << 2 << 3;
    QTest::newRow("power-wall-last") << PowerWall << "W row:2 col:3" << 2 << 3 << 2 << 3;
    QTest::newRow("power-wall-whole") << PowerWall << "W" << 0 << 0 << 0 << 0;
    QTest::newRow("cave-first-wall") << Cave << "C Left row:2 col:1" << 2 << 1 << 2 << 2;
    QTest::newRow("cave-second-wall") << Cave << "C Front row:1 col:2" << 1 << 2 << 2 << 2;
    QTest::newRow("tile") << Tiles << "T row:3 col:2" << 3 << 2 << 3 << 2;
    QTest::newRow("plane") << Plane << "P" << 0 << 0 << 0 << 0;
}

void tst_zoHPCRenderSetup::cellsCountFromTheTopLeft()
{
    QFETCH(QString, projections);
    QFETCH(QString, shown);
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(int, rows);
    QFETCH(int, columns);

    read(projections, {shown});

    const zoHPCRenderSetup::Cell& cell = picture(0).cell;
    QCOMPARE(cell.row, row);
    QCOMPARE(cell.column, column);
    QCOMPARE(cell.rows, rows);
    QCOMPARE(cell.columns, columns);
}

void tst_zoHPCRenderSetup::edgesAreThoseOfThePlane_data()
{
    QTest::addColumn<QString>("projections");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<double>("left");
    QTest::addColumn<double>("right");
    QTest::addColumn<double>("top");
    QTest::addColumn<double>("bottom");

    // Of 200 x 100 pixels. What documents call the top edge is the lower one on the wall.
    QTest::newRow("plane") << Plane << "P" << 20.0 << 40.0 << 40.0 << 30.0;
    QTest::newRow("without-blending") << PlaneWithout << "Q" << 0.0 << 0.0 << 0.0 << 0.0;
    // Tiles of 1100 x 1000 mm.
    QTest::newRow("first-tile") << PowerWall << "W row:1 col:1" << 0.0 << 200.0 / 11.0 << 0.0 << 5.0;
    QTest::newRow("inner-tile") << PowerWall << "W row:1 col:2" << 200.0 / 11.0 << 200.0 / 11.0 << 0.0 << 5.0;
    QTest::newRow("last-tile") << PowerWall << "W row:2 col:3" << 200.0 / 11.0 << 0.0 << 5.0 << 0.0;
    QTest::newRow("whole-wall") << PowerWall << "W" << 0.0 << 0.0 << 0.0 << 0.0;
}

void tst_zoHPCRenderSetup::edgesAreThoseOfThePlane()
{
    QFETCH(QString, projections);
    QFETCH(QString, shown);
    QFETCH(double, left);
    QFETCH(double, right);
    QFETCH(double, top);
    QFETCH(double, bottom);

    read(projections, {shown});

    const zoHPCRenderSetup::Edges& edges = picture(0).edges;
    QCOMPARE(edges.left, left);
    QCOMPARE(edges.right, right);
    QCOMPARE(edges.top, top);
    QCOMPARE(edges.bottom, bottom);
    QCOMPARE(edges.isEmpty(), left + right + top + bottom == 0.0);
}

void tst_zoHPCRenderSetup::edgesOfTilesFollowFromTheOverlap()
{
    read(QString::fromLatin1(Tiles), {QStringLiteral("T row:2 col:1"), QStringLiteral("T row:1 col:2")});

    const zoHPCRenderSetup::Edges& inner = picture(0).edges;
    QCOMPARE(inner.left, 0.0);
    QCOMPARE(inner.right, 20.0);
    QCOMPARE(inner.top, 10.0);
    QCOMPARE(inner.bottom, 10.0);
    const zoHPCRenderSetup::Edges& corner = picture(1).edges;
    QCOMPARE(corner.left, 20.0);
    QCOMPARE(corner.top, 0.0);
}

void tst_zoHPCRenderSetup::edgesGrowWithTheViewport()
{
    read(QString::fromLatin1(Plane), {QStringLiteral("P")},
         QStringLiteral("position=\"custom\" x1=\"0\" y1=\"0\" x2=\"0.5\" y2=\"1\""));

    QCOMPARE(picture(0).edges.left, 10.0);
    QCOMPARE(picture(0).edges.bottom, 30.0);
}

void tst_zoHPCRenderSetup::rightEyeOffsetIsThatOfTheWall_data()
{
    QTest::addColumn<QString>("projections");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QPoint>("offset");

    QTest::newRow("power-wall") << PowerWall << "W" << QPoint(4, -5);
    QTest::newRow("plane-of-power-wall") << PowerWall << "W row:2 col:1" << QPoint(4, -5);
    QTest::newRow("tile") << Tiles << "T row:2 col:1" << QPoint(6, 1);
    QTest::newRow("tiled-wall") << Tiles << "T" << QPoint(6, 1);
    QTest::newRow("plane") << Plane << "P" << QPoint();
    QTest::newRow("cave") << Cave << "C Front row:1 col:1" << QPoint();
}

void tst_zoHPCRenderSetup::rightEyeOffsetIsThatOfTheWall()
{
    QFETCH(QString, projections);
    QFETCH(QString, shown);
    QFETCH(QPoint, offset);

    read(projections, {shown});

    QCOMPARE(picture(0).rightEyeOffset, offset);
}

void tst_zoHPCRenderSetup::eyeSeparationIsThatOfTheDisplay()
{
    read(QString::fromLatin1(Plane), {QStringLiteral("P")},
         QStringLiteral("position=\"fill\" eye=\"verticalinterlaced\" flipx=\"true\" flipy=\"false\""));

    QCOMPARE(picture(0).eyeSeparation, 63.0);
    QCOMPARE(m_setup->eyeSeparation(), 63.0);
    QCOMPARE(picture(0).eye, QStringLiteral("verticalinterlaced"));
    QVERIFY(picture(0).flipX && !picture(0).flipY);
    read(QString(), {});
    QCOMPARE(m_setup->eyeSeparation(), 65.0);
}

void tst_zoHPCRenderSetup::viewportsComeInTheirOrder()
{
    read(QString::fromLatin1(Plane), {QStringLiteral("P"), QStringLiteral("none"), QStringLiteral("P")});

    QCOMPARE(picture(0).viewport, 0);
    QCOMPARE(picture(1).viewport, 2);
    QCOMPARE(m_setup->leftOut().at(0).viewport, 1);
    QCOMPARE(m_setup->nameOf(m_setup->layout().viewports()[2]),
             QStringLiteral("viewport 1 of window 3 of display 1"));
}

ZO_TEST_MAIN(tst_zoHPCRenderSetup)
#include "tst_zoHPCRenderSetup.moc"
