#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDomDocument>
#include <QTest>

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
    QTest::newRow("neither") << hosts << QByteArray("either --wall or --cave");
    QTest::newRow("both") << wall + cave << QByteArray("either --wall or --cave");
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
                            << QByteArray("--stereo: \"3d\" is no mode: none, quad-buffer, left-right");
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
        << QByteArray("--bezel: nothing of --size is left for pictures");
    QTest::newRow("pitch-without-bezel")
        << wall + hosts + QStringList{"--pixel-pitch", "1"} << QByteArray("--pixel-pitch needs --bezel");
    QTest::newRow("pitch-of-0") << wall + hosts + QStringList{"--bezel", "1x1", "--pixel-pitch", "0"}
                                << QByteArray("--pixel-pitch: \"0\" is no number of millimetres");
    QTest::newRow("hosts-that-do-not-render")
        << wall + QStringList{"--hosts", "a[rt=0]"}
        << QByteArray("--hosts: gateways and nodes that do not render drive no screen, and \"a[rt=0]\" has "
                      "no other");
    QTest::newRow("hosts-uneven") << QStringList{"--wall", "3x1"} + hosts
                                  << QByteArray("--hosts: 3 windows do not spread evenly over 2 hosts");
    QTest::newRow("hosts-twice") << wall + QStringList{"--hosts", "a a"}
                                 << QByteArray("--hosts: \"a\" comes twice");
    QTest::newRow("hosts-none") << wall + QStringList{"--hosts", "{ }"}
                                << QByteArray("--hosts: no host in \"{ }\"");
    QTest::newRow("too-many-screens") << QStringList{"--wall", "17x1", "--hosts", "a"}
                                      << QByteArray("--hosts: 17 screens on each host, 16 at most");
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
