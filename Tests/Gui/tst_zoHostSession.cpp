#include "zoDialogRobot.h"
#include "zoFakeHost.h"
#include "zoFakeModule.h"
#include "zoHostParts.h"
#include "zoTestCase.h"

#include <zoHostMainWindow.h>
#include <zoHostSession.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QImage>
#include <QSignalSpy>
#include <QToolBar>

#include <memory>

namespace
{
// Stands for the cluster module.
class ModuleObject final : public QObject
{
    Q_OBJECT

public:
    explicit ModuleObject(zoClusterService* cluster) : m_cluster(cluster) {}

    QStringList loaded;

public slots:
    void loadConfig(const char* fileName)
    {
        loaded << QString::fromLatin1(fileName);
        QFile file(loaded.constLast());
        if (file.open(QIODevice::ReadOnly))
            m_cluster->applyConfig(QString::fromUtf8(file.readAll()));
    }
    void startCluster() { m_cluster->start(); }
    void stopCluster() { m_cluster->stop(); }

private:
    zoClusterService* m_cluster;
};
} // namespace

// Sessions with a person at the window. Those without one are tested with the whole program.
class tst_zoHostSession final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nothingAskedForDoesNothing();
    void configurationIsLoadedThroughTheModule();
    void unreadableConfigurationIsLoggedAndTheHostGoesOn();
    void malformedConfigurationIsStillLoaded();
    void clusterIsStarted();
    void failedStartIsLoggedAndTheHostGoesOn();
    void sessionEndsTheProgramWhenThePersonStopsIt();
    void unsavedWorkKeepsTheProgram();
    void failedStartDoesNotEndTheProgram();
    void withoutExitAfterStopTheProgramGoesOn();
    void screenshotIsTakenWhileRunning();
    void speedTestHasThreeFigures_data();
    void speedTestHasThreeFigures();
    void serviceWithoutASpeedTestIsNotMeasured();

private:
    void begin(const zoHostOptions& options, const QString& file);
    QString writeFile(const QString& text);

    std::unique_ptr<zoHostParts> m_parts;
    std::unique_ptr<ModuleObject> m_module;
    std::unique_ptr<zoHostMainWindow> m_window;
    std::unique_ptr<zoHostSession> m_session;
};

namespace
{
const char OneNode[] =
    "<cluster version=\"1\"><master><network><node name=\"n1\"/></network></master></cluster>";
} // namespace

void tst_zoHostSession::init()
{
    m_parts = std::make_unique<zoHostParts>();
    m_module = std::make_unique<ModuleObject>(&m_parts->cluster);
    m_window = std::make_unique<zoHostMainWindow>(m_parts->services());
    m_window->moduleToolBar()->addAction(new QAction("Cluster", m_module.get()));
}

void tst_zoHostSession::cleanup()
{
    m_session.reset();
    m_window.reset();
    zoTestCase::cleanup();
}

void tst_zoHostSession::begin(const zoHostOptions& options, const QString& file)
{
    m_session = std::make_unique<zoHostSession>(options, m_window.get(), &m_parts->cluster);
    m_session->begin(file);
}

QString tst_zoHostSession::writeFile(const QString& text)
{
    QFile file(m_parts->directory.filePath("a.zhpc"));
    if (file.open(QIODevice::WriteOnly))
        file.write(text.toUtf8());
    return file.fileName();
}

void tst_zoHostSession::nothingAskedForDoesNothing()
{
    begin(zoHostOptions(), QString());
    QCoreApplication::processEvents();

    QCOMPARE(m_module->loaded, QStringList());
    QVERIFY(!m_parts->cluster.isRunning());
}

void tst_zoHostSession::configurationIsLoadedThroughTheModule()
{
    const QString file = writeFile(OneNode);

    begin(zoHostOptions(), file);

    QCOMPARE(m_module->loaded, QStringList(file));
}

void tst_zoHostSession::unreadableConfigurationIsLoggedAndTheHostGoesOn()
{
    m_parts->cluster.applyConfig(OneNode);
    zoHostOptions options;
    options.start = true;
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("Unable to load configuration .*none.zhpc: ")));

    begin(options, m_parts->directory.filePath("none.zhpc"));

    QTRY_VERIFY(m_parts->cluster.isRunning());
    QCOMPARE(m_module->loaded, QStringList());
}

void tst_zoHostSession::malformedConfigurationIsStillLoaded()
{
    const QString file = writeFile("<cluster>");
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("a.zhpc cannot be used: line 1, column ")));

    begin(zoHostOptions(), file);

    // The module decides what becomes of it.
    QCOMPARE(m_module->loaded, QStringList(file));
}

void tst_zoHostSession::clusterIsStarted()
{
    zoHostOptions options;
    options.start = true;

    begin(options, writeFile(OneNode));
    QVERIFY(!m_parts->cluster.isRunning());

    QTRY_VERIFY(m_parts->cluster.isRunning());
    QCOMPARE(m_parts->cluster.runningNodes(), QStringList("n1"));
}

void tst_zoHostSession::failedStartIsLoggedAndTheHostGoesOn()
{
    zoHostOptions options;
    options.start = true;
    QSignalSpy stopped(&m_parts->cluster, &zoClusterService::stopped);
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("no enabled node")));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("The cluster did not start")));

    begin(options, writeFile("<cluster/>"));

    QTRY_COMPARE(stopped.count(), 1);
}

void tst_zoHostSession::sessionEndsTheProgramWhenThePersonStopsIt()
{
    zoHostOptions options;
    options.start = true;
    options.exitAfterStop = true;
    begin(options, writeFile(OneNode));
    connect(&m_parts->cluster, &zoClusterService::started, m_session.get(),
            [this] { QMetaObject::invokeMethod(m_module.get(), "stopCluster", Qt::QueuedConnection); });

    const int exitCode = QCoreApplication::exec();

    QCOMPARE(exitCode, 0);
    QVERIFY(!m_parts->cluster.isRunning());
}

void tst_zoHostSession::unsavedWorkKeepsTheProgram()
{
    auto* work = new zoFakeModuleWindow(m_window.get());
    m_window->addModule("Fake", "Rendering", work, QString(), QIcon(), "Fake");
    work->edit("work");
    zoHostOptions options;
    options.start = true;
    options.exitAfterStop = true;
    m_window->show();
    begin(options, writeFile(OneNode));
    connect(&m_parts->cluster, &zoClusterService::started, m_session.get(),
            [this] { QMetaObject::invokeMethod(m_module.get(), "stopCluster", Qt::QueuedConnection); });
    const zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });

    QTRY_COMPARE(robot.handled(), 1);
    QTRY_VERIFY(QApplication::activeModalWidget() == nullptr);

    QVERIFY(m_window->isVisible());
    work->edit(QString());
}

void tst_zoHostSession::failedStartDoesNotEndTheProgram()
{
    zoHostOptions options;
    options.start = true;
    options.exitAfterStop = true;
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("no enabled node")));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("The cluster did not start")));
    begin(options, writeFile("<cluster/>"));
    // Queued behind everything that the session queues, twice over.
    constexpr int Later = 7;
    connect(&m_parts->cluster, &zoClusterService::stopped, m_session.get(), [this] {
        QMetaObject::invokeMethod(
            m_session.get(),
            [this] {
                QMetaObject::invokeMethod(
                    m_session.get(), [] { QCoreApplication::exit(Later); }, Qt::QueuedConnection);
            },
            Qt::QueuedConnection);
    });

    QCOMPARE(QCoreApplication::exec(), Later);
}

void tst_zoHostSession::withoutExitAfterStopTheProgramGoesOn()
{
    zoHostOptions options;
    options.start = true;
    begin(options, writeFile(OneNode));
    constexpr int Later = 7;
    connect(&m_parts->cluster, &zoClusterService::started, m_session.get(),
            [this] { QMetaObject::invokeMethod(m_module.get(), "stopCluster", Qt::QueuedConnection); });
    connect(&m_parts->cluster, &zoClusterService::stopped, m_session.get(), [this] {
        QMetaObject::invokeMethod(
            m_session.get(),
            [this] {
                QMetaObject::invokeMethod(
                    m_session.get(), [] { QCoreApplication::exit(Later); }, Qt::QueuedConnection);
            },
            Qt::QueuedConnection);
    });

    QCOMPARE(QCoreApplication::exec(), Later);
}

void tst_zoHostSession::screenshotIsTakenWhileRunning()
{
    zoHostOptions options;
    options.start = true;
    options.screenshotFile = m_parts->directory.filePath("shot.png");
    m_window->show();

    begin(options, writeFile(OneNode));

    QTRY_VERIFY(QFile::exists(options.screenshotFile));
    QVERIFY(m_parts->cluster.isRunning());
    QCOMPARE(QImage(options.screenshotFile, "PNG").size(), m_window->grab().size());
}

void tst_zoHostSession::speedTestHasThreeFigures_data()
{
    QTest::addColumn<QStringList>("figures");

    QTest::newRow("none") << QStringList();
    QTest::newRow("two") << QStringList{"1", "2"};
    QTest::newRow("four") << QStringList{"1", "2", "3", "4"};
}

void tst_zoHostSession::speedTestHasThreeFigures()
{
    QFETCH(QStringList, figures);
    zoFakeClusterService cluster;
    cluster.rates = figures;
    cluster.ability = zoClusterService::MeasuresSpeed;
    cluster.onStart = [&cluster] {
        cluster.running = true;
        emit cluster.started();
        return true;
    };
    ModuleObject module(&cluster);
    zoHostMainWindow window(m_parts->services());
    window.moduleToolBar()->addAction(new QAction("Cluster", &module));
    zoHostOptions options;
    options.start = true;
    options.nonInteractive = true;
    options.exitAfterStop = true;
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("^The network could not be measured$")));
    zoHostSession session(options, &window, &cluster);
    session.begin(writeFile(OneNode));

    const int exitCode = QCoreApplication::exec();

    QCOMPARE(exitCode, 1);
}

void tst_zoHostSession::serviceWithoutASpeedTestIsNotMeasured()
{
    zoFakeClusterService cluster;
    cluster.onStart = [&cluster] {
        cluster.running = true;
        emit cluster.started();
        return true;
    };
    ModuleObject module(&cluster);
    zoHostMainWindow window(m_parts->services());
    window.moduleToolBar()->addAction(new QAction("Cluster", &module));
    zoHostOptions options;
    options.start = true;
    options.nonInteractive = true;
    options.exitAfterStop = true;
    zoHostSession session(options, &window, &cluster);
    session.begin(writeFile(OneNode));

    QTRY_VERIFY(cluster.calls.contains("stop"));
    QVERIFY(!cluster.calls.contains("speedTest"));
}

ZO_TEST_MAIN(tst_zoHostSession)
#include "tst_zoHostSession.moc"
