#include "zoTestCase.h"
#include "zoWallPictures.h"

#include <QApplication>
#include <QLibrary>

// Documents become walls.
class tst_zoServerSetup final : public zoTestCase
{
    Q_OBJECT

private slots:
    void powerWallHasItsTiles();
    void edgesMeetOnTheWall();
    void gatewayIsTheWayToItsNetwork();
    void caveIsUnfoldedForEachEye();
    void appearanceIsThatOfTheViewport();
    void tiledWallHasPixels();
    void windowWithoutAPictureIsBlack();
    void windowBeyondAllScreensIsNone();
    void wallOfManyWindowsIsAsWideAsTheyAre();
    void onlyEnabledNodesAreThere();
    void nodesOfOneNameAreToldApart();
    void encryptionIsInherited_data();
    void encryptionIsInherited();
    void wallsStandAsTheViewerSeesThem();
    void whatIsNoConfigurationIsRefused_data();
    void whatIsNoConfigurationIsRefused();
    void componentReadsTheSame();
};

namespace
{
const zoWallWindow& windowOf(const zoWallSetup& setup, const char* node, int index = 0)
{
    return setup.node(QString::fromLatin1(node))->windows.at(std::size_t(index));
}

// One network with these elements in it, and what is shown.
QString document(const QString& nodes, const QString& displays, const QString& network = QString())
{
    return QStringLiteral("<cluster version=\"1\"><master><network ") + network + QLatin1Char('>') + nodes +
           QStringLiteral("</network></master>") + displays + QStringLiteral("</cluster>");
}

QString plane(const char* name, double x1, double z1, double x2, double z2)
{
    return QStringLiteral(
               "<projection name=\"%1\" type=\"plane\" x1=\"%2\" y1=\"-500\" z1=\"%3\" x2=\"%4\" y2=\"-500\" "
               "z2=\"%5\" x3=\"%4\" y3=\"500\" z3=\"%5\"/>")
        .arg(QString::fromLatin1(name), QString::number(x1), QString::number(z1), QString::number(x2),
             QString::number(z2));
}

QString window(const char* node, const char* projection, const char* more = "")
{
    return QStringLiteral("<window node=\"%1\" screen=\"0\" x=\"5\" y=\"6\" width=\"200\" height=\"100\" "
                          "fullscreen=\"false\"><viewport projection=\"%2\" position=\"fill\" %3/></window>")
        .arg(QString::fromLatin1(node), QString::fromLatin1(projection), QString::fromLatin1(more));
}
} // namespace

void tst_zoServerSetup::powerWallHasItsTiles()
{
    const zoWallSetup setup = zoWallPictures::sample(QStringLiteral("powerwall-2x2"));

    QCOMPARE(int(setup.nodes.size()), 4);
    QCOMPARE(int(setup.walls.size()), 1);
    QCOMPARE(setup.walls[0].lowerLeft.x, -1800.0);
    QCOMPARE(setup.walls[0].upperRight.y, 1080.0);
    QCOMPARE(setup.size, QSize(3600, 2160));
    const zoWallWindow& window = windowOf(setup, "wall-r2-c1");
    QCOMPARE(window.number, 1);
    QCOMPARE(window.title, QStringLiteral("wall-r2-c1: Wall row:2 col:1"));
    QVERIFY(window.fullScreen);
    QCOMPARE(window.geometry, QRect(0, 0, 1920, 1200));
    QCOMPARE(int(window.viewports.size()), 1);
    const zoWallViewport& viewport = window.viewports[0];
    QCOMPARE(viewport.wall, QStringLiteral("Wall"));
    QCOMPARE(viewport.plane.lowerLeft.x, -1800.0);
    QCOMPARE(viewport.plane.upperRight.x, 120.0);
    QCOMPARE(viewport.plane.upperRight.y, 120.0);
    QCOMPARE(viewport.plane.upperRight.z, -2500.0);
    QCOMPARE(QRect(viewport.row, viewport.column, viewport.rows, viewport.columns), QRect(2, 1, 2, 2));
    QCOMPARE(viewport.neighbours.right, QStringLiteral("wall-r2-c2"));
    QCOMPARE(viewport.neighbours.above, QStringLiteral("wall-r1-c1"));
    QCOMPARE(viewport.neighbours.left, QString());
    QCOMPARE(viewport.neighbours.below, QString());
    QCOMPARE(viewport.eyeSeparation, 65.0);
    QCOMPARE(viewport.eye, QStringLiteral("mono"));
    QVERIFY(setup.notes.isEmpty());
}

// What a tile fades is what its place has in common with its neighbour's.
void tst_zoServerSetup::edgesMeetOnTheWall()
{
    const zoWallSetup setup = zoWallPictures::sample(QStringLiteral("powerwall-2x2"));
    for (const zoWallNode& node : setup.nodes) {
        const zoWallViewport& viewport = node.windows[0].viewports[0];
        const QRectF wall(QPointF(0, 0), setup.size);
        const auto sharedWith = [&](const QString& name) {
            return name.isEmpty() ? QRectF()
                                  : viewport.place & windowOf(setup, qPrintable(name)).viewports[0].place;
        };

        QCOMPARE(viewport.edges.left, sharedWith(viewport.neighbours.left).width());
        QCOMPARE(viewport.edges.right, sharedWith(viewport.neighbours.right).width());
        QCOMPARE(viewport.edges.top, sharedWith(viewport.neighbours.above).height());
        QCOMPARE(viewport.edges.bottom, sharedWith(viewport.neighbours.below).height());
        QVERIFY(wall.contains(viewport.place));
    }
    QCOMPARE(windowOf(setup, "wall-r1-c1").viewports[0].edges.right, 240.0);
    QCOMPARE(windowOf(setup, "wall-r1-c1").viewports[0].edges.bottom, 240.0);
    QCOMPARE(windowOf(setup, "wall-r1-c1").viewports[0].edges.top, 0.0);
}

void tst_zoServerSetup::gatewayIsTheWayToItsNetwork()
{
    const zoWallSetup setup = zoWallPictures::sample(QStringLiteral("tiledwall-3x5-gateway"));

    QCOMPARE(int(setup.networks.size()), 2);
    const zoWallNetwork& uplink = setup.networks[0];
    const zoWallNetwork& wall = setup.networks[1];
    QCOMPARE(uplink.id, QStringLiteral("Network:/0/"));
    QCOMPARE(uplink.description, QStringLiteral("Uplink"));
    QCOMPARE(uplink.parent, -1);
    QCOMPARE(uplink.gateway, QString());
    QCOMPARE(uplink.nodes, QStringList{QStringLiteral("gateway")});
    QCOMPARE(uplink.options.value(QStringLiteral("speed")), QStringLiteral("10g"));
    QCOMPARE(wall.parent, 0);
    QCOMPARE(wall.gateway, QStringLiteral("gateway"));
    QCOMPARE(wall.nodes.size(), 15);
    QCOMPARE(wall.options.value(QStringLiteral("serviceport")), QStringLiteral("8890"));
    QCOMPARE(setup.options.value(QStringLiteral("imagecompression")), QStringLiteral("lossyfast"));
    QCOMPARE(setup.node(QStringLiteral("tile-r1-c1"))->network, 1);
    QVERIFY(setup.node(QStringLiteral("gateway"))->windows.empty());
    QVERIFY(!wall.encrypted);
}

void tst_zoServerSetup::caveIsUnfoldedForEachEye()
{
    const zoWallSetup setup = zoWallPictures::sample(QStringLiteral("cave-4-sided"));
    const auto place = [&](const char* node) { return windowOf(setup, node).viewports[0].place; };

    QCOMPARE(int(setup.walls.size()), 4);
    // Left, front and right in a row, the floor below the front.
    QCOMPARE(place("cave-left-left").topRight(), place("cave-front-left").topLeft());
    QCOMPARE(place("cave-front-left").topRight(), place("cave-right-left").topLeft());
    QCOMPARE(place("cave-front-left").bottomLeft(), place("cave-bottom-left").topLeft());
    QCOMPARE(place("cave-bottom-left").size(), QSizeF(2400, 2400));
    // The other eye's pictures stand apart, in the same order.
    const QPointF apart = place("cave-left-right").topLeft() - place("cave-left-left").topLeft();
    QVERIFY(!apart.isNull());
    for (const char* side : {"front", "right", "bottom"}) {
        const QString name = QStringLiteral("cave-") + QLatin1String(side);
        const QRectF left = place(qPrintable(name + QStringLiteral("-left")));
        QCOMPARE(place(qPrintable(name + QStringLiteral("-right"))), left.translated(apart));
    }
    QVERIFY(!place("cave-bottom-left").intersects(place("cave-left-right")));
    const zoWallViewport& right = windowOf(setup, "cave-front-right").viewports[0];
    QCOMPARE(right.eye, QStringLiteral("right"));
    QVERIFY(windowOf(setup, "cave-front-right").hardwareSync);
    // Neighbours across the corners, of the same eye.
    QCOMPARE(right.neighbours.left, QStringLiteral("cave-left-right"));
    QCOMPARE(right.neighbours.right, QStringLiteral("cave-right-right"));
    QCOMPARE(right.neighbours.below, QStringLiteral("cave-bottom-right"));
    QCOMPARE(right.neighbours.above, QString());
    QCOMPARE(windowOf(setup, "cave-bottom-left").viewports[0].neighbours.right,
             QStringLiteral("cave-right-left"));
}

void tst_zoServerSetup::appearanceIsThatOfTheViewport()
{
    const zoWallSetup setup = zoWallPictures::read(document(
        QStringLiteral("<node name=\"a\"/>"),
        QStringLiteral("<projection name=\"W\" type=\"powerwall\" rightoffsetx=\"7\" rightoffsety=\"-2\" "
                       "rows=\"1\" columns=\"1\" width=\"3000\" height=\"2000\" distance=\"1500\"/>") +
            QStringLiteral("<display eyeseparation=\"62.5\">") +
            window("a", "W row:1 col:1", "eye=\"redcyan\" flipx=\"true\"") +
            window("a", "W", "eye=\"right\" flipy=\"true\"") + QStringLiteral("</display>")));

    const zoWallViewport& first = windowOf(setup, "a").viewports[0];
    const zoWallViewport& second = windowOf(setup, "a", 1).viewports[0];
    QCOMPARE(windowOf(setup, "a", 1).number, 2);
    QCOMPARE(first.eye, QStringLiteral("redcyan"));
    QCOMPARE(first.eyeSeparation, 62.5);
    QVERIFY(first.flipX && !first.flipY && !second.flipX && second.flipY);
    // Planes of a power wall have its offset.
    QCOMPARE(first.rightEyeOffset, QPoint(7, -2));
    QCOMPARE(second.rightEyeOffset, QPoint(7, -2));
    QVERIFY(first.edges.isEmpty());
    QCOMPARE(windowOf(setup, "a").geometry, QRect(5, 6, 200, 100));
    QVERIFY(!windowOf(setup, "a").fullScreen);
}

void tst_zoServerSetup::tiledWallHasPixels()
{
    const QString wall =
        QStringLiteral("<projection name=\"W\" type=\"wall\" rightoffsetx=\"3\" rows=\"1\" columns=\"3\" "
                       "overlapx=\"20\" overlapy=\"0\" distance=\"900\" edgeblending=\"true\"/>");
    const zoWallSetup setup = zoWallPictures::read(document(
        QStringLiteral("<node name=\"a\"/><node name=\"b\"/><node name=\"c\"/>"),
        wall + QStringLiteral("<display>") + window("a", "W row:1 col:1") + window("b", "W row:1 col:2") +
            window("c", "W row:1 col:3") + QStringLiteral("</display>")));

    // 3 x 200 pixels less 2 x 20, of a millimetre each.
    QCOMPARE(setup.size, QSize(560, 100));
    QCOMPARE(setup.walls[0].lowerLeft.x, -280.0);
    QCOMPARE(setup.walls[0].upperRight.x, 280.0);
    const zoWallViewport& middle = windowOf(setup, "b").viewports[0];
    QCOMPARE(middle.plane.lowerLeft.x, -100.0);
    QCOMPARE(middle.plane.lowerLeft.z, -900.0);
    QCOMPARE(middle.edges.left, 20.0);
    QCOMPARE(middle.edges.right, 20.0);
    QCOMPARE(middle.edges.top, 0.0);
    QCOMPARE(middle.rightEyeOffset, QPoint(3, 0));
    QCOMPARE(middle.column, 2);
    QCOMPARE(middle.place, QRectF(180, 0, 200, 100));
    QCOMPARE(windowOf(setup, "a").viewports[0].edges.left, 0.0);
    QCOMPARE(windowOf(setup, "c").viewports[0].edges.right, 0.0);
}

void tst_zoServerSetup::windowWithoutAPictureIsBlack()
{
    const zoWallSetup setup = zoWallPictures::read(
        document(QStringLiteral("<node name=\"a\"/>"),
                 QStringLiteral("<display>") + window("a", "") + QStringLiteral("</display>")));

    QCOMPARE(int(setup.node(QStringLiteral("a"))->windows.size()), 1);
    QVERIFY(windowOf(setup, "a").viewports.empty());
    QCOMPARE(setup.notes, QStringList{QStringLiteral(
                              "viewport 1 of window 1 of display 1 is left out: it shows no projection")});
    QCOMPARE(setup.size, QSize(0, 0));
}

void tst_zoServerSetup::windowBeyondAllScreensIsNone()
{
    const QString far =
        window("a", "P").replace(QStringLiteral("width=\"200\""), QStringLiteral("width=\"2000000000\""));
    const zoWallSetup setup =
        zoWallPictures::read(document(QStringLiteral("<node name=\"a\"/>"),
                                      plane("P", -500, -1000, 500, -1000) + QStringLiteral("<display>") +
                                          far + window("a", "P") + QStringLiteral("</display>")));

    QCOMPARE(int(setup.node(QStringLiteral("a"))->windows.size()), 1);
    QCOMPARE(windowOf(setup, "a").geometry, QRect(5, 6, 200, 100));
    QCOMPARE(setup.notes,
             QStringList{QStringLiteral(
                 "viewport 1 of window 1 of display 1 is left out: it is further than 1000000 pixels away")});
    zoWallSetup again;
    QString reason;
    QVERIFY2(again.fromJson(setup.toJson(), reason), qPrintable(reason));
}

void tst_zoServerSetup::wallOfManyWindowsIsAsWideAsTheyAre()
{
    constexpr int Count = 300;
    constexpr int Width = 4000;
    QString displays;
    for (int i = 0; i < Count; ++i)
        displays +=
            plane(qPrintable(QStringLiteral("P%1").arg(i)), 1000.0 * i, -1000, 1000.0 * i + 1000, -1000);
    displays += QStringLiteral("<display>");
    for (int i = 0; i < Count; ++i)
        displays += window("a", qPrintable(QStringLiteral("P%1").arg(i)))
                        .replace(QStringLiteral("width=\"200\""), QStringLiteral("width=\"%1\"").arg(Width));
    const zoWallSetup setup = zoWallPictures::read(
        document(QStringLiteral("<node name=\"a\"/>"), displays + QStringLiteral("</display>")));

    QVERIFY(setup.size.width() > Count * Width);
    QCOMPARE(windowOf(setup, "a", Count - 1).place.width(), double(Width));
    zoWallSetup again;
    QString reason;
    QVERIFY2(again.fromJson(setup.toJson(), reason), qPrintable(reason));
    QCOMPARE(again.size, setup.size);
}

void tst_zoServerSetup::onlyEnabledNodesAreThere()
{
    const zoWallSetup setup = zoWallPictures::read(document(
        QStringLiteral("<node name=\"a\" enabled=\"false\"><network><node name=\"b\"/></network></node>"
                       "<node name=\"\"/><node name=\"c\"/>"),
        plane("P", -500, -1000, 500, -1000) + QStringLiteral("<display>") + window("b", "P") +
            window("c", "P") + QStringLiteral("</display>")));

    QCOMPARE(int(setup.nodes.size()), 1);
    QCOMPARE(setup.nodes[0].id, QStringLiteral("c"));
    QCOMPARE(int(setup.networks.size()), 1);
    QCOMPARE(setup.networks[0].nodes, QStringList{QStringLiteral("c")});
    QCOMPARE(setup.notes.size(), 1);
}

void tst_zoServerSetup::nodesOfOneNameAreToldApart()
{
    const zoWallSetup setup =
        zoWallPictures::read(document(QStringLiteral("<node name=\"n\"/><node name=\"n\"/>"),
                                      plane("P", -500, -1000, 500, -1000) + QStringLiteral("<display>") +
                                          window("n 2", "P") + QStringLiteral("</display>")));

    QCOMPARE(int(setup.nodes.size()), 2);
    QCOMPARE(setup.nodes[1].id, QStringLiteral("n_2"));
    QCOMPARE(setup.nodes[1].name, QStringLiteral("n 2"));
    QCOMPARE(setup.nodes[1].host, QStringLiteral("n"));
    QVERIFY(setup.nodes[0].windows.empty());
    QCOMPARE(int(setup.nodes[1].windows.size()), 1);
}

void tst_zoServerSetup::encryptionIsInherited_data()
{
    QTest::addColumn<QString>("network");
    QTest::addColumn<QString>("node");
    QTest::addColumn<bool>("encrypted");

    QTest::newRow("none") << ""
                          << "" << false;
    QTest::newRow("network") << "encrypted=\"true\""
                             << "" << true;
    QTest::newRow("node") << ""
                          << "encrypted=\"true\"" << true;
}

void tst_zoServerSetup::encryptionIsInherited()
{
    QFETCH(QString, network);
    QFETCH(QString, node);
    QFETCH(bool, encrypted);

    const zoWallSetup setup = zoWallPictures::read(
        document(QStringLiteral("<node name=\"a\" %1><network><node name=\"b\"/></network></node>").arg(node),
                 QString(), network));

    QCOMPARE(int(setup.networks.size()), 2);
    QCOMPARE(setup.networks[0].encrypted, encrypted);
    QCOMPARE(setup.networks[1].encrypted, encrypted);
}

void tst_zoServerSetup::wallsStandAsTheViewerSeesThem()
{
    // Planes of their own, in the document from right to left.
    const zoWallSetup setup = zoWallPictures::read(document(
        QStringLiteral("<node name=\"a\"/><node name=\"b\"/><node name=\"c\"/>"),
        plane("Right", 500, -1000, 1200, -300) + plane("Left", -1200, -300, -500, -1000) +
            plane("Front", -500, -1000, 500, -1000) + QStringLiteral("<display>") + window("a", "Right") +
            window("b", "Left") + window("c", "Front") + QStringLiteral("</display>")));

    const double left = windowOf(setup, "b").place.left();
    const double front = windowOf(setup, "c").place.left();
    const double right = windowOf(setup, "a").place.left();
    QVERIFY(left < front && front < right);
    QCOMPARE(left, 0.0);
    QCOMPARE(int(setup.walls.size()), 3);
}

void tst_zoServerSetup::whatIsNoConfigurationIsRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("reason");

    QTest::newRow("empty") << ""
                           << "the configuration is empty";
    QTest::newRow("torn") << "<cluster>\n<master>"
                          << "line 2";
    QTest::newRow("other") << "<html/>"
                           << "no cluster configuration: its root element is \"html\"";
}

void tst_zoServerSetup::whatIsNoConfigurationIsRefused()
{
    QFETCH(QString, text);
    QFETCH(QString, reason);
    zoWallSetup setup;
    setup.size = {3, 4};
    QString found;

    QVERIFY(!zoServerSetup::read(text, 1.0, setup, found));

    QVERIFY2(found.startsWith(reason), qPrintable(found));
    QCOMPARE(setup.size, QSize(3, 4));
}

void tst_zoServerSetup::componentReadsTheSame()
{
    QLibrary library(QStringLiteral(ZO_SERVER_SETUP));
    const auto read = reinterpret_cast<zoReadWallSetup>(library.resolve(ZO_READ_WALL_SETUP));
    QVERIFY2(read != nullptr, qPrintable(library.errorString()));
    QFile file(QStringLiteral(ZO_DATA_DIR "/cluster/cave-4-sided.zhpc"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    zoWallSetup setup;
    QString reason;

    QVERIFY2(read(QString::fromUtf8(file.readAll()), 1.0, setup, reason), qPrintable(reason));

    QCOMPARE(setup.toJson(), zoWallPictures::sample(QStringLiteral("cave-4-sided")).toJson());
}

ZO_TEST_MAIN(tst_zoServerSetup)
#include "tst_zoServerSetup.moc"
