#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDomDocument>
#include <QRegularExpression>
#include <QTest>

namespace
{
// What one machine of a ParaView file says.
struct Machine
{
    QString name;
    QString geometry;
    QString corners; // lower left, lower right, upper right
    QString environment;

    bool operator==(const Machine& other) const
    {
        return name == other.name && geometry == other.geometry && corners == other.corners &&
               environment == other.environment;
    }
};

QList<Machine> machines(const QByteArray& text)
{
    QDomDocument document;
    document.setContent(text);
    QList<Machine> result;
    const QDomNodeList list = document.elementsByTagName(QStringLiteral("Machine"));
    for (int i = 0; i < list.count(); ++i) {
        const QDomElement machine = list.at(i).toElement();
        result << Machine{machine.attribute("Name"), machine.attribute("Geometry"),
                          machine.attribute("LowerLeft") + "; " + machine.attribute("LowerRight") + "; " +
                              machine.attribute("UpperRight"),
                          machine.attribute("Environment")};
    }
    return result;
}

// The part of the text from `begin` on to the brace that closes its block, with single blanks.
QString block(const QByteArray& text, const QByteArray& begin)
{
    const int start = text.indexOf(begin);
    int depth = 0;
    for (int i = start; start >= 0 && i < text.size(); ++i) {
        if (text.at(i) == '{')
            ++depth;
        if (text.at(i) == '}' && --depth == 0)
            return QString::fromUtf8(text.mid(start, i + 1 - start)).simplified();
    }
    return QString();
}

QByteArray setup(const QByteArray& projections, const QByteArray& windows,
                 const QByteArray& nodes = R"(<node name="a"/><node name="b"/>)")
{
    return R"(<cluster version="1"><master><network>)" + nodes + "</network></master>" + projections +
           R"(<display eyeseparation="60" user="1">)" + windows + "</display></cluster>\n";
}

QByteArray window(const char* node, const QByteArray& viewports, const char* more = "")
{
    return QByteArray("<window node=\"") + node + "\" screen=\"0\" width=\"400\" height=\"300\" " + more +
           ">" + viewports + "</window>";
}

QByteArray viewport(const char* projection, const char* more = "", const char* position = "fill")
{
    return QByteArray("<viewport projection=\"") + projection + "\" position=\"" + position + "\" " + more +
           "/>";
}

const QByteArray s_plane =
    R"(<projection name="P" type="plane" x1="-1000" y1="0" z1="-2000" x2="500" y2="0" )"
    R"(z2="-2000.125" x3="500" y3="1e-05" z3="-1e3"/>)";
} // namespace

// "zohpc export" as a whole process.
class tst_zohpcExport final : public zoTestCase
{
    Q_OBJECT

private slots:
    void paraViewFileIsWhole();
    void equalizerFileIsWhole();
    void powerWallTilesAreTheirPlanes();
    void tiledWallHasASizePerPixel();
    void viewportsAreRanksOfTheirOwn();
    void negativePositionsKeepTheirSign();
    void windowsBeyondAnyScreenAreLeftOut_data();
    void windowsBeyondAnyScreenAreLeftOut();
    void smallestDifferenceOfEyeSeparationIsTold();
    void severalScreensNameTheirDisplay();
    void equalHostsShareANode();
    void namesFitTheFormat();
    void numbersHaveNoExponents();
    void segmentsCoverTheirPartOfTheWall();
    void whatCannotBeSaidIsListed_data();
    void whatCannotBeSaidIsListed();
    void nothingToRenderIsAProblem();
    void wrongUsageIsTold();

private:
    zoCliFiles m_files;
};

void tst_zohpcExport::paraViewFileIsWhole()
{
    const zoCommandRun run = zoCommandRun::zohpc(
        {"export", "--paraview", "-"}, setup(s_plane, window("a", viewport("P"), "x=\"10\" y=\"20\"")));

    QCOMPARE(run.whole(), QByteArray("<?xml version=\"1.0\" ?>\n"
                                     "<pvx>\n"
                                     "  <Process Type=\"server\">\n"
                                     "    <EyeSeparation Value=\"0.06\"/>\n"
                                     "    <Machine Name=\"a\"\n"
                                     "             Geometry=\"400x300+10+20\"\n"
                                     "             LowerLeft=\"-1 0 -2\"\n"
                                     "             LowerRight=\"0.5 0 -2.000125\"\n"
                                     "             UpperRight=\"0.5 0 -1\"/>\n"
                                     "  </Process>\n"
                                     "</pvx>\n"
                                     "--- errors\n--- exit code 0\n"));
}

void tst_zohpcExport::equalizerFileIsWhole()
{
    const zoCommandRun run =
        zoCommandRun::zohpc({"export", "-", "--equalizer", "-"},
                            setup(s_plane, window("a", viewport("P"), "fullscreen=\"true\"")));

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.output.startsWith("#Equalizer 1.2 ascii\nserver\n{\n    config\n"));
    QCOMPARE(QString::fromUtf8(run.output).simplified(),
             QStringLiteral(
                 "#Equalizer 1.2 ascii server { config { attributes { eye_base 0.06 } "
                 "node { name \"a\" connection { hostname \"a\" } pipe { device 0 "
                 "window { name \"window 1\" viewport [ 0 0 400 300 ] attributes { hint_fullscreen ON } "
                 "channel { name \"P\" viewport [ 0 0 1 1 ] } } } } "
                 "observer { } layout { name \"P\" view { } } canvas { name \"P\" layout \"P\" "
                 "segment { channel \"P\" viewport [ 0 0 1 1 ] "
                 // The fourth corner: lower left + (upper right - lower right).
                 "wall { bottom_left [ -1 0 -2 ] bottom_right [ 0.5 0 -2.000125 ] "
                 "top_left [ -1 0 -0.999875 ] } } } } }"));
}

void tst_zohpcExport::powerWallTilesAreTheirPlanes()
{
    const zoCommandRun run = zoCommandRun::zohpc(
        {"export", QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"), "--paraview", "-"});

    QCOMPARE(machines(run.output),
             (QList<Machine>{
                 {"wall-r1-c1", "1920x1200+0+0", "-1.8 -0.12 -2.5; 0.12 -0.12 -2.5; 0.12 1.08 -2.5", ""},
                 {"wall-r1-c2", "1920x1200+0+0", "-0.12 -0.12 -2.5; 1.8 -0.12 -2.5; 1.8 1.08 -2.5", ""},
                 {"wall-r2-c1", "1920x1200+0+0", "-1.8 -1.08 -2.5; 0.12 -1.08 -2.5; 0.12 0.12 -2.5", ""},
                 {"wall-r2-c2", "1920x1200+0+0", "-0.12 -1.08 -2.5; 1.8 -1.08 -2.5; 1.8 0.12 -2.5", ""}}));
}

void tst_zohpcExport::tiledWallHasASizePerPixel()
{
    const QByteArray wall = zoCommandRun::zohpc({"new", "--wall", "2x2", "--tile", "400x300", "--overlap",
                                                 "100x50", "--distance", "2000", "--hosts", "a b c d"})
                                .output;

    const zoCommandRun run = zoCommandRun::zohpc({"export", "--paraview", "-", "--pixel-pitch", "0.5"}, wall);

    // 700 x 550 pixels of half a millimetre.
    const QList<Machine> list = machines(run.output);
    QCOMPARE(list.size(), 4);
    QCOMPARE(list.at(0).corners, QStringLiteral("-0.175 -0.0125 -2; 0.025 -0.0125 -2; 0.025 0.1375 -2"));
    QCOMPARE(list.at(3).corners, QStringLiteral("-0.025 -0.1375 -2; 0.175 -0.1375 -2; 0.175 0.0125 -2"));
    QVERIFY(run.errors.contains("\"Wall\" has pixels instead of a size: a pixel is taken for 0.5 mm"));
    QCOMPARE(run.exitCode, 0);
}

void tst_zohpcExport::viewportsAreRanksOfTheirOwn()
{
    const QByteArray text = setup(
        s_plane, window("a", viewport("P", "", "left") + viewport("P", "", "top"), "x=\"100\" y=\"50\""));

    const QList<Machine> ranks = machines(zoCommandRun::zohpc({"export", "--paraview", "-"}, text).output);
    const QByteArray channels = zoCommandRun::zohpc({"export", "--equalizer", "-"}, text).output;

    QCOMPARE(ranks.size(), 2);
    QCOMPARE(ranks.at(0).geometry, QStringLiteral("200x300+100+50"));
    QCOMPARE(ranks.at(1).geometry, QStringLiteral("400x150+100+50"));
    // Both in one window, counted from its lower left corner.
    QCOMPARE(channels.count("window\n"), 1);
    QCOMPARE(block(channels, "channel\n"), QStringLiteral("channel { name \"P\" viewport [ 0 0 0.5 1 ] }"));
    QVERIFY(block(channels, "window\n").contains("channel { name \"P 2\" viewport [ 0 0.5 1 0.5 ] }"));
}

void tst_zohpcExport::negativePositionsKeepTheirSign()
{
    const zoCommandRun run = zoCommandRun::zohpc(
        {"export", "--paraview", "-"}, setup(s_plane, window("a", viewport("P"), "x=\"-5\" y=\"0\"")));

    QCOMPARE(machines(run.output).value(0).geometry, QStringLiteral("400x300-5+0"));
}

void tst_zohpcExport::windowsBeyondAnyScreenAreLeftOut_data()
{
    QTest::addColumn<QByteArray>("place");
    QTest::addColumn<QByteArray>("view");
    QTest::addColumn<bool>("isWritten");

    const QByteArray whole = viewport("P");
    QTest::newRow("furthest") << QByteArray("x=\"999600\"") << whole << true;
    QTest::newRow("a-pixel-more") << QByteArray("x=\"999601\"") << whole << false;
    QTest::newRow("right-end-of-numbers") << QByteArray("x=\"2147483647\"") << whole << false;
    QTest::newRow("left-end-of-numbers")
        << QByteArray("x=\"-2147483648\" y=\"-2147483648\"") << whole << false;
    const auto part = [](const QByteArray& x) {
        return "<viewport projection=\"P\" position=\"custom\" x1=\"" + x + "\" y1=\"0\" x2=\"1\" y2=\"1\"/>";
    };
    QTest::newRow("viewport-far-away") << QByteArray("x=\"0\"") << part("-1e300") << false;
    QTest::newRow("viewport-infinite") << QByteArray("x=\"0\"") << part("-inf") << false;
    QTest::newRow("viewport-no-number") << QByteArray("x=\"0\"") << part("nan") << false;
}

void tst_zohpcExport::windowsBeyondAnyScreenAreLeftOut()
{
    QFETCH(QByteArray, place);
    QFETCH(QByteArray, view);
    QFETCH(bool, isWritten);

    const zoCommandRun run =
        zoCommandRun::zohpc({"export", "--paraview", "-"}, setup(s_plane, window("a", view, place)));

    QCOMPARE(machines(run.output).size(), isWritten ? 1 : 0);
    QCOMPARE(run.errors.contains("is further than 1000000 pixels away"), !isWritten);
}

void tst_zohpcExport::smallestDifferenceOfEyeSeparationIsTold()
{
    const auto display = [](const char* separation, const QByteArray& content) {
        return QByteArray("<display eyeseparation=\"") + separation + "\">" + content + "</display>";
    };
    const QByteArray text = "<cluster version=\"1\"><master><network><node name=\"a\"/></network></master>" +
                            QByteArray(s_plane) + display("65", window("a", viewport("P"))) +
                            display("64.5", window("a", viewport("P"), "x=\"400\"")) + "</cluster>";

    const zoCommandRun run = zoCommandRun::zohpc({"export", "--paraview", "-"}, text);

    // The first one's counts, and a smaller one is told as a larger one is.
    QVERIFY(run.output.contains("EyeSeparation Value=\"0.065\""));
    QVERIFY(run.errors.contains(
        "the eye separation of 64.5 mm of display 2 is not written: there is one for all, 65 mm"));
}

void tst_zohpcExport::severalScreensNameTheirDisplay()
{
    const QByteArray text =
        zoCommandRun::zohpc({"new", "--wall", "3x1", "--size", "3000x500", "--hosts", "a"}).output;

    const zoCommandRun run = zoCommandRun::zohpc({"export", "--paraview", "-"}, text);
    const QByteArray pipes = zoCommandRun::zohpc({"export", "--equalizer", "-"}, text).output;

    QStringList environments;
    for (const Machine& machine : machines(run.output))
        environments << machine.environment;
    QCOMPARE(environments, (QStringList{"DISPLAY=:0.0", "DISPLAY=:0.1", "DISPLAY=:0.2"}));
    QCOMPARE(pipes.count("pipe\n"), 3);
    QCOMPARE(pipes.count("node\n"), 1);
    QVERIFY(pipes.contains("device 2\n"));
}

void tst_zohpcExport::equalHostsShareANode()
{
    const zoCommandRun run = zoCommandRun::zohpc(
        {"export", "--equalizer", "-"},
        setup(s_plane, window("a 1", viewport("P")) + window("a 2", viewport("P"), "x=\"400\""),
              R"(<node name="a"/><node name="a"/>)"));

    QCOMPARE(run.output.count("connection { hostname \"a\" }"), 1);
    QCOMPARE(run.output.count("window\n"), 2);
}

void tst_zohpcExport::namesFitTheFormat()
{
    QByteArray plane = s_plane;
    plane.replace("\"P\"", "\"a&quot;b&#xa;&lt;c\\\"");
    const QByteArray text = setup(plane, window("x&quot;&amp;&lt;y", viewport("a&quot;b&#xa;&lt;c\\")),
                                  R"(<node name="x&quot;&amp;&lt;y"/>)");

    const zoCommandRun equalizer = zoCommandRun::zohpc({"export", "--equalizer", "-"}, text);
    const zoCommandRun paraView = zoCommandRun::zohpc({"export", "--paraview", "-"}, text);

    QCOMPARE(equalizer.exitCode, 0);
    QVERIFY(equalizer.output.contains("hostname \"x&<y\""));
    QVERIFY(equalizer.output.contains("channel \"ab<c\"\n"));
    QVERIFY(equalizer.output.contains("name \"ab<c\"\n"));
    QCOMPARE(machines(paraView.output).value(0).name, QStringLiteral("x\"&<y"));
}

void tst_zohpcExport::numbersHaveNoExponents()
{
    const QByteArray text =
        setup(R"(<projection name="P" type="plane" x1="1e-3" y1="0.0001" z1="-1e9" x2="1e10" y2="0" )"
              R"(z2="-1e9" x3="1e10" y3="1e6" z3="-1e9"/>)",
              window("a", viewport("P")));

    const zoCommandRun paraView = zoCommandRun::zohpc({"export", "--paraview", "-"}, text);
    const zoCommandRun equalizer = zoCommandRun::zohpc({"export", "--equalizer", "-"}, text);

    QCOMPARE(machines(paraView.output).value(0).corners,
             QStringLiteral("0.000001 0.0000001 -1000000; 10000000 0 -1000000; 10000000 1000 -1000000"));
    const QRegularExpression exponent(QStringLiteral("[0-9]e[-+0-9]"));
    QVERIFY(!QString::fromUtf8(equalizer.output).contains(exponent));
}

void tst_zohpcExport::segmentsCoverTheirPartOfTheWall()
{
    const zoCommandRun run = zoCommandRun::zohpc(
        {"export", QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"), "--equalizer", "-"});

    QCOMPARE(run.output.count("canvas\n"), 1);
    const QString canvas = block(run.output, "canvas\n");
    QVERIFY(canvas.contains(
        "segment { channel \"Wall row:1 col:1\" viewport [ 0 0.4444444 0.5333333 0.5555556 ]"));
    QVERIFY(canvas.contains(
        "segment { channel \"Wall row:2 col:2\" viewport [ 0.4666667 0 0.5333333 0.5555556 ]"));
}

void tst_zohpcExport::whatCannotBeSaidIsListed_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("errors");

    const QByteArray good = window("b", viewport("P"));
    QTest::newRow("blending") << setup(QByteArray(s_plane).replace("/>", " edgeblending=\"true\"/>"), good)
                              << QByteArray("the edge blending of \"P\" is not written\n");
    QTest::newRow("eye") << setup(s_plane, window("a", viewport("P", "eye=\"left\"")))
                         << QByteArray(
                                "the eye \"left\" of viewport 1 of window 1 of display 1 is not written\n");
    QTest::newRow("flip") << setup(s_plane, window("a", viewport("P", "flipx=\"true\"")))
                          << QByteArray("the flip of viewport 1 of window 1 of display 1 is not written\n");
    QTest::newRow("gateway")
        << setup(s_plane, good, R"(<node name="gw"><network><node name="b"/></network></node>)")
        << QByteArray("the gateway \"gw\" is not written: the hosts behind it must be reached directly\n");
    QTest::newRow("sync-and-camera")
        << setup(s_plane, good).replace("user=\"1\"", "camera=\"C\" hardwaresync=\"true\"")
        << QByteArray("the hardware sync of display 1 is not written\nthe camera \"C\" of display 1 is not "
                      "written\n");
    QTest::newRow("no-node")
        << setup(s_plane, window("", viewport("P")) + good)
        << QByteArray("viewport 1 of window 1 of display 1 is left out: its window has no node\n");
    QTest::newRow("unknown-node")
        << setup(s_plane, window("z", viewport("P")) + good)
        << QByteArray("viewport 1 of window 1 of display 1 is left out: the cluster has no node \"z\"\n");
    QTest::newRow("disabled-node")
        << setup(s_plane, window("a", viewport("P")) + good,
                 R"(<node name="a" enabled="false"/><node name="b"/>)")
        << QByteArray("viewport 1 of window 1 of display 1 is left out: the node a is disabled\n");
    QTest::newRow("no-projection")
        << setup(s_plane, window("a", "<viewport/>") + good)
        << QByteArray("viewport 1 of window 1 of display 1 is left out: it shows no projection\n");
    QTest::newRow("whole-cave")
        << setup(s_plane + R"(<projection name="C" type="cave" left="true"/>)",
                 window("a", viewport("C")) + good)
        << QByteArray("viewport 1 of window 1 of display 1 is left out: \"C\" is not one plane\n");
    QTest::newRow("plane-without-area")
        << setup(
               s_plane +
                   R"(<projection name="Z" type="plane" x1="0" y1="0" z1="0" x2="0" y2="0" z2="0" x3="0" y3="0" z3="0"/>)",
               window("a", viewport("Z")) + good)
        << QByteArray("viewport 1 of window 1 of display 1 is left out: the plane \"Z\" has no area\n");
}

void tst_zohpcExport::whatCannotBeSaidIsListed()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, errors);
    const QString pvx = m_files.path("out.pvx");
    const QString eqc = m_files.path("out.eqc");

    const zoCommandRun run = zoCommandRun::zohpc({"export", "--paraview", pvx, "--equalizer", eqc}, text);

    // Each with its place, which tst_zohpcCheck is about.
    const QString withoutPlaces =
        QString::fromUtf8(run.errors)
            .remove(QRegularExpression(QStringLiteral("^-:1:\\d+: "), QRegularExpression::MultilineOption));
    QCOMPARE(withoutPlaces.toUtf8(), errors);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(machines(zoCliFiles::read(pvx)).size(), 1);
    QCOMPARE(zoCliFiles::read(eqc).count("channel\n"), 1);
}

void tst_zohpcExport::nothingToRenderIsAProblem()
{
    const QString file = m_files.write("kept.pvx", "old");

    const zoCommandRun run = zoCommandRun::zohpc(
        {"export", QStringLiteral(ZO_DATA_DIR "/cluster/default.zhpc"), "--paraview", file});

    QCOMPARE(run.whole(),
             QByteArray("--- errors\n" ZO_DATA_DIR "/cluster/default.zhpc:1:1: nothing to render: no "
                        "window of a node shows a plane\n--- exit code 1\n"));
    QCOMPARE(zoCliFiles::read(file), QByteArray("old"));
}

void tst_zohpcExport::wrongUsageIsTold()
{
    const QByteArray help = "\nTry 'zohpc export --help'.\n--- exit code 2\n";

    QCOMPARE(zoCommandRun::zohpc({"export", "a"}).whole(),
             "--- errors\nzohpc export: --paraview or --equalizer is missing" + help);
    QCOMPARE(zoCommandRun::zohpc({"export", "a", "b", "--paraview", "c"}).whole(),
             "--- errors\nzohpc export: one file at a time" + help);
    QCOMPARE(zoCommandRun::zohpc({"export", "--paraview", "c", "--pixel-pitch", "0"}).whole(),
             "--- errors\nzohpc export: --pixel-pitch: \"0\" is no size in millimetres" + help);
}

ZO_TEST_MAIN(tst_zohpcExport)
#include "tst_zohpcExport.moc"
