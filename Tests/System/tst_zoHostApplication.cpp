#include "zoTestCase.h"

#include <zoHostApplication.h>
#include <zoKernelServiceFactory.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolBar>

#include <memory>

namespace
{
// Whether the operating system still has the cluster module in the memory of this process.
bool isModuleMapped()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("libzoHPC.so");
}

zoHostMainWindow* mainWindow()
{
    auto* service = zoKernelServiceFactory::getService<zoMainWindowService>();
    return service == nullptr ? nullptr : qobject_cast<zoHostMainWindow*>(service->mainWindowWidget());
}

QAction* actionOf(QWidget* window, const QString& text)
{
    const QList<QAction*> actions = window->findChildren<QAction*>();
    for (QAction* action : actions) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}
} // namespace

// The host and the cluster module from its file, in one process and with a person at the window.
class tst_zoHostApplication final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void windowOfTheModuleIsShown();
    void emptyHostShowsTheDefaultConfiguration();
    void toolTipOfTheToggleActionIsResolved();
    void startAndStopActionsRunASession();
    void abortButtonOfTheOverlayEndsTheStart();
    void defaultFileIsExpanded();
    void closedHostLeavesNothingBehind();
    void hostClosesWhileASessionRuns();
    void hostClosesWithThePreferencesOpen();

private:
    zoClusterService* cluster() const { return zoKernelServiceFactory::getService<zoClusterService>(); }

    QTemporaryDir m_directory;
    std::unique_ptr<zoHostApplication> m_host;
};

void tst_zoHostApplication::initTestCase()
{
    zoTestCase::initTestCase();
    QVERIFY(m_directory.isValid());
    qunsetenv("ZOKE_DATA");
    // Settings and marks of sessions of this test alone.
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_directory.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_directory.path()));
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_directory.path()));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_directory.path());
    QCoreApplication::setOrganizationName("zo");
}

void tst_zoHostApplication::init()
{
    QSettings().clear();
    zoHostOptions options;
    options.moduleFiles = QStringList(QStringLiteral(ZO_MODULE_FILE));
    m_host = std::make_unique<zoHostApplication>(options);
    QVERIFY(mainWindow() != nullptr);
    QCOMPARE(mainWindow()->moduleWindows().size(), 1);
    mainWindow()->show();
}

void tst_zoHostApplication::cleanup()
{
    m_host.reset();
    zoTestCase::cleanup();
}

void tst_zoHostApplication::windowOfTheModuleIsShown()
{
    QWidget* window = mainWindow()->moduleWindows().constFirst();

    QVERIFY(window->isVisible());
    QVERIFY(!window->isWindow());
    QCOMPARE(window->objectName(), QStringLiteral("Module"));
}

void tst_zoHostApplication::emptyHostShowsTheDefaultConfiguration()
{
    QFile file(QStringLiteral(ZO_DATA_DIR "/cluster/default.zhpc"));
    QVERIFY(file.open(QIODevice::ReadOnly));

    QCOMPARE(cluster()->currentConfig(), QString::fromUtf8(file.readAll()));
}

void tst_zoHostApplication::toolTipOfTheToggleActionIsResolved()
{
    const QList<QAction*> actions = mainWindow()->moduleToolBar()->actions();

    QCOMPARE(actions.size(), 1);
    QCOMPARE(actions.constFirst()->toolTip(), zoHostMainWindow::resolvedToolTip("Tipreel_Cluster"));
    QVERIFY(actions.constFirst()->toolTip() != QLatin1String("Tipreel_Cluster"));
}

void tst_zoHostApplication::startAndStopActionsRunASession()
{
    QAction* start = actionOf(mainWindow()->moduleWindows().constFirst(), "Start");
    QAction* stop = actionOf(mainWindow()->moduleWindows().constFirst(), "Stop");
    QVERIFY(start != nullptr && stop != nullptr);
    QVERIFY(start->isEnabled() && !stop->isEnabled());

    start->trigger();

    QVERIFY(cluster()->isRunning());
    QCOMPARE(cluster()->runningNodes(), QStringList("localhost"));
    QVERIFY(!start->isEnabled() && stop->isEnabled());

    stop->trigger();

    QVERIFY(!cluster()->isRunning());
    QVERIFY(start->isEnabled() && !stop->isEnabled());
}

void tst_zoHostApplication::abortButtonOfTheOverlayEndsTheStart()
{
    QAction* start = actionOf(mainWindow()->moduleWindows().constFirst(), "Start");
    auto* abort = mainWindow()->findChild<QPushButton*>("m_abortButton");
    QVERIFY(abort != nullptr);
    QSignalSpy stopped(cluster(), &zoClusterService::stopped);
    bool wasSeen = false;
    connect(cluster(), &zoClusterService::progressChanged, this, [&] {
        wasSeen = wasSeen || abort->isVisible();
        QTest::mouseClick(abort, Qt::LeftButton);
    });

    start->trigger();

    QVERIFY(wasSeen);
    QVERIFY(!cluster()->isRunning());
    QCOMPARE(stopped.count(), 1);
    QVERIFY(start->isEnabled());
    QVERIFY(!abort->isVisible());
}

void tst_zoHostApplication::defaultFileIsExpanded()
{
    QCOMPARE(m_host->configurationFile(), QString());

    zoKernelServiceFactory::getService<zoPreferencesService>()->setString("HPC Cluster default file",
                                                                          "$ZOKE_DATA/cluster/wall.zhpc");

    QCOMPARE(m_host->configurationFile(), QStringLiteral(ZO_DATA_DIR "/cluster/wall.zhpc"));
}

void tst_zoHostApplication::closedHostLeavesNothingBehind()
{
    QVERIFY(isModuleMapped());
    const QPointer<QWidget> window = mainWindow();

    m_host.reset();

    QVERIFY(window.isNull());
    QVERIFY(!isModuleMapped());
    // Each says on standard error that it is not there.
    QVERIFY(zoKernelServiceFactory::getService<zoMainWindowService>() == nullptr);
    QVERIFY(zoKernelServiceFactory::getService<zoClusterService>() == nullptr);
    QVERIFY(zoKernelServiceFactory::getService<zoControllerService>() == nullptr);
    QVERIFY(zoKernelServiceFactory::getService<zoPreferencesService>() == nullptr);
    QVERIFY(zoKernelServiceFactory::getService<zoCameraService>() == nullptr);
    QVERIFY(zoKernelServiceFactory::getService<zoNodeService>() == nullptr);
    QCOMPARE(QApplication::allWidgets(), QWidgetList());
}

void tst_zoHostApplication::hostClosesWhileASessionRuns()
{
    QVERIFY(cluster()->start());
    QSignalSpy stopped(cluster(), &zoClusterService::stopped);

    m_host.reset();

    QCOMPARE(stopped.count(), 1);
    QVERIFY(!isModuleMapped());
}

void tst_zoHostApplication::hostClosesWithThePreferencesOpen()
{
    mainWindow()->showPreferences();
    QCoreApplication::processEvents();

    m_host.reset();

    QVERIFY(!isModuleMapped());
    QCOMPARE(QApplication::allWidgets(), QWidgetList());
}

ZO_TEST_MAIN(tst_zoHostApplication)
#include "tst_zoHostApplication.moc"
