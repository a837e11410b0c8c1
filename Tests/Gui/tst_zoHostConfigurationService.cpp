#include "zoHostParts.h"
#include "zoTestCase.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCUndo.h>

#include <zoHostConfigurationService.h>
#include <zoHostDocument.h>
#include <zoKernelServiceFactory.h>

#include <QApplication>
#include <QSignalSpy>
#include <QStackedWidget>

#include <memory>

namespace
{
const char* const s_wall =
    "<cluster version=\"1\"><master><network><node name=\"a\"/></network></master>"
    "<projection name=\"Wall\" type=\"powerwall\" rows=\"1\" columns=\"1\"/></cluster>";
} // namespace

// What other modules get of the configuration and put in its place, with the cluster window that edits it.
class tst_zoHostConfigurationService final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void textIsThatOfTheWindow();
    void fileIsThatOfTheWindow();
    void replacingIsOneStep();
    void replacedWorkComesBack();
    void replacedTextIsKeptAmongTheEarlier();
    void textThatIsNoConfigurationIsRefused_data();
    void textThatIsNoConfigurationIsRefused();
    void runningSessionRefuses();
    void openDisplaySetupRefuses();
    void olderDocumentIsTaken();
    void sameTextIsNoStep();
    void replacingShowsTheWindow();
    void changesAreTold();
    void obstacleIsTold_data();
    void obstacleIsTold();
    void hostWithoutModuleHasNone();

private:
    QString undoStep() const { return m_window->property("undoStep").toString(); }

    std::unique_ptr<zoHostParts> m_parts;
    std::unique_ptr<zoHostMainWindow> m_host;
    std::unique_ptr<zoHostConfigurationService> m_service;
    zoHPCGUIW* m_window = nullptr; // owned by the host's window
};

void tst_zoHostConfigurationService::init()
{
    m_parts = std::make_unique<zoHostParts>();
    zoKernelServiceFactory::the().registerService<zoPreferencesService>(&m_parts->preferences);
    zoKernelServiceFactory::the().registerService<zoNodeService>(&m_parts->nodes);
    zoKernelServiceFactory::the().registerService<zoCameraService>(&m_parts->cameras);
    m_host = std::make_unique<zoHostMainWindow>(m_parts->services());
    m_service = std::make_unique<zoHostConfigurationService>(m_host->document(), &m_parts->cluster);
    m_window = new zoHPCGUIW(m_host.get(), "Module");
    m_host->addModule("Cluster", "Rendering", m_window, QString(), QIcon(), "Cluster");
}

void tst_zoHostConfigurationService::cleanup()
{
    m_service.reset();
    m_host.reset();
    zoKernelServiceFactory::the().unregisterService<zoCameraService>();
    zoKernelServiceFactory::the().unregisterService<zoNodeService>();
    zoKernelServiceFactory::the().unregisterService<zoPreferencesService>();
    m_parts.reset();
    zoTestCase::cleanup();
}

void tst_zoHostConfigurationService::textIsThatOfTheWindow()
{
    m_window->replaceConfigString(s_wall);

    QCOMPARE(m_service->text(), m_window->documentText());
    QVERIFY(m_service->text().contains("powerwall"));
}

void tst_zoHostConfigurationService::fileIsThatOfTheWindow()
{
    QCOMPARE(m_service->fileName(), QString());
    const QString file = m_parts->writeFile("a.zhpc", s_wall);

    m_window->loadConfig(file);

    QCOMPARE(m_service->fileName(), file);
}

void tst_zoHostConfigurationService::replacingIsOneStep()
{
    QVERIFY(undoStep().isEmpty());

    QVERIFY(m_service->replace(s_wall, "New wall"));

    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 1);
    QCOMPARE(undoStep(), QStringLiteral("New wall"));
    QVERIFY(m_service->text().contains("powerwall"));
    QTRY_VERIFY(m_window->isWindowModified());
}

void tst_zoHostConfigurationService::replacedWorkComesBack()
{
    const QString file = m_parts->writeFile("a.zhpc", s_wall);
    m_window->loadConfig(file);
    m_window->getTree()->addHost();
    const QString before = m_service->text();

    QVERIFY(m_service->replace(QString(s_wall).replace("Wall", "Other"), "New wall"));
    const QString after = m_service->text();
    m_window->undo();

    QCOMPARE(m_service->text(), before);
    QCOMPARE(m_service->fileName(), file);
    // What was done before it is a step of its own.
    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 2);
    m_window->redo();
    QCOMPARE(m_service->text(), after);
}

void tst_zoHostConfigurationService::replacedTextIsKeptAmongTheEarlier()
{
    QSignalSpy replaced(m_host->document(), &zoHostDocument::replaced);
    m_window->getTree()->addHost();
    const QString before = m_service->text();

    QVERIFY(m_service->replace(s_wall, "New wall"));

    QCOMPARE(replaced.count(), 1);
    QCOMPARE(replaced.constFirst().constFirst().toString(), before);
}

void tst_zoHostConfigurationService::textThatIsNoConfigurationIsRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("no-xml") << QStringLiteral("wall");
    QTest::newRow("cut-off") << QString(s_wall).left(60);
    QTest::newRow("another-document") << QStringLiteral("<svg/>");
    QTest::newRow("no-section") << QStringLiteral("<cluster version=\"1\"/>");
}

void tst_zoHostConfigurationService::textThatIsNoConfigurationIsRefused()
{
    QFETCH(QString, text);
    m_window->replaceConfigString(s_wall);
    const QString before = m_service->text();

    QString refusal;
    QVERIFY(!m_service->replace(text, "New wall", &refusal));

    QVERIFY(!refusal.isEmpty());
    QCOMPARE(m_service->text(), before);
    QVERIFY(undoStep().isEmpty());
}

void tst_zoHostConfigurationService::runningSessionRefuses()
{
    m_window->replaceConfigString(s_wall);
    const QString before = m_service->text();
    QVERIFY(m_service->obstacle().isEmpty());
    m_parts->cluster.applyConfig(before);
    QVERIFY(m_parts->cluster.start());
    m_window->setIsRunning(true, m_parts->cluster.runningNodes());

    QString refusal;
    QVERIFY(!m_service->replace(QString(s_wall).replace("Wall", "Other"), "New wall", &refusal));

    QCOMPARE(refusal, m_service->obstacle());
    QVERIFY(!refusal.isEmpty());
    QCOMPARE(m_service->text(), before);
    // The window alone refuses as well.
    QVERIFY(!m_window->replaceConfiguration(QString(s_wall).replace("Wall", "Other"), "New wall"));
    m_parts->cluster.stop();
    m_window->setIsRunning(false, {});
    QVERIFY(m_service->obstacle().isEmpty());
    QVERIFY(m_service->replace(QString(s_wall).replace("Wall", "Other"), "New wall"));
}

void tst_zoHostConfigurationService::openDisplaySetupRefuses()
{
    m_host->show();
    m_window->displaySetup();
    QVERIFY(m_window->undoSteps()->isDialogOpen());

    QString refusal;
    QVERIFY(!m_service->replace(s_wall, "New wall", &refusal));

    QVERIFY(!refusal.isEmpty());
    QCOMPARE(refusal, m_service->obstacle());
    m_window->getDisplayEditor()->reject();
    QVERIFY(m_service->replace(s_wall, "New wall"));
}

void tst_zoHostConfigurationService::olderDocumentIsTaken()
{
    QString older = s_wall;
    older.remove(" version=\"1\"");

    QVERIFY(m_service->replace(older, "New wall"));

    QVERIFY(m_service->text().contains("version=\"1\""));
    QCOMPARE(undoStep(), QStringLiteral("New wall"));
}

void tst_zoHostConfigurationService::sameTextIsNoStep()
{
    m_window->replaceConfigString(s_wall);

    QVERIFY(m_service->replace(m_service->text(), "New wall"));

    QVERIFY(undoStep().isEmpty());
}

void tst_zoHostConfigurationService::replacingShowsTheWindow()
{
    auto* other = new QWidget(m_host.get());
    m_host->addModule("Other", "Rendering", other, QString(), QIcon(), "Other");
    m_host->show();
    other->show();
    auto* pages = qobject_cast<QStackedWidget*>(m_host->centralWidget());
    QCOMPARE(pages->currentWidget(), other);

    QVERIFY(m_service->replace(s_wall, "New wall"));

    QCOMPARE(pages->currentWidget(), m_window);
}

void tst_zoHostConfigurationService::changesAreTold()
{
    QCoreApplication::processEvents();
    QSignalSpy changed(m_service.get(), &zoConfigurationService::changed);

    m_window->getTree()->addHost();
    QTRY_VERIFY(changed.count() >= 1);

    // Steps of the same name are changes, too.
    m_window->undoSteps()->commit();
    QTRY_VERIFY(undoStep().startsWith("Add"));
    changed.clear();
    m_window->getTree()->addHost();
    QTRY_VERIFY(changed.count() >= 1);

    changed.clear();
    emit m_parts->cluster.started();
    emit m_parts->cluster.stopped();
    QTRY_COMPARE(changed.count(), 1);
}

void tst_zoHostConfigurationService::obstacleIsTold_data()
{
    QTest::addColumn<bool>("hasSteps");

    QTest::newRow("nothing-to-undo") << false;
    QTest::newRow("step-to-undo") << true;
}

void tst_zoHostConfigurationService::obstacleIsTold()
{
    QFETCH(bool, hasSteps);
    if (hasSteps)
        QVERIFY(m_service->replace(s_wall, "New wall"));
    m_host->show();
    QCoreApplication::processEvents();
    QSignalSpy changed(m_service.get(), &zoConfigurationService::changed);

    m_window->displaySetup();
    QTRY_VERIFY(changed.count() >= 1);
    QVERIFY(!m_service->obstacle().isEmpty());

    changed.clear();
    m_window->getDisplayEditor()->reject();
    QTRY_VERIFY(changed.count() >= 1);
    QVERIFY(m_service->obstacle().isEmpty());
}

void tst_zoHostConfigurationService::hostWithoutModuleHasNone()
{
    delete m_window;
    QString refusal;

    QVERIFY(m_service->text().isEmpty());
    QVERIFY(m_service->fileName().isEmpty());
    QVERIFY(!m_service->replace(s_wall, "New wall", &refusal));
    QCOMPARE(refusal, m_service->obstacle());
    QVERIFY(!refusal.isEmpty());
}

ZO_TEST_MAIN(tst_zoHostConfigurationService)
#include "tst_zoHostConfigurationService.moc"
