#include "zoTestCase.h"

#include <zoHPCSurfaceDelegate.h>

#include <QFontMetrics>

// What is shown of the names of nodes where there is too little room.
class tst_zoHPCSurfaceDelegate final : public zoTestCase
{
    Q_OBJECT

private slots:
    void numberStays_data();
    void numberStays();
};

void tst_zoHPCSurfaceDelegate::numberStays_data()
{
    QTest::addColumn<QString>("nodes");
    QTest::addColumn<QString>("room");  // as wide as this text
    QTest::addColumn<QString>("shown"); // more letters may stand behind the first mark

    QTest::newRow("fits") << "gpu01"
                          << "gpu01"
                          << "gpu01";
    QTest::newRow("domain") << "gpu01.cluster.example"
                            << "gpu01 "
                            << "gpu01";
    QTest::newRow("address") << "10.0.0.12"
                             << "….0.12"
                             << "….12";
    QTest::newRow("prefix") << "rendernode-001.cluster"
                            << "…e-001"
                            << "…001";
    QTest::newRow("suffix") << "rendernode-12-left-eye"
                            << "…-12…"
                            << "…12…";
    QTest::newRow("two") << "gpu01.site, gpu02.site"
                         << "gpu01, gpu02"
                         << "gpu01, gpu02";
    QTest::newRow("many") << "gpu01, gpu02, gpu03"
                          << "gpu01 +2"
                          << "gpu01 +2";
    QTest::newRow("many-long") << "rendernode-001, rendernode-002"
                               << "…-001 +1"
                               << "…001 +1";
    QTest::newRow("none") << ""
                          << ""
                          << "";
}

void tst_zoHPCSurfaceDelegate::numberStays()
{
    QFETCH(QString, nodes);
    QFETCH(QString, room);
    QFETCH(QString, shown);
    const QFontMetrics metrics(QGuiApplication::font());
    const int width = metrics.horizontalAdvance(room);

    const QString text = zoHPCSurfaceDelegate::shortened(nodes, metrics, width);

    // Letters before the number, as many as this font has room for.
    QCOMPARE(text.startsWith(QChar(0x2026)), shown.startsWith(QChar(0x2026)));
    const QString end = shown.startsWith(QChar(0x2026)) ? shown.mid(1) : shown;
    QVERIFY2(text.endsWith(end), qPrintable(text));
    QVERIFY(metrics.horizontalAdvance(text) <= width);
}

ZO_TEST_MAIN(tst_zoHPCSurfaceDelegate)

#include "tst_zoHPCSurfaceDelegate.moc"
