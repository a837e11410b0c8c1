#include "zoTestCase.h"

#include <zoSessionNodes.h>

#include <QApplication>
#include <QJsonObject>

#include <algorithm>

namespace
{
using Node = zoSessionNodes::Node;
using State = zoSessionNodes::State;

Node nodeOf(const QString& id, const QString& host = QStringLiteral("h"), int port = 1)
{
    Node node;
    node.id = id;
    node.host = host;
    node.port = port;
    return node;
}

QStringList idsOf(const std::vector<Node>& nodes)
{
    QStringList ids;
    for (const Node& node : nodes)
        ids << node.id;
    return ids;
}
} // namespace

class tst_zoSessionNodes final : public zoTestCase
{
    Q_OBJECT

private slots:
    void wallHasAServerForEachNode()
    {
        zoSessionNodes nodes;
        for (int i = 0; i < 100; ++i)
            QVERIFY(nodes.add(nodeOf(QStringLiteral("n%1").arg(i)), false, 0, 1));

        QCOMPARE(int(nodes.servers().size()), 100);
    }

    void rehearsalSharesFewServers_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("networks");

        for (const int networks : {1, 2, 3, 4}) {
            for (const int count : {1, 2, 13, 14, 15, 16, 1000})
                QTest::addRow("%d-nodes-%d-networks", count, networks) << count << networks;
        }
    }

    void rehearsalSharesFewServers()
    {
        QFETCH(int, count);
        QFETCH(int, networks);
        zoSessionNodes nodes;

        for (int i = 0; i < count; ++i)
            nodes.add(nodeOf(QStringLiteral("n%1").arg(i)), true, i % networks, networks);

        // With the controller and a head for each network.
        const int processes = int(nodes.servers().size()) + 1 + networks;
        QVERIFY2(processes <= zoSessionNodes::MaximumProcesses, qPrintable(QString::number(processes)));
        int held = 0;
        int least = count;
        int most = 0;
        for (const auto& entry : nodes.servers()) {
            held += entry.second.nodes.size();
            least = std::min<int>(least, entry.second.nodes.size());
            most = std::max<int>(most, entry.second.nodes.size());
            for (const QString& id : entry.second.nodes)
                QCOMPARE(nodes.node(id)->server, entry.first);
        }
        QCOMPARE(held, count);
        QVERIFY(most - least <= networks);
    }

    void changeTellsWhoLeavesAndWhoJoins()
    {
        zoSessionNodes nodes;
        for (const Node& node : {nodeOf("same"), nodeOf("gone"), nodeOf("moved"), nodeOf("port")})
            nodes.add(node, false, 0, 1);
        const std::vector<Node> wanted{nodeOf("same"), nodeOf("new"), nodeOf("moved", "elsewhere"),
                                       nodeOf("port", "h", 2)};

        const QStringList leaving = nodes.leaving(wanted);
        for (const QString& id : leaving)
            nodes.remove(id);

        QCOMPARE(leaving, QStringList({"gone", "moved", "port"}));
        QCOMPARE(idsOf(nodes.joining(wanted)), QStringList({"new", "moved", "port"}));
    }

    void nodesOfARemovedServerStayWithoutOne()
    {
        zoSessionNodes nodes;
        nodes.add(nodeOf("a"), false, 0, 1);

        nodes.removeServer(nodes.node("a")->server);

        QCOMPARE(nodes.node("a")->server, -1);
        QVERIFY(nodes.servers().empty());
    }

    void memoryIsSharedByTheNodesOfAMachine()
    {
        zoSessionNodes nodes;
        for (const char* id : {"a", "b", "c"}) {
            nodes.add(nodeOf(id), false, 0, 1);
            zoSessionNodes::Server* server = nodes.server(nodes.node(id)->server);
            server->hello.host = QLatin1String(id) == QLatin1String("c") ? "other" : "one";
            server->hello.freeMemory = 150;
        }

        QCOMPARE(nodes.shortOfMemory({"a", "b", "c"}, {}, 100, -1), QStringList("b"));
        QCOMPARE(nodes.shortOfMemory({"b", "a", "c"}, {}, 100, -1), QStringList("a"));
        QCOMPARE(nodes.shortOfMemory({"a", "b", "c"}, {}, 75, -1), QStringList());
        QCOMPARE(nodes.shortOfMemory({"a", "b", "c"}, {}, 151, -1), QStringList({"a", "b", "c"}));
        QCOMPARE(nodes.shortOfMemory({"a", "b", "c"}, {}, 0, 0), QStringList());
        QCOMPARE(nodes.shortOfMemory({"a"}, {}, 100, 99), QStringList("a"));
    }

    void windowsNeedMemory()
    {
        zoSessionNodes nodes;
        nodes.add(nodeOf("a"), false, 0, 1);
        nodes.server(nodes.node("a")->server)->hello.freeMemory = 1000 + 16 * 100;
        zoWallSetup setup;
        zoWallNode shown;
        shown.id = "a";
        shown.windows.resize(1);
        shown.windows.front().geometry = QRect(0, 0, 10, 10);
        setup.nodes.push_back(shown);

        QCOMPARE(nodes.shortOfMemory({"a"}, setup, 1000, -1), QStringList());
        QCOMPARE(nodes.shortOfMemory({"a"}, setup, 1001, -1), QStringList("a"));
    }

    void unknownMemoryAsksNothing()
    {
        zoSessionNodes nodes;
        nodes.add(nodeOf("a"), false, 0, 1);

        QCOMPARE(nodes.shortOfMemory({"a"}, {}, 1000, -1), QStringList());
    }
};

ZO_TEST_MAIN(tst_zoSessionNodes)
#include "tst_zoSessionNodes.moc"
