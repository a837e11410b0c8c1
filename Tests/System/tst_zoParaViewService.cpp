#include "zoParaViewFake.h"
#include "zoTestCase.h"

#include <zoParaViewPicture.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QSignalSpy>

#include <csignal>

namespace
{
const QRegularExpression AnyReason(QStringLiteral("\\S"));
// Far above what it takes, and far below what a wait that nobody ends would.
constexpr int SoonMs = 8000;
constexpr int LongMs = 60000; // the machine may be busy
} // namespace

// What sessions of ParaView's server do when jobs say what real ones said; what every service does is in the contract
// suite.
class tst_zoParaViewService final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void jobHasARankForEachWindow();
    void takenPortsAreTriedInOrder();
    void allPortsTaken();
    void failedStartsAreNamed_data();
    void failedStartsAreNamed();
    void deafServerIsKilled();
    void abortWhileItStarts();
    void clientThatLeftFindsTheServerAgain();
    void threeEndsWithoutAClientEndTheSession();
    void lossesAreNamed_data();
    void lossesAreNamed();
    void gatewayIsRefusedByItsName();
    void releasesMustBeEqual();
    void unreachableDisplayIsNamedBeforeTheLaunch();
    void folderIsPrivateAndGoesWithTheSession();
    void changeIsRefusedOnceAndKeepsTheConfiguration();
    void notesComeOnce();
    void connectCommandFollowsThePreference_data();
    void connectCommandFollowsThePreference();
    void rehearsedWallStandsOnOneDesktop();
    void missingProgramsAreNamed_data();
    void missingProgramsAreNamed();
    void folderThatCannotBeMadeIsNamed();
    void bareEnvironmentIsEnough();
    void hundredWindowsOfOneNode();
    void wallWithoutWindowsIsRefused();
    void oddNamesAreRefused();
    void changeWhileItStartsIsTaken();
    void stopWhileTheServerComesAgain();
    void checkPictureFollowsItsSwitches();
    void checkPictureThatWasOnBeforeTheStart();
    void checkPictureIsBackAfterOffAndOn();
    void clientThatWantsInTakesTheServer();
    void checkPictureWaitsForTheClientToLeave();
    void checkPictureThatFailsLeavesTheSession();
    void checkPictureGoesWithTheSession_data();
    void checkPictureGoesWithTheSession();

private:
    int said(const char* text) const { return messages().filter(QLatin1String(text)).size(); }
    QString shownContent() const
    {
        return m_fake->pictureRequest().value(QLatin1String("scene"))[QLatin1String("content")].toString();
    }

    std::unique_ptr<zoParaViewFake> m_fake;
};

void tst_zoParaViewService::init()
{
    m_fake = std::make_unique<zoParaViewFake>();
}

void tst_zoParaViewService::cleanup()
{
    zoTestCase::cleanup();
    m_fake.reset();
}

void tst_zoParaViewService::jobHasARankForEachWindow()
{
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1", "n2", "n1"}));

    QVERIFY(service->start());

    QCOMPARE(service->runningNodes(), QStringList({"n1", "n2", "n1_2"}));
    QCOMPARE(m_fake->calls().size(), 1);
    const QString call = m_fake->calls().constFirst();
    const QStringList ranks = call.split(QStringLiteral(" : "));
    QCOMPARE(ranks.size(), 3);
    const QString end =
        QStringLiteral(" -x DISPLAY=:0 %1 --pvx %2/wall.pvx --server-port=11111 --connect-id=%3")
            .arg(ZO_FAKE_PVSERVER, service->sessionFolder(), QString::number(service->connectId()));
    QVERIFY2(ranks.at(0).endsWith(QStringLiteral("-np 1 --host n1:1") + end), qPrintable(call));
    QCOMPARE(ranks.at(1), QStringLiteral("-np 1 --host n2:1") + end);
    QCOMPARE(ranks.at(2), QStringLiteral("-np 1 --host n1:1") + end);
    for (const char* part : {"--mca odls_base_sigkill_timeout 0", "--mca oob_tcp_keepalive_probes 2"})
        QVERIFY2(call.contains(QLatin1String(part)), part);
    QVERIFY(call.contains(QStringLiteral("--mca orte_tmpdir_base ") + service->sessionFolder()));
    QVERIFY(service->connectId() > 0 && service->connectId() < 0x80000000U);
}

void tst_zoParaViewService::takenPortsAreTriedInOrder()
{
    m_fake->setJobs("port-in-use 0\nport-in-use 0\naccepting");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));

    QVERIFY(service->start());

    QCOMPARE(service->serverUrl(), QStringLiteral("cs://n1:11113"));
    QCOMPARE(m_fake->calls().size(), 3);
}

void tst_zoParaViewService::allPortsTaken()
{
    m_fake->setJobs("port-in-use 0");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("11111 to 11118 are in use")));

    QVERIFY(!service->start());

    QCOMPARE(m_fake->calls().size(), zoParaViewService::PortTries);
}

void tst_zoParaViewService::failedStartsAreNamed_data()
{
    QTest::addColumn<QByteArray>("job");
    QTest::addColumn<QString>("reason");

    QTest::newRow("missing-file") << QByteArray("missing-file 1") << "Failed to parse XML";
    QTest::newRow("rank-killed") << QByteArray("rank-killed-early 137") << "on n2: mpirun noticed";
    QTest::newRow("says-nothing") << QByteArray("silent 3") << "exit status 3";
}

void tst_zoParaViewService::failedStartsAreNamed()
{
    QFETCH(QByteArray, job);
    QFETCH(QString, reason);
    m_fake->setJobs(job);
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1", "n2"}));
    QSignalSpy stopped(service.get(), &zoClusterService::stopped);
    expectMessage(QtCriticalMsg, QRegularExpression(reason));

    QVERIFY(!service->start());

    QCOMPARE(stopped.count(), 1);
    QVERIFY(service->sessionFolder().isEmpty());
}

// It never answers, and does not hear SIGTERM.
void tst_zoParaViewService::deafServerIsKilled()
{
    m_fake->setJobs("deaf silent");
    const auto service = m_fake->create();
    zoParaViewService::Launch launch = m_fake->launch();
    launch.limitMs = 300;
    service->setLaunch(launch);
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("did not accept clients")));

    QVERIFY(!service->start());

    QCOMPARE(service->jobProcess(), 0);
}

void tst_zoParaViewService::abortWhileItStarts()
{
    m_fake->setJobs("deaf silent");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    QElapsedTimer time;
    connect(service.get(), &zoClusterService::progressChanged, service.get(), [&](const QString& text) {
        if (!text.contains(QStringLiteral("11111")))
            return;
        QMetaObject::invokeMethod(
            service.get(),
            [&] {
                time.start();
                service->abort();
            },
            Qt::QueuedConnection);
    });
    expectMessage(QtInfoMsg, QRegularExpression(QStringLiteral("aborted")));

    QVERIFY(!service->start());

    QVERIFY(time.isValid() && time.elapsed() < SoonMs);
}

void tst_zoParaViewService::clientThatLeftFindsTheServerAgain()
{
    m_fake->setJobs("accepting>client-left 0\naccepting");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    QVERIFY(service->start());
    const QString command = service->connectText();
    QSignalSpy stopped(service.get(), &zoClusterService::stopped);

    m_fake->letGoOn();

    QTRY_COMPARE(m_fake->calls().size(), 2);
    QTRY_VERIFY(messages().filter(QStringLiteral("waits for a client: ")).size() == 1);
    QCOMPARE(service->connectText(), command);
    QCOMPARE(m_fake->calls().at(0), m_fake->calls().at(1));
    QCOMPARE(stopped.count(), 0);
    QVERIFY(service->isRunning());
    QCOMPARE(messages().filter(QStringLiteral("was refused")).size(), 1);
}

void tst_zoParaViewService::threeEndsWithoutAClientEndTheSession()
{
    m_fake->setJobs("accepting>silent 0\nport-in-use 0\nport-in-use 0\naccepting");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    QVERIFY(service->start());
    QSignalSpy stopped(service.get(), &zoClusterService::stopped);
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("three times without a client")));

    m_fake->letGoOn();

    QTRY_COMPARE(stopped.count(), 1);
    QCOMPARE(m_fake->calls().size(), 3);
    QVERIFY(!service->isRunning());
}

void tst_zoParaViewService::lossesAreNamed_data()
{
    QTest::addColumn<QByteArray>("job");
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("reason");

    QTest::newRow("rank-killed") << QByteArray("accepting>rank-killed 137") << "n2"
                                 << "exited on signal 9";
    QTest::newRow("no-display") << QByteArray("accepting>no-display 134") << "n1"
                                << "bad X server connection. DISPLAY=:987";
    QTest::newRow("terminated") << QByteArray("accepting>terminated 1") << ""
                                << "SIGTERM";
}

void tst_zoParaViewService::lossesAreNamed()
{
    QFETCH(QByteArray, job);
    QFETCH(QString, node);
    QFETCH(QString, reason);
    m_fake->setJobs(job);
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1", "n2"}));
    QVERIFY(service->start());
    QSignalSpy stopped(service.get(), &zoClusterService::stopped);
    if (!node.isEmpty())
        expectMessage(QtCriticalMsg,
                      QRegularExpression(QStringLiteral("Node %1 lost: .*%2").arg(node, reason)));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("session lost: .*") + reason));

    m_fake->letGoOn();

    QTRY_COMPARE(stopped.count(), 1);
    QCOMPARE(service->runningNodes(), QStringList());
    for (const zoClusterNodeReport& report : service->nodeReport())
        QCOMPARE(report.state == zoClusterNodeReport::State::Lost, report.id == node);
}

void tst_zoParaViewService::gatewayIsRefusedByItsName()
{
    const auto service = m_fake->create();
    service->applyConfig(
        zoParaViewFake::withWindows("<cluster version=\"1\"><master><network><node "
                                    "name=\"door\"><network><node name=\"n1\"/></network></node>"
                                    "</network></master></cluster>"));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("gateway door$")));

    QVERIFY(!service->start());

    QCOMPARE(m_fake->calls(), QStringList());
}

// A script of another release on one of the machines.
void tst_zoParaViewService::releasesMustBeEqual()
{
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1", "newer"}));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("5\\.11 on n1.*5\\.12 on newer")));

    QVERIFY(!service->start());

    QCOMPARE(m_fake->calls(), QStringList());
}

void tst_zoParaViewService::unreachableDisplayIsNamedBeforeTheLaunch()
{
    qputenv("DISPLAY", ":987");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"localhost"}));
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("Node localhost failed: its display :987")));
    expectMessage(QtCriticalMsg, AnyReason);

    QVERIFY(!service->start());

    QCOMPARE(m_fake->calls(), QStringList());
}

void tst_zoParaViewService::folderIsPrivateAndGoesWithTheSession()
{
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    QVERIFY(service->start());
    const QString folder = service->sessionFolder();

    const auto others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup |
                        QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
    QVERIFY(QFileInfo(folder + "/wall.pvx").isFile());
    QVERIFY((QFileInfo(folder).permissions() & others) == 0);
    QVERIFY((QFileInfo(folder + "/wall.pvx").permissions() & others) == 0);
    service->stop();
    QVERIFY(!QFileInfo::exists(folder));
}

void tst_zoParaViewService::changeIsRefusedOnceAndKeepsTheConfiguration()
{
    const auto service = m_fake->create();
    const QString first = zoParaViewFake::wallOf({"n1", "n2"});
    service->applyConfig(first);
    QVERIFY(service->start());
    QSignalSpy connection(service.get(), &zoParaViewService::connectionChanged);
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("what n2, n3 shows \\(Restart session\\)")));

    service->applyConfig(zoParaViewFake::wallOf({"n1", "n3"}));
    service->applyConfig(zoParaViewFake::wallOf({"n1", "n3"}) + " ");

    QCOMPARE(service->currentConfig(), first);
    QCOMPARE(service->runningNodes(), QStringList({"n1", "n2"}));
    QVERIFY(!service->refusedChange().isEmpty());
    QCOMPARE(connection.count(), 1);
    // Back to where it was, but for what nobody sees.
    service->applyConfig(first + "<!-- the same wall -->");
    QVERIFY(service->refusedChange().isEmpty());
    QCOMPARE(service->currentConfig(), first + "<!-- the same wall -->");
}

void tst_zoParaViewService::notesComeOnce()
{
    const auto service = m_fake->create();
    QString wall = zoParaViewFake::wallOf({"n1", "n2"});
    wall.replace("height=\"1000\"", "height=\"1000\" edgeblending=\"true\"");
    service->applyConfig(wall);

    QVERIFY(service->start());

    QCOMPARE(messages().filter(QStringLiteral("edge blending")).size(), 1);
}

void tst_zoParaViewService::connectCommandFollowsThePreference_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<int>("clients");
    QTest::addColumn<QString>("url");

    const QString own = QSysInfo::machineHostName();
    using Clients = zoParaViewService::Clients;
    QTest::newRow("wall-here") << "localhost" << int(Clients::AsTheWall) << "cs://localhost:11111";
    QTest::newRow("wall-here-anywhere")
        << "localhost" << int(Clients::Anywhere) << QStringLiteral("cs://%1:11111").arg(own);
    QTest::newRow("wall-elsewhere") << "n1" << int(Clients::AsTheWall) << "cs://n1:11111";
    QTest::newRow("this-machine-only") << "n1" << int(Clients::ThisMachine) << "cs://localhost:11111";
}

void tst_zoParaViewService::connectCommandFollowsThePreference()
{
    QFETCH(QString, host);
    QFETCH(int, clients);
    QFETCH(QString, url);
    const auto service = m_fake->create();
    zoParaViewService::Launch launch = m_fake->launch();
    launch.clients = zoParaViewService::Clients(clients);
    service->setLaunch(launch);
    service->applyConfig(zoParaViewFake::wallOf({host}));

    QVERIFY(service->start());

    QCOMPARE(service->connectCommand(),
             QStringList({"paraview", "--server-url=" + url,
                          QStringLiteral("--connect-id=%1").arg(service->connectId())}));
    service->stop();
    QCOMPARE(service->connectText(), QString());
}

void tst_zoParaViewService::rehearsedWallStandsOnOneDesktop()
{
    const auto service = m_fake->create();
    service->setRehearsal({800, 600});
    QFile file(QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    service->applyConfig(QString::fromUtf8(file.readAll()));

    QVERIFY(service->start());

    QVERIFY(!m_fake->calls().constFirst().contains(QStringLiteral("--host")));
    QFile pvx(service->sessionFolder() + "/wall.pvx");
    QVERIFY(pvx.open(QIODevice::ReadOnly));
    static const QRegularExpression s_geometry(
        QStringLiteral("Geometry=\"(\\d+)x(\\d+)\\+(\\d+)\\+(\\d+)\""));
    QRegularExpressionMatchIterator matches = s_geometry.globalMatch(QString::fromUtf8(pvx.readAll()));
    QRect all;
    int count = 0;
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        all |= QRect(match.captured(3).toInt(), match.captured(4).toInt(), match.captured(1).toInt(),
                     match.captured(2).toInt());
        ++count;
    }
    QCOMPARE(count, 4);
    QVERIFY2(QRect(0, 0, 801, 601).contains(all) && all.width() > 700,
             qPrintable(QString::number(all.width())));
}

void tst_zoParaViewService::missingProgramsAreNamed_data()
{
    QTest::addColumn<QString>("mpirun");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("reason");

    const QString plain = QStringLiteral(ZO_TEST_DATA_DIR "/ParaView/accepting.out"); // not executable
    QTest::newRow("no-mpirun") << "no-such-mpirun" << ZO_FAKE_PVSERVER << "no-such-mpirun";
    QTest::newRow("plain-mpirun") << plain << ZO_FAKE_PVSERVER << "accepting.out.*[Pp]ermission denied";
    QTest::newRow("no-pvserver") << ZO_FAKE_MPIRUN << "no-such-pvserver"
                                 << "no-such-pvserver";
    QTest::newRow("plain-pvserver") << ZO_FAKE_MPIRUN << plain << "accepting.out.*[Pp]ermission denied";
}

void tst_zoParaViewService::missingProgramsAreNamed()
{
    QFETCH(QString, mpirun);
    QFETCH(QString, program);
    QFETCH(QString, reason);
    for (const char* host : {"localhost", "n1"}) {
        const auto service = m_fake->create();
        zoParaViewService::Launch launch = m_fake->launch();
        launch.mpirun = mpirun;
        launch.program = program;
        service->setLaunch(launch);
        service->applyConfig(zoParaViewFake::wallOf({QLatin1String(host)}));
        expectMessage(QtCriticalMsg, QRegularExpression(reason));
        if (program != QLatin1String(ZO_FAKE_PVSERVER))
            expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("%1 cannot be used").arg(host)));

        QVERIFY(!service->start());

        QVERIFY(service->sessionFolder().isEmpty());
    }
}

void tst_zoParaViewService::folderThatCannotBeMadeIsNamed()
{
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", "/proc");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("the folder of the session cannot be "
                                                                   "made in /proc: \\S")));

    const bool hasStarted = service->start();
    if (before.isNull())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", before);
    QVERIFY(!hasStarted);

    QCOMPARE(m_fake->calls(), QStringList());
    // Once there is room again.
    QVERIFY(service->start());
}

// As a service of the system has it.
void tst_zoParaViewService::bareEnvironmentIsEnough()
{
    const QByteArray home = qgetenv("HOME");
    const QByteArray language = qgetenv("LC_ALL");
    qunsetenv("HOME");
    qunsetenv("DISPLAY");
    qputenv("LC_ALL", "de_DE.UTF-8");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    const bool hasStarted = service->start();
    qputenv("HOME", home);
    qputenv("LC_ALL", language);

    QVERIFY(hasStarted);
    QVERIFY2(m_fake->calls().constFirst().contains(QLatin1String("DISPLAY=:0")),
             qPrintable(m_fake->calls().constFirst()));
}

void tst_zoParaViewService::hundredWindowsOfOneNode()
{
    QString document = zoParaViewFake::wallOf({"n1"});
    const int from = document.indexOf(QLatin1String("<window "));
    const int to = document.indexOf(QLatin1String("</window>")) + 9;
    document.insert(to, document.mid(from, to - from).repeated(99));
    const auto service = m_fake->create();
    service->applyConfig(document);

    QVERIFY(service->start());

    QCOMPARE(service->runningNodes(), QStringList("n1"));
    QCOMPARE(m_fake->calls().constFirst().count(QLatin1String(" --pvx ")), 100);
    QFile file(service->sessionFolder() + "/wall.pvx");
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().count("<Machine "), 100);
}

void tst_zoParaViewService::wallWithoutWindowsIsRefused()
{
    const auto service = m_fake->create();
    service->applyConfig("<cluster version=\"1\"><master><network><node name=\"n1\"/></network></master>"
                         "</cluster>");
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("no window of an enabled node")));

    QVERIFY(!service->start());

    QCOMPARE(m_fake->calls(), QStringList());
}

// mpirun splits what follows --host at commas and colons, and a name that starts with a dash would be an option of ssh.
void tst_zoParaViewService::oddNamesAreRefused()
{
    for (const char* host : {"a,b", "-oProxyCommand=x", "a b", "a;touch x", "$(x)", "n:4"}) {
        const auto service = m_fake->create();
        service->applyConfig(zoParaViewFake::wallOf({"n1", QLatin1String(host)}));
        const QString name = QRegularExpression::escape(QLatin1String(host));
        expectMessage(QtCriticalMsg,
                      QRegularExpression(QStringLiteral("\"%1\" (cannot be the name of a host|is "
                                                        "no name that mpirun can reach)")
                                             .arg(name)));
        if (QByteArray(host) != "n:4") // which ssh would take
            expectMessage(QtCriticalMsg, QRegularExpression(name + QStringLiteral(" cannot be used")));

        QVERIFY2(!service->start(), host);
    }
    QCOMPARE(m_fake->calls(), QStringList());
}

void tst_zoParaViewService::changeWhileItStartsIsTaken()
{
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    const QString second = zoParaViewFake::wallOf({"n2", "n3"});
    const auto change =
        connect(service.get(), &zoClusterService::progressChanged, service.get(), [&](const QString& text) {
            if (text.contains(QStringLiteral("11111")))
                service->applyConfig(second);
        });

    QVERIFY(service->start());

    disconnect(change);
    QCOMPARE(service->currentConfig(), second);
    QCOMPARE(service->runningNodes(), QStringList({"n2", "n3"}));
    QCOMPARE(m_fake->calls().size(), 2);
    QVERIFY(m_fake->calls().constLast().contains(QLatin1String("--host n3:1")));
}

// The client left, and the new server does not yet accept any.
void tst_zoParaViewService::stopWhileTheServerComesAgain()
{
    m_fake->setJobs("accepting>client-left 0\ndeaf silent");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    QVERIFY(service->start());
    QSignalSpy stopped(service.get(), &zoClusterService::stopped);
    m_fake->letGoOn();
    QTRY_COMPARE_WITH_TIMEOUT(m_fake->calls().size(), 2, LongMs);

    service->setShowTiles(true);
    service->stop();

    QCOMPARE(stopped.count(), 1);
    QCOMPARE(service->jobProcess(), 0);
    QVERIFY(!service->isRunning());
}

// The server ends with each picture, as with each client, and comes again.
void tst_zoParaViewService::checkPictureFollowsItsSwitches()
{
    m_fake->setJobs("serving");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1", "n2"}));
    QVERIFY(service->start());
    QCOMPARE(said("on the wall"), 0);

    service->setShowTestImage(true);
    QTRY_COMPARE_WITH_TIMEOUT(said("check picture is on the wall"), 1, LongMs);
    QCOMPARE(shownContent(), QStringLiteral("test-image"));
    const QJsonObject request = m_fake->pictureRequest();
    QCOMPARE(request.value(QLatin1String("host")).toString(), QStringLiteral("n1"));
    QCOMPARE(request.value(QLatin1String("port")).toInt(), 11111);
    QCOMPARE(request.value(QLatin1String("connectId")).toDouble(), double(service->connectId()));
    QCOMPARE(request.value(QLatin1String("scene"))[QLatin1String("tiles")].toArray().size(), 2);
    QVERIFY(!service->hasClient());
    service->setShowTiles(true);
    QTRY_COMPARE_WITH_TIMEOUT(said("check picture is on the wall"), 2, LongMs);
    QCOMPARE(shownContent(), QStringLiteral("tiles"));
    service->setShowTiles(false);
    QTRY_COMPARE_WITH_TIMEOUT(said("check picture is on the wall"), 3, LongMs);
    QCOMPARE(shownContent(), QStringLiteral("test-image"));
    service->setShowTestImage(false);
    QTRY_COMPARE_WITH_TIMEOUT(said("waits for a client: "), 3, LongMs);

    QCOMPARE(m_fake->calls().size(), 4);
    QCOMPARE(said("check picture is on the wall"), 3);
    QCOMPARE(said("client of ParaView"), 0); // which the picture is not
    QVERIFY(service->isRunning());
}

void tst_zoParaViewService::checkPictureThatWasOnBeforeTheStart()
{
    m_fake->setJobs("serving");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    service->setShowTestImage(true);
    service->setShowTiles(true);

    QVERIFY(service->start());

    QTRY_COMPARE_WITH_TIMEOUT(said("check picture is on the wall"), 1, LongMs);
    QCOMPARE(shownContent(), QStringLiteral("tiles"));
    QCOMPARE(m_fake->calls().size(), 1);
}

// Before the server told that the first picture is gone, which is nobody's client.
void tst_zoParaViewService::checkPictureIsBackAfterOffAndOn()
{
    m_fake->setJobs("serving");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    service->setShowTiles(true);
    QVERIFY(service->start());
    QTRY_COMPARE_WITH_TIMEOUT(said("check picture is on the wall"), 1, LongMs);

    service->setShowTiles(false);
    QVERIFY(!service->hasClient());
    service->setShowTiles(true);

    QTRY_COMPARE_WITH_TIMEOUT(said("check picture is on the wall"), 2, LongMs);
    QCOMPARE(said("has left"), 0);
    // Before it was shown.
    service->setShowTiles(false);
    service->setShowTestImage(true);
    service->setShowTestImage(false);
    service->setShowTiles(true);
    QTRY_COMPARE_WITH_TIMEOUT(said("check picture is on the wall"), 3, LongMs);
    QVERIFY(service->isRunning());
}

void tst_zoParaViewService::clientThatWantsInTakesTheServer()
{
    m_fake->setJobs("serving");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    service->setShowTiles(true);
    QVERIFY(service->start());
    QTRY_COMPARE_WITH_TIMEOUT(said("check picture is on the wall"), 1, LongMs);
    QProcess client;
    client.start("sleep", {"600"});

    m_fake->wantServer();
    QTRY_COMPARE_WITH_TIMEOUT(said("check picture makes way"), 1, LongMs);
    QTRY_COMPARE_WITH_TIMEOUT(said("waits for a client: "), 1, LongMs);
    m_fake->connectClient(client.processId());

    QTRY_VERIFY_WITH_TIMEOUT(service->hasClient(), LongMs);
    QCOMPARE(said("The check picture is off"), 1);
    client.kill();
    QVERIFY(client.waitForFinished());
    QTRY_COMPARE_WITH_TIMEOUT(said("waits for a client: "), 2, LongMs);
    // It was on the wall until somebody came, and is not until somebody asks for it.
    QVERIFY(!service->hasClient());
    QCOMPARE(said("check picture is on the wall"), 1);
    service->setShowTiles(false);
    service->setShowTiles(true);
    QTRY_COMPARE_WITH_TIMEOUT(said("check picture is on the wall"), 2, LongMs);
}

void tst_zoParaViewService::checkPictureWaitsForTheClientToLeave()
{
    m_fake->setJobs("serving");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    QVERIFY(service->start());
    QProcess client;
    client.start("sleep", {"600"});
    m_fake->connectClient(client.processId());
    QTRY_VERIFY_WITH_TIMEOUT(service->hasClient(), LongMs);
    QCOMPARE(said("A client of ParaView is connected"), 1);

    service->setShowTestImage(true);
    QCOMPARE(said("waits until the client of ParaView has left"), 1);
    QVERIFY(service->hasClient());
    client.kill();
    QVERIFY(client.waitForFinished());

    QTRY_COMPARE_WITH_TIMEOUT(said("check picture is on the wall"), 1, LongMs);
    QCOMPARE(said("The client of ParaView left"), 1);
    QVERIFY(!service->hasClient());
}

void tst_zoParaViewService::checkPictureThatFailsLeavesTheSession()
{
    qputenv("FAKE_PVPYTHON", "failed");
    m_fake->setJobs("serving");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    QVERIFY(service->start());
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("cannot be shown: no answer")));

    service->setShowTiles(true);
    QTRY_COMPARE_WITH_TIMEOUT(said("check picture cannot be shown"), 1, LongMs);

    QVERIFY(service->isRunning());
    QCOMPARE(m_fake->calls().size(), 1);
    qputenv("FAKE_PVPYTHON", "client");
    service->setShowTiles(false);
    service->setShowTiles(true);
    QTRY_COMPARE_WITH_TIMEOUT(said("check picture is on the wall"), 1, LongMs);
}

void tst_zoParaViewService::checkPictureGoesWithTheSession_data()
{
    QTest::addColumn<bool>("isLost");
    QTest::newRow("stopped") << false;
    QTest::newRow("lost") << true;
}

void tst_zoParaViewService::checkPictureGoesWithTheSession()
{
    QFETCH(bool, isLost);
    m_fake->setJobs("serving");
    const auto service = m_fake->create();
    service->applyConfig(zoParaViewFake::wallOf({"n1"}));
    service->setShowTiles(true);
    QVERIFY(service->start());
    QTRY_COMPARE_WITH_TIMEOUT(said("check picture is on the wall"), 1, LongMs);
    const auto picture = service->findChild<zoParaViewPicture*>();
    QVERIFY(picture != nullptr && picture->isShown());
    const qint64 process = picture->processId();
    QSignalSpy stopped(service.get(), &zoClusterService::stopped);
    if (isLost) {
        expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("session lost: .*signal 9")));
        ::kill(pid_t(service->jobProcess()), SIGKILL);
    } else {
        service->stop();
    }

    QTRY_COMPARE_WITH_TIMEOUT(stopped.count(), 1, LongMs);
    QVERIFY(!picture->isRunning());
    QCOMPARE(::kill(pid_t(process), 0), -1);
}

ZO_TEST_MAIN(tst_zoParaViewService)
#include "tst_zoParaViewService.moc"
