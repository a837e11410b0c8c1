#include "zoTestCase.h"

#include <zoClusterNodeLocks.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>

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

ZO_TEST_MAIN(tst_zoClusterNodeLocks)
#include "tst_zoClusterNodeLocks.moc"
