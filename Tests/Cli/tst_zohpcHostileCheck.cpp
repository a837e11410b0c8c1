#include "zoHostileText.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QTest>

using namespace zoHostileText;

// A mebibyte of nothing but mistakes: each is told, in a time in proportion to the text. The time limit here is that of
// the test run: what grows with the square of its input takes minutes.
class tst_zohpcHostileCheck final : public zoTestCase
{
    Q_OBJECT

private slots:
    void checkEnds_data();
    void checkEnds();
};

void tst_zohpcHostileCheck::checkEnds_data()
{
    QTest::addColumn<QByteArray>("input");

    // A hundred thousand complaints, each with the search for what was meant.
    QTest::newRow("elements-nobody-knows") << "<cluster>" + filled("<x/>") + "</cluster>";
    QTest::newRow("elements-nobody-knows-inside-each-other")
        << "<cluster>" + QByteArray("<x>").repeated(10000) + QByteArray("</x>").repeated(10000) +
               "</cluster>";
    QTest::newRow("misspelt-attributes")
        << document(numbered([](const QByteArray& i) { return "<node nme" + i + "='x'/>"; }));
    QByteArray thousand;
    for (int i = 0; i < 1000; ++i)
        thousand += " nam" + QByteArray::number(i) + "='x'";
    QTest::newRow("thousands-of-misspelt-attributes") << document(filled("<node" + thousand + "/>"));
    QTest::newRow("wrong-values") << document(
        {}, "<display>" + filled("<window x='1,5' fullscreen='yess'/>") + "</display>");
    QTest::newRow("references-beyond-a-wall")
        << document({}, "<projection name='W' type='wall' rows='300' columns='300'/><display>" +
                            numbered([](const QByteArray& i) {
                                return "<window><viewport projection='W row" + i + "'/></window>";
                            }) +
                            "</display>");
    QTest::newRow("references-to-many-walls") << document(
        {}, numbered([](const QByteArray& i) { return "<projection name='Wall" + i + "' type='wall'/>"; }) +
                "<display>" + numbered([](const QByteArray& i) {
                    return "<window><viewport projection='Wal " + i + "'/></window>";
                }) +
                "</display>");
}

void tst_zohpcHostileCheck::checkEnds()
{
    QFETCH(QByteArray, input);
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the sanitizer takes more address space than the limit leaves");
#endif

    const zoCommandRun run = runLimited({"check", "-"}, input);

    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.output.count('\n') > 5000, run.output.left(500).constData());
}

ZO_TEST_MAIN(tst_zohpcHostileCheck)
#include "tst_zohpcHostileCheck.moc"
