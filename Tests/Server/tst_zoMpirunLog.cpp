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
    void framesSayNothing();
};

void tst_zoMpirunLog::lineNamesRanks_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QList<int>>("ranks");
    const auto row = [](const char* name, const char* line, const QList<int>& ranks) {
        QTest::newRow(name) << QString::fromLatin1(line) << ranks;
    };
    row("signal", "mpirun noticed that process rank 2 with PID 0 on node n2 exited on signal 9 (Killed).",
        {2});
    row("exit code", "  Process name: [[27462,1],1]", {1});
    row("program", "while attempting to start process rank 3.", {3});
    row("refused", "ssh: connect to host n1 port 22: Connection refused", {1});
    row("timed out", "ssh: connect to host n1 port 22: Connection timed out", {1});
    row("unknown", "ssh: Could not resolve hostname n2: Name or service not known", {2, 3});
    row("key", "wall@n1: Permission denied (publickey).", {1});
    row("other host", "ssh: connect to host n11 port 22: Connection refused", {});
    row("host of no rank", "ssh: Could not resolve hostname n: Name or service not known", {});
    row("daemon", "ORTE was unable to reliably start one or more daemons.", {});
    row("empty", "", {});
}

void tst_zoMpirunLog::lineNamesRanks()
{
    QFETCH(QString, line);
    QFETCH(QList<int>, ranks);
    zoMpirunLog log({QString(), QStringLiteral("n1"), QStringLiteral("n2"), QStringLiteral("n2")});
    log.add(line);
    QCOMPARE(log.culprits().keys(), ranks);
    for (const int rank : ranks)
        QCOMPARE(log.culprits().value(rank), line.simplified());
}

void tst_zoMpirunLog::firstLineOfARankStays()
{
    zoMpirunLog log({QString(), QStringLiteral("n1")});
    log.add(QStringLiteral("ssh: connect to host n1 port 22: Connection refused"));
    log.add(QStringLiteral("while attempting to start process rank 1."));
    QCOMPARE(log.culprits().value(1), QStringLiteral("ssh: connect to host n1 port 22: Connection refused"));
    QCOMPARE(log.lastLine(), QStringLiteral("while attempting to start process rank 1."));
}

void tst_zoMpirunLog::framesSayNothing()
{
    zoMpirunLog log;
    log.add(QStringLiteral("  No such thing "));
    log.add(QStringLiteral("-----------------------------------------------"));
    log.add(QStringLiteral("   "));
    QCOMPARE(log.lastLine(), QStringLiteral("No such thing"));
}

ZO_TEST_MAIN(tst_zoMpirunLog)
#include "tst_zoMpirunLog.moc"
