#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QTest>

namespace
{
const QString s_hosts =
    QStringLiteral("{ head gw1[rt=0] { n01 - n04 gw3 { m1 m2 } } gw2[rt=0] { n05 - n08 } }");

QByteArray configuration(const QString& hosts)
{
    return zoCommandRun::zohpc({"new", "--wall", "1x1", "--hosts", hosts}).output;
}

// What ClusterShell's own reader makes of a topology.conf, or why it cannot be asked.
zoCommandRun clusterShell(const QString& script, const QString& file)
{
    return zoCommandRun::program(QStringLiteral("/usr/bin/python3"), {"-c", script, file}, {},
                                 {"PATH=" + qEnvironmentVariable("PATH"), "LC_ALL=C.UTF-8"});
}
} // namespace

// "zohpc topology" as a whole process, and ClusterShell, which reads what it writes.
class tst_zohpcTopology final : public zoTestCase
{
    Q_OBJECT

private slots:
    void gatewaysAreRoutes();
    void clusterShellFindsTheWay();
    void hostsTextComesBack();
    void fileIsReadAsClusterShellReadsIt_data();
    void fileIsReadAsClusterShellReadsIt();
    void adminIsNoNodeOfHisOwn();
    void whatCannotBeIsTold_data();
    void whatCannotBeIsTold();

private:
    zoCliFiles m_files;
};

void tst_zohpcTopology::gatewaysAreRoutes()
{
    const zoCommandRun run =
        zoCommandRun::zohpc({"topology", "--admin", "admin", "-"}, configuration(s_hosts));

    QCOMPARE(run.whole(), QByteArray("[routes]\nadmin: gw[1-2],head\ngw1: gw3,n[01-04]\ngw3: m[1-2]\n"
                                     "gw2: n[05-08]\n--- errors\n--- exit code 0\n"));
}

void tst_zohpcTopology::clusterShellFindsTheWay()
{
    const QString file = m_files.path("topology.conf");
    if (clusterShell("import ClusterShell", file).exitCode != 0)
        QSKIP("ClusterShell (Debian package python3-clustershell) is not installed");
    QCOMPARE(zoCommandRun::zohpc({"topology", "--admin", "admin", "-o", file, "-"}, configuration(s_hosts))
                 .whole(),
             QByteArray("--- errors\n--- exit code 0\n"));

    const zoCommandRun tree =
        clusterShell("import sys\n"
                     "from ClusterShell.Topology import TopologyParser\n"
                     "from ClusterShell.NodeSet import NodeSet\n"
                     "from ClusterShell.Propagation import PropagationTreeRouter\n"
                     "tree = TopologyParser(sys.argv[1]).tree('admin')\n"
                     "router = PropagationTreeRouter('admin', tree)\n"
                     "print(router.next_hop(NodeSet('n03')), router.next_hop(NodeSet('n07')),"
                     " router.next_hop(NodeSet('m2')))\n"
                     "print(PropagationTreeRouter('gw1', tree).next_hop(NodeSet('m2')))\n"
                     "print(tree.inner_node_count(), tree.leaf_node_count())\n",
                     file);

    QCOMPARE(tree.whole(), QByteArray("gw1 gw2 gw1\ngw3\n4 11\n--- errors\n--- exit code 0\n"));
}

void tst_zohpcTopology::hostsTextComesBack()
{
    const zoCommandRun topology =
        zoCommandRun::zohpc({"topology", "--admin", "admin", "-"}, configuration(s_hosts));

    const zoCommandRun hosts = zoCommandRun::zohpc({"topology", "--read", "-"}, topology.output);
    const zoCommandRun again = zoCommandRun::zohpc({"topology", "--admin", "admin", "-"},
                                                   configuration(QString::fromUtf8(hosts.output)));

    QCOMPARE(hosts.errors, QByteArray());
    QCOMPARE(
        zoCommandRun::zohpc({"hosts", "expand", "-"}, hosts.output).output,
        zoCommandRun::zohpc({"hosts", "expand", "{ gw1 { gw3 { m1 m2 } n01 - n04 } gw2 { n05 - n08 } head }"})
            .output);
    QCOMPARE(again.output, topology.output);
}

void tst_zohpcTopology::fileIsReadAsClusterShellReadsIt_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("hosts");
    QTest::addColumn<QByteArray>("notes");

    QTest::newRow("routes") << QByteArray("[routes]\nadmin: a b\n") << QByteArray("a\nb\n") << QByteArray();
    QTest::newRow("old-section") << QByteArray("[Main]\nadmin: a,b\n") << QByteArray("a\nb\n")
                                 << QByteArray();
    QTest::newRow("equals-and-comments") << QByteArray("# racks\n[routes]\n; none\nadmin = gw\n\ngw=n[1-2]\n")
                                         << QByteArray("gw\nn1\nn2\n") << QByteArray();
    QTest::newRow("gateway-told-later")
        << QByteArray("[routes]\ngw: n[1-2]\nadmin: gw\n") << QByteArray("gw\nn1\nn2\n") << QByteArray();
    QTest::newRow("other-sections") << QByteArray("[x]\nfoo\n[routes]\nadmin: a\n") << QByteArray("a\n")
                                    << QByteArray();
    QTest::newRow("several-gateways")
        << QByteArray("[routes]\nadmin: g[1-2]\ng[1-2]: n[1-4]\n") << QByteArray("g1\nn1\nn2\ng2\nn3\nn4\n")
        << QByteArray("-: line 3: the nodes behind g[1-2] are spread over them\n");
}

void tst_zohpcTopology::fileIsReadAsClusterShellReadsIt()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, hosts);
    QFETCH(QByteArray, notes);

    const zoCommandRun run = zoCommandRun::zohpc({"topology", "--read", "-"}, file);

    QCOMPARE(run.errors, notes);
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(zoCommandRun::zohpc({"hosts", "expand", "-"}, run.output).output, hosts);
}

void tst_zohpcTopology::adminIsNoNodeOfHisOwn()
{
    const zoCommandRun run =
        zoCommandRun::zohpc({"topology", "--admin", "head", "-"}, configuration("head n1"));

    QCOMPARE(run.output, QByteArray("[routes]\nhead: n1\n"));
}

void tst_zohpcTopology::whatCannotBeIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("reason");

    const QStringList read{"--read", "-"};
    QTest::newRow("no-section") << read << QByteArray("a: b\n")
                                << QByteArray("-:1:1: no topology: it has no section [routes]\n");
    QTest::newRow("no-route") << read << QByteArray("[routes]\nadmin a\n")
                              << QByteArray("-:2:1: no route such as \"gateway: node[1-8]\"\n");
    QTest::newRow("empty-route") << read << QByteArray("[routes]\nadmin:\n")
                                 << QByteArray("-:2:1: a route without nodes\n");
    QTest::newRow("circle") << read << QByteArray("[routes]\na: b\nb: a\n")
                            << QByteArray(
                                   "-:3:1: \"a\" is reached in more than one way, or by way of itself\n");
    QTest::newRow("two-ways") << read << QByteArray("[routes]\na: b c\nb: c\n")
                              << QByteArray(
                                     "-:3:1: \"c\" is reached in more than one way, or by way of itself\n");
    QTest::newRow("group") << read << QByteArray("[routes]\na: @all\n")
                           << QByteArray(
                                  "-:2:1: \"@\" of ClusterShell is not supported; write the nodes out\n");
    QTest::newRow("bracket") << read << QByteArray("[routes]\na: n[2-1]\n")
                             << QByteArray("-:2:1: \"2-1\" runs backwards\n");
    QTest::newRow("node-in-two-networks")
        << QStringList{"-", "--admin", "admin"}
        << configuration("{ gw1[rt=0] { n1 } x }").replace("\"x\"", "\"n1\"")
        << QByteArray("-: \"n1\" is reached in more than one way, which ClusterShell refuses\n");
    QTest::newRow("read-and-admin")
        << read + QStringList{"--admin", "a"} << QByteArray()
        << QByteArray(
               "zohpc topology: --read and --admin exclude each other\nTry 'zohpc topology --help'.\n");
}

void tst_zohpcTopology::whatCannotBeIsTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, reason);

    QCOMPARE(zoCommandRun::zohpc(QStringList{"topology"} + arguments, input).whole(),
             "--- errors\n" + reason + "--- exit code 2\n");
}

ZO_TEST_MAIN(tst_zohpcTopology)
#include "tst_zohpcTopology.moc"
