#include "zoTestCase.h"

#include <zoRankMessage.h>
#include <zoServerBeat.h>
#include <zoServerMessageReader.h>

#include <QApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// Rank 0 of a job, with a channel that does as it is told.
class tst_zoMpiRelay final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void floodIsPassedOnAndServersLive();
    void serverThatTakesNothingLetsTheOtherLive();
    void muchWaitsForAServerThatTakesNothing();

private:
    void tell(const QByteArray& verb, const QByteArray& payload = QByteArray());
    bool read();

    QTemporaryDir m_folder;
    QProcess m_relay;
    QTimer m_beat;     // of the head
    int m_ticks = 0;   // of it
    int m_output = -1; // of the relay, as the head has it; read when the test wants to
    int m_beats = 0;   // that server 2 got
    int m_blocks = 0;  // of server 1
    int m_signs = 0;   // messages of signs
    int m_count = -1;  // that server 1 said
    bool m_isTaken = false;
    zoServerMessageReader m_reader{zoServerMessageReader::Start::AfterNoise};
};

namespace
{
constexpr int s_limitMs = 60000;
constexpr int s_beats = 10;
constexpr int s_blocks = 12;
constexpr int s_manyBlocks = 64;
constexpr int s_blockSize = 1024 * 1024;
} // namespace

void tst_zoMpiRelay::initTestCase()
{
    zoTestCase::initTestCase();
    QVERIFY(m_folder.isValid());
    connect(&m_relay, &QProcess::readyReadStandardError, this,
            [this] { m_beats += m_relay.readAllStandardError().count("beat\n"); });
    connect(&m_beat, &QTimer::timeout, this, [this] {
        ++m_ticks;
        m_relay.write(zoServerMessage{"BEAT", {}}.encoded());
    });
}

void tst_zoMpiRelay::init()
{
    const QByteArray fifo = QFile::encodeName(m_folder.filePath(QStringLiteral("output")));
    unlink(fifo.constData());
    QCOMPARE(mkfifo(fifo.constData(), 0600), 0);
    m_output = open(fifo.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    QVERIFY(m_output >= 0);
    m_beats = 0;
    m_blocks = 0;
    m_signs = 0;
    m_count = -1;
    m_isTaken = false;
    m_reader = zoServerMessageReader(zoServerMessageReader::Start::AfterNoise);
    m_relay.setStandardOutputFile(QFile::decodeName(fifo));
    m_relay.start(QStringLiteral(ZO_MPI_RELAY_JOB), QStringList());
    m_beat.start(zoServerBeat::Interval);
    QTRY_VERIFY_WITH_TIMEOUT(m_beats > 0, s_limitMs);
}

void tst_zoMpiRelay::cleanup()
{
    m_beat.stop();
    m_relay.write(zoServerMessage{"QUIT", {}}.encoded());
    QVERIFY(m_relay.waitForFinished(s_limitMs));
    QCOMPARE(m_relay.exitCode(), 0);
    close(m_output);
    zoTestCase::cleanup();
}

void tst_zoMpiRelay::tell(const QByteArray& verb, const QByteArray& payload)
{
    zoRankMessage inner;
    inner.ranks = {1};
    inner.message = {verb, payload};
    m_relay.write(inner.packed("RANKS").encoded());
}

// What there is. True when server 1 said all.
bool tst_zoMpiRelay::read()
{
    QByteArray bytes(64 * 1024, Qt::Uninitialized);
    ssize_t count = 0;
    while ((count = ::read(m_output, bytes.data(), std::size_t(bytes.size()))) > 0)
        m_reader.feed(bytes.left(int(count)));
    zoServerMessage message;
    while (m_reader.next(message) == zoServerMessageReader::Outcome::Message) {
        zoRankMessage inner;
        m_signs += message.verb == "SIGNS" ? 1 : 0;
        if (message.verb != "RANK" || !inner.unpack(message))
            continue;
        m_blocks += inner.message.verb == "DATA" ? 1 : 0;
        m_isTaken = m_isTaken || inner.message.verb == "TAKEN";
        if (inner.message.verb == "COUNT")
            m_count = inner.message.payload.toInt();
    }
    return m_blocks == s_blocks || m_isTaken;
}

// A server that is not told anything for 1.4 s ends itself, while the head may take longer to read what another one sends.
void tst_zoMpiRelay::floodIsPassedOnAndServersLive()
{
    tell("FLOOD");
    const int beats = m_beats;
    const int ticks = m_ticks;
    QTRY_VERIFY_WITH_TIMEOUT(m_beats >= beats + s_beats && m_ticks >= ticks + s_beats, s_limitMs);
    // One for each interval, not thousands, however long this program had to wait for a core.
    QVERIFY2(m_beats - beats < 50 * (m_ticks - ticks), qPrintable(QString::number(m_beats - beats)));

    QTRY_VERIFY_WITH_TIMEOUT(read(), s_limitMs);
    QCOMPARE(m_blocks, s_blocks);
}

void tst_zoMpiRelay::serverThatTakesNothingLetsTheOtherLive()
{
    tell("HOLD");

    QTRY_VERIFY_WITH_TIMEOUT(read(), s_limitMs);
    QVERIFY(m_isTaken);
    // Who takes nothing is told to the head meanwhile: nobody else could name it.
    QVERIFY2(m_signs >= s_beats, qPrintable(QString::number(m_signs)));
}

// The relay keeps some of it, the rest waits where it comes from; nothing of it is lost.
void tst_zoMpiRelay::muchWaitsForAServerThatTakesNothing()
{
    tell("HOLD");
    for (int i = 0; i < s_manyBlocks; ++i)
        tell("DATA", QByteArray(s_blockSize, 'x'));
    tell("COUNT");
    const int beats = m_beats;

    QTRY_VERIFY_WITH_TIMEOUT(m_beats >= beats + s_beats / 2, s_limitMs);
    QVERIFY2(m_relay.bytesToWrite() > s_manyBlocks / 2 * qint64(s_blockSize),
             qPrintable(QString::number(m_relay.bytesToWrite())));

    QTRY_VERIFY_WITH_TIMEOUT(read() && m_count >= 0, s_limitMs);
    QVERIFY(m_isTaken);
    QCOMPARE(m_count, s_manyBlocks);
}

ZO_TEST_MAIN(tst_zoMpiRelay)
#include "tst_zoMpiRelay.moc"
