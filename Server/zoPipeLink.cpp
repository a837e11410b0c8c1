#include "zoPipeLink.h"

#include <zoServerBeat.h>
#include <zoServerMessageReader.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace
{
constexpr int s_input = STDIN_FILENO;
constexpr int s_output = STDOUT_FILENO;
constexpr int s_turnMs = 100;
// Intervals without a turn of the event loop that are usual on a busy machine.
constexpr int s_usualPatience = 2;
// Intervals between the end of the other side and the end by force.
constexpr int s_lastIntervals = 3;
constexpr int s_exitAlone = 3;
// Bytes that wait for the event loop: beyond it nothing is read, so that whoever sends waits.
constexpr qint64 s_mostUndelivered = 8 * qint64(1024 * 1024);

void setNonBlocking(int file)
{
    const int flags = fcntl(file, F_GETFL);
    if (flags != -1)
        fcntl(file, F_SETFL, flags | O_NONBLOCK);
}
} // namespace

zoPipeLink::zoPipeLink(Watch watch, QObject* parent) : zoServerLink(parent), m_watch(watch)
{
    m_patience = s_usualPatience;
    connect(&m_turns, &QTimer::timeout, this, [this] {
        ++m_turn;
        m_patience = s_usualPatience;
    });
}

zoPipeLink::~zoPipeLink()
{
    if (m_thread.joinable()) {
        close(m_wake[1]);
        m_thread.join();
        close(m_wake[0]);
    }
    delete m_reader;
}

void zoPipeLink::open(const zoServerMessage& hello)
{
    // A pipe that nobody reads is told by the write.
    std::signal(SIGPIPE, SIG_IGN);
    if (pipe2(m_wake, O_CLOEXEC | O_NONBLOCK) == -1)
        qFatal("no pipe");
    setNonBlocking(s_input);
    setNonBlocking(s_output);
    m_turns.start(s_turnMs);
    m_reader = new zoServerMessageReader;
    // A login script may have ended in the middle of a line.
    queue("\n" + hello.encoded());
    m_thread = std::thread([this] { run(); });
}

void zoPipeLink::send(const zoServerMessage& message)
{
    queue(message.encoded());
}

void zoPipeLink::queue(const QByteArray& bytes)
{
    {
        const std::lock_guard<std::mutex> lock(m_sending);
        m_queue.push_back(bytes);
        m_queued += bytes.size();
    }
    wake();
}

void zoPipeLink::wake()
{
    const char wish = 0;
    const ssize_t written = ::write(m_wake[1], &wish, 1); // a full pipe wakes as well
    Q_UNUSED(written)
}

void zoPipeLink::waitForSent(qint64 bytes)
{
    std::unique_lock<std::mutex> lock(m_sending);
    m_sent.wait(lock, [this, bytes] { return isSent(bytes); });
}

bool zoPipeLink::hasSent(qint64 bytes)
{
    const std::lock_guard<std::mutex> lock(m_sending);
    return isSent(bytes);
}

void zoPipeLink::setHeld(bool isHeld)
{
    m_isHeld = isHeld;
    wake();
}

bool zoPipeLink::reads() const
{
    return !m_isHeld && m_undelivered < s_mostUndelivered;
}

bool zoPipeLink::isSent(qint64 bytes) const
{
    return m_queued <= bytes || m_isAlone;
}

void zoPipeLink::expectWork(int milliseconds)
{
    // Whoever says so is alive: the time counts from now.
    ++m_turn;
    m_patience = std::max(m_patience.load(), milliseconds / zoServerBeat::Interval + s_usualPatience);
}

void zoPipeLink::run()
{
    using Clock = std::chrono::steady_clock;
    const auto interval = std::chrono::milliseconds(zoServerBeat::Interval);
    auto next = Clock::now() + interval;
    bool isOpen = true;
    bool wantsToWrite = true;
    while (!m_isEnding) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(next - Clock::now()).count();
        pollfd files[3] = {{m_wake[0], POLLIN, 0},
                           {isOpen && reads() ? s_input : -1, POLLIN, 0},
                           {wantsToWrite && !m_isAlone ? s_output : -1, POLLOUT, 0}};
        const int ready = poll(files, 3, int(std::clamp<qint64>(left, 0, zoServerBeat::Interval)));
        if (ready > 0 && files[0].revents != 0)
            takeWishes();
        if (ready > 0 && files[1].revents != 0 && !readSome()) {
            isOpen = false;
            beAlone();
        }
        if (Clock::now() >= next) {
            tick();
            // Not one tick for each interval that the program was stopped.
            next = Clock::now() + interval;
        }
        wantsToWrite = writeSome();
    }
    writeRest();
}

void zoPipeLink::takeWishes()
{
    char wishes[256];
    ssize_t count = 0;
    while ((count = ::read(m_wake[0], wishes, sizeof wishes)) > 0) {
    }
    m_isEnding = count == 0;
}

// What was said last is to be heard, if somebody listens.
void zoPipeLink::writeRest()
{
    constexpr int Tries = 5;
    for (int i = 0; i < Tries && !m_isAlone && writeSome(); ++i) {
        pollfd file = {s_output, POLLOUT, 0};
        poll(&file, 1, zoServerBeat::Interval / Tries);
    }
}

// Whether there is more to write, which did not go yet.
bool zoPipeLink::writeSome()
{
    for (;;) {
        QByteArray first;
        {
            const std::lock_guard<std::mutex> lock(m_sending);
            if (m_queue.empty())
                return false;
            first = m_queue.front();
        }
        const ssize_t count =
            ::write(s_output, first.constData() + m_written, std::size_t(first.size() - m_written));
        if (count < 0)
            return errno == EAGAIN || errno == EINTR;
        m_written += int(count);
        if (m_written < first.size())
            continue;
        m_written = 0;
        const std::lock_guard<std::mutex> lock(m_sending);
        m_queue.pop_front();
        m_queued -= first.size();
        m_sent.notify_all();
    }
}

// False at the end of the file, and when what comes is no message.
bool zoPipeLink::readSome()
{
    QByteArray bytes(256 * 1024, Qt::Uninitialized);
    const ssize_t count = ::read(s_input, bytes.data(), std::size_t(bytes.size()));
    if (count < 0)
        return errno == EAGAIN || errno == EINTR;
    if (count == 0)
        return false;
    m_silence = 0;
    bytes.truncate(int(count));
    m_reader->feed(bytes);
    zoServerMessage message;
    zoServerMessageReader::Outcome outcome = zoServerMessageReader::Outcome::Incomplete;
    while ((outcome = m_reader->next(message)) == zoServerMessageReader::Outcome::Message) {
        m_isWatching = m_watch == Watch::Beats;
        // Who is about to be busy says for how long.
        if (message.verb == "BEAT")
            m_allowedSilence = message.payload.toInt() / zoServerBeat::Interval;
        else
            deliver(message);
    }
    return outcome != zoServerMessageReader::Outcome::Broken;
}

void zoPipeLink::deliver(const zoServerMessage& message)
{
    m_undelivered += message.payload.size();
    QMetaObject::invokeMethod(
        this,
        [this, message] {
            const qint64 size = message.payload.size();
            if ((m_undelivered -= size) < s_mostUndelivered && m_undelivered + size >= s_mostUndelivered)
                wake();
            emit received(message);
        },
        Qt::QueuedConnection);
}

void zoPipeLink::tick()
{
    if (m_aloneFor > 0) {
        // The event loop was told, and had its time.
        if (++m_aloneFor > s_lastIntervals)
            _exit(s_exitAlone);
        return;
    }
    if (m_isWatching && reads() && ++m_silence > zoServerBeat::TicksUntilAlone + m_allowedSilence) {
        beAlone();
        return;
    }
    const int turn = m_turn;
    m_turnsMissed = turn == m_lastTurn ? m_turnsMissed + 1 : 0;
    m_lastTurn = turn;
    // A loop that does not turn is no sign of life, and what waits to be written is one already.
    if (m_turnsMissed > m_patience)
        return;
    const std::lock_guard<std::mutex> lock(m_sending);
    if (!m_queue.empty())
        return;
    m_queue.push_back(zoServerMessage{"BEAT", {}}.encoded());
    m_queued += m_queue.back().size();
}

void zoPipeLink::beAlone()
{
    if (m_aloneFor > 0)
        return;
    m_isAlone = true;
    m_aloneFor = 1;
    m_sent.notify_all();
    QMetaObject::invokeMethod(
        this, [this] { emit closed(); }, Qt::QueuedConnection);
}
