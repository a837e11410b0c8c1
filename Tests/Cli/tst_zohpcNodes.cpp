#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTest>

namespace
{
// Two levels of gateways, a disabled network, a node that is listed twice.
const QByteArray s_text = R"(<cluster version="1">
 <master>
  <network>
   <node name="head"/>
   <node name="gw1" rendernode="false">
    <network>
     <node name="n1"/>
     <node name="n2" enabled="false"/>
     <node name="gw2">
      <network>
       <node name="n3"/>
      </network>
     </node>
    </network>
   </node>
   <node name="head"/>
  </network>
  <network enabled="false">
   <node name="s10"/>
   <node name="s9"/>
  </network>
 </master>
 <display eyeseparation="65" user="1" hardwaresync="false">
  <window node="n1" screen="0" x="0" y="0" width="100" height="50" fullscreen="true"/>
  <window node="s9" screen="0" x="0" y="0" width="100" height="50" fullscreen="true"/>
  <window node="head 2" screen="0" x="0" y="0" width="100" height="50" fullscreen="true"/>
 </display>
</cluster>
)";

bool isMissing(const char* program)
{
    return QStandardPaths::findExecutable(QLatin1String(program)).isEmpty();
}

zoCommandRun run(const QString& program, const QStringList& arguments)
{
    QStringList environment{"PATH=" + qEnvironmentVariable("PATH"), "LC_ALL=C.UTF-8", "HOME=/nonexistent",
                            "OMPI_ALLOW_RUN_AS_ROOT=1", "OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1"};
    return zoCommandRun::program(program, arguments, {}, environment);
}
} // namespace

// "zohpc nodes" as a whole process, and the programs that read its names.
class tst_zohpcNodes final : public zoTestCase
{
    Q_OBJECT

private slots:
    void optionsChooseNodes_data();
    void optionsChooseNodes();
    void formIsThatOfTheTool_data();
    void formIsThatOfTheTool();
    void pdshRunsOnTheNodes();
    void mpirunReadsTheHostFile();
    void wrongUsageIsTold_data();
    void wrongUsageIsTold();

private:
    zoCliFiles m_files;
};

void tst_zohpcNodes::optionsChooseNodes_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("names");

    QTest::newRow("all-once") << QStringList() << QByteArray("head gw1 n1 n2 gw2 n3 s10 s9");
    QTest::newRow("enabled-with-all-above") << QStringList{"--enabled"} << QByteArray("head gw1 n1 gw2 n3");
    QTest::newRow("display") << QStringList{"--display"} << QByteArray("n1 head s9");
    QTest::newRow("gateways") << QStringList{"--gateways"} << QByteArray("gw1 gw2");
    QTest::newRow("render") << QStringList{"--render"} << QByteArray("head n1 n2 gw2 n3 s10 s9");
    QTest::newRow("both") << QStringList{"--display", "--enabled"} << QByteArray("n1 head");
}

void tst_zohpcNodes::optionsChooseNodes()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, names);

    // The second node of a name has the window: the name is the same.
    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"nodes", "-"} + options, s_text);

    QCOMPARE(run.whole(), names.replace(' ', '\n') + "\n--- errors\n--- exit code 0\n");
}

void tst_zohpcNodes::formIsThatOfTheTool_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("lines") << "lines" << QByteArray("head\ngw1\nn1\ngw2\nn3\n");
    QTest::newRow("pdsh") << "pdsh" << QByteArray("gw[1-2],head,n[1,3]\n");
    QTest::newRow("mpirun") << "mpirun"
                            << QByteArray("head slots=1\ngw1 slots=1\nn1 slots=1\ngw2 slots=1\nn3 slots=1\n");
    QTest::newRow("ansible") << "ansible"
                             << QByteArray(
                                    "head\ngw1\nn1 ansible_ssh_common_args='-o ProxyJump=gw1'\n"
                                    "gw2 ansible_ssh_common_args='-o ProxyJump=gw1'\n"
                                    "n3 ansible_ssh_common_args='-o ProxyJump=gw1,gw2'\n"
                                    "\n[display]\nn1\n\n[gateways]\ngw1\ngw2\n"
                                    "\n[network1]\nhead\ngw1\n\n[network2]\nn1\ngw2\n\n[network3]\nn3\n");
}

void tst_zohpcNodes::formIsThatOfTheTool()
{
    QFETCH(QString, form);
    QFETCH(QByteArray, text);

    const zoCommandRun run = zoCommandRun::zohpc({"nodes", "--enabled", "--format", form, "-"}, s_text);

    QCOMPARE(run.whole(), text + "--- errors\n--- exit code 0\n");
}

void tst_zohpcNodes::pdshRunsOnTheNodes()
{
    if (isMissing("pdsh"))
        QSKIP("pdsh (Debian package pdsh) is not installed");
    const QString file = m_files.write("wall.zhpc", s_text);

    const zoCommandRun result =
        run("sh", {"-c", "pdsh -w \"$('" ZO_ZOHPC "' nodes --enabled --format pdsh '" + file +
                             "')\" -R exec echo %h | sort"});

    QCOMPARE(result.output, QByteArray("gw1: gw1\ngw2: gw2\nhead: head\nn1: n1\nn3: n3\n"));
}

void tst_zohpcNodes::mpirunReadsTheHostFile()
{
    if (isMissing("mpirun"))
        QSKIP("mpirun (Debian package openmpi-bin) is not installed");
    const zoCommandRun names = zoCommandRun::zohpc({"nodes", "--enabled", "--format", "mpirun", "-"}, s_text);
    const QString file = m_files.write("hostfile", names.output);

    // A process for each host, none of which is started.
    const zoCommandRun result = run("mpirun", {"--hostfile", file, "--do-not-launch", "--display-map",
                                               "--bind-to", "none", "-np", "5", "true"});

    for (const char* host : {"head", "gw1", "n1", "gw2", "n3"})
        QVERIFY2(result.output.contains(QByteArray("node: ") + host), result.whole().constData());
}

void tst_zohpcNodes::wrongUsageIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("text");

    const QByteArray help("\nTry 'zohpc nodes --help'.\n--- exit code 2\n");
    QTest::newRow("no-file") << QStringList() << "zohpc nodes: no file given" + help;
    QTest::newRow("two-files") << QStringList{"-", "-"} << "zohpc nodes: one file at a time" + help;
    QTest::newRow("form") << QStringList{"-", "--format", "slurm"}
                          << "zohpc nodes: --format: \"slurm\" is no form: lines, pdsh, mpirun, ansible" +
                                 help;
    // An empty list would make pdsh and mpirun take other hosts.
    QTest::newRow("none-left") << QStringList{"-", "--gateways", "--display"}
                               << QByteArray("-: no such node\n--- exit code 1\n");
}

void tst_zohpcNodes::wrongUsageIsTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, text);

    QCOMPARE(zoCommandRun::zohpc(QStringList{"nodes"} + arguments, s_text).whole(), "--- errors\n" + text);
}

ZO_TEST_MAIN(tst_zohpcNodes)
#include "tst_zohpcNodes.moc"
