#include "zoTestCase.h"

#include <zoPvServerLog.h>

#include <QFile>
#include <QTest>

// What real jobs said is read as the states that they were in.
class tst_zoPvServerLog final : public zoTestCase
{
    Q_OBJECT

private slots:
    void recordedJobEnds_data();
    void recordedJobEnds();
    void firstLinesAreNotReady();
    void framesOfAStackAreNoReason();
    void statesFollowTheLines();
    void refusedClientIsCounted();
    void signalOfTheOthersIsNoReason();

private:
    static void feed(zoPvServerLog& log, const QString& name);
};

void tst_zoPvServerLog::feed(zoPvServerLog& log, const QString& name)
{
    for (const char* stream : {".err", ".out"}) {
        QFile file(QStringLiteral(ZO_TEST_DATA_DIR "/ParaView/") + name + QLatin1String(stream));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QList<QByteArray> lines = file.readAll().split('\n');
        for (const QByteArray& line : lines)
            log.add(QString::fromUtf8(line));
    }
}

void tst_zoPvServerLog::recordedJobEnds_data()
{
    using End = zoPvServerLog::End;
    using State = zoPvServerLog::State;
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("culprit");
    QTest::addColumn<QString>("reason");

    QTest::newRow("port-in-use") << 0 << int(State::Starting) << int(End::PortInUse) << -1
                                 << "Failed to set up server socket.";
    QTest::newRow("missing-file") << 1 << int(State::Starting) << int(End::BadFile) << 1
                                  << "Failed to parse XML: nowhere.pvx";
    QTest::newRow("client-left") << 0 << int(State::Left) << int(End::ClientLeft) << -1 << "";
    QTest::newRow("client-killed") << 0 << int(State::Left) << int(End::ClientLeft) << -1 << "";
    QTest::newRow("no-display") << 134 << int(State::Connected) << int(End::Lost) << 0
                                << "bad X server connection. DISPLAY=:987. Aborting.";
    QTest::newRow("rank-killed")
        << 137 << int(State::Accepting) << int(End::Lost) << 1
        << "mpirun noticed that process rank 1 with PID 0 on node vm exited on signal 9 (Killed).";
    QTest::newRow("terminated") << 1 << int(State::Accepting) << int(End::Lost) << -1 << "Signal: SIGTERM";
    QTest::newRow("accepting") << -9 << int(State::Accepting) << int(End::Lost) << -1
                               << "mpirun was killed by signal 9";
    QTest::newRow("reverse") << 0 << int(State::Accepting) << int(End::NoClient) << -1 << "";
}

void tst_zoPvServerLog::recordedJobEnds()
{
    QFETCH(int, exitCode);
    QFETCH(int, state);
    QFETCH(int, end);
    QFETCH(int, culprit);
    QFETCH(QString, reason);
    zoPvServerLog log({QString(), QString()});

    feed(log, QString::fromLatin1(QTest::currentDataTag()));

    QCOMPARE(int(log.state()), state);
    QCOMPARE(int(log.end(exitCode)), end);
    QCOMPARE(log.culprit(), culprit);
    if (!reason.isEmpty())
        QCOMPARE(log.reason(exitCode), reason);
}

// Both are printed too when the port is taken.
void tst_zoPvServerLog::firstLinesAreNotReady()
{
    zoPvServerLog log;

    log.add("Waiting for client...");
    log.add("Connection URL: cs://vm:11111");

    QCOMPARE(int(log.state()), int(zoPvServerLog::State::Starting));
}

void tst_zoPvServerLog::framesOfAStackAreNoReason()
{
    zoPvServerLog log;

    log.add("pvserver: libvtk.so: cannot open");
    const QString reason = log.reason(1);
    log.add("13      0x55cb128ce789 pvserver(error+0x2789) [0x55cb128ce789]");
    log.add(QString());

    QVERIFY2(reason.contains("cannot open"), qPrintable(reason));
    QCOMPARE(log.reason(1), reason);

    zoPvServerLog other;
    other.add("13      0x55cb128ce789 pvserver(error+0x2789) [0x55cb128ce789]");
    QCOMPARE(other.reason(1), QStringLiteral("exit status 1"));
}

void tst_zoPvServerLog::statesFollowTheLines()
{
    zoPvServerLog log;
    log.add("Exiting...");
    QCOMPARE(int(log.state()), int(zoPvServerLog::State::Starting));
    log.add("Accepting connection(s): vm:11111");
    QCOMPARE(int(log.state()), int(zoPvServerLog::State::Accepting));
    log.add("Exiting...");
    QCOMPARE(int(log.state()), int(zoPvServerLog::State::Accepting));
    log.add("Client connected.");
    QCOMPARE(int(log.state()), int(zoPvServerLog::State::Connected));
    log.add("Exiting...");
    QCOMPARE(int(log.state()), int(zoPvServerLog::State::Left));
}

void tst_zoPvServerLog::refusedClientIsCounted()
{
    zoPvServerLog log;

    feed(log, "client-left");

    QCOMPARE(log.refusedClients(), 1);
    QCOMPARE(log.reason(5), QStringLiteral("exit status 5"));
}

// What mpirun did to the rest of the job comes before what it says of the rank that was lost.
void tst_zoPvServerLog::signalOfTheOthersIsNoReason()
{
    zoPvServerLog log({QString(), QString()});
    const QString noticed =
        "mpirun noticed that process rank 1 with PID 7 on node n1 exited on signal 9 (Killed).";

    feed(log, "terminated");
    log.add(noticed);

    QCOMPARE(log.culprit(), 1);
    QCOMPARE(log.reason(137), noticed);
}

ZO_TEST_MAIN(tst_zoPvServerLog)
#include "tst_zoPvServerLog.moc"
