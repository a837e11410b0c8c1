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

QByteArray viewport(const QByteArray& projection, const QByteArray& more = "", const char* position = "fill")
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
    void namesHoldWhatTheLexerTakes_data();
    void namesHoldWhatTheLexerTakes();
    void eyesAreWrittenForEqualizer_data();
    void eyesAreWrittenForEqualizer();
    void eyesOfOneFileKeepApart();
    void windowsOfADisplaySwapTogether_data();
    void windowsOfADisplaySwapTogether();
    void displaysHaveObserversOfTheirOwn();
    void releaseDecidesOnTheForm_data();
    void releaseDecidesOnTheForm();
    void numbersHaveNoExponents();
    void segmentsCoverTheirPartOfTheWall();
    void whatCannotBeSaidIsListed_data();
    void whatCannotBeSaidIsListed();
    void fullScreenIsCountedBehindOtherWindows();
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
                 "observer { name \"display 1\" eye_base 0.06 } "
                 "layout { name \"P\" view { observer \"display 1\" mode MONO } } canvas { name \"P\" layout "
                 "\"P\" "
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

    QCOMPARE(machines(run.output).value(0).geometry, QStringLiteral("400x300+-5+0"));
    QCOMPARE(machines(zoCommandRun::zohpc({"export", "--paraview", "-"},
                                          setup(s_plane, window("a", viewport("P"), "x=\"-50\" y=\"-40\"")))
                          .output)
                 .value(0)
                 .geometry,
             QStringLiteral("400x300+-50+-40"));
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

// The engine ends at the first sign that its lexer does not know within a string.
void tst_zohpcExport::namesHoldWhatTheLexerTakes_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("written");

    QTest::newRow("kept") << QByteArray("Wall-1.a_2, 50% &amp; @x &lt;y&gt; a:b! /c")
                          << QByteArray("Wall-1.a_2, 50% & @x <y> a:b! /c");
    QTest::newRow("accents") << QByteArray("Gro\xc3\x9f"
                                           "e W\xc3\xa4nde")
                             << QByteArray("Gro_e Wande");
    QTest::newRow("brackets") << QByteArray("W[1](a)+{b}") << QByteArray("W_1__a___b_");
    QTest::newRow("comment") << QByteArray("a#b") << QByteArray("a_b");
    QTest::newRow("other-plane") << QByteArray("\xf0\x9f\x98\x80") << QByteArray("_");
    QTest::newRow("nothing-left") << QByteArray("\\") << QByteArray("unnamed");
}

void tst_zohpcExport::namesHoldWhatTheLexerTakes()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, written);
    const QByteArray plane = QByteArray(s_plane).replace("\"P\"", '"' + name + '"');
    // A second one of which nothing else is left.
    const QByteArray text =
        setup(plane + QByteArray(s_plane).replace("\"P\"", '"' + name + "\\\""),
              window("a", viewport(name)) + window("a", viewport(name + '\\'), "x=\"400\""));

    const zoCommandRun run = zoCommandRun::zohpc({"export", "--equalizer", "-"}, text);

    QVERIFY2(run.output.contains("channel \"" + written + "\"\n"), run.output.constData());
    QVERIFY2(run.output.contains("channel \"" + written + " 2\"\n"), run.output.constData());
    QVERIFY(run.output.contains("layout \"" + written + " 2\"\n"));
    QRegularExpressionMatchIterator names =
        QRegularExpression(QStringLiteral("\"[^\"]*\"")).globalMatch(QString::fromUtf8(run.output));
    static const QRegularExpression lexer(QStringLiteral("^\"[-., _%&@<>:a-zA-Z0-9! /]*\"$"));
    while (names.hasNext()) {
        const QString string = names.next().captured();
        QVERIFY2(string.contains(lexer), qUtf8Printable(string));
    }
}

void tst_zohpcExport::eyesAreWrittenForEqualizer_data()
{
    QTest::addColumn<QByteArray>("eye");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("hint"); // of the window
    QTest::addColumn<QString>("segment");
    QTest::addColumn<QString>("colours");

    const QString masks("global { EQ_COMPOUND_IATTR_STEREO_ANAGLYPH_LEFT_MASK [ %1 ] "
                        "EQ_COMPOUND_IATTR_STEREO_ANAGLYPH_RIGHT_MASK [ %2 ] }");
    QTest::newRow("mono") << QByteArray("mono") << "MONO"
                          << ""
                          << ""
                          << "";
    QTest::newRow("left") << QByteArray("left") << "STEREO"
                          << "hint_stereo OFF"
                          << "eye [ LEFT ]"
                          << "";
    QTest::newRow("right") << QByteArray("right") << "STEREO"
                           << "hint_stereo OFF"
                           << "eye [ RIGHT ]"
                           << "";
    QTest::newRow("double-buffered") << QByteArray("stereo") << "STEREO"
                                     << "hint_stereo ON"
                                     << ""
                                     << "";
    QTest::newRow("red-cyan") << QByteArray("redcyan") << "STEREO"
                              << "hint_stereo OFF"
                              << "" << masks.arg("RED", "GREEN BLUE");
    QTest::newRow("blue-yellow") << QByteArray("blueyellow") << "STEREO"
                                 << "hint_stereo OFF"
                                 << "" << masks.arg("BLUE", "RED GREEN");
    QTest::newRow("green-magenta") << QByteArray("greenmagenta") << "STEREO"
                                   << "hint_stereo OFF"
                                   << "" << masks.arg("GREEN", "RED BLUE");
    QTest::newRow("interlaced-is-unknown") << QByteArray("horizontalinterlaced") << "MONO"
                                           << ""
                                           << ""
                                           << "";
}

void tst_zohpcExport::eyesAreWrittenForEqualizer()
{
    QFETCH(QByteArray, eye);
    QFETCH(QString, mode);
    QFETCH(QString, hint);
    QFETCH(QString, segment);
    QFETCH(QString, colours);

    const zoCommandRun run = zoCommandRun::zohpc(
        {"export", "--equalizer", "-"}, setup(s_plane, window("a", viewport("P", "eye=\"" + eye + "\""))));

    QCOMPARE(run.errors.contains("the eye "), eye == "horizontalinterlaced");
    QCOMPARE(block(run.output, "layout\n"),
             "layout { name \"P\" view { observer \"display 1\" mode " + mode + " } }");
    QVERIFY(block(run.output, "window\n").contains(hint));
    QCOMPARE(block(run.output, "window\n").contains("hint_stereo"), !hint.isEmpty());
    QVERIFY(block(run.output, "segment\n").contains(segment));
    QCOMPARE(block(run.output, "segment\n").contains("eye ["), !segment.isEmpty());
    QCOMPARE(block(run.output, "global\n"), colours);
}

// A view is in stereo or not; of colours a file has one pair.
void tst_zohpcExport::eyesOfOneFileKeepApart()
{
    const QByteArray text = setup(s_plane, window("a", viewport("P", "eye=\"redcyan\"")) +
                                               window("b", viewport("P", "eye=\"mono\"")) +
                                               window("b", viewport("P", "eye=\"blueyellow\""), "x=\"400\""));

    const zoCommandRun run = zoCommandRun::zohpc({"export", "--equalizer", "-"}, text);

    QCOMPARE(run.output.count("canvas\n"), 2);
    QCOMPARE(run.output.count("mode STEREO"), 1);
    QCOMPARE(run.output.count("LEFT_MASK [ RED ]"), 1);
    QVERIFY(
        run.errors.contains("the eye \"blueyellow\" of viewport 1 of window 3 of display 1 is not written"));
    QCOMPARE(run.errors.count("the eye "), 1);
}

void tst_zohpcExport::windowsOfADisplaySwapTogether_data()
{
    QTest::addColumn<QByteArray>("sync");
    QTest::addColumn<QByteArray>("windows");
    QTest::addColumn<int>("barriers");
    QTest::addColumn<QByteArray>("barrier");

    const QByteArray one = window("a", viewport("P", "", "left") + viewport("P", "", "right"));
    const QByteArray two = one + window("b", viewport("P"));
    QTest::newRow("one-window") << QByteArray("false") << one << 0 << QByteArray();
    QTest::newRow("two-windows") << QByteArray("false") << two << 2
                                 << QByteArray("swapbarrier { name \"display 1\" }\n");
    QTest::newRow("one-window-in-hardware")
        << QByteArray("true") << one << 1
        << QByteArray("swapbarrier { name \"display 1\" NV_group 1 NV_barrier 1 }\n");
    QTest::newRow("two-windows-in-hardware")
        << QByteArray("true") << two << 2
        << QByteArray("swapbarrier { name \"display 1\" NV_group 1 NV_barrier 1 }\n");
}

void tst_zohpcExport::windowsOfADisplaySwapTogether()
{
    QFETCH(QByteArray, sync);
    QFETCH(QByteArray, windows);
    QFETCH(int, barriers);
    QFETCH(QByteArray, barrier);

    const zoCommandRun run =
        zoCommandRun::zohpc({"export", "--equalizer", "-"},
                            setup(s_plane, windows).replace("user=\"1\"", "hardwaresync=\"" + sync + '"'));

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.output.count("swapbarrier"), barriers);
    QCOMPARE(barrier.isEmpty() ? 0 : run.output.count(barrier), barriers);
}

// Two displays are two persons, each with the distance of their eyes.
void tst_zohpcExport::displaysHaveObserversOfTheirOwn()
{
    const QByteArray text = setup(s_plane, window("a", viewport("P", "eye=\"left\"")) +
                                               "</display><display eyeseparation=\"70\">" +
                                               window("b", viewport("P", "eye=\"right\"")));

    const zoCommandRun equalizer = zoCommandRun::zohpc({"export", "--equalizer", "-"}, text);
    const zoCommandRun old = zoCommandRun::zohpc({"export", "--paraview", "-", "--release", "6.1"}, text);
    const zoCommandRun present =
        zoCommandRun::zohpc({"export", "--paraview", "-", "--release", "6.2.1"}, text);

    QCOMPARE(equalizer.errors, QByteArray());
    QVERIFY(equalizer.output.contains("observer { name \"display 1\" eye_base 0.06 }\n"));
    QVERIFY(equalizer.output.contains("observer { name \"display 2\" eye_base 0.07 }\n"));
    QCOMPARE(equalizer.output.count("view { observer \"display 2\" mode STEREO }"), 1);
    QVERIFY(old.errors.contains("the eye separation of 70 mm of display 2 is not written"));
    QCOMPARE(old.errors.count("the eye \""), 2);
    QVERIFY(!old.output.contains("Viewer"));
    QVERIFY(!old.output.contains("StereoType"));
    QCOMPARE(present.errors, QByteArray());
    QVERIFY(present.output.contains("<Viewer Id=\"0\" EyeSeparation=\"0.06\"/>\n"));
    QVERIFY(present.output.contains("<Viewer Id=\"1\" EyeSeparation=\"0.07\"/>\n"));
    QVERIFY(present.output.contains("<Machine Name=\"a\" ViewerId=\"0\" StereoType=\"Left\"\n"));
    QVERIFY(present.output.contains("<Machine Name=\"b\" ViewerId=\"1\" StereoType=\"Right\"\n"));
}

void tst_zohpcExport::releaseDecidesOnTheForm_data()
{
    QTest::addColumn<QString>("release");
    QTest::addColumn<bool>("hasProcess");
    QTest::addColumn<bool>("hasStereo");

    QTest::newRow("before") << "5.11" << true << false;
    QTest::newRow("with-a-third-number") << "5.11.2" << true << false;
    QTest::newRow("last-with-a-process") << "6.0" << true << false;
    QTest::newRow("first-without-a-process") << "6.1" << false << false;
    QTest::newRow("first-with-stereo") << "6.2" << false << true;
    QTest::newRow("later") << "10.0" << false << true;
}

void tst_zohpcExport::releaseDecidesOnTheForm()
{
    QFETCH(QString, release);
    QFETCH(bool, hasProcess);
    QFETCH(bool, hasStereo);

    const zoCommandRun run =
        zoCommandRun::zohpc({"export", "--paraview", "-", "--release", release},
                            setup(s_plane, window("a", viewport("P", "eye=\"stereo\""))));

    QCOMPARE(machines(run.output).size(), 1);
    QCOMPARE(run.output.contains("<Process Type=\"server\">"), hasProcess);
    QCOMPARE(run.output.contains("StereoType=\"Crystal Eyes\""), hasStereo);
    QCOMPARE(run.errors.contains("the eye \"stereo\""), !hasStereo);
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

void tst_zohpcExport::fullScreenIsCountedBehindOtherWindows()
{
    const QByteArray full = window("b", viewport("P"), "fullscreen=\"true\"");
    const QByteArray text =
        setup(s_plane, window("a", viewport("P")) + full + window("a", viewport("P")) + full);

    const zoCommandRun run = zoCommandRun::zohpc({"export", "--paraview", "-"}, text);

    QVERIFY(run.errors.contains("full screen (2 windows) is not written"));
}

void tst_zohpcExport::whatCannotBeSaidIsListed_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("errors");

    const QByteArray good = window("b", viewport("P"));
    QTest::newRow("blending") << setup(QByteArray(s_plane).replace("/>", " edgeblending=\"true\"/>"), good)
                              << QByteArray("the edge blending of \"P\" is not written\n");
    QTest::newRow("eye")
        << setup(s_plane, window("a", viewport("P", "eye=\"left\"")))
        << QByteArray(
               "for ParaView: the eye \"left\" of viewport 1 of window 1 of display 1 is not written\n");
    QTest::newRow("eye-of-neither")
        << setup(s_plane, window("a", viewport("P", "eye=\"splitbottomtop\"")))
        << QByteArray("the eye \"splitbottomtop\" of viewport 1 of window 1 of display 1 is not written\n");
    QTest::newRow("full-screen") << setup(s_plane, window("a", viewport("P"), "fullscreen=\"true\""))
                                 << QByteArray("for ParaView: full screen (1 windows) is not written: they "
                                               "open in their size at their place\n");
    QTest::newRow("host-name") << setup(s_plane, window("a[1]", viewport("P")), R"(<node name="a[1]"/>)")
                               << QByteArray(
                                      "for Equalizer: the host name \"a[1]\" is written as \"a_1_\"\n");
    QTest::newRow("flip") << setup(s_plane, window("a", viewport("P", "flipx=\"true\"")))
                          << QByteArray("the flip of viewport 1 of window 1 of display 1 is not written\n");
    QTest::newRow("gateway")
        << setup(s_plane, good, R"(<node name="gw"><network><node name="b"/></network></node>)")
        << QByteArray("the gateway \"gw\" is not written: the hosts behind it must be reached directly\n");
    QTest::newRow("sync-and-camera")
        << setup(s_plane, good).replace("user=\"1\"", "camera=\"C\" hardwaresync=\"true\"")
        << QByteArray("for ParaView: the hardware sync of display 1 is not written\nthe camera \"C\" of "
                      "display 1 is not "
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
    for (const char* release : {"", "5", "5.", "x.1", "5.11a", "-5.1", "1234.1"})
        QCOMPARE(
            zoCommandRun::zohpc({"export", "--paraview", "c", QString("--release=%1").arg(release)}).whole(),
            "--- errors\nzohpc export: --release: \"" + QByteArray(release) +
                "\" is no release such as 5.11" + help);
    QCOMPARE(zoCommandRun::zohpc({"export", "--equalizer", "c", "--release", "5.11"}).whole(),
             "--- errors\nzohpc export: --release is for --paraview" + help);
}

ZO_TEST_MAIN(tst_zohpcExport)
#include "tst_zohpcExport.moc"
