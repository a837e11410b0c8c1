#include "zoTestCase.h"

#include <zoHPCNumberedName.h>

#include <QApplication>

#include <climits>

// Numbers of host names, and the ranges that are counted with them.
class tst_zoHPCNumberedName final : public zoTestCase
{
    Q_OBJECT

private slots:
    void rangeFillsTheNumbersInBetween_data();
    void rangeFillsTheNumbersInBetween();
    void onlyPlainNumbersCount_data();
    void onlyPlainNumbersCount();
    void longestRangeEndsWhereTheReaderWouldNotFillIt();
};

void tst_zoHPCNumberedName::rangeFillsTheNumbersInBetween_data()
{
    using Range = zoHPCNumberedName::Range;
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("last");
    QTest::addColumn<int>("range");
    QTest::addColumn<int>("between");

    QTest::newRow("three") << "n1"
                           << "n5" << int(Range::Filled) << 3;
    QTest::newRow("neighbours") << "n1"
                                << "n2" << int(Range::Filled) << 0;
    QTest::newRow("the-same") << "n1"
                              << "n1" << int(Range::Filled) << 0;
    QTest::newRow("no-numbers") << "a"
                                << "b" << int(Range::Filled) << 0;
    QTest::newRow("padding-does-not-matter") << "n08"
                                             << "n11" << int(Range::Filled) << 2;
    QTest::newRow("backwards") << "n5"
                               << "n1" << int(Range::Backwards) << 0;
    QTest::newRow("other-prefix") << "n1"
                                  << "m5" << int(Range::OtherPrefix) << 0;
    QTest::newRow("longest") << "n0"
                             << "n10000" << int(Range::Filled) << 9999;
    QTest::newRow("too-long") << "n0"
                              << "n10001" << int(Range::TooLong) << 0;
    QTest::newRow("number-that-does-not-fit") << "n5"
                                              << "n99999999999" << int(Range::Backwards) << 0;
}

void tst_zoHPCNumberedName::rangeFillsTheNumbersInBetween()
{
    QFETCH(QString, first);
    QFETCH(QString, last);
    QFETCH(int, range);
    QFETCH(int, between);
    const zoHPCNumberedName from(first);

    QCOMPARE(int(from.rangeTo(zoHPCNumberedName(last))), range);
    QCOMPARE(from.namesBetween(zoHPCNumberedName(last)), between);
}

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

void tst_zoHPCNumberedName::longestRangeEndsWhereTheReaderWouldNotFillIt()
{
    QCOMPARE(zoHPCNumberedName("n1").longestRange(), 10001);
    QCOMPARE(zoHPCNumberedName("n" + QString::number(INT_MAX)).longestRange(), 1);
}

ZO_TEST_MAIN(tst_zoHPCNumberedName)
#include "tst_zoHPCNumberedName.moc"
