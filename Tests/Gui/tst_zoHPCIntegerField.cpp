#include "zoTestCase.h"

#include <zoHPCIntegerField.h>
#include <zoHPCNumberExpression.h>

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

// The field for a whole number, in any locale.
class tst_zoHPCIntegerField final : public zoTestCase
{
    Q_OBJECT

private slots:
    void marksEndTheNumber_data();
    void marksEndTheNumber();
    void othersAreNotTaken();
};

void tst_zoHPCIntegerField::marksEndTheNumber_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("value");

    const QLocale german(QLocale::German, QLocale::Germany);
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    QTest::newRow("german-point") << german << "63.5" << 63;
    QTest::newRow("german-comma") << german << "63,5" << 63;
    QTest::newRow("english-point") << english << "63.5" << 63;
    QTest::newRow("english-comma") << english << "63,5" << 63;
    const QLocale french(QLocale::French, QLocale::France);
    const QLocale egyptian(QLocale::Arabic, QLocale::Egypt);
    const QLocale swedish(QLocale::Swedish, QLocale::Sweden);
    QTest::newRow("french-comma") << french << "63,5" << 63;
    QTest::newRow("c-comma") << QLocale::c() << "63,5" << 63;
    QTest::newRow("egyptian-point") << egyptian << "63.5" << 63;
    QTest::newRow("egyptian-mark") << egyptian << QStringLiteral("٦٣٫٥") << 63;
    QTest::newRow("egyptian-comma") << egyptian << QStringLiteral("٦٣،٥") << 63;
    QTest::newRow("egyptian-mark-in-german") << german << QStringLiteral("63٫5") << 63;
    QTest::newRow("egyptian-digits") << egyptian << QStringLiteral("-١٢٨٠") << -1280;
    QTest::newRow("swedish-minus") << swedish << "-1280" << -1280;
    QTest::newRow("swedish-own-minus") << swedish << QStringLiteral("−1280") << -1280;
    QTest::newRow("whole") << german << "1280" << 1280;
    QTest::newRow("negative") << english << "-1280" << -1280;
}

void tst_zoHPCIntegerField::marksEndTheNumber()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, typed);
    QFETCH(int, value);
    zoHPCIntegerField field;
    field.setLocale(locale);
    field.setRange(-1000000, 1000000);
    field.selectAll();

    type(field, typed);
    QCOMPARE(field.value(), value);
    QTest::keyClick(&field, Qt::Key_Return);

    QCOMPARE(field.value(), value);
    QLocale withoutGroups = locale;
    withoutGroups.setNumberOptions(QLocale::OmitGroupSeparator);
    // But for marks of direction, which some locales write around the sign and the field leaves out.
    QString plain = withoutGroups.toString(value);
    zoHPCNumberExpression::replaceMinus(plain);
    QCOMPARE(field.text().replace(QChar(0x2212), "-"), plain);
}

void tst_zoHPCIntegerField::othersAreNotTaken()
{
    zoHPCIntegerField field;
    field.setLocale(QLocale(QLocale::French, QLocale::France));
    field.setRange(0, 1000000);
    field.setValue(7);

    QTest::keyClicks(field.findChild<QLineEdit*>(), QStringLiteral("1 2x"));
    QCOMPARE(field.text(), QStringLiteral("127"));
    for (const QString& pasted :
         {QStringLiteral("1 234"), QStringLiteral("1.234"), QStringLiteral("1,234"),
          QStringLiteral("1\u00a0234"), QStringLiteral("1'234"), QStringLiteral("1٬234"),
          QStringLiteral("1") + field.locale().groupSeparator() + QStringLiteral("234")}) {
        field.selectAll();
        QApplication::clipboard()->setText(pasted);
        field.findChild<QLineEdit*>()->paste();
        QTest::keyClick(&field, Qt::Key_Return);
        QCOMPARE(field.value(), 127);
    }

    QCOMPARE(field.text(), QStringLiteral("127"));
}

ZO_TEST_MAIN(tst_zoHPCIntegerField)
#include "tst_zoHPCIntegerField.moc"
