#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoHPCGUIW.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QTest>
#include <QTextCodec>

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

// What of the text by hand is not in the canonical one, with the name of the file.
QByteArray losses(const QByteArray& file = "-")
{
    return file + ":1:22: the comment is left out\n" + file + ":4:1: the element \"group\" is left out\n";
}

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
    void checkComparesBytes_data();
    void checkComparesBytes();
    void everyLossIsTold_data();
    void everyLossIsTold();
    void importedFileIsRewrittenWithoutForce_data();
    void importedFileIsRewrittenWithoutForce();
    void fileThatLosesSomethingIsRewrittenOnlyByForce_data();
    void fileThatLosesSomethingIsRewrittenOnlyByForce();
    void encodingOfTheFileIsHonoured_data();
    void encodingOfTheFileIsHonoured();
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
    // What the window leaves out in silence is told here.
    QCOMPARE(run.output, window.getConfigString().toUtf8());
    QCOMPARE(run.exitCode, 0);
}

void tst_zohpcFormat::handWrittenTextBecomesCanonical()
{
    const zoCommandRun run = zoCommandRun::zohpc({"format", "-"}, s_byHand);

    // Nothing is left out in silence.
    QCOMPARE(run.whole(), s_canonical + "--- errors\n" + losses() + "--- exit code 0\n");
    QCOMPARE(zoCommandRun::zohpc({"format", "-"}, run.output).whole(),
             run.output + "--- errors\n--- exit code 0\n");
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

    // A comment gets lost, which nobody is to find out later.
    const zoCommandRun refused = zoCommandRun::zohpc({"format", "-i", first, second});
    QCOMPARE(zoCliFiles::read(first), s_byHand);
    const zoCommandRun run = zoCommandRun::zohpc({"format", "-i", "--force", first, second});

    QByteArray told;
    for (const QString& file : {first, second})
        told += losses(file.toUtf8()) + file.toUtf8() +
                ": not rewritten, for this would be lost; --force does it all the same\n";
    QCOMPARE(refused.whole(), "--- errors\n" + told + "--- exit code 2\n");
    QCOMPARE(run.whole(),
             "--- errors\n" + losses(first.toUtf8()) + losses(second.toUtf8()) + "--- exit code 0\n");
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

void tst_zohpcFormat::checkComparesBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");

    // The same text to a reader.
    QTest::newRow("byte-order-mark") << QByteArray("\xef\xbb\xbf") + s_canonical;
    QTest::newRow("nul-at-the-end") << s_canonical + QByteArray("\0", 1);
    QTest::newRow("carriage-returns") << QByteArray(s_canonical).replace("\n", "\r\n");
}

void tst_zohpcFormat::checkComparesBytes()
{
    QFETCH(QByteArray, bytes);
    const QString file = m_files.write("file.zhpc", bytes);

    QCOMPARE(zoCommandRun::zohpc({"format", "--check", file}).whole(),
             file.toUtf8() + ": not canonical\n--- errors\n--- exit code 1\n");
    QCOMPARE(zoCommandRun::zohpc({"format", "-i", file}).whole(),
             QByteArray("--- errors\n--- exit code 0\n"));
    QCOMPARE(zoCliFiles::read(file), s_canonical);
}

void tst_zohpcFormat::everyLossIsTold_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("errors");

    const auto inMaster = [](const char* text) {
        return QByteArray("<cluster version=\"1\">\n<master>") + text + "</master></cluster>";
    };
    const auto inDisplay = [](const char* text) {
        return QByteArray(
                   "<cluster version=\"1\"><master/><projection name=\"P\" type=\"plane\"/>\n<display>") +
               text + "</display></cluster>";
    };
    QTest::newRow("nothing") << inMaster("<network><node name='a' color='red'/></network>") << QByteArray();
    QTest::newRow("comment") << inMaster("<!-- a -->") << QByteArray("-:2:9: the comment is left out\n");
    QTest::newRow("comment-at-the-beginning") << "<!---->\n<!-- b -->\n" + inMaster("")
                                              << QByteArray("-:1:1: the comment is left out\n"
                                                            "-:2:1: the comment is left out\n");
    QTest::newRow("text") << inMaster("\n words\n") << QByteArray("-:3:2: the text is left out\n");
    QTest::newRow("instruction") << inMaster("<?a b?>")
                                 << QByteArray("-:2:9: the processing instruction is left out\n");
    QTest::newRow("element") << inMaster("<rack><network/></rack>")
                             << QByteArray("-:2:9: the element \"rack\" is left out\n");
    QTest::newRow("known-element-elsewhere")
        << inDisplay("<viewport projection='P'/><window><viewport projection='P'/></window>")
        << QByteArray("-:2:10: the element \"viewport\" is left out\n");
    QTest::newRow("attribute-of-the-root")
        << QByteArray("<cluster version='1' author='me'/>")
        << QByteArray("-:1:22: the attribute \"author\" of \"cluster\" is left out\n");
    QTest::newRow("attribute") << inDisplay("<window node='a > b'\n colour = \"red\"/>")
                               << QByteArray("-:3:2: the attribute \"colour\" of \"window\" is left out\n");
    QTest::newRow("empty-attribute") << inDisplay("<window colour=''/>") << QByteArray();
    QTest::newRow("reference")
        << inDisplay("<window><viewport projection='P'/>\n<viewport projection='Q'/></window>")
        << QByteArray("-:3:11: there is no projection \"Q\": the reference is left out\n");
    // The import writes them, and no reader knows them; 0 says nothing.
    QTest::newRow("turn-of-imported-viewports")
        << inDisplay("<window rotate='0'><viewport rotate='0'/><viewport rotate='2'/></window>")
        << QByteArray("-:2:18: the attribute \"rotate\" of \"window\" is left out\n"
                      "-:2:61: the attribute \"rotate\" of \"viewport\" is left out\n");
    QTest::newRow("offset-of-imported-walls")
        << QByteArray("<cluster version='1'><master/>\n<projection type='wall' tilewidth='9' tileheight='9' "
                      "offsetx='0' offsety='0'/>\n"
                      "<projection type='wall' offsetx='-8' offsety='0'/></cluster>")
        // The import tells what no present reader knows, once; asking for --force later helped nobody.
        << QByteArray();
    QTest::newRow("half-of-a-character")
        << QByteArray(
               "<cluster version='1'>\n<master booking='a&#xD800;b&#65;'/><!-- &#0; -->&#x1f;</cluster>")
        << QByteArray("-:2:9: the attribute \"booking\" of \"master\" becomes \"abA\"\n"
                      "-:2:36: the comment is left out\n"
                      "-:2:49: the text is left out\n");
    QTest::newRow("root-of-an-old-document")
        << QByteArray("<cluster author='me'/>")
        << QByteArray("-:1:10: the attribute \"author\" of \"cluster\" is left out\n");
    QTest::newRow("line-end-in-an-attribute")
        << QByteArray("<cluster version='1'><master description='a\tb\nc\r\nd'/></cluster>") << QByteArray();
    QTest::newRow("later-version") << QByteArray("<cluster version='2'/>")
                                   << QByteArray(
                                          "-:1:10: the attribute \"version\" of \"cluster\" becomes \"1\"\n");
    QTest::newRow("attribute-given-twice")
        << QByteArray("<cluster version='1'>\n<master a='1' a='2'/><!-- b --></cluster>")
        << QByteArray("-:2:9: the attribute \"a\" of \"master\" becomes \"2\"\n"
                      "-:2:22: the comment is left out\n");
    QTest::newRow("after-a-nul") << QByteArray("<cluster version='1'/>\0 more", 28)
                                 << QByteArray("-:1:23: everything from the NUL character on is left out\n");
}

void tst_zohpcFormat::everyLossIsTold()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, errors);

    const zoCommandRun run = zoCommandRun::zohpc({"format", "-"}, text);

    QCOMPARE(run.errors, errors);
    QCOMPARE(run.exitCode, 0);
}

void tst_zohpcFormat::importedFileIsRewrittenWithoutForce_data()
{
    QTest::addColumn<QString>("legacy");

    const QDir samples(QStringLiteral(ZO_TEST_DATA_DIR "/Legacy"));
    const QStringList names = samples.entryList({"*.xml"});
    QVERIFY(names.contains("wall-defaults.xml"));
    for (const QString& name : names) {
        if (!name.startsWith("broken") && name != "empty-no-keys.xml") // are refused
            QTest::newRow(qPrintable(name)) << samples.filePath(name);
    }
}

void tst_zohpcFormat::importedFileIsRewrittenWithoutForce()
{
    QFETCH(QString, legacy);
    const QString file = m_files.path("imported.zhpc");
    const zoCommandRun conversion = zoCommandRun::zohpc({"convert", "--force", legacy, "-o", file});
    QCOMPARE(conversion.exitCode, 0);
    const QByteArray imported = zoCliFiles::read(file);
    const bool hasOffset = imported.contains("offsetx=") && !imported.contains("offsetx=\"0\"");
    QCOMPARE(conversion.errors.contains("of the wall has no counterpart"), hasOffset);

    const zoCommandRun run = zoCommandRun::zohpc({"format", "-i", file});

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
    QVERIFY(!zoCliFiles::read(file).contains(" rotate="));
    QVERIFY(!zoCliFiles::read(file).contains(" offsetx="));
}

void tst_zohpcFormat::fileThatLosesSomethingIsRewrittenOnlyByForce_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QStringList>("after");

    QTest::newRow("in-place") << QStringList{"-i"} << QStringList();
    QTest::newRow("output") << QStringList() << QStringList{"-o"};
}

void tst_zohpcFormat::fileThatLosesSomethingIsRewrittenOnlyByForce()
{
    QFETCH(QStringList, before);
    QFETCH(QStringList, after);
    const QByteArray text("<cluster version=\"1\"/>\0<cluster/>", 33);
    const QString file = m_files.write("cut.zhpc", text);
    if (!after.isEmpty())
        after << file;

    const zoCommandRun refused =
        zoCommandRun::zohpc(QStringList{"format"} + before + QStringList{file} + after);
    const QByteArray content = zoCliFiles::read(file);
    const zoCommandRun forced =
        zoCommandRun::zohpc(QStringList{"format", "--force"} + before + QStringList{file} + after);

    const QByteArray loss = file.toUtf8() + ":1:23: everything from the NUL character on is left out\n";
    QCOMPARE(refused.whole(), "--- errors\n" + loss + file.toUtf8() +
                                  ": not rewritten, for this would be lost; --force does it all the same\n"
                                  "--- exit code 2\n");
    QCOMPARE(content, text);
    QCOMPARE(forced.whole(), "--- errors\n" + loss + "--- exit code 0\n");
    QCOMPARE(zoCliFiles::read(file), QByteArray("<cluster version=\"1\">\n <master/>\n</cluster>\n"));
}

void tst_zohpcFormat::encodingOfTheFileIsHonoured_data()
{
    QTest::addColumn<QByteArray>("codec");
    QTest::addColumn<QString>("declaration");

    QTest::newRow("latin-1") << QByteArray("ISO-8859-1") << "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>";
    const QString mark(QChar::ByteOrderMark);
    QTest::newRow("utf-16") << QByteArray("UTF-16LE") << mark + "<?xml version=\"1.0\" encoding=\"UTF-16\"?>";
    QTest::newRow("utf-16-unsaid") << QByteArray("UTF-16LE") << mark;
}

void tst_zohpcFormat::encodingOfTheFileIsHonoured()
{
    QFETCH(QByteArray, codec);
    QFETCH(QString, declaration);
    const QByteArray canonical = QByteArray(s_canonical).replace("\"a\"", "\"w\xc3\xa4nde\"");
    const QString text = declaration + QString::fromUtf8(canonical);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader); // no mark but that in the text
    const QString file = m_files.write(
        "old.zhpc", QTextCodec::codecForName(codec)->fromUnicode(text.constData(), text.size(), &state));

    QCOMPARE(zoCommandRun::zohpc({"format", file}).whole(), canonical + "--- errors\n--- exit code 0\n");
    QCOMPARE(zoCommandRun::zohpc({"format", "-i", file}).exitCode, 0);
    QCOMPARE(zoCliFiles::read(file), canonical);
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
    QTest::newRow("not-utf-8") << QByteArray("<cluster version=\"1\">\n<master name=\"\xe4\"/></cluster>")
                               << QByteArray("-:2:15: invalid UTF-8\n");
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
             s_canonical + "--- errors\n" + losses() + "--- exit code 0\n");
}

void tst_zohpcFormat::sameBytesInEveryProcess()
{
    for (const char* seed : {"QT_HASH_SEED=0", "QT_HASH_SEED=1", "QT_HASH_SEED=42"})
        QCOMPARE(zoCommandRun::zohpcIn({QLatin1String(seed)}, {"format", "-"}, s_byHand).output, s_canonical);
}

ZO_TEST_MAIN(tst_zohpcFormat)
#include "tst_zohpcFormat.moc"
