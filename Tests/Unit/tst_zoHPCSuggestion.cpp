#include "zoTestCase.h"

#include <zoHPCSuggestion.h>

#include <QApplication>

// What a mistyped word was meant to be.
class tst_zoHPCSuggestion final : public zoTestCase
{
    Q_OBJECT

private slots:
    void nearestWordIsMeant_data();
    void nearestWordIsMeant();
    void longWordsEnd();
};

void tst_zoHPCSuggestion::nearestWordIsMeant_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QStringList>("known");
    QTest::addColumn<QString>("meant");

    const QStringList words{"check", "convert", "diff", "draw", "export", "format", "new"};
    QTest::newRow("swapped") << "chekc" << words << "check";
    QTest::newRow("left-out") << "fomat" << words << "format";
    QTest::newRow("put-in") << "drraw" << words << "draw";
    QTest::newRow("changed") << "expart" << words << "export";
    QTest::newRow("in-capitals") << "DIFF" << words << "diff";
    QTest::newRow("third-of-the-letters")
        << "eyeseperatoin" << QStringList{"eyeseparation"} << "eyeseparation";
    QTest::newRow("too-far") << "paint" << words << QString();
    QTest::newRow("short-words-differ-in-one-letter") << "xx" << QStringList{"x1", "y1"} << "x1";
    QTest::newRow("short-words-differ-in-two") << "ab" << QStringList{"x1", "y1"} << QString();
    QTest::newRow("one-letter-is-no-other") << "q" << QStringList{"x"} << QString();
    QTest::newRow("nearest-first") << "widht" << QStringList{"weight", "width"} << "width";
    QTest::newRow("first-of-equals") << "x3" << QStringList{"x1", "x2"} << "x1";
    QTest::newRow("itself") << "new" << words << "new";
    QTest::newRow("nothing-typed") << "" << QStringList{"x", "new"} << QString();
    QTest::newRow("nothing-known") << "new" << QStringList() << QString();
}

void tst_zoHPCSuggestion::nearestWordIsMeant()
{
    QFETCH(QString, word);
    QFETCH(QStringList, known);
    QFETCH(QString, meant);

    QCOMPARE(zoHPCSuggestion::closest(word, known), meant);
}

// The comparison takes the product of both lengths.
void tst_zoHPCSuggestion::longWordsEnd()
{
    QCOMPARE(zoHPCSuggestion::closest(QString(64, 'a'), {QString(63, 'a')}), QString(63, 'a'));
    QCOMPARE(zoHPCSuggestion::closest(QString(65, 'a'), {QString(64, 'a')}), QString());
    QCOMPARE(zoHPCSuggestion::closest(QString(1000000, 'a'), {QString(1000000, 'a')}), QString());
}

ZO_TEST_MAIN(tst_zoHPCSuggestion)
#include "tst_zoHPCSuggestion.moc"
