#include "zoTestCase.h"

#include <zoHPCDebounce.h>

#include <QApplication>
#include <QSignalSpy>

// What tells quick changes from single ones.
class tst_zoHPCDebounce final : public zoTestCase
{
    Q_OBJECT

private slots:
    void singleChangeIsNotQuick();
    void secondChangeIsQuickUntilItSettles();
    void settledByHandIsQuiet();
};

void tst_zoHPCDebounce::singleChangeIsNotQuick()
{
    zoHPCDebounce debounce;
    QSignalSpy settled(&debounce, &zoHPCDebounce::settled);

    debounce.note();

    QVERIFY(!debounce.isQuick());
    // Another one that began later has settled: so long after, a change is single again.
    zoHPCDebounce later;
    QSignalSpy laterSettled(&later, &zoHPCDebounce::settled);
    later.note();
    later.note();
    QTRY_COMPARE(laterSettled.size(), 1);
    debounce.note();
    QVERIFY(!debounce.isQuick());
    QCOMPARE(settled.size(), 0);
}

void tst_zoHPCDebounce::secondChangeIsQuickUntilItSettles()
{
    zoHPCDebounce debounce;
    QSignalSpy settled(&debounce, &zoHPCDebounce::settled);

    debounce.note();
    debounce.note();
    QVERIFY(debounce.isQuick());
    debounce.note();
    QVERIFY(debounce.isQuick());
    QCOMPARE(settled.size(), 0);

    QTRY_COMPARE(settled.size(), 1);
    QVERIFY(!debounce.isQuick());
    debounce.note();
    QVERIFY(!debounce.isQuick());
}

void tst_zoHPCDebounce::settledByHandIsQuiet()
{
    zoHPCDebounce debounce;
    QSignalSpy settled(&debounce, &zoHPCDebounce::settled);
    debounce.note();
    debounce.note();

    debounce.settle();

    QVERIFY(!debounce.isQuick());
    debounce.note();
    QVERIFY(!debounce.isQuick());
    QCOMPARE(settled.size(), 0);
}

ZO_TEST_MAIN(tst_zoHPCDebounce)

#include "tst_zoHPCDebounce.moc"
