#include "zoChannelLink.h"

#include <zoServerBeat.h>
#include <zoServerChannel.h>
#include <zoServerMessageReader.h>

#include <QFile>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>

#include <unistd.h>

namespace
{
constexpr int s_relay = 0;
constexpr int s_turnMs = 100;
constexpr int s_leaveMs = 1000;
constexpr int s_usualPatience = 2;
constexpr int s_lastIntervals = 3;
constexpr int s_exitAlone = 3;

// MPI's daemon of this job on this machine, which started this program, waits for a minute and longer before it
// believes that the connection to the others is gone.
void endDaemon()
{
    const pid_t daemon = getppid();
    QFile name(QStringLiteral("/proc/%1/comm").arg(daemon));
    if (daemon > 1 && name.open(QIODevice::ReadOnly) && name.readAll() == "orted\n")
        kill(daemon, SIGTERM);
}
} // namespace

zoChannelLink::zoChannelLink(std::unique_ptr<zoServerChannel> channel, QObject* parent)
    : zoServerLink(parent), m_channel(std::move(channel)), m_patience(s_usualPatience)
{
    connect(&m_turns, &QTimer::timeout, this, [this] {
        ++m_turn;
        m_patience = s_usualPatience;
    });
}

zoChannelLink::~zoChannelLink()
{
    if (m_thread.joinable()) {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_isEnding = true;
        }
        m_end.notify_one();
        m_thread.join();
    }
    // Nothing is left that would have to be put away.
    if (!m_channel->close(s_leaveMs))
        _exit(0);
}

void zoChannelLink::open(const zoServerMessage& hello)
{
    QString reason;
    const bool isOpen =
        m_channel->open({[this](int, const QByteArray& bytes) { receive(bytes); }, [this] { passBarrier(); },
                         [this](const QString& why) {
                             std::fprintf(stderr, "%s\n", qPrintable(why));
                             emit closed();
                         }},
                        reason);
    if (!isOpen) {
        std::fprintf(stderr, "%s\n", qPrintable(reason));
        QMetaObject::invokeMethod(this, &zoServerLink::closed, Qt::QueuedConnection);
        return;
    }
    m_turns.start(s_turnMs);
    send(hello);
    m_thread = std::thread([this] { run(); });
}

void zoChannelLink::send(const zoServerMessage& message)
{
    m_channel->send(s_relay, message.encoded());
}

void zoChannelLink::waitForSent(qint64 bytes)
{
    // Silence of the others ends the program, which ends this wait.
    m_isSending = true;
    while (m_channel->bytesToSend() > bytes)
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    m_isSending = false;
}

void zoChannelLink::expectWork(int milliseconds)
{
    // Whoever says so is alive: the time counts from now.
    ++m_turn;
    m_patience = std::max(m_patience.load(), milliseconds / zoServerBeat::Interval + s_usualPatience);
}

void zoChannelLink::together(const std::function<void()>& act)
{
    m_act = act;
    m_channel->enterBarrier();
}

void zoChannelLink::passBarrier()
{
    const std::function<void()> act = std::move(m_act);
    m_act = nullptr;
    act();
    while (!m_act && !m_held.empty()) {
        const zoServerMessage message = m_held.front();
        m_held.pop_front();
        deliver(message);
    }
}

void zoChannelLink::deliver(const zoServerMessage& message)
{
    // All ranks pass the barrier, also those that have nothing to show.
    if (message.verb == "PASS")
        together([] {});
    else
        emit received(message);
}

void zoChannelLink::receive(const QByteArray& bytes)
{
    zoServerMessageReader reader;
    reader.feed(bytes);
    zoServerMessage message;
    if (reader.next(message) != zoServerMessageReader::Outcome::Message || message.verb == "BEAT")
        return;
    // The end does not wait for ranks that hang.
    if (m_act && message.verb != "QUIT")
        m_held.push_back(message);
    else
        deliver(message);
}

void zoChannelLink::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_end.wait_for(lock, std::chrono::milliseconds(zoServerBeat::Interval),
                           [this] { return m_isEnding; }))
        tick();
}

void zoChannelLink::tick()
{
    if (m_aloneFor > 0) {
        if (++m_aloneFor > s_lastIntervals)
            _exit(s_exitAlone);
        return;
    }
    const int turn = m_turn;
    const bool hasTurned = turn != m_lastTurn;
    m_turnsMissed = hasTurned ? 0 : m_turnsMissed + 1;
    m_lastTurn = turn;
    const int arrived = m_channel->arrived();
    if (arrived != m_lastArrived)
        m_silence = 0;
    m_lastArrived = arrived;
    // The channel takes only so much while the event loop does not turn: silence says nothing then, but while the loop
    // waits for what it sends, and is sent nothing.
    if (arrived != 0 && (hasTurned || m_isSending) && ++m_silence > zoServerBeat::TicksUntilAlone) {
        m_aloneFor = 1;
        endDaemon();
        QMetaObject::invokeMethod(this, &zoServerLink::closed, Qt::QueuedConnection);
        return;
    }
    if (m_turnsMissed <= m_patience)
        m_channel->send(s_relay, zoServerMessage{"BEAT", {}}.encoded());
}
