#include "zoTestCase.h"

#include <zoParaViewProbe.h>

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

// What is looked at on a machine before ParaView's server is launched there; scripts stand for its programs.
class tst_zoParaViewProbe final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nothingToLookAtIsDone();
    void fineMachineIsDescribed();
    void eachMachineIsAskedForItself();
    void missingDisplayIsNamed();
    void missingProgramIsNamed_data();
    void missingProgramIsNamed();
    void programWithoutAVersion();
    void hungProgramIsGivenUp_data();
    void hungProgramIsGivenUp();
    void displayIsOpenedByAnotherClient_data();
    void displayIsOpenedByAnotherClient();
    void fileIsBroughtWhereItCannotBeSeen();
    void destructionEndsWhatRuns();

private:
    using Finding = zoParaViewProbe::Finding;

    QString script(const QString& name, const QByteArray& text) const;
    // Looks at all of them, and waits for it.
    void look(const std::vector<zoParaViewProbe::Machine>& machines);
    Finding finding(const QString& host = {}) const { return m_probe->finding(host); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_path;
    QString m_file;
    zoParaViewProbe::Programs m_programs;
    QStringList m_pattern;
    std::unique_ptr<zoParaViewProbe> m_probe;
    QStringList m_brought; // hosts that a folder was made on
};

namespace
{
constexpr int Patience = 60000; // ms
constexpr qint64 Mebibyte = 1024 * 1024;
} // namespace

void tst_zoParaViewProbe::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = qgetenv("PATH");
    m_file = m_folder->filePath("wall.pvx");
    QFile file(m_file);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("<pvx/>") > 0);
    const QString program = QStringLiteral(ZO_FAKE_PVSERVER);
    m_programs = {program, program, program};
    m_pattern = QStringList({QStringLiteral(ZO_LAUNCHER), "%h", "%program"});
}

void tst_zoParaViewProbe::cleanup()
{
    m_probe.reset();
    qputenv("PATH", m_path);
    m_folder.reset();
    zoTestCase::cleanup();
}

QString tst_zoParaViewProbe::script(const QString& name, const QByteArray& text) const
{
    const QString path = m_folder->filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("#!/bin/sh\n" + text + '\n') < 0)
        return {};
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    return path;
}

void tst_zoParaViewProbe::look(const std::vector<zoParaViewProbe::Machine>& machines)
{
    m_probe = std::make_unique<zoParaViewProbe>(zoLauncher(m_pattern), m_programs);
    m_brought.clear();
    connect(m_probe.get(), &zoParaViewProbe::bringsFolder, this,
            [this](const QString& host) { m_brought << host; });
    QSignalSpy answers(m_probe.get(), &zoParaViewProbe::answered);
    m_probe->start(machines, m_file);
    QTRY_VERIFY_WITH_TIMEOUT(m_probe->isDone(), Patience);
    QCOMPARE(answers.count(), int(machines.size()));
}

void tst_zoParaViewProbe::nothingToLookAtIsDone()
{
    look({});
}

void tst_zoParaViewProbe::fineMachineIsDescribed()
{
    look({{{}, {":0", ":0.1"}}});

    QCOMPARE(finding().failure, QString());
    QCOMPARE(finding().version, QStringLiteral("5.11.0"));
    QCOMPARE(finding().freeMemory, 8000 * Mebibyte);
    QCOMPARE(finding().screens, QStringList({"1920x1080+0+0", "1920x1080+0+0"}));
    QCOMPARE(finding().notes, QStringList());
    QCOMPARE(m_brought, QStringList());
}

void tst_zoParaViewProbe::eachMachineIsAskedForItself()
{
    look({{"n1", {":0"}}, {"newer", {":0"}}, {"failing", {":0"}}});

    QCOMPARE(finding("n1").version, QStringLiteral("5.11.0"));
    QCOMPARE(finding("newer").version, QStringLiteral("5.12.1"));
    QCOMPARE(finding("newer").failure, QString());
    QCOMPARE(finding("failing").failure,
             QStringLiteral("ssh: Could not resolve hostname failing: Name or service not known"));
    QCOMPARE(m_brought, QStringList());
}

void tst_zoParaViewProbe::missingDisplayIsNamed()
{
    look({{{}, {":0", ":987.1", ":0.2"}}});

    QCOMPARE(finding().failure, QStringLiteral("its display :987.1 cannot be opened: qt.qpa.xcb: could not "
                                               "connect to display :987.1"));
    QCOMPARE(finding().version, QStringLiteral("5.11.0"));
}

void tst_zoParaViewProbe::missingProgramIsNamed_data()
{
    QTest::addColumn<QString>("host");

    QTest::newRow("here") << QString();
    QTest::newRow("elsewhere") << QStringLiteral("n1");
}

void tst_zoParaViewProbe::missingProgramIsNamed()
{
    QFETCH(QString, host);
    m_programs.server = m_folder->filePath("no-such-server");

    look({{host, {":0"}}});

    QVERIFY2(finding(host).failure.contains(QStringLiteral("no-such-server")),
             qPrintable(finding(host).failure));
    QCOMPARE(finding(host).version, QString());
}

void tst_zoParaViewProbe::programWithoutAVersion()
{
    m_programs.server = script("mute", "exit 0");

    look({{{}, {":0"}}});

    QCOMPARE(finding().failure, m_programs.server + QStringLiteral(" does not tell its version"));
}

void tst_zoParaViewProbe::hungProgramIsGivenUp_data()
{
    QTest::addColumn<QByteArray>("server");
    QTest::addColumn<QByteArray>("nodeServer");
    QTest::addColumn<QString>("failure");

    const QByteArray hung = "exec sleep 600";
    QTest::newRow("version") << hung << hung << "it does not answer";
    QTest::newRow("display") << QByteArray("echo version 5.11.0") << hung
                             << "its display :0 cannot be opened: it does not answer";
}

void tst_zoParaViewProbe::hungProgramIsGivenUp()
{
    QFETCH(QByteArray, server);
    QFETCH(QByteArray, nodeServer);
    QFETCH(QString, failure);
    m_programs.server = script("server", server);
    m_programs.nodeServerHere = script("node-server", nodeServer);
    m_programs.limitMs = 2000;

    look({{{}, {":0"}}});

    QCOMPARE(finding().failure, failure);
}

void tst_zoParaViewProbe::displayIsOpenedByAnotherClient_data()
{
    QTest::addColumn<QByteArray>("client");
    QTest::addColumn<QString>("failure");
    QTest::addColumn<int>("notes");

    QTest::newRow("opened") << QByteArray("[ \"$1\" = -root ]") << QString() << 0;
    QTest::newRow("not-opened") << QByteArray("echo unable to open display >&2; exit 1")
                                << "its display :0 cannot be opened: unable to open display" << 0;
    QTest::newRow("not-there") << QByteArray() << QString() << 1;
}

// Where the program of nodes is missing.
void tst_zoParaViewProbe::displayIsOpenedByAnotherClient()
{
    QFETCH(QByteArray, client);
    QFETCH(QString, failure);
    QFETCH(int, notes);
    m_programs.nodeServerHere = m_folder->filePath("no-such-program");
    if (!client.isEmpty())
        script("xwininfo", client);
    // Nothing but this can be found.
    QVERIFY(QFile::link("/usr/bin/env", m_folder->filePath("env")));
    qputenv("PATH", QFile::encodeName(m_folder->path()));

    look({{{}, {":0"}}});

    QCOMPARE(finding().failure, failure);
    QCOMPARE(finding().notes.size(), notes);
    QVERIFY(finding().notes.isEmpty() ||
            finding().notes.constFirst().contains(QStringLiteral("display :0 can be opened is not known")));
}

// Another machine is this one with a folder of its own for what is written there.
void tst_zoParaViewProbe::fileIsBroughtWhereItCannotBeSeen()
{
    m_pattern = QStringList({script("launch", R"(shift
case $1 in
test) exit 1 ;;
mkdir) echo "$@" >> "$(dirname "$0")/log" ;;
install) echo "$@" >> "$(dirname "$0")/log"; exec cat > "$(dirname "$0")/brought" ;;
*) exec "$@" ;;
esac)"),
                             "%h", "%program"});

    look({{"n1", {":0"}}});

    QCOMPARE(finding("n1").failure, QString());
    QCOMPARE(m_brought, QStringList("n1"));
    QFile brought(m_folder->filePath("brought"));
    QVERIFY(brought.open(QIODevice::ReadOnly));
    QCOMPARE(brought.readAll(), QByteArray("<pvx/>"));
    QFile log(m_folder->filePath("log"));
    QVERIFY(log.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(log.readAll()),
             QStringLiteral("mkdir -m 700 %1\ninstall -m 600 /dev/stdin %2\n").arg(m_folder->path(), m_file));
}

void tst_zoParaViewProbe::destructionEndsWhatRuns()
{
    const QString pid = m_folder->filePath("pid");
    m_programs.server =
        script("server", "echo $$ > '" + QFile::encodeName(pid) + ".part'; mv '" + QFile::encodeName(pid) +
                             ".part' '" + QFile::encodeName(pid) + "'; exec sleep 600");
    m_probe = std::make_unique<zoParaViewProbe>(zoLauncher(m_pattern), m_programs);
    m_probe->start({{{}, {":0"}}}, m_file);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(pid), Patience);
    QFile file(pid);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString process = QStringLiteral("/proc/") + QString::fromUtf8(file.readAll().trimmed());
    QVERIFY(QFileInfo::exists(process));

    m_probe.reset();

    QVERIFY(!QFileInfo::exists(process));
}

ZO_TEST_MAIN(tst_zoParaViewProbe)
#include "tst_zoParaViewProbe.moc"
