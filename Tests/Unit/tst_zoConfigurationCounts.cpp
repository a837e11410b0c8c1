#include "zoTestCase.h"

#include <zoConfigurationCounts.h>

#include <QApplication>
#include <QFile>

// What a configuration document is counted to hold.
class tst_zoConfigurationCounts final : public zoTestCase
{
    Q_OBJECT

private slots:
    void sampleIsCounted();
    void generatedPlanesAreNotCounted();
    void brokenTextCountsUpToItsError();
    void emptyTextCountsNothing();
};

void tst_zoConfigurationCounts::sampleIsCounted()
{
    QFile file(QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();

    const zoConfigurationCounts counts(QString::fromUtf8(text));

    QVERIFY(counts.nodes >= 4);
    QCOMPARE(counts.networks, text.count("<network"));
    QCOMPARE(counts.nodes, text.count("<node "));
    QCOMPARE(counts.displays, text.count("\n <display"));
    QCOMPARE(counts.windows, text.count("<window "));
    QCOMPARE(counts.viewports, text.count("<viewport "));
    QCOMPARE(counts.projections, text.count("\n <projection"));
}

void tst_zoConfigurationCounts::generatedPlanesAreNotCounted()
{
    const zoConfigurationCounts counts(
        "<cluster><projection><projection/><projection/></projection><projection/></cluster>");

    QCOMPARE(counts.projections, 2);
}

void tst_zoConfigurationCounts::brokenTextCountsUpToItsError()
{
    const zoConfigurationCounts counts("<cluster><master><network><node/><node/></master><node/>");

    QCOMPARE(counts.networks, 1);
    QCOMPARE(counts.nodes, 2);
}

void tst_zoConfigurationCounts::emptyTextCountsNothing()
{
    const zoConfigurationCounts counts;

    QCOMPARE(counts.networks + counts.nodes + counts.projections + counts.displays + counts.windows +
                 counts.viewports,
             0);
}

ZO_TEST_MAIN(tst_zoConfigurationCounts)
#include "tst_zoConfigurationCounts.moc"
