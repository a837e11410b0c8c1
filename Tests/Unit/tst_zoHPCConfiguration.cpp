#include "zoTestCase.h"

#include <zoHPCConfiguration.h>
#include <zoHPCDocumentText.h>
#include <zoHPCTreeItem.h>
#include <zoHPCWindowItem.h>

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QTemporaryDir>

namespace
{
const char* const s_text = "<cluster version=\"1\" booking=\"b\">\n"
                           " <master scenecompression=\"best\">\n"
                           "  <network>\n"
                           "   <node name=\"a\"/>\n"
                           "  </network>\n"
                           " </master>\n"
                           "</cluster>\n";

QDomDocument documentOf(const QString& text)
{
    QDomDocument document;
    zoHPCDocumentText::parse(text, document);
    return document;
}

QString contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}
} // namespace

// The configuration that programs without a window read and write.
class tst_zoHPCConfiguration final : public zoTestCase
{
    Q_OBJECT

private slots:
    void sampleIsWrittenAsItIs_data();
    void sampleIsWrittenAsItIs();
    void documentIsTheTextReadAgain();
    void readingReplacesBothSections();
    void hostsFileIsReadOnRequestOnly();
    void configurationHasOneSection_data();
    void configurationHasOneSection();
};

void tst_zoHPCConfiguration::sampleIsWrittenAsItIs_data()
{
    QTest::addColumn<QString>("fileName");
    const QDir folder(QStringLiteral(ZO_DATA_DIR "/cluster"));
    const QStringList names = folder.entryList({QStringLiteral("*.zhpc")});
    QVERIFY(!names.isEmpty());
    for (const QString& name : names)
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
}

void tst_zoHPCConfiguration::sampleIsWrittenAsItIs()
{
    QFETCH(QString, fileName);
    const QString text = contentOf(fileName);
    QDomDocument document = documentOf(text);
    zoHPCConfiguration configuration;

    configuration.read(document);

    QCOMPARE(configuration.text(), text);
}

void tst_zoHPCConfiguration::documentIsTheTextReadAgain()
{
    QDomDocument document = documentOf(QLatin1String(s_text));
    zoHPCConfiguration configuration;
    configuration.read(document);

    const QDomElement root = configuration.document().documentElement();

    QCOMPARE(root.attribute(QStringLiteral("version")), QStringLiteral("1"));
    QCOMPARE(root.attribute(QStringLiteral("booking")), QStringLiteral("b"));
    QCOMPARE(zoHPCDocumentText::toText(configuration.document()), configuration.text());
}

void tst_zoHPCConfiguration::readingReplacesBothSections()
{
    zoHPCConfiguration configuration;
    configuration.displays().setDefaultConfig();
    QDomDocument document = documentOf(QLatin1String(s_text));

    configuration.read(document);

    QCOMPARE(configuration.hosts().getNodeNames(), QStringList{QStringLiteral("a")});
    QVERIFY(configuration.displays().getWindowItems().isEmpty());
    QCOMPARE(configuration.text(), QLatin1String(s_text));
}

void tst_zoHPCConfiguration::hostsFileIsReadOnRequestOnly()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("hosts")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("fromfile");
    file.close();
    zoHPCConfiguration configuration;
    configuration.hosts().setHostFile(file.fileName());
    configuration.hosts().setHostString(QStringLiteral("typed"));

    const QString asIs = zoHPCConfiguration::textAsIs(configuration.hosts(), configuration.displays());
    const QString read = zoHPCConfiguration::text(configuration.hosts(), configuration.displays());

    QVERIFY(asIs.contains(QLatin1String("\"typed\"")));
    QVERIFY(read.contains(QLatin1String("\"fromfile\"")));
    QVERIFY(!read.contains(QLatin1String("\"typed\"")));
}

void tst_zoHPCConfiguration::configurationHasOneSection_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("expected");
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("root") << QStringLiteral("<cluster/>") << false;
    QTest::newRow("other") << QStringLiteral("<html><body/></html>") << false;
    QTest::newRow("hosts") << QStringLiteral("<cluster><master/></cluster>") << true;
    QTest::newRow("projection") << QStringLiteral("<cluster><projection/></cluster>") << true;
    QTest::newRow("display") << QStringLiteral("<any><display/></any>") << true;
}

void tst_zoHPCConfiguration::configurationHasOneSection()
{
    QFETCH(QString, text);
    QFETCH(bool, expected);

    QCOMPARE(zoHPCConfiguration::isConfiguration(documentOf(text)), expected);
}

ZO_TEST_MAIN(tst_zoHPCConfiguration)

#include "tst_zoHPCConfiguration.moc"
