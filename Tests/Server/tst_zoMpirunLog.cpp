#include "zoTestCase.h"

#include <zoMpirunLog.h>

#include <QApplication>

// Who is to blame for the end of a job, from lines that were recorded with Open MPI 4.1 and OpenSSH 9.2.
class tst_zoMpirunLog final : public zoTestCase
{
    Q_OBJECT

private slots:
    void lineNamesRanks_data();
    void lineNamesRanks();
    void firstLineOfARankStays();
    void lostDaemonNamesItsHost();
    void framesSayNothing();
    void firstErrorIsTheReason();
    void errorIsToldWithWhatItHeads();
};

void tst_zoMpirunLog::lineNamesRanks_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QList<int>>("ranks");
    QTest::addColumn<bool>("hasCause");
    const auto row = [](const char* name, const char* line, const QList<int>& ranks, bool hasCause) {
        QTest::newRow(name) << QString::fromLatin1(line) << ranks << hasCause;
    };
    row("signal", "mpirun noticed that process rank 2 with PID 0 on node n2 exited on signal 9 (Killed).",
        {2}, true);
    row("exit code", "  Process name: [[27462,1],1]", {1}, false);
    row("program", "while attempting to start process rank 3.", {3}, false);
    row("refused", "ssh: connect to host n1 port 22: Connection refused", {1}, true);
    row("timed out", "ssh: connect to host n1 port 22: Connection timed out", {1}, true);
    row("unknown", "ssh: Could not resolve hostname n2: Name or service not known", {2, 3}, true);
    row("key", "wall@n1: Permission denied (publickey).", {1}, true);
    row("other host", "ssh: connect to host n11 port 22: Connection refused", {}, false);
    row("host of no rank", "ssh: Could not resolve hostname n: Name or service not known", {}, false);
    row("daemon", "ORTE was unable to reliably start one or more daemons.", {}, false);
    row("empty", "", {}, false);
}

void tst_zoMpirunLog::lineNamesRanks()
{
    QFETCH(QString, line);
    QFETCH(QList<int>, ranks);
    QFETCH(bool, hasCause);
    zoMpirunLog log({QString(), QStringLiteral("n1"), QStringLiteral("n2"), QStringLiteral("n2")});
    log.add(line);
    QCOMPARE(log.culprits().keys(), ranks);
    QCOMPARE(log.hasCause(), hasCause);
    for (const int rank : ranks)
        QCOMPARE(log.culprits().value(rank), line.simplified());
}

void tst_zoMpirunLog::firstLineOfARankStays()
{
    zoMpirunLog log({QString(), QStringLiteral("n1")});
    log.add(QStringLiteral("ssh: connect to host n1 port 22: Connection refused"));
    log.add(QStringLiteral("while attempting to start process rank 1."));
    QCOMPARE(log.culprits().value(1), QStringLiteral("ssh: connect to host n1 port 22: Connection refused"));
    QVERIFY(log.hasCause());
}

// As mpirun says it of a machine whose cable was pulled.
void tst_zoMpirunLog::lostDaemonNamesItsHost()
{
    zoMpirunLog log(
        {QStringLiteral("n1"), QStringLiteral("n1"), QStringLiteral("n2"), QStringLiteral("n22")});
    log.add(QStringLiteral("  Remote daemon: [[51234,0],2] on node n2"));
    QCOMPARE(log.culprits().keys(), QList<int>());
    log.add(QStringLiteral("ORTE has lost communication with a remote daemon."));
    log.add(QStringLiteral("  HNP daemon   : [[51234,0],0] on node host"));
    log.add(QStringLiteral("  Remote daemon: [[51234,0],2] on node n2"));
    QCOMPARE(log.culprits().keys(), QList<int>{2});
    QCOMPARE(log.culprits().value(2), QStringLiteral("ORTE has lost communication with a remote daemon."));
    QVERIFY(log.hasCause());
}

void tst_zoMpirunLog::framesSayNothing()
{
    zoMpirunLog log;
    log.add(QStringLiteral("  No such thing "));
    log.add(QStringLiteral("-----------------------------------------------"));
    log.add(QStringLiteral("   "));
    QCOMPARE(log.reason(), QStringLiteral("No such thing"));
}

// What comes before is greeted with, and what comes behind became of it.
void tst_zoMpirunLog::firstErrorIsTheReason()
{
    zoMpirunLog log;
    log.add(QStringLiteral("Welcome to n1"));
    log.add(QStringLiteral("[host:00026] plm:rsh: Warning: setpgid(31,31) failed in parent with errno=13"));
    log.add(QStringLiteral("[n3:00026] PMIX ERROR: OUT-OF-RESOURCE in file dstore_segment.c at line 208"));
    log.add(QStringLiteral("It looks like MPI_INIT failed for some reason; your parallel process is"));
    log.add(QStringLiteral("  Exit code:    1"));
    QCOMPARE(log.reason(),
             QStringLiteral("[n3:00026] PMIX ERROR: OUT-OF-RESOURCE in file dstore_segment.c at line 208"));
}

// As mpirun says it where TMPDIR cannot be written.
void tst_zoMpirunLog::errorIsToldWithWhatItHeads()
{
    zoMpirunLog log;
    log.add(QStringLiteral("A call to mkdir was unable to create the desired directory:"));
    log.add(QStringLiteral("  Directory: /tmp/ompi.host.0"));
    log.add(QStringLiteral("  Error:     Read-only file system"));
    log.add(QStringLiteral("Please check to ensure you have adequate permissions to perform"));
    log.add(QStringLiteral("  Exit code:    1"));
    QCOMPARE(log.reason(), QStringLiteral("A call to mkdir was unable to create the desired directory: "
                                          "Directory: /tmp/ompi.host.0, Error: Read-only file system"));
}

ZO_TEST_MAIN(tst_zoMpirunLog)
#include "tst_zoMpirunLog.moc"
