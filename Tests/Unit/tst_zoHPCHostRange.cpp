#include "zoTestCase.h"

#include <zoHPCHostRange.h>

#include <QApplication>

#include <climits>

// Ranges of hosts: what they fill in, and how long they may be.
class tst_zoHPCHostRange final : public zoTestCase
{
    Q_OBJECT

private slots:
    void rangeFillsTheNumbersInBetween_data();
    void rangeFillsTheNumbersInBetween();
    void longestRangeEndsWhereTheReaderWouldNotFillIt();
};

void tst_zoHPCHostRange::rangeFillsTheNumbersInBetween_data()
{
    using Range = zoHPCHostRange::Kind;
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

void tst_zoHPCHostRange::rangeFillsTheNumbersInBetween()
{
    QFETCH(QString, first);
    QFETCH(QString, last);
    QFETCH(int, range);
    QFETCH(int, between);

    const zoHPCHostRange hosts{zoHPCNumberedName(first), zoHPCNumberedName(last)};

    QCOMPARE(int(hosts.kind()), range);
    QCOMPARE(hosts.namesBetween(), between);
}

void tst_zoHPCHostRange::longestRangeEndsWhereTheReaderWouldNotFillIt()
{
    QCOMPARE(zoHPCHostRange::longestFrom(zoHPCNumberedName("n1")), 10001);
    QCOMPARE(zoHPCHostRange::longestFrom(zoHPCNumberedName("n" + QString::number(INT_MAX))), 1);
}

ZO_TEST_MAIN(tst_zoHPCHostRange)
#include "tst_zoHPCHostRange.moc"
