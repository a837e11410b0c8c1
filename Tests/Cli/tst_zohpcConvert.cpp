#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoHPCConfigConverter.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

// "zohpc convert" as a whole process.
class tst_zohpcConvert final : public zoTestCase
{
    Q_OBJECT

private slots:
    void outputIsTheConvertersText_data();
    void outputIsTheConvertersText();
    void outputFileIsReplaced();
    void remarksTellFileLineAndColumn();
    void remarksAsJson();
    void whatIsNoParameterIsToldAndWrittenOnlyByForce();
    void lossesAsJson();
    void encodingOfTheFileIsHonoured();
    void unusableInputLeavesTheOldFile_data();
    void unusableInputLeavesTheOldFile();
    void wrongUsageIsTold();

private:
    zoCliFiles m_files;
};

void tst_zohpcConvert::outputIsTheConvertersText_data()
{
    QTest::addColumn<QString>("file");

    const QDir corpus(QStringLiteral(ZO_TEST_DATA_DIR "/Legacy"));
    for (const char* name : {"custom-gap-and-empty-window.xml", "old-rounded-planes.xml",
                             "raytracing-options.xml", "wall-forwards-over-infiniband.xml"})
        QTest::newRow(name) << corpus.filePath(QLatin1String(name));
}

void tst_zohpcConvert::outputIsTheConvertersText()
{
    QFETCH(QString, file);
    const QByteArray legacy = zoCliFiles::read(file);
    QVERIFY(!legacy.isEmpty());
    zoHPCConfigConverter converter;
    const QByteArray text = converter.convert(QString::fromUtf8(legacy)).toUtf8();
    QByteArray remarks;
    for (const zoHPCConfigConverter::Remark& remark : converter.remarks())
        remarks += QStringLiteral("%1:%2:%3: %4\n")
                       .arg(file, QString::number(remark.line), QString::number(remark.column), remark.text)
                       .toUtf8();

    const zoCommandRun run = zoCommandRun::zohpc({"convert", file});
    const zoCommandRun piped = zoCommandRun::zohpc({"convert", "-"}, legacy);

    QCOMPARE(run.whole(), text + "--- errors\n" + remarks + "--- exit code 0\n");
    QCOMPARE(piped.output, run.output);
}

void tst_zohpcConvert::outputFileIsReplaced()
{
    const QString legacy = QStringLiteral(ZO_TEST_DATA_DIR "/Legacy/old-rounded-planes.xml");
    const QString output = m_files.write("out.zhpc", "old");

    const zoCommandRun run = zoCommandRun::zohpc({"convert", legacy, "-o", output});

    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(zoCliFiles::read(output), zoCommandRun::zohpc({"convert", legacy}).output);
}

void tst_zohpcConvert::remarksTellFileLineAndColumn()
{
    const zoCommandRun run = zoCommandRun::zohpc({"convert", "-", "-o", m_files.path("remarks.zhpc")},
                                                 "<config>\n"
                                                 "  <key name=\"zoClusterProjectionType\">Powerwall</key>\n"
                                                 "  <a><key name=\"zoClusterPWXRes\">wide</key></a>\n"
                                                 "<key name=\"zoClusterPWXOverlap\">20</key>\n"
                                                 "</config>\n");

    QCOMPARE(run.whole(),
             QByteArray("--- errors\n"
                        "-:3:6: zoClusterPWXRes is \"wide\", which is no number; it was read as 0.\n"
                        "-:4:1: The overlap 20 was taken for both directions.\n"
                        "-:1:1: 1 windows have no node.\n"
                        "--- exit code 0\n"));
}

void tst_zohpcConvert::remarksAsJson()
{
    const QString legacy = QStringLiteral(ZO_TEST_DATA_DIR "/Legacy/custom-gap-and-empty-window.xml");
    zoHPCConfigConverter converter;
    converter.convert(QString::fromUtf8(zoCliFiles::read(legacy)));
    QJsonArray remarks;
    for (const zoHPCConfigConverter::Remark& remark : converter.remarks()) {
        remarks << QJsonObject{{"file", legacy},
                               {"line", remark.line},
                               {"column", remark.column},
                               {"kind", zoHPCConfigConverter::Remark::kindName(remark.kind)},
                               {"text", remark.text}};
    }
    QVERIFY(remarks.size() > 1);

    const zoCommandRun run =
        zoCommandRun::zohpc({"convert", legacy, "--json", "-o", m_files.path("json.zhpc")});

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(QJsonDocument::fromJson(run.output).array(), remarks);
}

void tst_zohpcConvert::whatIsNoParameterIsToldAndWrittenOnlyByForce()
{
    const QByteArray text(
        "<?xml version=\"1.0\"?>\n"
        "<!-- of the old wall --><config>\n"
        " <section name=\"a\"><key name=\"zoClusterPWServers\" unit=\"m\">a</key></section>\n"
        " <picture/>words\n"
        "</config>\0more\n",
        164);
    const QString legacy = m_files.write("legacy.xml", text);
    const QString output = m_files.path("losses.zhpc");
    const QByteArray name = legacy.toUtf8();

    const zoCommandRun piped = zoCommandRun::zohpc({"convert", legacy});
    const zoCommandRun refused = zoCommandRun::zohpc({"convert", legacy, "-o", output});
    const bool isWritten = QFile::exists(output);
    const zoCommandRun forced = zoCommandRun::zohpc({"convert", legacy, "-o", output, "--force"});

    const QByteArray losses = name + ":2:1: the comment is left out\n" + name +
                              ":3:51: the attribute \"unit\" of \"key\" is left out\n" + name +
                              ":4:2: the element \"picture\" is left out\n" + name +
                              ":4:12: the text is left out\n" + name +
                              ":5:10: everything from the NUL character on is left out\n";
    QVERIFY2(refused.errors.startsWith(losses), refused.errors.constData());
    QVERIFY(refused.errors.endsWith(output.toUtf8() + ": not written, for something of " + name +
                                    " would be lost; --force does it all the same\n"));
    QCOMPARE(refused.exitCode, 2);
    QVERIFY(!isWritten);
    // Nobody takes what goes through a pipe for the old file.
    QVERIFY(piped.errors.startsWith(losses));
    QCOMPARE(piped.exitCode, 0);
    QVERIFY(forced.errors.startsWith(losses));
    QCOMPARE(forced.exitCode, 0);
    QCOMPARE(zoCliFiles::read(output), piped.output);
}

void tst_zohpcConvert::lossesAsJson()
{
    const zoCommandRun run =
        zoCommandRun::zohpc({"convert", "-", "--json", "--force", "-o", m_files.path("json.zhpc")},
                            "<a><!----><key name=\"zoClusterPWServers\">a</key></a>");

    const QJsonObject loss = QJsonDocument::fromJson(run.output).array().at(0).toObject();
    QCOMPARE(loss, (QJsonObject{{"file", "-"},
                                {"line", 1},
                                {"column", 4},
                                {"kind", "loss"},
                                {"text", "the comment is left out"}}));
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
}

void tst_zohpcConvert::encodingOfTheFileIsHonoured()
{
    const QByteArray text("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
                          "<a><key name=\"zoClusterPWServers\">w\xe4nde</key>"
                          "<key name=\"zoClusterProjectionType\">Powerwall</key></a>");

    const zoCommandRun run = zoCommandRun::zohpc({"convert", "-"}, text);
    const zoCommandRun unsaid =
        zoCommandRun::zohpc({"convert", "-"}, QByteArray(text).replace("ISO-8859-1", "UTF-8"));

    QVERIFY2(run.output.contains("\"w\xc3\xa4nde\""), run.output.constData());
    QCOMPARE(unsaid.whole(), QByteArray("--- errors\n-:2:36: invalid UTF-8\n--- exit code 2\n"));
}

void tst_zohpcConvert::unusableInputLeavesTheOldFile_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("error");

    QTest::newRow("empty") << QByteArray() << QByteArray("-:1:1: the file is empty\n");
    QTest::newRow("cut-off") << QByteArray("<a>\n<key name=\"x\">")
                             << QByteArray("-:2:15: Premature end of document.\n");
    QTest::newRow("no-keys")
        << QByteArray("<a/>")
        << QByteArray("-:1:1: no legacy configuration: it has no parameter (element \"key\")\n");
}

void tst_zohpcConvert::unusableInputLeavesTheOldFile()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, error);
    const QString output = m_files.write("kept.zhpc", "old");

    const zoCommandRun run = zoCommandRun::zohpc({"convert", "-", "-o", output}, text);

    QCOMPARE(run.whole(), "--- errors\n" + error + "--- exit code 2\n");
    QCOMPARE(zoCliFiles::read(output), QByteArray("old"));
}

void tst_zohpcConvert::wrongUsageIsTold()
{
    const QByteArray help = "\nTry 'zohpc convert --help'.\n--- exit code 2\n";

    QCOMPARE(zoCommandRun::zohpc({"convert"}).whole(), "--- errors\nzohpc convert: no file given" + help);
    QCOMPARE(zoCommandRun::zohpc({"convert", "a", "b"}).whole(),
             "--- errors\nzohpc convert: one file at a time" + help);
    QCOMPARE(zoCommandRun::zohpc({"convert", "a", "--json"}).whole(),
             "--- errors\nzohpc convert: --json needs --output" + help);
}

ZO_TEST_MAIN(tst_zohpcConvert)
#include "tst_zohpcConvert.moc"
