#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

// "zohpc describe" as a whole process.
class tst_zohpcDescribe final : public zoTestCase
{
    Q_OBJECT

private slots:
    void wallInADozenLines();
    void largeOneToo();
    void planesOfACurvedWallAreOneWall();
    void problemsAreCountedByKind();
    void jsonHasTheFacts();
    void pixelsAreThoseOfTheFirstViewportThatShowsIt();
};

void tst_zohpcDescribe::wallInADozenLines()
{
    const QByteArray text =
        zoCliFiles::read(QStringLiteral(ZO_DATA_DIR "/cluster/tiledwall-3x5-gateway.zhpc"));

    QCOMPARE(
        zoCommandRun::zohpc({"describe", "-"}, text).whole(),
        QByteArray(
            "-: 16 nodes in 2 networks\n"
            "Display nodes: tile-r[1-3]-c[1-5]\n"
            "Gateways: gateway\n"
            "Not rendering: gateway\n"
            "Network 1 (Uplink, 10g): gateway\n"
            "Network 2 (Wall, 1g, behind gateway): tile-r[1-3]-c[1-5]\n"
            "Projection Wall: wall, 5 x 3 tiles, 9600 x 3240 pixels, each tile 1920 x 1080 pixels, 2000 mm "
            "from the viewer\n"
            "Display 1: 15 windows on 15 screens, eyes mono, 65 mm apart\n"
            "Problems: none\n--- errors\n--- exit code 0\n"));
}

void tst_zohpcDescribe::largeOneToo()
{
    QString hosts;
    for (int i = 0; i < 40; ++i)
        hosts += QStringLiteral("{ a%1 b%1 } ").arg(i);

    const QByteArray text = zoCommandRun::zohpc({"new", "--wall", "10x8", "--hosts", hosts}).output;
    const zoCommandRun run = zoCommandRun::zohpc({"describe", "-"}, text);

    QVERIFY2(run.output.count('\n') <= 12, run.output.constData());
    QVERIFY(run.output.contains("-: 80 nodes in 40 networks\nDisplay nodes: a[0-39],b[0-39]\n"));
    QVERIFY(run.output.contains("Network 3: a2,b2\n  and 37 more networks\n"));
}

void tst_zohpcDescribe::planesOfACurvedWallAreOneWall()
{
    // Tiles that are as wide as the radius stand 60 degrees from each other.
    const QByteArray text =
        zoCommandRun::zohpc({"new", "--curved", "3x2", "--tile-size", "2000x1125", "--radius", "2000",
                             "--overlap", "0x-8mm", "--hosts", "n[1-6]"})
            .output;

    const zoCommandRun run = zoCommandRun::zohpc({"describe", "-"}, text);
    const zoCommandRun json = zoCommandRun::zohpc({"describe", "--json", "-"}, text);

    QVERIFY2(run.output.contains(
                 "\nProjection Wall: plane, 3 x 2 tiles, 6000 x 2258 mm, 5760 x 2168 pixels, each tile "
                 "2000 x 1125 mm = 1920 x 1080 pixels, overlap 0 x -8 mm, 60 degrees from column to "
                 "column\nDisplay 1:"),
             run.output.constData());
    QCOMPARE(QJsonDocument::fromJson(json.output).object().value("projections").toArray().size(), 6);
}

void tst_zohpcDescribe::problemsAreCountedByKind()
{
    const QByteArray text = "<cluster version=\"1\"><master><network><node name=\"a\"/></network></master>"
                            "<display><window node=\"x\"/><window node=\"y\"/></display></cluster>";

    const zoCommandRun run = zoCommandRun::zohpc({"describe", "-"}, text);

    QVERIFY2(run.output.contains("window-with-unknown-node (2)"), run.output.constData());
    QVERIFY(run.output.contains("Display nodes: none\n"));
    QCOMPARE(run.exitCode, 0);
}

void tst_zohpcDescribe::jsonHasTheFacts()
{
    const QByteArray text = zoCliFiles::read(QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"));

    const QJsonObject object =
        QJsonDocument::fromJson(zoCommandRun::zohpc({"describe", "--json", "-"}, text).output).object();

    QCOMPARE(object.value("nodes").toInt(), 4);
    QCOMPARE(object.value("display_nodes").toArray(),
             (QJsonArray{"wall-r1-c1", "wall-r1-c2", "wall-r2-c1", "wall-r2-c2"}));
    const QJsonObject wall = object.value("projections").toArray().at(0).toObject();
    QCOMPARE(wall.value("size_mm").toArray(), (QJsonArray{3600, 2160}));
    QCOMPARE(wall.value("tile_mm").toArray(), (QJsonArray{1920, 1200}));
    QCOMPARE(wall.value("size_pixels").toArray(), (QJsonArray{3600, 2160}));
    QCOMPARE(wall.value("overlap_mm").toArray(), (QJsonArray{240, 240}));
    QCOMPARE(wall.value("distance_mm").toInt(), 2500);
    const QJsonObject display = object.value("displays").toArray().at(0).toObject();
    QCOMPARE(display.value("windows").toInt(), 4);
    QCOMPARE(display.value("eyes").toArray(), QJsonArray{"mono"});
    QCOMPARE(object.value("problems").toObject(), QJsonObject());
}

// Viewports that show nothing, or something else, or have no pixels, come first.
void tst_zohpcDescribe::pixelsAreThoseOfTheFirstViewportThatShowsIt()
{
    const QByteArray text =
        "<cluster version=\"1\"><master><network><node name=\"n\"/></network></master>"
        "<projection name=\"A\" type=\"plane\" x1=\"0\" x2=\"100\" x3=\"100\" y3=\"50\"/>"
        "<projection name=\"B\" type=\"plane\" x1=\"200\" x2=\"300\" x3=\"300\" y3=\"50\" z1=\"7\"/>"
        "<display><window node=\"n\" width=\"100\" height=\"100\"><viewport/><viewport projection=\"A\" "
        "position=\"custom\" x1=\"0.5\" x2=\"0.5\" y2=\"1\"/><viewport projection=\"B\" position=\"custom\" "
        "x1=\"0\" x2=\"1\" y2=\"0\"/></window><window node=\"n\" width=\"0\" height=\"9\"><viewport "
        "projection=\"A\"/></window><window node=\"n\" width=\"800\" height=\"600\"><viewport "
        "projection=\"B\" position=\"fill\"/>"
        "<viewport projection=\"A\" position=\"left\"/></window>"
        "<window node=\"n\" width=\"640\" height=\"480\"><viewport "
        "projection=\"A\"/></window></display></cluster>";

    const QJsonArray projections =
        QJsonDocument::fromJson(zoCommandRun::zohpc({"describe", "--json", "-"}, text).output)
            .object()
            .value("projections")
            .toArray();

    QCOMPARE(projections.size(), 2);
    QCOMPARE(projections.at(0).toObject().value("size_pixels").toArray(), (QJsonArray{400, 600}));
    QCOMPARE(projections.at(1).toObject().value("size_pixels").toArray(), (QJsonArray{800, 600}));
}

ZO_TEST_MAIN(tst_zohpcDescribe)
#include "tst_zohpcDescribe.moc"
