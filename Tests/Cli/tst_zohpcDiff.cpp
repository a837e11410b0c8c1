#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

// "zohpc diff" as a whole process.
class tst_zohpcDiff final : public zoTestCase
{
    Q_OBJECT

private slots:
    void sameContentIsNoDifference();
    void changeIsToldInWords_data();
    void changeIsToldInWords();
    void differencesAsJson();
    void standardInputIsOneOfBoth();
    void unusableInputIsTold();

private:
    // A wall of two tiles, a plane and a gateway, with one part replaced.
    static QByteArray setup(const QByteArray& part = QByteArray(),
                            const QByteArray& replacement = QByteArray());

    zoCliFiles m_files;
};

QByteArray tst_zohpcDiff::setup(const QByteArray& part, const QByteArray& replacement)
{
    QByteArray text = R"(<cluster version="1">
 <master scenecompression="best">
  <network speed="10g">
   <node name="a1"/>
   <node name="a2"/>
   <node name="gw" rendernode="false"><network><node name="b1"/></network></node>
  </network>
  <network><node name="c1"/></network>
 </master>
 <projection name="Wall" type="wall" rows="1" columns="2" overlapx="100" overlapy="0" distance="1500" edgeblending="true"/>
 <projection name="P" type="plane" rows="1" columns="1" x1="0" y1="0" z1="-1" x2="10" y2="0" z2="-1" x3="10" y3="10" z3="-1"/>
 <display eyeseparation="65" user="1" hardwaresync="false">
  <window node="a1" screen="0" x="0" y="0" width="1920" height="1080" fullscreen="true"><viewport projection="Wall row:1 col:1" eye="mono"/></window>
  <window node="a2" screen="0" x="0" y="0" width="1920" height="1080" fullscreen="true"><viewport projection="Wall row:1 col:2" eye="mono"/></window>
  <window node="b1" screen="0" x="0" y="0" width="1920" height="1080" fullscreen="true"><viewport projection="P" eye="left"/></window>
 </display>
</cluster>
)";
    if (!part.isEmpty() && !text.contains(part))
        qFatal("no \"%s\" in the configuration", part.constData());
    return part.isEmpty() ? text : text.replace(part, replacement);
}

void tst_zohpcDiff::sameContentIsNoDifference()
{
    const QString file = m_files.write("same.zhpc", setup());
    const QString other = m_files.write("other.zhpc", zoCommandRun::zohpc({"format", file}).output);
    QVERIFY(zoCliFiles::read(file) != zoCliFiles::read(other));

    QCOMPARE(zoCommandRun::zohpc({"diff", file, other}).whole(), QByteArray("--- errors\n--- exit code 0\n"));
    QCOMPARE(zoCommandRun::zohpc({"diff", "--json", file, other}).whole(),
             QByteArray("[]\n--- errors\n--- exit code 0\n"));
}

void tst_zohpcDiff::changeIsToldInWords_data()
{
    QTest::addColumn<QByteArray>("part");
    QTest::addColumn<QByteArray>("replacement");
    QTest::addColumn<QByteArray>("output");

    const auto row = [](const char* name, const char* part, const char* replacement, const char* output) {
        QTest::newRow(name) << QByteArray(part) << QByteArray(replacement) << QByteArray(output);
    };
    row("node-added", "<node name=\"a2\"/>", "<node name=\"a2\"/><node name=\"a3\"/>",
        "node added: a3 (network 1)\n");
    row("nodes-added-behind-a-gateway", "<node name=\"b1\"/>",
        "<node name=\"b1\"/><node name=\"b2\"/><node name=\"b3\"/>",
        "nodes added: b[2-3] (network 1 behind gw)\n");
    row("node-removed", "<node name=\"c1\"/>", "", "node removed: c1 (network 2)\n");
    row("node-moved", "<node name=\"c1\"/></network>", "</network><network><node name=\"c1\"/></network>",
        "network added: network 3\nnode moved: c1 from network 2 to network 3\n");
    row("nodes-in-another-order", "<node name=\"a1\"/>\n   <node name=\"a2\"/>",
        "<node name=\"a2\"/><node name=\"a1\"/>", "network 1: its nodes are in another order\n");
    row("node-disabled", "<node name=\"a2\"/>", "<node name=\"a2\" enabled=\"false\"/>",
        "node a2: disabled\n");
    row("node-renders", " rendernode=\"false\"", "", "node gw: renders now\n");
    row("network-option", "speed=\"10g\"", "speed=\"40g\"",
        "network 1: link speed changed from 10g to 40g\n");
    row("master-option-gone", "scenecompression=\"best\"", "",
        "cluster: scene compression changed from best to none\n");
    row("overlap", "overlapx=\"100\"", "overlapx=\"120\"",
        "wall \"Wall\": overlap changed from 100 x 0 pixels to 120 x 0 pixels\n");
    row("columns", "rows=\"1\" columns=\"2\" overlapx", "rows=\"2\" columns=\"2\" overlapx",
        "wall \"Wall\": columns x rows changed from 2x1 to 2x2\n");
    row("blending", "edgeblending=\"true\"", "edgeblending=\"false\"",
        "wall \"Wall\": edge blending changed from on to off\n");
    row("distance", "distance=\"1500\"", "distance=\"2000\"",
        "wall \"Wall\": distance changed from 1500 mm to 2000 mm\n");
    row("plane-moved", R"(z1="-1" x2="10" y2="0" z2="-1" x3="10" y3="10" z3="-1")",
        R"(z1="-2.5" x2="10" y2="0" z2="-2.5" x3="10" y3="10" z3="-2.5")",
        "plane \"P\": moved by (0, 0, -1.5) mm\n");
    row("plane-reshaped", "y3=\"10\"", "y3=\"12\"",
        "plane \"P\": corners changed from (0, 0, -1) (10, 0, -1) (10, 10, -1) to (0, 0, -1) (10, 0, -1) "
        "(10, 12, -1) mm\n");
    row("eye-separation", "eyeseparation=\"65\"", "eyeseparation=\"63\"",
        "display 1: eye separation changed from 65 mm to 63 mm\n");
    row("tile-moved", "<window node=\"a2\" screen=\"0\"", "<window node=\"c1\" screen=\"0\"",
        "tile \"Wall row:1 col:2\": moved from a2 to c1\n");
    row("tile-moved-to-a-screen", "<window node=\"a2\" screen=\"0\"", "<window node=\"a1\" screen=\"1\"",
        "tile \"Wall row:1 col:2\": moved from a2 screen 0 to a1 screen 1\n");
    row("window-resized", "node=\"b1\" screen=\"0\" x=\"0\" y=\"0\" width=\"1920\"",
        "node=\"b1\" screen=\"0\" x=\"5\" y=\"0\" width=\"1280\"",
        "tile \"P\" (left): size changed from 1920 x 1080 pixels to 1280 x 1080 pixels\n"
        "tile \"P\" (left): position changed from 0, 0 pixels to 5, 0 pixels\n");
    row("other-eye", "eye=\"left\"", "eye=\"right\"", "window on b1: eye changed from left to right\n");
    row("other-tile", "<viewport projection=\"P\" eye=\"left\"/>", "<viewport eye=\"left\"/>",
        "window on b1: shows nothing instead of \"P\"\n");
    row("window-added", " </display>",
        "<window node=\"c1\"><viewport projection=\"P\" eye=\"right\"/></window></display>",
        "window added: tile \"P\" (right) on c1, display 1\n");
    row("display-added", "</cluster>", "<display/></cluster>", "display 2: added\n");
    row("projection-added", "</cluster>", "<projection type=\"cave\" name=\"C\"/></cluster>",
        "cave \"C\": added\n");
    row("projection-renamed", "\"P\"", "\"Q\"",
        "plane \"P\": renamed to \"Q\"\nwindow on b1: shows \"Q\" instead of \"P\"\n");
    row("booking", "version=\"1\"", "version=\"1\" booking=\"x\"", "booking changed from none to x\n");
}

void tst_zohpcDiff::changeIsToldInWords()
{
    QFETCH(QByteArray, part);
    QFETCH(QByteArray, replacement);
    QFETCH(QByteArray, output);
    const QString before = m_files.write("before.zhpc", setup());
    const QString after = m_files.write("after.zhpc", setup(part, replacement));

    const zoCommandRun run = zoCommandRun::zohpc({"diff", before, after});

    QCOMPARE(run.whole(), output + "--- errors\n--- exit code 1\n");
    QCOMPARE(zoCommandRun::zohpc({"diff", after, before}).exitCode, 1);
}

void tst_zohpcDiff::differencesAsJson()
{
    const QString before = m_files.write("before.zhpc", setup());
    const QString after = m_files.write("after.zhpc", setup("overlapx=\"100\"", "overlapx=\"120\""));

    const zoCommandRun run = zoCommandRun::zohpc({"diff", "--json", before, after});

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 1);
    const QJsonObject expected{
        {"kind", "projection-overlap"},
        {"text", "wall \"Wall\": overlap changed from 100 x 0 pixels to 120 x 0 pixels"}};
    QCOMPARE(QJsonDocument::fromJson(run.output).array(), QJsonArray{expected});
}

void tst_zohpcDiff::standardInputIsOneOfBoth()
{
    const QString file = m_files.write("file.zhpc", setup());

    QCOMPARE(zoCommandRun::zohpc({"diff", "-", file}, setup()).exitCode, 0);
    QCOMPARE(zoCommandRun::zohpc({"diff", file, "-"}, setup()).exitCode, 0);
    QCOMPARE(zoCommandRun::zohpc({"diff", "-", "-"}, setup()).whole(),
             QByteArray("--- errors\nzohpc diff: standard input can be one of the files only\n"
                        "Try 'zohpc diff --help'.\n--- exit code 2\n"));
}

void tst_zohpcDiff::unusableInputIsTold()
{
    const QString broken = m_files.write("broken.zhpc", "<cluster>");
    const QString missing = m_files.path("missing.zhpc");

    const zoCommandRun run = zoCommandRun::zohpc({"diff", broken, missing});

    QCOMPARE(run.whole(), "--- errors\n" + broken.toUtf8() + ":1:10: Premature end of document.\n" +
                              missing.toUtf8() + ": No such file or directory\n--- exit code 2\n");
    QCOMPARE(zoCommandRun::zohpc({"diff", broken}).exitCode, 2);
}

ZO_TEST_MAIN(tst_zohpcDiff)
#include "tst_zohpcDiff.moc"
