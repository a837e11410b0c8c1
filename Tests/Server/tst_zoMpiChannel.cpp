#include "zoTestCase.h"

#include <zoMpirunCommand.h>

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <csignal>
#include <unistd.h>

// Messages and barriers between real processes of a real job.
class tst_zoMpiChannel final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void messagesArriveWholeAndInOrder_data();
    void messagesArriveWholeAndInOrder();
    void nothingStaysBehind();
    void killedRankEndsTheJob();

private:
    void startJob(QProcess& process, int ranks, const QString& sizes, int barriers);

    QTemporaryDir m_folder;
};

namespace
{
// Ends in time even on a machine that is busy with other tests.
constexpr int s_limitMs = 60000;
} // namespace

void tst_zoMpiChannel::initTestCase()
{
    zoTestCase::initTestCase();
    QVERIFY(m_folder.isValid());
    if (QStandardPaths::findExecutable(QStringLiteral("mpirun")).isEmpty())
        QSKIP("mpirun is not installed (openmpi-bin)");
}

void tst_zoMpiChannel::startJob(QProcess& process, int ranks, const QString& sizes, int barriers)
{
    zoMpirunCommand::Job job;
    job.sessionFolder = m_folder.path();
    job.isRoot = geteuid() == 0;
    job.machines.push_back({QString(),
                            ranks,
                            {QStringLiteral(ZO_MPI_CHANNEL_JOB), QStringLiteral(ZO_SERVER_MPI), sizes,
                             QString::number(barriers)}});
    const zoMpirunCommand command(job);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QMap<QString, QString> added = command.environment();
    for (auto it = added.cbegin(); it != added.cend(); ++it)
        environment.insert(it.key(), it.value());
    process.setProcessEnvironment(environment);
    process.start(command.program(), command.arguments());
}

void tst_zoMpiChannel::messagesArriveWholeAndInOrder_data()
{
    QTest::addColumn<int>("ranks");
    QTest::addColumn<QString>("sizes");
    // Open MPI hands over what is shorter than 4,096 bytes in shared memory at once, and longer messages in pieces.
    const QString sizes = QStringLiteral("0,1,4031,4032,4033,4095,4096,4097,32767,32768,32769,1048577,0,2");
    QTest::newRow("alone") << 1 << sizes;
    QTest::newRow("two") << 2 << sizes;
    QTest::newRow("four") << 4 << sizes;
    QTest::newRow("eight") << 8 << QStringLiteral("0,4096,65537");
}

void tst_zoMpiChannel::messagesArriveWholeAndInOrder()
{
    QFETCH(int, ranks);
    QFETCH(QString, sizes);
    QProcess process;
    startJob(process, ranks, sizes, 20);
    QVERIFY(process.waitForFinished(s_limitMs));
    const QByteArray errors = process.readAllStandardError();
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0, errors.constData());
    QCOMPARE(process.readAllStandardOutput(), QStringLiteral("%1 ranks agree\n").arg(ranks).toLocal8Bit());
    QCOMPARE(errors, QByteArray());
}

void tst_zoMpiChannel::nothingStaysBehind()
{
    QProcess process;
    startJob(process, 2, QStringLiteral("1"), 1);
    QVERIFY(process.waitForFinished(s_limitMs));
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(QDir(m_folder.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::Hidden),
             QStringList());
}

void tst_zoMpiChannel::killedRankEndsTheJob()
{
    QProcess process;
    // More barriers than the test waits for.
    startJob(process, 4, QStringLiteral("1"), 1000000000);
    QVERIFY(process.waitForStarted());
    QByteArray ranks;
    const auto ranksRun = [&] {
        QProcess list;
        list.start(QStringLiteral("pgrep"), {QStringLiteral("-P"), QString::number(process.processId())});
        list.waitForFinished();
        ranks = list.readAllStandardOutput();
        return ranks.split('\n').size() - 1 == 4;
    };
    QTRY_VERIFY_WITH_TIMEOUT(ranksRun(), s_limitMs);
    QCOMPARE(::kill(ranks.split('\n').first().toInt(), SIGKILL), 0);
    QVERIFY(process.waitForFinished(s_limitMs));
    QVERIFY(process.exitCode() != 0);
}

ZO_TEST_MAIN(tst_zoMpiChannel)
#include "tst_zoMpiChannel.moc"
