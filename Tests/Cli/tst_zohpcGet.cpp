#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDomDocument>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace
{
// Two nodes of one name, a name that looks like a path, a network behind a gateway, two displays.
const QByteArray s_text = R"(<cluster version="1" booking="b7">
 <master scenecompression="best">
  <network description="Farm">
   <node name="a" enabled="false"/>
   <node name="a"/>
   <node name="gw" rendernode="false">
    <network speed="1g" serviceport="8890">
     <node name="b"/>
    </network>
   </node>
  </network>
 </master>
 <projection name="L/R [old]" type="wall" rows="1" columns="2" overlapx="0" overlapy="0" distance="1500"/>
 <projection name="2" type="plane" x1="-1" y1="-1" z1="-1" x2="1" y2="-1" z2="-1" x3="1" y3="1" z3="-1"/>
 <display eyeseparation="65" user="1" hardwaresync="false">
  <window node="a 1" screen="0" x="0" y="0" width="100" height="50" fullscreen="true">
   <viewport projection="L/R [old] row:1 col:1" position="fill" x1="0" y1="0" x2="1" y2="1" flipx="false" flipy="false" eye="left"/>
   <viewport projection="L/R [old] row:1 col:1" position="fill" x1="0" y1="0" x2="1" y2="1" flipx="false" flipy="false" eye="right"/>
  </window>
 </display>
 <display eyeseparation="60" user="2" hardwaresync="false">
  <window node="b" screen="1" x="5" y="0" width="100" height="50" fullscreen="false"/>
 </display>
</cluster>
)";
} // namespace

// "zohpc get" as a whole process.
class tst_zohpcGet final : public zoTestCase
{
    Q_OBJECT

private slots:
    void pathNamesAValue_data();
    void pathNamesAValue();
    void everythingIsAConfigurationAsLines();
    void itemIsAllBelowIt();
    void defaultsAreShownOnRequest();
    void jsonHoldsThePaths();
    void jsonHoldsEachPathOnce();
    void whatIsNotThereIsTold_data();
    void whatIsNotThereIsTold();
    void everyLineIsAPath();
    void attributesOfOthersAreShown();
    void fileIsNeeded();

private:
    zoCliFiles m_files;
};

void tst_zohpcGet::pathNamesAValue_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("lines");

    QTest::newRow("node") << "node[gw]/rendernode" << QByteArray("false\n");
    QTest::newRow("bare-name") << "gw/rendernode" << QByteArray("false\n");
    QTest::newRow("default-of-one-that-is-missing") << "b/enabled" << QByteArray("true\n");
    QTest::newRow("second-of-a-name") << "node[a_2]/enabled" << QByteArray("true\n");
    QTest::newRow("first-of-a-name") << "node[a]/enabled" << QByteArray("false\n");
    QTest::newRow("node-by-number") << "node[3]/name" << QByteArray("gw\n");
    QTest::newRow("network-behind-a-gateway") << "network[2]/speed" << QByteArray("1g\n");
    QTest::newRow("network-below-its-gateway") << "gw/network[1]/speed" << QByteArray("1g\n");
    QTest::newRow("network-without-a-number") << "gw/network/serviceport" << QByteArray("8890\n");
    QTest::newRow("default-port") << "network[1]/serviceport" << QByteArray("8889\n");
    QTest::newRow("network-by-its-description") << "network[Farm]/description" << QByteArray("Farm\n");
    QTest::newRow("name-with-slash-and-brackets") << "projection[L/R [old]]/columns" << QByteArray("2\n");
    QTest::newRow("computed-tile") << "projection[L/R [old] row:1 col:2]/column" << QByteArray("2\n");
    QTest::newRow("name-before-number") << "projection[2]/type" << QByteArray("plane\n");
    QTest::newRow("number-where-no-name-is") << "projection[1]/type" << QByteArray("wall\n");
    QTest::newRow("window-of-a-display") << "display[2]/window[1]/node" << QByteArray("b\n");
    QTest::newRow("window-of-all") << "window[2]/node" << QByteArray("b\n");
    QTest::newRow("viewport") << "window[1]/viewport[2]/eye" << QByteArray("right\n");
    QTest::newRow("all") << "display[*]/window[*]/node" << QByteArray("a 1\nb\n");
    QTest::newRow("first-of-each") << "display[*]/window[1]/node" << QByteArray("a 1\nb\n");
    QTest::newRow("second-where-there-is-one") << "window[*]/viewport[2]/eye" << QByteArray("right\n");
    QTest::newRow("nested-ones-once") << "network[*]/node[gw]/rendernode" << QByteArray("false\n");
    QTest::newRow("nested-all-once") << "network[*]/node[*]/name" << QByteArray("a\na\ngw\nb\n");
    QTest::newRow("attribute-named-as-an-item") << "window[2]/node" << QByteArray("b\n");
    QTest::newRow("root") << "cluster/booking" << QByteArray("b7\n");
    QTest::newRow("master") << "master/scenecompression" << QByteArray("best\n");
    QTest::newRow("nothing-set") << "master/imagecompression" << QByteArray("\n");
}

void tst_zohpcGet::pathNamesAValue()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, lines);

    QCOMPARE(zoCommandRun::zohpc({"get", "-", path}, s_text).whole(),
             lines + "--- errors\n--- exit code 0\n");
}

void tst_zohpcGet::everythingIsAConfigurationAsLines()
{
    const zoCommandRun run = zoCommandRun::zohpc({"get", "-"}, s_text);

    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.output.startsWith("cluster/version=1\ncluster/booking=b7\nmaster/scenecompression=best\n"
                                  "network[1]/description=Farm\nnode[a]/name=a\nnode[a]/enabled=false\n"
                                  "node[a_2]/name=a\n"));
    QVERIFY(run.output.contains("\nprojection[L/R [old] row:1 col:2]/column=2\n"));
    QVERIFY(run.output.contains("\ndisplay[1]/window[1]/viewport[2]/eye=right\n"));
}

void tst_zohpcGet::itemIsAllBelowIt()
{
    const zoCommandRun run = zoCommandRun::zohpc({"get", "-", "gw"}, s_text);

    QCOMPARE(run.whole(),
             QByteArray("node[gw]/name=gw\nnode[gw]/rendernode=false\nnetwork[2]/serviceport=8890\n"
                        "network[2]/speed=1g\nnode[b]/name=b\n"
                        "--- errors\n--- exit code 0\n"));
}

void tst_zohpcGet::defaultsAreShownOnRequest()
{
    const zoCommandRun run = zoCommandRun::zohpc({"get", "--defaults", "-", "b"}, s_text);

    QCOMPARE(run.whole(),
             QByteArray("node[b]/name=b\nnode[b]/enabled=true\nnode[b]/ibdevice=\nnode[b]/ibport=\n"
                        "node[b]/rendernode=true\n--- errors\n--- exit code 0\n"));
}

void tst_zohpcGet::jsonHoldsThePaths()
{
    const zoCommandRun run =
        zoCommandRun::zohpc({"get", "-", "gw/rendernode", "b/enabled", "--json"}, s_text);

    QCOMPARE(QJsonDocument::fromJson(run.output).object(),
             (QJsonObject{{"node[gw]/rendernode", "false"}, {"node[b]/enabled", "true"}}));
}

void tst_zohpcGet::jsonHoldsEachPathOnce()
{
    const zoCommandRun run = zoCommandRun::zohpc(
        {"get", "-", "b/name", "network[*]", "node[b]", "node[b]/enabled", "--json"}, s_text);

    const QJsonObject values = QJsonDocument::fromJson(run.output).object();
    QCOMPARE(values.value("node[b]/name").toString(), QString("b"));
    QCOMPARE(values.value("node[b]/enabled").toString(), QString("true"));
    QCOMPARE(run.output.count("\":\""), values.size());
}

void tst_zohpcGet::whatIsNotThereIsTold_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("reason");

    QTest::newRow("node") << "node[z]/enabled" << QByteArray("there is no \"node[z]\"");
    QTest::newRow("bare-name") << "z/enabled" << QByteArray("there is no \"z\"");
    QTest::newRow("attribute") << "gw/enabeld"
                               << QByteArray("node[gw] has no \"enabeld\"; did you mean \"enabled\"?");
    QTest::newRow("attribute-of-another-type")
        << "2/distance" << QByteArray("projection[2] has no \"distance\"");
    QTest::newRow("node-that-was-meant")
        << "node[gv]/enabled" << QByteArray("there is no \"node[gv]\"; did you mean \"node[gw]\"?");
    QTest::newRow("number-0") << "display[0]/user" << QByteArray("there is no \"display[0]\"");
    QTest::newRow("number-behind-the-last") << "display[3]/user" << QByteArray("there is no \"display[3]\"");
    QTest::newRow("several") << "window/node"
                             << QByteArray("\"window/node\" may be display[1]/window[1] or "
                                           "display[2]/window[1]: say which, or [*] for all");
    QTest::newRow("no-path") << "a//b"
                             << QByteArray(
                                    "\"a//b\" is no path such as node[gpu01]/enabled or Wall/distance");
    QTest::newRow("open-bracket")
        << "node[a" << QByteArray("\"node[a\" is no path such as node[gpu01]/enabled or Wall/distance");
}

void tst_zohpcGet::whatIsNotThereIsTold()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, reason);

    // What else was asked for is printed all the same.
    QCOMPARE(zoCommandRun::zohpc({"get", "-", path, "gw/name"}, s_text).whole(),
             "gw\n--- errors\n-: " + reason + "\n--- exit code 1\n");
}

void tst_zohpcGet::attributesOfOthersAreShown()
{
    const QByteArray text =
        "<cluster><master><network><node name=\"n\" c=\"3\" a=\"1\" b=\"2\"/></network></master></cluster>";

    QCOMPARE(zoCommandRun::zohpc({"get", "-", "n"}, text).output,
             QByteArray("node[n]/name=n\nnode[n]/a=1\nnode[n]/b=2\nnode[n]/c=3\n"));
}

void tst_zohpcGet::fileIsNeeded()
{
    const zoCommandRun run = zoCommandRun::zohpc({"get"});

    QCOMPARE(run.exitCode, 2);
    QCOMPARE(run.output, QByteArray());
    QVERIFY2(run.errors.contains("no file given"), run.errors.constData());
}

void tst_zohpcGet::everyLineIsAPath()
{
    const QList<QByteArray> lines = zoCommandRun::zohpc({"get", "-"}, s_text).output.split('\n');
    QStringList paths;
    QByteArray values;
    for (const QByteArray& line : lines) {
        // No value of the text has the sign.
        const int equals = line.lastIndexOf('=');
        if (equals < 0)
            continue;
        paths << QString::fromUtf8(line.left(equals));
        values += line.mid(equals + 1) + '\n';
    }

    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"get", "-"} + paths, s_text);

    QVERIFY(paths.size() > 60);
    QCOMPARE(run.whole(), values + "--- errors\n--- exit code 0\n");
}

ZO_TEST_MAIN(tst_zohpcGet)
#include "tst_zohpcGet.moc"
