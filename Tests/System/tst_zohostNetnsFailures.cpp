#include "zoNetns.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

// What the host says of a machine on which no server can be started, and what becomes of the others: n1 is in order,
// n3 is not. Each on a network of MPI and on one of ssh alone.
class tst_zohostNetnsFailures final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void nodeIsNamedWithItsReason_data();
    void nodeIsNamedWithItsReason();
    void fullDiskLeavesPipes_data();
    void fullDiskLeavesPipes();
    void droppedPacketsEndWithinTheTimeout();

private:
    // The program with a network of nodes; what it said when it has ended.
    QByteArray start(const QString& attributes, const QStringList& nodes);
    static QString homeFile(const QString& name);

    QTemporaryDir m_folder{qEnvironmentVariable("ZO_NETNS") +
                           QStringLiteral("/home/wall-XXXXXX")}; // not in /tmp
    QByteArray m_sshConfig;
    QString m_undo; // on n3
    int m_exitCode = -1;
};

namespace
{
constexpr int s_limitMs = 60000;

QString programFolder()
{
    return QFileInfo(QStringLiteral(ZO_SERVER_FILE)).path();
}

// A program of a later version: it greets with another protocol, and waits.
constexpr char s_otherProgram[] = R"(#!/bin/sh
printf 'HELLO 33\n{"protocol":99,"version":"9.8.7"}\n\n'
exec sleep 60
)";
} // namespace

QString tst_zohostNetnsFailures::homeFile(const QString& name)
{
    return qEnvironmentVariable("ZO_NETNS") + QStringLiteral("/home/.ssh/") + name;
}

void tst_zohostNetnsFailures::init()
{
    QFile config(homeFile(QStringLiteral("config")));
    QVERIFY(config.open(QIODevice::ReadOnly));
    m_sshConfig = config.readAll();
    m_undo.clear();
    for (const char* name : {"other_key", "other_host_key"}) {
        const QString file = homeFile(QLatin1String(name));
        if (!QFile::exists(file))
            QCOMPARE(QProcess::execute("ssh-keygen", {"-q", "-t", "ed25519", "-N", "", "-f", file}), 0);
    }
    QFile key(homeFile(QStringLiteral("other_host_key.pub")));
    QFile known(homeFile(QStringLiteral("other_known_hosts")));
    QVERIFY(key.open(QIODevice::ReadOnly) && known.open(QIODevice::WriteOnly));
    known.write("n3 " + key.readAll());
}

void tst_zohostNetnsFailures::cleanup()
{
    QFile config(homeFile(QStringLiteral("config")));
    if (config.open(QIODevice::WriteOnly))
        config.write(m_sshConfig);
    if (!m_undo.isEmpty())
        zoNetns::run(QStringLiteral("n3"), m_undo);
    zoNetns::run(QStringLiteral("host"), QStringLiteral("ip neigh flush all"));
    zoTestCase::cleanup();
}

QByteArray tst_zohostNetnsFailures::start(const QString& attributes, const QStringList& nodes)
{
    QString text = QStringLiteral("<cluster version=\"1\"><master><network%1>").arg(attributes);
    for (const QString& node : nodes)
        text += QStringLiteral("<node name=\"%1\"/>").arg(node);
    QFile file(m_folder.filePath(QStringLiteral("wall.zhpc")));
    if (!file.open(QIODevice::WriteOnly))
        return "no configuration file";
    file.write((text + QStringLiteral("</network></master></cluster>")).toUtf8());
    file.close();
    QProcess host;
    host.setProcessChannelMode(QProcess::MergedChannels);
    host.start(QStringLiteral(ZO_HOST_FILE), {"--engine", "nodes", "--non-interactive", "--start",
                                              "--exit-after-stop", "--config", file.fileName()});
    if (!host.waitForFinished(s_limitMs))
        host.kill();
    m_exitCode = host.exitCode();
    return host.readAll();
}

void tst_zohostNetnsFailures::nodeIsNamedWithItsReason_data()
{
    QTest::addColumn<QString>("attributes");
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("sshConfig"); // of n3
    QTest::addColumn<QString>("order");     // on n3
    QTest::addColumn<QString>("undo");
    QTest::addColumn<QString>("reason");

    const QString program = QStringLiteral(ZO_SERVER_FILE);
    const QString other = homeFile(QStringLiteral("other_program"));
    QFile file(other);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(s_otherProgram);
    file.close();
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    for (const char* kind : {"MPI", "pipes"}) {
        const QString attributes =
            QLatin1String(kind) == QLatin1String("MPI") ? QString() : QStringLiteral(" encrypted=\"true\"");
        const auto row = [&](const char* name, const QString& node, const QString& sshConfig,
                             const QString& order, const QString& undo, const QString& reason) {
            QTest::addRow("%s, %s", name, kind) << attributes << node << sshConfig << order << undo << reason;
        };
        row("unknown host", "nowhere", {}, {}, {},
            "its server ended: ssh: Could not resolve hostname nowhere: .*");
        row("connection refused", "n3", "Port 23", {}, {},
            "its server ended: ssh: connect to host n3 port 23: Connection refused");
        row("key refused", "n3",
            QStringLiteral("IdentityFile %1\nIdentitiesOnly yes").arg(homeFile("other_key")), {}, {},
            "its server ended: wall@n3: Permission denied \\(publickey\\)\\.");
        row("host key changed", "n3",
            QStringLiteral("StrictHostKeyChecking yes\nUserKnownHostsFile %1")
                .arg(homeFile("other_known_hosts")),
            {}, {}, "its server ended: .*Host key .*");
        row("program missing", "n3", {}, QStringLiteral("mount -t tmpfs none %1").arg(programFolder()),
            QStringLiteral("umount %1").arg(programFolder()),
            "its server ended: .*ZOKEClusterServer: command not found");
        row("other version", "n3", {}, QStringLiteral("mount --bind %1 %2").arg(other, program),
            QStringLiteral("umount %1").arg(program),
            "its program is version 9\\.8\\.7 with protocol 99, this one is version .*");
        row("sshd hangs", "n3", {}, "pkill -STOP sshd", "pkill -CONT sshd",
            "its server ended: .*timed out.*");
        row("login hangs", "n3", {}, "echo 'sleep 30' > /tmp/rc && mount --bind /tmp/rc /etc/bash.bashrc",
            "umount /etc/bash.bashrc", "it does not answer");
    }
}

void tst_zohostNetnsFailures::nodeIsNamedWithItsReason()
{
    QFETCH(QString, attributes);
    QFETCH(QString, node);
    QFETCH(QString, sshConfig);
    QFETCH(QString, order);
    QFETCH(QString, undo);
    QFETCH(QString, reason);
    QFile config(homeFile(QStringLiteral("config")));
    QVERIFY(config.open(QIODevice::WriteOnly));
    if (!sshConfig.isEmpty())
        config.write("Host n3\n" + sshConfig.toUtf8() + "\nHost *\n");
    config.write(m_sshConfig);
    config.close();
    m_undo = undo;
    if (!order.isEmpty())
        QCOMPARE(zoNetns::run(QStringLiteral("n3"), order), QByteArray());

    const QByteArray said = start(attributes, {QStringLiteral("n1"), node, QStringLiteral("n2")});

    QCOMPARE(m_exitCode, 1);
    const QRegularExpression line(QStringLiteral("^node: %1 failed: (%2)$").arg(node, reason),
                                  QRegularExpression::MultilineOption);
    QVERIFY2(line.match(QString::fromUtf8(said)).hasMatch(), said.constData());
    QVERIFY2(!said.contains("node: n1 failed") && !said.contains("node: n2 failed"), said.constData());
    QTRY_COMPARE_WITH_TIMEOUT(zoNetns::programs(QStringLiteral("n1")) +
                                  zoNetns::programs(QStringLiteral("n2")),
                              QByteArray(), s_limitMs);
}

// Nobody answers, as behind a firewall that drops what it does not like.
void tst_zohostNetnsFailures::droppedPacketsEndWithinTheTimeout()
{
    QCOMPARE(zoNetns::run(QStringLiteral("host"),
                          QStringLiteral(
                              "ip neigh replace 10.99.0.13 lladdr 02:00:00:00:00:13 dev eth0 nud permanent")),
             QByteArray());

    const QByteArray said =
        start(QStringLiteral(" encrypted=\"true\""), {QStringLiteral("n1"), QStringLiteral("n3")});

    QCOMPARE(m_exitCode, 1);
    QVERIFY2(
        said.contains(
            "node: n3 failed: its server ended: ssh: connect to host n3 port 22: Connection timed out\n"),
        said.constData());
    QVERIFY2(!said.contains("node: n1 failed"), said.constData());
    QTRY_COMPARE_WITH_TIMEOUT(zoNetns::programs(QStringLiteral("n1")), QByteArray(), s_limitMs);
}

void tst_zohostNetnsFailures::fullDiskLeavesPipes_data()
{
    QTest::addColumn<QString>("machine");
    QTest::newRow("node") << QStringLiteral("n3");
    QTest::newRow("host") << QStringLiteral("host");
}

// MPI keeps files of a job in /tmp.
void tst_zohostNetnsFailures::fullDiskLeavesPipes()
{
    QFETCH(QString, machine);
    QCOMPARE(zoNetns::run(machine, QStringLiteral("mount -t tmpfs -o size=16k,mode=1777 none /tmp && "
                                                  "{ cat /dev/zero > /tmp/full 2>/dev/null || true; }")),
             QByteArray());

    const QByteArray said = start({}, {QStringLiteral("n1"), QStringLiteral("n3")});

    QCOMPARE(zoNetns::run(machine, QStringLiteral("umount -l /tmp")), QByteArray());
    QVERIFY2(said.contains("\nsession: 2 nodes\n"), said.constData());
    QVERIFY2(said.contains("its servers are kept in step by pipes"), said.constData());
    QCOMPARE(m_exitCode, 0);
}

ZO_TEST_MAIN(tst_zohostNetnsFailures)
#include "tst_zohostNetnsFailures.moc"
