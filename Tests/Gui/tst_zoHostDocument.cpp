#include "zoFakeModule.h"
#include "zoHostParts.h"
#include "zoTestCase.h"

#include <zoHostDocument.h>

#include <QAction>
#include <QApplication>
#include <QSignalSpy>
#include <QToolBar>

#include <memory>

// What the host knows of a module's document, and what it asks of the module.
class tst_zoHostDocument final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fileIsToldOnceItIsThere();
    void fileThatIsThereAlreadyIsTold();
    void saveMakesTheFileKnown();
    void newHasNoFileToTell();
    void sameFileIsToldAgainAfterANew();
    void markIsTold();
    void differsIsReadAtThatMoment();
    void markCountsWithoutTheProperty();
    void replacedTextIsToldWithItsFile();
    void loadGoesThroughTheModuleObject();
    void nameOutsideLatin1GoesToTheWindow();
    void loadWithoutAModuleFails();
    void bringBackGoesThroughTheModuleObject();
    void broughtBackTextDoesNotStandInForAnotherFile();
    void broughtBackTextOfTheOpenFileStaysOpenAsIt();
    void broughtBackTextIsWorkUntilItIsSaved();
    void broughtBackTextThatIsReplacedIsWorkNoMore();
    void saveMayBeGivenUp();
    void forgottenWindowIsNotHeard();

private:
    std::unique_ptr<zoHostParts> m_parts;
    std::unique_ptr<zoHostMainWindow> m_host;
    zoFakeModuleWindow* m_window = nullptr; // owned by the host's window
    std::unique_ptr<zoFakeModule> m_module;
};

void tst_zoHostDocument::init()
{
    m_parts = std::make_unique<zoHostParts>();
    m_host = std::make_unique<zoHostMainWindow>(m_parts->services());
    m_window = new zoFakeModuleWindow(m_host.get());
    m_module = std::make_unique<zoFakeModule>(m_window);
    m_host->addModule("Fake", "Rendering", m_window, QString(), QIcon(), "Fake");
    m_host->moduleToolBar()->addAction(m_module->toggleAction());
}

void tst_zoHostDocument::cleanup()
{
    m_host.reset();
    zoTestCase::cleanup();
}

void tst_zoHostDocument::fileIsToldOnceItIsThere()
{
    QSignalSpy opened(m_host->document(), &zoHostDocument::fileOpened);
    QSignalSpy changed(m_host->document(), &zoHostDocument::changed);
    const QString file = m_parts->writeFile("a.zhpc", "a");

    m_window->loadConfig(file);
    m_window->setWindowTitle("something else[*]");

    QCOMPARE(opened.count(), 1);
    QCOMPARE(opened.constFirst().constFirst().toString(), file);
    QVERIFY(changed.count() >= 1);
}

void tst_zoHostDocument::fileThatIsThereAlreadyIsTold()
{
    QSignalSpy opened(m_host->document(), &zoHostDocument::fileOpened);
    auto* window = new zoFakeModuleWindow(m_host.get());
    window->setWindowFilePath("/a.zhpc");

    m_host->addModule("Other", "Rendering", window, QString(), QIcon(), "Other");

    QCOMPARE(opened.count(), 1);
}

void tst_zoHostDocument::saveMakesTheFileKnown()
{
    QSignalSpy opened(m_host->document(), &zoHostDocument::fileOpened);
    m_window->edit("a");
    m_window->nextSaveName = m_parts->filePath("a.zhpc");

    QVERIFY(m_host->document()->save(m_window));

    QCOMPARE(opened.count(), 1);
    QCOMPARE(opened.constFirst().constFirst().toString(), m_window->nextSaveName);
}

void tst_zoHostDocument::newHasNoFileToTell()
{
    m_window->loadConfig(m_parts->writeFile("a.zhpc", "a"));
    QSignalSpy opened(m_host->document(), &zoHostDocument::fileOpened);
    QSignalSpy changed(m_host->document(), &zoHostDocument::changed);

    m_window->setDefaultConfig();

    QCOMPARE(opened.count(), 0);
    QVERIFY(changed.count() >= 1);
}

void tst_zoHostDocument::sameFileIsToldAgainAfterANew()
{
    const QString file = m_parts->writeFile("a.zhpc", "a");
    m_window->loadConfig(file);
    m_window->setDefaultConfig();
    QSignalSpy opened(m_host->document(), &zoHostDocument::fileOpened);

    m_window->loadConfig(file);

    QCOMPARE(opened.count(), 1);
}

void tst_zoHostDocument::markIsTold()
{
    m_window->edit(QString());
    QSignalSpy changed(m_host->document(), &zoHostDocument::changed);

    m_window->edit("a");

    QCOMPARE(changed.count(), 1);
}

void tst_zoHostDocument::differsIsReadAtThatMoment()
{
    QVERIFY(!m_host->document()->differs());
    m_window->edit("a");
    m_window->setWindowModified(false); // a mark that has not followed yet

    QVERIFY(m_host->document()->differs(m_window));
    QVERIFY(m_host->document()->differs());
}

void tst_zoHostDocument::markCountsWithoutTheProperty()
{
    QWidget plain;
    plain.setWindowTitle("plain[*]");
    QVERIFY(!m_host->document()->differs(&plain));

    plain.setWindowModified(true);

    QVERIFY(m_host->document()->differs(&plain));
}

void tst_zoHostDocument::replacedTextIsToldWithItsFile()
{
    const QString file = m_parts->writeFile("a.zhpc", "a");
    m_window->loadConfig(file);
    m_window->edit("edited");
    QSignalSpy replaced(m_host->document(), &zoHostDocument::replaced);

    m_window->setDefaultConfig();

    QCOMPARE(replaced.count(), 1);
    QCOMPARE(replaced.constFirst().at(0).toString(), QStringLiteral("edited"));
    QCOMPARE(replaced.constFirst().at(1).toString(), file);
}

void tst_zoHostDocument::loadGoesThroughTheModuleObject()
{
    const QString file = m_parts->writeFile(QString::fromUtf8("größe.zhpc"), "a");

    QVERIFY(m_host->document()->load(file));

    QCOMPARE(m_module->loaded, QStringList(file));
    QCOMPARE(m_window->text(), QStringLiteral("a"));
}

void tst_zoHostDocument::nameOutsideLatin1GoesToTheWindow()
{
    const QString file = m_parts->writeFile(QString::fromUtf8("стена.zhpc"), "a");

    QVERIFY(m_host->document()->load(file));

    QCOMPARE(m_module->loaded, QStringList());
    QCOMPARE(m_window->loaded, QStringList(file));
    QCOMPARE(m_window->text(), QStringLiteral("a"));
}

void tst_zoHostDocument::loadWithoutAModuleFails()
{
    const zoHostMainWindow empty(m_parts->services());

    QVERIFY(!empty.document()->load("/a.zhpc"));
    QVERIFY(!empty.document()->load(QString::fromUtf8("/стена.zhpc")));
    QVERIFY(!empty.document()->bringBack("a", QString()));
}

void tst_zoHostDocument::bringBackGoesThroughTheModuleObject()
{
    QVERIFY(m_host->document()->bringBack("earlier", "/gone.zhpc"));

    QCOMPARE(m_window->text(), QStringLiteral("earlier"));
    QCOMPARE(m_window->windowFilePath(), QString());
}

void tst_zoHostDocument::broughtBackTextDoesNotStandInForAnotherFile()
{
    m_window->loadConfig(m_parts->writeFile("b.zhpc", "b"));
    m_window->edit("b edited");
    QSignalSpy replaced(m_host->document(), &zoHostDocument::replaced);

    QVERIFY(m_host->document()->bringBack("earlier", m_parts->filePath("a.zhpc")));

    QCOMPARE(m_window->text(), QStringLiteral("earlier"));
    // Else Save would write the earlier one over b.zhpc.
    QCOMPARE(m_window->windowFilePath(), QString());
    QCOMPARE(replaced.constFirst().at(0).toString(), QStringLiteral("b edited"));
}

void tst_zoHostDocument::broughtBackTextOfTheOpenFileStaysOpenAsIt()
{
    const QString file = m_parts->writeFile("a.zhpc", "a");
    m_window->loadConfig(file);
    QSignalSpy replaced(m_host->document(), &zoHostDocument::replaced);

    QVERIFY(m_host->document()->bringBack("earlier", file));

    QCOMPARE(m_window->windowFilePath(), file);
    QVERIFY(m_host->document()->differs(m_window));
    QCOMPARE(replaced.count(), 1);
}

void tst_zoHostDocument::broughtBackTextIsWorkUntilItIsSaved()
{
    QVERIFY(m_host->document()->bringBack("earlier", QString()));
    QVERIFY(!m_window->differs());
    QVERIFY(m_host->document()->differs(m_window));
    QVERIFY(m_host->document()->isMarked(m_window));

    m_window->nextSaveName = m_parts->filePath("a.zhpc");
    QVERIFY(m_host->document()->save(m_window));

    QVERIFY(!m_host->document()->differs(m_window));
    QVERIFY(!m_host->document()->isMarked(m_window));
}

void tst_zoHostDocument::broughtBackTextThatIsReplacedIsWorkNoMore()
{
    QVERIFY(m_host->document()->bringBack("earlier", QString()));
    QVERIFY(m_host->document()->differs(m_window));

    m_window->setDefaultConfig();

    QVERIFY(!m_host->document()->differs(m_window));
}

void tst_zoHostDocument::saveMayBeGivenUp()
{
    m_window->edit("a");

    QVERIFY(!m_host->document()->save(m_window));

    QCOMPARE(m_window->saves, 1);
}

void tst_zoHostDocument::forgottenWindowIsNotHeard()
{
    m_host->document()->forget(m_window);
    QSignalSpy changed(m_host->document(), &zoHostDocument::changed);

    m_window->edit("a");

    QCOMPARE(changed.count(), 0);
}

ZO_TEST_MAIN(tst_zoHostDocument)
#include "tst_zoHostDocument.moc"
