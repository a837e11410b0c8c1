#include "zoTestCase.h"

#include <zoLengthUnit.h>

#include <QApplication>

// Units of lengths as they are shown.
class tst_zoLengthUnit final : public zoTestCase
{
    Q_OBJECT

private slots:
    void lengthIsWrittenInItsUnit_data();
    void lengthIsWrittenInItsUnit();
    void unknownSymbolIsMillimetres();
    void millimetresAreShownUnlessAnotherIsChosen();
};

void tst_zoLengthUnit::lengthIsWrittenInItsUnit_data()
{
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<double>("length");
    QTest::addColumn<QString>("text");

    QTest::newRow("mm") << "mm" << 5520.0 << "5520 mm";
    QTest::newRow("cm") << "cm" << 5520.0 << "552 cm";
    QTest::newRow("m") << "m" << 5520.0 << "5.52 m";
    QTest::newRow("in") << "in" << 304.8 << "12 in";
    QTest::newRow("ft") << "ft" << 304.8 << "1 ft";
    QTest::newRow("zero") << "m" << 0.0 << "0 m";
    QTest::newRow("negative") << "m" << -1.0 << "-0.001 m";
    QTest::newRow("six-digits") << "in" << 1000.0 << "39.3701 in";
}

void tst_zoLengthUnit::lengthIsWrittenInItsUnit()
{
    QFETCH(QString, symbol);
    QFETCH(double, length);
    QFETCH(QString, text);

    QCOMPARE(zoLengthUnit::of(symbol).text(length), text);
}

void tst_zoLengthUnit::unknownSymbolIsMillimetres()
{
    QCOMPARE(zoLengthUnit::of("parsec").symbol(), QStringLiteral("mm"));
    QCOMPARE(zoLengthUnit::of(QString()).symbol(), QStringLiteral("mm"));
}

void tst_zoLengthUnit::millimetresAreShownUnlessAnotherIsChosen()
{
    QVERIFY(zoLengthUnit::shown() == zoLengthUnit::of("mm"));

    zoLengthUnit::setShown(zoLengthUnit::of("ft"));

    QVERIFY(zoLengthUnit::shown() != zoLengthUnit::of("mm"));
    QCOMPARE(zoLengthUnit::shown().millimetres(), 304.8);
}

ZO_TEST_MAIN(tst_zoLengthUnit)
#include "tst_zoLengthUnit.moc"
