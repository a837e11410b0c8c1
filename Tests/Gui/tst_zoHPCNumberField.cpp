#include "zoTestCase.h"

#include <zoHPCNumberField.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QLocale>

// The field for a number with a fraction, in any locale.
class tst_zoHPCNumberField final : public zoTestCase
{
    Q_OBJECT

private slots:
    void pointAndCommaAreDecimalMarks_data();
    void pointAndCommaAreDecimalMarks();
    void groupsAreNotTaken_data();
    void groupsAreNotTaken();
    void keepsTheMarkOfItsLocale();
};

void tst_zoHPCNumberField::pointAndCommaAreDecimalMarks_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("value");

    const QLocale german(QLocale::German, QLocale::Germany);
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QLocale french(QLocale::French, QLocale::France);
    const QLocale swiss(QLocale::German, QLocale::Switzerland);
    QTest::newRow("german-point") << german << "63.5" << 63.5;
    QTest::newRow("german-comma") << german << "63,5" << 63.5;
    QTest::newRow("german-fraction") << german << "0.25" << 0.25;
    QTest::newRow("german-three-digits") << german << "1.234" << 1.23; // as many digits as the field shows
    QTest::newRow("english-point") << english << "63.5" << 63.5;
    QTest::newRow("english-comma") << english << "63,5" << 63.5;
    QTest::newRow("french-point") << french << "-63.5" << -63.5;
    QTest::newRow("swiss-comma") << swiss << "63,5" << 63.5;
    QTest::newRow("without-zero") << german << ".5" << 0.5;
    QTest::newRow("whole") << german << "63" << 63.0;
}

void tst_zoHPCNumberField::pointAndCommaAreDecimalMarks()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, typed);
    QFETCH(double, value);
    zoHPCNumberField field;
    field.setLocale(locale);
    field.setRange(-1000000.0, 1000000.0);
    field.selectAll();

    QTest::keyClicks(&field, typed);
    QCOMPARE(field.value(), value);
    QTest::keyClick(&field, Qt::Key_Return);

    QCOMPARE(field.value(), value);
}

void tst_zoHPCNumberField::groupsAreNotTaken_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("pasted");

    const QLocale german(QLocale::German, QLocale::Germany);
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QLocale french(QLocale::French, QLocale::France);
    const QLocale swiss(QLocale::German, QLocale::Switzerland);
    QTest::newRow("german") << german << "1.234,5";
    QTest::newRow("english") << english << "1,234.5";
    QTest::newRow("two-groups") << english << "1,234,567";
    QTest::newRow("french") << french
                            << QStringLiteral("1") + french.groupSeparator() + QStringLiteral("234");
    QTest::newRow("blank") << french << "1 234";
    QTest::newRow("swiss") << swiss << QStringLiteral("1") + swiss.groupSeparator() + QStringLiteral("234");
}

void tst_zoHPCNumberField::groupsAreNotTaken()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, pasted);
    zoHPCNumberField field;
    field.setLocale(locale);
    field.setRange(-1000000.0, 1000000.0);
    field.setValue(7.0);
    field.selectAll();
    QApplication::clipboard()->setText(pasted);

    field.findChild<QLineEdit*>()->paste();
    QTest::keyClick(&field, Qt::Key_Return);

    QCOMPARE(field.value(), 7.0);
}

void tst_zoHPCNumberField::keepsTheMarkOfItsLocale()
{
    zoHPCNumberField field;
    field.setLocale(QLocale(QLocale::German, QLocale::Germany));
    field.setRange(0.0, 1000000.0);
    field.selectAll();

    QTest::keyClicks(&field, QStringLiteral("1234.5"));
    QCOMPARE(field.text(), QStringLiteral("1234,5"));
    QTest::keyClick(&field, Qt::Key_Return);

    QCOMPARE(field.text(), QStringLiteral("1234,50"));
}

ZO_TEST_MAIN(tst_zoHPCNumberField)
#include "tst_zoHPCNumberField.moc"
