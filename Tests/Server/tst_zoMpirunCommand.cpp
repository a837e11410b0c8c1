#include "zoTestCase.h"

#include <zoMpirunCommand.h>

#include <QApplication>

// How mpirun is called for a network of a configuration.
class tst_zoMpirunCommand final : public zoTestCase
{
    Q_OBJECT

private slots:
    void machinesFollowEachOther();
    void oneMachineSharesItsCores();
    void ownMachineIsNamedAmongOthers();
    void wordsStayOneArgument_data();
    void wordsStayOneArgument();
    void rootIsAllowed();
    void allocationBringsItsOwnWay();
    void sessionFolderTakesWhatJobsLeave();
    void networkBecomesParameters_data();
    void networkBecomesParameters();
    void whatIsNotHonouredIsNoted_data();
    void whatIsNotHonouredIsNoted();
    void impossibleJobsAreRefused_data();
    void impossibleJobsAreRefused();
};

namespace
{
zoMpirunCommand::Job jobOf(const QStringList& hosts)
{
    zoMpirunCommand::Job job;
    for (const QString& host : hosts)
        job.machines.push_back({host, 1, {QStringLiteral("server"), QStringLiteral("--node"), host}});
    return job;
}

QString valueOf(const QStringList& arguments, const QString& parameter)
{
    const int index = arguments.indexOf(parameter);
    return index > 0 && arguments[index - 1] == QLatin1String("--mca") ? arguments.value(index + 1)
                                                                       : QString();
}

QMap<QString, QString> networkOf(const QString& type, const QString& speed, const QString& device,
                                 const QString& port)
{
    return {{QStringLiteral("network"), type},
            {QStringLiteral("speed"), speed},
            {QStringLiteral("ibdevice"), device},
            {QStringLiteral("ibport"), port}};
}
} // namespace

void tst_zoMpirunCommand::machinesFollowEachOther()
{
    zoMpirunCommand::Job job = jobOf({QStringLiteral("n1"), QStringLiteral("n2")});
    job.machines[1].processes = 3;
    job.machines[1].program << QStringLiteral("with a blank; and $more");
    const QStringList arguments = zoMpirunCommand(job).arguments();
    const QStringList end{QStringLiteral("-np"),    QStringLiteral("1"),
                          QStringLiteral("--host"), QStringLiteral("n1:1"),
                          QStringLiteral("server"), QStringLiteral("--node"),
                          QStringLiteral("n1"),     QStringLiteral(":"),
                          QStringLiteral("-np"),    QStringLiteral("3"),
                          QStringLiteral("--host"), QStringLiteral("n2:3"),
                          QStringLiteral("server"), QStringLiteral("--node"),
                          QStringLiteral("n2"),     QStringLiteral("with a blank; and $more")};
    QCOMPARE(arguments.mid(arguments.size() - end.size()), end);
    QCOMPARE(valueOf(arguments, QStringLiteral("plm_rsh_agent")),
             QStringLiteral("ssh -o BatchMode=yes -o ConnectTimeout=3"));
    QVERIFY(!arguments.contains(QStringLiteral("mpi_yield_when_idle")));
    QCOMPARE(valueOf(arguments, QStringLiteral("odls_base_sigkill_timeout")), QStringLiteral("0"));
    QCOMPARE(valueOf(arguments, QStringLiteral("oob_tcp_keepalive_time")), QStringLiteral("1"));
    QCOMPARE(valueOf(arguments, QStringLiteral("oob_tcp_keepalive_intvl")), QStringLiteral("1"));
    QCOMPARE(valueOf(arguments, QStringLiteral("oob_tcp_keepalive_probes")), QStringLiteral("2"));
}

void tst_zoMpirunCommand::oneMachineSharesItsCores()
{
    const QStringList arguments = zoMpirunCommand(jobOf({QString()})).arguments();
    QVERIFY(arguments.contains(QStringLiteral("--oversubscribe")));
    QCOMPARE(valueOf(arguments, QStringLiteral("mpi_yield_when_idle")), QStringLiteral("1"));
    QCOMPARE(valueOf(arguments, QStringLiteral("btl")), QStringLiteral("self,vader"));
    QVERIFY(!arguments.contains(QStringLiteral("--host")));
    QVERIFY(!arguments.contains(QStringLiteral("plm_rsh_agent")));
}

// What has no host is beside mpirun, and must not move to one of the others.
void tst_zoMpirunCommand::ownMachineIsNamedAmongOthers()
{
    const QStringList arguments = zoMpirunCommand(jobOf({QString(), QStringLiteral("n1")})).arguments();
    QCOMPARE(arguments.value(arguments.indexOf(QStringLiteral("--host")) + 1), QStringLiteral("localhost:1"));
    QVERIFY(arguments.contains(QStringLiteral("--oversubscribe")));
}

void tst_zoMpirunCommand::wordsStayOneArgument_data()
{
    QTest::addColumn<QString>("word");
    QTest::newRow("blank") << QStringLiteral("with a blank");
    QTest::newRow("quotes") << QStringLiteral("\"'`");
    QTest::newRow("shell") << QStringLiteral("$(reboot); *");
    QTest::newRow("colon inside") << QStringLiteral("a:b : c");
    QTest::newRow("option") << QStringLiteral("-np");
    QTest::newRow("line end") << QStringLiteral("a\nb");
    QTest::newRow("umlaut") << QString::fromUtf8("\u00e4");
    QTest::newRow("empty") << QStringLiteral("");
}

// In the program, in a value of its environment, and in the folder; the other arguments stand where they stood.
void tst_zoMpirunCommand::wordsStayOneArgument()
{
    QFETCH(QString, word);
    zoMpirunCommand::Job job = jobOf({QStringLiteral("n1"), QStringLiteral("wall-2.lab_a.example")});
    job.sessionFolder = QStringLiteral("/tmp/") + word;
    job.machines[0].environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":0.1"));
    job.machines[1].environment.insert(QStringLiteral("DISPLAY"), word);
    job.machines[1].program << word;
    const QStringList arguments = zoMpirunCommand(job).arguments();
    const QStringList end{QStringLiteral("-np"),
                          QStringLiteral("1"),
                          QStringLiteral("--host"),
                          QStringLiteral("n1:1"),
                          QStringLiteral("-x"),
                          QStringLiteral("DISPLAY=:0.1"),
                          QStringLiteral("server"),
                          QStringLiteral("--node"),
                          QStringLiteral("n1"),
                          QStringLiteral(":"),
                          QStringLiteral("-np"),
                          QStringLiteral("1"),
                          QStringLiteral("--host"),
                          QStringLiteral("wall-2.lab_a.example:1"),
                          QStringLiteral("-x"),
                          QStringLiteral("DISPLAY=") + word,
                          QStringLiteral("server"),
                          QStringLiteral("--node"),
                          QStringLiteral("wall-2.lab_a.example"),
                          word};
    QCOMPARE(arguments.mid(arguments.size() - end.size()), end);
    QCOMPARE(valueOf(arguments, QStringLiteral("orte_tmpdir_base")), job.sessionFolder);
}

void tst_zoMpirunCommand::rootIsAllowed()
{
    zoMpirunCommand::Job job = jobOf({QString()});
    QVERIFY(zoMpirunCommand(job).environment().isEmpty());
    job.isRoot = true;
    const QMap<QString, QString> environment = zoMpirunCommand(job).environment();
    QCOMPARE(environment.value(QStringLiteral("OMPI_ALLOW_RUN_AS_ROOT")), QStringLiteral("1"));
    QCOMPARE(environment.value(QStringLiteral("OMPI_ALLOW_RUN_AS_ROOT_CONFIRM")), QStringLiteral("1"));
}

void tst_zoMpirunCommand::allocationBringsItsOwnWay()
{
    zoMpirunCommand::Job job = jobOf({QStringLiteral("n1")});
    job.inAllocation = true;
    QVERIFY(!zoMpirunCommand(job).arguments().contains(QStringLiteral("plm_rsh_agent")));
}

void tst_zoMpirunCommand::sessionFolderTakesWhatJobsLeave()
{
    zoMpirunCommand::Job job = jobOf({QString()});
    QVERIFY(!zoMpirunCommand(job).arguments().contains(QStringLiteral("orte_tmpdir_base")));
    job.sessionFolder = QStringLiteral("/tmp/a session");
    const QStringList arguments = zoMpirunCommand(job).arguments();
    QCOMPARE(valueOf(arguments, QStringLiteral("orte_tmpdir_base")), job.sessionFolder);
    QCOMPARE(valueOf(arguments, QStringLiteral("btl_vader_backing_directory")), job.sessionFolder);
}

void tst_zoMpirunCommand::networkBecomesParameters_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("speed");
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("parameter");
    QTest::addColumn<QString>("value");
    const QString none;
    const QString infiniband = QStringLiteral("infiniband");
    const QString bandwidth = QStringLiteral("btl_tcp_bandwidth");
    QTest::newRow("ethernet") << none << none << none << none << QStringLiteral("btl")
                              << QStringLiteral("self,vader,tcp");
    QTest::newRow("device") << none << none << QStringLiteral("eth1.20") << none
                            << QStringLiteral("btl_tcp_if_include") << QStringLiteral("eth1.20");
    QTest::newRow("1g") << none << QStringLiteral("1g") << none << none << bandwidth
                        << QStringLiteral("1000");
    QTest::newRow("10g") << none << QStringLiteral("10g") << none << none << bandwidth
                         << QStringLiteral("10000");
    QTest::newRow("10g1g") << none << QStringLiteral("10g1g") << none << none << bandwidth
                           << QStringLiteral("1000");
    QTest::newRow("40g") << none << QStringLiteral("40g") << none << none << bandwidth
                         << QStringLiteral("40000");
    QTest::newRow("40g10g") << none << QStringLiteral("40g10g") << none << none << bandwidth
                            << QStringLiteral("10000");
    QTest::newRow("auto") << none << none << none << none << bandwidth << none;
    QTest::newRow("infiniband") << infiniband << none << none << none << QStringLiteral("pml")
                                << QStringLiteral("ucx");
    QTest::newRow("its device") << infiniband << none << QStringLiteral("mlx5_0") << none
                                << QStringLiteral("UCX_NET_DEVICES") << QStringLiteral("mlx5_0:1");
    QTest::newRow("its port") << infiniband << none << QStringLiteral("mlx5_0") << QStringLiteral("2")
                              << QStringLiteral("UCX_NET_DEVICES") << QStringLiteral("mlx5_0:2");
}

void tst_zoMpirunCommand::networkBecomesParameters()
{
    QFETCH(QString, type);
    QFETCH(QString, speed);
    QFETCH(QString, device);
    QFETCH(QString, port);
    QFETCH(QString, parameter);
    QFETCH(QString, value);
    zoMpirunCommand::Job job = jobOf({QStringLiteral("n1")});
    job.network = networkOf(type, speed, device, port);
    const zoMpirunCommand command(job);
    QCOMPARE(command.notes(), QStringList());
    if (parameter.startsWith(QLatin1String("UCX"))) {
        QCOMPARE(command.environment().value(parameter), value);
        // mpirun hands over to other machines what it is told to.
        QCOMPARE(command.arguments().value(command.arguments().indexOf(QStringLiteral("-x")) + 1), parameter);
    } else {
        QCOMPARE(valueOf(command.arguments(), parameter), value);
    }
}

void tst_zoMpirunCommand::whatIsNotHonouredIsNoted_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("speed");
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("named");
    const QString none;
    const QString infiniband = QStringLiteral("infiniband");
    QTest::newRow("internet") << none << QStringLiteral("wan") << none << none << QStringLiteral("\"wan\"");
    QTest::newRow("no device") << none << none << QStringLiteral("eth0,eth1") << none
                               << QStringLiteral("\"eth0,eth1\"");
    QTest::newRow("option") << infiniband << none << QStringLiteral("--mca") << none
                            << QStringLiteral("\"--mca\"");
    QTest::newRow("port 0") << infiniband << none << QStringLiteral("mlx5_0") << QStringLiteral("0")
                            << QStringLiteral("\"0\"");
    QTest::newRow("no port") << infiniband << none << QStringLiteral("mlx5_0") << QStringLiteral("one")
                             << QStringLiteral("\"one\"");
    QTest::newRow("port alone") << infiniband << none << none << QStringLiteral("2")
                                << QStringLiteral("port 2");
}

void tst_zoMpirunCommand::whatIsNotHonouredIsNoted()
{
    QFETCH(QString, type);
    QFETCH(QString, speed);
    QFETCH(QString, device);
    QFETCH(QString, port);
    QFETCH(QString, named);
    zoMpirunCommand::Job job = jobOf({QStringLiteral("n1")});
    job.network = networkOf(type, speed, device, port);
    const zoMpirunCommand command(job);
    QCOMPARE(command.notes().size(), 1);
    QVERIFY2(command.notes().first().contains(named), qPrintable(command.notes().first()));
    QVERIFY(!command.arguments().isEmpty());
    QVERIFY(!command.environment().contains(QStringLiteral("UCX_NET_DEVICES")));
}

void tst_zoMpirunCommand::impossibleJobsAreRefused_data()
{
    QTest::addColumn<QStringList>("hosts");
    QTest::addColumn<int>("processes");
    QTest::addColumn<QStringList>("program");
    const QStringList program{QStringLiteral("server")};
    QTest::newRow("no machine") << QStringList() << 1 << program;
    QTest::newRow("option") << QStringList{QStringLiteral("-oProxyCommand=x")} << 1 << program;
    QTest::newRow("two in one") << QStringList{QStringLiteral("n1,n2")} << 1 << program;
    QTest::newRow("slots") << QStringList{QStringLiteral("n1:4")} << 1 << program;
    QTest::newRow("blank") << QStringList{QStringLiteral("n 1")} << 1 << program;
    // mpirun's own word for a user is the agent's: ssh reads User of its configuration.
    QTest::newRow("user") << QStringList{QStringLiteral("anna@n1")} << 1 << program;
    QTest::newRow("shell") << QStringList{QStringLiteral("n1;reboot")} << 1 << program;
    QTest::newRow("variable") << QStringList{QStringLiteral("$HOME")} << 1 << program;
    QTest::newRow("quote") << QStringList{QStringLiteral("n'1")} << 1 << program;
    QTest::newRow("umlaut") << QStringList{QString::fromUtf8("n\u00fc1")} << 1 << program;
    QTest::newRow("line end") << QStringList{QStringLiteral("n1\n")} << 1 << program;
    QTest::newRow("no process") << QStringList{QStringLiteral("n1")} << 0 << program;
    QTest::newRow("no program") << QStringList{QStringLiteral("n1")} << 1 << QStringList();
    QTest::newRow("colon") << QStringList{QStringLiteral("n1")} << 1
                           << QStringList{QStringLiteral("server"), QStringLiteral(":")};
}

void tst_zoMpirunCommand::impossibleJobsAreRefused()
{
    QFETCH(QStringList, hosts);
    QFETCH(int, processes);
    QFETCH(QStringList, program);
    zoMpirunCommand::Job job;
    for (const QString& host : hosts)
        job.machines.push_back({host, processes, program});
    const zoMpirunCommand command(job);
    QVERIFY(!command.errorString().isEmpty());
    QCOMPARE(command.arguments(), QStringList());
}

ZO_TEST_MAIN(tst_zoMpirunCommand)
#include "tst_zoMpirunCommand.moc"
