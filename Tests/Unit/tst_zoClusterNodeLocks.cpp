#include "zoTestCase.h"

#include <zoClusterNodeLocks.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <csignal>
#include <memory>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

using Outcome = zoClusterNodeLocks::Outcome;

// The marks by which sessions of one machine see each other.
class tst_zoClusterNodeLocks final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void nodeIsFreeForTheFirstAndInUseForTheSecond();
    void sharedNodeIsMarkedForBoth();
    void ownMarkIsNoHindrance();
    void idAndPortTogetherMakeTheNode();
    void otherDirectoryIsAnotherMachine();
    void destructionReleases();
    void tenThousandNodesNeedFewFiles();
    void directoryIsMadeForTheUserAlone();
    void fileInPlaceOfTheDirectoryIsReported();
    void linkInPlaceOfTheDirectoryIsRefused();
    void linkInPlaceOfTheLockFileIsRefused();
    void directoryOfSomebodyElseIsRefused();
    void marksOfASessionThatDiedCountNoMore();
    void marksGivenBackOneByOneAreFree();
    void everySessionSeesWhatCameLater();
    void aQuarterOfAMillionNodesAreMarkedInTime();
    void nothingIsLeftBehind();
    void whoStopsInTheMiddleStopsNobody();

private:
    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_zoClusterNodeLocks::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void tst_zoClusterNodeLocks::nodeIsFreeForTheFirstAndInUseForTheSecond()
{
    zoClusterNodeLocks first;
    zoClusterNodeLocks second;
    first.setDirectory(m_directory->path());
    second.setDirectory(m_directory->path());

    QCOMPARE(first.acquire("n1", 8889, false), Outcome::Free);
    QCOMPARE(second.acquire("n1", 8889, false), Outcome::InUse);
    first.release("n1", 8889);
    QCOMPARE(second.acquire("n1", 8889, false), Outcome::Free);
}

void tst_zoClusterNodeLocks::sharedNodeIsMarkedForBoth()
{
    zoClusterNodeLocks first;
    zoClusterNodeLocks second;
    zoClusterNodeLocks third;
    for (zoClusterNodeLocks* locks : {&first, &second, &third})
        locks->setDirectory(m_directory->path());
    QCOMPARE(first.acquire("n1", 8889, false), Outcome::Free);

    QCOMPARE(second.acquire("n1", 8889, true), Outcome::Shared);
    first.releaseAll();

    QCOMPARE(third.acquire("n1", 8889, false), Outcome::InUse);
    second.releaseAll();
    QCOMPARE(third.acquire("n1", 8889, false), Outcome::Free);
}

void tst_zoClusterNodeLocks::ownMarkIsNoHindrance()
{
    zoClusterNodeLocks locks;
    locks.setDirectory(m_directory->path());
    QCOMPARE(locks.acquire("n1", 8889, false), Outcome::Free);

    QCOMPARE(locks.acquire("n1", 8889, false), Outcome::Free);
}

void tst_zoClusterNodeLocks::idAndPortTogetherMakeTheNode()
{
    zoClusterNodeLocks first;
    zoClusterNodeLocks second;
    first.setDirectory(m_directory->path());
    second.setDirectory(m_directory->path());
    QCOMPARE(first.acquire("n1", 8889, false), Outcome::Free);

    QCOMPARE(second.acquire("n1", 8890, false), Outcome::Free);
    QCOMPARE(second.acquire("n18889", 0, false), Outcome::Free);
    QCOMPARE(second.acquire("N1", 8889, false), Outcome::Free);
    QCOMPARE(second.acquire(QString::fromUtf8("n1\xc3\xa9"), 8889, false), Outcome::Free);
}

void tst_zoClusterNodeLocks::otherDirectoryIsAnotherMachine()
{
    zoClusterNodeLocks first;
    zoClusterNodeLocks second;
    first.setDirectory(m_directory->filePath("a"));
    second.setDirectory(m_directory->filePath("b"));
    QCOMPARE(first.acquire("n1", 8889, false), Outcome::Free);

    QCOMPARE(second.acquire("n1", 8889, false), Outcome::Free);
}

void tst_zoClusterNodeLocks::destructionReleases()
{
    auto first = std::make_unique<zoClusterNodeLocks>();
    first->setDirectory(m_directory->path());
    QCOMPARE(first->acquire("n1", 8889, false), Outcome::Free);

    first.reset();

    zoClusterNodeLocks second;
    second.setDirectory(m_directory->path());
    QCOMPARE(second.acquire("n1", 8889, false), Outcome::Free);
}

void tst_zoClusterNodeLocks::tenThousandNodesNeedFewFiles()
{
    zoClusterNodeLocks locks;
    locks.setDirectory(m_directory->path());

    for (int i = 0; i < 10000; ++i)
        QCOMPARE(locks.acquire(QStringLiteral("n%1").arg(i), 8889, false), Outcome::Free);

    QVERIFY(QDir(m_directory->path()).entryList(QDir::Files | QDir::Hidden).size() <= 32);
}

void tst_zoClusterNodeLocks::directoryIsMadeForTheUserAlone()
{
    zoClusterNodeLocks locks;
    locks.setDirectory(m_directory->filePath("made"));

    QCOMPARE(locks.acquire("n1", 8889, false), Outcome::Free);

    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                      QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QCOMPARE(QFile::permissions(m_directory->filePath("made")) & others, QFile::Permissions());
}

void tst_zoClusterNodeLocks::fileInPlaceOfTheDirectoryIsReported()
{
    QFile file(m_directory->filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    zoClusterNodeLocks locks;
    locks.setDirectory(file.fileName());

    QCOMPARE(locks.acquire("n1", 8889, false), Outcome::NoLocking);

    QVERIFY2(locks.errorString().contains(file.fileName()), qPrintable(locks.errorString()));
}

void tst_zoClusterNodeLocks::linkInPlaceOfTheDirectoryIsRefused()
{
    QVERIFY(QDir(m_directory->path()).mkdir("real"));
    QVERIFY(QFile::link(m_directory->filePath("real"), m_directory->filePath("link")));
    zoClusterNodeLocks locks;
    locks.setDirectory(m_directory->filePath("link"));

    QCOMPARE(locks.acquire("n1", 8889, false), Outcome::NoLocking);
}

void tst_zoClusterNodeLocks::linkInPlaceOfTheLockFileIsRefused()
{
    zoClusterNodeLocks before;
    before.setDirectory(m_directory->filePath("a"));
    QCOMPARE(before.acquire("n1", 8889, false), Outcome::Free);
    const QString name = QDir(m_directory->filePath("a")).entryList(QDir::Files | QDir::Hidden).constFirst();
    QVERIFY(QDir(m_directory->path()).mkdir("b"));
    QVERIFY(QFile::link(m_directory->filePath("victim"), m_directory->filePath("b/") + name));
    zoClusterNodeLocks locks;
    locks.setDirectory(m_directory->filePath("b"));

    QCOMPARE(locks.acquire("n1", 8889, false), Outcome::NoLocking);

    QVERIFY(!QFileInfo::exists(m_directory->filePath("victim")));
}

void tst_zoClusterNodeLocks::directoryOfSomebodyElseIsRefused()
{
    // As root a folder is given away; anybody else has one of root's.
    QString folder = QStringLiteral("/tmp");
    if (geteuid() == 0) {
        folder = m_directory->filePath("planted");
        QVERIFY(QDir().mkdir(folder));
        QCOMPARE(chown(QFile::encodeName(folder).constData(), 12345, 12345), 0);
    }
    zoClusterNodeLocks locks;
    locks.setDirectory(folder);

    QCOMPARE(locks.acquire("n1", 8889, false), Outcome::NoLocking);

    QCOMPARE(locks.errorString(), folder + QStringLiteral(": not a directory of this user"));
}

void tst_zoClusterNodeLocks::marksOfASessionThatDiedCountNoMore()
{
    int ready[2];
    QCOMPARE(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        zoClusterNodeLocks locks;
        locks.setDirectory(m_directory->path());
        const char answer = locks.acquire("n1", 8889, false) == Outcome::Free ? 'y' : 'n';
        if (write(ready[1], &answer, 1) == 1)
            pause();
        _exit(1);
    }
    close(ready[1]);
    char answer = 0;
    QCOMPARE(read(ready[0], &answer, 1), ssize_t(1));
    close(ready[0]);
    QCOMPARE(answer, 'y');
    zoClusterNodeLocks before;
    before.setDirectory(m_directory->path());
    QCOMPARE(before.acquire("n1", 8889, false), Outcome::InUse);

    kill(child, SIGKILL);
    QCOMPARE(waitpid(child, nullptr, 0), child);

    // One that knew the session, and one that comes later.
    QCOMPARE(before.acquire("n1", 8889, false), Outcome::Free);
    before.releaseAll();
    zoClusterNodeLocks after;
    after.setDirectory(m_directory->path());
    QCOMPARE(after.acquire("n1", 8889, false), Outcome::Free);
    QCOMPARE(QDir(m_directory->path()).entryList({"zo-cluster-session-*"}, QDir::Files).size(), 1);
}

void tst_zoClusterNodeLocks::marksGivenBackOneByOneAreFree()
{
    zoClusterNodeLocks first;
    zoClusterNodeLocks second;
    first.setDirectory(m_directory->path());
    second.setDirectory(m_directory->path());
    for (const char* name : {"n1", "n2", "n3"})
        QCOMPARE(first.acquire(name, 8889, false), Outcome::Free);
    QCOMPARE(second.acquire("n2", 8889, false), Outcome::InUse);

    first.release("n2", 8889);

    QCOMPARE(second.acquire("n1", 8889, false), Outcome::InUse);
    QCOMPARE(second.acquire("n2", 8889, false), Outcome::Free);
    QCOMPARE(second.acquire("n3", 8889, false), Outcome::InUse);
    QCOMPARE(first.acquire("n2", 8889, true), Outcome::Shared);
    first.release("n2", 8889);
    second.release("n2", 8889);
    QCOMPARE(first.acquire("n2", 8889, false), Outcome::Free);
}

void tst_zoClusterNodeLocks::everySessionSeesWhatCameLater()
{
    zoClusterNodeLocks sessions[4];
    for (zoClusterNodeLocks& locks : sessions)
        locks.setDirectory(m_directory->path());

    // In turns, so that each list grows between the looks of the others.
    for (int i = 0; i < 400; ++i)
        QCOMPARE(sessions[i % 4].acquire(QStringLiteral("n%1").arg(i), 8889, false), Outcome::Free);

    for (int i = 0; i < 400; ++i)
        QCOMPARE(sessions[(i + 1) % 4].acquire(QStringLiteral("n%1").arg(i), 8889, false), Outcome::InUse);
}

void tst_zoClusterNodeLocks::aQuarterOfAMillionNodesAreMarkedInTime()
{
    // A lock for each took minutes, with the square of their number; the test would run into its time limit.
    constexpr int Count = 250000;
    zoClusterNodeLocks first;
    zoClusterNodeLocks second;
    first.setDirectory(m_directory->path());
    second.setDirectory(m_directory->path());

    for (int i = 0; i < Count; ++i) {
        if (first.acquire(QStringLiteral("n%1").arg(i), 8889, true) != Outcome::Free)
            QFAIL("not free");
    }

    QCOMPARE(second.acquire(QStringLiteral("n%1").arg(Count - 1), 8889, false), Outcome::InUse);
    QCOMPARE(second.acquire(QStringLiteral("n%1").arg(Count), 8889, false), Outcome::Free);
}

void tst_zoClusterNodeLocks::nothingIsLeftBehind()
{
    {
        zoClusterNodeLocks locks;
        locks.setDirectory(m_directory->path());
        QCOMPARE(locks.acquire("n1", 8889, false), Outcome::Free);
    }

    QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files | QDir::Hidden),
             QStringList("zo-cluster-nodes.lock"));
}

void tst_zoClusterNodeLocks::whoStopsInTheMiddleStopsNobody()
{
    zoClusterNodeLocks locks;
    locks.setDirectory(m_directory->path());
    QCOMPARE(locks.acquire("n1", 8889, false), Outcome::Free);
    const int stopped = open(QFile::encodeName(m_directory->filePath("zo-cluster-nodes.lock")), O_RDWR);
    QVERIFY(stopped != -1);
    QCOMPARE(flock(stopped, LOCK_EX), 0);

    QCOMPARE(locks.acquire("n2", 8889, false), Outcome::NoLocking);

    close(stopped);
    QCOMPARE(locks.acquire("n2", 8889, false), Outcome::Free);
}

ZO_TEST_MAIN(tst_zoClusterNodeLocks)
#include "tst_zoClusterNodeLocks.moc"
