#include "zoNetns.h"
#include "zoTestCase.h"

#include <zoMpiGroup.h>
#include <zoNodeReason.h>

#include <QApplication>
#include <QHash>
#include <QSet>
#include <QSignalSpy>

// A job over several machines, by ssh.
class tst_zoMpiGroupNetns final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void serversRunOnTheirMachines();
    void machineThatIsOffIsNamed();
    void cutMachineIsNamed();
    void unreachableMachineIsNamed_data();
    void unreachableMachineIsNamed();
    void nobodyStaysOnACutMachine();

private:
    void start(const QStringList& hosts);

    std::unique_ptr<zoMpiGroup> m_group;
    QHash<int, QString> m_hosts; // as servers say, by key
    QHash<int, QString> m_ended;
    QHash<int, QString> m_details;
};

namespace
{
constexpr int s_limitMs = 60000;
} // namespace

void tst_zoMpiGroupNetns::init()
{
    m_hosts.clear();
    m_ended.clear();
    m_details.clear();
    zoMpiGroup::Job job;
    job.relay = QStringList({QStringLiteral(ZO_CLUSTER_SERVER), QStringLiteral("relay")});
    m_group = std::make_unique<zoMpiGroup>(job);
    connect(m_group.get(), &zoServerGroup::received, this, [this](int key, const zoServerMessage& message) {
        if (message.verb == "HELLO")
            m_hosts.insert(key, message.object().value(QLatin1String("host")).toString());
    });
    connect(m_group.get(), &zoServerGroup::restarting, this, [this](const QList<int>& keys) {
        for (const int key : keys)
            m_hosts.remove(key);
    });
    connect(m_group.get(), &zoServerGroup::ended, this,
            [this](int key, const QString& reason, const QString& detail) {
                m_ended.insert(key, reason);
                m_details.insert(key, detail);
                m_hosts.remove(key);
            });
}

void tst_zoMpiGroupNetns::cleanup()
{
    zoNetns::order(QStringLiteral("join n2"));
    QSignalSpy ended(m_group.get(), &zoServerGroup::allEnded);
    m_group->removeAll();
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, s_limitMs);
    m_group.reset();
    for (const char* machine : {"n1", "n2"})
        QTRY_COMPARE_WITH_TIMEOUT(zoNetns::programs(QLatin1String(machine)), QByteArray(), s_limitMs);
    zoTestCase::cleanup();
}

// The key of a server is the place of its host in the list.
void tst_zoMpiGroupNetns::start(const QStringList& hosts)
{
    std::vector<zoServerGroup::Member> members;
    for (const QString& host : hosts) {
        zoServerGroup::Member member;
        member.key = int(members.size());
        member.host = host;
        member.program = QStringList(
            {QStringLiteral(ZO_CLUSTER_SERVER), QStringLiteral("server"), QStringLiteral("--mpi")});
        members.push_back(member);
    }
    m_group->add(members);
    QTRY_COMPARE_WITH_TIMEOUT(m_hosts.size() + m_ended.size(), hosts.size(), s_limitMs);
}

void tst_zoMpiGroupNetns::serversRunOnTheirMachines()
{
    start({QStringLiteral("n2"), QStringLiteral("n1")});
    QVERIFY2(m_ended.isEmpty(), qPrintable(m_details.value(0) + m_details.value(1)));
    QCOMPARE(m_hosts.value(0), QStringLiteral("n2"));
    QCOMPARE(m_hosts.value(1), QStringLiteral("n1"));
}

void tst_zoMpiGroupNetns::machineThatIsOffIsNamed()
{
    start({QStringLiteral("n1"), QStringLiteral("n3")});
    QCOMPARE(m_hosts.size(), 2);
    QCOMPARE(zoNetns::order(QStringLiteral("off n3")), QByteArray("done"));
    QTRY_COMPARE_WITH_TIMEOUT(m_ended.keys(), QList<int>{1}, s_limitMs);
    QTRY_COMPARE_WITH_TIMEOUT(m_hosts.value(0), QStringLiteral("n1"), s_limitMs);
}

void tst_zoMpiGroupNetns::cutMachineIsNamed()
{
    start({QStringLiteral("n1"), QStringLiteral("n2")});
    QCOMPARE(m_hosts.size(), 2);
    QCOMPARE(zoNetns::order(QStringLiteral("cut n2")), QByteArray("done"));
    QTRY_COMPARE_WITH_TIMEOUT(m_ended.keys(), QList<int>{1}, s_limitMs);
    QCOMPARE(m_ended.value(1), QString::fromLatin1(zoNodeReason::Silent));
    QTRY_COMPARE_WITH_TIMEOUT(m_hosts.value(0), QStringLiteral("n1"), s_limitMs);
}

void tst_zoMpiGroupNetns::nobodyStaysOnACutMachine()
{
    start({QStringLiteral("n1"), QStringLiteral("n2")});
    QCOMPARE(m_hosts.size(), 2);
    QCOMPARE(zoNetns::order(QStringLiteral("cut n2")), QByteArray("done"));
    QTRY_COMPARE_WITH_TIMEOUT(zoNetns::programs(QStringLiteral("n2")), QByteArray(), s_limitMs);
}

void tst_zoMpiGroupNetns::unreachableMachineIsNamed_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("detail");
    QTest::newRow("unknown") << QStringLiteral("nowhere") << QStringLiteral("Could not resolve hostname");
    QTest::newRow("off") << QStringLiteral("n3") << QStringLiteral("n3");
}

void tst_zoMpiGroupNetns::unreachableMachineIsNamed()
{
    QFETCH(QString, host);
    QFETCH(QString, detail);
    start({QStringLiteral("n1"), host});
    QTRY_COMPARE_WITH_TIMEOUT(m_ended.keys(), QList<int>{1}, s_limitMs);
    QVERIFY2(m_details.value(1).contains(detail), qPrintable(m_details.value(1)));
    QTRY_COMPARE_WITH_TIMEOUT(m_hosts.value(0), QStringLiteral("n1"), s_limitMs);
}

ZO_TEST_MAIN(tst_zoMpiGroupNetns)
#include "tst_zoMpiGroupNetns.moc"
