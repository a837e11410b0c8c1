#include "zoTestCase.h"

#include <zoHostLogPanel.h>

#include <QApplication>
#include <QScrollBar>
#include <QTextBlock>

// The log as the user reads it.
class tst_zoHostLogPanel final : public zoTestCase
{
    Q_OBJECT

private slots:
    void lineHasTimeAndText();
    void errorsAndWarningsAreMarked_data();
    void errorsAndWarningsAreMarked();
    void markupIsShownAsItIs();
    void newestLineIsSeen();
    void readerWhoScrolledUpStays();
    void oldLinesGo();
    void panelIsReadOnly();
};

void tst_zoHostLogPanel::lineHasTimeAndText()
{
    zoHostLogPanel panel;

    panel.addMessage(QtInfoMsg, "first");
    panel.addMessage(QtInfoMsg, "second");

    QCOMPARE(panel.document()->blockCount(), 2);
    const QRegularExpression line(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d  second$"));
    QVERIFY(line.match(panel.document()->lastBlock().text()).hasMatch());
}

void tst_zoHostLogPanel::errorsAndWarningsAreMarked_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("mark");

    QTest::newRow("debug") << int(QtDebugMsg) << "";
    QTest::newRow("info") << int(QtInfoMsg) << "";
    QTest::newRow("warning") << int(QtWarningMsg) << "Warning: ";
    QTest::newRow("critical") << int(QtCriticalMsg) << "Error: ";
    QTest::newRow("fatal") << int(QtFatalMsg) << "Error: ";
}

void tst_zoHostLogPanel::errorsAndWarningsAreMarked()
{
    QFETCH(int, type);
    QFETCH(QString, mark);
    zoHostLogPanel panel;
    panel.addMessage(QtInfoMsg, "plain");
    const QBrush plain = panel.document()->firstBlock().begin().fragment().charFormat().foreground();

    panel.addMessage(type, "text");

    const QTextBlock line = panel.document()->lastBlock();
    QCOMPARE(line.text().mid(10), mark + "text");
    QCOMPARE(line.begin().fragment().charFormat().foreground() != plain, !mark.isEmpty());
}

void tst_zoHostLogPanel::markupIsShownAsItIs()
{
    zoHostLogPanel panel;

    panel.addMessage(QtInfoMsg, "<b>&lt;%1</b>");

    QVERIFY(panel.toPlainText().endsWith("<b>&lt;%1</b>"));
}

void tst_zoHostLogPanel::newestLineIsSeen()
{
    zoHostLogPanel panel;
    panel.resize(300, 100);
    panel.show();

    for (int i = 0; i < 100; ++i)
        panel.addMessage(QtInfoMsg, QString(200, QLatin1Char('x')));

    QTRY_COMPARE(panel.verticalScrollBar()->value(), panel.verticalScrollBar()->maximum());
    // Long lines wrap.
    QCOMPARE(panel.horizontalScrollBar()->maximum(), 0);
}

void tst_zoHostLogPanel::readerWhoScrolledUpStays()
{
    zoHostLogPanel panel;
    panel.resize(300, 100);
    panel.show();
    for (int i = 0; i < 100; ++i)
        panel.addMessage(QtInfoMsg, "line");
    QTRY_VERIFY(panel.verticalScrollBar()->maximum() > 0);
    panel.verticalScrollBar()->setValue(10);

    panel.addMessage(QtInfoMsg, "newest");

    QCOMPARE(panel.verticalScrollBar()->value(), 10);
}

void tst_zoHostLogPanel::oldLinesGo()
{
    zoHostLogPanel panel;

    for (int i = 0; i < 5010; ++i)
        panel.addMessage(QtInfoMsg, QString::number(i));

    QCOMPARE(panel.document()->blockCount(), 5000);
    QVERIFY(panel.toPlainText().endsWith("5009"));
}

void tst_zoHostLogPanel::panelIsReadOnly()
{
    zoHostLogPanel panel;
    panel.addMessage(QtInfoMsg, "text");
    const QString before = panel.toPlainText();

    QTest::keyClicks(&panel, "abc");

    QCOMPARE(panel.toPlainText(), before);
}

ZO_TEST_MAIN(tst_zoHostLogPanel)
#include "tst_zoHostLogPanel.moc"
