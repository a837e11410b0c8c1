#include "zoTestCase.h"

#include <zoHPCNumberedName.h>

#include <QApplication>

// Numbers of host names.
class tst_zoHPCNumberedName final : public zoTestCase
{
    Q_OBJECT

private slots:
    void onlyPlainNumbersCount_data();
    void onlyPlainNumbersCount();
};

void tst_zoHPCNumberedName::onlyPlainNumbersCount_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isCountable");

    QTest::newRow("number") << "n7" << true;
    QTest::newRow("padded") << "n007" << true;
    QTest::newRow("no-number") << "node" << false;
    QTest::newRow("digits-only") << "12" << false;
    QTest::newRow("too-many-zeros") << "n00000000000001" << false;
    QTest::newRow("does-not-fit") << "n99999999999" << false;
}

void tst_zoHPCNumberedName::onlyPlainNumbersCount()
{
    QFETCH(QString, name);
    QFETCH(bool, isCountable);

    QCOMPARE(zoHPCNumberedName(name).isCountable(), isCountable);
}

ZO_TEST_MAIN(tst_zoHPCNumberedName)
#include "tst_zoHPCNumberedName.moc"
