#include "zoMpiRelay.h"

#include <zoRankMessage.h>
#include <zoServerBeat.h>
#include <zoServerChannel.h>
#include <zoServerHello.h>
#include <zoServerMessageReader.h>

#include <QCoreApplication>
#include <QThread>

#include <cstdio>

#include <unistd.h>

namespace
{
constexpr int s_leaveMs = 1000;
// Between looks at how much the servers took.
constexpr int s_waitMs = 1;
constexpr int s_brokenJob = 4;
// Bytes under way on one side that make the other side wait.
constexpr qint64 s_mostBytes = 8 * qint64(1024 * 1024);
} // namespace

zoMpiRelay::zoMpiRelay(std::unique_ptr<zoServerChannel> channel, QObject* parent)
    : QObject(parent), m_channel(std::move(channel)), m_link(zoPipeLink::Watch::Beats)
{
    connect(&m_link, &zoServerLink::received, this, &zoMpiRelay::take);
    connect(&m_link, &zoServerLink::closed, this, &zoMpiRelay::quit);
    connect(&m_wait, &QTimer::timeout, this, &zoMpiRelay::obeySome);
    connect(&m_beat, &QTimer::timeout, this, &zoMpiRelay::beat);
}

zoMpiRelay::~zoMpiRelay()
{
    // A rank that hangs must not keep this one.
    if (!m_channel->close(s_leaveMs))
        _exit(0);
}

bool zoMpiRelay::open()
{
    QString reason;
    const bool isOpen = m_channel->open({[this](int rank, const QByteArray& bytes) { hear(rank, bytes); },
                                         [this] {
                                             if (--m_barriers > 0)
                                                 m_channel->enterBarrier();
                                         },
                                         [](const QString& why) {
                                             std::fprintf(stderr, "%s\n", qPrintable(why));
                                             QCoreApplication::exit(s_brokenJob);
                                         }},
                                        reason);
    if (!isOpen) {
        std::fprintf(stderr, "%s\n", qPrintable(reason));
        return false;
    }
    m_link.open(zoServerHello::own().message());
    m_beat.start(zoServerBeat::Interval);
    m_sinceBeat.start();
    return true;
}

QList<int> zoMpiRelay::servers() const
{
    QList<int> ranks;
    for (int rank = 1; rank < m_channel->size(); ++rank)
        ranks << rank;
    return ranks;
}

// The end does not wait for servers that hang.
void zoMpiRelay::take(const zoServerMessage& message)
{
    if (message.verb == "QUIT") {
        quit();
        return;
    }
    m_orders.push_back(message);
    obeySome();
}

// A rank that hangs takes nothing: what is for others waits behind it, and the head, too, until it is told by the signs
// who that is, and ends the job.
void zoMpiRelay::obeySome()
{
    while (!m_orders.empty() && m_channel->bytesToSend() <= s_mostBytes) {
        const zoServerMessage message = m_orders.front();
        m_orders.pop_front();
        obey(message);
    }
    const bool waits = !m_orders.empty();
    if (waits == m_wait.isActive())
        return;
    m_link.setHeld(waits);
    if (waits)
        m_wait.start(s_waitMs);
    else
        m_wait.stop();
}

void zoMpiRelay::obey(const zoServerMessage& message)
{
    zoRankMessage inner;
    if (message.verb != "RANKS" || !inner.unpack(message))
        return;
    pass(inner.ranks, inner.message);
    // What is shown is shown by all at once, and a barrier of MPI is one of all ranks.
    if (inner.message.verb != "GO")
        return;
    QList<int> others = servers();
    for (const int rank : qAsConst(inner.ranks))
        others.removeOne(rank);
    pass(others, {"PASS", {}});
    if (m_barriers++ == 0)
        m_channel->enterBarrier();
}

void zoMpiRelay::pass(const QList<int>& ranks, const zoServerMessage& message)
{
    const QByteArray bytes = message.encoded();
    for (const int rank : ranks) {
        if (rank > 0)
            m_channel->send(rank, bytes);
    }
}

// Servers that are not told anything for long end themselves: the beat of theirs goes on meanwhile. That of the head
// does not: it tells who was heard, and nobody is until the event loop turns again.
void zoMpiRelay::waitForHead()
{
    while (!m_link.hasSent(s_mostBytes)) {
        if (m_sinceBeat.hasExpired(zoServerBeat::Interval))
            beatServers();
        QThread::usleep(100);
    }
}

void zoMpiRelay::hear(int rank, const QByteArray& bytes)
{
    m_heard << rank;
    zoServerMessageReader reader;
    reader.feed(bytes);
    zoRankMessage outer;
    outer.ranks << rank;
    if (reader.next(outer.message) != zoServerMessageReader::Outcome::Message || outer.message.verb == "BEAT")
        return;
    const zoServerMessage whole = outer.packed("RANK");
    if (whole.verb.isEmpty())
        std::fprintf(stderr, "a message of rank %d is too long to be passed on\n", rank);
    else
        m_link.send(whole);
    waitForHead();
}

void zoMpiRelay::beat()
{
    zoRankMessage signs;
    signs.ranks = m_heard.values();
    m_heard.clear();
    m_link.send(signs.packed("SIGNS"));
    beatServers();
}

void zoMpiRelay::beatServers()
{
    m_sinceBeat.start();
    const QByteArray bytes = zoServerMessage{"BEAT", {}}.encoded();
    const QList<int> ranks = servers();
    for (const int rank : ranks)
        m_channel->send(rank, bytes);
}

void zoMpiRelay::quit()
{
    pass(servers(), {"QUIT", {}});
    QCoreApplication::exit();
}
