#include "zoParaViewFake.h"
#include "zoTestCase.h"
#include "zoVirtualDisplay.h"

#include <zoSetupLibrary.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTimer>

#include <csignal>

namespace
{
constexpr int s_limitMs = 60000;
constexpr int s_pictureMs = 180000; // it has a limit of its own
const QRegularExpression AnyReason(QStringLiteral("\\S"));

// Connects and draws, says so, and stays until it is ended.
const char* const s_client = R"(import os, sys, time
from paraview.simple import *
if len(sys.argv) > 3:
    ReverseConnect(sys.argv[1])
else:
    Connect("localhost", int(sys.argv[1]))
view = CreateRenderView()
Show(Sphere(), view)
Render(view)
os.write(1, b"drawn\n") # at once, which print is not
time.sleep(float(sys.argv[2]))
Disconnect()
)";

// What runs below a process, itself left out.
QList<qint64> childrenOf(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/task/%1/children").arg(process));
    QList<qint64> children;
    if (!file.open(QIODevice::ReadOnly))
        return children;
    const QList<QByteArray> numbers = file.readAll().simplified().split(' ');
    for (const QByteArray& number : numbers) {
        if (!number.isEmpty())
            children << number.toLongLong();
    }
    return children;
}

bool isAlive(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray stat = file.readAll();
    return !stat.mid(stat.lastIndexOf(')') + 2).startsWith('Z');
}
} // namespace

// Sessions of the real server of ParaView, on an X server of the test's own.
class tst_zoParaViewServiceReal final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void clientsComeAndGoAndNothingIsLeft();
    void killedProgramsEndTheSession_data();
    void killedProgramsEndTheSession();
    void checkPictureFollowsItsSwitchesAndMakesWay();
    void takenPortIsPassedOver();
    void missingDisplayIsNamedBeforeTheLaunch();
    void missingFileIsNamed();
    void abortLeavesNothing_data();
    void abortLeavesNothing();
    void serverCallsItsClient();

private:
    std::unique_ptr<zoParaViewService> create() const;
    void startClient(QProcess& client, const zoParaViewService& service, quint32 id, const char* seconds,
                     const QStringList& more = {});

    std::unique_ptr<zoVirtualDisplay> m_display;
    std::unique_ptr<QTemporaryDir> m_folder;
    QList<qint64> m_ranks;
};

void tst_zoParaViewServiceReal::init()
{
    for (const char* program : {"pvserver", "pvpython", "mpirun"}) {
        if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty())
            QSKIP(program);
    }
    m_display = std::make_unique<zoVirtualDisplay>(QStringList("1000x600"));
    if (!m_display->isRunning())
        QSKIP(qPrintable(m_display->reason()));
    qputenv("DISPLAY", m_display->name().toLatin1());
    qputenv("LIBGL_ALWAYS_SOFTWARE", "1");
    zoSetupLibrary::setFolder(QStringLiteral(ZO_COMPONENT_DIR));
    m_folder = std::make_unique<QTemporaryDir>();
    QFile script(m_folder->filePath("client.py"));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write(s_client);
    m_ranks.clear();
}

void tst_zoParaViewServiceReal::cleanup()
{
    zoTestCase::cleanup();
    m_display.reset();
    m_folder.reset();
}

std::unique_ptr<zoParaViewService> tst_zoParaViewServiceReal::create() const
{
    zoParaViewService::Launch launch = zoParaViewPlan::defaultLaunch();
    launch.nodeServerHere.clear();
    launch.port = 20000 + int(QCoreApplication::applicationPid() % 20000);
    launch.limitMs = s_limitMs;
    auto service = std::make_unique<zoParaViewService>(launch);
    service->setLockDirectory(m_folder->path());
    service->setMemoryPerNode(0);
    service->applyConfig(zoParaViewFake::wallOf({"localhost", "127.0.0.1"}));
    return service;
}

void tst_zoParaViewServiceReal::startClient(QProcess& client, const zoParaViewService& service, quint32 id,
                                            const char* seconds, const QStringList& more)
{
    client.setProcessChannelMode(QProcess::MergedChannels);
    client.start("pvpython",
                 QStringList{"--force-offscreen-rendering", QStringLiteral("--connect-id=%1").arg(id),
                             m_folder->filePath("client.py"), service.serverUrl().section(':', -1),
                             QLatin1String(seconds)} +
                     more);
}

void tst_zoParaViewServiceReal::clientsComeAndGoAndNothingIsLeft()
{
    const QDir memory("/dev/shm");
    const QStringList before = memory.entryList({"vader_segment*"});
    const auto service = create();
    QVERIFY(service->start());
    const QString command = service->connectText();
    const QString folder = service->sessionFolder();

    QProcess stranger;
    startClient(stranger, *service, service->connectId() ^ 1U, "0");
    QTRY_VERIFY_WITH_TIMEOUT(messages().filter("was refused").size() == 1, s_limitMs);
    QTRY_COMPARE_WITH_TIMEOUT(stranger.state(), QProcess::NotRunning, s_limitMs);
    QVERIFY(!service->hasClient());
    QProcess client;
    startClient(client, *service, service->connectId(), "0");
    QTRY_VERIFY_WITH_TIMEOUT(messages().filter("client of ParaView left").size() == 1, s_limitMs);
    QTRY_VERIFY_WITH_TIMEOUT(messages().filter("waits for a client: ").size() == 1, s_limitMs);
    QCOMPARE(service->connectText(), command);
    QProcess killed;
    startClient(killed, *service, service->connectId(), "600");
    QTRY_VERIFY_WITH_TIMEOUT(service->hasClient(), s_limitMs);
    QTRY_VERIFY_WITH_TIMEOUT(killed.bytesAvailable() > 0, s_limitMs);
    killed.kill();
    QTRY_VERIFY_WITH_TIMEOUT(messages().filter("waits for a client: ").size() == 2, s_limitMs);
    killed.waitForFinished();

    m_ranks = childrenOf(service->jobProcess());
    QCOMPARE(m_ranks.size(), 2);
    service->stop();
    for (const qint64 rank : qAsConst(m_ranks))
        QVERIFY(!isAlive(rank));
    QVERIFY(!QFileInfo::exists(folder));
    // Others may have jobs of their own, which end.
    const QStringList after = QDir("/dev/shm").entryList({"vader_segment*"});
    for (const QString& name : after)
        QVERIFY2(before.contains(name), qPrintable(name));
}

void tst_zoParaViewServiceReal::killedProgramsEndTheSession_data()
{
    QTest::addColumn<int>("rank"); // -1 for mpirun itself
    QTest::addColumn<QString>("node");

    QTest::newRow("mpirun") << -1 << "";
    QTest::newRow("second-rank") << 1 << "127.0.0.1";
}

void tst_zoParaViewServiceReal::killedProgramsEndTheSession()
{
    QFETCH(int, rank);
    QFETCH(QString, node);
    const auto service = create();
    QVERIFY(service->start());
    const QString folder = service->sessionFolder();
    m_ranks = childrenOf(service->jobProcess());
    QSignalSpy stopped(service.get(), &zoClusterService::stopped);
    if (!node.isEmpty())
        expectMessage(QtCriticalMsg, QRegularExpression("Node " + node + " lost: .*signal 9"));
    expectMessage(QtCriticalMsg, AnyReason);

    ::kill(pid_t(rank < 0 ? service->jobProcess() : m_ranks.at(rank)), SIGKILL);

    QTRY_COMPARE_WITH_TIMEOUT(stopped.count(), 1, s_limitMs);
    for (const qint64 process : qAsConst(m_ranks))
        QTRY_VERIFY_WITH_TIMEOUT(!isAlive(process), s_limitMs);
    QVERIFY(!QFileInfo::exists(folder));
}

void tst_zoParaViewServiceReal::checkPictureFollowsItsSwitchesAndMakesWay()
{
    const auto service = create();
    QVERIFY(service->start());
    service->setShowTestImage(true);
    QTRY_VERIFY_WITH_TIMEOUT(messages().filter("picture is on the wall").size() == 1, s_pictureMs);
    service->setShowTiles(true);
    QTRY_VERIFY_WITH_TIMEOUT(messages().filter("picture is on the wall").size() == 2, s_pictureMs);
    service->setShowTiles(false);
    service->setShowTestImage(false);
    QTRY_VERIFY_WITH_TIMEOUT(messages().filter("waits for a client: ").size() == 2, s_pictureMs);
    service->setShowTiles(true);
    QTRY_VERIFY_WITH_TIMEOUT(messages().filter("picture is on the wall").size() == 3, s_pictureMs);
    QVERIFY(!service->hasClient());

    QProcess client;
    startClient(client, *service, service->connectId(), "600");
    QTRY_VERIFY_WITH_TIMEOUT(messages().filter("picture makes way").size() == 1, s_pictureMs);
    QTRY_VERIFY_WITH_TIMEOUT(service->hasClient(), s_pictureMs);
    QTRY_VERIFY_WITH_TIMEOUT(client.peek(100000).contains("drawn"), s_pictureMs);

    service->stop();
    client.kill();
    client.waitForFinished();
}

void tst_zoParaViewServiceReal::takenPortIsPassedOver()
{
    const auto service = create();
    QTcpServer other;
    const auto port = quint16(20000 + QCoreApplication::applicationPid() % 20000);
    QVERIFY(other.listen(QHostAddress::Any, port));

    QVERIFY(service->start());

    QVERIFY(service->serverUrl().endsWith(QString::number(port + 1)));
    service->stop();
}

void tst_zoParaViewServiceReal::missingDisplayIsNamedBeforeTheLaunch()
{
    qputenv("DISPLAY", ":9876");
    const auto service = create();
    expectMessage(QtCriticalMsg, QRegularExpression("localhost failed: its display :9876 cannot be opened"));
    expectMessage(QtCriticalMsg, QRegularExpression("127.0.0.1 failed"));
    expectMessage(QtCriticalMsg, AnyReason);

    QVERIFY(!service->start());
}

void tst_zoParaViewServiceReal::missingFileIsNamed()
{
    const auto service = create();
    // Between the look at the nodes and the launch.
    connect(service.get(), &zoClusterService::progressChanged, this, [&](const QString& text) {
        if (text.contains("starts on port"))
            QVERIFY(QFile::remove(service->sessionFolder() + "/wall.pvx"));
    });
    expectMessage(QtCriticalMsg, QRegularExpression("cannot read its file: .*[Ff]ailed to parse XML"));

    QVERIFY(!service->start());

    QCOMPARE(service->jobProcess(), 0);
    QCOMPARE(service->sessionFolder(), QString());
}

void tst_zoParaViewServiceReal::abortLeavesNothing_data()
{
    QTest::addColumn<QString>("step"); // of the progress after which it comes
    QTest::addColumn<int>("ranks");    // that it waits for

    QTest::newRow("looking-at-nodes") << "Connecting to" << -1;
    QTest::newRow("mpirun-started") << "starts on port" << 0;
    QTest::newRow("ranks-started") << "starts on port" << 2;
}

void tst_zoParaViewServiceReal::abortLeavesNothing()
{
    QFETCH(QString, step);
    QFETCH(int, ranks);
    const auto service = create();
    QString folder;
    qint64 job = 0;
    QTimer timer;
    timer.setInterval(1);
    connect(&timer, &QTimer::timeout, this, [&] {
        job = service->jobProcess();
        m_ranks = childrenOf(job);
        if (ranks >= 0 && (job == 0 || m_ranks.size() < ranks))
            return;
        timer.stop();
        folder = service->sessionFolder();
        service->abort();
    });
    connect(service.get(), &zoClusterService::progressChanged, this, [&](const QString& text) {
        if (text.contains(step))
            timer.start();
    });
    expectMessage(QtInfoMsg, QRegularExpression("aborted"));

    QVERIFY(!service->start());

    QVERIFY(!folder.isEmpty() && !QFileInfo::exists(folder));
    QCOMPARE(job > 0, ranks >= 0);
    QVERIFY(job == 0 || !isAlive(job));
    QCOMPARE(m_ranks.size() >= 2, ranks == 2);
    for (const qint64 rank : qAsConst(m_ranks))
        QVERIFY(!isAlive(rank));
    QCOMPARE(service->runningNodes(), QStringList());
    // It can start after that.
    service->disconnect(this);
    QVERIFY(service->start());
    service->stop();
}

void tst_zoParaViewServiceReal::serverCallsItsClient()
{
    const auto service = create();
    zoParaViewService::Launch launch = zoParaViewPlan::defaultLaunch();
    launch.nodeServerHere.clear();
    launch.port = 20000 + int(QCoreApplication::applicationPid() % 20000);
    launch.limitMs = s_limitMs;
    launch.reverseClient = QStringLiteral("localhost");
    service->setLaunch(launch);
    QVERIFY(service->start());
    QVERIFY2(service->serverUrl().startsWith("csrc://:"), qPrintable(service->serverUrl()));

    QProcess client;
    startClient(client, *service, service->connectId(), "600", {"reverse"});
    QTRY_VERIFY_WITH_TIMEOUT(service->hasClient(), s_limitMs);
    QByteArray said;
    const auto hasDrawn = [&] {
        said += client.readAll();
        return said.contains("drawn");
    };
    QTRY_VERIFY2_WITH_TIMEOUT(hasDrawn(), said.constData(), s_limitMs);
    m_ranks = childrenOf(service->jobProcess());
    QCOMPARE(m_ranks.size(), 2);

    // With a client that is there, too.
    service->stop();

    for (const qint64 rank : qAsConst(m_ranks))
        QVERIFY(!isAlive(rank));
    client.kill();
    QVERIFY(client.waitForFinished());
}

ZO_TEST_MAIN(tst_zoParaViewServiceReal)
#include "tst_zoParaViewServiceReal.moc"
