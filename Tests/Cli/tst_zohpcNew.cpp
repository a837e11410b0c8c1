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
    QTest::newRow("hosts-uneven") << QStringList{"--wall", "3x1"} + hosts
                                  << QByteArray("--hosts: 3 windows do not spread evenly over 2 hosts");
    QTest::newRow("hosts-twice") << wall + QStringList{"--hosts", "a a"}
                                 << QByteArray("--hosts: \"a\" comes twice");
    QTest::newRow("hosts-none") << wall + QStringList{"--hosts", "{ }"}
                                << QByteArray("--hosts: no host in \"{ }\"");
    QTest::newRow("hosts-range") << wall + QStringList{"--hosts", "n[2-1]"}
                                 << QByteArray("--hosts: \"2-1\" runs backwards");
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
