#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <zoIconManager.h>

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLibrary>
#include <QPointer>
#include <QProcess>
#include <QVBoxLayout>

#include <memory>

namespace
{
using Entry = void (*)();

bool isMapped()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("/libzoHPC.so");
}

// A host that ends without unloading its modules.
int leaveLoaded(bool adopted)
{
    zoFakeHost host;
    QLibrary library(QStringLiteral(ZO_MODULE_FILE));
    const Entry entry = library.resolve("initPreferencesPlugin");
    if (entry == nullptr)
        return 2;
    entry();
    if (host.pages.size() != 1)
        return 3;
    QWidget* const page = host.pages.first().page;
    std::unique_ptr<QDialog> dialog;
    if (adopted) {
        dialog = std::make_unique<QDialog>();
        page->setParent(dialog.get());
        dialog->show();
    } else {
        page->show();
    }
    QCoreApplication::processEvents();
    host.pages.clear();
    return 0;
}
} // namespace

// The preferences entry of the module's file, and who destroys the page.
class tst_libzoHPCPreferences final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void secondCallMakesNoSecondPage();
    void ownPageDiesWithTheLibrary();
    void pageOfADialogDiesWithTheDialogOnly();
    void pageLeavesADialogThatOutlivesTheLibrary();
    void loadedAgainItMakesANewPage();
    void nothingThatTheHostKeptPointsIntoTheLibrary();
    void endWithoutUnloadingIsClean_data();
    void endWithoutUnloadingIsClean();

private:
    QPointer<QWidget> load();

    std::unique_ptr<zoFakeHost> m_host;
    std::unique_ptr<QLibrary> m_library;
};

void tst_libzoHPCPreferences::init()
{
    m_host = std::make_unique<zoFakeHost>();
    m_library = std::make_unique<QLibrary>(QStringLiteral(ZO_MODULE_FILE));
}

void tst_libzoHPCPreferences::cleanup()
{
    m_host->pages.clear();
    if (m_library->isLoaded())
        m_library->unload();
    m_library.reset();
    m_host.reset();
    zoTestCase::cleanup();
}

QPointer<QWidget> tst_libzoHPCPreferences::load()
{
    const Entry entry = m_library->resolve("initPreferencesPlugin");
    if (entry == nullptr)
        return nullptr;
    entry();
    QPointer<QWidget> page = m_host->pages.isEmpty() ? nullptr : m_host->pages.first().page;
    return page;
}

void tst_libzoHPCPreferences::secondCallMakesNoSecondPage()
{
    const QPointer<QWidget> first = load();
    QVERIFY(first);

    const QPointer<QWidget> second = load();

    QCOMPARE(second.data(), first.data());
    QCOMPARE(m_host->pages.size(), 1);
}

void tst_libzoHPCPreferences::ownPageDiesWithTheLibrary()
{
    const QPointer<QWidget> page = load();
    QVERIFY(page);
    QVERIFY(page->parentWidget() == nullptr);
    page->show();

    m_host->pages.clear();
    QVERIFY(m_library->unload());

    QVERIFY(!page);
    QVERIFY(!isMapped());
}

void tst_libzoHPCPreferences::pageOfADialogDiesWithTheDialogOnly()
{
    const QPointer<QWidget> page = load();
    QVERIFY(page);
    auto dialog = std::make_unique<QDialog>();
    (new QVBoxLayout(dialog.get()))->addWidget(page);
    dialog->show();

    dialog.reset();
    QVERIFY(!page);
    m_host->pages.clear();
    QVERIFY(m_library->unload());

    QVERIFY(!isMapped());
}

void tst_libzoHPCPreferences::pageLeavesADialogThatOutlivesTheLibrary()
{
    const QPointer<QWidget> page = load();
    QVERIFY(page);
    QDialog dialog;
    (new QVBoxLayout(&dialog))->addWidget(page);
    dialog.show();

    m_host->pages.clear();
    QVERIFY(m_library->unload());

    QVERIFY(!page);
    QVERIFY(!isMapped());
    QCoreApplication::processEvents();
    QCOMPARE(dialog.layout()->count(), 0);
}

void tst_libzoHPCPreferences::loadedAgainItMakesANewPage()
{
    QVERIFY(load());
    m_host->pages.clear();
    QVERIFY(m_library->unload());
    QVERIFY(!isMapped());

    const QPointer<QWidget> page = load();

    QVERIFY(page);
    QCOMPARE(m_host->pages.size(), 1);
}

void tst_libzoHPCPreferences::nothingThatTheHostKeptPointsIntoTheLibrary()
{
    QVERIFY(load());
    m_host->pages.first().setDefaults();
    m_host->pages.first().saveChanges();

    m_host->pages.clear();
    QVERIFY(m_library->unload());

    // Compares with the names that the page asked for.
    QVERIFY(!zoIconManager::getIcon(QStringLiteral("FileOpen"), QString()).isNull());
    QCOMPARE(m_host->preferences.value(QStringLiteral("HPC Cluster default file")), QString());
    m_host->preferences.clear();
}

void tst_libzoHPCPreferences::endWithoutUnloadingIsClean_data()
{
    QTest::addColumn<QString>("how");

    QTest::newRow("own-page") << "--leave-own";
    QTest::newRow("page-of-a-dialog") << "--leave-adopted";
}

void tst_libzoHPCPreferences::endWithoutUnloadingIsClean()
{
    QFETCH(QString, how);
    QProcess process;

    process.start(QCoreApplication::applicationFilePath(), {how});
    QVERIFY(process.waitForFinished(60000));

    QVERIFY2(process.exitStatus() == QProcess::NormalExit, process.readAllStandardError().constData());
    QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
}

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    if (argc == 2 && qstrncmp(argv[1], "--leave-", 8) == 0)
        return leaveLoaded(qstrcmp(argv[1], "--leave-adopted") == 0);
    tst_libzoHPCPreferences test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_libzoHPCPreferences.moc"
