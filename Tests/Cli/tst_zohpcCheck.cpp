#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

// "zohpc check" as a whole process. What the checks find is tested with them.
class tst_zohpcCheck final : public zoTestCase
{
    Q_OBJECT

private slots:
    void samplesAreSound();
    void problemsHaveTheirPlaces();
    void problemsAsJson();
    void jsonHasALineForEachProblem();
    void unknownOptionValuesAreTold();
    void planesFarAwayAreChecked_data();
    void planesFarAwayAreChecked();
    void unusableFileDoesNotHideTheOthers();
    void noFileIsWrongUsage();
    void codeIsExplained();
    void codesAreListed();
    void unknownCodeIsWrongUsage();
    void textAfterANulIsTold();

private:
    static QByteArray badSetup();

    zoCliFiles m_files;
};

QByteArray tst_zohpcCheck::badSetup()
{
    return R"(<cluster version="1">
 <!-- places count every line -->
 <master>
  <network>
   <node name="a"/> <node name="a"/>
  </network>
 </master>
 <projection name="W" type="wall" rows="1"
   columns="2"/>
 <display>
  <window node="nowhere" fullscreen="false">
   <viewport
     projection="W row:1 col:1"/>
   <viewport/>
  </window>
 </display>
</cluster>
)";
}

void tst_zohpcCheck::samplesAreSound()
{
    const QDir samples(QStringLiteral(ZO_DATA_DIR "/cluster"));
    QStringList files;
    for (const QString& file : samples.entryList({QStringLiteral("*.zhpc")}))
        files << samples.filePath(file);
    QVERIFY(files.size() >= 4);

    QCOMPARE(zoCommandRun::zohpc(QStringList{"check"} + files).whole(),
             QByteArray("--- errors\n--- exit code 0\n"));
}

void tst_zohpcCheck::problemsHaveTheirPlaces()
{
    const QString file = m_files.write("bad.zhpc", badSetup());

    const zoCommandRun run = zoCommandRun::zohpc({"check", file});

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 1);
    QList<QByteArray> places;
    for (const QByteArray& line : run.output.trimmed().split('\n')) {
        QVERIFY(line.startsWith(file.toUtf8() + ':'));
        places << line.mid(file.toUtf8().size() + 1).split(' ').first();
    }
    QCOMPARE(places, (QList<QByteArray>{"5:33:", "8:2:", "11:17:", "14:4:"}));
}

void tst_zohpcCheck::problemsAsJson()
{
    const zoCommandRun run = zoCommandRun::zohpc({"check", "--json", "-"}, badSetup());

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 1);
    const QJsonArray problems = QJsonDocument::fromJson(run.output).array();
    QCOMPARE(problems.size(), 4);
    const QJsonObject last = problems.last().toObject();
    QCOMPARE(last.value("file").toString(), QStringLiteral("-"));
    QCOMPARE(last.value("line").toInt(), 14);
    QCOMPARE(last.value("column").toInt(), 4);
    QCOMPARE(last.value("code").toString(), QStringLiteral("viewport-without-projection"));
    QCOMPARE(last.value("severity").toString(), QStringLiteral("error"));
    QVERIFY(!last.value("text").toString().isEmpty());
    QVERIFY(last.contains("fix"));
}

// As they stand in the file: the window would replace them while it shows them.
void tst_zohpcCheck::unknownOptionValuesAreTold()
{
    const zoCommandRun run =
        zoCommandRun::zohpc({"check", "-"}, "<cluster version=\"1\">\n"
                                            " <master scenecompression=\"ultra\">\n"
                                            "  <network speed=\"5g\"><node name=\"a\"/></network>\n"
                                            " </master>\n"
                                            "</cluster>\n");

    QCOMPARE(run.exitCode, 1);
    const QList<QByteArray> lines = run.output.trimmed().split('\n');
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines.first().startsWith("-:2:28:") && lines.first().contains("\"ultra\""),
             lines.first().constData());
    QVERIFY2(lines.last().startsWith("-:3:19:") && lines.last().contains("\"5g\""), lines.last().constData());
    QVERIFY(zoCommandRun::zohpc({"check", "--json", "-"}, "<cluster><master parallelframes=\"9\"/></cluster>")
                .output.contains("\"unknown-option-value\""));
}

// Cells of space far away were once counted in steps that changed nothing: for ever, in the window too.
void tst_zohpcCheck::planesFarAwayAreChecked_data()
{
    QTest::addColumn<QByteArray>("far");

    for (const char* far : {"1e7", "1e15", "1e20", "1e150", "-1e20"})
        QTest::newRow(far) << QByteArray(far);
}

void tst_zohpcCheck::planesFarAwayAreChecked()
{
    QFETCH(QByteArray, far);
    // Two planes of a metre at a far place, the second one half over the first.
    QByteArray text = "<cluster version=\"1\"><master><network><node name=\"a\"/></network></master>";
    for (const char* left : {"0", "500"})
        text += QByteArray("<projection name=\"P") + left +
                "\" type=\"plane\" edgeblending=\"true\" rightedge=\"0.9\" x1=\"" + left +
                "\" y1=\"0\" z1=\"" + far + "\" x2=\"1" + left + "\" y2=\"0\" z2=\"" + far + "\" x3=\"1" +
                left + "\" y3=\"1000\" z3=\"" + far + "\"/>";
    text += "</cluster>";

    const zoCommandRun run = zoCommandRun::zohpc({"check", "-"}, text);

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 1);
    QVERIFY(run.output.contains("The edge blending of \"P"));
}

void tst_zohpcCheck::jsonHasALineForEachProblem()
{
    // Commas and braces in texts are no borders.
    const QString file = m_files.write("a,b\"}{[].zhpc", badSetup());

    const QByteArray output = zoCommandRun::zohpc({"check", "--json", file}).output;

    const QJsonArray problems = QJsonDocument::fromJson(output).array();
    QCOMPARE(problems.size(), 4);
    const QList<QByteArray> lines = output.split('\n');
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines.last(), QByteArray());
    for (int i = 0; i < 4; ++i) {
        const QByteArray& line = lines.at(i);
        QCOMPARE(line.left(1), QByteArray(i == 0 ? "[" : " "));
        QCOMPARE(line.right(1), QByteArray(i == 3 ? "]" : ","));
        QCOMPARE(QJsonDocument::fromJson(line.mid(1, line.size() - 2)).object(), problems.at(i).toObject());
    }
}

void tst_zohpcCheck::unusableFileDoesNotHideTheOthers()
{
    const QString broken = m_files.write("broken.zhpc", "<cluster>");
    const QString bad = m_files.write("bad.zhpc", badSetup());

    const zoCommandRun run = zoCommandRun::zohpc({"check", broken, bad});

    QCOMPARE(run.errors, broken.toUtf8() + ":1:10: Premature end of document.\n");
    QCOMPARE(run.output, zoCommandRun::zohpc({"check", bad}).output);
    QCOMPARE(run.exitCode, 2);
}

void tst_zohpcCheck::noFileIsWrongUsage()
{
    QCOMPARE(
        zoCommandRun::zohpc({"check"}).whole(),
        QByteArray("--- errors\nzohpc check: no file given\nTry 'zohpc check --help'.\n--- exit code 2\n"));
}

void tst_zohpcCheck::codeIsExplained()
{
    // As it stands behind a message.
    const QByteArray line = zoCommandRun::zohpc({"check", "-"}, badSetup()).output.split('\n').first();
    const QString code = QString::fromUtf8(line.mid(line.lastIndexOf('[') + 1)).chopped(1);
    QCOMPARE(code, QStringLiteral("duplicate-host-name"));

    const zoCommandRun run = zoCommandRun::zohpc({"check", "--explain", code});

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.output.startsWith("### duplicate-host-name\n\n**Warning.** "));
    QVERIFY(run.output.contains("On the wall: ") && run.output.simplified().contains("Mend it: "));
    QCOMPARE(run.output.count("###"), 1);
}

void tst_zohpcCheck::codesAreListed()
{
    const zoCommandRun run = zoCommandRun::zohpc({"check", "--explain"});

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.output.contains("\nwall-in-metres                  warning: A wall of a few millimetres\n"));
    QVERIFY(run.output.contains("\nswapped-eyes                    note: An eye separation below 0\n"));
    QList<QByteArray> lines = run.output.split('\n');
    QCOMPARE(lines.takeLast(), QByteArray());
    QVERIFY(lines.size() > 40);
    // Each one is explained.
    for (int i : {0, 1, int(lines.size()) - 1}) {
        const QString code = QString::fromUtf8(lines.at(i).split(' ').first());
        QCOMPARE(zoCommandRun::zohpc({"check", "--explain", code}).exitCode, 0);
    }
    QCOMPARE(zoCommandRun::zohpc({"check", "--explain="}).output, run.output);
}

void tst_zohpcCheck::unknownCodeIsWrongUsage()
{
    QCOMPARE(zoCommandRun::zohpc({"check", "--explain", "wal-in-metres"}).whole(),
             QByteArray("--- errors\nzohpc check: there is no problem \"wal-in-metres\": did you mean "
                        "\"wall-in-metres\"?\nTry 'zohpc check --help'.\n--- exit code 2\n"));
    QCOMPARE(zoCommandRun::zohpc({"check", "--explain", "Windows and viewports"}).exitCode, 2);
}

void tst_zohpcCheck::textAfterANulIsTold()
{
    const QByteArray text("<cluster version=\"1\"><master/></cluster>\n\0<display/>", 53);

    QCOMPARE(zoCommandRun::zohpc({"check", "-"}, text).whole(),
             QByteArray("-:2:1: warning: everything from the NUL character on is left out [stray-text]\n"
                        "--- errors\n--- exit code 1\n"));
}

ZO_TEST_MAIN(tst_zohpcCheck)
#include "tst_zohpcCheck.moc"
