#include "zoTestCase.h"

#include <zoMpiGroup.h>
#include <zoNodeReason.h>
#include <zoRankMessage.h>
#include <zoServerHello.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QScopeGuard>
#include <QSet>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>

// Servers that are ranks of one job, with the real programs.
class tst_zoMpiGroup final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void serversAnswer_data();
    void serversAnswer();
    void serverJoins();
    void serverLeaves();
    void killedServerIsNamedAndOthersGoOn();
    void hungServerIsNamedAndOthersGoOn();
    void hungServerIsNamedWhileMuchWaitsForIt();
    void serverThatSendsMuchEndsWhenItIsAlone();
    void silenceIsCountedByTheRelay_data();
    void silenceIsCountedByTheRelay();
    void missingProgramLeavesItToPipes();
    void missingProgramOfAllLeavesItToPipes();
    void launcherWithoutMpiIsNoServersFault();
    void hostThatMpirunCannotTakeIsNoServersFault();
    void frameIsShownByAll();
    void emptyGroupEndsAtOnce();

private:
    zoServerGroup::Member member(int key) const;
    void start(const QList<int>& keys);
    bool hasGreeted(const QList<int>& keys) const;

    QTemporaryDir m_folder;
    std::unique_ptr<zoMpiGroup> m_group;
    QHash<int, qint64> m_processes; // that said HELLO, by key
    QHash<int, QString> m_ended;    // reasons
    QHash<int, QString> m_details;
    QSet<int> m_ready;
};

namespace
{
constexpr int s_limitMs = 60000;
constexpr int s_aloneMs = 20000;
constexpr int s_blocks = 32;
constexpr int s_blockSize = 1024 * 1024;

// Of a process: state and starter.
QList<QByteArray> statusOf(pid_t process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return {"Z", "0"};
    const QByteArray stat = file.readAll();
    return stat.mid(stat.lastIndexOf(')') + 2).split(' ').mid(0, 2);
}

bool isAlive(pid_t process)
{
    return statusOf(process).constFirst() != "Z";
}

// 0 for none.
pid_t relayBeside(pid_t server)
{
    const QStringList processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString& name : processes) {
        QFile arguments(QStringLiteral("/proc/%1/cmdline").arg(name));
        if (name.toInt() > 0 && arguments.open(QIODevice::ReadOnly) &&
            arguments.readAll().endsWith(QByteArray("\0relay\0", 7)) &&
            statusOf(name.toInt()).constLast() == statusOf(server).constLast())
            return name.toInt();
    }
    return 0;
}

QStringList foldersOfJobs()
{
    return QDir(QDir::tempPath()).entryList({QStringLiteral("zo-mpi-*")}, QDir::Dirs);
}
} // namespace

void tst_zoMpiGroup::initTestCase()
{
    zoTestCase::initTestCase();
    // Other tests have folders of jobs, too.
    QVERIFY(m_folder.isValid());
    qputenv("TMPDIR", QFile::encodeName(m_folder.path()));
    if (QStandardPaths::findExecutable(QStringLiteral("mpirun")).isEmpty())
        QSKIP("mpirun is not installed (openmpi-bin)");
}

void tst_zoMpiGroup::init()
{
    m_processes.clear();
    m_ended.clear();
    m_details.clear();
    m_ready.clear();
    zoMpiGroup::Job job;
    job.relay = QStringList({QStringLiteral(ZO_CLUSTER_SERVER), QStringLiteral("relay")});
    zoMpiGroup::Limits limits;
    limits.startMs = s_limitMs;
    m_group = std::make_unique<zoMpiGroup>(job, limits);
    connect(m_group.get(), &zoServerGroup::received, this, [this](int key, const zoServerMessage& message) {
        if (message.verb == "HELLO")
            m_processes.insert(key, zoServerHello::fromMessage(message).processId);
        if (message.verb == "READY")
            m_ready << key;
    });
    connect(m_group.get(), &zoServerGroup::restarting, this, [this](const QList<int>& keys) {
        for (const int key : keys)
            m_processes.remove(key);
    });
    connect(m_group.get(), &zoServerGroup::ended, this,
            [this](int key, const QString& reason, const QString& detail) {
                m_ended.insert(key, reason);
                m_details.insert(key, detail);
                m_processes.remove(key);
            });
}

// Every test ends its job, and no process and no folder stays.
void tst_zoMpiGroup::cleanup()
{
    const QList<qint64> processes = m_processes.values();
    QSignalSpy ended(m_group.get(), &zoServerGroup::allEnded);
    m_group->removeAll();
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, s_limitMs);
    for (const qint64 process : processes)
        QTRY_VERIFY_WITH_TIMEOUT(::kill(pid_t(process), 0) == -1, s_limitMs);
    QCOMPARE(foldersOfJobs().size(), 1);
    m_group.reset();
    QCOMPARE(foldersOfJobs(), QStringList());
    zoTestCase::cleanup();
}

zoServerGroup::Member tst_zoMpiGroup::member(int key) const
{
    zoServerGroup::Member member;
    member.key = key;
    member.program =
        QStringList({QStringLiteral(ZO_CLUSTER_SERVER), QStringLiteral("server"), QStringLiteral("--mpi")});
    return member;
}

void tst_zoMpiGroup::start(const QList<int>& keys)
{
    std::vector<zoServerGroup::Member> members;
    for (const int key : keys)
        members.push_back(member(key));
    m_group->add(members);
    QTRY_VERIFY_WITH_TIMEOUT(hasGreeted(keys), s_limitMs);
}

bool tst_zoMpiGroup::hasGreeted(const QList<int>& keys) const
{
    return QSet<int>(keys.begin(), keys.end()) == [this] {
        const QList<int> greeted = m_processes.keys();
        return QSet<int>(greeted.begin(), greeted.end());
    }();
}

void tst_zoMpiGroup::serversAnswer_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("1") << 1;
    QTest::newRow("2") << 2;
    QTest::newRow("4") << 4;
    QTest::newRow("8") << 8;
}

void tst_zoMpiGroup::serversAnswer()
{
    QFETCH(int, count);
    QList<int> keys;
    for (int i = 0; i < count; ++i)
        keys << 10 * i; // keys are no ranks
    start(keys);
    const QList<qint64> processes = m_processes.values();
    QCOMPARE(QSet<qint64>(processes.begin(), processes.end()).size(), count);
    m_group->send(keys, zoServerMessage::of("DRAW", {{QStringLiteral("frame"), 1}}));
    QTRY_COMPARE_WITH_TIMEOUT(m_ready.size(), count, s_limitMs);
    QVERIFY(m_ended.isEmpty());
}

void tst_zoMpiGroup::serverJoins()
{
    start({0, 1});
    QSignalSpy restarting(m_group.get(), &zoServerGroup::restarting);
    m_group->add({member(2)});
    QTRY_VERIFY_WITH_TIMEOUT(hasGreeted({0, 1, 2}), s_limitMs);
    QCOMPARE(restarting.count(), 1);
    QCOMPARE(restarting.first().first().value<QList<int>>(), QList<int>({0, 1}));
    QVERIFY(m_ended.isEmpty());
}

void tst_zoMpiGroup::serverLeaves()
{
    start({0, 1, 2});
    m_processes.remove(1);
    m_group->remove({1});
    QSignalSpy restarting(m_group.get(), &zoServerGroup::restarting);
    QTRY_COMPARE_WITH_TIMEOUT(restarting.count(), 1, s_limitMs);
    QTRY_VERIFY_WITH_TIMEOUT(hasGreeted({0, 2}), s_limitMs);
    QVERIFY(m_ended.isEmpty()); // it was told to go
}

void tst_zoMpiGroup::killedServerIsNamedAndOthersGoOn()
{
    start({0, 1, 2});
    QCOMPARE(::kill(pid_t(m_processes.value(1)), SIGKILL), 0);
    QTRY_COMPARE_WITH_TIMEOUT(m_ended.size(), 1, s_limitMs);
    QCOMPARE(m_ended.value(1), QString::fromLatin1(zoNodeReason::Ended));
    QVERIFY2(m_details.value(1).contains(QLatin1String("signal 9")), qPrintable(m_details.value(1)));
    QTRY_VERIFY_WITH_TIMEOUT(hasGreeted({0, 2}), s_limitMs);
}

void tst_zoMpiGroup::hungServerIsNamedAndOthersGoOn()
{
    start({0, 1, 2});
    const auto hung = pid_t(m_processes.value(2));
    QCOMPARE(::kill(hung, SIGSTOP), 0);
    QTRY_COMPARE_WITH_TIMEOUT(m_ended.size(), 1, s_limitMs);
    QCOMPARE(m_ended.value(2), QString::fromLatin1(zoNodeReason::Silent));
    QTRY_VERIFY_WITH_TIMEOUT(hasGreeted({0, 1}), s_limitMs);
    QTRY_VERIFY_WITH_TIMEOUT(::kill(hung, 0) == -1, s_limitMs);
}

// As in the middle of a speed test: more waits for it than the relay keeps.
void tst_zoMpiGroup::hungServerIsNamedWhileMuchWaitsForIt()
{
    start({0, 1, 2});
    QSignalSpy notes(m_group.get(), &zoMpiGroup::note);
    const auto hung = pid_t(m_processes.value(2));
    QCOMPARE(::kill(hung, SIGSTOP), 0);
    const zoServerMessage block{"DATA", QByteArray(s_blockSize, 'x')};
    for (int i = 0; i < s_blocks; ++i)
        m_group->send({2}, block);
    QTRY_VERIFY_WITH_TIMEOUT(!m_ended.isEmpty() || !notes.isEmpty(), s_limitMs);
    QCOMPARE(m_ended.keys(), QList<int>{2});
    QCOMPARE(m_ended.value(2), QString::fromLatin1(zoNodeReason::Silent));
    QTRY_VERIFY_WITH_TIMEOUT(hasGreeted({0, 1}), s_limitMs);
    QTRY_VERIFY_WITH_TIMEOUT(::kill(hung, 0) == -1, s_limitMs);
    QCOMPARE(notes.count(), 0); // neither mpirun nor the relay is to blame
}

// As on a machine that is cut off in the middle of a speed test: nothing of what the server sends is taken any more.
void tst_zoMpiGroup::serverThatSendsMuchEndsWhenItIsAlone()
{
    start({0});
    bool isSending = false;
    connect(m_group.get(), &zoServerGroup::received, this, [&isSending](int, const zoServerMessage& message) {
        isSending = isSending || message.verb == "DATA";
    });
    const auto server = pid_t(m_processes.value(0));
    const pid_t relay = relayBeside(server);
    QVERIFY(relay > 0);
    m_group->send({0}, zoServerMessage::of("FETCH", {{QStringLiteral("bytes"), s_blocks * s_blockSize},
                                                     {QStringLiteral("ms"), s_limitMs}}));
    QTRY_VERIFY_WITH_TIMEOUT(isSending, s_limitMs);

    QCOMPARE(::kill(relay, SIGSTOP), 0);
    // Without the event loop: the group would end both.
    QElapsedTimer clock;
    clock.start();
    while (isAlive(server) && clock.elapsed() < s_aloneMs)
        QThread::msleep(10);
    const bool hasEnded = !isAlive(server);
    ::kill(relay, SIGCONT);
    QVERIFY(hasEnded);
}

// What mpirun passes on, piece by piece: d is a message of server 1, h the HELLO of server 2, which comes at once where
// there is none, + signs of both, - signs of server 1 alone.
void tst_zoMpiGroup::silenceIsCountedByTheRelay_data()
{
    QTest::addColumn<QString>("pieces");
    QTest::addColumn<bool>("isLost");

    // The signs wait behind what server 1 sends, on a busy machine for long.
    QTest::newRow("much-of-another") << "+dddddddddddddddddddd+" << false;
    // It has its time to start, which is longer.
    QTest::newRow("before-its-hello") << "------------h+" << false;
    QTest::newRow("for-a-moment") << "+----+----+" << false;
    QTest::newRow("for-long") << "+-----" << true;
    QTest::newRow("for-long-beside-much-of-another") << "+d-d-d-d-dd-" << true;
}

// An mpirun that says one piece whenever the group beats, so that both count the same intervals.
void tst_zoMpiGroup::silenceIsCountedByTheRelay()
{
    QFETCH(QString, pieces);
    QFETCH(bool, isLost);
    const QTemporaryDir folder;
    const auto write = [&folder](const QString& name, const QByteArray& bytes) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    };
    write(QStringLiteral("mpirun"),
          "#!/bin/sh\nn=0; cat \"${0%/*}/$n\"\nwhile read -r verb size; do case $verb in\n"
          "BEAT) n=$((n + 1)); [ ! -f \"${0%/*}/$n\" ] || cat \"${0%/*}/$n\";;\nQUIT) exit;;\nesac; done\n");
    const auto say = [](const QList<int>& ranks, const QByteArray& whole, const zoServerMessage& message) {
        zoRankMessage inner;
        inner.ranks = ranks;
        inner.message = message;
        return inner.packed(whole).encoded();
    };
    const zoServerMessage hello = zoServerHello::own().message();
    const QByteArray helloOf2 = say({2}, "RANK", hello);
    const bool isLate = pieces.contains(QLatin1Char('h'));
    write(QStringLiteral("0"),
          hello.encoded() + say({1}, "RANK", hello) + (isLate ? QByteArray() : helloOf2));
    const QHash<QChar, QByteArray> said{{'d', say({1}, "RANK", {"DATA", "x"})},
                                        {'h', helloOf2},
                                        {'+', say({1, 2}, "SIGNS", {})},
                                        {'-', say({1}, "SIGNS", {})}};
    for (int i = 0; i < pieces.size(); ++i)
        write(QString::number(i + 1), said.value(pieces[i]));
    write(QString::number(pieces.size() + 1), say({1}, "RANK", {"DONE", {}}));
    const QByteArray path = qgetenv("PATH");
    const auto restore = qScopeGuard([&path] { qputenv("PATH", path); });
    qputenv("PATH", QFile::encodeName(folder.path()) + ':' + path);
    zoMpiGroup::Job job;
    job.relay = QStringList(QStringLiteral("relay"));
    zoMpiGroup group(job);
    QSignalSpy ended(&group, &zoServerGroup::ended);
    bool isDone = false;
    connect(&group, &zoServerGroup::received, this,
            [&isDone](int, const zoServerMessage& message) { isDone = isDone || message.verb == "DONE"; });
    group.add({member(1), member(2)});
    QTRY_VERIFY_WITH_TIMEOUT(isDone || ended.count() > 0, s_limitMs);

    QCOMPARE(ended.count(), isLost ? 1 : 0);
    if (isLost) {
        QCOMPARE(ended.first().value(0).toInt(), 2);
        QCOMPARE(ended.first().value(1).toString(), QString::fromLatin1(zoNodeReason::Silent));
    }
    QSignalSpy allEnded(&group, &zoServerGroup::allEnded);
    group.removeAll();
    QTRY_COMPARE_WITH_TIMEOUT(allEnded.count(), 1, s_limitMs);
}

// Before the first job works nobody knows whether MPI or the server is to blame: pipes tell which.
void tst_zoMpiGroup::missingProgramLeavesItToPipes()
{
    QSignalSpy unusable(m_group.get(), &zoMpiGroup::unusable);
    zoServerGroup::Member missing = member(1);
    missing.program = QStringList(QStringLiteral("/nowhere/ZOKEClusterServer"));
    m_group->add({member(0), missing});
    QTRY_COMPARE_WITH_TIMEOUT(unusable.count(), 1, s_limitMs);
    QVERIFY(!unusable.first().first().toString().isEmpty());
    QVERIFY(m_ended.isEmpty());
}

void tst_zoMpiGroup::missingProgramOfAllLeavesItToPipes()
{
    QSignalSpy unusable(m_group.get(), &zoMpiGroup::unusable);
    zoServerGroup::Member missing = member(1);
    missing.program = QStringList(QStringLiteral("/nowhere/ZOKEClusterServer"));
    m_group->add({missing});
    QTRY_COMPARE_WITH_TIMEOUT(unusable.count(), 1, s_limitMs);
    QVERIFY(m_ended.isEmpty());
}

void tst_zoMpiGroup::launcherWithoutMpiIsNoServersFault()
{
    zoMpiGroup::Job job;
    job.relay = QStringList({QStringLiteral(ZO_CLUSTER_SERVER), QStringLiteral("relay")});
    job.agent = QStringList(QStringLiteral("/bin/false"));
    zoMpiGroup group(job);
    QSignalSpy unusable(&group, &zoMpiGroup::unusable);
    QSignalSpy ended(&group, &zoServerGroup::ended);
    zoServerGroup::Member remote = member(1);
    remote.host = QStringLiteral("n1");
    group.add({remote});
    QTRY_COMPARE_WITH_TIMEOUT(unusable.count(), 1, s_limitMs);
    QVERIFY(!unusable.first().first().toString().isEmpty());
    QCOMPARE(ended.count(), 0);
}

// Pipes reach it: an address, of which mpirun would read the colons as its own.
void tst_zoMpiGroup::hostThatMpirunCannotTakeIsNoServersFault()
{
    start({0});
    QSignalSpy unusable(m_group.get(), &zoMpiGroup::unusable);
    QSignalSpy restarting(m_group.get(), &zoServerGroup::restarting);
    zoServerGroup::Member remote = member(1);
    remote.host = QStringLiteral("fe80::1");
    m_group->add({remote});
    QTRY_COMPARE_WITH_TIMEOUT(unusable.count(), 1, s_limitMs);
    QVERIFY(unusable.first().first().toString().contains(QLatin1String("fe80::1")));
    QCOMPARE(restarting.count(), 1);
    QVERIFY(m_ended.isEmpty());
}

// The barrier that all pass lets those wait that have nothing to show, too: the next frame comes after it.
void tst_zoMpiGroup::frameIsShownByAll()
{
    start({0, 1, 2});
    for (int frame = 1; frame <= 20; ++frame) {
        const QList<int> keys = frame % 2 == 0 ? QList<int>({0, 1, 2}) : QList<int>({frame % 3});
        m_ready.clear();
        m_group->send(keys, zoServerMessage::of("DRAW", {{QStringLiteral("frame"), frame}}));
        QTRY_COMPARE_WITH_TIMEOUT(m_ready.size(), keys.size(), s_limitMs);
        m_group->send(keys, zoServerMessage::of("GO", {{QStringLiteral("frame"), frame}}));
    }
    QVERIFY(m_ended.isEmpty());
}

void tst_zoMpiGroup::emptyGroupEndsAtOnce()
{
    QVERIFY(m_ended.isEmpty());
}

ZO_TEST_MAIN(tst_zoMpiGroup)
#include "tst_zoMpiGroup.moc"
