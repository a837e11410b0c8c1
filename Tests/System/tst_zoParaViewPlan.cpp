#include "zoTestCase.h"

#include <zoLauncher.h>
#include <zoParaViewPlan.h>

#include <QApplication>

// What mpirun is told for the machines of a document.
class tst_zoParaViewPlan final : public zoTestCase
{
    Q_OBJECT

private slots:
    void hostsStayOneArgument_data();
    void hostsStayOneArgument();
    void oddHostsAreRefusedByName_data();
    void oddHostsAreRefusedByName();
    void userNameComesWithTheLauncher();
    void displayGoesToItsRank_data();
    void displayGoesToItsRank();

private:
    static zoParaViewPlan planOf(const QString& host, const QString& display = QStringLiteral(":0.1"));
};

zoParaViewPlan tst_zoParaViewPlan::planOf(const QString& host, const QString& display)
{
    zoParaViewPlan plan;
    plan.launch = zoParaViewPlan::defaultLaunch();
    plan.folder = QStringLiteral("/tmp/a session; $(true)");
    plan.port = 11112;
    plan.connectId = 7;
    zoParaViewSetup::Machine machine;
    machine.node = machine.host = host;
    machine.display = display;
    plan.setup.machines.push_back(machine);
    return plan;
}

void tst_zoParaViewPlan::hostsStayOneArgument_data()
{
    QTest::addColumn<QString>("host");
    for (const char* host : {"n1", "N1", "_n", "1", "192.168.7.20", "wall-2.lab_a.example"})
        QTest::newRow(host) << QString::fromLatin1(host);
}

void tst_zoParaViewPlan::hostsStayOneArgument()
{
    QFETCH(QString, host);
    const QStringList arguments = zoMpirunCommand(planOf(host).job()).arguments();
    const QStringList end{"-np",
                          "1",
                          "--host",
                          host + ":1",
                          "-x",
                          "DISPLAY=:0.1",
                          "pvserver",
                          "--pvx",
                          "/tmp/a session; $(true)/wall.pvx",
                          "--server-port=11112",
                          "--connect-id=7"};
    QCOMPARE(arguments.mid(arguments.size() - end.size()), end);
}

void tst_zoParaViewPlan::oddHostsAreRefusedByName_data()
{
    QTest::addColumn<QString>("host");
    for (const char* host : {"anna@n1", "-oProxyCommand=x", "n1,n2", "n1:4", "n 1", "n1;reboot", "$(reboot)",
                             "n'1", "n\"1", "n\\1", "n*", "../n1", "fe80::1",
                             "n\xc3\xbc"
                             "1"})
        QTest::newRow(host) << QString::fromUtf8(host);
    QTest::newRow("line end") << QStringLiteral("n1\n");
}

void tst_zoParaViewPlan::oddHostsAreRefusedByName()
{
    QFETCH(QString, host);
    const zoMpirunCommand command(planOf(host).job());
    QCOMPARE(command.arguments(), QStringList());
    QVERIFY2(command.errorString().contains('"' + host + '"'), qPrintable(command.errorString()));
}

// The same for mpirun and for the look at the machines before.
void tst_zoParaViewPlan::userNameComesWithTheLauncher()
{
    zoParaViewPlan plan = planOf(QStringLiteral("n1"));
    QString reason;
    plan.launch.pattern = zoLauncher::fromText(QStringLiteral("ssh -l anna.o -p 2222 %h %program"), reason);
    const QStringList arguments = zoMpirunCommand(plan.job()).arguments();
    const int agent = arguments.indexOf(QStringLiteral("plm_rsh_agent"));
    QVERIFY(agent > 0);
    QCOMPARE(arguments.value(agent + 1), QStringLiteral("ssh -l anna.o -p 2222"));
    QCOMPARE(zoLauncher(plan.launch.pattern).command({"n1"}, {"pvserver", "--version"}, reason),
             QStringList({"ssh", "-l", "anna.o", "-p", "2222", "n1", "pvserver", "--version"}));
}

void tst_zoParaViewPlan::displayGoesToItsRank_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("display");
    QTest::addColumn<QString>("given"); // empty for what the rank has already

    QTest::newRow("screen") << "n1"
                            << ":0.1"
                            << "DISPLAY=:0.1";
    QTest::newRow("two-digits") << "n1"
                                << ":12.10"
                                << "DISPLAY=:12.10";
    QTest::newRow("none") << "n1"
                          << ""
                          << "DISPLAY=:0";
    QTest::newRow("this-machine") << "localhost"
                                  << ":0.1"
                                  << "";
}

void tst_zoParaViewPlan::displayGoesToItsRank()
{
    QFETCH(QString, host);
    QFETCH(QString, display);
    QFETCH(QString, given);
    const QStringList arguments = zoMpirunCommand(planOf(host, display).job()).arguments();
    QCOMPARE(arguments.count(QStringLiteral("-x")), given.isEmpty() ? 0 : 1);
    if (!given.isEmpty())
        QCOMPARE(arguments.value(arguments.indexOf(QStringLiteral("-x")) + 1), given);
}

ZO_TEST_MAIN(tst_zoParaViewPlan)
#include "tst_zoParaViewPlan.moc"
