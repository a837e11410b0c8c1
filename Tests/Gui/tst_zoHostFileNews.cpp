#include "zoDialogRobot.h"
#include "zoFakeModule.h"
#include "zoHostParts.h"
#include "zoTestCase.h"

#include <zoHostDocument.h>

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>

#include <memory>

// What a person is told of files beside the log.
class tst_zoHostFileNews final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void failedSaveIsToldWithItsReason();
    void failedSaveMayGoElsewhere();
    void saveThatWasGivenUpIsNoFailure();
    void scriptReadsTheLogAlone();
    void laterVersionIsTold_data();
    void laterVersionIsTold();
    void remarksOfAnImportAreShown();
    void importOverAnOpenFileNamesIt_data();
    void importOverAnOpenFileNamesIt();
    void importWithoutRemarksAndFileIsToldInPassing();
    void importMayBeSavedElsewhere();

private:
    void open(bool nonInteractive);
    QMessageBox* box() const { return m_host->findChild<QMessageBox*>("SaveFailedBox"); }
    QDialog* import() const { return m_host->findChild<QDialog*>("ImportDialog"); }
    static QPushButton* button(const QWidget* dialog, const QString& text);

    std::unique_ptr<zoHostParts> m_parts;
    std::unique_ptr<zoHostMainWindow> m_host;
    zoFakeModuleWindow* m_window = nullptr; // owned by the host's window
};

void tst_zoHostFileNews::init()
{
    open(false);
}

void tst_zoHostFileNews::open(bool nonInteractive)
{
    m_host.reset();
    m_parts = std::make_unique<zoHostParts>(nonInteractive);
    m_host = std::make_unique<zoHostMainWindow>(m_parts->services());
    m_window = new zoFakeModuleWindow(m_host.get());
    m_host->addModule("Fake", "Rendering", m_window, QString(), QIcon(), "Fake");
    m_host->show();
}

void tst_zoHostFileNews::cleanup()
{
    m_host.reset();
    m_parts.reset();
    zoTestCase::cleanup();
}

QPushButton* tst_zoHostFileNews::button(const QWidget* dialog, const QString& text)
{
    const QList<QPushButton*> buttons = dialog->findChildren<QPushButton*>();
    for (QPushButton* one : buttons) {
        if (one->text() == text)
            return one;
    }
    return nullptr;
}

void tst_zoHostFileNews::failedSaveIsToldWithItsReason()
{
    m_window->edit("mine");
    m_window->nextSaveName = m_parts->filePath("missing/wall.zhpc");
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to save .*: No such file or directory"));

    m_window->saveConfig();

    QVERIFY(box() != nullptr && box()->isVisible());
    QVERIFY(box()->text().contains("wall.zhpc could not be saved"));
    QVERIFY(box()->informativeText().startsWith("No such file or directory"));
    QTest::keyClick(box(), Qt::Key_Escape); // as OK
    QTRY_VERIFY(box() == nullptr);
    QVERIFY(m_window->differs());
}

void tst_zoHostFileNews::failedSaveMayGoElsewhere()
{
    m_window->edit("mine");
    m_window->nextSaveName = m_parts->filePath("missing/wall.zhpc");
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to save .*: No such file or directory"));
    m_window->saveConfig();
    m_window->nextSaveName = m_parts->filePath("wall.zhpc");

    button(box(), "Save &As...")->click();

    QVERIFY(!m_window->differs());
    QCOMPARE(m_window->windowFilePath(), m_parts->filePath("wall.zhpc"));
}

void tst_zoHostFileNews::saveThatWasGivenUpIsNoFailure()
{
    const QSignalSpy failed(m_host->document(), &zoHostDocument::saveFailed);
    m_window->edit("mine");

    m_window->saveConfig();

    QCOMPARE(failed.count(), 0);
    QVERIFY(box() == nullptr);
}

void tst_zoHostFileNews::scriptReadsTheLogAlone()
{
    open(true);
    m_window->edit("mine");
    m_window->nextSaveName = m_parts->filePath("missing/wall.zhpc");
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to save .*: No such file or directory"));

    m_window->saveConfig();
    m_window->import("old.xml", {"line 1, column 1: dropped"});

    QVERIFY(m_host->findChildren<QDialog*>().isEmpty());
}

void tst_zoHostFileNews::laterVersionIsTold_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isTold");

    QTest::newRow("later") << QByteArray("<cluster version='99'/>") << true;
    QTest::newRow("present") << QByteArray("<cluster version='1'/>") << false;
    QTest::newRow("none") << QByteArray("<cluster/>") << false;
    QTest::newRow("no-number") << QByteArray("<cluster version='new'/>") << false;
    QTest::newRow("no-xml") << QByteArray("version 99") << false;
}

void tst_zoHostFileNews::laterVersionIsTold()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, isTold);
    if (isTold)
        expectMessage(QtWarningMsg, QRegularExpression("wall.zhpc is of version 99, .* version 1"));

    m_window->loadConfig(m_parts->writeFile("wall.zhpc", text));

    auto* box = m_host->findChild<QMessageBox*>("VersionBox");
    QCOMPARE(box != nullptr && box->isVisible(), isTold);
    QCOMPARE(m_window->text(), QString::fromUtf8(text));
}

void tst_zoHostFileNews::remarksOfAnImportAreShown()
{
    m_window->import("/old/old.xml", {"line 1, column 1: first", "line 7, column 2: second"});

    QVERIFY(import() != nullptr && import()->isVisible());
    auto* list = import()->findChild<QListWidget*>("ImportRemarks");
    QCOMPARE(list->count(), 2);
    QCOMPARE(list->item(1)->text(), QStringLiteral("line 7, column 2: second"));
    QVERIFY(import()->findChild<QLabel*>("ImportHead")->text().contains("old.xml"));
    // No file is open: Save goes nowhere that could be lost.
    QVERIFY(import()->findChild<QLabel*>("ImportTarget")->text().contains("asks for a name"));
}

void tst_zoHostFileNews::importOverAnOpenFileNamesIt_data()
{
    QTest::addColumn<QStringList>("remarks");

    QTest::newRow("with-remarks") << QStringList("line 1, column 1: first");
    QTest::newRow("without-remarks") << QStringList();
}

void tst_zoHostFileNews::importOverAnOpenFileNamesIt()
{
    QFETCH(QStringList, remarks);
    const QString file = m_parts->writeFile("wall.zhpc", "open");
    m_window->loadConfig(file);

    m_window->import("/old/old.xml", remarks);

    QVERIFY(import() != nullptr && import()->isVisible());
    QVERIFY(import()->findChild<QLabel*>("ImportTarget")->text().contains(QDir::toNativeSeparators(file)));
    QCOMPARE(import()->findChild<QListWidget*>("ImportRemarks")->isHidden(), remarks.isEmpty());
}

void tst_zoHostFileNews::importWithoutRemarksAndFileIsToldInPassing()
{
    m_window->import("/old/old.xml", {});

    QVERIFY(import() == nullptr);
    QVERIFY(m_host->statusBar()->currentMessage().contains("old.xml was imported"));
}

void tst_zoHostFileNews::importMayBeSavedElsewhere()
{
    const QString file = m_parts->writeFile("wall.zhpc", "open");
    m_window->loadConfig(file);
    m_window->import("/old/old.xml", {"line 1, column 1: first"});
    m_window->nextSaveName = m_parts->filePath("new.zhpc");

    import()->findChild<QPushButton*>("ImportSaveAs")->click();

    QCOMPARE(m_window->windowFilePath(), m_parts->filePath("new.zhpc"));
    QFile before(file);
    QVERIFY(before.open(QIODevice::ReadOnly));
    QCOMPARE(before.readAll(), QByteArray("open"));
}

ZO_TEST_MAIN(tst_zoHostFileNews)
#include "tst_zoHostFileNews.moc"
