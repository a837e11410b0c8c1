#include "zoFakeConfigurationService.h"
#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <zoKernelServiceFactory.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLibrary>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QToolBar>

#include <memory>

namespace
{
bool isMapped()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("/libzoAssistant.so");
}

QDialog* openDialog()
{
    return qobject_cast<QDialog*>(QApplication::activeModalWidget());
}

const char* const s_open = "<cluster version=\"1\"><master><network><node name=\"a\"/></network></master>"
                           "<projection name=\"Wall\" type=\"wall\" rows=\"1\" columns=\"1\"/><display "
                           "user=\"1\"><window node=\"a\">"
                           "<viewport projection=\"Wall 1:1\"/></window></display></cluster>";
} // namespace

// The assistant's file, loaded the way that hosts load it, in hosts with and without a configuration to give.
class tst_libzoAssistant final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void exportsItsEntryOnly();
    void registersItsPanelBesideTheFirst();
    void secondInitMakesNoSecondModule();
    void slotsOpenTheDialogs_data();
    void slotsOpenTheDialogs();
    void oneDialogAtATime();
    void nobodyIsAskedInAScript();
    void hostWithoutTheServiceGetsReasons();
    void sessionHindersNewWallAlone();
    void hostWithoutToolBarHasThePanel();
    void serviceMayGo();
    void panelShowsWhatIsOpen();
    void libraryIsGoneAfterUnloading();
    void dialogOfAnUnloadedLibraryIsGone();

private:
    void start(bool hasService = true);
    QObject* module() const { return m_host->toolBar->actions().constFirst()->parent(); }
    QWidget* panel() const { return m_host->modules.constFirst().window; }
    QAbstractButton* button(const char* name) const
    {
        return panel()->findChild<QAbstractButton*>(QLatin1String(name));
    }
    bool invoke(const char* slot) const
    {
        return QMetaObject::invokeMethod(module(), slot, Qt::DirectConnection);
    }

    std::unique_ptr<zoFakeHost> m_host;
    std::unique_ptr<zoFakeConfigurationService> m_service;
    std::unique_ptr<QLibrary> m_library;
};

void tst_libzoAssistant::init()
{
    m_host = std::make_unique<zoFakeHost>();
    m_service = std::make_unique<zoFakeConfigurationService>();
    m_service->held = QLatin1String(s_open);
    m_library = std::make_unique<QLibrary>(QStringLiteral(ZO_ASSISTANT_FILE));
    QVERIFY2(m_library->load(), qPrintable(m_library->errorString()));
}

void tst_libzoAssistant::cleanup()
{
    if (m_host)
        m_host->window.reset();
    if (m_library)
        m_library->unload();
    m_library.reset();
    zoKernelServiceFactory::the().unregisterService<zoConfigurationService>();
    m_service.reset();
    m_host.reset();
    zoTestCase::cleanup();
}

void tst_libzoAssistant::start(bool hasService)
{
    if (hasService)
        zoKernelServiceFactory::the().registerService<zoConfigurationService>(m_service.get());
    const auto entry = reinterpret_cast<void (*)()>(m_library->resolve("initPlugin"));
    QVERIFY(entry != nullptr);
    entry();
}

void tst_libzoAssistant::exportsItsEntryOnly()
{
    QProcess nm;
    nm.start(QStringLiteral("nm"),
             {QStringLiteral("-D"), QStringLiteral("--defined-only"), QStringLiteral(ZO_ASSISTANT_FILE)});
    QVERIFY2(nm.waitForFinished(), qPrintable(nm.errorString()));

    QStringList names;
    const QList<QByteArray> lines = nm.readAllStandardOutput().trimmed().split('\n');
    for (const QByteArray& line : lines)
        names << QString::fromLatin1(line).section(QLatin1Char(' '), -1);
    names.removeAll(QStringLiteral("qt_plugin_query_metadata"));
    names.removeAll(QStringLiteral("qt_plugin_instance"));

    QCOMPARE(names, QStringList{QStringLiteral("initPlugin")});
}

void tst_libzoAssistant::registersItsPanelBesideTheFirst()
{
    start();

    QCOMPARE(m_host->modules.size(), 1);
    QCOMPARE(m_host->modules.first().name, QStringLiteral("Assistant"));
    QCOMPARE(m_host->modules.first().category, QStringLiteral("Rendering"));
    QCOMPARE(panel()->parentWidget(), m_host->window.get());
    QVERIFY(!m_host->modules.first().icon.isNull());
    QCOMPARE(m_host->pages.size(), 0);
    QVERIFY(m_host->preferences.isEmpty());
}

void tst_libzoAssistant::secondInitMakesNoSecondModule()
{
    start();
    start();

    QCOMPARE(m_host->modules.size(), 1);
    QCOMPARE(m_host->toolBar->actions().size(), 1);
}

void tst_libzoAssistant::slotsOpenTheDialogs_data()
{
    QTest::addColumn<QString>("slot");
    QTest::addColumn<QString>("dialog");
    QTest::newRow("new-wall") << "newWall"
                              << "zoAssistantWallDialog";
    QTest::newRow("measured-room") << "measuredRoom"
                                   << "zoAssistantSurveyDialog";
    QTest::newRow("report") << "report"
                            << "zoAssistantReportDialog";
}

void tst_libzoAssistant::slotsOpenTheDialogs()
{
    QFETCH(QString, slot);
    QFETCH(QString, dialog);
    start();
    m_host->window->show();
    QVERIFY(module()->metaObject()->indexOfSlot(qPrintable(slot + "()")) >= 0);

    QVERIFY(invoke(qPrintable(slot)));

    QVERIFY(openDialog() != nullptr);
    QCOMPARE(openDialog()->objectName(), dialog);
    QCOMPARE(openDialog()->parentWidget(), m_host->window.get());
    openDialog()->reject();
    QVERIFY(openDialog() == nullptr);
}

void tst_libzoAssistant::oneDialogAtATime()
{
    start();
    invoke("newWall");
    const QDialog* first = openDialog();

    invoke("report");
    QCOMPARE(openDialog(), first);

    openDialog()->reject();
    invoke("report");
    QCOMPARE(openDialog()->objectName(), QStringLiteral("zoAssistantReportDialog"));
    openDialog()->reject();
}

void tst_libzoAssistant::nobodyIsAskedInAScript()
{
    m_host->nonInteractive = true;
    start();

    for (const char* slot : {"newWall", "measuredRoom", "report", "printReport"})
        QVERIFY(invoke(slot));

    QVERIFY(openDialog() == nullptr);
}

void tst_libzoAssistant::hostWithoutTheServiceGetsReasons()
{
    start(false);

    for (const char* name : {"m_newWall", "m_measuredRoom", "m_report", "m_print"}) {
        QVERIFY(!button(name)->isEnabled());
        QVERIFY(!button(name)->toolTip().isEmpty());
    }
    QVERIFY(!panel()->findChild<QLabel*>("m_hindrance")->text().isEmpty());
    QVERIFY(!m_host->toolBar->actions().constFirst()->isEnabled());
    QVERIFY(invoke("newWall"));
    QVERIFY(invoke("report"));
    QVERIFY(openDialog() == nullptr);
}

void tst_libzoAssistant::sessionHindersNewWallAlone()
{
    start();
    QVERIFY(button("m_newWall")->isEnabled());

    m_service->hindrance = "A session runs";
    emit m_service->changed();

    QVERIFY(!button("m_newWall")->isEnabled());
    QVERIFY(button("m_newWall")->toolTip().contains("A session runs"));
    QVERIFY(!m_host->toolBar->actions().constFirst()->isEnabled());
    QVERIFY(button("m_report")->isEnabled());
    m_service->hindrance.clear();
    emit m_service->changed();
    QVERIFY(button("m_newWall")->isEnabled());
    QVERIFY(m_host->toolBar->actions().constFirst()->isEnabled());
}

void tst_libzoAssistant::hostWithoutToolBarHasThePanel()
{
    m_host->toolBarUsed = false;
    start();

    QCOMPARE(m_host->toolBar->actions().size(), 0);
    button("m_newWall")->click();
    QVERIFY(openDialog() != nullptr);
    openDialog()->reject();
}

void tst_libzoAssistant::serviceMayGo()
{
    start();
    invoke("newWall");
    zoKernelServiceFactory::the().unregisterService<zoConfigurationService>();
    m_service.reset();

    openDialog()->accept();
    openDialog()->reject();

    QVERIFY(!button("m_newWall")->isEnabled());
    QVERIFY(invoke("report"));
    QVERIFY(openDialog() == nullptr);
}

void tst_libzoAssistant::panelShowsWhatIsOpen()
{
    QFile sample(QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"));
    QVERIFY(sample.open(QIODevice::ReadOnly));
    m_service->held = QString::fromUtf8(sample.readAll());
    m_service->file = "/walls/front.zhpc";
    start();
    m_host->window->setCentralWidget(panel());
    m_host->window->show();
    auto* open = panel()->findChild<QLabel*>("m_open");

    QVERIFY2(open->text().contains("front.zhpc"), qPrintable(open->text()));
    QVERIFY2(open->text().contains("4 nodes, 4 windows, no problems"), qPrintable(open->text()));
    for (const char* task : {"m_newWall", "m_report"})
        QVERIFY2(qobject_cast<QPushButton*>(button(task))->autoDefault(), task); // takes Return

    m_service->held.clear();
    m_service->file.clear();
    emit m_service->changed();
    QTRY_COMPARE(open->text(), QStringLiteral("No configuration is open."));
    QVERIFY(!button("m_report")->isEnabled());
}

void tst_libzoAssistant::libraryIsGoneAfterUnloading()
{
    start();
    QVERIFY(isMapped());
    m_host->window->show();
    panel()->show();
    QCoreApplication::processEvents();

    m_host->modules.clear();
    m_host->window.reset();
    m_library->unload();

    QVERIFY(!isMapped());
    // Nothing of the module is connected any more.
    emit m_service->changed();
    QCoreApplication::processEvents();
}

void tst_libzoAssistant::dialogOfAnUnloadedLibraryIsGone()
{
    start();
    m_host->window->show();
    invoke("newWall");
    const QPointer<QDialog> dialog(openDialog());
    QVERIFY(dialog);

    m_host->modules.clear();
    m_host->window.reset();
    m_library->unload();

    QVERIFY(!dialog);
    QVERIFY(!isMapped());
}

ZO_TEST_MAIN(tst_libzoAssistant)
#include "tst_libzoAssistant.moc"
