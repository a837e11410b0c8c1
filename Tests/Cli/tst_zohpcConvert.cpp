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
    for (const char* name : {"wall-defaults.xml", "custom-gap-and-empty-window.xml", "old-rounded-planes.xml",
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
    const QString legacy = QStringLiteral(ZO_TEST_DATA_DIR "/Legacy/wall-defaults.xml");
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
                                                 "  <a/> <key name=\"zoClusterPWXRes\">wide</key>\n"
                                                 "<key name=\"zoClusterPWXOverlap\">20</key>\n"
                                                 "</config>\n");

    QCOMPARE(run.whole(),
             QByteArray("--- errors\n"
                        "-:3:8: zoClusterPWXRes is \"wide\", which is no number; it was read as 0.\n"
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
