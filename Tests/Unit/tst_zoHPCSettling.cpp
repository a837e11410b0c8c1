#include "zoTestCase.h"

#include <zoHPCSettling.h>

#include <QApplication>
#include <QSignalSpy>

// What tells quick changes from single ones.
class tst_zoHPCSettling final : public zoTestCase
{
    Q_OBJECT

private slots:
    void singleChangeIsNotQuick();
    void secondChangeIsQuickUntilItSettles();
    void settledByHandIsQuiet();
};

void tst_zoHPCSettling::singleChangeIsNotQuick()
{
    zoHPCSettling settling;
    QSignalSpy settled(&settling, &zoHPCSettling::settled);

    settling.note();

    QVERIFY(!settling.isQuick());
    // Another one that began later has settled: so long after, a change is single again.
    zoHPCSettling later;
    QSignalSpy laterSettled(&later, &zoHPCSettling::settled);
    later.note();
    later.note();
    QTRY_COMPARE(laterSettled.size(), 1);
    settling.note();
    QVERIFY(!settling.isQuick());
    QCOMPARE(settled.size(), 0);
}

void tst_zoHPCSettling::secondChangeIsQuickUntilItSettles()
{
    zoHPCSettling settling;
    QSignalSpy settled(&settling, &zoHPCSettling::settled);

    settling.note();
    settling.note();
    QVERIFY(settling.isQuick());
    settling.note();
    QVERIFY(settling.isQuick());
    QCOMPARE(settled.size(), 0);

    QTRY_COMPARE(settled.size(), 1);
    QVERIFY(!settling.isQuick());
    settling.note();
    QVERIFY(!settling.isQuick());
}

void tst_zoHPCSettling::settledByHandIsQuiet()
{
    zoHPCSettling settling;
    QSignalSpy settled(&settling, &zoHPCSettling::settled);
    settling.note();
    settling.note();

    settling.settle();

    QVERIFY(!settling.isQuick());
    settling.note();
    QVERIFY(!settling.isQuick());
    QCOMPARE(settled.size(), 0);
}

ZO_TEST_MAIN(tst_zoHPCSettling)

#include "tst_zoHPCSettling.moc"
