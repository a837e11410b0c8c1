#include "zoTestCase.h"

#include <zoHPCNumberField.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QLocale>

namespace
{
// Of any script, one key after the other.
void type(QWidget& field, const QString& text)
{
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, &field, Qt::Key_unknown, QString(character), Qt::NoModifier);
}
} // namespace

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
    void shownNumberIsTaken_data();
    void shownNumberIsTaken();
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
    const QLocale egyptian(QLocale::Arabic, QLocale::Egypt);
    const QLocale swedish(QLocale::Swedish, QLocale::Sweden);
    QTest::newRow("french-comma") << french << "63,5" << 63.5;
    QTest::newRow("c-point") << QLocale::c() << "63.5" << 63.5;
    QTest::newRow("c-comma") << QLocale::c() << "63,5" << 63.5;
    QTest::newRow("c-three-digits") << QLocale::c() << "1,234" << 1.23;
    QTest::newRow("egyptian-point") << egyptian << "63.5" << 63.5;
    QTest::newRow("egyptian-comma") << egyptian << "-63,5" << -63.5;
    QTest::newRow("egyptian-digits") << egyptian << QStringLiteral("٦٣٫٥") << 63.5;
    QTest::newRow("egyptian-digits-comma") << egyptian << QStringLiteral("-٦٣،٥") << -63.5;
    QTest::newRow("egyptian-digits-point") << egyptian << QStringLiteral("٠.٢٥") << 0.25;
    QTest::newRow("egyptian-mark-in-german") << german << QStringLiteral("63٫5") << 63.5;
    QTest::newRow("swedish-minus") << swedish << "-63.5" << -63.5;
    QTest::newRow("swedish-own-minus") << swedish << QStringLiteral("−63,5") << -63.5;
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

    type(field, typed);
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
    QTest::newRow("french-old") << french << QStringLiteral("1\u00a0234,5");
    QTest::newRow("french-in-german") << german << QStringLiteral("1\u202f234,5");
    const QLocale egyptian(QLocale::Arabic, QLocale::Egypt);
    QTest::newRow("egyptian") << egyptian << QStringLiteral("١٬٢٣٤");
    QTest::newRow("egyptian-fraction") << egyptian << QStringLiteral("١٬٢٣٤٫٥");
    QTest::newRow("egyptian-in-german") << german << QStringLiteral("1٬234");
    QTest::newRow("english-in-egyptian") << egyptian << "1,234.5";
    QTest::newRow("c") << QLocale::c() << "1,234.5";
    QTest::newRow("swiss-old") << swiss << "1'234";
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

void tst_zoHPCNumberField::shownNumberIsTaken_data()
{
    QTest::addColumn<QLocale>("locale");

    for (const char* name : {"C", "de_DE", "fr_FR", "ar_EG", "sv_SE", "de_CH", "fa_IR", "hi_IN", "he_IL"})
        QTest::newRow(name) << QLocale(QLatin1String(name));
}

// What the field writes itself can be edited: digits, sign and mark of the locale.
void tst_zoHPCNumberField::shownNumberIsTaken()
{
    QFETCH(QLocale, locale);
    zoHPCNumberField field;
    field.setLocale(locale);
    field.setRange(-1000000.0, 1000000.0);

    for (const double value : {-12345.5, -0.25, 0.0, 0.01, 1234567.0 / 4, 1000000.0}) {
        field.setValue(value);
        QString text = field.text();
        int position = text.size();
        QCOMPARE(field.validate(text, position), QValidator::Acceptable);
        QCOMPARE(field.valueFromText(text), value);
        QTest::keyClick(&field, Qt::Key_End);
        QTest::keyClick(&field, Qt::Key_Backspace);
        type(field, text.right(1));
        QTest::keyClick(&field, Qt::Key_Return);
        QCOMPARE(field.value(), value);
    }
}

ZO_TEST_MAIN(tst_zoHPCNumberField)
#include "tst_zoHPCNumberField.moc"
