#include "zoDialogRobot.h"
#include "zoTestCase.h"

#include <zoHostLogPanel.h>
#include <zoReadableColour.h>

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QScopeGuard>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QToolButton>

// The log as the user reads it.
class tst_zoHostLogPanel final : public zoTestCase
{
    Q_OBJECT

private slots:
    void lineHasTimeAndText();
    void daysAreNamed_data();
    void daysAreNamed();
    void errorsAndWarningsAreMarked_data();
    void errorsAndWarningsAreMarked();
    void coloursCanBeRead_data();
    void coloursCanBeRead();
    void coloursFollowThePalette();
    void markupIsShownAsItIs();
    void wrappedLinesStandUnderTheText();
    void linesOfOneMessageStayTogether();
    void messageThatComesAgainIsCounted();
    void levelHidesWhatIsLessGrave_data();
    void levelHidesWhatIsLessGrave();
    void textIsFoundForwardsAndBackwards();
    void textThatIsNotThereIsToldSo();
    void keysFind();
    void allIsCopiedWithoutASelection();
    void selectionIsCopied();
    void whatIsShownIsSaved();
    void fileThatCannotBeWrittenIsTold();
    void messagesAreForgotten();
    void newestLineIsSeen();
    void readerWhoScrolledUpStays();
    void oldLinesGo();
    void panelIsReadOnly();

private:
    static QTextBlock lastLine(const zoHostLogPanel& panel) { return panel.view()->document()->lastBlock(); }
    static QColor colourOf(const QTextBlock& line)
    {
        return line.begin().fragment().charFormat().foreground().color();
    }
    static QPalette palette(const QColor& base);
};

QPalette tst_zoHostLogPanel::palette(const QColor& base)
{
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, base.lightness() < 128 ? Qt::white : Qt::black);
    return palette;
}

void tst_zoHostLogPanel::lineHasTimeAndText()
{
    zoHostLogPanel panel;

    panel.addMessage(QtInfoMsg, "first");
    panel.addMessage(QtInfoMsg, "second");

    QCOMPARE(panel.view()->document()->blockCount(), 3);
    const QRegularExpression line(QStringLiteral("^\\d{1,2}:\\d\\d:\\d\\d( [AP]M)?  second$"));
    QVERIFY(line.match(lastLine(panel).text()).hasMatch());
}

void tst_zoHostLogPanel::daysAreNamed_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("shown");

    QTest::newRow("German") << QLocale(QStringLiteral("de_DE"))
                            << "20.11.26\n23:59:59  a\n21.11.26\n00:00:00  b\n00:00:01  c";
    QTest::newRow("American") << QLocale(QStringLiteral("en_US"))
                              << "11/20/26\n11:59:59 PM  a\n11/21/26\n12:00:00 AM  b\n12:00:01 AM  c";
}

// As all dates of the host; what is copied and saved has the form of files.
void tst_zoHostLogPanel::daysAreNamed()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, shown);
    const QLocale before;
    QLocale::setDefault(locale);
    const auto restored = qScopeGuard([&before] { QLocale::setDefault(before); });
    zoHostLogPanel panel;
    zoHostLogView* view = panel.view();

    view->add(QtInfoMsg, "a", {{2026, 11, 20}, {23, 59, 59}});
    view->add(QtInfoMsg, "b", {{2026, 11, 21}, {0, 0, 0}});
    view->add(QtInfoMsg, "c", {{2026, 11, 21}, {0, 0, 1}});

    QCOMPARE(panel.toPlainText(), shown);
    QCOMPARE(view->text(),
             QString("2026-11-20 23:59:59  a\n2026-11-21 00:00:00  b\n2026-11-21 00:00:01  c\n"));
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
    const QColor plain = colourOf(lastLine(panel));

    panel.addMessage(type, "text");

    QCOMPARE(lastLine(panel).text().mid(10), mark + "text");
    QCOMPARE(colourOf(lastLine(panel)) != plain, !mark.isEmpty());
}

void tst_zoHostLogPanel::coloursCanBeRead_data()
{
    QTest::addColumn<QColor>("base");

    QTest::newRow("white") << QColor(Qt::white);
    QTest::newRow("light") << QColor(0xee, 0xe8, 0xd5);
    QTest::newRow("grey") << QColor(0x76, 0x76, 0x76);
    QTest::newRow("dark") << QColor(0x23, 0x26, 0x29);
    QTest::newRow("dark-blue") << QColor(0x00, 0x2b, 0x36);
    QTest::newRow("black") << QColor(Qt::black);
}

void tst_zoHostLogPanel::coloursCanBeRead()
{
    QFETCH(QColor, base);
    zoHostLogPanel panel;
    panel.setPalette(palette(base));

    for (const QtMsgType type : {QtInfoMsg, QtWarningMsg, QtCriticalMsg}) {
        panel.addMessage(type, "text");
        const double contrast = zoReadableColour::contrast(colourOf(lastLine(panel)), base);
        QVERIFY2(contrast >= 4.5, qPrintable(QString::number(contrast)));
    }
}

void tst_zoHostLogPanel::coloursFollowThePalette()
{
    zoHostLogPanel panel;
    panel.setPalette(palette(Qt::white));
    panel.addMessage(QtCriticalMsg, "text");
    const QColor onWhite = colourOf(lastLine(panel));

    panel.setPalette(palette(Qt::black));

    QVERIFY(colourOf(lastLine(panel)) != onWhite);
    QVERIFY(zoReadableColour::contrast(colourOf(lastLine(panel)), Qt::black) >= 4.5);
}

void tst_zoHostLogPanel::markupIsShownAsItIs()
{
    zoHostLogPanel panel;

    panel.addMessage(QtInfoMsg, "<b>&lt;%1</b>");

    QVERIFY(panel.toPlainText().endsWith("<b>&lt;%1</b>"));
}

void tst_zoHostLogPanel::wrappedLinesStandUnderTheText()
{
    zoHostLogPanel panel;
    panel.resize(300, 200);
    panel.show();

    panel.addMessage(QtInfoMsg, QString(60, QLatin1Char('x')) + ' ' + QString(60, QLatin1Char('x')));

    panel.view()->document()->documentLayout()->documentSize(); // lays it out
    const QTextLayout* layout = lastLine(panel).layout();
    QVERIFY(layout->lineCount() > 1);
    const qreal text = layout->lineAt(0).cursorToX(10);
    QVERIFY(qAbs(layout->lineAt(1).x() - text) < 2);
}

void tst_zoHostLogPanel::linesOfOneMessageStayTogether()
{
    zoHostLogPanel panel;

    panel.addMessage(QtInfoMsg, "Send: 1\nReceive: 2\n");

    QCOMPARE(panel.view()->document()->blockCount(), 2);
    QVERIFY(panel.toPlainText().endsWith("Send: 1\nReceive: 2"));
}

void tst_zoHostLogPanel::messageThatComesAgainIsCounted()
{
    zoHostLogPanel panel;

    panel.addMessage(QtInfoMsg, "before");
    for (int i = 0; i < 3; ++i)
        panel.addMessage(QtInfoMsg, "sent");
    panel.addMessage(QtWarningMsg, "sent");

    QCOMPARE(panel.view()->document()->blockCount(), 4);
    QCOMPARE(lastLine(panel).previous().text().mid(10), QStringLiteral("sent (3 times)"));
    QCOMPARE(lastLine(panel).text().mid(10), QStringLiteral("Warning: sent"));
}

void tst_zoHostLogPanel::levelHidesWhatIsLessGrave_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QStringList>("shown");

    QTest::newRow("all") << 0 << QStringList{"info", "Warning: warning", "Error: error", "info later"};
    QTest::newRow("warnings") << 1 << QStringList{"Warning: warning", "Error: error"};
    QTest::newRow("errors") << 2 << QStringList{"Error: error"};
}

void tst_zoHostLogPanel::levelHidesWhatIsLessGrave()
{
    QFETCH(int, level);
    QFETCH(QStringList, shown);
    zoHostLogPanel panel;
    panel.addMessage(QtInfoMsg, "info");
    panel.addMessage(QtWarningMsg, "warning");
    panel.addMessage(QtCriticalMsg, "error");
    auto* levels = panel.findChild<QComboBox*>("LogLevel");

    levels->setCurrentIndex(level);
    panel.addMessage(QtInfoMsg, "info later");

    QStringList lines = panel.toPlainText().split('\n').mid(1);
    for (QString& line : lines)
        line = line.mid(10);
    QCOMPARE(lines, shown);
    levels->setCurrentIndex(0);
    QCOMPARE(panel.view()->document()->blockCount(), 5);
}

void tst_zoHostLogPanel::textIsFoundForwardsAndBackwards()
{
    zoHostLogPanel panel;
    for (const char* text : {"one gpu01", "two", "three GPU01", "four gpu01"})
        panel.addMessage(QtInfoMsg, text);
    auto* found = panel.findChild<QLabel*>("LogFound");
    panel.view()->moveCursor(QTextCursor::Start);

    panel.findChild<QLineEdit*>("LogFind")->setText("gpu01");

    QCOMPARE(found->text(), QStringLiteral("1 of 3"));
    QCOMPARE(panel.view()->textCursor().block().text().mid(10), QStringLiteral("one gpu01"));
    panel.findNext();
    QCOMPARE(found->text(), QStringLiteral("2 of 3"));
    panel.findPrevious();
    panel.findPrevious();
    QCOMPARE(found->text(), QStringLiteral("3 of 3"));
    panel.findNext();
    QCOMPARE(found->text(), QStringLiteral("1 of 3"));
    QCOMPARE(panel.view()->extraSelections().size(), 3);
}

void tst_zoHostLogPanel::textThatIsNotThereIsToldSo()
{
    zoHostLogPanel panel;
    panel.addMessage(QtInfoMsg, "one");
    auto* find = panel.findChild<QLineEdit*>("LogFind");
    auto* found = panel.findChild<QLabel*>("LogFound");

    find->setText("two");
    QCOMPARE(found->text(), QStringLiteral("Not found"));

    panel.addMessage(QtInfoMsg, "two");
    QCOMPARE(found->text(), QStringLiteral("0 of 1"));
    find->clear();
    QCOMPARE(found->text(), QString());
    QVERIFY(panel.view()->extraSelections().isEmpty());
}

void tst_zoHostLogPanel::keysFind()
{
    zoHostLogPanel panel;
    panel.addMessage(QtInfoMsg, "one x");
    panel.addMessage(QtInfoMsg, "two x");
    panel.show();
    panel.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&panel));
    panel.view()->setFocus();
    auto* find = panel.findChild<QLineEdit*>("LogFind");
    auto* found = panel.findChild<QLabel*>("LogFound");

    QTest::keySequence(panel.view(), QKeySequence::Find);
    QTRY_VERIFY(find->hasFocus());
    QTest::keyClicks(find, "x");
    const QString first = found->text();
    QTest::keyClick(find, Qt::Key_Return);
    QVERIFY(found->text() != first);
    QTest::keyClick(find, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(found->text(), first);

    QTest::keyClick(find, Qt::Key_Escape);
    QVERIFY(panel.view()->hasFocus());
    QVERIFY(find->text().isEmpty());
}

void tst_zoHostLogPanel::allIsCopiedWithoutASelection()
{
    zoHostLogPanel panel;
    panel.view()->add(QtCriticalMsg, "gone", {{2026, 11, 20}, {1, 2, 3}});

    panel.findChild<QToolButton*>("LogCopy")->click();

    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("2026-11-20 01:02:03  Error: gone\n"));
}

void tst_zoHostLogPanel::selectionIsCopied()
{
    zoHostLogPanel panel;
    panel.addMessage(QtInfoMsg, "one two");
    panel.view()->moveCursor(QTextCursor::End);
    panel.view()->moveCursor(QTextCursor::PreviousWord, QTextCursor::KeepAnchor);

    panel.findChild<QToolButton*>("LogCopy")->click();

    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("two"));
}

void tst_zoHostLogPanel::whatIsShownIsSaved()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("host.log");
    zoHostLogPanel panel;
    panel.view()->add(QtInfoMsg, QString::fromUtf8("größer"), {{2026, 11, 20}, {1, 2, 3}});
    panel.view()->add(QtCriticalMsg, "gone", {{2026, 11, 20}, {1, 2, 4}});
    panel.view()->setLevel(zoHostLogView::Level::Errors);
    const zoDialogRobot robot([&name](QDialog* dialog) {
        qobject_cast<QFileDialog*>(dialog)->findChild<QLineEdit*>("fileNameEdit")->setText(name);
        dialog->accept();
    });

    panel.save();

    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("2026-11-20 01:02:04  Error: gone\n"));
}

void tst_zoHostLogPanel::fileThatCannotBeWrittenIsTold()
{
    const QTemporaryDir folder;
    QVERIFY(QFile::link(folder.filePath("missing/target"), folder.filePath("host.log")));
    zoHostLogPanel panel;
    panel.addMessage(QtInfoMsg, "one");
    const zoDialogRobot robot([&folder](QDialog* dialog) {
        qobject_cast<QFileDialog*>(dialog)
            ->findChild<QLineEdit*>("fileNameEdit")
            ->setText(folder.filePath("host.log"));
        dialog->accept();
    });
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to save the log as .*host\\.log: "));

    panel.save();

    QCOMPARE(robot.handled(), 1);
}

void tst_zoHostLogPanel::messagesAreForgotten()
{
    zoHostLogPanel panel;
    panel.addMessage(QtInfoMsg, "one");

    panel.findChild<QToolButton*>("LogClear")->click();

    QCOMPARE(panel.toPlainText(), QString());
    panel.addMessage(QtInfoMsg, "one");
    QVERIFY(panel.toPlainText().endsWith("  one"));
}

void tst_zoHostLogPanel::newestLineIsSeen()
{
    zoHostLogPanel panel;
    panel.resize(300, 140);
    panel.show();

    for (int i = 0; i < 100; ++i)
        panel.addMessage(QtInfoMsg, QString::number(i) + QString(200, QLatin1Char('x')));

    const QScrollBar* bar = panel.view()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QTRY_COMPARE(bar->value(), bar->maximum());
    // Long lines wrap.
    QCOMPARE(panel.view()->horizontalScrollBar()->maximum(), 0);
}

void tst_zoHostLogPanel::readerWhoScrolledUpStays()
{
    zoHostLogPanel panel;
    panel.resize(300, 140);
    panel.show();
    for (int i = 0; i < 100; ++i)
        panel.addMessage(QtInfoMsg, QString::number(i));
    QScrollBar* bar = panel.view()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    bar->setValue(10);

    panel.addMessage(QtInfoMsg, "newest");

    QCOMPARE(bar->value(), 10);
}

void tst_zoHostLogPanel::oldLinesGo()
{
    zoHostLogPanel panel;

    for (int i = 0; i < 5010; ++i)
        panel.addMessage(QtInfoMsg, QString::number(i));

    QCOMPARE(panel.view()->document()->blockCount(), zoHostLogView::Limit);
    QCOMPARE(panel.view()->text().count('\n'), zoHostLogView::Limit);
    QVERIFY(panel.toPlainText().endsWith("5009"));
}

void tst_zoHostLogPanel::panelIsReadOnly()
{
    zoHostLogPanel panel;
    panel.addMessage(QtInfoMsg, "text");
    const QString before = panel.toPlainText();

    QTest::keyClicks(panel.view(), "abc");

    QCOMPARE(panel.toPlainText(), before);
}

ZO_TEST_MAIN(tst_zoHostLogPanel)
#include "tst_zoHostLogPanel.moc"
