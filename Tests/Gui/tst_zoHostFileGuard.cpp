#include "zoDialogRobot.h"
#include "zoFakeModule.h"
#include "zoHostParts.h"
#include "zoTestCase.h"

#include <zoHostDocument.h>

#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

#include <cstdio>
#include <memory>

// A file that is open here and that another program changes.
class tst_zoHostFileGuard final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void changedFileIsNotOverwrittenUnasked_data();
    void changedFileIsNotOverwrittenUnasked();
    void scriptDoesNotOverwriteAChangedFile();
    void ownFileIsWrittenUnasked();
    void fileWithTheSameContentIsWrittenUnasked();
    void missingFileIsWrittenUnasked();
    void fileThatWasLoadedAgainIsWrittenUnasked();
    void fileThatWasLoadedTwiceInATurnIsWrittenUnasked();
    void linkToAChangedFileIsNotOverwrittenUnasked();
    void reloadIsOfferedWhileNothingIsUnsaved_data();
    void reloadIsOfferedWhileNothingIsUnsaved();
    void changeThatWasKeptOutIsAskedAboutBySave();
    void unsavedWorkIsNotAskedToGo();
    void nothingIsOfferedWhileASessionRuns();
    void nothingIsOfferedOverADialog();
    void bytesThatAreNoTextAreTold_data();
    void bytesThatAreNoTextAreTold();
    void bytesThatAreNoTextAreNotOverwrittenUnasked_data();
    void bytesThatAreNoTextAreNotOverwrittenUnasked();
    void scriptDoesNotOverwriteBytesThatAreNoText();
    void fileThatIsNoConfigurationIsTold();
    void fileThatIsNoConfigurationIsNotOverwrittenUnasked_data();
    void fileThatIsNoConfigurationIsNotOverwrittenUnasked();
    void fileThatIsNoConfigurationIsAskedAboutOnce();
    void scriptDoesNotOverwriteAFileThatIsNoConfiguration();

private:
    void open(bool nonInteractive);
    QString load();
    // As another program does: over the old bytes, or by a new file that takes its place.
    void change(const QString& text, bool byRename = false) const;
    QString content() const;
    QMessageBox* box() const { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }
    // The moments at which the guard looks at its files.
    QSignalSpy looks() const
    {
        return QSignalSpy(m_host->findChild<QTimer*>("FileGuardTimer"), SIGNAL(timeout()));
    }
    static void click(QDialog* dialog, const QString& text);

    std::unique_ptr<zoHostParts> m_parts;
    std::unique_ptr<zoHostMainWindow> m_host;
    zoFakeModuleWindow* m_window = nullptr; // owned by the host's window
    std::unique_ptr<zoFakeModule> m_module;
};

void tst_zoHostFileGuard::init()
{
    open(false);
}

void tst_zoHostFileGuard::open(bool nonInteractive)
{
    m_host.reset();
    m_parts = std::make_unique<zoHostParts>(nonInteractive);
    m_host = std::make_unique<zoHostMainWindow>(m_parts->services());
    m_window = new zoFakeModuleWindow(m_host.get());
    m_module = std::make_unique<zoFakeModule>(m_window);
    m_host->addModule("Fake", "Rendering", m_window, QString(), QIcon(), "Fake");
    m_host->moduleToolBar()->addAction(m_module->toggleAction());
}

void tst_zoHostFileGuard::cleanup()
{
    m_host.reset();
    m_parts.reset();
    zoTestCase::cleanup();
}

QString tst_zoHostFileGuard::load()
{
    const QString file = m_parts->writeFile("wall.zhpc", "loaded");
    m_window->loadConfig(file);
    return file;
}

void tst_zoHostFileGuard::change(const QString& text, bool byRename) const
{
    const QString written = m_parts->writeFile(byRename ? "wall.new" : "wall.zhpc", text);
    if (byRename)
        QCOMPARE(std::rename(QFile::encodeName(written).constData(),
                             QFile::encodeName(m_parts->filePath("wall.zhpc")).constData()),
                 0);
}

QString tst_zoHostFileGuard::content() const
{
    QFile file(m_parts->filePath("wall.zhpc"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void tst_zoHostFileGuard::click(QDialog* dialog, const QString& text)
{
    const QList<QAbstractButton*> buttons = dialog->findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        if (QString(button->text()).remove(QLatin1Char('&')) == text) {
            button->click();
            return;
        }
    }
    QFAIL("no such button");
}

void tst_zoHostFileGuard::changedFileIsNotOverwrittenUnasked_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("differs");

    QTest::newRow("cancel") << "Cancel"
                            << "by another"
                            << "mine" << true;
    QTest::newRow("overwrite") << "Overwrite"
                               << "mine"
                               << "mine" << false;
    QTest::newRow("reload") << "Reload"
                            << "by another"
                            << "by another" << false;
    QTest::newRow("save-as") << "Save As..."
                             << "by another"
                             << "mine" << false;
}

void tst_zoHostFileGuard::changedFileIsNotOverwrittenUnasked()
{
    QFETCH(QString, answer);
    load();
    m_window->edit("mine");
    change("by another");
    m_window->nextSaveName = m_parts->filePath("other.zhpc");
    const zoDialogRobot robot([&](QDialog* dialog) { click(dialog, answer); });

    m_window->saveConfig();

    QCOMPARE(robot.handled(), 1);
    QTEST(content(), "content");
    QTEST(m_window->text(), "shown");
    QTEST(m_window->differs(), "differs");
    QCOMPARE(QFile::exists(m_window->nextSaveName), answer == "Save As...");
    // Once is enough.
    if (answer != "Cancel") {
        m_window->edit("later");
        m_window->saveConfig();
        QVERIFY(!m_window->differs());
    }
}

void tst_zoHostFileGuard::scriptDoesNotOverwriteAChangedFile()
{
    open(true);
    load();
    m_window->edit("mine");
    change("by another");
    expectMessage(QtCriticalMsg,
                  QRegularExpression("wall.zhpc was changed by another program since it was loaded"));

    m_window->saveConfig();

    QCOMPARE(content(), QStringLiteral("by another"));
    QVERIFY(m_window->differs());
}

void tst_zoHostFileGuard::ownFileIsWrittenUnasked()
{
    load();
    for (const char* text : {"mine", "mine again", "and again"}) {
        m_window->edit(text);
        m_window->saveConfig();
        QCOMPARE(content(), QString(text));
    }
}

void tst_zoHostFileGuard::fileWithTheSameContentIsWrittenUnasked()
{
    load();
    m_window->edit("mine");
    change("loaded", true);

    m_window->saveConfig();

    QCOMPARE(content(), QStringLiteral("mine"));
}

void tst_zoHostFileGuard::missingFileIsWrittenUnasked()
{
    QVERIFY(QFile::remove(load()));
    m_window->edit("mine");

    m_window->saveConfig();

    QCOMPARE(content(), QStringLiteral("mine"));
}

// The name of the window stays the same then.
void tst_zoHostFileGuard::fileThatWasLoadedAgainIsWrittenUnasked()
{
    const QString file = load();
    change("by another");
    m_window->loadConfig(file);
    m_window->edit("mine");

    m_window->saveConfig();

    QCOMPARE(content(), QStringLiteral("mine"));
}

void tst_zoHostFileGuard::fileThatWasLoadedTwiceInATurnIsWrittenUnasked()
{
    const QString file = load();
    m_window->setDefaultConfig();
    change("by another");
    m_window->loadConfig(file);
    m_window->edit("mine");

    m_window->saveConfig();

    QCOMPARE(content(), QStringLiteral("mine"));
}

void tst_zoHostFileGuard::linkToAChangedFileIsNotOverwrittenUnasked()
{
    load();
    const QString link = m_parts->filePath("link.zhpc");
    QVERIFY(QFile::link(m_parts->filePath("wall.zhpc"), link));
    m_window->loadConfig(link);
    m_window->edit("mine");
    change("by another");
    const zoDialogRobot robot([&](QDialog* dialog) { click(dialog, "Cancel"); });

    m_window->saveConfig();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(content(), QStringLiteral("by another"));
}

void tst_zoHostFileGuard::reloadIsOfferedWhileNothingIsUnsaved_data()
{
    QTest::addColumn<bool>("byRename");

    QTest::newRow("written") << false;
    QTest::newRow("replaced") << true;
}

void tst_zoHostFileGuard::reloadIsOfferedWhileNothingIsUnsaved()
{
    QFETCH(bool, byRename);
    load();

    // Once more: what took the place of the file is watched as well.
    for (const char* text : {"by another", "by yet another", "and another"}) {
        change(text, byRename);
        QTRY_VERIFY(box() != nullptr);
        QVERIFY(box()->text().contains("wall.zhpc"));
        click(box(), "Reload");
        QTRY_COMPARE(m_window->text(), QString(text));
        QTRY_VERIFY(box() == nullptr);
    }
    QVERIFY(!m_window->differs());
}

void tst_zoHostFileGuard::changeThatWasKeptOutIsAskedAboutBySave()
{
    load();
    change("by another");
    QTRY_VERIFY(box() != nullptr);
    click(box(), "Keep");
    QTRY_VERIFY(box() == nullptr);
    QCOMPARE(m_window->text(), QStringLiteral("loaded"));
    const zoDialogRobot robot([&](QDialog* dialog) { click(dialog, "Cancel"); });

    m_window->saveConfig();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(content(), QStringLiteral("by another"));
}

void tst_zoHostFileGuard::unsavedWorkIsNotAskedToGo()
{
    load();
    m_window->edit("mine");

    change("by another");

    QTRY_VERIFY(m_host->statusBar()->currentMessage().contains("wall.zhpc was changed by another program"));
    QVERIFY(box() == nullptr);
    QCOMPARE(m_window->text(), QStringLiteral("mine"));
}

void tst_zoHostFileGuard::nothingIsOfferedWhileASessionRuns()
{
    load();
    m_parts->cluster.applyConfig("<cluster><master><network><node name='n'/></network></master></cluster>");
    QVERIFY(m_parts->cluster.start());
    change("by another");
    QVERIFY(looks().wait());
    QVERIFY(box() == nullptr);

    m_parts->cluster.stop();

    QTRY_VERIFY(box() != nullptr);
    click(box(), "Reload");
    QCOMPARE(m_window->text(), QStringLiteral("by another"));
}

void tst_zoHostFileGuard::nothingIsOfferedOverADialog()
{
    load();
    QDialog dialog(m_host.get());
    dialog.open();
    change("by another");
    QVERIFY(looks().wait());
    QCOMPARE(QApplication::activeModalWidget(), &dialog);
    dialog.close();
    QEvent activated(QEvent::WindowActivate);
    QCoreApplication::sendEvent(m_host.get(), &activated);

    QTRY_VERIFY(box() != nullptr);
    click(box(), "Keep");
}

void tst_zoHostFileGuard::bytesThatAreNoTextAreTold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isTold");

    QTest::newRow("text") << QByteArray("gr\xc3\xb6\xc3\x9f"
                                        "e")
                          << false;
    QTest::newRow("one-byte") << QByteArray("ok\ngr\xf6") << true;
    QTest::newRow("encoding-of-the-declaration")
        << QByteArray("<?xml version='1.0' encoding='ISO-8859-1'?><a b='\xf6'/>") << false;
}

void tst_zoHostFileGuard::bytesThatAreNoTextAreTold()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isTold);
    QFile file(m_parts->filePath("wall.zhpc"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();

    m_window->loadConfig(file.fileName());

    auto* box = m_host->findChild<QMessageBox*>("UnreadableBox");
    QCOMPARE(box != nullptr, isTold);
    if (!isTold)
        return;
    QVERIFY2(box->text().contains("wall.zhpc"), qPrintable(box->text()));
    QVERIFY2(box->informativeText().contains("line 2, column 3"), qPrintable(box->informativeText()));
    box->close();
    QVERIFY(!m_host->document()->differs());
    QVERIFY(m_host->close());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), bytes);
}

void tst_zoHostFileGuard::bytesThatAreNoTextAreNotOverwrittenUnasked_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("isWritten");

    QTest::newRow("cancel") << "Cancel" << false;
    QTest::newRow("save-as") << "Save As..." << false;
    QTest::newRow("overwrite") << "Overwrite" << true;
}

void tst_zoHostFileGuard::bytesThatAreNoTextAreNotOverwrittenUnasked()
{
    QFETCH(QString, answer);
    QFETCH(bool, isWritten);
    const QByteArray bytes("gr\xf6\xdf"
                           "e");
    QFile file(m_parts->filePath("wall.zhpc"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    m_window->loadConfig(file.fileName());
    m_host->findChild<QMessageBox*>("UnreadableBox")->close();
    m_window->edit("mine");
    {
        const zoDialogRobot robot([&](QDialog* dialog) { click(dialog, answer); });
        m_window->nextSaveName = m_parts->filePath("other.zhpc");
        m_window->saveConfig();
        QCOMPARE(robot.handled(), 1);
    }
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), isWritten ? QByteArray("mine") : bytes);
    file.close();
    const QVector<zoHostEarlierConfigurations::Entry> kept = m_parts->earlier.entries();
    QCOMPARE(kept.size(), isWritten ? 1 : 0);
    if (!isWritten)
        return;
    QFile entry(kept.constFirst().fileName);
    QVERIFY(entry.open(QIODevice::ReadOnly));
    QCOMPARE(entry.readAll(), bytes);
    QCOMPARE(kept.constFirst().originFile, file.fileName());

    // Once: from here on it is text.
    m_window->edit("mine, too");
    m_window->saveConfig();
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("mine, too"));
}

void tst_zoHostFileGuard::scriptDoesNotOverwriteBytesThatAreNoText()
{
    open(true);
    QFile file(m_parts->filePath("wall.zhpc"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("gr\xf6");
    file.close();
    m_window->loadConfig(file.fileName());
    m_window->edit("mine");
    expectMessage(QtCriticalMsg, QRegularExpression("wall.zhpc holds bytes that are no text and is not"));

    m_window->saveConfig();

    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("gr\xf6"));
    QCOMPARE(m_host->findChild<QMessageBox*>("UnreadableBox"), nullptr);
}

void tst_zoHostFileGuard::fileThatIsNoConfigurationIsTold()
{
    m_host->show();
    // The box is gone after a click; the log still says it.
    expectMessage(QtCriticalMsg, QRegularExpression("wall.zhpc cannot be used: line 1, column 8: strange"));

    m_window->loadConfig(m_parts->writeFile("wall.zhpc", "foreign"));

    auto* told = m_host->findChild<QMessageBox*>("ForeignBox");
    QVERIFY(told != nullptr && told->isVisible());
    QVERIFY(told->text().contains("wall.zhpc holds no cluster configuration"));
    QVERIFY(told->informativeText().contains("line 1, column 8: strange"));
    told->accept();
}

void tst_zoHostFileGuard::fileThatIsNoConfigurationIsNotOverwrittenUnasked_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QString>("content");
    QTest::addColumn<bool>("isKept");

    QTest::newRow("cancel") << "Cancel"
                            << "foreign text" << false;
    QTest::newRow("overwrite") << "Overwrite"
                               << "mine" << true;
    QTest::newRow("save-as") << "Save As..."
                             << "foreign text" << false;
}

void tst_zoHostFileGuard::fileThatIsNoConfigurationIsNotOverwrittenUnasked()
{
    QFETCH(QString, answer);
    QFETCH(QString, content);
    QFETCH(bool, isKept);
    expectMessage(QtCriticalMsg, QRegularExpression("wall.zhpc cannot be used: "));
    m_window->loadConfig(m_parts->writeFile("wall.zhpc", "foreign text"));
    m_host->findChild<QMessageBox*>("ForeignBox")->accept();
    m_window->edit("mine");
    m_window->nextSaveName = m_parts->filePath("other.zhpc");
    const zoDialogRobot robot([&answer](QDialog* dialog) { click(dialog, answer); });

    m_window->saveConfig();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(this->content(), content);
    const QVector<zoHostEarlierConfigurations::Entry> kept = m_parts->earlier.entries();
    QCOMPARE(kept.size(), isKept ? 1 : 0);
    if (isKept) {
        QCOMPARE(m_parts->earlier.textOf(kept.constFirst()), QStringLiteral("foreign text"));
        QCOMPARE(kept.constFirst().originFile, m_parts->filePath("wall.zhpc"));
    }
    QCOMPARE(m_window->windowFilePath(),
             m_parts->filePath(answer == QLatin1String("Save As...") ? "other.zhpc" : "wall.zhpc"));
}

void tst_zoHostFileGuard::fileThatIsNoConfigurationIsAskedAboutOnce()
{
    expectMessage(QtCriticalMsg, QRegularExpression("wall.zhpc cannot be used: "));
    m_window->loadConfig(m_parts->writeFile("wall.zhpc", "foreign text"));
    m_host->findChild<QMessageBox*>("ForeignBox")->accept();
    m_window->edit("mine");
    const zoDialogRobot robot([](QDialog* dialog) { click(dialog, "Overwrite"); });
    m_window->saveConfig();
    m_window->edit("mine again");

    m_window->saveConfig();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(content(), QStringLiteral("mine again"));
}

void tst_zoHostFileGuard::scriptDoesNotOverwriteAFileThatIsNoConfiguration()
{
    open(true);
    m_window->loadConfig(m_parts->writeFile("wall.zhpc", "foreign text"));
    m_window->edit("mine");
    expectMessage(QtCriticalMsg, QRegularExpression("holds no cluster configuration and is not overwritten: "
                                                    "line 1, column 8: strange"));

    m_window->saveConfig();

    QCOMPARE(content(), QStringLiteral("foreign text"));
    QVERIFY(m_host->findChild<QMessageBox*>() == nullptr);
}

ZO_TEST_MAIN(tst_zoHostFileGuard)
#include "tst_zoHostFileGuard.moc"
