#include "zoNetns.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

// The host with nodes on machines of their own: two networks, one of them behind a gateway that forwards nothing.
class tst_zohostNetns final : public zoTestCase
{
    Q_OBJECT

private slots:
    void cleanup();
    void sessionRunsOnAllMachines();
    void encryptedNetworkRunsOverSshAlone();
    void cutMachineIsLostAndTheOthersGoOn();
    void killedHostLeavesNothing_data();
    void killedHostLeavesNothing();
    void failedNodesAreNamedWithTheirReasons();

private:
    void start(QProcess& host, const QString& network);
    static QByteArray programsOf(const QStringList& machines);

    QTemporaryDir m_folder;
};

namespace
{
constexpr int s_limitMs = 60000;
constexpr int s_cutMs = 30000;

const QStringList& machines()
{
    static const QStringList names{"n1", "n2", "gateway", "i1", "i2"};
    return names;
}

QString wall(const QString& attributes = {})
{
    return QStringLiteral("<network%1><node name=\"n1\"/><node name=\"n2\"/><node name=\"gateway\"><network>"
                          "<node name=\"i1\"/><node name=\"i2\"/></network></node></network>")
        .arg(attributes);
}
} // namespace

void tst_zohostNetns::start(QProcess& host, const QString& network)
{
    QFile file(m_folder.filePath("wall.zhpc"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QStringLiteral("<cluster version=\"1\"><master>%1</master></cluster>").arg(network).toUtf8());
    file.close();
    host.setProcessChannelMode(QProcess::MergedChannels);
    host.start(QStringLiteral(ZO_HOST_FILE),
               {"--engine", "nodes", "--non-interactive", "--start", "--config", file.fileName()});
    QVERIFY(host.waitForStarted());
}

// Also after a test that failed in the middle.
void tst_zohostNetns::cleanup()
{
    for (const char* machine : {"n2", "n3"})
        zoNetns::order(QStringLiteral("join ") + QLatin1String(machine));
    zoTestCase::cleanup();
}

QByteArray tst_zohostNetns::programsOf(const QStringList& names)
{
    QByteArray all;
    for (const QString& name : names)
        all += zoNetns::programs(name);
    return all;
}

void tst_zohostNetns::sessionRunsOnAllMachines()
{
    QProcess host;
    QByteArray said;
    connect(&host, &QProcess::readyRead, this, [&] { said += host.readAll(); });
    start(host, wall());
    QTRY_VERIFY2_WITH_TIMEOUT(said.contains("\nsession: 5 nodes\n"), said.constData(), s_limitMs);
    for (const QString& machine : machines())
        QVERIFY2(said.contains("node: " + machine.toLatin1() + " running\n"), said.constData());
    QVERIFY(zoNetns::programs(QStringLiteral("n1")).contains("orted"));
    QVERIFY(zoNetns::programs(QStringLiteral("i1")).contains("orted"));
    host.terminate();
    QVERIFY(host.waitForFinished(s_limitMs));
    QTRY_COMPARE_WITH_TIMEOUT(programsOf(machines()), QByteArray(), s_limitMs);
}

// What MPI sends is not encrypted.
void tst_zohostNetns::encryptedNetworkRunsOverSshAlone()
{
    QProcess host;
    QByteArray said;
    connect(&host, &QProcess::readyRead, this, [&] { said += host.readAll(); });
    start(host,
          QStringLiteral("<network encrypted=\"true\"><node name=\"n1\"/><node name=\"n2\"/></network>"));
    QTRY_VERIFY2_WITH_TIMEOUT(said.contains("\nsession: 2 nodes\n"), said.constData(), s_limitMs);
    QVERIFY(!zoNetns::programs(QStringLiteral("n1")).contains("orted"));
    host.terminate();
    QVERIFY(host.waitForFinished(s_limitMs));
    QTRY_COMPARE_WITH_TIMEOUT(programsOf(machines()), QByteArray(), s_limitMs);
}

void tst_zohostNetns::cutMachineIsLostAndTheOthersGoOn()
{
    QProcess host;
    QByteArray said;
    connect(&host, &QProcess::readyRead, this, [&] { said += host.readAll(); });
    start(host, wall());
    QTRY_VERIFY2_WITH_TIMEOUT(said.contains("\nsession: 5 nodes\n"), said.constData(), s_limitMs);
    QCOMPARE(zoNetns::order(QStringLiteral("cut n2")), QByteArray("done"));
    QTRY_VERIFY2_WITH_TIMEOUT(said.contains("node: n2 lost: "), said.constData(), s_limitMs);
    // On the other side of the cable nobody shows a wall that nobody steers. Left alone mpirun's daemon would wait for
    // the cable for longer than this.
    QTRY_COMPARE_WITH_TIMEOUT(zoNetns::programs(QStringLiteral("n2")), QByteArray(), s_cutMs);
    QCOMPARE(zoNetns::order(QStringLiteral("join n2")), QByteArray("done"));
    QTRY_VERIFY_WITH_TIMEOUT(zoNetns::programs(QStringLiteral("n1")).contains("ZOKE"), s_limitMs);
    QVERIFY2(!said.contains("n1 lost") && !said.contains("i1 lost"), said.constData());
    host.terminate();
    QVERIFY(host.waitForFinished(s_limitMs));
    QTRY_COMPARE_WITH_TIMEOUT(programsOf(machines()), QByteArray(), s_limitMs);
}

void tst_zohostNetns::killedHostLeavesNothing_data()
{
    QTest::addColumn<QString>("network");
    QTest::newRow("MPI") << wall();
    QTest::newRow("pipes") << wall(QStringLiteral(" encrypted=\"true\""));
}

void tst_zohostNetns::killedHostLeavesNothing()
{
    QFETCH(QString, network);
    QProcess host;
    QByteArray said;
    connect(&host, &QProcess::readyRead, this, [&] { said += host.readAll(); });
    start(host, network);
    QTRY_VERIFY2_WITH_TIMEOUT(said.contains("\nsession: 5 nodes\n"), said.constData(), s_limitMs);
    ::kill(pid_t(host.processId()), SIGKILL);
    QVERIFY(host.waitForFinished(s_limitMs));
    QTRY_COMPARE_WITH_TIMEOUT(programsOf(machines()), QByteArray(), s_limitMs);
}

void tst_zohostNetns::failedNodesAreNamedWithTheirReasons()
{
    QProcess host;
    QByteArray said;
    connect(&host, &QProcess::readyRead, this, [&] { said += host.readAll(); });
    QCOMPARE(zoNetns::order(QStringLiteral("cut n3")), QByteArray("done"));
    start(host, QStringLiteral(
                    "<network><node name=\"n1\"/><node name=\"nowhere\"/><node name=\"n3\"/></network>"));
    QVERIFY(host.waitForFinished(s_limitMs));
    QCOMPARE(zoNetns::order(QStringLiteral("join n3")), QByteArray("done"));
    said += host.readAll();
    QCOMPARE(host.exitCode(), 1);
    QVERIFY2(said.contains("node: nowhere failed: ") && said.contains("resolve hostname"), said.constData());
    QVERIFY2(said.contains("node: n3 failed: "), said.constData());
    QVERIFY2(!said.contains("node: n1 failed"), said.constData());
    QTRY_COMPARE_WITH_TIMEOUT(programsOf(machines()), QByteArray(), s_limitMs);
}

ZO_TEST_MAIN(tst_zohostNetns)
#include "tst_zohostNetns.moc"
