#include "zoTestCase.h"

#include <zoNodeClusterService.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <memory>

namespace
{
QString documentOf(const QStringList& nodes)
{
    QString text = QStringLiteral("<cluster version=\"1\"><master><network>");
    for (const QString& node : nodes)
        text += QStringLiteral("<node name=\"%1\"/>").arg(node.toHtmlEscaped());
    return text + QStringLiteral("</network></master></cluster>");
}

constexpr int s_limitMs = 60000;

// A node with a window that no server can open: nobody has such eyes.
QString documentWithImpossibleEyes()
{
    return documentOf({"n1"}).replace(
        QStringLiteral("</cluster>"),
        QStringLiteral(
            "<projection name=\"P\" type=\"plane\" x1=\"-1\" y1=\"-1\" z1=\"-1\" x2=\"1\" y2=\"-1\" "
            "z2=\"-1\" x3=\"1\" y3=\"1\" z3=\"-1\"/><display eyeseparation=\"1e300\">"
            "<window node=\"n1\" width=\"40\" height=\"30\"><viewport projection=\"P\" "
            "position=\"fill\" x1=\"0\" y1=\"0\" x2=\"1\" y2=\"1\"/></window></display></cluster>"));
}

// Process and its parent, from the system; 0 for none.
qint64 parentOf(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray stat = file.readAll();
    return stat.mid(stat.lastIndexOf(')') + 2).split(' ').value(1).toLongLong();
}

bool isAlive(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray stat = file.readAll();
    // What only waits to be collected is gone.
    return !stat.mid(stat.lastIndexOf(')') + 2).startsWith('Z');
}

const QRegularExpression AnyReason(QStringLiteral("\\S"));
} // namespace

// What sessions on node servers do when something goes wrong; what every service does is in the contract suite.
class tst_zoNodeClusterService final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void terminatedControllerEndsTheSession();
    void startsAndStopsLeaveNothing();
    void launchFailuresAreNamed_data();
    void launchFailuresAreNamed();
    void noiseOfALoginIsNoFailure_data();
    void noiseOfALoginIsNoFailure();
    void mpiThatDoesNotWorkLeavesPipes();
    void missingControllerFailsTheStart();
    void unreachableNodesAreRehearsedWhenThePersonSaysSo();
    void hostsThatAreThisMachineAreRehearsed();
    void rehearsedWallHasPictures();
    void slowNodeIsWaitedFor();
    void remarksNameTheirNodes();
    void windowThatCannotBeOpenedFailsTheStart();
    void nodeInUseHoldsUpNoOtherNode();
    void lossesThatAreToldTogetherAreOneChange();
    void speedTestNamesEachNodeAndCountsTheSlowest();

private:
    std::unique_ptr<zoNodeClusterService> createRehearsal() const;
    std::unique_ptr<zoNodeClusterService> createLaunched() const;
    // Controller, head and servers of a running session.
    QList<qint64> processesOf(const zoNodeClusterService& service) const;

    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_zoNodeClusterService::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void tst_zoNodeClusterService::cleanup()
{
    zoTestCase::cleanup();
    m_directory.reset();
}

std::unique_ptr<zoNodeClusterService> tst_zoNodeClusterService::createRehearsal() const
{
    auto service = createLaunched();
    service->setRehearsal(true);
    return service;
}

std::unique_ptr<zoNodeClusterService> tst_zoNodeClusterService::createLaunched() const
{
    zoNodeClusterService::Launch launch;
    launch.program = QStringLiteral(ZO_SERVER_FILE);
    launch.remoteProgram = launch.program;
    launch.pattern = QStringList({QStringLiteral(ZO_LAUNCHER), "%h", "%program"});
    launch.mpi = zoNodeClusterService::Mpi::Never; // the launcher is none of a whole job
    auto service = std::make_unique<zoNodeClusterService>(launch);
    service->setLockDirectory(m_directory->path());
    service->setMemoryPerNode(0);
    return service;
}

QList<qint64> tst_zoNodeClusterService::processesOf(const zoNodeClusterService& service) const
{
    QList<qint64> processes{service.controllerProcess(), parentOf(service.nodeProcess("n1"))};
    for (const char* node : {"n1", "n2"})
        processes << service.nodeProcess(node);
    return processes;
}

void tst_zoNodeClusterService::terminatedControllerEndsTheSession()
{
    const auto service = createRehearsal();
    service->applyConfig(documentOf({"n1", "n2"}));
    QVERIFY(service->start());
    const QList<qint64> processes = processesOf(*service);
    QSignalSpy stopped(service.get(), &zoClusterService::stopped);
    expectMessage(QtCriticalMsg, AnyReason);

    kill(pid_t(processes.at(0)), SIGTERM);

    QTRY_COMPARE(stopped.count(), 1);
    for (const qint64 process : processes)
        QTRY_VERIFY2_WITH_TIMEOUT(!isAlive(process), qPrintable(QString::number(processes.indexOf(process))),
                                  s_limitMs);
}

void tst_zoNodeClusterService::startsAndStopsLeaveNothing()
{
    constexpr int Times = 20;
    QList<qint64> processes;
    const auto service = createRehearsal();
    service->applyConfig(documentOf({"n1", "n2"}));
    for (int i = 0; i < Times; ++i) {
        QVERIFY(service->start());
        processes += processesOf(*service);
        service->stop();
        // A machine may be so busy that stop() ends the controller by force; its servers follow then by themselves.
        for (const qint64 process : qAsConst(processes))
            QTRY_VERIFY_WITH_TIMEOUT(!isAlive(process), s_limitMs);
        processes.clear();
    }
}

void tst_zoNodeClusterService::launchFailuresAreNamed_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("reason");

    QTest::newRow("unknown-host") << "failing" << ZO_SERVER_FILE << "Could not resolve hostname";
    QTest::newRow("missing-program") << "n1"
                                     << "/nowhere/ZOKEClusterServer"
                                     << "not found|No such file";
    QTest::newRow("other-version") << "other-version" << ZO_SERVER_FILE << "9\\.8\\.7.*" ZO_VERSION;
    QTest::newRow("too-much-noise") << "noise-65537" << ZO_SERVER_FILE << "too much before the first message";
    QTest::newRow("garbage") << "garbage" << ZO_SERVER_FILE << "too much before the first message";
    QTest::newRow("half-a-message") << "half" << ZO_SERVER_FILE << "its server ended: .";
    QTest::newRow("output-closed") << "closed" << ZO_SERVER_FILE << "standard output is closed";
    QTest::newRow("name-is-a-line") << "a\nb" << ZO_SERVER_FILE << "cannot be the name of a host";
    QTest::newRow("name-has-quotes") << "a\"$(id)" << ZO_SERVER_FILE << "cannot be the name of a host";
    QTest::newRow("name-is-too-long")
        << QString(256, QLatin1Char('h')) << ZO_SERVER_FILE << "cannot be the name of a host";
    QTest::newRow("name-is-an-option")
        << "-oProxyCommand=x" << ZO_SERVER_FILE << "\"-oProxyCommand=x\" cannot";
    QTest::newRow("name-is-a-command") << "a;id" << ZO_SERVER_FILE << "\"a;id\" cannot";
    QTest::newRow("program-is-a-command") << "n1"
                                          << "ZOKEClusterServer;id"
                                          << "ZOKEClusterServer;id";
}

void tst_zoNodeClusterService::launchFailuresAreNamed()
{
    QFETCH(QString, host);
    QFETCH(QString, program);
    QFETCH(QString, reason);
    const auto service = createLaunched();
    zoNodeClusterService::Launch launch;
    launch.program = QStringLiteral(ZO_SERVER_FILE);
    launch.remoteProgram = program;
    launch.pattern = QStringList({QStringLiteral(ZO_LAUNCHER), "%h", "%program"});
    launch.mpi = zoNodeClusterService::Mpi::Never; // the launcher is none of a whole job
    service->setLaunch(launch);
    service->applyConfig(documentOf({host}));
    expectMessage(QtCriticalMsg, QRegularExpression(QRegularExpression::escape(host) + QStringLiteral(".*(") +
                                                    reason + QLatin1Char(')')));
    expectMessage(QtCriticalMsg, AnyReason);

    QVERIFY(!service->start());
}

void tst_zoNodeClusterService::noiseOfALoginIsNoFailure_data()
{
    QTest::addColumn<QString>("host");
    for (const char* host : {"talkative", "noise-65535", "noise-65536", "many-errors"})
        QTest::newRow(host) << QString::fromLatin1(host);
}

void tst_zoNodeClusterService::noiseOfALoginIsNoFailure()
{
    QFETCH(QString, host);
    const auto service = createLaunched();
    service->applyConfig(documentOf({host}));

    QVERIFY(service->start());

    QCOMPARE(service->runningNodes(), QStringList(host));
    QVERIFY((service->capabilities() & zoClusterService::Rehearses) == 0);
}

// A launcher that starts servers and not what mpirun wants to start by it.
void tst_zoNodeClusterService::mpiThatDoesNotWorkLeavesPipes()
{
    const auto service = createLaunched();
    zoNodeClusterService::Launch launch;
    launch.program = QStringLiteral(ZO_SERVER_FILE);
    launch.remoteProgram = QStringLiteral(ZO_SERVER_FILE);
    launch.pattern = QStringList({QStringLiteral(ZO_LAUNCHER), "%h", "%program"});
    launch.mpi = zoNodeClusterService::Mpi::BetweenMachines;
    service->setLaunch(launch);
    service->applyConfig(documentOf({"n1", "n2"}));

    QVERIFY(service->start());

    QCOMPARE(service->runningNodes(), QStringList({"n1", "n2"}));
}

void tst_zoNodeClusterService::missingControllerFailsTheStart()
{
    zoNodeClusterService::Launch launch;
    launch.program = m_directory->filePath("nothing");
    zoNodeClusterService service(launch);
    service.applyConfig(documentOf({"n1"}));
    QSignalSpy stopped(&service, &zoClusterService::stopped);
    expectMessage(QtCriticalMsg, AnyReason);

    QVERIFY(!service.start());

    QCOMPARE(stopped.count(), 1);
}

void tst_zoNodeClusterService::unreachableNodesAreRehearsedWhenThePersonSaysSo()
{
    const auto service = createLaunched();
    service->applyConfig(documentOf({"failing"}));
    int asked = 0;
    bool answer = false;
    service->setRehearsalQuestion([&] {
        ++asked;
        return answer;
    });
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("failing")));
    expectMessage(QtCriticalMsg, AnyReason);
    QVERIFY(!service->start());
    QCOMPARE(asked, 1);

    answer = true;
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("failing")));
    QVERIFY(service->start());

    QCOMPARE(asked, 2);
    QVERIFY((service->capabilities() & zoClusterService::Rehearses) != 0);
    // One node that can be reached, and nobody is asked.
    service->stop();
    service->applyConfig(documentOf({"n1", "failing"}));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("failing")));
    expectMessage(QtCriticalMsg, AnyReason);
    QVERIFY(!service->start());
    QCOMPARE(asked, 2);
}

void tst_zoNodeClusterService::hostsThatAreThisMachineAreRehearsed()
{
    const auto service = createLaunched();
    service->applyConfig(documentOf({"localhost", "127.0.0.1", "localhost"}));

    QVERIFY((service->capabilities() & zoClusterService::Rehearses) != 0);
    QVERIFY(service->start());

    QCOMPARE(service->runningNodes(), QStringList({"localhost", "127.0.0.1", "localhost_2"}));
    QVERIFY((service->capabilities() & zoClusterService::Rehearses) != 0);
}

void tst_zoNodeClusterService::rehearsedWallHasPictures()
{
    QFile file(QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const auto service = createRehearsal();
    service->applyConfig(QString::fromUtf8(file.readAll()));
    QVERIFY(service->start());
    zoNodeClusterService::Pictures black;
    zoNodeClusterService::Pictures tiles;
    QString reason;

    QVERIFY2(service->takePictures(black, reason), qPrintable(reason));
    service->setShowTiles(true);
    QVERIFY2(service->takePictures(tiles, reason), qPrintable(reason));

    QCOMPARE(tiles.windows.keys(),
             QStringList({"wall-r1-c1-1", "wall-r1-c2-1", "wall-r2-c1-1", "wall-r2-c2-1"}));
    for (const QString& window : tiles.windows.keys()) {
        const QImage picture = QImage::fromData(tiles.windows.value(window), "PNG");
        QCOMPARE(picture.size(), QSize(1920, 1200));
        QVERIFY(picture != QImage::fromData(black.windows.value(window), "PNG"));
    }
    QVERIFY(!QImage::fromData(tiles.wall, "PNG").isNull());
    QVERIFY(tiles.wall != black.wall);
    QVERIFY(service->isRunning());
    QCOMPARE(service->runningNodes().size(), 4);
}

void tst_zoNodeClusterService::slowNodeIsWaitedFor()
{
    QFile file(QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const auto service = createRehearsal();
    service->applyConfig(QString::fromUtf8(file.readAll()));
    QVERIFY(service->start());
    constexpr int DelayMs = 300;
    constexpr qint64 MicrosecondsPerMillisecond = 1000;

    service->delayNode("wall-r1-c1", DelayMs);
    service->setShowTiles(true);

    // The others wait for the slow one, and it for nobody.
    const auto waitOf = [&](int node) { return service->nodeReport().at(node).barrierWait; };
    QTRY_VERIFY(waitOf(3) > DelayMs / 2 * MicrosecondsPerMillisecond);
    QVERIFY(waitOf(0) < waitOf(3));
}

// Also where several nodes share a program, because there are more of them than programs.
void tst_zoNodeClusterService::remarksNameTheirNodes()
{
    constexpr int Count = 30;
    QString displays = QStringLiteral("<projection name=\"P\" type=\"plane\" x1=\"-1\" y1=\"-1\" z1=\"-1\" "
                                      "x2=\"1\" y2=\"-1\" z2=\"-1\" x3=\"1\" y3=\"1\" z3=\"-1\"/><display>");
    QStringList names;
    for (int i = 1; i <= Count; ++i) {
        names << QStringLiteral("n%1").arg(i);
        displays +=
            QStringLiteral("<window node=\"%1\" screen=\"0\" x=\"0\" y=\"0\" width=\"400\" height=\"300\">"
                           "<viewport projection=\"P\" position=\"fill\" x1=\"0\" y1=\"0\" x2=\"1\" "
                           "y2=\"1\" eye=\"mono\"/></window>")
                .arg(names.constLast());
    }
    const auto service = createRehearsal();
    service->applyConfig(documentOf(names).replace(QStringLiteral("</cluster>"),
                                                   displays + QStringLiteral("</display></cluster>")));

    QVERIFY(service->start());

    QSet<qint64> programs;
    for (const QString& name : qAsConst(names))
        programs << service->nodeProcess(name);
    QVERIFY(programs.size() < Count);
    // "Node n1: window n1-1: 80 × 60 pixels, raster"
    static const QRegularExpression form(QStringLiteral("Node (n\\d+): window (n\\d+)-1: "));
    QStringList told;
    const QStringList lines = messages();
    for (const QString& line : lines) {
        const QRegularExpressionMatch match = form.match(line);
        if (!match.hasMatch())
            continue;
        QCOMPARE(match.captured(1), match.captured(2));
        told << match.captured(1);
    }
    told.sort();
    names.sort();
    QCOMPARE(told, names);
}

void tst_zoNodeClusterService::windowThatCannotBeOpenedFailsTheStart()
{
    const auto service = createLaunched();
    service->applyConfig(documentWithImpossibleEyes());
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("n1 failed: \\S")));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("not started: n1 cannot be used")));

    QVERIFY(!service->start());
}

// The change that follows is put into effect as well.
void tst_zoNodeClusterService::nodeInUseHoldsUpNoOtherNode()
{
    const auto other = createLaunched();
    other->applyConfig(documentOf({"n2"}));
    QVERIFY(other->start());
    const auto service = createLaunched();
    service->applyConfig(documentOf({"n1"}));
    QVERIFY(service->start());
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("n2 not added: ")));

    service->applyConfig(documentOf({"n1", "n2"}));
    QTRY_COMPARE(service->nodeReport().size(), 2);
    QTRY_VERIFY(service->nodeReport().at(1).state == zoClusterNodeReport::State::Failed);
    service->applyConfig(documentOf({"n1", "n3"}));

    QTRY_COMPARE(service->runningNodes(), QStringList({"n1", "n3"}));
}

// A controller that tells two of them in one piece, and the third after the change was seen.
void tst_zoNodeClusterService::lossesThatAreToldTogetherAreOneChange()
{
    zoNodeClusterService::Launch launch = zoNodeClusterService::defaultLaunch();
    launch.program = QStringLiteral(ZO_CONTROLLER);
    zoNodeClusterService service(launch);
    service.setRehearsal(true);
    service.applyConfig(documentOf({"n1", "n2", "n3", "n4"}));
    QVERIFY(service.start());
    QList<QStringList> seen;
    connect(&service, &zoClusterService::runningNodesChanged, this, [&] { seen << service.runningNodes(); });
    for (const char* node : {"n1", "n2", "n3"})
        expectMessage(QtCriticalMsg, QRegularExpression(QLatin1String(node)));

    service.setShowTiles(true);
    QTRY_COMPARE(seen, QList<QStringList>({{"n3", "n4"}}));
    service.setShowTiles(false);

    QTRY_COMPARE(seen, QList<QStringList>({{"n3", "n4"}, {"n4"}}));
    QVERIFY(service.isRunning());
}

void tst_zoNodeClusterService::speedTestNamesEachNodeAndCountsTheSlowest()
{
    constexpr double Mebibyte = 1024 * 1024;
    constexpr double Rounded = 0.05; // of what the log says
    const auto service = createRehearsal();
    service->applyConfig(documentOf({"n1", "n2", "n3"}));
    QVERIFY(service->start());

    const QStringList figures = service->speedTest();

    QCOMPARE(figures.size(), 3);
    static const QRegularExpression form(
        QStringLiteral("Node (n\\d): sent ([0-9.]+) MByte/s, received ([0-9.]+) MByte/s"));
    QStringList told;
    QList<double> sent;
    QList<double> received;
    const QStringList lines = messages();
    for (const QString& line : lines) {
        const QRegularExpressionMatch match = form.match(line);
        if (!match.hasMatch())
            continue;
        told << match.captured(1);
        sent << match.captured(2).toDouble();
        received << match.captured(3).toDouble();
    }
    QCOMPARE(told, QStringList({"n1", "n2", "n3"}));
    const auto slowest = [](const QList<double>& rates) {
        return *std::min_element(rates.begin(), rates.end());
    };
    QVERIFY(qAbs(figures.at(0).toDouble() / Mebibyte - slowest(sent)) <= 2 * Rounded);
    QVERIFY(qAbs(figures.at(1).toDouble() / Mebibyte - slowest(received)) <= 2 * Rounded);
}

ZO_TEST_MAIN(tst_zoNodeClusterService)
#include "tst_zoNodeClusterService.moc"
