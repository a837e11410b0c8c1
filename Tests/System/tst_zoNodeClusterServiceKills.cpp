#include "zoTestCase.h"

#include <zoNodeClusterService.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <csignal>
#include <memory>

namespace
{
// A machine that is busy with other tests takes its time; where nothing ended, nothing ever would.
constexpr int s_limitMs = 30000;

struct Process
{
    qint64 id = 0;
    QString role; // first argument of the server program, else the name of the program
};

QList<QByteArray> statOf(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray stat = file.readAll();
    return stat.mid(stat.lastIndexOf(')') + 2).split(' ');
}

// What only waits to be collected is gone.
bool isAlive(qint64 process)
{
    const QByteArray state = statOf(process).value(0);
    return !state.isEmpty() && state != "Z" && state != "X";
}

QString roleOf(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/cmdline").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QList<QByteArray> words = file.readAll().split('\0');
    const QString name = QString::fromLocal8Bit(words.value(0)).section(QLatin1Char('/'), -1);
    return name == QLatin1String("ZOKEClusterServer") ? QString::fromLocal8Bit(words.value(1)) : name;
}

// The program and all that it started, and what those did.
QList<Process> familyOf(qint64 first)
{
    QHash<qint64, QList<qint64>> children;
    const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString& entry : entries) {
        bool isProcess = false;
        const qint64 process = entry.toLongLong(&isProcess);
        if (isProcess)
            children[statOf(process).value(1).toLongLong()] << process;
    }
    QList<Process> family;
    QList<qint64> open{first};
    while (!open.isEmpty()) {
        const qint64 process = open.takeFirst();
        family << Process{process, roleOf(process)};
        open += children.value(process);
    }
    return family;
}

qint64 processOf(const QList<Process>& family, const QString& role)
{
    for (const Process& process : family) {
        if (process.role == role)
            return process.id;
    }
    return 0;
}

QString textOf(const QList<Process>& family)
{
    QStringList texts;
    for (const Process& process : family)
        texts << QStringLiteral("%1 %2%3")
                     .arg(process.role)
                     .arg(process.id)
                     .arg(isAlive(process.id) ? QStringLiteral(" alive") : QString());
    return texts.join(QStringLiteral(", "));
}

bool areGone(const QList<Process>& family)
{
    for (const Process& process : family) {
        if (isAlive(process.id))
            return false;
    }
    return true;
}

// Memory that processes of a job share, as files of these folders.
QByteArray mapsOf(const QList<Process>& family)
{
    QByteArray maps;
    for (const Process& process : family) {
        QFile file(QStringLiteral("/proc/%1/maps").arg(process.id));
        if (file.open(QIODevice::ReadOnly))
            maps += file.readAll();
    }
    return maps;
}

const QRegularExpression AnyReason(QStringLiteral("\\S"));
} // namespace

// What is left of a session when one of its programs is killed or hangs: nothing.
class tst_zoNodeClusterServiceKills final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void programIsLost_data();
    void programIsLost();
    void serversThatAreStartedAgainShowTheWall();
    void hostIsKilled_data();
    void hostIsKilled();
    void hostThatHangsKeepsItsSession();

private:
    enum class Group { Pipes, Launched, Mpi };
    enum class Then { SessionEnds, NodeIsLost, ServersStartAgain };

    std::unique_ptr<zoNodeClusterService> create(Group group, const QString& locks) const;
    void requireNothing(const QList<Process>& family) const;
    QStringList sessionFolders() const;

    // Of each test function; jobs of MPI have their folders below the second one.
    std::unique_ptr<QTemporaryDir> m_locks;
    std::unique_ptr<QTemporaryDir> m_temporary;
    QTemporaryDir m_runtime;
    bool m_hasMpi = false;
};

void tst_zoNodeClusterServiceKills::initTestCase()
{
    zoTestCase::initTestCase();
    // Qt would make one where folders of sessions are looked for.
    QVERIFY(m_runtime.isValid());
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_runtime.path()));
    m_hasMpi = !QStandardPaths::findExecutable(QStringLiteral("mpirun")).isEmpty() && ZO_HAS_MPI;
}

void tst_zoNodeClusterServiceKills::init()
{
    qunsetenv("TMPDIR");
    m_locks = std::make_unique<QTemporaryDir>();
    m_temporary = std::make_unique<QTemporaryDir>();
    QVERIFY(m_locks->isValid() && m_temporary->isValid());
    qputenv("TMPDIR", QFile::encodeName(m_temporary->path()));
}

void tst_zoNodeClusterServiceKills::cleanup()
{
    zoTestCase::cleanup();
    m_locks.reset();
    m_temporary.reset();
}

std::unique_ptr<zoNodeClusterService> tst_zoNodeClusterServiceKills::create(Group group,
                                                                            const QString& locks) const
{
    zoNodeClusterService::Launch launch;
    launch.program = QStringLiteral(ZO_SERVER_FILE);
    launch.remoteProgram = launch.program;
    launch.pattern = QStringList({QStringLiteral(ZO_SSH_STAND_IN), "%h", "%program"});
    launch.mpi = group == Group::Mpi ? zoNodeClusterService::Mpi::Always : zoNodeClusterService::Mpi::Never;
    auto service = std::make_unique<zoNodeClusterService>(launch);
    service->setRehearsal(group != Group::Launched);
    service->setLockDirectory(locks);
    service->setMemoryPerNode(0);
    service->applyConfig(QStringLiteral("<cluster version=\"1\"><master><network><node name=\"n1\"/><node "
                                        "name=\"n2\"/></network></master></cluster>"));
    return service;
}

QStringList tst_zoNodeClusterServiceKills::sessionFolders() const
{
    return QDir(m_temporary->path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::Hidden);
}

// No process, no folder of a job, and with it no memory that it shared; the nodes are free, and the next session leaves
// nothing where sessions meet but the file by which they take turns.
void tst_zoNodeClusterServiceKills::requireNothing(const QList<Process>& family) const
{
    QTRY_VERIFY2_WITH_TIMEOUT(areGone(family), qPrintable(textOf(family)), s_limitMs);
    QTRY_VERIFY2_WITH_TIMEOUT(sessionFolders().isEmpty(), qPrintable(sessionFolders().join(QLatin1Char(' '))),
                              s_limitMs);
    {
        const auto next = create(Group::Pipes, m_locks->path());
        QVERIFY(next->start());
        next->stop();
    }
    QCOMPARE(QDir(m_locks->path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::Hidden).size(),
             1);
}

void tst_zoNodeClusterServiceKills::programIsLost_data()
{
    QTest::addColumn<int>("group");
    QTest::addColumn<QString>("role");
    QTest::addColumn<int>("signal");
    QTest::addColumn<int>("then");

    struct Row
    {
        Group group;
        const char* role;
        Then then;
    };
    static constexpr Row s_rows[] = {
        {Group::Pipes, "controller", Then::SessionEnds}, {Group::Pipes, "head", Then::SessionEnds},
        {Group::Pipes, "server", Then::NodeIsLost},      {Group::Launched, "controller", Then::SessionEnds},
        {Group::Launched, "head", Then::SessionEnds},    {Group::Launched, "zoSshStandIn", Then::NodeIsLost},
        {Group::Launched, "server", Then::NodeIsLost},   {Group::Mpi, "controller", Then::SessionEnds},
        {Group::Mpi, "head", Then::SessionEnds},         {Group::Mpi, "mpirun", Then::ServersStartAgain},
        {Group::Mpi, "relay", Then::ServersStartAgain},  {Group::Mpi, "server", Then::NodeIsLost},
    };
    static const char* const s_groups[] = {"pipes", "launched", "mpi"};
    for (const Row& row : s_rows) {
        for (const int signal : {SIGKILL, SIGSTOP})
            QTest::addRow("%s-%s-%s", s_groups[int(row.group)], row.role,
                          signal == SIGKILL ? "killed" : "hangs")
                << int(row.group) << row.role << signal << int(row.then);
    }
}

void tst_zoNodeClusterServiceKills::programIsLost()
{
    QFETCH(int, group);
    QFETCH(QString, role);
    QFETCH(int, signal);
    QFETCH(int, then);
    if (Group(group) == Group::Mpi && !m_hasMpi)
        QSKIP("there is no MPI here");
    const auto service = create(Group(group), m_locks->path());
    QVERIFY(service->start());
    QList<Process> family = familyOf(service->controllerProcess());
    const qint64 node = service->nodeProcess(QStringLiteral("n1"));
    const qint64 victim = role == QLatin1String("server") ? node : processOf(family, role);
    QVERIFY2(victim != 0 && isAlive(victim), qPrintable(textOf(family)));
    const qint64 other = service->nodeProcess(QStringLiteral("n2"));
    if (Group(group) == Group::Mpi) {
        const QByteArray maps = mapsOf(family);
        QVERIFY(maps.contains(QFile::encodeName(m_temporary->path()) + "/zo-mpi-"));
        QVERIFY2(!maps.contains("/dev/shm/"), maps.constData());
    }
    QSignalSpy stopped(service.get(), &zoClusterService::stopped);
    // A session that ends, and each node that is told before it does.
    const int lines = Then(then) == Then::ServersStartAgain                                   ? 0
                      : Then(then) == Then::NodeIsLost || role == QLatin1String("controller") ? 1
                                                                                              : 3;
    for (int i = 0; i < lines; ++i)
        expectMessage(QtCriticalMsg, AnyReason);

    QCOMPARE(kill(pid_t(victim), signal), 0);

    switch (Then(then)) {
    case Then::SessionEnds:
        QTRY_COMPARE_WITH_TIMEOUT(stopped.count(), 1, s_limitMs);
        break;
    case Then::NodeIsLost:
        QTRY_COMPARE_WITH_TIMEOUT(service->runningNodes().size(), 1, s_limitMs);
        break;
    case Then::ServersStartAgain:
        // Nobody is lost: the servers are others, and show on.
        QTRY_VERIFY_WITH_TIMEOUT(service->nodeProcess(QStringLiteral("n2")) != other, s_limitMs);
        QCOMPARE(service->runningNodes(), QStringList({"n1", "n2"}));
        if (signal == SIGSTOP)
            QTRY_VERIFY(messages().filter(QStringLiteral("stopped answering")).size() == 1);
        break;
    }
    if (Then(then) != Then::SessionEnds) {
        QVERIFY(service->isRunning());
        // What is stopped on another machine is out of reach; it ends when it goes on.
        if (Group(group) == Group::Launched && victim == node)
            kill(pid_t(victim), SIGCONT);
        QTRY_VERIFY2_WITH_TIMEOUT(!isAlive(victim), qPrintable(textOf(family)), s_limitMs);
        family += familyOf(service->controllerProcess());
        service->stop();
        QCOMPARE(stopped.count(), 1);
    }
    requireNothing(family);
}

void tst_zoNodeClusterServiceKills::serversThatAreStartedAgainShowTheWall()
{
    if (!m_hasMpi)
        QSKIP("there is no MPI here");
    QString document =
        QStringLiteral("<cluster version=\"1\"><master><network><node name=\"n1\"/><node "
                       "name=\"n2\"/></network></master><projection name=\"P\" type=\"plane\" "
                       "x1=\"-1000\" y1=\"-500\" z1=\"-1500\" x2=\"1000\" y2=\"-500\" z2=\"-1500\" "
                       "x3=\"1000\" y3=\"500\" z3=\"-1500\"/><display>");
    for (const char* node : {"n1", "n2"})
        document +=
            QStringLiteral("<window node=\"%1\" fullscreen=\"false\" width=\"200\" height=\"100\"><viewport "
                           "projection=\"P\" position=\"fill\" x1=\"0\" y1=\"0\" x2=\"1\" y2=\"1\" "
                           "eye=\"mono\"/></window>")
                .arg(QLatin1String(node));
    const auto service = create(Group::Mpi, m_locks->path());
    service->applyConfig(document + QStringLiteral("</display></cluster>"));
    QVERIFY(service->start());
    zoNodeClusterService::Pictures black;
    zoNodeClusterService::Pictures before;
    zoNodeClusterService::Pictures after;
    QString reason;
    QVERIFY2(service->takePictures(black, reason), qPrintable(reason));
    service->setShowTiles(true);
    QVERIFY2(service->takePictures(before, reason), qPrintable(reason));
    QCOMPARE(before.windows.keys(), QStringList({"n1-1", "n2-1"}));
    QVERIFY(before.windows != black.windows);
    const qint64 server = service->nodeProcess(QStringLiteral("n2"));

    QCOMPARE(kill(pid_t(processOf(familyOf(service->controllerProcess()), QStringLiteral("relay"))), SIGKILL),
             0);

    QTRY_VERIFY_WITH_TIMEOUT(service->nodeProcess(QStringLiteral("n2")) != server, s_limitMs);
    QTRY_VERIFY_WITH_TIMEOUT(service->takePictures(after, reason) && after.windows == before.windows,
                             s_limitMs);
}

void tst_zoNodeClusterServiceKills::hostIsKilled_data()
{
    QTest::addColumn<bool>("isMpi");
    QTest::newRow("pipes") << false;
    QTest::newRow("mpi") << true;
}

void tst_zoNodeClusterServiceKills::hostIsKilled()
{
    QFETCH(bool, isMpi);
    if (isMpi && !m_hasMpi)
        QSKIP("there is no MPI here");
    QProcess host;
    host.start(ZO_SESSION_HOLDER, {isMpi ? "--mpi" : "--pipes", m_locks->path(), "n1", "n2"});
    QVERIFY(host.waitForReadyRead(s_limitMs));
    const qint64 controller = host.readLine().trimmed().split(' ').value(0).toLongLong();
    const QList<Process> family = familyOf(controller);
    QVERIFY2(processOf(family, isMpi ? QStringLiteral("relay") : QStringLiteral("server")) != 0,
             qPrintable(textOf(family)));
    QCOMPARE(sessionFolders().isEmpty(), !isMpi);

    host.kill();

    QVERIFY(host.waitForFinished(s_limitMs));
    requireNothing(family);
}

// A debugger or a modal dialog of a desktop must not darken the wall.
void tst_zoNodeClusterServiceKills::hostThatHangsKeepsItsSession()
{
    QProcess host;
    host.start(ZO_SESSION_HOLDER, {"--pipes", m_locks->path(), "n1", "n2"});
    QVERIFY(host.waitForReadyRead(s_limitMs));
    const QList<Process> family = familyOf(host.readLine().trimmed().split(' ').value(0).toLongLong());
    const QString elsewhere = m_runtime.filePath(QStringLiteral("elsewhere"));
    QVERIFY(QDir().mkpath(elsewhere));

    QCOMPARE(kill(pid_t(host.processId()), SIGSTOP), 0);

    // Longer than programs of a session wait for each other: one after the other is lost to silence meanwhile.
    for (int i = 0; i < 3; ++i) {
        const auto service = create(Group::Pipes, elsewhere);
        QVERIFY(service->start());
        expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("n1")));
        kill(pid_t(service->nodeProcess(QStringLiteral("n1"))), SIGSTOP);
        QTRY_COMPARE_WITH_TIMEOUT(service->runningNodes(), QStringList("n2"), s_limitMs);
    }
    for (const Process& process : family)
        QVERIFY2(isAlive(process.id), qPrintable(textOf(family)));
    // And a host that is killed while it hangs leaves nothing, either.
    host.kill();
    QVERIFY(host.waitForFinished(s_limitMs));
    requireNothing(family);
}

ZO_TEST_MAIN(tst_zoNodeClusterServiceKills)
#include "tst_zoNodeClusterServiceKills.moc"
