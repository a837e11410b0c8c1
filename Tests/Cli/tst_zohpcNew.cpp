#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDomDocument>
#include <QTest>

#include <cmath>
#include <vector>

namespace
{
// What the windows show and where: "node screen size projection eye".
QStringList windows(const QByteArray& text)
{
    QDomDocument document;
    document.setContent(text);
    QStringList result;
    const QDomNodeList list = document.elementsByTagName(QStringLiteral("window"));
    for (int i = 0; i < list.count(); ++i) {
        const QDomElement window = list.at(i).toElement();
        const QDomElement viewport = window.firstChildElement(QStringLiteral("viewport"));
        result << QStringLiteral("%1 %2 %3x%4 %5 %6")
                      .arg(window.attribute("node"), window.attribute("screen"), window.attribute("width"),
                           window.attribute("height"), viewport.attribute("projection"),
                           viewport.attribute("eye"));
    }
    return result;
}

QDomElement projection(const QByteArray& text)
{
    QDomDocument document;
    document.setContent(text);
    return document.documentElement()
        .firstChildElement(QStringLiteral("projection"))
        .cloneNode(false)
        .toElement();
}

QList<QDomElement> projections(const QByteArray& text)
{
    QDomDocument document;
    document.setContent(text);
    QList<QDomElement> result;
    const QDomElement root = document.documentElement();
    for (QDomElement e = root.firstChildElement("projection"); !e.isNull();
         e = e.nextSiblingElement("projection"))
        result << e;
    return result;
}

QStringList projectionNames(const QByteArray& text)
{
    QStringList names;
    const QList<QDomElement> elements = projections(text);
    for (const QDomElement& element : elements)
        names << element.attribute("name");
    return names;
}

// Lower left, lower right and upper right of a plane, millimetres.
std::vector<double> corners(const QByteArray& text, int plane)
{
    std::vector<double> result;
    for (const char* corner : {"1", "2", "3"}) {
        for (const char* axis : {"x", "y", "z"})
            result.push_back(projections(text).at(plane).attribute(QLatin1String(axis) + corner).toDouble());
    }
    return result;
}
} // namespace

// "zohpc new" as a whole process.
class tst_zohpcNew final : public zoTestCase
{
    Q_OBJECT

private slots:
    void wallFromOneLine();
    void powerWallHasItsOverlapInMillimetres();
    void caveHasTwoHostsPerWall();
    void everyResultIsSound_data();
    void everyResultIsSound();
    void fewHostsDriveSeveralScreens();
    void gatewaysDriveNoScreen();
    void blendingNeedsANeighbour();
    void bezelIsANegativeOverlap_data();
    void bezelIsANegativeOverlap();
    void curvedWallStandsOnItsCircle();
    void unitsOfOverlapsAndBezels_data();
    void unitsOfOverlapsAndBezels();
    void viewerOfACaveIsTheOtherEndOfItsCenter();
    void likelyMistakeIsTold();
    void unevenSpreadIsTold();
    void viewerOutsideOfACaveIsTold_data();
    void viewerOutsideOfACaveIsTold();
    void nodesThatDoNotRenderGetNoWindow();

    void hostsAreToldAsHostsExpandTellsThem_data();
    void hostsAreToldAsHostsExpandTellsThem();
    void hostsComeFromStandardInput();
    void outputFileIsWritten();
    void wrongUsageIsTold_data();
    void wrongUsageIsTold();

private:
    zoCliFiles m_files;
};

void tst_zohpcNew::wallFromOneLine()
{
    const zoCommandRun run = zoCommandRun::zohpc(
        {"new", "--wall", "3x2", "--tile", "1920x1080", "--overlap", "120", "--hosts", "node01 - node06"});

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(
        run.output.startsWith("<cluster version=\"1\">\n <master scenecompression=\"best\">\n  <network>\n"
                              "   <node name=\"node01\"/>\n"));
    QVERIFY(
        run.output.contains(" <projection name=\"Wall\" type=\"wall\" rightoffsetx=\"0\" rightoffsety=\"0\" "
                            "rows=\"2\" columns=\"3\" "
                            "overlapx=\"120\" overlapy=\"120\" distance=\"1500\" edgeblending=\"true\">\n"));
    QCOMPARE(windows(run.output),
             (QStringList{
                 "node01 0 1920x1080 Wall row:1 col:1 mono", "node02 0 1920x1080 Wall row:1 col:2 mono",
                 "node03 0 1920x1080 Wall row:1 col:3 mono", "node04 0 1920x1080 Wall row:2 col:1 mono",
                 "node05 0 1920x1080 Wall row:2 col:2 mono", "node06 0 1920x1080 Wall row:2 col:3 mono"}));
}

void tst_zohpcNew::powerWallHasItsOverlapInMillimetres()
{
    // 2 x 1000 - 100 pixels on 1900 mm: one millimetre each; 500 pixels on 1000 mm: two each.
    const zoCommandRun run =
        zoCommandRun::zohpc({"new", "--wall", "2x1", "--tile", "1000x500", "--overlap", "100", "--size",
                             "1900x1000", "--distance", "2500", "--hosts", "a b"});

    const QDomElement wall = projection(run.output);
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(wall.attribute("type"), QStringLiteral("powerwall"));
    QCOMPARE(wall.attribute("width").toDouble(), 1900.0);
    QCOMPARE(wall.attribute("height").toDouble(), 1000.0);
    QCOMPARE(wall.attribute("distance").toDouble(), 2500.0);
    QCOMPARE(wall.attribute("overlapx").toDouble(), 100.0);
    QCOMPARE(wall.attribute("overlapy").toDouble(), 0.0);
    QVERIFY(run.output.contains("leftedge=\"0\" rightedge=\"0.1\""));
}

void tst_zohpcNew::caveHasTwoHostsPerWall()
{
    const zoCommandRun run = zoCommandRun::zohpc({"new", "--cave", "3000x2400x3000", "--center", "0,-400,0",
                                                  "--stereo", "left-right", "--tile", "2400x1920", "--walls",
                                                  "left,front", "--hosts", "c1 - c4"});

    const QDomElement cave = projection(run.output);
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(cave.attribute("type"), QStringLiteral("cave"));
    QCOMPARE(cave.attribute("cavey").toDouble(), -400.0);
    QCOMPARE(cave.attribute("left"), QStringLiteral("true"));
    QCOMPARE(cave.attribute("right"), QStringLiteral("false"));
    QCOMPARE(windows(run.output),
             (QStringList{"c1 0 2400x1920 Cave Left left", "c2 0 2400x1920 Cave Left right",
                          "c3 0 2400x1920 Cave Front left", "c4 0 2400x1920 Cave Front right"}));
}

void tst_zohpcNew::everyResultIsSound_data()
{
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("single") << QStringList{"--wall", "1x1", "--hosts", "a"};
    QTest::newRow("wall") << QStringList{"--wall", "5x3", "--overlap", "10x20", "--hosts", "n[01-15]"};
    QTest::newRow("power-wall") << QStringList{"--wall",    "4x2", "--size",  "6400x1800",
                                               "--overlap", "100", "--hosts", "n1 - n4"};
    QTest::newRow("six-sided-cave") << QStringList{
        "--cave",   "3000x3000x3000", "--walls", "left,right,top,bottom,front,back",
        "--stereo", "quad-buffer",    "--hosts", "n1 - n6"};
    QTest::newRow("cave-left-right") << QStringList{"--cave",     "3000x3000x3000", "--stereo",
                                                    "left-right", "--hosts",        "n1 - n8"};
    QTest::newRow("curved") << QStringList{"--curved", "8x3",      "--tile-size", "1209.6x680.4", "--bezel",
                                           "3.5x3.5",  "--radius", "4000",        "--hosts",      "n[01-24]"};
    QTest::newRow("curved-by-angle-and-blended")
        << QStringList{"--curved",  "3x1",  "--size",  "3600x800", "--tile",  "1280x800",
                       "--overlap", "60x0", "--angle", "20",       "--hosts", "n[1-3]"};
    QTest::newRow("planes") << QStringList{
        "--plane", "Front=2400x1350@0,0,-1200", "--plane", "2400x1350@0,-675,-525,0,90", "--hosts", "a b"};
    QTest::newRow("cave-of-tiles") << QStringList{"--cave",  "3840x2160x3840",   "--grid",  "2x2",
                                                  "--walls", "left,front,right", "--hosts", "n[1-12]"};
    QTest::newRow("viewer-beside-the-middle") << QStringList{
        "--wall", "2x2", "--tile-size", "1920x1080", "--viewer", "400,-300,2000", "--hosts", "n[1-4]"};
    QTest::newRow("all-eyes-of-four-tiles-apart")
        << QStringList{"--wall", "2x2",   "--tile-size",        "1600x900", "--stereo", "left-right",
                       "--eyes", "apart", "--windows-per-node", "2",        "--hosts",  "n[1-4]"};
    QTest::newRow("interlaced") << QStringList{"--wall",  "1x1", "--stereo", "horizontal-interlaced",
                                               "--hosts", "a"};
    QTest::newRow("behind-a-gateway") << QStringList{"--wall", "2x1", "--hosts", "gw[rt=0] { a b }"};
}

void tst_zohpcNew::everyResultIsSound()
{
    QFETCH(QStringList, arguments);

    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"new"} + arguments);

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(zoCommandRun::zohpc({"check", "-"}, run.output).whole(),
             QByteArray("--- errors\n--- exit code 0\n"));
    QCOMPARE(zoCommandRun::zohpc({"format", "-"}, run.output).output, run.output);
}

void tst_zohpcNew::fewHostsDriveSeveralScreens()
{
    const zoCommandRun run = zoCommandRun::zohpc({"new", "--wall", "2x2", "--hosts", "a b"});

    QCOMPARE(windows(run.output),
             (QStringList{"a 0 1920x1080 Wall row:1 col:1 mono", "a 1 1920x1080 Wall row:1 col:2 mono",
                          "b 0 1920x1080 Wall row:2 col:1 mono", "b 1 1920x1080 Wall row:2 col:2 mono"}));
}

void tst_zohpcNew::gatewaysDriveNoScreen()
{
    const zoCommandRun run = zoCommandRun::zohpc({"new", "--wall", "2x1", "--hosts", "gw[rt=0] { a b c }"});

    QCOMPARE(windows(run.output),
             (QStringList{"a 0 1920x1080 Wall row:1 col:1 mono", "b 0 1920x1080 Wall row:1 col:2 mono"}));
    QVERIFY(run.output.contains("<node name=\"gw\" rendernode=\"false\">"));
    QVERIFY(run.output.contains("<node name=\"c\"/>"));
}

void tst_zohpcNew::blendingNeedsANeighbour()
{
    const QDomElement column =
        projection(zoCommandRun::zohpc({"new", "--wall", "1x2", "--overlap", "50", "--hosts", "a b"}).output);
    const QDomElement plain =
        projection(zoCommandRun::zohpc({"new", "--wall", "2x2", "--hosts", "a b"}).output);

    QCOMPARE(column.attribute("overlapx"), QStringLiteral("0"));
    QCOMPARE(column.attribute("overlapy"), QStringLiteral("50"));
    QCOMPARE(column.attribute("edgeblending"), QStringLiteral("true"));
    QCOMPARE(plain.attribute("edgeblending"), QStringLiteral("false"));
}

void tst_zohpcNew::bezelIsANegativeOverlap_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("overlapX");
    QTest::addColumn<QString>("overlapY");
    QTest::addColumn<QByteArray>("corners"); // of the second tile, or none

    const QStringList panels{"--wall", "2x2", "--tile", "100x50"};
    QTest::newRow("millimetres-of-a-power-wall")
        << panels + QStringList{"--size", "212x114", "--bezel", "12x14"} << "-12"
        << "-14" << QByteArray("x1=\"6\" y1=\"7\" z1=\"-1500\" x2=\"106\" y2=\"7\"");
    QTest::newRow("fraction-of-a-millimetre")
        << panels + QStringList{"--size", "212x114", "--bezel", "3.5x0"} << "-3.5"
        << "0" << QByteArray();
    QTest::newRow("pixels-of-a-tiled-wall")
        << panels + QStringList{"--pixel-pitch", "0.5", "--bezel", "12x14"} << "-24"
        << "-28" << QByteArray();
    QTest::newRow("whole-pixels") << panels + QStringList{"--pixel-pitch", "5", "--bezel", "12x14"} << "-2"
                                  << "-3" << QByteArray();
    QTest::newRow("one-row-has-none-below")
        << QStringList{"--wall", "4x1", "--size", "4000x500", "--bezel", "12x14"} << "-12"
        << "0" << QByteArray();
    QTest::newRow("negative-overlap") << panels + QStringList{"--overlap", "-20"} << "-20"
                                      << "-20" << QByteArray();
    QTest::newRow("negative-overlap-across") << panels + QStringList{"--overlap", "-20x0"} << "-20"
                                             << "0" << QByteArray();
    // 2 x 100 + 20 pixels on 220 mm: one millimetre each.
    QTest::newRow("negative-overlap-of-a-power-wall")
        << panels + QStringList{"--overlap", "-20x0", "--size", "220x100"} << "-20"
        << "0" << QByteArray();
}

void tst_zohpcNew::bezelIsANegativeOverlap()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, overlapX);
    QFETCH(QString, overlapY);
    QFETCH(QByteArray, corners);

    const zoCommandRun run =
        zoCommandRun::zohpc(QStringList{"new"} + arguments + QStringList{"--hosts", "n1 - n4"});

    const QDomElement wall = projection(run.output);
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(wall.attribute("overlapx"), overlapX);
    QCOMPARE(wall.attribute("overlapy"), overlapY);
    QCOMPARE(wall.attribute("edgeblending"), QStringLiteral("false"));
    QVERIFY2(run.output.contains(corners), run.output.constData());
    QCOMPARE(zoCommandRun::zohpc({"check", "-"}, run.output).whole(),
             QByteArray("--- errors\n--- exit code 0\n"));
}

// The middle column of three stands straight ahead, on a circle around the viewer.
void tst_zohpcNew::curvedWallStandsOnItsCircle()
{
    // Tiles that are as wide as the radius stand 60 degrees from each other.
    const zoCommandRun run = zoCommandRun::zohpc(
        {"new", "--curved", "3x1", "--tile-size", "2000x1125", "--radius", "2000", "--hosts", "a b c"});

    QCOMPARE(run.errors, QByteArray());
    const QStringList names = projectionNames(run.output);
    QCOMPARE(names, (QStringList{"Wall row:1 col:1", "Wall row:1 col:2", "Wall row:1 col:3"}));
    const std::vector<double> left = corners(run.output, 0);
    const std::vector<double> middle = corners(run.output, 1);
    const double depth = -1000.0 * std::sqrt(3.0);
    const std::vector<double> expectedLeft{-2000.0, -562.5,  0.0,   -1000.0, -562.5,
                                           depth,   -1000.0, 562.5, depth};
    const std::vector<double> expectedMiddle{-1000.0, -562.5, depth, 1000.0, -562.5,
                                             depth,   1000.0, 562.5, depth};
    for (std::size_t i = 0; i < 9; ++i) {
        QVERIFY(std::abs(left[i] - expectedLeft[i]) < 1e-6);
        QVERIFY(std::abs(middle[i] - expectedMiddle[i]) < 1e-6);
    }
}

void tst_zohpcNew::unitsOfOverlapsAndBezels_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("across");
    QTest::addColumn<QString>("down");

    // Tiles of 1000 x 500 pixels, two millimetres each.
    const QStringList wall{"--tile-size", "2000x1000"};
    QTest::newRow("overlap-in-pixels") << wall + QStringList{"--overlap", "60"} << "120"
                                       << "120";
    QTest::newRow("overlap-with-its-unit") << wall + QStringList{"--overlap", "60px"} << "120"
                                           << "120";
    QTest::newRow("overlap-in-millimetres") << wall + QStringList{"--overlap", "60mm"} << "60"
                                            << "60";
    QTest::newRow("overlap-of-two-numbers") << wall + QStringList{"--overlap", "60x30.5mm"} << "60"
                                            << "30.5";
    QTest::newRow("unit-behind-each") << wall + QStringList{"--overlap", "60mmx30mm"} << "60"
                                      << "30";
    QTest::newRow("bezel-in-millimetres") << wall + QStringList{"--bezel", "12x14"} << "-12"
                                          << "-14";
    QTest::newRow("bezel-in-pixels") << wall + QStringList{"--bezel", "12x14px"} << "-24"
                                     << "-28";
    QTest::newRow("one-bezel-with-its-unit") << wall + QStringList{"--bezel", "12mm"} << "-12"
                                             << "-12";
    QTest::newRow("overlap-in-millimetres-of-pixels")
        << QStringList{"--pixel-pitch", "2", "--overlap", "60x31mm"} << "30"
        << "16";
}

void tst_zohpcNew::unitsOfOverlapsAndBezels()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, across);
    QFETCH(QString, down);

    const zoCommandRun run = zoCommandRun::zohpc(
        QStringList{"new", "--wall", "2x2", "--tile", "1000x500", "--hosts", "n[1-4]"} + arguments);

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(projection(run.output).attribute("overlapx"), across);
    QCOMPARE(projection(run.output).attribute("overlapy"), down);
}

// The center of a cave and the viewer in it are two ways of saying one thing.
void tst_zohpcNew::viewerOfACaveIsTheOtherEndOfItsCenter()
{
    const QStringList cave{"new", "--cave", "3000x2400x3000", "--hosts", "n[1-4]"};

    const zoCommandRun center = zoCommandRun::zohpc(cave + QStringList{"--center", "0,-400,100"});
    const zoCommandRun viewer = zoCommandRun::zohpc(cave + QStringList{"--viewer", "0,400,-100"});

    QVERIFY(center.output.contains("cavey=\"-400\" cavez=\"100\""));
    QCOMPARE(viewer.whole(), center.whole());
}

// What is likely a mistake is written and told, as "zohpc check" tells it of the file.
void tst_zohpcNew::likelyMistakeIsTold()
{
    const zoCommandRun run =
        zoCommandRun::zohpc({"new", "--wall", "1x1", "--size", "3.6x2", "--distance", "1.5", "--hosts", "a"});

    QCOMPARE(run.errors,
             QByteArray("zohpc new: --size: \"Wall\" has a size of 3.6 x 2 mm. Was it measured in "
                        "metres?\n"));
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(projection(run.output).attribute("width"), QStringLiteral("3.6"));
}

// Where windows do not spread evenly, somebody is told which nodes have more, and nothing is wrong.
void tst_zohpcNew::unevenSpreadIsTold()
{
    const zoCommandRun run = zoCommandRun::zohpc({"new", "--wall", "3x1", "--hosts", "a b"});

    QCOMPARE(run.errors,
             QByteArray("zohpc new: --hosts: 2 windows on the first node, 1 on each of the others\n"));
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(windows(run.output).size(), 3);
}

void tst_zohpcNew::viewerOutsideOfACaveIsTold_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("told");

    const QByteArray left =
        ": the viewer is outside the cave, behind its wall \"left\": inside he is less than "
        "1500 mm from the middle of the cave toward it\n";
    QTest::newRow("viewer") << QStringList{"--viewer", "-1600,0,0"} << "zohpc new: --viewer" + left;
    QTest::newRow("center") << QStringList{"--center", "1600,0,0"} << "zohpc new: --center" + left;
}

void tst_zohpcNew::viewerOutsideOfACaveIsTold()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, told);

    const zoCommandRun run =
        zoCommandRun::zohpc(QStringList{"new", "--cave", "3000x2400x3000", "--hosts", "n[1-4]"} + options);

    QCOMPARE(run.errors, told);
    QCOMPARE(run.exitCode, 1);
}

void tst_zohpcNew::nodesThatDoNotRenderGetNoWindow()
{
    const zoCommandRun run =
        zoCommandRun::zohpc({"new", "--wall", "2x1", "--hosts", "head[rt=0] a gw[rt=0] { b relay { c } }"});

    QCOMPARE(windows(run.output),
             (QStringList{"a 0 1920x1080 Wall row:1 col:1 mono", "b 0 1920x1080 Wall row:1 col:2 mono"}));
}

// The same words, places and exit codes; a configuration is there when the hosts are.
void tst_zohpcNew::hostsAreToldAsHostsExpandTellsThem_data()
{
    QTest::addColumn<QString>("hosts");

    QTest::newRow("backwards") << "n[2-1]";
    QTest::newRow("range-that-fills-nothing") << "n1 - m2";
    QTest::newRow("letters-in-brackets") << "n[a-b]";
    QTest::newRow("brace-not-closed") << "{ a b";
    QTest::newRow("group") << "@gpu";
    QTest::newRow("control-character") << "n\x01";
    QTest::newRow("left-out") << "a @ b";
}

void tst_zohpcNew::hostsAreToldAsHostsExpandTellsThem()
{
    QFETCH(QString, hosts);

    const zoCommandRun run = zoCommandRun::zohpc({"new", "--wall", "1x1", "--hosts", hosts});
    const zoCommandRun expand = zoCommandRun::zohpc({"hosts", "expand", hosts});

    QVERIFY(!expand.errors.isEmpty());
    QCOMPARE(run.errors, expand.errors);
    QCOMPARE(run.exitCode, expand.exitCode);
    QCOMPARE(run.output.isEmpty(), expand.output.isEmpty());
}

void tst_zohpcNew::hostsComeFromStandardInput()
{
    const zoCommandRun run = zoCommandRun::zohpc({"new", "--wall", "2x1", "--hosts", "-"}, "n[1-2]\n");

    QCOMPARE(run.whole(), zoCommandRun::zohpc({"new", "--wall", "2x1", "--hosts", "n1 n2"}).whole());
    QCOMPARE(run.exitCode, 0);
}

void tst_zohpcNew::outputFileIsWritten()
{
    const QString file = m_files.path("new.zhpc");

    const zoCommandRun run = zoCommandRun::zohpc({"new", "--wall", "1x1", "--hosts", "a", "-o", file});

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
    QCOMPARE(zoCliFiles::read(file), zoCommandRun::zohpc({"new", "--wall", "1x1", "--hosts", "a"}).output);
}

void tst_zohpcNew::wrongUsageIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("reason");

    const QStringList wall{"--wall", "2x1"};
    const QStringList cave{"--cave", "1x1x1", "--hosts", "a"};
    const QStringList hosts{"--hosts", "a b"};
    QTest::newRow("neither") << hosts << QByteArray("either --wall, --curved, --cave or --plane");
    QTest::newRow("both") << wall + cave << QByteArray("either --wall, --curved, --cave or --plane");
    QTest::newRow("no-hosts") << wall << QByteArray("--hosts is missing");
    QTest::newRow("argument") << wall + hosts + QStringList{"x"} << QByteArray("unexpected argument \"x\"");
    QTest::newRow("wall") << QStringList{"--wall", "3"} + hosts
                          << QByteArray("--wall: \"3\" is no number of columns and rows such as 3x2");
    QTest::newRow("wall-fraction") << QStringList{"--wall", "1.5x2"} + hosts
                                   << QByteArray(
                                          "--wall: \"1.5x2\" is no number of columns and rows such as 3x2");
    QTest::newRow("wall-too-many-tiles") << QStringList{"--wall", "1000x101"} + hosts
                                         << QByteArray("--wall: 1000x101 tiles are more than 100000");
    QTest::newRow("wall-smallest-of-too-many-tiles")
        << QStringList{"--wall", "885x113"} + hosts
        << QByteArray("--wall: 885x113 tiles are more than 100000");
    // The wall is taken: what is told is the next mistake.
    QTest::newRow("wall-of-as-many-tiles-as-may-be")
        << QStringList{"--wall", "1000x100", "--tile", "0x5"} + hosts
        << QByteArray("--tile: \"0x5\" is no size in pixels such as 1920x1080");
    QTest::newRow("tile") << wall + hosts + QStringList{"--tile", "0x5"}
                          << QByteArray("--tile: \"0x5\" is no size in pixels such as 1920x1080");
    QTest::newRow("overlap") << wall + hosts + QStringList{"--overlap", "x"}
                             << QByteArray("--overlap: \"x\" is no number of pixels");
    QTest::newRow("overlap-too-wide") << wall + hosts + QStringList{"--overlap", "1920"}
                                      << QByteArray("--overlap: tiles of 1920x1080 pixels cannot share 1920");
    QTest::newRow("size") << wall + hosts + QStringList{"--size", "nanx1"}
                          << QByteArray("--size: \"nanx1\" is no size in millimetres such as 3600x2000");
    QTest::newRow("stereo") << wall + hosts + QStringList{"--stereo", "3d"}
                            << QByteArray("--stereo: \"3d\" is no mode: none, quad-buffer, left-right, "
                                          "horizontal-interlaced, vertical-interlaced, split-left-right, "
                                          "split-top-bottom, red-cyan, blue-yellow, green-magenta");
    QTest::newRow("walls") << cave + QStringList{"--walls", "left,lower"}
                           << QByteArray("--walls: \"lower\" is no wall of a cave");
    QTest::newRow("cave-overlap") << cave + QStringList{"--overlap", "5"}
                                  << QByteArray("--overlap: the walls of a cave share no pixels");
    QTest::newRow("cave-bezel") << cave + QStringList{"--bezel", "5x5"}
                                << QByteArray("--bezel: the walls of a cave share no pixels");
    // Even where they say what holds anyhow.
    QTest::newRow("cave-overlap-of-0") << cave + QStringList{"--overlap", "0"}
                                       << QByteArray("--overlap: the walls of a cave share no pixels");
    QTest::newRow("cave-size") << cave + QStringList{"--size", "1x1"} << QByteArray("--size is for walls");
    QTest::newRow("cave-distance") << cave + QStringList{"--distance", "1500"}
                                   << QByteArray("--distance is for walls");
    QTest::newRow("cave-pitch") << cave + QStringList{"--pixel-pitch", "1"}
                                << QByteArray("--pixel-pitch is for walls");
    QTest::newRow("wall-walls") << wall + hosts + QStringList{"--walls", "left"}
                                << QByteArray("--walls is for caves");
    QTest::newRow("wall-center") << wall + hosts + QStringList{"--center", "0,0,0"}
                                 << QByteArray("--center is for caves");
    const QStringList size{"--size", "100x100"};
    QTest::newRow("bezel") << wall + hosts + size + QStringList{"--bezel", "12"}
                           << QByteArray("--bezel: \"12\" is no size in millimetres such as 12x14");
    QTest::newRow("bezel-below-0") << wall + hosts + size + QStringList{"--bezel", "-1x1"}
                                   << QByteArray("--bezel: \"-1x1\" is no size in millimetres such as 12x14");
    QTest::newRow("bezel-and-overlap")
        << wall + hosts + size + QStringList{"--bezel", "1x1", "--overlap", "5"}
        << QByteArray("--bezel and --overlap exclude each other");
    QTest::newRow("bezel-of-unknown-pixels")
        << wall + hosts + QStringList{"--bezel", "1x1"}
        << QByteArray("--bezel needs --size or --pixel-pitch, which say how large a pixel is");
    QTest::newRow("bezel-with-both-sizes")
        << wall + hosts + size + QStringList{"--bezel", "1x1", "--pixel-pitch", "1"}
        << QByteArray("--size and --pixel-pitch exclude each other");
    QTest::newRow("bezel-as-wide-as-the-wall")
        << wall + hosts + size + QStringList{"--bezel", "100x0"}
        << QByteArray("--bezel: nothing of the size is left for pictures");
    QTest::newRow("pitch-without-bezel")
        << wall + hosts + QStringList{"--pixel-pitch", "1"} << QByteArray("--pixel-pitch needs --bezel");
    QTest::newRow("pitch-of-0") << wall + hosts + QStringList{"--bezel", "1x1", "--pixel-pitch", "0"}
                                << QByteArray("--pixel-pitch: \"0\" is no number of millimetres");
    const QStringList curved{"--curved", "3x1", "--hosts", "a b c"};
    const QStringList tileSize{"--tile-size", "1000x500"};
    QTest::newRow("two-kinds") << curved + wall << QByteArray("either --wall, --curved, --cave or --plane");
    QTest::newRow("curved-without-size") << curved << QByteArray("--curved needs --tile-size or --size");
    QTest::newRow("curved-without-radius")
        << curved + tileSize << QByteArray("--curved needs --radius or --angle");
    QTest::newRow("curved-by-both") << curved + tileSize + QStringList{"--radius", "1", "--angle", "1"}
                                    << QByteArray("--radius and --angle exclude each other");
    QTest::newRow("curved-too-tight")
        << curved + tileSize + QStringList{"--radius", "400"}
        << QByteArray("--radius: tiles of 1000 mm do not stand on a circle with a radius of 400 mm");
    QTest::newRow("curved-beyond-a-circle")
        << QStringList{"--curved", "4x1", "--angle", "100", "--hosts", "a b c d"} + tileSize
        << QByteArray("--angle: 4 columns with 100 degrees from one to the next do not fit into a circle");
    QTest::newRow("curved-from-behind")
        << curved + tileSize + QStringList{"--radius", "1000", "--viewer", "0,0,-1"}
        << QByteArray("--viewer: the viewer is before the wall: 0.1 mm away or more");
    QTest::newRow("two-sizes") << wall + hosts + size + tileSize
                               << QByteArray("--size and --tile-size exclude each other");
    QTest::newRow("radius-of-a-wall")
        << wall + hosts + QStringList{"--radius", "1"} << QByteArray("--radius is for curved walls");
    QTest::newRow("grid-of-a-wall") << wall + hosts + QStringList{"--grid", "1x1"}
                                    << QByteArray("--grid is for caves");
    QTest::newRow("viewer") << wall + hosts + QStringList{"--viewer", "1,2"}
                            << QByteArray("--viewer: \"1,2\" is no place in millimetres such as 0,-400,1500");
    QTest::newRow("viewer-and-distance") << wall + hosts + QStringList{"--viewer", "0,0,1", "--distance", "1"}
                                         << QByteArray("--viewer and --distance exclude each other");
    QTest::newRow("viewer-beside-pixels")
        << wall + hosts + QStringList{"--viewer", "1,0,1500"}
        << QByteArray(
               "--viewer: who looks at a wall without a size in millimetres is straight before its middle");
    QTest::newRow("eyes") << wall + hosts + QStringList{"--eyes", "both"}
                          << QByteArray("--eyes: \"both\" is no order: in-turn, paired, apart, left-first");
    QTest::newRow("no-windows-per-node") << wall + hosts + QStringList{"--windows-per-node", "0"}
                                         << QByteArray("--windows-per-node: \"0\" is no number of 1 to 16");
    QTest::newRow("hosts-too-few") << QStringList{"--wall", "5x1", "--windows-per-node", "2"} + hosts
                                   << QByteArray(
                                          "--hosts: 5 windows, 2 on each node, take 3 nodes: there are 2");
    QTest::newRow("units-that-differ") << wall + hosts + size + QStringList{"--overlap", "5mmx5px"}
                                       << QByteArray("--overlap: \"5mmx5px\" is no number of pixels");
    QTest::newRow("plane") << QStringList{"--plane", "2x2", "--hosts", "a"}
                           << QByteArray("--plane: \"2x2\" is no plane such as Front=2400x1350@0,0,-1500 or "
                                         "Floor=2400x2400@0,-1200,0,0,90");
    QTest::newRow("plane-with-an-overlap")
        << QStringList{"--plane", "2x2@0,0,-1", "--overlap", "1", "--hosts", "a"}
        << QByteArray("--overlap is for walls");
    QTest::newRow("eyes-in-metres") << wall + hosts + QStringList{"--eye-separation", "0.065"}
                                    << QByteArray("--eye-separation: Display 1 has an eye separation of "
                                                  "0.065 mm. Was it measured in metres? Eyes "
                                                  "are about 65 mm apart.");
    QTest::newRow("hosts-that-do-not-render")
        << wall + QStringList{"--hosts", "a[rt=0]"}
        << QByteArray("--hosts: gateways and nodes that do not render drive no screen, and \"a[rt=0]\" has "
                      "no other");
    QTest::newRow("option-given-twice") << wall + hosts + QStringList{"--tile", "1x1", "--tile", "2x2"}
                                        << QByteArray("--tile is given more than once");
    QTest::newRow("eyes-far-apart") << wall + hosts + QStringList{"--eye-separation", "1e300"}
                                    << QByteArray("--eye-separation: eyes are 0 to 1000 mm apart");
    QTest::newRow("no-distance") << wall + hosts + QStringList{"--distance", "1e-300"}
                                 << QByteArray(
                                        "--distance: the viewer is before the wall: 0.1 mm away or more");
    QTest::newRow("center-far-away") << QStringList{"--cave",  "3000x3000x3000", "--hosts",
                                                    "a b c d", "--center",       "1e300,0,0"}
                                     << QByteArray("--center: a place is at most 1000000 mm away");
    QTest::newRow("name") << wall + hosts + QStringList{"--name", QStringLiteral("a\uffff")}
                          << QByteArray("--name: character 2 is U+FFFF, which a document cannot hold");
    QTest::newRow("hosts-twice") << wall + QStringList{"--hosts", "a a"}
                                 << QByteArray("--hosts: \"a\" comes twice");
    QTest::newRow("hosts-none") << wall + QStringList{"--hosts", "{ }"}
                                << QByteArray("--hosts: no node in \"{ }\"");
    QTest::newRow("too-many-screens") << QStringList{"--wall", "17x1", "--hosts", "a"}
                                      << QByteArray("--hosts: 17 screens on each node, 16 at most");
}

void tst_zohpcNew::wrongUsageIsTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, reason);

    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"new"} + arguments);

    QCOMPARE(run.whole(),
             "--- errors\nzohpc new: " + reason + "\nTry 'zohpc new --help'.\n--- exit code 2\n");
}

ZO_TEST_MAIN(tst_zohpcNew)
#include "tst_zohpcNew.moc"
