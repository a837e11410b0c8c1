#include "zoTestCase.h"

#include <zoHPCIntegerField.h>
#include <zoHPCNumberExpression.h>
#include <zoHPCNumberField.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>

#include <climits>

Q_DECLARE_METATYPE(zoHPCNumberExpression::Unit)
Q_DECLARE_METATYPE(zoHPCNumberExpression::State)

using State = zoHPCNumberExpression::State;
using Unit = zoHPCNumberExpression::Unit;

// Units and sums in number fields.
class tst_zoHPCNumberExpression final : public zoTestCase
{
    Q_OBJECT

private slots:
    void isRead_data();
    void isRead();
    void isNotRead_data();
    void isNotRead();
    void wholeNumbers_data();
    void wholeNumbers();
    void fieldTakesThem_data();
    void fieldTakesThem();
    void fieldRefuses_data();
    void fieldRefuses();
    void integerFieldTakesSums_data();
    void integerFieldTakesSums();
    void everyBeginningIsHarmless();
    void groups_data();
    void groups();
};

void tst_zoHPCNumberExpression::isRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Unit>("unit");
    QTest::addColumn<double>("value");

    QTest::newRow("number") << "63.5" << Unit::Millimetre << 63.5;
    QTest::newRow("comma") << "63,5" << Unit::None << 63.5;
    QTest::newRow("metres") << "3.2 m" << Unit::Millimetre << 3200.0;
    QTest::newRow("centimetres") << "3,2cm" << Unit::Millimetre << 32.0;
    QTest::newRow("millimetres") << "3mm" << Unit::Millimetre << 3.0;
    QTest::newRow("inches") << "12 in" << Unit::Millimetre << 304.8;
    QTest::newRow("feet-and-inches") << "5 ft + 2 in" << Unit::Millimetre << 1574.8;
    QTest::newRow("upper-case") << "1 M" << Unit::Millimetre << 1000.0;
    QTest::newRow("below-zero") << "-1.5 m" << Unit::Millimetre << -1500.0;
    QTest::newRow("pixels") << "1920 px" << Unit::Pixel << 1920.0;
    QTest::newRow("part") << "25%" << Unit::Fraction << 0.25;
    QTest::newRow("quotient") << "5520/3" << Unit::None << 1840.0;
    QTest::newRow("product-first") << "2*1920-80" << Unit::Pixel << 3760.0;
    QTest::newRow("from-the-left") << "100-20-30" << Unit::None << 50.0;
    QTest::newRow("quotients-from-the-left") << "100/5/2" << Unit::None << 10.0;
    QTest::newRow("brackets") << "(5520 - 2*60)/3" << Unit::Pixel << 1800.0;
    QTest::newRow("unit-of-brackets") << "(1+2) m" << Unit::Millimetre << 3000.0;
    QTest::newRow("sign-behind-operator") << "3*-2" << Unit::None << -6.0;
    QTest::newRow("own-minus") << QStringLiteral("3 \u2212 2") << Unit::None << 1.0;
    QTest::newRow("arabic-digits") << QStringLiteral("\u0663\u066b\u0665 m") << Unit::Millimetre << 3500.0;
}

void tst_zoHPCNumberExpression::isRead()
{
    QFETCH(QString, text);
    QFETCH(Unit, unit);
    QFETCH(double, value);

    const zoHPCNumberExpression::Result result = zoHPCNumberExpression::evaluate(text, unit);

    QCOMPARE(result.state, State::Acceptable);
    QVERIFY2(qAbs(result.value - value) < 1e-9, qPrintable(QString::number(result.value)));
}

void tst_zoHPCNumberExpression::isNotRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Unit>("unit");
    QTest::addColumn<State>("state");

    const auto Intermediate = State::Intermediate;
    const auto Invalid = State::Invalid;
    QTest::newRow("empty") << "" << Unit::None << Intermediate;
    QTest::newRow("sign") << "-" << Unit::None << Intermediate;
    QTest::newRow("open-quotient") << "5520/" << Unit::None << Intermediate;
    QTest::newRow("open-bracket") << "(5520" << Unit::None << Intermediate;
    QTest::newRow("closed-too-often") << "(5520))" << Unit::None << Invalid;
    QTest::newRow("by-zero") << "1/0" << Unit::None << Intermediate;
    QTest::newRow("nothing-by-zero") << "0/0" << Unit::None << Intermediate;
    QTest::newRow("beginning-of-a-unit") << "12 i" << Unit::Millimetre << Intermediate;
    QTest::newRow("unknown-unit") << "12 yd" << Unit::Millimetre << Invalid;
    QTest::newRow("unit-of-others") << "12 px" << Unit::Millimetre << Invalid;
    QTest::newRow("length-of-pixels") << "12 m" << Unit::Pixel << Invalid;
    QTest::newRow("unit-of-none") << "12 m" << Unit::None << Invalid;
    QTest::newRow("part-of-a-unit-inside") << "12 i + 3" << Unit::Millimetre << Invalid;
    QTest::newRow("group") << "1 234" << Unit::None << Invalid;
    QTest::newRow("group-with-unit") << "1 234 m" << Unit::Millimetre << Invalid;
    QTest::newRow("two-marks") << "1,234.5" << Unit::None << Invalid;
    QTest::newRow("two-operators") << "1**2" << Unit::None << Invalid;
    QTest::newRow("exponent") << "1e3" << Unit::Millimetre << Invalid;
    QTest::newRow("raised") << QStringLiteral("5\u00b2*3") << Unit::None << Invalid;
    QTest::newRow("raised-with-unit") << QStringLiteral("5\u00b2 m") << Unit::Millimetre << Invalid;
    QTest::newRow("deep") << QString(1000, QLatin1Char('(')) << Unit::None << Invalid;
    QTest::newRow("deep-within-the-length") << QString(100, QLatin1Char('(')) << Unit::None << Invalid;
    QTest::newRow("long") << QString(100000, QLatin1Char('1')) << Unit::None << Invalid;
}

void tst_zoHPCNumberExpression::isNotRead()
{
    QFETCH(QString, text);
    QFETCH(Unit, unit);
    QFETCH(State, state);

    QCOMPARE(zoHPCNumberExpression::evaluate(text, unit).state, state);
}

void tst_zoHPCNumberExpression::wholeNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value"); // INT_MIN for none

    QTest::newRow("quotient") << "5520/3" << 1840;
    QTest::newRow("not-whole") << "5521/3" << INT_MIN;
    QTest::newRow("fraction") << "63.5" << INT_MIN;
    QTest::newRow("whole-with-mark") << "63.0" << 63;
    QTest::newRow("pixels") << "80 px" << 80;
    QTest::newRow("below-zero") << "-80" << -80;
    QTest::newRow("largest") << "2147483647" << INT_MAX;
    QTest::newRow("too-large") << "2147483648" << INT_MIN;
    QTest::newRow("nothing") << "" << INT_MIN;
}

void tst_zoHPCNumberExpression::wholeNumbers()
{
    QFETCH(QString, text);
    QFETCH(int, value);

    QCOMPARE(zoHPCNumberExpression::wholeNumber(text).value_or(INT_MIN), value);
}

void tst_zoHPCNumberExpression::fieldTakesThem_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("shown");

    QTest::newRow("metres") << "en_US"
                            << "3.2m" << 3200.0 << "3200.00";
    QTest::newRow("blank-is-left-out") << "en_US"
                                       << "3.2 m" << 3200.0 << "3200.00";
    QTest::newRow("german") << "de_DE"
                            << "3,2m+12in" << 3504.8 << "3504,80";
    QTest::newRow("german-point") << "de_DE"
                                  << "3.2m" << 3200.0 << "3200,00";
    QTest::newRow("as-many-digits-as-shown") << "en_US"
                                             << "5520/7" << 788.57 << "788.57";
    QTest::newRow("number") << "de_DE"
                            << "63.5" << 63.5 << "63,50";
}

void tst_zoHPCNumberExpression::fieldTakesThem()
{
    QFETCH(QString, locale);
    QFETCH(QString, typed);
    QFETCH(double, value);
    QFETCH(QString, shown);
    zoHPCNumberField field;
    field.setLocale(QLocale(locale));
    field.setUnit(Unit::Millimetre);
    field.setRange(-1e6, 1e6);
    field.selectAll();

    QTest::keyClicks(&field, typed);
    QCOMPARE(field.value(), value); // while it is typed
    QTest::keyClick(&field, Qt::Key_Return);

    QCOMPARE(field.value(), value);
    QCOMPARE(field.text(), shown);
}

void tst_zoHPCNumberExpression::fieldRefuses_data()
{
    QTest::addColumn<QString>("pasted");

    QTest::newRow("unit-of-others") << "12 px";
    QTest::newRow("group") << "1 234 m";
    QTest::newRow("outside-the-range") << "5 m * 1000";
    QTest::newRow("by-zero") << "1/0";
    QTest::newRow("words") << "three metres";
}

void tst_zoHPCNumberExpression::fieldRefuses()
{
    QFETCH(QString, pasted);
    zoHPCNumberField field;
    field.setUnit(Unit::Millimetre);
    field.setRange(-1e6, 1e6);
    field.setValue(7.0);
    field.selectAll();
    QApplication::clipboard()->setText(pasted);

    field.findChild<QLineEdit*>()->paste();
    QTest::keyClick(&field, Qt::Key_Return);

    QCOMPARE(field.value(), 7.0);
}

void tst_zoHPCNumberExpression::integerFieldTakesSums_data()
{
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<int>("value");

    QTest::newRow("quotient") << "5520/3" << 1840;
    QTest::newRow("pixels") << "2*1920 px" << 3840;
    QTest::newRow("below-zero") << "10-30" << -20;
    QTest::newRow("not-whole") << "5521/3" << 7;
    QTest::newRow("length") << "3 m" << 7;
    QTest::newRow("mark") << "63.5" << 7;
    QTest::newRow("mark-in-a-sum") << "63.5*2" << 7;
    QTest::newRow("outside-the-range") << "1000*1000" << 7;
}

void tst_zoHPCNumberExpression::integerFieldTakesSums()
{
    QFETCH(QString, pasted);
    QFETCH(int, value);
    zoHPCIntegerField field;
    field.setRange(-100000, 100000);
    field.setValue(7);
    field.selectAll();
    QApplication::clipboard()->setText(pasted);

    field.findChild<QLineEdit*>()->paste();
    QTest::keyClick(&field, Qt::Key_Return);

    QCOMPARE(field.value(), value);
    QCOMPARE(field.text(), QString::number(value));
}

// Whatever is typed of what is read may be typed: no key of it is swallowed.
void tst_zoHPCNumberExpression::everyBeginningIsHarmless()
{
    const QString whole = QStringLiteral("(5520-2*60)/3+1.5m-12in");
    for (int length = 1; length <= whole.size(); ++length) {
        const auto result = zoHPCNumberExpression::evaluate(whole.left(length), Unit::Millimetre);
        QVERIFY2(result.state != State::Invalid, qPrintable(whole.left(length)));
    }
}

void tst_zoHPCNumberExpression::groups_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("without");

    QTest::newRow("three-digits") << "2,000"
                                  << "2000";
    QTest::newRow("with-unit") << "2,000mm"
                               << "2000mm";
    QTest::newRow("in-a-sum") << "-123,456+7"
                              << "-123456+7";
    QTest::newRow("two-digits") << "2,00"
                                << "2,00";
    QTest::newRow("four-digits") << "2,0000"
                                 << "2,0000";
    QTest::newRow("four-before") << "1234,567"
                                 << "1234,567";
    QTest::newRow("zero") << "0,500"
                          << "0,500";
    QTest::newRow("point") << "2.000"
                           << "2.000";
    QTest::newRow("two-marks") << "1,234.5"
                               << "1,234.5";
    QTest::newRow("two-groups") << "1,234,567"
                                << "1,234,567";
}

void tst_zoHPCNumberExpression::groups()
{
    QFETCH(QString, text);
    QFETCH(QString, without);

    QCOMPARE(zoHPCNumberExpression::withoutGroups(text), without);
}

ZO_TEST_MAIN(tst_zoHPCNumberExpression)
#include "tst_zoHPCNumberExpression.moc"
