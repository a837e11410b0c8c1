#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoHPCGUIW.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QTest>

namespace
{
const QByteArray s_canonical = R"(<cluster version="1" booking="b1">
 <master nodesfile="/nowhere" scenecompression="best" zzz="kept">
  <network>
   <node name="a" enabled="false"/>
   <node name="localhost"/>
  </network>
 </master>
 <display eyeseparation="65" user="1" hardwaresync="false"/>
</cluster>
)";

const QByteArray s_byHand = R"(<?xml version="1.0"?><!-- by hand -->
<cluster booking='b1' version="1"><display hardwaresync="false" user="1" eyeseparation="65"/>
<master scenecompression="best" zzz="kept" nodesfile="/nowhere" encrypted=""><network><node enabled="false" name="a"/>
<group><node/></group></network></master></cluster>)";
} // namespace

// "zohpc format" as a whole process.
class tst_zohpcFormat final : public zoTestCase
{
    Q_OBJECT

private slots:
    void sampleIsCanonical_data();
    void sampleIsCanonical();
    void textIsWhatTheWindowSaves_data();
    void textIsWhatTheWindowSaves();
    void handWrittenTextBecomesCanonical();
    void hostsFileIsNotRead();
    void rowsOfOldDocumentsAreTurned();
    void replacesFilesInPlace();
    void canonicalFileIsNotTouched();
    void checkNamesFilesThatAreNotCanonical();
    void unusableInputIsTold_data();
    void unusableInputIsTold();
    void wrongUsageIsTold_data();
    void wrongUsageIsTold();
    void unwritableOutputLeavesTheOldFile();
    void runsWithoutDisplayAndHome();
    void sameBytesInEveryProcess();

private:
    zoCliFiles m_files;
};

void tst_zohpcFormat::sampleIsCanonical_data()
{
    QTest::addColumn<QString>("file");

    const QDir samples(QStringLiteral(ZO_DATA_DIR "/cluster"));
    const QStringList files = samples.entryList({QStringLiteral("*.zhpc")});
    QVERIFY(!files.isEmpty());
    for (const QString& file : files)
        QTest::newRow(qPrintable(file)) << samples.filePath(file);
}

void tst_zohpcFormat::sampleIsCanonical()
{
    QFETCH(QString, file);

    const zoCommandRun run = zoCommandRun::zohpc({"format", file});

    QCOMPARE(run.whole(), zoCliFiles::read(file) + "--- errors\n--- exit code 0\n");
}

void tst_zohpcFormat::textIsWhatTheWindowSaves_data()
{
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("by-hand") << QByteArray(s_byHand).replace("/nowhere", "");
    QTest::newRow("version-0-wall") << QByteArray(
        R"(<cluster><master/><projection type="wall" name="W" rows="2"/>
        <display><window><viewport projection="W row:1 col:1"/></window></display></cluster>)");
    const QDir legacy(QStringLiteral(ZO_TEST_DATA_DIR "/Legacy"));
    QTest::newRow("converted-wall") << zoCliFiles::read(legacy.filePath("wall-defaults.zhpc"));
    QTest::newRow("converted-custom") << zoCliFiles::read(legacy.filePath("generated-custom-1.zhpc"));
}

void tst_zohpcFormat::textIsWhatTheWindowSaves()
{
    QFETCH(QByteArray, text);
    QVERIFY(!text.isEmpty());

    const zoCommandRun run = zoCommandRun::zohpc({"format", "-"}, text);

    zoHPCGUIW window(nullptr, QStringLiteral("HPC Cluster"));
    window.setConfigString(QString::fromUtf8(text));
    QCOMPARE(run.whole(), window.getConfigString().toUtf8() + "--- errors\n--- exit code 0\n");
}

void tst_zohpcFormat::handWrittenTextBecomesCanonical()
{
    const zoCommandRun run = zoCommandRun::zohpc({"format", "-"}, s_byHand);

    QCOMPARE(run.whole(), s_canonical + "--- errors\n--- exit code 0\n");
    QCOMPARE(zoCommandRun::zohpc({"format", "-"}, run.output).output, run.output);
}

void tst_zohpcFormat::hostsFileIsNotRead()
{
    const QString hosts = m_files.write("hosts.txt", "x y z\n");
    const QByteArray text = QByteArray(s_canonical).replace("/nowhere", hosts.toUtf8());

    QCOMPARE(zoCommandRun::zohpc({"format", "-"}, text).output, text);
}

void tst_zohpcFormat::rowsOfOldDocumentsAreTurned()
{
    const zoCommandRun run = zoCommandRun::zohpc(
        {"format", "-"}, R"(<cluster><master/><projection type="wall" name="W" rows="2" columns="1"/>
        <display><window><viewport projection="W row:1 col:1"/></window></display></cluster>)");

    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.output.startsWith("<cluster version=\"1\">"));
    QVERIFY(run.output.contains("<viewport projection=\"W row:2 col:1\""));
}

void tst_zohpcFormat::replacesFilesInPlace()
{
    const QString first = m_files.write("first.zhpc", s_byHand);
    const QString second = m_files.write("second.zhpc", s_byHand);

    const zoCommandRun run = zoCommandRun::zohpc({"format", "-i", first, second});

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
    QCOMPARE(zoCliFiles::read(first), s_canonical);
    QCOMPARE(zoCliFiles::read(second), s_canonical);
}

void tst_zohpcFormat::canonicalFileIsNotTouched()
{
    const QString file = m_files.write("canonical.zhpc", s_canonical);
    // A link would be replaced by a file if it was written.
    const QString link = m_files.path("link.zhpc");
    QVERIFY(QFile::link(file, link));

    QCOMPARE(zoCommandRun::zohpc({"format", "-i", link}).exitCode, 0);

    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(zoCliFiles::read(file), s_canonical);
}

void tst_zohpcFormat::checkNamesFilesThatAreNotCanonical()
{
    const QString good = m_files.write("good.zhpc", s_canonical);
    const QString bad = m_files.write("bad.zhpc", s_byHand);

    const zoCommandRun run = zoCommandRun::zohpc({"format", "--check", good, bad});

    QCOMPARE(run.whole(), bad.toUtf8() + ": not canonical\n--- errors\n--- exit code 1\n");
    QCOMPARE(zoCliFiles::read(bad), s_byHand);
    QCOMPARE(zoCommandRun::zohpc({"format", "--check", good}).whole(),
             QByteArray("--- errors\n--- exit code 0\n"));
}

void tst_zohpcFormat::unusableInputIsTold_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("error");

    QTest::newRow("empty") << QByteArray() << QByteArray("-:1:1: the file is empty\n");
    QTest::newRow("cut-off") << QByteArray("<cluster>\n <master/>\n")
                             << QByteArray("-:3:1: Premature end of document.\n");
    QTest::newRow("wrong-tag") << QByteArray("<cluster>\n</clutter>")
                               << QByteArray("-:2:11: Opening and ending tag mismatch.\n");
    QTest::newRow("other-root") << QByteArray("<html/>")
                                << QByteArray(
                                       "-:1:1: no cluster configuration: its root element is \"html\"\n");
}

void tst_zohpcFormat::unusableInputIsTold()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, error);

    const zoCommandRun run = zoCommandRun::zohpc({"format", "-"}, text);

    QCOMPARE(run.whole(), "--- errors\n" + error + "--- exit code 2\n");
}

void tst_zohpcFormat::wrongUsageIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("reason");

    QTest::newRow("no-file") << QStringList() << QByteArray("no file given");
    QTest::newRow("two-files") << QStringList{"a", "b"}
                               << QByteArray("more than one file needs --in-place or --check");
    QTest::newRow("two-ways") << QStringList{"-i", "--check", "a"}
                              << QByteArray("--in-place, --check and --output exclude each other");
    QTest::newRow("input-in-place") << QStringList{"-i", "-"}
                                    << QByteArray("standard input cannot be replaced");
}

void tst_zohpcFormat::wrongUsageIsTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, reason);

    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"format"} + arguments);

    QCOMPARE(run.whole(),
             "--- errors\nzohpc format: " + reason + "\nTry 'zohpc format --help'.\n--- exit code 2\n");
}

void tst_zohpcFormat::unwritableOutputLeavesTheOldFile()
{
    const QString input = m_files.write("input.zhpc", s_byHand);
    const QString nowhere = m_files.path("no/such/folder.zhpc");

    const zoCommandRun run = zoCommandRun::zohpc({"format", input, "-o", nowhere});

    QCOMPARE(run.whole(),
             "--- errors\n" + nowhere.toUtf8() + ": No such file or directory\n--- exit code 2\n");
    QCOMPARE(zoCliFiles::read(input), s_byHand);
}

void tst_zohpcFormat::runsWithoutDisplayAndHome()
{
    QCOMPARE(zoCommandRun::zohpcIn({}, {"format", "-"}, s_byHand).output, s_canonical);
    // A display that is not there, and toolkit variables that would need one.
    QCOMPARE(zoCommandRun::zohpcIn({"DISPLAY=:9999", "QT_QPA_PLATFORM=xcb", "QT_QPA_PLATFORMTHEME=gtk3"},
                                   {"format", "-"}, s_byHand)
                 .whole(),
             s_canonical + "--- errors\n--- exit code 0\n");
}

void tst_zohpcFormat::sameBytesInEveryProcess()
{
    for (const char* seed : {"QT_HASH_SEED=0", "QT_HASH_SEED=1", "QT_HASH_SEED=42"})
        QCOMPARE(zoCommandRun::zohpcIn({QLatin1String(seed)}, {"format", "-"}, s_byHand).output, s_canonical);
}

ZO_TEST_MAIN(tst_zohpcFormat)
#include "tst_zohpcFormat.moc"
