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
    void jsonTellsPathOldAndNew_data();
    void jsonTellsPathOldAndNew();
    void otherSpellingIsNoDifference_data();
    void otherSpellingIsNoDifference();
    void otherMeaningIsADifference_data();
    void otherMeaningIsADifference();
    void networksAreKnownByTheirNodes();
    void longListsAreCut();
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
    row("node-moved",
        "<node name=\"gw\" rendernode=\"false\"><network><node name=\"b1\"/></network></node>\n  "
        "</network>\n  "
        "<network>",
        "</network><network><node name=\"gw\" rendernode=\"false\"><network><node "
        "name=\"b1\"/></network></node>",
        "node moved: gw from network 1 to network 2\n");
    row("row-of-nodes-moved",
        "<node name=\"a1\"/>\n   <node name=\"a2\"/>\n   <node name=\"gw\" rendernode=\"false\"><network>",
        "<node name=\"gw\" rendernode=\"false\"><network><node name=\"a1\"/><node name=\"a2\"/>",
        "nodes moved: a[1-2] from network 1 to network 1 behind gw\n");
    row("all-nodes-moved", "<node name=\"c1\"/></network>",
        "</network><network><node name=\"c1\"/></network>", "network added: network 2\n");
    row("network-inserted", "  <network><node name=\"c1\"/>",
        "<network speed=\"1g\"><node name=\"d1\"/><node name=\"d2\"/><node name=\"gw2\"><network><node "
        "name=\"e1\"/></network></node></network>  <network><node name=\"c1\"/>",
        "network added: network 2 (d[1-2],e1,gw2)\n");
    row("network-inserted-in-front", "  <network speed=",
        "<network><node name=\"d1\"/></network>  <network speed=", "network added: network 1 (d1)\n");
    row("network-inserted-behind-a-gateway", "rendernode=\"false\"><network>",
        "rendernode=\"false\"><network><node name=\"d1\"/></network><network>",
        "network added: network 1 behind gw (d1)\n");
    row("network-with-other-nodes", "<node name=\"c1\"/></network>", "<node name=\"d1\"/></network>",
        "node removed: c1 (network 2)\nnode added: d1 (network 2)\n");
    row("network-removed", "  <network><node name=\"c1\"/></network>\n", "",
        "network removed: network 2 (c1)\n");
    row("network-moved",
        "<network><node name=\"b1\"/></network></node>\n  </network>\n  <network><node "
        "name=\"c1\"/></network>",
        "</node></network><network><node name=\"b1\"/></network><network><node name=\"c1\"/></network>",
        "network moved: network 1 behind gw is now network 2\n");
    row("gateway-renamed", "<node name=\"gw\"", "<node name=\"gate\"", "node renamed: gw to gate\n");
    row("gateway-renamed-and-changed", "<node name=\"gw\" rendernode=\"false\"",
        "<node name=\"gate\" enabled=\"false\"",
        "node renamed: gw to gate\nnode gate: disabled\nnode gate: renders now\n");
    row("gateway-replaced", "<node name=\"gw\" rendernode=\"false\"><network><node name=\"b1\"/>",
        "<node name=\"gate\" rendernode=\"false\"><network><node name=\"x1\"/>",
        "network removed: network 1 behind gw (b1)\nnetwork added: network 1 behind gate (x1)\n"
        "node removed: gw (network 1)\nnode added: gate (network 1)\n");
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
        {"path", "projection[Wall]/overlapx"},
        {"old", "100"},
        {"new", "120"},
        {"text", "wall \"Wall\": overlap changed from 100 x 0 pixels to 120 x 0 pixels"}};
    QCOMPARE(QJsonDocument::fromJson(run.output).array(), QJsonArray{expected});
}

void tst_zohpcDiff::jsonTellsPathOldAndNew_data()
{
    QTest::addColumn<QByteArray>("part");
    QTest::addColumn<QByteArray>("replacement");
    QTest::addColumn<QByteArray>("changes"); // path, old, new of each

    const auto row = [](const char* name, const char* part, const char* replacement, const char* changes) {
        QTest::newRow(name) << QByteArray(part) << QByteArray(replacement) << QByteArray(changes);
    };
    row("option-that-was-not-there", "<node name=\"a2\"/>", "<node name=\"a2\" enabled=\"false\"/>",
        R"(["node[a2]/enabled",null,"false"])");
    row("option-that-is-gone", " scenecompression=\"best\"", "",
        R"(["master/scenecompression","best",null])");
    row("two-attributes-of-one-line",
        "node=\"b1\" screen=\"0\" x=\"0\" y=\"0\" width=\"1920\" height=\"1080\"",
        "node=\"b1\" screen=\"0\" x=\"0\" y=\"0\" width=\"1280\" height=\"720\"",
        R"(["display[1]/window[3]/width","1920","1280"],["display[1]/window[3]/height","1080","720"])");
    row("viewport", "eye=\"left\"", "eye=\"right\"",
        R"(["display[1]/window[3]/viewport[1]/eye","left","right"])");
    row("tile-moved", "<window node=\"a2\" screen=\"0\"", "<window node=\"c1\" screen=\"1\"",
        R"(["display[1]/window[2]/node","a2","c1"],["display[1]/window[2]/screen","0","1"])");
    row("nodes-added", "<node name=\"a2\"/>", "<node name=\"a2\"/><node name=\"a3\"/><node name=\"a4\"/>",
        R"(["node[a3]",null,"network[1]"],["node[a4]",null,"network[1]"])");
    row("network-inserted", "  <network><node name=\"c1\"/>",
        "<network><node name=\"d1\"/></network>  <network><node name=\"c1\"/>",
        R"(["network[3]",null,"master"],["node[d1]",null,"network[3]"])");
    row("network-removed", "  <network><node name=\"c1\"/></network>\n", "",
        R"(["network[3]","master",null],["node[c1]","network[3]",null])");
    row("gateway-renamed", "<node name=\"gw\"", "<node name=\"gate\"", R"(["node[gate]/name","gw","gate"])");
    row("node-moved", "<node name=\"a2\"/>\n   <node name=\"gw\" rendernode=\"false\"><network>",
        "<node name=\"gw\" rendernode=\"false\"><network><node name=\"a2\"/>",
        R"(["node[a2]","network[1]","network[2]"])");
    row("window-added", " </display>",
        "<window node=\"c1\"><viewport projection=\"P\" eye=\"right\"/></window></display>",
        R"(["display[1]/window[4]",null,"display[1]"])");
    row("projection-removed", "name=\"P\" type=\"plane\" rows=\"1\"", "name=\"Q\" type=\"plane\" rows=\"2\"",
        R"(["projection[Q]",null,"cluster"],["projection[P]","cluster",null],)"
        R"(["display[1]/window[3]/viewport[1]/projection","P",null])");
    row("plane-moved", R"(z1="-1" x2="10" y2="0" z2="-1" x3="10" y3="10" z3="-1")",
        R"(z1="-2" x2="10" y2="0" z2="-2" x3="10" y3="10" z3="-2")",
        R"(["projection[P]/z1","-1","-2"],["projection[P]/z2","-1","-2"],["projection[P]/z3","-1","-2"])");
    row("booking", "version=\"1\"", "version=\"1\" booking=\"x\"", R"(["cluster/booking",null,"x"])");
}

void tst_zohpcDiff::jsonTellsPathOldAndNew()
{
    QFETCH(QByteArray, part);
    QFETCH(QByteArray, replacement);
    QFETCH(QByteArray, changes);
    const QString before = m_files.write("before.zhpc", setup());
    const QString after = m_files.write("after.zhpc", setup(part, replacement));

    const zoCommandRun run = zoCommandRun::zohpc({"diff", "--json", before, after});

    QJsonArray told;
    const QJsonArray list = QJsonDocument::fromJson(run.output).array();
    for (const QJsonValue& change : list)
        told << QJsonArray{change["path"], change["old"], change["new"]};
    QCOMPARE(QJsonDocument(told).toJson(QJsonDocument::Compact), '[' + changes + ']');
}

// What it means counts, not how it is written.
void tst_zohpcDiff::otherSpellingIsNoDifference_data()
{
    QTest::addColumn<QByteArray>("part");
    QTest::addColumn<QByteArray>("replacement");

    const auto row = [](const char* name, const char* part, const char* replacement) {
        QTest::newRow(name) << QByteArray(part) << QByteArray(replacement);
    };
    row("number-with-zeros", "eyeseparation=\"65\"", "eyeseparation=\"65.0\"");
    row("number-with-exponent", "distance=\"1500\"", "distance=\"1.5e3\"");
    row("whole-number-padded", "columns=\"2\" overlapx", "columns=\"02\" overlapx");
    row("negative-zero", "x1=\"0\" y1", "x1=\"-0.0\" y1");
    row("flag-as-number", "edgeblending=\"true\"", "edgeblending=\"1\"");
    row("flag-in-capitals", "hardwaresync=\"false\"", "hardwaresync=\"FALSE\"");
    row("default-is-absent-flag", " hardwaresync=\"false\"", "");
    row("default-is-absent-number", "overlapy=\"0\"", "");
    row("default-is-absent-screen", "node=\"a2\" screen=\"0\" x=\"0\"", "node=\"a2\"");
    row("default-is-absent-eye", "<viewport projection=\"Wall row:1 col:2\" eye=\"mono\"/>",
        "<viewport projection=\"Wall row:1 col:2\"/>");
    row("default-option-written", "<node name=\"a2\"/>",
        "<node name=\"a2\" enabled=\"true\" rendernode=\"true\"/>");
    row("default-port-written", "<network speed=\"10g\">",
        "<network speed=\"10g\" serviceport=\"8889\" encrypted=\"false\">");
    row("computed-tiles-written", "distance=\"1500\" edgeblending=\"true\"/>",
        "distance=\"1500\" edgeblending=\"true\"><projection name=\"x\" type=\"tile\"/></projection>");
}

void tst_zohpcDiff::otherSpellingIsNoDifference()
{
    QFETCH(QByteArray, part);
    QFETCH(QByteArray, replacement);
    const QString before = m_files.write("before.zhpc", setup());
    const QString after = m_files.write("after.zhpc", setup(part, replacement));

    QCOMPARE(zoCommandRun::zohpc({"diff", before, after}).whole(),
             QByteArray("--- errors\n--- exit code 0\n"));
    QCOMPARE(zoCommandRun::zohpc({"diff", after, before}).whole(),
             QByteArray("--- errors\n--- exit code 0\n"));
}

void tst_zohpcDiff::otherMeaningIsADifference_data()
{
    QTest::addColumn<QByteArray>("part");
    QTest::addColumn<QByteArray>("replacement");

    const auto row = [](const char* name, const char* part, const char* replacement) {
        QTest::newRow(name) << QByteArray(part) << QByteArray(replacement);
    };
    row("smallest-change", "distance=\"1500\"", "distance=\"1500.0000000000002\"");
    row("no-number", "distance=\"1500\"", "distance=\"1500 mm\"");
    // Nothing is read as a screen of 0 pixels, not as the size of a new window.
    row("absent-is-nothing", "node=\"a2\" screen=\"0\" x=\"0\" y=\"0\" width=\"1920\"",
        "node=\"a2\" screen=\"0\" x=\"0\" y=\"0\"");
    row("word-that-is-not-false", "<node name=\"a2\"/>", "<node name=\"a2\" enabled=\"false\"/>");
    row("text-that-looks-like-a-number", "user=\"1\"", "user=\"1.0\"");
    row("host-names-are-texts", "<node name=\"a2\"/>", "<node name=\"a02\"/>");
    row("attribute-of-nobody", "<node name=\"a2\"/>", "<node name=\"a2\" rack=\"7\"/>");
}

void tst_zohpcDiff::otherMeaningIsADifference()
{
    QFETCH(QByteArray, part);
    QFETCH(QByteArray, replacement);
    const QString before = m_files.write("before.zhpc", setup());
    const QString after = m_files.write("after.zhpc", setup(part, replacement));

    QCOMPARE(zoCommandRun::zohpc({"diff", before, after}).exitCode, 1);
}

// Networks that changed places, and a window on a gateway that got another name.
void tst_zohpcDiff::networksAreKnownByTheirNodes()
{
    const auto document = [](const QByteArray& hosts, const QByteArray& node) {
        return "<cluster version=\"1\"><master>" + hosts +
               "</master><display eyeseparation=\"65\"><window node=\"" + node +
               "\" screen=\"3\"/></display></cluster>";
    };
    const QByteArray ab = "<network><node name=\"a\"/><node name=\"b\"/></network>";
    const QByteArray gateway =
        "<network speed=\"1g\"><node name=\"%1\"><network><node name=\"c\"/></network></node></network>";
    const QString before =
        m_files.write("before.zhpc", document(ab + QByteArray(gateway).replace("%1", "gw"), "gw"));
    const QString swapped =
        m_files.write("swapped.zhpc", document(QByteArray(gateway).replace("%1", "gw") + ab, "gw"));
    const QString renamed =
        m_files.write("renamed.zhpc", document(ab + QByteArray(gateway).replace("%1", "x"), "x"));

    QCOMPARE(zoCommandRun::zohpc({"diff", before, swapped}).output,
             QByteArray("cluster: its networks are in another order\n"));
    QCOMPARE(zoCommandRun::zohpc({"diff", before, renamed}).output, QByteArray("node renamed: gw to x\n"));
}

void tst_zohpcDiff::longListsAreCut()
{
    // Equal names, which do not fold: "x,x,x" has 1,000 characters at most, and 999 with 500 of them.
    const auto nodes = [](int count) {
        return "<cluster version='1'><master><network><node name='a'/>" +
               QByteArray("<node name='x'/>").repeated(count) + "</network></master></cluster>";
    };
    const QString before = m_files.write("none.zhpc", nodes(0));
    const QString after = m_files.write("some.zhpc", nodes(500));
    const QString many = m_files.write("many.zhpc", nodes(501));

    const QByteArray all = QByteArray("x,").repeated(500);
    QCOMPARE(zoCommandRun::zohpc({"diff", before, after}).output,
             "nodes added: " + all.left(all.size() - 1) + " (network 1)\n");
    QCOMPARE(zoCommandRun::zohpc({"diff", before, many}).output,
             "nodes added: " + all.left(all.size() - 1) + " ... and 1 more (network 1)\n");
    QCOMPARE(zoCommandRun::zohpc({"diff", "--json", before, many}).output.count("\"path\":"), 501);
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
