#include "zoMpiChannel.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QMutexLocker>

#include <mpi.h>

#include <memory>
#include <utility>
#include <vector>

namespace
{
constexpr int s_tag = 1;
// How long after the last event the thread looks without sleeping; then it sleeps, for the shorter times while others
// are awaited and while frames follow each other.
constexpr qint64 s_busyNs = 200000;
constexpr unsigned long s_waitingSleepUs = 50;
constexpr qint64 s_alertNs = 20000000;
constexpr qint64 s_alertSleepNs = 100000;
constexpr qint64 s_idleSleepNs = 1000000;
// Bytes that wait for the event loop: beyond it nothing is taken, so that whoever sends waits.
constexpr qint64 s_mostUndelivered = 8 * qint64(1024 * 1024);

QString textOf(int error)
{
    char text[MPI_MAX_ERROR_STRING];
    int size = 0;
    if (MPI_Error_string(error, text, &size) != MPI_SUCCESS)
        return QStringLiteral("MPI error %1").arg(error);
    return QString::fromLocal8Bit(text, size);
}
} // namespace

// Messages and the barrier that are under way.
class zoMpiChannel::Job final
{
public:
    // False with a reason. MPI counts the thread that begins as the only one that calls it.
    bool begin(QString& reason)
    {
        int provided = 0;
        const int error = MPI_Init_thread(nullptr, nullptr, MPI_THREAD_FUNNELED, &provided);
        if (error != MPI_SUCCESS) {
            reason = textOf(error);
            return false;
        }
        MPI_Comm_set_errhandler(MPI_COMM_WORLD, MPI_ERRORS_RETURN);
        MPI_Comm_rank(MPI_COMM_WORLD, &rank);
        MPI_Comm_size(MPI_COMM_WORLD, &size);
        return true;
    }

    void send(Outgoing&& outgoing)
    {
        m_sends.push_back({std::move(outgoing.message), MPI_REQUEST_NULL});
        Send& send = m_sends.back();
        note(MPI_Isend(send.message.constData(), send.message.size(), MPI_BYTE, outgoing.rank, s_tag,
                       MPI_COMM_WORLD, &send.request));
    }

    void enterBarrier() { note(MPI_Ibarrier(MPI_COMM_WORLD, &m_barrier)); }

    // One message that arrived; false when there is none.
    bool receive(int& from, QByteArray& message)
    {
        int arrived = 0;
        MPI_Message handle;
        MPI_Status status;
        if (!note(MPI_Improbe(MPI_ANY_SOURCE, s_tag, MPI_COMM_WORLD, &arrived, &handle, &status)) || !arrived)
            return false;
        int count = 0;
        MPI_Get_count(&status, MPI_BYTE, &count);
        message.resize(count);
        from = status.MPI_SOURCE;
        return note(MPI_Mrecv(message.data(), count, MPI_BYTE, &handle, MPI_STATUS_IGNORE));
    }

    // True once for each barrier that was entered.
    bool barrierPassed()
    {
        if (m_barrier == MPI_REQUEST_NULL)
            return false;
        int passed = 0;
        return note(MPI_Test(&m_barrier, &passed, MPI_STATUS_IGNORE)) && passed;
    }

    // Bytes that left since this was asked last.
    qint64 forgetSent()
    {
        qint64 bytes = 0;
        while (!m_sends.empty()) {
            int sent = 0;
            note(MPI_Test(&m_sends.front().request, &sent, MPI_STATUS_IGNORE));
            if (!sent)
                break;
            bytes += m_sends.front().message.size();
            m_sends.pop_front();
        }
        return bytes;
    }

    bool isSending() const { return !m_sends.empty(); }
    bool isWaiting() const { return m_barrier != MPI_REQUEST_NULL || isSending(); }
    int error() const { return m_error; }

    int rank = 0;
    int size = 0;

private:
    struct Send
    {
        QByteArray message;
        MPI_Request request;
    };

    bool note(int error)
    {
        if (error != MPI_SUCCESS && m_error == MPI_SUCCESS)
            m_error = error;
        return error == MPI_SUCCESS;
    }

    std::deque<Send> m_sends; // the addresses of what is being sent must stay
    MPI_Request m_barrier = MPI_REQUEST_NULL;
    int m_error = MPI_SUCCESS;
};

zoMpiChannel::zoMpiChannel() = default;

zoMpiChannel::~zoMpiChannel()
{
    close(-1);
}

bool zoMpiChannel::open(const Handlers& handlers, QString& reason)
{
    m_handlers = handlers;
    start();
    m_opened.acquire();
    reason = m_reason;
    return m_reason.isEmpty();
}

void zoMpiChannel::send(int rank, const QByteArray& message)
{
    if (rank < 0 || rank >= m_size)
        return;
    m_bytesToSend += message.size();
    const QMutexLocker locker(&m_mutex);
    // A copy of the bytes: the text may be changed in place while it is under way.
    m_outgoing.push_back({rank, QByteArray(message.constData(), message.size())});
    m_orders.wakeOne();
}

void zoMpiChannel::enterBarrier()
{
    const QMutexLocker locker(&m_mutex);
    m_wantsBarrier = true;
    m_orders.wakeOne();
}

bool zoMpiChannel::close(int limit)
{
    {
        const QMutexLocker locker(&m_mutex);
        m_wantsEnd = true;
        m_orders.wakeOne();
    }
    return limit < 0 ? wait() : wait(static_cast<unsigned long>(limit));
}

void zoMpiChannel::run()
{
    Job job;
    const bool begun = job.begin(m_reason);
    m_rank = job.rank;
    m_size = job.size;
    m_opened.release();
    if (!begun)
        return;

    QElapsedTimer sinceEvent;
    sinceEvent.start();
    while (!takeOrders(job)) {
        bool moved = false;
        int from = 0;
        QByteArray message;
        while (m_undelivered < s_mostUndelivered && job.receive(from, message)) {
            moved = true;
            ++m_arrived;
            m_undelivered += message.size();
            tell([this, from, message] {
                m_undelivered -= message.size();
                m_handlers.received(from, message);
            });
        }
        if (job.barrierPassed()) {
            moved = true;
            tell([this] { m_handlers.barrierPassed(); });
        }
        m_bytesToSend -= job.forgetSent();
        if (job.error() != MPI_SUCCESS) {
            fail(textOf(job.error()));
            return;
        }
        if (moved)
            sinceEvent.restart();
        else
            rest(sinceEvent, job.isWaiting());
    }
    MPI_Finalize();
}

// Gives the core away; an order wakes the thread.
void zoMpiChannel::rest(QElapsedTimer& sinceEvent, bool isWaiting)
{
    if (sinceEvent.nsecsElapsed() < s_busyNs) {
        yieldCurrentThread();
        return;
    }
    if (isWaiting) {
        usleep(s_waitingSleepUs);
        return;
    }
    QDeadlineTimer end(Qt::PreciseTimer);
    end.setPreciseRemainingTime(0, sinceEvent.nsecsElapsed() < s_alertNs ? s_alertSleepNs : s_idleSleepNs,
                                Qt::PreciseTimer);
    QMutexLocker locker(&m_mutex);
    if (m_outgoing.empty() && !m_wantsBarrier && !m_wantsEnd && m_orders.wait(&m_mutex, end))
        sinceEvent.restart();
}

// Gives MPI what the other thread wants to have done; true when that is the end.
bool zoMpiChannel::takeOrders(Job& job)
{
    std::deque<Outgoing> outgoing;
    bool barrier = false;
    bool end = false;
    {
        const QMutexLocker locker(&m_mutex);
        outgoing.swap(m_outgoing);
        barrier = std::exchange(m_wantsBarrier, false);
        end = m_wantsEnd;
    }
    for (Outgoing& message : outgoing)
        job.send(std::move(message));
    if (barrier)
        job.enterBarrier();
    return end && outgoing.empty() && !job.isSending();
}

void zoMpiChannel::tell(std::function<void()> call)
{
    QMetaObject::invokeMethod(&m_home, std::move(call), Qt::QueuedConnection);
}

void zoMpiChannel::fail(const QString& reason)
{
    tell([this, reason] { m_handlers.failed(reason); });
}

extern "C" Q_DECL_EXPORT zoServerChannel* zoServerChannelCreate();

zoServerChannel* zoServerChannelCreate()
{
    return new zoMpiChannel;
}
