#include "zoDialogRobot.h"
#include "zoTestCase.h"

#include <zoHPCConfigEditGUIW.h>

#include <zoPlatform.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>

#include <memory>

// The dialog that edits hosts text.
class tst_zoHPCConfigEditGUIW final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void textsAreThere();
    void textIsGivenBack_data();
    void textIsGivenBack();
    void textIsNotMarkup();
    void secondTextReplacesTheFirst();
    void cursorIsAtTheEndAndInView();
    void undoDoesNotEmptyTheEditor();
    void fileRowIsShownOrHiddenAsAWhole();
    void fileIsGivenBack();
    void browseButtonHasItsIconAndSize();
    void browsingOffersTheClusterDirectory();
    void chosenFileGoesIntoTheField();
    void cancelledBrowsingLeavesTheField();
    void okAcceptsAndCancelRejects();
    void hugeTextIsShown();
    void tabKeyLeavesTheText();
    void understoodTextIsToldForHostsTextAlone();
    void understoodTextFollowsTheTyping();
    void placesAreMarkedAndLinked();
    void bracketFormIsRewrittenByItsLink();
    void manyNotesAreCutOff();
    void fileThatIsThereIsCounted();
    void fileThatIsNotThereKeepsTheTyped_data();
    void fileThatIsNotThereKeepsTheTyped();

private:
    QString understood() const { return find<QLabel>("m_understood")->text(); }
    QString filePath(const char* name) const { return m_data->filePath(QLatin1String(name)); }
    template <typename Widget>
    Widget* find(const char* name) const
    {
        return m_dialog->findChild<Widget*>(QString::fromLatin1(name));
    }

    std::unique_ptr<QTemporaryDir> m_data;
    std::unique_ptr<zoHPCConfigEditGUIW> m_dialog;
};

void tst_zoHPCConfigEditGUIW::initTestCase()
{
    zoTestCase::initTestCase();
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void tst_zoHPCConfigEditGUIW::init()
{
    m_data = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_data->path()).mkdir(QStringLiteral("cluster")));
    QFile file(m_data->filePath(QStringLiteral("cluster/hosts.txt")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    qputenv("ZOKE_DATA", QFile::encodeName(m_data->path()));
    m_dialog = std::make_unique<zoHPCConfigEditGUIW>();
}

void tst_zoHPCConfigEditGUIW::cleanup()
{
    if (m_dialog && qEnvironmentVariableIsSet("ZO_TEST_SCREENSHOTS"))
        m_dialog->grab().save(qEnvironmentVariable("ZO_TEST_SCREENSHOTS") +
                              QStringLiteral("/zoHPCConfigEditGUIW-") +
                              QString::fromLatin1(QTest::currentTestFunction()) + QStringLiteral(".png"));
    m_dialog.reset();
    m_data.reset();
    qunsetenv("ZOKE_DATA");
    zoTestCase::cleanup();
}

void tst_zoHPCConfigEditGUIW::textsAreThere()
{
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Edit cluster computers"));
    const QGroupBox* const group = m_dialog->findChild<QGroupBox*>();
    QVERIFY(group != nullptr);
    QCOMPARE(group->title(), QStringLiteral("Configuration"));
    QVERIFY(group->isAncestorOf(find<QPlainTextEdit>("m_textEdit")));
    const QLabel* const label = m_dialog->findChild<QLabel*>(QStringLiteral("m_serversFileLabel"));
    QCOMPARE(label->text(), QStringLiteral("Read configuration from file"));
    QCOMPARE(label->buddy(), find<QLineEdit>("m_serversFile"));
}

void tst_zoHPCConfigEditGUIW::textIsGivenBack_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << "";
    QTest::newRow("one-line") << "n1 - n4";
    QTest::newRow("lines-and-tabs") << "n1\n\t{ n2 }\n\n";
    QTest::newRow("placeholders") << "%1 %s \\n";
    QTest::newRow("other-scripts") << QString::fromUtf8("W\xc3\xa4nde \xe5\xa3\x81 \xf0\x9f\x96\xa5");
}

void tst_zoHPCConfigEditGUIW::textIsGivenBack()
{
    QFETCH(QString, text);

    m_dialog->setText(text);

    QCOMPARE(m_dialog->text(), text);
}

void tst_zoHPCConfigEditGUIW::textIsNotMarkup()
{
    const QString markup = QStringLiteral("<b>n1</b> &amp; <cluster version=\"1\"/>");

    m_dialog->setText(markup);

    QCOMPARE(m_dialog->text(), markup);
    QCOMPARE(find<QPlainTextEdit>("m_textEdit")->toPlainText(), markup);
}

void tst_zoHPCConfigEditGUIW::secondTextReplacesTheFirst()
{
    m_dialog->setText(QStringLiteral("first"));
    QTextCursor cursor = find<QPlainTextEdit>("m_textEdit")->textCursor();
    cursor.setPosition(2);
    find<QPlainTextEdit>("m_textEdit")->setTextCursor(cursor);

    m_dialog->setText(QStringLiteral("second"));

    QCOMPARE(m_dialog->text(), QStringLiteral("second"));
}

void tst_zoHPCConfigEditGUIW::cursorIsAtTheEndAndInView()
{
    m_dialog->show();
    QString text;
    for (int i = 0; i < 500; ++i)
        text += QStringLiteral("node%1\n").arg(i);

    m_dialog->setText(text);

    const QPlainTextEdit* const edit = find<QPlainTextEdit>("m_textEdit");
    QVERIFY(edit->textCursor().atEnd());
    QVERIFY(edit->verticalScrollBar()->maximum() > 0);
    QVERIFY(edit->verticalScrollBar()->value() > edit->verticalScrollBar()->maximum() - 3);
    QVERIFY(edit->viewport()->rect().contains(edit->cursorRect().center()));
}

void tst_zoHPCConfigEditGUIW::undoDoesNotEmptyTheEditor()
{
    QPlainTextEdit* const edit = find<QPlainTextEdit>("m_textEdit");
    m_dialog->setText(QStringLiteral("n1"));
    m_dialog->show();
    edit->setFocus();

    QTest::keyClicks(edit, QStringLiteral(" n2"));
    QCOMPARE(m_dialog->text(), QStringLiteral("n1 n2"));
    for (int i = 0; i < 10; ++i)
        edit->undo();

    QCOMPARE(m_dialog->text(), QStringLiteral("n1"));
}

void tst_zoHPCConfigEditGUIW::fileRowIsShownOrHiddenAsAWhole()
{
    m_dialog->show();

    m_dialog->setServersFileEditable(false);
    QVERIFY(!find<QWidget>("m_serversFile")->isVisible());
    QVERIFY(!find<QWidget>("m_browseButton")->isVisible());
    QVERIFY(!find<QWidget>("m_serversFileLabel")->isVisible());
    QVERIFY(find<QWidget>("m_textEdit")->isVisible());

    m_dialog->setServersFileEditable(true);
    QVERIFY(find<QWidget>("m_serversFile")->isVisible());
    QVERIFY(find<QWidget>("m_browseButton")->isVisible());
    QVERIFY(find<QWidget>("m_serversFileLabel")->isVisible());
}

void tst_zoHPCConfigEditGUIW::fileIsGivenBack()
{
    QCOMPARE(m_dialog->getServersFile(), QString());

    m_dialog->setServersFile(QStringLiteral("/a/hosts %1.txt"));

    QCOMPARE(m_dialog->getServersFile(), QStringLiteral("/a/hosts %1.txt"));
    QCOMPARE(find<QLineEdit>("m_serversFile")->text(), QStringLiteral("/a/hosts %1.txt"));
}

void tst_zoHPCConfigEditGUIW::browseButtonHasItsIconAndSize()
{
    const QToolButton* const button = find<QToolButton>("m_browseButton");
    const int icon = zoPlatform::getSmallIconSize();

    QVERIFY(!button->icon().isNull());
    QCOMPARE(button->iconSize(), QSize(icon, icon));
    QCOMPARE(button->minimumSize(), QSize(icon + 2, icon + 2));
    QCOMPARE(button->maximumSize(), QSize(icon + 2, icon + 2));
}

void tst_zoHPCConfigEditGUIW::browsingOffersTheClusterDirectory()
{
    QString title;
    QString directory;
    QStringList filters;
    QFileDialog::FileMode mode = QFileDialog::AnyFile;
    zoDialogRobot robot([&](QDialog* dialog) {
        const QFileDialog* const files = qobject_cast<QFileDialog*>(dialog);
        if (files != nullptr) {
            title = files->windowTitle();
            directory = files->directory().absolutePath();
            filters = files->nameFilters();
            mode = files->fileMode();
        }
        dialog->reject();
    });

    QTest::mouseClick(find<QToolButton>("m_browseButton"), Qt::LeftButton);

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(title, QStringLiteral("List of compute nodes"));
    QCOMPARE(QDir(directory).canonicalPath(),
             QDir(m_data->filePath(QStringLiteral("cluster"))).canonicalPath());
    QCOMPARE(filters, QStringList{QStringLiteral("*.*")});
    QCOMPARE(mode, QFileDialog::ExistingFile);
}

void tst_zoHPCConfigEditGUIW::chosenFileGoesIntoTheField()
{
    const QString file = m_data->filePath(QStringLiteral("cluster/hosts.txt"));
    zoDialogRobot robot([&file](QDialog* dialog) {
        dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(file);
        QMetaObject::invokeMethod(dialog, "accept");
    });

    m_dialog->browseServersFile();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(QFileInfo(m_dialog->getServersFile()).canonicalFilePath(), QFileInfo(file).canonicalFilePath());
}

void tst_zoHPCConfigEditGUIW::cancelledBrowsingLeavesTheField()
{
    m_dialog->setServersFile(QStringLiteral("/before"));
    zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });

    m_dialog->browseServersFile();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(m_dialog->getServersFile(), QStringLiteral("/before"));
}

void tst_zoHPCConfigEditGUIW::okAcceptsAndCancelRejects()
{
    const QDialogButtonBox* const buttons = find<QDialogButtonBox>("m_buttonBox");
    QSignalSpy finished(m_dialog.get(), &QDialog::finished);

    m_dialog->show();
    QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
    m_dialog->show();
    QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);

    QCOMPARE(finished, (QList<QList<QVariant>>{{int(QDialog::Accepted)}, {int(QDialog::Rejected)}}));
}

void tst_zoHPCConfigEditGUIW::hugeTextIsShown()
{
    QString text;
    for (int i = 0; i < 100000; ++i)
        text += QStringLiteral("node%1 ").arg(i);
    m_dialog->show();

    m_dialog->setText(text);

    QCOMPARE(m_dialog->text(), text);
}

void tst_zoHPCConfigEditGUIW::tabKeyLeavesTheText()
{
    m_dialog->setText(QStringLiteral("a"));
    m_dialog->setServersFileEditable(true);
    m_dialog->show();
    auto* editor = find<QPlainTextEdit>("m_textEdit");
    editor->setFocus();

    QTest::keyClick(editor, Qt::Key_Tab);

    QCOMPARE(m_dialog->text(), QStringLiteral("a"));
    QCOMPARE(m_dialog->focusWidget(), find<QLineEdit>("m_serversFile"));
}

void tst_zoHPCConfigEditGUIW::understoodTextIsToldForHostsTextAlone()
{
    m_dialog->setText(QStringLiteral("<cluster version=\"1\"/>"));
    m_dialog->show();
    QVERIFY(!find<QLabel>("m_understood")->isVisible());

    m_dialog->setText(QStringLiteral("gw { n01 - n23 }"));
    m_dialog->setIsHostsText(true);

    QVERIFY(find<QLabel>("m_understood")->isVisible());
    QCOMPARE(understood(), QStringLiteral("<b>24 nodes in 2 networks, 1 gateway</b>"));
    QVERIFY(find<QPlainTextEdit>("m_textEdit")->extraSelections().isEmpty());
}

void tst_zoHPCConfigEditGUIW::understoodTextFollowsTheTyping()
{
    m_dialog->setIsHostsText(true);
    m_dialog->show();
    auto* edit = find<QPlainTextEdit>("m_textEdit");

    QTest::keyClicks(edit, QStringLiteral("n1 n2"));

    QTRY_COMPARE(understood(), QStringLiteral("<b>2 nodes</b>"));
    QTest::keyClicks(edit, QStringLiteral(" - n9"));
    QTRY_COMPARE(understood(), QStringLiteral("<b>9 nodes</b>"));
}

void tst_zoHPCConfigEditGUIW::placesAreMarkedAndLinked()
{
    m_dialog->setText(QStringLiteral("a\nnode_1"));
    m_dialog->setIsHostsText(true);
    m_dialog->show();
    auto* edit = find<QPlainTextEdit>("m_textEdit");

    QVERIFY(understood().contains(QStringLiteral("Line 2, column 1</a>: &quot;node_1&quot; reads as")));
    QCOMPARE(edit->extraSelections().size(), 1);
    QCOMPARE(edit->extraSelections().first().cursor.selectedText(), QStringLiteral("node_1"));

    emit find<QLabel>("m_understood")->linkActivated(QStringLiteral("go 0"));
    QCOMPARE(edit->textCursor().selectedText(), QStringLiteral("node_1"));
    QCOMPARE(m_dialog->text(), QStringLiteral("a\nnode_1"));
    emit find<QLabel>("m_understood")->linkActivated(QStringLiteral("go 7")); // of what was typed before
}

void tst_zoHPCConfigEditGUIW::bracketFormIsRewrittenByItsLink()
{
    m_dialog->setText(QStringLiteral("gw\nn[01-24]\nx"));
    m_dialog->setIsHostsText(true);
    QVERIFY(understood().contains(QStringLiteral("\"write 0\"")));

    emit find<QLabel>("m_understood")->linkActivated(QStringLiteral("write 0"));

    QCOMPARE(m_dialog->text(), QStringLiteral("gw\nn01 - n24\nx"));
    QTRY_COMPARE(understood(), QStringLiteral("<b>26 nodes</b>"));
    find<QPlainTextEdit>("m_textEdit")->undo();
    QCOMPARE(m_dialog->text(), QStringLiteral("gw\nn[01-24]\nx"));
}

void tst_zoHPCConfigEditGUIW::manyNotesAreCutOff()
{
    m_dialog->setText(QStringLiteral("a_1 a_2 a_3 a_4 a_5 a_6"));
    m_dialog->setIsHostsText(true);

    QCOMPARE(understood().count(QStringLiteral("href")), 4);
    QVERIFY(understood().endsWith(QStringLiteral("<br/>and 2 more")));
    QCOMPARE(find<QPlainTextEdit>("m_textEdit")->extraSelections().size(), 6);
}

void tst_zoHPCConfigEditGUIW::fileThatIsThereIsCounted()
{
    QFile file(filePath("hosts"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("n1 - n5\r\nm_1\r\n");
    file.close();
    m_dialog->setText(QStringLiteral("a b"));
    m_dialog->setIsHostsText(true);
    const QSignalSpy accepted(m_dialog.get(), &QDialog::accepted);

    m_dialog->setServersFile(file.fileName());

    QTRY_VERIFY(understood().contains(QStringLiteral("<b>6 nodes</b>")));
    QVERIFY(understood().contains(QStringLiteral("Line 2, column 1: ")));
    QVERIFY(!understood().contains(QStringLiteral("href")));
    m_dialog->confirm();
    QCOMPARE(accepted.count(), 1);
}

void tst_zoHPCConfigEditGUIW::fileThatIsNotThereKeepsTheTyped_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("told");
    QTest::newRow("none") << "no-such-file"
                          << "There is no file";
    QTest::newRow("folder") << "cluster"
                            << "Unable to read";
    QTest::newRow("no-text") << "binary"
                             << "no text in UTF-8";
}

void tst_zoHPCConfigEditGUIW::fileThatIsNotThereKeepsTheTyped()
{
    QFETCH(QString, name);
    QFETCH(QString, told);
    QFile binary(filePath("binary"));
    QVERIFY(binary.open(QIODevice::WriteOnly));
    binary.write("a\0b", 3);
    binary.close();
    m_dialog->setIsHostsText(true);
    m_dialog->setText(QStringLiteral("typed"));
    m_dialog->setServersFile(m_data->filePath(name));
    m_dialog->show();
    QApplication::setActiveWindow(m_dialog.get());
    const QSignalSpy finished(m_dialog.get(), &QDialog::finished);
    QPushButton* ok = find<QDialogButtonBox>("m_buttonBox")->button(QDialogButtonBox::Ok);

    QTest::mouseClick(ok, Qt::LeftButton);

    QCOMPARE(finished.count(), 0);
    QVERIFY(m_dialog->isVisible());
    QVERIFY2(understood().contains(told), qPrintable(understood()));
    QVERIFY(find<QLineEdit>("m_serversFile")->hasFocus());
    QCOMPARE(m_dialog->text(), QStringLiteral("typed"));

    m_dialog->setServersFile(QString());
    QTest::mouseClick(ok, Qt::LeftButton);
    QCOMPARE(finished.count(), 1);
}

ZO_TEST_MAIN(tst_zoHPCConfigEditGUIW)
#include "tst_zoHPCConfigEditGUIW.moc"
