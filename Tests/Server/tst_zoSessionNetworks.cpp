#include "zoTestCase.h"

#include <zoSessionNetworks.h>

#include <QApplication>
#include <QJsonArray>

// Where nodes are, and how their networks are reached.
class tst_zoSessionNetworks final : public zoTestCase
{
    Q_OBJECT

private slots:
    void nodeIsInItsNetwork();
    void gatewaysLieBehindEachOther();
    void networkOnMpiHasItsOptions();
    void encryptedNetworkHasNoMpi();
};

namespace
{
// a and the gateway g in front, the gateway h behind g, b behind h.
zoWallSetup networks()
{
    zoWallSetup setup;
    setup.networks.resize(3);
    setup.networks[0].nodes = QStringList({"a", "g"});
    setup.networks[1].nodes = QStringList({"h"});
    setup.networks[1].parent = 0;
    setup.networks[1].gateway = QStringLiteral("g");
    setup.networks[2].nodes = QStringList({"b"});
    setup.networks[2].parent = 1;
    setup.networks[2].gateway = QStringLiteral("h");
    setup.nodes.resize(2);
    setup.nodes[0].id = QStringLiteral("g");
    setup.nodes[0].host = QStringLiteral("g.example.org");
    setup.nodes[1].id = QStringLiteral("h");
    setup.nodes[1].host = QStringLiteral("h.example.org");
    return setup;
}
} // namespace

void tst_zoSessionNetworks::nodeIsInItsNetwork()
{
    const zoWallSetup setup = networks();
    QCOMPARE(zoSessionNetworks::indexOf(setup, "g"), 0);
    QCOMPARE(zoSessionNetworks::indexOf(setup, "b"), 2);
    QCOMPARE(zoSessionNetworks::networkOf(setup, "b"), &setup.networks[2]);
    QCOMPARE(zoSessionNetworks::indexOf(setup, "c"), -1);
    QVERIFY(zoSessionNetworks::networkOf(setup, "c") == nullptr);
}

void tst_zoSessionNetworks::gatewaysLieBehindEachOther()
{
    zoWallSetup setup = networks();
    QCOMPARE(zoSessionNetworks::gatewayHosts(setup, nullptr), QStringList());
    QCOMPARE(zoSessionNetworks::gatewayHosts(setup, &setup.networks[0]), QStringList());
    QCOMPARE(zoSessionNetworks::gatewayHosts(setup, &setup.networks[1]), QStringList("g.example.org"));
    QCOMPARE(zoSessionNetworks::gatewayHosts(setup, &setup.networks[2]),
             QStringList({"g.example.org", "h.example.org"}));
}

void tst_zoSessionNetworks::networkOnMpiHasItsOptions()
{
    zoWallNetwork network;
    network.options.insert(QStringLiteral("speed"), QStringLiteral("10g"));
    const QJsonObject mpi = zoSessionNetworks::mpi(&network, {"ssh", "-T"});
    QCOMPARE(mpi.value("agent").toArray(), QJsonArray({"ssh", "-T"}));
    QCOMPARE(mpi.value("network").toObject().value("speed").toString(), QStringLiteral("10g"));
    QVERIFY(!zoSessionNetworks::mpi(nullptr, {"ssh"}).isEmpty());
}

// What MPI sends is not encrypted.
void tst_zoSessionNetworks::encryptedNetworkHasNoMpi()
{
    zoWallNetwork network;
    network.encrypted = true;
    QVERIFY(zoSessionNetworks::mpi(&network, {"ssh"}).isEmpty());
}

ZO_TEST_MAIN(tst_zoSessionNetworks)
#include "tst_zoSessionNetworks.moc"
